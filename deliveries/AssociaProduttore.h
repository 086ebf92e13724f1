#pragma once
// Legame tra un produttore e un certificato UTF (TAB_ID_UTF_PRODUTTORE).
// È l'unico punto che scrive quella tabella.

#include <QtGlobal>

// 0 lega il produttore al certificato, 2 toglie il legame; la riga del
// produttore resta com'è. Falso dopo un errore, registrato sotto
// "rfAssociaDeAssociaProduttore" con il settore "Md_FunzioniGenerali".
bool rfAssociaDeAssociaProduttore(qint32 idProduttore, qint32 idUtf, int operazione);
