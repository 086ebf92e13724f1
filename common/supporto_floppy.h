#pragma once
// Il dischetto, per gli scarichi e per l'archivio. È un punto di montaggio
// fisso (sessione().CartellaFloppy); chi scrive ancora "A:" o "B:" intende
// quello. Supporto assente: la cartella manca, non si legge, oppure è un
// punto di montaggio di /etc/fstab che ora non è montato (errore 71).
// Protezione in scrittura: il supporto c'è ma non si scrive (errore 75).
//
// Del contenuto si tolgono solo i file comuni e visibili in cima al
// supporto, come faceva "Kill a:\*.*": cartelle e file nascosti restano
// (una chiavetta montata al posto del dischetto non perde le sue cartelle).

#include <QString>
#include <QStringList>

// Vero se la cartella sta sul dischetto: "A:" o "B:" in testa, il punto di
// montaggio o una cartella sotto di esso.
bool SullaCartellaFloppy(const QString& cartella);
// La cartella vera: "A:" o "B:" in testa diventano il punto di montaggio del
// dischetto (dove non ci sono unità con lettera); le altre restano come sono.
QString CartellaReale(const QString& cartella);

// I file comuni e visibili in cima al dischetto ("Dir a:\*.*"); errore 71 se
// il supporto non c'è.
QStringList FileDelFloppy();
// Li cancella ("Kill a:\*.*"): 75 su un supporto protetto, 70 su un file a
// sola lettura.
void SvuotaFloppy(const QStringList& file);
