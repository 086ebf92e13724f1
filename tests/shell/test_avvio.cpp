// Avvio: apertura del database, controllo di versione, sostituzione della
// vecchia tabella SETUP, campagna corrente e schermata d'avvio.
#include "shell/ApriDatabase.h"
#include "shell/FrmMenu.h"
#include "shell/frmSpalsh.h"
#include "shell/registro_maschere.h"
#include "shell/session_state.h"
#include "store/database.h"
#include "support/cartella_prova.h"

#include <QDate>
#include <QFile>
#include <QLabel>
#include <QTest>
#include <functional>
#include <gtest/gtest.h>

namespace {

const QString Oggi() { return QDate::currentDate().toString(QStringLiteral("dd/MM/yyyy")); }

class Avvio : public ProvaConDatabase {
protected:
    void SetUp() override
    {
        ProvaConDatabase::SetUp();
        StatoNoto();
    }

    // Stato noto del database: versione del programma, due campagne, registro vuoto.
    void StatoNoto()
    {
        sessione().CampagnaCorrente.clear();
        Prepara([](Database& d) {
            d.Execute(QStringLiteral("DELETE FROM tab_setup"));
            d.Execute(QStringLiteral("INSERT INTO tab_setup (VERSIONE, DATA_VERSIONE, DESCRIZIONE) VALUES (?, ?, ?)"),
                      {QStringLiteral("1.0.0"), QStringLiteral("15/09/2005"), DescrizioneSetup});
            d.Execute(QStringLiteral("DELETE FROM CAMPAGNA"));
            d.Execute(QStringLiteral("INSERT INTO CAMPAGNA (ANNUALITA) VALUES (2005)"));
            // La più recente non è l'ultima inserita.
            d.Execute(QStringLiteral("INSERT INTO CAMPAGNA (ANNUALITA) VALUES (2004)"));
            d.Execute(QStringLiteral("DELETE FROM LOGERR"));
        });
    }

    // Modifica il database con una connessione propria, chiusa subito dopo.
    void Prepara(const std::function<void(Database&)>& modifica)
    {
        auto d = Database::Apri(cartella->percorsoDatabase(), false, ConnessioneDb);
        modifica(*d);
        d->Close();
    }

    template <typename T>
    T Leggi(const std::function<T(Database&)>& lettura)
    {
        auto d = Database::Apri(cartella->percorsoDatabase(), false, ConnessioneDb);
        T risultato = lettura(*d);
        d->Close();
        return risultato;
    }

    int ContaRighe(const QString& tabella)
    {
        return Leggi<int>([&](Database& d) {
            return static_cast<int>(
                d.OpenRecordset(QStringLiteral("SELECT COUNT(*) FROM ") + tabella).Fields(0).intero());
        });
    }
};

// ---------------------------------------------------------------- percorso

TEST(PathDatabase, UnaSolaBarraPrimaDiDatabase)
{
    const struct {
        QString cartella, atteso;
    } casi[] = {
        {QStringLiteral("/opt/fermola"), QStringLiteral("/opt/fermola/database/")},
        {QStringLiteral("/opt/fermola/"), QStringLiteral("/opt/fermola/database/")},
        {QStringLiteral("/"), QStringLiteral("/database/")},
    };
    for (const auto& c : casi)
        EXPECT_EQ(CalcolaPathDatabase(c.cartella), c.atteso) << c.cartella.toStdString();
}

// ---------------------------------------------------------------- buon esito

TEST_F(Avvio, ControlloSuperatoLeggeCampagnaEVersioneERichiudeLaConnessione)
{
    Prepara([](Database& d) {
        d.Execute(QStringLiteral("INSERT INTO TAB_Fornitura (CAMPAGNA) VALUES ('2005')"));
    });

    AggiornamentoVersione();

    EXPECT_TRUE(script->messaggi.isEmpty());
    EXPECT_FALSE(script->terminato);
    EXPECT_EQ(sessione().CampagnaCorrente, QStringLiteral("2005"));
    EXPECT_EQ(sessione().VersioneDb, QStringLiteral("1.0.0"));
    EXPECT_EQ(sessione().DataVersioneDb, QStringLiteral("15/09/2005"));
    EXPECT_EQ(sessione().DbDistilleria, nullptr) << "la schermata aspetta senza connessione";
    EXPECT_FALSE(script->clessidra);
    // Con tab_setup già presente lo schema non si tocca.
    EXPECT_EQ(ContaRighe(QStringLiteral("TAB_Fornitura")), 1);
    EXPECT_EQ(ContaRighe(QStringLiteral("tab_setup")), 1);
    EXPECT_EQ(ContaRighe(QStringLiteral("LOGERR")), 0);
}

// ---------------------------------------------------------------- SETUP

TEST_F(Avvio, LaVecchiaTabellaSetupVieneSostituitaUnaVolta)
{
    for (const QString& nome : {QStringLiteral("SETUP"), QStringLiteral("Setup")}) {
        SCOPED_TRACE(nome.toStdString());
        Prepara([&](Database& d) {
            d.Execute(QStringLiteral("DROP TABLE IF EXISTS tab_setup"));
            d.Execute(QStringLiteral("CREATE TABLE %1 (VERSIONE TEXT, NOTE TEXT)").arg(nome));
            d.Execute(QStringLiteral("INSERT INTO %1 VALUES ('0.9', 'vecchia')").arg(nome));
            d.Execute(QStringLiteral("INSERT INTO TAB_Fornitura (CAMPAGNA) VALUES ('2004')"));
        });

        AggiornamentoVersione();

        EXPECT_TRUE(script->messaggi.isEmpty());
        EXPECT_FALSE(script->terminato);
        EXPECT_EQ(sessione().VersioneDb, QStringLiteral("1.0.0"));
        EXPECT_EQ(sessione().DataVersioneDb, Oggi());
        EXPECT_EQ(sessione().DbDistilleria, nullptr);

        const auto tabelle = Leggi<QStringList>([](Database& d) { return d.TableDefs(); });
        for (const QString& t : tabelle)
            EXPECT_NE(t.toUpper(), QStringLiteral("SETUP"));
        const auto setup = Leggi<QStringList>([](Database& d) {
            QStringList righe;
            for (Recordset rs = d.OpenRecordset(QStringLiteral("SELECT * FROM tab_setup")); !rs.eof(); rs.MoveNext())
                righe << rs.Fields(QStringLiteral("VERSIONE")).testo() + QLatin1Char('|') +
                             rs.Fields(QStringLiteral("DATA_VERSIONE")).testo() + QLatin1Char('|') +
                             rs.Fields(QStringLiteral("DESCRIZIONE")).testo();
            return righe;
        });
        EXPECT_EQ(setup, QStringList{QStringLiteral("1.0.0|") + Oggi() +
                                     QStringLiteral("|Distilleria ART.29-30 con Carico, Gestione, Scarico.")});
        EXPECT_EQ(ContaRighe(QStringLiteral("TAB_Fornitura")), 0) << "TAB_Fornitura ricreata vuota";
        EXPECT_EQ(Leggi<QStringList>([](Database& d) { return d.ColonneTabella(QStringLiteral("TAB_Fornitura")); }),
                  (QStringList{QStringLiteral("ID"), QStringLiteral("CAMPAGNA"), QStringLiteral("NUMERO_DOMANDE"),
                               QStringLiteral("NUMERO_FATTURE"), QStringLiteral("DATA_FORNITURE"),
                               QStringLiteral("PROGRESSIVO_FORNITURA")}));

        // Un secondo avvio non tocca più nulla.
        AggiornamentoVersione();
        EXPECT_TRUE(script->messaggi.isEmpty());
        EXPECT_EQ(ContaRighe(QStringLiteral("tab_setup")), 1);
    }
}

// ---------------------------------------------------------------- versioni

TEST_F(Avvio, UnaVersioneDiversaComeTestoTerminaIlProcesso)
{
    for (const QString& versione : {QStringLiteral("1.0.1"), QStringLiteral("1.0"), QStringLiteral("0.9.9"),
                                   QStringLiteral("1.0.0 ")}) {
        SCOPED_TRACE(versione.toStdString());
        script->messaggi.clear();
        sessione().DbDistilleria.reset();
        Prepara([&](Database& d) { d.Execute(QStringLiteral("UPDATE tab_setup SET VERSIONE = ?"), {versione}); });
        script->Rispondi(RispostaMsg::OK);

        EXPECT_THROW(AggiornamentoVersione(), ProcessoTerminato);

        ASSERT_EQ(script->messaggi.size(), 1);
        EXPECT_EQ(script->messaggi[0].testo, QStringLiteral("Versioni non congruenti DB ") + versione +
                                                 QStringLiteral(" - ExE 1.0.0\nAggiornamento fallito contattare assistenza"));
        EXPECT_EQ(script->messaggi[0].stile, 16);
        EXPECT_EQ(script->messaggi[0].titolo, QString()) << "nessun titolo proprio";
        EXPECT_TRUE(sessione().VersioneDb.isEmpty());
        // La connessione non si chiude prima della fine del processo, e nulla va nel registro.
        ASSERT_NE(sessione().DbDistilleria, nullptr);
        EXPECT_TRUE(sessione().DbDistilleria->aperto());
        EXPECT_EQ(ContaRighe(QStringLiteral("LOGERR")), 0);
    }
}

// ---------------------------------------------------------------- apertura

TEST_F(Avvio, UnDatabaseCheNonSiApreTerminaSenzaRegistro)
{
    const QString percorso = cartella->percorsoDatabase();
    const struct {
        const char* caso;
        std::function<void()> prepara;
        QString testo;
    } casi[] = {
        {"file mancante", [&] { QFile::remove(percorso); },
         QStringLiteral("Numero Errore: 3024\n\nDescrizione Errore: Impossibile trovare il file '") + percorso +
             QStringLiteral("'.\n\n\n")},
        {"password diversa",
         [&] {
             QFile::remove(percorso);
             Database::Crea(percorso, QStringLiteral("altra"))->Close();
         },
         QStringLiteral("Numero Errore: 3031\n\nDescrizione Errore: Password non valida.\n\n\n")},
    };
    for (const auto& c : casi) {
        SCOPED_TRACE(c.caso);
        c.prepara();
        script->messaggi.clear();
        script->Rispondi(RispostaMsg::OK);

        EXPECT_THROW(AggiornamentoVersione(), ProcessoTerminato);

        ASSERT_EQ(script->messaggi.size(), 1) << "nessun secondo messaggio: il controllo non riprende";
        EXPECT_EQ(script->messaggi[0].testo, c.testo);
        EXPECT_EQ(script->messaggi[0].stile, 16);
        EXPECT_EQ(script->messaggi[0].titolo, QStringLiteral("FERMOLA_2005"));
        EXPECT_EQ(sessione().DbDistilleria, nullptr);
    }
}

TEST_F(Avvio, UnDatabaseInUsoEsclusivoTerminaSenzaRegistro)
{
    auto altro = Database::Apri(cartella->percorsoDatabase(), true, ConnessioneDb);
    script->Rispondi(RispostaMsg::OK);

    EXPECT_THROW(AggiornamentoVersione(), ProcessoTerminato);

    ASSERT_EQ(script->messaggi.size(), 1);
    EXPECT_TRUE(script->messaggi[0].testo.startsWith(QStringLiteral("Numero Errore: 3045\n\nDescrizione Errore: ")))
        << script->messaggi[0].testo.toStdString();
    EXPECT_TRUE(script->messaggi[0].testo.endsWith(QStringLiteral("\n\n\n")));
    EXPECT_EQ(script->messaggi[0].titolo, QStringLiteral("FERMOLA_2005"));
    altro->Close();
    EXPECT_EQ(ContaRighe(QStringLiteral("LOGERR")), 0);
}

// ---------------------------------------------------------------- guasti registrati

TEST_F(Avvio, OgniGuastoDelControlloVaNelRegistroETermina)
{
    const struct {
        const char* caso;
        std::function<void(Database&)> prepara;
        int numero;
        QString descrizione;  // vuota: quella data dal motore, non controllata
    } casi[] = {
        {"CAMPAGNA vuota", [](Database& d) { d.Execute(QStringLiteral("DELETE FROM CAMPAGNA")); }, 94,
         QStringLiteral("Utilizzo non valido di Null")},
        {"CAMPAGNA mancante", [](Database& d) { d.Execute(QStringLiteral("DROP TABLE CAMPAGNA")); }, 3078,
         QStringLiteral("Impossibile trovare la tabella o la query di input 'CAMPAGNA'.")},
        {"tab_setup senza righe", [](Database& d) { d.Execute(QStringLiteral("DELETE FROM tab_setup")); }, 3021,
         QStringLiteral("Nessun record corrente.")},
        {"VERSIONE nulla", [](Database& d) { d.Execute(QStringLiteral("UPDATE tab_setup SET VERSIONE = NULL")); }, 94,
         QStringLiteral("Utilizzo non valido di Null")},
        {"né SETUP né tab_setup", [](Database& d) { d.Execute(QStringLiteral("DROP TABLE tab_setup")); }, 3078,
         QStringLiteral("Impossibile trovare la tabella o la query di input 'tab_setup'.")},
        {"TAB_Fornitura non ricreabile",
         [](Database& d) {
             // Una vista con quel nome impedisce di creare la tabella.
             d.Execute(QStringLiteral("DROP TABLE tab_setup"));
             d.Execute(QStringLiteral("CREATE TABLE SETUP (VERSIONE TEXT)"));
             d.Execute(QStringLiteral("DROP TABLE TAB_Fornitura"));
             d.Execute(QStringLiteral("CREATE VIEW TAB_Fornitura AS SELECT 1 AS ID"));
         },
         0, QString()},
    };
    for (const auto& c : casi) {
        SCOPED_TRACE(c.caso);
        cartella = std::make_unique<CartellaProva>();
        sessione().PathDatabase = cartella->cartella() + QStringLiteral("/database/");
        sessione().DbDistilleria.reset();
        StatoNoto();
        Prepara(c.prepara);
        script->messaggi.clear();
        script->Rispondi(RispostaMsg::OK);

        EXPECT_THROW(AggiornamentoVersione(), ProcessoTerminato);

        ASSERT_EQ(script->messaggi.size(), 1);
        const MessaggioRegistrato& m = script->messaggi[0];
        EXPECT_EQ(m.stile, 48);
        EXPECT_EQ(m.titolo, QStringLiteral("Gestione Errori"));
        EXPECT_TRUE(m.testo.endsWith(QStringLiteral("Nome Form\t: AGGIORNAMENTO VERSIONE\n\r\n"
                                                    "Nome Funzione \t: AGGIORNAMENTO VERSIONE")))
            << m.testo.toStdString();
        if (c.numero != 0) {
            EXPECT_EQ(m.testo.section(QStringLiteral("\n\r\n"), 0, 1),
                      QStringLiteral("Errore numero\t: %1\n\r\nDescrizione    \t: %2").arg(c.numero).arg(c.descrizione));
        }

        // La riga del registro è nel database stesso.
        sessione().DbDistilleria.reset();
        const auto righe = Leggi<QStringList>([](Database& d) {
            QStringList r;
            for (Recordset rs = d.OpenRecordset(QStringLiteral("SELECT * FROM LOGERR")); !rs.eof(); rs.MoveNext())
                r << rs.Fields(QStringLiteral("DESC_APPL")).testo() + QLatin1Char('|') +
                         rs.Fields(QStringLiteral("CODI_ERRO")).testo() + QLatin1Char('|') +
                         rs.Fields(QStringLiteral("FLAG_STAM")).testo();
            return r;
        });
        ASSERT_EQ(righe.size(), 1);
        EXPECT_TRUE(righe[0].startsWith(QStringLiteral("AGGIORNAMENTO VERSIONE|")));
        if (c.numero != 0) {
            EXPECT_EQ(righe[0], QStringLiteral("AGGIORNAMENTO VERSIONE|%1|N").arg(c.numero, 5, 10, QLatin1Char('0')));
        }
    }
}

// ---------------------------------------------------------------- schermata

TEST_F(Avvio, LaSchermataAspettaUnClicSenzaConnessionePoiApreIlMenu)
{
    AnnullaRegistrazioni();
    frmSpalsh splash(cartella->cartella());
    EXPECT_EQ(sessione().PathDatabase, cartella->cartella() + QStringLiteral("/database/"));
    EXPECT_EQ(splash.Label1(0)->text(), QStringLiteral("Per sistemi Microsoft Windows"));
    EXPECT_EQ(splash.Label1(1)->text(), QStringLiteral("Versione 1.0.0"));
    for (int i : {2, 3}) {
        EXPECT_EQ(splash.Label1(i)->text(), QStringLiteral("Skip"));
        EXPECT_EQ(splash.Label1(i)->toolTip(), QStringLiteral("Prosegui"));
    }

    splash.show();
    // Il controllo di versione parte da sé, a finestra mostrata.
    EXPECT_TRUE(QTest::qWaitFor([] { return !sessione().CampagnaCorrente.isEmpty(); }, 5000));
    EXPECT_EQ(sessione().CampagnaCorrente, QStringLiteral("2005"));
    EXPECT_EQ(sessione().VersioneDb, QStringLiteral("1.0.0"));

    // Nessun tempo limite: senza clic restano la schermata e nessuna connessione.
    QTest::qWait(400);
    EXPECT_TRUE(splash.isVisible());
    EXPECT_EQ(FrmMenu::Istanza(), nullptr);
    EXPECT_EQ(sessione().DbDistilleria, nullptr);

    QTest::mouseClick(splash.Label1(3), Qt::LeftButton);
    EXPECT_FALSE(splash.isVisible());
    ASSERT_NE(FrmMenu::Istanza(), nullptr);
    EXPECT_TRUE(FrmMenu::Istanza()->isVisible());
    ASSERT_NE(sessione().DbDistilleria, nullptr);
    EXPECT_TRUE(sessione().DbDistilleria->aperto());
    EXPECT_TRUE(script->messaggi.isEmpty());
    FrmMenu::Scarica();
}

}  // namespace
