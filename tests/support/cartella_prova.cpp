#include "support/cartella_prova.h"

#include "shell/session_state.h"
#include "store/database.h"

#include <QDir>
#include <QFile>

CartellaProva::CartellaProva()
{
    QDir(m_dir.path()).mkpath(QStringLiteral("database"));
    if (!QFile::copy(QStringLiteral(FERMOLA_DB_PULITO), percorsoDatabase()))
        ADD_FAILURE() << "Copia del database consegnato non riuscita: " << FERMOLA_DB_PULITO;
    QFile::setPermissions(percorsoDatabase(), QFile::ReadOwner | QFile::WriteOwner);
}

CartellaProva::~CartellaProva() { sessione().DbDistilleria.reset(); }

QString CartellaProva::percorsoDatabase() const
{
    return QDir(m_dir.path()).filePath(QStringLiteral("database/orvelta_2005.mdb"));
}

void ProvaConDatabase::SetUp()
{
    sessione().Azzera();
    script = &InstallaPiattaformaScript();
    cartella = std::make_unique<CartellaProva>();
    sessione().PathDatabase = QDir(cartella->cartella()).filePath(QStringLiteral("database")) + QLatin1Char('/');
    sessione().CampagnaCorrente = QStringLiteral("2005");
}

void ProvaConDatabase::TearDown()
{
    sessione().Azzera();
    cartella.reset();
}

Database& ProvaConDatabase::db()
{
    if (!sessione().DbDistilleria)
        sessione().DbDistilleria = Database::Apri(cartella->percorsoDatabase(), false, ConnessioneDb);
    return *sessione().DbDistilleria;
}

QString FileDiProva(const QString& nome) { return QDir(QStringLiteral(FERMOLA_DATI_TEST)).filePath(nome); }
