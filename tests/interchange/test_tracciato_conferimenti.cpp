// Tracciato della fornitura del ramo conferimenti: record interi, carattere
// per carattere, in uscita e in entrata (con le ricerche nel database).

#include "common/errore.h"
#include "interchange/TracciatoConferimenti.h"
#include "record_prova.h"
#include "shell/session_state.h"
#include "store/database.h"
#include "support/cartella_prova.h"

#include <gtest/gtest.h>

using namespace TracciatoConferimenti;

namespace {

DatiDistilleria Distilleria()
{
    DatiDistilleria d;
    d.CODI_FISC = QStringLiteral("01234567890");
    d.RAGI_SOCI = QStringLiteral("DISTILLERIA BOSCO SPA");
    d.INDI_DIST = QStringLiteral("VIA ROMA 12 ASTI");
    return d;
}

RigaValori CertificatoTipico()
{
    return RigaValori{{"domanda", "4711"},
                      {"TAB_UTF.NUMERO_CERTIFICATO_UTF", "12345"},
                      {"SIGLA_UFFICIO_UTF_PROVINCIA", "AT"},
                      {"TAB_UTF.DATA_EMISSIONE_CERTIFICATO", "05/11/2005"},
                      {"QTA_TOT_VINO_LAVORATO", "1000,5"},
                      {"QTA_TOT_ALCOLE_NEUTRO_OTTENUTO", "50,25"},
                      {"QTA_TOT_ALCOLE_GREZZO_OTTENUTO", ""},
                      {"QTA_TOT_ACQUAVITE_OTTENUTO", "0,0000"},
                      {"QTA_TOT_ETTOGRADI_VINO_LAVORATO", "12506,25"}};
}

RigaValori ProduttoreTipico()
{
    return RigaValori{{"CODI_FISC", "BNCGPP60B02A479X"},
                      {"DENOMINAZIONE", "BIANCO GIUSEPPE"},
                      {"CODICE_CONTRATTO_DISTILLAZIONE", "123"},
                      {"QTA_VINO_EFFETIVAMENTE_DISTILLATA", "80,5"},
                      {"TITOLO_ALCOLOMETRICO_FATTURATO", "11,5"},
                      {"ETTOGRADI", "925,75"},
                      {"QTA_ALCOLE_NEUTRO", "10,12345"},
                      {"QTA_ALCOLE_GREZZO", ""},
                      {"QTA_ACQUAVITE", "0"},
                      {"AIUTO_ALCOLE_NEUTRO", "150,5"},
                      {"AIUTO_ALCOLE_GREZZO", "0,00"},
                      {"AIUTO_ACQUAVITE", "0"},
                      {"IMPORTO_DETRAIBILE", "12"},
                      {"ID_COLORE", "2"},
                      {"APPROVAZIONE_ANTICIPATA", "S"},
                      {"PERC_APPROVAZIONE_ANTICIPATA", "50"}};
}

// Il record 1 del certificato tipico, come deve uscire.
const QString Certificato1 = QStringLiteral("1") + "4711       " + "12345    " + "AT" + "20051105" + "00010005000" +
                             "00000502500" + "00000000000" + "00000000000" + "000125062500" + Bianchi(213);

class TracciatoConferimentiUscita : public ::testing::Test {
protected:
    void SetUp() override
    {
        sessione().Azzera();
        sessione().DistilleriaDati = Distilleria();
        scarico.NumeroScarico = QStringLiteral("007");
        scarico.DataScarico = QDate(2006, 3, 15);
    }
    void TearDown() override { sessione().Azzera(); }
    Scarico scarico;
};

TEST_F(TracciatoConferimentiUscita, Testata)
{
    const QString atteso = QStringLiteral("0") + "000000000000000000000000000000" + "2005/2006" + "0007" +
                           "20060315" + Sx("DISTILLERIA BOSCO SPA", 70) + "01234567890     " + "10" + "29" +
                           Bianchi(158);
    EXPECT_TRUE(RecordUguale(atteso, scarico.TRACCIATO_0()));
    EXPECT_EQ(LunghezzaRecord, scarico.TRACCIATO_0().size());
}

TEST_F(TracciatoConferimentiUscita, CertificatoRicordaDomandaERiga)
{
    EXPECT_TRUE(RecordUguale(Certificato1, scarico.TRACCIATO_1(CertificatoTipico())));
    EXPECT_EQ("4711", scarico.DomandaRicordata);
    EXPECT_EQ(Certificato1, scarico.UltimoRecord1);
}

TEST_F(TracciatoConferimentiUscita, CertificatoSenzaDataEConCampiLunghi)
{
    RigaValori riga = CertificatoTipico();
    riga.Imposta("domanda", "00000004711")
        .Imposta("TAB_UTF.NUMERO_CERTIFICATO_UTF", "AT/2005/000123")
        .Imposta("SIGLA_UFFICIO_UTF_PROVINCIA", QString())
        .Imposta("TAB_UTF.DATA_EMISSIONE_CERTIFICATO", QString())
        .Imposta("QTA_TOT_VINO_LAVORATO", "123456789,12");
    const QString atteso = QStringLiteral("1") + "00000004711" + "AT/2005/0" + "  " + Bianchi(8) + "34567891200" +
                           "00000502500" + "00000000000" + "00000000000" + "000125062500" + Bianchi(213);
    EXPECT_TRUE(RecordUguale(atteso, scarico.TRACCIATO_1(riga)));
}

TEST_F(TracciatoConferimentiUscita, ProduttoreConIValoriDelCertificato)
{
    scarico.TRACCIATO_1(CertificatoTipico());
    // Aiuto sull'acquavite zero: solo zeri. Decimali oltre i quattro tagliati,
    // non arrotondati (10,12345 -> 101234). Il colore è la chiave.
    const QString atteso = QStringLiteral("2") + "       4711" + "12345    " + "AT" + "20051105" +
                           "BNCGPP60B02A479X" + Sx("BIANCO GIUSEPPE", 70) + "00000000123" + "00000805000" +
                           "115000" + "000009257500" + "00000101234" + "00000000000" + "00000000000" +
                           "00000000015050" + "00000000000000" + "00000000000000" + "00000000001200" + "02" + "S" +
                           "050" + Bianchi(48);
    EXPECT_TRUE(RecordUguale(atteso, scarico.TRACCIATO_2(ProduttoreTipico())));
}

TEST_F(TracciatoConferimentiUscita, ProduttoreConNullENomeTroppoLungo)
{
    scarico.TRACCIATO_1(CertificatoTipico());
    RigaValori riga = ProduttoreTipico();
    riga.Imposta("DENOMINAZIONE", "SOCIETA AGRICOLA SEMPLICE DEI FRATELLI BIANCO GIUSEPPE E LUIGI DI CANELLI")
        .Imposta("ID_COLORE", QString())
        .Imposta("APPROVAZIONE_ANTICIPATA", QString())
        .Imposta("PERC_APPROVAZIONE_ANTICIPATA", QString())
        .Imposta("CODICE_CONTRATTO_DISTILLAZIONE", QString())
        .Imposta("AIUTO_ALCOLE_NEUTRO", "0,00");
    const QString atteso = QStringLiteral("2") + "       4711" + "12345    " + "AT" + "20051105" +
                           "BNCGPP60B02A479X" +
                           "SOCIETA AGRICOLA SEMPLICE DEI FRATELLI BIANCO GIUSEPPE E LUIGI DI CANE" +
                           "00000000000" + "00000805000" + "115000" + "000009257500" + "00000101234" +
                           "00000000000" + "00000000000" + "00000000000000" + "00000000000000" +
                           "00000000000000" + "00000000001200" + "00" + " " + "000" + Bianchi(48);
    EXPECT_TRUE(RecordUguale(atteso, scarico.TRACCIATO_2(riga)));
}

TEST_F(TracciatoConferimentiUscita, ProduttoreSenzaCertificatoPrima)
{
    // Nessun record 1 ancora: numero e parte del certificato restano bianchi.
    const QString r = scarico.TRACCIATO_2(ProduttoreTipico());
    EXPECT_EQ(QStringLiteral("2") + Bianchi(30) + "BNCGPP60B02A479X", r.left(47));
    EXPECT_EQ(LunghezzaRecord, r.size());
}

struct CasoCoda {
    const char* nome;
    TotaliDomanda totali;
    QString atteso;
};

class CodaConferimenti : public TracciatoConferimentiUscita, public ::testing::WithParamInterface<CasoCoda> {};

TEST_P(CodaConferimenti, RecordIntero)
{
    scarico.ContaCertificati = 2;
    scarico.ContaProduttori = 15;
    EXPECT_TRUE(RecordUguale(GetParam().atteso, scarico.TRACCIATO_9(GetParam().totali)));
    EXPECT_EQ(0, scarico.ContaCertificati);
    EXPECT_EQ(15, scarico.ContaProduttori);
}

INSTANTIATE_TEST_SUITE_P(
    Casi, CodaConferimenti,
    ::testing::Values(
        CasoCoda{"Tipica",
                 {1500.5, 0, 200.25, 100, "500"},
                 QStringLiteral("9") + "999999999999999999999999999999" + "000002" + "000015" +
                     "000000000150050" + "000000000000000" + "000000000020025" + "000000000010000" +
                     "000000000160075" + "00000000050000" + "000000000110075" + Bianchi(153)},
        // Le somme passano per "##0.00" (arrotondate), il netto no: i
        // decimali oltre il secondo sono tagliati.
        CasoCoda{"TerzoDecimale",
                 {10.005, 0, 0, 0, ""},
                 QStringLiteral("9") + "999999999999999999999999999999" + "000002" + "000015" +
                     "000000000001001" + "000000000000000" + "000000000000000" + "000000000000000" +
                     "000000000001000" + "00000000000000" + "000000000001000" + Bianchi(153)},
        // Somme di doppie con i loro resti: il netto esatto a 15 cifre.
        CasoCoda{"SommeInDoppiaPrecisione",
                 {0.1 + 0.2, 0.7, 0, 0.3, "0,5"},
                 QStringLiteral("9") + "999999999999999999999999999999" + "000002" + "000015" +
                     "000000000000030" + "000000000000070" + "000000000000000" + "000000000000030" +
                     "000000000000070" + "00000000000050" + "000000000000020" + Bianchi(153)}),
    [](const ::testing::TestParamInfo<CasoCoda>& info) { return std::string(info.param.nome); });

TEST_F(TracciatoConferimentiUscita, CodaSenzaTotaliDiQuarantatreCaratteri)
{
    scarico.ContaCertificati = 1;
    const QString r = scarico.TRACCIATO_9(std::nullopt);
    EXPECT_TRUE(RecordUguale(QStringLiteral("9") + "999999999999999999999999999999" + "000001" + "000000", r));
    EXPECT_EQ(LunghezzaCodaSenzaTotali, r.size());
}

// ------------------------------------------------------------- in entrata

const QString Entrata0 = QStringLiteral("0") + "000000000000000000000000000000" + "2005/2006" + "0003" + "20060315" +
                         Sx("DISTILLERIA BOSCO SPA", 70) + "01234567890     " + "10" + "29" + "1" + Bianchi(157);

QString Entrata1(const QString& domanda)
{
    return QStringLiteral("1") + domanda + "29" + "000000000500" + "50" + Bianchi(272);
}

QString Entrata2(const QString& certificato, const QString& sigla)
{
    return QStringLiteral("2") + "00000004711" + Sx(certificato, 9) + sigla + "20051105" + "0001000" + "5000" +
           "0000050" + "2500" + "0000000" + "0000" + "       " + "    " + "00012506" + "2500" + Bianchi(213);
}

QString Entrata3(const QString& nome, const QString& colore)
{
    return QStringLiteral("3") + "       4711" + "12345    " + "AT" + "20051105" + "BNCGPP60B02A479X" + Sx(nome, 70) +
           "00000000123" + "00000805000" + "115000" + "000009257500" + "00000101234" + "00000000000" +
           "00000000000" + "00000000015050" + "00000000000000" + "00000000000000" + "00000000001200" + colore +
           "000000000016250" + "S" + "050" + Bianchi(33);
}

class TracciatoConferimentiEntrata : public ProvaConDatabase {
protected:
    void SetUp() override
    {
        ProvaConDatabase::SetUp();
        db();  // Tipo_2 e Tipo_3 cercano nel database della sessione
    }
};

TEST_F(TracciatoConferimentiEntrata, RecordInteriDellaFornitura)
{
    ASSERT_EQ(LunghezzaRecord, Entrata0.size());
    ASSERT_EQ(LunghezzaRecord, Entrata1("00000004711").size());
    ASSERT_EQ(LunghezzaRecord, Entrata2("12345", "AT").size());
    ASSERT_EQ(LunghezzaRecord, Entrata3("BIANCO GIUSEPPE", "RO").size());

    Carico c;
    EXPECT_EQ(0, c.LeggiRiga(Entrata0));
    EXPECT_EQ(1, c.LeggiRiga(Entrata1("00000004711")));
    EXPECT_EQ(2, c.LeggiRiga(Entrata2("12345", "AT")));
    EXPECT_EQ(3, c.LeggiRiga(Entrata3("BIANCO GIUSEPPE", "RO")));

    const IntestazioneCarico& f = c.Fornitura;
    EXPECT_EQ("2005/2006", f.Campagnafornitura);
    EXPECT_EQ("2005", f.CAMPAGNA);
    EXPECT_EQ("0003", f.PROGRESSIVO_fornitura);
    EXPECT_EQ("20060315", f.Data_forniture);
    EXPECT_EQ(Sx("DISTILLERIA BOSCO SPA", 70), f.Distilleria_RAGI_SOCI);
    EXPECT_EQ("01234567890     ", f.Distilleria_CODI_FISC);
    EXPECT_EQ("10", f.Numero_versione);
    EXPECT_EQ("29", f.ARTICOLO);
    EXPECT_EQ("1", f.QUADRATURA);

    ASSERT_EQ(2, c.Domande.size());
    const DomandaProduttoreSelezionata& d = c.Domande[1].Domanda;
    EXPECT_EQ("00000004711", d.DOMANDA);
    EXPECT_EQ("29", d.TIPO_ARTICOLO);
    EXPECT_EQ("500,50", d.ANTICIPO_RICEVUTO);
    EXPECT_EQ("", d.CAMPAGNA);

    ASSERT_EQ(2, c.Domande[1].Certificati.size());
    const UtfSelezionato& u = c.Domande[1].Certificati[1].Utf;
    EXPECT_EQ(0, u.iD_UTF);
    EXPECT_EQ(0, u.iD_DOMANDA);
    EXPECT_EQ("12345    ", u.NUMERO_CERTIFICATO_UTF);
    EXPECT_EQ("AT", u.SIGLA_UFFICIO_UTF_PROVINCIA);
    EXPECT_EQ("005", u.ISTAT_UFFICIO_UTF_PROVINCIA);
    EXPECT_EQ("ASTI", u.DESCR_UFFICIO_UTF_PROVINCIA);
    EXPECT_EQ("05/11/2005", u.DATA_EMISSIONE_CERTIFICATO);
    EXPECT_EQ("1000,5000", u.QTA_TOT_VINO_LAVORATO);
    EXPECT_EQ("50,2500", u.QTA_TOT_ALCOLE_NEUTRO_OTTENUTO);
    EXPECT_EQ("0,0000", u.QTA_TOT_ALCOLE_GREZZO_OTTENUTO);
    EXPECT_EQ("0,    ", u.QTA_TOT_ACQUAVITE_OTTENUTO);  // parte intera bianca
    EXPECT_EQ("12506,2500", u.QTA_TOT_ETTOGRADI_VINO_LAVORATO);
    EXPECT_EQ("1", u.QUADRATURA);

    ASSERT_EQ(2, c.Domande[1].Certificati[1].Produttori.size());
    const ProduttoreSelezionato& p = c.Domande[1].Certificati[1].Produttori[1];
    EXPECT_EQ("BNCGPP60B02A479X", p.CODI_FISC);
    EXPECT_EQ(Sx("BIANCO GIUSEPPE", 70), p.DENOMINAZIONE);
    EXPECT_EQ("00000000123", p.CODICE_CONTRATTO_DISTILLAZIONE);
    EXPECT_EQ("80,5000", p.QTA_VINO_EFFETIVAMENTE_DISTILLATA);
    EXPECT_EQ("11,5000", p.TITOLO_ALCOLOMETRICO_FATTURATO);
    EXPECT_EQ("925,7500", p.ETTOGRADI);
    EXPECT_EQ("10,1234", p.QTA_ALCOLE_NEUTRO);
    EXPECT_EQ("0,0000", p.QTA_ALCOLE_GREZZO);
    EXPECT_EQ("0,0000", p.QTA_ACQUAVITE);
    EXPECT_EQ("150,50", p.AIUTO_ALCOLE_NEUTRO);
    EXPECT_EQ("0,00", p.AIUTO_ALCOLE_GREZZO);
    EXPECT_EQ("0,00", p.AIUTO_ACQUAVITE);
    EXPECT_EQ("12,00", p.IMPORTO_DETRAIBILE);
    EXPECT_EQ("2", p.iD_COLORE);  // dal codice RO
    EXPECT_EQ("162,50", p.TOTALE_AIUTO);
    EXPECT_EQ("S", p.APPROVAZIONE_ANTICIPATA);
    EXPECT_EQ("050", p.PERC_APPROVAZIONE_ANTICIPATA);
    EXPECT_EQ("", p.CAMPAGNA_PRESCELTA);
    EXPECT_EQ("", p.QTA_MAX_DISTILLABILE);
    EXPECT_EQ("", p.QTA_VINO_DISTILLATA_AIUTO);
    EXPECT_EQ("", p.CODI_COLORE);
}

TEST_F(TracciatoConferimentiEntrata, ProvinciaEColoreSconosciutiLascianoICampiVuoti)
{
    QString produttore = Entrata3("ROSSI MARIO", "XX");
    produttore.replace(263, 4, QStringLiteral("N5  "));  // flag non "S", percentuale con spazi
    QString certificato = Entrata2("999", "ZZ");
    certificato.replace(23, 8, Bianchi(8));  // data bianca
    Carico c;
    c.LeggiRiga(Entrata1("00000004711"));
    c.LeggiRiga(certificato);
    c.LeggiRiga(produttore);
    const UtfSelezionato& u = c.Domande[1].Certificati[1].Utf;
    EXPECT_EQ("ZZ", u.SIGLA_UFFICIO_UTF_PROVINCIA);
    EXPECT_EQ("", u.ISTAT_UFFICIO_UTF_PROVINCIA);
    EXPECT_EQ("", u.DESCR_UFFICIO_UTF_PROVINCIA);
    EXPECT_EQ(Bianchi(10), u.DATA_EMISSIONE_CERTIFICATO);
    EXPECT_EQ("", u.QUADRATURA);  // nessuna testata letta
    const ProduttoreSelezionato& p = c.Domande[1].Certificati[1].Produttori[1];
    EXPECT_EQ("", p.iD_COLORE);
    EXPECT_EQ("", p.APPROVAZIONE_ANTICIPATA);
    EXPECT_EQ("5  ", p.PERC_APPROVAZIONE_ANTICIPATA);
    EXPECT_EQ(Sx("ROSSI MARIO", 70), p.DENOMINAZIONE);
}

TEST_F(TracciatoConferimentiEntrata, QuadraturaBiancaValeZeroEArrivaAOgniCertificato)
{
    QString testata = Entrata0;
    testata[142] = QLatin1Char(' ');
    Carico c;
    c.LeggiRiga(testata);
    c.LeggiRiga(Entrata1("00000004711"));
    c.LeggiRiga(Entrata2("1", "AT"));
    c.LeggiRiga(Entrata1("00000004712"));
    c.LeggiRiga(Entrata2("2", "AT"));
    EXPECT_EQ("0", c.Fornitura.QUADRATURA);
    EXPECT_EQ("0", c.Domande[1].Certificati[1].Utf.QUADRATURA);
    EXPECT_EQ("0", c.Domande[2].Certificati[1].Utf.QUADRATURA);
}

TEST_F(TracciatoConferimentiEntrata, OgniCertificatoTieneIPropriProduttori)
{
    Carico c;
    for (const QString& r : {Entrata0, Entrata1("00000004711"), Entrata2("C1", "AT"), Entrata3("P1", "BI"),
                             Entrata3("P2", "RO"), Entrata2("C2", "AT"), Entrata3("P3", "RS"),
                             Entrata1("00000004712"), Entrata2("C3", "CN"), Entrata3("P4", "RO")})
        c.LeggiRiga(r);
    ASSERT_EQ(2, c.NumeroDomande);
    ASSERT_EQ(3, c.Domande[1].Certificati.size());
    const auto& primo = c.Domande[1].Certificati[1];
    const auto& secondo = c.Domande[1].Certificati[2];
    ASSERT_EQ(3, primo.Produttori.size());
    EXPECT_EQ(Sx("P1", 70), primo.Produttori[1].DENOMINAZIONE);
    EXPECT_EQ("1", primo.Produttori[1].iD_COLORE);
    EXPECT_EQ(Sx("P2", 70), primo.Produttori[2].DENOMINAZIONE);
    ASSERT_EQ(2, secondo.Produttori.size());
    EXPECT_EQ(Sx("P3", 70), secondo.Produttori[1].DENOMINAZIONE);
    EXPECT_EQ("3", secondo.Produttori[1].iD_COLORE);
    ASSERT_EQ(2, c.Domande[2].Certificati.size());
    EXPECT_EQ("CUNEO", c.Domande[2].Certificati[1].Utf.DESCR_UFFICIO_UTF_PROVINCIA);
    EXPECT_EQ(Sx("P4", 70), c.Domande[2].Certificati[1].Produttori[1].DENOMINAZIONE);
}

TEST_F(TracciatoConferimentiEntrata, CodaETipiSconosciutiSaltati)
{
    Carico c;
    c.LeggiRiga(Entrata1("00000004711"));
    c.LeggiRiga(Entrata2("C1", "AT"));
    QString coda = QStringLiteral("9") + QString(29, QLatin1Char('9')) + "000001000001";
    QString cinque = Entrata2("C9", "AT");
    cinque[0] = QLatin1Char('5');
    EXPECT_EQ(-1, c.LeggiRiga(coda));
    EXPECT_EQ(-1, c.LeggiRiga(cinque));
    EXPECT_EQ(1, c.NumeroCertificati);
    EXPECT_EQ(2, c.Domande[1].Certificati.size());
}

TEST_F(TracciatoConferimentiEntrata, RecordFuoriPostoSonoErroriDiEsecuzione)
{
    // Un produttore prima di ogni certificato; un certificato prima di ogni domanda.
    const QList<QStringList> casi = {{Entrata1("00000004711"), Entrata3("P1", "RO")}, {Entrata2("C1", "AT")}};
    for (const QStringList& righe : casi) {
        Carico c;
        try {
            for (const QString& r : righe)
                c.LeggiRiga(r);
            ADD_FAILURE() << "nessun errore per il record " << righe.last().left(1);
        } catch (const ErroreSistema& e) {
            EXPECT_EQ(9, e.numero());
        }
    }
}

// ----------------------------------------------- dal database della sessione

class TracciatoConferimentiDatabase : public ProvaConDatabase {
protected:
    // Una domanda con un certificato e i produttori dati (aiuti neutro,
    // grezzo, acquavite, detraibile); restituisce la chiave del certificato.
    qint64 Domanda(const QString& numero, const QString& anticipo, const QList<QStringList>& aiuti)
    {
        Database& d = db();
        const qint64 id = d.InserisciRiga(QStringLiteral("DOMANDE_PRODUTTORI"),
                                          {{"DOMANDA", numero}, {"TIPO_ARTICOLO", "29"}, {"ANTICIPO_RICEVUTO", anticipo}});
        const qint64 utf = d.InserisciRiga(QStringLiteral("TAB_UTF"),
                                           {{"iD_DOMANDA", id},
                                            {"NUMERO_CERTIFICATO_UTF", "12345"},
                                            {"SIGLA_UFFICIO_UTF_PROVINCIA", "AT"},
                                            {"DATA_EMISSIONE_CERTIFICATO", "05/11/2005"},
                                            {"QTA_TOT_VINO_LAVORATO", "1000,5"},
                                            {"QTA_TOT_ALCOLE_NEUTRO_OTTENUTO", "50,25"},
                                            {"QTA_TOT_ETTOGRADI_VINO_LAVORATO", "12506,25"}});
        int n = 0;
        for (const QStringList& a : aiuti) {
            const auto valore = [](const QString& v) { return v == "NULL" ? QVariant() : QVariant(v); };
            const qint64 p = d.InserisciRiga(QStringLiteral("PRODUTTORI"),
                                             {{"CODI_FISC", "BNCGPP60B02A479X"},
                                              {"DENOMINAZIONE", QStringLiteral("PRODUTTORE %1").arg(++n)},
                                              {"CODICE_CONTRATTO_DISTILLAZIONE", "123"},
                                              {"AIUTO_ALCOLE_NEUTRO", valore(a[0])},
                                              {"AIUTO_ALCOLE_GREZZO", valore(a[1])},
                                              {"AIUTO_ACQUAVITE", valore(a[2])},
                                              {"IMPORTO_DETRAIBILE", valore(a[3])},
                                              {"ID_COLORE", 2}});
            d.InserisciRiga(QStringLiteral("TAB_ID_UTF_PRODUTTORE"), {{"iD_UTF", utf}, {"iD_PRODUTTORE", p}});
        }
        return utf;
    }
};

TEST_F(TracciatoConferimentiDatabase, TotaliDelleDueQuery)
{
    Domanda("00000004711", "500,00",
            {{"1000,25", "", "100,10", "10,00"}, {"500,25", "NULL", " ", "2,5"}, {"0,50", "20", "0", ""}});
    Domanda("00000009999", "1,00", {{"7", "7", "7", "7"}});  // un'altra domanda, non conta
    const auto totali = LeggiTotali(QStringLiteral("00000004711"));
    ASSERT_TRUE(totali.has_value());
    EXPECT_DOUBLE_EQ(1501.0, totali->T_aIUTO_NEUTRO);
    EXPECT_DOUBLE_EQ(20.0, totali->t_AIUTO_GREZZO);
    EXPECT_DOUBLE_EQ(100.1, totali->T_AIUTO_ACQUAVITE);
    EXPECT_DOUBLE_EQ(12.5, totali->t_DETRA);
    EXPECT_EQ("500,00", totali->ANTICIPO_RICEVUTO);

    Scarico s;
    s.DomandaRicordata = QStringLiteral("00000004711");
    s.ContaCertificati = 1;
    s.ContaProduttori = 3;
    const QString atteso = QStringLiteral("9") + "999999999999999999999999999999" + "000001" + "000003" +
                           "000000000150100" + "000000000002000" + "000000000010010" + "000000000001250" +
                           "000000000160860" + "00000000050000" + "000000000110860" + Bianchi(153);
    EXPECT_TRUE(RecordUguale(atteso, s.TRACCIATO_9()));
}

TEST_F(TracciatoConferimentiDatabase, DomandaSenzaProduttoriDaCodaCorta)
{
    Domanda("00000004711", "500,00", {});
    Scarico s;
    s.DomandaRicordata = QStringLiteral("00000004711");
    s.ContaCertificati = 1;
    EXPECT_FALSE(LeggiTotali(QStringLiteral("00000004711")).has_value());
    const QString r = s.TRACCIATO_9();
    EXPECT_TRUE(RecordUguale(QStringLiteral("9") + "999999999999999999999999999999" + "000001" + "000000", r));
}

TEST_F(TracciatoConferimentiDatabase, RigheDelleListeDiScarico)
{
    const qint64 utf = Domanda("00000004711", "500,00", {{"150,5", "0,00", "0", "12"}});
    Database& d = db();
    // La lista dei certificati porta alcune colonne di TAB_UTF due volte.
    Recordset certificati = d.OpenRecordset(
        QStringLiteral("SELECT DOMANDE_PRODUTTORI.*,TAB_UTF.*, TAB_UTF.ID_DOMANDA,TAB_UTF.NUMERO_CERTIFICATO_UTF, "
                       "TAB_UTF.DESCR_UFFICIO_UTF_PROVINCIA,TAB_UTF.DATA_EMISSIONE_CERTIFICATO "
                       "From DOMANDE_PRODUTTORI LEFT JOIN TAB_UTF "
                       " ON DOMANDE_PRODUTTORI.ID_DOMANDA_PRODUTTORE = TAB_UTF.iD_DOMANDA "
                       " WHERE DOMANDE_PRODUTTORI.DOMANDA = ?"),
        {QStringLiteral("00000004711")});
    ASSERT_FALSE(certificati.eof());
    Scarico s;
    const QString atteso1 = QStringLiteral("1") + "00000004711" + "12345    " + "AT" + "20051105" + "00010005000" +
                            "00000502500" + "00000000000" + "00000000000" + "000125062500" + Bianchi(213);
    EXPECT_TRUE(RecordUguale(atteso1, s.TRACCIATO_1(RigaRecordset(certificati))));

    Recordset produttori = d.OpenRecordset(
        QStringLiteral("SELECT TAB_ID_UTF_PRODUTTORE.iD_TAB_ID_UP, PRODUTTORI.* "
                       "FROM TAB_UTF INNER JOIN (PRODUTTORI INNER JOIN  TAB_ID_UTF_PRODUTTORE ON "
                       "PRODUTTORI.iD_PRODUTTORI = TAB_ID_UTF_PRODUTTORE.iD_PRODUTTORE) "
                       "ON TAB_UTF.iD_UTF = TAB_ID_UTF_PRODUTTORE.iD_UTF  WHERE TAB_ID_UTF_PRODUTTORE.iD_UTF= ?"),
        {utf});
    ASSERT_FALSE(produttori.eof());
    const QString atteso2 = QStringLiteral("2") + "00000004711" + "12345    " + "AT" + "20051105" +
                            "BNCGPP60B02A479X" + Sx("PRODUTTORE 1", 70) + "00000000123" + "00000000000" +
                            "000000" + "000000000000" + "00000000000" + "00000000000" + "00000000000" +
                            "00000000015050" + "00000000000000" + "00000000000000" + "00000000001200" + "02" + " " +
                            "000" + Bianchi(48);
    EXPECT_TRUE(RecordUguale(atteso2, s.TRACCIATO_2(RigaRecordset(produttori))));
}

}  // namespace
