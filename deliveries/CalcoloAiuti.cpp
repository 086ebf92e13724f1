#include "deliveries/CalcoloAiuti.h"

#include "common/errore.h"
#include "common/numeri.h"
#include "common/piattaforma.h"
#include "shell/session_state.h"

namespace {

const QString FormatoQuantita = QStringLiteral("##0.0000");
const QString FormatoImporto = QStringLiteral("##0.00");
const QString ZeroQuantita = QStringLiteral("0,0000");
const QString ZeroImporto = QStringLiteral("0,00");
const QString AcapoMsg = QStringLiteral("\r\n");

const QString TestoDifferenze = QStringLiteral("Si sono rilevate delle differenze nei calcoli Automatici : ");
const QString TestoOverflow = QStringLiteral("OVERFLOW - ");

// Le aliquote sono tenute col punto: prima dell'uso diventano forma regionale.
QString AliquotaRegionale(const QString& aliquota)
{
    QString t = aliquota;
    return t.replace(QLatin1Char('.'), QLatin1Char(','));
}

// Aiuto in doppia precisione: quantità x aliquota x 100, tenuto come testo
// della doppia precisione (15 cifre significative).
QString AiutoDoppia(const QString& quantita, const QString& aliquota)
{
    const double aiuto = CDbl(quantita) * CDbl(AliquotaRegionale(aliquota)) * 100.0;
    return CStr(aiuto);
}

QString TestoDifferenza(int indice, const QString& valore)
{
    return AcapoMsg + QStringLiteral("Il valore calcolato degli ") + CalcoloAiuti::Descrizione(indice) +
           QStringLiteral(" é ") + valore;
}

QString TestoNonCalcolabile(int indice)
{
    return QStringLiteral("Il campo ") + CalcoloAiuti::Descrizione(indice) +
           QStringLiteral(" non puo' essere calcolato ") + AcapoMsg;
}

}  // namespace

CalcoloAiuti::CalcoloAiuti(QMap<int, QString>& TxtDati) : m_txt(TxtDati) {}

QString CalcoloAiuti::Descrizione(int indice)
{
    switch (indice) {
    case 13: return QStringLiteral("Vino effettivamente distillato");
    case 14: return QStringLiteral("Quantità richiesta di aiuto vino distillato");
    case 16: return QStringLiteral("Titolo alcolometro fatturato ");
    case 17: return QStringLiteral("Ettogradi");
    case 18: return QStringLiteral("Quantità alcole grezzo");
    case 19: return QStringLiteral("Quantità alcole neutro");
    case 20: return QStringLiteral("Quantità acquavite");
    case 21: return QStringLiteral("Aiuto alcole grezzo");
    case 22: return QStringLiteral("Aiuto alcole neutro");
    case 23: return QStringLiteral("Aiuto acquavite");
    case 24: return QStringLiteral("importo detraibile per arricchimento");
    case 25: return QStringLiteral("Totale aiuto");
    default: return QString();
    }
}

bool CalcoloAiuti::vuoto(int indice) const { return m_txt.value(indice).trimmed().isEmpty(); }

void CalcoloAiuti::impostaAliquote()
{
    // Conta solo l'articolo: né campagna, né colore, né approvazione anticipata.
    if (m_txt.value(2) == QLatin1String("29")) {
        m_aliquotaGrezzo = AliquotaArt29Grezzo;
        m_aliquotaNeutro = AliquotaArt29Neutro;
        m_aliquotaAcquavite = AliquotaArt29Acquavite;
    } else {
        // Articolo 30 (e qualunque altro testo): 1.1222 per tutti e tre.
        m_aliquotaGrezzo = AliquotaArt30;
        m_aliquotaNeutro = AliquotaArt30;
        m_aliquotaAcquavite = AliquotaArt30;
    }
}

void CalcoloAiuti::calcolaEttogradiDaVino()
{
    m_calcEttogradi = (Decimale(campo(13)) * Decimale(campo(16))).testo();
}

QString CalcoloAiuti::quoziente() const
{
    // Aritmetica decimale; un totale di ettogradi nullo o vuoto solleva la
    // divisione per zero, che raccoglie l'etichetta d'errore del chiamante.
    return (Decimale(m_txt.value(17)) / Decimale(sessione().UtfSel.QTA_TOT_ETTOGRADI_VINO_LAVORATO)).testo();
}

void CalcoloAiuti::calcolaGrezzo()
{
    m_calcQtaGrezzo = (Decimale(quoziente()) * Decimale(sessione().UtfSel.QTA_TOT_ALCOLE_GREZZO_OTTENUTO)).testo();
    m_calcAiutoGrezzo = AiutoDoppia(m_calcQtaGrezzo, m_aliquotaGrezzo);
}

void CalcoloAiuti::calcolaNeutro()
{
    m_calcQtaNeutro = (Decimale(quoziente()) * Decimale(sessione().UtfSel.QTA_TOT_ALCOLE_NEUTRO_OTTENUTO)).testo();
    m_calcAiutoNeutro = AiutoDoppia(m_calcQtaNeutro, m_aliquotaNeutro);
}

void CalcoloAiuti::calcolaAcquavite()
{
    m_calcQtaAcquavite = (Decimale(quoziente()) * Decimale(sessione().UtfSel.QTA_TOT_ACQUAVITE_OTTENUTO)).testo();
    // L'acquavite resta in aritmetica decimale.
    m_calcAiutoAcquavite =
        (Decimale(m_calcQtaAcquavite) * Decimale(AliquotaRegionale(m_aliquotaAcquavite)) * Decimale(100)).testo();
}

bool CalcoloAiuti::scriviQuantita(int indice, const QString& valore, int cifre)
{
    if (!CtrlQuantita(valore, cifre)) {
        campo(indice).clear();
        return false;
    }
    campo(indice) = FormatTesto(valore, FormatoQuantita);
    return true;
}

bool CalcoloAiuti::scriviAiuto(int indice, const QString& valore, int cifre)
{
    if (!CtrlQuantita(valore, cifre)) {
        campo(indice).clear();
        return false;
    }
    campo(indice) = Format(Round(Decimale(valore), 2), FormatoImporto);
    return true;
}

void CalcoloAiuti::calcoliAutomatici(bool calcolaEttogradi)
{
    impostaAliquote();

    if (calcolaEttogradi) {
        calcolaEttogradiDaVino();
        if (!scriviQuantita(17, m_calcEttogradi, 8))
            return;
    }

    if (!vuoto(13) && !vuoto(16)) {
        if (vuoto(17) || campo(17) == ZeroQuantita) {
            // Solo gli Ettogradi, senza controllo di grandezza: quote e aiuti
            // vengono al giro successivo.
            calcolaEttogradiDaVino();
            campo(17) = FormatTesto(m_calcEttogradi, FormatoQuantita);
        } else {
            calcolaGrezzo();
            if (!scriviQuantita(18, m_calcQtaGrezzo, 7) || !scriviAiuto(21, m_calcAiutoGrezzo, 12))
                return;

            calcolaNeutro();
            if (!scriviQuantita(19, m_calcQtaNeutro, 7))
                return;
            // L'aiuto sull'alcole neutro non ha controllo di grandezza.
            campo(22) = Format(Round(Decimale(m_calcAiutoNeutro), 2), FormatoImporto);

            calcolaAcquavite();
            if (!scriviQuantita(20, m_calcQtaAcquavite, 7) || !scriviAiuto(23, m_calcAiutoAcquavite, 12))
                return;
        }
    }

    campo(25) = fun_Totale();
}

QString CalcoloAiuti::fun_Totale()
{
    // Somma degli aiuti calcolati e non arrotondati: un aiuto scritto a mano
    // decide solo se il prodotto conta. La detrazione entra come scritta.
    Decimale totale(0);

    if (!vuoto(21) && campo(21) != ZeroImporto) {
        calcolaGrezzo();
        totale = Decimale(m_calcAiutoGrezzo);
    } else {
        campo(21) = ZeroImporto;
    }
    if (!vuoto(22) && campo(22) != ZeroImporto) {
        calcolaNeutro();
        totale = totale + Decimale(m_calcAiutoNeutro);
    } else {
        campo(22) = ZeroImporto;
    }
    if (!vuoto(23) && campo(23) != ZeroImporto) {
        calcolaAcquavite();
        totale = totale + Decimale(m_calcAiutoAcquavite);
    } else {
        campo(23) = ZeroImporto;
    }
    if (!vuoto(24) && campo(24) != ZeroImporto)
        totale = totale - Decimale(campo(24));
    else
        campo(24) = ZeroImporto;

    if (CtrlQuantita(totale.testo(), 13))
        return Format(Round(totale, 2), FormatoImporto);
    return ZeroImporto;
}

bool CalcoloAiuti::CtrlQuantita(const QString& valore, int cifre)
{
    m_salvaAbilitato = true;
    // Con la virgola conta la sua posizione: un numero con decimali ha una
    // cifra intera in meno di un intero. Il segno conta come una cifra.
    const qsizetype virgola = valore.indexOf(QLatin1Char(','));
    const bool troppoGrande = virgola < 0 ? valore.length() > cifre : virgola + 1 > cifre;
    if (!troppoGrande)
        return true;
    MsgBox(QStringLiteral("La quantità ottenuta di calcolo è troppo grande"),
           StileMsg::OK + StileMsg::Informazione, QStringLiteral("Produttore"));
    m_salvaAbilitato = false;
    return false;
}

void CalcoloAiuti::formattaAutomatico(int indice)
{
    switch (indice) {
    case 10:
    case 13:
    case 14:
    case 16:
    case 17:
    case 18:
    case 19:
    case 20:
        if (vuoto(indice))
            campo(indice) = ZeroQuantita;
        else
            campo(indice) = FormatTesto(QStringLiteral("0") + campo(indice), FormatoQuantita);
        break;
    case 11:
        campo(indice) = FormatTesto(campo(indice), QStringLiteral("00"));
        break;
    case 21:
    case 22:
    case 23:
    case 24:
    case 25:
        if (vuoto(indice))
            campo(indice) = ZeroImporto;
        else
            campo(indice) = FormatTesto(QStringLiteral("0") + campo(indice), FormatoImporto);
        break;
    default:
        // 12 e 15 restano come sono.
        break;
    }
}

QString CalcoloAiuti::CTRL_calcoliAutomatici()
{
    QString differenze = TestoDifferenze;
    QString overflow = TestoOverflow;

    impostaAliquote();

    if (!vuoto(13) && !vuoto(16)) {
        calcolaEttogradiDaVino();
        if (!vuoto(17)) {
            const QString ettogradi = FormatTesto(m_calcEttogradi, FormatoQuantita);
            if (FormatTesto(campo(17), FormatoQuantita) != ettogradi) {
                // Ettogradi diversi: i prodotti non vengono esaminati.
                if (CtrlQuantita(ettogradi, 8))
                    differenze += TestoDifferenza(17, ettogradi) + AcapoMsg;
                else
                    overflow += TestoNonCalcolabile(17);
            } else {
                struct Prodotto {
                    int quantita;
                    int aiuto;
                    void (CalcoloAiuti::*calcola)();
                    const QString* qta;
                    const QString* aiutoCalc;
                };
                const Prodotto prodotti[] = {
                    {18, 21, &CalcoloAiuti::calcolaGrezzo, &m_calcQtaGrezzo, &m_calcAiutoGrezzo},
                    {19, 22, &CalcoloAiuti::calcolaNeutro, &m_calcQtaNeutro, &m_calcAiutoNeutro},
                    {20, 23, &CalcoloAiuti::calcolaAcquavite, &m_calcQtaAcquavite, &m_calcAiutoAcquavite},
                };
                for (const Prodotto& p : prodotti) {
                    (this->*p.calcola)();
                    const QString qta = FormatTesto(*p.qta, FormatoQuantita);
                    // L'alcole grezzo confronta il testo nudo del campo, gli
                    // altri due il testo formattato.
                    const QString nelCampo =
                        p.quantita == 18 ? campo(18) : FormatTesto(campo(p.quantita), FormatoQuantita);
                    if (nelCampo != qta) {
                        if (CtrlQuantita(qta, 7))
                            differenze += TestoDifferenza(p.quantita, qta);
                        else
                            overflow += TestoNonCalcolabile(p.quantita);
                    } else if (FormatTesto(campo(p.aiuto), FormatoImporto) != Formatta2dec(*p.aiutoCalc)) {
                        // Confronto col valore troncato, mentre il campo è stato
                        // scritto arrotondato: la differenza di un centesimo resta.
                        const QString aiuto = FormatTesto(*p.aiutoCalc, FormatoImporto);
                        if (CtrlQuantita(aiuto, 12))
                            differenze += TestoDifferenza(p.aiuto, aiuto);
                        else
                            overflow += TestoNonCalcolabile(p.aiuto);
                    }
                }
            }
        }
    }

    const QString risultato = fun_Totale();
    if (!vuoto(25) && campo(25) != ZeroImporto) {
        const QString totale = Formatta2dec(risultato);
        if (FormatTesto(campo(25), FormatoImporto) != totale) {
            if (CtrlQuantita(totale, 13))
                differenze += TestoDifferenza(25, totale);
            else
                overflow += TestoNonCalcolabile(25);
        }
    }

    if (overflow != TestoOverflow)
        return overflow;
    if (differenze != TestoDifferenze)
        return differenze;
    campo(25) = Formatta2dec(risultato);
    return QString();
}

int CalcoloAiuti::Cmdcalcolo()
{
    for (int indice : {13, 16}) {
        if (vuoto(indice) || campo(indice) == ZeroImporto) {
            MsgBox(Descrizione(indice) + QStringLiteral(" campo obbligatorio per effettuare i calcoli automatici. "),
                   StileMsg::Informazione, QStringLiteral("Salvataggio "));
            return indice;
        }
    }
    // Lo zero a due decimali contro un campo a quattro: "0,0000" conta come
    // pieno, e allora il giro senza Ettogradi li ricalcola soltanto.
    calcoliAutomatici(vuoto(17) || campo(17) == ZeroImporto);
    return 0;
}

bool CalcoloAiuti::ControllaCalcoliAlSalvataggio()
{
    for (int indice = 10; indice <= 25; ++indice)
        formattaAutomatico(indice);

    const QString testo = CTRL_calcoliAutomatici();
    if (testo.contains(TestoOverflow)) {
        const int risposta = MsgBox(testo + AcapoMsg + QStringLiteral("I dati saranno salvati senza calcoli automatici"),
                                    StileMsg::OKAnnulla, TitoloLungo);
        return risposta != RispostaMsg::Annulla;
    }
    if (!testo.trimmed().isEmpty()) {
        const int risposta =
            MsgBox(testo + AcapoMsg + QStringLiteral("Sostituire con i valori calcolati ?"), StileMsg::SiNo, TitoloLungo);
        if (risposta == RispostaMsg::Si)
            calcoliAutomatici(true);
    }
    return true;
}

QString Formatta2dec(const QString& valore)
{
    // Taglia a due cifre dopo la prima virgola, senza arrotondare.
    const qsizetype virgola = valore.indexOf(QLatin1Char(','));
    const QString tagliato = valore.left(virgola < 0 ? 2 : virgola + 3);
    const qsizetype virgolaTagliato = tagliato.indexOf(QLatin1Char(','));
    if (virgolaTagliato < 0)
        return FormatTesto(valore, FormatoImporto);
    if (tagliato.length() - virgolaTagliato - 1 == 1)
        return FormatTesto(tagliato, FormatoImporto);
    return tagliato;
}
