#pragma once
// Funzioni SQL registrate su ogni connessione, con il comportamento del motore
// originale: CDBL, CSNG, VAL, FORMAT, MID, ISNULL. Leggono la virgola
// decimale; CDBL('') fallisce come nel motore originale. Un errore porta il
// numero tra parentesi quadre in testa al messaggio ("[13] ...").

struct sqlite3;

void RegistraFunzioniSql(sqlite3* db);
