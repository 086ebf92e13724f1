// Inizializzazione della distilleria: primo avvio con la tabella vuota,
// salvataggio, cambio del codice, rifiuti con i loro messaggi, errori.
#include "shell/FrmMenu.h"
#include "shell/LeggiDistilleria.h"
#include "shell/frmInizializza.h"
#include "shell/registra_distilleria.h"
#include "shell/registro_maschere.h"
#include "shell/session_state.h"
#include "store/database.h"
#include "support/cartella_prova.h"
#include "modale_di_prova.h"

#include <QAction>
#include <QLineEdit>
#include <QMdiArea>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

namespace {

// Codici inventati, con il carattere o la cifra di controllo giusti.
const QString CfValido = QStringLiteral("DSTFRM70C12Z404F");
const QString CfValido2 = QStringLiteral("NVVDST81E55Z110D");
const QString PivaValida = QStringLiteral("02468135799");
const QString PivaValida2 = QStringLiteral("13579246805");
const QString Titolo = QStringLiteral(" Inizializza Distilleria ");

struct Riga {
    QString cf, ragione, indirizzo;
    bool operator==(const Riga&) const = default;
};

void PrintTo(const Riga& r, std::ostream* os)
{
    *os << "{" << r.cf.toStdString() << " | " << r.ragione.toStdString() << " | " << r.indirizzo.toStdString() << "}";
}

class Inizializza : public ProvaConDatabase {
protected:
    void SetUp() override
    {
        ProvaConDatabase::SetUp();
        AnnullaRegistrazioni();
        RegistraMaschereDistilleria();
    }
    void TearDown() override
    {
        m_maschera.reset();
        FrmMenu::Scarica();
        AnnullaRegistrazioni();
        ProvaConDatabase::TearDown();
    }

    QList<Riga> Righe()
    {
        QList<Riga> righe;
        for (Recordset rs = db().OpenRecordset(QStringLiteral("SELECT * FROM DISTILLERIA ORDER BY rowid"));
             !rs.eof(); rs.MoveNext())
            righe << Riga{rs.Fields(QStringLiteral("CODI_FISC")).testo(), rs.Fields(QStringLiteral("RAGI_SOCI")).testo(),
                          rs.Fields(QStringLiteral("INDI_DIST")).testo()};
        return righe;
    }

    void Inserisci(const Riga& r)
    {
        db().Execute(QStringLiteral("INSERT INTO DISTILLERIA VALUES (?,?,?)"), {r.cf, r.ragione, r.indirizzo});
    }

    // La maschera aperta come dal menu: distilleria letta, titolo impostato.
    frmInizializza& Apri()
    {
        db();
        if (LeggiDistilleria())
            sessione().TitoloMaschera = Titolo;
        m_maschera = std::make_unique<frmInizializza>();
        m_maschera->show();
        return *m_maschera;
    }

    // Batte il testo tasto per tasto, anche le lettere accentate (che
    // QTest::keyClicks non conosce): il codice del tasto Qt di un carattere
    // Latin-1 è la sua maiuscola.
    static void Scrivi(QLineEdit* campo, const QString& testo)
    {
        campo->clear();
        for (const QChar c : testo)
            QTest::sendKeyEvent(QTest::Click, campo, static_cast<Qt::Key>(c.toUpper().unicode()), QString(c),
                                Qt::NoModifier);
    }

    std::unique_ptr<frmInizializza> m_maschera;
};

TEST_F(Inizializza, CampiEPulsanti)
{
    frmInizializza& f = Apri();
    const struct {
        int indice;
        const char* tag;
        int lunghezza;
        const char* tooltip;
    } campi[] = {
        {1, "CODI_FISC", 16, "Partita IVA o Codice fiscale"},
        {2, "RAGI_SOCI", 30, "Ragione sociale"},
        {3, "INDI_DIST", 30, "Indirizzo sede legale"},
    };
    for (const auto& c : campi) {
        SCOPED_TRACE(c.indice);
        QLineEdit* campo = f.TxtDISTDati(c.indice);
        ASSERT_NE(campo, nullptr);
        EXPECT_EQ(campo->property("Tag").toString(), QString::fromLatin1(c.tag));
        EXPECT_EQ(campo->toolTip(), QString::fromLatin1(c.tooltip));
        Scrivi(campo, QString(40, QLatin1Char('7')));
        EXPECT_EQ(campo->text().size(), c.lunghezza);
    }
    // Maiuscole, vocali accentate con l'apostrofo, caratteri fuori dall'insieme ammesso persi.
    const struct {
        int indice;
        QString battuto, atteso;
    } filtri[] = {
        {1, QStringLiteral("dst*frm\"70"), QStringLiteral("DSTFRM70")},
        {2, QStringLiteral("cantina \"perché\" & c."), QStringLiteral("CANTINA PERCHE' & C.")},
        {3, QStringLiteral("via là, 3/b #2"), QStringLiteral("VIA LA', 3/B 2")},
    };
    for (const auto& c : filtri) {
        SCOPED_TRACE(c.indice);
        Scrivi(f.TxtDISTDati(c.indice), c.battuto);
        EXPECT_EQ(f.TxtDISTDati(c.indice)->text(), c.atteso);
    }
    EXPECT_EQ(f.Cmddati[0]->text(), QStringLiteral("Salva"));
    EXPECT_EQ(f.Cmddati[1]->text(), QStringLiteral("Esci"));
    EXPECT_EQ(f.Cmddati[2]->text(), QStringLiteral("Help"));
    EXPECT_EQ(f.windowTitle(), Titolo);
}

// Primo avvio: la maschera compare sopra il menu prima di ogni altra cosa, e
// uscirne in qualsiasi modo senza salvare termina il programma senza domande.
TEST_F(Inizializza, PrimoAvvioUscireSenzaSalvareTermina)
{
    const struct {
        const char* modo;
        std::function<void(frmInizializza*)> esci;
    } modi[] = {
        {"pulsante Esci", [](frmInizializza* f) { f->Cmddati[1]->click(); }},
        {"chiusura della finestra", [](frmInizializza* f) { f->close(); }},
    };
    for (const auto& m : modi) {
        SCOPED_TRACE(m.modo);
        FrmMenu::Scarica();
        script->terminato = false;
        bool terminato = false, menuVisibile = false;
        int figli = -1, messaggiPrima = -1;
        QString titolo;
        AttesaModale attesa(QStringLiteral("frmInizializza"), [&](QDialog* d) {
            auto* f = qobject_cast<frmInizializza*>(d);
            ASSERT_NE(f, nullptr);
            menuVisibile = FrmMenu::Istanza() && FrmMenu::Istanza()->isVisible();
            figli = FrmMenu::Istanza()->AreaMdi()->subWindowList().size();
            messaggiPrima = script->messaggi.size();
            titolo = f->windowTitle();
            try {
                m.esci(f);
            } catch (const ProcessoTerminato&) {
                terminato = true;
            }
            // Il processo vero finirebbe qui: si chiude la modale a mano.
            d->done(QDialog::Rejected);
        });
        FrmMenu::Carica().show();
        ASSERT_TRUE(QTest::qWaitFor([&] { return attesa.eseguita(); }, 5000));
        EXPECT_TRUE(menuVisibile);
        EXPECT_EQ(figli, 0);
        EXPECT_EQ(messaggiPrima, 0);
        EXPECT_EQ(titolo, Titolo);
        EXPECT_TRUE(terminato);
        EXPECT_TRUE(script->terminato);
        EXPECT_TRUE(script->messaggi.isEmpty()) << "nessuna domanda prima della fine";
        EXPECT_TRUE(Righe().isEmpty());
    }
}

TEST_F(Inizializza, PrimoAvvioSalvataggioScriveLaRigaEApreIlMenu)
{
    const struct {
        const char* caso;
        QString codiceDigitato;
        Riga attesa;
    } casi[] = {
        {"codice fiscale scritto in minuscolo", QStringLiteral("dstfrm70c12z404f"),
         {CfValido, QStringLiteral("DISTILLERIA DEL COLLE SRL"), QStringLiteral("VIA DEGLI ALAMBICCHI 12")}},
        {"partita IVA", PivaValida,
         {PivaValida, QStringLiteral("DISTILLERIA DEL COLLE SRL"), QStringLiteral("VIA DEGLI ALAMBICCHI 12")}},
    };
    for (const auto& c : casi) {
        SCOPED_TRACE(c.caso);
        FrmMenu::Scarica();
        db().Execute(QStringLiteral("DELETE FROM DISTILLERIA"));
        script->messaggi.clear();
        script->Rispondi(RispostaMsg::OK);
        bool chiusa = false;
        AttesaModale attesa(QStringLiteral("frmInizializza"), [&](QDialog* d) {
            auto* f = qobject_cast<frmInizializza*>(d);
            Scrivi(f->TxtDISTDati(1), c.codiceDigitato);
            Scrivi(f->TxtDISTDati(2), QStringLiteral("distilleria del colle srl"));
            Scrivi(f->TxtDISTDati(3), QStringLiteral("via degli alambicchi 12"));
            QTest::mouseClick(f->Cmddati[0], Qt::LeftButton);
            chiusa = !f->isVisible();
            if (!chiusa)
                d->done(QDialog::Rejected);  // il test fallisce ma non resta appeso
        });
        FrmMenu& menu = FrmMenu::Carica();
        menu.show();
        ASSERT_TRUE(QTest::qWaitFor([&] { return attesa.eseguita(); }, 5000));
        EXPECT_TRUE(chiusa);
        EXPECT_EQ(Righe(), QList<Riga>{c.attesa});
        ASSERT_EQ(script->messaggi.size(), 1);
        EXPECT_EQ(script->messaggi[0].testo, QStringLiteral("Operazione correttamente eseguita."));
        EXPECT_EQ(script->messaggi[0].stile, 64);
        EXPECT_EQ(script->messaggi[0].titolo, Titolo);
        EXPECT_FALSE(script->terminato);
        EXPECT_TRUE(menu.isVisible());
        EXPECT_FALSE(sessione().DistilleriaAssente);
        EXPECT_EQ(sessione().ModoDistilleria, QStringLiteral("M"));
        EXPECT_EQ(sessione().DistilleriaDati.CODI_FISC, c.attesa.cf);
        QTest::qWait(20);
        EXPECT_EQ(menu.findChild<frmInizializza*>(), nullptr) << "scaricata dopo il salvataggio";
    }
}

TEST_F(Inizializza, ConLaDistilleriaIlMenuNonMostraLaMaschera)
{
    Inserisci({PivaValida, QStringLiteral("A"), QStringLiteral("B")});
    bool apparsa = false;
    AttesaModale attesa(QStringLiteral("frmInizializza"), [&](QDialog* d) {
        apparsa = true;
        d->done(0);
    });
    FrmMenu::Carica().show();
    QTest::qWait(100);
    EXPECT_FALSE(apparsa);
    EXPECT_EQ(sessione().DistilleriaDati.RAGI_SOCI, QStringLiteral("A"));
}

TEST_F(Inizializza, RifiutiConMessaggioEFuoco)
{
    const struct {
        const char* caso;
        QString cf, ragione, indirizzo;
        QString messaggio, titolo;
        int fuoco;
    } casi[] = {
        {"16 cifre", QStringLiteral("1234567890123456"), QStringLiteral("R"), QStringLiteral("I"),
         QStringLiteral("P. IVA non corretta. "), Titolo, 1},
        {"partita IVA con la cifra di controllo sbagliata", QStringLiteral("02468135798"), QStringLiteral("R"),
         QStringLiteral("I"), QStringLiteral("P. IVA non corretta. "), Titolo, 1},
        {"codice fiscale con il controllo sbagliato", QStringLiteral("DSTFRM70C12Z404A"), QStringLiteral("R"),
         QStringLiteral("I"), QStringLiteral("Codice fiscale non corretto. "), Titolo, 1},
        {"codice vuoto", QString(), QStringLiteral("R"), QStringLiteral("I"),
         QStringLiteral("Partita IVA o Codice fiscale campo obbligatorio. "), QStringLiteral("Salvataggio "), 1},
        {"ragione sociale di soli spazi", PivaValida, QStringLiteral("   "), QStringLiteral("I"),
         QStringLiteral("Ragione sociale campo obbligatorio. "), QStringLiteral("Salvataggio "), 2},
        {"indirizzo vuoto", CfValido, QStringLiteral("R"), QString(),
         QStringLiteral("Indirizzo sede legale campo obbligatorio. "), QStringLiteral("Salvataggio "), 3},
        {"il vuoto viene prima del codice errato", QStringLiteral("1234567890123456"), QString(), QString(),
         QStringLiteral("P. IVA non corretta. "), Titolo, 1},
    };
    for (const auto& c : casi) {
        SCOPED_TRACE(c.caso);
        frmInizializza& f = Apri();
        script->messaggi.clear();
        script->Rispondi(RispostaMsg::OK);
        Scrivi(f.TxtDISTDati(1), c.cf);
        Scrivi(f.TxtDISTDati(2), c.ragione);
        Scrivi(f.TxtDISTDati(3), c.indirizzo);
        f.TxtDISTDati(c.fuoco == 3 ? 2 : 3)->setFocus();
        QTest::mouseClick(f.Cmddati[0], Qt::LeftButton);

        ASSERT_EQ(script->messaggi.size(), 1);
        EXPECT_EQ(script->messaggi[0].testo, c.messaggio);
        EXPECT_EQ(script->messaggi[0].stile, 64);
        EXPECT_EQ(script->messaggi[0].titolo, c.titolo);
        EXPECT_EQ(f.focusWidget(), f.TxtDISTDati(c.fuoco));
        EXPECT_TRUE(f.isVisible()) << "la maschera resta aperta";
        EXPECT_TRUE(Righe().isEmpty());
    }
}

TEST_F(Inizializza, CambioDelCodiceDalMenuAggiornaLaRigaDelVecchioCodice)
{
    // Una seconda riga (che il programma non crea mai) mostra che
    // l'aggiornamento tocca solo la riga del vecchio codice.
    Inserisci({CfValido, QStringLiteral("DISTILLERIA VECCHIA"), QStringLiteral("VIA VECCHIA 1")});
    Inserisci({PivaValida2, QStringLiteral("ALTRA"), QStringLiteral("ALTROVE")});
    FrmMenu& menu = FrmMenu::Carica();
    menu.show();
    QTest::qWait(20);
    ASSERT_FALSE(sessione().DistilleriaAssente);

    script->Rispondi(RispostaMsg::OK);
    QStringList campiIniziali;
    bool chiusa = false;
    AttesaModale attesa(QStringLiteral("frmInizializza"), [&](QDialog* d) {
        auto* f = qobject_cast<frmInizializza*>(d);
        for (int i = 1; i <= 3; ++i)
            campiIniziali << f->TxtDISTDati(i)->text();
        Scrivi(f->TxtDISTDati(1), PivaValida);
        Scrivi(f->TxtDISTDati(2), QStringLiteral("DISTILLERIA NUOVA"));
        QTest::mouseClick(f->Cmddati[0], Qt::LeftButton);
        chiusa = !f->isVisible();
        if (!chiusa)
            d->done(QDialog::Rejected);  // il test fallisce ma non resta appeso
    });
    menu.findChild<QAction*>(QStringLiteral("mnuSistema_1"))->trigger();
    ASSERT_TRUE(attesa.eseguita());

    EXPECT_EQ(campiIniziali,
              QStringList({CfValido, QStringLiteral("DISTILLERIA VECCHIA"), QStringLiteral("VIA VECCHIA 1")}));
    EXPECT_TRUE(chiusa);
    EXPECT_EQ(Righe(), (QList<Riga>{{PivaValida, QStringLiteral("DISTILLERIA NUOVA"), QStringLiteral("VIA VECCHIA 1")},
                                    {PivaValida2, QStringLiteral("ALTRA"), QStringLiteral("ALTROVE")}}));
    ASSERT_EQ(script->messaggi.size(), 1);
    EXPECT_EQ(script->messaggi[0].testo, QStringLiteral("Operazione correttamente eseguita."));
    EXPECT_EQ(script->messaggi[0].titolo, Titolo);
    EXPECT_EQ(sessione().DistilleriaDati.CODI_FISC, PivaValida);
    EXPECT_EQ(sessione().DistilleriaDati.RAGI_SOCI, QStringLiteral("DISTILLERIA NUOVA"));
    EXPECT_FALSE(script->terminato);
}

TEST_F(Inizializza, EsciConLaDistilleriaChiudeSenzaSalvare)
{
    Inserisci({CfValido, QStringLiteral("R"), QStringLiteral("I")});
    frmInizializza& f = Apri();
    Scrivi(f.TxtDISTDati(2), QStringLiteral("NON SALVATA"));
    QTest::mouseClick(f.Cmddati[1], Qt::LeftButton);
    EXPECT_FALSE(f.isVisible());
    EXPECT_FALSE(script->terminato);
    EXPECT_EQ(Righe(), (QList<Riga>{{CfValido, QStringLiteral("R"), QStringLiteral("I")}}));
    EXPECT_TRUE(script->messaggi.isEmpty());
}

TEST_F(Inizializza, ApostrofoNelNome)
{
    const struct {
        const char* caso;
        bool esistente;
    } casi[] = {{"inserimento", false}, {"aggiornamento", true}};
    for (const auto& c : casi) {
        SCOPED_TRACE(c.caso);
        db().Execute(QStringLiteral("DELETE FROM DISTILLERIA"));
        if (c.esistente)
            Inserisci({CfValido, QStringLiteral("R"), QStringLiteral("I")});
        frmInizializza& f = Apri();
        script->messaggi.clear();
        script->Rispondi(RispostaMsg::OK);
        Scrivi(f.TxtDISTDati(1), CfValido2);
        Scrivi(f.TxtDISTDati(2), QStringLiteral("CANTINA D'ANNA & FIGLI"));
        Scrivi(f.TxtDISTDati(3), QStringLiteral("PIAZZA DELL'OLMO, 3/A"));
        QTest::mouseClick(f.Cmddati[0], Qt::LeftButton);
        ASSERT_EQ(script->messaggi.size(), 1);
        EXPECT_EQ(script->messaggi[0].testo, QStringLiteral("Operazione correttamente eseguita."));
        EXPECT_EQ(Righe(), (QList<Riga>{{CfValido2, QStringLiteral("CANTINA D'ANNA & FIGLI"),
                                         QStringLiteral("PIAZZA DELL'OLMO, 3/A")}}));
    }
}

TEST_F(Inizializza, NessunaRigaTocca)
{
    Inserisci({CfValido, QStringLiteral("R"), QStringLiteral("I")});
    frmInizializza& f = Apri();
    // Un altro ha cambiato il codice dopo la lettura: il vecchio non c'è più.
    db().Execute(QStringLiteral("UPDATE DISTILLERIA SET CODI_FISC = ?"), {PivaValida2});
    script->Rispondi(RispostaMsg::OK);
    QTest::mouseClick(f.Cmddati[0], Qt::LeftButton);
    ASSERT_EQ(script->messaggi.size(), 1);
    EXPECT_EQ(script->messaggi[0].testo, QStringLiteral("Operazione non eseguita."));
    EXPECT_EQ(script->messaggi[0].stile, 64);
    EXPECT_EQ(script->messaggi[0].titolo, Titolo);
    EXPECT_TRUE(f.isVisible());
}

TEST_F(Inizializza, RigaScrittaMaNonRiletta)
{
    // Un trigger toglie subito la riga: l'inserimento conta una riga, la
    // rilettura non la trova.
    db().Execute(QStringLiteral(
        "CREATE TRIGGER svuota AFTER INSERT ON DISTILLERIA BEGIN DELETE FROM DISTILLERIA; END"));
    frmInizializza& f = Apri();
    script->Rispondi(RispostaMsg::OK);
    Scrivi(f.TxtDISTDati(1), PivaValida);
    Scrivi(f.TxtDISTDati(2), QStringLiteral("R"));
    Scrivi(f.TxtDISTDati(3), QStringLiteral("I"));
    QTest::mouseClick(f.Cmddati[0], Qt::LeftButton);
    ASSERT_EQ(script->messaggi.size(), 1);
    EXPECT_EQ(script->messaggi[0].testo, QStringLiteral("Distilleria non inserita."));
    EXPECT_EQ(script->messaggi[0].titolo, Titolo);
    EXPECT_TRUE(f.isVisible());
    EXPECT_TRUE(sessione().DistilleriaAssente);
}

TEST_F(Inizializza, ErroreDelDatabaseVaNelRegistroELaMascheraResta)
{
    frmInizializza& f = Apri();
    db().Execute(QStringLiteral("ALTER TABLE DISTILLERIA RENAME TO DISTILLERIA_VIA"));
    script->Rispondi(RispostaMsg::OK);
    Scrivi(f.TxtDISTDati(1), PivaValida);
    Scrivi(f.TxtDISTDati(2), QStringLiteral("R"));
    Scrivi(f.TxtDISTDati(3), QStringLiteral("I"));
    QTest::mouseClick(f.Cmddati[0], Qt::LeftButton);
    ASSERT_EQ(script->messaggi.size(), 1);
    EXPECT_EQ(script->messaggi[0].titolo, QStringLiteral("Gestione Errori"));
    EXPECT_EQ(script->messaggi[0].stile, 48);
    EXPECT_TRUE(script->messaggi[0].testo.contains(QStringLiteral("frmInizializza CmdDATI_Click")));
    Recordset rs = db().OpenRecordset(QStringLiteral("SELECT DESC_APPL, CODI_ERRO FROM LOGERR"));
    ASSERT_FALSE(rs.eof());
    EXPECT_EQ(rs.Fields(QStringLiteral("DESC_APPL")).testo(), QStringLiteral("frmInizializza CmdDATI_Click"));
    EXPECT_EQ(rs.Fields(QStringLiteral("CODI_ERRO")).testo(), QStringLiteral("03078"));
    EXPECT_TRUE(f.isVisible());
    EXPECT_FALSE(script->terminato);
}

TEST_F(Inizializza, HelpConIlNomeDellaMaschera)
{
    frmInizializza& f = Apri();
    QString testo;
    AttesaModale attesa(QStringLiteral("FrmHelp"), [&](QDialog* d) {
        testo = d->findChild<QPlainTextEdit*>(QStringLiteral("TxtHElp"))->toPlainText();
        QTest::mouseClick(d->findChild<QPushButton*>(QStringLiteral("CmdHelp")), Qt::LeftButton);
        if (d->isVisible())
            d->done(0);
    });
    QTest::mouseClick(f.Cmddati[2], Qt::LeftButton);
    ASSERT_TRUE(attesa.eseguita());
    EXPECT_TRUE(testo.startsWith(QStringLiteral("INIZIALIZZA DISTILLERIA\n"))) << testo.toStdString();
    EXPECT_TRUE(f.isVisible());
    EXPECT_TRUE(script->messaggi.isEmpty());
}

}  // namespace
