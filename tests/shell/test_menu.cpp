// Menu principale: albero delle voci, codici e titoli, apertura delle
// maschere registrate, domanda di uscita.
#include "shell/FrmMenu.h"
#include "shell/registro_maschere.h"
#include "support/prova.h"

#include <QAction>
#include <QDialog>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTimer>

namespace {

using namespace Qt::StringLiterals;

const QString TitoloLungo = u"Domande di aiuto alla distillazione facoltativa (Art.29)"_s;

class Menu : public ProvaConDatabase {
protected:
    void SetUp() override
    {
        ProvaConDatabase::SetUp();
        AnnullaRegistrazioni();
    }
    void TearDown() override
    {
        FrmMenu::Scarica();
        AnnullaRegistrazioni();
        ProvaConDatabase::TearDown();
    }
    FrmMenu& Apri()
    {
        FrmMenu::Carica().show();
        return *FrmMenu::Istanza();
    }
    void Clic(const char* voce)
    {
        auto* a = FrmMenu::Istanza()->findChild<QAction*>(QString::fromLatin1(voce));
        ASSERT_NE(a, nullptr) << voce;
        a->trigger();
    }
    // Una maschera finta che conta in "create" quante volte nasce; le
    // modali si chiudono da sole appena aperte.
    void Finta(const QString& nome, Apertura apertura = Apertura::FiglioMdi)
    {
        RegistraMaschera(
            nome,
            [this, nome, apertura](QWidget* genitore) -> QWidget* {
                ++create[nome];
                QWidget* w = apertura == Apertura::Modale ? new QDialog(genitore) : new QWidget(genitore);
                if (auto* d = qobject_cast<QDialog*>(w))
                    QTimer::singleShot(0, d, &QDialog::accept);
                w->setObjectName(nome);
                return w;
            },
            apertura);
    }
    QMap<QString, int> create;
};

// Un guasto nel caricamento non esce dal ciclo degli eventi: numero e
// descrizione a video, poi il processo termina.
TEST_F(Menu, UnGuastoNelCaricamentoTermina)
{
    const struct { const char* caso; int numero; QString tabella; } casi[] = {
        {"DISTILLERIA mancante", 3078, u"DISTILLERIA"_s},
        {"database mancante", 3024, QString()},
    };
    for (const auto& c : casi) {
        SCOPED_TRACE(c.caso);
        RegistraMaschereDelSistema();
        if (c.tabella.isEmpty())
            QFile::remove(cartella->percorsoDatabase());
        else
            db().Execute(u"DROP TABLE "_s + c.tabella);
        script->Rispondi(RispostaMsg::OK);
        EXPECT_THROW(FrmMenu::Carica(), ProcessoTerminato);
        ASSERT_EQ(script->messaggi.size(), 1);
        const MessaggioRegistrato& m = script->messaggi[0];
        EXPECT_EQ((Messaggi{{m.testo.left(m.testo.indexOf(u"Descrizione"_s)), m.stile, m.titolo}}),
                  (Messaggi{{u"Numero Errore: %1\n\n"_s.arg(c.numero), 16, u"FERMOLA_2005"_s}}));
        FrmMenu::Scarica();
        script->messaggi.clear();
    }
}

// Il caricamento apre la connessione e poi verifica la distilleria; ogni voce
// imposta codice e titolo e apre la sua maschera, figlia del menu.
TEST_F(Menu, OgniVoceImpostaCodiceTitoloEApreLaSuaMascheraFigliaDelMenu)
{
    const struct { const char* voce; int codice; QString titolo, maschera; } casi[] = {
        {"mnuDist_1", 0, u" Domande "_s, u"FrmSelezione"_s},
        {"mnuDist_2", 1, u" Fatture "_s, u"FrmSelezione"_s},
        {"mnuDist_4", 3, u" Cambio Num. Domande "_s, u"FrmSelezione"_s},
        {"mnuDist_9", 4, u" Scarico della Domanda "_s, u"FrmSelezione"_s},
        {"mnuDist_6", 5, u"Stampa Domanda "_s, u"FrmSelezione"_s},
        {"mnuDist_11", 6, u" Carico della Domanda "_s, u"frmCarico"_s},
        {"mnuDistprod_1", 7, u" Domande del distillatore "_s, u"FrmProduttori_Selezione"_s},
        {"mnuDistprod_3", 11, u" Certificato UTF "_s, u"FrmProduttori_Selezione"_s},
        {"mnuDistCambio_1", 12, u" Cambio Num. Domande del Produttore"_s, u"FrmProduttori_Selezione"_s},
        {"mnuDistCambio_2", 13, u" Cambio Num. Certificato Utf"_s, u"FrmProduttori_Selezione"_s},
        {"mnuDistprod_11", 14, u" Carico "_s + TitoloLungo, u"FrmProduttore_carico"_s},
        {"mnuDistprod_9", 16, u" Scarico delle Domande distillatore "_s, u"FrmProduttori_Selezione"_s},
        {"mnuDistprodstampa_1", 18, u"Stampa Domanda del distillatore"_s, u"FrmProduttori_Selezione"_s},
        {"mnuDistprodstampa_3", 19, u"Stampa UTF "_s, u"FrmProduttori_Selezione"_s},
    };
    for (const QString& nome : {u"FrmSelezione"_s, u"frmCarico"_s, u"FrmProduttori_Selezione"_s, u"FrmProduttore_carico"_s})
        Finta(nome);
    QList<bool> verifiche;  // una per caricamento: la connessione era aperta?
    RegistraAzione(NomiAzioni::VerificaDistilleria,
                   [&] { verifiche << (sessione().DbDistilleria && sessione().DbDistilleria->aperto()); });
    for (const auto& c : casi) {
        SCOPED_TRACE(c.voce);
        create.clear();
        FrmMenu::Scarica();
        FrmMenu& m = Apri();
        EXPECT_EQ(m.windowTitle(), TitoloLungo + u" - Campagna 2005/2006"_s);
        Clic(c.voce);
        EXPECT_EQ(sessione().OperazioneCorrente, QVariant(c.codice));
        EXPECT_EQ(sessione().TitoloMaschera, c.titolo);
        EXPECT_EQ(create, (QMap<QString, int>{{c.maschera, 1}}));
        ASSERT_EQ(m.AreaMdi()->subWindowList().size(), 1);
        EXPECT_EQ(m.AreaMdi()->subWindowList()[0]->widget(), m.MascheraAperta(c.maschera));
    }
    EXPECT_EQ(verifiche, QList<bool>(std::size(casi), true));
    EXPECT_TRUE(script->messaggi.isEmpty());
}

// Ogni nome che il menu e le liste aprono è registrato con la sua apertura e
// fabbrica la maschera che porta quel nome.
TEST_F(Menu, OgniMascheraRegistrataConLaSuaApertura)
{
    RegistraMaschereDelSistema();
    db();
    script->AccettaMessaggiSenzaRisposta();
    const QStringList mdi =
        u"FrmSelezione FrmProduttori_Selezione frmCarico FrmProduttore_carico frmRegistroErrori"_s.split(u' ');
    const QStringList modali = u"frmInizializza frmAbout FrmHelp FrmDomanda frmCambioDomanda FrmSelezionaFatture "
                               "FrmFattura frmBolleConsegne frmScarico Frmproduttore_Domanda frmProduttori_CambioDomanda "
                               "frmProduttori_CambioUtf FrmProduttore_SelezionaProd frmProduttore_Utf "
                               "frmProduttoriNoAssociati FrmProduttore frmProduttori_Scarico"_s.split(u' ');
    for (const QString& nome : mdi + modali) {
        SCOPED_TRACE(nome.toStdString());
        const MascheraRegistrata* m = TrovaMaschera(nome);
        ASSERT_NE(m, nullptr);
        EXPECT_EQ(m->apertura, mdi.contains(nome) ? Apertura::FiglioMdi : Apertura::Modale);
        std::unique_ptr<QWidget> w(m->fabbrica(nullptr));
        ASSERT_NE(w, nullptr);
        if (nome != u"frmProduttori_Scarico"_s) {  // è il frmScarico dei conferimenti
            EXPECT_EQ(w->objectName(), nome);
        }
    }
    EXPECT_NE(TrovaAzione(NomiAzioni::StampaBolleMenu), nullptr);
}

TEST_F(Menu, VociSpenteDiSistemaVersioneEHelp)
{
    int stampe = 0;
    RegistraAzione(NomiAzioni::StampaBolleMenu, [&] { ++stampe; });
    Finta(u"FrmProduttore"_s);
    for (const QString& nome : {u"frmInizializza"_s, u"frmAbout"_s, u"FrmHelp"_s})
        Finta(nome, Apertura::Modale);
    FrmMenu& m = Apri();
    sessione().OperazioneCorrente = QVariant(0);
    sessione().TitoloMaschera = u" Domande "_s;
    // Le voci spente non rispondono al clic.
    for (const char* voce : {"mnuDist_7", "mnuDistprod_2", "mnuDistprodstampa_2"})
        Clic(voce);
    EXPECT_EQ(stampe, 0);
    EXPECT_TRUE(create.isEmpty());
    EXPECT_EQ(sessione().TitoloMaschera, u" Domande "_s);
    // Una maschera non ancora registrata: la voce imposta codice e titolo, e basta.
    Clic("mnuDistprod_3");
    EXPECT_EQ(sessione().OperazioneCorrente, QVariant(11));

    // Le voci di sistema non danno un codice; le modali non sono figlie MDI.
    Clic("mnuSistema_1");
    EXPECT_EQ(sessione().TitoloMaschera, u" Inizializza Distilleria "_s);
    EXPECT_EQ(sessione().OperazioneCorrente, QVariant(11));
    EXPECT_EQ(m.findChild<QDialog*>(u"frmInizializza"_s), nullptr) << "scaricata alla chiusura";
    for (const char* voce : {"mnVer", "mnuhelp"})
        Clic(voce);
    EXPECT_EQ(create, (QMap<QString, int>{{u"frmInizializza"_s, 1}, {u"frmAbout"_s, 1}, {u"FrmHelp"_s, 1}}));
    EXPECT_TRUE(m.AreaMdi()->subWindowList().isEmpty());
}

TEST_F(Menu, UscitaConNoLasciaTuttoComEraConSiTermina)
{
    Finta(u"FrmSelezione"_s);
    FrmMenu& m = Apri();
    Clic("mnuDist_1");
    // Da "Esci" e dal pulsante di chiusura della finestra: la stessa domanda.
    script->Rispondi(RispostaMsg::No);
    Clic("mnuGestDist_5");
    script->Rispondi(RispostaMsg::No);
    m.close();
    EXPECT_TRUE(m.isVisible());
    EXPECT_EQ(m.AreaMdi()->subWindowList().size(), 1);
    EXPECT_TRUE(sessione().DbDistilleria && sessione().DbDistilleria->aperto());

    script->Rispondi(RispostaMsg::Si);
    EXPECT_THROW(Clic("mnuGestDist_5"), ProcessoTerminato);
    const MessaggioRegistrato domanda{u"Abbandonare la sessione di lavoro ?"_s, 36, TitoloLungo};
    EXPECT_EQ(script->messaggi, (Messaggi{domanda, domanda, domanda}));
}

}  // namespace
