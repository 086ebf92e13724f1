#include "common/file_sicuri.h"

#include "common/errore.h"

#include <QDir>
#include <QFileInfo>
#include <filesystem>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>
#endif

namespace {

constexpr qint64 Blocco = 1 << 16;
// Errore di I/O della periferica: il supporto non rende ciò che gli si è scritto.
constexpr int ErroreDispositivo = 57;

QString Nativo(const QString& percorso) { return QDir::toNativeSeparators(percorso); }

ErroreSistema ErroreScrittura(int numero, const QString& percorso)
{
    switch (numero) {
    case CodiciErrore::PercorsoNonTrovato:
        return ErroreSistema(numero);
    case CodiciErrore::AccessoPercorso:
        return ErroreSistema(numero, QStringLiteral("Impossibile scrivere '%1': cartella o supporto protetti in "
                                                    "scrittura.")
                                         .arg(Nativo(percorso)));
    default:
        return ErroreSistema(CodiciErrore::DiscoPieno, QStringLiteral("Impossibile scrivere '%1': disco pieno o "
                                                                      "supporto tolto durante la scrittura.")
                                                           .arg(Nativo(percorso)));
    }
}

// Forza sul supporto il file aperto; falso se il supporto lo rifiuta.
bool Forza([[maybe_unused]] int descrittore)
{
#ifdef Q_OS_UNIX
    return ::fsync(descrittore) == 0;
#else
    return true;
#endif
}

}  // namespace

FileSuDisco::FileSuDisco(const QString& percorso) : m_file(percorso)
{
    if (!m_file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        const bool cartella = QFileInfo(percorso).absoluteDir().exists();
        m_chiuso = true;
        throw ErroreScrittura(cartella ? CodiciErrore::AccessoPercorso : CodiciErrore::PercorsoNonTrovato, percorso);
    }
}

FileSuDisco::~FileSuDisco()
{
    if (!m_chiuso) {
        m_file.close();
        QFile::remove(m_file.fileName());
    }
}

void FileSuDisco::Scrivi(const char* dati, qint64 n)
{
    if (m_file.write(dati, n) != n)
        Guasto(CodiciErrore::DiscoPieno);
}

void FileSuDisco::Chiudi()
{
    if (!m_file.flush() || !Forza(m_file.handle()))
        Guasto(CodiciErrore::DiscoPieno);
    m_file.close();
    if (m_file.error() != QFileDevice::NoError)
        Guasto(CodiciErrore::DiscoPieno);
    m_chiuso = true;
    ForzaCartella(QFileInfo(m_file.fileName()).absolutePath());
}

void FileSuDisco::Guasto(int numero)
{
    const QString percorso = m_file.fileName();
    m_file.close();
    QFile::remove(percorso);
    m_chiuso = true;
    throw ErroreScrittura(numero, percorso);
}

void ForzaCartella([[maybe_unused]] const QString& cartella)
{
#ifdef Q_OS_UNIX
    const int fd = ::open(QFile::encodeName(cartella).constData(), O_RDONLY | O_DIRECTORY);
    if (fd < 0)
        return;
    // Alcuni file system non sincronizzano le cartelle (EINVAL): nulla da fare.
    const bool ok = ::fsync(fd) == 0 || errno == EINVAL;
    ::close(fd);
    if (!ok)
        throw ErroreScrittura(CodiciErrore::DiscoPieno, cartella);
#endif
}

void RinominaSuDisco(const QString& da, const QString& a)
{
    std::error_code ec;
    std::filesystem::rename(std::filesystem::path(da.toStdU16String()), std::filesystem::path(a.toStdU16String()), ec);
    if (ec)
        throw ErroreSistema(CodiciErrore::AccessoPercorso,
                            QStringLiteral("Impossibile rinominare '%1' in '%2'.").arg(Nativo(da), Nativo(a)));
    ForzaCartella(QFileInfo(a).absolutePath());
}

void CopiaVerificata(const QString& sorgente, const QString& destinazione)
{
    QFile origine(sorgente);
    if (!origine.open(QIODevice::ReadOnly))
        throw ErroreSistema(CodiciErrore::FileNonTrovatoRuntime);
    const QString provvisorio = destinazione + SuffissoProvvisorio;
    QFile::remove(provvisorio);
    {
        FileSuDisco copia(provvisorio);
        while (!origine.atEnd()) {
            const QByteArray blocco = origine.read(Blocco);
            if (blocco.isEmpty() && origine.error() != QFileDevice::NoError)
                throw ErroreSistema(ErroreDispositivo, QStringLiteral("Impossibile leggere '%1'.").arg(Nativo(sorgente)));
            copia.Scrivi(blocco.constData(), blocco.size());
        }
        copia.Chiudi();
    }

    // Rilettura dal supporto: le pagine in memoria si lasciano andare, così
    // il confronto legge ciò che il supporto ha davvero.
    bool uguale = false;
    {
        QFile letto(provvisorio);
        if (letto.open(QIODevice::ReadOnly) && letto.size() == origine.size() && origine.seek(0)) {
#ifdef Q_OS_LINUX
            ::posix_fadvise(letto.handle(), 0, 0, POSIX_FADV_DONTNEED);
#endif
            uguale = true;
            while (uguale && !origine.atEnd())
                uguale = letto.read(Blocco) == origine.read(Blocco);
            uguale = uguale && letto.atEnd() && letto.error() == QFileDevice::NoError;
        }
    }
    if (!uguale) {
        QFile::remove(provvisorio);
        throw ErroreSistema(ErroreDispositivo,
                            QStringLiteral("Copia non riuscita: il file '%1' riletto dal supporto non è uguale "
                                           "all'originale.")
                                .arg(Nativo(destinazione)));
    }
    try {
        RinominaSuDisco(provvisorio, destinazione);
    } catch (...) {
        QFile::remove(provvisorio);
        throw;
    }
}
