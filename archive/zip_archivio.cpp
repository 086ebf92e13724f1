#include "archive/zip_archivio.h"

#include "common/errore.h"
#include "common/file_sicuri.h"
#include "shell/session_state.h"
#include "store/database.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStorageInfo>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <sqlite3.h>
#include <zip.h>


namespace {

constexpr int ErroreArchivio = CodiciErrore::FormatoNonRiconosciuto;
constexpr qint64 Blocco = 1 << 16;

// Byte liberi nella cartella; -1 se il sistema non lo dice.
qint64 SpazioLibero(const QString& cartella) { return QStorageInfo(cartella).bytesAvailable(); }

void ControllaSpazio(const QString& cartella, qint64 servono)
{
    const qint64 liberi = SpazioLibero(cartella);
    if (liberi >= 0 && servono > liberi)
        throw ErroreSistema(CodiciErrore::DiscoPieno,
                            QStringLiteral("Spazio insufficiente in '%1': servono %2 byte, ne restano %3.")
                                .arg(QDir::toNativeSeparators(QDir::cleanPath(cartella)))
                                .arg(servono)
                                .arg(liberi));
}

std::filesystem::path Fs(const QString& percorso) { return std::filesystem::path(percorso.toStdU16String()); }

// Toglie un file con il suo giornale e la sua memoria condivisa.
void RimuoviConGiornale(const QString& percorso)
{
    for (const char* coda : {"", "-wal", "-shm", "-journal"})
        QFile::remove(percorso + QLatin1String(coda));
}

// Connessione SQLite nuda sul file, per il checkpoint del giornale.
class ConnessioneNuda {
public:
    explicit ConnessioneNuda(const QString& percorso)
    {
        if (sqlite3_open_v2(percorso.toUtf8().constData(), &m_db, SQLITE_OPEN_READWRITE, nullptr) != SQLITE_OK) {
            const QString testo = m_db ? QString::fromUtf8(sqlite3_errmsg(m_db)) : QString();
            sqlite3_close(m_db);
            m_db = nullptr;
            throw ErroreSistema(CodiciErrore::FileNonTrovato,
                                QStringLiteral("Impossibile aprire il database '%1': %2")
                                    .arg(QDir::toNativeSeparators(percorso), testo));
        }
        sqlite3_busy_timeout(m_db, 2000);
    }
    ~ConnessioneNuda() { sqlite3_close(m_db); }
    ConnessioneNuda(const ConnessioneNuda&) = delete;
    ConnessioneNuda& operator=(const ConnessioneNuda&) = delete;

    // Esegue l'istruzione e dà il primo campo della prima riga.
    QString Esegui(const char* sql)
    {
        sqlite3_stmt* st = nullptr;
        int rc = sqlite3_prepare_v2(m_db, sql, -1, &st, nullptr);
        QString primo;
        if (rc == SQLITE_OK) {
            rc = sqlite3_step(st);
            if (rc == SQLITE_ROW)
                primo = QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(st, 0)));
        }
        sqlite3_finalize(st);
        if (rc != SQLITE_ROW && rc != SQLITE_DONE)
            throw ErroreSistema(CodiciErrore::FormatoNonRiconosciuto,
                                QStringLiteral("Il database non si legge: %1").arg(QString::fromUtf8(sqlite3_errmsg(m_db))));
        return primo;
    }

    // Porta nel file tutto ciò che è confermato nel giornale WAL e lo svuota.
    void Checkpoint()
    {
        if (Esegui("PRAGMA wal_checkpoint(TRUNCATE)") != QLatin1String("0"))
            throw ErroreSistema(CodiciErrore::FileInUso,
                                QStringLiteral("Il database è ancora in uso da un'altra connessione."));
    }

private:
    sqlite3* m_db = nullptr;
};

// Un archivio zip aperto in lettura.
class ZipLettura {
public:
    explicit ZipLettura(const QString& percorso) : m_percorso(percorso)
    {
        int errore = 0;
        m_zip = zip_open(QFile::encodeName(percorso).constData(), ZIP_RDONLY | ZIP_CHECKCONS, &errore);
        if (!m_zip)
            throw ErroreSistema(ErroreArchivio, QStringLiteral("L'archivio '%1' è danneggiato o non è un archivio zip.")
                                                    .arg(QDir::toNativeSeparators(percorso)));
    }
    ~ZipLettura() { zip_discard(m_zip); }
    ZipLettura(const ZipLettura&) = delete;
    ZipLettura& operator=(const ZipLettura&) = delete;

    // La voce unica "orvelta_2005.mdb" con la sua grandezza; ogni altra
    // forma (più voci, percorsi, nomi diversi) non è un nostro archivio.
    qint64 VoceDatabase()
    {
        const zip_int64_t voci = zip_get_num_entries(m_zip, 0);
        const char* nome = voci == 1 ? zip_get_name(m_zip, 0, ZIP_FL_ENC_RAW) : nullptr;
        if (!nome || QByteArray(nome) != NomeDatabase.toLatin1())
            throw ErroreSistema(ErroreArchivio,
                                QStringLiteral("L'archivio '%1' non è un salvataggio di questo programma: deve "
                                               "contenere il solo file %2.")
                                    .arg(QDir::toNativeSeparators(m_percorso), NomeDatabase));
        zip_stat_t st;
        zip_stat_init(&st);
        if (zip_stat_index(m_zip, 0, 0, &st) != 0 || !(st.valid & ZIP_STAT_SIZE) || st.size > quint64(1) << 50)
            throw Danneggiato();
        return qint64(st.size);
    }

    // Legge la voce fino in fondo (la libreria controlla il CRC all'ultimo
    // blocco) passando i blocchi a chi li scrive o li confronta.
    template <typename F>
    void LeggiVoce(qint64 grandezza, F&& blocco)
    {
        std::unique_ptr<zip_file_t, int (*)(zip_file_t*)> f(zip_fopen_index(m_zip, 0, 0), zip_fclose);
        if (!f)
            throw Danneggiato();
        QByteArray buf(Blocco, Qt::Uninitialized);
        qint64 letti = 0;
        for (;;) {
            const zip_int64_t n = zip_fread(f.get(), buf.data(), zip_uint64_t(buf.size()));
            if (n < 0 || letti + n > grandezza)
                throw Danneggiato();
            if (n == 0)
                break;
            letti += n;
            blocco(buf.constData(), qint64(n));
        }
        if (letti != grandezza)
            throw Danneggiato();
    }

private:
    ErroreSistema Danneggiato() const
    {
        return ErroreSistema(ErroreArchivio, QStringLiteral("L'archivio '%1' è danneggiato: il file %2 non si legge "
                                                            "per intero (controllo CRC).")
                                                 .arg(QDir::toNativeSeparators(m_percorso), NomeDatabase));
    }
    QString m_percorso;
    zip_t* m_zip = nullptr;
};

// La copia si apre con la password del sistema, ha tab_setup ed è integra.
void VerificaDatabase(const QString& percorso)
{
    const ErroreSistema estraneo(CodiciErrore::FormatoNonRiconosciuto,
                                 QStringLiteral("Il file %1 dell'archivio non è un database di questo programma.")
                                     .arg(NomeDatabase));
    bool nostro = false;
    QString integrita;
    try {
        auto db = Database::Apri(percorso, false, ConnessioneDb);
        nostro = db->EsisteTabella(QStringLiteral("tab_setup"));
        integrita = db->OpenRecordset(QStringLiteral("PRAGMA integrity_check")).Fields(0).testo();
        db->Close();
    } catch (const ErroreSistema& e) {
        if (e.numero() == CodiciErrore::FormatoNonRiconosciuto || e.numero() == CodiciErrore::PasswordNonValida)
            throw estraneo;
        throw;
    }
    if (!nostro)
        throw estraneo;
    if (integrita != QLatin1String("ok"))
        throw ErroreSistema(CodiciErrore::FormatoNonRiconosciuto,
                            QStringLiteral("Il file %1 dell'archivio è danneggiato.").arg(NomeDatabase));
    // Chiusa l'ultima connessione il giornale non deve restare.
    if (QFileInfo::exists(percorso + QLatin1String("-wal")))
        throw ErroreSistema(CodiciErrore::FileInUso,
                            QStringLiteral("Il file '%1' è ancora in uso.").arg(QDir::toNativeSeparators(percorso)));
    QFile::remove(percorso + QLatin1String("-shm"));
}

// Scrive in memoria lo zip con la sola voce del database.
QByteArray ZipInMemoria(const QString& database)
{
    zip_error_t errore;
    zip_error_init(&errore);
    zip_source_t* memoria = zip_source_buffer_create(nullptr, 0, 0, &errore);
    const auto fallito = [&](const QString& dove) {
        return ErroreSistema(CodiciErrore::AccessoPercorso,
                             QStringLiteral("Impossibile comprimere '%1' (%2).").arg(QDir::toNativeSeparators(database), dove));
    };
    if (!memoria)
        throw fallito(QString::fromUtf8(zip_error_strerror(&errore)));
    zip_source_keep(memoria);
    std::unique_ptr<zip_source_t, void (*)(zip_source_t*)> tieni(memoria, zip_source_free);
    zip_t* z = zip_open_from_source(memoria, ZIP_TRUNCATE, &errore);
    if (!z)
        throw fallito(QString::fromUtf8(zip_error_strerror(&errore)));
    zip_source_t* file = zip_source_file(z, QFile::encodeName(database).constData(), 0, 0);
    zip_int64_t indice = file ? zip_file_add(z, NomeDatabase.toLatin1().constData(), file, ZIP_FL_ENC_UTF_8) : -1;
    if (indice < 0 && file)
        zip_source_free(file);
    if (indice < 0 || zip_set_file_compression(z, zip_uint64_t(indice), ZIP_CM_DEFLATE, 9) != 0 || zip_close(z) != 0) {
        const QString testo = QString::fromUtf8(zip_strerror(z));
        zip_discard(z);
        throw fallito(testo);
    }
    QByteArray dati;
    if (zip_source_open(memoria) == 0) {
        zip_source_seek(memoria, 0, SEEK_END);
        dati.resize(qsizetype(zip_source_tell(memoria)));
        zip_source_seek(memoria, 0, SEEK_SET);
        if (zip_source_read(memoria, dati.data(), zip_uint64_t(dati.size())) != dati.size())
            dati.clear();
        zip_source_close(memoria);
    }
    if (dati.isEmpty())
        throw fallito(QStringLiteral("archivio vuoto"));
    return dati;
}

}  // namespace

void CreaArchivio(const QString& database, const QString& archivio)
{
    const QString provvisorio = archivio + QLatin1String(".nuovo");
    const QString verifica = database + QLatin1String(".verifica");
    QFile::remove(provvisorio);
    RimuoviConGiornale(verifica);

    QByteArray zip;
    {
        // Tutte le righe confermate passano nel file, e la lettura aperta
        // impedisce che il file cambi mentre lo si comprime.
        ConnessioneNuda db(database);
        db.Checkpoint();
        db.Esegui("BEGIN");
        db.Esegui("SELECT count(*) FROM sqlite_master");
        zip = ZipInMemoria(database);
        db.Esegui("COMMIT");
    }

    // Un archivio che non entra (il dischetto) non si comincia nemmeno a scrivere.
    ControllaSpazio(QFileInfo(archivio).absolutePath(), zip.size());
    {
        FileSuDisco f(provvisorio);
        f.Scrivi(zip.constData(), zip.size());
        f.Chiudi();
    }

    // Rilettura: la voce torna intera (CRC), uguale al database e apribile.
    try {
        ZipLettura letto(provvisorio);
        const qint64 grandezza = letto.VoceDatabase();
        QFile originale(database);
        if (!originale.open(QIODevice::ReadOnly) || originale.size() != grandezza)
            throw ErroreSistema(ErroreArchivio, QStringLiteral("L'archivio scritto non corrisponde al database."));
        ControllaSpazio(QFileInfo(database).absolutePath(), grandezza);
        FileSuDisco copia(verifica);
        letto.LeggiVoce(grandezza, [&](const char* dati, qint64 n) {
            if (originale.read(n) != QByteArray::fromRawData(dati, qsizetype(n)))
                throw ErroreSistema(ErroreArchivio, QStringLiteral("L'archivio scritto non corrisponde al database."));
            copia.Scrivi(dati, n);
        });
        copia.Chiudi();
        VerificaDatabase(verifica);
    } catch (...) {
        QFile::remove(provvisorio);
        RimuoviConGiornale(verifica);
        throw;
    }
    RimuoviConGiornale(verifica);
    RinominaSuDisco(provvisorio, archivio);
}

void RipristinaArchivio(const QString& archivio, const QString& cartellaDatabase)
{
    const QString database = QDir(cartellaDatabase).filePath(NomeDatabase);
    const QString nuovo = database + QLatin1String(".nuovo");
    const QString precedente = database + QLatin1String(".bak");
    RimuoviConGiornale(nuovo);

    // Estrazione della sola voce in un file provvisorio accanto al database.
    try {
        ZipLettura zip(archivio);
        const qint64 grandezza = zip.VoceDatabase();
        ControllaSpazio(cartellaDatabase, grandezza);
        FileSuDisco f(nuovo);
        zip.LeggiVoce(grandezza, [&](const char* dati, qint64 n) { f.Scrivi(dati, n); });
        f.Chiudi();
        VerificaDatabase(nuovo);
    } catch (...) {
        RimuoviConGiornale(nuovo);
        throw;
    }

    // Il database attuale: tutto nel file, nessun giornale che possa finire
    // sopra il nuovo, e una seconda voce (.bak) sullo stesso file.
    const bool esisteva = QFileInfo::exists(database);
    try {
        if (esisteva) {
            ConnessioneNuda(database).Checkpoint();
            if (QFileInfo::exists(database + QLatin1String("-wal")))
                throw ErroreSistema(CodiciErrore::FileInUso,
                                    QStringLiteral("Il database è ancora in uso: ripristino non eseguito."));
            QFile::remove(database + QLatin1String("-shm"));
            QFile::remove(precedente);
            std::error_code ec;
            std::filesystem::create_hard_link(Fs(database), Fs(precedente), ec);
            if (ec && !QFile::copy(database, precedente))
                throw ErroreSistema(CodiciErrore::AccessoPercorso,
                                    QStringLiteral("Impossibile conservare il database attuale in '%1'.")
                                        .arg(QDir::toNativeSeparators(precedente)));
            ForzaCartella(cartellaDatabase);
        }
        // Il rinomino sostituisce il file in un colpo: in ogni istante c'è
        // un database intero, il vecchio o il nuovo.
        RinominaSuDisco(nuovo, database);
    } catch (...) {
        RimuoviConGiornale(nuovo);
        QFile::remove(precedente);
        throw;
    }

    // Il vecchio si toglie solo quando il nuovo si è aperto al suo posto.
    try {
        VerificaDatabase(database);
    } catch (const ErroreSistema&) {
        // Il giornale lasciato dal tentativo non deve finire sul vecchio.
        for (const char* coda : {"-wal", "-shm"})
            QFile::remove(database + QLatin1String(coda));
        if (esisteva)
            RinominaSuDisco(precedente, database);
        throw ErroreSistema(CodiciErrore::FormatoNonRiconosciuto,
                            QStringLiteral("Il database ripristinato non si apre: è stato rimesso quello di prima."));
    }
    QFile::remove(precedente);
}

bool SistemaAvanziArchivio(const QString& cartellaDatabase)
{
    const QString database = QDir(cartellaDatabase).filePath(NomeDatabase);
    RimuoviConGiornale(database + QLatin1String(".nuovo"));
    RimuoviConGiornale(database + QLatin1String(".verifica"));
    const QString precedente = database + QLatin1String(".bak");
    if (!QFileInfo::exists(precedente))
        return false;
    try {
        if (QFileInfo::exists(database)) {
            VerificaDatabase(database);
            return false;
        }
    } catch (const ErroreSistema& e) {
        // Aperto da un altro programma: non è guasto, non si tocca.
        if (e.numero() == CodiciErrore::FileInUso)
            return false;
    }
    // Il giornale del database guasto non deve finire su quello di prima.
    for (const char* coda : {"-wal", "-shm", "-journal"})
        QFile::remove(database + QLatin1String(coda));
    RinominaSuDisco(precedente, database);
    return true;
}
