#pragma once
// Scrittura di PRODUTTORI dal record sessione().ProduttoreSel, senza maschera:
// la usano la maschera del produttore e il carico delle forniture.

#include <QString>

// 0 inserisce (e collega il produttore a sessione().UtfSel), 1 modifica, 2
// cancella la riga di "Select * from PRODUTTORI " + condizione. Ogni
// scrittura rimette a "N" stampa e scarico della domanda del certificato.
// Falso dopo un errore (già registrato) o senza riga da aggiornare.
bool MetodiProduttore(int operazione, const QString& condizione);
