// Punto d'ingresso unico di Fermola: nessuna riga di comando, nessun file di
// configurazione. Tutto parte dalla schermata d'avvio.
#include "common/piattaforma.h"
#include "shell/frmSpalsh.h"
#include "shell/registro_maschere.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("fermola"));
    QLocale::setDefault(QLocale(QLocale::Italian, QLocale::Italy));

    // Testi italiani anche per i dialoghi propri di Qt (scelta della cartella).
    QTranslator traduzioneQt;
    if (traduzioneQt.load(QLocale(QLocale::Italian, QLocale::Italy), QStringLiteral("qtbase"), QStringLiteral("_"),
                          QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QApplication::installTranslator(&traduzioneQt);

    ImpostaPiattaforma(CreaPiattaformaQt());
    RegistraMaschereDelSistema();

    auto* splash = new frmSpalsh;
    splash->setAttribute(Qt::WA_DeleteOnClose);
    splash->show();
    return QApplication::exec();
}
