#include "interchange/registra_forniture.h"

#include "interchange/frmCarico.h"
#include "interchange/frmScarico.h"
#include "shell/registro_maschere.h"

void RegistraMaschereForniture()
{
    RegistraMaschera(
        QStringLiteral("frmScarico"), [](QWidget* g) { return new frmScarico(g); }, Apertura::Modale);
    RegistraMaschera(QStringLiteral("frmCarico"), [](QWidget*) { return new frmCarico; });
}
