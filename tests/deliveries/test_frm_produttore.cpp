// La maschera del produttore: salvataggio con le domande del calcolo, perdite
// della modifica, percentuale d'anticipo, articolo 30, pulsante di calcolo,
// certificato senza ettogradi e la scrittura senza maschera.
#include "deliveries/FrmProduttore.h"
#include "deliveries/MetodiProduttore.h"
#include "support/prova.h"

#include <QGroupBox>

namespace {

using Campi = QList<QPair<int, QString>>;

const QString PartitaIva = QStringLiteral("01234567897");
const QString TroppoGrande = QStringLiteral("La quantità ottenuta di calcolo è troppo grande");
const QString Differenze = QStringLiteral("Si sono rilevate delle differenze nei calcoli Automatici : ");
// Colonne confrontate: ettogradi, quote, aiuti, totale, campagna, le due
// quantità della modifica, approvazione e percentuale, colore.
const QString Colonne = QStringLiteral(
    "SELECT CODI_FISC, DENOMINAZIONE, ETTOGRADI, QTA_ALCOLE_GREZZO, QTA_ALCOLE_NEUTRO, QTA_ACQUAVITE, "
    "AIUTO_ALCOLE_GREZZO, AIUTO_ALCOLE_NEUTRO, AIUTO_ACQUAVITE, TOTALE_AIUTO, CAMPAGNA_PRESCELTA, "
    "QTA_MAX_DISTILLABILE, QTA_VINO_DISTILLATA_AIUTO, APPROVAZIONE_ANTICIPATA, PERC_APPROVAZIONE_ANTICIPATA, "
    "ID_COLORE FROM PRODUTTORI ORDER BY iD_PRODUTTORI");

QString Riga(const QString& grezzo, const QString& aiutoGrezzo, const QString& totale, const QString& coda)
{
    return "01234567897|D'ANNA & C.|120,0000|" + grezzo + "|2,4000|1,2000|" + aiutoGrezzo + "|452,16|210,12|" +
           totale + "|" + coda;
}

class ProvaProduttore : public ProvaConDatabase {
protected:
    void SetUp() override
    {
        ProvaConDatabase::SetUp();
        Sessione& s = sessione();
        db().Execute(QStringLiteral("INSERT INTO DOMANDE_PRODUTTORI (ID_DOMANDA_PRODUTTORE, TIPO_ARTICOLO, DOMANDA, "
                                    "STAM, SCAR) VALUES (7, '29', '00000000042', 'S', 'S')"));
        s.TitoloMaschera = QStringLiteral("Conferimenti");
        s.ModoMaschera = QStringLiteral("I");
        s.DomandaProduttoreSel.ID_DOMANDA_PRODUTTORE = 7;
        s.DomandaProduttoreSel.DOMANDA = QStringLiteral("00000000042");
        s.DomandaProduttoreSel.TIPO_ARTICOLO = QStringLiteral("29");
        s.UtfSel.iD_UTF = 3;
        s.UtfSel.iD_DOMANDA = 7;
        s.UtfSel.NUMERO_CERTIFICATO_UTF = QStringLiteral("UTF-1");
        Certificato(QStringLiteral("1000"));
    }
    void TearDown() override
    {
        maschera.reset();
        ProvaConDatabase::TearDown();
    }

    // Ettogradi lavorati; grezzo 50, neutro 20, acquavite 10.
    static void Certificato(const QString& ettogradi)
    {
        UtfSelezionato& u = sessione().UtfSel;
        u.QTA_TOT_ETTOGRADI_VINO_LAVORATO = ettogradi;
        u.QTA_TOT_ALCOLE_GREZZO_OTTENUTO = QStringLiteral("50");
        u.QTA_TOT_ALCOLE_NEUTRO_OTTENUTO = QStringLiteral("20");
        u.QTA_TOT_ACQUAVITE_OTTENUTO = QStringLiteral("10");
    }

    FrmProduttore& Apri()
    {
        maschera = std::make_unique<FrmProduttore>();
        maschera->show();
        maschera->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(maschera.get()));
        return *maschera;
    }
    QLineEdit* Campo(int i) { return maschera->TxtDati.value(i); }
    void Scrivi(const Campi& campi)
    {
        for (const auto& [i, t] : campi)
            Campo(i)->setText(t);
    }
    // Produttore completo: 10 ettolitri a 12 gradi fanno 120 ettogradi; il calcolo dà il resto.
    void Compila()
    {
        Scrivi({{6, PartitaIva}, {7, "D'ANNA & C."}, {8, "CONTR1"}, {11, "3"}, {12, "1"}, {13, "10"}, {16, "12"}});
        maschera->cboProdotto[15]->setCurrentIndex(maschera->cboProdotto[15]->findText("ROSSO RO"));
        QTest::mouseClick(maschera->Cmdcalcolo, Qt::LeftButton);
    }
    void Salva() { QTest::mouseClick(maschera->Cmddati[0], Qt::LeftButton); }
    QStringList Produttori() { return Righe(db(), Colonne); }

    std::unique_ptr<FrmProduttore> maschera;
};

// Il salvataggio con le domande del calcolo. Salvato: la maschera si chiude, il
// certificato è legato e la domanda va ristampata. L'articolo 30 ha il
// riquadro chiuso, il mese vuoto dà il codice 11 e il record passa con le
// aliquote 1.1222; l'aiuto sul neutro, 269,328, è scritto arrotondato e
// confrontato troncato, e la differenza tenuta con No.
TEST_F(ProvaProduttore, SalvataggioConLeDomandeDelCalcolo)
{
    const struct {
        const char* articolo;
        Campi modifiche;
        QList<int> risposte;
        Messaggi messaggi;
        int codice;
        QString riga;  // vuota: niente salvato
    } casi[] = {
        // 5 000 000 x 12 = 60 000 000,0000: nove cifre prima della virgola.
        {"29", {{13, "5000000"}}, {RispostaMsg::OK, RispostaMsg::Annulla},
         {{TroppoGrande, StileMsg::Informazione, "Produttore"},
          {"OVERFLOW - Il campo Ettogradi non puo' essere calcolato \r\n\r\n"
           "I dati saranno salvati senza calcoli automatici", StileMsg::OKAnnulla, TitoloLungo}},
         0, {}},
        {"29", {}, {}, {}, 0, Riga("6,0000", "1050,60", "1712,88", "|0,0000|0,0000||000|2")},
        {"30", {{11, ""}, {12, ""}}, {RispostaMsg::No},
         {{Differenze + "\r\nIl valore calcolato degli Aiuto alcole neutro é 269,33\r\n"
                        "Sostituire con i valori calcolati ?",
           StileMsg::SiNo, TitoloLungo}},
         11, "01234567897|D'ANNA & C.|120,0000|6,0000|2,4000|1,2000|673,32|269,33|134,66|1077,31|"
             "|0,0000|0,0000||000|2"},
    };
    for (const auto& c : casi) {
        SCOPED_TRACE(c.articolo);
        db().Execute("DELETE FROM PRODUTTORI");
        db().Execute("DELETE FROM TAB_ID_UTF_PRODUTTORE");
        db().Execute("UPDATE DOMANDE_PRODUTTORI SET STAM = 'S', SCAR = 'S'");
        sessione().DomandaProduttoreSel.TIPO_ARTICOLO = QString::fromLatin1(c.articolo);
        script->messaggi.clear();
        Apri();
        EXPECT_EQ(maschera->Fra29->isEnabled(), QByteArray(c.articolo) == "29");
        Compila();
        Scrivi(c.modifiche);
        for (int r : c.risposte)
            script->Rispondi(r);
        Salva();
        EXPECT_EQ(sessione().IndiceCampo, c.codice);
        EXPECT_EQ(script->messaggi, c.messaggi);
        const bool salvato = !c.riga.isEmpty();
        EXPECT_EQ(Produttori(), salvato ? QStringList{c.riga} : QStringList());
        EXPECT_EQ(maschera->isVisible(), !salvato);
        EXPECT_EQ(Righe(db(), "SELECT iD_UTF, iD_PRODUTTORE FROM TAB_ID_UTF_PRODUTTORE"),
                  salvato ? QStringList{"3|" + QString::number(sessione().ProduttoreSel.iD_PRODUTTORI)} : QStringList());
        EXPECT_EQ(Righe(db(), "SELECT STAM, SCAR FROM DOMANDE_PRODUTTORI"), QStringList{salvato ? "N|N" : "S|S"});
    }
}

// La modifica non mostra campagna, massima quantità e quantità richiesta: le
// riscrive vuota e a zero. Il resto torna com'era, 020 compreso.
TEST_F(ProvaProduttore, ModificaPerdeCampagnaEQuantita)
{
    const qint64 id = db().InserisciRiga(
        "PRODUTTORI", {{"CODI_FISC", PartitaIva}, {"DENOMINAZIONE", "D'ANNA & C."},
                       {"CAMPAGNA_PRESCELTA", "2005/2006"}, {"CODICE_CONTRATTO_DISTILLAZIONE", "CONTR1"},
                       {"QTA_MAX_DISTILLABILE", "100,0000"}, {"QTA_VINO_DISTILLATA_AIUTO", "50,0000"},
                       {"APPROVAZIONE_ANTICIPATA", "S"}, {"PERC_APPROVAZIONE_ANTICIPATA", "020"}, {"ID_COLORE", 2}});
    sessione().ProduttoreSel = {
        .CODI_COLORE = "RO", .DESC_COLORE = "ROSSO", .iD_PRODUTTORI = static_cast<qint32>(id), .CODI_FISC = PartitaIva,
        .DENOMINAZIONE = "D'ANNA & C.", .CAMPAGNA_PRESCELTA = "2005/2006", .CODICE_CONTRATTO_DISTILLAZIONE = "CONTR1",
        .QTA_MAX_DISTILLABILE = "100,0000", .COMUNICAZIONE_CONTRATTO = {}, .iD_COLORE = {},
        .QTA_VINO_EFFETIVAMENTE_DISTILLATA = "10,0000",
        .QTA_VINO_DISTILLATA_AIUTO = "50,0000", .TITOLO_ALCOLOMETRICO_FATTURATO = "12,0000", .ETTOGRADI = "120,0000",
        .QTA_ALCOLE_NEUTRO = "2,4000", .QTA_ALCOLE_GREZZO = "6,0000", .QTA_ACQUAVITE = "1,2000",
        .AIUTO_ALCOLE_NEUTRO = "452,16", .AIUTO_ALCOLE_GREZZO = "1050,60", .AIUTO_ACQUAVITE = "210,12",
        .IMPORTO_DETRAIBILE = "0,00", .TOTALE_AIUTO = "1712,88", .APPROVAZIONE_ANTICIPATA = "S",
        .PERC_APPROVAZIONE_ANTICIPATA = "020"};
    sessione().ModoMaschera = QStringLiteral("M");

    Apri();
    EXPECT_EQ(Campo(9)->text(), QString());
    EXPECT_EQ(Campo(26)->text(), QStringLiteral("20"));
    EXPECT_EQ(maschera->cboProdotto[15]->currentText(), QStringLiteral("ROSSO RO"));
    Scrivi({{11, "3"}, {12, "1"}});
    Salva();
    EXPECT_TRUE(script->messaggi.isEmpty());
    EXPECT_EQ(Produttori(), QStringList{Riga("6,0000", "1050,60", "1712,88", "|0,0000|0,0000|S|020|2")});
    // Nessun secondo collegamento in modifica.
    EXPECT_EQ(Righe(db(), "SELECT COUNT(*) FROM TAB_ID_UTF_PRODUTTORE"), QStringList{"0"});
    EXPECT_EQ(Righe(db(), "SELECT STAM, SCAR FROM DOMANDE_PRODUTTORI"), QStringList{"N|N"});
}

// Uscita dai campi: la percentuale d'anticipo con la casella spuntata da 1 a
// 20, campagna riscritta, mese e quindicina nei limiti, e le quantità che
// tolgono Salva finché un controllo dopo non lo rende.
TEST_F(ProvaProduttore, ValidazioneAllUscitaDaiCampi)
{
    const Messaggi campagna{{"Campagna non valida", StileMsg::Esclamativo, QString()}};
    const Messaggi grande{{TroppoGrande, StileMsg::Informazione, "Produttore"}};
    const Messaggi anticipo{{"La percentuale di anticipo non può essere maggiore del 20%.", StileMsg::Informazione,
                             "Produttori"}};
    const struct { int indice; const char *battuto, *atteso; bool accettato, salva; Messaggi messaggi; } casi[] = {
        {26, "21", "21", false, true, anticipo},       {26, "0", "0", false, true, anticipo},
        {26, "", "", false, true, anticipo},           {26, "20", "20", true, true, {}},
        {9, "2005", "2005/2006", true, true, {}},      {9, "0", "0", true, true, {}},
        {9, "205", "205", false, true, campagna},
        {11, "12", "12", true, true, {}},              {11, "13", "13", false, true, {}},
        {12, "2", "2", true, true, {}},                {12, "3", "3", false, true, {}},
        {17, "123456789", "123456789", true, false, grande},
        {14, "1", "1", true, false, {}},  // senza controllo: Salva resta spento
        {18, "12345678", "12345678", true, true, {}},  {20, "1234567,55", "1234567,55", true, true, {}},
        {25, "1234567890123,5", "1234567890123,5", true, false, grande},
        {21, "1234567890123", "1234567890123", true, true, {}},
    };
    Apri();
    maschera->chkApprovazioneAnticipata->setChecked(true);
    for (const auto& c : casi) {
        SCOPED_TRACE(std::to_string(c.indice) + " " + c.battuto);
        script->messaggi.clear();
        Campo(c.indice)->setFocus();
        Campo(c.indice)->setText(QString::fromUtf8(c.battuto));
        for (int i = 0; i < c.messaggi.size(); ++i)
            script->Rispondi(RispostaMsg::OK);
        QTest::keyClick(Campo(c.indice), Qt::Key_Tab);
        QCoreApplication::processEvents();  // il rifiuto vale per il clic in corso
        EXPECT_EQ(Campo(c.indice)->text(), QString::fromLatin1(c.atteso));
        EXPECT_EQ(QApplication::focusWidget() == Campo(c.indice), !c.accettato);
        EXPECT_EQ(script->messaggi, c.messaggi);
        EXPECT_EQ(maschera->Cmddati[0]->isEnabled(), c.salva);
        Campo(c.indice)->clear();
    }
}

// Certificato senza ettogradi lavorati: dal pulsante un messaggio e i campi
// intatti; dal salvataggio il percorso d'errore, maschera aperta, niente scritto.
TEST_F(ProvaProduttore, CertificatoSenzaEttogradiNonFermaIlProgramma)
{
    const MessaggioRegistrato dalCalcolo{
        QStringLiteral("Impossibile calcolare le quote: il totale degli ettogradi di vino lavorato del certificato "
                       "UTF è zero o mancante."),
        StileMsg::Esclamativo, QStringLiteral("Produttore")};
    for (const char* totale : {"0", ""}) {
        SCOPED_TRACE(totale);
        Certificato(QString::fromLatin1(totale));
        script->messaggi.clear();
        Apri();
        Scrivi({{6, PartitaIva}, {7, "ROSSI"}, {8, "C"}, {11, "3"}, {12, "1"}, {13, "10"}, {16, "12"},
                {17, "120,0000"}, {18, "6"}, {19, "2,4"}, {20, "1,2"}, {21, "1050,60"}, {22, "452,16"},
                {23, "210,12"}, {25, "1712,88"}});
        maschera->cboProdotto[15]->setCurrentIndex(0);
        script->Rispondi(RispostaMsg::OK);
        QTest::mouseClick(maschera->Cmdcalcolo, Qt::LeftButton);
        EXPECT_EQ(Campo(18)->text(), QStringLiteral("6"));
        script->Rispondi(RispostaMsg::OK);
        Salva();
        ASSERT_EQ(script->messaggi.size(), 2);
        EXPECT_EQ(script->messaggi[0], dalCalcolo);
        EXPECT_EQ(script->messaggi[1].testo, MessaggioLogErr(11, "Divisione per zero", "FrmFATTURA.CMDDATI_CLICK"));
        EXPECT_TRUE(maschera->isVisible());
        EXPECT_EQ(Produttori(), QStringList());
    }
    EXPECT_EQ(Righe(db(), "SELECT COUNT(*) FROM LOGERR WHERE DESC_APPL = 'FrmFATTURA.CMDDATI_CLICK'"),
              QStringList{"2"});
}

// I codici di ControllaCampi e il messaggio del salvataggio.
TEST_F(ProvaProduttore, CodiciDelControllo)
{
    const QString titolo = QStringLiteral("Salvataggio ");
    const struct {
        const char* nome;
        Campi modifiche;
        int colore;  // -1: nessun colore
        const char* acquavite;
        int codice;
        QString messaggio;
    } casi[] = {
        {"cf_vuoto", {{6, ""}}, 1, "10", 6, "Codice fiscale o partita iva campo obbligatorio. "},
        {"piva_errata", {{6, "01234567890"}}, 1, "10", 106, "Codice fiscale o partita iva errato. "},
        {"vino_zero", {{13, "0,00"}}, 1, "10", 13, "Vino effettivamente distillato campo obbligatorio. "},
        {"vino_quattro_zeri_passa", {{13, "0,0000"}}, 1, "10", 0, ""},
        {"ettogradi_vuoti", {{17, ""}}, 1, "10", 117, "Ettogradi campo obbligatorio. "},
        {"acquavite_richiesta", {{20, "0,0000"}}, 1, "10", 20, "Quantità acquavite campo obbligatorio. "},
        {"acquavite_non_richiesta", {{20, "0,0000"}, {23, "0,00"}}, 1, "0", 0, ""},
        {"colore_dopo_il_mese", {{11, ""}}, -1, "10", 15, "Colore del vino  campo obbligatorio. "},
    };
    Apri();
    Compila();
    const QList<QPair<int, QString>> pieno = [&] {
        Campi c;
        for (int i = 6; i <= 25; ++i)
            if (Campo(i))
                c << qMakePair(i, Campo(i)->text());
        return c;
    }();
    for (const auto& c : casi) {
        SCOPED_TRACE(c.nome);
        Scrivi(pieno);
        Scrivi(c.modifiche);
        // La riga vuota in fondo alla combo ritira la scelta.
        maschera->cboProdotto[15]->setCurrentIndex(c.colore);
        if (c.colore < 0)
            QTest::keyClick(maschera->cboProdotto[15], Qt::Key_End);
        sessione().UtfSel.QTA_TOT_ACQUAVITE_OTTENUTO = QString::fromLatin1(c.acquavite);
        EXPECT_EQ(maschera->ControllaCampi(), c.codice);
        if (c.codice == 0)
            continue;
        script->messaggi.clear();
        script->Rispondi(RispostaMsg::OK);
        Salva();
        EXPECT_EQ(script->messaggi, (Messaggi{{c.messaggio, StileMsg::Informazione, titolo}}));
        EXPECT_TRUE(maschera->isVisible());
        EXPECT_EQ(QApplication::focusWidget() == maschera->cboProdotto[15], c.colore < 0);
    }
    EXPECT_EQ(Produttori(), QStringList());
}

// La ricerca della denominazione (messaggi e ordine delle tabelle nelle prove
// della fattura): il nome trovato nel suo campo, il fuoco sul contratto.
TEST_F(ProvaProduttore, CercaDenominazione)
{
    db().Execute("INSERT INTO FATTURE (CODI_FISC, DENOMINAZIONE) VALUES ('01234567897', 'CANTINA D''ORO')");
    Apri();
    Scrivi({{6, PartitaIva}, {7, ""}});
    QTest::mouseClick(maschera->CmdTrovadenominazione, Qt::LeftButton);
    EXPECT_EQ(Campo(7)->text(), QStringLiteral("CANTINA D'ORO"));
    EXPECT_EQ(QApplication::focusWidget(), Campo(8));
    EXPECT_TRUE(script->messaggi.isEmpty());
}

// La scrittura senza maschera, come la chiama il carico delle forniture.
TEST_F(ProvaProduttore, MetodiProduttoreSenzaMaschera)
{
    ProduttoreSelezionato& p = sessione().ProduttoreSel;
    p.CODI_FISC = PartitaIva;
    p.DENOMINAZIONE = "L'ULIVO \"BIO\"";
    p.iD_COLORE = "1";
    p.APPROVAZIONE_ANTICIPATA = "S";
    p.PERC_APPROVAZIONE_ANTICIPATA = "5";
    const QString dati = "SELECT DENOMINAZIONE, PERC_APPROVAZIONE_ANTICIPATA, ID_COLORE FROM PRODUTTORI";
    ASSERT_TRUE(MetodiProduttore(0, QString()));
    const QString id = QString::number(p.iD_PRODUTTORI);
    EXPECT_EQ(Righe(db(), dati), QStringList{"L'ULIVO \"BIO\"|005|1"});
    EXPECT_EQ(Righe(db(), "SELECT iD_UTF, iD_PRODUTTORE FROM TAB_ID_UTF_PRODUTTORE"), QStringList{"3|" + id});
    EXPECT_EQ(Righe(db(), "SELECT STAM, SCAR FROM DOMANDE_PRODUTTORI"), QStringList{"N|N"});

    const struct {
        int operazione;
        QString condizione;
        bool esito;
        QStringList righe;
        QList<MessaggioRegistrato> messaggi;
    } casi[] = {
        {1, "where  id_PRODUTTORI =999", false, {"L'ULIVO \"BIO\"|005|1"},
         {{"Nessuna fattura da aggiornare", StileMsg::Esclamativo, QString()}}},
        {1, "where  id_PRODUTTORI =" + id, true, {"L'ULIVO \"BIO\"|000|1"}, {}},
        {2, "where  id_PRODUTTORI =" + id, true, {}, {}},
    };
    p.APPROVAZIONE_ANTICIPATA.clear();
    p.PERC_APPROVAZIONE_ANTICIPATA.clear();
    for (const auto& c : casi) {
        SCOPED_TRACE(c.condizione.toStdString() + " " + std::to_string(c.operazione));
        db().Execute("UPDATE DOMANDE_PRODUTTORI SET STAM='S', SCAR='S'");
        script->messaggi.clear();
        for (int i = 0; i < c.messaggi.size(); ++i)
            script->Rispondi(RispostaMsg::OK);
        EXPECT_EQ(MetodiProduttore(c.operazione, c.condizione), c.esito);
        EXPECT_EQ(Righe(db(), dati), c.righe);
        EXPECT_EQ(script->messaggi, c.messaggi);
        EXPECT_EQ(Righe(db(), "SELECT STAM, SCAR FROM DOMANDE_PRODUTTORI"), QStringList{c.esito ? "N|N" : "S|S"});
    }
}

// Un guasto del database nella scrittura: percorso d'errore, maschera aperta
// con i dati.
TEST_F(ProvaProduttore, GuastoDelDatabaseLasciaLaMascheraAperta)
{
    Apri();
    Compila();
    db().Execute("DROP TABLE PRODUTTORI");
    script->Rispondi(RispostaMsg::OK);
    Salva();
    ASSERT_EQ(script->messaggi.size(), 1);
    EXPECT_TRUE(script->messaggi[0].testo.contains("FrmFattura motedofatture"));
    EXPECT_TRUE(maschera->isVisible());
    EXPECT_EQ(Campo(7)->text(), QStringLiteral("D'ANNA & C."));
    EXPECT_EQ(Righe(db(), "SELECT STAM, SCAR FROM DOMANDE_PRODUTTORI"), QStringList{"S|S"});
}

}  // namespace
