// Testi a larghezza fissa dei tracciati, date tra due maschere e apici.
#include "common/testo.h"
#include "support/prova.h"

namespace {

QString T(const char* s) { return QString::fromUtf8(s); }

struct Caso { const char* valore; int decimali; const char* atteso; };

}  // namespace

TEST(PadDestraSinistra, LarghezzaEsatta)
{
    const struct { const char* valore; int larghezza; char riempimento; const char *destra, *sinistra; } casi[] = {
        {"AB", 5, ' ', "AB   ", "   AB"}, {"ABCDEF", 3, ' ', "ABC", "DEF"}, {"1234", 2, '0', "12", "34"},
        {"", 3, '0', "000", "000"},       {"ABC", 0, ' ', "", ""},           {"àè", 4, '*', "àè**", "**àè"},
    };
    for (const auto& c : casi) {
        EXPECT_EQ(PadDestra(T(c.valore), c.larghezza, QLatin1Char(c.riempimento)), T(c.destra)) << c.valore;
        EXPECT_EQ(PadSinistra(T(c.valore), c.larghezza, QLatin1Char(c.riempimento)), T(c.sinistra)) << c.valore;
    }
    EXPECT_EQ(NumeroErrore([] { PadDestra(T("A"), -1, QLatin1Char(' ')); }), 5);
    EXPECT_EQ(NumeroErrore([] { PadSinistra(T("A"), -1, QLatin1Char(' ')); }), 5);
}

TEST(FormattaDecimali, CifreDelCampoDiEsportazione)
{
    const Caso casi[] = {
        {"12,5", 3, "12500"}, {"12", 2, "1200"}, {"0,00", 2, ""}, {"", 2, ""},
        {"12", 0, ""},  // senza virgola e senza decimali: vuoto, voluto
        {"12,5", 0, "125"}, {"12,50", 2, "1250"},
        {"12,555", 2, "1255"},  // decimali in più tagliati, non arrotondati
    };
    for (const auto& c : casi)
        EXPECT_EQ(FormattaDecimali(T(c.valore), c.decimali), T(c.atteso)) << c.valore << " con " << c.decimali;
    EXPECT_EQ(NumeroErrore([] { FormattaDecimali(T("abc"), 2); }), 13);
}

TEST(InserisciVirgola, ContrarioAllImportazione)
{
    const Caso casi[] = {
        {"00012345", 2, "123,45"}, {"00000000", 2, "0,00"}, {"        ", 2, "0,  "}, {"12345", 0, "12345,"},
        {"5", 2, "0,5"},
        // Fuori dalle sole cifre e spazi vale Val: segno, lettere, oltre 15 cifre.
        {" 1 2 345", 2, "123,45"}, {"-0001234", 2, "-12,34"}, {"12A45", 2, "12,45"},
        {"123456789012345678", 2, "1,23456789012346E+15,78"}, {"123456789012345", 0, "123456789012345,"},
    };
    for (const auto& c : casi)
        EXPECT_EQ(InserisciVirgola(T(c.valore), c.decimali), T(c.atteso)) << c.valore << " con " << c.decimali;
}

TEST(FormattazioneData, TraDueMaschere)
{
    const struct { const char *valore, *ingresso, *uscita, *tipo, *atteso; } casi[] = {
        {"20050201", "AAAAMMGG", "GG/MM/AAAA", "DT", "01/02/2005"},
        {"01/02/2005", "GG/MM/AAAA", "AAAAMMGG", "DT", "20050201"},
        {"800201", "AAMMGG", "GG/MM/AAAA", "DT", "01/02/1980"},
        {"", "GG/MM/AAAA", "AAAAMMGG", "DT", "        "},
        {"   ", "GG/MM/AAAA", "AAAAMMGG", "D0", "00000000"},
        {"20053201", "AAAAMMGG", "GG/MM/AAAA", "DT", "          "},
        {"1/2/2005", "GG/MM/AAAA", "AAAAMMGG", "DT", "        "},  // non allineata alla maschera
        // mese 13 e giorno 05: il controllo delle date li scambia
        {"20051305", "AAAAMMGG", "GG/MM/AAAA", "DT", "13/05/2005"},
        {"2005", "AAAA", "GG/MM/AAAA", "DT", "01/01/2005"},  // parti mancanti: giorno e mese "01"
        {"20050201", "aaaammgg", "gg/mm/aaaa", "DT", "01/02/2005"},
    };
    for (const auto& c : casi)
        EXPECT_EQ(FormattazioneData(T(c.valore), T(c.ingresso), T(c.uscita), T(c.tipo)), T(c.atteso))
            << "'" << c.valore << "' " << c.ingresso << " -> " << c.uscita;
}

TEST(Apici, ApiceSqlRaddoppiaSostituisciApiciMetteLAccentoGrave)
{
    EXPECT_EQ(ApiceSql(T("L'\"OSTERIA\" D'ORO")), T("L''\"\"OSTERIA\"\" D''ORO"));
    EXPECT_EQ(SostituisciApici(T("  D'ANNA  ")), T("D`ANNA"));
    EXPECT_EQ(SostituisciApici(T("VINI DELL''")), T("VINI DELL`"));  // dei due finali ne resta uno
    EXPECT_EQ(SostituisciApici(T("''''")), T("```"));
    EXPECT_EQ(SostituisciApici(T("   ")), T(""));
}
