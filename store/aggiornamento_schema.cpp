#include "store/aggiornamento_schema.h"

#include "common/errore.h"
#include "common/log_errori.h"
#include "shell/session_state.h"
#include "store/database.h"
#include "store/database_consegnato.h"
#include "store/schema_incorporato.h"

#include <QRegularExpression>

namespace {

// Esegue un passo ignorandone gli errori.
template <typename F>
void IgnoraErrori(F&& passo)
{
    try {
        passo();
    } catch (const ErroreSistema&) {
    }
}

DefinizioneCampo Testo(const QString& nome, int dimensione)
{
    return {nome, TipoCampo::Testo, dimensione, AttributoCampo::LunghezzaVariabile};
}

}  // namespace

bool CreaTabSetup(Database& db)
{
    bool trovata = false;
    IgnoraErrori([&] {
        const QStringList tabelle = db.TableDefs();
        for (sessione().IndiceCiclo = 0; sessione().IndiceCiclo < tabelle.size(); ++sessione().IndiceCiclo) {
            if (tabelle[sessione().IndiceCiclo].toUpper() == QLatin1String("SETUP")) {
                trovata = true;
                break;
            }
        }
    });
    if (!trovata)
        return false;
    IgnoraErrori([&] { db.EliminaTabella(QStringLiteral("SETUP")); });
    IgnoraErrori([&] {
        db.CreaTabella(QStringLiteral("tab_setup"), {Testo(QStringLiteral("VERSIONE"), 5),
                                                     Testo(QStringLiteral("DATA_VERSIONE"), 10),
                                                     Testo(QStringLiteral("DESCRIZIONE"), 255)});
    });
    return true;
}

void CreaTabFornitura(Database& db)
{
    IgnoraErrori([&] { db.EliminaTabella(QStringLiteral("TAB_Fornitura")); });
    db.CreaTabella(QStringLiteral("TAB_Fornitura"),
                   {{QStringLiteral("ID"), TipoCampo::Intero, 4, AttributoCampo::Contatore},
                    Testo(QStringLiteral("CAMPAGNA"), 4),
                    Testo(QStringLiteral("NUMERO_DOMANDE"), 6),
                    Testo(QStringLiteral("NUMERO_FATTURE"), 6),
                    Testo(QStringLiteral("DATA_FORNITURE"), 10),
                    Testo(QStringLiteral("PROGRESSIVO_FORNITURA"), 3)});
    db.CreaIndice(QStringLiteral("TAB_Fornitura"), QStringLiteral("PrimaryKey"), {QStringLiteral("ID")}, true, true);
}

void CREA_TAB_CAMPAGNA(Database& db, const QStringList& anni)
{
    try {
        IgnoraErrori([&] { db.EliminaTabella(QStringLiteral("CAMPAGNA")); });
        db.CreaTabella(QStringLiteral("CAMPAGNA"),
                       {{QStringLiteral("ANNUALITA"), TipoCampo::Intero, 4, AttributoCampo::LunghezzaVariabile}});
        // Il ciclo si ferma un elemento prima del limite superiore.
        for (qsizetype i = 0; i + 1 < anni.size(); ++i)
            db.Execute(QStringLiteral("insert into CAMPAGNA(ANNUALITA) values(?)"), {anni[i]});
    } catch (const ErroreSistema& e) {
        ScriviLogErr(QString(), QStringLiteral("CREA_TAB_CAMPAGNA"), e.numero(), e.descrizione());
    }
}

void AggiornaVisteConsegnate(Database& db)
{
    static const QRegularExpression nomeVista(QStringLiteral(R"(^CREATE\s+VIEW\s+(\w+)\s)"),
                                              QRegularExpression::CaseInsensitiveOption);
    for (const QString& istruzione : IstruzioniSchema(QString::fromUtf8(SchemaIncorporato))) {
        const QRegularExpressionMatch m = nomeVista.match(istruzione);
        if (!m.hasMatch())
            continue;
        const QString nome = m.captured(1);
        try {
            Recordset rs = db.OpenRecordset(
                QStringLiteral("SELECT sql FROM sqlite_master WHERE type = 'view' AND name = ? COLLATE NOCASE"), {nome});
            if (!rs.eof() && rs.Fields(QStringLiteral("sql")).testo().trimmed() == istruzione)
                continue;
            db.Execute(QStringLiteral("DROP VIEW IF EXISTS \"%1\"").arg(nome));
            db.Execute(istruzione);
        } catch (const ErroreSistema& e) {
            ScriviLogErr(QString(), QStringLiteral("AggiornaVisteConsegnate"), e.numero(), e.descrizione());
        }
    }
}
