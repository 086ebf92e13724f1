#pragma once
// Nucleo senza finestre del salvataggio e del ripristino: l'archivio è uno
// zip qualsiasi con la sola voce "orvelta_2005.mdb", senza percorsi. Ogni
// rifiuto esce come ErroreSistema con una descrizione in italiano e lascia
// tutto com'era. Un processo interrotto in qualunque punto lascia un
// database che si apre: il salvataggio legge soltanto, il ripristino
// sostituisce il file con un rinomino atomico di una copia già verificata.

#include <QString>

// Scrive l'archivio dal database (che nessuna connessione tiene aperto):
// lo scrive accanto con un nome provvisorio, lo rilegge e lo verifica, e
// solo allora gli dà il nome definitivo.
void CreaArchivio(const QString& database, const QString& archivio);

// Rimette il database della cartella (PathDatabase) da un archivio. Il
// database precedente resta come "orvelta_2005.mdb.bak" finché il nuovo
// non si è aperto.
void RipristinaArchivio(const QString& archivio, const QString& cartellaDatabase);

// All'avvio: toglie le copie provvisorie e di verifica che un salvataggio o
// un ripristino interrotti hanno lasciato accanto al database. Il database
// di prima di un ripristino (".bak") torna al suo posto solo se quello
// attuale non si apre; altrimenti resta dov'è. Vero se è stato rimesso.
bool SistemaAvanziArchivio(const QString& cartellaDatabase);
