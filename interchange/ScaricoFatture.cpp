#include "interchange/ScaricoFatture.h"

#include "common/liste.h"
#include "interchange/CursoreSqlite.h"
#include "interchange/FileFornitura.h"
#include "interchange/ScaricoComune.h"
#include "interchange/TracciatoFatture.h"
#include "shell/session_state.h"
#include "store/database.h"

namespace {

// La query della lista con le sole colonne che i record leggono: tabelle,
// condizioni e ordine restano quelli della lista. Con tutte le colonne di
// DOMANDE, FATTURE e BOLLE l'ordinamento di diecimila righe pesava più di
// metà dello scarico.
IstruzioneSql SoloColonne(const QString& chiave, const QString& colonne)
{
    IstruzioneSql q = QueryListaDomande(chiave);
    const qsizetype da = q.testo.indexOf(QStringLiteral(" FROM "), 0, Qt::CaseInsensitive);
    if (da >= 0)
        q.testo = QStringLiteral("SELECT ") + colonne + q.testo.mid(da);
    return q;
}

// Record 0, una riga 1 per fattura (query SCARICO), una riga 2 per bolla
// (query SCARICO2), record 9.
bool ScriviFatture(ScritturaFornitura& file, const QString& numero)
{
    TracciatoFatture::Scarico scarico;
    scarico.NumeroScarico = numero;
    file.Print(scarico.TRACCIATO_0());

    // Lette direttamente dal motore: diecimila fatture in una frazione di secondo.
    const IstruzioneSql fatture = SoloColonne(
        QStringLiteral("SCARICO"),
        QStringLiteral("DOMANDE.DOMANDA, LAVORAZIONI.CODI_LAVO, VARIETA.CODI_PROD AS PRODOTTO, FATTURE.CODI_FISC,"
                       " FATTURE.NUME_FATT, FATTURE.DATA_FATT, FATTURE.QTA_PROD, FATTURE.GRAD, FATTURE.PREZ_MINI,"
                       " FATTURE.IMPO, FATTURE.IVA, FATTURE.IMPO_TOTA, FATTURE.DATA_PAGA, FATTURE.QTA_LAVO,"
                       " FATTURE.DENOMINAZIONE"));
    scarico.ContaFatture = 0;
    const DatiDistilleria& distilleria = sessione().DistilleriaDati;
    for (CursoreSqlite riga(Db().handle(), fatture.testo, fatture.parametri); !riga.eof(); riga.MoveNext()) {
        ++scarico.ContaFatture;
        file.Print(scarico.TRACCIATO_1(riga, distilleria));
    }

    const IstruzioneSql bolle = SoloColonne(
        QStringLiteral("SCARICO2"),
        QStringLiteral("DOMANDE.DOMANDA, FATTURE.NUME_FATT, FATTURE.CODI_FISC, BOLLE.NUMERO_BOLLA,"
                       " BOLLE.DATA_CONSEGNA, BOLLE.QUANTITA_PRODOTTO, BOLLE.DATA_PAGA AS \"BOLLE.DATA_PAGA\","
                       " BOLLE.GRADO"));
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
