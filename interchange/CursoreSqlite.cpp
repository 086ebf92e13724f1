#include "interchange/CursoreSqlite.h"

#include "common/errore.h"
#include "common/numeri.h"

#include <QRegularExpression>
#include <sqlite3.h>

Istruzione::Istruzione(sqlite3* db, const QString& sql) : m_db(db)
{
    if (!db)
        throw ErroreSistema(3420, QStringLiteral("Oggetto non valido o non più impostato."));
    const QByteArray testo = sql.toUtf8();
    const int esito = sqlite3_prepare_v2(db, testo.constData(), static_cast<int>(testo.size()), &m_stmt, nullptr);
    if (esito != SQLITE_OK)
        Errore(esito);
    // Tutti subito: un vettore che cresce sposterebbe i testi già legati.
    m_utf8.resize(static_cast<std::size_t>(sqlite3_bind_parameter_count(m_stmt)));
}

Istruzione::~Istruzione() { sqlite3_finalize(m_stmt); }

void Istruzione::Errore(int codice)
{
    const QString testo = QString::fromUtf8(sqlite3_errmsg(m_db));
    static const QRegularExpression proprio(QStringLiteral("^\\[(\\d+)\\] (.*)$"));
    if (auto m = proprio.match(testo); m.hasMatch())
        throw ErroreSistema(m.captured(1).toInt(), m.captured(2));
    throw ErroreSistema(3000 + (codice & 0xff), testo);
}

Istruzione& Istruzione::Testo(QStringView valore)
{
    const auto i = static_cast<std::size_t>(m_indice++);
    if (i >= m_utf8.size())
        return *this;  // oltre i parametri: il motore lo ignorerebbe comunque
    std::string& utf8 = m_utf8[i];
    // Le forniture sono quasi tutte ASCII: un carattere, un byte.
    utf8.resize(static_cast<std::size_t>(valore.size()));
    for (qsizetype k = 0; k < valore.size(); ++k) {
        const char16_t c = valore[k].unicode();
        if (c >= 0x80) {
            const QByteArray tutto = valore.toUtf8();
            utf8.assign(tutto.constData(), static_cast<std::size_t>(tutto.size()));
            break;
        }
        utf8[static_cast<std::size_t>(k)] = static_cast<char>(c);
    }
    sqlite3_bind_text(m_stmt, m_indice, utf8.data(), static_cast<int>(utf8.size()), SQLITE_STATIC);
    return *this;
}

Istruzione& Istruzione::Intero(qint64 valore)
{
    sqlite3_bind_int64(m_stmt, ++m_indice, valore);
    return *this;
}

Istruzione& Istruzione::Valori(const QVariantList& valori)
{
    for (const QVariant& v : valori) {
        if (v.isNull())
            sqlite3_bind_null(m_stmt, ++m_indice);
        else if (v.typeId() == QMetaType::Int || v.typeId() == QMetaType::LongLong)
            Intero(v.toLongLong());
        else
            Testo(v.toString());
    }
    return *this;
}

qint64 Istruzione::Esegui()
{
    m_indice = 0;
    const int esito = sqlite3_step(m_stmt);
    sqlite3_reset(m_stmt);
    if (esito != SQLITE_DONE)
        Errore(esito);
    return sqlite3_last_insert_rowid(m_db);
}

bool Istruzione::TrovaRiga()
{
    m_indice = 0;
    const int esito = sqlite3_step(m_stmt);
    sqlite3_reset(m_stmt);
    if (esito != SQLITE_ROW && esito != SQLITE_DONE)
        Errore(esito);
    return esito == SQLITE_ROW;
}

CursoreSqlite::CursoreSqlite(sqlite3* db, const QString& sql, const QVariantList& parametri)
    : m_istruzione(db, sql)
{
    m_istruzione.Valori(parametri);
    const int colonne = sqlite3_column_count(m_istruzione.m_stmt);
    for (int i = 0; i < colonne; ++i) {
        const QString nome = QString::fromUtf8(sqlite3_column_name(m_istruzione.m_stmt, i)).toUpper();
        if (!m_colonne.contains(nome))
            m_colonne.insert(nome, i);
        m_ultime.insert(nome, i);
    }
    MoveNext();
}

void CursoreSqlite::MoveNext()
{
    const int esito = sqlite3_step(m_istruzione.m_stmt);
    if (esito != SQLITE_ROW && esito != SQLITE_DONE)
        m_istruzione.Errore(esito);
    m_eof = esito != SQLITE_ROW;
}

int CursoreSqlite::Indice(const QString& nome) const
{
    // I tracciati chiedono sempre gli stessi nomi, con gli stessi letterali:
    // si riconoscono dall'indirizzo del testo, confermato dal contenuto.
    for (const NomeCercato& c : m_giaCercati)
        if (c.testo == nome.constData() && c.nome == nome)
            return c.indice;
    const int i = IndiceDaNome(nome);
    // Nomi costruiti a ogni chiamata non devono far crescere la lista.
    if (m_giaCercati.size() < 64)
        m_giaCercati.append(NomeCercato{nome.constData(), nome, i});
    return i;
}

int CursoreSqlite::IndiceDaNome(const QString& nome) const
{
    const QString chiave = nome.toUpper();
    if (auto it = m_colonne.constFind(chiave); it != m_colonne.constEnd())
        return *it;
    const qsizetype punto = chiave.lastIndexOf(QLatin1Char('.'));
    if (punto >= 0)
        if (auto it = m_ultime.constFind(chiave.mid(punto + 1)); it != m_ultime.constEnd())
            return *it;
    throw ErroreSistema(3265, QStringLiteral("Elemento non trovato in questo insieme: '%1'.").arg(nome));
}

QString CursoreSqlite::Campo(const QString& nome) const
{
    const int i = Indice(nome);
    if (m_eof)
        throw ErroreSistema(CodiciErrore::NessunRecordCorrente);
    sqlite3_stmt* st = m_istruzione.m_stmt;
    switch (sqlite3_column_type(st, i)) {
    case SQLITE_NULL: return QString();
    case SQLITE_FLOAT: return CStr(sqlite3_column_double(st, i));  // come Valore::testo
    default: {
        const auto* testo = reinterpret_cast<const char*>(sqlite3_column_text(st, i));
        return QString::fromUtf8(testo, sqlite3_column_bytes(st, i));
    }
    }
}
