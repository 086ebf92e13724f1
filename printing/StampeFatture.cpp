#include "printing/StampeFatture.h"

#include "common/errore.h"

// Provvisorio: il motore dei report non c'è ancora; chi chiama riceve un
// errore e lo registra come ogni altro guasto di stampa.
namespace {
[[noreturn]] void NonDisponibile() { throw ErroreSistema(3024, QStringLiteral("Motore dei report non disponibile.")); }
}  // namespace

bool STAMPA(const QString&) { NonDisponibile(); }
void StampaBolleDomanda(const QString&, const QString&, const QString&, const QString&) { NonDisponibile(); }
void StampaBolleMenu() { NonDisponibile(); }
