#pragma once
// Registro degli errori: ogni etichetta d'errore passa di qui. La riga va in
// LOGERR prima che l'utente veda il messaggio; se anche la scrittura fallisce
// il programma ha perso il database e termina.

#include <QString>

void ScriviLogErr(const QString& settore, const QString& etichetta, int numero, const QString& descrizione);
