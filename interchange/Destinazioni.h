#pragma once
// Dove va e da dove viene una fornitura: la scelta della cartella, la ricerca
// di un file in una cartella scelta, il controllo del dischetto e le
// operazioni sui file che gli scarichi e i carichi usano (copia, cancellazione).
//
// Il dischetto e i suoi controlli comuni all'archivio stanno in
// common/supporto_floppy.h.

#include "common/piattaforma.h"
#include "common/supporto_floppy.h"

#include <QString>

// La cartella del programma: quella che contiene database/ (il genitore di
// PathDatabase). Lì stanno COPI1.666 e gli elenchi degli scarti.
QString CartellaProgramma();
// Un file nella cartella del programma.
QString FileDelProgramma(const QString& nome);

// La scelta della cartella è SfogliaCartella della piattaforma
// (common/piattaforma.h): la cartella scelta, "" se l'utente annulla.

// Chiede una cartella finché vi si trova nomeFile, con qualunque forma di
// maiuscole e minuscole. Trovato: nomeFile diventa il percorso completo (col
// nome com'è sul disco), che è anche il risultato. "" se l'utente rinuncia.
// La scelta riparte dall'ultima cartella del lavoro (vedi SfogliaCartellaPer).
QString TrovaFileInCartella(QString& nomeFile, const QString& titolo, const QString& lavoro = QString());

// Svuota il dischetto prima di uno scarico. Falso quando va ripetuto
// (protezione in scrittura, dischetto assente); all'ultima parola dell'utente
// termina il programma. Annulla sulla protezione in scrittura fa uscire
// l'errore 75, che chiude lo scarico per la via dei suoi errori.
bool Chk_Disk();

// Come FileCopy: la destinazione esistente è sostituita. Errori: 53 sorgente
// assente, 76 cartella inesistente, 75 scrittura non riuscita (accesso
// negato, disco pieno).
void FileCopy(const QString& sorgente, const QString& destinazione);
// Cancella il file se c'è (Dir seguito da Kill); un file che non si cancella
// dà l'errore 75.
void CancellaSeEsiste(const QString& percorso);
