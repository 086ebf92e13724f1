#include "invoices/FrmFattura.h"

#include "common/aiuti_maschera.h"
#include "common/codice_fiscale.h"
#include "common/denominazione.h"
#include "common/errore.h"
#include "common/filtri_tastiera.h"
#include "common/log_errori.h"
#include "common/numeri.h"
#include "common/piattaforma.h"
#include "invoices/ContiFatture.h"
#include "invoices/ScrittureFatture.h"
#include "invoices/frmBolleConsegne.h"
#include "shell/session_state.h"
#include "store/database.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpressionValidator>

namespace {

const QString EtichettaClick = QStringLiteral("FrmFATTURA.CMDDATI_CLICK");
const QString EtichettaMetodi = QStringLiteral("FrmFattura motedofatture");
const QString EtichettaControlla = QStringLiteral("FrmFattura CONTROLLACAMPI");
const QString TitoloSalvataggio = QStringLiteral("Salvataggio ");
const QString ZeroQuantita = QStringLiteral("0,0000");
const QString ZeroImporto = QStringLiteral("0,00");

struct DefinizioneCampo {
    int indice;
    const char* tag;
    int lunghezza;
    const char* etichetta;
    const char* tooltip;  // nullptr: come l'etichetta
    GenereCampo genere;
    FiltroCampo filtro;
    int decimali;
    int riga, colonna;
};

// I campi della fattura (Frame2), nella disposizione a video.
const DefinizioneCampo CampiFattura2[] = {
    {4, "CODI_FISC", 16, "Codice fiscale", "Codice fiscale o partita iva", GenereCampo::Libero,
     FiltroCampo::Caratteri, 0, 0, 0},
    {5, "DENOMINAZIONE", 50, "Denominazione", nullptr, GenereCampo::Libero, FiltroCampo::Caratteri, 0, 1, 0},
    {6, "NUME_FATT", 15, "N° Fattura", "Numero della fattura", GenereCampo::Libero, FiltroCampo::Caratteri, 0, 2, 0},
    {7, "DATA_FATT", 10, "Data Fattura", "Data della fattura", GenereCampo::Data, FiltroCampo::Data, 0, 2, 2},
    {8, "DATA_COMP", 10, "Data di inizio introduzione", "Data di introduzione", GenereCampo::Data, FiltroCampo::Data,
     0, 3, 0},
    {9, "DATA_PAGA", 10, "Data pagamento", nullptr, GenereCampo::Data, FiltroCampo::Data, 0, 3, 2},
    {11, "PREZ_MINI", 9, "prezzo unitario al Grado", "Prezzo Unitario al grado", GenereCampo::Quantita,
     FiltroCampo::Decimale, 4, 5, 0},
    {12, "GRAD", 7, "Grado", nullptr, GenereCampo::Quantita, FiltroCampo::Decimale, 4, 5, 2},
    {13, "QTA_PROD", 12, "Prodotto Ql/Hl", nullptr, GenereCampo::Quantita, FiltroCampo::Decimale, 4, 6, 0},
    {14, "QTA_LAVO", 12, "Q.ta distillata", "Quantità lavorata", GenereCampo::Quantita, FiltroCampo::Decimale, 4, 6,
     2},
    {15, "IMPO", 15, "Imponibile €", "Imponibile", GenereCampo::Importo, FiltroCampo::Nessuno, 2, 7, 0},
    {16, "IVA", 15, "Iva €", "Iva", GenereCampo::Importo, FiltroCampo::Nessuno, 2, 7, 2},
    {17, "Imp_tota", 15, "Importo €", "Importo", GenereCampo::Importo, FiltroCampo::Nessuno, 2, 8, 0},
};

}  // namespace

FrmFattura::FrmFattura(QWidget* genitore) : SchermataRecord(genitore)
{
    setObjectName(QStringLiteral("FrmFattura"));
    setWindowTitle(QStringLiteral("Fattura"));

    // Dati della domanda: solo da vedere.
    Frame1 = new QGroupBox(QStringLiteral("Informazioni relative alla domanda "), this);
    Frame1->setObjectName(QStringLiteral("Frame1"));
    auto* g1 = new QGridLayout(Frame1);
    const struct {
        int indice;
        const char *tag, *etichetta, *tooltip;
        int riga, colonna, lunghezza;
    } domanda[] = {
        {0, "dont", "Num. Domanda", "Num. Domanda", 0, 0, 11},
        {1, "dont", "Progressivo", "Progressivo", 0, 2, 2},
        {2, "dont", "N.Articolo", "N.Articolo", 0, 4, 0},
        {3, "dont", "Prodotto ottenuto", "Numero Domanda", 1, 0, 11},
        {20, "cbdoma", "Campagna", "Numero Domanda", 1, 2, 0},
    };
    for (const auto& d : domanda) {
        auto* campo = new QLineEdit(Frame1);
        campo->setMinimumWidth(d.indice == 3 ? 170 : 110);
        auto* lbl = new QLabel(QString::fromUtf8(d.etichetta), Frame1);
        lbl->setBuddy(campo);
        Lbldati.insert(d.indice, lbl);
        g1->addWidget(lbl, d.riga, d.colonna);
        g1->addWidget(campo, d.riga, d.colonna + 1);
        RegistraCampo(d.indice, campo, QString::fromUtf8(d.tag), QString::fromUtf8(d.etichetta),
                      QString::fromUtf8(d.tooltip), 0);
        // Campi solo da vedere: la lunghezza massima vale per ciò che si batte,
        // il testo che mette il programma (il prodotto con la descrizione) si
        // vede intero, mentre setMaxLength lo taglierebbe.
        if (d.lunghezza > 0)
            campo->setValidator(new QRegularExpressionValidator(
                QRegularExpression(QStringLiteral(".{0,%1}").arg(d.lunghezza)), campo));
    }
    for (int c : {1, 3, 5})
        g1->setColumnStretch(c, 1);
    Frame1->setEnabled(false);

    Frame2 = new QGroupBox(QStringLiteral("Informazioni relativa alla fattura"), this);
    Frame2->setObjectName(QStringLiteral("Frame2"));
    auto* g2 = new QGridLayout(Frame2);
    QList<QWidget*> ordine;
    for (const auto& d : CampiFattura2) {
        auto* campo = new QLineEdit(Frame2);
        campo->setObjectName(QStringLiteral("TxtDati_%1").arg(d.indice));
        auto* lbl = new QLabel(QString::fromUtf8(d.etichetta), Frame2);
        lbl->setBuddy(campo);
        Lbldati.insert(d.indice, lbl);
        g2->addWidget(lbl, d.riga, d.colonna);
        // Codice fiscale e denominazione occupano la riga intera.
        const int larghezza = d.riga <= 1 ? 3 : 1;
        g2->addWidget(campo, d.riga, d.colonna + 1, 1, larghezza);
        const QString tooltip = QString::fromUtf8(d.tooltip ? d.tooltip : d.etichetta);
        RegistraCampo(d.indice, campo, QString::fromUtf8(d.tag), QString::fromUtf8(d.etichetta), tooltip, d.lunghezza,
                      d.genere);
        ImpostaFiltroCampo(d.indice, d.filtro, d.decimali);
        ordine << campo;
        if (d.indice == 4) {
            CmdTrovadenominazione = new QPushButton(QStringLiteral("..."), Frame2);
            CmdTrovadenominazione->setObjectName(QStringLiteral("CmdTrovadenominazione"));
            CmdTrovadenominazione->setToolTip(QStringLiteral("Cerca denominazione "));
            CmdTrovadenominazione->setAutoDefault(false);
            CmdTrovadenominazione->setFixedWidth(32);
            g2->addWidget(CmdTrovadenominazione, 0, 5);
            connect(CmdTrovadenominazione, &QPushButton::clicked, this, [this] { TrovaDenominazione(); });
            RegistraControllo(CmdTrovadenominazione);
            ordine << CmdTrovadenominazione;
        }
        if (d.indice == 9) {
            auto* combo = new QComboBox(Frame2);
            combo->setObjectName(QStringLiteral("cboProdotto_10"));
            auto* lblCombo = new QLabel(Frame2);
            Lbldati.insert(10, lblCombo);
            g2->addWidget(lblCombo, 4, 0);
            g2->addWidget(combo, 4, 1, 1, 3);
            RegistraCombo(cboProdotto, 10, combo, QStringLiteral("ID_LAVORAZIONE"), QStringLiteral("Prodotto lavorato"),
                          QStringLiteral("Prodotto lavorato"));
            ordine << combo;
        }
    }
    // La data di introduzione viene dalle bolle: non si batte.
    TxtDati.value(8)->setReadOnly(true);
    g2->setColumnStretch(1, 1);
    g2->setColumnStretch(3, 1);

    areaCampi()->addWidget(Frame1, 0, 0);
    areaCampi()->addWidget(Frame2, 1, 0);
    AggiungiPulsantiStandard();
    AggiungiPulsante(3, QStringLiteral("Bolle"));
    for (int i : {0, 3, 1, 2})
        ordine << Cmddati.value(i);
    for (int i = 1; i < ordine.size(); ++i)
        setTabOrder(ordine.at(i - 1), ordine.at(i));

    // Caricamento.
    PulisciCampi(this, QStringLiteral("*TIPO_ARTICOLO*"));
    // Con la riga vuota in fondo una scelta si può ritirare.
    CaricaCmb(cboProdotto.value(10), QStringLiteral("lavorazioni"), QStringLiteral("CODI_LAVO || ' ' || desc_LAVO"),
              QString(), false, QStringLiteral(" ORDER BY codi_lavo "), false, true);
    const DomandaSelezionata& d = sessione().DomandaSel;
    TxtDati.value(0)->setText(d.DOMANDA);
    TxtDati.value(1)->setText(d.PROGRESSIVO);
    TxtDati.value(2)->setText(d.TIPO_ARTICOLO);
    TxtDati.value(3)->setText(d.PRODOTTO);
    TxtDati.value(20)->setText(d.CAMPAGNA);
    CaricaMaschera();
}

FrmFattura::~FrmFattura() = default;

QString FrmFattura::Didascalia() const { return QStringLiteral("Fattura"); }

bool FrmFattura::DaRiempire() const
{
    // "I1" è accolto anche se nessuna maschera lo imposta.
    const QString modo = sessione().ModoMaschera.toUpper().trimmed();
    return modo == QLatin1String("M") || modo == QLatin1String("I1");
}

void FrmFattura::RiempiCampi() { MetodiFatture(ModoFattura::Carica); }

QString FrmFattura::EtichettaErrore(const QString& routine) const
{
    // Il nome della maschera qui è l'argomento dell'aiuto: l'etichetta usa quello vero.
    return routine == QLatin1String("Cmddati_Click") ? EtichettaClick : objectName() + QLatin1Char(' ') + routine;
}

bool FrmFattura::InModifica() const { return sessione().ModoMaschera.toUpper().trimmed() == QLatin1String("M"); }

QString FrmFattura::NomeMaschera() const
{
    return InModifica() ? QStringLiteral("FRMFATTURA_MOD") : QStringLiteral("FRMFATTURA_INS");
}

QString FrmFattura::Testo(int indice) const { return TxtDati.value(indice)->text().trimmed(); }

void FrmFattura::TxtDati_KeyPress(int indice, int& KeyAscii)
{
    if (indice < 15 || indice > 17) {
        SchermataRecord::TxtDati_KeyPress(indice, KeyAscii);
        return;
    }
    Keypress_Upper(KeyAscii);
    if (KeyAscii != 0)
        Keypress_Decimale2(TxtDati.value(indice), KeyAscii);
}

void FrmFattura::Cmddati_Click(int indice)
{
    try {
        switch (indice) {
        case 0: Salva(); break;
        case 1: Esci(); break;
        case 2: Help(); break;
        case 3: Bolle(); break;
        default: break;
        }
    } catch (const ErroreSistema& e) {
        ScriviLogErr(QString(), EtichettaClick, e.numero(), e.descrizione());
    }
}

void FrmFattura::closeEvent(QCloseEvent* evento)
{
    // Chiudere la finestra vale come "Esci": le bolle tornano come erano.
    evento->ignore();
    Cmddati_Click(1);
}

void FrmFattura::Normalizza()
{
    for (int i = 11; i <= 17; ++i) {
        QLineEdit* campo = TxtDati.value(i);
        const QString testo = campo->text().trimmed().isEmpty() ? QStringLiteral("0") : campo->text();
        campo->setText(Format(Decimale(testo), i <= 14 ? QStringLiteral("##0.0000") : QStringLiteral("##0.00")));
    }
}

void FrmFattura::Salva()
{
    Normalizza();
    Sessione& s = sessione();
    s.IndiceCampo = static_cast<qint16>(ControllaCampi());
    if (s.IndiceCampo != 0) {
        MostraEsito(s.IndiceCampo);
        return;
    }
    // Fattura, consegna delle bolle e numerazione dei fogli: tutte o
    // nessuna. Un guasto dopo la scrittura della fattura la toglie di nuovo
    // e la maschera resta com'era, pronta per un altro "Salva".
    const qint64 chiavePrima = m_idFattura;
    try {
        PuntoDiRipristino punto(Db());
        if (InModifica()) {
            MetodiFatture(ModoFattura::Aggiorna);
            // La copia delle bolle non serve più.
            EliminaAppoggioBolle();
        } else {
            MetodiFatture(ModoFattura::Inserisci);
            // Le bolle battute prima che la fattura avesse una chiave.
            AdottaBolleNuove(m_idFattura);
        }
        iMPO_RIGAFOGLIO(s.DomandaSel.DOMANDA, s.DomandaSel.PROGRESSIVO);
        punto.Conferma();
    } catch (const ErroreSistema&) {
        m_idFattura = chiavePrima;
        throw;
    }
    Scarica(QDialog::Accepted);
}

void FrmFattura::MostraEsito(int codice)
{
    QWidget* fuoco = nullptr;
    QString testo;
    if (codice == 4) {
        fuoco = TxtDati.value(4);
        testo = fuoco->toolTip() + QStringLiteral(" errato. ");
    } else if (codice == 567) {
        MsgBox(QStringLiteral("Inserire uno dei totali alcole."), StileMsg::Informazione, TitoloSalvataggio);
        fuoco = TxtDati.value(5);
    } else if (codice == 115 || codice == 117) {
        fuoco = TxtDati.value(codice - 100);  // la domanda è già stata il messaggio
    } else if (codice == 10) {
        fuoco = cboProdotto.value(10);
        testo = fuoco->toolTip() + QStringLiteral(" campo obbligatorio. ");
    } else if (codice < 101) {
        fuoco = TxtDati.value(codice);
        if (fuoco)
            testo = fuoco->toolTip() + QStringLiteral(" campo obbligatorio. ");
    } else {
        fuoco = TxtDati.value(codice - 100);
        if (fuoco)
            testo = fuoco->toolTip() + QStringLiteral(" errato. ");
    }
    if (!testo.isEmpty())
        MsgBox(testo, StileMsg::Informazione, TitoloSalvataggio);
    if (fuoco)
        fuoco->setFocus(Qt::OtherFocusReason);
}

int FrmFattura::ControllaCampi()
{
    int codice = 0;
    const auto vuotoOZero = [this](int i, const QString& zero) { return Testo(i).isEmpty() || Testo(i) == zero; };
    const QString domanda = QStringLiteral("%1\rProseguo ?");
    try {
        for (int i = 4; i <= 17; ++i) {
            sessione().IndiceCiclo = static_cast<qint16>(i);
            switch (i) {
            case 4: {
                QString valore = Testo(4);
                if (valore.isEmpty())
                    return 4;
                const bool valido = IsNumeric(valore) ? CheckPartitaIva(valore) : CodFisc(valore);
                if (!valido)
                    return 4;
                break;
            }
            case 5: case 6: case 7: case 8: case 11: case 12: case 13:
                if (vuotoOZero(i, ZeroQuantita))
                    return i;
                break;
            case 9:
                if (Testo(9).isEmpty() && !PagamentoNelleBolle(sessione().FatturaSel.ID_FATTURA))
                    return 9;
                break;
            case 10:
                // Il prodotto mancante non ferma il giro: le domande sugli
                // importi si fanno lo stesso.
                if (cboProdotto.value(10)->currentText().isEmpty())
                    codice = 10;
                break;
            case 15:
                if (vuotoOZero(15, ZeroImporto))
                    return 15;
                if (ImponibileFuoriTolleranza(Testo(12), Testo(13), Testo(11), Testo(15)) &&
                    MsgBox(domanda.arg(QStringLiteral("Imponibile immesso non corretto")),
                           StileMsg::SiNo + StileMsg::Esclamativo) == RispostaMsg::No)
                    return 117;
                break;
            case 16:
                if (vuotoOZero(16, ZeroQuantita))
                    return 16;
                break;
            case 17:
                if (vuotoOZero(17, ZeroImporto))
                    return 17;
                if (TotaleNonCorrisponde(Testo(15), Testo(16), Testo(17)) &&
                    MsgBox(domanda.arg(QStringLiteral("Totale immesso non corretto")),
                           StileMsg::SiNo + StileMsg::Esclamativo) == RispostaMsg::No)
                    return 117;
                break;
            default:
                break;
            }
        }
    } catch (const ErroreSistema& e) {
        ScriviLogErr(QString(), EtichettaControlla, e.numero(), e.descrizione());
    }
    return codice;
}

void FrmFattura::MetodiFatture(int modo)
{
    Sessione& s = sessione();
    try {
        if (modo == ModoFattura::Carica) {
            const FatturaSelezionata& f = s.FatturaSel;
            const std::pair<int, QString> valori[] = {
                {4, f.CODI_FISC}, {5, f.DENOMINAZIONE}, {6, f.NUME_FATT}, {7, f.DATA_FATT},  {8, f.DATA_COMP},
                {9, f.DATA_PAGA}, {15, f.IMPO},         {16, f.IVA},      {17, f.IMPO_TOTA}, {12, f.GRAD},
                {13, f.QTA_PROD}, {14, f.QTA_LAVO},     {11, f.PREZ_MINI},
            };
            for (const auto& [indice, valore] : valori)
                TxtDati.value(indice)->setText(valore.trimmed());
            Recordset rs = Db().OpenRecordset(
                QStringLiteral("SELECT CODI_LAVO, desc_LAVO FROM lavorazioni WHERE ID_LAVORAZIONE = ?"),
                {f.ID_LAVORAZIONE.trimmed()});
            if (rs.eof())
                throw ErroreSistema(CodiciErrore::NessunRecordCorrente);
            cboProdotto.value(10)->setCurrentText(rs.Fields(QStringLiteral("CODI_LAVO")).testo() + QLatin1Char(' ') +
                                                   rs.Fields(QStringLiteral("desc_LAVO")).testo());
            return;
        }
        CampiFattura c;
        c.CODI_FISC = Testo(4);
        c.DENOMINAZIONE = Testo(5);
        c.NUME_FATT = Testo(6);
        c.DATA_FATT = Testo(7);
        c.DATA_COMP = Testo(8);
        c.DATA_PAGA = Testo(9);
        c.IMPO = Testo(15);
        c.IVA = Testo(16);
        c.IMPO_TOTA = Testo(17);
        c.GRAD = Testo(12);
        c.QTA_PROD = Testo(13);
        c.QTA_LAVO = Testo(14);
        c.PREZ_MINI = Testo(11);
        c.Prodotto = cboProdotto.value(10)->currentText();
        const qint64 id = modo == ModoFattura::Inserisci ? 0 : s.FatturaSel.ID_FATTURA;
        const auto scritta = ScriviFattura(modo, c, id, s.DomandaSel.ID_DOMANDA);
        if (!scritta) {
            MsgBox(QStringLiteral("Nessuna fattura da aggiornare"), StileMsg::Esclamativo);
            return;
        }
        m_idFattura = *scritta;
    } catch (const ErroreSistema& e) {
        ScriviLogErr(QString(), EtichettaMetodi, e.numero(), e.descrizione());
    }
}

void FrmFattura::Esci()
{
    if (InModifica())
        RipristinaBolle(sessione().FatturaSel.ID_FATTURA);
    else
        ScartaBolleNuove();
    Scarica();
}

void FrmFattura::Bolle()
{
    if (!(Decimale(TxtDati.value(14)->text()) > Decimale(0))) {
        MsgBox(QStringLiteral("Prima di inserire le bolle di consegna, inserire la quantità distillata."),
               StileMsg::Informazione, windowTitle());
        return;
    }
    frmBolleConsegne bolle(this);
    bolle.ImpostaIdFatturaBolle(InModifica() ? QString::number(sessione().FatturaSel.ID_FATTURA)
                                             : QStringLiteral("0"));
    bolle.ImpostaQuantitaDistillata(TxtDati.value(14)->text());
    bolle.exec();
    if (const auto data = bolle.DataIntroduzione())
        TxtDati.value(8)->setText(*data);
}

void FrmFattura::TrovaDenominazione()
{
    try {
        ::TrovaDenominazione(TxtDati.value(4), TxtDati.value(5), TxtDati.value(6));
    } catch (const ErroreSistema& e) {
        ScriviLogErr(QString(), EtichettaClick, e.numero(), e.descrizione());
    }
}
