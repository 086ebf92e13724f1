#include "deliveries/FrmProduttore.h"

#include "common/aiuti_maschera.h"
#include "common/aiuto.h"
#include "common/codice_fiscale.h"
#include "common/denominazione.h"
#include "common/errore.h"
#include "common/filtri_tastiera.h"
#include "common/log_errori.h"
#include "common/numeri.h"
#include "common/piattaforma.h"
#include "common/testo.h"
#include "deliveries/MetodiProduttore.h"
#include "shell/session_state.h"
#include "store/database.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <algorithm>

namespace {

const QString TitoloSalvataggio = QStringLiteral("Salvataggio ");
const QString Obbligatorio = QStringLiteral(" campo obbligatorio. ");
const QString MsgEttogradi = QStringLiteral(
    "Gli Ettogradi non corisponde al prodotto della quantità di vino distillata beneficiaria dell'aiuto e il titolo "
    "alcolometricofatturato.");

bool Vuoto(const QLineEdit* campo) { return campo->text().trimmed().isEmpty(); }

}  // namespace

FrmProduttore::FrmProduttore(QWidget* parent) : SchermataRecord(parent)
{
    setObjectName(QStringLiteral("FrmProduttore"));
    setWindowTitle(QStringLiteral("Produttori"));
    CostruisciCampi();

    Sessione& s = sessione();
    PulisciCampi(this, QStringLiteral("*TIPO_ARTICOLO*"));
    // Con la riga vuota in fondo una scelta si può ritirare.
    CaricaCmb(cboProdotto[15], QStringLiteral("tab_colore"), QStringLiteral("desc_colore & ' ' &  codi_colore "),
              QString(), false, QStringLiteral(" ORDER BY desc_colore "), false, true);

    if (s.TitoloMaschera.toUpper() == QLatin1String(" PRODUTTORE ")) {
        // Aperta senza certificato: solo inserimento, intestazione vuota.
        s.ModoMaschera = QStringLiteral("I");
    } else {
        TxtDati[1]->setText(s.DomandaProduttoreSel.DOMANDA);
        TxtDati[2]->setText(s.DomandaProduttoreSel.TIPO_ARTICOLO);
        TxtDati[3]->setText(s.UtfSel.DATA_EMISSIONE_CERTIFICATO);
        TxtDati[4]->setText(s.UtfSel.NUMERO_CERTIFICATO_UTF);
        TxtDati[5]->setText(s.UtfSel.DESCR_UFFICIO_UTF_PROVINCIA);
        // I campi del riquadro valgono solo per l'articolo 29.
        Fra29->setEnabled(TxtDati[2]->text() != QLatin1String("30"));
    }
    CaricaMaschera();
}

void FrmProduttore::CostruisciCampi()
{
    auto* griglia = areaCampi();
    const auto campo = [this](QGridLayout* g, int riga, int colonna, int indice, const QString& tag,
                              const QString& etichetta, const QString& tooltip, int lunghezza) {
        auto* c = new QLineEdit(this);
        RegistraCampo(indice, c, tag, etichetta, tooltip, lunghezza);
        // Largo quanto il suo testo più lungo, entro un limite.
        const int caratteri = std::min(lunghezza, 18) + 1;
        c->setMinimumWidth(c->fontMetrics().horizontalAdvance(QString(caratteri, QLatin1Char('W'))) * 4 / 5 + 8);
        if (QLabel* l = Lbldati.value(indice))
            g->addWidget(l, riga, colonna);
        g->addWidget(c, riga, colonna + 1);
        return c;
    };
    const auto riquadro = [this](const QString& titolo) {
        auto* box = new QGroupBox(titolo, this);
        auto* g = new QGridLayout(box);
        return std::pair{box, g};
    };
    const QString dont = QStringLiteral("dont");

    // Intestazione: domanda e certificato, solo mostrati.
    auto [boxTesta, testa] = riquadro(QStringLiteral("Domanda e certificato UTF"));
    campo(testa, 0, 0, 1, dont, QStringLiteral("Num. Domanda"), QStringLiteral("Num. Domanda"), 11);
    campo(testa, 0, 2, 2, dont, QStringLiteral("Articolo"), QStringLiteral("Articolo"), 2);
    campo(testa, 0, 4, 3, dont, QStringLiteral("emesso il "), QStringLiteral("emesso il "), 10);
    campo(testa, 1, 0, 4, dont, QStringLiteral("Numero del certificato UTF"),
          QStringLiteral("Numero del certificato UTF"), 20);
    campo(testa, 1, 2, 5, dont, QStringLiteral("Ufficio UTF di "), QStringLiteral("Ufficio UTF di "), 40);
    testa->addWidget(TxtDati[5], 1, 3, 1, 3);
    for (int i = 1; i <= 5; ++i) {
        TxtDati[i]->setReadOnly(true);
        TxtDati[i]->setFocusPolicy(Qt::NoFocus);
    }
    griglia->addWidget(boxTesta, 0, 0);

    // Produttore.
    auto [boxProd, prod] = riquadro(QStringLiteral("Produttore"));
    campo(prod, 0, 0, 6, QStringLiteral("CODI_FISC"), QStringLiteral("Codice fiscale / P. IVA"),
          QStringLiteral("Codice fiscale o partita iva"), 16);
    CmdTrovadenominazione = new QPushButton(QStringLiteral("Cerca"), this);
    CmdTrovadenominazione->setToolTip(QStringLiteral("Cerca denominazione "));
    CmdTrovadenominazione->setAutoDefault(false);
    prod->addWidget(CmdTrovadenominazione, 0, 2);
    campo(prod, 1, 0, 7, QString(), QStringLiteral("Denominazione"), QStringLiteral("Denominazione"), 70);
    prod->addWidget(TxtDati[7], 1, 1, 1, 2);
    campo(prod, 2, 0, 8, QStringLiteral("CODICE_CONTRATTO_DISTILLAZIONE"), QStringLiteral("Codice contratto"),
          QStringLiteral("Codice a barre contratto Dist."), 11);
    griglia->addWidget(boxProd, 1, 0);

    // Riquadro dell'articolo 29.
    auto [box29, art29] = riquadro(QStringLiteral("Articolo 29"));
    Fra29 = box29;
    campo(art29, 0, 0, 9, QStringLiteral("CAMPAGNA_PRESCELTA"), QStringLiteral("Campagna prescelta"),
          QStringLiteral("Campagna prescelta"), 4);
    campo(art29, 0, 2, 10, QStringLiteral("QTA_MAX_DISTILLABILE"), QStringLiteral("Max q.tà distillabile"),
          QStringLiteral("Massima quantità distillabile"), 12);
    campo(art29, 1, 0, 11, QStringLiteral("COMUNICAZIONE_CONTRATTO"), QStringLiteral("Comunicazione contratto mese"),
          QStringLiteral("Comunicazione del contratto"), 2);
    campo(art29, 1, 2, 12, QStringLiteral("COMUNICAZIONE_CONTRATTO"), QStringLiteral("quindicina"),
          QStringLiteral("Comunicazione del contratto"), 1);
    chkApprovazioneAnticipata = new QCheckBox(QStringLiteral("Approvazione anticipata"), this);
    chkApprovazioneAnticipata->setToolTip(QStringLiteral("Approvazione anticipata"));
    ImpostaTag(chkApprovazioneAnticipata, QStringLiteral("APPROVAZIONE_ANTICIPATA"));
    art29->addWidget(chkApprovazioneAnticipata, 2, 0, 1, 2);
    campo(art29, 2, 2, 26, QStringLiteral("PERC_APPROVAZIONE_ANTICIPATA"), QStringLiteral("Percentuale %"),
          QStringLiteral("Percentuale di approvazione anticipata"), 2);
    griglia->addWidget(box29, 2, 0);

    // Vino conferito.
    auto [boxVino, vino] = riquadro(QStringLiteral("Vino"));
    campo(vino, 0, 0, 13, QStringLiteral("QTA_VINO_EFFETIVAMENTE_DISTILLATA"), QStringLiteral("Vino eff. distillato"),
          QStringLiteral("Vino effettivamente distillato"), 12);
    campo(vino, 0, 2, 14, QStringLiteral("QTA_VINO_DISTILLATA_AIUTO"), QStringLiteral("Q.tà richiesta di aiuto"),
          QStringLiteral("Quantità richiesta di aiuto vino distillato"), 12);
    auto* colore = new QComboBox(this);
    RegistraCombo(cboProdotto, 15, colore, QStringLiteral("ID_COLORE"), QStringLiteral("Colore del vino"),
                  QStringLiteral("Colore del vino "));
    vino->addWidget(Lbldati[15], 1, 0);
    vino->addWidget(colore, 1, 1);
    campo(vino, 1, 2, 16, QStringLiteral("TITOLO_ALCOLOMETRICO_FATTURATO"), QStringLiteral("Titolo alcolometrico"),
          QStringLiteral("Titolo alcolometro fatturato "), 7);
    griglia->addWidget(boxVino, 3, 0);

    // Quote e aiuti.
    auto [boxCalc, calc] = riquadro(QStringLiteral("Quantità ottenute e aiuti"));
    campo(calc, 0, 0, 17, QStringLiteral("ETTOGRADI"), QStringLiteral("Ettogradi"), QStringLiteral("Ettogradi"), 13);
    Cmdcalcolo = new QPushButton(QStringLiteral("Calcola"), this);
    Cmdcalcolo->setToolTip(QStringLiteral("Calcolo automatico Q.ta' ottenute e aiuti"));
    Cmdcalcolo->setAutoDefault(false);
    calc->addWidget(Cmdcalcolo, 0, 2);
    calc->addWidget(new QLabel(QStringLiteral("Quantità"), this), 1, 1);
    calc->addWidget(new QLabel(QStringLiteral("Aiuto"), this), 1, 2);
    const struct {
        int quantita, aiuto;
        const char *etichetta, *tagQta, *tagAiuto;
    } prodotti[] = {
        {18, 21, "Alcole grezzo", "QTA_ALCOLE_GREZZO", "AIUTO_ALCOLE_GREZZO"},
        {19, 22, "Alcole neutro", "QTA_ALCOLE_NEUTRO", "AIUTO_ALCOLE_NEUTRO"},
        {20, 23, "Acquavite", "QTA_ACQUAVITE", "AIUTO_ACQUAVITE"},
    };
    int riga = 2;
    for (const auto& p : prodotti) {
        campo(calc, riga, 0, p.quantita, QString::fromLatin1(p.tagQta), QString::fromUtf8(p.etichetta),
              CalcoloAiuti::Descrizione(p.quantita), 12);
        auto* aiuto = new QLineEdit(this);
        RegistraCampo(p.aiuto, aiuto, QString::fromLatin1(p.tagAiuto), QString(), CalcoloAiuti::Descrizione(p.aiuto),
                      15);
        calc->addWidget(aiuto, riga, 2);
        ++riga;
    }
    campo(calc, riga, 0, 24, QStringLiteral("IMPORTO_DETRAIBILE"), QStringLiteral("Imp. detraibile arricchimento"),
          CalcoloAiuti::Descrizione(24), 15);
    calc->addWidget(TxtDati[24], riga, 2);
    ++riga;
    campo(calc, riga, 0, 25, QStringLiteral("TOTALE_AIUTO"), QStringLiteral("Totale aiuto"),
          CalcoloAiuti::Descrizione(25), 16);
    calc->addWidget(TxtDati[25], riga, 2);
    griglia->addWidget(boxCalc, 4, 0);

    // Le cifre si leggono allineate a destra.
    for (int i : {10, 13, 14, 16, 17, 18, 19, 20, 21, 22, 23, 24, 25})
        TxtDati[i]->setAlignment(Qt::AlignRight);
    for (int i : {21, 22, 23})
        TxtDati[i]->setMinimumWidth(TxtDati[18]->minimumWidth());

    // Filtri dei tasti: le maiuscole su tutti, poi quello del campo.
    for (int i : {6, 7, 8})
        ImpostaFiltroCampo(i, FiltroCampo::Caratteri);
    for (int i : {9, 11, 12, 26})
        ImpostaFiltroCampo(i, FiltroCampo::Intero);
    for (int i : {10, 13, 14, 16, 17, 18, 19, 20})
        ImpostaFiltroCampo(i, FiltroCampo::Decimale, 4);

    AggiungiPulsantiStandard();
    RegistraControllo(Fra29);
    RegistraControllo(Cmdcalcolo);
    RegistraControllo(CmdTrovadenominazione);
    connect(Cmdcalcolo, &QPushButton::clicked, this, [this] { Cmdcalcolo_Click(); });
    connect(CmdTrovadenominazione, &QPushButton::clicked, this, [this] { CmdTrovadenominazione_Click(); });

    // Ordine del tabulatore: come si compila la scheda.
    QList<QWidget*> ordine{TxtDati[6], CmdTrovadenominazione, TxtDati[7], TxtDati[8], TxtDati[9], TxtDati[10],
                           TxtDati[11], TxtDati[12], chkApprovazioneAnticipata, TxtDati[26], TxtDati[13],
                           TxtDati[14], colore, TxtDati[16], TxtDati[17], Cmdcalcolo};
    for (int i = 18; i <= 20; ++i)
        ordine << TxtDati[i] << TxtDati[i + 3];
    ordine << TxtDati[24] << TxtDati[25] << Cmddati[0] << Cmddati[1] << Cmddati[2];
    for (qsizetype i = 1; i < ordine.size(); ++i)
        setTabOrder(ordine[i - 1], ordine[i]);
}

void FrmProduttore::RiempiCampi() { Produttore_CaricaScarica_type(3); }

void FrmProduttore::Produttore_CaricaScarica_type(int verso)
{
    ProduttoreSelezionato& p = sessione().ProduttoreSel;
    if (verso == 3) {
        const std::pair<int, const QString*> campi[] = {
            {6, &p.CODI_FISC},
            {7, &p.DENOMINAZIONE},
            {8, &p.CODICE_CONTRATTO_DISTILLAZIONE},
            {13, &p.QTA_VINO_EFFETIVAMENTE_DISTILLATA},
            {16, &p.TITOLO_ALCOLOMETRICO_FATTURATO},
            {17, &p.ETTOGRADI},
            {18, &p.QTA_ALCOLE_GREZZO},
            {19, &p.QTA_ALCOLE_NEUTRO},
            {20, &p.QTA_ACQUAVITE},
            {21, &p.AIUTO_ALCOLE_GREZZO},
            {22, &p.AIUTO_ALCOLE_NEUTRO},
            {23, &p.AIUTO_ACQUAVITE},
            {24, &p.IMPORTO_DETRAIBILE},
            {25, &p.TOTALE_AIUTO},
        };
        for (const auto& [indice, valore] : campi)
            TxtDati[indice]->setText(valore->trimmed());
        // Campagna prescelta, massima quantità e quantità richiesta non si
        // mostrano: una modifica le riscrive vuote (o a zero).
        TxtDati[9]->setMaxLength(9);
        if (p.APPROVAZIONE_ANTICIPATA == QLatin1String("S")) {
            chkApprovazioneAnticipata->setChecked(true);
            TxtDati[26]->setText(PadDestra(p.PERC_APPROVAZIONE_ANTICIPATA.trimmed(), 3, QLatin1Char('0')).mid(1, 2));
        } else {
            chkApprovazioneAnticipata->setChecked(false);
            TxtDati[26]->clear();
        }
        QComboBox* colore = cboProdotto[15];
        if ((p.DESC_COLORE + p.CODI_COLORE).trimmed().isEmpty())
            colore->setCurrentIndex(-1);
        else
            colore->setCurrentIndex(
                colore->findText(p.DESC_COLORE.trimmed() + QLatin1Char(' ') + p.CODI_COLORE.trimmed()));
        return;
    }
    if (verso != 4)
        return;

    const std::pair<int, QString*> campi[] = {
        {6, &p.CODI_FISC},
        {7, &p.DENOMINAZIONE},
        {9, &p.CAMPAGNA_PRESCELTA},
        {8, &p.CODICE_CONTRATTO_DISTILLAZIONE},
        {17, &p.ETTOGRADI},
        {16, &p.TITOLO_ALCOLOMETRICO_FATTURATO},
        {14, &p.QTA_VINO_DISTILLATA_AIUTO},
        {18, &p.QTA_ALCOLE_GREZZO},
        {19, &p.QTA_ALCOLE_NEUTRO},
        {20, &p.QTA_ACQUAVITE},
        {13, &p.QTA_VINO_EFFETIVAMENTE_DISTILLATA},
        {10, &p.QTA_MAX_DISTILLABILE},
        {21, &p.AIUTO_ALCOLE_GREZZO},
        {22, &p.AIUTO_ALCOLE_NEUTRO},
        {23, &p.AIUTO_ACQUAVITE},
        {24, &p.IMPORTO_DETRAIBILE},
        {25, &p.TOTALE_AIUTO},
    };
    for (const auto& [indice, valore] : campi)
        *valore = TxtDati[indice]->text();
    if (chkApprovazioneAnticipata->isChecked()) {
        p.APPROVAZIONE_ANTICIPATA = QStringLiteral("S");
        p.PERC_APPROVAZIONE_ANTICIPATA = TxtDati[26]->text();
    } else {
        p.APPROVAZIONE_ANTICIPATA.clear();
        p.PERC_APPROVAZIONE_ANTICIPATA.clear();
    }
    // La voce è "DESCRIZIONE CO": descrizione e codice di due lettere.
    const QString voce = cboProdotto[15]->currentText();
    Recordset rs = Db().OpenRecordset(
        QStringLiteral("select * From tab_colore where desc_colore = ? and codi_colore = ?"),
        {voce.left(voce.size() - 3), voce.right(2)});
    p.iD_COLORE = rs.Fields(QStringLiteral("iD_COLORE")).testo();
    p.CODI_COLORE = rs.Fields(QStringLiteral("CODI_COLORE")).testo();
    p.DESC_COLORE = rs.Fields(QStringLiteral("DESC_COLORE")).testo();
}

void FrmProduttore::TxtDati_KeyPress(int indice, int& KeyAscii)
{
    if (indice >= 21 && indice <= 25) {
        Keypress_Upper(KeyAscii);
        if (KeyAscii != 0)
            Keypress_Decimale2(TxtDati[indice], KeyAscii);
        return;
    }
    SchermataRecord::TxtDati_KeyPress(indice, KeyAscii);
}

void FrmProduttore::CtrlQuantita(int indice, int cifre)
{
    m_calcolo.CtrlQuantita(TxtDati[indice]->text(), cifre);
    Cmddati[0]->setEnabled(m_calcolo.SalvaAbilitato());
}

bool FrmProduttore::TxtDati_Validate(int indice)
{
    QLineEdit* campo = TxtDati[indice];
    const QString testo = campo->text();
    switch (indice) {
    case 9: {
        if (Val(testo) == 0)
            return true;
        const QString anno = testo.left(4);
        if (!IsDate(QStringLiteral("01/01/") + anno) || (testo.size() != 4 && testo.size() != 9)) {
            MsgBox(QStringLiteral("Campagna non valida"), StileMsg::OK + StileMsg::Esclamativo);
            return false;
        }
        if (testo.size() == 4)
            campo->setMaxLength(9);
        campo->setText(anno + QLatin1Char('/') + QString::number(static_cast<qint64>(Val(anno)) + 1));
        return true;
    }
    case 11:
        return Vuoto(campo) || (Val(testo) >= 1 && Val(testo) <= 12);
    case 12:
        return Vuoto(campo) || (Val(testo) >= 1 && Val(testo) <= 2);
    case 17:
    case 18:
    case 19:
    case 20:
        CtrlQuantita(indice, 8);
        return true;
    case 21:
    case 22:
    case 23:
    case 24:
    case 25:
        CtrlQuantita(indice, 13);
        return true;
    case 26: {
        if (!chkApprovazioneAnticipata->isChecked())
            return true;
        const double percentuale = Val(QStringLiteral("0") + testo);
        if (percentuale > 0 && percentuale < 21)
            return true;
        MsgBox(QStringLiteral("La percentuale di anticipo non può essere maggiore del 20%."),
               StileMsg::OK + StileMsg::Informazione, windowTitle());
        return false;
    }
    default:
        return true;
    }
}

int FrmProduttore::ControllaCampi()
{
    Sessione& s = sessione();
    const UtfSelezionato& utf = s.UtfSel;
    int codice = 0;
    try {
        const QString zeroQta = QStringLiteral("0,0000");
        const QString zeroImporto = QStringLiteral("0,00");
        // Il totale del certificato di ogni prodotto: se c'è, la quota e l'aiuto servono.
        const auto prodottoPresente = [&](int indice) {
            const QString* totali[] = {&utf.QTA_TOT_ALCOLE_GREZZO_OTTENUTO, &utf.QTA_TOT_ALCOLE_NEUTRO_OTTENUTO,
                                       &utf.QTA_TOT_ACQUAVITE_OTTENUTO};
            const int prodotto = (indice - 18) % 3;
            return FormatTesto(*totali[prodotto], QStringLiteral("##0.0000")) != zeroQta;
        };
        for (s.IndiceCiclo = 6; s.IndiceCiclo <= 25 && codice == 0; ++s.IndiceCiclo) {
            const int i = s.IndiceCiclo;
            if (i == 15) {
                if (cboProdotto[15]->currentText().trimmed().isEmpty())
                    codice = 15;
                if (codice != 0)
                    break;
                continue;
            }
            QLineEdit* campo = TxtDati[i];
            QString testo = campo->text();
            const bool vuoto = Vuoto(campo);
            switch (i) {
            case 6:
                if (vuoto)
                    codice = 6;
                else if (IsNumeric(testo) ? !CheckPartitaIva(testo) : !CodFisc(testo))
                    codice = 106;
                break;
            case 7:
            case 8:
                if (vuoto)
                    codice = i;
                break;
            case 11:
            case 12:
            case 16:
                if (vuoto || Val(testo) == 0)
                    codice = i;
                break;
            case 13:
                if (vuoto || testo == zeroImporto)
                    codice = 13;
                break;
            case 17:
                if (vuoto || testo == zeroQta)
                    codice = 117;
                break;
            case 18:
            case 19:
            case 20:
                if (prodottoPresente(i) && (vuoto || testo == zeroQta))
                    codice = i;
                break;
            case 21:
            case 22:
            case 23:
                if (prodottoPresente(i - 3) && (vuoto || testo == zeroImporto))
                    codice = i;
                break;
            case 25:
                if (vuoto || testo == zeroImporto)
                    codice = 25;
                break;
            default:
                // 9, 10, 14, 24: nessun controllo.
                break;
            }
            // IndiceCiclo resta sul campo che non va.
            if (codice != 0)
                break;
        }
        // Il colore si chiede comunque, anche dopo un campo fermato prima.
        if (cboProdotto[15]->currentText().trimmed().isEmpty())
            codice = 15;
    } catch (const ErroreSistema& e) {
        ScriviLogErr(QString(), QStringLiteral("FrmFattura CONTROLLACAMPI"), e.numero(), e.descrizione());
    }
    return codice;
}

void FrmProduttore::Cmddati_Click(int indice)
{
    switch (indice) {
    case 0:
        Salva();
        break;
    case 2:
        // Gli argomenti d'aiuto sono quelli della fattura.
        MostraHelp(DaRiempire() ? QStringLiteral("FRMFATTURA_MOD") : QStringLiteral("FRMFATTURA_INS"));
        break;
    default:
        SchermataRecord::Cmddati_Click(indice);
    }
}

// La didascalia è sempre la propria, qualunque titolo abbia la sessione.
QString FrmProduttore::Didascalia() const { return QStringLiteral("Produttori"); }

QString FrmProduttore::EtichettaErrore(const QString& routine) const
{
    // L'etichetta che l'assistenza conosce, rimasta dalla maschera delle fatture.
    if (routine == QLatin1String("Cmddati_Click"))
        return QStringLiteral("FrmFATTURA.CMDDATI_CLICK");
    return SchermataRecord::EtichettaErrore(routine);
}

void FrmProduttore::Salva()
{
    Sessione& s = sessione();
    s.IndiceCampo = static_cast<qint16>(ControllaCampi());
    const int codice = s.IndiceCampo;

    // Mese o quindicina vuoti fermano il giro lì e il record passa: per
    // l'articolo 30, col riquadro chiuso, è la strada di ogni giorno.
    if (codice == 0 || codice == 11 || codice == 12) {
        VersoCalcolo();
        const bool avanti = m_calcolo.ControllaCalcoliAlSalvataggio();
        DalCalcolo();
        if (!avanti)
            return;
        Produttore_CaricaScarica_type(4);
        const bool scritto =
            DaRiempire() ? MetodiProduttore(1, QStringLiteral("where  id_PRODUTTORI =") +
                                                   QString::number(s.ProduttoreSel.iD_PRODUTTORI))
                         : MetodiProduttore(0, QString());
        // Dopo un errore del database la maschera resta aperta con i dati.
        if (!scritto)
            return;
        PulisciCampi(this, QStringLiteral("*TIPO_ARTICOLO*"));
        Scarica(QDialog::Accepted);
        return;
    }

    QWidget* fuoco = nullptr;
    switch (codice) {
    case 15:
        MsgBox(cboProdotto[15]->toolTip() + Obbligatorio, StileMsg::Informazione, TitoloSalvataggio);
        fuoco = cboProdotto[15];
        break;
    case 17:
        MsgBox(MsgEttogradi, StileMsg::Informazione, s.TitoloMaschera);
        fuoco = TxtDati[17];
        break;
    case 106:
        MsgBox(TxtDati[6]->toolTip() + QStringLiteral(" errato. "), StileMsg::Informazione, TitoloSalvataggio);
        fuoco = TxtDati[6];
        break;
    case 117:
        MsgBox(TxtDati[17]->toolTip() + Obbligatorio, StileMsg::Informazione, TitoloSalvataggio);
        fuoco = TxtDati[17];
        break;
    default:
        MsgBox(TxtDati[codice]->toolTip() + Obbligatorio, StileMsg::Informazione, TitoloSalvataggio);
        fuoco = TxtDati[codice];
        break;
    }
    fuoco->setFocus(Qt::OtherFocusReason);
}

void FrmProduttore::VersoCalcolo()
{
    for (auto it = TxtDati.begin(); it != TxtDati.end(); ++it)
        m_testi[it.key()] = it.value()->text();
}

void FrmProduttore::DalCalcolo()
{
    for (int i = 10; i <= 25; ++i)
        if (QLineEdit* campo = TxtDati.value(i))
            campo->setText(m_testi.value(i));
    Cmddati[0]->setEnabled(m_calcolo.SalvaAbilitato());
}

void FrmProduttore::Cmdcalcolo_Click()
{
    try {
        VersoCalcolo();
        const int fuoco = m_calcolo.Cmdcalcolo();
        DalCalcolo();
        if (fuoco != 0)
            TxtDati[fuoco]->setFocus(Qt::OtherFocusReason);
    } catch (const ErroreSistema& e) {
        if (e.numero() == CodiciErrore::DivisionePerZero) {
            // Senza ettogradi lavorati nel certificato le quote non si calcolano:
            // i campi restano come erano.
            MsgBox(QStringLiteral("Impossibile calcolare le quote: il totale degli ettogradi di vino lavorato del "
                                  "certificato UTF è zero o mancante."),
                   StileMsg::OK + StileMsg::Esclamativo, QStringLiteral("Produttore"));
            return;
        }
        ScriviLogErr(QString(), EtichettaErrore(QStringLiteral("Cmdcalcolo")), e.numero(), e.descrizione());
    }
}

void FrmProduttore::CmdTrovadenominazione_Click()
{
    try {
        TrovaDenominazione(TxtDati[6], TxtDati[7], TxtDati[8]);
    } catch (const ErroreSistema& e) {
        ScriviLogErr(QString(), EtichettaErrore(QStringLiteral("CmdTrovadenominazione")), e.numero(), e.descrizione());
    }
}
