// Guasti veri durante i due carichi: una conferma che fallisce, il disco
// pieno sotto il database e il processo ucciso a metà scrittura (in un
// processo figlio, questo stesso eseguibile lanciato sul solo test Figlio), e
// il menu fermo mentre un carico scrive.
#include "support/prova.h"
#include "fornitura_conferimenti_prova.h"
#include "fornitura_prova.h"
#include "interchange/CaricoConferimenti.h"
#include "interchange/CaricoFatture.h"
#include "interchange/MascheraCarico.h"
#include "interchange/registra_forniture.h"
#include "shell/FrmMenu.h"
#include "shell/registro_maschere.h"

#include <QAction>
#include <QFileInfo>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QProcess>
#include <QThread>
#include <csignal>
#include <cstdio>
#include <sys/resource.h>

namespace {

const char* const VariabileFiglio = "FERMOLA_CARICO_GUASTI_FIGLIO";
const QString Titolo = QStringLiteral("Carico");
const MessaggioRegistrato NonRiuscito{QStringLiteral("Carico fornitura non riuscito."), 16, Titolo};
const MessaggioRegistrato Riuscito{QStringLiteral("Carico fornitura correttamente eseguito"), 64, Titolo};

// Un ramo: il suo file, il suo carico e le tabelle che scrive (l'ultima è
// quella delle forniture caricate).
struct Ramo {
    const char* nome;
    std::function<QStringList(int)> righe;  // una fornitura di n domande
    std::function<void(const QString&, OsservatoreCarico*)> carica;
    QStringList tabelle;
};

QStringList Fatture(int domande)
{
    using namespace FornituraProva;
    QStringList righe{R0()};
    for (int d = 1; d <= domande; ++d) {
        const QString domanda = QString::number(d).rightJustified(11, '0');
        righe << R1(domanda);
        for (int f = 1; f <= 3; ++f)
            righe << R2(domanda, QString::number(f));
        for (int f = 1; f <= 3; ++f)
            for (int b = 0; b < 2; ++b)
                righe << R3(domanda, QString::number(f), QString::number(f * 2 + b));
    }
    return righe;
}

const Ramo Rami[] = {
    {"fatture", Fatture, [](const QString& f, OsservatoreCarico* o) { CaricaFornitura(f, o); },
     {"DOMANDE", "FATTURE", "BOLLE", "TAB_Fornitura"}},
    {"conferimenti", [](int domande) { return ConferimentiProva::FornituraGrande(domande, 2, 5); },
     [](const QString& f, OsservatoreCarico* o) { CaricaFornituraConferimenti(f, o); },
     {"DOMANDE_PRODUTTORI", "TAB_UTF", "PRODUTTORI", "TAB_ID_UTF_PRODUTTORE", "TAB_Fornitura_utf"}},
};

// Il guasto del figlio. Il disco si riempie appena finita la lettura, poco
// sopra i file di adesso (il giornale del database cresce con le scritture
// del carico); oppure il carico si ferma dopo aver scritto un buon numero di
// righe, prima della conferma, e aspetta di essere ucciso.
constexpr qint64 RigheDelFermo = 4000;

class GuastoDelFiglio : public OsservatoreCarico {
public:
    GuastoDelFiglio(QString database, bool pieno) : m_database(std::move(database)), m_pieno(pieno) {}
    void PLAY(bool) override {}
    void RecordLetti(qint64) override
    {
        if (!m_pieno)
            return;
        std::signal(SIGXFSZ, SIG_IGN);
        const qint64 adesso = std::max(QFileInfo(m_database).size(), QFileInfo(m_database + "-wal").size());
        const rlimit limite{rlim_t(adesso + 8192), rlim_t(adesso + 8192)};
        setrlimit(RLIMIT_FSIZE, &limite);
    }
    void RigheScritte(qint64 numero) override
    {
        if (m_pieno || numero < RigheDelFermo)
            return;
        std::fputs("SCRITTE\n", stdout);
        std::fflush(stdout);
        for (;;)
            QThread::sleep(1);
    }

private:
    QString m_database;
    bool m_pieno;
};

class CaricoGuasti : public ProvaConDatabase {
protected:
    void SetUp() override
    {
        ProvaConDatabase::SetUp();
        db();
        sessione().TitoloMaschera = Titolo;
        script->AccettaMessaggiSenzaRisposta();
    }
    QString File(const Ramo& r, int domande)
    {
        const QString percorso = QDir(cartella->cartella()).filePath(QString("fornitura_%1.txt").arg(r.nome));
        FornituraProva::ScriviFile(percorso, r.righe(domande));
        return percorso;
    }
    QString Conti(const Ramo& r)
    {
        QStringList conti;
        for (const QString& t : r.tabelle)
            conti << Righe(db(), "SELECT COUNT(*) FROM " + t).value(0);
        return conti.join('|');
    }
};

TEST(CaricoGuastiFiglio, Figlio)
{
    const QStringList parti = qEnvironmentVariable(VariabileFiglio).split('|');
    if (parti.size() != 4)
        GTEST_SKIP() << "solo come processo figlio";
    PiattaformaScript& script = InstallaPiattaformaScript();
    script.AccettaMessaggiSenzaRisposta();
    Sessione& s = sessione();
    s.PathDatabase = QDir(parti[0]).filePath("database") + '/';
    s.TitoloMaschera = Titolo;
    s.DbDistilleria = Database::Apri(s.PathDatabase + NomeDatabase, true, ConnessioneDb);
    GuastoDelFiglio guasto(s.PathDatabase + NomeDatabase, parti[3] == "pieno");
    try {
        Rami[parti[1].toInt()].carica(parti[2], &guasto);
    } catch (const ProcessoTerminato&) {
    }
    for (const MessaggioRegistrato& m : std::as_const(script.messaggi))
        std::printf("MESSAGGIO %d|%s|%s\n", m.stile, qPrintable(m.titolo),
                    qPrintable(QString(m.testo).replace('\n', "\\n").replace('\r', "\\r")));
    std::fflush(stdout);
    s.DbDistilleria.reset();
}

// La conferma del carico fallisce (un vincolo controllato solo alla
// conferma): il carico è detto non riuscito, il guasto è registrato, del
// carico non resta nulla e la connessione, di nuovo in autocommit, carica
// poi lo stesso file per intero.
TEST_F(CaricoGuasti, ConfermaCheFallisce)
{
    db().Execute("PRAGMA foreign_keys = ON");
    db().Execute("CREATE TABLE PADRE (ID INTEGER PRIMARY KEY)");
    db().Execute("CREATE TABLE FIGLIO (ID INTEGER REFERENCES PADRE (ID) DEFERRABLE INITIALLY DEFERRED)");
    const QString vincolo = "Errore del database: FOREIGN KEY constraint failed";
    for (const Ramo& r : Rami) {
        SCOPED_TRACE(r.nome);
        const QString fornite = r.tabelle.constLast();
        db().Execute("CREATE TRIGGER rotto AFTER INSERT ON " + fornite + " BEGIN INSERT INTO FIGLIO VALUES (1); END");
        script->messaggi.clear();
        const QString file = File(r, 2);
        r.carica(file, nullptr);
        EXPECT_EQ(script->messaggi,
                  (Messaggi{{MessaggioLogErr(3019, vincolo, " frmCarico.AllineaDB"), 48, "Gestione Errori"},
                            NonRiuscito}));
        EXPECT_FALSE(db().InTransazione());
        EXPECT_EQ(Conti(r), QStringList(r.tabelle.size(), "0").join('|'));
        EXPECT_EQ(Righe(db(), "SELECT CODI_ERRO, DESC_APPL, DESC_ERRO FROM LOGERR"),
                  QStringList{"03019| frmCarico.AllineaDB|" + vincolo});

        db().Execute("DROP TRIGGER rotto");
        db().Execute("DELETE FROM LOGERR");
        script->messaggi.clear();
        r.carica(file, nullptr);
        EXPECT_EQ(script->messaggi, Messaggi{Riuscito});
        EXPECT_EQ(Righe(db(), "SELECT COUNT(*) FROM " + fornite), QStringList{"1"});
    }
}

// Il disco pieno sotto il database a metà di ogni carico: l'ultimo messaggio
// è il carico non riuscito. Il processo ucciso a metà scrittura: nessun
// messaggio. In tutti e due i casi il database riparte integro e senza nulla
// del carico, e lo stesso file si carica poi per intero.
TEST_F(CaricoGuasti, DiscoPienoEProcessoUcciso)
{
    const struct { const char* nome; int ramo, domande; bool pieno; } casi[] = {
        {"fatture, disco pieno", 0, 300, true},
        {"conferimenti, disco pieno", 1, 300, true},
        {"fatture, ucciso", 0, 2000, false},
        {"conferimenti, ucciso", 1, 500, false},
    };
    for (const auto& c : casi) {
        const Ramo& r = Rami[c.ramo];
        SCOPED_TRACE(c.nome);
        const QString file = File(r, c.domande);
        sessione().DbDistilleria.reset();
        QProcess figlio;
        QProcessEnvironment ambiente = QProcessEnvironment::systemEnvironment();
        const QString guasto = c.pieno ? "pieno" : "fermo";
        ambiente.insert(VariabileFiglio, QStringList{cartella->cartella(), QString::number(c.ramo), file, guasto}.join('|'));
        figlio.setProcessEnvironment(ambiente);
        figlio.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        figlio.start(QCoreApplication::applicationFilePath(), {"--gtest_filter=CaricoGuastiFiglio.Figlio"});
        QByteArray uscita;
        if (!c.pieno) {
            while (!uscita.contains("SCRITTE") && figlio.waitForReadyRead(300000))
                uscita += figlio.readAllStandardOutput();
            ASSERT_TRUE(uscita.contains("SCRITTE")) << uscita.toStdString();
            figlio.kill();
        }
        ASSERT_TRUE(figlio.waitForFinished(600000));
        const QStringList detti =
            QString::fromUtf8(uscita + figlio.readAllStandardOutput()).split('\n').filter("MESSAGGIO ");
        EXPECT_EQ(detti.value(detti.size() - 1),
                  c.pieno ? "MESSAGGIO 16|Carico|Carico fornitura non riuscito." : "")
            << detti.join('\n').toStdString();

        sessione().DbDistilleria = Database::Apri(cartella->percorsoDatabase(), true, ConnessioneDb);
        EXPECT_EQ(Righe(db(), "PRAGMA integrity_check"), QStringList{"ok"});
        EXPECT_EQ(Conti(r), QStringList(r.tabelle.size(), "0").join('|'));
        script->messaggi.clear();
        r.carica(File(r, 2), nullptr);
        EXPECT_EQ(script->messaggi, Messaggi{Riuscito});
        for (const QString& tabella : r.tabelle + QStringList{"LOGERR"})
            db().Execute("DELETE FROM " + tabella);
    }
}

// Mentre un carico scrive, il menu e le altre maschere sono spenti e
// l'uscita aspetta: la domanda di uscita arriva a carico finito.
TEST_F(CaricoGuasti, UnoScrittoreAllaVolta)
{
    AnnullaRegistrazioni();
    RegistraMaschereForniture();
    RegistraMaschera("FrmSelezione", [](QWidget*) { return new QWidget; });
    FrmMenu& menu = FrmMenu::Carica();
    menu.show();
    menu.MostraMaschera("FrmSelezione");
    menu.findChild<QAction*>("mnuDist_11")->trigger();
    auto* carico = qobject_cast<MascheraCarico*>(menu.MascheraAperta("frmCarico"));
    ASSERT_NE(carico, nullptr);
    QWidget* altra = menu.MascheraAperta("FrmSelezione")->parentWidget();
    const QString arrivo = QDir(cartella->cartella()).filePath("arrivo");
    QDir().mkpath(arrivo);
    FornituraProva::ScriviFile(QDir(arrivo).filePath(NomeFileFornitura("FAT", carico->CmbDomAnnualita->currentText())),
                               Fatture(2));
    script->cartelle.enqueue(arrivo);

    QList<bool> durante;
    script->alMessaggio = [&](const MessaggioRegistrato& m) {
        if (m.testo != Riuscito.testo)
            return;
        durante = {menu.menuBar()->isEnabled(), altra->isEnabled(), carico->isEnabled()};
        menu.close();
        durante << menu.isVisible();
    };
    carico->Cmddati_Click(0);
    EXPECT_EQ(durante, (QList<bool>{false, false, true, true}));
    EXPECT_TRUE(menu.menuBar()->isEnabled());
    EXPECT_TRUE(altra->isEnabled());

    script->Rispondi(RispostaMsg::No);
    QCoreApplication::processEvents();
    const QString titolo = sessione().TitoloMaschera;
    EXPECT_EQ(script->messaggi,
              (Messaggi{{Riuscito.testo, 64, titolo},
                        {"Abbandonare la sessione di lavoro ?", 36, TitoloLungo}}));
    FrmMenu::Scarica();
    AnnullaRegistrazioni();
}

}  // namespace
