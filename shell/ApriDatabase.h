#pragma once
// Apertura della connessione di sessione sul database accanto al programma.

// Apre PathDatabase + "orvelta_2005.mdb" in sessione().DbDistilleria.
// Quando ritorna il risultato è sempre vero: se l'apertura fallisce mostra
// numero e descrizione dell'errore e termina il processo (non c'è ancora una
// connessione su cui scrivere LOGERR).
bool ApriDatabase(bool esclusivo);

class ErroreSistema;

// Il messaggio di ApriDatabase (numero, descrizione, icona di stop) seguito
// dalla fine del processo: per i guasti che non hanno un registro su cui
// finire e non devono uscire nel ciclo degli eventi.
[[noreturn]] void TerminaPerErrore(const ErroreSistema& errore);
