// Calcolo automatico delle quote e degli aiuti del produttore: calcolo pieno,
// confronto al salvataggio, controlli di grandezza e formati dei testi.
#include "common/errore.h"
#include "common/numeri.h"
#include "deliveries/CalcoloAiuti.h"
#include "shell/session_state.h"
#include "support/piattaforma_script.h"

#include <gtest/gtest.h>

// Stampa leggibile dei testi nei messaggi di GoogleTest.
static void PrintTo(const QString& s, std::ostream* os) { *os << '"' << s.toStdString() << '"'; }

namespace {

const QString MsgTroppoGrande = QStringLiteral("La quantità ottenuta di calcolo è troppo grande");
const QString InizioDifferenze = QStringLiteral("Si sono rilevate delle differenze nei calcoli Automatici : ");
const int StileTroppoGrande = StileMsg::OK + StileMsg::Informazione;

class CalcoloAiutiTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        script = &InstallaPiattaformaScript();
        sessione().UtfSel = UtfSelezionato{};
    }
    void TearDown() override { sessione().UtfSel = UtfSelezionato{}; }

    static void Certificato(const QString& ettogradi, const QString& grezzo, const QString& neutro,
                            const QString& acquavite)
    {
        UtfSelezionato& utf = sessione().UtfSel;
        utf.QTA_TOT_ETTOGRADI_VINO_LAVORATO = ettogradi;
        utf.QTA_TOT_ALCOLE_GREZZO_OTTENUTO = grezzo;
        utf.QTA_TOT_ALCOLE_NEUTRO_OTTENUTO = neutro;
        utf.QTA_TOT_ACQUAVITE_OTTENUTO = acquavite;
    }

    // L'esempio: E = 120 (1000 x 0,12) su T = 1000.
    void Esempio(const QString& articolo)
    {
        Certificato("1000", "50", "20", "10");
        txt[2] = articolo;
        txt[13] = "1000";
        txt[16] = "0,12";
    }

    // Il messaggio di CtrlQuantita ha solo OK: la risposta va messa in coda.
    void PrevediTroppoGrande() { script->Rispondi(RispostaMsg::OK); }

    void AttendiTroppoGrande(int quanti = 1)
    {
        ASSERT_EQ(script->messaggi.size(), quanti);
        for (const MessaggioRegistrato& m : script->messaggi) {
            EXPECT_EQ(m.testo, MsgTroppoGrande);
            EXPECT_EQ(m.stile, StileTroppoGrande);
            EXPECT_EQ(m.titolo, QStringLiteral("Produttore"));
        }
    }

    PiattaformaScript* script = nullptr;
    QMap<int, QString> txt;
    CalcoloAiuti calcolo{txt};
};

// --- L'esempio e i due articoli -------------------------------------------

TEST_F(CalcoloAiutiTest, EsempioArticolo29)
{
    Esempio("29");
    calcolo.calcoliAutomatici(true);

    EXPECT_TRUE(script->messaggi.isEmpty());
    EXPECT_EQ(txt[17], "120,0000");
    EXPECT_EQ(txt[18], "6,0000");
    EXPECT_EQ(txt[21], "1050,60");
    EXPECT_EQ(txt[19], "2,4000");
    EXPECT_EQ(txt[22], "452,16");
    EXPECT_EQ(txt[20], "1,2000");
    EXPECT_EQ(txt[23], "210,12");
    EXPECT_EQ(txt[24], "0,00");
    EXPECT_EQ(txt[25], "1712,88");
    EXPECT_TRUE(calcolo.SalvaAbilitato());

    // Le variabili restano non arrotondate, l'aiuto in doppia precisione a 15 cifre.
    EXPECT_TRUE(Decimale(calcolo.CalcQtaGrezzo()) == Decimale(6));
    EXPECT_TRUE(Decimale(calcolo.CalcAiutoGrezzo()) == Decimale("1050,6"));
    EXPECT_TRUE(Decimale(calcolo.CalcAiutoNeutro()) == Decimale("452,16"));
    EXPECT_TRUE(Decimale(calcolo.CalcEttogradi()) == Decimale(120));

    // Appena calcolato, il confronto non trova nulla e riscrive il totale.
    txt[25] = "";
    EXPECT_EQ(calcolo.CTRL_calcoliAutomatici(), QString());
    EXPECT_EQ(txt[25], "1712,88");
    EXPECT_TRUE(script->messaggi.isEmpty());
}

TEST_F(CalcoloAiutiTest, EsempioArticolo30)
{
    Esempio("30");
    calcolo.calcoliAutomatici(true);

    EXPECT_EQ(txt[18], "6,0000");
    EXPECT_EQ(txt[21], "673,32");
    EXPECT_EQ(txt[22], "269,33");  // 269,328
    EXPECT_EQ(txt[23], "134,66");  // 134,664
    // Somma degli aiuti non arrotondati: 1077,312.
    EXPECT_EQ(txt[25], "1077,31");

    // L'aiuto scritto arrotondato (269,33) contro quello troncato (269,32):
    // la differenza di un centesimo segnala proprio il valore nel campo.
    EXPECT_EQ(calcolo.CTRL_calcoliAutomatici(),
              InizioDifferenze + "\r\nIl valore calcolato degli Aiuto alcole neutro é 269,33");
    EXPECT_TRUE(script->messaggi.isEmpty());
}

TEST_F(CalcoloAiutiTest, AliquoteDalSoloArticolo)
{
    struct Caso {
        const char* articolo;
        const char* grezzo;
        const char* neutro;
        const char* acquavite;
    };
    const Caso casi[] = {
        {"29", "1.751", "1.884", "1.751"}, {"30", "1.1222", "1.1222", "1.1222"},
        {"", "1.1222", "1.1222", "1.1222"}, {" 29", "1.1222", "1.1222", "1.1222"},
        {"29 ", "1.1222", "1.1222", "1.1222"},
    };
    for (const Caso& c : casi) {
        SCOPED_TRACE(c.articolo);
        txt.clear();
        txt[2] = c.articolo;
        calcolo.calcoliAutomatici(false);
        EXPECT_EQ(calcolo.AliquotaGrezzo(), c.grezzo);
        EXPECT_EQ(calcolo.AliquotaNeutro(), c.neutro);
        EXPECT_EQ(calcolo.AliquotaAcquavite(), c.acquavite);
        txt[2] = c.articolo == QString("29") ? "30" : "29";
        calcolo.CTRL_calcoliAutomatici();
        EXPECT_NE(calcolo.AliquotaGrezzo(), c.grezzo) << "il confronto riprende le aliquote";
    }
}

TEST_F(CalcoloAiutiTest, IlTotaleUsaLeAliquoteDellUltimoCalcolo)
{
    Esempio("29");
    calcolo.calcoliAutomatici(true);
    txt[2] = "30";
    EXPECT_EQ(calcolo.fun_Totale(), "1712,88");
    EXPECT_EQ(calcolo.AliquotaGrezzo(), "1.751");
}

// --- Aritmetica -------------------------------------------------------------

TEST_F(CalcoloAiutiTest, QuozienteDecimaleA28Cifre)
{
    // 100 / 300 a 28 cifre, per 3: la quota resta 0,999... e si mostra 1,0000.
    Certificato("300", "3", "0", "3");
    txt[2] = "29";
    txt[13] = "1";
    txt[16] = "1";
    txt[17] = "100";
    calcolo.calcoliAutomatici(false);
    EXPECT_EQ(calcolo.CalcQtaGrezzo(), "0,9999999999999999999999999999");
    EXPECT_EQ(txt[18], "1,0000");
    EXPECT_EQ(txt[21], "175,10");
    EXPECT_EQ(txt[20], "1,0000");
    EXPECT_EQ(txt[23], "175,10");
    EXPECT_TRUE(script->messaggi.isEmpty());
}

TEST_F(CalcoloAiutiTest, AiutiInDoppiaPrecisioneEInDecimale)
{
    // Grezzo e neutro in doppia precisione (testo a 15 cifre), acquavite in decimale.
    const QString quota = "0,123456789012345678";
    Certificato("1", quota, quota, quota);
    txt[2] = "29";
    txt[13] = "1";
    txt[16] = "1";
    txt[17] = "1";
    calcolo.calcoliAutomatici(false);
    EXPECT_EQ(calcolo.CalcQtaGrezzo(), quota);
    EXPECT_EQ(calcolo.CalcAiutoGrezzo(), "21,6172837560617");
    EXPECT_EQ(calcolo.CalcAiutoNeutro(), "23,2592590499259");
    EXPECT_EQ(calcolo.CalcAiutoAcquavite(), "21,6172837560617282178");
    EXPECT_EQ(txt[21], "21,62");
    EXPECT_EQ(txt[23], "21,62");
    EXPECT_EQ(txt[25], "66,49");
}

TEST_F(CalcoloAiutiTest, AiutoPiccolissimoInNotazioneEsponenziale)
{
    // Sotto 1E-5 la doppia precisione si scrive con l'esponente: "1,751E-06".
    // Formatta2dec lo taglia in "1,75", e il confronto segnala una differenza
    // che mostra 0,00, lo stesso valore del campo.
    Certificato("1000000", "0,01", "0", "0");
    txt[2] = "29";
    txt[13] = "1";
    txt[16] = "1";
    txt[17] = "1";
    calcolo.calcoliAutomatici(false);
    EXPECT_EQ(calcolo.CalcAiutoGrezzo(), "1,751E-06");
    EXPECT_EQ(txt[18], "0,0000");
    EXPECT_EQ(txt[21], "0,00");
    EXPECT_EQ(calcolo.CTRL_calcoliAutomatici(),
              InizioDifferenze + "\r\nIl valore calcolato degli Aiuto alcole grezzo é 0,00");
    EXPECT_TRUE(script->messaggi.isEmpty());
}

TEST_F(CalcoloAiutiTest, EttogradiInDecimale)
{
    Certificato("1000000", "0", "0", "0");
    txt[2] = "29";
    txt[13] = "1234,5678";
    txt[16] = "12,3456";
    calcolo.calcoliAutomatici(true);
    EXPECT_TRUE(Decimale(calcolo.CalcEttogradi()) == Decimale("15241,48023168"));
    EXPECT_EQ(txt[17], "15241,4802");
}

TEST_F(CalcoloAiutiTest, ArrotondamentoPariDegliAiutiControFormatAllontanato)
{
    // Quote 0,15 e 0,25: aiuti 26,265 e 43,775 (spareggi esatti a 15 cifre).
    struct Caso {
        const char* quota;
        const char* aiuto;
    };
    for (const Caso& c : {Caso{"0,15", "26,26"}, Caso{"0,25", "43,78"}}) {
        SCOPED_TRACE(c.quota);
        Certificato("1000", c.quota, "0", c.quota);
        txt.clear();
        txt[2] = "29";
        txt[13] = "1";
        txt[16] = "1";
        txt[17] = "1000";
        calcolo.calcoliAutomatici(false);
        EXPECT_EQ(txt[21], c.aiuto) << "doppia precisione, Round pari";
        EXPECT_EQ(txt[23], c.aiuto) << "decimale, Round pari";
    }
    // La quota invece si mostra con Format, che allontana da zero, e resta
    // intera nella variabile.
    Certificato("1000", "0,05", "0", "0");
    txt[17] = "1";
    calcolo.calcoliAutomatici(false);
    EXPECT_EQ(txt[18], "0,0001");
    EXPECT_TRUE(Decimale(calcolo.CalcQtaGrezzo()) == Decimale("0,00005"));
}

// --- calcoliAutomatici: percorsi e casi limite ----------------------------

TEST_F(CalcoloAiutiTest, SenzaVinoOTitoloSoloIlTotale)
{
    for (int manca : {13, 16}) {
        SCOPED_TRACE(manca);
        Esempio("29");
        txt[manca] = "  ";
        txt[17] = "120";
        txt[18] = "x";
        txt[21] = "";
        txt[24] = "";
        txt[25] = "99";
        calcolo.calcoliAutomatici(false);
        EXPECT_EQ(txt[17], "120");
        EXPECT_EQ(txt[18], "x");
        EXPECT_EQ(txt[21], "0,00");
        EXPECT_EQ(txt[22], "0,00");
        EXPECT_EQ(txt[24], "0,00");
        EXPECT_EQ(txt[25], "0,00");
    }
}

TEST_F(CalcoloAiutiTest, EttogradiVuotiOZeroSiRiempionoSenzaQuote)
{
    for (const char* ettogradi : {"", "0,0000"}) {
        SCOPED_TRACE(ettogradi);
        txt.clear();
        Esempio("29");
        txt[17] = ettogradi;
        txt[18] = "";
        calcolo.calcoliAutomatici(false);
        EXPECT_EQ(txt[17], "120,0000");
        EXPECT_EQ(txt[18], "") << "le quote vengono al giro successivo";
        EXPECT_EQ(txt[25], "0,00");
        calcolo.calcoliAutomatici(false);
        EXPECT_EQ(txt[18], "6,0000");
        EXPECT_EQ(txt[25], "1712,88");
    }
    // Qui gli Ettogradi non hanno controllo di grandezza.
    txt.clear();
    txt[2] = "29";
    txt[13] = "100000000";
    txt[16] = "1";
    txt[17] = "";
    calcolo.calcoliAutomatici(false);
    EXPECT_EQ(txt[17], "100000000,0000");
    EXPECT_TRUE(script->messaggi.isEmpty());
}

TEST_F(CalcoloAiutiTest, CertificatoSenzaAcquavite)
{
    for (const char* acquavite : {"0", ""}) {
        SCOPED_TRACE(acquavite);
        Esempio("29");
        sessione().UtfSel.QTA_TOT_ACQUAVITE_OTTENUTO = acquavite;
        calcolo.calcoliAutomatici(true);
        EXPECT_TRUE(script->messaggi.isEmpty());
        EXPECT_EQ(txt[20], "0,0000");
        EXPECT_EQ(txt[23], "0,00");
        EXPECT_EQ(txt[25], "1502,76");  // 1050,6 + 452,16
        EXPECT_EQ(calcolo.CTRL_calcoliAutomatici(), QString());
    }
}

TEST_F(CalcoloAiutiTest, CtrlQuantitaFallisceAOgniChiamata)
{
    // Ogni caso fa fallire una chiamata diversa; il campo si svuota, il giro
    // finisce: i campi seguenti e il totale restano come erano.
    struct Caso {
        const char* nome;
        bool conEttogradi;
        const char* vino;
        const char* ettogradi;  // campo 17 quando non si ricalcola
        const char* grezzo;
        const char* neutro;
        const char* acquavite;
        const char* detrazione;
        int svuotato;  // 0: fallisce il totale
    };
    const Caso casi[] = {
        {"ettogradi", true, "100000000", "", "1", "1", "1", "", 17},
        {"quota grezzo", false, "1", "1", "12345678", "1", "1", "", 18},
        {"quota neutro", false, "1", "1", "1", "1234567,5", "1", "", 19},
        {"quota acquavite", false, "1", "1", "1", "1", "10000000", "", 20},
        {"totale", false, "1", "1", "0", "0", "0", "12345678901234", 0},
    };
    for (const Caso& c : casi) {
        SCOPED_TRACE(c.nome);
        script->messaggi.clear();
        txt.clear();
        Certificato("1", c.grezzo, c.neutro, c.acquavite);
        txt[2] = "29";
        txt[13] = c.vino;
        txt[16] = "1";
        txt[17] = c.ettogradi;
        for (int i = 18; i <= 23; ++i)
            txt[i] = "prima";
        txt[24] = c.detrazione;
        txt[25] = "prima";
        PrevediTroppoGrande();
        calcolo.calcoliAutomatici(c.conEttogradi);
        AttendiTroppoGrande();
        EXPECT_FALSE(calcolo.SalvaAbilitato());
        if (c.svuotato == 0) {
            EXPECT_EQ(txt[25], "0,00");
            continue;
        }
        EXPECT_EQ(txt[c.svuotato], "");
        EXPECT_EQ(txt[25], "prima");
        for (int i = 18; i <= 23; ++i) {
            const bool scritto = (i == 18 || i == 21) ? c.svuotato > 18
                               : (i == 19 || i == 22) ? c.svuotato > 19
                                                       : false;
            if (i != c.svuotato && !scritto) {
                EXPECT_EQ(txt[i], "prima") << i;
            }
        }
    }
}

TEST_F(CalcoloAiutiTest, TotaleNegativoEIlSegnoComeCifra)
{
    Esempio("29");
    txt[24] = "2000";
    calcolo.calcoliAutomatici(true);
    EXPECT_EQ(txt[25], "-287,12");

    // Solo detrazione: il segno occupa una delle 13 posizioni.
    txt.clear();
    txt[2] = "29";
    txt[24] = "12345678901,5";
    EXPECT_EQ(calcolo.fun_Totale(), "-12345678901,50");
    EXPECT_TRUE(script->messaggi.isEmpty());
    txt[24] = "123456789012,5";
    PrevediTroppoGrande();
    EXPECT_EQ(calcolo.fun_Totale(), "0,00");
    AttendiTroppoGrande();
    EXPECT_FALSE(calcolo.SalvaAbilitato());
}

TEST_F(CalcoloAiutiTest, IlTotaleSommaGliAiutiCalcolatiNonITesti)
{
    Esempio("29");
    calcolo.calcoliAutomatici(true);  // fun_Totale usa le aliquote dell'ultimo calcolo
    txt[21] = "1,00";   // conta, ma per 1050,6
    txt[22] = "";       // non conta: diventa 0,00
    txt[23] = "0,00";   // non conta
    txt[24] = "0,50";   // entra come scritto
    EXPECT_EQ(calcolo.fun_Totale(), "1050,10");
    EXPECT_EQ(txt[21], "1,00");
    EXPECT_EQ(txt[22], "0,00");
    EXPECT_EQ(txt[23], "0,00");

    // Aiuto grezzo vuoto dopo un giro fallito: la quota c'è, l'aiuto no.
    txt[18] = "6,0000";
    txt[21] = "";
    txt[22] = "452,16";
    txt[24] = "";
    EXPECT_EQ(calcolo.fun_Totale(), "452,16");
    EXPECT_EQ(txt[21], "0,00");
}

TEST_F(CalcoloAiutiTest, EttogradiDelCertificatoNulliSollevanoLaDivisione)
{
    for (const char* totale : {"0", "", "0,0000"}) {
        SCOPED_TRACE(totale);
        Esempio("29");
        sessione().UtfSel.QTA_TOT_ETTOGRADI_VINO_LAVORATO = totale;
        txt[17] = "120";
        try {
            calcolo.calcoliAutomatici(false);
            ADD_FAILURE() << "attesa la divisione per zero";
        } catch (const ErroreSistema& e) {
            EXPECT_EQ(e.numero(), CodiciErrore::DivisionePerZero);
        }
        txt[21] = "1,00";
        EXPECT_THROW(calcolo.fun_Totale(), ErroreSistema);
        txt[17] = "120,0000";
        EXPECT_THROW(calcolo.ControllaCalcoliAlSalvataggio(), ErroreSistema);
    }
    EXPECT_TRUE(script->messaggi.isEmpty());
}

// --- CtrlQuantita, Formatta2dec, formattaAutomatico ------------------------

TEST_F(CalcoloAiutiTest, CtrlQuantitaEPulsanteSalva)
{
    struct Caso {
        const char* valore;
        int cifre;
        bool passa;
    };
    const Caso casi[] = {
        {"12345678", 8, true},    {"12345678,5", 8, false}, {"1234567,5", 8, true},
        {"123456789", 8, false},  {"-1234567", 8, true},    {"-12345678", 8, false},
        {"-1234567,5", 8, false}, {"", 13, true},           {"1000000,0000", 7, false},
        {"999999,9999", 7, true}, {"12,", 2, false},        {",5", 1, true},
    };
    for (const Caso& c : casi) {
        SCOPED_TRACE(c.valore);
        script->messaggi.clear();
        if (!c.passa)
            PrevediTroppoGrande();
        EXPECT_EQ(calcolo.CtrlQuantita(c.valore, c.cifre), c.passa);
        EXPECT_EQ(calcolo.SalvaAbilitato(), c.passa);
        if (c.passa) {
            EXPECT_TRUE(script->messaggi.isEmpty());
        } else {
            AttendiTroppoGrande();
        }
    }
    // Salva resta spento fino al prossimo controllo riuscito.
    PrevediTroppoGrande();
    calcolo.CtrlQuantita("123456789", 8);
    EXPECT_FALSE(calcolo.SalvaAbilitato());
    calcolo.CtrlQuantita("1", 8);
    EXPECT_TRUE(calcolo.SalvaAbilitato());
}

TEST(Formatta2dec, TroncaEnonArrotonda)
{
    const std::pair<const char*, const char*> casi[] = {
        {"5", "5,00"},       {"5,1", "5,10"},       {"5,129", "5,12"},    {"12,349", "12,34"},
        {"12,999", "12,99"}, {"1050,6", "1050,60"}, {"0,005", "0,00"},    {"1,25", "1,25"},
        {"123", "123,00"},   {"-3,456", "-3,45"},   {"-287,1", "-287,10"}, {"5,", "5,"},
        {"", ""},
    };
    for (const auto& [valore, atteso] : casi)
        EXPECT_EQ(Formatta2dec(valore), QString(atteso)) << valore;
}

TEST_F(CalcoloAiutiTest, FormaNormaleDeiCampi)
{
    struct Caso {
        int indice;
        const char* testo;
        const char* atteso;
    };
    const Caso casi[] = {
        {10, "", "0,0000"},          {13, "12,5", "12,5000"},   {14, "  ", "0,0000"},
        {16, ",5", "0,5000"},        {17, "1,23465", "1,2347"}, {18, "6", "6,0000"},
        {20, "0,00005", "0,0001"},   {21, "", "0,00"},          {22, "1,005", "1,01"},
        {23, "12,345", "12,35"},     {24, ",5", "0,50"},        {25, "1712,88", "1712,88"},
        {25, "-287,12", "0-287,12"},  // lo "0" davanti rende il testo non numerico: resta così
        {11, "3", "03"},             {11, "", ""},              {12, "3", "3"},
        {15, "ROSSO", "ROSSO"},      {26, "5", "5"},
    };
    for (const Caso& c : casi) {
        SCOPED_TRACE(c.indice);
        txt[c.indice] = c.testo;
        calcolo.formattaAutomatico(c.indice);
        EXPECT_EQ(txt[c.indice], c.atteso) << c.testo;
    }
}

// --- CTRL_calcoliAutomatici ---------------------------------------------------

TEST_F(CalcoloAiutiTest, ConfrontoEttogradiDiversiFermaIProdotti)
{
    Esempio("29");
    calcolo.calcoliAutomatici(true);
    txt[17] = "100";
    txt[18] = "qualunque";
    // Il totale invece si ricalcola dagli Ettogradi del campo (100): 1427,40.
    EXPECT_EQ(calcolo.CTRL_calcoliAutomatici(), InizioDifferenze +
                                                    "\r\nIl valore calcolato degli Ettogradi é 120,0000\r\n"
                                                    "\r\nIl valore calcolato degli Totale aiuto é 1427,40");
    EXPECT_EQ(txt[25], "1712,88") << "con differenze il totale non si riscrive";
}

TEST_F(CalcoloAiutiTest, ConfrontoQuoteAsimmetricoEAiutiSoloSeLaQuotaCombacia)
{
    Esempio("29");
    calcolo.calcoliAutomatici(true);
    // Grezzo: testo nudo, "6" non è "6,0000". Neutro: testo formattato, "2,4" va bene.
    txt[18] = "6";
    txt[21] = "1";      // non esaminato: la quota differisce già
    txt[19] = "2,4";
    txt[22] = "452,1";  // esaminato: differisce
    txt[20] = "1,2000";
    txt[23] = "210,12";
    txt[25] = "1712,88";
    EXPECT_EQ(calcolo.CTRL_calcoliAutomatici(), InizioDifferenze +
                                                    "\r\nIl valore calcolato degli Quantità alcole grezzo é 6,0000"
                                                    "\r\nIl valore calcolato degli Aiuto alcole neutro é 452,16");
    EXPECT_TRUE(script->messaggi.isEmpty());
}

TEST_F(CalcoloAiutiTest, ConfrontoDelTotale)
{
    Esempio("29");
    calcolo.calcoliAutomatici(true);
    txt[25] = "1700";
    EXPECT_EQ(calcolo.CTRL_calcoliAutomatici(),
              InizioDifferenze + "\r\nIl valore calcolato degli Totale aiuto é 1712,88");
    // "0,00" nel totale non si confronta: si riscrive.
    txt[25] = "0,00";
    EXPECT_EQ(calcolo.CTRL_calcoliAutomatici(), QString());
    EXPECT_EQ(txt[25], "1712,88");
    // Senza Ettogradi i prodotti non si esaminano; il totale sì, e con
    // Ettogradi vuoti gli aiuti ricalcolati valgono zero.
    txt[17] = "";
    txt[18] = "diverso";
    txt[25] = "1712,88";
    EXPECT_EQ(calcolo.CTRL_calcoliAutomatici(), InizioDifferenze + "\r\nIl valore calcolato degli Totale aiuto é 0,00");
    EXPECT_TRUE(script->messaggi.isEmpty());
}

TEST_F(CalcoloAiutiTest, OverflowNelConfronto)
{
    // Una quota di 1000000 passa il calcolo (intero di 7 cifre) ma nel confronto
    // si controlla il valore formattato, "1000000,0000": overflow.
    Certificato("1000", "1000000", "20", "10");
    txt[2] = "29";
    txt[13] = "1000";
    txt[16] = "1";
    calcolo.calcoliAutomatici(true);
    EXPECT_EQ(txt[18], "1000000,0000");
    EXPECT_TRUE(script->messaggi.isEmpty());

    txt[18] = "1";
    txt[19] = "5";  // anche una differenza: vince l'overflow
    PrevediTroppoGrande();
    EXPECT_EQ(calcolo.CTRL_calcoliAutomatici(),
              "OVERFLOW - Il campo Quantità alcole grezzo non puo' essere calcolato \r\n");
    AttendiTroppoGrande();
    // L'ultimo controllo (quello del totale) ha riacceso Salva.
    EXPECT_TRUE(calcolo.SalvaAbilitato());

    // Ettogradi di 8 cifre intere: passano nel calcolo, non nel confronto.
    script->messaggi.clear();
    txt[13] = "10000000";
    txt[17] = "5";
    PrevediTroppoGrande();
    EXPECT_EQ(calcolo.CTRL_calcoliAutomatici(), "OVERFLOW - Il campo Ettogradi non puo' essere calcolato \r\n");
    AttendiTroppoGrande();

    // Totale intero di 13 caratteri: passa in fun_Totale, non col ",00".
    script->messaggi.clear();
    txt.clear();
    txt[2] = "29";
    txt[24] = "123456789012";
    txt[25] = "1";
    PrevediTroppoGrande();
    EXPECT_EQ(calcolo.CTRL_calcoliAutomatici(), "OVERFLOW - Il campo Totale aiuto non puo' essere calcolato \r\n");
    AttendiTroppoGrande();
    EXPECT_FALSE(calcolo.SalvaAbilitato());
}

// --- Salvataggio e Cmdcalcolo -------------------------------------------------

TEST_F(CalcoloAiutiTest, SalvataggioConDifferenze)
{
    const QString attesa = InizioDifferenze + "\r\nIl valore calcolato degli Ettogradi é 120,0000\r\n"
                                              "\r\nSostituire con i valori calcolati ?";
    for (int risposta : {RispostaMsg::Si, RispostaMsg::No}) {
        SCOPED_TRACE(risposta);
        script->messaggi.clear();
        txt.clear();
        Esempio("29");
        txt[17] = "100";
        script->Rispondi(risposta);
        EXPECT_TRUE(calcolo.ControllaCalcoliAlSalvataggio());
        ASSERT_EQ(script->messaggi.size(), 1);
        EXPECT_EQ(script->messaggi[0].testo, attesa);
        EXPECT_EQ(script->messaggi[0].stile, StileMsg::SiNo);
        EXPECT_EQ(script->messaggi[0].titolo, "Domande di aiuto alla distillazione facoltativa (Art.29)");
        // Campi portati alla forma normale prima del confronto.
        EXPECT_EQ(txt[13], "1000,0000");
        EXPECT_EQ(txt[16], "0,1200");
        if (risposta == RispostaMsg::Si) {
            EXPECT_EQ(txt[17], "120,0000");
            EXPECT_EQ(txt[21], "1050,60");
            EXPECT_EQ(txt[25], "1712,88");
        } else {
            EXPECT_EQ(txt[17], "100,0000");
            EXPECT_EQ(txt[21], "0,00");
            EXPECT_EQ(txt[25], "0,00");
        }
    }
}

TEST_F(CalcoloAiutiTest, SalvataggioConOverflow)
{
    const QString attesa = "OVERFLOW - Il campo Ettogradi non puo' essere calcolato \r\n"
                           "\r\nI dati saranno salvati senza calcoli automatici";
    for (int risposta : {RispostaMsg::OK, RispostaMsg::Annulla}) {
        SCOPED_TRACE(risposta);
        script->messaggi.clear();
        txt.clear();
        Certificato("1000", "50", "20", "10");
        txt[2] = "30";  // il titolo resta quello dell'articolo 29
        txt[13] = "10000000";
        txt[16] = "1";
        txt[17] = "5";
        PrevediTroppoGrande();
        script->Rispondi(risposta);
        EXPECT_EQ(calcolo.ControllaCalcoliAlSalvataggio(), risposta == RispostaMsg::OK);
        ASSERT_EQ(script->messaggi.size(), 2);
        EXPECT_EQ(script->messaggi[0].testo, MsgTroppoGrande);
        EXPECT_EQ(script->messaggi[1].testo, attesa);
        EXPECT_EQ(script->messaggi[1].stile, StileMsg::OKAnnulla);
        EXPECT_EQ(script->messaggi[1].titolo, "Domande di aiuto alla distillazione facoltativa (Art.29)");
        EXPECT_EQ(txt[17], "5,0000") << "nessun calcolo scritto";
    }
}

TEST_F(CalcoloAiutiTest, SalvataggioSenzaDifferenzeNonChiedeNulla)
{
    Esempio("29");
    calcolo.calcoliAutomatici(true);
    EXPECT_TRUE(calcolo.ControllaCalcoliAlSalvataggio());
    EXPECT_TRUE(script->messaggi.isEmpty());
    EXPECT_EQ(txt[14], "0,0000");
    EXPECT_EQ(txt[10], "0,0000");
}

TEST_F(CalcoloAiutiTest, CmdcalcoloCampiObbligatori)
{
    struct Caso {
        const char* vino;
        const char* titolo;
        int fuoco;
        const char* messaggio;
    };
    const Caso casi[] = {
        {"", "0,12", 13, "Vino effettivamente distillato campo obbligatorio per effettuare i calcoli automatici. "},
        {"0,00", "0,12", 13, "Vino effettivamente distillato campo obbligatorio per effettuare i calcoli automatici. "},
        {"1000", " ", 16, "Titolo alcolometro fatturato  campo obbligatorio per effettuare i calcoli automatici. "},
        {"0,0000", "0,00", 16, "Titolo alcolometro fatturato  campo obbligatorio per effettuare i calcoli automatici. "},
    };
    for (const Caso& c : casi) {
        SCOPED_TRACE(c.fuoco);
        script->messaggi.clear();
        Esempio("29");
        txt[13] = c.vino;
        txt[16] = c.titolo;
        txt[17] = "";
        script->Rispondi(RispostaMsg::OK);
        EXPECT_EQ(calcolo.Cmdcalcolo(), c.fuoco);
        ASSERT_EQ(script->messaggi.size(), 1);
        EXPECT_EQ(script->messaggi[0].testo, c.messaggio);
        EXPECT_EQ(script->messaggi[0].stile, StileMsg::Informazione);
        EXPECT_EQ(script->messaggi[0].titolo, "Salvataggio ");
        EXPECT_EQ(txt[17], "") << "nessun calcolo";
    }
}

TEST_F(CalcoloAiutiTest, CmdcalcoloZeroADueDecimaliControCampoAQuattro)
{
    // Vuoto o "0,00": un clic basta, gli Ettogradi si ricalcolano col controllo.
    for (const char* ettogradi : {"", "0,00"}) {
        SCOPED_TRACE(ettogradi);
        Esempio("29");
        txt[17] = ettogradi;
        EXPECT_EQ(calcolo.Cmdcalcolo(), 0);
        EXPECT_EQ(txt[17], "120,0000");
        EXPECT_EQ(txt[21], "1050,60");
    }
    // "0,0000" conta come pieno: il primo clic scrive solo gli Ettogradi.
    txt.clear();
    Esempio("29");
    txt[17] = "0,0000";
    EXPECT_EQ(calcolo.Cmdcalcolo(), 0);
    EXPECT_EQ(txt[17], "120,0000");
    EXPECT_EQ(txt[18], "");
    EXPECT_EQ(calcolo.Cmdcalcolo(), 0);
    EXPECT_EQ(txt[18], "6,0000");
    EXPECT_EQ(txt[25], "1712,88");
    // Con Ettogradi pieni non si ricalcolano: restano quelli scritti.
    txt[17] = "240";
    EXPECT_EQ(calcolo.Cmdcalcolo(), 0);
    EXPECT_EQ(txt[17], "240");
    EXPECT_EQ(txt[18], "12,0000");
    EXPECT_TRUE(script->messaggi.isEmpty());
}

}  // namespace
