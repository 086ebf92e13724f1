#pragma once
// Controlli del dischetto usati dal salvataggio e dal ripristino. Il
// dischetto è la cartella sessione().CartellaFloppy: un supporto assente è
// una cartella che manca o non si legge, la protezione in scrittura un
// permesso negato (errore 75). Tutte azzerano OperazioneAnnullata e usano
// ControlloFloppyRipeti per chiedere al chiamante di rifarle. Il dischetto,
// che cosa se ne cancella e quando una cartella vi sta sopra sono quelli
// degli scarichi (common/supporto_floppy.h).

#include "common/supporto_floppy.h"

// Prima di scrivere l'archivio: il dischetto deve essere vuoto. Annulla
// l'operazione (OperazioneAnnullata) su Annulla o se l'utente rinuncia.
void ControlloFloppyVuoto();
// Al cambio di disco durante un salvataggio: c'è un disco e non ha file.
bool ControlloFloppyFile();
// Al cambio di disco durante un ripristino: c'è un disco.
bool ControlloFloppyInserito();
