#include "store/funzioni_sql.h"

#include "common/errore.h"
#include "common/numeri.h"

#include <QString>
#include <sqlite3.h>

namespace {

void Errore(sqlite3_context* ctx, int numero, const QString& descrizione)
{
    const QByteArray testo = QStringLiteral("[%1] %2").arg(numero).arg(descrizione).toUtf8();
    sqlite3_result_error(ctx, testo.constData(), static_cast<int>(testo.size()));
}

void ErroreNull(sqlite3_context* ctx) { Errore(ctx, 94, QStringLiteral("Utilizzo non valido di Null")); }

QString Testo(sqlite3_value* v)
{
    const auto* p = reinterpret_cast<const char*>(sqlite3_value_text(v));
    return p ? QString::fromUtf8(p, sqlite3_value_bytes(v)) : QString();
}

// Numero da un argomento: i testi seguono le regole italiane di CDbl.
double Numero(sqlite3_value* v)
{
    switch (sqlite3_value_type(v)) {
    case SQLITE_INTEGER: return static_cast<double>(sqlite3_value_int64(v));
    case SQLITE_FLOAT: return sqlite3_value_double(v);
    default: return CDbl(Testo(v));
    }
}

template <typename F>
void Protetto(sqlite3_context* ctx, F&& corpo)
{
    try {
        corpo();
    } catch (const ErroreSistema& e) {
        Errore(ctx, e.numero(), e.descrizione());
    } catch (const std::exception& e) {
        Errore(ctx, 3000, QString::fromUtf8(e.what()));
    }
}

void Cdbl(sqlite3_context* ctx, int, sqlite3_value** argv)
{
    if (sqlite3_value_type(argv[0]) == SQLITE_NULL)
        return ErroreNull(ctx);
    Protetto(ctx, [&] { sqlite3_result_double(ctx, Numero(argv[0])); });
}

void Csng(sqlite3_context* ctx, int, sqlite3_value** argv)
{
    if (sqlite3_value_type(argv[0]) == SQLITE_NULL)
        return ErroreNull(ctx);
    Protetto(ctx, [&] {
        const float f = static_cast<float>(Numero(argv[0]));
        // Un singolo riportato in doppia precisione attraverso le sue 7 cifre.
        sqlite3_result_double(ctx, QString::number(f, 'g', 7).toDouble());
    });
}

void FunzioneVal(sqlite3_context* ctx, int, sqlite3_value** argv)
{
    switch (sqlite3_value_type(argv[0])) {
    case SQLITE_NULL: return ErroreNull(ctx);
    case SQLITE_INTEGER: return sqlite3_result_int64(ctx, sqlite3_value_int64(argv[0]));
    case SQLITE_FLOAT: return sqlite3_result_double(ctx, sqlite3_value_double(argv[0]));
    default: Protetto(ctx, [&] { sqlite3_result_double(ctx, Val(Testo(argv[0]))); });
    }
}

void FunzioneFormat(sqlite3_context* ctx, int argc, sqlite3_value** argv)
{
    if (sqlite3_value_type(argv[0]) == SQLITE_NULL)
        return sqlite3_result_null(ctx);
    const QString maschera = argc > 1 ? Testo(argv[1]) : QString();
    Protetto(ctx, [&] {
        QString risultato;
        if (maschera.isEmpty()) {
            risultato = Testo(argv[0]);
        } else {
            Decimale valore(0);
            switch (sqlite3_value_type(argv[0])) {
            case SQLITE_INTEGER: valore = Decimale(QString::number(sqlite3_value_int64(argv[0]))); break;
            case SQLITE_FLOAT: valore = Decimale::daDouble(sqlite3_value_double(argv[0])); break;
            default: valore = Decimale::daDouble(CDbl(Testo(argv[0]))); break;
            }
            risultato = Format(valore, maschera);
        }
        const QByteArray b = risultato.toUtf8();
        sqlite3_result_text(ctx, b.constData(), static_cast<int>(b.size()), SQLITE_TRANSIENT);
    });
}

void Mid(sqlite3_context* ctx, int argc, sqlite3_value** argv)
{
    if (sqlite3_value_type(argv[0]) == SQLITE_NULL)
        return sqlite3_result_null(ctx);
    const QString s = Testo(argv[0]);
    const qint64 inizio = sqlite3_value_int64(argv[1]);
    if (inizio < 1)
        return Errore(ctx, 5, QStringLiteral("Chiamata di routine o argomento non validi"));
    qint64 lunghezza = s.size();
    if (argc > 2) {
        lunghezza = sqlite3_value_int64(argv[2]);
        if (lunghezza < 0)
            return Errore(ctx, 5, QStringLiteral("Chiamata di routine o argomento non validi"));
    }
    const QByteArray b = s.mid(static_cast<qsizetype>(inizio - 1), static_cast<qsizetype>(lunghezza)).toUtf8();
    sqlite3_result_text(ctx, b.constData(), static_cast<int>(b.size()), SQLITE_TRANSIENT);
}

void Registra(sqlite3* db, const char* nome, int argomenti,
              void (*f)(sqlite3_context*, int, sqlite3_value**))
{
    sqlite3_create_function_v2(db, nome, argomenti, SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr, f,
                               nullptr, nullptr, nullptr);
}

}  // namespace

void RegistraFunzioniSql(sqlite3* db)
{
    if (!db)
        return;
    Registra(db, "CDBL", 1, Cdbl);
    Registra(db, "CSNG", 1, Csng);
    Registra(db, "VAL", 1, FunzioneVal);
    Registra(db, "FORMAT", 1, FunzioneFormat);
    Registra(db, "FORMAT", 2, FunzioneFormat);
    Registra(db, "MID", 2, Mid);
    Registra(db, "MID", 3, Mid);
}
