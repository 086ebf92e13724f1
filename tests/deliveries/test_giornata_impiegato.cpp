// La giornata dell'impiegato: dove una maschera faceva inciampare. La cornice
// vuota lasciata dai carichi, la cartella ricordata per lavoro, l'articolo 30
// del 2005 con campagne più recenti nella tabella.
#include "archive/Archivio.h"
#include "common/piattaforma.h"
#include "conferimenti_prova.h"
#include "deliveries/Frmproduttore_Domanda.h"
#include "interchange/MascheraCarico.h"
#include "interchange/registra_carico_conferimenti.h"
#include "interchange/registra_forniture.h"
#include "shell/FrmMenu.h"
#include "shell/registro_maschere.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QFileDialog>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMessageBox>
#include <QTest>
#include <QTimer>
#include <algorithm>

namespace {

class Giornata : public ProvaConferimenti {
protected:
    void SetUp() override
    {
        ProvaConferimenti::SetUp();
        AnnullaRegistrazioni();
        script->AccettaMessaggiSenzaRisposta();
    }
    void TearDown() override
    {
        FrmMenu::Scarica();
        AnnullaRegistrazioni();
        ProvaConferimenti::TearDown();
    }
    // Apre una voce del menu e rende la maschera di carico che ne nasce.
    static MascheraCarico* ApriCarico(const char* voce, const char* nome)
    {
        FrmMenu::Istanza()->findChild<QAction*>(QString::fromLatin1(voce))->trigger();
        return qobject_cast<MascheraCarico*>(FrmMenu::Istanza()->MascheraAperta(QString::fromLatin1(nome)));
    }
};

// Esci, o una scelta di cartella annullata, chiudono la maschera con la sua
// cornice: nella finestra principale non resta una finestra vuota.
TEST_F(Giornata, IlCaricoChiusoNonLasciaLaCornice)
{
    RegistraMaschereForniture();
    RegistraMaschereCaricoConferimenti();
    FrmMenu::Carica().show();
    auto* area = FrmMenu::Istanza()->findChild<QMdiArea*>(QStringLiteral("AreaMdi"));
    ASSERT_NE(area, nullptr);
    const struct {
        const char *voce, *nome;
        int pulsante;  // 1 Esci, 0 Selezione con la scelta annullata
    } casi[] = {
        // La chiusura è della base comune: ogni via una volta, ogni ramo una volta.
        {"mnuDist_11", "frmCarico", 1},
        {"mnuDistprod_11", "FrmProduttore_carico", 0},
    };
    for (const auto& c : casi) {
        SCOPED_TRACE(std::string(c.nome) + " " + std::to_string(c.pulsante));
        MascheraCarico* m = ApriCarico(c.voce, c.nome);
        ASSERT_NE(m, nullptr);
        EXPECT_EQ(area->subWindowList().size(), 1);
        m->Cmddati[c.pulsante]->click();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_TRUE(area->subWindowList().isEmpty());
        EXPECT_EQ(FrmMenu::Istanza()->MascheraAperta(QString::fromLatin1(c.nome)), nullptr);
    }
    EXPECT_TRUE(script->messaggi.isEmpty());
}

// Ogni scelta di cartella si apre sull'ultima scelta per lo stesso lavoro, il
// ripristino sulla cartella del database. Con la piattaforma vera: ogni
// dialogo delle cartelle annota dove si apre e sceglie (o annulla, con ""),
// ogni messaggio riceve il primo pulsante (Riprova, Sì).
TEST_F(Giornata, LaCartellaRicordataPerLavoro)
{
    RegistraMaschereForniture();
    RegistraMaschereCaricoConferimenti();
    FrmMenu::Carica().show();
    ImpostaPiattaforma(CreaPiattaformaQt());
    const QString arrivo = QDir(cartella->cartella()).filePath(QStringLiteral("arrivo"));
    const QString altrove = QDir(cartella->cartella()).filePath(QStringLiteral("altrove"));
    for (const QString& c : {arrivo, altrove})
        QDir().mkpath(c);
    QStringList aperte, scelte;
    QTimer dialoghi;
    dialoghi.setInterval(10);
    QObject::connect(&dialoghi, &QTimer::timeout, [&] {
        QWidget* w = QApplication::activeModalWidget();
        if (auto* d = qobject_cast<QFileDialog*>(w); d && d->isVisible()) {
            aperte << d->directory().absolutePath();
            const QString scelta = scelte.isEmpty() ? QString() : scelte.takeFirst();
            if (scelta.isEmpty()) {
                d->reject();
            } else {
                d->setDirectory(scelta);
                static_cast<QDialog*>(d)->accept();
            }
        } else if (auto* m = qobject_cast<QMessageBox*>(w); m && m->isVisible()) {
            m->buttons().constFirst()->click();
        }
    });
    dialoghi.start();
    // "*": la prima scelta di un lavoro si apre dove vuole Qt (l'ultima
    // cartella di qualunque dialogo).
    const struct {
        const char *voce, *nome;
        QStringList scelte, aperte;
    } casi[] = {
        // Senza il file "Il percorso indicato non è corretto" e Riprova: si
        // riapre sulla cartella appena scelta.
        {"mnuDist_11", "frmCarico", {arrivo, QString()}, {"*", arrivo}},
        {"mnuDistprod_11", "FrmProduttore_carico", {altrove, QString()}, {"*", altrove}},
        // Ogni ramo la sua, anche se l'ultimo dialogo era dell'altro.
        {"mnuDist_11", "frmCarico", {QString()}, {arrivo}},
        {"mnuDistprod_11", "FrmProduttore_carico", {QString()}, {altrove}},
    };
    for (const auto& c : casi) {
        SCOPED_TRACE(c.nome);
        aperte.clear();
        scelte = c.scelte;
        ApriCarico(c.voce, c.nome)->Cmddati[0]->click();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        for (qsizetype i = 0; i < std::min(aperte.size(), c.aperte.size()); ++i)
            if (c.aperte.at(i) == QLatin1String("*"))
                aperte[i] = QStringLiteral("*");
        EXPECT_EQ(aperte, c.aperte);
    }
    aperte.clear();
    EXPECT_FALSE(Gestione_DataBase(1, QStringLiteral("orvelta_2005.bkp"), sessione().PathDatabase));
    EXPECT_EQ(aperte, QStringList{QDir(sessione().PathDatabase).absolutePath()});
    dialoghi.stop();
}

// Una domanda del 2005 con l'articolo 30 (da un carico), in modifica: la
// campagna si imposta prima dell'articolo, così che il 30 non ammesso resti
// senza scelta e il salvataggio si fermi, quale che sia la campagna più
// recente della tabella. Un 30 del 2006 resta 30.
TEST_F(Giornata, Articolo30Del2005InModifica)
{
    db().Execute(QStringLiteral("UPDATE DOMANDE_PRODUTTORI SET TIPO_ARTICOLO = '30' WHERE ID_DOMANDA_PRODUTTORE = 1"));
    const struct {
        const char *campagne, *campagna;
        bool salvata;
    } casi[] = {
        {"", "2005", false},
        {"(2006), (2007)", "2005", false},
        {"(2006), (2007)", "2006", true},
    };
    for (const auto& c : casi) {
        SCOPED_TRACE(std::string(c.campagne) + " " + c.campagna);
        if (*c.campagne)
            db().Execute(QStringLiteral("INSERT INTO CAMPAGNA (ANNUALITA) VALUES ") + QString::fromLatin1(c.campagne));
        db().Execute(QStringLiteral("UPDATE DOMANDE_PRODUTTORI SET STAM = 'S', DATA_CAMP = ? WHERE ID_DOMANDA_PRODUTTORE = 1"),
                     {QString::fromLatin1(c.campagna)});
        Sessione& s = sessione();
        s.ModoMaschera = QStringLiteral("M");
        s.DomandaProduttoreSel = {1, "00000000011", "S", "S", "30", "1", "0,00", 2, QString::fromLatin1(c.campagna)};
        Frmproduttore_Domanda m;
        m.show();
        m.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&m));
        m.Cmddati[0]->click();
        EXPECT_EQ(m.result(), c.salvata ? QDialog::Accepted : QDialog::Rejected);
        EXPECT_TRUE(script->messaggi.isEmpty());  // in modifica il codice 3 dà solo il fuoco
        EXPECT_EQ(Righe(db(), QStringLiteral("SELECT TIPO_ARTICOLO, DATA_CAMP, STAM FROM DOMANDE_PRODUTTORI "
                                             "WHERE ID_DOMANDA_PRODUTTORE = 1")),
                  QStringList{QStringLiteral("30|%1|%2").arg(QString::fromLatin1(c.campagna),
                                                           c.salvata ? QStringLiteral("N") : QStringLiteral("S"))});
        if (!c.salvata) {
            EXPECT_EQ(QApplication::focusWidget(), m.cboDomanda[3]);
        }
        db().Execute(QStringLiteral("DELETE FROM CAMPAGNA WHERE ANNUALITA > 2005"));
    }
}

}  // namespace
