#include "common/errore.h"
#include "common/numeri.h"

#include <gtest/gtest.h>

TEST(Decimale, Sanita)
{
    EXPECT_EQ(Decimale(QStringLiteral("1050,6")).testo(), QStringLiteral("1050,6"));
    EXPECT_EQ((Decimale(QStringLiteral("1,5")) * Decimale(QStringLiteral("2,25"))).testo(), QStringLiteral("3,375"));
    EXPECT_EQ((Decimale(1) / Decimale(3)).testo(), QStringLiteral("0,3333333333333333333333333333"));
    EXPECT_EQ((Decimale(2) / Decimale(3)).testo(), QStringLiteral("0,6666666666666666666666666667"));
    EXPECT_EQ((Decimale(10) / Decimale(3)).testo(), QStringLiteral("3,333333333333333333333333333"));
    EXPECT_EQ(Decimale::daDouble(0.1 + 0.2).testo(), QStringLiteral("0,3"));
    EXPECT_EQ(Format(Decimale(QStringLiteral("2,345")), QStringLiteral("##0.00")), QStringLiteral("2,35"));
    EXPECT_EQ(Format(Decimale(QStringLiteral(",5")), QStringLiteral("##0.00")), QStringLiteral("0,50"));
    EXPECT_EQ(Round(Decimale(QStringLiteral("2,345")), 2).testo(), QStringLiteral("2,34"));
    EXPECT_DOUBLE_EQ(CDbl(QStringLiteral("1.050,6")), 1050.6);
    EXPECT_DOUBLE_EQ(Val(QStringLiteral("12.5abc")), 12.5);
    EXPECT_THROW(CDbl(QString()), ErroreSistema);
    EXPECT_EQ(CDate(QStringLiteral("1/2/05")), QDate(2005, 2, 1));
}
