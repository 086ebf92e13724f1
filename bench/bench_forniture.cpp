// Forniture del ramo fatture sul database consegnato:
// - carico di una fornitura di 100 000 fatture con due bolle ciascuna
//   (10 000 domande), contro il pavimento di sqlite3 nudo che scrive le
//   stesse righe (istruzioni preparate, testi già in UTF-8, una transazione)
//   misurato nello stesso giro; il rapporto è "pavimento/carico" (>= 0,5),
//   in tempo reale e in tempo di processore;
// - scarico di una domanda di 10 000 fatture (con una bolla ciascuna).
// Misurato su queste macchine (Release, due processori condivisi e carichi):
// carico 1,3-1,5 s di processore, rapporto 0,58-0,64 (prima 0,36-0,40);
// scarico 50-85 ms di processore, il tempo reale dipende dal carico della
// macchina.

#include "common/piattaforma.h"
#include "interchange/CaricoFatture.h"
#include "interchange/FileFornitura.h"
#include "interchange/ScaricoFatture.h"
#include "shell/session_state.h"
#include "store/database.h"
#include "store/database_consegnato.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include "dimensioni.h"

#include <benchmark/benchmark.h>
#include <ctime>
#include <sqlite3.h>
#include <vector>

namespace {

const int Domande = Bench::Dimensione(10000, 30);
constexpr int FatturePerDomanda = 10;
constexpr int BollePerFattura = 2;
const int FattureScarico = Bench::Dimensione(10000);

// Risponde a ogni messaggio senza mostrarlo: OK, e No alle domande.
class PiattaformaMuta final : public Piattaforma {
public:
    int MsgBox(const QString&, int stile, const QString&) override
    {
        return (stile & 7) == StileMsg::SiNo ? RispostaMsg::No : RispostaMsg::OK;
    }
    QString SfogliaCartella(const QString&) override { return QString(); }
    void MostraTesto(const QString&) override {}
    void Beep() override {}
    void Clessidra(bool) override {}
    int AnteprimaStampa(QTextDocument&, const QString&) override { return RispostaMsg::OK; }
    [[noreturn]] void TerminaProcesso() override { std::abort(); }
};

QTemporaryDir& Cartella()
{
    static QTemporaryDir dir;
    return dir;
}

QString Consegnato()
{
    const QString percorso = QDir(Cartella().path()).filePath("consegnato.mdb");
    if (!QFile::exists(percorso))
        CreaDatabaseConsegnato(percorso, QStringLiteral(FERMOLA_SORGENTI "/store/schema.sql"),
                               QStringLiteral(FERMOLA_SORGENTI "/data"));
    return percorso;
}

// Una cartella di programma nuova con la copia del database aperta come
// connessione di sessione.
void NuovaSessione(const QString& nome)
{
    sessione().DbDistilleria.reset();
    const QString programma = QDir(Cartella().path()).filePath(nome);
    QDir(programma).removeRecursively();
    QDir().mkpath(programma + "/database");
    QFile::copy(Consegnato(), programma + "/database/" + NomeDatabase);
    sessione().PathDatabase = programma + "/database/";
    sessione().TitoloMaschera = QStringLiteral(" Carico della Domanda ");
    sessione().DbDistilleria = Database::Apri(sessione().PathDatabase + NomeDatabase, false, ConnessioneDb);
}

QString Domanda(int d) { return QString::number(d).rightJustified(11, '0'); }
QString Campo(const QString& v, int n) { return v.leftJustified(n, ' ', true); }

const QString& FileFornitura()
{
    static const QString percorso = [] {
        const QString p = QDir(Cartella().path()).filePath("ART29FAT2005.txt");
        ScritturaFornitura file(p);
        file.Print(QStringLiteral("0200500000100010000020000015/05/2006001").leftJustified(260));
        for (int d = 0; d < Domande; ++d) {
            const QString dom = Domanda(d);
            file.Print(("1" + dom + "01" "29" "ANE").leftJustified(260));
            for (int f = 0; f < FatturePerDomanda; ++f)
                file.Print(("2" + dom + "01" + Campo(QString::number(f), 15) + "RSSMRA70A01H501S" +
                            Campo(QStringLiteral("CANTINA SOCIALE NUMERO %1").arg(d), 50) + "15/03/2006" +
                            "0001500" "0000" "12" "5000" "0002" "4500" "000000003675" "00" "000000000735" "00"
                            "000000004410" "00" "20/04/2006" "0001480" "0000" "VDT")
                               .leftJustified(260));
            for (int f = 0; f < FatturePerDomanda; ++f)
                for (int b = 0; b < BollePerFattura; ++b)
                    file.Print(("3" + dom + "01" + Campo(QString::number(f), 15) + "RSSMRA70A01H501S" +
                                Campo(QString::number(f * BollePerFattura + b), 20) + "02/03/2006" + "0000750" +
                                "0000" + "          " + "12" + "5000")
                                   .leftJustified(260));
        }
        file.Close();
        return p;
    }();
    return percorso;
}

// Tempo di processore: su una macchina condivisa è più stabile del tempo reale.
double Processore() { return double(std::clock()) / CLOCKS_PER_SEC; }

// Le stesse righe scritte da sqlite3 nudo sul database consegnato: secondi
// reali; "processore" riceve i secondi di processore.
double Pavimento(double& processore)
{
    NuovaSessione("pavimento");
    const QByteArray percorso = (sessione().PathDatabase + NomeDatabase).toUtf8();
    sessione().DbDistilleria.reset();
    using Testi = std::vector<QByteArray>;
    std::vector<Testi> domande, fatture, bolle;
    for (int d = 0; d < Domande; ++d) {
        domande.push_back({Domanda(d).toUtf8(), "01", "29", "2005"});
        for (int f = 0; f < FatturePerDomanda; ++f) {
            fatture.push_back({Campo(QString::number(f), 15).toUtf8(), "RSSMRA70A01H501S",
                               Campo(QStringLiteral("CANTINA SOCIALE NUMERO %1").arg(d), 50).toUtf8(),
                               "15/03/2006", "1500,0000", "12,5000", "2,4500", "3675,00", "735,00", "4410,00",
                               "20/04/2006", "02/03/2006", "1480,0000"});
            for (int b = 0; b < BollePerFattura; ++b)
                bolle.push_back({Campo(QString::number(f * BollePerFattura + b), 20).toUtf8(), "02/03/2006",
                                 "750,0000", "12,5000", "          "});
        }
    }
    sqlite3* db = nullptr;
    sqlite3_open(percorso.constData(), &db);
    sqlite3_exec(db, "PRAGMA synchronous=FULL", nullptr, nullptr, nullptr);
    QElapsedTimer tempo;
    tempo.start();
    const double inizio = Processore();
    sqlite3_stmt *sd = nullptr, *sf = nullptr, *sb = nullptr;
    sqlite3_prepare_v2(db, "INSERT INTO DOMANDE (DOMANDA, PROGRESSIVO, TIPO_ARTICOLO, ID_VARIETA, STAM, SCAR,"
                           " DATA_CAMP) VALUES (?, ?, ?, 2, 'N', 'N', ?)", -1, &sd, nullptr);
    sqlite3_prepare_v2(db, "INSERT INTO FATTURE (ID_DOMANDA, ID_LAVORAZIONE, NUME_FATT, CODI_FISC, DENOMINAZIONE,"
                           " DATA_FATT, QTA_PROD, GRAD, PREZ_MINI, IMPO, IVA, IMPO_TOTA, DATA_PAGA, DATA_COMP,"
                           " QTA_LAVO) VALUES (?, 1, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)", -1, &sf, nullptr);
    sqlite3_prepare_v2(db, "INSERT INTO BOLLE (FK_ID_FATTURA, NUMERO_BOLLA, DATA_CONSEGNA, QUANTITA_PRODOTTO,"
                           " GRADO, DATA_PAGA) VALUES (?, ?, ?, ?, ?, ?)", -1, &sb, nullptr);
    const auto lega = [](sqlite3_stmt* st, int da, const Testi& t) {
        for (size_t i = 0; i < t.size(); ++i)
            sqlite3_bind_text(st, da + int(i), t[i].constData(), int(t[i].size()), SQLITE_STATIC);
    };
    sqlite3_exec(db, "BEGIN", nullptr, nullptr, nullptr);
    size_t f = 0, b = 0;
    for (const Testi& d : domande) {
        lega(sd, 1, d);
        sqlite3_step(sd);
        sqlite3_reset(sd);
        const sqlite3_int64 idDomanda = sqlite3_last_insert_rowid(db);
        for (int i = 0; i < FatturePerDomanda; ++i, ++f) {
            sqlite3_bind_int64(sf, 1, idDomanda);
            lega(sf, 2, fatture[f]);
            sqlite3_step(sf);
            sqlite3_reset(sf);
            const sqlite3_int64 idFattura = sqlite3_last_insert_rowid(db);
            for (int k = 0; k < BollePerFattura; ++k, ++b) {
                sqlite3_bind_int64(sb, 1, idFattura);
                lega(sb, 2, bolle[b]);
                sqlite3_step(sb);
                sqlite3_reset(sb);
            }
        }
    }
    sqlite3_exec(db, "COMMIT", nullptr, nullptr, nullptr);
    const double secondi = double(tempo.nsecsElapsed()) / 1e9;
    processore += Processore() - inizio;
    sqlite3_finalize(sd);
    sqlite3_finalize(sf);
    sqlite3_finalize(sb);
    sqlite3_close(db);
    return secondi;
}

void CaricoFornitura(benchmark::State& stato)
{
    const QString file = FileFornitura();
    double pavimento = 0, carico = 0, pavimentoCpu = 0, caricoCpu = 0;
    for (auto _ : stato) {
        stato.PauseTiming();
        pavimento += Pavimento(pavimentoCpu);
        NuovaSessione("carico");
        QElapsedTimer tempo;
        stato.ResumeTiming();
        tempo.start();
        const double inizio = Processore();
        CaricaFornitura(file);
        caricoCpu += Processore() - inizio;
        carico += double(tempo.nsecsElapsed()) / 1e9;
        stato.PauseTiming();
        const qint64 scritte = Db().OpenRecordset("SELECT COUNT(*) FROM BOLLE").Fields(0).intero();
        if (scritte != qint64(Domande) * FatturePerDomanda * BollePerFattura)
            stato.SkipWithError("il carico non ha scritto tutte le bolle");
        stato.ResumeTiming();
    }
    const double righe = double(Domande) * (1 + FatturePerDomanda * (1 + BollePerFattura));
    stato.counters["pavimento_s"] = pavimento / double(stato.iterations());
    stato.counters["righe/s"] = righe * double(stato.iterations()) / carico;
    stato.counters["pavimento/carico"] = pavimento / carico;
    stato.counters["pavimento/carico_cpu"] = pavimentoCpu / caricoCpu;
}

void ScaricoFatture(benchmark::State& stato)
{
    NuovaSessione("scarico");
    Database& db = Db();
    db.Execute("INSERT INTO DOMANDE (DOMANDA, PROGRESSIVO, STAM, SCAR, TIPO_ARTICOLO, ID_VARIETA, PROG_INVIO)"
               " VALUES ('123456789', '01', 'S', 'N', '29', 2, 0)");
    sessione().DomandaSel.ID_DOMANDA = 1;
    sessione().DomandaSel.DOMANDA = "123456789";
    sessione().DomandaSel.ID_VARIETA = "2";
    sessione().DomandaSel.TIPO_ARTICOLO = "29";
    sessione().DistilleriaDati = {"01234567890", "DISTILLERIA BOSCO SPA", "VIA ROMA 12 ASTI"};
    db.IniziaTransazione();
    for (int i = 0; i < FattureScarico; ++i) {
        db.Execute("INSERT INTO FATTURE (ID_DOMANDA, CODI_FISC, DENOMINAZIONE, NUME_FATT, DATA_FATT, DATA_COMP,"
                   " DATA_PAGA, QTA_PROD, QTA_LAVO, GRAD, PREZ_MINI, IMPO, IVA, IMPO_TOTA, ID_LAVORAZIONE)"
                   " VALUES (1, 'RSSMRA70A01H501S', ?, ?, '15/03/2006', '02/03/2006', '20/04/2006', '1500,0000',"
                   " '1480,0000', '12,5000', '2,4500', '3675,00', '735,00', '4410,00', 1)",
                   {QStringLiteral("CANTINA SOCIALE NUMERO %1").arg(i), QString::number(FattureScarico - i)});
        db.Execute("INSERT INTO BOLLE (FK_ID_FATTURA, NUMERO_BOLLA, DATA_CONSEGNA, QUANTITA_PRODOTTO, DATA_PAGA,"
                   " GRADO) VALUES (last_insert_rowid(), ?, '02/03/2006', '750,0000', '', '12,5000')",
                   {QString::number(i)});
    }
    db.ConfermaTransazione();
    const QString uscita = QDir(Cartella().path()).filePath("uscita");
    QDir().mkpath(uscita);
    for (auto _ : stato)
        if (!ScaricaDomanda(uscita))
            stato.SkipWithError("scarico non riuscito");
    stato.counters["fatture/s"] =
        benchmark::Counter(double(FattureScarico) * double(stato.iterations()), benchmark::Counter::kIsRate);
}

}  // namespace

BENCHMARK(CaricoFornitura)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(2);
BENCHMARK(ScaricoFatture)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(10);

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    ImpostaPiattaforma(std::make_unique<PiattaformaMuta>());
    const int esito = Bench::Esegui(argc, argv);
    sessione().DbDistilleria.reset();
    return esito;
}
