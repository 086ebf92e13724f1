#pragma once
// Carico di una fornitura del ramo conferimenti (tracciato a 300 caratteri):
// domande del distillatore, certificati UTF e produttori scritti con le
// stesse routine delle maschere di record (MetodiDOMANDA_produttori,
// MetodiUtf, MetodiProduttore), solo se nessuna domanda è stata scartata. La
// fornitura caricata resta in TAB_Fornitura_utf: un secondo carico dello
// stesso file è rifiutato. Nessun widget: i messaggi passano per la
// piattaforma, i titoli sono TitoloMaschera.

#include "interchange/CaricoComune.h"

#include <QString>

// BATTONCARICA sul file dato.
void CaricaFornituraConferimenti(const QString& percorsoFile);
void CaricaFornituraConferimenti(const QString& percorsoFile, OsservatoreCarico* osservatore);
