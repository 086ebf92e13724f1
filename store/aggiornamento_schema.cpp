#include "store/aggiornamento_schema.h"

#include "common/errore.h"
#include "store/database.h"

namespace {

DefinizioneCampo Testo(const QString& nome, int dimensione)
{
    return {nome, TipoCampo::Testo, dimensione, AttributoCampo::LunghezzaVariabile};
}

}  // namespace

bool CreaTabSetup(Database& db)
{
    // Ogni passo che fallisce viene saltato e si va al successivo.
    bool trovata = false;
    try {
        // Si cerca il nome intero: tab_setup non corrisponde, così la
        // sostituzione avviene una volta sola.
        for (const QString& nome : db.TableDefs()) {
            if (nome.toUpper() == QLatin1String("SETUP")) {
                trovata = true;
                break;
            }
        }
    } catch (const ErroreSistema&) {
    }
    if (!trovata)
        return false;

    try {
        db.EliminaTabella(QStringLiteral("SETUP"));
    } catch (const ErroreSistema&) {
    }
    try {
        db.CreaTabella(QStringLiteral("tab_setup"), {Testo(QStringLiteral("VERSIONE"), 5),
                                                     Testo(QStringLiteral("DATA_VERSIONE"), 10),
                                                     Testo(QStringLiteral("DESCRIZIONE"), 255)});
    } catch (const ErroreSistema&) {
    }
    return true;
}

void CreaTabFornitura(Database& db)
{
    try {
        db.EliminaTabella(QStringLiteral("TAB_Fornitura"));
    } catch (const ErroreSistema&) {
        // La tabella può non esserci.
    }
    db.CreaTabella(QStringLiteral("TAB_Fornitura"),
                   {{QStringLiteral("ID"), TipoCampo::Intero, 4, AttributoCampo::Contatore},
                    Testo(QStringLiteral("CAMPAGNA"), 4), Testo(QStringLiteral("NUMERO_DOMANDE"), 6),
                    Testo(QStringLiteral("NUMERO_FATTURE"), 6), Testo(QStringLiteral("DATA_FORNITURE"), 10),
                    Testo(QStringLiteral("PROGRESSIVO_FORNITURA"), 3)});
    db.CreaIndice(QStringLiteral("TAB_Fornitura"), QStringLiteral("PrimaryKey"), {QStringLiteral("ID")}, true,
                  true);
}
