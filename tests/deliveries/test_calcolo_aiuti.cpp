// Calcolo automatico delle quote e degli aiuti del produttore: calcolo pieno,
// confronto al salvataggio, controlli di grandezza e formati dei testi.
#include "common/errore.h"
#include "deliveries/CalcoloAiuti.h"
#include "support/prova.h"
#include "support/piattaforma_script.h"

#include <optional>
#include <tuple>

namespace {

using Campi = QList<QPair<int, QString>>;

const QString TroppoGrande = QStringLiteral("La quantità ottenuta di calcolo è troppo grande");
const QString Differenze = QStringLiteral("Si sono rilevate delle differenze nei calcoli Automatici : ");

QString Diff(const QString& campo, const QString& valore)
{
    return "\r\nIl valore calcolato degli " + campo + " é " + valore;
}

QString Overflow(const QString& campo)
{
    return "OVERFLOW - Il campo " + campo + " non puo' essere calcolato \r\n";
}

class CalcoloAiutiTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        // Il messaggio di CtrlQuantita ha solo OK; ogni messaggio va poi verificato.
        script = &InstallaPiattaformaScript();
        script->AccettaMessaggiSenzaRisposta();
        Certificato({"1000", "50", "20", "10"});
    }
    void TearDown() override
    {
        EXPECT_TRUE(script->messaggi.isEmpty()) << "messaggi non verificati";
        sessione().UtfSel = UtfSelezionato{};
    }

    // Ettogradi lavorati, alcole grezzo, neutro, acquavite.
    static void Certificato(const QStringList& t)
    {
        UtfSelezionato& utf = sessione().UtfSel;
        utf.QTA_TOT_ETTOGRADI_VINO_LAVORATO = t[0];
        utf.QTA_TOT_ALCOLE_GREZZO_OTTENUTO = t[1];
        utf.QTA_TOT_ALCOLE_NEUTRO_OTTENUTO = t[2];
        utf.QTA_TOT_ACQUAVITE_OTTENUTO = t[3];
    }

    // L'esempio: E = 120 (vino 1000 x titolo 0,12) su T = 1000, più le modifiche.
    void Esempio(const QString& articolo, const Campi& modifiche = {})
    {
        txt.clear();
        txt[2] = articolo;
        txt[13] = "1000";
        txt[16] = "0,12";
        for (const auto& [indice, testo] : modifiche)
            txt[indice] = testo;
    }

    QStringList Da17A25() const
    {
        QStringList t;
        for (int i = 17; i <= 25; ++i)
            t << txt.value(i);
        return t;
    }

    void AttendiTroppoGrande(int quanti)
    {
        EXPECT_EQ(script->messaggi, Messaggi(quanti, {TroppoGrande, StileMsg::OK + StileMsg::Informazione, "Produttore"}));
        script->messaggi.clear();
    }

    PiattaformaScript* script = nullptr;
    QMap<int, QString> txt;
    CalcoloAiuti calcolo{txt};
};

// Ogni riga: l'esempio (articolo 29) con i campi e il certificato cambiati,
// uno o più giri di calcolo, i campi da 17 a 25 per intero, i controlli di
// grandezza falliti e, se dato, l'esito del confronto che segue.
TEST_F(CalcoloAiutiTest, CalcoliAutomatici)
{
    using Variabile = const QString& (CalcoloAiuti::*)() const;
    const QString q = "0,123456789012345678";
    const QString p = "prima";
    // Campi già pieni: un giro interrotto lascia com'erano quelli che seguono.
    const Campi pieni = {{13, "1"}, {16, "1"}, {17, "1"}, {18, p}, {19, p}, {20, p},
                         {21, p},   {22, p},   {23, p},  {24, ""}, {25, p}};
    const QStringList esempio = {"120,0000", "6,0000", "2,4000", "1,2000", "1050,60",
                                 "452,16",   "210,12", "0,00",   "1712,88"};
    const QStringList art30 = {"120,0000", "6,0000", "2,4000", "1,2000", "673,32",
                               "269,33",   "134,66", "0,00",   "1077,31"};
    const QStringList soloTotale = {"120,0000", "", "", "", "0,00", "0,00", "0,00", "0,00", "0,00"};
    // 269,328 è scritto arrotondato e confrontato troncato: il centesimo di
    // differenza mostra proprio il valore del campo.
    const QString confronto30 = Differenze + Diff("Aiuto alcole neutro", "269,33");
    struct Caso {
        const char* nome;
        Campi campi;
        QStringList certificato;  // vuoto: quello dell'esempio
        bool conEttogradi;
        QStringList attesi;  // da 17 a 25
        int troppoGrande = 0;  // controlli falliti, nel calcolo o nel confronto
        std::optional<QString> confronto = std::nullopt;
        Campi dopo = {};        // cambiati tra il calcolo e il confronto
        bool riacceso = false;  // Salva riacceso da un controllo seguente
        QList<QPair<Variabile, QString>> variabili = {};
    };
    const Caso casi[] = {
        {"articolo 29", {}, {}, true, esempio, 0, "", {}, false,
         {{&CalcoloAiuti::CalcQtaGrezzo, "6"}, {&CalcoloAiuti::CalcAiutoGrezzo, "1050,6"}}},
        {"articolo 30", {{2, "30"}}, {}, true, art30, 0, confronto30},
        // Un articolo vuoto o non esatto ha le aliquote del 30.
        {"articolo vuoto", {{2, ""}}, {}, true, art30, 0, confronto30},
        {"articolo non esatto", {{2, " 29"}}, {}, true, art30, 0, confronto30},
        // Senza acquavite: quota zero, aiuto "0,00", fuori dal totale.
        {"senza acquavite", {}, {"1000", "50", "20", "0"}, true,
         {"120,0000", "6,0000", "2,4000", "0,0000", "1050,60", "452,16", "0,00", "0,00", "1502,76"}, 0, ""},
        {"totale negativo", {{24, "2000"}}, {}, true,
         {"120,0000", "6,0000", "2,4000", "1,2000", "1050,60", "452,16", "210,12", "2000", "-287,12"}, 0, ""},

        // Quoziente ed Ettogradi in decimale a 28 cifre; aiuti su grezzo e
        // neutro in doppia precisione (testo a 15 cifre), sull'acquavite in
        // decimale. Gli aiuti si arrotondano al pari, le quote con Format.
        {"quoziente", {{13, "100"}, {16, "1"}, {17, "100"}}, {"300", "3", "0", "3"}, false,
         {"100", "1,0000", "0,0000", "1,0000", "175,10", "0,00", "175,10", "0,00", "350,20"}, 0, "", {}, false,
         {{&CalcoloAiuti::CalcQtaGrezzo, "0,9999999999999999999999999999"}}},
        {"doppia e decimale", {{13, "1"}, {16, "1"}, {17, "1"}}, {"1", q, q, q}, false,
         {"1", "0,1235", "0,1235", "0,1235", "21,62", "23,26", "21,62", "0,00", "66,49"}, 0,
         Differenze + Diff("Aiuto alcole grezzo", "21,62") + Diff("Aiuto alcole neutro", "23,26") +
             Diff("Aiuto acquavite", "21,62"),
         {}, false,
         {{&CalcoloAiuti::CalcQtaGrezzo, q},
          {&CalcoloAiuti::CalcAiutoGrezzo, "21,6172837560617"},
          {&CalcoloAiuti::CalcAiutoNeutro, "23,2592590499259"},
          {&CalcoloAiuti::CalcAiutoAcquavite, "21,6172837560617282178"}}},
        // Sotto 1E-5 la doppia si scrive con l'esponente, che Formatta2dec
        // taglia in "1,75": la differenza mostra 0,00, come il campo.
        {"esponente", {{13, "1"}, {16, "1"}, {17, "1"}}, {"1000000", "0,01", "0", "0"}, false,
         {"1", "0,0000", "0,0000", "0,0000", "0,00", "0,00", "0,00", "0,00", "0,00"}, 0,
         Differenze + Diff("Aiuto alcole grezzo", "0,00"), {}, false, {{&CalcoloAiuti::CalcAiutoGrezzo, "1,751E-06"}}},
        {"ettogradi", {{13, "1234,5678"}, {16, "12,3456"}}, {"1000000", "0", "0", "0"}, true,
         {"15241,4802", "0,0000", "0,0000", "0,0000", "0,00", "0,00", "0,00", "0,00", "0,00"}, 0, "", {}, false,
         {{&CalcoloAiuti::CalcEttogradi, "15241,48023168"}}},
        // Spareggi esatti 26,265 e 43,775 negli aiuti; 0,00005 nella quota.
        {"pari in giù", {{13, "1000"}, {16, "1"}, {17, "1000"}}, {"1000", "0,15", "0", "0,15"}, false,
         {"1000", "0,1500", "0,0000", "0,1500", "26,26", "0,00", "26,26", "0,00", "52,53"}, 0, ""},
        {"pari in su", {{13, "1000"}, {16, "1"}, {17, "1000"}}, {"1000", "0,25", "0", "0,25"}, false,
         {"1000", "0,2500", "0,0000", "0,2500", "43,78", "0,00", "43,78", "0,00", "87,55"}, 0,
         Differenze + Diff("Aiuto alcole grezzo", "43,78") + Diff("Aiuto acquavite", "43,78")},
        {"quota lontano da zero", {{13, "1"}, {16, "1"}, {17, "1"}}, {"1000", "0,05", "0", "0"}, false,
         {"1", "0,0001", "0,0000", "0,0000", "0,01", "0,00", "0,00", "0,00", "0,01"}, 0,
         Differenze + Diff("Aiuto alcole grezzo", "0,01"), {}, false, {{&CalcoloAiuti::CalcQtaGrezzo, "0,00005"}}},

        // Senza vino o titolo si rifà solo il totale. Con Ettogradi vuoti o
        // "0,0000" si scrivono solo quelli, senza controllo di grandezza, e le
        // quote vengono al giro dopo.
        {"senza vino", {{13, "  "}, {17, "120"}, {18, "x"}, {25, "99"}}, {}, false,
         {"120", "x", "", "", "0,00", "0,00", "0,00", "0,00", "0,00"}},
        {"senza titolo", {{16, ""}, {17, "120"}, {18, "x"}, {25, "99"}}, {}, false,
         {"120", "x", "", "", "0,00", "0,00", "0,00", "0,00", "0,00"}},
        {"ettogradi vuoti", {{17, ""}}, {}, false, soloTotale},
        {"ettogradi zero", {{17, "0,0000"}}, {}, false, soloTotale},
        {"ettogradi enormi", {{13, "100000000"}, {16, "1"}, {17, ""}}, {}, false,
         {"100000000,0000", "", "", "", "0,00", "0,00", "0,00", "0,00", "0,00"}},

        // Ogni riga fa fallire un controllo diverso: il campo si svuota, il
        // giro finisce, i campi seguenti e il totale restano com'erano.
        {"troppo grandi gli ettogradi", pieni + Campi{{13, "100000000"}, {17, ""}}, {"1", "1", "1", "1"}, true,
         {"", p, p, p, p, p, p, "", p}, 1},
        {"troppo grande la quota grezzo", pieni, {"1", "12345678", "1", "1"}, false,
         {"1", "", p, p, p, p, p, "", p}, 1},
        {"troppo grande la quota neutro", pieni, {"1", "1", "1234567,5", "1"}, false,
         {"1", "1,0000", "", p, "175,10", p, p, "", p}, 1},
        {"troppo grande la quota acquavite", pieni, {"1", "1", "1", "10000000"}, false,
         {"1", "1,0000", "1,0000", "", "175,10", "188,40", p, "", p}, 1},
        {"troppo grande il totale", pieni + Campi{{24, "12345678901234"}}, {"1", "0", "0", "0"}, false,
         {"1", "0,0000", "0,0000", "0,0000", "0,00", "0,00", "0,00", "12345678901234", "0,00"}, 1},

        // Confronto dopo il calcolo con qualche campo cambiato. Ettogradi
        // diversi: i prodotti non si esaminano, il totale sì (da E = 100), e
        // con differenze non si riscrive.
        {"confronto degli ettogradi", {}, {}, true, esempio, 0,
         "Si sono rilevate delle differenze nei calcoli Automatici : "
         "\r\nIl valore calcolato degli Ettogradi é 120,0000\r\n"
         "\r\nIl valore calcolato degli Totale aiuto é 1427,40",
         {{17, "100"}, {18, "qualunque"}}},
        // Grezzo confronta il testo nudo ("6" non è "6,0000"), neutro il testo
        // formattato; l'aiuto si guarda solo se la quota combacia.
        {"confronto delle quote", {}, {}, true, esempio, 0,
         Differenze + Diff("Quantità alcole grezzo", "6,0000") + Diff("Aiuto alcole neutro", "452,16"),
         {{18, "6"}, {21, "1"}, {19, "2,4"}, {22, "452,1"}}},
        {"confronto del totale", {}, {}, true, esempio, 0, Differenze + Diff("Totale aiuto", "1712,88"),
         {{25, "1700"}}},
        {"totale zero riscritto", {}, {}, true, esempio, 0, "", {{25, "0,00"}}},
        // Il confronto riprende le aliquote dall'articolo.
        {"confronto con l'articolo cambiato", {}, {}, true, esempio, 0,
         Differenze + Diff("Aiuto alcole grezzo", "673,32") + Diff("Aiuto alcole neutro", "269,33") +
             Diff("Aiuto acquavite", "134,66") + Diff("Totale aiuto", "1077,31"),
         {{2, "30"}}},
        // Senza Ettogradi: solo il totale, con aiuti ricalcolati a zero.
        {"confronto senza ettogradi", {}, {}, true, esempio, 0, Differenze + Diff("Totale aiuto", "0,00"),
         {{17, ""}, {18, "diverso"}}},
        // 8 cifre intere passano nel calcolo, non nel confronto col ",0000";
        // l'overflow vince sulle differenze, e l'ultimo controllo (il totale)
        // riaccende Salva.
        {"overflow degli ettogradi", {}, {}, true, esempio, 1, Overflow("Ettogradi"),
         {{13, "10000000"}, {16, "1"}, {17, "5"}}, true},
        {"overflow della quota", {}, {}, true, esempio, 1, Overflow("Quantità alcole grezzo"),
         {{13, "20000000"}, {16, "1"}, {17, "20000000"}, {18, "1"}, {19, "5"}}, true},
        {"overflow del totale", {}, {}, true, esempio, 1, Overflow("Totale aiuto"),
         {{13, ""}, {21, "0,00"}, {22, "0,00"}, {23, "0,00"}, {24, "123456789012"}, {25, "1"}}},
    };
    for (const Caso& c : casi) {
        SCOPED_TRACE(c.nome);
        Certificato(c.certificato.isEmpty() ? QStringList{"1000", "50", "20", "10"} : c.certificato);
        Esempio("29", c.campi);
        calcolo.calcoliAutomatici(c.conEttogradi);
        EXPECT_EQ(Da17A25(), c.attesi);
        for (const auto& [variabile, atteso] : c.variabili)
            EXPECT_EQ((calcolo.*variabile)(), atteso);
        if (c.confronto) {
            for (const auto& [indice, testo] : c.dopo)
                txt[indice] = testo;
            const QString totalePrima = txt[25];
            EXPECT_EQ(calcolo.CTRL_calcoliAutomatici(), *c.confronto);
            EXPECT_EQ(txt[25], c.confronto->isEmpty() ? c.attesi[8] : totalePrima) << "scritto senza differenze";
        }
        AttendiTroppoGrande(c.troppoGrande);
        EXPECT_EQ(calcolo.SalvaAbilitato(), c.troppoGrande == 0 || c.riacceso);
    }
}

// Dopo il calcolo dell'esempio: un aiuto nel campo decide solo se il prodotto
// conta (per il valore calcolato), la detrazione entra come scritta, il segno
// è una delle 13 cifre. fun_Totale non sceglie le aliquote: restano quelle
// dell'ultimo calcolo anche con l'articolo cambiato.
TEST_F(CalcoloAiutiTest, TotaleDagliAiutiCalcolati)
{
    Esempio("29");
    calcolo.calcoliAutomatici(true);
    txt[2] = "30";
    // Campi da 21 a 24, totale, totale troppo grande.
    for (const auto& [campi, totale, troppoGrande] : {
             std::tuple{Campi{{21, "1,00"}, {22, ""}, {23, "0,00"}, {24, "0,50"}}, "1050,10", false},
             // 1712,865: arrotondato al pari, non con Format.
             std::tuple{Campi{{21, "1"}, {22, "1"}, {23, "1"}, {24, "0,015"}}, "1712,86", false},
             // Aiuto grezzo vuoto dopo un giro fallito: la quota c'è, l'aiuto no.
             std::tuple{Campi{{21, ""}, {22, "452,16"}, {23, "0,00"}, {24, ""}}, "452,16", false},
             std::tuple{Campi{{21, ""}, {22, ""}, {23, ""}, {24, "12345678901,5"}}, "-12345678901,50", false},
             std::tuple{Campi{{21, ""}, {22, ""}, {23, ""}, {24, "123456789012,5"}}, "0,00", true},
         }) {
        SCOPED_TRACE(totale);
        for (const auto& [indice, testo] : campi)
            txt[indice] = testo;
        EXPECT_EQ(calcolo.fun_Totale(), totale);
        AttendiTroppoGrande(troppoGrande ? 1 : 0);
        EXPECT_EQ(calcolo.SalvaAbilitato(), !troppoGrande);
        for (const auto& [indice, testo] : campi)
            EXPECT_EQ(txt[indice], testo.isEmpty() ? "0,00" : testo);
    }
}

// Nessuna guardia: la divisione fallisce e l'errore va al chiamante.
TEST_F(CalcoloAiutiTest, EttogradiDelCertificatoNulliSollevanoLaDivisione)
{
    for (const char* totale : {"0", ""}) {
        Esempio("29", {{17, "120"}});
        sessione().UtfSel.QTA_TOT_ETTOGRADI_VINO_LAVORATO = totale;
        EXPECT_EQ(CodiciErrore::DivisionePerZero, NumeroErrore([&] { calcolo.calcoliAutomatici(false); })) << totale;
    }
}

// Con la virgola conta la sua posizione: una cifra intera in meno. Ogni
// chiamata decide di nuovo lo stato di Salva.
TEST_F(CalcoloAiutiTest, CtrlQuantitaDecideSalva)
{
    for (const auto& [valore, cifre, passa] :
         {std::tuple{"12345678", 8, true}, {"12345678,5", 8, false}, {"1234567,5", 8, true},
          {"123456789", 8, false}, {"-1234567", 8, true}, {"-12345678", 8, false}, {"", 13, true}, {"12,", 2, false}}) {
        SCOPED_TRACE(valore);
        EXPECT_EQ(calcolo.CtrlQuantita(valore, cifre), passa);
        EXPECT_EQ(calcolo.SalvaAbilitato(), passa);
        AttendiTroppoGrande(passa ? 0 : 1);
    }
}

// Troncamento e due decimali si vedono già nei calcoli; qui i testi che i
// calcoli non producono.
TEST(Formatta2dec, TroncaEnonArrotonda)
{
    for (const auto& [valore, atteso] : {std::pair{"-3,456", "-3,45"}, {"5,", "5,"}, {"", ""}})
        EXPECT_EQ(Formatta2dec(valore), QString(atteso)) << valore;
}

TEST_F(CalcoloAiutiTest, FormaNormaleDeiCampi)
{
    // "0" e "-287,12" non fanno un numero: il testo resta così.
    for (const auto& [indice, testo, atteso] :
         {std::tuple{11, "3", "03"}, {12, "3", "3"}, {15, "ROSSO", "ROSSO"}, {16, ",5", "0,5000"},
          {17, "1,23465", "1,2347"}, {21, "  ", "0,00"}, {22, "1,005", "1,01"}, {25, "-287,12", "0-287,12"}}) {
        txt[indice] = testo;
        calcolo.formattaAutomatico(indice);
        EXPECT_EQ(txt[indice], atteso) << indice << " " << testo;
    }
}

// I campi vanno prima alla forma normale. Con differenze si chiede se
// sostituirle (Sì ricalcola tutto), con un overflow se salvare senza calcoli
// (Annulla non salva); il titolo è quello dell'articolo 29 anche per il 30.
TEST_F(CalcoloAiutiTest, DomandeAlSalvataggio)
{
    const QString differenze = Differenze + "\r\nIl valore calcolato degli Ettogradi é 120,0000\r\n" +
                               "\r\nSostituire con i valori calcolati ?";
    const QString overflow = "OVERFLOW - Il campo Ettogradi non puo' essere calcolato \r\n"
                             "\r\nI dati saranno salvati senza calcoli automatici";
    const Campi troppi = {{2, "30"}, {13, "10000000"}, {16, "1"}, {17, "5"}};
    const QStringList calcolati = {"1000,0000", "0,1200", "120,0000", "1050,60", "1712,88"};
    const QStringList traboccati = {"10000000,0000", "1,0000", "5,0000", "0,00", "0,00"};
    // Campi, risposta (0: nessuna domanda), campi 13, 16, 17, 21 e 25 dopo.
    for (const auto& [campi, risposta, attesi] : {
             std::tuple{Campi{{17, "100"}}, RispostaMsg::Si, calcolati},
             std::tuple{Campi{{17, "100"}}, RispostaMsg::No,
                        QStringList{"1000,0000", "0,1200", "100,0000", "0,00", "0,00"}},
             std::tuple{troppi, RispostaMsg::OK, traboccati},
             std::tuple{troppi, RispostaMsg::Annulla, traboccati},
             // Valori scritti a mano che combaciano: nessuna domanda.
             std::tuple{Campi{{17, "120"}, {18, "6"}, {19, "2,4"}, {20, "1,2"}, {21, "1050,6"}, {22, "452,16"},
                              {23, "210,12"}, {25, "1712,88"}},
                        0, calcolati},
         }) {
        SCOPED_TRACE(risposta);
        Esempio("29", campi);
        const bool traboccato = campi == troppi;
        if (traboccato)
            script->Rispondi(RispostaMsg::OK);
        if (risposta != 0)
            script->Rispondi(risposta);
        EXPECT_EQ(calcolo.ControllaCalcoliAlSalvataggio(), risposta != RispostaMsg::Annulla);
        if (risposta != 0) {
            ASSERT_FALSE(script->messaggi.isEmpty());
            EXPECT_EQ(script->messaggi.takeLast(),
                      (MessaggioRegistrato{traboccato ? overflow : differenze,
                                           traboccato ? StileMsg::OKAnnulla : StileMsg::SiNo,
                                           "Domande di aiuto alla distillazione facoltativa (Art.29)"}));
        }
        AttendiTroppoGrande(traboccato ? 1 : 0);
        EXPECT_EQ((QStringList{txt[13], txt[16], txt[17], txt[21], txt[25]}), attesi);
        EXPECT_EQ(txt[10], "0,0000");
    }
}

// Vino e titolo vuoti o "0,00" fermano il calcolo. Ettogradi vuoti o "0,00":
// un clic basta; "0,0000" conta come pieno e il primo clic scrive solo gli
// Ettogradi; Ettogradi pieni restano quelli scritti.
TEST_F(CalcoloAiutiTest, Cmdcalcolo)
{
    const QString seguito = " campo obbligatorio per effettuare i calcoli automatici. ";
    // Campi, clic, campo che riceve il fuoco (0: calcolo eseguito), campi 17 e 18 dopo.
    for (const auto& [campi, clic, fuoco, dopo17, dopo18] : {
             std::tuple{Campi{{13, ""}}, 1, 13, "", ""},
             {Campi{{16, " "}}, 1, 16, "", ""},
             {Campi{{13, "0,0000"}, {16, "0,00"}}, 1, 16, "", ""},
             {Campi{}, 1, 0, "120,0000", "6,0000"},
             {Campi{{17, "0,00"}}, 1, 0, "120,0000", "6,0000"},
             {Campi{{17, "0,0000"}}, 1, 0, "120,0000", ""},
             {Campi{{17, "0,0000"}}, 2, 0, "120,0000", "6,0000"},
             {Campi{{17, "240"}}, 1, 0, "240", "12,0000"},
         }) {
        Esempio("29", campi);
        for (int i = 0; i < clic; ++i)
            EXPECT_EQ(calcolo.Cmdcalcolo(), fuoco);
        EXPECT_EQ(txt[17], dopo17);
        EXPECT_EQ(txt[18], dopo18);
        const QString campo = fuoco == 13 ? "Vino effettivamente distillato" : "Titolo alcolometro fatturato ";
        EXPECT_EQ(script->messaggi,
                  (fuoco ? Messaggi{{campo + seguito, StileMsg::Informazione, "Salvataggio "}} : Messaggi{}));
        script->messaggi.clear();
    }
}

}  // namespace
