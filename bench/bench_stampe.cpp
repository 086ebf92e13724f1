// Stampa di una domanda con 400 fatture (100 fogli) e 800 bolle: lettura
// della query, composizione del documento e disegno di tutte le pagine, cioè
// il lavoro dell'anteprima.
//   - Composizione: query, modello, HTML e impaginazione (numero di pagine);
//   - Anteprima: la composizione, l'impaginazione a video e il disegno di ogni
//     foglio una volta, su un'immagine come quella della finestra (l'anteprima
//     ne disegna solo quelli in vista); primo_foglio_ms è il tempo fino al
//     primo foglio disegnato;
//   - Pdf: la composizione e il disegno di ogni pagina in un PDF in memoria,
//     il lavoro di "Salva PDF".
// Obiettivo: l'anteprima di 400 fatture sotto il mezzo secondo.
#include "common/disegno_documento.h"
#include "printing/MotoreReport.h"
#include "shell/session_state.h"
#include "store/database.h"
#include "store/database_consegnato.h"

#include <QApplication>
#include <QBuffer>
#include <QDir>
#include <QImage>
#include <QPainter>
#include <QFile>
#include <QPdfWriter>
#include <QTemporaryDir>
#include <QTextDocument>
#include "dimensioni.h"

#include <benchmark/benchmark.h>
#include <ctime>

namespace {

const int NumeroFatture = Bench::Dimensione(400, 40);

// Cartella di programma con database/ e Report/, la sessione aperta su di essa.
QTemporaryDir& Cartella()
{
    static QTemporaryDir dir;
    static bool pronta = false;
    if (pronta)
        return dir;
    pronta = true;
    const QDir sorgenti(QStringLiteral(FERMOLA_SORGENTI));
    QDir(dir.path()).mkpath(QStringLiteral("database"));
    QDir(dir.path()).mkpath(QStringLiteral("Report"));
    for (const QString& nome : QDir(sorgenti.filePath(QStringLiteral("data/Report"))).entryList(QDir::Files))
        QFile::copy(sorgenti.filePath(QStringLiteral("data/Report/") + nome), dir.filePath(QStringLiteral("Report/") + nome));
    const QString percorso = dir.filePath(QStringLiteral("database/") + NomeDatabase);
    CreaDatabaseConsegnato(percorso, sorgenti.filePath(QStringLiteral("store/schema.sql")), sorgenti.filePath(QStringLiteral("data")));
    sessione().PathDatabase = dir.filePath(QStringLiteral("database")) + QLatin1Char('/');
    sessione().DbDistilleria = Database::Apri(percorso, false, ConnessioneDb);
    Database& db = Db();
    db.IniziaTransazione();
    db.Execute(QStringLiteral("INSERT INTO DISTILLERIA VALUES ('02468135799', 'Distilleria Valle Verde', 'Via Roma 1')"));
    db.Execute(QStringLiteral("INSERT INTO DOMANDE (DOMANDA, PROGRESSIVO, STAM, SCAR, TIPO_ARTICOLO, ID_VARIETA, PROG_VERS, "
                              "DATA_CAMP) VALUES ('00000000042', '01', 'N', 'N', '29', 1, '1', '2005')"));
    for (int f = 0; f < NumeroFatture; ++f) {
        const qint64 id = db.InserisciRiga(
            QStringLiteral("FATTURE"),
            {{QStringLiteral("ID_DOMANDA"), 1}, {QStringLiteral("CODI_FISC"), QStringLiteral("RSSMRA80A01H501U")},
             {QStringLiteral("DENOMINAZIONE"), QStringLiteral("CANTINA SOCIALE NUMERO %1").arg(f)},
             {QStringLiteral("NUME_FATT"), QString::number(f + 1)}, {QStringLiteral("DATA_FATT"), QStringLiteral("12/10/2005")},
             {QStringLiteral("QTA_PROD"), QStringLiteral("1234,5678")}, {QStringLiteral("QTA_LAVO"), QStringLiteral("1234,5678")},
             {QStringLiteral("GRAD"), QStringLiteral("12,5")}, {QStringLiteral("PREZ_MINI"), QStringLiteral("2,50")},
             {QStringLiteral("IMPO"), QStringLiteral("3086,42")}, {QStringLiteral("IVA"), QStringLiteral("617,28")},
             {QStringLiteral("IMPO_TOTA"), QStringLiteral("3703,70")}, {QStringLiteral("ID_LAVORAZIONE"), 1},
             {QStringLiteral("FOGL"), QString::number(f / 4 + 1)}, {QStringLiteral("RIGO"), QString::number(f % 4 + 1)}});
        for (int b = 0; b < 2; ++b)
            db.Execute(QStringLiteral("INSERT INTO BOLLE (FK_ID_FATTURA, NUMERO_BOLLA, DATA_CONSEGNA, QUANTITA_PRODOTTO, GRADO) "
                                      "VALUES (?, ?, '01/10/2005', '617,2839', '12,5')"),
                       {id, QStringLiteral("B%1-%2").arg(f).arg(b)});
    }
    db.ConfermaTransazione();
    return dir;
}

ControlloReport Report(const QString& file, const QString& query)
{
    Cartella();
    ControlloReport r;
    r.ReportFileName = QDir(CartellaReport()).filePath(file);
    r.DataFiles = QStringList{Db().Name()};
    r.SelectionFormula = QStringLiteral("{%1.DOMANDA} =  '00000000042' AND  {%1.PROGRESSIVO} =  '01' ").arg(query);
    r.Formulas[1] = QStringLiteral("CAMPAGNA = '2005/2006'");
    r.Formulas[2] = QStringLiteral("DISTI_CF_PIVA = '02468135799'");
    r.Formulas[3] = QStringLiteral("DISTILLERIA = 'Distilleria Valle Verde'");
    return r;
}

enum class Lavoro { Composizione, Anteprima, Pdf };

void Misura(benchmark::State& state, const QString& file, const QString& query, Lavoro lavoro)
{
    ControlloReport r = Report(file, query);
    int pagine = 0;
    double primoFoglio = 0;
    for (auto _ : state) {
        const std::clock_t inizio = std::clock();  // tempo di CPU, come le misure
        auto documento = r.Componi();
        if (lavoro == Lavoro::Anteprima) {
            QImage schermo(1, 1, QImage::Format_RGB32);
            const Impaginazione impaginazione(*documento, schermo, FoglioDelDocumento(*documento));
            schermo = QImage(impaginazione.foglio().size(), QImage::Format_RGB32);
            for (int p = 0; p < impaginazione.pagine(); ++p) {
                QPainter pittore(&schermo);
                impaginazione.DisegnaFoglio(pittore, p);
                if (p == 0)
                    primoFoglio += double(std::clock() - inizio) * 1000 / CLOCKS_PER_SEC;
            }
            pagine = impaginazione.pagine();
        } else if (lavoro == Lavoro::Pdf) {
            QBuffer memoria;
            memoria.open(QIODevice::WriteOnly);
            QPdfWriter pdf(&memoria);
            pdf.setResolution(300);
            PreparaFoglio(*documento, pdf);
            DisegnaDocumento(*documento, pdf);
        } else {
            documento->setPageSize(QSizeF(595, 842));
            pagine = documento->pageCount();
        }
        benchmark::DoNotOptimize(pagine);
    }
    state.counters["pagine"] = pagine;
    if (lavoro == Lavoro::Anteprima)
        state.counters["primo_foglio_ms"] = primoFoglio / static_cast<double>(state.iterations());
}

void ElencoFattureComposizione(benchmark::State& s)
{
    Misura(s, QStringLiteral("Rpt_distillerie_ElenchiFatture.rpt"), QStringLiteral("Queryreport"), Lavoro::Composizione);
}
void ElencoFattureAnteprima(benchmark::State& s)
{
    Misura(s, QStringLiteral("Rpt_distillerie_ElenchiFatture.rpt"), QStringLiteral("Queryreport"), Lavoro::Anteprima);
}
void ElencoFatturePdf(benchmark::State& s)
{
    Misura(s, QStringLiteral("Rpt_distillerie_ElenchiFatture.rpt"), QStringLiteral("Queryreport"), Lavoro::Pdf);
}
void BolleAnteprima(benchmark::State& s)
{
    Misura(s, QStringLiteral("Rpt_Bolle.rpt"), QStringLiteral("Queryreport_bolle"), Lavoro::Anteprima);
}

}  // namespace

BENCHMARK(ElencoFattureComposizione)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(ElencoFattureAnteprima)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(ElencoFatturePdf)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(BolleAnteprima)->Unit(benchmark::kMillisecond)->Iterations(5);

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const int esito = Bench::Esegui(argc, argv);
    sessione().DbDistilleria.reset();
    return esito;
}
