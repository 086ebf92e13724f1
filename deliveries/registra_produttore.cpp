#include "deliveries/registra_produttore.h"

#include "deliveries/FrmProduttore.h"
#include "shell/registro_maschere.h"

void RegistraMaschereProduttore()
{
    // Il certificato e l'elenco dei conferimenti la aprono per nome dopo aver
    // riempito UtfSel, ProduttoreSel e ModoMaschera.
    RegistraMaschera(QStringLiteral("FrmProduttore"), [](QWidget* g) { return new FrmProduttore(g); },
                     Apertura::Modale);
}
