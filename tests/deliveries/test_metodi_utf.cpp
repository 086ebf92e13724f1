// Scrittura dei certificati senza maschera e legame dei produttori: le righe
// scritte, le marche delle domande (con l'incrocio su DomandaSel) e gli errori.
#include "deliveries/AssociaProduttore.h"
#include "deliveries/MetodiUtf.h"

#include "conferimenti_prova.h"

namespace {

// Il certificato del record di sessione, scritto sotto la domanda 2.
const QString DaSessione = QStringLiteral(
    "2|UTF'9\"|L'AQUILA|AQ|066|01/02/2006|11,0000|1,0000|2,0000|0,0000|0,0000|1");

class MetodiCertificato : public ProvaConferimenti {
protected:
    void SetUp() override
    {
        ProvaConferimenti::SetUp();
        auto& s = sessione();
        s.DomandaProduttoreSel.ID_DOMANDA_PRODUTTORE = 2;
        s.UtfSel = UtfSelezionato{99, 1, QStringLiteral("UTF'9\""), QStringLiteral("L'AQUILA"), QStringLiteral("AQ"),
                                  QStringLiteral("066"), QStringLiteral("01/02/2006"), QStringLiteral("1,0000"),
                                  QStringLiteral("11,0000"), QStringLiteral("0,0000"), QStringLiteral("2,0000"),
                                  QStringLiteral("0,0000"), QStringLiteral("1"), 0};
    }
};

}  // namespace

TEST_F(MetodiCertificato, ScrittureEMarche)
{
    const QString Nessuna = QStringLiteral("Nessuna fattura da aggiornare");
    const struct {
        const char* caso;
        int operazione;
        QString condizione;
        qint32 domandaFatture;  // DomandaSel.ID_DOMANDA: l'incrocio dei due rami
        bool esito;
        QStringList certificati, marche;
        Messaggi messaggi;
    } casi[] = {
        // Il certificato nuovo va sotto la domanda 2, ma le marche tornano "N"
        // sulla 1 (UtfSel.iD_DOMANDA) e sulla 3 (DomandaSel), non sulla 2.
        {"inserimento", 0, QString(), 3, true, {Utf1, Utf2, "3|" + DaSessione}, {"1|N|N", "2|S|S", "3|N|N"}, {}},
        {"modifica", 1, QStringLiteral("where  id_utf =1"), 0, true, {"1|" + DaSessione, Utf2},
         {"1|N|N", "2|S|S", "3|S|S"}, {}},
        {"modifica senza riga", 1, QStringLiteral("where  id_utf =7"), 3, false, {Utf1, Utf2},
         {"1|S|S", "2|S|S", "3|S|S"}, {{Nessuna, 48, QString()}}},
        {"cancellazione", 2, QStringLiteral("where id_utf=2"), 2, true, {Utf1}, {"1|N|N", "2|N|N", "3|S|S"}, {}},
        {"operazione sconosciuta", 3, QStringLiteral("where id_utf=2"), 2, false, {Utf1, Utf2},
         {"1|S|S", "2|S|S", "3|S|S"},
         {{MessaggioLogErr(3020, QStringLiteral("Update o CancelUpdate senza AddNew o Edit."),
                           QStringLiteral("frmProduttore_Utf motedoUtf")),
           48, QStringLiteral("Gestione Errori")}}},
    };
    for (const auto& c : casi) {
        SCOPED_TRACE(c.caso);
        db().Execute(QStringLiteral("UPDATE DOMANDE_PRODUTTORI SET STAM='S', SCAR='S'"));
        SeminaCertificati();
        script->messaggi.clear();
        script->AccettaMessaggiSenzaRisposta();
        sessione().DomandaSel.ID_DOMANDA = c.domandaFatture;
        EXPECT_EQ(MetodiUtf(c.operazione, c.condizione), c.esito);
        EXPECT_EQ(Righe(db(), TutteLeRigheUtf), c.certificati);
        EXPECT_EQ(Marche(), c.marche);
        EXPECT_EQ(script->messaggi, c.messaggi);
        // Il certificato inserito non torna nel record di sessione.
        EXPECT_EQ(sessione().UtfSel.iD_UTF, 99);
    }
    // Scrivere di nuovo un certificato cancellato: nessuna riga, errore 3021 registrato.
    script->messaggi.clear();
    EXPECT_TRUE(MetodiUtf(2, QStringLiteral("where id_utf=2")));
    EXPECT_FALSE(MetodiUtf(2, QStringLiteral("where id_utf=2")));
    ASSERT_EQ(script->messaggi.size(), 1);
    EXPECT_EQ(script->messaggi[0].testo,
              MessaggioLogErr(3021, DescrizioneErrore(3021), QStringLiteral("frmProduttore_Utf motedoUtf")));
    EXPECT_EQ(Errori(), QStringList(2, QStringLiteral("|frmProduttore_Utf motedoUtf")));
}

TEST_F(ProvaConferimenti, LegameDeiProduttori)
{
    const struct { qint32 produttore, utf; int operazione; bool esito; QStringList legami; } casi[] = {
        {3, 2, 0, true, {"1|1", "1|2", "2|3"}},
        {3, 2, 2, true, {"1|1", "1|2"}},
        {2, 2, 2, true, {"1|1", "1|2"}},  // legame assente: nessuna riga, nessun errore
        {1, 1, 5, true, {"1|1", "1|2"}},  // nessuna istruzione per le altre operazioni
    };
    for (const auto& c : casi) {
        SCOPED_TRACE(testing::Message() << c.produttore << "/" << c.utf << "/" << c.operazione);
        EXPECT_EQ(rfAssociaDeAssociaProduttore(c.produttore, c.utf, c.operazione), c.esito);
        EXPECT_EQ(Legami(), c.legami);
    }
    EXPECT_TRUE(script->messaggi.isEmpty());
    // La riga del produttore resta anche senza legami.
    EXPECT_EQ(Righe(db(), QStringLiteral("SELECT COUNT(*) FROM PRODUTTORI WHERE iD_PRODUTTORI = 3")), QStringList{"1"});

    // Senza la tabella l'errore va nel registro con il suo settore.
    script->AccettaMessaggiSenzaRisposta();
    db().Execute(QStringLiteral("DROP TABLE TAB_ID_UTF_PRODUTTORE"));
    for (int operazione : {0, 2})
        EXPECT_FALSE(rfAssociaDeAssociaProduttore(1, 1, operazione));
    EXPECT_EQ(Errori(), QStringList(2, QStringLiteral("Md_FunzioniGenerali|rfAssociaDeAssociaProduttore")));
}
