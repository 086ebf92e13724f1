// Punto d'ingresso unico di Fermola: nessuna riga di comando, nessun file di
// configurazione. Tutto parte dalla schermata d'avvio.
#include "common/piattaforma.h"
#include "shell/frmSpalsh.h"
#include "shell/registro_maschere.h"

#include <QApplication>
#include <QHash>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>
#include <clocale>

namespace {

// Le traduzioni italiane di Qt non hanno i tipi di file che il dialogo delle
// cartelle mostra ("Folder"): il loro contesto ha cambiato nome e la
// traduzione non c'è più. Li diamo noi.
class TraduzioneTipiFile final : public QTranslator {
public:
    bool isEmpty() const override { return false; }
    QString translate(const char* contesto, const char* testo, const char*, int) const override
    {
        static const QHash<QByteArray, QString> tipi{
            {"Folder", QStringLiteral("Cartella")},         {"File Folder", QStringLiteral("Cartella")},
            {"Drive", QStringLiteral("Unità")},             {"File", QStringLiteral("File")},
            {"%1 File", QStringLiteral("File %1")},         {"Shortcut", QStringLiteral("Collegamento")},
        };
        if (qstrcmp(contesto, "QAbstractFileIconProvider") != 0)
            return QString();
        return tipi.value(QByteArray(testo));
    }
};

}  // namespace

int main(int argc, char** argv)
{
    // Il dialogo delle cartelle scrive le date con la località del sistema,
    // non con quella predefinita del programma: Qt la legge dall'ambiente
    // quando nasce l'applicazione, e la si fa italiana per date e messaggi
    // qualunque sia la lingua della macchina. Poi l'ambiente torna com'era e
    // la libreria C riprende la località dell'utente (che magari non ha
    // l'italiano installato).
    const char* const categorie[] = {"LC_ALL", "LC_TIME", "LC_MESSAGES", "LANGUAGE"};
    QHash<QByteArray, QByteArray> ambiente;
    for (const char* c : categorie)
        if (qEnvironmentVariableIsSet(c))
            ambiente.insert(c, qgetenv(c));
    qunsetenv("LC_ALL");
    qputenv("LC_TIME", "it_IT.UTF-8");
    qputenv("LC_MESSAGES", "it_IT.UTF-8");
    qputenv("LANGUAGE", "it");
    QApplication app(argc, argv);
    for (const char* c : categorie) {
        if (ambiente.contains(c))
            qputenv(c, ambiente.value(c));
        else
            qunsetenv(c);
    }
    std::setlocale(LC_ALL, "");
    QApplication::setApplicationName(QStringLiteral("fermola"));
    QLocale::setDefault(QLocale(QLocale::Italian, QLocale::Italy));

    // Testi italiani anche per i dialoghi propri di Qt (scelta della cartella).
    QTranslator traduzioneQt;
    if (traduzioneQt.load(QLocale(QLocale::Italian, QLocale::Italy), QStringLiteral("qtbase"), QStringLiteral("_"),
                          QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QApplication::installTranslator(&traduzioneQt);
    TraduzioneTipiFile tipiFile;
    QApplication::installTranslator(&tipiFile);

    ImpostaPiattaforma(CreaPiattaformaQt());
    RegistraMaschereDelSistema();

    auto* splash = new frmSpalsh;
    splash->setAttribute(Qt::WA_DeleteOnClose);
    splash->show();
    return QApplication::exec();
}
