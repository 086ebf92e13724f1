#include "invoices/FrmSelezionaFatture.h"

#include "common/aiuti_maschera.h"
#include "common/aiuto.h"
#include "common/errore.h"
#include "common/liste.h"
#include "common/log_errori.h"
#include "common/piattaforma.h"
#include "invoices/ScrittureFatture.h"
#include "shell/registro_maschere.h"
#include "shell/session_state.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

namespace {

const QString ModoLista = QStringLiteral("FATTURE2");

// Colonne della griglia su cui un clic nell'intestazione ordina.
const QMap<int, QString> ColonneOrdinabili = {
    {12, QStringLiteral("FATTURE.CODI_FISC")},
    {13, QStringLiteral("FATTURE.DENOMINAZIONE")},
    {14, QStringLiteral("FATTURE.NUME_FATT")},
    {15, QStringLiteral("FATTURE.DATA_FATT")},
};

QLineEdit* CampoLettura(QMap<int, QLineEdit*>& array, int indice, const QString& tag, QGridLayout* griglia,
                        int riga, int colonna, const QString& etichetta, QWidget* genitore)
{
    auto* campo = new QLineEdit(genitore);
    campo->setObjectName(QStringLiteral("TxtDati_%1").arg(indice));
    // Sola lettura con il fondo della finestra: si legge bene e non sembra da
    // riempire (un riquadro disabilitato li scriveva grigio su grigio).
    campo->setReadOnly(true);
    campo->setFocusPolicy(Qt::ClickFocus);
    QPalette colori = campo->palette();
    colori.setColor(QPalette::Base, colori.color(QPalette::Window));
    campo->setPalette(colori);
    ImpostaTag(campo, tag);
    campo->setToolTip(etichetta);
    auto* lbl = new QLabel(etichetta, genitore);
    lbl->setBuddy(campo);
    griglia->addWidget(lbl, riga, colonna);
    griglia->addWidget(campo, riga, colonna + 1);
    array.insert(indice, campo);
    return campo;
}

}  // namespace

FrmSelezionaFatture::FrmSelezionaFatture(QWidget* genitore) : QDialog(genitore)
{
    setObjectName(QStringLiteral("FrmSelezionaFatture"));
    setWindowTitle(QStringLiteral("Seleziona Fatture"));
    setModal(true);

    Frame1 = new QGroupBox(this);
    Frame1->setObjectName(QStringLiteral("Frame1"));
    auto* g1 = new QGridLayout(Frame1);
    CampoLettura(TxtDati, 0, QStringLiteral("DOMANDA"), g1, 0, 0, QStringLiteral("Num. Domanda"), Frame1);
    CampoLettura(TxtDati, 1, QStringLiteral("PROGRESSIVO"), g1, 0, 2, QStringLiteral("Progressivo"), Frame1);
    CampoLettura(TxtDati, 2, QStringLiteral("TIPO_ARTICOLO"), g1, 0, 4, QStringLiteral("N.Articolo"), Frame1);
    CampoLettura(TxtDati, 3, QStringLiteral("PRODOTTO"), g1, 1, 0, QStringLiteral("Prodotto ottenuto"), Frame1);
    CampoLettura(TxtDati, 15, QStringLiteral("CAMPAGNA"), g1, 1, 2, QStringLiteral("Campagna"), Frame1);
    for (int c : {1, 3, 5})
        g1->setColumnStretch(c, 1);

    TDBG_Selfatt = new QTableView(this);
    TDBG_Selfatt->setObjectName(QStringLiteral("TDBG_Selfatt"));
    TDBG_Selfatt->setEditTriggers(QAbstractItemView::NoEditTriggers);
    TDBG_Selfatt->setSelectionBehavior(QAbstractItemView::SelectRows);
    TDBG_Selfatt->setSelectionMode(QAbstractItemView::ExtendedSelection);
    TDBG_Selfatt->setMinimumSize(640, 180);
    TDBG_Selfatt->horizontalHeader()->setSectionsClickable(true);
    TDBG_Selfatt->horizontalHeader()->setStretchLastSection(true);
    Data_SelFatt = new ModelloLista(this);
    TDBG_Selfatt->setModel(Data_SelFatt);
    connect(TDBG_Selfatt->horizontalHeader(), &QHeaderView::sectionClicked, this, [this](int c) { Ordina(c); });
    connect(TDBG_Selfatt, &QTableView::clicked, this, [this] {
        // Evidenziazione &HFF8080 (blu, verde, rosso).
        QPalette p = TDBG_Selfatt->palette();
        p.setColor(QPalette::Highlight, QColor(0x80, 0x80, 0xFF));
        TDBG_Selfatt->setPalette(p);
    });

    Frame2 = new QGroupBox(QStringLiteral("Dettaglio Fattura in Euro (€)"), this);
    Frame2->setObjectName(QStringLiteral("Frame2"));
    auto* g2 = new QGridLayout(Frame2);
    CampoLettura(TxtDati, 4, QStringLiteral("QTA_PROD"), g2, 0, 0, QStringLiteral("Prodotto Ql/Hl"), Frame2);
    CampoLettura(TxtDati, 5, QStringLiteral("GRAD"), g2, 0, 2, QStringLiteral("Grado"), Frame2);
    CampoLettura(TxtDati, 6, QStringLiteral("PREZ_MINI"), g2, 0, 4, QStringLiteral("Prezzo Unitario"), Frame2);
    CampoLettura(TxtDati, 7, QStringLiteral("IMPO"), g2, 1, 0, QStringLiteral("Imponibile"), Frame2);
    CampoLettura(TxtDati, 8, QStringLiteral("IVA"), g2, 1, 2, QStringLiteral("Iva"), Frame2);
    CampoLettura(TxtDati, 9, QStringLiteral("IMPO_TOTA"), g2, 1, 4, QStringLiteral("Importo"), Frame2);
    CampoLettura(TxtDati, 10, QStringLiteral("DATA_PAGA"), g2, 2, 0, QStringLiteral("Data pagamento"), Frame2);
    // Tag e tooltip di 11 e 12 incrociati come nel programma originale: non si usano.
    CampoLettura(TxtDati, 11, QStringLiteral("QTA_lavorata"), g2, 2, 2, QStringLiteral("Data di introduzione"),
                 Frame2)
        ->setToolTip(QStringLiteral("QTA_lavorata"));
    CampoLettura(TxtDati, 12, QStringLiteral("data_comp"), g2, 2, 4, QStringLiteral("Quantità lavorata"), Frame2)
        ->setToolTip(QStringLiteral("data_comp"));

    auto* AntaFrame21 = new QGroupBox(this);
    AntaFrame21->setObjectName(QStringLiteral("AntaFrame21"));
    auto* g3 = new QGridLayout(AntaFrame21);
    CampoLettura(TxtDati, 14, QStringLiteral("TOTALE"), g3, 0, 0, QStringLiteral("Totale Quintali delle fatture"),
                 AntaFrame21)
        ->setMinimumWidth(110);

    auto* pulsanti = new QHBoxLayout;
    const char* didascalie[] = {"Help", "Nuovo", "Modifica", "Esci", "Cancella"};
    for (int i = 0; i < 5; ++i) {
        auto* b = new QPushButton(QString::fromUtf8(didascalie[i]), this);
        b->setObjectName(QStringLiteral("Cmddati_%1").arg(i));
        b->setAutoDefault(false);
        Cmddati.insert(i, b);
        connect(b, &QPushButton::clicked, this, [this, i] { Cmddati_Click(i); });
    }
    // In fila come li legge l'utente: Nuovo, Modifica, Cancella, Help, Esci.
    for (int i : {1, 2, 4, 0, 3})
        pulsanti->addWidget(Cmddati.value(i));

    auto* basso = new QHBoxLayout;
    basso->addWidget(AntaFrame21);
    basso->addStretch();
    basso->addLayout(pulsanti);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(Frame1);
    layout->addWidget(TDBG_Selfatt, 1);
    layout->addWidget(Frame2);
    layout->addLayout(basso);

    PosizionaForm(this, true, nullptr);
    const DomandaSelezionata& d = sessione().DomandaSel;
    TxtDati.value(0)->setText(d.DOMANDA);
    TxtDati.value(1)->setText(d.PROGRESSIVO);
    TxtDati.value(2)->setText(d.TIPO_ARTICOLO);
    TxtDati.value(3)->setText(d.PRODOTTO);
    TxtDati.value(15)->setText(d.CAMPAGNA);
    CaricaGriglia();
}

FrmSelezionaFatture::~FrmSelezionaFatture() = default;

void FrmSelezionaFatture::CaricaGriglia(const QString& ordine)
{
    try {
        IstruzioneSql condizione;
        if (!ordine.isEmpty())
            condizione = IstruzioneSql(QStringLiteral(" ORDER BY ") + ordine);
        AggiornaGrigliaDomande(condizione, TDBG_Selfatt, ModoLista, nullptr, false, Data_SelFatt);
        ColonneGrigliaDomande(TDBG_Selfatt, ModoLista, QString());
        for (int c : ColonneOrdinabili.keys())
            TDBG_Selfatt->resizeColumnToContents(c);
    } catch (const ErroreSistema& e) {
        ScriviLogErr(QString(), QStringLiteral(" FrmSelezionaFatture CmdDATI_Click"), e.numero(), e.descrizione());
        return;
    }
    // Un nuovo insieme di righe porta il cursore sulla prima, come una
    // griglia legata: i dettagli la seguono.
    disconnect(TDBG_Selfatt->selectionModel(), nullptr, this, nullptr);
    connect(TDBG_Selfatt->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& attuale) {
                if (attuale.isValid())
                    CursoreMosso();
            });
    if (Data_SelFatt->rowCount() > 0)
        TDBG_Selfatt->selectionModel()->setCurrentIndex(Data_SelFatt->index(0, 12), QItemSelectionModel::NoUpdate);
}

void FrmSelezionaFatture::CursoreMosso()
{
    SelRiga_SelFatture();
    PassaCampi_SelFatt();
}

int FrmSelezionaFatture::RigheSelezionate() const
{
    return static_cast<int>(TDBG_Selfatt->selectionModel()->selectedRows().size());
}

void FrmSelezionaFatture::SelRiga_SelFatture()
{
    try {
        const int riga = TDBG_Selfatt->currentIndex().row();
        FatturaSelezionata& f = sessione().FatturaSel;
        auto testo = [&](const char* nome) { return Data_SelFatt->Campo(riga, QString::fromLatin1(nome)).testo(); };
        f.ID_FATTURA = static_cast<qint32>(Data_SelFatt->Campo(riga, QStringLiteral("id_fattura")).intero());
        f.ID_DOMANDA = static_cast<qint32>(Data_SelFatt->Campo(riga, QStringLiteral("DOMANDE.ID_DOMANDA")).intero());
        f.CODI_FISC = testo("CODI_FISC");
        f.DENOMINAZIONE = testo("DENOMINAZIONE");
        f.NUME_FATT = testo("NUME_FATT");
        f.DATA_FATT = testo("DATA_FATT");
        f.QTA_PROD = testo("QTA_PROD");
        f.GRAD = testo("GRAD");
        f.PREZ_MINI = testo("PREZ_MINI");
        f.IMPO = testo("IMPO");
        f.IVA = testo("IVA");
        f.IMPO_TOTA = testo("IMPO_TOTA");
        f.DATA_PAGA = testo("DATA_PAGA");
        f.DATA_COMP = testo("DATA_COMP");
        f.QTA_LAVO = testo("QTA_LAVO");
        f.ID_LAVORAZIONE = testo("ID_LAVORAZIONE");
    } catch (const ErroreSistema& e) {
        ScriviLogErr(QString(), QStringLiteral(" FrmSelezionaFatture.SelRiga_SelFatture"), e.numero(),
                     e.descrizione());
    }
}

void FrmSelezionaFatture::PassaCampi_SelFatt()
{
    try {
        const FatturaSelezionata& f = sessione().FatturaSel;
        const QString valori[] = {f.QTA_PROD, f.GRAD, f.PREZ_MINI, f.IMPO,      f.IVA,
                                  f.IMPO_TOTA, f.DATA_PAGA, f.DATA_COMP, f.QTA_LAVO};
        for (int i = 0; i < 9; ++i)
            TxtDati.value(4 + i)->setText(valori[i]);
        TxtDati.value(14)->setText(TotaleQuintali(sessione().DomandaSel.ID_DOMANDA).value_or(QString()));
    } catch (const ErroreSistema& e) {
        ScriviLogErr(QString(), QStringLiteral(" FrmSelezionaFatture PassaCampi_SelFatt"), e.numero(),
                     e.descrizione());
    }
}

void FrmSelezionaFatture::Cmddati_Click(int indice)
{
    try {
        switch (indice) {
        case 0:
            MostraHelp(QStringLiteral("FRMSELEZIONE_SELFAT"));
            break;
        case 1:
            Nuovo();
            break;
        case 2:
            Modifica();
            break;
        case 3:
            done(QDialog::Rejected);
            break;
        case 4:
            Cancella();
            break;
        default:
            break;
        }
    } catch (const ErroreSistema& e) {
        ScriviLogErr(QString(), QStringLiteral(" FrmSelezionaFatture CmdDATI_Click"), e.numero(), e.descrizione());
    }
}

void FrmSelezionaFatture::Nuovo()
{
    sessione().ModoMaschera = QStringLiteral("I");
    sessione().FatturaSel.ID_FATTURA = 0;
    ApriMascheraModale(QStringLiteral("FrmFattura"), this);
    CaricaGriglia();
}

void FrmSelezionaFatture::Modifica()
{
    Sessione& s = sessione();
    s.ModoMaschera = QStringLiteral("M");
    if (RigheSelezionate() == 0) {
        MsgBox(QStringLiteral("Selezionare almeno una fattura."), StileMsg::Informazione, s.TitoloMaschera);
        return;
    }
    // La copia delle bolle è ciò che permette a FrmFattura di annullare.
    CopiaBolleInAppoggio(s.FatturaSel.ID_FATTURA);
    SelRiga_SelFatture();
    PassaCampi_SelFatt();
    ApriMascheraModale(QStringLiteral("FrmFattura"), this);
    CaricaGriglia();
}

void FrmSelezionaFatture::Cancella()
{
    Sessione& s = sessione();
    if (RigheSelezionate() == 0) {
        MsgBox(QStringLiteral("Selezionare almeno una fattura."), StileMsg::Informazione, s.TitoloMaschera);
        return;
    }
    if (MsgBox(QStringLiteral("Confermi la cancellazione della fattura: ") + s.FatturaSel.NUME_FATT,
               StileMsg::SiNo + StileMsg::SecondoPredefinito + StileMsg::Informazione,
               s.TitoloMaschera) == RispostaMsg::No)
        return;
    if (EliminaFattura(s.FatturaSel.ID_FATTURA, s.DomandaSel.ID_DOMANDA))
        MsgBox(QStringLiteral("Operazione correttamente eseguita."), StileMsg::Informazione);
    else
        MsgBox(QStringLiteral("Operazione non eseguita."), StileMsg::Informazione);
    CaricaGriglia();
}

void FrmSelezionaFatture::Ordina(int colonna)
{
    const auto it = ColonneOrdinabili.constFind(colonna);
    if (it != ColonneOrdinabili.constEnd())
        CaricaGriglia(it.value());
}

void FrmSelezionaFatture::keyPressEvent(QKeyEvent* evento)
{
    if (evento->key() == Qt::Key_F1) {
        Cmddati_Click(0);
        return;
    }
    // Esc e Invio non chiudono l'elenco: si esce con "Esci".
    if (evento->key() == Qt::Key_Escape || evento->key() == Qt::Key_Return || evento->key() == Qt::Key_Enter)
        return;
    QDialog::keyPressEvent(evento);
}
