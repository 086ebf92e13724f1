#include "deliveries/MetodiDomandaProduttori.h"

#include "common/errore.h"
#include "common/log_errori.h"
#include "common/piattaforma.h"
#include "shell/session_state.h"
#include "store/database.h"

namespace {
const QString EtichettaErrore = QStringLiteral("FrmDomanda.MetodiDOMANDA ");
}

bool MetodiDOMANDA_produttori(int operazione, const QString& condizione)
{
    auto& s = sessione();
    try {
        s.StrSql = QStringLiteral("Select * from DOMANDE_produttori ") + condizione;
        // L'inserimento non ha bisogno della riga corrente: niente lettura,
        // il carico di una fornitura ne fa una per produttore.
        qint64 chiave = 0;
        if (operazione == 1 || operazione == 2) {
            Recordset rs = Db().OpenRecordset(s.StrSql);
            if (rs.eof()) {
                if (operazione == 1) {
                    MsgBox(QStringLiteral("Nessun record da aggiornare"), StileMsg::Informazione);
                    return false;
                }
                // Cancellare senza una riga corrente è l'errore 3021 del motore.
                throw ErroreSistema(CodiciErrore::NessunRecordCorrente);
            }
            chiave = rs.Fields(QStringLiteral("ID_DOMANDA_PRODUTTORE")).intero();
        } else if (operazione != 0) {
            return false;
        }
        if (operazione == 2) {
            Db().Execute(QStringLiteral("DELETE FROM DOMANDE_PRODUTTORI WHERE ID_DOMANDA_PRODUTTORE = ?"), {chiave});
            return true;
        }

        const DomandaProduttoreSelezionata& d = s.DomandaProduttoreSel;
        // Ogni salvataggio rimette la domanda da stampare e da scaricare, versione 1.
        const Campi campi{
            {QStringLiteral("DOMANDA"), d.DOMANDA.trimmed()},
            {QStringLiteral("ANTICIPO_RICEVUTO"), d.ANTICIPO_RICEVUTO.trimmed()},
            {QStringLiteral("TIPO_ARTICOLO"), d.TIPO_ARTICOLO.trimmed()},
            {QStringLiteral("STAM"), QStringLiteral("N")},
            {QStringLiteral("SCAR"), QStringLiteral("N")},
            {QStringLiteral("PROG_VERS"), QStringLiteral("1")},
            {QStringLiteral("DATA_CAMP"), d.CAMPAGNA.trimmed()},
        };
        if (operazione == 0)
            Db().InserisciRiga(QStringLiteral("DOMANDE_PRODUTTORI"), campi);
        else
            Db().AggiornaRiga(QStringLiteral("DOMANDE_PRODUTTORI"), campi,
                              QStringLiteral("WHERE ID_DOMANDA_PRODUTTORE = ?"), {chiave});
        return true;
    } catch (const ErroreSistema& e) {
        ScriviLogErr(QString(), EtichettaErrore, e.numero(), e.descrizione());
        return false;
    }
}
