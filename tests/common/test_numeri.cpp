#include "common/errore.h"
#include "common/numeri.h"

#include <QDate>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace {

Decimale D(const char* testo) { return Decimale(QString::fromUtf8(testo)); }

// Numero dell'errore sollevato dalla funzione, 0 se non ne solleva.
template <typename F>
int NumeroErrore(F&& f)
{
    try {
        f();
    } catch (const ErroreSistema& e) {
        return e.numero();
    }
    return 0;
}

struct CasoTesto {
    const char* ingresso;
    const char* atteso;
};

}  // namespace

// ---------------------------------------------------------------------------
// Lettura dal testo delle maschere

TEST(Decimale, LeggeIlTestoConLoZeroDavanti)
{
    const CasoTesto casi[] = {
        {"", "0"},
        {",5", "0,5"},
        {"1050,60", "1050,6"},
        {"0,0000", "0"},
        {"0,00", "0"},
        {"1.050,6", "1050,6"},  // punto delle migliaia
        {"007", "7"},
        {"  12,5 ", "12,5"},
        {"-0,5", "-0,5"},  // un testo di testo() torna indietro
        {"5-", "-5"},
        {"1,5E3", "1500"},
        {"2,5E-3", "0,0025"},
        {"1234567890123456789012345678", "1234567890123456789012345678"},
        {"0,0000000000000000000000000001", "0,0000000000000000000000000001"},
        // 29 decimali: l'ultima cifra si arrotonda al pari
        {"0,12345678901234567890123456789", "0,1234567890123456789012345679"},
        {"0,00000000000000000000000000005", "0"},
        {"0,00000000000000000000000000015", "0,0000000000000000000000000002"},
    };
    for (const auto& c : casi)
        EXPECT_EQ(D(c.ingresso).testo(), QString::fromUtf8(c.atteso)) << "ingresso: '" << c.ingresso << "'";
}

TEST(Decimale, TestoMalformatoDaTipoNonCorrispondente)
{
    for (const char* testo : {"abc", "1,2,3", "12a", "1 2", "--5", "1E", "€ 5", "&H10", "1/2"}) {
        try {
            D(testo);
            ADD_FAILURE() << "nessun errore per '" << testo << "'";
        } catch (const ErroreSistema& e) {
            EXPECT_EQ(e.numero(), 13) << testo;
            EXPECT_EQ(e.descrizione(), QStringLiteral("Tipo non corrispondente")) << testo;
        }
    }
}

TEST(Decimale, TroppeCifreInteriDannoOverflow)
{
    EXPECT_EQ(NumeroErrore([] { D("99999999999999999999999999999"); }), 6);
    EXPECT_EQ(NumeroErrore([] { D("1E28"); }), 6);
    EXPECT_EQ(NumeroErrore([] { D("9999999999999999999999999999"); }), 0);
}

TEST(Decimale, DallaDoppiaEDallaSingolaPrecisione)
{
    // L'esempio del calcolo degli aiuti: 6 x 1,751 x 100 in doppia precisione.
    EXPECT_EQ(Decimale::daDouble(6.0 * 1.751 * 100.0).testo(), QStringLiteral("1050,6"));
    EXPECT_EQ(Decimale::daDouble(0.1 + 0.2).testo(), QStringLiteral("0,3"));
    EXPECT_EQ(Decimale::daDouble(1.0 / 3.0).testo(), QStringLiteral("0,333333333333333"));
    EXPECT_EQ(Decimale::daDouble(-2.5).testo(), QStringLiteral("-2,5"));
    EXPECT_EQ(Decimale::daDouble(123456789012345678.0).testo(), QStringLiteral("123456789012346000"));
    EXPECT_EQ(Decimale::daDouble(1e20).testo(), QStringLiteral("100000000000000000000"));
    EXPECT_EQ(Decimale::daDouble(1e-30).testo(), QStringLiteral("0"));
    EXPECT_EQ(Decimale::daDouble(0.0).testo(), QStringLiteral("0"));
    EXPECT_EQ(Decimale::daSingle(0.1f).testo(), QStringLiteral("0,1"));
    EXPECT_EQ(Decimale::daSingle(1.0f / 3.0f).testo(), QStringLiteral("0,3333333"));
    EXPECT_EQ(Decimale::daSingle(16777217.0f).testo(), QStringLiteral("16777220"));
    EXPECT_EQ(NumeroErrore([] { Decimale::daDouble(1e30); }), 6);
    EXPECT_EQ(NumeroErrore([] { Decimale::daDouble(std::numeric_limits<double>::quiet_NaN()); }), 6);
    EXPECT_EQ(NumeroErrore([] { Decimale::daDouble(std::numeric_limits<double>::infinity()); }), 6);
}

TEST(Decimale, VersoLaDoppiaPrecisione)
{
    EXPECT_DOUBLE_EQ(D("1050,6").aDouble(), 1050.6);
    EXPECT_DOUBLE_EQ(D("-0,0001").aDouble(), -0.0001);
    EXPECT_DOUBLE_EQ(Decimale().aDouble(), 0.0);
}

// ---------------------------------------------------------------------------
// Aritmetica

TEST(Decimale, OperazioniEsatte)
{
    struct Caso {
        const char* a;
        char op;
        const char* b;
        const char* atteso;
    };
    const Caso casi[] = {
        {"0,1", '+', "0,2", "0,3"},
        {"1", '-', "1,0001", "-0,0001"},
        {"-0,5", '+', "0,5", "0"},
        {"999999999999999999999999999,9", '+', "0,1", "1000000000000000000000000000"},
        // somma con scale lontane: restano 28 cifre, al pari
        {"1000000000000000000000000000", '+', "0,0000000000000000000000000001", "1000000000000000000000000000"},
        {"1000000000000000000000000000", '+', "0,5", "1000000000000000000000000000"},
        {"1000000000000000000000000001", '+', "0,5", "1000000000000000000000000002"},
        {"-1000000000000000000000000001", '-', "0,5", "-1000000000000000000000000002"},
        {"100000000000000000000000000", '+', "0,05", "100000000000000000000000000,0"},
        {"1,5", '*', "2,25", "3,375"},
        {"-0,5", '*', "0,5", "-0,25"},
        {"-0,5", '*', "-4", "2"},
        {"0,12", '*', "50", "6"},
        {"12345678901234,5678", '*', "98765432109876,5432", "1219326311370217943225118122"},
        {"0,00000000000001", '*', "0,00000000000001", "0,0000000000000000000000000001"},
        {"0,00000000000001", '*', "0,000000000000001", "0"},
        {"0,00000000000003", '*', "0,000000000000005", "0,0000000000000000000000000002"},  // 1,5: su
        {"0,00000000000005", '*', "0,000000000000005", "0,0000000000000000000000000002"},  // 2,5: giù
        {"1", '/', "3", "0,3333333333333333333333333333"},
        {"2", '/', "3", "0,6666666666666666666666666667"},
        {"10", '/', "3", "3,333333333333333333333333333"},
        {"-2", '/', "3", "-0,6666666666666666666666666667"},
        {"1", '/', "7", "0,1428571428571428571428571429"},
        {"1", '/', "8", "0,125"},
        {"1", '/', "3000", "0,0003333333333333333333333333"},
        {"100", '/', "0,01", "10000"},
        {"120", '/', "1000", "0,12"},
        {"1234567890123456789,123456789", '/', "0,0003", "4115226300411522630411,52263"},
        {"9876543210987654321", '/', "1234567,89", "8000000073700,000670680006103"},
        // quoziente esatto di 29 cifre che finisce in 5: al pari, nei due versi
        {"9999999999999999999999999999", '/', "2", "5000000000000000000000000000"},
        {"9999999999999999999999999997", '/', "2", "4999999999999999999999999998"},
        {"-9999999999999999999999999999", '/', "2", "-5000000000000000000000000000"},
        {"0", '/', "5", "0"},
    };
    for (const auto& c : casi) {
        const Decimale a = D(c.a), b = D(c.b);
        Decimale r;
        switch (c.op) {
        case '+': r = a + b; break;
        case '-': r = a - b; break;
        case '*': r = a * b; break;
        default: r = a / b; break;
        }
        EXPECT_EQ(r.testo(), D(c.atteso).testo()) << c.a << ' ' << c.op << ' ' << c.b;
    }
}

TEST(Decimale, OverflowEDivisionePerZero)
{
    EXPECT_EQ(NumeroErrore([] { D("9999999999999999999999999999") + Decimale(1); }), 6);
    EXPECT_EQ(NumeroErrore([] { D("-9999999999999999999999999999") - Decimale(1); }), 6);
    EXPECT_EQ(NumeroErrore([] { D("10000000000000000") * D("1000000000000"); }), 6);
    EXPECT_EQ(NumeroErrore([] { D("1000000000000000000000000000") / D("0,01"); }), 6);
    try {
        D("5") / D("0,000");
        ADD_FAILURE() << "nessun errore";
    } catch (const ErroreSistema& e) {
        EXPECT_EQ(e.numero(), 11);
        EXPECT_EQ(e.descrizione(), QStringLiteral("Divisione per zero"));
    }
}

TEST(Decimale, Confronti)
{
    EXPECT_TRUE(D("1,50") == D("1,5"));
    EXPECT_TRUE(D("-0,5") < Decimale(0));
    EXPECT_TRUE(D("0,0001") > Decimale());
    EXPECT_TRUE(D("-2") < D("-1,5"));
    EXPECT_TRUE(D("-1,5") > D("-2"));
    EXPECT_TRUE(D("1000000000000000000000000000") > D("999999999999999999999999999,9"));
    EXPECT_TRUE(D("0,0000000000000000000000000001") < D("0,000000000000000000000000001"));
    EXPECT_TRUE(D("12,3400") <= D("12,34"));
    EXPECT_TRUE(D("12,3400") >= D("12,34"));
    EXPECT_TRUE(D("12,3401") != D("12,34"));
    EXPECT_FALSE(D("3") < D("3,0"));
}

// ---------------------------------------------------------------------------
// Arrotondamenti

TEST(Round, AlPari)
{
    struct Caso {
        const char* valore;
        int decimali;
        const char* atteso;
    };
    const Caso casi[] = {
        {"2,345", 2, "2,34"},   {"2,355", 2, "2,36"},   {"-2,345", 2, "-2,34"}, {"-2,355", 2, "-2,36"},
        {"2,3451", 2, "2,35"},  {"2,3449", 2, "2,34"},  {"0,5", 0, "0"},        {"1,5", 0, "2"},
        {"2,5", 0, "2"},        {"-0,5", 0, "0"},       {"-1,5", 0, "-2"},      {"1,23", 4, "1,23"},
        {"6,00005", 4, "6"},    {"6,00015", 4, "6,0002"},
    };
    for (const auto& c : casi)
        EXPECT_EQ(Round(D(c.valore), c.decimali).testo(), QString::fromUtf8(c.atteso)) << c.valore << " a " << c.decimali;
    EXPECT_EQ(NumeroErrore([] { Round(D("1,5"), -1); }), 5);
}

TEST(Format, MaschereDelSistemaLontanoDaZero)
{
    struct Caso {
        const char* valore;
        const char* maschera;
        const char* atteso;
    };
    const Caso casi[] = {
        {"2,345", "##0.00", "2,35"},
        {"2,355", "##0.00", "2,36"},
        {"-2,345", "##0.00", "-2,35"},
        {"", "##0.00", "0,00"},
        {",5", "##0.00", "0,50"},  // un importo scritto ,5 diventa 0,50
        {"1050,6", "##0.00", "1050,60"},
        {"1234567,891", "#0.00", "1234567,89"},  // nessun punto delle migliaia
        {"0", "##0.0000", "0,0000"},
        {"6", "##0.0000", "6,0000"},
        {"0,00005", "#0.0000", "0,0001"},
        {"-0,00005", "#0.0000", "-0,0001"},
        {"0,00004999", "#0.0000", "0,0000"},
        {"-0,001", "0.00", "-0,00"},
        {"0,005", "0.00", "0,01"},
        {"12,345678", "0.0000", "12,3457"},
        {"5", "000", "005"},
        {"12,5", "000", "013"},
        {"1234", "000", "1234"},
        {"7", "00", "07"},
        {"3021", "00000", "03021"},
    };
    for (const auto& c : casi)
        EXPECT_EQ(Format(D(c.valore), QString::fromUtf8(c.maschera)), QString::fromUtf8(c.atteso))
            << c.valore << " con " << c.maschera;
}

TEST(Format, AltreMaschere)
{
    EXPECT_EQ(Format(D("1234567,5"), QStringLiteral("#,##0.00")), QStringLiteral("1.234.567,50"));
    EXPECT_EQ(Format(D("1,5"), QStringLiteral("0.0#")), QStringLiteral("1,5"));
    EXPECT_EQ(Format(D("1,555"), QStringLiteral("0.0#")), QStringLiteral("1,56"));
    EXPECT_EQ(Format(D("0,5"), QStringLiteral("#.00")), QStringLiteral(",50"));
    EXPECT_EQ(Format(D("12,5"), QStringLiteral("0.00 kg")), QStringLiteral("12,50 kg"));
    EXPECT_EQ(Format(D("12,5"), QString()), QStringLiteral("12,5"));
}

TEST(Format, DaDoubleComeIlMotore)
{
    // 2,675 in binario sta poco sotto: attraverso 15 cifre torna 2,675 e va su.
    EXPECT_EQ(Format(Decimale::daDouble(2.675), QStringLiteral("0.00")), QStringLiteral("2,68"));
    EXPECT_EQ(Format(Decimale::daDouble(6.0 * 1.751 * 100.0), QStringLiteral("##0.00")), QStringLiteral("1050,60"));
}

TEST(Format, Date)
{
    const QDate d(2005, 2, 1);
    EXPECT_EQ(Format(d, QStringLiteral("DD/MM/YYYY")), QStringLiteral("01/02/2005"));
    EXPECT_EQ(Format(d, QStringLiteral("YYYYMMDD")), QStringLiteral("20050201"));
    EXPECT_EQ(Format(d, QStringLiteral("dd/mm/yy")), QStringLiteral("01/02/05"));
    EXPECT_EQ(Format(d, QStringLiteral("D/M/YYYY")), QStringLiteral("1/2/2005"));
    EXPECT_EQ(Format(QDate(), QStringLiteral("DD/MM/YYYY")), QString());
}

// ---------------------------------------------------------------------------
// IsNumeric, CDbl, Val, CStr

TEST(IsNumeric, RegoleItaliane)
{
    for (const char* si : {"12", " 12 ", "1.050,6", "1.0.5", "-5", "+5", "5-", "(5)", "1,5E3", "1D2", "&H1F",
                           "&O17", ",5", "0,", "00012345", "16123456789012345"}) {
        EXPECT_TRUE(IsNumeric(QString::fromUtf8(si))) << si;
    }
    for (const char* no : {"", " ", "abc", "1,2,3", "12a", "1 2", "--5", ".5", "E5", "1E", "-", "&H", "+-1",
                           "(5", "-(5)", "A1", "1A", "€5"}) {
        EXPECT_FALSE(IsNumeric(QString::fromUtf8(no))) << no;
    }
}

TEST(CDbl, RegoleItaliane)
{
    EXPECT_DOUBLE_EQ(CDbl(QStringLiteral("1.050,6")), 1050.6);
    EXPECT_DOUBLE_EQ(CDbl(QStringLiteral("1,5")), 1.5);
    EXPECT_DOUBLE_EQ(CDbl(QStringLiteral("1.5")), 15.0);
    EXPECT_DOUBLE_EQ(CDbl(QStringLiteral(" 7 ")), 7.0);
    EXPECT_DOUBLE_EQ(CDbl(QStringLiteral("-0,25")), -0.25);
    EXPECT_DOUBLE_EQ(CDbl(QStringLiteral("(2,5)")), -2.5);
    EXPECT_DOUBLE_EQ(CDbl(QStringLiteral("&HFFFF")), -1.0);
    EXPECT_DOUBLE_EQ(CDbl(QStringLiteral("&H10000")), 65536.0);
    EXPECT_DOUBLE_EQ(CDbl(QStringLiteral("1E-400")), 0.0);
    EXPECT_EQ(NumeroErrore([] { CDbl(QString()); }), 13);
    EXPECT_EQ(NumeroErrore([] { CDbl(QStringLiteral("abc")); }), 13);
    EXPECT_EQ(NumeroErrore([] { CDbl(QStringLiteral("1E400")); }), 6);
}

TEST(Val, IndipendenteDalleImpostazioni)
{
    struct Caso {
        const char* testo;
        double atteso;
    };
    const Caso casi[] = {
        {"12.5abc", 12.5},   {"1,5", 1.0},   {" 1 615 198th Street", 1615198.0}, {"", 0.0},
        {"abc", 0.0},        {"-3.5E2x", -350.0}, {"&HFF", 255.0},            {"&HFFFF", -1.0},
        {".5", 0.5},         {"00012345", 12345.0}, {"1e", 1.0},              {"+7", 7.0},
        {"1.2.3", 1.2},      {"-", 0.0},     {"0.05", 0.05},                   {"\t4\n2", 42.0},
    };
    for (const auto& c : casi)
        EXPECT_DOUBLE_EQ(Val(QString::fromUtf8(c.testo)), c.atteso) << c.testo;
    EXPECT_EQ(NumeroErrore([] { Val(QStringLiteral("1E400")); }), 6);
}

TEST(CStr, TestoDiUnDouble)
{
    EXPECT_EQ(CStr(12345.0), QStringLiteral("12345"));
    EXPECT_EQ(CStr(0.5), QStringLiteral("0,5"));
    EXPECT_EQ(CStr(-1.25), QStringLiteral("-1,25"));
    EXPECT_EQ(CStr(0.0001), QStringLiteral("0,0001"));
    EXPECT_EQ(CStr(1.0 / 3.0), QStringLiteral("0,333333333333333"));
    EXPECT_EQ(CStr(1e20), QStringLiteral("1E+20"));
    EXPECT_EQ(CStr(-1.5e-7), QStringLiteral("-1,5E-07"));
    EXPECT_EQ(CStr(0.0), QStringLiteral("0"));
}

// ---------------------------------------------------------------------------
// Date

TEST(IsDate, GiornoPrimaDelMese)
{
    const int anno = QDate::currentDate().year();
    struct Caso {
        const char* testo;
        QDate attesa;
    };
    const Caso casi[] = {
        {"01/02/2005", QDate(2005, 2, 1)},
        {"1/2/05", QDate(2005, 2, 1)},
        {"1/2/29", QDate(2029, 2, 1)},
        {"1/2/30", QDate(1930, 2, 1)},
        {"1/2/99", QDate(1999, 2, 1)},
        {"1/2/0", QDate(2000, 2, 1)},
        {"1-2-2005", QDate(2005, 2, 1)},
        {"1.2.2005", QDate(2005, 2, 1)},
        {" 1 / 2 / 2005 ", QDate(2005, 2, 1)},
        {"2005/02/01", QDate(2005, 2, 1)},
        {"29/02/2004", QDate(2004, 2, 29)},
        {"31/12/2005", QDate(2005, 12, 31)},
        {"12/31/2005", QDate(2005, 12, 31)},  // mese impossibile: scambiati
        {"01/13/2005", QDate(2005, 1, 13)},
        {"1/2", QDate(anno, 2, 1)},
        {"2/2005", QDate(2005, 2, 1)},
        {"1 febbraio 2005", QDate(2005, 2, 1)},
        {"1-FEB-05", QDate(2005, 2, 1)},
        {"dicembre 2005", QDate(2005, 12, 1)},
    };
    for (const auto& c : casi) {
        const QString t = QString::fromUtf8(c.testo);
        EXPECT_TRUE(IsDate(t)) << c.testo;
        EXPECT_EQ(CDate(t), c.attesa) << c.testo;
    }
    for (const char* no : {"", "abc", "29/02/2005", "31/04/2005", "32/01/2005", "00/01/2005", "1//2005",
                           "01/02/2005 10:30", "20050201", "1/2/3/4", "1/2/99999", "1 foo 2005", "1/2/a"}) {
        EXPECT_FALSE(IsDate(QString::fromUtf8(no))) << no;
        EXPECT_EQ(NumeroErrore([no] { CDate(QString::fromUtf8(no)); }), 13) << no;
    }
}

TEST(Format, MaschereLunghe)
{
    // più posti di quante cifre stiano in un Decimale
    const QString maschera = QString(40, QLatin1Char('0')) + QLatin1Char('.') + QString(40, QLatin1Char('0'));
    const QString r = Format(D("-1,5"), maschera);
    EXPECT_EQ(r, QLatin1Char('-') + QString(39, QLatin1Char('0')) + QStringLiteral("1,5") + QString(39, QLatin1Char('0')));
}

TEST(Decimale, DaInteri)
{
    EXPECT_EQ((Decimale(-7) / Decimale(2)).testo(), QStringLiteral("-3,5"));
    EXPECT_EQ((Decimale(std::numeric_limits<int>::min()) - Decimale(1)).testo(), QStringLiteral("-2147483649"));
    EXPECT_EQ((Decimale(std::numeric_limits<int>::max()) * Decimale(std::numeric_limits<int>::max())).testo(),
              QStringLiteral("4611686014132420609"));
    EXPECT_TRUE(D("0,000") == 0);
    EXPECT_EQ(Decimale::daMantissa(10506, 1).testo(), QStringLiteral("1050,6"));
    EXPECT_EQ(NumeroErrore([] { Decimale::daMantissa(1, 29); }), 5);
}
