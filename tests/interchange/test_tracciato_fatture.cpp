// Tracciato della fornitura del ramo fatture: record interi, carattere per
// carattere, in uscita e in entrata.

#include "interchange/TracciatoFatture.h"
#include "fornitura_prova.h"
#include "record_prova.h"

#include <tuple>

using namespace TracciatoFatture;
using namespace FornituraProva;

namespace {

// Una fattura tipica come la scrive la maschera: quantità a 4 decimali,
// importi a 2, date GG/MM/AAAA.
RigaValori FatturaTipica()
{
    return RigaValori{{"DOMANDA", "00000012345"},    {"CODI_LAVO", "VDT"},         {"PRODOTTO", "ANE"},
                      {"CODI_FISC", "RSSMRA70A01H501S"}, {"NUME_FATT", "125"},       {"DATA_FATT", "15/03/2006"},
                      {"QTA_PROD", "1500,0000"},      {"GRAD", "12,5000"},          {"PREZ_MINI", "2,4500"},
                      {"IMPO", "3675,00"},            {"IVA", "735,00"},            {"IMPO_TOTA", "4410,00"},
                      {"DATA_PAGA", "20/04/2006"},    {"QTA_LAVO", "1480,0000"},
                      {"DENOMINAZIONE", "CANTINA SOCIALE DI CANELLI"}};
}

RigaValori BollaTipica()
{
    return RigaValori{{"DOMANDA", "00000012345"},       {"NUME_FATT", "125"},
                      {"CODI_FISC", "RSSMRA70A01H501S"},  {"NUMERO_BOLLA", "DDT 4471/A"},
                      {"DATA_CONSEGNA", "2/3/2006"},      {"QUANTITA_PRODOTTO", "750,0000"},
                      {"FATTURE.DATA_PAGA", "20/04/2006"}, {"BOLLE.DATA_PAGA", "21/04/2006"},
                      {"GRADO", "12,5000"}};
}

// I record attesi in uscita della fattura e della bolla tipiche, campo per
// campo alle loro larghezze.
struct Uscita1 {
    QString domanda = "00000012345", cfDistilleria = "01234567890     ", lavorazione = "VDT", prodotto = "ANE",
            cf = "RSSMRA70A01H501S", numero = "125            ", data = "20060315", quantita = "00015000000",
            grado = "125000", prezzo = "00024500", imponibile = "00000000367500", iva = "00000000073500",
            totale = "00000000441000", pagamento = "20060420", lavorata = "00014800000",
            nome = Sx("CANTINA SOCIALE DI CANELLI", 70);
    QString riga() const
    {
        return "1" + domanda + cfDistilleria + "A" + lavorazione + prodotto + cf + numero + data + quantita + grado +
               prezzo + imponibile + iva + totale + pagamento + lavorata + nome + Bianchi(30);
    }
};

struct Uscita2 {
    QString domanda = "00000012345", numero = "125            ", cf = "RSSMRA70A01H501S",
            bolla = "DDT 4471/A          ", consegna = "02/03/2006", quantita = "00007500000",
            pagamento = "21/04/2006", grado = "125000";
    QString riga() const
    {
        return "2" + domanda + numero + cf + bolla + consegna + quantita + pagamento + grado + Bianchi(160);
    }
};

class TracciatoFattureUscita : public ::testing::Test {
protected:
    void SetUp() override
    {
        sessione().Azzera();
        sessione().DistilleriaDati = Distilleria();
        sessione().DomandaSel.ID_VARIETA = QStringLiteral("3");
        sessione().DomandaSel.TIPO_ARTICOLO = QStringLiteral("29");
        sessione().DomandaSel.CAMPAGNA = QStringLiteral("2004");  // l'anno scritto non cambia
        scarico.NumeroScarico = QStringLiteral("007");
        scarico.DataScarico = QDate(2006, 3, 15);
    }
    void TearDown() override { sessione().Azzera(); }
    Scarico scarico;
};

TEST_F(TracciatoFattureUscita, Testata)
{
    // La testata tipica è nel file dello scarico. Qui: senza numero di
    // scarico, ragione sociale di 57 caratteri tagliata a 50.
    scarico.NumeroScarico.clear();
    sessione().DistilleriaDati.RAGI_SOCI = QStringLiteral("DISTILLERIA DEI FRATELLI BOSCO E FIGLI SOCIETA PER AZIONI");
    sessione().DomandaSel.ID_VARIETA = QStringLiteral("12");
    sessione().DomandaSel.TIPO_ARTICOLO = QStringLiteral("30");
    EXPECT_TRUE(RecordUguale(QStringLiteral("0") + QString(16, '0') + "2005/2006" + "0000" + "20060315" +
                                 "DISTILLERIA DEI FRATELLI BOSCO E FIGLI SOCIETA PER" + Sx("VIA ROMA 12 ASTI", 30) +
                                 "12" + "30" + Bianchi(138),
                             scarico.TRACCIATO_0()));
}

TEST_F(TracciatoFattureUscita, Fattura)
{
    ASSERT_EQ(LunghezzaRecord, Uscita1{}.riga().size());
    // Colonne cambiate nella fattura tipica, record atteso (la tipica e la
    // domanda di nove cifre sono nel file dello scarico).
    const std::tuple<const char*, QList<QPair<QString, QString>>, Uscita1> casi[] = {
        {"nome e numero tagliati",
         {{"DENOMINAZIONE", "AZIENDA AGRICOLA VITIVINICOLA DEI COLLI ASTIGIANI E DEL MONFERRATO CASALESE SOC. COOP."},
          {"NUME_FATT", "2006/000125-BIS-A"}, {"CODI_FISC", "01987650044"}},
         {.cf = "01987650044     ", .numero = "2006/000125-BIS",
          .nome = "AZIENDA AGRICOLA VITIVINICOLA DEI COLLI ASTIGIANI E DEL MONFERRATO CAS"}},
        // Un importo troppo lungo perde le cifre di sinistra, senza messaggi.
        {"pagamento vuoto e importo lungo",
         {{"DATA_PAGA", ""}, {"IMPO", "123456789012345,00"}},
         {.imponibile = "45678901234500", .pagamento = "00000000"}},
        // I Null valgono il testo vuoto; la virgola si toglie senza riscalare.
        {"null e altri decimali",
         {{"QTA_LAVO", QString()}, {"DENOMINAZIONE", QString()}, {"DATA_PAGA", QString()}, {"GRAD", "12,5"},
          {"IVA", "735"}},
         {.grado = "000125", .iva = "00000000000735", .pagamento = "00000000", .lavorata = QString(11, '0'),
          .nome = Bianchi(70)}},
        // Codici scritti come sono: uno di due caratteri accorcia la riga.
        {"codice corto", {{"CODI_LAVO", "VD"}}, {.lavorazione = "VD"}},
        // Fuori dalla forma GG/MM/AAAA: una data si riscrive, un testo resta e si taglia.
        {"date in altra forma", {{"DATA_FATT", "15/3/2006"}, {"DATA_PAGA", "PAGATA IL 20/04"}},
         {.pagamento = "PAGATA I"}},
    };
    for (const auto& [nome, modifiche, atteso] : casi) {
        SCOPED_TRACE(nome);
        RigaValori riga = FatturaTipica();
        for (const auto& [colonna, valore] : modifiche)
            riga.Imposta(colonna, valore);
        EXPECT_TRUE(RecordUguale(atteso.riga(), scarico.TRACCIATO_1(riga)));
    }
}

TEST_F(TracciatoFattureUscita, BollaECoda)
{
    ASSERT_EQ(LunghezzaRecord, Uscita2{}.riga().size());
    // Data di consegna riscritta GG/MM/AAAA; la data di pagamento è quella della bolla.
    EXPECT_TRUE(RecordUguale(Uscita2{}.riga(), scarico.TRACCIATO_2(BollaTipica())));
    RigaValori riga = BollaTipica();
    riga.Imposta("DOMANDA", "123456789").Imposta("NUME_FATT", "2006/000125-BIS-A").Imposta("CODI_FISC", "01987650044");
    riga.Imposta("NUMERO_BOLLA", "BOLLA DI ACCOMPAGNAMENTO 99").Imposta("BOLLE.DATA_PAGA", QString());
    riga.Imposta("GRADO", QString());
    const Uscita2 atteso{.domanda = "12345678900", .numero = "2006/000125-BIS", .cf = "01987650044     ",
                         .bolla = "BOLLA DI ACCOMPAGNAM", .pagamento = Bianchi(10), .grado = "000000"};
    EXPECT_TRUE(RecordUguale(atteso.riga(), scarico.TRACCIATO_2(riga)));

    scarico.ContaFatture = 12;
    scarico.ContaBolle = 1234567;  // oltre sei cifre resta la coda
    EXPECT_TRUE(RecordUguale(QStringLiteral("9") + QString(16, '9') + "000012" + "234567" + Bianchi(231),
                             scarico.TRACCIATO_9()));
    EXPECT_EQ(0, scarico.ContaFatture);
    EXPECT_EQ(1234567, scarico.ContaBolle);
}

// ------------------------------------------------------------- in entrata

// I campi letti, uniti da "|", per confrontare un record letto per intero.
QString Letta(const FatturaCarico& f)
{
    return QStringList{f.DOMANDA, f.PROGRESSIVO, f.NUME_FATT,  f.CODI_FISC, f.DENOMINAZIONE, f.DATA_FATT,
                       f.QTA_PROD, f.GRAD,       f.PREZ_MINI,  f.IMPO,      f.IVA,           f.IMPO_TOTA,
                       f.DATA_PAGA, f.QTA_LAVO,  f.CODI_LAVO,  f.ID_LAVORAZIONE}
        .join('|');
}

// I record interi si provano col carico. Importi spezzati: parte intera
// bianca o con segno, decimali bianchi copiati, prezzo senza spazi in coda,
// tutti zeri.
TEST(TracciatoFattureEntrata, ImportiSpezzati)
{
    Carico c;
    c.LeggiRiga(R1("00000012345"));
    QString r = R2("00000012345", "125");
    r.replace(105, 11, QStringLiteral("       0500"));
    r.replace(116, 6, QStringLiteral("09 5  "));
    r.replace(122, 8, QStringLiteral("0002    "));
    r.replace(130, 14, QStringLiteral("00000000000000"));
    r.replace(158, 14, QStringLiteral("   -0000001234"));
    r.replace(182, 11, QStringLiteral("1234567  12"));
    EXPECT_EQ(2, c.LeggiRiga(r));
    EXPECT_EQ("00000012345|01|125            |RSSMRA70A01H501S|" + Sx("CANTINA SOCIALE DI CANELLI", 50) +
                  "|15/03/2006|0,0500|9, 5  |2,|0,00|735,00|-12,34|20/04/2006|1234567,  12|VDT|",
              Letta(c.Domande[1].Fatture[1]));
}

// Le bolle sono della domanda: una nuova fattura riporta l'indice a zero e le
// bolle seguenti prendono il posto delle prime. Tipi sconosciuti e righe vuote
// sono saltati senza toccare i contatori.
TEST(TracciatoFattureEntrata, AnnidamentoDelleRighe)
{
    // Righe (tipo e numero di fattura o di bolla), fatture e bolle dell'ultima domanda.
    const std::tuple<QStringList, const char*, const char*> casi[] = {
        {{"2A", "3B1", "3B2", "3B3", "2B", "3B4"}, "A B", "B4"},
        {{"2A", "2B", "3B1", "3B2", "3B3"}, "A B", "B1 B2 B3"},
        {{"2A", "3B1", "3B2", "2B"}, "A B", "B1 B2"},
        {{"2A", "9", "5X", "", "3B1"}, "A", "B1"},
        {{"2A", "3B1", "1", "2C"}, "C", ""},
    };
    const auto riga = [](const QString& t) {
        if (t.isEmpty() || t == "1")
            return t.isEmpty() ? QString() : R1("00000054321");
        QString r = t.startsWith('3') ? R3("00000012345", "125", t.mid(1)) : R2("00000012345", t.mid(1));
        r[0] = t[0];  // "9" e "5X": tipi sconosciuti
        return r;
    };
    for (const auto& [righe, attesoFatture, attesoBolle] : casi) {
        SCOPED_TRACE(righe.join(' ').toStdString());
        Carico carico;
        carico.LeggiRiga(R1("00000012345"));
        for (const QString& t : righe) {
            const int tipo = t.isEmpty() ? -1 : t.at(0).digitValue();
            EXPECT_EQ(tipo <= 3 ? tipo : -1, carico.LeggiRiga(riga(t))) << t;
        }
        const DomandaCarico& d = carico.Domande.last();
        QStringList fatture, bolle;
        for (qsizetype i = 1; i < d.Fatture.size(); ++i)
            fatture << d.Fatture[i].NUME_FATT.trimmed();
        for (qsizetype i = 1; i < d.Bolle.size(); ++i)
            bolle << d.Bolle[i].NUMERO_BOLLA.trimmed();
        EXPECT_EQ(attesoFatture, fatture.join(' '));
        EXPECT_EQ(attesoBolle, bolle.join(' '));
    }
}

}  // namespace
