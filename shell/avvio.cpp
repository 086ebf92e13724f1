#include "shell/avvio.h"

#include "common/piattaforma.h"
#include "shell/registro_maschere.h"

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
    using QTranslator::QTranslator;
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

std::unique_ptr<QApplication> AvviaApplicazione(int& argc, char** argv, std::unique_ptr<Piattaforma> piattaforma)
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
    auto app = std::make_unique<QApplication>(argc, argv);
    for (const char* c : categorie) {
        if (ambiente.contains(c))
            qputenv(c, ambiente.value(c));
        else
            qunsetenv(c);
    }
    std::setlocale(LC_ALL, "");
    QApplication::setApplicationName(QStringLiteral("fermola"));
    QLocale::setDefault(QLocale(QLocale::Italian, QLocale::Italy));

    // Testi italiani anche per i dialoghi propri di Qt (scelta della
    // cartella). Le traduzioni vivono quanto l'applicazione.
    auto* traduzioneQt = new QTranslator(app.get());
    if (traduzioneQt->load(QLocale(QLocale::Italian, QLocale::Italy), QStringLiteral("qtbase"), QStringLiteral("_"),
                           QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QApplication::installTranslator(traduzioneQt);
    QApplication::installTranslator(new TraduzioneTipiFile(app.get()));

    ImpostaPiattaforma(std::move(piattaforma));
    RegistraMaschereDelSistema();
    return app;
}
