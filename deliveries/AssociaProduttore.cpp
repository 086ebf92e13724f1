#include "deliveries/AssociaProduttore.h"

#include "common/errore.h"
#include "common/log_errori.h"
#include "shell/session_state.h"
#include "store/database.h"

void AssociaProduttore(qint32 idProduttore, qint32 idUtf, int operazione)
{
    auto& s = sessione();
    if (operazione == 0) {
        s.StrSql = QStringLiteral("INSERT INTO TAB_ID_UTF_PRODUTTORE(id_utf,id_produttore) values(?,?)");
        Db().Execute(s.StrSql, {idUtf, idProduttore});
    } else if (operazione == 2) {
        s.StrSql = QStringLiteral("DELETE FROM TAB_ID_UTF_PRODUTTORE WHERE id_utf =? AND id_produttore=?");
        Db().Execute(s.StrSql, {idUtf, idProduttore});
    }
}

bool rfAssociaDeAssociaProduttore(qint32 idProduttore, qint32 idUtf, int operazione)
{
    try {
        AssociaProduttore(idProduttore, idUtf, operazione);
        return true;
    } catch (const ErroreSistema& e) {
        ScriviLogErr(QString::fromLatin1(SettoreLegame), QString::fromLatin1(EtichettaLegame), e.numero(),
                     e.descrizione());
        return false;
    }
}
