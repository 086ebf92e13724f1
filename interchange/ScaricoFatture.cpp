#include "interchange/ScaricoFatture.h"

#include "common/liste.h"
#include "interchange/CursoreSqlite.h"
#include "interchange/FileFornitura.h"
#include "interchange/ScaricoComune.h"
#include "interchange/TracciatoFatture.h"
#include "shell/session_state.h"
#include "store/database.h"

namespace {

// Record 0, una riga 1 per fattura (query SCARICO), una riga 2 per bolla
// (query SCARICO2), record 9.
bool ScriviFatture(ScritturaFornitura& file, const QString& numero)
{
    TracciatoFatture::Scarico scarico;
    scarico.NumeroScarico = numero;
    file.Print(scarico.TRACCIATO_0());

    // Lette direttamente dal motore: diecimila fatture in una frazione di secondo.
    const IstruzioneSql fatture = QueryListaDomande(QStringLiteral("SCARICO"));
    scarico.ContaFatture = 0;
    const DatiDistilleria& distilleria = sessione().DistilleriaDati;
    for (CursoreSqlite riga(Db().handle(), fatture.testo, fatture.parametri); !riga.eof(); riga.MoveNext()) {
        ++scarico.ContaFatture;
        file.Print(scarico.TRACCIATO_1(riga, distilleria));
    }

    const IstruzioneSql bolle = QueryListaDomande(QStringLiteral("SCARICO2"));
    scarico.ContaBolle = 0;
    for (CursoreSqlite riga(Db().handle(), bolle.testo, bolle.parametri); !riga.eof(); riga.MoveNext()) {
        ++scarico.ContaBolle;
        file.Print(scarico.TRACCIATO_2(riga));
    }

    file.Print(scarico.TRACCIATO_9());
    return true;
}

int SegnaDomandaScaricata()
{
    return Db().Execute(
        QStringLiteral("UPDATE DOMANDE SET SCAR =  'S',PROG_INVIO = PROG_INVIO + 1  where ID_domanda = ?"),
        {sessione().DomandaSel.ID_DOMANDA});
}

}  // namespace

bool ScaricaDomanda(const QString& cartella)
{
    return EseguiScarico(cartella, RamoScarico{TagFatturazione, ScriviFatture, SegnaDomandaScaricata});
}
