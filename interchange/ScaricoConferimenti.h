#pragma once
// Scarico della domanda del ramo conferimenti: la fornitura di
// DomandaProduttoreSel nella cartella data, con il controllo di quadratura
// del primo certificato prima di scrivere. Come lo scarico delle fatture, da
// cui prende i passi comuni (ScaricoComune.h); nessun widget.

#include <QString>

// Confronta le somme dei produttori del certificato con ciò che il
// certificato dichiara (vino lavorato ed ettogradi, a quattro decimali);
// imposta UtfSel.QUADRATURA a "0" o "1". Vero: lo scarico può andare avanti.
bool ctrl_Quadratura(const QString& iD_UTF);

// Vero quando il file finale è stato scritto nella cartella.
bool ScaricaDomandaProduttore(const QString& cartella);
