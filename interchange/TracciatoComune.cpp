#include "interchange/TracciatoComune.h"

#include "common/errore.h"
#include "common/numeri.h"

namespace TracciatoComune {

void RecordFuoriPosto(const QString& tipo)
{
    throw ErroreSistema(IndiceFuoriIntervallo,
                        QStringLiteral("Indice non compreso nell'intervallo (record di tipo %1 fuori posto)")
                            .arg(tipo));
}

QString FormatoData(const QString& testo, const QString& maschera)
{
    if (!IsDate(testo))
        return testo;
    return Format(CDate(testo), maschera);
}

QString ImportoDiviso(const QString& riga, int inizio, int cifreIntere, int decimali)
{
    return CStr(Val(Mid(riga, inizio, cifreIntere))) + QLatin1Char(',') +
           Mid(riga, inizio + cifreIntere, decimali);
}

}  // namespace TracciatoComune
