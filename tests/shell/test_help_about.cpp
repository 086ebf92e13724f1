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
#include "support/prova.h"

#include <QAction>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPlainTextEdit>
#include <QStandardItemModel>

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
    void TestiDiProva(const char* valori)
    {
        db().Execute(QStringLiteral("DELETE FROM help"));
        db().Execute(QStringLiteral("INSERT INTO help (nome, TITOLO, Descrizione) VALUES ") + QString::fromUtf8(valori));
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
    TestiDiProva("('frmScarico', 'Scarico', 'Scrive il file.\nPoi lo copia.'), "
                 "('frmInizializza', 'Inizializza Distilleria', 'Dati della distilleria.'), "
                 "('frmScarico', 'Seconda parte', 'Sul dischetto.'), ('frmVuota', NULL, NULL)");
    const char* const casi[][2] = {
        {"frmInizializza", "INIZIALIZZA DISTILLERIA\nDati della distilleria."},
        {"FRMINIZIALIZZA", "INIZIALIZZA DISTILLERIA\nDati della distilleria."},  // senza distinguere le maiuscole
        // Due righe dello stesso nome, nell'ordine della tabella.
        {"frmScarico", "SCARICO\nScrive il file.\nPoi lo copia.\n\nSECONDA PARTE\nSul dischetto."},
        {"frmVuota", "\n"},      // titolo e descrizione Null
        {"FrmInesistente", ""},  // nome senza righe: finestra vuota
        {"   ", "SCARICO\nScrive il file.\nPoi lo copia.\n\nINIZIALIZZA DISTILLERIA\nDati della distilleria."
                "\n\nSECONDA PARTE\nSul dischetto.\n\n\n"},  // nome di soli spazi: tutti i testi
    };
    for (const auto& c : casi)
        EXPECT_EQ(TestoHelp(QString::fromLatin1(c[0])), QString::fromLatin1(c[1])) << c[0];
    FrmHelp dalMenu;  // senza nome, come la apre il menu: tutti i testi
    dalMenu.show();
    EXPECT_EQ(dalMenu.TxtHElp()->toPlainText(), QString::fromLatin1(casi[5][1]));
    EXPECT_TRUE(script->messaggi.isEmpty()) << "nessun messaggio, nemmeno per un nome sconosciuto";
}

TEST_F(AiutoEVersione, VersioneInformazioniDiSistemaNonDisponibiliEF1)
{
    sessione().DataVersioneDb = QStringLiteral("15/09/2005");
    FrmMenu::Carica().show();
    frmAbout about(FrmMenu::Istanza());
    about.show();
    EXPECT_EQ(about.windowTitle(), QStringLiteral("Informazioni su ") + TitoloPredefinito());
    EXPECT_EQ(about.lblVersion()->text(), QStringLiteral("  Versione %1.%2.%3 del 15/09/2005")
                                              .arg(VersioneMajor).arg(VersioneMinor).arg(VersioneRevision));
    script->Rispondi(RispostaMsg::OK);
    QTest::mouseClick(about.cmdSysInfo(), Qt::LeftButton);
    EXPECT_EQ(script->messaggi,
              (Messaggi{{QStringLiteral("Le informazioni sul sistema non sono attualmente disponibili."), 0, QString()}}));
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
    EXPECT_EQ(menu.AreaMdi()->subWindowList().size(), 1) << "figlia della finestra principale";
    EXPECT_EQ(registro->Griglia()->editTriggers(), QAbstractItemView::NoEditTriggers);
    const auto righe = [&] {
        QStringList r;
        const QAbstractItemModel* m = registro->Griglia()->model();
        for (int i = 0; i < m->rowCount(); ++i)
            r << QStringList{m->index(i, 2).data().toString(), m->index(i, 4).data().toString(),
                             m->index(i, 5).data().toString()}.join(QLatin1Char('|'));
        return r;
    };
    EXPECT_EQ(righe(), QStringList({"00013|SECONDO|GE", "03021|PRIMO|"}));
    // Un errore nuovo compare in cima con "Aggiorna".
    ScriviLogErr(QString(), QStringLiteral("TERZO"), 3075, QStringLiteral("Errore di sintassi"));
    QTest::mouseClick(registro->CmdAggiorna(), Qt::LeftButton);
    EXPECT_EQ(righe(), QStringList({"03075|TERZO|", "00013|SECONDO|GE", "03021|PRIMO|"}));
    QPointer<frmRegistroErrori> guardia(registro);
    QTest::mouseClick(registro->CmdEsci(), Qt::LeftButton);
    EXPECT_TRUE(QTest::qWaitFor([&] { return guardia.isNull(); }, 2000));
}

}  // namespace
