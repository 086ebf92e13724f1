// Lista di 100 000 fatture in una griglia: tempo fino alla prima schermata
// disegnata e tempo per scorrere fino all'ultima riga.
//   - Modo1Ordinato: la lista "Fatture" delle domande (modo 1, join esterno
//     DOMANDE-FATTURE) con l'ordinamento della ricerca, 1000 domande da 100
//     fatture;
//   - Modo1OrdinatoSenzaIndice: lo stesso senza l'indice DOMANDE_ORDINE, per
//     misurare quanto vale l'indice;
//   - Fatture2: le fatture di una domanda (modo "FATTURE2") che ne ha 100 000.
// passo_max_ms è il passo di scorrimento più lungo (un blocco di righe).
// Obiettivo: prima schermata sotto i 100 ms, scorrimento senza blocchi.
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
#include <QElapsedTimer>
#include <QScrollBar>
#include <QTableView>
#include <QTemporaryDir>
#include "dimensioni.h"

#include <benchmark/benchmark.h>

namespace {

const int NumeroFatture = Bench::Dimensione(100000);

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
    double primaSchermata = 0, finoInFondo = 0, passoMassimo = 0;
    qint64 righe = 0;
    for (auto _ : stato) {
        QTableView griglia;
        griglia.resize(1000, 700);
        griglia.show();
        QApplication::processEvents();

        QElapsedTimer t;
        t.start();
        AggiornaGrigliaDomande(lista.condizione, &griglia, lista.modo, nullptr, false, nullptr);
        ColonneGrigliaDomande(&griglia, lista.modo, QStringLiteral("Elenco"));
        griglia.repaint();
        primaSchermata += double(t.nsecsElapsed()) / 1e6;

        // Come l'utente che trascina la barra in fondo: ogni arrivo in fondo
        // carica il blocco successivo, finché le righe finiscono.
        t.restart();
        auto* modello = griglia.model();
        QElapsedTimer passo;
        while (modello->canFetchMore(QModelIndex())) {
            passo.start();
            griglia.scrollToBottom();
            QApplication::processEvents();
            passoMassimo = std::max(passoMassimo, double(passo.nsecsElapsed()) / 1e6);
        }
        griglia.scrollToBottom();
        griglia.repaint();
        finoInFondo += double(t.nsecsElapsed()) / 1e6;
        righe = modello->rowCount();
        griglia.setModel(nullptr);
        delete modello;
    }
    const double n = double(stato.iterations());
    stato.counters["prima_schermata_ms"] = primaSchermata / n;
    stato.counters["fino_in_fondo_ms"] = finoInFondo / n;
    stato.counters["passo_max_ms"] = passoMassimo;
    stato.counters["righe"] = double(righe);
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
std::unique_ptr<Maschera> ApriMaschera(int codice, const QString& titolo, double& ms)
{
    sessione().OperazioneCorrente = codice;
    sessione().TitoloMaschera = titolo;
    sessione().CampagnaCorrente = QStringLiteral("2005");
    QElapsedTimer t;
    t.start();
    auto maschera = std::make_unique<Maschera>();
    maschera->show();
    maschera->repaint();
    ms += double(t.nsecsElapsed()) / 1e6;
    return maschera;
}

void FrmSelezioneFattureApertura(benchmark::State& stato)
{
    auto dir = GeneraDomande(false);
    double ms = 0;
    qint64 righe = 0;
    for (auto _ : stato) {
        auto f = ApriMaschera<FrmSelezione>(1, QStringLiteral(" Fatture "), ms);
        righe = f->Data->rowCount();
    }
    stato.counters["prima_schermata_ms"] = ms / double(stato.iterations());
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
    double ms = 0;
    qint64 righe = 0;
    for (auto _ : stato) {
        auto f = ApriMaschera<FrmProduttori_Selezione>(7, QStringLiteral(" Domande del distillatore "), ms);
        righe = f->Data->rowCount();
    }
    stato.counters["prima_schermata_ms"] = ms / double(stato.iterations());
    stato.counters["righe_lette"] = double(righe);
    sessione().DbDistilleria.reset();
}

}  // namespace

BENCHMARK(FrmSelezioneFattureApertura)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(FrmSelezioneFattureRicerca)->Unit(benchmark::kMillisecond)->Iterations(20);
BENCHMARK(FrmProduttoriSelezioneApertura)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(Modo1Ordinato)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(Modo1OrdinatoSenzaIndice)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(Fatture2)->Unit(benchmark::kMillisecond)->Iterations(5);

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    return Bench::Esegui(argc, argv);
}
