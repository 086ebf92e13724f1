// Strumento di compilazione: crea il database consegnato.
// Uso: crea_database <file.mdb> <schema.sql> <cartella dati>
#include "common/errore.h"
#include "store/database_consegnato.h"

#include <QCoreApplication>
#include <cstdio>

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const QStringList argomenti = app.arguments();
    if (argomenti.size() != 4) {
        std::fprintf(stderr, "uso: crea_database <file.mdb> <schema.sql> <cartella dati>\n");
        return 2;
    }
    try {
        CreaDatabaseConsegnato(argomenti[1], argomenti[2], argomenti[3]);
    } catch (const ErroreSistema& e) {
        std::fprintf(stderr, "crea_database: errore %d: %s\n", e.numero(), qPrintable(e.descrizione()));
        return 1;
    }
    return 0;
}
