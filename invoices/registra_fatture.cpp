#include "invoices/registra_fatture.h"

#include "invoices/FrmFattura.h"
#include "invoices/FrmSelezionaFatture.h"
#include "invoices/frmBolleConsegne.h"
#include "shell/registro_maschere.h"

void RegistraMaschereFatture()
{
    RegistraMaschera(
        QStringLiteral("FrmSelezionaFatture"), [](QWidget* g) { return new FrmSelezionaFatture(g); },
        Apertura::Modale);
    RegistraMaschera(
        QStringLiteral("FrmFattura"), [](QWidget* g) { return new FrmFattura(g); }, Apertura::Modale);
    // Di solito la apre FrmFattura con la chiave e la quantità della fattura.
    RegistraMaschera(
        QStringLiteral("frmBolleConsegne"), [](QWidget* g) { return new frmBolleConsegne(g); }, Apertura::Modale);
}
