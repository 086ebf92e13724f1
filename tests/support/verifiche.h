#pragma once
// Aiuti comuni dei test: messaggi registrati confrontati per intero, righe di
// una lettura come testo, testi Qt leggibili nei fallimenti.

#include "common/errore.h"
#include "support/piattaforma_script.h"

#include <QStringList>
#include <QVariantList>
#include <ostream>

class Database;

using Messaggi = QList<MessaggioRegistrato>;
bool operator==(const MessaggioRegistrato& a, const MessaggioRegistrato& b);
void PrintTo(const MessaggioRegistrato& m, std::ostream* os);
void PrintTo(const QString& s, std::ostream* os);

// Il messaggio di ScriviLogErr, con le sue cinque righe.
QString MessaggioLogErr(int numero, const QString& descrizione, const QString& etichetta);

// Ogni riga della lettura con i campi uniti da "|" (un Null è vuoto).
QStringList Righe(Database& db, const QString& sql, const QVariantList& parametri = {});
// Lo stesso con una connessione propria sul file, chiusa subito dopo.
QStringList RigheDelFile(const QString& percorso, const QString& sql);

// Numero e descrizione dell'ErroreSistema sollevato da f ("13 Tipo non
// corrispondente"), vuoto se f non ne solleva; o il solo numero, 0 se non ne solleva.
template <typename F>
QString ErroreDi(F&& f)
{
    try {
        f();
    } catch (const ErroreSistema& e) {
        return QString::number(e.numero()) + QLatin1Char(' ') + e.descrizione();
    }
    return QString();
}
template <typename F>
int NumeroErrore(F&& f)
{
    return ErroreDi(f).section(QLatin1Char(' '), 0, 0).toInt();
}
