#pragma once
// Registro degli errori: ogni routine con un'etichetta d'errore passa qui il
// numero e la descrizione. La riga va in LOGERR prima che l'utente veda il
// messaggio; se non si riesce nemmeno a scrivere la riga il database è perso
// e il programma termina.

#include <QString>

// settore: vuoto in quasi tutte le chiamate; etichetta: la routine che ha
// fallito, come la vede l'assistenza.
void ScriviLogErr(const QString& settore, const QString& etichetta, int numero, const QString& descrizione);

// Il numero come lo scrive la colonna CODI_ERRO: almeno cinque cifre ("03021").
QString NumeroErroreCinqueCifre(int numero);
