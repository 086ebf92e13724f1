// Salvataggi interi o assenti: il punto di ripristino, ogni routine di
// scrittura con un guasto provocato nella sua ultima istruzione, il disco
// pieno sotto il database e il processo ucciso a metà salvataggio. I guasti
// del disco e la caduta girano in un processo figlio: questo stesso
// eseguibile, lanciato sul solo test Figlio.
#include "deliveries/FrmProduttore.h"
#include "deliveries/MetodiProduttore.h"
#include "deliveries/MetodiUtf.h"
#include "invoices/ScrittureFatture.h"
#include "support/figlio_prova.h"
#include "support/prova.h"

#include <QFileInfo>
#include <QThread>
#include <csignal>
#include <cstdio>
#include <sqlite3.h>
#include <sys/resource.h>

namespace {

const char* const VariabileFiglio = "FERMOLA_DURATA_FIGLIO";
const QString TitoloLog = QStringLiteral("Gestione Errori");
const QString Conti = QStringLiteral(
    "SELECT (SELECT COUNT(*) FROM PRODUTTORI), (SELECT COUNT(*) FROM TAB_ID_UTF_PRODUTTORE),"
    " (SELECT group_concat(STAM || SCAR) FROM DOMANDE_PRODUTTORI)");

// Il produttore in mano alla sessione, per la domanda del distillatore 1 e
// il suo certificato 1.
void InMano()
{
    Sessione& s = sessione();
    s.DomandaProduttoreSel.ID_DOMANDA_PRODUTTORE = 1;
    s.DomandaProduttoreSel.TIPO_ARTICOLO = "29";
    s.DomandaSel.ID_DOMANDA = 1;
    s.UtfSel.iD_UTF = 1;
    s.UtfSel.iD_DOMANDA = 1;
    s.UtfSel.NUMERO_CERTIFICATO_UTF = "UTF000001";
    s.ProduttoreSel.iD_PRODUTTORI = 0;
    s.ProduttoreSel.CODI_FISC = "RSSMRA70A01L219X";
    s.ProduttoreSel.DENOMINAZIONE = "ROSSI MARIO";
}

class Durata : public ProvaConDatabase {
protected:
    void SetUp() override
    {
        ProvaConDatabase::SetUp();
        // La domanda, già stampata e scaricata, e il suo certificato.
        db().Execute("INSERT INTO DOMANDE_PRODUTTORI (ID_DOMANDA_PRODUTTORE, TIPO_ARTICOLO, DOMANDA, STAM, SCAR)"
                     " VALUES (1, '29', '00000000011', 'S', 'S')");
        db().Execute("INSERT INTO TAB_UTF (iD_UTF, iD_DOMANDA, NUMERO_CERTIFICATO_UTF) VALUES (1, 1, 'UTF000001')");
        InMano();
        script->AccettaMessaggiSenzaRisposta();
    }
    // Lancia il figlio sul database di prova con il caso dato; la sua uscita.
    QByteArray Figlio(const QString& caso, const std::function<bool(const QByteArray&)>& uccidi = {})
    {
        sessione().DbDistilleria.reset();
        QProcess figlio;
        figlio.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        AvviaFiglio(figlio, "DurataFiglio.Figlio", VariabileFiglio, cartella->percorsoDatabase() + '|' + caso);
        EXPECT_TRUE(figlio.waitForStarted());
        QByteArray uscita;
        while (figlio.state() == QProcess::Running && figlio.waitForReadyRead(120000)) {
            uscita += figlio.readAllStandardOutput();
            if (uccidi && uccidi(uscita)) {
                figlio.kill();  // SIGKILL: come una caduta, nessuna pulizia
                break;
            }
        }
        figlio.waitForFinished();
        uscita += figlio.readAllStandardOutput();
        return uscita;
    }
    // La partenza dopo il figlio: il database si apre ed è integro.
    void Riparti()
    {
        sessione().DbDistilleria = Database::Apri(cartella->percorsoDatabase(), true, ConnessioneDb);
        EXPECT_EQ(Righe(db(), "PRAGMA integrity_check"), QStringList{"ok"});
    }
};

// Il figlio: apre il database e salva produttori finché il disco regge
// ("disco"), o si ferma per sempre a metà del secondo salvataggio ("caduta").
TEST(DurataFiglio, Figlio)
{
    const QStringList parti = qEnvironmentVariable(VariabileFiglio).split('|');
    if (parti.size() != 2)
        GTEST_SKIP() << "solo come processo figlio";
    PiattaformaScript& script = InstallaPiattaformaScript();
    script.AccettaMessaggiSenzaRisposta();
    sessione().DbDistilleria = Database::Apri(parti[0], true, ConnessioneDb);
    InMano();
    int salvati = 0;
    if (parti[1] == "caduta") {
        ASSERT_TRUE(MetodiProduttore(0, QString()));
        // Il secondo si ferma dopo il legame, prima dei segni della domanda.
        sqlite3_create_function(Db().handle(), "fermati", 0, SQLITE_UTF8, nullptr,
                                [](sqlite3_context*, int, sqlite3_value**) {
                                    std::puts("IN MEZZO");
                                    std::fflush(stdout);
                                    for (;;)
                                        QThread::sleep(1);
                                },
                                nullptr, nullptr);
        Db().Execute("CREATE TEMP TRIGGER ferma AFTER INSERT ON TAB_ID_UTF_PRODUTTORE BEGIN SELECT fermati(); END");
        MetodiProduttore(0, QString());
        FAIL() << "il salvataggio è finito";
    }
    // Il disco si riempie poco sopra i file di adesso (il giornale cresce).
    std::signal(SIGXFSZ, SIG_IGN);
    const qint64 adesso = std::max(QFileInfo(parti[0]).size(), QFileInfo(parti[0] + "-wal").size());
    const rlimit limite{rlim_t(adesso + 8192), rlim_t(adesso + 8192)};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limite), 0);
    try {
        while (salvati < 100000 && MetodiProduttore(0, QString()))
            ++salvati;
    } catch (const ProcessoTerminato&) {
    }
    std::printf("SALVATI %d\n", salvati);
    for (const MessaggioRegistrato& m : std::as_const(script.messaggi))
        std::printf("MESSAGGIO %d|%s|%s\n", m.stile, qPrintable(m.titolo),
                    qPrintable(QString(m.testo).replace('\n', "\\n").replace('\r', "\\r")));
    std::fflush(stdout);
    sessione().DbDistilleria.reset();
}

// Ogni routine di scrittura con un guasto nella sua ultima istruzione: nulla
// di ciò che ha scritto prima resta, il guasto è registrato con la sua
// etichetta, la chiave in mano alla sessione resta quella di prima.
TEST_F(Durata, UnGuastoNonLasciaMezzoSalvataggio)
{
    db().Execute("INSERT INTO DOMANDE (ID_DOMANDA, DOMANDA, PROGRESSIVO, TIPO_ARTICOLO, STAM, SCAR)"
                 " VALUES (1, '00000000011', '01', '29', 'S', 'S')");
    const QString rotto = QStringLiteral("CREATE TRIGGER rotto BEFORE %1 BEGIN SELECT RAISE(ABORT, 'rotto'); END");
    const QString segni = rotto.arg("UPDATE ON DOMANDE_PRODUTTORI");
    const struct {
        const char* routine;
        QString guasto;
        std::function<void()> scrivi;
        QString etichetta, settore;
    } casi[] = {
        {"produttore, segni", segni, [] { EXPECT_FALSE(MetodiProduttore(0, QString())); },
         "FrmFattura motedofatture", ""},
        {"produttore, legame", rotto.arg("INSERT ON TAB_ID_UTF_PRODUTTORE"),
         [] { EXPECT_FALSE(MetodiProduttore(0, QString())); }, "rfAssociaDeAssociaProduttore",
         "Md_FunzioniGenerali"},
        {"certificato", segni, [] { EXPECT_FALSE(MetodiUtf(0, QString())); }, "frmProduttore_Utf motedoUtf", ""},
        {"fattura", rotto.arg("UPDATE ON DOMANDE"),
         [] {
             CampiFattura c;
             c.Prodotto = "VDT";
             EXPECT_EQ(NumeroErrore([&] { ScriviFattura(ModoFattura::Inserisci, c, 0, 1); }), 3019);
         },
         "", ""},
    };
    for (const auto& c : casi) {
        SCOPED_TRACE(c.routine);
        db().Execute(c.guasto);
        script->messaggi.clear();
        sessione().ProduttoreSel.iD_PRODUTTORI = 5;
        c.scrivi();
        db().Execute("DROP TRIGGER rotto");
        EXPECT_EQ(Righe(db(), Conti + ", (SELECT COUNT(*) FROM TAB_UTF), (SELECT COUNT(*) FROM FATTURE),"
                                      " (SELECT STAM || SCAR FROM DOMANDE)"),
                  QStringList{"0|0|SS|1|0|SS"});
        EXPECT_EQ(Righe(db(), "SELECT NUMERO_CERTIFICATO_UTF FROM TAB_UTF"), QStringList{"UTF000001"});
        EXPECT_EQ(sessione().ProduttoreSel.iD_PRODUTTORI, 5);
        EXPECT_FALSE(db().InTransazione());
        const Messaggi attesi = c.etichetta.isEmpty()
            ? Messaggi{}
            : Messaggi{{MessaggioLogErr(3019, "Errore del database: rotto", c.etichetta), 48, TitoloLog}};
        EXPECT_EQ(script->messaggi, attesi);
        EXPECT_EQ(Righe(db(), "SELECT SETTORE, DESC_APPL FROM LOGERR WHERE rowid = (SELECT max(rowid) FROM LOGERR)"),
                  c.etichetta.isEmpty() ? QStringList() : QStringList{c.settore + "|" + c.etichetta});
        db().Execute("DELETE FROM LOGERR");
    }
}

// Un "Salva" fallito dopo la scrittura del produttore non lascia nulla e la
// maschera resta aperta in inserimento: il secondo "Salva" scrive un solo
// produttore con un solo legame.
TEST_F(Durata, SecondoSalvaDopoUnGuasto)
{
    Sessione& s = sessione();
    s.TitoloMaschera = "Conferimenti";
    s.ModoMaschera = "I";
    s.UtfSel.QTA_TOT_ETTOGRADI_VINO_LAVORATO = "1000";
    s.UtfSel.QTA_TOT_ALCOLE_GREZZO_OTTENUTO = "50";
    s.UtfSel.QTA_TOT_ALCOLE_NEUTRO_OTTENUTO = "20";
    s.UtfSel.QTA_TOT_ACQUAVITE_OTTENUTO = "10";
    db().Execute("CREATE TRIGGER rotto BEFORE UPDATE ON DOMANDE_PRODUTTORI BEGIN SELECT RAISE(ABORT, 'rotto'); END");
    FrmProduttore maschera;
    maschera.show();
    for (const auto& [i, testo] : {std::pair{6, "01234567897"}, {7, "D'ANNA & C."}, {8, "CONTR1"}, {13, "10"},
                                   {16, "12"}, {11, "3"}, {12, "1"}})
        maschera.TxtDati.value(i)->setText(testo);
    maschera.cboProdotto[15]->setCurrentIndex(maschera.cboProdotto[15]->findText("ROSSO RO"));
    QTest::mouseClick(maschera.Cmdcalcolo, Qt::LeftButton);

    QTest::mouseClick(maschera.Cmddati[0], Qt::LeftButton);
    EXPECT_EQ(script->messaggi, (Messaggi{{MessaggioLogErr(3019, "Errore del database: rotto", "FrmFattura motedofatture"), 48, TitoloLog}}));
    EXPECT_TRUE(maschera.isVisible());
    EXPECT_EQ(s.ModoMaschera, "I");
    EXPECT_EQ(Righe(db(), Conti), QStringList{"0|0|SS"});

    db().Execute("DROP TRIGGER rotto");
    script->messaggi.clear();
    QTest::mouseClick(maschera.Cmddati[0], Qt::LeftButton);
    EXPECT_EQ(script->messaggi, Messaggi{});
    EXPECT_FALSE(maschera.isVisible());
    EXPECT_EQ(Righe(db(), Conti), QStringList{"1|1|NN"});
}

// Il punto di ripristino da solo (è la transazione e la conferma su disco) e
// annidato nella transazione di un carico (solo la sua parte si annulla).
TEST_F(Durata, PuntoDiRipristinoDaSoloEAnnidato)
{
    db().Execute("CREATE TABLE T (x INTEGER)");
    db().Execute("CREATE TRIGGER rotto BEFORE INSERT ON T WHEN NEW.x = 2 BEGIN SELECT RAISE(ABORT, 'rotto'); END");
    const struct {
        const char* caso;
        bool carico;
        int secondo;
        QStringList righe;
    } casi[] = {
        {"da solo", false, 3, {"1", "3"}},
        {"da solo, guasto al secondo", false, 2, {}},
        {"nel carico", true, 3, {"0", "1", "3"}},
        {"nel carico, guasto al secondo", true, 2, {"0"}},
    };
    for (const auto& c : casi) {
        SCOPED_TRACE(c.caso);
        db().Execute("DELETE FROM T");
        if (c.carico) {
            db().IniziaTransazione();
            db().Execute("INSERT INTO T VALUES (0)");
        }
        const int errore = NumeroErrore([&] {
            PuntoDiRipristino punto(db());
            db().Execute("INSERT INTO T VALUES (1)");
            db().Execute("INSERT INTO T VALUES (?)", {c.secondo});
            punto.Conferma();
        });
        EXPECT_EQ(errore, c.secondo == 2 ? 3019 : 0);
        EXPECT_EQ(db().InTransazione(), c.carico);
        if (c.carico)
            db().ConfermaTransazione();
        EXPECT_EQ(Righe(db(), "SELECT x FROM T ORDER BY x"), c.righe);
    }
    // Ciò che è confermato va sul disco a ogni conferma.
    EXPECT_EQ(Righe(db(), "PRAGMA journal_mode"), QStringList{"wal"});
    EXPECT_EQ(Righe(db(), "PRAGMA synchronous"), QStringList{"2"});
}

// Il disco si riempie sotto una serie di salvataggi: ognuno dato per salvato
// c'è per intero con il suo legame, quello fallito non c'è affatto, il
// database riparte integro e il guasto è stato detto in italiano.
TEST_F(Durata, DiscoPienoSottoUnSalvataggio)
{
    const QByteArray uscita = Figlio("disco");
    const int inizio = uscita.indexOf("SALVATI ");
    ASSERT_GE(inizio, 0) << uscita.toStdString();
    const int salvati = uscita.mid(inizio + 8, uscita.indexOf('\n', inizio) - inizio - 8).toInt();
    EXPECT_GT(salvati, 0);
    Riparti();
    EXPECT_EQ(Righe(db(), Conti), QStringList{QString("%1|%1|NN").arg(salvati)});
    // Il guasto è registrato, o il registro stesso non si scrive e il
    // programma si ferma con il suo avviso: in italiano, in ogni caso.
    const QStringList detti = QString::fromUtf8(uscita).split('\n').filter("MESSAGGIO ");
    ASSERT_EQ(detti.size(), 1) << uscita.toStdString();
    EXPECT_TRUE(detti[0].startsWith("MESSAGGIO 48|Gestione Errori|Errore numero\t: 3043") ||
                detti[0].startsWith("MESSAGGIO 16|Consultare il servizio tecnico|")) << detti[0].toStdString();
    EXPECT_TRUE(detti[0].contains("Errore del disco: impossibile leggere o scrivere il database.") &&
                detti[0].contains("FrmFattura motedofatture")) << detti[0].toStdString();
}

// Il processo ucciso a metà di un salvataggio: alla partenza dopo, il
// salvataggio di prima c'è, quello interrotto non ha lasciato nulla.
TEST_F(Durata, UccisoAMetaSalvataggio)
{
    const QByteArray uscita = Figlio("caduta", [](const QByteArray& u) { return u.contains("IN MEZZO"); });
    ASSERT_TRUE(uscita.contains("IN MEZZO")) << uscita.toStdString();
    Riparti();
    EXPECT_EQ(Righe(db(), Conti), QStringList{"1|1|NN"});
}

}  // namespace
