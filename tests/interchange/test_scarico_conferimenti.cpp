// Scarico di una domanda del ramo conferimenti: la quadratura del primo
// certificato, il file finale byte per byte, la coda corta senza totali, la
// risposta No che non tocca nulla e la maschera frmProduttori_Scarico.

#include "interchange/ScaricoConferimenti.h"
#include "interchange/frmScarico.h"
#include "scarico_prova.h"
#include "shell/registro_maschere.h"

namespace {

const QString Etichetta = QStringLiteral(" FrmSelezionaFatture.SelRiga_SelFatture");
const MessaggioRegistrato Passata{"I dati hanno passato il controllo di Quadratura.", 64, TitoloLungo};
const MessaggioRegistrato NonQuadra{
    "Le quantità di vino risultante dei certificati Utf non corispondono con le quantità inserite per i singoli "
    "produttori.\r\nContinuare lo scarico ?",
    52, TitoloLungo};

class ScaricoConferimenti : public ProvaScarico {
protected:
    ScaricoConferimenti()
        : ProvaScarico(QStringLiteral(" Scarico delle Domande distillatore "), QStringLiteral("DOMANDE_PRODUTTORI"),
                       QStringLiteral("KelvarCONF."))
    {
    }

    qint64 Domanda()
    {
        db().Execute("INSERT INTO DOMANDE_PRODUTTORI (TIPO_ARTICOLO, DOMANDA, STAM, SCAR, ANTICIPO_RICEVUTO,"
                     " PROG_INVIO) VALUES ('29', '12345678901', 'S', 'N', '10,00', 0)");
        const qint64 id = db().OpenRecordset("SELECT MAX(ID_DOMANDA_PRODUTTORE) FROM DOMANDE_PRODUTTORI").Fields(0).intero();
        sessione().DomandaProduttoreSel.ID_DOMANDA_PRODUTTORE = static_cast<qint32>(id);
        sessione().DomandaProduttoreSel.DOMANDA = "12345678901";
        return id;
    }
    qint64 Certificato(qint64 domanda, const QString& numero, const QString& vino, const QString& ettogradi)
    {
        db().Execute("INSERT INTO TAB_UTF (iD_DOMANDA, NUMERO_CERTIFICATO_UTF, SIGLA_UFFICIO_UTF_PROVINCIA,"
                     " DATA_EMISSIONE_CERTIFICATO, QTA_TOT_VINO_LAVORATO, QTA_TOT_ETTOGRADI_VINO_LAVORATO,"
                     " QTA_TOT_ALCOLE_GREZZO_OTTENUTO, QTA_TOT_ALCOLE_NEUTRO_OTTENUTO, QTA_TOT_ACQUAVITE_OTTENUTO)"
                     " VALUES (?, ?, 'AT', '05/11/2005', ?, ?, '10,25', '20,5', '')",
                     {domanda, numero, vino, ettogradi});
        return db().OpenRecordset("SELECT MAX(iD_UTF) FROM TAB_UTF").Fields(0).intero();
    }
    void Produttore(qint64 utf, const QVariantList& valori)
    {
        db().Execute("INSERT INTO PRODUTTORI (CODI_FISC, DENOMINAZIONE, CODICE_CONTRATTO_DISTILLAZIONE,"
                     " QTA_VINO_EFFETIVAMENTE_DISTILLATA, TITOLO_ALCOLOMETRICO_FATTURATO, ETTOGRADI,"
                     " QTA_ALCOLE_NEUTRO, QTA_ALCOLE_GREZZO, QTA_ACQUAVITE, AIUTO_ALCOLE_NEUTRO, AIUTO_ALCOLE_GREZZO,"
                     " AIUTO_ACQUAVITE, IMPORTO_DETRAIBILE, ID_COLORE, APPROVAZIONE_ANTICIPATA,"
                     " PERC_APPROVAZIONE_ANTICIPATA) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)",
                     valori);
        db().Execute("INSERT INTO TAB_ID_UTF_PRODUTTORE (iD_UTF, iD_PRODUTTORE) SELECT ?, MAX(iD_PRODUTTORI)"
                     " FROM PRODUTTORI", {utf});
    }
    // Domanda con il certificato UTF1 che quadra (due produttori, il secondo
    // senza aiuti) e il certificato UTF2 senza produttori.
    qint64 SeminaDomanda(const QString& ettogradiSecondo = "600")
    {
        const qint64 d = Domanda();
        const qint64 a = Certificato(d, "UTF1", "150,5", "1806");
        Produttore(a, {"RSSMRA70A01H501S", "ROSSI MARIO", "123", "100,5", "12", "1206", "13,6", "6,8", "0", "25,62",
                       "11,91", "0,00", "1,50", 2, "S", "020"});
        Produttore(a, {"BNCGPP60B02A479X", "BIANCHI GIUSEPPE", "45", "50", "12", ettogradiSecondo, "", "", "", "",
                       QVariant(), "", "", 1, "", "000"});
        Certificato(d, "UTF2", "10", "120");
        return a;
    }
};

TEST_F(ScaricoConferimenti, Quadratura)
{
    const struct {
        const char* nome;
        QString ettogradiSecondo;
        bool senzaProduttori;
        int risposta;
        bool risultato;
        MessaggioRegistrato messaggio;
        QString quadratura;
    } casi[] = {
        {"quadra", "600", false, RispostaMsg::OK, true, Passata, "0"},
        {"quadra al quarto decimale", "600,00004", false, RispostaMsg::OK, true, Passata, "0"},
        {"non quadra, si continua", "601", false, RispostaMsg::Si, true, NonQuadra, "1"},
        {"non quadra, ci si ferma", "599,9999", false, RispostaMsg::No, false, NonQuadra, "1"},
        {"certificato senza produttori", "600", true, RispostaMsg::Si, true, NonQuadra, "1"},
    };
    for (const auto& c : casi) {
        SCOPED_TRACE(c.nome);
        TearDown();
        SetUp();
        const qint64 primo = SeminaDomanda(c.ettogradiSecondo);
        const qint64 chiave = c.senzaProduttori ? primo + 1 : primo;
        sessione().UtfSel.QUADRATURA = "x";
        script->Rispondi(c.risposta);
        EXPECT_EQ(c.risultato, ctrl_Quadratura(QString::number(chiave)));
        EXPECT_EQ(Messaggi{c.messaggio}, script->messaggi);
        EXPECT_EQ(c.quadratura, sessione().UtfSel.QUADRATURA);
    }
}

TEST_F(ScaricoConferimenti, FileFinaleBytePerByte)
{
    // Un'altra domanda, con un numero che viene prima, e un produttore: non
    // entra nei totali della coda.
    Produttore(Certificato(Domanda(), "ALTRO", "1", "1"), {"X", "X", "1", "1", "1", "1", "1", "1", "1", "7", "7", "7",
                                                          "7", 1, "", "000"});
    db().Execute("UPDATE DOMANDE_PRODUTTORI SET DOMANDA = '00000000001'");
    SeminaDomanda();
    script->Rispondi(RispostaMsg::OK);
    ASSERT_TRUE(ScaricaDomandaProduttore(destinazione));
    EXPECT_EQ(Messaggi{Passata}, script->messaggi);
    const QString cifreUtf1 = "00001505000" "00000205000" "00000102500" "00000000000" "000018060000";
    const QString certificato = "12345678901" "UTF1     " "AT" "20051105";
    const QStringList attese = {
        "0" + QString(30, '0') + "2005/2006" "0001" + QDate::currentDate().toString("yyyyMMdd") +
            Sx("DISTILLERIA BOSCO SPA", 70) + Sx("01234567890", 16) + "10" "29" + Bianchi(158),
        "1" + certificato + cifreUtf1 + Bianchi(213),
        "2" + certificato + "RSSMRA70A01H501S" + Sx("ROSSI MARIO", 70) + "00000000123" "00001005000" "120000"
            "000012060000" "00000136000" "00000068000" "00000000000" "00000000002562" "00000000001191" +
            QString(14, '0') + "00000000000150" "02" "S" "020" + Bianchi(48),
        "2" + certificato + "BNCGPP60B02A479X" + Sx("BIANCHI GIUSEPPE", 70) + "00000000045" "00000500000" "120000"
            "000006000000" + QString(33, '0') + QString(56, '0') + "01" " " "000" + Bianchi(48),
        "1" "12345678901" "UTF2     " "AT" "20051105" "00000100000" "00000205000" "00000102500" "00000000000"
            "000001200000" + Bianchi(213),
        "9" + QString(30, '9') + "000002" "000002" "000000000002562" "000000000001191" + QString(15, '0') +
            "000000000000150" "000000000003603" "00000000001000" "000000000002603" + Bianchi(153),
    };
    ConfrontaRighe(attese, Finale());
    EXPECT_EQ("1 N0,S1", Stato());
    EXPECT_FALSE(QFile::exists(Temporaneo()));
}

TEST_F(ScaricoConferimenti, RispostaNoNonToccaNulla)
{
    SeminaDomanda("601");
    script->Rispondi(RispostaMsg::No);
    EXPECT_FALSE(ScaricaDomandaProduttore(destinazione));
    EXPECT_EQ(Messaggi{NonQuadra}, script->messaggi);
    EXPECT_EQ("0 N0", Stato());
    EXPECT_FALSE(QFile::exists(Finale()));
    EXPECT_FALSE(QFile::exists(Temporaneo()));
}

TEST_F(ScaricoConferimenti, CodaCortaSenzaTotali)
{
    // Un solo certificato, senza produttori: la seconda query dei totali non
    // trova righe e la coda si ferma a 43 caratteri.
    Certificato(Domanda(), "UTF9", "1", "1");
    script->Rispondi(RispostaMsg::Si);
    ASSERT_TRUE(ScaricaDomandaProduttore(destinazione));
    const QStringList righe = LeggiRighe(Finale());
    ASSERT_EQ(3, righe.size());
    EXPECT_EQ("9" + QString(30, '9') + "000001" "000000", righe.at(2));
    EXPECT_EQ("1 S1", Stato());
}

TEST_F(ScaricoConferimenti, DomandaSenzaCertificati)
{
    Domanda();
    script->Rispondi(RispostaMsg::OK);
    EXPECT_FALSE(ScaricaDomandaProduttore(destinazione));
    EXPECT_EQ(Messaggi({{MessaggioLogErr(3075,
                                         "Errore di sintassi (operatore mancante) nell'espressione della query.",
                                         Etichetta),
                         48, "Gestione Errori"}}),
              script->messaggi);
    EXPECT_TRUE(QFile::exists(Temporaneo()));
    EXPECT_EQ("0 N0", Stato());
}

TEST_F(ScaricoConferimenti, Maschera)
{
    AnnullaRegistrazioni();
    RegistraMaschereDelSistema();
    const MascheraRegistrata* registrata = TrovaMaschera("frmProduttori_Scarico");
    ASSERT_NE(nullptr, registrata);
    EXPECT_EQ(Apertura::Modale, registrata->apertura);
    SeminaDomanda();
    script->cartelle.enqueue(destinazione);
    script->Rispondi(RispostaMsg::OK);
    std::unique_ptr<QWidget> maschera(registrata->fabbrica(nullptr));
    auto* scarico = qobject_cast<frmScarico*>(maschera.get());
    ASSERT_NE(nullptr, scarico);
    EXPECT_EQ("Scarico domande delle distillerie", scarico->windowTitle());
    EXPECT_EQ("Scarico in corso della Domanda n. 12345678901", scarico->Label1->text());
    EXPECT_EQ(QDialog::Accepted, scarico->exec());
    EXPECT_TRUE(QFile::exists(Finale()));
    AnnullaRegistrazioni();
}

}  // namespace
