#include "printing/registra_stampe.h"

#include "printing/StampeFatture.h"
#include "shell/registro_maschere.h"

void RegistraStampe() { RegistraAzione(NomiAzioni::StampaBolleMenu, [] { StampaBolleMenu(); }); }
