#include "shell/LeggiDistilleria.h"

#include "shell/session_state.h"
#include "store/database.h"

bool LeggiDistilleria()
{
    auto& s = sessione();
    Recordset rs = Db().OpenRecordset(QStringLiteral("seLECT * FROM DISTILLERIA"));
    if (rs.eof()) {
        s.DistilleriaAssente = true;
        s.ModoDistilleria = QStringLiteral("I");
        s.TitoloMaschera = QStringLiteral(" Inizializza Distilleria ");
        return false;
    }
    s.DistilleriaAssente = false;
    s.ModoDistilleria = QStringLiteral("M");
    // Della prima riga; testo() rende vuoto un Null.
    s.DistilleriaDati.CODI_FISC = rs.Fields(QStringLiteral("CODI_FISC")).testo();
    s.DistilleriaDati.RAGI_SOCI = rs.Fields(QStringLiteral("RAGI_SOCI")).testo();
    s.DistilleriaDati.INDI_DIST = rs.Fields(QStringLiteral("INDI_DIST")).testo();
    return true;
}
