#include "deliveries/MetodiProduttore.h"

#include "common/errore.h"
#include "common/log_errori.h"
#include "common/piattaforma.h"
#include "common/testo.h"
#include "deliveries/AssociaProduttore.h"
#include "shell/session_state.h"
#include "store/database.h"

namespace {

// ID_COLORE è numerico: un colore vuoto o non numerico va come Null.
QVariant ColoreNumerico(const QString& testo)
{
    bool ok = false;
    const int valore = testo.trimmed().toInt(&ok);
    return ok ? QVariant(valore) : QVariant();
}

Campi CampiProduttore(const ProduttoreSelezionato& p)
{
    return {
        {QStringLiteral("ID_COLORE"), ColoreNumerico(p.iD_COLORE)},
        {QStringLiteral("CODI_FISC"), p.CODI_FISC},
        {QStringLiteral("DENOMINAZIONE"), p.DENOMINAZIONE},
        {QStringLiteral("CAMPAGNA_PRESCELTA"), p.CAMPAGNA_PRESCELTA},
        {QStringLiteral("CODICE_CONTRATTO_DISTILLAZIONE"), p.CODICE_CONTRATTO_DISTILLAZIONE},
        {QStringLiteral("ETTOGRADI"), p.ETTOGRADI},
        {QStringLiteral("TITOLO_ALCOLOMETRICO_FATTURATO"), p.TITOLO_ALCOLOMETRICO_FATTURATO},
        {QStringLiteral("QTA_VINO_DISTILLATA_AIUTO"), p.QTA_VINO_DISTILLATA_AIUTO},
        {QStringLiteral("QTA_ALCOLE_GREZZO"), p.QTA_ALCOLE_GREZZO},
        {QStringLiteral("QTA_ALCOLE_NEUTRO"), p.QTA_ALCOLE_NEUTRO},
        {QStringLiteral("QTA_ACQUAVITE"), p.QTA_ACQUAVITE},
        {QStringLiteral("QTA_VINO_EFFETIVAMENTE_DISTILLATA"), p.QTA_VINO_EFFETIVAMENTE_DISTILLATA},
        {QStringLiteral("QTA_MAX_DISTILLABILE"), p.QTA_MAX_DISTILLABILE},
        {QStringLiteral("AIUTO_ALCOLE_GREZZO"), p.AIUTO_ALCOLE_GREZZO},
        {QStringLiteral("AIUTO_ALCOLE_NEUTRO"), p.AIUTO_ALCOLE_NEUTRO},
        {QStringLiteral("AIUTO_ACQUAVITE"), p.AIUTO_ACQUAVITE},
        {QStringLiteral("IMPORTO_DETRAIBILE"), p.IMPORTO_DETRAIBILE},
        {QStringLiteral("TOTALE_AIUTO"), p.TOTALE_AIUTO},
        {QStringLiteral("APPROVAZIONE_ANTICIPATA"), p.APPROVAZIONE_ANTICIPATA},
        // 20 si scrive 020, una percentuale vuota 000.
        {QStringLiteral("PERC_APPROVAZIONE_ANTICIPATA"),
         PadSinistra(p.PERC_APPROVAZIONE_ANTICIPATA, 3, QLatin1Char('0'))},
    };
}

}  // namespace

bool MetodiProduttore(int operazione, const QString& condizione)
{
    Sessione& s = sessione();
    ProduttoreSelezionato& p = s.ProduttoreSel;
    const qint32 chiavePrima = p.iD_PRODUTTORI;
    bool nelLegame = false;
    try {
        Database& db = Db();
        // La riga corrente è la prima che la condizione trova. L'inserimento
        // non ne ha bisogno: niente lettura, il carico di una fornitura ne
        // farebbe una per produttore.
        qint64 riga = 0;
        if (operazione != 0) {
            Recordset rs = db.OpenRecordset(QStringLiteral("Select * from PRODUTTORI ") + condizione);
            if (!rs.eof())
                riga = rs.Fields(QStringLiteral("iD_PRODUTTORI")).intero();
            else if (operazione == 1) {
                // Testo della maschera delle fatture, tenuto com'è.
                MsgBox(QStringLiteral("Nessuna fattura da aggiornare"), StileMsg::OK + StileMsg::Esclamativo);
                return false;
            } else if (operazione == 2) {
                throw ErroreSistema(CodiciErrore::NessunRecordCorrente);
            }
        }
        if (operazione < 0 || operazione > 2)
            return false;

        // Riga, legame e segni della domanda: tutti o nessuno, così un
        // secondo "Salva" dopo un guasto non scrive un altro produttore.
        PuntoDiRipristino punto(db);
        switch (operazione) {
        case 0:
            p.iD_PRODUTTORI = static_cast<qint32>(db.InserisciRiga(QStringLiteral("PRODUTTORI"), CampiProduttore(p)));
            // Il collegamento del nuovo produttore al certificato in mano.
            nelLegame = true;
            AssociaProduttore(p.iD_PRODUTTORI, s.UtfSel.iD_UTF, 0);
            nelLegame = false;
            break;
        case 1:
            db.AggiornaRiga(QStringLiteral("PRODUTTORI"), CampiProduttore(p),
                            QStringLiteral("WHERE iD_PRODUTTORI = ?"), {riga});
            p.iD_PRODUTTORI = static_cast<qint32>(riga);
            break;
        default:
            db.Execute(QStringLiteral("DELETE FROM PRODUTTORI WHERE iD_PRODUTTORI = ?"), {riga});
            break;
        }

        // La domanda va stampata e scaricata di nuovo. La chiave 0 non è di
        // nessuna domanda (il contatore parte da 1): il carico di una
        // fornitura, che non la conosce, risparmia un'istruzione a produttore.
        if (s.UtfSel.iD_DOMANDA != 0)
            db.Execute(QStringLiteral("UPDATE DOMANDE_PRODUTTORI SET STAM='N',SCAR='N' WHERE ID_DOMANDA_PRODUTTORE=?"),
                       {s.UtfSel.iD_DOMANDA});
        punto.Conferma();
        return true;
    } catch (const ErroreSistema& e) {
        // Nulla è stato scritto: la chiave torna quella di prima.
        p.iD_PRODUTTORI = chiavePrima;
        if (nelLegame)
            ScriviLogErr(QString::fromLatin1(SettoreLegame), QString::fromLatin1(EtichettaLegame), e.numero(),
                         e.descrizione());
        else
            ScriviLogErr(QString(), QStringLiteral("FrmFattura motedofatture"), e.numero(), e.descrizione());
        return false;
    }
}
