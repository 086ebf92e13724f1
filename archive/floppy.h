#pragma once
// Controlli del dischetto usati dal salvataggio e dal ripristino. Il
// dischetto è la cartella sessione().CartellaFloppy: un supporto assente è
// una cartella che manca o non si legge, la protezione in scrittura un
// permesso negato (errore 75). Tutte azzerano OperazioneAnnullata e usano
// ControlloFloppyRipeti per chiedere al chiamante di rifarle.

#include <QString>

// Vero se il percorso è il dischetto o una cartella dentro di esso.
bool SuFloppy(const QString& percorso);

// Prima di scrivere l'archivio: il dischetto deve essere vuoto. Annulla
// l'operazione (OperazioneAnnullata) su Annulla o se l'utente rinuncia.
void ControlloFloppyVuoto();
// Al cambio di disco durante un salvataggio: c'è un disco e non ha file.
bool ControlloFloppyFile();
// Al cambio di disco durante un ripristino: c'è un disco.
bool ControlloFloppyInserito();
