#include "invoices/registra_fatture.h"

#include "invoices/FrmSelezionaFatture.h"
#include "shell/registro_maschere.h"

void RegistraMaschereFatture()
{
    RegistraMaschera(
        QStringLiteral("FrmSelezionaFatture"), [](QWidget* g) { return new FrmSelezionaFatture(g); },
        Apertura::Modale);
}
