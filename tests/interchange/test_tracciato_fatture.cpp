// Tracciato della fornitura del ramo fatture: record interi, carattere per
// carattere, in uscita e in entrata.

#include "common/errore.h"
#include "interchange/TracciatoFatture.h"
#include "record_prova.h"
#include "shell/session_state.h"
#include "store/database.h"
#include "support/cartella_prova.h"

#include <gtest/gtest.h>

using namespace TracciatoFatture;

namespace {

// Una fattura tipica come la scrive la maschera: quantità a 4 decimali,
// importi a 2, date GG/MM/AAAA.
RigaValori FatturaTipica()
{
    return RigaValori{{"DOMANDA", "00000012345"},
                      {"CODI_LAVO", "VDT"},
                      {"PRODOTTO", "ANE"},
                      {"CODI_FISC", "RSSMRA70A01H501S"},
                      {"NUME_FATT", "125"},
                      {"DATA_FATT", "15/03/2006"},
                      {"QTA_PROD", "1500,0000"},
                      {"GRAD", "12,5000"},
                      {"PREZ_MINI", "2,4500"},
                      {"IMPO", "3675,00"},
                      {"IVA", "735,00"},
                      {"IMPO_TOTA", "4410,00"},
                      {"DATA_PAGA", "20/04/2006"},
                      {"QTA_LAVO", "1480,0000"},
                      {"DENOMINAZIONE", "CANTINA SOCIALE DI CANELLI"}};
}

DatiDistilleria Distilleria()
{
    DatiDistilleria d;
    d.CODI_FISC = QStringLiteral("01234567890");
    d.RAGI_SOCI = QStringLiteral("DISTILLERIA BOSCO SPA");
    d.INDI_DIST = QStringLiteral("VIA ROMA 12 ASTI");
    return d;
}

class TracciatoFattureUscita : public ::testing::Test {
protected:
    void SetUp() override
    {
        sessione().Azzera();
        sessione().DistilleriaDati = Distilleria();
        sessione().DomandaSel.ID_VARIETA = QStringLiteral("3");
        sessione().DomandaSel.TIPO_ARTICOLO = QStringLiteral("29");
        scarico.NumeroScarico = QStringLiteral("007");
        scarico.DataScarico = QDate(2006, 3, 15);
    }
    void TearDown() override { sessione().Azzera(); }
    Scarico scarico;
};

TEST_F(TracciatoFattureUscita, TestataConAnnoFissoNumeroDiScaricoEDistilleria)
{
    sessione().DomandaSel.CAMPAGNA = QStringLiteral("2004");  // l'anno scritto non cambia
    const QString atteso = QStringLiteral("0") + "0000000000000000" + "2005/2006" + "0007" + "20060315" +
                           Sx("DISTILLERIA BOSCO SPA", 50) + Sx("VIA ROMA 12 ASTI", 30) + "03" + "29" +
                           Bianchi(138);
    EXPECT_TRUE(RecordUguale(atteso, scarico.TRACCIATO_0()));
    EXPECT_EQ(LunghezzaRecord, scarico.TRACCIATO_0().size());
}

TEST_F(TracciatoFattureUscita, TestataSenzaNumeroERagioneSocialeTroppoLunga)
{
    scarico.NumeroScarico.clear();  // PROG_DSK vuota
    DatiDistilleria d = Distilleria();
    d.RAGI_SOCI = QStringLiteral("DISTILLERIA DEI FRATELLI BOSCO E FIGLI SOCIETA PER AZIONI");  // 57
    DomandaSelezionata domanda;
    domanda.ID_VARIETA = QStringLiteral("12");
    domanda.TIPO_ARTICOLO = QStringLiteral("30");
    const QString atteso = QStringLiteral("0") + "0000000000000000" + "2005/2006" + "0000" + "20060315" +
                           "DISTILLERIA DEI FRATELLI BOSCO E FIGLI SOCIETA PER" + Sx("VIA ROMA 12 ASTI", 30) +
                           "12" + "30" + Bianchi(138);
    EXPECT_TRUE(RecordUguale(atteso, scarico.TRACCIATO_0(d, domanda)));
}

struct CasoFattura {
    const char* nome;
    QList<QPair<QString, QString>> modifiche;
    QString atteso;
};

class Record1Fattura : public TracciatoFattureUscita, public ::testing::WithParamInterface<CasoFattura> {};

TEST_P(Record1Fattura, RecordIntero)
{
    RigaValori riga = FatturaTipica();
    for (const auto& [colonna, valore] : GetParam().modifiche)
        riga.Imposta(colonna, valore);
    const QString r = scarico.TRACCIATO_1(riga);
    EXPECT_TRUE(RecordUguale(GetParam().atteso, r));
}

INSTANTIATE_TEST_SUITE_P(
    Casi, Record1Fattura,
    ::testing::Values(
        CasoFattura{"Tipica",
                    {},
                    QStringLiteral("1") + "00000012345" + "01234567890     " + "A" + "VDT" + "ANE" +
                        "RSSMRA70A01H501S" + "125            " + "20060315" + "00015000000" + "125000" +
                        "00024500" + "00000000367500" + "00000000073500" + "00000000441000" + "20060420" +
                        "00014800000" + Sx("CANTINA SOCIALE DI CANELLI", 70) + Bianchi(30)},
        // Zeri a destra di un numero corto, voluto: 9 cifre e poi "00".
        CasoFattura{"DomandaDiNoveCifre",
                    {{"DOMANDA", "123456789"}},
                    QStringLiteral("1") + "12345678900" + "01234567890     " + "A" + "VDT" + "ANE" +
                        "RSSMRA70A01H501S" + "125            " + "20060315" + "00015000000" + "125000" +
                        "00024500" + "00000000367500" + "00000000073500" + "00000000441000" + "20060420" +
                        "00014800000" + Sx("CANTINA SOCIALE DI CANELLI", 70) + Bianchi(30)},
        // Nome oltre 70 e numero oltre 15 perdono la coda.
        CasoFattura{"NomeENumeroTagliati",
                    {{"DENOMINAZIONE",
                      "AZIENDA AGRICOLA VITIVINICOLA DEI COLLI ASTIGIANI E DEL MONFERRATO CASALESE SOC. COOP."},
                     {"NUME_FATT", "2006/000125-BIS-A"},
                     {"CODI_FISC", "01987650044"}},
                    QStringLiteral("1") + "00000012345" + "01234567890     " + "A" + "VDT" + "ANE" +
                        "01987650044     " + "2006/000125-BIS" + "20060315" + "00015000000" + "125000" +
                        "00024500" + "00000000367500" + "00000000073500" + "00000000441000" + "20060420" +
                        "00014800000" +
                        "AZIENDA AGRICOLA VITIVINICOLA DEI COLLI ASTIGIANI E DEL MONFERRATO CAS" + Bianchi(30)},
        // Pagamento vuoto: otto zeri. Un importo troppo lungo perde le cifre di sinistra.
        CasoFattura{"PagamentoVuotoEImportoTroppoLungo",
                    {{"DATA_PAGA", ""}, {"IMPO", "123456789012345,00"}},
                    QStringLiteral("1") + "00000012345" + "01234567890     " + "A" + "VDT" + "ANE" +
                        "RSSMRA70A01H501S" + "125            " + "20060315" + "00015000000" + "125000" +
                        "00024500" + "45678901234500" + "00000000073500" + "00000000441000" + "00000000" +
                        "00014800000" + Sx("CANTINA SOCIALE DI CANELLI", 70) + Bianchi(30)},
        // I Null valgono il testo vuoto; la virgola si toglie senza riscalare.
        CasoFattura{"NullEDecimaliDiversi",
                    {{"QTA_LAVO", QString()},
                     {"DENOMINAZIONE", QString()},
                     {"DATA_PAGA", QString()},
                     {"GRAD", "12,5"},
                     {"IVA", "735"}},
                    QStringLiteral("1") + "00000012345" + "01234567890     " + "A" + "VDT" + "ANE" +
                        "RSSMRA70A01H501S" + "125            " + "20060315" + "00015000000" + "000125" +
                        "00024500" + "00000000367500" + "00000000000735" + "00000000441000" + "00000000" +
                        "00000000000" + Bianchi(70) + Bianchi(30)}),
    [](const ::testing::TestParamInfo<CasoFattura>& info) { return std::string(info.param.nome); });

TEST_F(TracciatoFattureUscita, CodiciDiLunghezzaDiversaSpostanoLaRiga)
{
    RigaValori riga = FatturaTipica();
    riga.Imposta("CODI_LAVO", "VD");
    const QString r = scarico.TRACCIATO_1(riga);
    EXPECT_EQ(QStringLiteral("AVDANERSSMRA70A01H501S125"), r.mid(28, 25));
    EXPECT_EQ(LunghezzaRecord - 1, r.size());
}

TEST_F(TracciatoFattureUscita, Record2Bolla)
{
    const RigaValori riga{{"DOMANDA", "00000012345"},
                          {"NUME_FATT", "125"},
                          {"CODI_FISC", "RSSMRA70A01H501S"},
                          {"NUMERO_BOLLA", "DDT 4471/A"},
                          {"DATA_CONSEGNA", "2/3/2006"},
                          {"QUANTITA_PRODOTTO", "750,0000"},
                          {"FATTURE.DATA_PAGA", "20/04/2006"},
                          {"BOLLE.DATA_PAGA", "21/04/2006"},
                          {"GRADO", "12,5000"}};
    const QString atteso = QStringLiteral("2") + "00000012345" + "125            " + "RSSMRA70A01H501S" +
                           "DDT 4471/A          " + "02/03/2006" + "00007500000" + "21/04/2006" + "125000" +
                           Bianchi(160);
    EXPECT_TRUE(RecordUguale(atteso, scarico.TRACCIATO_2(riga)));
}

TEST_F(TracciatoFattureUscita, Record2ConPagamentoEGradoVuoti)
{
    const RigaValori riga{{"DOMANDA", "123456789"},
                          {"NUME_FATT", "2006/000125-BIS-A"},
                          {"CODI_FISC", "01987650044"},
                          {"NUMERO_BOLLA", "BOLLA DI ACCOMPAGNAMENTO 99"},
                          {"DATA_CONSEGNA", "02/03/2006"},
                          {"QUANTITA_PRODOTTO", "750,0000"},
                          {"BOLLE.DATA_PAGA", QString()},
                          {"GRADO", QString()}};
    const QString atteso = QStringLiteral("2") + "12345678900" + "2006/000125-BIS" + "01987650044     " +
                           "BOLLA DI ACCOMPAGNAM" + "02/03/2006" + "00007500000" + Bianchi(10) + "000000" +
                           Bianchi(160);
    EXPECT_TRUE(RecordUguale(atteso, scarico.TRACCIATO_2(riga)));
}

TEST_F(TracciatoFattureUscita, CodaConIConteggiAzzeraSoloLeFatture)
{
    scarico.ContaFatture = 12;
    scarico.ContaBolle = 1234567;  // oltre sei cifre resta la coda
    const QString atteso = QStringLiteral("9") + "9999999999999999" + "000012" + "234567" + Bianchi(231);
    EXPECT_TRUE(RecordUguale(atteso, scarico.TRACCIATO_9()));
    EXPECT_EQ(0, scarico.ContaFatture);
    EXPECT_EQ(1234567, scarico.ContaBolle);
}

// ------------------------------------------------------------- in entrata

const QString Entrata0 = QStringLiteral("0") + "2005" + "000002" + "000005" + "000007" + "15/03/2006" + "001" +
                         Bianchi(224);

QString Entrata1(const QString& domanda, const QString& progressivo)
{
    return QStringLiteral("1") + domanda + progressivo + "29" + "ANE" + Bianchi(241);
}

QString Entrata2(const QString& domanda, const QString& numero)
{
    return QStringLiteral("2") + domanda + "01" + Sx(numero, 15) + "RSSMRA70A01H501S" +
           Sx("CANTINA SOCIALE DI CANELLI", 50) + "15/03/2006" + "0001500" + "0000" + "12" + "5000" + "0002" +
           "4500" + "000000003675" + "00" + "000000000735" + "00" + "000000004410" + "00" + "20/04/2006" +
           "0001480" + "0000" + "VDT" + Bianchi(64);
}

QString Entrata3(const QString& domanda, const QString& bolla)
{
    return QStringLiteral("3") + domanda + "01" + "125            " + "RSSMRA70A01H501S" + Sx(bolla, 20) +
           "02/03/2006" + "0000750" + "0000" + "          " + "12" + "5000" + Bianchi(158);
}

TEST(TracciatoFattureEntrata, RecordInteriDellaFornitura)
{
    ASSERT_EQ(LunghezzaRecord, Entrata0.size());
    ASSERT_EQ(LunghezzaRecord, Entrata1("00000012345", "01").size());
    ASSERT_EQ(LunghezzaRecord, Entrata2("00000012345", "125").size());
    ASSERT_EQ(LunghezzaRecord, Entrata3("00000012345", "B1").size());

    Carico c;
    EXPECT_EQ(0, c.LeggiRiga(Entrata0));
    EXPECT_EQ(1, c.LeggiRiga(Entrata1("00000012345", "01")));
    EXPECT_EQ(2, c.LeggiRiga(Entrata2("00000012345", "125")));
    EXPECT_EQ(3, c.LeggiRiga(Entrata3("00000012345", "DDT 4471/A")));

    EXPECT_EQ("2005", c.Fornitura.CAMPAGNA);
    EXPECT_EQ("000002", c.Fornitura.Numero_domaNDe);
    EXPECT_EQ("000005", c.Fornitura.Numero_fatture);
    EXPECT_EQ("000007", c.Fornitura.Numero_bolle);
    EXPECT_EQ("15/03/2006", c.Fornitura.Data_forniturE);
    EXPECT_EQ("001", c.Fornitura.PROGRESSIVO_fornitura);

    ASSERT_EQ(1, c.NumeroDomande);
    ASSERT_EQ(2, c.Domande.size());
    const DomandaCarico& d = c.Domande[1];
    EXPECT_EQ("00000012345", d.DOMANDA);
    EXPECT_EQ("01", d.PROGRESSIVO);
    EXPECT_EQ("29", d.TIPO_ARTICOLO);
    EXPECT_EQ("ANE", d.CODI_PROD);
    EXPECT_EQ("", d.ID_VARIETA);

    ASSERT_EQ(2, d.Fatture.size());
    const FatturaCarico& f = d.Fatture[1];
    EXPECT_EQ("00000012345", f.DOMANDA);
    EXPECT_EQ("01", f.PROGRESSIVO);
    EXPECT_EQ("125            ", f.NUME_FATT);  // spazi in coda compresi
    EXPECT_EQ("RSSMRA70A01H501S", f.CODI_FISC);
    EXPECT_EQ(Sx("CANTINA SOCIALE DI CANELLI", 50), f.DENOMINAZIONE);
    EXPECT_EQ("15/03/2006", f.DATA_FATT);
    EXPECT_EQ("1500,0000", f.QTA_PROD);
    EXPECT_EQ("12,5000", f.GRAD);
    EXPECT_EQ("2,4500", f.PREZ_MINI);
    EXPECT_EQ("3675,00", f.IMPO);
    EXPECT_EQ("735,00", f.IVA);
    EXPECT_EQ("4410,00", f.IMPO_TOTA);
    EXPECT_EQ("20/04/2006", f.DATA_PAGA);
    EXPECT_EQ("1480,0000", f.QTA_LAVO);
    EXPECT_EQ("VDT", f.CODI_LAVO);
    EXPECT_EQ("", f.ID_LAVORAZIONE);

    ASSERT_EQ(2, d.Bolle.size());
    const BollaCarico& b = d.Bolle[1];
    EXPECT_EQ("00000012345", b.DOMANDA);
    EXPECT_EQ("01", b.PROGRESSIVO);
    EXPECT_EQ("125            ", b.NUME_FATT);
    EXPECT_EQ("RSSMRA70A01H501S", b.CODI_FISC);
    EXPECT_EQ(Sx("DDT 4471/A", 20), b.NUMERO_BOLLA);
    EXPECT_EQ("02/03/2006", b.DATA_CONSEGNA);
    EXPECT_EQ("750,0000", b.QUANTITA_PRODOTTO);
    EXPECT_EQ(Bianchi(10), b.DATA_PAGA);
    EXPECT_EQ("12,5000", b.GRADO);
}

TEST(TracciatoFattureEntrata, ImportiSpezzatiConPartiBiancheOZeri)
{
    // Quantità: parte intera tutta bianca; grado: decimali bianchi copiati;
    // prezzo con spazi in coda tolti; imponibile tutto zeri.
    QString r = Entrata2("00000012345", "125");
    r.replace(105, 11, QStringLiteral("       0500"));
    r.replace(116, 6, QStringLiteral("09 5  "));
    r.replace(122, 8, QStringLiteral("0002    "));
    r.replace(130, 14, QStringLiteral("00000000000000"));
    r.replace(182, 11, QStringLiteral("1234567  12"));
    // Il totale con un segno nella parte intera: la regola generale del valore numerico.
    r.replace(158, 14, QStringLiteral("   -0000001234"));
    Carico c;
    c.LeggiRiga(Entrata1("00000012345", "01"));
    c.LeggiRiga(r);
    const FatturaCarico& f = c.Domande[1].Fatture[1];
    EXPECT_EQ("0,0500", f.QTA_PROD);
    EXPECT_EQ("9, 5  ", f.GRAD);
    EXPECT_EQ("2,", f.PREZ_MINI);
    EXPECT_EQ("0,00", f.IMPO);
    EXPECT_EQ("1234567,  12", f.QTA_LAVO);
    EXPECT_EQ("-12,34", f.IMPO_TOTA);
}

// Le bolle sono della domanda: una nuova fattura riporta l'indice a zero.
TEST(TracciatoFattureEntrata, FattureEBolleAlternatePerdonoLePrimeBolle)
{
    const QString dom = QStringLiteral("00000012345");
    Carico c;
    for (const QString& r : {Entrata1(dom, "01"), Entrata2(dom, "A"), Entrata3(dom, "B1"), Entrata3(dom, "B2"),
                             Entrata3(dom, "B3"), Entrata2(dom, "B"), Entrata3(dom, "B4")})
        c.LeggiRiga(r);
    const DomandaCarico& d = c.Domande[1];
    ASSERT_EQ(3, d.Fatture.size());
    EXPECT_EQ(Sx("A", 15), d.Fatture[1].NUME_FATT);
    EXPECT_EQ(Sx("B", 15), d.Fatture[2].NUME_FATT);
    ASSERT_EQ(2, d.Bolle.size());  // B4 al posto di B1; B2 e B3 persi
    EXPECT_EQ(Sx("B4", 20), d.Bolle[1].NUMERO_BOLLA);
}

TEST(TracciatoFattureEntrata, OrdineDomandaFattureBolleNonPerdeNulla)
{
    const QString dom = QStringLiteral("00000012345");
    Carico c;
    for (const QString& r : {Entrata1(dom, "01"), Entrata2(dom, "A"), Entrata2(dom, "B"), Entrata3(dom, "B1"),
                             Entrata3(dom, "B2"), Entrata3(dom, "B3"), Entrata1("00000054321", "02"),
                             Entrata2("00000054321", "C")})
        c.LeggiRiga(r);
    ASSERT_EQ(2, c.NumeroDomande);
    ASSERT_EQ(4, c.Domande[1].Bolle.size());
    EXPECT_EQ(Sx("B3", 20), c.Domande[1].Bolle[3].NUMERO_BOLLA);
    // La nuova domanda parte con liste vuote.
    EXPECT_EQ(2, c.Domande[2].Fatture.size());
    EXPECT_EQ(1, c.Domande[2].Bolle.size());
    EXPECT_EQ(1, c.NumeroFatture);
    EXPECT_EQ(0, c.IndiceBolla);
}

TEST(TracciatoFattureEntrata, UnaFatturaSenzaBolleLasciaQuelleDiPrima)
{
    const QString dom = QStringLiteral("00000012345");
    Carico c;
    for (const QString& r : {Entrata1(dom, "01"), Entrata2(dom, "A"), Entrata3(dom, "B1"), Entrata3(dom, "B2"),
                             Entrata2(dom, "B")})
        c.LeggiRiga(r);
    EXPECT_EQ(3, c.Domande[1].Bolle.size());
    EXPECT_EQ(0, c.IndiceBolla);
}

TEST(TracciatoFattureEntrata, TipiSconosciutiSaltatiSenzaToccareIContatori)
{
    const QString dom = QStringLiteral("00000012345");
    Carico c;
    c.LeggiRiga(Entrata1(dom, "01"));
    c.LeggiRiga(Entrata2(dom, "A"));
    QString nove = QStringLiteral("9") + QString(259, QLatin1Char('9'));
    QString cinque = Entrata2(dom, "X");
    cinque[0] = QLatin1Char('5');
    EXPECT_EQ(-1, c.LeggiRiga(nove));
    EXPECT_EQ(-1, c.LeggiRiga(cinque));
    EXPECT_EQ(-1, c.LeggiRiga(QString()));
    EXPECT_EQ(1, c.NumeroDomande);
    EXPECT_EQ(1, c.NumeroFatture);
    EXPECT_EQ(2, c.Domande[1].Fatture.size());
}

TEST(TracciatoFattureEntrata, FatturaOBollaPrimaDiUnaDomandaSonoErroriDiEsecuzione)
{
    for (const QString& r : {Entrata2("00000012345", "A"), Entrata3("00000012345", "B1")}) {
        Carico c;
        c.LeggiRiga(Entrata0);
        try {
            c.LeggiRiga(r);
            ADD_FAILURE() << "nessun errore per il record " << r.left(1);
        } catch (const ErroreSistema& e) {
            EXPECT_EQ(9, e.numero());
        }
    }
}

// ------------------------------------------------- dalle query di scarico

class TracciatoFattureDatabase : public ProvaConDatabase {
protected:
    static Scarico scarico()
    {
        Scarico s;
        s.NumeroScarico = QStringLiteral("007");
        return s;
    }
};

TEST_F(TracciatoFattureDatabase, RigheDelleQueryDiScaricoConNomiQualificati)
{
    Database& d = db();
    sessione().DistilleriaDati = Distilleria();
    const qint64 idDomanda = d.InserisciRiga(QStringLiteral("DOMANDE"), {{"DOMANDA", "00000012345"},
                                                                         {"PROGRESSIVO", "01"},
                                                                         {"TIPO_ARTICOLO", "29"},
                                                                         {"ID_VARIETA", 2}});
    const qint64 idFattura = d.InserisciRiga(QStringLiteral("FATTURE"), {{"ID_DOMANDA", idDomanda},
                                                                         {"CODI_FISC", "RSSMRA70A01H501S"},
                                                                         {"DENOMINAZIONE", "CANTINA SOCIALE"},
                                                                         {"NUME_FATT", "125"},
                                                                         {"DATA_FATT", "15/03/2006"},
                                                                         {"DATA_PAGA", "20/04/2006"},
                                                                         {"QTA_PROD", "1500,0000"},
                                                                         {"GRAD", "12,5000"},
                                                                         {"PREZ_MINI", "2,4500"},
                                                                         {"IMPO", "3675,00"},
                                                                         {"IVA", "735,00"},
                                                                         {"IMPO_TOTA", "4410,00"},
                                                                         {"ID_LAVORAZIONE", 1}});
    d.InserisciRiga(QStringLiteral("BOLLE"), {{"FK_ID_FATTURA", idFattura},
                                              {"NUMERO_BOLLA", "B1"},
                                              {"DATA_CONSEGNA", "02/03/2006"},
                                              {"QUANTITA_PRODOTTO", "750,0000"},
                                              {"GRADO", "12,5000"}});

    Recordset fatture = d.OpenRecordset(QStringLiteral(
        "SELECT DOMANDE.* , FATTURE.*,  VARIETA.CODI_PROD AS PRODOTTO, VARIETA.DESC_PROD AS DESCRIZIONE_PRODOTTO, "
        " LAVORAZIONI.CODI_LAVO, LAVORAZIONI.DESC_LAVO  FROM DOMANDE,FATTURE,VARIETA, LAVORAZIONI "
        " WHERE DOMANDE.ID_DOMANDA=FATTURE.ID_DOMANDA AND DOMANDE.ID_VARIETA = VARIETA.ID_VARIETA"
        " AND FATTURE.ID_LAVORAZIONE=LAVORAZIONI.ID_LAVORAZIONE"));
    ASSERT_FALSE(fatture.eof());
    // QTA_LAVO e DENOMINAZIONE della fattura: Null e testo corto.
    const QString atteso1 = QStringLiteral("1") + "00000012345" + "01234567890     " + "A" + "VDT" + "ANE" +
                            "RSSMRA70A01H501S" + "125            " + "20060315" + "00015000000" + "125000" +
                            "00024500" + "00000000367500" + "00000000073500" + "00000000441000" + "20060420" +
                            "00000000000" + Sx("CANTINA SOCIALE", 70) + Bianchi(30);
    EXPECT_TRUE(RecordUguale(atteso1, scarico().TRACCIATO_1(RigaRecordset(fatture))));

    // DATA_PAGA c'è due volte: quella della bolla (Null) è l'ultima.
    Recordset bolle = d.OpenRecordset(
        QStringLiteral("SELECT DOMANDE.* , FATTURE.*,BOLLE.*  FROM DOMANDE, FATTURE, BOLLE"
                       " WHERE DOMANDE.ID_DOMANDA=FATTURE.ID_DOMANDA AND FATTURE.ID_FATTURA=BOLLE.FK_ID_FATTURA"));
    ASSERT_FALSE(bolle.eof());
    const QString atteso2 = QStringLiteral("2") + "00000012345" + "125            " + "RSSMRA70A01H501S" +
                            Sx("B1", 20) + "02/03/2006" + "00007500000" + Bianchi(10) + "125000" + Bianchi(160);
    EXPECT_TRUE(RecordUguale(atteso2, scarico().TRACCIATO_2(RigaRecordset(bolle))));
}

TEST_F(TracciatoFattureDatabase, ColonnaAssenteEErrore3265)
{
    Recordset rs = db().OpenRecordset(QStringLiteral("SELECT 1 AS UNO"));
    try {
        scarico().TRACCIATO_2(RigaRecordset(rs));
        ADD_FAILURE() << "nessun errore per una colonna assente";
    } catch (const ErroreSistema& e) {
        EXPECT_EQ(3265, e.numero());
    }
}

}  // namespace
