#pragma once
// Un processo figlio di prova: lo stesso eseguibile lanciato sul solo test
// disabilitato del filtro, con una variabile d'ambiente che gli dice dove
// lavorare. I figli che vanno uccisi a metà scrivono "via" quando partono.

#include <QCoreApplication>
#include <QProcess>
#include <QString>
#include <gtest/gtest.h>

inline void AvviaFiglio(QProcess& figlio, const QString& filtro, const QString& variabile, const QString& valore)
{
    auto env = QProcessEnvironment::systemEnvironment();
    env.insert(variabile, valore);
    figlio.setProcessEnvironment(env);
    figlio.start(QCoreApplication::applicationFilePath(),
                 {QStringLiteral("--gtest_also_run_disabled_tests"), QStringLiteral("--gtest_filter=") + filtro});
}

// Aspetta il "via" del figlio; falso (con l'uscita nel test) se non arriva.
inline ::testing::AssertionResult FiglioPartito(QProcess& figlio)
{
    figlio.setReadChannel(QProcess::StandardError);
    QByteArray uscita;
    while (!uscita.contains("via\n") && figlio.waitForReadyRead(20000))
        uscita += figlio.readAllStandardError();
    if (uscita.contains("via\n"))
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << "il figlio non è partito: " << uscita.constData();
}
