#include "common/ArrayControlli.h"

#include "common/errore.h"

void ElementoControlloMancante(int indice)
{
    throw ErroreSistema(CodiciErrore::ElementoControlloMancante,
                        QStringLiteral("L'elemento %1 della matrice di controlli non esiste.").arg(indice));
}
