#pragma once
// Testo dell'annata che i report stampano, dalla chiave della campagna: una
// tabella fissa, provata in quest'ordine; una chiave che non c'è dà il testo
// vuoto (e la formula porta un valore vuoto, non un errore).

#include <QString>

// "2005" -> "2005/2006"; con formaUtf "Campagna 2005/2006" (il report utf).
QString TestoCampagna(const QString& chiave, bool formaUtf = false);
