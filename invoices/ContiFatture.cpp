#include "invoices/ContiFatture.h"

bool ImponibileFuoriTolleranza(const QString& grado, const QString& prodotto, const QString& prezzo,
                               const QString& imponibile)
{
    const Decimale calcolato = Round(Decimale(grado) * Decimale(prodotto) * Decimale(prezzo), 2);
    const Decimale impo(imponibile);
    const Decimale tolleranza(TolleranzaImponibile);
    return calcolato > Round(impo + tolleranza, 2) || calcolato < Round(impo - tolleranza, 2);
}

bool TotaleNonCorrisponde(const QString& imponibile, const QString& iva, const QString& totale)
{
    return Round(Decimale(totale), 2) != Round(Decimale(imponibile) + Decimale(iva), 2);
}

std::optional<QString> ControllaSommaBolle(double sommaAltreBolle, const QString& quantita,
                                           const QString& distillata)
{
    // La somma è in doppia precisione; passa a decimale per 15 cifre prima
    // di arrotondare.
    const Decimale somma = Decimale::daDouble(sommaAltreBolle + Decimale(quantita).aDouble());
    const Decimale consentita(distillata);
    if (Round(somma, 4) <= Round(consentita, 4))
        return std::nullopt;
    return QStringLiteral("La somma delle quantità di prodotto consegnata\r\n"
                          "è maggiore della quantità totale distillata.\r\n"
                          "Somma inserita ") +
           Format(somma, QStringLiteral("##0.0000")) + QStringLiteral(" somma consentita ") +
           Format(consentita, QStringLiteral("##0.0000"));
}

QString DataDaMinimo(const QString& mindata)
{
    if (mindata.trimmed().isEmpty())
        return QString();
    return mindata.mid(6, 2) + QLatin1Char('/') + mindata.mid(4, 2) + QLatin1Char('/') + mindata.left(4);
}
