#include "printing/TestoCampagna.h"

#include <array>

QString TestoCampagna(const QString& chiave, bool formaUtf)
{
    static const std::array<std::pair<const char*, const char*>, 5> tabella{{
        {"2002", "2002/2003"}, {"2003", "2003/2004"}, {"2001", "2001/2002"}, {"2004", "2004/2005"}, {"2005", "2005/2006"},
    }};
    for (const auto& [k, annata] : tabella)
        if (chiave == QLatin1String(k))
            return formaUtf ? QStringLiteral("Campagna ") + QLatin1String(annata) : QString::fromLatin1(annata);
    return QString();
}
