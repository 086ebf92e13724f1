#pragma once
// Scrittura di DOMANDE_PRODUTTORI dal record DomandaProduttoreSel, senza
// maschera: la usano la maschera della domanda, la cancellazione dalla lista e
// il carico delle forniture.

#include <QString>

// 0 inserisce, 1 modifica, 2 cancella le righe di "Select * from
// DOMANDE_produttori " + condizione. Falso dopo un errore.
bool MetodiDOMANDA_produttori(int operazione, const QString& condizione);
