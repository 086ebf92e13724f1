#pragma once
// Controllo formale del codice fiscale delle persone fisiche e della partita
// IVA. Il chiamante sceglie: un testo numerico va a CheckPartitaIva, ogni
// altro a CodFisc.

#include <QString>

// Partita IVA: numerica, 11 caratteri senza gli spazi ai lati, non tutta
// zeri, cifra di controllo giusta (contata sul testo così com'è, spazi
// compresi). Non parla mai all'utente.
bool CheckPartitaIva(const QString& valore);
// Codice fiscale di 16 caratteri: controlli di posizione e carattere di
// controllo. Con lettere al posto delle cifre nelle posizioni 13-15 chiede
// all'utente se si tratta di omocodia; su "No" il codice è rifiutato. Il
// testo non viene modificato.
bool CodFisc(QString& valore);
