// Avvio: apertura del database, controllo di versione, sostituzione della
// vecchia tabella SETUP, campagna corrente e schermata d'avvio.
#include "shell/FrmMenu.h"
#include "shell/frmSpalsh.h"
#include "shell/registro_maschere.h"
#include "support/prova.h"

namespace {

using namespace Qt::StringLiterals;

class Avvio : public ProvaConDatabase {
protected:
    // Stato noto: versione del programma, due campagne (la più recente non
    // per ultima), registro vuoto; poi le istruzioni del caso, separate da "; ".
    void Prepara(const QString& modifica = {})
    {
        cartella = std::make_unique<CartellaProva>();
        sessione().PathDatabase = cartella->cartella() + u"/database/"_s;
        sessione().CampagnaCorrente.clear();
        sessione().DbDistilleria.reset();
        script->messaggi.clear();
        auto d = Database::Apri(cartella->percorsoDatabase(), false, ConnessioneDb);
        for (const char* sql : {"DELETE FROM tab_setup", "DELETE FROM CAMPAGNA", "DELETE FROM LOGERR",
                                "INSERT INTO CAMPAGNA (ANNUALITA) VALUES (2005), (2004)"})
            d->Execute(QString::fromLatin1(sql));
        d->Execute(u"INSERT INTO tab_setup VALUES ('1.0.0', '15/09/2005', ?)"_s, {DescrizioneSetup});
        for (const QString& sql : modifica.split(u"; "_s, Qt::SkipEmptyParts))
            d->Execute(sql);
        d->Close();
    }
    QStringList Leggi(const QString& sql) { return RigheDelFile(cartella->percorsoDatabase(), sql); }
    // Il controllo termina il processo dopo un solo messaggio.
    void TerminaCon(const MessaggioRegistrato& atteso)
    {
        script->Rispondi(RispostaMsg::OK);
        EXPECT_THROW(AggiornamentoVersione(), ProcessoTerminato);
        EXPECT_EQ(script->messaggi, Messaggi{atteso});
    }
};

const QString Oggi() { return QDate::currentDate().toString(u"dd/MM/yyyy"_s); }

TEST(PathDatabase, UnaSolaBarraPrimaDiDatabase)
{
    EXPECT_EQ(CalcolaPathDatabase(u"/opt/fermola"_s), u"/opt/fermola/database/"_s);
    EXPECT_EQ(CalcolaPathDatabase(u"/"_s), u"/database/"_s);  // radice: finisce già con la barra
}

// TAB_Fornitura si ricrea vuota, anche se manca.
TEST_F(Avvio, LaVecchiaTabellaSetupVieneSostituitaUnaVolta)
{
    for (const QString& nome : {u"SETUP"_s, u"Setup"_s}) {
        SCOPED_TRACE(nome.toStdString());
        const QString fornitura = nome == u"SETUP"_s ? u"INSERT INTO TAB_Fornitura (CAMPAGNA) VALUES ('2004')"_s
                                                    : u"DROP TABLE TAB_Fornitura"_s;
        Prepara(u"DROP TABLE tab_setup; CREATE TABLE %1 (VERSIONE TEXT, NOTE TEXT); INSERT INTO %1 VALUES "
                "('0.9', 'vecchia'); %2"_s.arg(nome, fornitura));
        // Il secondo avvio non trova più SETUP e non tocca nulla.
        for (int avvio = 1; avvio <= 2; ++avvio) {
            AggiornamentoVersione();
            EXPECT_TRUE(script->messaggi.isEmpty());
            EXPECT_EQ(sessione().VersioneDb + u'|' + sessione().DataVersioneDb, u"1.0.0|"_s + Oggi());
            EXPECT_EQ(Leggi(u"SELECT * FROM tab_setup"_s), QStringList{u"1.0.0|"_s + Oggi() + u'|' + DescrizioneSetup});
            EXPECT_EQ(Leggi(u"SELECT (SELECT COUNT(*) FROM TAB_Fornitura), (SELECT COUNT(*) FROM sqlite_master "
                            "WHERE upper(name) = 'SETUP'), (SELECT group_concat(name, ' ') FROM "
                            "pragma_table_info('TAB_Fornitura'))"_s),
                      QStringList{u"0|0|ID CAMPAGNA NUMERO_DOMANDE NUMERO_FATTURE DATA_FORNITURE "
                                  "PROGRESSIVO_FORNITURA"_s});
        }
    }
}

TEST_F(Avvio, UnaVersioneDiversaComeTestoTerminaIlProcesso)
{
    // Confronto di testo esatto: più nuova, più corta o con uno spazio è diversa lo stesso.
    for (const QString& versione : {u"1.0.1"_s, u"1.0"_s, u"1.0.0 "_s}) {
        SCOPED_TRACE(versione.toStdString());
        Prepara(u"UPDATE tab_setup SET VERSIONE = '%1'"_s.arg(versione));
        TerminaCon({u"Versioni non congruenti DB "_s + versione +
                        u" - ExE 1.0.0\nAggiornamento fallito contattare assistenza"_s,
                    16, QString()});
        EXPECT_TRUE(sessione().VersioneDb.isEmpty());
        // La connessione non si chiude prima della fine del processo, e nulla va nel registro.
        EXPECT_TRUE(sessione().DbDistilleria && sessione().DbDistilleria->aperto());
        EXPECT_EQ(Leggi(u"SELECT COUNT(*) FROM LOGERR"_s), QStringList{u"0"_s});
    }
}

TEST_F(Avvio, UnDatabaseCheNonSiApreTerminaSenzaRegistro)
{
    std::unique_ptr<Database> altro;
    const struct {
        const char* caso;
        std::function<void(const QString&)> prepara;
        int numero;
        QString descrizione;
    } casi[] = {
        {"file mancante", [](const QString& p) { QFile::remove(p); }, 3024, u"Impossibile trovare il file '%1'."_s},
        {"password diversa",
         [](const QString& p) {
             QFile::remove(p);
             Database::Crea(p, u"altra"_s)->Close();
         },
         3031, u"Password non valida."_s},
        {"file in uso esclusivo", [&](const QString& p) { altro = Database::Apri(p, true, ConnessioneDb); }, 3045,
         u"Impossibile utilizzare '%1': file già in uso."_s},
    };
    for (const auto& c : casi) {
        SCOPED_TRACE(c.caso);
        Prepara();
        const QString p = cartella->percorsoDatabase();
        c.prepara(p);
        const QString descrizione = QString(c.descrizione).replace(u"%1"_s, p);
        TerminaCon({u"Numero Errore: %1\n\nDescrizione Errore: %2\n\n\n"_s.arg(c.numero).arg(descrizione), 16,
                    u"FERMOLA_2005"_s});
        EXPECT_EQ(sessione().DbDistilleria, nullptr);
    }
    altro.reset();
    EXPECT_EQ(Leggi(u"SELECT COUNT(*) FROM LOGERR"_s), QStringList{u"0"_s});
}

TEST_F(Avvio, OgniGuastoDelControlloVaNelRegistroETermina)
{
    const struct { const char* caso; const char* sql; int numero; QString descrizione; } casi[] = {
        {"CAMPAGNA vuota", "DELETE FROM CAMPAGNA", 94, u"Utilizzo non valido di Null"_s},
        {"CAMPAGNA mancante", "DROP TABLE CAMPAGNA", 3078,
         u"Impossibile trovare la tabella o la query di input 'CAMPAGNA'."_s},
        {"tab_setup senza righe", "DELETE FROM tab_setup", 3021, u"Nessun record corrente."_s},
        {"VERSIONE nulla", "UPDATE tab_setup SET VERSIONE = NULL", 94, u"Utilizzo non valido di Null"_s},
        {"né SETUP né tab_setup", "DROP TABLE tab_setup", 3078,
         u"Impossibile trovare la tabella o la query di input 'tab_setup'."_s},
        // Una vista con quel nome impedisce di ricreare TAB_Fornitura.
        {"TAB_Fornitura non ricreabile",
         "DROP TABLE tab_setup; CREATE TABLE SETUP (VERSIONE TEXT); DROP TABLE TAB_Fornitura; "
         "CREATE VIEW TAB_Fornitura AS SELECT 1 AS ID",
         3001, u"Errore del database: view \"TAB_Fornitura\" already exists"_s},
    };
    for (const auto& c : casi) {
        SCOPED_TRACE(c.caso);
        Prepara(QString::fromUtf8(c.sql));
        TerminaCon({MessaggioLogErr(c.numero, c.descrizione, u"AGGIORNAMENTO VERSIONE"_s), 48, u"Gestione Errori"_s});
        // La riga del registro è nel database stesso.
        sessione().DbDistilleria.reset();
        EXPECT_EQ(Leggi(u"SELECT DESC_APPL, CODI_ERRO, FLAG_STAM FROM LOGERR"_s),
                  QStringList{u"AGGIORNAMENTO VERSIONE|%1|N"_s.arg(c.numero, 5, 10, QLatin1Char('0'))});
    }
}

TEST_F(Avvio, LaSchermataControllaLaVersionePoiAspettaUnClicSenzaConnessione)
{
    Prepara(u"INSERT INTO TAB_Fornitura (CAMPAGNA) VALUES ('2005')"_s);
    AnnullaRegistrazioni();
    frmSpalsh splash(cartella->cartella());
    EXPECT_EQ(sessione().PathDatabase, cartella->cartella() + u"/database/"_s);
    splash.show();
    // Il controllo di versione parte da sé, a finestra mostrata.
    EXPECT_TRUE(QTest::qWaitFor([] { return !sessione().CampagnaCorrente.isEmpty(); }, 5000));
    const auto& s = sessione();
    EXPECT_EQ((QStringList{s.CampagnaCorrente, s.VersioneDb, s.DataVersioneDb}),
              (QStringList{u"2005"_s, u"1.0.0"_s, u"15/09/2005"_s}));
    EXPECT_FALSE(script->clessidra);
    // Con tab_setup già presente lo schema non si tocca: TAB_Fornitura, tab_setup, LOGERR.
    EXPECT_EQ(Leggi(u"SELECT (SELECT COUNT(*) FROM TAB_Fornitura), (SELECT COUNT(*) FROM tab_setup), "
                    "(SELECT COUNT(*) FROM LOGERR)"_s),
              QStringList{u"1|1|0"_s});

    // Nessun tempo limite: senza clic restano la schermata e nessuna connessione.
    QTest::qWait(400);
    EXPECT_TRUE(splash.isVisible());
    EXPECT_EQ(FrmMenu::Istanza(), nullptr);
    EXPECT_EQ(s.DbDistilleria, nullptr);

    QTest::mouseClick(splash.Label1(3), Qt::LeftButton);
    EXPECT_FALSE(splash.isVisible());
    ASSERT_NE(FrmMenu::Istanza(), nullptr);
    EXPECT_TRUE(FrmMenu::Istanza()->isVisible());
    EXPECT_TRUE(s.DbDistilleria && s.DbDistilleria->aperto());
    EXPECT_TRUE(script->messaggi.isEmpty());
    FrmMenu::Scarica();
}

}  // namespace
