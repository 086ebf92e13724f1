#include "printing/StampeConferimenti.h"

#include "common/errore.h"

// Provvisorio: il motore dei report non c'è ancora.
namespace {
[[noreturn]] void NonDisponibile() { throw ErroreSistema(3024, QStringLiteral("Motore dei report non disponibile.")); }
}  // namespace

bool StampaDomandaProduttore(const RigaStampaConferimenti&) { NonDisponibile(); }
void StampaUTF(const RigaStampaConferimenti&) { NonDisponibile(); }
