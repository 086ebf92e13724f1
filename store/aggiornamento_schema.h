#pragma once
// Aggiornamento dello schema all'avvio: un database di una versione
// precedente ha la tabella SETUP al posto di tab_setup e una TAB_Fornitura
// diversa. Si lavora sulle definizioni delle tabelle, le righe non migrano.

class Database;

// Vero quando ha trovato una tabella di nome SETUP (in qualunque forma di
// maiuscole) e l'ha sostituita con tab_setup vuota. Ignora i propri errori:
// una tab_setup fatta a metà la scopre il controllo di versione.
bool CreaTabSetup(Database& db);

// Ricrea TAB_Fornitura vuota. Solo l'eliminazione della vecchia tabella
// ignora gli errori; gli altri arrivano al chiamante.
void CreaTabFornitura(Database& db);
