// FrmProduttore_carico: nome del file, scelta della cartella, maschera
// occupata durante il carico e di nuovo libera dopo, chiusura su rinuncia.
#include "interchange/FrmProduttore_carico.h"

#include "fornitura_conferimenti_prova.h"
#include "shell/registro_maschere.h"
#include "shell/session_state.h"
#include "support/cartella_prova.h"
#include "support/verifiche.h"

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QTimer>
#include <gtest/gtest.h>

using namespace ConferimentiProva;

namespace {

const QString Titolo = QStringLiteral(" Carico Domande di aiuto alla distillazione facoltativa (Art.29)");
const QString NonCorretto = QStringLiteral("Il percorso indicato non è corretto");

class MascheraCaricoProva : public ProvaConDatabase {
protected:
    void SetUp() override
    {
        ProvaConDatabase::SetUp();
        db();
        sessione().TitoloMaschera = Titolo;
        RegistraMaschereDelSistema();
        const MascheraRegistrata* m = TrovaMaschera(QStringLiteral("FrmProduttore_carico"));
        ASSERT_NE(m, nullptr);
        maschera = qobject_cast<FrmProduttore_carico*>(m->fabbrica(nullptr));
        ASSERT_NE(maschera, nullptr);
        maschera->show();
        arrivo = QDir(cartella->cartella()).filePath(QStringLiteral("arrivo"));
        QDir().mkpath(arrivo);
    }
    void TearDown() override
    {
        delete maschera.data();
        AnnullaRegistrazioni();
        ProvaConDatabase::TearDown();
    }
    void Scegli(const QString& campagna)
    {
        maschera->CmbDomAnnualita->setCurrentIndex(maschera->CmbDomAnnualita->findText(campagna));
        maschera->CmbDomAnnualita_Click();
    }
    QPointer<FrmProduttore_carico> maschera;
    QString arrivo;
};

TEST_F(MascheraCaricoProva, NomeDelFileSecondoLaCampagna)
{
    EXPECT_EQ(maschera->windowTitle(), Titolo);
    EXPECT_EQ(maschera->percorso->text(), "Seleziona percorso file ART29-30CONF.txt");
    // Il testo cresce a ogni scelta.
    Scegli("2005");
    Scegli("2003");
    EXPECT_EQ(maschera->percorso->text(),
              "Seleziona percorso file ART29-30CONF.txt ART29CONF2005.TXT ART29-30CONF2003.TXT");
    EXPECT_EQ(sessione().CampagnaSelezionata, "2003");
    maschera->Cmddati_Click(1);
    EXPECT_FALSE(maschera->isVisible());
    EXPECT_EQ(sessione().CampagnaSelezionata, "");
}

// Una cartella sbagliata e Riprova, poi quella giusta: il carico gira con la
// maschera occupata, e alla fine la maschera resta aperta e di nuovo libera.
// Una rinuncia alla cartella chiude la maschera.
TEST_F(MascheraCaricoProva, CaricoDallaMaschera)
{
    QFile f(QDir(arrivo).filePath("ART29CONF2005.txt"));
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(File(FornituraGrande(2, 3, 2)));
    f.close();
    Scegli("2005");

    struct Stato {
        bool occupata, animata;
    };
    QList<Stato> durante;
    script->alMessaggio = [&](const MessaggioRegistrato&) {
        durante << Stato{!maschera->Cmddati[0]->isEnabled() && !maschera->Cmddati[1]->isEnabled() &&
                             maschera->carica->isVisible(),
                         maschera->Timer->isActive() && maschera->imgFloppy.at(0)->isVisible()};
    };
    script->cartelle << QDir(cartella->cartella()).filePath("database") << arrivo;
    script->Rispondi(4);  // Riprova
    script->Rispondi(1);
    maschera->Cmddati[0]->click();

    const QString cerca = "Selezionare il Percorso del file ART29CONF2005.txt di Carico.";
    EXPECT_EQ(script->titoliCartella, (QStringList{cerca, cerca}));
    EXPECT_EQ(script->messaggi, (Messaggi{{NonCorretto, 5 + 48, Titolo},
                                          {"Carico fornitura correttamente eseguito", 64, Titolo}}));
    ASSERT_EQ(durante.size(), 2);
    EXPECT_FALSE(durante[0].occupata);
    EXPECT_TRUE(durante[1].occupata);
    EXPECT_TRUE(durante[1].animata);
    EXPECT_EQ(Righe(db(), "SELECT COUNT(*) FROM PRODUTTORI"), QStringList{"12"});
    EXPECT_TRUE(maschera->isVisible());
    EXPECT_TRUE(maschera->Cmddati[0]->isEnabled());
    EXPECT_FALSE(maschera->carica->isVisible());
    EXPECT_FALSE(maschera->Timer->isActive());
    EXPECT_EQ(maschera->conteggio->text(), "Righe scritte: 20");

    // Rinuncia: nessun carico, la maschera si chiude.
    script->messaggi.clear();
    maschera->Cmddati[0]->click();
    EXPECT_TRUE(script->messaggi.isEmpty());
    EXPECT_FALSE(maschera->isVisible());
}

}  // namespace
