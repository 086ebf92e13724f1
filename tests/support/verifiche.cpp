#include "support/verifiche.h"

#include "shell/session_state.h"
#include "store/database.h"

#include <QCoreApplication>

bool operator==(const MessaggioRegistrato& a, const MessaggioRegistrato& b)
{
    return a.testo == b.testo && a.stile == b.stile && a.titolo == b.titolo;
}

void PrintTo(const MessaggioRegistrato& m, std::ostream* os)
{
    *os << "{\"" << m.testo.toStdString() << "\", " << m.stile << ", \"" << m.titolo.toStdString() << "\"}";
}

void PrintTo(const QString& s, std::ostream* os) { *os << '"' << s.toStdString() << '"'; }

QString MessaggioLogErr(int numero, const QString& descrizione, const QString& etichetta)
{
    return QStringLiteral("Errore numero\t: %1\n\r\nDescrizione    \t: %2\n\r\nNome Eseguibile\t: %3\n\r\n"
                          "Nome Form\t: %4\n\r\nNome Funzione \t: %4")
        .arg(numero)
        .arg(descrizione, QCoreApplication::applicationName(), etichetta);
}

QStringList Righe(Database& db, const QString& sql, const QVariantList& parametri)
{
    QStringList righe;
    for (Recordset rs = db.OpenRecordset(sql, parametri); !rs.eof(); rs.MoveNext()) {
        QStringList campi;
        for (int i = 0; i < rs.NumeroCampi(); ++i)
            campi << rs.Fields(i).testo();
        righe << campi.join(QLatin1Char('|'));
    }
    return righe;
}

QStringList RigheDelFile(const QString& percorso, const QString& sql)
{
    auto db = Database::Apri(percorso, false, ConnessioneDb);
    QStringList righe = Righe(*db, sql);
    db->Close();
    return righe;
}
