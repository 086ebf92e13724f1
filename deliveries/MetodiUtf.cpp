#include "deliveries/MetodiUtf.h"

#include "common/errore.h"
#include "common/log_errori.h"
#include "common/piattaforma.h"
#include "shell/session_state.h"
#include "store/database.h"

#include <optional>

namespace {

enum Operazione { Inserisci = 0, Modifica = 1, Cancella = 2 };

// Le colonne nell'ordine in cui il certificato le scrive.
Campi CampiCertificato()
{
    const auto& s = sessione();
    const UtfSelezionato& u = s.UtfSel;
    return {
        {QStringLiteral("iD_DOMANDA"), s.DomandaProduttoreSel.ID_DOMANDA_PRODUTTORE},
        {QStringLiteral("NUMERO_CERTIFICATO_UTF"), u.NUMERO_CERTIFICATO_UTF},
        {QStringLiteral("DESCR_UFFICIO_UTF_PROVINCIA"), u.DESCR_UFFICIO_UTF_PROVINCIA},
        {QStringLiteral("SIGLA_UFFICIO_UTF_PROVINCIA"), u.SIGLA_UFFICIO_UTF_PROVINCIA},
        {QStringLiteral("ISTAT_UFFICIO_UTF_PROVINCIA"), u.ISTAT_UFFICIO_UTF_PROVINCIA},
        {QStringLiteral("DATA_EMISSIONE_CERTIFICATO"), u.DATA_EMISSIONE_CERTIFICATO},
        {QStringLiteral("QTA_TOT_ETTOGRADI_VINO_LAVORATO"), u.QTA_TOT_ETTOGRADI_VINO_LAVORATO},
        {QStringLiteral("QTA_TOT_VINO_LAVORATO"), u.QTA_TOT_VINO_LAVORATO},
        {QStringLiteral("QTA_TOT_ALCOLE_GREZZO_OTTENUTO"), u.QTA_TOT_ALCOLE_GREZZO_OTTENUTO},
        {QStringLiteral("QTA_TOT_ALCOLE_NEUTRO_OTTENUTO"), u.QTA_TOT_ALCOLE_NEUTRO_OTTENUTO},
        {QStringLiteral("QTA_TOT_ACQUAVITE_OTTENUTO"), u.QTA_TOT_ACQUAVITE_OTTENUTO},
        {QStringLiteral("QUADRATURA"), u.QUADRATURA},
    };
}

}  // namespace

bool MetodiUtf(int operazione, const QString& condizione)
{
    auto& s = sessione();
    try {
        s.StrSql = QStringLiteral("Select * from TAB_UTF ") + condizione;
        // Cancellazione e modifica agiscono sulla prima riga della lettura;
        // l'inserimento non legge (il carico di una fornitura ne farebbe una
        // per certificato).
        bool vuota = true;
        qint64 chiave = 0;
        if (operazione != Inserisci) {
            Recordset rs = Db().OpenRecordset(s.StrSql);
            vuota = rs.eof();
            chiave = vuota ? 0 : rs.Fields(QStringLiteral("iD_UTF")).intero();
        }

        // Il certificato e i segni delle domande: tutti o nessuno.
        std::optional<PuntoDiRipristino> punto;
        if (operazione == Cancella || operazione == Inserisci || (operazione == Modifica && !vuota))
            punto.emplace(Db());
        switch (operazione) {
        case Cancella:
            if (vuota)
                throw ErroreSistema(CodiciErrore::NessunRecordCorrente);
            Db().Execute(QStringLiteral("DELETE FROM TAB_UTF WHERE iD_UTF = ?"), {chiave});
            break;
        case Inserisci:
            Db().InserisciRiga(QStringLiteral("TAB_UTF"), CampiCertificato());
            break;
        case Modifica:
            if (vuota) {
                // Il testo è quello della maschera delle fatture.
                MsgBox(QStringLiteral("Nessuna fattura da aggiornare"), StileMsg::Esclamativo);
                return false;
            }
            Db().AggiornaRiga(QStringLiteral("TAB_UTF"), CampiCertificato(), QStringLiteral("WHERE iD_UTF = ?"),
                              {chiave});
            break;
        default:
            // Senza inserimento né modifica in corso la scrittura non parte.
            throw ErroreSistema(3020, QStringLiteral("Update o CancelUpdate senza AddNew o Edit."));
        }

        // La domanda va ristampata e riscaricata. Il primo aggiornamento usa
        // la domanda del ramo fatture (DomandaSel): così è sempre stato, e
        // così resta.
        const QString marche =
            QStringLiteral("UPDATE DOMANDE_PRODUTTORI SET STAM='N',SCAR='N' WHERE ID_DOMANDA_PRODUTTORE=?");
        s.StrSql = marche;
        Db().Execute(marche, {s.DomandaSel.ID_DOMANDA});
        Db().Execute(marche, {s.UtfSel.iD_DOMANDA});
        punto->Conferma();
        return true;
    } catch (const ErroreSistema& e) {
        ScriviLogErr(QString(), QStringLiteral("frmProduttore_Utf motedoUtf"), e.numero(), e.descrizione());
        return false;
    }
}
