// Finestra di aiuto, informazioni sul programma e registro errori: testi per
// nome, tutti i testi dal menu, versione, strumento di sistema assente.
#include "common/aiuto.h"
#include "common/log_errori.h"
#include "shell/FrmHelp.h"
#include "shell/FrmMenu.h"
#include "shell/frmAbout.h"
#include "shell/frmRegistroErrori.h"
#include "shell/registra_distilleria.h"
#include "shell/registro_maschere.h"
#include "shell/session_state.h"
#include "store/database.h"
#include "support/cartella_prova.h"
#include "modale_di_prova.h"

#include <QAction>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTableView>
#include <QTest>
#include <gtest/gtest.h>

namespace {

class AiutoEVersione : public ProvaConDatabase {
protected:
    void SetUp() override
    {
        ProvaConDatabase::SetUp();
        AnnullaRegistrazioni();
        RegistraMaschereDistilleria();
        // Con una distilleria il menu non apre frmInizializza.
        db().Execute(QStringLiteral("INSERT INTO DISTILLERIA VALUES ('02468135799','R','I')"));
    }
    void TearDown() override
    {
        FrmMenu::Scarica();
        ImpostaMostraHelp(FunzioneHelp());
        AnnullaRegistrazioni();
        ProvaConDatabase::TearDown();
    }

    // Sostituisce i testi consegnati con quelli della prova, nell'ordine dato.
    void TestiDiProva(const QList<QStringList>& righe)
    {
        db().Execute(QStringLiteral("DELETE FROM help"));
        for (const QStringList& r : righe)
            db().Execute(QStringLiteral("INSERT INTO help (nome, TITOLO, Descrizione) VALUES (?,?,?)"),
                         {r[0], r[1].isNull() ? QVariant() : QVariant(r[1]), r[2].isNull() ? QVariant() : QVariant(r[2])});
    }

    // Il testo che la finestra mostra per quel nome.
    QString TestoHelp(const QString& nome)
    {
        FrmHelp help;
        help.NomeHelp = nome;
        help.show();
        EXPECT_TRUE(help.TxtHElp()->isReadOnly());
        return help.TxtHElp()->toPlainText();
    }
};

TEST_F(AiutoEVersione, TestiPerNome)
{
    TestiDiProva({
        {QStringLiteral("frmScarico"), QStringLiteral("Scarico"), QStringLiteral("Scrive il file.\nPoi lo copia.")},
        {QStringLiteral("frmInizializza"), QStringLiteral("Inizializza Distilleria"), QStringLiteral("Dati della distilleria.")},
        {QStringLiteral("frmScarico"), QStringLiteral("Seconda parte"), QStringLiteral("Sul dischetto.")},
        {QStringLiteral("frmVuota"), QString(), QString()},
    });
    const struct {
        const char* caso;
        QString nome;
        QString atteso;
    } casi[] = {
        {"una riga", QStringLiteral("frmInizializza"),
         QStringLiteral("INIZIALIZZA DISTILLERIA\nDati della distilleria.")},
        {"due righe dello stesso nome, nell'ordine della tabella", QStringLiteral("frmScarico"),
         QStringLiteral("SCARICO\nScrive il file.\nPoi lo copia.\n\nSECONDA PARTE\nSul dischetto.")},
        {"nome senza distinguere le maiuscole", QStringLiteral("FRMINIZIALIZZA"),
         QStringLiteral("INIZIALIZZA DISTILLERIA\nDati della distilleria.")},
        {"titolo e descrizione Null", QStringLiteral("frmVuota"), QStringLiteral("\n")},
        {"nome senza righe: finestra vuota", QStringLiteral("FrmInesistente"), QString()},
        {"nome di soli spazi: tutti i testi", QStringLiteral("   "),
         QStringLiteral("SCARICO\nScrive il file.\nPoi lo copia.\n\nINIZIALIZZA DISTILLERIA\nDati della distilleria."
                        "\n\nSECONDA PARTE\nSul dischetto.\n\n\n")},
    };
    for (const auto& c : casi) {
        SCOPED_TRACE(c.caso);
        EXPECT_EQ(TestoHelp(c.nome), c.atteso);
    }
    EXPECT_TRUE(script->messaggi.isEmpty()) << "nessun messaggio, nemmeno per un nome sconosciuto";
}

TEST_F(AiutoEVersione, OgniMascheraHaIlSuoTestoNelDatabaseConsegnato)
{
    const char* nomi[] = {"frmAbout", "frmCambioDomanda", "frmCambioUTF", "frmInizializza", "FRMDOMANDA_INS",
                          "FRMDOMANDA_MOD", "FRMFATTURA_INS", "FRMFATTURA_MOD", "frmProduttore_Utf_INS",
                          "frmProduttore_Utf_MOD", "FRMSELEZIONE_DOMA", "FRMSELEZIONE_FATTU", "FRMSELEZIONE_CAMBIO",
                          "FRMSELEZIONE_STAMPA", "frmScarico", "frmProduttori_Scarico", "frmProduttore",
                          "Frmproduttore_Domanda", "frmProduttore_Utf", "FRMSELEZIONE_SELFAT"};
    for (const char* nome : nomi) {
        SCOPED_TRACE(nome);
        const QString testo = TestoHelp(QString::fromLatin1(nome));
        const qsizetype aCapo = testo.indexOf(QLatin1Char('\n'));
        ASSERT_GT(aCapo, 0) << "manca il titolo";
        EXPECT_EQ(testo.left(aCapo), testo.left(aCapo).toUpper()) << "titolo in maiuscolo";
        EXPECT_GT(testo.size() - aCapo, 10) << "manca la descrizione";
    }
}

TEST_F(AiutoEVersione, IlMenuHelpMostraTuttiITesti)
{
    TestiDiProva({{QStringLiteral("a"), QStringLiteral("Primo"), QStringLiteral("Uno.")},
                  {QStringLiteral("b"), QStringLiteral("Secondo"), QStringLiteral("Due.")}});
    FrmMenu& menu = FrmMenu::Carica();
    menu.show();
    QString testo, titolo;
    bool modale = false;
    AttesaModale attesa(QStringLiteral("FrmHelp"), [&](QDialog* d) {
        auto* help = qobject_cast<FrmHelp*>(d);
        testo = help->TxtHElp()->toPlainText();
        titolo = help->windowTitle();
        modale = help->isModal();
        QTest::mouseClick(help->CmdHelp(), Qt::LeftButton);
        if (help->isVisible())
            help->done(0);
    });
    menu.findChild<QAction*>(QStringLiteral("mnuhelp"))->trigger();
    ASSERT_TRUE(attesa.eseguita());
    EXPECT_EQ(testo, QStringLiteral("PRIMO\nUno.\n\nSECONDO\nDue."));
    EXPECT_EQ(titolo, QStringLiteral(" Help "));
    EXPECT_TRUE(modale);
    EXPECT_EQ(menu.findChild<FrmHelp*>(), nullptr) << "Esci la scarica";
}

TEST_F(AiutoEVersione, VersioneDalMenu)
{
    sessione().DataVersioneDb = QStringLiteral("15/09/2005");
    FrmMenu& menu = FrmMenu::Carica();
    menu.show();
    QString didascalia, versione, titolo, descrizione, sysInfo;
    AttesaModale attesa(QStringLiteral("frmAbout"), [&](QDialog* d) {
        auto* about = qobject_cast<frmAbout*>(d);
        didascalia = about->windowTitle();
        versione = about->lblVersion()->text();
        titolo = about->lblTitle()->text();
        descrizione = about->lblDescription()->text();
        sysInfo = about->cmdSysInfo()->text();
        QTest::mouseClick(about->cmdOK(), Qt::LeftButton);
        if (about->isVisible())
            about->done(0);
    });
    menu.findChild<QAction*>(QStringLiteral("mnVer"))->trigger();
    ASSERT_TRUE(attesa.eseguita());
    EXPECT_EQ(didascalia, QStringLiteral("Informazioni su ") + TitoloPredefinito());
    EXPECT_EQ(versione, QStringLiteral("  Versione %1.%2.%3 del 15/09/2005")
                            .arg(VersioneMajor)
                            .arg(VersioneMinor)
                            .arg(VersioneRevision));
    EXPECT_EQ(titolo, QStringLiteral("Fermola\nPer sistemi Windows a 32 bit"));
    EXPECT_EQ(descrizione, QStringLiteral("Acquisizione fatture Allegati alla domanda di aiuto alla distillazione  "
                                          "art.29 e art.30 Reg. CE 1443/1999 - campagna 2005/2006"));
    EXPECT_EQ(sysInfo, QStringLiteral("&System Info..."));
    EXPECT_EQ(menu.findChild<frmAbout*>(), nullptr) << "OK la scarica";
    EXPECT_TRUE(script->messaggi.isEmpty());
}

TEST_F(AiutoEVersione, InformazioniDiSistemaNonDisponibiliEF1)
{
    FrmMenu::Carica().show();
    frmAbout about(FrmMenu::Istanza());
    about.show();
    script->Rispondi(RispostaMsg::OK);
    QTest::mouseClick(about.cmdSysInfo(), Qt::LeftButton);
    ASSERT_EQ(script->messaggi.size(), 1);
    EXPECT_EQ(script->messaggi[0].testo, QStringLiteral("Le informazioni sul sistema non sono attualmente disponibili."));
    EXPECT_EQ(script->messaggi[0].stile, 0);
    EXPECT_EQ(script->messaggi[0].titolo, QString());
    EXPECT_TRUE(about.isVisible());

    QStringList chieste;
    ImpostaMostraHelp([&](const QString& nome) { chieste << nome; });
    QTest::keyClick(&about, Qt::Key_F1);
    EXPECT_EQ(chieste, QStringList{QStringLiteral("frmAbout")});
}

// Registro errori: in sola lettura, l'ultimo errore in cima.
TEST_F(AiutoEVersione, RegistroErroriDalMenu)
{
    script->AccettaMessaggiSenzaRisposta();
    ScriviLogErr(QString(), QStringLiteral("PRIMO"), 3021, QStringLiteral("Nessun record corrente."));
    ScriviLogErr(QStringLiteral("GE"), QStringLiteral("SECONDO"), 13, QStringLiteral("Tipo non corrispondente"));
    FrmMenu& menu = FrmMenu::Carica();
    menu.show();
    menu.findChild<QAction*>(QStringLiteral("mnuSistema_3"))->trigger();
    auto* registro = qobject_cast<frmRegistroErrori*>(menu.MascheraAperta(QStringLiteral("frmRegistroErrori")));
    ASSERT_NE(registro, nullptr);
    ASSERT_EQ(menu.AreaMdi()->subWindowList().size(), 1) << "figlia della finestra principale";

    auto righe = [&] {
        QStringList r;
        const QAbstractItemModel* m = registro->Griglia()->model();
        for (int i = 0; i < m->rowCount(); ++i)
            r << m->index(i, 2).data().toString() + QLatin1Char('|') + m->index(i, 4).data().toString() +
                     QLatin1Char('|') + m->index(i, 5).data().toString();
        return r;
    };
    EXPECT_EQ(righe(), QStringList({QStringLiteral("00013|SECONDO|GE"), QStringLiteral("03021|PRIMO|")}));
    EXPECT_EQ(registro->Griglia()->editTriggers(), QAbstractItemView::NoEditTriggers);

    // Un errore nuovo compare in cima con "Aggiorna".
    ScriviLogErr(QString(), QStringLiteral("TERZO"), 3075, QStringLiteral("Errore di sintassi"));
    QTest::mouseClick(registro->CmdAggiorna(), Qt::LeftButton);
    EXPECT_EQ(righe().value(0), QStringLiteral("03075|TERZO|"));
    EXPECT_EQ(righe().size(), 3);

    // Un secondo clic sulla voce riporta davanti la stessa finestra.
    menu.findChild<QAction*>(QStringLiteral("mnuSistema_3"))->trigger();
    EXPECT_EQ(menu.MascheraAperta(QStringLiteral("frmRegistroErrori")), registro);
    QPointer<frmRegistroErrori> guardia(registro);
    QTest::mouseClick(registro->CmdEsci(), Qt::LeftButton);
    EXPECT_TRUE(QTest::qWaitFor([&] { return guardia.isNull(); }, 2000));
}

}  // namespace
