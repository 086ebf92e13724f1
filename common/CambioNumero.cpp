#include "common/CambioNumero.h"

#include "common/RegoleDomanda.h"
#include "common/errore.h"
#include "shell/session_state.h"
#include "store/database.h"

namespace {

const QString TestoNumeroMancante = QStringLiteral("Inserire il nuovo numero domanda. ");
const QString TestoNumeroNonCorretto = QStringLiteral("Il nuovo numero domanda non è corretto. ");
const QString TestoNumeroEsistente = QStringLiteral("Il nuovo numero domanda è già esistente. ");

const VarianteCambio Varianti[] = {
    {GenereCambio::Domanda, QStringLiteral("frmCambioDomanda"), QStringLiteral("Cambio"),
     QStringLiteral("Cambio numero di domanda"), QStringLiteral("N°Domanda"), QStringLiteral("Numero Domanda"),
     // Il tooltip del numero nuovo viene dalla maschera del certificato, ed è rimasto.
     QStringLiteral("N° Domanda nuovo"), QStringLiteral("Numero U.T.F."), 11, 11, true,
     QStringLiteral("frmCambioDomanda"), true, QStringLiteral("frmCambioDomanda Cmddati_Click"),
     TestoNumeroMancante, TestoNumeroNonCorretto, TestoNumeroEsistente},
    {GenereCambio::DomandaProduttore, QStringLiteral("frmProduttori_CambioDomanda"),
     QStringLiteral("Cambio domanda del produttore"), QStringLiteral("Cambio numero di domanda del produttore"),
     QStringLiteral("N°Domanda "), QStringLiteral("Numero Domanda"), QStringLiteral("N° Domanda nuovo"),
     QStringLiteral("Numero Domanda nuovo"), 11, 11, true, QStringLiteral("frmCambioDomanda"), false,
     QStringLiteral("frmProduttori_CambioDomanda.Cmddati_CLick"), TestoNumeroMancante, TestoNumeroNonCorretto,
     TestoNumeroEsistente},
    {GenereCambio::CertificatoUtf, QStringLiteral("frmProduttori_CambioUtf"), QStringLiteral("Cambio Certificato UTF"),
     QStringLiteral("Cambio Numero certificato UTF"), QStringLiteral("Certificato UTF"),
     QStringLiteral("Certificato UTF"), QStringLiteral("Certificato UTF nuovo"),
     QStringLiteral("Certificato UTF nuovo"), 11, 9, false, QStringLiteral("frmCambioUTF"), false,
     QStringLiteral("frmProduttori_CambioUTF.Cmddati_CLick"), QStringLiteral("Inserire il nuovo certificato UTF. "),
     QString(), QStringLiteral("Il nuovo certificato UTF è già esistente. ")},
};

// Le istruzioni di una variante; i parametri seguono i "?" nell'ordine.
struct Istruzioni {
    QString esistente;
    QVariantList parametriEsistente;
    QString aggiorna;
    QVariantList parametriAggiorna;
    // Dopo l'aggiornamento del certificato: la sua domanda torna da stampare e scaricare.
    QString segni;
    QVariantList parametriSegni;
};

Istruzioni IstruzioniDi(GenereCambio genere, const QString& vecchio, const QString& nuovo)
{
    const Sessione& s = sessione();
    switch (genere) {
    case GenereCambio::Domanda:
        // La riga stessa non è esclusa: lo stesso numero risulta già esistente.
        return {QStringLiteral("select * from domande where domanda = ? and TIPO_ARTICOLO = ?"),
                {nuovo, s.DomandaSel.TIPO_ARTICOLO},
                QStringLiteral("UPDATE DOMANDE SET domanda = ?,STAM = 'N' , SCAR = 'N' "
                               " where domanda = ? and ID_DOMANDA = ?"),
                {nuovo, vecchio, s.DomandaSel.ID_DOMANDA},
                {},
                {}};
    case GenereCambio::DomandaProduttore:
        return {QStringLiteral("SELECT ID_DOMANDA_PRODUTTORE From DOMANDE_PRODUTTORI "
                               "Where DOMANDE_PRODUTTORI.DOMANDA = ? "
                               "AND DOMANDE_PRODUTTORI.TIPO_ARTICOLO = ? AND ID_DOMANDA_PRODUTTORE <> ?"),
                {nuovo, s.DomandaProduttoreSel.TIPO_ARTICOLO, s.DomandaProduttoreSel.ID_DOMANDA_PRODUTTORE},
                QStringLiteral("Update DOMANDE_PRODUTTORI SET DOMANDA = ?, STAM = 'N' , SCAR = 'N' "
                               "Where ID_DOMANDA_PRODUTTORE = ?"),
                {nuovo, s.DomandaProduttoreSel.ID_DOMANDA_PRODUTTORE},
                {},
                {}};
    case GenereCambio::CertificatoUtf:
        // Su tutti i certificati, di qualunque domanda.
        return {QStringLiteral("SELECT iD_UTF From TAB_UTF Where NUMERO_CERTIFICATO_UTF = ? AND iD_UTF <> ?"),
                {nuovo, s.UtfSel.iD_UTF},
                QStringLiteral("Update TAB_UTF SET NUMERO_CERTIFICATO_UTF = ? Where iD_UTF = ?"),
                {nuovo, s.UtfSel.iD_UTF},
                QStringLiteral("Update DOMANDE_PRODUTTORI SET STAM = 'N' , SCAR = 'N' Where ID_DOMANDA_PRODUTTORE = ?"),
                {s.UtfSel.iD_DOMANDA}};
    }
    return {};
}

}  // namespace

const VarianteCambio& Variante(GenereCambio genere)
{
    for (const VarianteCambio& v : Varianti)
        if (v.genere == genere)
            return v;
    return Varianti[0];
}

QString NumeroAttuale(GenereCambio genere)
{
    const Sessione& s = sessione();
    switch (genere) {
    case GenereCambio::Domanda: return s.DomandaSel.DOMANDA;
    case GenereCambio::DomandaProduttore: return s.DomandaProduttoreSel.DOMANDA;
    case GenereCambio::CertificatoUtf: return s.UtfSel.NUMERO_CERTIFICATO_UTF;
    }
    return QString();
}

EsitoCambio CambiaNumero(GenereCambio genere, const QString& vecchio, const QString& nuovo)
{
    if (nuovo.trimmed().isEmpty())
        return EsitoCambio::NumeroMancante;
    if (genere != GenereCambio::CertificatoUtf) {
        if (NumeroNullo(nuovo))
            return EsitoCambio::NumeroMancante;
        // Nella fatturazione si misura il numero vecchio: il nuovo, riempito
        // di zeri uscendo dal campo, è sempre lungo 11.
        const QString misurato = genere == GenereCambio::Domanda ? vecchio : nuovo;
        if (misurato.size() != 11)
            return EsitoCambio::NumeroNonCorretto;
    }

    const Istruzioni istr = IstruzioniDi(genere, vecchio, nuovo);
    Database& db = Db();
    sessione().StrSql = istr.esistente;
    if (!db.OpenRecordset(istr.esistente, istr.parametriEsistente).eof())
        return EsitoCambio::GiaEsistente;

    const auto aggiorna = [&] {
        sessione().StrSql = istr.aggiorna;
        if (db.Execute(istr.aggiorna, istr.parametriAggiorna) == 0)
            return EsitoCambio::NonEseguito;
        if (!istr.segni.isEmpty()) {
            sessione().StrSql = istr.segni;
            if (db.Execute(istr.segni, istr.parametriSegni) == 0)
                return EsitoCambio::NonEseguito;
        }
        return EsitoCambio::Eseguito;
    };
    // Le scritture di un cambio stanno o cadono insieme: un guasto nella
    // seconda non lascia il numero cambiato con la domanda ancora "stampata".
    PuntoDiRipristino punto(db);
    const EsitoCambio esito = aggiorna();
    punto.Conferma();
    return esito;
}

QString TestoEsito(const VarianteCambio& variante, EsitoCambio esito)
{
    switch (esito) {
    case EsitoCambio::NumeroMancante: return variante.testoMancante;
    case EsitoCambio::NumeroNonCorretto: return variante.testoNonCorretto;
    case EsitoCambio::GiaEsistente: return variante.testoEsistente;
    case EsitoCambio::Eseguito: return QStringLiteral("Operazione correttamente eseguita.");
    case EsitoCambio::NonEseguito: return QStringLiteral("Operazione non eseguita.");
    }
    return QString();
}
