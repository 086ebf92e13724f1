#pragma once
// Aggiornamento dello schema di un database della versione precedente, che
// aveva la tabella SETUP al posto di tab_setup. Lavora solo sulla struttura:
// non migra righe.

#include <QStringList>

class Database;

// Sostituisce SETUP (nome confrontato in maiuscolo) con tab_setup vuota.
// Ignora i propri errori; vero se ha trovato SETUP.
bool CreaTabSetup(Database& db);
// Ricrea TAB_Fornitura vuota. Solo l'eliminazione ignora gli errori.
void CreaTabFornitura(Database& db);
// Riporta le viste del database consegnato (quelle delle stampe) alla
// definizione di questa versione: un database creato da una versione
// precedente del programma le ha più povere. Una vista mancante o diversa
// si ricrea; gli errori vanno nel registro e l'avvio continua.
void AggiornaVisteConsegnate(Database& db);
// Ricrea CAMPAGNA con gli anni dati; l'ultimo elemento non viene inserito.
// Nessuno la chiama in questa versione.
void CREA_TAB_CAMPAGNA(Database& db, const QStringList& anni);
