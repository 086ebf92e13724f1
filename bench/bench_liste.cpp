// Lista di 100 000 fatture in una griglia: tempo fino alla prima schermata
// disegnata e tempo per arrivare all'ultima riga trascinando la barra di
// scorrimento in fondo, a passi.
//   - Modo1Ordinato: la lista "Fatture" delle domande (modo 1, join esterno
//     DOMANDE-FATTURE) con l'ordinamento della ricerca, 1000 domande da 100
//     fatture;
//   - Modo1OrdinatoSenzaIndice: lo stesso senza l'indice DOMANDE_ORDINE;
//   - Modo1OrdinatoPerIntestazione: la stessa lista ordinata per la
//     denominazione, come dopo un clic sull'intestazione della colonna
//     (nessun indice: l'ordine delle chiavi si legge una volta);
//   - Fatture2: le fatture di una domanda (modo "FATTURE2") che ne ha 100 000.
// passo_max_ms è il passo più lungo: il conteggio delle righe dopo la prima
// schermata, un passo della barra trascinata, il salto all'ultima riga
// (Ctrl+Fine) o il ritorno in cima. rss_prima_mb e
// rss_dopo_mb sono la memoria residente del processo prima e dopo essere
// arrivati in fondo: non deve crescere con le righe passate.
// Obiettivo: prima schermata sotto i 100 ms, in fondo sotto i 300 ms, nessun
// passo oltre i 50 ms.
//
// Le maschere vere, su 100 000 domande:
//   - FrmSelezioneFattureApertura: l'elenco sotto il codice 1 ("Fatture"),
//     una fattura per domanda, dalla creazione alla prima schermata disegnata;
//   - FrmSelezioneFattureRicerca: nella stessa maschera un numero battuto e
//     "Cerca ...", fino alla lista ridisegnata;
//   - FrmProduttoriSelezioneApertura: l'elenco delle domande del distillatore
//     (codice 7).
// Obiettivo: ciascuna sotto i 100 ms.
#include "common/liste.h"
#include "deliveries/FrmProduttori_Selezione.h"
#include "invoices/FrmSelezione.h"
#include "shell/session_state.h"
#include "store/database.h"
#include "store/database_consegnato.h"

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QDir>
#include <QFile>
#include <QElapsedTimer>
#include <QScrollBar>
#include <QTableView>
#include <QTemporaryDir>
#include <QKeyEvent>
#include "dimensioni.h"

#include <benchmark/benchmark.h>

#include <ctime>
#include <unistd.h>

namespace {

const int NumeroFatture = Bench::Dimensione(100000);
// Passi della barra trascinata dalla cima al fondo.
constexpr int PassiTrascinamento = 10;

// Tempo di CPU del processo, in ms: sulla macchina carica dice più dell'orologio.
double CpuMs()
{
    timespec t{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &t);
    return double(t.tv_sec) * 1e3 + double(t.tv_nsec) / 1e6;
}

// Memoria residente del processo, in MB.
double MemoriaResidente()
{
    QFile f(QStringLiteral("/proc/self/statm"));
    if (!f.open(QIODevice::ReadOnly))
        return 0;
    const QList<QByteArray> campi = f.readAll().split(' ');
    return campi.size() > 1 ? campi.at(1).toDouble() * double(sysconf(_SC_PAGESIZE)) / (1024.0 * 1024.0) : 0;
}

// Database consegnato con le fatture generate; "domande" domande in parti uguali.
std::unique_ptr<QTemporaryDir> Genera(int domande)
{
    auto dir = std::make_unique<QTemporaryDir>();
    const QString percorso = dir->filePath(QStringLiteral("orvelta_2005.mdb"));
    const QDir sorgenti(QStringLiteral(FERMOLA_SORGENTI));
    CreaDatabaseConsegnato(percorso, sorgenti.filePath(QStringLiteral("store/schema.sql")),
                           sorgenti.filePath(QStringLiteral("data")));
    sessione().DbDistilleria = Database::Apri(percorso, false, ConnessioneDb);
    Database& db = Db();
    db.IniziaTransazione();
    for (int d = 0; d < domande; ++d)
        db.Execute(QStringLiteral("INSERT INTO DOMANDE (DOMANDA, PROGRESSIVO, STAM, SCAR, TIPO_ARTICOLO, ID_VARIETA, "
                                  "PROG_VERS, PROG_INVIO, DATA_CAMP) VALUES (?, '01', 'N', 'N', '29', 1, '00', 0, '2005')"),
                   {QStringLiteral("%1").arg(domande - d, 11, 10, QLatin1Char('0'))});
    const QString inserisci = QStringLiteral(
        "INSERT INTO FATTURE (ID_DOMANDA, CODI_FISC, DENOMINAZIONE, NUME_FATT, DATA_FATT, DATA_COMP, DATA_PAGA, "
        "QTA_PROD, QTA_LAVO, GRAD, PREZ_MINI, PREZ_TRAS, IMPO, IVA, IMPO_TOTA, ID_LAVORAZIONE, FOGL, RIGO) "
        "VALUES (?, 'RSSMRA80A01H501U', ?, ?, '12/10/2005', '15/10/2005', '30/10/2005', '1234,5678', '1234,5678', "
        "'12,5000', '2,50', '0,00', '3086,42', '617,28', '3703,70', 1, ?, ?)");
    for (int f = 0; f < NumeroFatture; ++f)
        db.Execute(inserisci, {f % domande + 1, QStringLiteral("CANTINA SOCIALE NUMERO %1").arg(f), QString::number(f + 1),
                               QString::number(f / 4 + 1), QString::number(f % 4 + 1)});
    db.ConfermaTransazione();
    return dir;
}

struct Lista {
    QVariant modo;
    QString condizione;
    bool senzaIndice = false;  // per confronto: senza l'indice DOMANDE_ORDINE
};

void Misura(benchmark::State& stato, int domande, const Lista& lista)
{
    auto dir = Genera(domande);
    if (lista.senzaIndice)
        Db().Execute(QStringLiteral("DROP INDEX DOMANDE_ORDINE"));
    sessione().DomandaSel.ID_DOMANDA = 1;
    double primaSchermata = 0, finoInFondo = 0, passoMassimo = 0, rssPrima = 0, rssDopo = 0;
    double cpuPrima = 0, cpuFondo = 0, cpuPasso = 0;
    qint64 righe = 0;
    for (auto _ : stato) {
        QTableView griglia;
        griglia.resize(1000, 700);
        griglia.show();
        QApplication::processEvents();

        QElapsedTimer t;
        t.start();
        double cpu = CpuMs();
        AggiornaGrigliaDomande(lista.condizione, &griglia, lista.modo, nullptr, false, nullptr);
        ColonneGrigliaDomande(&griglia, lista.modo, QStringLiteral("Elenco"));
        griglia.repaint();
        primaSchermata += double(t.nsecsElapsed()) / 1e6;
        cpuPrima += CpuMs() - cpu;
        rssPrima = MemoriaResidente();

        // Ogni passo finisce con la schermata disegnata.
        QElapsedTimer passo;
        const auto misuraPasso = [&](const std::function<void()>& azione) {
            passo.start();
            const double inizio = CpuMs();
            azione();
            QApplication::processEvents();
            griglia.repaint();
            passoMassimo = std::max(passoMassimo, double(passo.nsecsElapsed()) / 1e6);
            cpuPasso = std::max(cpuPasso, CpuMs() - inizio);
        };
        // Il conteggio rimandato, poi la barra trascinata in fondo, a passi.
        t.restart();
        cpu = CpuMs();
        misuraPasso([] {});
        QScrollBar* barra = griglia.verticalScrollBar();
        for (int i = 1; i <= PassiTrascinamento; ++i)
            misuraPasso([&] { barra->setValue(barra->maximum() * i / PassiTrascinamento); });
        finoInFondo += double(t.nsecsElapsed()) / 1e6;
        cpuFondo += CpuMs() - cpu;
        rssDopo = MemoriaResidente();
        // In cima e di nuovo in fondo con la tastiera: Ctrl+Home, Ctrl+End.
        griglia.setFocus();
        for (const int tasto : {Qt::Key_Home, Qt::Key_End})
            misuraPasso([&] {
                QKeyEvent premuto(QEvent::KeyPress, tasto, Qt::ControlModifier);
                QApplication::sendEvent(&griglia, &premuto);
            });
        righe = griglia.model()->rowCount();
        if (griglia.currentIndex().row() != righe - 1)
            stato.SkipWithError("Ctrl+End non porta all'ultima riga");
        auto* modello = griglia.model();
        griglia.setModel(nullptr);
        delete modello;
    }
    const double n = double(stato.iterations());
    stato.counters["prima_schermata_ms"] = primaSchermata / n;
    stato.counters["fino_in_fondo_ms"] = finoInFondo / n;
    stato.counters["passo_max_ms"] = passoMassimo;
    stato.counters["righe"] = double(righe);
    stato.counters["prima_schermata_cpu_ms"] = cpuPrima / n;
    stato.counters["fino_in_fondo_cpu_ms"] = cpuFondo / n;
    stato.counters["passo_max_cpu_ms"] = cpuPasso;
    stato.counters["rss_prima_mb"] = rssPrima;
    stato.counters["rss_dopo_mb"] = rssDopo;
    sessione().DbDistilleria.reset();
}

void Modo1Ordinato(benchmark::State& stato)
{
    Misura(stato, 1000, {1, QStringLiteral(" Order by domanda,progressivo,DOMANDE.DATA_CAMP")});
}

void Modo1OrdinatoSenzaIndice(benchmark::State& stato)
{
    Misura(stato, 1000, {1, QStringLiteral(" Order by domanda,progressivo,DOMANDE.DATA_CAMP"), true});
}

void Modo1OrdinatoPerIntestazione(benchmark::State& stato)
{
    Misura(stato, 1000, {1, QStringLiteral(" ORDER BY FATTURE.DENOMINAZIONE")});
}

void Fatture2(benchmark::State& stato) { Misura(stato, 1, {QStringLiteral("FATTURE2"), QString()}); }

const int NumeroDomande = Bench::Dimensione(100000);

// Database consegnato con 100 000 domande, ciascuna con una fattura (ramo
// fatture) o 100 000 domande del distillatore (ramo conferimenti).
std::unique_ptr<QTemporaryDir> GeneraDomande(bool conferimenti)
{
    auto dir = std::make_unique<QTemporaryDir>();
    const QString percorso = dir->filePath(QStringLiteral("orvelta_2005.mdb"));
    const QDir sorgenti(QStringLiteral(FERMOLA_SORGENTI));
    CreaDatabaseConsegnato(percorso, sorgenti.filePath(QStringLiteral("store/schema.sql")),
                           sorgenti.filePath(QStringLiteral("data")));
    sessione().DbDistilleria = Database::Apri(percorso, false, ConnessioneDb);
    Database& db = Db();
    db.IniziaTransazione();
    for (int d = 1; d <= NumeroDomande; ++d) {
        const QString numero = QStringLiteral("%1").arg(NumeroDomande + 1 - d, 11, 10, QLatin1Char('0'));
        if (conferimenti) {
            db.Execute(QStringLiteral("INSERT INTO DOMANDE_PRODUTTORI (TIPO_ARTICOLO, DOMANDA, STAM, SCAR, "
                                      "ANTICIPO_RICEVUTO, PROG_VERS, PROG_INVIO, DATA_CAMP) "
                                      "VALUES (?, ?, 'N', 'N', 'N', '1', 0, '2005')"),
                       {d % 2 ? QStringLiteral("29") : QStringLiteral("30"), numero});
            continue;
        }
        db.Execute(QStringLiteral("INSERT INTO DOMANDE (DOMANDA, PROGRESSIVO, STAM, SCAR, TIPO_ARTICOLO, ID_VARIETA, "
                                  "PROG_VERS, PROG_INVIO, DATA_CAMP) VALUES (?, '01', 'N', 'N', '29', 1, '1', 0, '2005')"),
                   {numero});
        db.Execute(QStringLiteral("INSERT INTO FATTURE (ID_DOMANDA, CODI_FISC, DENOMINAZIONE, NUME_FATT, DATA_FATT, "
                                  "QTA_PROD, QTA_LAVO, GRAD, IMPO, IVA, IMPO_TOTA, ID_LAVORAZIONE, FOGL, RIGO) "
                                  "VALUES (?, 'RSSMRA80A01H501U', 'CANTINA SOCIALE', ?, '12/10/2005', '1234,5678', "
                                  "'1234,5678', '12,5000', '3086,42', '617,28', '3703,70', 1, '1', '1')"),
                   {d, QString::number(d)});
    }
    db.ConfermaTransazione();
    return dir;
}

// Crea la maschera, la mostra e la disegna: il tempo fino alla prima schermata.
template <typename Maschera>
std::unique_ptr<Maschera> ApriMaschera(int codice, const QString& titolo, double& ms, double* cpuMs = nullptr)
{
    sessione().OperazioneCorrente = codice;
    sessione().TitoloMaschera = titolo;
    sessione().CampagnaCorrente = QStringLiteral("2005");
    QElapsedTimer t;
    t.start();
    const double cpu = CpuMs();
    auto maschera = std::make_unique<Maschera>();
    maschera->show();
    maschera->repaint();
    ms += double(t.nsecsElapsed()) / 1e6;
    if (cpuMs)
        *cpuMs += CpuMs() - cpu;
    // Il conteggio delle righe, rimandato dopo la prima schermata.
    QApplication::processEvents();
    return maschera;
}

void FrmSelezioneFattureApertura(benchmark::State& stato)
{
    auto dir = GeneraDomande(false);
    double ms = 0, cpu = 0;
    qint64 righe = 0;
    for (auto _ : stato) {
        auto f = ApriMaschera<FrmSelezione>(1, QStringLiteral(" Fatture "), ms, &cpu);
        righe = f->Data->rowCount();
        if (righe != NumeroDomande)
            stato.SkipWithError("righe non contate");
    }
    stato.counters["prima_schermata_ms"] = ms / double(stato.iterations());
    stato.counters["prima_schermata_cpu_ms"] = cpu / double(stato.iterations());
    stato.counters["righe_lette"] = double(righe);
    sessione().DbDistilleria.reset();
}

void FrmSelezioneFattureRicerca(benchmark::State& stato)
{
    auto dir = GeneraDomande(false);
    double apertura = 0, ricerca = 0;
    QString trovata;
    auto f = ApriMaschera<FrmSelezione>(1, QStringLiteral(" Fatture "), apertura);
    int n = 0;
    for (auto _ : stato) {
        const QString numero = QStringLiteral("%1").arg(1 + (n++ * 7919) % NumeroDomande, 11, 10, QLatin1Char('0'));
        f->TxtSEL_NumDom[0]->setText(numero);
        QElapsedTimer t;
        t.start();
        f->Cmddati[0]->click();
        f->repaint();
        ricerca += double(t.nsecsElapsed()) / 1e6;
        trovata = f->Data->rowCount() == 1 ? f->Data->Campo(0, QStringLiteral("NUME_FATT")).testo() : QString();
        if (trovata.isEmpty())
            stato.SkipWithError("ricerca senza risultato");
    }
    stato.counters["ricerca_ms"] = ricerca / double(stato.iterations());
    f.reset();
    sessione().DbDistilleria.reset();
}

void FrmProduttoriSelezioneApertura(benchmark::State& stato)
{
    auto dir = GeneraDomande(true);
    double ms = 0, cpu = 0;
    qint64 righe = 0;
    for (auto _ : stato) {
        auto f = ApriMaschera<FrmProduttori_Selezione>(7, QStringLiteral(" Domande del distillatore "), ms, &cpu);
        righe = f->Data->rowCount();
        if (righe != NumeroDomande)
            stato.SkipWithError("righe non contate");
    }
    stato.counters["prima_schermata_ms"] = ms / double(stato.iterations());
    stato.counters["prima_schermata_cpu_ms"] = cpu / double(stato.iterations());
    stato.counters["righe_lette"] = double(righe);
    sessione().DbDistilleria.reset();
}

}  // namespace

BENCHMARK(FrmSelezioneFattureApertura)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(FrmSelezioneFattureRicerca)->Unit(benchmark::kMillisecond)->Iterations(20);
BENCHMARK(FrmProduttoriSelezioneApertura)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(Modo1Ordinato)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(Modo1OrdinatoSenzaIndice)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(Modo1OrdinatoPerIntestazione)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(Fatture2)->Unit(benchmark::kMillisecond)->Iterations(5);

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    return Bench::Esegui(argc, argv);
}
