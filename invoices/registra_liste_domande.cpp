#include "invoices/registra_liste_domande.h"

#include "invoices/FrmSelezione.h"
#include "shell/registro_maschere.h"

void RegistraListeDomande()
{
    RegistraMaschera(QStringLiteral("FrmSelezione"), [](QWidget*) { return new FrmSelezione; });
}
