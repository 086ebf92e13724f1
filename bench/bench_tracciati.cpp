// Scrittura e lettura di 100 000 record per ciascun tracciato, su file veri
// nella pagina windows-1252. Le ricerche di provincia e colore del carico dei
// conferimenti vanno su un database SQLite temporaneo.

#include "interchange/FileFornitura.h"
#include "interchange/RigaDati.h"
#include "interchange/TracciatoConferimenti.h"
#include "interchange/TracciatoFatture.h"
#include "shell/session_state.h"
#include "store/database.h"

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>
#include "dimensioni.h"

#include <benchmark/benchmark.h>
#include <cstdio>

namespace {

const int NumeroRecord = Bench::Dimensione(100000);

QTemporaryDir& Cartella()
{
    static QTemporaryDir dir;
    return dir;
}

QString Percorso(const QString& nome) { return QDir(Cartella().path()).filePath(nome); }

QString Cifre(int n, int larghezza) { return QStringLiteral("%1").arg(n, larghezza, 10, QLatin1Char('0')); }

// Fatture in uscita: righe come quelle della query di scarico.
const QList<RigaValori>& RigheFatture()
{
    static const QList<RigaValori> righe = [] {
        QList<RigaValori> r;
        r.reserve(NumeroRecord);
        for (int i = 0; i < NumeroRecord; ++i)
            r.append(RigaValori{{"DOMANDA", Cifre(i / 10, 11)},
                                {"CODI_LAVO", "VDT"},
                                {"PRODOTTO", "ANE"},
                                {"CODI_FISC", "RSSMRA70A01H501S"},
                                {"NUME_FATT", QString::number(i)},
                                {"DATA_FATT", QStringLiteral("%1/03/2006").arg(1 + i % 28, 2, 10, QLatin1Char('0'))},
                                {"QTA_PROD", QStringLiteral("%1,0000").arg(100 + i % 5000)},
                                {"GRAD", "12,5000"},
                                {"PREZ_MINI", "2,4500"},
                                {"IMPO", QStringLiteral("%1,50").arg(i)},
                                {"IVA", QStringLiteral("%1,10").arg(i / 5)},
                                {"IMPO_TOTA", QStringLiteral("%1,60").arg(i + i / 5)},
                                {"DATA_PAGA", i % 3 ? "20/04/2006" : ""},
                                {"QTA_LAVO", "1480,0000"},
                                {"DENOMINAZIONE", QStringLiteral("CANTINA SOCIALE NUMERO %1").arg(i)}});
        return r;
    }();
    return righe;
}

// Produttori in uscita: nove per certificato.
const QList<RigaValori>& RigheProduttori()
{
    static const QList<RigaValori> righe = [] {
        QList<RigaValori> r;
        r.reserve(NumeroRecord);
        for (int i = 0; i < NumeroRecord; ++i)
            r.append(RigaValori{{"CODI_FISC", "BNCGPP60B02A479X"},
                                {"DENOMINAZIONE", QStringLiteral("PRODUTTORE NUMERO %1").arg(i)},
                                {"CODICE_CONTRATTO_DISTILLAZIONE", QString::number(i)},
                                {"QTA_VINO_EFFETIVAMENTE_DISTILLATA", QStringLiteral("%1,5").arg(i % 900)},
                                {"TITOLO_ALCOLOMETRICO_FATTURATO", "11,5"},
                                {"ETTOGRADI", "925,75"},
                                {"QTA_ALCOLE_NEUTRO", "10,1234"},
                                {"QTA_ALCOLE_GREZZO", ""},
                                {"QTA_ACQUAVITE", "0"},
                                {"AIUTO_ALCOLE_NEUTRO", QStringLiteral("%1,50").arg(i % 700)},
                                {"AIUTO_ALCOLE_GREZZO", "0,00"},
                                {"AIUTO_ACQUAVITE", "0"},
                                {"IMPORTO_DETRAIBILE", "12"},
                                {"ID_COLORE", QString::number(1 + i % 3)},
                                {"APPROVAZIONE_ANTICIPATA", "S"},
                                {"PERC_APPROVAZIONE_ANTICIPATA", "50"}});
        return r;
    }();
    return righe;
}

RigaValori Certificato(int n)
{
    return RigaValori{{"domanda", Cifre(n / 5, 11)},
                      {"TAB_UTF.NUMERO_CERTIFICATO_UTF", QString::number(n)},
                      {"SIGLA_UFFICIO_UTF_PROVINCIA", "AT"},
                      {"TAB_UTF.DATA_EMISSIONE_CERTIFICATO", "05/11/2005"},
                      {"QTA_TOT_VINO_LAVORATO", "1000,5"},
                      {"QTA_TOT_ALCOLE_NEUTRO_OTTENUTO", "50,25"},
                      {"QTA_TOT_ALCOLE_GREZZO_OTTENUTO", ""},
                      {"QTA_TOT_ACQUAVITE_OTTENUTO", "0,0000"},
                      {"QTA_TOT_ETTOGRADI_VINO_LAVORATO", "12506,25"}};
}

void ScritturaFatture(benchmark::State& state)
{
    sessione().DistilleriaDati.CODI_FISC = QStringLiteral("01234567890");
    sessione().DistilleriaDati.RAGI_SOCI = QStringLiteral("DISTILLERIA BOSCO SPA");
    const QList<RigaValori>& righe = RigheFatture();
    for (auto _ : state) {
        TracciatoFatture::Scarico scarico;
        scarico.NumeroScarico = QStringLiteral("007");
        ScritturaFornitura file(Percorso("fatture_uscita.txt"));
        file.Print(scarico.TRACCIATO_0());
        for (const RigaValori& riga : righe) {
            ++scarico.ContaFatture;
            file.Print(scarico.TRACCIATO_1(riga));
        }
        file.Print(scarico.TRACCIATO_9());
        file.Close();
    }
    state.SetItemsProcessed(state.iterations() * NumeroRecord);
}

// Fornitura in entrata di 100 000 record: per domanda un record 1, cinque
// fatture e quattro bolle.
void PreparaEntrataFatture()
{
    ScritturaFornitura file(Percorso("fatture_entrata.txt"));
    for (int i = 0; i < NumeroRecord; ++i) {
        const QString domanda = Cifre(i / 10, 11);
        QString r;
        switch (i % 10) {
        case 0: r = QStringLiteral("1") + domanda + "01" + "29" + "ANE"; break;
        case 1: case 2: case 3: case 4: case 5:
            r = QStringLiteral("2") + domanda + "01" + QStringLiteral("%1").arg(i, -15) + "RSSMRA70A01H501S" +
                QStringLiteral("%1").arg(QStringLiteral("CANTINA %1").arg(i), -50) + "15/03/2006" + "0001500" +
                "0000" + "12" + "5000" + "0002" + "4500" + "000000003675" + "00" + "000000000735" + "00" +
                "000000004410" + "00" + "20/04/2006" + "0001480" + "0000" + "VDT";
            break;
        default:
            r = QStringLiteral("3") + domanda + "01" + QStringLiteral("%1").arg(i - i % 10 + 1, -15) +
                "RSSMRA70A01H501S" + QStringLiteral("%1").arg(i, -20) + "02/03/2006" + "0000750" + "0000" +
                "          " + "12" + "5000";
        }
        file.Print(r.leftJustified(TracciatoFatture::LunghezzaRecord, QLatin1Char(' ')));
    }
    file.Close();
}

void LetturaFatture(benchmark::State& state)
{
    PreparaEntrataFatture();
    for (auto _ : state) {
        TracciatoFatture::Carico carico;
        LetturaFornitura file(Percorso("fatture_entrata.txt"));
        while (!file.eof())
            carico.LeggiRiga(file.LineInput());
        benchmark::DoNotOptimize(carico.Domande.size());
    }
    state.SetItemsProcessed(state.iterations() * NumeroRecord);
}

void ScritturaConferimenti(benchmark::State& state)
{
    const QList<RigaValori>& produttori = RigheProduttori();
    QList<RigaValori> certificati;
    for (int i = 0; i < NumeroRecord / 10; ++i)
        certificati.append(Certificato(i));
    const TracciatoConferimenti::TotaliDomanda totali{1500.5, 0, 200.25, 100, "500"};
    for (auto _ : state) {
        TracciatoConferimenti::Scarico scarico;
        scarico.NumeroScarico = QStringLiteral("007");
        ScritturaFornitura file(Percorso("conferimenti_uscita.txt"));
        file.Print(scarico.TRACCIATO_0());
        for (int i = 0; i < NumeroRecord; ++i) {
            if (i % 10 == 0) {
                ++scarico.ContaCertificati;
                file.Print(scarico.TRACCIATO_1(certificati[i / 10]));
            } else {
                ++scarico.ContaProduttori;
                file.Print(scarico.TRACCIATO_2(produttori[i]));
            }
        }
        file.Print(scarico.TRACCIATO_9(totali));
        file.Close();
    }
    state.SetItemsProcessed(state.iterations() * NumeroRecord);
}

// Database di sessione con le due tabelle di riferimento cercate dal carico.
void PreparaDatabase()
{
    auto db = Database::Crea(Percorso("bench.mdb"), PasswordDb);
    db->Execute(QStringLiteral("CREATE TABLE TAB_COLORE (ID_COLORE INTEGER PRIMARY KEY AUTOINCREMENT,"
                               " CODI_COLORE TEXT COLLATE NOCASE, DESC_COLORE TEXT COLLATE NOCASE)"));
    db->Execute(QStringLiteral("CREATE TABLE TAB_PROVINCIE (TABPROCOD TEXT COLLATE NOCASE,"
                               " TABPRODES TEXT COLLATE NOCASE, TABPROSIG TEXT COLLATE NOCASE)"));
    for (const char* c : {"BI", "RO", "RS"})
        db->Execute(QStringLiteral("INSERT INTO TAB_COLORE (CODI_COLORE) VALUES (?)"), {QString::fromLatin1(c)});
    db->Execute(QStringLiteral("INSERT INTO TAB_PROVINCIE VALUES ('005', 'ASTI', 'AT'), ('004', 'CUNEO', 'CN')"));
    sessione().DbDistilleria = std::move(db);
}

// Fornitura in entrata di 100 000 record: domanda, due certificati, e per
// ciascuno i suoi produttori.
void PreparaEntrataConferimenti()
{
    ScritturaFornitura file(Percorso("conferimenti_entrata.txt"));
    static const char* const colori[] = {"BI", "RO", "RS", "XX"};
    for (int i = 0; i < NumeroRecord; ++i) {
        QString r;
        switch (i % 20) {
        case 0: r = QStringLiteral("1") + Cifre(i / 20, 11) + "29" + "000000000500" + "50"; break;
        case 1: case 10:
            r = QStringLiteral("2") + Cifre(i / 20, 11) + QStringLiteral("%1").arg(i, -9) + (i % 2 ? "AT" : "CN") +
                "20051105" + "0001000" + "5000" + "0000050" + "2500" + "0000000" + "0000" + "0000000" + "0000" +
                "00012506" + "2500";
            break;
        default:
            r = QStringLiteral("3") + Cifre(i / 20, 11) + "12345    " + "AT" + "20051105" + "BNCGPP60B02A479X" +
                QStringLiteral("%1").arg(QStringLiteral("PRODUTTORE %1").arg(i), -70) + "00000000123" +
                "00000805000" + "115000" + "000009257500" + "00000101234" + "00000000000" + "00000000000" +
                "00000000015050" + "00000000000000" + "00000000000000" + "00000000001200" +
                QString::fromLatin1(colori[i % 4]) + "000000000016250" + "S" + "050";
        }
        file.Print(r.leftJustified(TracciatoConferimenti::LunghezzaRecord, QLatin1Char(' ')));
    }
    file.Close();
}

void LetturaConferimenti(benchmark::State& state)
{
    if (!sessione().DbDistilleria)
        PreparaDatabase();
    PreparaEntrataConferimenti();
    for (auto _ : state) {
        TracciatoConferimenti::Carico carico;
        LetturaFornitura file(Percorso("conferimenti_entrata.txt"));
        while (!file.eof())
            carico.LeggiRiga(file.LineInput());
        benchmark::DoNotOptimize(carico.Domande.size());
    }
    state.SetItemsProcessed(state.iterations() * NumeroRecord);
}

BENCHMARK(ScritturaFatture)->Unit(benchmark::kMillisecond);
BENCHMARK(LetturaFatture)->Unit(benchmark::kMillisecond);
BENCHMARK(ScritturaConferimenti)->Unit(benchmark::kMillisecond);
BENCHMARK(LetturaConferimenti)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    int esito = 0;
    try {
        esito = Bench::Esegui(argc, argv);
    } catch (const std::exception& e) {
        fprintf(stderr, "Misura interrotta: %s\n", e.what());
        esito = 1;
    }
    sessione().DbDistilleria.reset();
    return esito;
}
