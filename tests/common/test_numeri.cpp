// Numeri e date con le regole italiane del motore originale: Decimale,
// arrotondamenti, Format, IsNumeric, CDbl, Val, CStr, IsDate.
#include "common/errore.h"
#include "common/numeri.h"
#include "support/prova.h"

#include <limits>

namespace {

Decimale D(const char* testo) { return Decimale(QString::fromUtf8(testo)); }
QString T(const char* testo) { return QString::fromUtf8(testo); }

struct Coppia { const char* ingresso; const char* atteso; };

}  // namespace

TEST(Decimale, LeggeIlTestoConLoZeroDavanti)
{
    const Coppia casi[] = {
        {"", "0"}, {",5", "0,5"}, {"1050,60", "1050,6"}, {"0,0000", "0"}, {"1.050,6", "1050,6"}, {"007", "7"},
        {"  12,5 ", "12,5"}, {"-0,5", "-0,5"}, {"5-", "-5"}, {"1,5E3", "1500"}, {"2,5E-3", "0,0025"},
        {"1234567890123456789012345678", "1234567890123456789012345678"},
        {"0,0000000000000000000000000001", "0,0000000000000000000000000001"},
        // oltre 28 decimali l'ultima cifra si arrotonda al pari, nei due versi
        {"0,12345678901234567890123456789", "0,1234567890123456789012345679"},
        {"0,00000000000000000000000000005", "0"},
        {"0,00000000000000000000000000015", "0,0000000000000000000000000002"},
    };
    for (const auto& c : casi)
        EXPECT_EQ(D(c.ingresso).testo(), T(c.atteso)) << "ingresso: '" << c.ingresso << "'";
}

TEST(Decimale, TestiNonValidi)
{
    // 13 "Tipo non corrispondente" per un testo malformato, 6 oltre 28 cifre intere.
    const struct { const char* testo; int numero; } casi[] = {
        {"abc", 13}, {"1,2,3", 13}, {"12a", 13}, {"1 2", 13}, {"--5", 13}, {"1E", 13}, {"&H10", 13},
        {"99999999999999999999999999999", 6}, {"1E28", 6},
    };
    for (const auto& c : casi)
        EXPECT_EQ(NumeroErrore([&] { D(c.testo); }), c.numero) << c.testo;
    EXPECT_EQ(ErroreDi([] { D("€ 5"); }), QStringLiteral("13 Tipo non corrispondente"));
}

TEST(Decimale, DallaDoppiaEDallaSingolaPrecisioneAttraversoQuindiciESetteCifre)
{
    const struct { double valore; const char* atteso; } casi[] = {
        {6.0 * 1.751 * 100.0, "1050,6"},  // l'esempio del calcolo degli aiuti
        {0.1 + 0.2, "0,3"}, {1.0 / 3.0, "0,333333333333333"}, {-2.5, "-2,5"}, {1e-30, "0"}, {0.0, "0"},
        {123456789012345678.0, "123456789012346000"},
    };
    for (const auto& c : casi)
        EXPECT_EQ(Decimale::daDouble(c.valore).testo(), T(c.atteso)) << c.valore;
    EXPECT_EQ(Decimale::daSingle(1.0f / 3.0f).testo(), QStringLiteral("0,3333333"));
    EXPECT_EQ(Decimale::daSingle(16777217.0f).testo(), QStringLiteral("16777220"));
    EXPECT_EQ(NumeroErrore([] { Decimale::daDouble(1e30); }), 6);
    EXPECT_EQ(NumeroErrore([] { Decimale::daDouble(std::numeric_limits<double>::quiet_NaN()); }), 6);
    EXPECT_DOUBLE_EQ(D("-0,0001").aDouble(), -0.0001);
    // 2,675 in binario sta poco sotto: attraverso 15 cifre torna 2,675 e va su.
    EXPECT_EQ(Format(Decimale::daDouble(2.675), QStringLiteral("0.00")), QStringLiteral("2,68"));
}

TEST(Decimale, OperazioniEsatteFinoA28Cifre)
{
    const struct { const char* a; char op; const char* b; const char* atteso; } casi[] = {
        {"0,1", '+', "0,2", "0,3"}, {"1", '-', "1,0001", "-0,0001"}, {"-0,5", '+', "0,5", "0"},
        {"999999999999999999999999999,9", '+', "0,1", "1000000000000000000000000000"},
        // somma con scale lontane: restano 28 cifre, al pari nei due versi e col segno
        {"1000000000000000000000000000", '+', "0,0000000000000000000000000001", "1000000000000000000000000000"},
        {"1000000000000000000000000000", '+', "0,5", "1000000000000000000000000000"},
        {"1000000000000000000000000001", '+', "0,5", "1000000000000000000000000002"},
        {"-1000000000000000000000000001", '-', "0,5", "-1000000000000000000000000002"},
        {"1,5", '*', "2,25", "3,375"}, {"-0,5", '*', "0,5", "-0,25"}, {"-0,5", '*', "-4", "2"},
        {"12345678901234,5678", '*', "98765432109876,5432", "1219326311370217943225118122"},
        {"0,00000000000001", '*', "0,00000000000001", "0,0000000000000000000000000001"},
        {"0,00000000000001", '*', "0,000000000000001", "0"},
        {"0,00000000000003", '*', "0,000000000000005", "0,0000000000000000000000000002"},  // 1,5: su
        {"0,00000000000005", '*', "0,000000000000005", "0,0000000000000000000000000002"},  // 2,5: giù
        {"1", '/', "3", "0,3333333333333333333333333333"}, {"2", '/', "3", "0,6666666666666666666666666667"},
        {"10", '/', "3", "3,333333333333333333333333333"}, {"-2", '/', "3", "-0,6666666666666666666666666667"},
        {"1", '/', "7", "0,1428571428571428571428571429"},  // 5 seguito da un resto: su
        {"1", '/', "8", "0,125"}, {"1", '/', "3000", "0,0003333333333333333333333333"},
        {"100", '/', "0,01", "10000"}, {"0", '/', "5", "0"},
        {"1234567890123456789,123456789", '/', "0,0003", "4115226300411522630411,52263"},
        // quoziente esatto di 29 cifre che finisce in 5: al pari, nei due versi
        {"9999999999999999999999999999", '/', "2", "5000000000000000000000000000"},
        {"9999999999999999999999999997", '/', "2", "4999999999999999999999999998"},
        {"-9999999999999999999999999999", '/', "2", "-5000000000000000000000000000"},
    };
    for (const auto& c : casi) {
        const Decimale a = D(c.a), b = D(c.b);
        const Decimale r = c.op == '+' ? a + b : c.op == '-' ? a - b : c.op == '*' ? a * b : a / b;
        EXPECT_EQ(r.testo(), T(c.atteso)) << c.a << ' ' << c.op << ' ' << c.b;
    }
    EXPECT_EQ((Decimale(std::numeric_limits<int>::min()) - Decimale(1)).testo(), QStringLiteral("-2147483649"));
    EXPECT_EQ((Decimale(std::numeric_limits<int>::max()) * Decimale(std::numeric_limits<int>::max())).testo(),
              QStringLiteral("4611686014132420609"));
}

TEST(Decimale, OverflowEDivisionePerZero)
{
    EXPECT_EQ(NumeroErrore([] { D("9999999999999999999999999999") + Decimale(1); }), 6);
    EXPECT_EQ(NumeroErrore([] { D("-9999999999999999999999999999") - Decimale(1); }), 6);
    EXPECT_EQ(NumeroErrore([] { D("10000000000000000") * D("1000000000000"); }), 6);
    EXPECT_EQ(NumeroErrore([] { D("1000000000000000000000000000") / D("0,01"); }), 6);
    EXPECT_EQ(NumeroErrore([] { Decimale::daMantissa(1, 29); }), 5);
    EXPECT_EQ(ErroreDi([] { D("5") / D("0,000"); }), QStringLiteral("11 Divisione per zero"));
}

TEST(Decimale, ConfrontiSenzaRiguardoAllaScala)
{
    const struct { const char *a, *b; int segno; } casi[] = {
        {"1,50", "1,5", 0}, {"-0,5", "0", -1}, {"-2", "-1,5", -1}, {"-1,5", "-2", 1}, {"12,3401", "12,34", 1},
        {"1000000000000000000000000000", "999999999999999999999999999,9", 1},
        {"0,0000000000000000000000000001", "0,000000000000000000000000001", -1},
    };
    for (const auto& c : casi) {
        const Decimale a = D(c.a), b = D(c.b);
        EXPECT_EQ(int(a > b) - int(a < b), c.segno) << c.a << " e " << c.b;
        EXPECT_EQ(a == b, c.segno == 0) << c.a << " e " << c.b;
    }
}

TEST(Round, AlPariNeiDueVersiEConIlSegno)
{
    const struct { const char* valore; int decimali; const char* atteso; } casi[] = {
        {"2,345", 2, "2,34"}, {"2,355", 2, "2,36"}, {"-2,345", 2, "-2,34"}, {"-2,355", 2, "-2,36"},
        {"2,3451", 2, "2,35"}, {"0,5", 0, "0"},   {"1,5", 0, "2"},           {"2,5", 0, "2"},
        {"-0,5", 0, "0"},      {"-1,5", 0, "-2"}, {"1,23", 4, "1,23"},
    };
    for (const auto& c : casi)
        EXPECT_EQ(Round(D(c.valore), c.decimali).testo(), T(c.atteso)) << c.valore << " a " << c.decimali;
    EXPECT_EQ(NumeroErrore([] { Round(D("1,5"), -1); }), 5);
}

TEST(Format, MaschereDelSistemaLontanoDaZero)
{
    const struct { const char *valore, *maschera, *atteso; } casi[] = {
        {"2,345", "##0.00", "2,35"}, {"-2,345", "##0.00", "-2,35"}, {"", "##0.00", "0,00"},
        {",5", "##0.00", "0,50"},  // un importo scritto ,5 diventa 0,50
        {"1050,6", "##0.00", "1050,60"}, {"1234567,891", "#0.00", "1234567,89"},  // nessun punto delle migliaia
        {"0", "##0.0000", "0,0000"}, {"0,00005", "#0.0000", "0,0001"}, {"-0,00005", "#0.0000", "-0,0001"},
        {"0,00004999", "#0.0000", "0,0000"}, {"12,345678", "0.0000", "12,3457"},
        {"-0,001", "0.00", "-0,00"},  // il segno resta, come nel motore
        {"12,5", "000", "013"}, {"1234", "000", "1234"}, {"3021", "00000", "03021"},
        // altre maschere: migliaia, decimali facoltativi, niente intero, testo in coda, nessuna maschera
        {"1234567,5", "#,##0.00", "1.234.567,50"}, {"1,5", "0.0#", "1,5"}, {"1,555", "0.0#", "1,56"},
        {"0,5", "#.00", ",50"}, {"12,5", "0.00 kg", "12,50 kg"}, {"12,5", "", "12,5"},
    };
    for (const auto& c : casi)
        EXPECT_EQ(Format(D(c.valore), T(c.maschera)), T(c.atteso)) << c.valore << " con " << c.maschera;
    // più posti di quante cifre stiano in un Decimale
    const QString zeri(40, QLatin1Char('0'));
    EXPECT_EQ(Format(D("-1,5"), zeri + QLatin1Char('.') + zeri),
              QLatin1Char('-') + zeri.left(39) + QStringLiteral("1,5") + zeri.left(39));
}

TEST(Format, Date)
{
    for (const auto& [maschera, atteso] : {std::pair{"DD/MM/YYYY", "01/02/2005"}, {"YYYYMMDD", "20050201"},
                                           {"dd/mm/yy", "01/02/05"}, {"D/M/YYYY", "1/2/2005"}})
        EXPECT_EQ(Format(QDate(2005, 2, 1), T(maschera)), T(atteso)) << maschera;
    EXPECT_EQ(Format(QDate(), QStringLiteral("DD/MM/YYYY")), QString());
}

TEST(IsNumeric, RegoleItaliane)
{
    for (const char* si : {" 12 ", "1.050,6", "1.0.5", "+5", "5-", "(5)", "1,5E3", "1D2", "&H1F", "&O17", ",5", "0,",
                           "16123456789012345"})
        EXPECT_TRUE(IsNumeric(T(si))) << si;
    for (const char* no : {"", "abc", "1,2,3", "12a", "1 2", "--5", ".5", "E5", "1E", "-", "&H", "(5", "-(5)", "€5"})
        EXPECT_FALSE(IsNumeric(T(no))) << no;
}

// CDbl segue le impostazioni italiane; Val no, e si ferma al primo carattere che non legge.
TEST(CDblEVal, RegoleItalianeEIndipendenti)
{
    const struct { double (*f)(const QString&); const char* testo; double atteso; } casi[] = {
        {CDbl, "1.050,6", 1050.6}, {CDbl, "1.5", 15.0}, {CDbl, " 7 ", 7.0}, {CDbl, "-0,25", -0.25},
        {CDbl, "(2,5)", -2.5}, {CDbl, "&HFFFF", -1.0}, {CDbl, "&H10000", 65536.0}, {CDbl, "1E-400", 0.0},
        {Val, "12.5abc", 12.5}, {Val, "1,5", 1.0}, {Val, " 1 615 198th Street", 1615198.0}, {Val, "", 0.0},
        {Val, "-3.5E2x", -350.0}, {Val, "&HFF", 255.0}, {Val, "&HFFFF", -1.0}, {Val, ".5", 0.5}, {Val, "1e", 1.0},
        {Val, "1.2.3", 1.2}, {Val, "+0.05", 0.05}, {Val, "\t4\n2", 42.0},
    };
    for (const auto& c : casi)
        EXPECT_DOUBLE_EQ(c.f(T(c.testo)), c.atteso) << (c.f == CDbl ? "CDbl " : "Val ") << c.testo;
    EXPECT_EQ(NumeroErrore([] { CDbl(QString()); }), 13);
    EXPECT_EQ(NumeroErrore([] { CDbl(QStringLiteral("1E400")); }), 6);
    EXPECT_EQ(NumeroErrore([] { Val(QStringLiteral("1E400")); }), 6);
}

TEST(CStr, TestoDiUnDouble)
{
    const struct { double valore; const char* atteso; } casi[] = {
        // la notazione esponenziale comincia a 1E15 e sotto 1E-5
        {12345.0, "12345"}, {0.5, "0,5"}, {0.00001, "0,00001"}, {1.0 / 3.0, "0,333333333333333"},
        {1e15, "1E+15"},    {0.0, "0"},   {-1.5e-7, "-1,5E-07"},
    };
    for (const auto& c : casi)
        EXPECT_EQ(CStr(c.valore), T(c.atteso)) << c.valore;
}

TEST(IsDate, GiornoPrimaDelMese)
{
    const int anno = QDate::currentDate().year();
    const struct { const char* testo; QDate attesa; } casi[] = {
        {"01/02/2005", QDate(2005, 2, 1)}, {"1/2/05", QDate(2005, 2, 1)},   {"1/2/29", QDate(2029, 2, 1)},
        {"1/2/30", QDate(1930, 2, 1)},     {"1/2/0", QDate(2000, 2, 1)},    {"1.2.2005", QDate(2005, 2, 1)},
        {" 1 / 2 / 2005 ", QDate(2005, 2, 1)}, {"2005/02/01", QDate(2005, 2, 1)}, {"29/02/2004", QDate(2004, 2, 29)},
        {"12/31/2005", QDate(2005, 12, 31)},  // mese impossibile: scambiati
        {"1/2", QDate(anno, 2, 1)},        {"2/2005", QDate(2005, 2, 1)},   {"1 febbraio 2005", QDate(2005, 2, 1)},
        {"1-FEB-05", QDate(2005, 2, 1)},   {"dicembre 2005", QDate(2005, 12, 1)},
    };
    for (const auto& c : casi) {
        EXPECT_TRUE(IsDate(T(c.testo))) << c.testo;
        EXPECT_EQ(CDate(T(c.testo)), c.attesa) << c.testo;
    }
    for (const char* no : {"", "abc", "29/02/2005", "32/01/2005", "1//2005", "01/02/2005 10:30", "20050201",
                           "1/2/3/4", "1/2/99999", "1 foo 2005", "1/2/a"}) {
        EXPECT_FALSE(IsDate(T(no))) << no;
        EXPECT_EQ(NumeroErrore([no] { CDate(T(no)); }), 13) << no;
    }
}
