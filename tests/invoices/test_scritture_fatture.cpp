// Le scritture della fattura e delle bolle sul database.
#include "fatture_prova.h"
#include "invoices/ScrittureFatture.h"

namespace {

class Scritture : public ProvaFatture {
protected:
    QString FogliERighe()
    {
        return Righe(db(), QStringLiteral("SELECT ID_FATTURA, FOGL, RIGO FROM FATTURE ORDER BY ID_FATTURA"))
            .join(QLatin1Char(' '));
    }
};

TEST_F(Scritture, CinqueFattureQuattroPerFoglioEBuchiFinoAlSalvataggio)
{
    for (int id = 1; id <= 5; ++id)
        Fattura(id, QString::number(id));
    Fattura(6, QStringLiteral("ALTRA"), QStringLiteral("01234567890"), QStringLiteral("1"), IdDomanda + 1);
    iMPO_RIGAFOGLIO(QStringLiteral("00000000123"), QStringLiteral("01"));
    // La fattura di un'altra domanda non si tocca.
    EXPECT_EQ(FogliERighe(), QStringLiteral("1|1|1 2|1|2 3|1|3 4|1|4 5|2|1 6|0|0"));

    ASSERT_TRUE(EliminaFattura(2, IdDomanda));
    EXPECT_EQ(FogliERighe(), QStringLiteral("1|1|1 3|1|3 4|1|4 5|2|1 6|0|0"));
    iMPO_RIGAFOGLIO(QStringLiteral("00000000123"), QStringLiteral("01"));
    EXPECT_EQ(FogliERighe(), QStringLiteral("1|1|1 3|1|2 4|1|3 5|1|4 6|0|0"));
}

}  // namespace
