// File di fornitura: pagina windows-1252, un byte per carattere, CR LF dopo
// ogni riga; scrittura e lettura come le facevano Print e Line Input.

#include "common/errore.h"
#include "interchange/FileFornitura.h"
#include "interchange/TracciatoConferimenti.h"
#include "interchange/TracciatoFatture.h"
#include "record_prova.h"
#include "shell/session_state.h"
#include "support/cartella_prova.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

QByteArray Contenuto(const QString& percorso)
{
    QFile f(percorso);
    EXPECT_TRUE(f.open(QIODevice::ReadOnly)) << percorso;
    return f.readAll();
}

void Scrivi(const QString& percorso, const QByteArray& byte)
{
    QFile f(percorso);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(byte);
}

int NumeroErrore(const std::function<void()>& azione)
{
    try {
        azione();
    } catch (const ErroreSistema& e) {
        return e.numero();
    }
    return 0;
}

class FileFornitura : public ::testing::Test {
protected:
    void TearDown() override { sessione().Azzera(); }
    QString Percorso(const QString& nome) const { return QDir(dir.path()).filePath(nome); }
    QTemporaryDir dir;
};

TEST_F(FileFornitura, DomandaSenzaFattureDaTestataECodaConCrLf)
{
    sessione().DistilleriaDati.RAGI_SOCI = QStringLiteral("DISTILLERIA BOSCO SPA");
    sessione().DistilleriaDati.INDI_DIST = QStringLiteral("VIA ROMA 12 ASTI");
    sessione().DomandaSel.ID_VARIETA = QStringLiteral("2");
    sessione().DomandaSel.TIPO_ARTICOLO = QStringLiteral("30");
    TracciatoFatture::Scarico scarico;
    scarico.NumeroScarico = QStringLiteral("012");
    scarico.DataScarico = QDate(2006, 1, 9);
    {
        ScritturaFornitura file(Percorso("COPI1.666"));
        file.Print(scarico.TRACCIATO_0());
        file.Print(scarico.TRACCIATO_9());
        file.Close();
    }
    const QByteArray atteso = QByteArray("0") + "0000000000000000" + "2005/2006" + "0012" + "20060109" +
                              "DISTILLERIA BOSCO SPA" + QByteArray(29, ' ') + "VIA ROMA 12 ASTI" +
                              QByteArray(14, ' ') + "02" + "30" + QByteArray(138, ' ') + "\r\n" + "9" +
                              "9999999999999999" + "000000" + "000000" + QByteArray(231, ' ') + "\r\n";
    EXPECT_EQ(atteso.toStdString(), Contenuto(Percorso("COPI1.666")).toStdString());
}

TEST_F(FileFornitura, LetteraAccentataUnCarattereEUnByteDeiDuecentosessanta)
{
    sessione().DistilleriaDati.CODI_FISC = QStringLiteral("01234567890");
    TracciatoFatture::Scarico scarico;
    const RigaValori fattura{{"DOMANDA", "00000012345"},   {"CODI_LAVO", "VDT"},   {"PRODOTTO", "ANE"},
                             {"CODI_FISC", "RSSMRA70A01H501S"}, {"NUME_FATT", "125"}, {"DATA_FATT", "15/03/2006"},
                             {"QTA_PROD", "1500,0000"},     {"GRAD", "12,5000"},     {"PREZ_MINI", "2,4500"},
                             {"IMPO", "3675,00"},           {"IVA", "735,00"},       {"IMPO_TOTA", "4410,00"},
                             {"DATA_PAGA", ""},             {"QTA_LAVO", "1480,0000"},
                             {"DENOMINAZIONE", QStringLiteral("CANTINA DI SAN DONÀ DI PIAVE")}};
    const RigaValori bolla{{"DOMANDA", "00000012345"}, {"NUME_FATT", "125"},         {"CODI_FISC", "RSSMRA70A01H501S"},
                           {"NUMERO_BOLLA", "N° 44"},   {"DATA_CONSEGNA", "02/03/2006"}, {"QUANTITA_PRODOTTO", "750,0000"},
                           {"BOLLE.DATA_PAGA", ""},     {"GRADO", "12,5000"}};
    const QString record1 = scarico.TRACCIATO_1(fattura);
    const QString record2 = scarico.TRACCIATO_2(bolla);
    ASSERT_EQ(260, record1.size());
    ASSERT_EQ(260, record2.size());
    {
        ScritturaFornitura file(Percorso("fatture.txt"));
        file.Print(record1);
        file.Print(record2);
        file.Close();
    }
    const QByteArray byte = Contenuto(Percorso("fatture.txt"));
    ASSERT_EQ(2 * 262, byte.size());
    EXPECT_EQ(QByteArray("SAN DON\xC0 DI PIAVE"), byte.mid(171, 17));  // "À" è il byte C0
    EXPECT_EQ(QByteArray(30, ' ') + "\r\n", byte.mid(230, 32));     // il nome non sposta la coda
    EXPECT_EQ(QByteArray("N\xB0 44"), byte.mid(262 + 43, 5));         // "°" è il byte B0

    LetturaFornitura lettura(Percorso("fatture.txt"));
    EXPECT_TRUE(RecordUguale(record1, lettura.LineInput()));
    EXPECT_TRUE(RecordUguale(record2, lettura.LineInput()));
    EXPECT_TRUE(lettura.eof());
}

TEST_F(FileFornitura, CaratteriFuoriDallaPaginaDiventanoPuntiInterrogativi)
{
    // "€" e "Š" sono nella pagina; "ł" no, e una coppia surrogata vale due "?".
    const QString riga = QStringLiteral("A€Šł") + QString::fromUtf8("\xF0\x9F\x8D\x87") + QStringLiteral("Z");
    EXPECT_EQ(QByteArray("A\x80\x8A???Z"), CodificaRiga(riga));
    EXPECT_EQ(riga.size(), CodificaRiga(riga).size());
}

TEST_F(FileFornitura, OgniByteUnCarattereAndataERitorno)
{
    QByteArray tutti;
    for (int b = 0; b < 256; ++b)
        tutti.append(static_cast<char>(b));
    const QString testo = DecodificaRiga(tutti);
    ASSERT_EQ(256, testo.size());
    EXPECT_EQ(QChar(0x20AC), testo.at(0x80));
    EXPECT_EQ(QChar(0x00E0), testo.at(0xE0));
    EXPECT_EQ(tutti, CodificaRiga(testo));
}

TEST_F(FileFornitura, FineRigaComeLineInput)
{
    // CR LF, CR da solo, LF da solo (resta nella riga), riga vuota, ultima senza fine riga.
    Scrivi(Percorso("righe.txt"), "uno\r\ndue\rtre\nquattro\r\n\r\ncinque");
    LetturaFornitura lettura(Percorso("righe.txt"));
    QStringList righe;
    while (!lettura.eof())
        righe << lettura.LineInput();
    EXPECT_EQ((QStringList{"uno", "due", "tre\nquattro", "", "cinque"}), righe);
    EXPECT_EQ(62, NumeroErrore([&] { lettura.LineInput(); }));
}

TEST_F(FileFornitura, ErroriDiApertura)
{
    EXPECT_EQ(53, NumeroErrore([&] { LetturaFornitura l(Percorso("manca.txt")); }));
    EXPECT_EQ(76, NumeroErrore([&] { ScritturaFornitura s(Percorso("cartella/manca.txt")); }));
}

TEST_F(FileFornitura, UnaScritturaSostituisceIlFileEsistente)
{
    Scrivi(Percorso("COPI1.666"), QByteArray(1000, 'x'));
    {
        ScritturaFornitura file(Percorso("COPI1.666"));
        file.Print(QStringLiteral("abc"));
    }  // chiuso dal distruttore
    EXPECT_EQ(QByteArray("abc\r\n"), Contenuto(Percorso("COPI1.666")));
}

// Una lettera accentata nel nome del produttore: la riga resta di 300
// caratteri e i campi dopo il nome restano al loro posto.
class FileFornituraConDatabase : public ProvaConDatabase {};

TEST_F(FileFornituraConDatabase, ProduttoreConNomeAccentatoRiletto)
{
    db();
    const QString nome = QStringLiteral("CANTINA SOCIALE DI SANTO STEFANO BELBO E CASTIGLIONE TINELLA SOC. COOPÈ");
    const QString record = QStringLiteral("3") + "00000004711" + "12345    " + "AT" + "20051105" +
                           "BNCGPP60B02A479X" + Sx(QStringLiteral("NICOLÒ ROSSI"), 70) + "00000000123" +
                           "00000805000" + "115000" + "000009257500" + "00000101234" + "00000000000" +
                           "00000000000" + "00000000015050" + "00000000000000" + "00000000000000" +
                           "00000000001200" + "RO" + "000000000016250" + "S" + "050" + Bianchi(33);
    ASSERT_EQ(300, record.size());
    const QString percorso = QDir(cartella->cartella()).filePath(QStringLiteral("conf.txt"));
    {
        ScritturaFornitura file(percorso);
        file.Print(record);
        file.Print(nome);
    }
    const QByteArray byte = Contenuto(percorso);
    ASSERT_EQ(302 + nome.size() + 2, byte.size());
    EXPECT_EQ(QByteArray("NICOL\xD2 ROSSI"), byte.mid(47, 12));

    LetturaFornitura lettura(percorso);
    const QString riletta = lettura.LineInput();
    ASSERT_EQ(300, riletta.size());
    TracciatoConferimenti::Carico c;
    c.NumeroDomande = 1;
    c.Domande.resize(2);
    c.NumeroCertificati = 1;
    c.Domande[1].Certificati.resize(2);
    c.NumeroProduttori = 1;
    c.Tipo_3(riletta);
    const ProduttoreSelezionato& p = c.Domande[1].Certificati[1].Produttori[1];
    EXPECT_EQ(Sx(QStringLiteral("NICOLÒ ROSSI"), 70), p.DENOMINAZIONE);
    EXPECT_EQ("2", p.iD_COLORE);
    EXPECT_EQ("162,50", p.TOTALE_AIUTO);
    EXPECT_EQ("050", p.PERC_APPROVAZIONE_ANTICIPATA);
    EXPECT_EQ(nome, lettura.LineInput());
}

}  // namespace

namespace {

TEST(RigaValori, NomiSenzaDistinguereMaiuscoleEQualificati)
{
    RigaValori riga{{"domanda", "1"}, {"BOLLE.DATA_PAGA", "01/01/2006"}, {"DATA_PAGA", "02/02/2006"}};
    riga.Imposta("DOMANDA", "2");  // sostituisce il valore scritto in minuscolo
    EXPECT_EQ("2", riga.Campo("domanda"));
    EXPECT_EQ("2", riga.Campo("Domanda"));
    EXPECT_EQ("01/01/2006", riga.Campo("bolle.data_paga"));
    EXPECT_EQ("02/02/2006", riga.Campo("FATTURE.DATA_PAGA"));  // qualificato assente: il nome semplice
    EXPECT_EQ(3265, NumeroErrore([&] { riga.Campo("GRADO"); }));
}

}  // namespace
