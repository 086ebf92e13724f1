// Menu principale: albero delle voci, codici e titoli, apertura delle
// maschere registrate, domanda di uscita.
#include "shell/FrmMenu.h"
#include "shell/registro_maschere.h"
#include "shell/session_state.h"
#include "store/database.h"
#include "support/cartella_prova.h"

#include <QAction>
#include <QDialog>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

namespace {

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
        FrmMenu& m = FrmMenu::Carica();
        m.show();
        return m;
    }

    QAction* VoceDi(FrmMenu& m, const char* nome)
    {
        auto* a = m.findChild<QAction*>(QString::fromLatin1(nome));
        EXPECT_NE(a, nullptr) << nome;
        return a;
    }

    // Registra una maschera finta che conta quante volte viene creata.
    void RegistraFinta(const QString& nome, int* create, Apertura apertura = Apertura::FiglioMdi)
    {
        RegistraMaschera(
            nome,
            [nome, create, apertura](QWidget* genitore) -> QWidget* {
                ++*create;
                if (apertura == Apertura::Modale) {
                    auto* d = new QDialog(genitore);
                    d->setObjectName(nome);
                    // Si chiude da sola appena aperta.
                    QTimer::singleShot(0, d, &QDialog::accept);
                    return d;
                }
                auto* w = new QWidget(genitore);
                w->setObjectName(nome);
                return w;
            },
            apertura);
    }
};

// Le voci come le elenca la barra, una riga per voce:
// livello|didascalia|nome|indice|disponibile ("-" per i separatori).
void Elenca(const QList<QAction*>& azioni, int livello, QStringList& righe)
{
    for (QAction* a : azioni) {
        const QString indice = a->property("Index").isValid() ? a->property("Index").toString() : QString();
        const QString didascalia = a->isSeparator() ? QStringLiteral("-") : a->text();
        righe << QStringLiteral("%1|%2|%3|%4|%5")
                     .arg(livello)
                     .arg(didascalia, a->objectName(), indice,
                          a->isEnabled() ? QStringLiteral("si") : QStringLiteral("no"));
        if (a->menu())
            Elenca(a->menu()->actions(), livello + 1, righe);
    }
}

TEST_F(Menu, IlCaricamentoApreLaConnessioneEImpostaLaDidascalia)
{
    bool connessioneAperta = false;
    int verifiche = 0;
    RegistraAzione(NomiAzioni::VerificaDistilleria, [&] {
        ++verifiche;
        connessioneAperta = sessione().DbDistilleria && sessione().DbDistilleria->aperto();
    });
    FrmMenu& m = Apri();
    EXPECT_EQ(m.windowTitle(),
              QStringLiteral("Domande di aiuto alla distillazione facoltativa (Art.29) - Campagna 2005/2006"));
    ASSERT_NE(sessione().DbDistilleria, nullptr);
    EXPECT_TRUE(sessione().DbDistilleria->aperto());
    EXPECT_EQ(verifiche, 1);
    EXPECT_TRUE(connessioneAperta) << "la distilleria si legge a connessione aperta";
    EXPECT_TRUE(script->messaggi.isEmpty());
}

TEST_F(Menu, SenzaDatabaseIlCaricamentoTermina)
{
    QFile::remove(cartella->percorsoDatabase());
    script->Rispondi(RispostaMsg::OK);
    EXPECT_THROW(FrmMenu::Carica(), ProcessoTerminato);
    ASSERT_EQ(script->messaggi.size(), 1);
    EXPECT_TRUE(script->messaggi[0].testo.startsWith(QStringLiteral("Numero Errore: 3024\n\n")));
    EXPECT_EQ(script->messaggi[0].titolo, QStringLiteral("FERMOLA_2005"));
}

TEST_F(Menu, AlberoDelleVoci)
{
    FrmMenu& m = Apri();
    QStringList righe;
    Elenca(m.menuBar()->actions(), 1, righe);
    const QStringList attese = {
        QStringLiteral("1|Gestione|mnuGest||si"),
        QStringLiteral("2|Fatturazione|mnuGestDist_1|1|si"),
        QStringLiteral("3|Domande|mnuDist_1|1|si"),
        QStringLiteral("3|Fatture|mnuDist_2|2|si"),
        QStringLiteral("3|-|mnuDist_3|3|si"),
        QStringLiteral("3|Cambio N° Domanda|mnuDist_4|4|si"),
        QStringLiteral("3|-|mnuDist_5|5|si"),
        QStringLiteral("3|Stampe|mnuDist_6|6|si"),
        QStringLiteral("3|Stampe Bolle|mnuDist_7|7|no"),
        QStringLiteral("3|-|mnuDist_8|8|si"),
        QStringLiteral("3|Scarico Domande|mnuDist_9|9|si"),
        QStringLiteral("3|-|mnuDist_10|10|si"),
        QStringLiteral("3|Carico fornitura|mnuDist_11|11|si"),
        QStringLiteral("2|-|mnuGestDist_2|2|si"),
        QStringLiteral("2|Conferimenti|mnuGestDist_3|3|si"),
        QStringLiteral("3|Domande|mnuDistprod_1|1|si"),
        QStringLiteral("3|Produttore|mnuDistprod_2|2|no"),
        QStringLiteral("3|Certificati UTF|mnuDistprod_3|3|si"),
        QStringLiteral("3|-|mnuDistprod_4|4|si"),
        QStringLiteral("3|Cambio N° |mnuDistprod_5|5|si"),
        QStringLiteral("4|Domanda|mnuDistCambio_1|1|si"),
        QStringLiteral("4|Certificato UTF|mnuDistCambio_2|2|si"),
        QStringLiteral("3|-|mnuDistprod_6|6|si"),
        QStringLiteral("3|Stampe riepilogative|mnuDistprod_7|7|si"),
        QStringLiteral("4|Domanda|mnuDistprodstampa_1|1|si"),
        QStringLiteral("4|Prospetto a saldo|mnuDistprodstampa_2|2|no"),
        QStringLiteral("4|UTF|mnuDistprodstampa_3|3|si"),
        QStringLiteral("3|-|mnuDistprod_8|8|si"),
        QStringLiteral("3|Scarica Domanda|mnuDistprod_9|9|si"),
        QStringLiteral("3|-|mnuDistprod_10|10|si"),
        QStringLiteral("3|Carico fornitura|mnuDistprod_11|11|si"),
        QStringLiteral("2|-|mnuGestDist_4|4|si"),
        QStringLiteral("2|Esci|mnuGestDist_5|5|si"),
        QStringLiteral("1|Funzioni di sistema|Sistema||si"),
        QStringLiteral("2|Inizializza Distilleria|mnuSistema_1|1|si"),
        QStringLiteral("2|Archivi|mnuSistema_2|2|si"),
        QStringLiteral("3|Backup|mnuAr_0|0|si"),
        QStringLiteral("3|Restore|mnuAr_1|1|si"),
        QStringLiteral("2|Registro errori|mnuSistema_3|3|si"),
        QStringLiteral("1|Versione|mnVer||si"),
        QStringLiteral("1|Help|mnuhelp||si"),
    };
    EXPECT_EQ(righe, attese);
}

TEST_F(Menu, OgniVoceImpostaCodiceTitoloEApreLaSuaMaschera)
{
    const QString lungo = QStringLiteral("Domande di aiuto alla distillazione facoltativa (Art.29)");
    const struct {
        const char* voce;
        int codice;
        QString titolo;
        QString maschera;
    } casi[] = {
        {"mnuDist_1", 0, QStringLiteral(" Domande "), QStringLiteral("FrmSelezione")},
        {"mnuDist_2", 1, QStringLiteral(" Fatture "), QStringLiteral("FrmSelezione")},
        {"mnuDist_4", 3, QStringLiteral(" Cambio Num. Domande "), QStringLiteral("FrmSelezione")},
        {"mnuDist_9", 4, QStringLiteral(" Scarico della Domanda "), QStringLiteral("FrmSelezione")},
        {"mnuDist_6", 5, QStringLiteral("Stampa Domanda "), QStringLiteral("FrmSelezione")},
        {"mnuDist_11", 6, QStringLiteral(" Carico della Domanda "), QStringLiteral("frmCarico")},
        {"mnuDistprod_1", 7, QStringLiteral(" Domande del distillatore "), QStringLiteral("FrmProduttori_Selezione")},
        {"mnuDistprod_3", 11, QStringLiteral(" Certificato UTF "), QStringLiteral("FrmProduttori_Selezione")},
        {"mnuDistCambio_1", 12, QStringLiteral(" Cambio Num. Domande del Produttore"),
         QStringLiteral("FrmProduttori_Selezione")},
        {"mnuDistCambio_2", 13, QStringLiteral(" Cambio Num. Certificato Utf"), QStringLiteral("FrmProduttori_Selezione")},
        {"mnuDistprod_11", 14, QStringLiteral(" Carico ") + lungo, QStringLiteral("FrmProduttore_carico")},
        {"mnuDistprod_9", 16, QStringLiteral(" Scarico delle Domande distillatore "),
         QStringLiteral("FrmProduttori_Selezione")},
        {"mnuDistprodstampa_1", 18, QStringLiteral("Stampa Domanda del distillatore"),
         QStringLiteral("FrmProduttori_Selezione")},
        {"mnuDistprodstampa_3", 19, QStringLiteral("Stampa UTF "), QStringLiteral("FrmProduttori_Selezione")},
    };
    for (const auto& c : casi) {
        SCOPED_TRACE(c.voce);
        int create = 0;
        AnnullaRegistrazioni();
        RegistraFinta(c.maschera, &create);
        FrmMenu::Scarica();
        FrmMenu& m = Apri();
        sessione().OperazioneCorrente = QVariant();
        sessione().TitoloMaschera.clear();

        VoceDi(m, c.voce)->trigger();

        EXPECT_EQ(sessione().OperazioneCorrente, QVariant(c.codice));
        EXPECT_EQ(sessione().TitoloMaschera, c.titolo);
        EXPECT_EQ(create, 1);
        QWidget* aperta = m.MascheraAperta(c.maschera);
        ASSERT_NE(aperta, nullptr);
        EXPECT_EQ(aperta->objectName(), c.maschera);
        ASSERT_EQ(m.AreaMdi()->subWindowList().size(), 1);
        EXPECT_EQ(m.AreaMdi()->subWindowList()[0]->widget(), aperta) << "figlia della finestra principale";
    }
}

TEST_F(Menu, SenzaMascheraRegistrataLaVoceImpostaSoloCodiceETitolo)
{
    FrmMenu& m = Apri();
    VoceDi(m, "mnuDistprod_3")->trigger();
    EXPECT_EQ(sessione().OperazioneCorrente, QVariant(11));
    EXPECT_EQ(sessione().TitoloMaschera, QStringLiteral(" Certificato UTF "));
    EXPECT_TRUE(m.AreaMdi()->subWindowList().isEmpty());
    EXPECT_TRUE(script->messaggi.isEmpty());
}

TEST_F(Menu, UnaMascheraApertaVieneRiusataEDopoLaChiusuraRicreata)
{
    int create = 0;
    RegistraFinta(QStringLiteral("FrmSelezione"), &create);
    FrmMenu& m = Apri();

    VoceDi(m, "mnuDist_1")->trigger();
    QPointer<QWidget> prima = m.MascheraAperta(QStringLiteral("FrmSelezione"));
    // "Fatture" con "Domande" aperta: stessa maschera, operazione cambiata sotto di lei.
    VoceDi(m, "mnuDist_2")->trigger();
    EXPECT_EQ(create, 1);
    EXPECT_EQ(m.MascheraAperta(QStringLiteral("FrmSelezione")), prima.data());
    EXPECT_EQ(m.AreaMdi()->subWindowList().size(), 1);
    EXPECT_EQ(sessione().OperazioneCorrente, QVariant(1));
    EXPECT_EQ(sessione().TitoloMaschera, QStringLiteral(" Fatture "));

    // Chiusa la maschera ("unload"), il clic successivo la ricrea.
    m.AreaMdi()->subWindowList()[0]->close();
    EXPECT_TRUE(QTest::qWaitFor([&] { return prima.isNull(); }, 2000));
    EXPECT_EQ(m.MascheraAperta(QStringLiteral("FrmSelezione")), nullptr);
    VoceDi(m, "mnuDist_1")->trigger();
    EXPECT_EQ(create, 2);
    EXPECT_NE(m.MascheraAperta(QStringLiteral("FrmSelezione")), nullptr);
}

TEST_F(Menu, LeVociSpenteNonSiPossonoCliccare)
{
    int stampe = 0;
    int produttore = 0;
    RegistraAzione(NomiAzioni::StampaBolleMenu, [&] { ++stampe; });
    RegistraFinta(QStringLiteral("FrmProduttore"), &produttore);
    FrmMenu& m = Apri();
    sessione().OperazioneCorrente = QVariant(0);
    sessione().TitoloMaschera = QStringLiteral(" Domande ");

    for (const char* voce : {"mnuDist_7", "mnuDistprod_2", "mnuDistprodstampa_2"})
        VoceDi(m, voce)->trigger();

    EXPECT_EQ(stampe, 0);
    EXPECT_EQ(produttore, 0);
    EXPECT_EQ(sessione().OperazioneCorrente, QVariant(0));
    EXPECT_EQ(sessione().TitoloMaschera, QStringLiteral(" Domande "));

    // I gestori esistono comunque.
    m.mnuDist_Click(7);
    EXPECT_EQ(stampe, 1);
    EXPECT_EQ(sessione().TitoloMaschera, QStringLiteral("Stampa Bolle "));
    m.mnuDistprod_Click(2);
    EXPECT_EQ(sessione().OperazioneCorrente, QVariant(8));
    EXPECT_EQ(sessione().TitoloMaschera, QStringLiteral(" Produttore "));
    EXPECT_EQ(produttore, 1);
}

TEST_F(Menu, VociDiSistemaVersioneEHelp)
{
    int inizializza = 0, about = 0, help = 0, backup = 0, restore = 0;
    RegistraFinta(QStringLiteral("frmInizializza"), &inizializza, Apertura::Modale);
    RegistraFinta(QStringLiteral("frmAbout"), &about, Apertura::Modale);
    RegistraFinta(QStringLiteral("FrmHelp"), &help, Apertura::Modale);
    RegistraAzione(NomiAzioni::Backup, [&] { ++backup; });
    RegistraAzione(NomiAzioni::Restore, [&] { ++restore; });
    FrmMenu& m = Apri();
    sessione().OperazioneCorrente = QVariant(5);

    VoceDi(m, "mnuSistema_1")->trigger();
    EXPECT_EQ(inizializza, 1);
    EXPECT_EQ(sessione().TitoloMaschera, QStringLiteral(" Inizializza Distilleria "));
    EXPECT_EQ(sessione().OperazioneCorrente, QVariant(5)) << "nessun codice per questa voce";
    EXPECT_EQ(m.findChild<QDialog*>(QStringLiteral("frmInizializza")), nullptr) << "scaricata alla chiusura";

    VoceDi(m, "mnuAr_0")->trigger();
    VoceDi(m, "mnuAr_1")->trigger();
    VoceDi(m, "mnuAr_1")->trigger();
    EXPECT_EQ(backup, 1);
    EXPECT_EQ(restore, 2);

    VoceDi(m, "mnVer")->trigger();
    VoceDi(m, "mnuhelp")->trigger();
    EXPECT_EQ(about, 1);
    EXPECT_EQ(help, 1);
    EXPECT_TRUE(m.AreaMdi()->subWindowList().isEmpty()) << "le modali non sono figlie MDI";
}

TEST_F(Menu, UscitaConNoLasciaTuttoComEra)
{
    int create = 0;
    RegistraFinta(QStringLiteral("FrmSelezione"), &create);
    FrmMenu& m = Apri();
    VoceDi(m, "mnuDist_1")->trigger();

    // Da "Esci" e dal pulsante di chiusura della finestra: la stessa domanda.
    script->Rispondi(RispostaMsg::No);
    VoceDi(m, "mnuGestDist_5")->trigger();
    script->Rispondi(RispostaMsg::No);
    m.close();

    ASSERT_EQ(script->messaggi.size(), 2);
    for (const MessaggioRegistrato& d : script->messaggi) {
        EXPECT_EQ(d.testo, QStringLiteral("Abbandonare la sessione di lavoro ?"));
        EXPECT_EQ(d.stile, 36);
        EXPECT_EQ(d.titolo, QStringLiteral("Domande di aiuto alla distillazione facoltativa (Art.29)"));
    }
    EXPECT_FALSE(script->terminato);
    EXPECT_TRUE(m.isVisible());
    EXPECT_NE(m.MascheraAperta(QStringLiteral("FrmSelezione")), nullptr);
    EXPECT_EQ(m.AreaMdi()->subWindowList().size(), 1);
    EXPECT_TRUE(sessione().DbDistilleria && sessione().DbDistilleria->aperto());
}

TEST_F(Menu, UscitaConSiTermina)
{
    FrmMenu& m = Apri();
    script->Rispondi(RispostaMsg::Si);
    EXPECT_THROW(VoceDi(m, "mnuGestDist_5")->trigger(), ProcessoTerminato);
    ASSERT_EQ(script->messaggi.size(), 1);
    EXPECT_EQ(script->messaggi[0].testo, QStringLiteral("Abbandonare la sessione di lavoro ?"));
    EXPECT_TRUE(script->terminato);
}

}  // namespace
