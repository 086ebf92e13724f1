// Carico di una fornitura del ramo fatture: righe scritte, messaggi di ogni
// file cattivo, elenchi degli scarti, controllo di fine carico, secondo carico
// rifiutato, guasto a metà scrittura e la maschera frmCarico.

#include "support/prova.h"
#include "fornitura_prova.h"
#include "interchange/CaricoFatture.h"
#include "interchange/frmCarico.h"
#include "record_prova.h"
#include "shell/registro_maschere.h"

#include <QPointer>
#include <QTimer>

using namespace FornituraProva;

namespace {

const QString Titolo = QStringLiteral(" Carico della Domanda ");
const MessaggioRegistrato Riuscito{"Carico fornitura correttamente eseguito", 64, Titolo};
const MessaggioRegistrato NonRiuscito{"Carico fornitura non riuscito.", 16, Titolo};
const MessaggioRegistrato GiaPresenti{"Nell'archivio le domande da caricare sono già presenti. ", 64, Titolo};
const MessaggioRegistrato Lunghezza{"Il tracciato a una lunghezza di tipo record errata.\r\nIL caricamento sarà terminato.",
                                    16, Titolo};
const MessaggioRegistrato Anomala{"Tracciato fornitura anomala.\r\nVisualizzare le domande non caricate?", 4, Titolo};
const MessaggioRegistrato FattureScartate{
    "Ci sono delle fatture scartate perchè mancanti della data di introduzione.\r\nVisualizzare la lista?", 4,
    "Elenco delle fatture scartate"};

class CaricoFatture : public ProvaConDatabase {
protected:
    void SetUp() override
    {
        ProvaConDatabase::SetUp();
        sessione().TitoloMaschera = Titolo;
        db();
        file = QDir(cartella->cartella()).filePath("ART29FAT2005.txt");
    }
    void Carica(const QStringList& righe)
    {
        ScriviFile(file, righe);
        CaricaFornitura(file);
    }
    QString Programma(const QString& nome) const { return QDir(cartella->cartella()).filePath(nome); }
    int Conta(const QString& tabella) { return Righe(db(), "SELECT COUNT(*) FROM " + tabella).first().toInt(); }
    QString file;
};

// Due domande: la prima con due fatture (la seconda con due bolle), la
// seconda con una fattura e la sua bolla.
QStringList FornituraBuona()
{
    return {R0(),
            R1("00000000001"),
            R2("00000000001", "F1"),
            R2("00000000001", "F2", "VAT"),
            R3("00000000001", "F1", "B1", "01/03/2006"),
            R3("00000000001", "F2", "B2", "04/03/2006"),
            R3("00000000001", "F2", "B3", "05/03/2006"),
            R1("00000000002", "ACQ"),
            R2("00000000002", "G1", "VDT", "CANTINA DI SANTO STEFANO SOCIETÀ COOPERATIVA"),
            R3("00000000002", "G1", "B4"),
            Riga("9999")};
}

TEST_F(CaricoFatture, FornituraBuonaESecondoCaricoRifiutato)
{
    script->Rispondi(RispostaMsg::OK);
    Carica(FornituraBuona());
    EXPECT_EQ(Messaggi{Riuscito}, script->messaggi);
    EXPECT_EQ(QStringList({"00000000001|01|29|2|N|N|0|2005", "00000000002|01|29|3|N|N|0|2005"}),
              Righe(db(), "SELECT DOMANDA, PROGRESSIVO, TIPO_ARTICOLO, ID_VARIETA, STAM, SCAR, PROG_INVIO, DATA_CAMP"
                          " FROM DOMANDE ORDER BY ID_DOMANDA"));
    // Un nome con una lettera accentata passa per intero, come ogni altro.
    const auto resto = [](const QString& nome) {
        return "|RSSMRA70A01H501S|" + Sx(nome, 50) +
               "|15/03/2006|1500,0000|12,5000|2,4500|3675,00|735,00|4410,00|20/04/2006|";
    };
    const QString canelli = resto("CANTINA SOCIALE DI CANELLI");
    EXPECT_EQ(QStringList({"00000000001|1|" + Sx("F1", 15) + canelli + "01/03/2006|1480,0000",
                           "00000000001|2|" + Sx("F2", 15) + canelli + "04/03/2006|1480,0000",
                           "00000000002|1|" + Sx("G1", 15) + resto("CANTINA DI SANTO STEFANO SOCIETÀ COOPERATIVA") +
                               "02/03/2006|1480,0000"}),
              Righe(db(), "SELECT DOMANDA, ID_LAVORAZIONE, NUME_FATT, CODI_FISC, DENOMINAZIONE, DATA_FATT, QTA_PROD,"
                          " GRAD, PREZ_MINI, IMPO, IVA, IMPO_TOTA, DATA_PAGA, DATA_COMP, QTA_LAVO"
                          " FROM FATTURE JOIN DOMANDE USING (ID_DOMANDA) ORDER BY ID_FATTURA"));
    EXPECT_EQ(QStringList({Sx("F1", 15) + "|" + Sx("B1", 20) + "|01/03/2006|750,0000|12,5000|" + Bianchi(10),
                           Sx("F2", 15) + "|" + Sx("B2", 20) + "|04/03/2006|750,0000|12,5000|" + Bianchi(10),
                           Sx("F2", 15) + "|" + Sx("B3", 20) + "|05/03/2006|750,0000|12,5000|" + Bianchi(10),
                           Sx("G1", 15) + "|" + Sx("B4", 20) + "|02/03/2006|750,0000|12,5000|" + Bianchi(10)}),
              Righe(db(), "SELECT NUME_FATT, NUMERO_BOLLA, DATA_CONSEGNA, QUANTITA_PRODOTTO, GRADO, BOLLE.DATA_PAGA"
                          " FROM BOLLE JOIN FATTURE ON ID_FATTURA = FK_ID_FATTURA ORDER BY ID_BOLLA"));
    EXPECT_EQ(QStringList({"2005|000002|000003|000004|15/05/2006|001"}),
              Righe(db(), "SELECT CAMPAGNA, NUMERO_DOMANDE, NUMERO_FATTURE, Numero_bolle, DATA_FORNITURE,"
                          " PROGRESSIVO_FORNITURA FROM TAB_Fornitura"));
    EXPECT_FALSE(QFile::exists(Programma("COPI1.666")));

    // Lo stesso file una seconda volta: fermo alla prima riga.
    script->messaggi.clear();
    script->Rispondi(RispostaMsg::OK);
    CaricaFornitura(file);
    EXPECT_EQ(Messaggi({{"Fornitura già caricata.", 64, Titolo}}), script->messaggi);
    EXPECT_EQ(2, Conta("DOMANDE"));
    EXPECT_EQ(1, Conta("TAB_Fornitura"));
}

QByteArray Byte(const QStringList& righe, const char* fine = "\r\n")
{
    QByteArray b;
    for (const QString& r : righe)
        b += CodificaRiga(r) + fine;
    return b;
}

TEST_F(CaricoFatture, FileCattivi)
{
    QStringList corta = FornituraBuona();
    corta.insert(corta.size() - 1, R2("00000000003", "X").left(259));
    const MessaggioRegistrato fuoriPosto{
        MessaggioLogErr(9, "Indice non compreso nell'intervallo (record di tipo 2 fuori posto)",
                        " frmCarico.battoncarica"),
        48, "Gestione Errori"};
    const struct { const char* nome; QByteArray byte; Messaggi messaggi; int domande; } casi[] = {
        {"file vuoto", "", {GiaPresenti}, 0},
        {"righe chiuse dal solo LF", Byte(FornituraBuona(), "\n"), {Lunghezza, GiaPresenti}, 0},
        {"record di 259 dopo due domande buone", Byte(corta), {Lunghezza, Riuscito}, 2},
        {"record 2 prima di ogni record 1", Byte({R0(), R2("00000000001", "F1")}), {fuoriPosto}, 0},
        {"prodotto sconosciuto", Byte({R0(), R1("00000000001", "XYZ"), R2("00000000001", "F1")}),
         {{"Identificativo delle varietà non esistente", 64, Titolo}, NonRiuscito}, 0},
        {"lavorazione sconosciuta", Byte({R0(), R1("00000000001"), R2("00000000001", "F1", "QQQ")}),
         {{"Identificativo lavorazione non esistente", 64, Titolo}, NonRiuscito}, 0},
        {"senza record 0: campagna vuota", Byte(FornituraBuona().mid(1)), {Riuscito}, 2},
    };
    for (const auto& caso : casi) {
        SCOPED_TRACE(caso.nome);
        TearDown();
        SetUp();
        for (const MessaggioRegistrato& m : caso.messaggi)
            script->Rispondi(m.stile & StileMsg::SiNo ? RispostaMsg::No : RispostaMsg::OK);
        ScriviByte(file, caso.byte);
        CaricaFornitura(file);
        EXPECT_EQ(caso.messaggi, script->messaggi);
        EXPECT_EQ(caso.domande, Conta("DOMANDE"));
        EXPECT_EQ(caso.domande ? 1 : 0, Conta("TAB_Fornitura"));
    }
    EXPECT_EQ(QStringList({"00000000001|", "00000000002|"}), Righe(db(), "SELECT DOMANDA, DATA_CAMP FROM DOMANDE"));
}

TEST_F(CaricoFatture, ElencoDelleDomandeScartate)
{
    db().Execute("INSERT INTO DOMANDE (DOMANDA, PROGRESSIVO) VALUES ('00000000001', '01')");
    const QStringList righe = {
        R0(),
        // già in archivio
        R1("00000000001"), R2("00000000001", "A1"), R3("00000000001", "A1", "N1"),
        // due volte nella fornitura
        R1("00000000002"), R2("00000000002", "B1"), R3("00000000002", "B1", "N2"),
        R1("00000000002"), R2("00000000002", "B1"), R3("00000000002", "B1", "N3"),
        // fattura di un'altra domanda
        R1("00000000003"), R2("00000000009", "C1"), R3("00000000003", "C1", "N4"),
        // né fatture né bolle
        R1("00000000004"),
        // bolla di un'altra domanda e bolla di una fattura che non c'è
        R1("00000000005"), R2("00000000005", "E1"), R2("00000000005", "E2"), R3("00000000008", "E1", "N5"),
        R3("00000000005", "ZZ", "N6"),
    };
    for (const bool vedi : {false, true}) {
        SCOPED_TRACE(vedi ? "elenco chiesto" : "elenco rifiutato");
        script->messaggi.clear();
        script->Rispondi(vedi ? RispostaMsg::Si : RispostaMsg::No);
        Carica(righe);
        EXPECT_EQ(Messaggi{Anomala}, script->messaggi);
        EXPECT_EQ(vedi ? 1 : 0, script->testiMostrati.size());
        EXPECT_EQ(vedi, QFile::exists(Programma("Domande_Scartate.txt")));
    }
    EXPECT_EQ(QStringList{Programma("Domande_Scartate.txt")}, script->testiMostrati);
    const auto riga = [](const char* domanda, const char* fattura, const char* motivo) {
        return QString(domanda) + " - 01 - " + Sx(fattura, 15) + " - " + Sx(motivo, 70) + "\r\n\r\n";
    };
    const QString atteso =
        riga("00000000001", "", "Num. Domanda e Progressivo sono già caricati in archivio.") +
        riga("00000000002", "", "Domanda presente più di una volta nella fornitura.") +
        riga("00000000002", "", "Domanda presente più di una volta nella fornitura.") +
        riga("00000000003", "C1", "Fattura non appartenente alla domanda.") +
        riga("00000000004", "", "Domanda. senza fatture") + riga("00000000004", "", "Domanda. senza bolle") +
        riga("00000000005", "E1", "Domanda. senza bolle") +
        riga("00000000005", "E2", "Bolla non appartenente alla fattura.");
    QFile scarti(Programma("Domande_Scartate.txt"));
    ASSERT_TRUE(scarti.open(QIODevice::ReadOnly));
    EXPECT_EQ(atteso, QString::fromLocal8Bit(scarti.readAll()));
    EXPECT_EQ(1, Conta("DOMANDE"));
    EXPECT_EQ(0, Conta("FATTURE"));
    EXPECT_EQ(0, Conta("TAB_Fornitura"));
}

TEST_F(CaricoFatture, FineCaricoTogliePureLeFattureSenzaDataDiIntroduzione)
{
    // Una fattura scritta a mano senza data di introduzione, di prima.
    db().Execute("INSERT INTO FATTURE (ID_DOMANDA, CODI_FISC, DENOMINAZIONE, NUME_FATT, DATA_COMP)"
                 " VALUES (77, 'BNCGPP60B02A479X', 'VECCHIA', '5', '  ')");
    db().Execute("INSERT INTO BOLLE (FK_ID_FATTURA, NUMERO_BOLLA) SELECT MAX(ID_FATTURA), 'V' FROM FATTURE");
    script->Rispondi(RispostaMsg::Si);
    script->Rispondi(RispostaMsg::OK);
    Carica({R0(), R1("00000000001"), R2("00000000001", "F1"), R2("00000000001", "F2"),
            R3("00000000001", "F1", "B1")});
    EXPECT_EQ(Messaggi({FattureScartate, Riuscito}), script->messaggi);
    EXPECT_EQ(QStringList({Sx("F1", 15)}), Righe(db(), "SELECT NUME_FATT FROM FATTURE"));
    EXPECT_EQ(QStringList({Sx("B1", 20)}), Righe(db(), "SELECT NUMERO_BOLLA FROM BOLLE"));
    EXPECT_EQ(QStringList{Programma("scartati.txt")}, script->testiMostrati);
    QFile elenco(Programma("scartati.txt"));
    ASSERT_TRUE(elenco.open(QIODevice::ReadOnly));
    EXPECT_EQ("BNCGPP60B02A479X - VECCHIA - 5\r\nRSSMRA70A01H501S - " + Sx("CANTINA SOCIALE DI CANELLI", 50) +
                  " - " + Sx("F2", 15) + "\r\n\r\n",
              QString::fromLocal8Bit(elenco.readAll()));
}

TEST_F(CaricoFatture, GuastoInScritturaLasciaCiòCheÈScritto)
{
    db().Execute("CREATE TRIGGER rotta BEFORE INSERT ON BOLLE WHEN NEW.NUMERO_BOLLA LIKE 'B4%'"
                 " BEGIN SELECT RAISE(ABORT, 'bolla rotta'); END");
    script->Rispondi(RispostaMsg::OK);
    script->Rispondi(RispostaMsg::OK);
    Carica(FornituraBuona());
    EXPECT_EQ(Messaggi({{MessaggioLogErr(3019, "bolla rotta", " frmCarico.AllineaDB"), 48, "Gestione Errori"},
                        NonRiuscito}),
              script->messaggi);
    EXPECT_EQ(2, Conta("DOMANDE"));
    EXPECT_EQ(3, Conta("BOLLE"));
    EXPECT_EQ(0, Conta("TAB_Fornitura"));

    // Il secondo tentativo scarta tutto: le domande ci sono già.
    db().Execute("DROP TRIGGER rotta");
    script->messaggi.clear();
    script->Rispondi(RispostaMsg::No);
    CaricaFornitura(file);
    EXPECT_EQ(Messaggi{Anomala}, script->messaggi);
    EXPECT_EQ(0, Conta("TAB_Fornitura"));
}

// La maschera: nome del file che cresce a ogni scelta della campagna,
// animazione e conteggio durante il carico, maschera aperta dopo.
TEST_F(CaricoFatture, Maschera)
{
    AnnullaRegistrazioni();
    RegistraMaschereDelSistema();
    const MascheraRegistrata* registrata = TrovaMaschera("frmCarico");
    ASSERT_NE(nullptr, registrata);
    EXPECT_EQ(Apertura::FiglioMdi, registrata->apertura);
    auto* maschera = qobject_cast<frmCarico*>(registrata->fabbrica(nullptr));
    ASSERT_NE(nullptr, maschera);
    maschera->setAttribute(Qt::WA_DeleteOnClose);
    maschera->show();
    EXPECT_EQ(Titolo, maschera->windowTitle());
    EXPECT_EQ(5, maschera->CmbDomAnnualita->count());
    EXPECT_EQ("2005", maschera->CmbDomAnnualita->currentText());
    EXPECT_EQ("Seleziona percorso file ART29-30FAT.txt", maschera->percorso->text());
    maschera->CmbDomAnnualita->setCurrentIndex(2);
    maschera->CmbDomAnnualita_Click();
    maschera->CmbDomAnnualita->setCurrentIndex(4);
    maschera->CmbDomAnnualita_Click();
    EXPECT_EQ("Seleziona percorso file ART29-30FAT.txt ART29-30FAT2003.TXT ART29FAT2005.TXT",
              maschera->percorso->text());
    EXPECT_EQ("2005", sessione().CampagnaSelezionata);

    ScriviFile(file, FornituraBuona());
    script->cartelle.enqueue(cartella->cartella());
    QStringList durante;
    script->alMessaggio = [&](const MessaggioRegistrato&) {
        durante << QString::number(maschera->Timer->isActive()) + maschera->carica->text() +
                       maschera->conteggio->text() + QString::number(maschera->Cmddati[1]->isEnabled());
    };
    script->Rispondi(RispostaMsg::OK);
    maschera->Cmddati[0]->click();
    EXPECT_EQ(QStringList({"1Carico in corso . . .Record letti: 110"}), durante);
    EXPECT_EQ(Messaggi{Riuscito}, script->messaggi);
    EXPECT_EQ(QStringList({"Selezionare il Percorso del file ART29FAT2005.txt di Carico."}), script->titoliCartella);
    EXPECT_FALSE(maschera->Timer->isActive());
    EXPECT_TRUE(maschera->isVisible());
    EXPECT_FALSE(maschera->carica->isVisible());
    EXPECT_EQ(2, Conta("DOMANDE"));

    // Nessuna cartella: la maschera si chiude e la campagna scelta si dimentica.
    QPointer<frmCarico> guardia(maschera);
    maschera->Cmddati[0]->click();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(guardia.isNull());
    EXPECT_EQ("", sessione().CampagnaSelezionata);
    AnnullaRegistrazioni();
}

}  // namespace
