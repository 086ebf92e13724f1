// Inizializzazione della distilleria: primo avvio con la tabella vuota,
// salvataggio, cambio del codice, rifiuti con i loro messaggi, errori; e la
// lettura della distilleria in sessione.
#include "shell/FrmMenu.h"
#include "shell/LeggiDistilleria.h"
#include "shell/frmInizializza.h"
#include "shell/registra_distilleria.h"
#include "shell/registro_maschere.h"
#include "support/prova.h"
#include "support/maschere_finte.h"

#include <QAction>
#include <QMdiArea>

namespace {

// Codici inventati, con il carattere o la cifra di controllo giusti.
const QString CfValido = QStringLiteral("DSTFRM70C12Z404F");
const QString CfValido2 = QStringLiteral("NVVDST81E55Z110D");
const QString PivaValida = QStringLiteral("02468135799");
const QString PivaValida2 = QStringLiteral("13579246805");
const QString Titolo = QStringLiteral(" Inizializza Distilleria ");
const MessaggioRegistrato Eseguita{QStringLiteral("Operazione correttamente eseguita."), 64, Titolo};

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

    QStringList Distilleria()
    {
        return Righe(db(), QStringLiteral("SELECT CODI_FISC, RAGI_SOCI, INDI_DIST FROM DISTILLERIA ORDER BY rowid"));
    }
    void Inserisci(const QString& cf, const QString& ragione, const QString& indirizzo)
    {
        db().Execute(QStringLiteral("INSERT INTO DISTILLERIA VALUES (?,?,?)"), {cf, ragione, indirizzo});
    }

    // La maschera aperta come dal menu: distilleria letta, titolo impostato.
    frmInizializza& Apri()
    {
        db();
        if (LeggiDistilleria())
            sessione().TitoloMaschera = Titolo;
        m_maschera = std::make_unique<frmInizializza>();
        m_maschera->show();
        script->messaggi.clear();
        return *m_maschera;
    }

    static void Scrivi(QLineEdit* campo, const QString& testo)
    {
        campo->clear();
        Digita(campo, testo);
    }
    // Compila i tre campi (un testo nullo lascia il campo com'è) e preme Salva.
    static void Salva(frmInizializza& f, const QString& cf, const QString& ragione, const QString& indirizzo)
    {
        int i = 1;
        for (const QString& testo : {cf, ragione, indirizzo}) {
            if (!testo.isNull())
                Scrivi(f.TxtDISTDati(i), testo);
            ++i;
        }
        QTest::mouseClick(f.Cmddati[0], Qt::LeftButton);
    }

    std::unique_ptr<frmInizializza> m_maschera;
};

// Con la distilleria già scritta, Help mostra l'aiuto della maschera ed Esci
// chiude senza salvare quel che si è battuto.
TEST_F(Inizializza, CampiPulsantiEEsciSenzaSalvare)
{
    Inserisci(CfValido, QStringLiteral("R"), QStringLiteral("I"));
    frmInizializza& f = Apri();
    // Lunghezze, maiuscole, vocali accentate con l'apostrofo, caratteri fuori dall'insieme ammesso persi.
    const struct { int indice, lunghezza; QString battuto, atteso; } campi[] = {
        {1, 16, QStringLiteral("dst*frm\"70"), QStringLiteral("DSTFRM70")},
        {2, 30, QStringLiteral("cantina \"perché\" & c."), QStringLiteral("CANTINA PERCHE' & C.")},
        {3, 30, QStringLiteral("via là, 3/b #2"), QStringLiteral("VIA LA', 3/B 2")},
    };
    for (const auto& c : campi) {
        SCOPED_TRACE(c.indice);
        Scrivi(f.TxtDISTDati(c.indice), QString(40, QLatin1Char('7')));
        EXPECT_EQ(f.TxtDISTDati(c.indice)->text().size(), c.lunghezza);
        Scrivi(f.TxtDISTDati(c.indice), c.battuto);
        EXPECT_EQ(f.TxtDISTDati(c.indice)->text(), c.atteso);
    }
    AiutiChiesti aiuti;
    QTest::mouseClick(f.Cmddati[2], Qt::LeftButton);
    EXPECT_EQ(aiuti, QStringList{QStringLiteral("frmInizializza")});
    QTest::mouseClick(f.Cmddati[1], Qt::LeftButton);
    EXPECT_FALSE(f.isVisible());
    EXPECT_FALSE(script->terminato);
    EXPECT_EQ(Distilleria(), QStringList{CfValido + "|R|I"});
    EXPECT_TRUE(script->messaggi.isEmpty());
}

// Primo avvio: la maschera compare sopra il menu prima di ogni altra cosa.
// Uscirne in qualsiasi modo senza salvare termina il programma senza domande;
// un salvataggio (codice fiscale battuto in minuscolo, o partita IVA) scrive
// la riga, e il menu resta.
TEST_F(Inizializza, PrimoAvvio)
{
    const QString Esci = QStringLiteral("Esci"), Chiudi = QStringLiteral("chiusura");
    for (const QString& azione : {Esci, Chiudi, QStringLiteral("dstfrm70c12z404f")}) {
        SCOPED_TRACE(azione.toStdString());
        FrmMenu::Scarica();
        const bool salva = azione != Esci && azione != Chiudi;
        if (salva)
            script->Rispondi(RispostaMsg::OK);
        QStringList visto;  // all'apertura menu visibile, sue figlie, messaggi, e titolo; poi l'esito
        QuandoModale(QStringLiteral("frmInizializza"), [&](QDialog* d) {
            auto* f = qobject_cast<frmInizializza*>(d);
            visto << QStringLiteral("%1 %2 %3").arg(FrmMenu::Istanza()->isVisible())
                         .arg(FrmMenu::Istanza()->AreaMdi()->subWindowList().size()).arg(script->messaggi.size())
                  << f->windowTitle();
            try {
                if (salva)
                    Salva(*f, azione, QStringLiteral("distilleria del colle srl"), QStringLiteral("via degli alambicchi 12"));
                else
                    azione == Esci ? f->Cmddati[1]->click() : (void)f->close();
                visto << (f->isVisible() ? QStringLiteral("aperta") : QStringLiteral("chiusa"));
            } catch (const ProcessoTerminato&) {
                visto << QStringLiteral("terminato");
            }
            if (f->isVisible())
                d->done(QDialog::Rejected);  // il processo vero finirebbe qui; o il test fallisce senza restare appeso
        });
        FrmMenu& menu = FrmMenu::Carica();
        menu.show();
        ASSERT_TRUE(QTest::qWaitFor([&] { return !visto.isEmpty(); }, 5000));
        EXPECT_EQ(visto, (QStringList{"1 0 0", Titolo, salva ? "chiusa" : "terminato"}));
        // Nessuna domanda prima della fine; salvando, la riga e il menu restano.
        EXPECT_EQ(script->messaggi, salva ? Messaggi{Eseguita} : Messaggi{});
        const QString cf = salva ? azione.toUpper() : QString();
        EXPECT_EQ(Distilleria(),
                  salva ? QStringList{cf + "|DISTILLERIA DEL COLLE SRL|VIA DEGLI ALAMBICCHI 12"} : QStringList());
        EXPECT_EQ(sessione().DistilleriaDati.CODI_FISC, cf);
        EXPECT_TRUE(menu.isVisible() || !salva);
    }
}

TEST_F(Inizializza, RifiutiConMessaggioEFuoco)
{
    const QString Salvataggio = QStringLiteral("Salvataggio ");
    const struct { QString cf, ragione, indirizzo, messaggio, titolo; int fuoco; } casi[] = {
        {QStringLiteral("1234567890123456"), "R", "I", QStringLiteral("P. IVA non corretta. "), Titolo, 1},
        {QStringLiteral("02468135798"), "R", "I", QStringLiteral("P. IVA non corretta. "), Titolo, 1},
        {QStringLiteral("DSTFRM70C12Z404A"), "R", "I", QStringLiteral("Codice fiscale non corretto. "), Titolo, 1},
        {"", "R", "I", QStringLiteral("Partita IVA o Codice fiscale campo obbligatorio. "), Salvataggio, 1},
        {PivaValida, "   ", "I", QStringLiteral("Ragione sociale campo obbligatorio. "), Salvataggio, 2},
        {CfValido, "R", "", QStringLiteral("Indirizzo sede legale campo obbligatorio. "), Salvataggio, 3},
        // Il campo vuoto viene dopo il codice errato.
        {QStringLiteral("1234567890123456"), "", "", QStringLiteral("P. IVA non corretta. "), Titolo, 1},
    };
    for (const auto& c : casi) {
        SCOPED_TRACE(c.messaggio.toStdString() + c.cf.toStdString());
        frmInizializza& f = Apri();
        script->Rispondi(RispostaMsg::OK);
        f.TxtDISTDati(c.fuoco == 3 ? 2 : 3)->setFocus();
        Salva(f, c.cf, c.ragione, c.indirizzo);
        EXPECT_EQ(script->messaggi, (Messaggi{{c.messaggio, 64, c.titolo}}));
        EXPECT_EQ(f.focusWidget(), f.TxtDISTDati(c.fuoco));
        EXPECT_TRUE(f.isVisible()) << "la maschera resta aperta";
        EXPECT_TRUE(Distilleria().isEmpty());
    }
}

TEST_F(Inizializza, CambioDelCodiceDalMenuAggiornaLaRigaDelVecchioCodice)
{
    // Una seconda riga (che il programma non crea mai) mostra che
    // l'aggiornamento tocca solo la riga del vecchio codice.
    Inserisci(CfValido, QStringLiteral("DISTILLERIA VECCHIA"), QStringLiteral("VIA VECCHIA 1"));
    Inserisci(PivaValida2, QStringLiteral("ALTRA"), QStringLiteral("ALTROVE"));
    script->Rispondi(RispostaMsg::OK);
    QStringList campiIniziali;
    bool chiusa = false, eseguita = false;
    QuandoModale(QStringLiteral("frmInizializza"), [&](QDialog* d) {
        eseguita = true;
        auto* f = qobject_cast<frmInizializza*>(d);
        for (int i = 1; i <= 3; ++i)
            campiIniziali << f->TxtDISTDati(i)->text();
        Salva(*f, PivaValida, QStringLiteral("DISTILLERIA NUOVA"), QString());
        chiusa = !f->isVisible();
        if (!chiusa)
            d->done(QDialog::Rejected);
    });
    // Con la distilleria il menu non apre la maschera da sé.
    FrmMenu& menu = FrmMenu::Carica();
    menu.show();
    QTest::qWait(100);
    ASSERT_FALSE(eseguita);
    EXPECT_EQ(sessione().DistilleriaDati.RAGI_SOCI, QStringLiteral("DISTILLERIA VECCHIA"));
    menu.findChild<QAction*>(QStringLiteral("mnuSistema_1"))->trigger();
    ASSERT_TRUE(eseguita);
    EXPECT_EQ(campiIniziali, QStringList({CfValido, "DISTILLERIA VECCHIA", "VIA VECCHIA 1"}));
    EXPECT_TRUE(chiusa);
    EXPECT_EQ(Distilleria(), QStringList({PivaValida + "|DISTILLERIA NUOVA|VIA VECCHIA 1", PivaValida2 + "|ALTRA|ALTROVE"}));
    EXPECT_EQ(script->messaggi, Messaggi{Eseguita});
    EXPECT_EQ(sessione().DistilleriaDati.CODI_FISC, PivaValida);
    EXPECT_FALSE(script->terminato);
}

TEST_F(Inizializza, EsitiDelSalvataggio)
{
    const QString Anna = QStringLiteral("CANTINA D'ANNA & FIGLI"), Olmo = QStringLiteral("PIAZZA DELL'OLMO, 3/A");
    const struct {
        const char *prima, *dopo;  // prima e dopo l'apertura della maschera
        QString cf, ragione, indirizzo;
        MessaggioRegistrato messaggio;
        QStringList righe;
    } casi[] = {
        // L'apostrofo nei nomi, inserendo e aggiornando.
        {"SELECT 1", "SELECT 1", CfValido2, Anna, Olmo, Eseguita, {CfValido2 + "|" + Anna + "|" + Olmo}},
        {"INSERT INTO DISTILLERIA VALUES ('DSTFRM70C12Z404F', 'R', 'I')", "SELECT 1", CfValido2, Anna, Olmo, Eseguita,
         {CfValido2 + "|" + Anna + "|" + Olmo}},
        // Un altro ha cambiato il codice dopo la lettura: l'aggiornamento non trova la riga.
        {"INSERT INTO DISTILLERIA VALUES ('DSTFRM70C12Z404F', 'R', 'I')",
         "UPDATE DISTILLERIA SET CODI_FISC = '13579246805'", PivaValida, "R", "I",
         {"Operazione non eseguita.", 64, Titolo}, {PivaValida2 + "|R|I"}},
        // Un trigger toglie subito la riga: l'inserimento conta una riga, la rilettura non la trova.
        {"CREATE TRIGGER svuota AFTER INSERT ON DISTILLERIA BEGIN DELETE FROM DISTILLERIA; END", "SELECT 1", PivaValida,
         "R", "I", {"Distilleria non inserita.", 64, Titolo}, {}},
        // Un errore del database va nel registro e la maschera resta.
        {"DROP TRIGGER svuota", "ALTER TABLE DISTILLERIA RENAME TO DISTILLERIA_VIA", PivaValida, "R", "I",
         {MessaggioLogErr(3078, "Impossibile trovare la tabella o la query di input 'DISTILLERIA'.",
                          "frmInizializza CmdDATI_Click"),
          48, "Gestione Errori"},
         {}},
    };
    for (const auto& c : casi) {
        SCOPED_TRACE(c.messaggio.testo.toStdString());
        db().Execute(QStringLiteral("DELETE FROM DISTILLERIA"));
        db().Execute(QString::fromLatin1(c.prima));
        frmInizializza& f = Apri();
        db().Execute(QString::fromLatin1(c.dopo));
        script->Rispondi(RispostaMsg::OK);
        Salva(f, c.cf, c.ragione, c.indirizzo);
        EXPECT_EQ(script->messaggi, Messaggi{c.messaggio});
        EXPECT_EQ(f.isVisible(), !(c.messaggio == Eseguita));
        EXPECT_EQ(db().EsisteTabella(QStringLiteral("DISTILLERIA")) ? Distilleria() : c.righe, c.righe);
    }
    EXPECT_TRUE(sessione().DistilleriaAssente);
    EXPECT_FALSE(script->terminato);
    EXPECT_EQ(Righe(db(), QStringLiteral("SELECT DESC_APPL, CODI_ERRO FROM LOGERR")),
              QStringList{QStringLiteral("frmInizializza CmdDATI_Click|03078")});
}

TEST_F(Inizializza, LetturaTabellaVuotaUnaRigaNullPiuRigheESenzaTabella)
{
    const struct {
        const char* caso;
        const char* righe;  // valori da inserire, vuoto per nessuna riga
        bool trovata;
        const char* letta;  // modo|codice|ragione|indirizzo|titolo
    } casi[] = {
        // La tabella vuota lascia i dati letti prima; il titolo cambia solo senza distilleria.
        {"vuota", nullptr, false, "I|X|Y|Z| Inizializza Distilleria "},
        {"una riga", "('DSTFRM70C12Z404F', 'CANTINA D''ANNA', 'VIA DEI TINI 4')", true,
         "M|DSTFRM70C12Z404F|CANTINA D'ANNA|VIA DEI TINI 4| Fatture "},
        {"Null diventa vuoto", "('02468135799', NULL, NULL)", true, "M|02468135799||| Fatture "},
        {"vale la prima", "('02468135799', 'PRIMA', 'UNO'), ('13579246805', 'SECONDA', 'DUE')", true,
         "M|02468135799|PRIMA|UNO| Fatture "},
    };
    for (const auto& c : casi) {
        SCOPED_TRACE(c.caso);
        db().Execute(QStringLiteral("DELETE FROM DISTILLERIA"));
        if (c.righe)
            db().Execute(QStringLiteral("INSERT INTO DISTILLERIA (CODI_FISC,RAGI_SOCI,INDI_DIST) VALUES ") +
                         QString::fromLatin1(c.righe));
        sessione().DistilleriaDati = {QStringLiteral("X"), QStringLiteral("Y"), QStringLiteral("Z")};
        sessione().DistilleriaAssente = c.trovata;
        sessione().TitoloMaschera = QStringLiteral(" Fatture ");
        EXPECT_EQ(LeggiDistilleria(), c.trovata);
        EXPECT_EQ(sessione().DistilleriaAssente, !c.trovata);
        const auto& d = sessione().DistilleriaDati;
        const auto& s = sessione();
        EXPECT_EQ(QStringList({s.ModoDistilleria, d.CODI_FISC, d.RAGI_SOCI, d.INDI_DIST, s.TitoloMaschera})
                      .join(QLatin1Char('|')),
                  QString::fromLatin1(c.letta));
    }
    // Senza tabella l'errore esce al chiamante: la routine non ha etichetta d'errore.
    db().Execute(QStringLiteral("DROP TABLE DISTILLERIA"));
    EXPECT_EQ(NumeroErrore([] { LeggiDistilleria(); }), CodiciErrore::TabellaMancante);
    EXPECT_TRUE(script->messaggi.isEmpty());
}

}  // namespace
