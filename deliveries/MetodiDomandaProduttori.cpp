#include "deliveries/MetodiDomandaProduttori.h"

// Provvisorio finché la maschera della domanda del distillatore non c'è:
// nessuna scrittura, esito negativo.
bool MetodiDOMANDA_produttori(int, const QString&) { return false; }
