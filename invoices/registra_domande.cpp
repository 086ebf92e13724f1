#include "invoices/registra_domande.h"

#include "common/SchermataCambioNumero.h"
#include "invoices/FrmDomanda.h"
#include "shell/registro_maschere.h"

void RegistraMaschereDomande()
{
    RegistraMaschera(
        QStringLiteral("FrmDomanda"), [](QWidget* g) { return new FrmDomanda(g); }, Apertura::Modale);
    RegistraMaschera(
        QStringLiteral("frmCambioDomanda"),
        [](QWidget* g) { return new SchermataCambioNumero(GenereCambio::Domanda, g); }, Apertura::Modale);
}
