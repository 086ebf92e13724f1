#pragma once
// Scrittura di TAB_UTF dal record UtfSel, senza maschera: la usano la
// maschera del certificato, la cancellazione dal browser dei certificati e il
// carico delle forniture.

#include <QString>

// 0 inserisce, 1 modifica, 2 cancella la riga di "Select * from TAB_UTF " +
// condizione (per esempio "where  id_utf =12"). Dopo ogni scrittura la
// domanda del distillatore torna non stampata e non scaricata. Falso dopo un
// errore (registrato sotto "frmProduttore_Utf motedoUtf") e quando non c'è
// una riga da modificare.
bool MetodiUtf(int operazione, const QString& condizione);
