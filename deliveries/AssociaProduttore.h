#pragma once
// Legame tra un produttore e un certificato UTF (TAB_ID_UTF_PRODUTTORE).
// È l'unico punto che scrive quella tabella.

#include <QtGlobal>

// 0 lega il produttore al certificato, 2 toglie il legame; la riga del
// produttore resta com'è. Falso dopo un errore, registrato sotto
// "rfAssociaDeAssociaProduttore" con il settore "Md_FunzioniGenerali".
bool rfAssociaDeAssociaProduttore(qint32 idProduttore, qint32 idUtf, int operazione);

// Lo stesso, senza registrare: l'errore esce, per chi scrive il legame dentro
// una scrittura più ampia e la annulla tutta prima di registrarlo.
void AssociaProduttore(qint32 idProduttore, qint32 idUtf, int operazione);

// Settore ed etichetta con cui si registra un guasto del legame.
inline constexpr char SettoreLegame[] = "Md_FunzioniGenerali";
inline constexpr char EtichettaLegame[] = "rfAssociaDeAssociaProduttore";
