#pragma once
// Cartella in cui non si scrive né si cancella, anche da root: permessi di
// sola lettura più l'attributo immutabile, tolti all'uscita.

#include "support/prova.h"

#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <unistd.h>

inline void Immutabile(const QString& cartella, bool attiva)
{
    QFile::setPermissions(cartella, attiva ? QFile::ReadOwner | QFile::ExeOwner
                                           : QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    const int fd = ::open(QFile::encodeName(cartella).constData(), O_RDONLY);
    int attributi = 0;
    if (fd >= 0 && ::ioctl(fd, FS_IOC_GETFLAGS, &attributi) == 0) {
        attributi = attiva ? attributi | FS_IMMUTABLE_FL : attributi & ~FS_IMMUTABLE_FL;
        ::ioctl(fd, FS_IOC_SETFLAGS, &attributi);
    }
    if (fd >= 0)
        ::close(fd);
}

// Vero se nella cartella non si crea davvero un file (su un file system che
// non conosce l'attributo immutabile root scrive comunque: la prova si salta).
inline bool ScritturaNegata(const QString& cartella)
{
    QFile prova(cartella + QStringLiteral("/.prova"));
    if (!prova.open(QIODevice::WriteOnly))
        return true;
    prova.close();
    prova.remove();
    return false;
}

class SolaLettura {
public:
    explicit SolaLettura(QString cartella) : m_cartella(std::move(cartella)) { Immutabile(m_cartella, true); }
    ~SolaLettura() { Immutabile(m_cartella, false); }
    SolaLettura(const SolaLettura&) = delete;
    SolaLettura& operator=(const SolaLettura&) = delete;

private:
    QString m_cartella;
};
