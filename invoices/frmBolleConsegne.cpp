#include "invoices/frmBolleConsegne.h"

#include "common/aiuti_maschera.h"
#include "common/errore.h"
#include "common/liste.h"
#include "common/log_errori.h"
#include "common/numeri.h"
#include "common/piattaforma.h"
#include "invoices/ContiFatture.h"
#include "invoices/ScrittureFatture.h"
#include "shell/session_state.h"
#include "store/database.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

namespace {

const QString EtichettaClick = QStringLiteral("FrmBolleConsegne CmdDati_click");
const QString EtichettaControlla = QStringLiteral("FrmBolleConsegne CONTROLLACAMPI");
const QString ZeroQuantita = QStringLiteral("0,0000");

// Colonne della griglia, nell'ordine, con la loro didascalia (vuota: nascosta).
const struct {
    const char *campo, *didascalia;
} ColonneBolle[] = {
    {"ID_BOLLA", ""},
    {"NUMERO_BOLLA", "NUMERO BOLLA"},
    {"DATA_CONSEGNA", "DATA CONSEGNA"},
    {"QUANTITA_PRODOTTO", "QUANTITA' PRODOTTO"},
    {"FK_ID_FATTURA", ""},
    {"GRADO", "GRADO ALCOLOMETRICO"},
    {"NUME_FATT_TRAS", "N. FATTURA TRASP."},
    {"DATA_FATT_TRAS", "DATA FATTURA TRASP."},
    {"DATA_PAGA", "DATA PAGAMENTO"},
};

}  // namespace

frmBolleConsegne::frmBolleConsegne(QWidget* genitore) : SchermataRecord(genitore)
{
    setObjectName(QStringLiteral("frmBolleConsegne"));
    setWindowTitle(QStringLiteral("Bolle consegne"));

    auto* griglia = new QGroupBox(this);
    griglia->setObjectName(QStringLiteral("fraGriglia_0"));
    fraGriglia.insert(0, griglia);
    tdbgBolle = new QTableView(griglia);
    tdbgBolle->setObjectName(QStringLiteral("tdbgBolle"));
    tdbgBolle->setEditTriggers(QAbstractItemView::NoEditTriggers);
    tdbgBolle->setSelectionBehavior(QAbstractItemView::SelectRows);
    tdbgBolle->setSelectionMode(QAbstractItemView::ExtendedSelection);
    tdbgBolle->setMinimumSize(960, 200);
    tdbgBolle->horizontalHeader()->setStretchLastSection(true);
    datBolle = new ModelloLista(this);
    tdbgBolle->setModel(datBolle);
    auto* lg = new QVBoxLayout(griglia);
    lg->addWidget(tdbgBolle);
    RegistraControllo(tdbgBolle);

    auto* dettaglio = new QGroupBox(QStringLiteral("Dettaglio Bolla di consegna"), this);
    dettaglio->setObjectName(QStringLiteral("fraGriglia_1"));
    fraGriglia.insert(1, dettaglio);
    auto* gd = new QGridLayout(dettaglio);
    const struct {
        int indice, lunghezza;
        const char* etichetta;
        GenereCampo genere;
        FiltroCampo filtro;
        int riga, colonna;
    } campi[] = {
        {1, 20, "Numero bolla", GenereCampo::Libero, FiltroCampo::Caratteri, 0, 0},
        {2, 10, "Data consegna", GenereCampo::Data, FiltroCampo::Data, 0, 2},
        {3, 12, "Quantità di prodotto consegnata", GenereCampo::Quantita, FiltroCampo::Decimale, 1, 0},
        {7, 7, "Grado alcolometrico", GenereCampo::Quantita, FiltroCampo::Decimale, 1, 2},
        {4, 10, "Data pagamento", GenereCampo::Data, FiltroCampo::Data, 2, 0},
        {5, 15, "N. fattura trasporto", GenereCampo::Libero, FiltroCampo::Caratteri, 3, 0},
        {6, 10, "Data della fattura trasporto", GenereCampo::Data, FiltroCampo::Data, 3, 2},
    };
    for (const auto& c : campi) {
        auto* campo = new QLineEdit(dettaglio);
        campo->setObjectName(QStringLiteral("TxtDati_%1").arg(c.indice));
        auto* lbl = new QLabel(QString::fromUtf8(c.etichetta), dettaglio);
        lbl->setBuddy(campo);
        Lbldati.insert(c.indice, lbl);
        gd->addWidget(lbl, c.riga, c.colonna);
        gd->addWidget(campo, c.riga, c.colonna + 1);
        // Il Tag dei primi tre campi è QTA_PROD per tutti, e non si usa.
        RegistraCampo(c.indice, campo, c.indice <= 3 ? QStringLiteral("QTA_PROD") : QString(),
                      QString::fromUtf8(c.etichetta), QString::fromUtf8(c.etichetta), c.lunghezza, c.genere);
        ImpostaFiltroCampo(c.indice, c.filtro, 4);
    }
    // I campi della fattura di trasporto non si vedono mai: le colonne restano
    // come le ha lasciate il carico.
    for (int i : {5, 6}) {
        TxtDati.value(i)->setVisible(false);
        Lbldati.value(i)->setVisible(false);
    }
    gd->setColumnStretch(1, 1);
    gd->setColumnStretch(3, 1);

    areaCampi()->addWidget(griglia, 0, 0);
    areaCampi()->addWidget(dettaglio, 1, 0);
    // In fila: Modifica/Salva, Nuova, Cancella, Esci; sul dettaglio restano Salva ed Esci.
    AggiungiPulsante(0, QStringLiteral("Modifica"));
    AggiungiPulsante(1, QStringLiteral("Nuova"));
    AggiungiPulsante(3, QStringLiteral("Cancella"));
    AggiungiPulsante(2, QStringLiteral("Esci"), false);

    MostraGriglia(true);
    Aggiorna();
    CaricaMaschera();
    // Sopra la fattura che la apre.
    PosizionaForm(this, false, genitore);
}

QString frmBolleConsegne::Didascalia() const { return QStringLiteral("Bolle consegne"); }

QString frmBolleConsegne::EtichettaErrore(const QString& routine) const
{
    return routine == QLatin1String("Cmddati_Click") ? EtichettaClick : SchermataRecord::EtichettaErrore(routine);
}

frmBolleConsegne::~frmBolleConsegne() = default;

void frmBolleConsegne::ImpostaIdFatturaBolle(const QString& id)
{
    m_idFatturaBolle = id;
    Aggiorna();
}

void frmBolleConsegne::Aggiorna()
{
    if (!IsNumeric(m_idFatturaBolle))
        return;
    QStringList colonne;
    for (const auto& c : ColonneBolle)
        colonne << QString::fromLatin1(c.campo);
    try {
        datBolle->Imposta(
            IstruzioneSql(QStringLiteral("SELECT %1 FROM BOLLE WHERE FK_ID_FATTURA = ? ORDER BY ID_BOLLA")
                              .arg(colonne.join(QStringLiteral(", "))),
                          {static_cast<qint64>(CDbl(m_idFatturaBolle))}));
    } catch (const ErroreSistema& e) {
        ScriviLogErr(QString(), EtichettaClick, e.numero(), e.descrizione());
        return;
    }
    for (int i = 0; i < colonne.size(); ++i) {
        const QString didascalia = QString::fromUtf8(ColonneBolle[i].didascalia);
        tdbgBolle->setColumnHidden(i, didascalia.isEmpty());
        datBolle->setHeaderData(i, Qt::Horizontal, didascalia);
    }
    tdbgBolle->resizeColumnsToContents();
}

bool frmBolleConsegne::SuGriglia() const { return Cmddati.value(0)->text() == QLatin1String("Modifica"); }

void frmBolleConsegne::MostraGriglia(bool griglia)
{
    for (int i = 1; i <= 7; ++i)
        TxtDati.value(i)->clear();
    fraGriglia.value(0)->setVisible(griglia);
    fraGriglia.value(1)->setVisible(!griglia);
    Cmddati.value(0)->setText(griglia ? QStringLiteral("Modifica") : QStringLiteral("Salva"));
    Cmddati.value(1)->setVisible(griglia);
    Cmddati.value(3)->setVisible(griglia);
    if (!griglia && TxtDati.value(1)->isVisible())
        TxtDati.value(1)->setFocus(Qt::OtherFocusReason);
    adjustSize();
}

void frmBolleConsegne::SommaBolle(qint64 idBolla)
{
    m_sommaAltreBolle = ::SommaBolle(static_cast<qint64>(CDbl(m_idFatturaBolle)), idBolla);
}

int frmBolleConsegne::RigaScelta() const
{
    const QModelIndexList righe = tdbgBolle->selectionModel()->selectedRows();
    return righe.isEmpty() ? -1 : righe.first().row();
}

int frmBolleConsegne::NumeroScelte() const
{
    return static_cast<int>(tdbgBolle->selectionModel()->selectedRows().size());
}

int frmBolleConsegne::CONTROLLACAMPI()
{
    try {
        for (int i = 1; i <= 7; ++i) {
            sessione().IndiceCiclo = static_cast<qint16>(i);
            const QString testo = TxtDati.value(i)->text().trimmed();
            switch (i) {
            case 1: case 2:
                if (testo.isEmpty())
                    return i;
                break;
            case 3: case 7:
                if (testo.isEmpty() || testo == ZeroQuantita)
                    return i;
                break;
            case 5: case 6: {
                // La fattura di trasporto va data per intero o per niente.
                const bool numero = !TxtDati.value(5)->text().trimmed().isEmpty();
                const bool data = !TxtDati.value(6)->text().trimmed().isEmpty();
                if (numero && !data)
                    return 6;
                if (!numero && data)
                    return 5;
                break;
            }
            default:
                break;
            }
        }
    } catch (const ErroreSistema& e) {
        ScriviLogErr(QString(), EtichettaControlla, e.numero(), e.descrizione());
    }
    return 0;
}

bool frmBolleConsegne::TxtDati_Validate(int indice)
{
    if (!ValidaGenere(indice))
        return false;
    if (indice != 3)
        return true;
    try {
        if (const auto messaggio = ControllaSommaBolle(m_sommaAltreBolle, TxtDati.value(3)->text(), m_distillata)) {
            MsgBox(*messaggio, StileMsg::Informazione, windowTitle());
            return false;
        }
    } catch (const ErroreSistema& e) {
        ScriviLogErr(QString(), EtichettaClick, e.numero(), e.descrizione());
        return false;
    }
    return true;
}

void frmBolleConsegne::Cmddati_Click(int indice)
{
    try {
        switch (indice) {
        case 0:
            if (SuGriglia())
                Modifica();
            else
                Salva();
            break;
        case 1:
            if (SuGriglia())
                Nuova();
            else
                MostraGriglia(true);
            break;
        case 2: Esci(); break;
        case 3:
            if (SuGriglia())
                Cancella();
            break;
        default: break;
        }
    } catch (const ErroreSistema& e) {
        ScriviLogErr(QString(), EtichettaClick, e.numero(), e.descrizione());
    }
}

void frmBolleConsegne::Modifica()
{
    const int scelte = NumeroScelte();
    if (scelte == 0) {
        MsgBox(QStringLiteral("Selezionare una bolla di consegna da modificare."), StileMsg::Informazione,
               windowTitle());
        return;
    }
    if (scelte > 1) {
        MsgBox(QStringLiteral("Selezionare una sola bolla di consegna da modificare."), StileMsg::Informazione,
               windowTitle());
        return;
    }
    const int riga = RigaScelta();
    m_idBollaInModifica = datBolle->Campo(riga, QStringLiteral("ID_BOLLA")).intero();
    const std::pair<int, const char*> campi[] = {
        {1, "NUMERO_BOLLA"}, {2, "DATA_CONSEGNA"}, {3, "QUANTITA_PRODOTTO"}, {4, "DATA_PAGA"}, {7, "GRADO"}};
    QStringList valori;
    for (const auto& [indice, campo] : campi)
        valori << datBolle->Campo(riga, QString::fromLatin1(campo)).testo();
    MostraGriglia(false);
    for (int i = 0; i < 5; ++i)
        TxtDati.value(campi[i].first)->setText(valori.at(i));
    ImpostaTag(fraGriglia.value(1), QStringLiteral("M"));
    SommaBolle(m_idBollaInModifica);
}

void frmBolleConsegne::Nuova()
{
    MostraGriglia(false);
    ImpostaTag(fraGriglia.value(1), QStringLiteral("I"));
    m_idBollaInModifica = 0;
    SommaBolle(0);
}

void frmBolleConsegne::Salva()
{
    const int codice = CONTROLLACAMPI();
    if (codice > 0) {
        MsgBox(TxtDati.value(codice)->toolTip() + QStringLiteral(" campo obbligatorio. "), StileMsg::Informazione,
               QStringLiteral("Salvataggio "));
        TxtDati.value(codice)->setFocus(Qt::OtherFocusReason);
        return;
    }
    Database& db = Db();
    const bool modifica = Tag(fraGriglia.value(1)) == QLatin1String("M");
    if (modifica) {
        Recordset rs = db.OpenRecordset(QStringLiteral("SELECT ID_BOLLA FROM bolle WHERE ID_BOLLA = ?"),
                                        {m_idBollaInModifica});
        if (rs.eof()) {
            MsgBox(QStringLiteral("Errore imprevisto dell'applicazione! Contattare il servizio tecnico!"),
                   StileMsg::Critico, QStringLiteral("Errore Tecnico"));
            // La scrittura dei campi senza riga corrente fallisce.
            throw ErroreSistema(CodiciErrore::NessunRecordCorrente);
        }
    }
    const Campi riga = {
        {QStringLiteral("NUMERO_BOLLA"), TxtDati.value(1)->text()},
        {QStringLiteral("DATA_CONSEGNA"), TxtDati.value(2)->text()},
        {QStringLiteral("QUANTITA_PRODOTTO"), TxtDati.value(3)->text()},
        {QStringLiteral("FK_ID_FATTURA"), static_cast<qint64>(CDbl(m_idFatturaBolle))},
        {QStringLiteral("DATA_PAGA"), TxtDati.value(4)->text()},
        {QStringLiteral("GRADO"), TxtDati.value(7)->text()},
    };
    if (modifica)
        db.AggiornaRiga(QStringLiteral("BOLLE"), riga, QStringLiteral("WHERE ID_BOLLA = ?"), {m_idBollaInModifica});
    else
        db.InserisciRiga(QStringLiteral("BOLLE"), riga);
    MostraGriglia(true);
    Aggiorna();
}

void frmBolleConsegne::Cancella()
{
    const int scelte = NumeroScelte();
    if (scelte == 0) {
        MsgBox(QStringLiteral("Nessuna bolla selezionata."), StileMsg::Informazione, windowTitle());
        return;
    }
    if (scelte > 1) {
        MsgBox(QStringLiteral("E' possibile eliminare una bolla di consegna alla volta."), StileMsg::Informazione,
               windowTitle());
        return;
    }
    const int riga = RigaScelta();
    if (MsgBox(QStringLiteral("Sicuro di voler eliminare la bolla n° ") +
                   datBolle->Campo(riga, QStringLiteral("NUMERO_BOLLA")).testo() + QLatin1Char('?'),
               StileMsg::SiNo + StileMsg::SecondoPredefinito + StileMsg::Informazione, windowTitle()) != RispostaMsg::Si)
        return;
    Db().Execute(QStringLiteral("DELETE FROM bolle WHERE id_bolla = ?"),
                 {datBolle->Campo(riga, QStringLiteral("ID_BOLLA")).intero()});
    Aggiorna();
}

void frmBolleConsegne::Esci()
{
    if (!SuGriglia()) {
        MostraGriglia(true);  // nulla si salva
        return;
    }
    m_dataIntroduzione = PrimaDataConsegna(static_cast<qint64>(CDbl(m_idFatturaBolle)));
    Scarica();
}

void frmBolleConsegne::closeEvent(QCloseEvent* evento)
{
    // Chiudere la finestra è uscire dalla griglia: la data va alla fattura.
    evento->ignore();
    if (!SuGriglia())
        MostraGriglia(true);
    Cmddati_Click(2);
}
