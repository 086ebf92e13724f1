#include "interchange/Destinazioni.h"

#include "common/errore.h"
#include "common/piattaforma.h"
#include "common/scelta_cartella.h"
#include "shell/session_state.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>


QString CartellaProgramma()
{
    QDir dir(sessione().PathDatabase);
    return QDir::cleanPath(dir.absoluteFilePath(QStringLiteral("..")));
}

QString FileDelProgramma(const QString& nome) { return QDir(CartellaProgramma()).filePath(nome); }

QString TrovaFileInCartella(QString& nomeFile, const QString& titolo, const QString& lavoro)
{
    for (;;) {
        QString cartella = SfogliaCartellaPer(lavoro.isEmpty() ? titolo : lavoro, titolo);
        if (cartella.isEmpty())
            return QString();
        if (!cartella.endsWith(QLatin1Char('/')) && !cartella.endsWith(QLatin1Char('\\')))
            cartella += QLatin1Char('/');
        // Il nome si cerca senza badare a maiuscole e minuscole: su un disco
        // che le distingue "ART29FAT2005.TXT" è lo stesso file dell'etichetta.
        QStringList trovati;
        for (const QString& nome : QDir(cartella).entryList(QDir::Files | QDir::Hidden | QDir::System))
            if (nome.compare(nomeFile, Qt::CaseInsensitive) == 0)
                trovati << nome;
        if (trovati.size() == 1) {
            nomeFile = cartella + trovati.first();
            return nomeFile;
        }
        const QString testo = trovati.isEmpty()
                                  ? QStringLiteral("Il percorso indicato non è corretto")
                                  : QStringLiteral("Nella cartella ci sono più file di nome ") + nomeFile +
                                        QStringLiteral(" che differiscono solo per maiuscole e minuscole: ") +
                                        trovati.join(QStringLiteral(", ")) + QStringLiteral(". Lasciarne uno solo.");
        if (MsgBox(testo, StileMsg::RiprovaAnnulla + StileMsg::Esclamativo, sessione().TitoloMaschera) ==
            RispostaMsg::Annulla)
            return QString();
    }
}

bool Chk_Disk()
{
    try {
        const QStringList file = FileDelFloppy();
        if (!file.isEmpty()) {
            MsgBox(QStringLiteral("Attenzione il contenuto del floppy verra cancellato"), StileMsg::Informazione);
            SvuotaFloppy(file);
        }
        return true;
    } catch (const ErroreSistema& e) {
        if (e.numero() == CodiciErrore::AccessoPercorso) {
            // Annulla è la via d'uscita da un supporto che non si scriverà mai.
            if (MsgBox(QStringLiteral("Togliere la protezione in scrittura dal dischetto"),
                       StileMsg::OKAnnulla + StileMsg::Critico, sessione().TitoloMaschera) == RispostaMsg::Annulla)
                throw;
            return false;
        }
        if (MsgBox(QStringLiteral("Inserire il dischetto nel drive."), StileMsg::SiNo + StileMsg::Critico) ==
                RispostaMsg::No &&
            MsgBox(QStringLiteral("ATTENZIONE ,vuoi terminare il rilascio."), StileMsg::SiNo + StileMsg::Informazione) ==
                RispostaMsg::Si)
            TerminaProcesso();
        return false;
    }
}

void FileCopy(const QString& sorgente, const QString& destinazione)
{
    if (!QFileInfo(sorgente).isFile())
        throw ErroreSistema(CodiciErrore::FileNonTrovatoRuntime);
    if (!QFileInfo(destinazione).absoluteDir().exists())
        throw ErroreSistema(CodiciErrore::PercorsoNonTrovato);
    // La copia del sistema (senza passare i byte per il programma); la
    // destinazione che c'è già si sostituisce.
    if (QFileInfo::exists(destinazione) && !QFile::remove(destinazione))
        throw ErroreSistema(CodiciErrore::AccessoPercorso);
    if (!QFile::copy(sorgente, destinazione))
        throw ErroreSistema(CodiciErrore::AccessoPercorso);
}

void CancellaSeEsiste(const QString& percorso)
{
    if (QFileInfo::exists(percorso) && !QFile::remove(percorso))
        throw ErroreSistema(CodiciErrore::AccessoPercorso);
}
