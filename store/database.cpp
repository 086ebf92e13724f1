#include "store/database.h"

#include "common/errore.h"
#include "common/numeri.h"
#include "store/funzioni_sql.h"

#include <QCryptographicHash>
#include <algorithm>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlRecord>
#include <QUrl>
#include <sqlite3.h>

namespace {

constexpr auto TabellaPassword = "MSysPassword";

QString NuovoNomeConnessione()
{
    static quint64 contatore = 0;
    return QStringLiteral("fermola_%1").arg(++contatore);
}

QString Impronta(const QString& sale, const QString& password)
{
    return QString::fromLatin1(
        QCryptographicHash::hash((sale + password).toUtf8(), QCryptographicHash::Sha256).toHex());
}

QString Citato(const QString& nome)
{
    QString n = nome;
    return QLatin1Char('"') + n.replace(QLatin1Char('"'), QLatin1String("\"\"")) + QLatin1Char('"');
}

// Traduce un errore SQLite nel numero e nella descrizione del sistema.
ErroreSistema Traduci(const QSqlError& errore, const QString& sql)
{
    const QString testo = errore.databaseText();
    // Le nostre funzioni SQL mettono il numero tra parentesi quadre.
    static const QRegularExpression proprio(QStringLiteral("^\\[(\\d+)\\] (.*)$"));
    if (auto m = proprio.match(testo); m.hasMatch())
        return ErroreSistema(m.captured(1).toInt(), m.captured(2));

    const int codice = errore.nativeErrorCode().toInt() & 0xff;
    if (codice == SQLITE_CONSTRAINT && (testo.contains(QLatin1String("UNIQUE")) ||
                                        testo.contains(QLatin1String("PRIMARY KEY"))))
        return ErroreSistema(CodiciErrore::ChiaveDuplicata);
    if (testo.startsWith(QLatin1String("no such table")) || testo.startsWith(QLatin1String("no such view"))) {
        const QString nome = testo.section(QLatin1Char(':'), 1).trimmed();
        return ErroreSistema(CodiciErrore::TabellaMancante,
                             QStringLiteral("Impossibile trovare la tabella o la query di input '%1'.").arg(nome));
    }
    if (testo.startsWith(QLatin1String("no such column"))) {
        const QString nome = testo.section(QLatin1Char(':'), 1).trimmed();
        return ErroreSistema(3061, QStringLiteral("Parametri insufficienti: campo sconosciuto '%1'.").arg(nome));
    }
    if (testo.contains(QLatin1String("syntax error")) || testo.contains(QLatin1String("incomplete input")))
        return ErroreSistema(CodiciErrore::ErroreSintassi,
                             QStringLiteral("Errore di sintassi nell'espressione della query '%1'.").arg(sql.left(200)));
    if (codice == SQLITE_BUSY || codice == SQLITE_LOCKED)
        return ErroreSistema(CodiciErrore::FileInUso, QStringLiteral("Il database è in uso da un altro processo."));
    // Un file che non può crescere (quota, limite del file) arriva come
    // errore di scrittura, non come disco pieno: anche questo va detto chiaro.
    if (codice == SQLITE_IOERR)
        return ErroreSistema(3043, QStringLiteral("Errore del disco: impossibile leggere o scrivere il database."));
    if (codice == SQLITE_FULL)
        return ErroreSistema(CodiciErrore::DiscoPieno, QStringLiteral("Disco pieno: impossibile scrivere nel database."));
    if (codice == SQLITE_READONLY || codice == SQLITE_PERM)
        return ErroreSistema(CodiciErrore::AccessoPercorso,
                             QStringLiteral("Il database non può essere scritto (sola lettura)."));
    if (codice == SQLITE_NOTADB || codice == SQLITE_CORRUPT)
        return ErroreSistema(CodiciErrore::FormatoNonRiconosciuto,
                             QStringLiteral("Formato di database non riconosciuto."));
    return ErroreSistema(3000 + (codice > 0 ? codice : 1),
                         testo.isEmpty() ? errore.text() : QStringLiteral("Errore del database: ") + testo);
}

}  // namespace

// ---------------------------------------------------------------- Valore

QString Valore::testo() const
{
    if (isNull())
        return QString();
    if (m_v.typeId() == QMetaType::Double) {
        // Numero reale: il testo di CStr, come quando si accoda "" al campo
        // (virgola, esponente "E+15" e "E-06" agli stessi limiti).
        return CStr(m_v.toDouble());
    }
    return m_v.toString();
}

qint64 Valore::intero() const { return isNull() ? 0 : m_v.toLongLong(); }
double Valore::numero() const { return isNull() ? 0.0 : m_v.toDouble(); }

// ---------------------------------------------------------------- Recordset

Recordset::Recordset(QSqlQuery&& query) : m_query(std::make_unique<QSqlQuery>(std::move(query)))
{
    const QSqlRecord r = m_query->record();
    for (int i = 0; i < r.count(); ++i)
        m_nomi << r.fieldName(i);
    m_eof = !m_query->next();
}

void Recordset::MoveNext()
{
    if (m_eof)
        throw ErroreSistema(CodiciErrore::NessunRecordCorrente);
    m_eof = !m_query->next();
}

Valore Recordset::Fields(const QString& nome) const
{
    for (int i = 0; i < m_nomi.size(); ++i)
        if (m_nomi[i].compare(nome, Qt::CaseInsensitive) == 0)
            return Fields(i);
    throw ErroreSistema(3265, QStringLiteral("Elemento non trovato in questo insieme: '%1'.").arg(nome));
}

Valore Recordset::Fields(int indice) const
{
    if (m_eof || !m_query)
        throw ErroreSistema(CodiciErrore::NessunRecordCorrente);
    if (indice < 0 || indice >= m_nomi.size())
        throw ErroreSistema(3265, QStringLiteral("Elemento non trovato in questo insieme."));
    return Valore(m_query->value(indice));
}

void Recordset::Close()
{
    m_query.reset();
    m_eof = true;
}

// ---------------------------------------------------------------- Database

QString PasswordDaConnessione(const QString& connessione)
{
    for (const QString& parte : connessione.split(QLatin1Char(';'), Qt::SkipEmptyParts)) {
        const int uguale = parte.indexOf(QLatin1Char('='));
        if (uguale > 0 && parte.left(uguale).trimmed().compare(QLatin1String("PWD"), Qt::CaseInsensitive) == 0)
            return parte.mid(uguale + 1);
    }
    return QString();
}

std::unique_ptr<Database> Database::Connetti(const QString& percorso, bool crea, bool esclusivo)
{
    std::unique_ptr<Database> db(new Database);
    db->m_nomeConnessione = NuovoNomeConnessione();
    db->m_percorso = percorso;
    QSqlDatabase c = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), db->m_nomeConnessione);
    c.setDatabaseName(percorso);
    // Senza "crea" il file deve esistere: SQLite non ne fa uno vuoto.
    c.setConnectOptions(crea ? QStringLiteral("QSQLITE_BUSY_TIMEOUT=200")
                             : QStringLiteral("QSQLITE_OPEN_URI;QSQLITE_BUSY_TIMEOUT=200"));
    if (!crea) {
        QString uri = QStringLiteral("file:") +
                      QString::fromUtf8(QUrl::toPercentEncoding(QFileInfo(percorso).absoluteFilePath(), "/"));
        c.setDatabaseName(uri + QStringLiteral("?mode=rw"));
    }
    if (!c.open()) {
        const QString testo = c.lastError().databaseText();
        QSqlDatabase::removeDatabase(db->m_nomeConnessione);
        db->m_nomeConnessione.clear();
        if (!crea && !QFileInfo::exists(percorso))
            throw ErroreSistema(CodiciErrore::FileNonTrovato,
                                QStringLiteral("Impossibile trovare il file '%1'.").arg(percorso));
        throw ErroreSistema(CodiciErrore::FileNonTrovato,
                            QStringLiteral("Impossibile aprire il file '%1': %2").arg(percorso, testo));
    }
    RegistraFunzioniSql(db->handle());
    if (esclusivo)
        db->Execute(QStringLiteral("PRAGMA locking_mode=EXCLUSIVE"));
    return db;
}

std::unique_ptr<Database> Database::Apri(const QString& percorso, bool esclusivo, const QString& connessione)
{
    if (!QFileInfo(percorso).isFile())
        throw ErroreSistema(CodiciErrore::FileNonTrovato,
                            QStringLiteral("Impossibile trovare il file '%1'.").arg(percorso));
    auto db = Connetti(percorso, false, esclusivo);
    try {
        db->VerificaPassword(PasswordDaConnessione(connessione));
        db->Execute(QStringLiteral("PRAGMA journal_mode=WAL"));
        // Ciò che è confermato è sul disco: regge una caduta di corrente.
        db->Execute(QStringLiteral("PRAGMA synchronous=FULL"));
        if (esclusivo) {
            // Prende subito il blocco esclusivo, non alla prima scrittura.
            db->Execute(QStringLiteral("BEGIN EXCLUSIVE"));
            db->Execute(QStringLiteral("COMMIT"));
        }
    } catch (const ErroreSistema& e) {
        db->Close();
        if (e.numero() == CodiciErrore::FileInUso)
            throw ErroreSistema(CodiciErrore::FileInUso,
                                QStringLiteral("Impossibile utilizzare '%1': file già in uso.").arg(percorso));
        if (e.numero() == CodiciErrore::FormatoNonRiconosciuto)
            throw ErroreSistema(CodiciErrore::FormatoNonRiconosciuto,
                                QStringLiteral("Formato di database non riconosciuto: '%1'.").arg(percorso));
        throw;
    }
    return db;
}

std::unique_ptr<Database> Database::Crea(const QString& percorso, const QString& password)
{
    auto db = Connetti(percorso, true, false);
    db->Execute(QStringLiteral("PRAGMA journal_mode=WAL"));
    const QString sale = QString::number(QRandomGenerator::system()->generate64(), 16);
    db->Execute(QStringLiteral("CREATE TABLE %1 (SALE TEXT NOT NULL, IMPRONTA TEXT NOT NULL)").arg(TabellaPassword));
    db->Execute(QStringLiteral("INSERT INTO %1 (SALE, IMPRONTA) VALUES (?, ?)").arg(TabellaPassword),
                {sale, Impronta(sale, password)});
    return db;
}

void Database::VerificaPassword(const QString& password)
{
    Recordset rs;
    try {
        rs = OpenRecordset(QStringLiteral("SELECT SALE, IMPRONTA FROM %1").arg(TabellaPassword));
    } catch (const ErroreSistema& e) {
        // Un file SQLite che non è dei nostri non ha la tabella della password.
        if (e.numero() == CodiciErrore::TabellaMancante)
            throw ErroreSistema(CodiciErrore::FormatoNonRiconosciuto);
        throw;
    }
    if (rs.eof() || Impronta(rs.Fields(0).testo(), password) != rs.Fields(1).testo())
        throw ErroreSistema(CodiciErrore::PasswordNonValida,
                            QStringLiteral("Password non valida."));
}

Database::~Database() { Close(); }

bool Database::aperto() const
{
    // Il motore è noto solo a connessione aperta (Close lo dimentica).
    if (m_handle)
        return true;
    return !m_nomeConnessione.isEmpty() && QSqlDatabase::database(m_nomeConnessione, false).isOpen();
}

void Database::Close()
{
    if (m_nomeConnessione.isEmpty())
        return;
    m_preparate.clear();
    m_handle = nullptr;
    {
        QSqlDatabase c = QSqlDatabase::database(m_nomeConnessione, false);
        c.close();
    }
    QSqlDatabase::removeDatabase(m_nomeConnessione);
    m_nomeConnessione.clear();
}

sqlite3* Database::handle()
{
    if (m_handle)
        return m_handle;
    QSqlDatabase c = QSqlDatabase::database(m_nomeConnessione, false);
    const QVariant v = c.driver()->handle();
    if (!v.isValid() || qstrcmp(v.typeName(), "sqlite3*") != 0)
        return nullptr;
    m_handle = *static_cast<sqlite3* const*>(v.data());
    return m_handle;
}

QSqlQuery Database::Esegui(const QString& sql, const QVariantList& parametri, bool avanti)
{
    if (!aperto())
        throw ErroreSistema(3420, QStringLiteral("Oggetto non valido o non più impostato."));
    QSqlQuery q(QSqlDatabase::database(m_nomeConnessione, false));
    q.setForwardOnly(avanti);
    if (!q.prepare(sql))
        throw Traduci(q.lastError(), sql);
    for (int i = 0; i < parametri.size(); ++i)
        q.bindValue(i, parametri[i]);
    if (!q.exec())
        throw Traduci(q.lastError(), sql);
    return q;
}

struct Database::Istruzione {
    sqlite3_stmt* stmt = nullptr;
    ~Istruzione() { sqlite3_finalize(stmt); }
};

namespace {

// L'errore del motore come lo riporterebbe Qt, per la stessa traduzione.
QSqlError ErroreMotore(sqlite3* db, int codice)
{
    return QSqlError(QString(), QString::fromUtf8(sqlite3_errmsg(db)), QSqlError::StatementError,
                     QString::number(codice));
}

// Lega un valore come fa il driver Qt: un testo o dei byte nulli sono Null.
// I testi convertiti restano nel deposito fino all'esecuzione: il motore li
// legge senza copiarli.
int Lega(sqlite3_stmt* st, int indice, const QVariant& v, QList<QByteArray>& deposito)
{
    if (!v.isValid() || v.isNull())
        return sqlite3_bind_null(st, indice);
    switch (v.typeId()) {
    case QMetaType::QString: {
        const QString& t = *static_cast<const QString*>(v.constData());
        if (t.isNull())
            return sqlite3_bind_null(st, indice);
        // Il database è in UTF-8: convertito qui costa meno che dentro il
        // motore. Un testo ASCII (quasi sempre) passa come Latin-1, senza
        // la conversione generica.
        const bool ascii = std::all_of(t.cbegin(), t.cend(), [](QChar c) { return c.unicode() < 0x80; });
        const QByteArray& utf8 = deposito.emplaceBack(ascii ? t.toLatin1() : t.toUtf8());
        return sqlite3_bind_text(st, indice, utf8.constData(), int(utf8.size()), SQLITE_STATIC);
    }
    case QMetaType::QByteArray: {
        const QByteArray& b = *static_cast<const QByteArray*>(v.constData());
        if (b.isNull())
            return sqlite3_bind_null(st, indice);
        return sqlite3_bind_blob(st, indice, deposito.emplaceBack(b).constData(), int(b.size()), SQLITE_STATIC);
    }
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::LongLong:
    case QMetaType::Long:
    case QMetaType::Char:
    case QMetaType::UChar:
        return sqlite3_bind_int64(st, indice, v.toLongLong());
    case QMetaType::ULongLong:
    case QMetaType::ULong:
        return sqlite3_bind_int64(st, indice, qint64(v.toULongLong()));
    case QMetaType::Double:
    case QMetaType::Float:
        return sqlite3_bind_double(st, indice, v.toDouble());
    default: {
        const QByteArray& utf8 = deposito.emplaceBack(v.toString().toUtf8());
        return sqlite3_bind_text(st, indice, utf8.constData(), int(utf8.size()), SQLITE_STATIC);
    }
    }
}

}  // namespace

Database::Istruzione& Database::Preparata(const QString& sql)
{
    // La connessione aperta ha già dato il suo motore: niente ricerca per nome.
    if (!m_handle && !aperto())
        throw ErroreSistema(3420, QStringLiteral("Oggetto non valido o non più impostato."));
    auto& ist = m_preparate[sql];
    if (!ist) {
        if (m_preparate.size() > 64) {
            m_preparate.clear();
            return Preparata(sql);
        }
        sqlite3* db = handle();
        auto nuova = std::make_shared<Istruzione>();
        const void* coda = nullptr;
        const int esito = sqlite3_prepare16_v2(db, sql.utf16(), int(sql.size() * sizeof(QChar)), &nuova->stmt, &coda);
        if (esito != SQLITE_OK) {
            const QSqlError errore = ErroreMotore(db, sqlite3_extended_errcode(db));
            m_preparate.remove(sql);
            throw Traduci(errore, sql);
        }
        ist = std::move(nuova);
    }
    return *ist;
}

int Database::Execute(const QString& sql, const QVariantList& parametri)
{
    Istruzione& ist = Preparata(sql);
    sqlite3* db = handle();
    sqlite3_stmt* st = ist.stmt;
    int esito = SQLITE_OK;
    QList<QByteArray> deposito;
    // Un'istruzione vuota (solo spazi o commenti) non ha nulla da eseguire.
    if (st) {
        const int quanti = sqlite3_bind_parameter_count(st);
        deposito.reserve(quanti);
        for (int i = 0; i < parametri.size() && i < quanti && esito == SQLITE_OK; ++i)
            esito = Lega(st, i + 1, parametri[i], deposito);
        if (esito == SQLITE_OK) {
            do
                esito = sqlite3_step(st);
            while (esito == SQLITE_ROW);
        }
    }
    if (st && esito != SQLITE_DONE) {
        const QSqlError errore = ErroreMotore(db, sqlite3_extended_errcode(db));
        sqlite3_reset(st);
        sqlite3_clear_bindings(st);
        // Dopo un errore (schema cambiato, tabella eliminata) si riprepara.
        m_preparate.remove(sql);
        throw Traduci(errore, sql);
    }
    m_righeToccate = st ? std::max(0, sqlite3_changes(db)) : 0;
    if (st) {
        sqlite3_reset(st);
        sqlite3_clear_bindings(st);
    }
    return m_righeToccate;
}

Valore Database::PrimoValore(const QString& sql, const QVariantList& parametri)
{
    Istruzione& ist = Preparata(sql);
    sqlite3* db = handle();
    sqlite3_stmt* st = ist.stmt;
    if (!st)
        return Valore();
    QList<QByteArray> deposito;
    int esito = SQLITE_OK;
    const int quanti = sqlite3_bind_parameter_count(st);
    for (int i = 0; i < parametri.size() && i < quanti && esito == SQLITE_OK; ++i)
        esito = Lega(st, i + 1, parametri[i], deposito);
    if (esito == SQLITE_OK)
        esito = sqlite3_step(st);
    QVariant valore;
    if (esito == SQLITE_ROW) {
        switch (sqlite3_column_type(st, 0)) {
        case SQLITE_INTEGER: valore = qint64(sqlite3_column_int64(st, 0)); break;
        case SQLITE_FLOAT: valore = sqlite3_column_double(st, 0); break;
        case SQLITE_BLOB:
            valore = QByteArray(static_cast<const char*>(sqlite3_column_blob(st, 0)), sqlite3_column_bytes(st, 0));
            break;
        case SQLITE_NULL: break;
        default:
            valore = QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(st, 0)),
                                       sqlite3_column_bytes(st, 0));
        }
    } else if (esito != SQLITE_DONE) {
        const QSqlError errore = ErroreMotore(db, sqlite3_extended_errcode(db));
        sqlite3_reset(st);
        sqlite3_clear_bindings(st);
        m_preparate.remove(sql);
        throw Traduci(errore, sql);
    }
    sqlite3_reset(st);
    sqlite3_clear_bindings(st);
    return Valore(valore);
}

Recordset Database::OpenRecordset(const QString& sql, const QVariantList& parametri)
{
    return Recordset(Esegui(sql, parametri, true));
}

QSqlQuery Database::Interroga(const QString& sql, const QVariantList& parametri)
{
    return Esegui(sql, parametri, false);
}

QSqlDatabase Database::connessione() const
{
    return m_nomeConnessione.isEmpty() ? QSqlDatabase() : QSqlDatabase::database(m_nomeConnessione, false);
}

qint64 Database::InserisciRiga(const QString& tabella, const Campi& campi)
{
    QVariantList valori;
    valori.reserve(campi.size());
    for (const auto& campo : campi)
        valori << campo.second;
    // Il testo dell'istruzione si compone una volta per tabella e colonne: i
    // carichi inseriscono migliaia di righe con le stesse colonne.
    Inserimento& pronto = m_inserimenti[tabella];
    bool uguali = pronto.colonne.size() == campi.size() && !pronto.sql.isEmpty();
    for (qsizetype i = 0; uguali && i < campi.size(); ++i)
        uguali = pronto.colonne.at(i) == campi.at(i).first;
    if (!uguali) {
        QStringList nomi, segnaposto;
        pronto.colonne.clear();
        for (const auto& campo : campi) {
            pronto.colonne << campo.first;
            nomi << Citato(campo.first);
            segnaposto << QStringLiteral("?");
        }
        pronto.sql = nomi.isEmpty()
            ? QStringLiteral("INSERT INTO %1 DEFAULT VALUES").arg(Citato(tabella))
            : QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
                  .arg(Citato(tabella), nomi.join(QLatin1Char(',')), segnaposto.join(QLatin1Char(',')));
    }
    Execute(pronto.sql, valori);
    return static_cast<qint64>(sqlite3_last_insert_rowid(handle()));
}

int Database::AggiornaRiga(const QString& tabella, const Campi& campi, const QString& condizione,
                           const QVariantList& parametri)
{
    QStringList assegnazioni;
    QVariantList valori;
    for (const auto& [nome, valore] : campi) {
        assegnazioni << Citato(nome) + QStringLiteral("=?");
        valori << valore;
    }
    valori << parametri;
    return Execute(QStringLiteral("UPDATE %1 SET %2 %3")
                       .arg(Citato(tabella), assegnazioni.join(QLatin1Char(',')), condizione),
                   valori);
}

QStringList Database::TableDefs()
{
    QStringList nomi;
    Recordset rs = OpenRecordset(QStringLiteral(
        "SELECT name FROM sqlite_master WHERE type='table' AND name NOT LIKE 'sqlite\\_%' ESCAPE '\\' "
        "AND name <> ? ORDER BY rowid"), {QString::fromLatin1(TabellaPassword)});
    for (; !rs.eof(); rs.MoveNext())
        nomi << rs.Fields(0).testo();
    return nomi;
}

bool Database::EsisteTabella(const QString& nome)
{
    Recordset rs = OpenRecordset(
        QStringLiteral("SELECT 1 FROM sqlite_master WHERE type='table' AND name = ? COLLATE NOCASE"), {nome});
    return !rs.eof();
}

void Database::EliminaTabella(const QString& nome)
{
    if (!EsisteTabella(nome))
        throw ErroreSistema(3265, QStringLiteral("Elemento non trovato in questo insieme: '%1'.").arg(nome));
    Execute(QStringLiteral("DROP TABLE %1").arg(Citato(nome)));
}

void Database::CreaTabella(const QString& nome, const QList<DefinizioneCampo>& campi)
{
    if (EsisteTabella(nome))
        throw ErroreSistema(3010, QStringLiteral("La tabella '%1' esiste già.").arg(nome));
    QStringList colonne;
    for (const auto& c : campi) {
        if (c.attributi == AttributoCampo::Contatore)
            colonne << Citato(c.nome) + QStringLiteral(" INTEGER PRIMARY KEY AUTOINCREMENT");
        else if (c.tipo == TipoCampo::Testo)
            colonne << Citato(c.nome) + QStringLiteral(" TEXT COLLATE NOCASE");
        else
            colonne << Citato(c.nome) + QStringLiteral(" INTEGER");
    }
    Execute(QStringLiteral("CREATE TABLE %1 (%2)").arg(Citato(nome), colonne.join(QStringLiteral(", "))));
}

void Database::CreaIndice(const QString& tabella, const QString& nome, const QStringList& campi,
                          bool primario, bool unico)
{
    if (primario && campi.size() == 1) {
        // La chiave contatore è già la chiave primaria della tabella.
        Recordset rs = OpenRecordset(QStringLiteral("SELECT pk FROM pragma_table_info(?) WHERE name = ? COLLATE NOCASE"),
                                     {tabella, campi.first()});
        if (!rs.eof() && rs.Fields(0).intero() == 1)
            return;
    }
    QStringList citati;
    for (const auto& c : campi)
        citati << Citato(c);
    Execute(QStringLiteral("CREATE %1INDEX %2 ON %3 (%4)")
                .arg(primario || unico ? QStringLiteral("UNIQUE ") : QString(),
                     Citato(tabella + QLatin1Char('_') + nome), Citato(tabella), citati.join(QLatin1Char(','))));
}

QStringList Database::ColonneTabella(const QString& nome)
{
    QStringList colonne;
    Recordset rs = OpenRecordset(QStringLiteral("SELECT name FROM pragma_table_info(?) ORDER BY cid"), {nome});
    for (; !rs.eof(); rs.MoveNext())
        colonne << rs.Fields(0).testo();
    return colonne;
}

QStringList Database::QueryDefs()
{
    QStringList nomi;
    Recordset rs = OpenRecordset(QStringLiteral("SELECT name FROM sqlite_master WHERE type='view' ORDER BY rowid"));
    for (; !rs.eof(); rs.MoveNext())
        nomi << rs.Fields(0).testo();
    return nomi;
}

void Database::EliminaQuery(const QString& nome)
{
    Recordset rs = OpenRecordset(
        QStringLiteral("SELECT 1 FROM sqlite_master WHERE type='view' AND name = ? COLLATE NOCASE"), {nome});
    if (rs.eof())
        throw ErroreSistema(3265, QStringLiteral("Elemento non trovato in questo insieme: '%1'.").arg(nome));
    rs.Close();
    Execute(QStringLiteral("DROP VIEW %1").arg(Citato(nome)));
}

void Database::CreaQuery(const QString& nome, const QString& sql)
{
    Execute(QStringLiteral("CREATE VIEW %1 AS %2").arg(Citato(nome), sql));
}

void Database::IniziaTransazione() { Execute(QStringLiteral("BEGIN")); }

bool Database::InTransazione()
{
    sqlite3* h = handle();
    return h && !sqlite3_get_autocommit(h);
}

void Database::ConfermaTransazione()
{
    // Chiusa da un guasto del motore (disco pieno, errore di I/O) prima della
    // conferma: quel che c'era dentro è già perso, ed è un fallimento.
    if (!InTransazione())
        throw ErroreSistema(3000 + SQLITE_ERROR, QStringLiteral("Transazione interrotta: nulla è stato scritto."));
    try {
        Execute(QStringLiteral("COMMIT"));
    } catch (const ErroreSistema&) {
        // Una conferma fallita può lasciare la transazione aperta (un vincolo
        // differito, il database occupato): la si annulla, così la
        // connessione torna in autocommit e nulla resta a metà.
        if (InTransazione()) {
            try {
                Execute(QStringLiteral("ROLLBACK"));
            } catch (const ErroreSistema&) {
            }
        }
        throw;
    }
}

// ---------------------------------------------------------------- PuntoDiRipristino

namespace {
// Lo stesso nome per tutti: SQLite annida i punti omonimi e ROLLBACK TO torna
// al più recente; un solo testo tiene pronta un'istruzione sola.
const QString NomePunto = QStringLiteral("scrittura");
}  // namespace

PuntoDiRipristino::PuntoDiRipristino(Database& db) : m_db(db)
{
    m_esterno = !db.InTransazione();
    db.Execute(QStringLiteral("SAVEPOINT ") + NomePunto);
}

PuntoDiRipristino::~PuntoDiRipristino() { Annulla(); }

void PuntoDiRipristino::Conferma()
{
    if (!m_aperto)
        return;
    try {
        m_db.Execute(QStringLiteral("RELEASE ") + NomePunto);
        m_aperto = false;
    } catch (const ErroreSistema&) {
        Annulla();
        throw;
    }
}

void PuntoDiRipristino::Annulla() noexcept
{
    if (!m_aperto)
        return;
    m_aperto = false;
    try {
        if (m_esterno) {
            // Il motore può averla già chiusa da sé dopo un guasto grave.
            if (m_db.InTransazione())
                m_db.Execute(QStringLiteral("ROLLBACK"));
            return;
        }
        m_db.Execute(QStringLiteral("ROLLBACK TO ") + NomePunto);
        m_db.Execute(QStringLiteral("RELEASE ") + NomePunto);
    } catch (const ErroreSistema&) {
        // Il punto non c'è più (la transazione esterna è caduta con il
        // guasto): nulla da annullare qui, resta l'errore di partenza.
    }
}
