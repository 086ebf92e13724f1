#include "deliveries/registra_conferimenti_utf.h"

#include "deliveries/FrmProduttore_SelezionaProd.h"
#include "deliveries/frmProduttoriNoAssociati.h"
#include "deliveries/frmProduttore_Utf.h"
#include "shell/registro_maschere.h"

void RegistraMaschereConferimentiUtf()
{
    RegistraMaschera(
        QStringLiteral("FrmProduttore_SelezionaProd"),
        [](QWidget* g) { return new FrmProduttore_SelezionaProd(g); }, Apertura::Modale);
    RegistraMaschera(
        QStringLiteral("frmProduttore_Utf"), [](QWidget* g) { return new frmProduttore_Utf(g); }, Apertura::Modale);
    RegistraMaschera(
        QStringLiteral("frmProduttoriNoAssociati"), [](QWidget* g) { return new frmProduttoriNoAssociati(g); },
        Apertura::Modale);
}
