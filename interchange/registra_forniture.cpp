#include "interchange/registra_forniture.h"

#include "interchange/ScaricoConferimenti.h"
#include "interchange/frmCarico.h"
#include "interchange/frmScarico.h"
#include "shell/registro_maschere.h"
#include "shell/session_state.h"

void RegistraMaschereForniture()
{
    RegistraMaschera(
        QStringLiteral("frmScarico"), [](QWidget* g) { return new frmScarico(g); }, Apertura::Modale);
    RegistraMaschera(QStringLiteral("frmCarico"), [](QWidget*) { return new frmCarico; });
    // Lo scarico dei conferimenti è la stessa maschera con la sua didascalia,
    // il numero della domanda del distillatore e il suo nucleo.
    RegistraMaschera(
        QStringLiteral("frmProduttori_Scarico"),
        [](QWidget* g) {
            auto* maschera = new frmScarico(QStringLiteral("Scarico domande delle distillerie"),
                                            sessione().DomandaProduttoreSel.DOMANDA, ScaricaDomandaProduttore, g);
            maschera->setObjectName(QStringLiteral("frmProduttori_Scarico"));
            return maschera;
        },
        Apertura::Modale);
}
