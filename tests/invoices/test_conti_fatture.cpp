// I conti della fattura: tolleranza dell'imponibile, totale, somma delle
// bolle contro il distillato, prima data di consegna.
#include "invoices/ContiFatture.h"
#include "support/prova.h"

namespace {

struct CasoImponibile { const char *grado, *prodotto, *prezzo, *imponibile; bool chiede; };

TEST(ContiFatture, ImponibileConTolleranzaInclusa)
{
    const CasoImponibile casi[] = {
        {"10,0000", "100,0000", "1,0000", "1000,60", false},  // differenza 0,60 esatta: passa
        {"10,0000", "100,0000", "1,0000", "999,40", false},
        {"10,0000", "100,0000", "1,0000", "1000,61", true},
        {"10,0000", "100,0000", "1,0000", "999,39", true},
        // 0,125 si arrotonda al pari a 0,12: fuori da [0,13; 1,33]. A metà
        // lontano da zero sarebbe 0,13 e passerebbe.
        {"1,0000", "1,0000", "0,1250", "0,73", true},
        {"1,0000", "1,0000", "0,1350", "0,74", false},  // 0,135 -> 0,14 al pari
        {"", "", "", "", false},                         // tutto vuoto vale 0
        {"12,5000", "80,0000", "2,1234", "2123,40", false},
        {"12,5000", "80,0000", "2,1234", "2122,79", true},
    };
    for (const auto& c : casi)
        EXPECT_EQ(ImponibileFuoriTolleranza(QString::fromUtf8(c.grado), QString::fromUtf8(c.prodotto),
                                            QString::fromUtf8(c.prezzo), QString::fromUtf8(c.imponibile)),
                  c.chiede)
            << c.grado << " x " << c.prodotto << " x " << c.prezzo << " contro " << c.imponibile;
}

TEST(ContiFatture, TotaleSenzaTolleranza)
{
    const struct { const char *impo, *iva, *totale; bool chiede; } casi[] = {
        {"1000,00", "200,00", "1200,00", false}, {"1000,00", "200,00", "1200,01", true},
        {"1000,00", "200,00", "1199,99", true},  {"1000,00", "0,00", "1000,00", false},
        {"0,10", "0,20", "0,30", false},  // in doppia precisione 0,1 + 0,2 non fa 0,3
    };
    for (const auto& c : casi)
        EXPECT_EQ(TotaleNonCorrisponde(QString::fromUtf8(c.impo), QString::fromUtf8(c.iva),
                                       QString::fromUtf8(c.totale)),
                  c.chiede)
            << c.impo << " + " << c.iva << " contro " << c.totale;
}

TEST(ContiFatture, SommaDelleBolleControIlDistillato)
{
    const QString testa = QStringLiteral("La somma delle quantità di prodotto consegnata\r\n"
                                         "è maggiore della quantità totale distillata.\r\n");
    const struct { double altre; const char *quantita, *distillata, *messaggio; } casi[] = {
        {60.0, "40,0000", "100,0000", nullptr},
        {60.0, "40,0001", "100,0000", "Somma inserita 100,0001 somma consentita 100,0000"},
        {0.0, "100,0000", "100", nullptr},        // l'uguaglianza passa
        {60.0, "40,00005", "100,0000", nullptr},  // 100,00005 al pari è 100,0000
        {60.0, "40,00015", "100,0000", "Somma inserita 100,0002 somma consentita 100,0000"},
        {0.1 + 0.2, "99,7", "100", nullptr},      // la doppia precisione passa per 15 cifre
        {0.0, "", "", nullptr},
        {0.0, "0,0001", "", "Somma inserita 0,0001 somma consentita 0,0000"},
    };
    for (const auto& c : casi) {
        const auto esito =
            ControllaSommaBolle(c.altre, QString::fromUtf8(c.quantita), QString::fromUtf8(c.distillata));
        if (c.messaggio)
            EXPECT_EQ(esito.value_or(QStringLiteral("(nessuno)")), testa + QString::fromUtf8(c.messaggio))
                << c.quantita;
        else
            EXPECT_FALSE(esito.has_value()) << c.quantita << ": " << esito.value_or(QString()).toStdString();
    }
}

}  // namespace
