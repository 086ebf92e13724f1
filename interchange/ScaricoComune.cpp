#include "interchange/ScaricoComune.h"

#include "common/errore.h"
#include "common/file_sicuri.h"
#include "common/log_errori.h"
#include "common/numeri.h"
#include "common/piattaforma.h"
#include "interchange/Destinazioni.h"
#include "interchange/FileFornitura.h"
#include "shell/session_state.h"
#include "store/database.h"

#include <QDir>
#include <QFile>

QString NumeroProssimoScarico()
{
    Recordset rs = Db().OpenRecordset(QStringLiteral("SELECT MAX(PROG) +1 AS MASSIMO  FROM  PROG_DSK"));
    if (rs.eof() || rs.Fields(QStringLiteral("massimo")).isNull())
        return QString();
    return Format(Decimale(QString::number(rs.Fields(QStringLiteral("massimo")).intero())), QStringLiteral("000"));
}

QString NomeFileScarico(const QString& tag, const QString& numero)
{
    return TagProgramma + tag + QLatin1Char('.') + numero;
}

bool EseguiScarico(const QString& cartellaScelta, const RamoScarico& ramo)
{
    QString cartella = cartellaScelta.trimmed();
    if (cartella.isEmpty())
        return false;
    if (cartella.endsWith(QLatin1Char('\\')) || (cartella.endsWith(QLatin1Char('/')) && cartella.size() > 1))
        cartella.chop(1);

    const QString temporaneo = FileDelProgramma(NomeFileTemporaneo);
    bool scritto = false;
    try {
        const QString numero = NumeroProssimoScarico();
        Clessidra(true);
        {
            ScritturaFornitura file(temporaneo);
            if (!ramo.Scrivi(file, numero)) {
                file.Close();
                CancellaSeEsiste(temporaneo);
                Clessidra(false);
                return false;
            }
            file.Close();
        }
        if (SullaCartellaFloppy(cartella))
            while (!Chk_Disk()) {
            }

        QString errore;
        // Un numero vuoto rende l'istruzione incompleta, come nel testo
        // originale "UPDATE PROG_DSK SET PROG = ".
        if (numero.isEmpty())
            throw ErroreSistema(CodiciErrore::ErroreSintassi,
                                QStringLiteral("Errore di sintassi nell'istruzione UPDATE."));
        if (Db().Execute(QStringLiteral("UPDATE PROG_DSK SET PROG = ?"), {numero.toLongLong()}) == 0) {
            MsgBox(QStringLiteral("Flag di stampa non aggiornato , rifare la stampa."), StileMsg::Informazione,
                   sessione().TitoloMaschera);
            CancellaSeEsiste(temporaneo);
            errore = QStringLiteral("Errore");
        }
        if (errore.isEmpty()) {
            // Le copie provvisorie di uno scarico interrotto non restano nella cartella.
            const QDir destinazione(CartellaReale(cartella));
            for (const QString& avanzo :
                 destinazione.entryList({NomeFileScarico(ramo.Tag, QStringLiteral("*")) + SuffissoProvvisorio},
                                        QDir::Files))
                QFile::remove(destinazione.filePath(avanzo));
            // Il file si dice scritto solo quando è riletto uguale dal supporto.
            CopiaVerificata(temporaneo, destinazione.filePath(NomeFileScarico(ramo.Tag, numero)));
            scritto = true;
            CancellaSeEsiste(temporaneo);
        }
        if (ramo.SegnaScaricata() == 0) {
            MsgBox(QStringLiteral("Flag di scarico non aggiornato, lo scarico sarà terminato."),
                   StileMsg::Informazione);
            CancellaSeEsiste(temporaneo);
        }
    } catch (const ErroreSistema& e) {
        ScriviLogErr(QString(), EtichettaScarico, e.numero(), e.descrizione());
    }
    Clessidra(false);
    return scritto;
}
