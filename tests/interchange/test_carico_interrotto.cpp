// Un carico grande interrotto a metà scrittura (il processo ucciso, come per
// una caduta di corrente): il database resta integro e non tiene nulla di
// quel carico. Il carico gira in un processo figlio, lo stesso eseguibile di
// prova lanciato sul solo test Figlio.

#include "support/prova.h"
#include "fornitura_prova.h"
#include "interchange/CaricoFatture.h"
#include "support/figlio_prova.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QThread>

using namespace FornituraProva;

namespace {

const char* const VariabileFiglio = "FERMOLA_CARICO_FIGLIO";
// Il giornale oltre questa misura: il carico sta scrivendo le sue righe.
constexpr qint64 GiornaleInScrittura = 2 * 1024 * 1024;

QString Fornitura(const QString& cartella) { return QDir(cartella).filePath("fornitura.txt"); }

TEST(CaricoInterrotto, Figlio)
{
    const QString cartella = qEnvironmentVariable(VariabileFiglio);
    if (cartella.isEmpty())
        GTEST_SKIP() << "gira solo come processo figlio di NessunaRigaDopoLaCaduta";
    sessione().Azzera();
    InstallaPiattaformaScript().AccettaMessaggiSenzaRisposta();
    sessione().PathDatabase = QDir(cartella).filePath("database") + '/';
    sessione().TitoloMaschera = "carico";
    sessione().DbDistilleria =
        Database::Apri(sessione().PathDatabase + NomeDatabase, false, ConnessioneDb);
    CaricaFornitura(Fornitura(cartella));
}

TEST(CaricoInterrotto, NessunaRigaDopoLaCaduta)
{
    sessione().Azzera();
    InstallaPiattaformaScript();
    CartellaProva cartella;
    // 8 000 domande, cinque fatture ciascuna, due bolle per fattura.
    {
        ScritturaFornitura file(Fornitura(cartella.cartella()));
        file.Print(R0());
        for (int d = 0; d < 8000; ++d) {
            const QString domanda = QString::number(d).rightJustified(11, '0');
            file.Print(R1(domanda));
            for (int f = 0; f < 5; ++f)
                file.Print(R2(domanda, QString::number(f)));
            for (int f = 0; f < 5; ++f)
                for (int b = 0; b < 2; ++b)
                    file.Print(R3(domanda, QString::number(f), QString::number(f * 2 + b)));
        }
        file.Close();
    }
    const QString wal = cartella.percorsoDatabase() + "-wal";

    QProcess figlio;
    figlio.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    AvviaFiglio(figlio, "CaricoInterrotto.Figlio", VariabileFiglio, cartella.cartella());
    ASSERT_TRUE(figlio.waitForStarted());

    QElapsedTimer tempo;
    tempo.start();
    bool inScrittura = false;
    while (figlio.state() == QProcess::Running && tempo.elapsed() < 300000) {
        if (QFileInfo(wal).size() > GiornaleInScrittura) {
            inScrittura = true;
            figlio.kill();
            break;
        }
        QThread::msleep(5);
    }
    figlio.waitForFinished();
    ASSERT_TRUE(inScrittura) << "il carico è finito prima di essere interrotto: "
                             << figlio.readAllStandardOutput().toStdString();

    const QString db = cartella.percorsoDatabase();
    EXPECT_EQ(QStringList{"ok"}, RigheDelFile(db, "PRAGMA integrity_check"));
    EXPECT_EQ(QStringList{"0|0|0|0"},
              RigheDelFile(db, "SELECT (SELECT COUNT(*) FROM DOMANDE), (SELECT COUNT(*) FROM FATTURE),"
                               " (SELECT COUNT(*) FROM BOLLE), (SELECT COUNT(*) FROM TAB_Fornitura)"));
    sessione().Azzera();
}

}  // namespace
