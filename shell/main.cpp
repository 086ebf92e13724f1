// Punto d'ingresso unico di Fermola: nessuna riga di comando, nessun file di
// configurazione. Tutto parte dalla schermata d'avvio.
#include "common/piattaforma.h"
#include "shell/avvio.h"
#include "shell/frmSpalsh.h"

int main(int argc, char** argv)
{
    const auto app = AvviaApplicazione(argc, argv, CreaPiattaformaQt());
    auto* splash = new frmSpalsh;
    splash->setAttribute(Qt::WA_DeleteOnClose);
    splash->show();
    return QApplication::exec();
}
