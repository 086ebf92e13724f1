// Il programma ucciso con la fattura in modifica aperta: le bolle scritte
// restano, la fattura non salvata no, la copia resta in APPO_BOLLE.
#include "invoices/FrmFattura.h"
#include "invoices/FrmSelezionaFatture.h"
#include "invoices/frmBolleConsegne.h"
#include "invoices/registra_fatture.h"
#include "maschere_prova.h"
#include "shell/registro_maschere.h"

#include <QDeadlineTimer>
#include <QProcess>
#include <QThread>
#include <cstdio>

namespace {

const char* const VariabileFiglio = "FERMOLA_CADUTA_DB";
const QByteArray Segnale = "FATTURA APERTA";

// Il processo figlio: apre l'elenco, modifica la fattura, cambia una bolla e
// ne aggiunge una, batte un imponibile nuovo senza salvare; poi aspetta di
// essere ucciso. Gira solo quando la prova qui sotto lo lancia.
TEST(Caduta, DISABLED_FiglioConLaFatturaAperta)
{
    const QString percorso = qEnvironmentVariable(VariabileFiglio);
    ASSERT_FALSE(percorso.isEmpty());
    Script().AccettaMessaggiSenzaRisposta();
    sessione().DomandaSel.ID_DOMANDA = 7;
    sessione().DomandaSel.DOMANDA = QStringLiteral("00000000123");
    sessione().DomandaSel.PROGRESSIVO = QStringLiteral("01");
    sessione().TitoloMaschera = QStringLiteral("Fatture");
    sessione().DbDistilleria = Database::Apri(percorso, false, ConnessioneDb);
    RegistraMaschereFatture();
    FrmSelezionaFatture elenco;
    Mostra(&elenco);
    QuandoModale(QStringLiteral("FrmFattura"), [](QDialog* d) {
        auto* fattura = static_cast<FrmFattura*>(d);
        fattura->TxtDati.value(15)->setText(QStringLiteral("1234,00"));
        QuandoModale(QStringLiteral("frmBolleConsegne"), [](QDialog* b) {
            auto* bolle = static_cast<frmBolleConsegne*>(b);
            Seleziona(bolle->tdbgBolle, {0});
            QTest::mouseClick(bolle->Cmddati.value(0), Qt::LeftButton);
            bolle->TxtDati.value(3)->setText(QStringLiteral("50,0000"));
            QTest::mouseClick(bolle->Cmddati.value(0), Qt::LeftButton);
            QTest::mouseClick(bolle->Cmddati.value(1), Qt::LeftButton);
            bolle->TxtDati.value(1)->setText(QStringLiteral("NUOVA"));
            bolle->TxtDati.value(2)->setText(QStringLiteral("01/01/2006"));
            bolle->TxtDati.value(3)->setText(QStringLiteral("30,0000"));
            bolle->TxtDati.value(7)->setText(QStringLiteral("9,0000"));
            QTest::mouseClick(bolle->Cmddati.value(0), Qt::LeftButton);
            QTest::mouseClick(bolle->Cmddati.value(2), Qt::LeftButton);
        });
        QTest::mouseClick(fattura->Cmddati.value(3), Qt::LeftButton);
        std::printf("\n%s %s\n", Segnale.constData(), qPrintable(fattura->TxtDati.value(8)->text()));
        std::fflush(stdout);
        for (;;)
            QThread::msleep(50);
    });
    Seleziona(elenco.TDBG_Selfatt, {0});
    QTest::mouseClick(elenco.Cmddati.value(2), Qt::LeftButton);
    FAIL() << "la fattura si è chiusa";
}

class ProvaCaduta : public ProvaFatture {};

TEST_F(ProvaCaduta, UccisoConLaFatturaInModifica)
{
    Fattura(1, QStringLiteral("F1"));
    Bolla(10, 1, QStringLiteral("B10"), QStringLiteral("02/01/2006"), QStringLiteral("60,0000"));
    const QStringList fattura = Righe(db(), QStringLiteral("SELECT * FROM FATTURE"));
    sessione().DbDistilleria.reset();

    QProcess figlio;
    QProcessEnvironment ambiente = QProcessEnvironment::systemEnvironment();
    ambiente.insert(QString::fromLatin1(VariabileFiglio), cartella->percorsoDatabase());
    ambiente.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    figlio.setProcessEnvironment(ambiente);
    figlio.setProcessChannelMode(QProcess::MergedChannels);
    figlio.start(QCoreApplication::applicationFilePath(),
                 {QStringLiteral("--gtest_also_run_disabled_tests"),
                  QStringLiteral("--gtest_filter=Caduta.DISABLED_FiglioConLaFatturaAperta")});
    QByteArray uscita;
    QDeadlineTimer scadenza(120000);
    while (!uscita.contains(Segnale) && !scadenza.hasExpired() && figlio.state() != QProcess::NotRunning) {
        figlio.waitForReadyRead(200);
        uscita += figlio.readAll();
    }
    ASSERT_TRUE(uscita.contains(Segnale)) << uscita.toStdString();
    // La data di introduzione è già arrivata dalle bolle alla fattura aperta.
    EXPECT_TRUE(uscita.contains(Segnale + " 01/01/2006")) << uscita.toStdString();
    figlio.kill();  // SIGKILL: nessuna pulizia
    ASSERT_TRUE(figlio.waitForFinished(30000));
    EXPECT_EQ(figlio.exitStatus(), QProcess::CrashExit);

    // Cosa trova il programma riavviato: la fattura come era, le bolle come
    // le aveva scritte la maschera delle bolle, la copia di prima.
    EXPECT_EQ(Righe(db(), QStringLiteral("SELECT * FROM FATTURE")), fattura);
    EXPECT_EQ(Bolle(), (QStringList{QStringLiteral("10|1|B10|02/01/2006|50,0000||10,0000|T1|01/01/2006"),
                                    QStringLiteral("11|1|NUOVA|01/01/2006|30,0000||9,0000||")}));
    EXPECT_EQ(Righe(db(), QStringLiteral("SELECT ID_BOLLA, QUANTITA_PRODOTTO FROM APPO_BOLLE")),
              QStringList(QStringLiteral("10|60,0000")));

    // Che la modifica seguente butti la copia vecchia e la sua uscita rimetta
    // le bolle come le ha trovate lo provano l'elenco e la fattura.
}

}  // namespace
