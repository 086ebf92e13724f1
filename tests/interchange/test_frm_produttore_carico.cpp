// FrmProduttore_carico: la maschera comune dei carichi (provata per intero
// con frmCarico) con il nome del file e il carico dei conferimenti.
#include "support/prova.h"
#include "interchange/FrmProduttore_carico.h"

#include "fornitura_conferimenti_prova.h"
#include "shell/registro_maschere.h"

#include <QPointer>
#include <QTimer>

using namespace ConferimentiProva;

namespace {

const QString Titolo = QStringLiteral(" Carico Domande di aiuto alla distillazione facoltativa (Art.29)");

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

// Il nome cresce a ogni scelta della campagna; il carico gira con la maschera
// occupata, che alla fine resta aperta e libera; Esci la chiude.
TEST_F(MascheraCaricoProva, NomeDelFileCaricoEUscita)
{
    EXPECT_EQ(maschera->windowTitle(), Titolo);
    // Il 2004 e il 2005 sono del solo articolo 29 (il 2003 si prova con frmCarico).
    Scegli("2004");
    Scegli("2005");
    EXPECT_EQ(maschera->percorso->text(),
              "Seleziona percorso file ART29-30CONF.txt ART29CONF2004.TXT ART29CONF2005.TXT");
    QFile f(QDir(arrivo).filePath("ART29CONF2005.txt"));
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(File(FornituraGrande(2, 3, 2)));
    f.close();

    script->cartelle << arrivo;
    script->Rispondi(1);
    maschera->Cmddati[0]->click();
    EXPECT_EQ(script->titoliCartella, QStringList{"Selezionare il Percorso del file ART29CONF2005.txt di Carico."});
    EXPECT_EQ(script->messaggi, (Messaggi{{"Carico fornitura correttamente eseguito", 64, Titolo}}));
    EXPECT_EQ(Righe(db(), "SELECT COUNT(*) FROM PRODUTTORI"), QStringList{"12"});
    EXPECT_TRUE(maschera->isVisible());
    EXPECT_EQ(maschera->conteggio->text(), "Righe scritte: 20");

    maschera->Cmddati_Click(1);
    EXPECT_FALSE(maschera->isVisible());
    EXPECT_EQ(sessione().CampagnaSelezionata, "");
}

}  // namespace
