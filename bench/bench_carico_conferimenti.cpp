// Carico di una fornitura del ramo conferimenti: 10 000 produttori sotto
// 1 000 certificati (10 domande), scritti con le routine delle maschere in
// una transazione, contro il pavimento di sqlite3 nudo che inserisce le
// stesse righe con istruzioni preparate nella stessa esecuzione. Il
// rapporto "pavimento/carico" deve stare intorno a 0,5 o sopra.
#include "common/piattaforma.h"
#include "interchange/CaricoConferimenti.h"
#include "interchange/FileFornitura.h"
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
#include <sqlite3.h>
#include <ctime>

namespace {

// Tempo di processore del processo, in secondi: sulle macchine condivise il
// tempo reale dipende dagli altri processi.
double Processore()
{
    timespec t{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &t);
    return double(t.tv_sec) + double(t.tv_nsec) / 1e9;
}

// Una misura: tempo reale e di processore.
struct Tempi {
    double reale = 0, processore = 0;
};

constexpr int Domande = 10, Produttori = 10;
const int Certificati = Bench::Dimensione(100, 3);

// Risponde OK a tutto e ricorda l'ultimo messaggio.
class PiattaformaMuta final : public Piattaforma {
public:
    int MsgBox(const QString& testo, int, const QString&) override
    {
        ultimo = testo;
        return RispostaMsg::OK;
    }
    QString SfogliaCartella(const QString&) override { return QString(); }
    void MostraTesto(const QString&) override {}
    void Beep() override {}
    void Clessidra(bool) override {}
    [[noreturn]] void TerminaProcesso() override { std::abort(); }
    int AnteprimaStampa(QTextDocument&, const QString&) override { return RispostaMsg::OK; }
    QString ultimo;
};

QString Campo(const QString& testo, int larghezza) { return testo.leftJustified(larghezza, QLatin1Char(' '), true); }
QString Cifre(qint64 n, int larghezza) { return QStringLiteral("%1").arg(n, larghezza, 10, QLatin1Char('0')); }

QString Codice(int n) { return QStringLiteral("CF") + Cifre(n, 14); }
QString Nome(int n) { return QStringLiteral("PRODUTTORE AGRICOLO NUMERO %1").arg(n); }
QString Certificato(int d, int c) { return QStringLiteral("U") + Cifre(d * 1000 + c, 8); }

void ScriviFornitura(const QString& percorso)
{
    ScritturaFornitura file(percorso);
    auto riga = [](const QString& r) { return r.leftJustified(300, QLatin1Char(' ')); };
    file.Print(riga(QStringLiteral("0") + QString(30, QLatin1Char('0')) + QStringLiteral("2005/2006") + "0001" +
                    "20060131" + Campo(QStringLiteral("CANTINA SOCIALE"), 70) + Campo(QStringLiteral("00123450056"), 16) +
                    "10" + "29" + "1"));
    int n = 0;
    for (int d = 1; d <= Domande; ++d) {
        file.Print(riga(QStringLiteral("1") + Cifre(d, 11) + "29" + "000000001500" + "50"));
        for (int c = 1; c <= Certificati; ++c) {
            file.Print(riga(QStringLiteral("2") + Cifre(d, 11) + Certificato(d, c) + QStringLiteral("AT") + "20051105" +
                            "0001000" + "5000" + "0000050" + "2500" + "0000000" + "0000" + "0000000" + "0000" +
                            "00012506" + "2500"));
            for (int p = 0; p < Produttori; ++p, ++n)
                file.Print(riga(QStringLiteral("3") + Cifre(d, 11) + Certificato(d, c) + "AT" + "20051105" + Codice(n) +
                                Campo(Nome(n), 70) + "00000000123" + "00000805000" + "115000" + "000009257500" +
                                "00000101234" + "00000000000" + "00000000000" + "00000000015050" + "00000000000000" +
                                "00000000000000" + "00000000001200" + "RO" + "000000000016250" + "S" + "050"));
        }
    }
    file.Print(riga(QStringLiteral("9") + QString(30, QLatin1Char('9'))));
    file.Close();
}

// Cartella del programma con il database consegnato, fatto una volta e copiato.
class Ambiente {
public:
    Ambiente()
    {
        const QString sorgenti = QStringLiteral(FERMOLA_SORGENTI);
        m_modello = m_dir.filePath(QStringLiteral("modello.mdb"));
        CreaDatabaseConsegnato(m_modello, sorgenti + QStringLiteral("/store/schema.sql"),
                               sorgenti + QStringLiteral("/data"));
        m_fornitura = m_dir.filePath(QStringLiteral("ART29CONF2005.txt"));
        ScriviFornitura(m_fornitura);
    }
    // Un database consegnato nuovo nella cartella del programma.
    QString NuovoDatabase()
    {
        const QString cartella = m_dir.filePath(QStringLiteral("programma/database"));
        QDir().mkpath(cartella);
        const QString percorso = QDir(cartella).filePath(NomeDatabase);
        for (const char* coda : {"", "-wal", "-shm"})
            QFile::remove(percorso + QLatin1String(coda));
        QFile::copy(m_modello, percorso);
        return percorso;
    }
    QString Fornitura() const { return m_fornitura; }

private:
    QTemporaryDir m_dir;
    QString m_modello, m_fornitura;
};

Ambiente& ambiente()
{
    static Ambiente a;
    return a;
}

// Lega tutti i valori di una riga, come fa un inserimento in blocco.
void Esegui(sqlite3_stmt* st, const std::vector<QByteArray>& valori, int primo = 1)
{
    for (std::size_t i = 0; i < valori.size(); ++i)
        sqlite3_bind_text(st, int(i) + primo, valori[i].constData(), int(valori[i].size()), SQLITE_STATIC);
    sqlite3_step(st);
    sqlite3_reset(st);
}

std::vector<QByteArray> Utf8(std::initializer_list<QString> testi)
{
    std::vector<QByteArray> v;
    for (const QString& t : testi)
        v.push_back(t.toUtf8());
    return v;
}

// Le stesse righe del carico, con gli stessi valori, scritte con sqlite3 nudo
// in una transazione: secondi impiegati.
Tempi Pavimento()
{
    const QByteArray percorso = ambiente().NuovoDatabase().toUtf8();
    // I valori pronti prima di misurare, come testo UTF-8.
    std::vector<std::vector<QByteArray>> domande, certificati, produttori;
    int n = 0;
    for (int d = 1; d <= Domande; ++d) {
        domande.push_back(Utf8({Cifre(d, 11), "1500,50", "29", "N", "N", "1", "2005"}));
        for (int c = 1; c <= Certificati; ++c) {
            certificati.push_back(Utf8({Certificato(d, c), "ASTI", "AT", "005", "05/11/2005", "12506,2500",
                                        "1000,5000", "0,0000", "50,2500", "0,0000", "1"}));
            for (int p = 0; p < Produttori; ++p, ++n)
                produttori.push_back(Utf8({"2", Codice(n), Campo(Nome(n), 70), "", "00000000123", "92575,0000",
                                           "11,5000", "", "0,0000", "10,1234", "0,0000", "80,5000", "", "0,00",
                                           "150,50", "0,00", "12,00", "162,50", "S", "050"}));
        }
    }
    sqlite3* db = nullptr;
    sqlite3_open(percorso.constData(), &db);
    sqlite3_exec(db, "PRAGMA journal_mode=WAL; PRAGMA synchronous=FULL;", nullptr, nullptr, nullptr);
    QElapsedTimer tempo;
    tempo.start();
    const double inizio = Processore();
    sqlite3_stmt *domanda = nullptr, *utf = nullptr, *produttore = nullptr, *legame = nullptr;
    sqlite3_prepare_v2(db,
                       "INSERT INTO DOMANDE_PRODUTTORI (DOMANDA, ANTICIPO_RICEVUTO, TIPO_ARTICOLO, STAM, SCAR, "
                       "PROG_VERS, DATA_CAMP) VALUES (?, ?, ?, ?, ?, ?, ?)",
                       -1, &domanda, nullptr);
    sqlite3_prepare_v2(db,
                       "INSERT INTO TAB_UTF (iD_DOMANDA, NUMERO_CERTIFICATO_UTF, DESCR_UFFICIO_UTF_PROVINCIA, "
                       "SIGLA_UFFICIO_UTF_PROVINCIA, ISTAT_UFFICIO_UTF_PROVINCIA, DATA_EMISSIONE_CERTIFICATO, "
                       "QTA_TOT_ETTOGRADI_VINO_LAVORATO, QTA_TOT_VINO_LAVORATO, QTA_TOT_ALCOLE_GREZZO_OTTENUTO, "
                       "QTA_TOT_ALCOLE_NEUTRO_OTTENUTO, QTA_TOT_ACQUAVITE_OTTENUTO, QUADRATURA) VALUES "
                       "(?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)",
                       -1, &utf, nullptr);
    sqlite3_prepare_v2(db,
                       "INSERT INTO PRODUTTORI (ID_COLORE, CODI_FISC, DENOMINAZIONE, CAMPAGNA_PRESCELTA, "
                       "CODICE_CONTRATTO_DISTILLAZIONE, ETTOGRADI, TITOLO_ALCOLOMETRICO_FATTURATO, "
                       "QTA_VINO_DISTILLATA_AIUTO, QTA_ALCOLE_GREZZO, QTA_ALCOLE_NEUTRO, QTA_ACQUAVITE, "
                       "QTA_VINO_EFFETIVAMENTE_DISTILLATA, QTA_MAX_DISTILLABILE, AIUTO_ALCOLE_GREZZO, "
                       "AIUTO_ALCOLE_NEUTRO, AIUTO_ACQUAVITE, IMPORTO_DETRAIBILE, TOTALE_AIUTO, "
                       "APPROVAZIONE_ANTICIPATA, PERC_APPROVAZIONE_ANTICIPATA) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, "
                       "?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)",
                       -1, &produttore, nullptr);
    sqlite3_prepare_v2(db, "INSERT INTO TAB_ID_UTF_PRODUTTORE (id_utf, id_produttore) VALUES (?, ?)", -1, &legame,
                       nullptr);
    sqlite3_exec(db, "BEGIN", nullptr, nullptr, nullptr);
    std::size_t c = 0, p = 0;
    for (const auto& d : domande) {
        Esegui(domanda, d);
        const sqlite3_int64 idDomanda = sqlite3_last_insert_rowid(db);
        for (int j = 0; j < Certificati; ++j, ++c) {
            sqlite3_bind_int64(utf, 1, idDomanda);
            Esegui(utf, certificati[c], 2);
            const sqlite3_int64 idUtf = sqlite3_last_insert_rowid(db);
            for (int k = 0; k < Produttori; ++k, ++p) {
                Esegui(produttore, produttori[p]);
                sqlite3_bind_int64(legame, 1, idUtf);
                sqlite3_bind_int64(legame, 2, sqlite3_last_insert_rowid(db));
                sqlite3_step(legame);
                sqlite3_reset(legame);
            }
        }
    }
    sqlite3_exec(db, "COMMIT", nullptr, nullptr, nullptr);
    const Tempi secondi{double(tempo.nsecsElapsed()) / 1e9, Processore() - inizio};
    for (sqlite3_stmt* st : {domanda, utf, produttore, legame})
        sqlite3_finalize(st);
    sqlite3_close(db);
    return secondi;
}

void BM_CaricoConferimenti(benchmark::State& stato)
{
    auto* piattaforma = new PiattaformaMuta;
    ImpostaPiattaforma(std::unique_ptr<Piattaforma>(piattaforma));
    Tempi pavimento{1e9, 1e9};
    for (int i = 0; i < 3; ++i) {
        const Tempi t = Pavimento();
        pavimento.reale = std::min(pavimento.reale, t.reale);
        pavimento.processore = std::min(pavimento.processore, t.processore);
    }
    Tempi carico;
    for (auto _ : stato) {
        stato.PauseTiming();
        const QString percorso = ambiente().NuovoDatabase();
        sessione().PathDatabase = QFileInfo(percorso).absolutePath() + QLatin1Char('/');
        sessione().DbDistilleria = Database::Apri(percorso, false, ConnessioneDb);
        sessione().TitoloMaschera = QStringLiteral("Carico");
        stato.ResumeTiming();
        QElapsedTimer tempo;
        tempo.start();
        const double inizio = Processore();
        CaricaFornituraConferimenti(ambiente().Fornitura());
        carico.processore += Processore() - inizio;
        carico.reale += double(tempo.nsecsElapsed()) / 1e9;
        stato.PauseTiming();
        if (piattaforma->ultimo != QLatin1String("Carico fornitura correttamente eseguito"))
            stato.SkipWithError(piattaforma->ultimo.toUtf8().constData());
        sessione().DbDistilleria.reset();
        stato.ResumeTiming();
    }
    const double volte = double(stato.iterations());
    stato.counters["pavimento_ms"] = pavimento.reale * 1000;
    stato.counters["carico_ms"] = carico.reale / volte * 1000;
    stato.counters["pavimento/carico"] = pavimento.reale / (carico.reale / volte);
    // Lo stesso rapporto sul tempo di processore, che non risente del carico della macchina.
    stato.counters["pavimento/carico_cpu"] = pavimento.processore / (carico.processore / volte);
    stato.counters["produttori/s"] = double(Domande * Certificati * Produttori) / (carico.reale / volte);
}

}  // namespace

BENCHMARK(BM_CaricoConferimenti)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(5);

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
