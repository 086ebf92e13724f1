#include "invoices/registra_liste_domande.h"

#include "deliveries/FrmProduttori_Selezione.h"
#include "invoices/FrmSelezione.h"
#include "shell/registro_maschere.h"

void RegistraListeDomande()
{
    RegistraMaschera(QStringLiteral("FrmSelezione"), [](QWidget*) { return new FrmSelezione; });
    RegistraMaschera(QStringLiteral("FrmProduttori_Selezione"), [](QWidget*) { return new FrmProduttori_Selezione; });
}
