#pragma once
// Funzioni SQL registrate su ogni connessione, con il comportamento del motore
// originale: CDBL, CSNG, VAL, FORMAT, MID. Leggono la virgola decimale;
// CDBL('') fallisce come nel motore originale. Un errore porta il numero tra
// parentesi quadre in testa al messaggio ("[13] ...").
// ISNULL è una parola riservata di SQLite e non può essere una funzione:
// "isnull(x)" si scrive "x IS NULL".

struct sqlite3;

void RegistraFunzioniSql(sqlite3* db);
