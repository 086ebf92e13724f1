#pragma once
// Dove va e da dove viene una fornitura: la scelta della cartella, la ricerca
// di un file in una cartella scelta, il controllo del dischetto e le
// operazioni sui file che gli scarichi e i carichi usano (copia, cancellazione).
//
// Il dischetto è un punto di montaggio fisso (sessione().CartellaFloppy). Una
// cartella "sul dischetto" è quel punto o una cartella sotto di esso; per chi
// scrive ancora "A:" o "B:" valgono anche quelle. Protezione in scrittura:
// il supporto c'è ma non si scrive (errore 75). Supporto assente: la cartella
// non c'è, non si legge, oppure è un punto di montaggio di /etc/fstab che ora
// non è montato.

#include "common/piattaforma.h"

#include <QString>

// La cartella del programma: quella che contiene database/ (il genitore di
// PathDatabase). Lì stanno COPI1.666 e gli elenchi degli scarti.
QString CartellaProgramma();
// Un file nella cartella del programma.
QString FileDelProgramma(const QString& nome);

// La scelta della cartella è SfogliaCartella della piattaforma
// (common/piattaforma.h): la cartella scelta, "" se l'utente annulla.

// Chiede una cartella finché vi si trova nomeFile. Trovato: nomeFile diventa
// il percorso completo, che è anche il risultato. "" se l'utente rinuncia.
// La scelta riparte dall'ultima cartella del lavoro (vedi SfogliaCartellaPer).
QString TrovaFileInCartella(QString& nomeFile, const QString& titolo, const QString& lavoro = QString());

// Vero se la cartella sta sul dischetto.
bool SullaCartellaFloppy(const QString& cartella);
// La cartella vera: "A:" o "B:" in testa diventano il punto di montaggio del
// dischetto (dove non ci sono unità con lettera); le altre restano come sono.
QString CartellaReale(const QString& cartella);

// Svuota il dischetto prima di uno scarico. Falso quando va ripetuto
// (protezione in scrittura, dischetto assente); all'ultima parola dell'utente
// termina il programma.
bool Chk_Disk();

// Come FileCopy: la destinazione esistente è sostituita. Errori: 53 sorgente
// assente, 76 cartella inesistente, 75 scrittura non riuscita (accesso
// negato, disco pieno).
void FileCopy(const QString& sorgente, const QString& destinazione);
// Cancella il file se c'è (Dir seguito da Kill); un file che non si cancella
// dà l'errore 75.
void CancellaSeEsiste(const QString& percorso);
