#include "interchange/registra_carico_conferimenti.h"

#include "interchange/FrmProduttore_carico.h"
#include "shell/registro_maschere.h"

void RegistraMaschereCaricoConferimenti()
{
    RegistraMaschera(QStringLiteral("FrmProduttore_carico"), [](QWidget*) { return new FrmProduttore_carico; });
}
