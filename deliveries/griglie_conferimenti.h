#pragma once
// Comportamento comune delle griglie delle maschere dei conferimenti: righe
// intere selezionabili (anche più d'una, come i segnalibri della griglia
// originale), nessuna modifica in griglia, colore di evidenziazione al clic.
// La riga corrente e le righe selezionate sono cose distinte: i comandi
// chiedono le seconde e leggono la prima.

class QTableView;

void PreparaGriglia(QTableView* griglia);
// Numero di righe selezionate.
int RigheSelezionate(const QTableView* griglia);
// Riga corrente; senza riga corrente la prima, se la lista ne ha; -1 se è vuota.
int RigaCorrente(const QTableView* griglia);
// Dopo un ricaricamento la griglia sta sulla prima riga, senza selezionarla.
void PortaAllaPrimaRiga(QTableView* griglia);
