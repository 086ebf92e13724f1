#pragma once
// Scarico della domanda del ramo fatture: la fornitura di DomandaSel, con i
// dati di DistilleriaDati, nella cartella data (già scelta dall'utente). I
// messaggi passano per la piattaforma; nessun widget.

#include <QString>

// Vero quando il file finale è stato scritto nella cartella.
bool ScaricaDomanda(const QString& cartella);
