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

TEST_F(Scritture, CopiaERipristinoDelleBolle)
{
    Fattura(1, QStringLiteral("1"));
    Fattura(2, QStringLiteral("2"));
    Bolla(10, 1, QStringLiteral("B'10"), QStringLiteral("02/01/2006"), QStringLiteral("60,0000"));
    Bolla(11, 1, QStringLiteral("B11"), QStringLiteral("03/01/2006"), QStringLiteral("40,0000"), "20/01/2006");
    Bolla(12, 2, QStringLiteral("B12"), QStringLiteral("04/01/2006"), QStringLiteral("10,0000"));
    const QStringList prima = Bolle();

    // Una copia rimasta da una caduta viene buttata prima di farne una nuova.
    CopiaBolleInAppoggio(2);
    CopiaBolleInAppoggio(1);
    EXPECT_EQ(Righe(db(), QStringLiteral("SELECT ID_BOLLA FROM APPO_BOLLE ORDER BY ID_BOLLA")),
              (QStringList{QStringLiteral("10"), QStringLiteral("11")}));

    // Le modifiche della maschera delle bolle, poi l'abbandono della fattura.
    db().Execute(QStringLiteral("UPDATE BOLLE SET QUANTITA_PRODOTTO = '1,0000' WHERE ID_BOLLA = 10"));
    db().Execute(QStringLiteral("DELETE FROM BOLLE WHERE ID_BOLLA = 11"));
    Bolla(13, 1, QStringLiteral("B13"), QStringLiteral("05/01/2006"), QStringLiteral("5,0000"));
    RipristinaBolle(1);
    EXPECT_EQ(Bolle(), prima);
    EXPECT_FALSE(db().EsisteTabella(QStringLiteral("APPO_BOLLE")));
    EliminaAppoggioBolle();  // senza copia non fallisce
}

TEST_F(Scritture, BolleDellaFatturaNuovaAdottateOScartate)
{
    Fattura(1, QStringLiteral("1"));
    Bolla(10, 0, QStringLiteral("B10"), QStringLiteral("02/01/2006"), QStringLiteral("60,0000"));
    Bolla(11, 1, QStringLiteral("B11"), QStringLiteral("03/01/2006"), QStringLiteral("40,0000"));
    Bolla(12, 0, QStringLiteral("B12"), QStringLiteral("04/01/2006"), QStringLiteral("10,0000"));
    AdottaBolleNuove(5);
    EXPECT_EQ(Righe(db(), QStringLiteral("SELECT ID_BOLLA, FK_ID_FATTURA FROM BOLLE ORDER BY ID_BOLLA")),
              (QStringList{QStringLiteral("10|5"), QStringLiteral("11|1"), QStringLiteral("12|5")}));
    db().Execute(QStringLiteral("UPDATE BOLLE SET FK_ID_FATTURA = 0 WHERE ID_BOLLA = 12"));
    ScartaBolleNuove();
    EXPECT_EQ(Righe(db(), QStringLiteral("SELECT ID_BOLLA FROM BOLLE ORDER BY ID_BOLLA")),
              (QStringList{QStringLiteral("10"), QStringLiteral("11")}));
}

TEST_F(Scritture, LettureDelleBolle)
{
    Fattura(1, QStringLiteral("1"));
    Fattura(2, QStringLiteral("2"));
    Bolla(10, 1, QStringLiteral("B10"), QStringLiteral("01/01/2006"), QStringLiteral("60,0000"));
    Bolla(11, 1, QStringLiteral("B11"), QStringLiteral("31/12/2005"), QStringLiteral("40,0001"));
    Bolla(12, 2, QStringLiteral("B12"), QStringLiteral("15/11/2005"), QStringLiteral("7,0000"), " ");

    EXPECT_EQ(PrimaDataConsegna(1), QStringLiteral("31/12/2005"));
    EXPECT_EQ(PrimaDataConsegna(3), QString());
    EXPECT_EQ(Decimale::daDouble(SommaBolle(1, 0)), Decimale(QStringLiteral("100,0001")));
    EXPECT_EQ(Decimale::daDouble(SommaBolle(1, 11)), Decimale(60));
    EXPECT_EQ(SommaBolle(3, 0), 0.0);

    // Data di pagamento: solo nelle bolle della fattura o in quelle non legate.
    EXPECT_FALSE(PagamentoNelleBolle(1));
    EXPECT_FALSE(PagamentoNelleBolle(2));  // una data di soli spazi non conta
    Bolla(13, 2, QStringLiteral("B13"), QStringLiteral("16/11/2005"), QStringLiteral("1"), "30/11/2005");
    EXPECT_FALSE(PagamentoNelleBolle(1));
    EXPECT_TRUE(PagamentoNelleBolle(2));
    Bolla(14, 0, QStringLiteral("B14"), QStringLiteral("16/11/2005"), QStringLiteral("1"), "30/11/2005");
    EXPECT_TRUE(PagamentoNelleBolle(1));
}

TEST_F(Scritture, CancellazioneTotaleEDenominazione)
{
    Fattura(1, QStringLiteral("1"), QStringLiteral("RSSMRA'0"), QStringLiteral("12,5"));
    Fattura(2, QStringLiteral("2"), QStringLiteral("X"), QStringLiteral("0,25"));
    Bolla(10, 1, QStringLiteral("B10"), QStringLiteral("01/01/2006"), QStringLiteral("60,0000"));
    Bolla(11, 2, QStringLiteral("B11"), QStringLiteral("01/01/2006"), QStringLiteral("60,0000"));
    EXPECT_EQ(TotaleQuintali(IdDomanda), QStringLiteral("12,7500"));
    EXPECT_EQ(TotaleQuintali(IdDomanda + 1), std::nullopt);

    db().Execute(QStringLiteral("INSERT INTO PRODUTTORI (CODI_FISC, DENOMINAZIONE) VALUES ('X', 'DAI PRODUTTORI')"));
    EXPECT_EQ(CercaDenominazione(QStringLiteral("X")), QStringLiteral("DAI PRODUTTORI"));
    EXPECT_EQ(CercaDenominazione(QStringLiteral("RSSMRA'0")), QStringLiteral("CANTINA 1"));
    EXPECT_EQ(CercaDenominazione(QStringLiteral("NESSUNO")), std::nullopt);

    db().Execute(QStringLiteral("UPDATE DOMANDE SET STAM='S', SCAR='S'"));
    EXPECT_FALSE(EliminaFattura(3, IdDomanda));
    EXPECT_EQ(Segni(), QStringLiteral("S|S"));
    EXPECT_TRUE(EliminaFattura(1, IdDomanda));
    EXPECT_EQ(Segni(), QStringLiteral("N|N"));
    EXPECT_EQ(Righe(db(), QStringLiteral("SELECT ID_BOLLA FROM BOLLE")), QStringList(QStringLiteral("11")));
    EXPECT_EQ(TotaleQuintali(IdDomanda), QStringLiteral("0,2500"));
}

}  // namespace
