// Inserimento di N righe di FATTURE attraverso la facciata, riga per riga in
// autocommit e in una sola transazione, contro il pavimento di sqlite3 con
// istruzioni preparate. Stampa righe al secondo e il rapporto col pavimento.
#include "shell/session_state.h"
#include "store/database.h"

#include <QCoreApplication>
#include <QTemporaryDir>
#include "dimensioni.h"

#include <benchmark/benchmark.h>
#include <sqlite3.h>

namespace {

const char* const Schema =
    "CREATE TABLE FATTURE (ID_FATTURA INTEGER PRIMARY KEY AUTOINCREMENT, ID_DOMANDA INTEGER, CODI_FISC TEXT COLLATE NOCASE,"
    " DENOMINAZIONE TEXT COLLATE NOCASE, NUME_FATT TEXT COLLATE NOCASE, DATA_FATT TEXT COLLATE NOCASE,"
    " QTA_PROD TEXT COLLATE NOCASE, IMPO TEXT COLLATE NOCASE, IVA TEXT COLLATE NOCASE, IMPO_TOTA TEXT COLLATE NOCASE)";
const char* const Inserimento =
    "INSERT INTO FATTURE (ID_DOMANDA, CODI_FISC, DENOMINAZIONE, NUME_FATT, DATA_FATT, QTA_PROD, IMPO, IVA, IMPO_TOTA)"
    " VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)";

QVariantList Riga(int i)
{
    return {i / 10, QStringLiteral("RSSMRA80A01H501U"), QStringLiteral("CANTINA SOCIALE NUMERO %1").arg(i),
            QString::number(i), QStringLiteral("12/10/2005"), QStringLiteral("1234,5678"), QStringLiteral("1000,00"),
            QStringLiteral("200,00"), QStringLiteral("1200,00")};
}

std::unique_ptr<Database> Nuovo(const QTemporaryDir& dir)
{
    const QString percorso = dir.filePath(QStringLiteral("bench.mdb"));
    Database::Crea(percorso, PasswordDb)->Close();
    auto db = Database::Apri(percorso, false, ConnessioneDb);
    db->Execute(QString::fromLatin1(Schema));
    return db;
}

void Facciata(benchmark::State& stato, bool transazione, bool giornaleClassico = false)
{
    const int n = static_cast<int>(stato.range(0));
    for (auto _ : stato) {
        stato.PauseTiming();
        QTemporaryDir dir;
        auto db = Nuovo(dir);
        if (giornaleClassico) {
            db->Execute(QStringLiteral("PRAGMA journal_mode=DELETE"));
            db->Execute(QStringLiteral("PRAGMA synchronous=FULL"));
        }
        stato.ResumeTiming();
        if (transazione)
            db->IniziaTransazione();
        for (int i = 0; i < n; ++i)
            db->Execute(QString::fromLatin1(Inserimento), Riga(i));
        if (transazione)
            db->ConfermaTransazione();
        stato.PauseTiming();
        db->Close();
        stato.ResumeTiming();
    }
    stato.counters["righe/s"] = benchmark::Counter(double(n) * double(stato.iterations()), benchmark::Counter::kIsRate);
}

void BM_FacciataAutocommit(benchmark::State& s) { Facciata(s, false); }
void BM_FacciataTransazione(benchmark::State& s) { Facciata(s, true); }
// Per confronto: il giornale predefinito di SQLite (DELETE, synchronous=FULL).
void BM_FacciataAutocommitGiornaleClassico(benchmark::State& s) { Facciata(s, false, true); }

// Pavimento: sqlite3 nudo, istruzione preparata, una transazione, stesso giornale.
void BM_PavimentoSqlite(benchmark::State& stato)
{
    const int n = static_cast<int>(stato.range(0));
    for (auto _ : stato) {
        stato.PauseTiming();
        QTemporaryDir dir;
        const QByteArray percorso = dir.filePath(QStringLiteral("floor.db")).toUtf8();
        sqlite3* db = nullptr;
        sqlite3_open(percorso.constData(), &db);
        sqlite3_exec(db, "PRAGMA journal_mode=WAL; PRAGMA synchronous=FULL;", nullptr, nullptr, nullptr);
        sqlite3_exec(db, Schema, nullptr, nullptr, nullptr);
        std::vector<std::vector<QByteArray>> righe;
        righe.reserve(n);
        for (int i = 0; i < n; ++i) {
            std::vector<QByteArray> r;
            for (const QVariant& v : Riga(i))
                r.push_back(v.toString().toUtf8());
            righe.push_back(std::move(r));
        }
        stato.ResumeTiming();
        sqlite3_stmt* st = nullptr;
        sqlite3_prepare_v2(db, Inserimento, -1, &st, nullptr);
        sqlite3_exec(db, "BEGIN", nullptr, nullptr, nullptr);
        for (const auto& r : righe) {
            sqlite3_bind_int(st, 1, r[0].toInt());
            for (int c = 1; c < 9; ++c)
                sqlite3_bind_text(st, c + 1, r[c].constData(), int(r[c].size()), SQLITE_STATIC);
            sqlite3_step(st);
            sqlite3_reset(st);
        }
        sqlite3_exec(db, "COMMIT", nullptr, nullptr, nullptr);
        sqlite3_finalize(st);
        stato.PauseTiming();
        sqlite3_close(db);
        stato.ResumeTiming();
    }
    stato.counters["righe/s"] = benchmark::Counter(double(n) * double(stato.iterations()), benchmark::Counter::kIsRate);
}

}  // namespace

BENCHMARK(BM_FacciataAutocommit)->Arg(Bench::Dimensione(1000))->Arg(Bench::Dimensione(10000))->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);
BENCHMARK(BM_FacciataAutocommitGiornaleClassico)->Arg(Bench::Dimensione(1000))->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);
BENCHMARK(BM_FacciataTransazione)->Arg(Bench::Dimensione(1000))->Arg(Bench::Dimensione(100000))->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(2);
BENCHMARK(BM_PavimentoSqlite)->Arg(Bench::Dimensione(1000))->Arg(Bench::Dimensione(100000))->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(2);

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    return Bench::Esegui(argc, argv);
}
