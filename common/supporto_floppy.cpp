#include "common/supporto_floppy.h"

#include "common/errore.h"
#include "shell/session_state.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStorageInfo>

namespace {

#ifdef Q_OS_WIN
constexpr Qt::CaseSensitivity Maiuscole = Qt::CaseInsensitive;
#else
constexpr Qt::CaseSensitivity Maiuscole = Qt::CaseSensitive;
#endif

// Percorso assoluto e pulito, senza barra finale.
QString Normale(const QString& percorso)
{
    QString p = QDir::cleanPath(QDir::fromNativeSeparators(percorso));
    if (QFileInfo(p).isRelative())
        p = QDir::cleanPath(QDir::current().absoluteFilePath(p));
    return p;
}

bool LetteraFloppy(const QString& cartella)
{
    const QString lettera = cartella.left(2).toUpper();
    return lettera == QLatin1String("A:") || lettera == QLatin1String("B:");
}

// Vero se la cartella compare come punto di montaggio in /etc/fstab.
bool PuntoDiMontaggioDichiarato(const QString& cartella)
{
    QFile fstab(QStringLiteral("/etc/fstab"));
    if (!fstab.open(QIODevice::ReadOnly | QIODevice::Text))
        return false;
    static const QRegularExpression spazi(QStringLiteral("\\s+"));
    while (!fstab.atEnd()) {
        const QString riga = QString::fromLocal8Bit(fstab.readLine()).trimmed();
        if (riga.startsWith(QLatin1Char('#')))
            continue;
        const QStringList campi = riga.split(spazi, Qt::SkipEmptyParts);
        if (campi.size() >= 2 && Normale(campi.at(1)) == cartella)
            return true;
    }
    return false;
}

// Il supporto c'è ed è leggibile; altrimenti l'errore 71.
QDir Supporto()
{
    const QString cartella = Normale(sessione().CartellaFloppy);
    const QFileInfo info(cartella);
    if (!info.isDir() || !info.isReadable() || !info.isExecutable())
        throw ErroreSistema(CodiciErrore::DiscoNonPronto);
    if (PuntoDiMontaggioDichiarato(cartella) && Normale(QStorageInfo(cartella).rootPath()) != cartella)
        throw ErroreSistema(CodiciErrore::DiscoNonPronto);
    return QDir(cartella);
}

// Si guardano i permessi scritti sul supporto e non quelli dell'utente:
// anche l'amministratore deve fermarsi davanti a un dischetto protetto.
bool SenzaScrittura(const QString& percorso) { return !(QFileInfo(percorso).permissions() & QFile::WriteOwner); }

}  // namespace

bool SullaCartellaFloppy(const QString& cartella)
{
    if (LetteraFloppy(cartella))
        return true;
    if (cartella.trimmed().isEmpty() || sessione().CartellaFloppy.isEmpty())
        return false;
    const QString floppy = Normale(sessione().CartellaFloppy);
    const QString percorso = Normale(cartella);
    return percorso.compare(floppy, Maiuscole) == 0 ||
           percorso.startsWith(floppy.endsWith(QLatin1Char('/')) ? floppy : floppy + QLatin1Char('/'), Maiuscole);
}

QString CartellaReale(const QString& cartella)
{
#ifdef Q_OS_WIN
    return cartella;
#else
    if (!LetteraFloppy(cartella))
        return cartella;
    QString resto = cartella.mid(2);
    while (resto.startsWith(QLatin1Char('\\')) || resto.startsWith(QLatin1Char('/')))
        resto.remove(0, 1);
    return resto.isEmpty() ? sessione().CartellaFloppy : QDir(sessione().CartellaFloppy).filePath(resto);
#endif
}

QStringList FileDelFloppy()
{
    const QDir dir = Supporto();
    QStringList file;
    for (const QString& nome : dir.entryList(QDir::Files | QDir::NoSymLinks, QDir::Name))
        file << dir.filePath(nome);
    return file;
}

void SvuotaFloppy(const QStringList& file)
{
    const QString cartella = Normale(sessione().CartellaFloppy);
    if (QStorageInfo(cartella).isReadOnly() || SenzaScrittura(cartella))
        throw ErroreSistema(CodiciErrore::AccessoPercorso);
    for (const QString& percorso : file) {
        if (SenzaScrittura(percorso))
            throw ErroreSistema(CodiciErrore::AutorizzazioneNegata);
        if (!QFile::remove(percorso))
            throw ErroreSistema(CodiciErrore::AccessoPercorso);
    }
}
