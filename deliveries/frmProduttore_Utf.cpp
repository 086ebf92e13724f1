#include "deliveries/frmProduttore_Utf.h"

#include "common/aiuti_maschera.h"
#include "common/aiuto.h"
#include "common/errore.h"
#include "common/log_errori.h"
#include "common/numeri.h"
#include "common/piattaforma.h"
#include "deliveries/MetodiUtf.h"
#include "shell/session_state.h"
#include "store/database.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>

namespace {

enum : int {
    NumeroDomanda = 1,
    Articolo = 2,
    Numero = 3,
    Provincia = 4,
    DataEmissione = 5,
    Ettogradi = 6,
    Vino = 7,
    Grezzo = 8,
    Neutro = 9,
    Acquavite = 10,
    Campagna = 20,
};
constexpr int NessunProdotto = 8;
const QString Zero = QStringLiteral("0,0000");
const QString EtichettaClick = QStringLiteral("frmProduttore_Utf.CMDDATI_CLICK");

// I campi del certificato: i Tag sono le parole dei controlli, che in tre
// righe non sono i nomi delle colonne.
const struct {
    int indice;
    const char* tag;
    int lunghezza;
    const char* etichetta;
} CampiQuantita[] = {
    {Ettogradi, "QTA_TOT_ETTOGRADI_VINO_LAVORATI", 13, "Totale quantità in ettogradi del vino lavorato"},
    {Vino, "QTA_TOT_VINO_LAVORATO", 12, "Totale quantità di vino lavorate"},
    {Grezzo, "QTA_ALCOLE_GREZZO_OTTENUTO", 12, "Totale alcole grezzo ottenuto"},
    {Neutro, "QTA_ALCOLE_NEUTRO_OTTENUTO", 12, "Totale alcole neutro ottenuto"},
    {Acquavite, "QTA_TOT_ACQUAVITE_OTTENUTO", 12, "Totale acquavite ottenuto"},
};

bool VuotoOZero(const QString& testo) { return testo.trimmed().isEmpty() || testo == Zero; }

}  // namespace

frmProduttore_Utf::frmProduttore_Utf(QWidget* genitore) : SchermataRecord(genitore)
{
    setObjectName(QStringLiteral("frmProduttore_Utf"));
    setModal(true);
    // Intestazione: la domanda, mostrata e non salvata.
    for (const auto& [indice, tag, etichetta, larghezza] :
         {std::tuple(NumeroDomanda, "dont", "Num. Domanda", 11), std::tuple(Articolo, "dont", "Articolo", 3),
          std::tuple(Campagna, "cbdoma", "Campagna", 4)}) {
        QLineEdit* campo = AggiungiCampo(indice, QString::fromLatin1(tag), QString::fromUtf8(etichetta),
                                         QString::fromUtf8(etichetta), 0);
        campo->setReadOnly(true);
        campo->setFocusPolicy(Qt::NoFocus);
        campo->setMaximumWidth(campo->fontMetrics().horizontalAdvance(QLatin1Char('0')) * (larghezza + 2) + 12);
    }
    // Etichetta e tooltip coincidono, tranne gli spazi in coda che i messaggi tengono.
    const auto campo = [this](int indice, const char* tag, const char* tooltip, int lunghezza,
                              GenereCampo genere = GenereCampo::Libero) {
        const QString t = QString::fromUtf8(tooltip);
        return AggiungiCampo(indice, QString::fromLatin1(tag), t.trimmed(), t, lunghezza, genere);
    };
    campo(Numero, "NUMERO_CERTIFICATO_UTF", "Numero del certificato ", 9);
    ImpostaFiltroCampo(Numero, FiltroCampo::Caratteri);
    QComboBox* provincia =
        AggiungiCombo(cboProvincia, Provincia, QStringLiteral("DESCR_UFFICIO_UTF_PROVINCIA"),
                      QStringLiteral("Ufficio di rilascio certificato Utf"), QStringLiteral("Ufficio di rilascio certificato Utf "));
    provincia->setMaxVisibleItems(20);
    campo(DataEmissione, "DATA_EMISSIONE_CERTIFICATO", "Data emissione certificato Utf", 10, GenereCampo::Data);
    ImpostaFiltroCampo(DataEmissione, FiltroCampo::Data);
    for (const auto& c : CampiQuantita) {
        QLineEdit* q = campo(c.indice, c.tag, c.etichetta, c.lunghezza, GenereCampo::Quantita);
        q->setAlignment(Qt::AlignRight);
        q->setMaximumWidth(q->fontMetrics().horizontalAdvance(QLatin1Char('0')) * (c.lunghezza + 3) + 12);
        ImpostaFiltroCampo(c.indice, FiltroCampo::Decimale, 4);
    }
    for (int i : {Numero, DataEmissione})
        TxtDati[i]->setMaximumWidth(TxtDati[i]->fontMetrics().horizontalAdvance(QLatin1Char('W')) * 10 + 12);
    AggiungiPulsantiStandard();
    for (auto it = Cmddati.cbegin(); it != Cmddati.cend(); ++it)
        it.value()->setObjectName(QStringLiteral("Cmddati_%1").arg(it.key()));
    for (auto it = TxtDati.cbegin(); it != TxtDati.cend(); ++it)
        it.value()->setObjectName(QStringLiteral("TxtDati_%1").arg(it.key()));
    provincia->setObjectName(QStringLiteral("cboProvincia_4"));

    Form_Load();
}

QString frmProduttore_Utf::NomeHelp() const
{
    return DaRiempire() ? QStringLiteral("frmProduttore_Utf_MOD") : QStringLiteral("frmProduttore_Utf_INS");
}

QString frmProduttore_Utf::Didascalia() const { return QStringLiteral("Certificati UTF"); }

QString frmProduttore_Utf::EtichettaErrore(const QString& routine) const
{
    return routine == QLatin1String("Cmddati_Click") ? EtichettaClick : SchermataRecord::EtichettaErrore(routine);
}

void frmProduttore_Utf::Form_Load()
{
    PulisciCampi(this, QStringLiteral("*TIPO_ARTICOLO*"));
    CaricaCmb(cboProvincia[Provincia], QStringLiteral("TAB_PROVINCIE"), QStringLiteral("TABPRODES || ' ' || TABPROSIG "),
              QString(), false, QStringLiteral(" ORDER BY TABPRODES"), false, true);
    // Senza una provincia scelta la combo parte vuota.
    cboProvincia[Provincia]->setCurrentIndex(-1);
    const auto& s = sessione();
    TxtDati[NumeroDomanda]->setText(s.DomandaProduttoreSel.DOMANDA);
    TxtDati[Articolo]->setText(s.DomandaProduttoreSel.TIPO_ARTICOLO);
    TxtDati[Campagna]->setText(s.DomandaProduttoreSel.CAMPAGNA);
    // Posizione, titolo e, in modifica, i campi dal certificato scelto.
    CaricaMaschera();
}

void frmProduttore_Utf::RiempiCampi() { UTF_CaricaScarica_type(3); }

void frmProduttore_Utf::UTF_CaricaScarica_type(int verso)
{
    UtfSelezionato& u = sessione().UtfSel;
    QComboBox* provincia = cboProvincia[Provincia];
    const struct {
        int indice;
        QString* campo;
    } campi[] = {{Numero, &u.NUMERO_CERTIFICATO_UTF},
                 {DataEmissione, &u.DATA_EMISSIONE_CERTIFICATO},
                 {Ettogradi, &u.QTA_TOT_ETTOGRADI_VINO_LAVORATO},
                 {Vino, &u.QTA_TOT_VINO_LAVORATO},
                 {Grezzo, &u.QTA_TOT_ALCOLE_GREZZO_OTTENUTO},
                 {Neutro, &u.QTA_TOT_ALCOLE_NEUTRO_OTTENUTO},
                 {Acquavite, &u.QTA_TOT_ACQUAVITE_OTTENUTO}};
    if (verso == 3) {
        for (const auto& c : campi)
            TxtDati[c.indice]->setText(c.campo->trimmed());
        if ((u.ISTAT_UFFICIO_UTF_PROVINCIA + QLatin1Char(' ') + u.DESCR_UFFICIO_UTF_PROVINCIA).trimmed().isEmpty())
            provincia->setCurrentIndex(-1);
        else
            provincia->setCurrentIndex(provincia->findText(u.DESCR_UFFICIO_UTF_PROVINCIA.trimmed() + QLatin1Char(' ') +
                                                           u.SIGLA_UFFICIO_UTF_PROVINCIA.trimmed()));
    } else if (verso == 4) {
        u.NUMERO_CERTIFICATO_UTF = TxtDati[Numero]->text();
        // La voce è "PROVINCIA SIGLA": la sigla sono gli ultimi due caratteri.
        const QString voce = provincia->currentText();
        Recordset rs = Db().OpenRecordset(QStringLiteral("select tabprocod,tabprodes,tabprosig From tab_provincie ") +
                                              QStringLiteral("where tabprodes = ? and ") + QStringLiteral(" tabprosig = ?"),
                                          {voce.left(voce.size() - 3), voce.right(2)});
        if (rs.eof())
            throw ErroreSistema(CodiciErrore::NessunRecordCorrente);
        u.ISTAT_UFFICIO_UTF_PROVINCIA = rs.Fields(QStringLiteral("tabprocod")).testo();
        u.DESCR_UFFICIO_UTF_PROVINCIA = rs.Fields(QStringLiteral("tabprodes")).testo();
        u.SIGLA_UFFICIO_UTF_PROVINCIA = rs.Fields(QStringLiteral("tabprosig")).testo();
        for (const auto& c : campi)
            if (c.indice != Numero)
                *c.campo = TxtDati[c.indice]->text();
    }
}

int frmProduttore_Utf::ControllaCampi()
{
    try {
        return Controlli();
    } catch (const ErroreSistema& e) {
        ScriviLogErr(QString(), QStringLiteral("frmProduttore_Utf CONTROLLACAMPI"), e.numero(), e.descrizione());
        return 0;
    }
}

int frmProduttore_Utf::Controlli()
{
    auto& s = sessione();
    for (s.IndiceCiclo = Numero; s.IndiceCiclo <= Acquavite; ++s.IndiceCiclo) {
        const int i = s.IndiceCiclo;
        if (i == Provincia) {
            if (cboProvincia[Provincia]->currentText().trimmed().isEmpty())
                return Provincia;
            continue;
        }
        const QString testo = TxtDati[i]->text();
        if ((i == Numero || i == DataEmissione) && testo.trimmed().isEmpty())
            return i;
        if ((i == Ettogradi || i == Vino) && VuotoOZero(testo))
            return i;
    }
    // Basta uno dei tre prodotti ottenuti.
    const QString g = TxtDati[Grezzo]->text(), n = TxtDati[Neutro]->text(), a = TxtDati[Acquavite]->text();
    const auto vuoto = [](const QString& t) { return t.trimmed().isEmpty(); };
    if ((vuoto(g) && vuoto(n) && vuoto(a)) || (g == Zero && n == Zero && a == Zero))
        return NessunProdotto;
    return 0;
}

void frmProduttore_Utf::Cmddati_Click(int Index)
{
    switch (Index) {
    case 0: Salva(); break;
    case 1: Scarica(); break;
    case 2: MostraHelp(NomeHelp()); break;
    default: break;
    }
}

// Gli errori vanno a ScriviLogErr con l'etichetta del clic (EtichettaErrore).
void frmProduttore_Utf::Salva()
{
    auto& s = sessione();
    // Il campo degli ettogradi prende la sua forma quando lo si lascia.
    for (int i = Vino; i <= Acquavite; ++i) {
        const QString testo = TxtDati[i]->text();
        TxtDati[i]->setText(Format(testo.isEmpty() ? Decimale(0) : Decimale(testo), QStringLiteral("##0.0000")));
    }
    s.IndiceCampo = static_cast<qint16>(ControllaCampi());
    const QString titolo = QStringLiteral("Salvataggio ");
    switch (s.IndiceCampo) {
    case 0: {
        UTF_CaricaScarica_type(4);
        const QString modo = s.ModoMaschera.trimmed().toUpper();
        if (modo == QLatin1String("I"))
            MetodiUtf(0, QString());
        else if (modo == QLatin1String("M"))
            MetodiUtf(1, QStringLiteral("where  id_utf =") + QString::number(s.UtfSel.iD_UTF));
        Scarica(QDialog::Accepted);
        return;
    }
    case Provincia:
        MsgBox(cboProvincia[Provincia]->toolTip() + QStringLiteral(" campo obbligatorio. "), StileMsg::Informazione,
               titolo);
        cboProvincia[Provincia]->setFocus();
        return;
    case NessunProdotto:
        MsgBox(QStringLiteral("Inserire almeno uno dei prodotti ottenuti. "), StileMsg::Informazione, titolo);
        TxtDati[Grezzo]->setFocus();
        return;
    default:
        MsgBox(TxtDati[s.IndiceCampo]->toolTip() + QStringLiteral(" campo obbligatorio. "), StileMsg::Informazione,
               titolo);
        TxtDati[s.IndiceCampo]->setFocus();
        return;
    }
}
