#include "shell/ApriDatabase.h"

#include "common/errore.h"
#include "common/piattaforma.h"
#include "shell/session_state.h"
#include "store/database.h"

bool ApriDatabase(bool esclusivo)
{
    auto& s = sessione();
    try {
        s.DbDistilleria = Database::Apri(s.PathDatabase + NomeDatabase, esclusivo, ConnessioneDb);
    } catch (const ErroreSistema& e) {
        TerminaPerErrore(e);
    }
    return true;
}

void TerminaPerErrore(const ErroreSistema& errore)
{
    MsgBox(QStringLiteral("Numero Errore: ") + QString::number(errore.numero()) + QStringLiteral("\n\n") +
               QStringLiteral("Descrizione Errore: ") + errore.descrizione() + QStringLiteral("\n\n\n"),
           StileMsg::Critico, TitoloApplicazione);
    TerminaProcesso();
}
