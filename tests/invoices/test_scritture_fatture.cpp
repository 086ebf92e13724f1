// Le scritture della fattura e delle bolle sul database.
#include "common/numeri.h"
#include "fatture_prova.h"
#include "invoices/ScrittureFatture.h"
#include "support/errori_prova.h"

namespace {

class Scritture : public ProvaFatture {
protected:
    QString FogliERighe()
    {
        return Righe(db(), QStringLiteral("SELECT ID_FATTURA, FOGL, RIGO FROM FATTURE ORDER BY ID_FATTURA"))
            .join(QLatin1Char(' '));
    }
    static CampiFattura Campi()
    {
        CampiFattura c;
        c.CODI_FISC = QStringLiteral(" 01234567890 ");
        c.DENOMINAZIONE = QStringLiteral("CANTINA DELL'ORSO");
        c.NUME_FATT = QStringLiteral("12/A");
        c.DATA_FATT = QStringLiteral("10/01/2006");
        c.DATA_COMP = QStringLiteral("05/01/2006");
        c.IMPO = QStringLiteral("1000,00");
        c.IVA = QStringLiteral("200,00");
        c.IMPO_TOTA = QStringLiteral("1200,00");
        c.GRAD = QStringLiteral("10,0000");
        c.QTA_PROD = QStringLiteral("100,0000");
        c.QTA_LAVO = QStringLiteral("0,0000");
        c.PREZ_MINI = QStringLiteral("1,0000");
        c.Prodotto = QStringLiteral("VAL VINO ALCOLIZZATO");
        return c;
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

TEST_F(Scritture, ScriviFatturaNeiQuattroCasi)
{
    // Inserimento: nuova chiave, testi senza spazi ai lati, FOGL e RIGO a 0, segni tolti.
    const auto id = ScriviFattura(ModoFattura::Inserisci, Campi(), 0, IdDomanda);
    ASSERT_TRUE(id.has_value());
    EXPECT_EQ(Righe(db(), QStringLiteral("SELECT * FROM FATTURE WHERE ID_FATTURA = ?"), {*id}),
              QStringList(QStringLiteral("%1|7|01234567890|CANTINA DELL'ORSO|12/A|10/01/2006|05/01/2006||"
                                         "100,0000|0,0000|10,0000|1,0000||1000,00|200,00|1200,00|3|0|0")
                              .arg(*id)));
    EXPECT_EQ(Segni(), QStringLiteral("N|N"));

    // Aggiornamento di una fattura che non c'è: nulla cambia, nemmeno i segni.
    db().Execute(QStringLiteral("UPDATE DOMANDE SET STAM='S', SCAR='S'"));
    CampiFattura altro = Campi();
    altro.IMPO = QStringLiteral("999,00");
    EXPECT_FALSE(ScriviFattura(ModoFattura::Aggiorna, altro, *id + 1, IdDomanda).has_value());
    EXPECT_EQ(Segni(), QStringLiteral("S|S"));

    EXPECT_EQ(ScriviFattura(ModoFattura::Aggiorna, altro, *id, IdDomanda), id);
    EXPECT_EQ(Righe(db(), QStringLiteral("SELECT IMPO FROM FATTURE")), QStringList(QStringLiteral("999,00")));
    EXPECT_EQ(Segni(), QStringLiteral("N|N"));

    // Senza prodotto la riga non si scrive affatto.
    altro.Prodotto.clear();
    EXPECT_EQ(NumeroErrore([&] { ScriviFattura(ModoFattura::Inserisci, altro, 0, IdDomanda); }), 3021);
    EXPECT_EQ(Righe(db(), QStringLiteral("SELECT count(*) FROM FATTURE")), QStringList(QStringLiteral("1")));

    EXPECT_EQ(ScriviFattura(ModoFattura::Cancella, altro, *id, IdDomanda), id);
    EXPECT_EQ(Righe(db(), QStringLiteral("SELECT count(*) FROM FATTURE")), QStringList(QStringLiteral("0")));
}

}  // namespace
