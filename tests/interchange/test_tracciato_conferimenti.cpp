// Tracciato della fornitura del ramo conferimenti: record interi, carattere
// per carattere, in uscita e in entrata (con le ricerche nel database).

#include "interchange/TracciatoConferimenti.h"
#include "fornitura_conferimenti_prova.h"
#include "record_prova.h"

#include <tuple>

using namespace TracciatoConferimenti;

namespace {

RigaValori CertificatoTipico()
{
    return RigaValori{{"domanda", "4711"},          {"TAB_UTF.NUMERO_CERTIFICATO_UTF", "12345"},
                      {"SIGLA_UFFICIO_UTF_PROVINCIA", "AT"}, {"TAB_UTF.DATA_EMISSIONE_CERTIFICATO", "05/11/2005"},
                      {"QTA_TOT_VINO_LAVORATO", "1000,5"},  {"QTA_TOT_ALCOLE_NEUTRO_OTTENUTO", "50,25"},
                      {"QTA_TOT_ALCOLE_GREZZO_OTTENUTO", ""}, {"QTA_TOT_ACQUAVITE_OTTENUTO", "0,0000"},
                      {"QTA_TOT_ETTOGRADI_VINO_LAVORATO", "12506,25"}};
}

// Aiuto sull'acquavite zero; neutro con decimali oltre i quattro; il colore è la chiave.
RigaValori ProduttoreTipico()
{
    return RigaValori{{"CODI_FISC", "BNCGPP60B02A479X"}, {"DENOMINAZIONE", "BIANCO GIUSEPPE"},
                      {"CODICE_CONTRATTO_DISTILLAZIONE", "123"}, {"QTA_VINO_EFFETIVAMENTE_DISTILLATA", "80,5"},
                      {"TITOLO_ALCOLOMETRICO_FATTURATO", "11,5"}, {"ETTOGRADI", "925,75"},
                      {"QTA_ALCOLE_NEUTRO", "10,12345"},       {"QTA_ALCOLE_GREZZO", ""},
                      {"QTA_ACQUAVITE", "0"},                  {"AIUTO_ALCOLE_NEUTRO", "150,5"},
                      {"AIUTO_ALCOLE_GREZZO", "0,00"},         {"AIUTO_ACQUAVITE", "0"},
                      {"IMPORTO_DETRAIBILE", "12"},            {"ID_COLORE", "2"},
                      {"APPROVAZIONE_ANTICIPATA", "S"},        {"PERC_APPROVAZIONE_ANTICIPATA", "50"}};
}

// Il certificato tipico, record 1 in uscita.
struct Certificato {
    QString tipo = "1", domanda = "4711       ", numero = "12345    ", sigla = "AT", data = "20051105",
            vino = "00010005000", neutro = "00000502500", grezzo = QString(11, '0'), acquavite = QString(11, '0'),
            ettogradi = "000125062500";
    QString riga() const
    {
        return tipo + domanda + numero + sigla + data + vino + neutro + grezzo + acquavite + ettogradi + Bianchi(213);
    }
};

// Il produttore tipico, record 2 in uscita. I decimali oltre il quarto sono
// tagliati (10,12345).
struct Produttore {
    QString tipo = "2", domanda = "       4711", certificato = "12345    AT20051105", cf = "BNCGPP60B02A479X",
            nome = Sx("BIANCO GIUSEPPE", 70), contratto = "00000000123", vino = "00000805000", titolo = "115000",
            ettogradi = "000009257500", neutro = "00000101234", grezzo = QString(11, '0'),
            acquavite = QString(11, '0'), aiutoNeutro = "00000000015050", aiutoGrezzo = QString(14, '0'),
            aiutoAcquavite = QString(14, '0'), detraibile = "00000000001200", coda = "02" "S" "050" + Bianchi(48);
    QString riga() const
    {
        return tipo + domanda + certificato + cf + nome + contratto + vino + titolo + ettogradi + neutro + grezzo +
               acquavite + aiutoNeutro + aiutoGrezzo + aiutoAcquavite + detraibile + coda;
    }
};

const QString InizioCoda = QStringLiteral("9") + QString(30, '9');

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

// La testata è nel file dello scarico.
TEST_F(TracciatoConferimentiUscita, Certificato)
{
    ASSERT_EQ(LunghezzaRecord, Certificato{}.riga().size());
    EXPECT_TRUE(RecordUguale(Certificato{}.riga(), scarico.TRACCIATO_1(CertificatoTipico())));
    // Senza sigla né data; numero e quantità troppo lunghi tagliati.
    RigaValori riga = CertificatoTipico();
    riga.Imposta("domanda", "00000004711").Imposta("TAB_UTF.NUMERO_CERTIFICATO_UTF", "AT/2005/000123");
    riga.Imposta("SIGLA_UFFICIO_UTF_PROVINCIA", QString()).Imposta("TAB_UTF.DATA_EMISSIONE_CERTIFICATO", QString());
    riga.Imposta("QTA_TOT_VINO_LAVORATO", "123456789,12");
    EXPECT_TRUE(RecordUguale(Certificato{.domanda = "00000004711", .numero = "AT/2005/0", .sigla = "  ",
                                         .data = Bianchi(8), .vino = "34567891200"}
                                 .riga(),
                             scarico.TRACCIATO_1(riga)));
}

TEST_F(TracciatoConferimentiUscita, Produttore)
{
    ASSERT_EQ(LunghezzaRecord, Produttore{}.riga().size());
    scarico.TRACCIATO_1(CertificatoTipico());
    EXPECT_TRUE(RecordUguale(Produttore{}.riga(), scarico.TRACCIATO_2(ProduttoreTipico())));
    // Null e nome oltre i 70 caratteri; aiuto zero: solo zeri.
    RigaValori riga = ProduttoreTipico();
    riga.Imposta("DENOMINAZIONE", "SOCIETA AGRICOLA SEMPLICE DEI FRATELLI BIANCO GIUSEPPE E LUIGI DI CANELLI");
    riga.Imposta("ID_COLORE", QString()).Imposta("APPROVAZIONE_ANTICIPATA", QString());
    riga.Imposta("PERC_APPROVAZIONE_ANTICIPATA", QString()).Imposta("CODICE_CONTRATTO_DISTILLAZIONE", QString());
    riga.Imposta("AIUTO_ALCOLE_NEUTRO", "0,00");
    const Produttore atteso{.nome = "SOCIETA AGRICOLA SEMPLICE DEI FRATELLI BIANCO GIUSEPPE E LUIGI DI CANE",
                            .contratto = QString(11, '0'), .aiutoNeutro = QString(14, '0'),
                            .coda = "00" " " "000" + Bianchi(48)};
    EXPECT_TRUE(RecordUguale(atteso.riga(), scarico.TRACCIATO_2(riga)));
}

TEST_F(TracciatoConferimentiUscita, Coda)
{
    // Le somme passano per "##0.00" (arrotondate), il netto no: i decimali
    // oltre il secondo sono tagliati. Il netto di somme in doppia è esatto a
    // 15 cifre. Senza totali la riga si ferma a 43 caratteri.
    const std::tuple<std::optional<TotaliDomanda>, QString> casi[] = {
        {TotaliDomanda{1500.5, 0, 200.25, 100, "500"},
         "000000000150050" "000000000000000" "000000000020025" "000000000010000" "000000000160075" "00000000050000"
         "000000000110075"},
        {TotaliDomanda{10.005, 0, 0, 0, ""},
         "000000000001001" "000000000000000" "000000000000000" "000000000000000" "000000000001000" "00000000000000"
         "000000000001000"},
        {TotaliDomanda{0.1 + 0.2, 0.7, 0, 0.3, "0,5"},
         "000000000000030" "000000000000070" "000000000000000" "000000000000030" "000000000000070" "00000000000050"
         "000000000000020"},
        {std::nullopt, ""},
    };
    for (const auto& [totali, importi] : casi) {
        SCOPED_TRACE(importi.toStdString());
        scarico.ContaCertificati = 2;
        scarico.ContaProduttori = 15;
        const QString atteso = InizioCoda + "000002" + "000015" + (totali ? importi + Bianchi(153) : QString());
        EXPECT_TRUE(RecordUguale(atteso, scarico.TRACCIATO_9(totali)));
        EXPECT_EQ(0, scarico.ContaCertificati);
        EXPECT_EQ(15, scarico.ContaProduttori);
    }
}

// ------------------------------------------------------------- in entrata

// Le righe in entrata sono quelle delle forniture di prova.
namespace C = ConferimentiProva;

// Tipo_2 e Tipo_3 cercano provincia e colore nel database della sessione. I
// record interi, e provincia e colore sconosciuti, si provano col carico; qui
// i campi bianchi e il flag diverso da "S".
class TracciatoConferimentiDatabase : public ProvaConDatabase {};

TEST_F(TracciatoConferimentiDatabase, CampiBianchi)
{
    db();
    QString produttore = C::R3("RSSMRA70A01L219X", "ROSSI MARIO");
    produttore.replace(263, 4, QStringLiteral("N5  "));  // flag non "S", percentuale con spazi
    QString certificato = C::R2("999");
    certificato.replace(23, 8, Bianchi(8));   // data bianca
    certificato.replace(64, 11, Bianchi(11));  // acquavite bianca, anche la parte intera
    Carico c;
    for (const QString& r : {C::R1("00000004711"), certificato, produttore})
        c.LeggiRiga(r);
    // Nessuna testata letta: QUADRATURA vuota.
    const UtfSelezionato& u = c.Domande[1].Certificati[1].Utf;
    EXPECT_EQ(Bianchi(10) + "|0,    |3300,0000|",
              QStringList({u.DATA_EMISSIONE_CERTIFICATO, u.QTA_TOT_ACQUAVITE_OTTENUTO,
                           u.QTA_TOT_ETTOGRADI_VINO_LAVORATO, u.QUADRATURA})
                  .join('|'));
    const ProduttoreSelezionato& p = c.Domande[1].Certificati[1].Produttori[1];
    EXPECT_EQ("|5  |2", QStringList({p.APPROVAZIONE_ANTICIPATA, p.PERC_APPROVAZIONE_ANTICIPATA, p.iD_COLORE}).join('|'));
}

// Ogni certificato ha i suoi produttori: nulla si perde se i record si
// alternano. La quadratura bianca vale "0" e va a ogni certificato; la coda e
// i tipi sconosciuti sono saltati.
TEST_F(TracciatoConferimentiDatabase, AnnidamentoDelleRighe)
{
    db();
    QString cinque = C::R2("C9");
    cinque[0] = QLatin1Char('5');
    const auto p = [](const char* nome, const char* colore) { return C::R3(QString(), nome, colore); };
    const QStringList righe = {C::R0("0003", " "), C::R1("00000004711"), C::R2("C1"), p("P1", "BI"), p("P2", "RO"),
                               C::R9(), cinque, C::R2("C2"), p("P3", "RS"), C::R1("00000004712"),
                               C::R2("C3", "CN"), p("P4", "RO")};
    Carico c;
    QString tipi;
    for (const QString& r : righe)
        tipi += QString::number(c.LeggiRiga(r)) + ' ';
    EXPECT_EQ("0 1 2 3 3 -1 -1 2 3 1 2 3 ", tipi);
    QStringList domande;
    for (qsizetype i = 1; i < c.Domande.size(); ++i) {
        QStringList certificati;
        for (qsizetype j = 1; j < c.Domande[i].Certificati.size(); ++j) {
            const CertificatoCarico& k = c.Domande[i].Certificati[j];
            QStringList produttori;
            for (qsizetype n = 1; n < k.Produttori.size(); ++n)
                produttori << k.Produttori[n].DENOMINAZIONE.trimmed() + ":" + k.Produttori[n].iD_COLORE;
            certificati << k.Utf.NUMERO_CERTIFICATO_UTF.trimmed() + "/" + k.Utf.QUADRATURA + "/" +
                               k.Utf.DESCR_UFFICIO_UTF_PROVINCIA + "(" + produttori.join(' ') + ")";
        }
        domande << certificati.join(' ');
    }
    EXPECT_EQ("C1/0/TORINO(P1:1 P2:2) C2/0/TORINO(P3:3) | C3/0/CUNEO(P4:2)", domande.join(" | "));
}

}  // namespace
