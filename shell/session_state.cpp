#include "shell/session_state.h"

#include "common/errore.h"
#include "store/database.h"

QString VersioneProgramma()
{
    return QStringLiteral("%1.%2.%3").arg(VersioneMajor).arg(VersioneMinor).arg(VersioneRevision);
}

namespace {
QString FloppyPredefinito()
{
#ifdef Q_OS_WIN
    return QStringLiteral("A:/");
#else
    return QStringLiteral("/media/floppy");
#endif
}
}  // namespace

Sessione::Sessione() : CartellaFloppy(FloppyPredefinito()) {}
Sessione::~Sessione()
{
    // Si arriva qui solo a fine processo (std::exit), quando le strutture
    // globali di Qt SQL possono essere già state distrutte: chiudere ora la
    // connessione farebbe cadere il programma. Il file lo rilascia il sistema,
    // e con il giornale WAL ciò che è stato confermato resta.
    if (DbDistilleria)
        static_cast<void>(DbDistilleria.release());
}

void Sessione::Azzera()
{
    OperazioneCorrente = QVariant();
    CampagnaCorrente.clear();
    CampagnaSelezionata.clear();
    PathDatabase.clear();
    DbDistilleria.reset();
    StrSql.clear();
    TitoloMaschera.clear();
    ModoMaschera.clear();
    ModoDistilleria.clear();
    IndiceCampo = 0;
    IndiceCiclo = 0;
    FatturaSel = {};
    DomandaSel = {};
    DistilleriaDati = {};
    DistilleriaAssente = false;
    DataVersioneDb.clear();
    VersioneDb.clear();
    DomandaProduttoreSel = {};
    UtfSel = {};
    ProduttoreSel = {};
    ModoArchivio = 0;
    PercorsoArchivio.clear();
    OperazioneAnnullata = false;
    ControlloFloppyRipeti = false;
    ControlloDiscoRipeti = false;
    CartellaFloppy = FloppyPredefinito();
}

Sessione& sessione()
{
    static Sessione s;
    return s;
}

Database& Db()
{
    auto& db = sessione().DbDistilleria;
    if (!db || !db->aperto())
        throw ErroreSistema(3420, QStringLiteral("Oggetto non valido o non più impostato."));
    return *db;
}
