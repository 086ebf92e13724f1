// Carico di una fornitura del ramo conferimenti: le righe scritte dalle
// routine delle maschere, la quadratura della testata in ogni certificato, i
// rifiuti, i file guasti, l'annullamento a mano dopo un errore e la maschera
// FrmProduttore_carico.
#include "support/prova.h"
#include "interchange/CaricoConferimenti.h"
#include "interchange/FrmProduttore_carico.h"

#include "fornitura_conferimenti_prova.h"
#include "record_prova.h"
#include "shell/registro_maschere.h"

#include <QPointer>

using namespace ConferimentiProva;

namespace {

const QString Titolo = QStringLiteral(" Carico Domande di aiuto alla distillazione facoltativa (Art.29)");
const QString Riuscito = QStringLiteral("Carico fornitura correttamente eseguito");
const QString Anomala = QStringLiteral("Tracciato fornitura anomala.\r\nVisualizzare le domande non caricate?");
const QString TitoloLog = QStringLiteral("Gestione Errori");

const QString Domande = QStringLiteral(
    "SELECT DOMANDA, TIPO_ARTICOLO, ANTICIPO_RICEVUTO, STAM, SCAR, PROG_VERS, DATA_CAMP FROM DOMANDE_PRODUTTORI "
    "ORDER BY ID_DOMANDA_PRODUTTORE");
const QString Certificati = QStringLiteral(
    "SELECT d.DOMANDA, u.NUMERO_CERTIFICATO_UTF, u.SIGLA_UFFICIO_UTF_PROVINCIA, u.DESCR_UFFICIO_UTF_PROVINCIA, "
    "u.ISTAT_UFFICIO_UTF_PROVINCIA, u.DATA_EMISSIONE_CERTIFICATO, u.QTA_TOT_VINO_LAVORATO, "
    "u.QTA_TOT_ALCOLE_NEUTRO_OTTENUTO, u.QTA_TOT_ALCOLE_GREZZO_OTTENUTO, u.QTA_TOT_ACQUAVITE_OTTENUTO, "
    "u.QTA_TOT_ETTOGRADI_VINO_LAVORATO, u.QUADRATURA FROM TAB_UTF u JOIN DOMANDE_PRODUTTORI d "
    "ON d.ID_DOMANDA_PRODUTTORE = u.iD_DOMANDA ORDER BY u.iD_UTF");
// Ogni produttore col certificato a cui è legato.
const QString Produttori = QStringLiteral(
    "SELECT u.NUMERO_CERTIFICATO_UTF, p.CODI_FISC, p.DENOMINAZIONE, p.ID_COLORE, p.CODICE_CONTRATTO_DISTILLAZIONE, "
    "p.QTA_VINO_EFFETIVAMENTE_DISTILLATA, p.TITOLO_ALCOLOMETRICO_FATTURATO, p.ETTOGRADI, p.QTA_ALCOLE_NEUTRO, "
    "p.QTA_ALCOLE_GREZZO, p.QTA_ACQUAVITE, p.AIUTO_ALCOLE_NEUTRO, p.AIUTO_ALCOLE_GREZZO, p.AIUTO_ACQUAVITE, "
    "p.IMPORTO_DETRAIBILE, p.TOTALE_AIUTO, p.APPROVAZIONE_ANTICIPATA, p.PERC_APPROVAZIONE_ANTICIPATA "
    "FROM PRODUTTORI p LEFT JOIN TAB_ID_UTF_PRODUTTORE l ON l.iD_PRODUTTORE = p.iD_PRODUTTORI "
    "LEFT JOIN TAB_UTF u ON u.iD_UTF = l.iD_UTF ORDER BY p.iD_PRODUTTORI");
const QString Forniture = QStringLiteral(
    "SELECT Campagnafornitura, Numero_versione, Data_forniture, PROGRESSIVO_fornitura, ARTICOLO, "
    "Distilleria_CODI_FISC, Distilleria_RAGI_SOCI FROM TAB_Fornitura_utf");
const QString Errori = QStringLiteral("SELECT CODI_ERRO, DESC_APPL FROM LOGERR ORDER BY rowid");

const QString Fornitura = QStringLiteral(
    "2005/2006|10|20060131|0007|29|00123450056     |CANTINA SOCIALE DI CANELLI                                            ");

// Il produttore dei record di prova, dopo il codice fiscale e il nome.
QString Quantita(const QString& colore)
{
    return colore + QStringLiteral("|00000004711|100,5000|11,0000|1105,5000|10,0000|5,0000|0,0000|188,40|87,55|0,00|"
                                   "1,00|274,95|S|020");
}

class CaricoConferimentiProva : public ProvaConDatabase {
protected:
    void SetUp() override
    {
        ProvaConDatabase::SetUp();
        db();
        sessione().TitoloMaschera = Titolo;
        // Ogni messaggio è controllato per intero dopo il carico.
        script->AccettaMessaggiSenzaRisposta();
        QDir(cartella->cartella()).mkdir(QStringLiteral("arrivo"));
    }

    QString Scrivi(const QByteArray& contenuto)
    {
        const QString percorso = QDir(cartella->cartella()).filePath(QStringLiteral("arrivo/ART29CONF2005.txt"));
        ScriviByte(percorso, contenuto);
        return percorso;
    }
    QString Programma(const QString& nome) const { return QDir(cartella->cartella()).filePath(nome); }

    // I messaggi che non vengono dal registro degli errori.
    Messaggi Detti() const
    {
        Messaggi m;
        for (const auto& x : std::as_const(script->messaggi))
            if (x.titolo != TitoloLog)
                m.append(x);
        return m;
    }
    int Conta(const QString& tabella) { return Righe(db(), "SELECT COUNT(*) FROM " + tabella).value(0).toInt(); }
};

// Una fornitura come arriva: due domande, tre certificati, quattro
// produttori, la coda; la quadratura "1" della testata va in ogni certificato.
// Lo stesso file una seconda volta è rifiutato senza toccare nulla; con un
// altro progressivo le sue domande sono scartate perché già in archivio.
TEST_F(CaricoConferimentiProva, FornituraCompletaEPoiRifiutata)
{
    const QStringList righe{R0(),
                            R1("00000000021"),
                            R2("UTF000101"),
                            R3("RSSMRA70A01L219X", "ROSSI MARIO"),
                            R3("01234567891", "CANTINA L'ALBA \"VECCHIA\"", "BI"),
                            R2("UTF000102", "CN"),
                            R3("VRDLGU60B02A479Z", "VERDI LUIGI"),
                            R1("00000000022", "00000000000000"),
                            R2("UTF000201", "AT"),
                            R3("BNCNNA80C03L219Z", "BIANCHI ANNA"),
                            R9()};
    CaricaFornituraConferimenti(Scrivi(File(righe)));

    EXPECT_EQ(script->messaggi, (Messaggi{{Riuscito, 64, Titolo}}));
    EXPECT_EQ(Righe(db(), Domande), (QStringList{"00000000021|29|1500,50|N|N|1|2005",
                                                 "00000000022|29|0,00|N|N|1|2005"}));
    const QString quantita = "10/01/2006|300,5000|20,2500|10,0000|0,0000|3300,0000|1";
    EXPECT_EQ(Righe(db(), Certificati),
              (QStringList{"00000000021|UTF000101|TO|TORINO|001|" + quantita,
                           "00000000021|UTF000102|CN|CUNEO|004|" + quantita,
                           "00000000022|UTF000201|AT|ASTI|005|" + quantita}));
    auto produttore = [](const char* utf, const QString& cf, const QString& nome, const QString& colore) {
        return QString::fromLatin1(utf) + "|" + cf.leftJustified(16) + "|" + nome.leftJustified(70) + "|" +
               Quantita(colore);
    };
    EXPECT_EQ(Righe(db(), Produttori),
              (QStringList{produttore("UTF000101", "RSSMRA70A01L219X", "ROSSI MARIO", "2"),
                           produttore("UTF000101", "01234567891", "CANTINA L'ALBA \"VECCHIA\"", "1"),
                           produttore("UTF000102", "VRDLGU60B02A479Z", "VERDI LUIGI", "2"),
                           produttore("UTF000201", "BNCNNA80C03L219Z", "BIANCHI ANNA", "2")}));
    EXPECT_EQ(Righe(db(), Forniture), QStringList{Fornitura});
    EXPECT_FALSE(QFile::exists(Programma("COPI1.666")));

    // Di nuovo lo stesso file: rifiutato alla testata.
    script->messaggi.clear();
    CaricaFornituraConferimenti(Scrivi(File(righe)));
    EXPECT_EQ(script->messaggi, (Messaggi{{"Fornitura già caricata.", 64, Titolo}}));
    EXPECT_EQ(Conta("TAB_UTF"), 3);
    EXPECT_EQ(Conta("TAB_Fornitura_utf"), 1);

    // Un'altra fornitura con le stesse domande: scartate, elenco a richiesta.
    script->messaggi.clear();
    script->Rispondi(6);
    QStringList altra = righe;
    altra[0] = R0("0008");
    CaricaFornituraConferimenti(Scrivi(File(altra)));
    EXPECT_EQ(script->messaggi, (Messaggi{{Anomala, 4, Titolo}}));
    ASSERT_EQ(script->testiMostrati, QStringList{Programma("Domande_Scartate.txt")});
    QFile elenco(Programma("Domande_Scartate.txt"));
    ASSERT_TRUE(elenco.open(QIODevice::ReadOnly));
    auto riga = [](const char* domanda) {
        return QString::fromLatin1(domanda) + " -    - " + QString(15, ' ') + " - " +
               QStringLiteral("Fornitura con domande gia presenti nell'archivio.").leftJustified(70) + "\r\n\r\n";
    };
    EXPECT_EQ(QString::fromLocal8Bit(elenco.readAll()), riga("00000000021") + riga("00000000022"));
    EXPECT_EQ(Conta("TAB_UTF"), 3);
    EXPECT_EQ(Conta("TAB_Fornitura_utf"), 1);
}

// File guasti o rifiutati: i messaggi, le righe caricate e gli errori del
// registro (i controlli di lunghezza e di righe, comuni ai due carichi, nelle
// prove delle fatture).
TEST_F(CaricoConferimentiProva, FileGuasti)
{
    const QString buona = R1("00000000041"), certificato = R2("UTF000401"),
                  produttore = R3("RSSMRA70A01L219X", "ROSSI MARIO");
    const struct {
        const char* caso;
        QByteArray file;
        QList<int> risposte;
        Messaggi messaggi;
        int domande;  // righe scritte in DOMANDE_PRODUTTORI
        QStringList errori;
        QStringList scarti;  // motivi nell'elenco, se chiesto
    } casi[] = {
        {"record 3 prima di un record 2", File({R0(), buona, produttore, certificato}), {}, {}, 0,
         {"00009| frmCarico.battoncarica"}, {}},
        {"record 2 prima di un record 1", File({R0(), certificato}), {}, {}, 0, {"00009| frmCarico.battoncarica"},
         {}},
        {"due record 1 con lo stesso numero", File({R0(), buona, certificato, buona, R1("00000000043")}), {6},
         {{Anomala, 4, Titolo}}, 0, {},
         {"Fornitura con domande uguali.", "Fornitura con domande uguali."}},
        // Un numero che vale zero con due certificati: le chiavi mai riempite
        // dei certificati sono uguali.
        {"domanda zero con due certificati",
         File({R0(), R1("00000000000"), certificato, R2("UTF000402")}), {6}, {{Anomala, 4, Titolo}}, 0, {},
         {"Certificato Utf non appartenente alla domanda.", "Certificato Utf non appartenente alla domanda."}},
        {"provincia sconosciuta", File({R0(), buona, R2("UTF000401", "ZZ"), produttore}), {}, {{Riuscito, 64, Titolo}},
         1, {}, {}},
        // Colore sconosciuto: la chiave vuota lascia monca l'istruzione del
        // colore, registrata; il produttore è scritto senza colore.
        {"colore sconosciuto", File({R0(), buona, certificato, R3("RSSMRA70A01L219X", "ROSSI MARIO", "XX")}), {},
         {{Riuscito, 64, Titolo}}, 1, {"03075|FrmSelezione.SEL_RECORD"}, {}},
    };
    for (const auto& c : casi) {
        SCOPED_TRACE(c.caso);
        db().Execute("DELETE FROM DOMANDE_PRODUTTORI");
        db().Execute("DELETE FROM TAB_Fornitura_utf");
        db().Execute("DELETE FROM LOGERR");
        QFile::remove(Programma("Domande_Scartate.txt"));
        script->messaggi.clear();
        script->testiMostrati.clear();
        script->AccettaMessaggiSenzaRisposta();
        for (int r : c.risposte)
            script->Rispondi(r);

        CaricaFornituraConferimenti(Scrivi(c.file));

        EXPECT_EQ(Detti(), c.messaggi);
        EXPECT_EQ(Conta("DOMANDE_PRODUTTORI"), c.domande);
        EXPECT_EQ(Conta("TAB_Fornitura_utf"), c.messaggi.contains({Riuscito, 64, Titolo}) ? 1 : 0);
        EXPECT_EQ(Righe(db(), Errori), c.errori);
        QStringList motivi;
        QFile elenco(Programma("Domande_Scartate.txt"));
        if (elenco.open(QIODevice::ReadOnly))
            for (const QString& r : QString::fromLocal8Bit(elenco.readAll()).split("\r\n", Qt::SkipEmptyParts))
                motivi << r.mid(37).trimmed();
        EXPECT_EQ(motivi, c.scarti);
        EXPECT_TRUE(script->risposte.isEmpty());
    }
    // Provincia sconosciuta: descrizione e codice ISTAT vuoti; colore
    // sconosciuto: nessun colore. Nulla d'altro è perduto.
    EXPECT_EQ(Righe(db(), "SELECT SIGLA_UFFICIO_UTF_PROVINCIA, DESCR_UFFICIO_UTF_PROVINCIA, "
                          "ISTAT_UFFICIO_UTF_PROVINCIA FROM TAB_UTF WHERE NUMERO_CERTIFICATO_UTF = 'UTF000401' "
                          "ORDER BY iD_UTF DESC LIMIT 2"),
              (QStringList{"TO|TORINO|001", "ZZ||"}));
    EXPECT_EQ(Righe(db(), "SELECT ID_COLORE, CODI_FISC FROM PRODUTTORI ORDER BY iD_PRODUTTORI DESC LIMIT 1"),
              QStringList{"|RSSMRA70A01L219X"});
}

// Errore durante la scrittura: il numero di domanda corto non si ritrova
// (scritto senza spazi, cercato con), la chiave vuota è un tipo non
// corrispondente. Con un certificato in mano l'annullamento toglie il primo
// legame e si ferma sull'istruzione con la tabella sbagliata; senza, resta
// tutto com'è. La fornitura non è registrata.
TEST_F(CaricoConferimentiProva, AnnullamentoDopoUnErrore)
{
    const struct {
        const char* caso;
        QStringList righe;
        Messaggi messaggi;
        QStringList errori, domande, legami;
        int produttori;
    } casi[] = {
        {"certificato in mano",
         {R0(), R1("00000000051"), R2("UTF000501"), R3("RSSMRA70A01L219X", "ROSSI MARIO"),
          R3("VRDLGU60B02A479Z", "VERDI LUIGI"), R1("52"), R2("UTF000502")},
         {},
         {"00013| frmCarico.AllineaDB", "03078| frmCarico.battoncarica"},
         {"00000000051|29|1500,50|N|N|1|2005", "52|29|1500,50|N|N|1|2005"},
         {"UTF000501|VRDLGU60B02A479Z"},
         2},
        {"nessun certificato in mano",
         {R0(), R1("53"), R2("UTF000503"), R3("RSSMRA70A01L219X", "ROSSI MARIO")},
         {{"Carico fornitura non riuscito.", 16, Titolo}},
         {"00013| frmCarico.AllineaDB"},
         {"53|29|1500,50|N|N|1|2005"},
         {},
         0},
    };
    for (const auto& c : casi) {
        SCOPED_TRACE(c.caso);
        for (const char* t : {"TAB_ID_UTF_PRODUTTORE", "PRODUTTORI", "TAB_UTF", "LOGERR"})
            db().Execute(QStringLiteral("DELETE FROM ") + t);
        db().Execute("DELETE FROM DOMANDE_PRODUTTORI");
        script->messaggi.clear();
        script->AccettaMessaggiSenzaRisposta();
        // Chiavi rimaste da un lavoro precedente: il carico non le tocca.
        sessione().UtfSel.iD_UTF = 1;

        CaricaFornituraConferimenti(Scrivi(File(c.righe)));

        EXPECT_EQ(Detti(), c.messaggi);
        EXPECT_EQ(Righe(db(), Errori), c.errori);
        EXPECT_EQ(Righe(db(), Domande), c.domande);
        EXPECT_EQ(Righe(db(), "SELECT u.NUMERO_CERTIFICATO_UTF, p.CODI_FISC FROM TAB_ID_UTF_PRODUTTORE l "
                              "JOIN TAB_UTF u ON u.iD_UTF = l.iD_UTF JOIN PRODUTTORI p "
                              "ON p.iD_PRODUTTORI = l.iD_PRODUTTORE ORDER BY l.iD_TAB_ID_UP"),
                  c.legami);
        // I produttori scritti restano, anche quello slegato.
        EXPECT_EQ(Conta("PRODUTTORI"), c.produttori);
        EXPECT_EQ(Conta("TAB_Fornitura_utf"), 0);
    }
}

// La maschera: il nome cresce a ogni scelta della campagna (il 2004 e il 2005
// sono del solo articolo 29, il 2003 si prova con frmCarico); il carico conta
// le righe scritte e la maschera resta aperta; Esci la chiude. Il resto, comune
// alle due maschere, si prova con frmCarico.
TEST_F(CaricoConferimentiProva, Maschera)
{
    RegistraMaschereDelSistema();
    QPointer<FrmProduttore_carico> maschera =
        qobject_cast<FrmProduttore_carico*>(TrovaMaschera("FrmProduttore_carico")->fabbrica(nullptr));
    ASSERT_NE(maschera, nullptr);
    maschera->show();
    EXPECT_EQ(maschera->windowTitle(), Titolo);
    for (const char* campagna : {"2004", "2005"}) {
        maschera->CmbDomAnnualita->setCurrentIndex(maschera->CmbDomAnnualita->findText(campagna));
        maschera->CmbDomAnnualita_Click();
    }
    EXPECT_EQ(maschera->percorso->text(),
              "Seleziona percorso file ART29-30CONF.txt ART29CONF2004.TXT ART29CONF2005.TXT");
    Scrivi(File(FornituraGrande(2, 3, 2)));
    script->cartelle << Programma("arrivo");
    maschera->Cmddati[0]->click();
    EXPECT_EQ(Conta("PRODUTTORI"), 12);
    EXPECT_TRUE(maschera->isVisible());
    EXPECT_EQ(maschera->conteggio->text(), "Righe scritte: 20");

    maschera->Cmddati_Click(1);
    EXPECT_FALSE(maschera->isVisible());
    delete maschera.data();
    AnnullaRegistrazioni();
}

}  // namespace
