#pragma once
// Stato della sessione: le costanti del sistema e il blocco di variabili che
// tutte le maschere condividono. Le maschere si parlano solo attraverso di esso:
// una lista riempie il record selezionato e il modo, poi apre la maschera.

#include <QString>
#include <QVariant>
#include <memory>

class Database;

// Versione del programma: il database deve avere la stessa, come testo.
constexpr int VersioneMajor = FERMOLA_VERSIONE_MAJOR;
constexpr int VersioneMinor = FERMOLA_VERSIONE_MINOR;
constexpr int VersioneRevision = FERMOLA_VERSIONE_REVISION;
QString VersioneProgramma();  // "1.0.0"

// Costanti del sistema.
inline const QString PasswordDb = QStringLiteral("cedro4");
inline const QString ConnessioneDb = QStringLiteral(";PWD=cedro4");
inline const QString NomeDatabase = QStringLiteral("orvelta_2005.mdb");
inline const QString NomeArchivio = QStringLiteral("orvelta_2005.bkp");
inline const QString NomeDatabaseAppoggio = QStringLiteral("Appo_distilleria.mdb");  // dichiarato, non usato
inline const QString TitoloApplicazione = QStringLiteral("FERMOLA_2005");
inline const QString TitoloLungo = QStringLiteral("Domande di aiuto alla distillazione facoltativa (Art.29)");
inline const QString TitoloBackupRestore = QStringLiteral("Backup/Restore");
inline const QString CampagnaEstesa = QStringLiteral("2005/2006");
inline const QString CampagnaChiave = QStringLiteral("2005");
inline const QString Articoli = QStringLiteral("29-30");
inline const QString TagFatturazione = QStringLiteral("FAT");
inline const QString TagConferimenti = QStringLiteral("CONF");
inline const QString TagProgramma = QStringLiteral("Kelvar");
inline const QString LunghezzaRigaFatture = QStringLiteral("260");
inline const QString LunghezzaRigaConferimenti = QStringLiteral("300");
inline const QString TipoData = QStringLiteral("DT");
// Aliquote del calcolo degli aiuti, tenute come testo con il punto decimale:
// l'articolo 29 ha 1.751 per grezzo e acquavite e 1.884 per il neutro,
// l'articolo 30 ha 1.1222 per tutti e tre i prodotti.
inline const QString AliquotaArt29Grezzo = QStringLiteral("1.751");
inline const QString AliquotaArt29Neutro = QStringLiteral("1.884");
inline const QString AliquotaArt29Acquavite = QStringLiteral("1.751");
inline const QString AliquotaArt30 = QStringLiteral("1.1222");
inline const QString QueryReportUtf = QStringLiteral("sqlReportUTF");
inline const QString QueryReportDomandaProduttore = QStringLiteral("sqlReportDomandaPeroduttore");
inline const QString DescrizioneSetup = QStringLiteral("Distilleria ART.29-30 con Carico, Gestione, Scarico.");

struct DomandaSelezionata {
    qint32 ID_DOMANDA = 0;
    QString DOMANDA;
    QString STAM;
    QString SCAR;
    QString ID_VARIETA;
    QString TIPO_ARTICOLO;
    QString PROGRESSIVO;
    QString PROG_VERS;
    QString PRODOTTO;
    qint32 PROG_INVIO = 0;
    QString CAMPAGNA;
};

struct FatturaSelezionata {
    qint32 ID_FATTURA = 0;
    qint32 ID_DOMANDA = 0;
    QString CODI_FISC;
    QString NUME_FATT;
    QString DENOMINAZIONE;
    QString DATA_FATT;
    QString QTA_PROD;
    QString GRAD;
    QString PREZ_MINI;
    QString IMPO;
    QString IVA;
    QString IMPO_TOTA;
    QString DATA_PAGA;
    QString DATA_COMP;
    QString QTA_LAVO;
    QString ID_LAVORAZIONE;
};

struct DatiDistilleria {
    QString CODI_FISC;
    QString RAGI_SOCI;
    QString INDI_DIST;
};

struct DomandaProduttoreSelezionata {
    qint32 ID_DOMANDA_PRODUTTORE = 0;
    QString DOMANDA;
    QString STAM;
    QString SCAR;
    QString TIPO_ARTICOLO;
    QString PROG_VERS;
    QString ANTICIPO_RICEVUTO;
    qint32 PROG_INVIO = 0;
    QString CAMPAGNA;
};

struct UtfSelezionato {
    qint32 iD_UTF = 0;
    qint32 iD_DOMANDA = 0;
    QString NUMERO_CERTIFICATO_UTF;
    QString DESCR_UFFICIO_UTF_PROVINCIA;
    QString SIGLA_UFFICIO_UTF_PROVINCIA;
    QString ISTAT_UFFICIO_UTF_PROVINCIA;
    QString DATA_EMISSIONE_CERTIFICATO;
    QString QTA_TOT_VINO_LAVORATO;
    QString QTA_TOT_ETTOGRADI_VINO_LAVORATO;
    QString QTA_TOT_ALCOLE_NEUTRO_OTTENUTO;
    QString QTA_TOT_ALCOLE_GREZZO_OTTENUTO;
    QString QTA_TOT_ACQUAVITE_OTTENUTO;
    // Scritti solo dal carico di una fornitura.
    QString QUADRATURA;
    qint32 NUMERO_PRODUTTORI = 0;
};

struct ProduttoreSelezionato {
    QString CODI_COLORE;
    QString DESC_COLORE;
    qint32 iD_PRODUTTORI = 0;
    qint32 iD_DOMANDA = 0;
    qint32 iD_UTF = 0;
    QString CODI_FISC;
    QString DENOMINAZIONE;
    QString CAMPAGNA_PRESCELTA;
    QString CODICE_CONTRATTO_DISTILLAZIONE;
    QString QTA_MAX_DISTILLABILE;
    QString COMUNICAZIONE_CONTRATTO;  // scritto solo dal carico di una fornitura
    QString iD_COLORE;
    QString QTA_VINO_EFFETIVAMENTE_DISTILLATA;
    QString QTA_VINO_DISTILLATA_AIUTO;
    QString TITOLO_ALCOLOMETRICO_FATTURATO;
    QString ETTOGRADI;
    QString QTA_ALCOLE_NEUTRO;
    QString QTA_ALCOLE_GREZZO;
    QString QTA_ACQUAVITE;
    QString AIUTO_ALCOLE_NEUTRO;
    QString AIUTO_ALCOLE_GREZZO;
    QString AIUTO_ACQUAVITE;
    QString IMPORTO_DETRAIBILE;
    QString TOTALE_AIUTO;
    QString APPROVAZIONE_ANTICIPATA;
    QString PERC_APPROVAZIONE_ANTICIPATA;
};

// Il blocco delle variabili di sessione, nell'ordine in cui sono dichiarate.
struct Sessione {
    Sessione();
    ~Sessione();
    Sessione(const Sessione&) = delete;
    Sessione& operator=(const Sessione&) = delete;

    QVariant OperazioneCorrente;
    QString CampagnaCorrente;
    QString CampagnaSelezionata;
    QString PathDatabase;
    std::unique_ptr<Database> DbDistilleria;
    QString StrSql;
    QString TitoloMaschera;
    QString ModoMaschera;
    QString ModoDistilleria;
    qint16 IndiceCampo = 0;
    qint16 IndiceCiclo = 0;
    FatturaSelezionata FatturaSel;
    DomandaSelezionata DomandaSel;
    DatiDistilleria DistilleriaDati;
    bool DistilleriaAssente = false;
    QString DataVersioneDb;
    QString VersioneDb;
    DomandaProduttoreSelezionata DomandaProduttoreSel;
    UtfSelezionato UtfSel;
    ProduttoreSelezionato ProduttoreSel;
    qint32 ModoArchivio = 0;
    QString PercorsoArchivio;
    bool OperazioneAnnullata = false;
    bool ControlloFloppyRipeti = false;
    bool ControlloDiscoRipeti = false;

    // Punto di montaggio del dischetto (i test lo spostano in una cartella temporanea).
    QString CartellaFloppy;

    // Riporta tutto allo stato di avvio (usato dai test).
    void Azzera();
};

Sessione& sessione();

// Connessione aperta della sessione; senza connessione aperta solleva l'errore 3420.
Database& Db();
