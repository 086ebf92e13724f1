#include "interchange/Destinazioni.h"

#include "common/errore.h"
#include "common/piattaforma.h"
#include "common/scelta_cartella.h"
#include "shell/session_state.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStorageInfo>

namespace {

// Percorso assoluto e pulito, senza barra finale.
QString Normale(const QString& percorso)
{
    QString p = QDir::cleanPath(QDir::fromNativeSeparators(percorso));
    if (QFileInfo(p).isRelative())
        p = QDir::cleanPath(QDir::current().absoluteFilePath(p));
    return p;
}

// Vero se la cartella compare come punto di montaggio in /etc/fstab.
bool PuntoDiMontaggioDichiarato(const QString& cartella)
{
    QFile fstab(QStringLiteral("/etc/fstab"));
    if (!fstab.open(QIODevice::ReadOnly | QIODevice::Text))
        return false;
    while (!fstab.atEnd()) {
        const QString riga = QString::fromLocal8Bit(fstab.readLine()).trimmed();
        if (riga.startsWith(QLatin1Char('#')))
            continue;
        const QStringList campi = riga.split(QRegularExpression(QStringLiteral("\\s+")), Qt::SkipEmptyParts);
        if (campi.size() >= 2 && Normale(campi.at(1)) == cartella)
            return true;
    }
    return false;
}

// Il supporto del dischetto c'è ed è leggibile; altrimenti l'errore 71.
QDir Supporto()
{
    const QString cartella = Normale(sessione().CartellaFloppy);
    const QFileInfo info(cartella);
    if (!info.isDir() || !info.isReadable())
        throw ErroreSistema(CodiciErrore::DiscoNonPronto);
    if (PuntoDiMontaggioDichiarato(cartella) && Normale(QStorageInfo(cartella).rootPath()) != cartella)
        throw ErroreSistema(CodiciErrore::DiscoNonPronto);
    return QDir(cartella);
}

// Kill di "*.*": solo i file, non le sottocartelle. Un supporto che non si
// scrive è protetto (75); un file a sola lettura si rifiuta con un altro
// numero (70), come l'attributo di sola lettura sul dischetto.
// Si guardano i permessi scritti sul supporto e non quelli dell'utente:
// anche l'amministratore deve fermarsi davanti a un dischetto protetto.
bool SenzaScrittura(const QString& percorso)
{
    return !(QFileInfo(percorso).permissions() & QFile::WriteOwner);
}

void SvuotaSupporto(const QDir& dir, const QStringList& file)
{
    if (QStorageInfo(dir).isReadOnly() || SenzaScrittura(dir.absolutePath()))
        throw ErroreSistema(CodiciErrore::AccessoPercorso);
    for (const QString& nome : file) {
        const QString percorso = dir.filePath(nome);
        if (SenzaScrittura(percorso))
            throw ErroreSistema(CodiciErrore::AutorizzazioneNegata);
        if (!QFile::remove(percorso))
            throw ErroreSistema(CodiciErrore::AccessoPercorso);
    }
}

}  // namespace

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
        const QString completo = cartella + nomeFile;
        if (QFileInfo(completo).isFile()) {
            nomeFile = completo;
            return completo;
        }
        if (MsgBox(QStringLiteral("Il percorso indicato non è corretto"),
                   StileMsg::RiprovaAnnulla + StileMsg::Esclamativo, sessione().TitoloMaschera) == RispostaMsg::Annulla)
            return QString();
    }
}

bool SullaCartellaFloppy(const QString& cartella)
{
    const QString lettera = cartella.left(2).toUpper();
    if (lettera == QLatin1String("A:") || lettera == QLatin1String("B:"))
        return true;
    if (cartella.trimmed().isEmpty())
        return false;
    const QString floppy = Normale(sessione().CartellaFloppy);
    const QString percorso = Normale(cartella);
    return percorso == floppy || percorso.startsWith(floppy + QLatin1Char('/'));
}

QString CartellaReale(const QString& cartella)
{
#ifdef Q_OS_WIN
    return cartella;
#else
    const QString lettera = cartella.left(2).toUpper();
    if (lettera != QLatin1String("A:") && lettera != QLatin1String("B:"))
        return cartella;
    QString resto = cartella.mid(2);
    while (resto.startsWith(QLatin1Char('\\')) || resto.startsWith(QLatin1Char('/')))
        resto.remove(0, 1);
    return resto.isEmpty() ? sessione().CartellaFloppy : QDir(sessione().CartellaFloppy).filePath(resto);
#endif
}

bool Chk_Disk()
{
    try {
        const QDir dir = Supporto();
        const QStringList file = dir.entryList(QDir::Files | QDir::Hidden | QDir::System);
        if (!file.isEmpty()) {
            MsgBox(QStringLiteral("Attenzione il contenuto del floppy verra cancellato"), StileMsg::Informazione);
            SvuotaSupporto(dir, file);
        }
        return true;
    } catch (const ErroreSistema& e) {
        if (e.numero() == CodiciErrore::AccessoPercorso) {
            MsgBox(QStringLiteral("Togliere la protezione in scrittura dal dischetto"), StileMsg::Critico,
                   sessione().TitoloMaschera);
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
