#pragma once
// Aiuto in linea: F1 e il pulsante "Help" delle maschere chiamano MostraHelp
// con il nome della maschera. La schermata di aiuto installa qui la propria
// funzione; finché non c'è, la richiesta non fa nulla.

#include <QString>
#include <functional>

using FunzioneHelp = std::function<void(const QString& nome)>;

void MostraHelp(const QString& nome);
// Installa la funzione che mostra l'aiuto (una funzione vuota la toglie) e
// restituisce quella di prima.
FunzioneHelp ImpostaMostraHelp(FunzioneHelp funzione);
