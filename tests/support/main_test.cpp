// Punto d'ingresso comune degli eseguibili di test: un'applicazione Qt
// (piattaforma offscreen, impostata da CTest) e GoogleTest.
#include "support/piattaforma_script.h"

#include <QApplication>
#include <QLocale>
#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", qgetenv("QT_QPA_PLATFORM").isEmpty() ? "offscreen" : qgetenv("QT_QPA_PLATFORM"));
    QLocale::setDefault(QLocale(QLocale::Italian, QLocale::Italy));
    QApplication app(argc, argv);
    InstallaPiattaformaScript();
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
