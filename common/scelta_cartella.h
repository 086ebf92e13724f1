#pragma once
// Scelta di una cartella per un lavoro (il carico di un ramo, lo scarico, il
// backup): si apre sull'ultima cartella scelta per lo stesso lavoro in questa
// sessione, o sulla cartella data. Nulla resta dopo l'uscita: il programma
// non ha configurazione. Passa dalla SfogliaCartella della piattaforma.

#include <QString>

// La cartella scelta, "" se l'utente annulla.
QString SfogliaCartellaPer(const QString& lavoro, const QString& titolo, const QString& iniziale = QString());
// La cartella su cui si apre la scelta in corso, "" fuori da una scelta o
// senza una cartella da proporre: la legge il dialogo della piattaforma.
QString CartellaDiPartenza();
