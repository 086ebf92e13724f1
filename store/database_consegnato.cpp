#include "store/database_consegnato.h"

#include "common/errore.h"
#include "shell/session_state.h"
#include "store/database.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

QString LeggiFile(const QString& percorso)
{
    QFile f(percorso);
    if (!f.open(QIODevice::ReadOnly))
        throw ErroreSistema(CodiciErrore::FileNonTrovato,
                            QStringLiteral("Impossibile trovare il file '%1'.").arg(percorso));
    return QString::fromUtf8(f.readAll());
}

// Carica un CSV nella tabella omonima: le colonne sono quelle dell'intestazione.
void CaricaTabella(Database& db, const QString& tabella, const QString& file)
{
    const QList<QStringList> righe = LeggiCsv(LeggiFile(file));
    if (righe.isEmpty())
        return;
    const QStringList& colonne = righe.first();
    for (qsizetype r = 1; r < righe.size(); ++r) {
        const QStringList& riga = righe[r];
        if (riga.size() != colonne.size())
            throw ErroreSistema(CodiciErrore::TipoNonCorrispondente,
                                QStringLiteral("%1, riga %2: attese %3 colonne, trovate %4.")
                                    .arg(QFileInfo(file).fileName()).arg(r + 1).arg(colonne.size()).arg(riga.size()));
        Campi campi;
        for (qsizetype c = 0; c < colonne.size(); ++c)
            campi << qMakePair(colonne[c], QVariant(riga[c]));
        db.InserisciRiga(tabella, campi);
    }
}

}  // namespace

QStringList IstruzioniSchema(const QString& testo)
{
    QStringList istruzioni;
    QString corrente;
    for (const QString& riga : testo.split(QLatin1Char('\n'))) {
        if (riga.trimmed() == QLatin1String(";;")) {
            if (!corrente.trimmed().isEmpty())
                istruzioni << corrente.trimmed();
            corrente.clear();
        } else if (!riga.trimmed().startsWith(QLatin1String("--"))) {
            corrente += riga + QLatin1Char('\n');
        }
    }
    if (!corrente.trimmed().isEmpty())
        istruzioni << corrente.trimmed();
    return istruzioni;
}

QList<QStringList> LeggiCsv(const QString& testo)
{
    QList<QStringList> righe;
    QStringList riga;
    QString campo;
    bool traVirgolette = false;
    bool rigaIniziata = false;
    for (qsizetype i = 0; i < testo.size(); ++i) {
        const QChar c = testo[i];
        if (traVirgolette) {
            if (c == QLatin1Char('"')) {
                if (i + 1 < testo.size() && testo[i + 1] == QLatin1Char('"')) {
                    campo += QLatin1Char('"');
                    ++i;
                } else {
                    traVirgolette = false;
                }
            } else {
                campo += c;
            }
            continue;
        }
        if (c == QLatin1Char('"') && campo.isEmpty()) {
            traVirgolette = rigaIniziata = true;
        } else if (c == QLatin1Char(';')) {
            riga << campo;
            campo.clear();
            rigaIniziata = true;
        } else if (c == QLatin1Char('\n')) {
            if (rigaIniziata || !campo.isEmpty()) {
                riga << campo;
                righe << riga;
            }
            riga.clear();
            campo.clear();
            rigaIniziata = false;
        } else if (c != QLatin1Char('\r')) {
            campo += c;
            rigaIniziata = true;
        }
    }
    if (rigaIniziata || !campo.isEmpty()) {
        riga << campo;
        righe << riga;
    }
    return righe;
}

void CreaDatabaseConsegnato(const QString& percorso, const QString& fileSchema, const QString& cartellaDati)
{
    if (QFileInfo::exists(percorso))
        throw ErroreSistema(3010, QStringLiteral("Il file '%1' esiste già.").arg(percorso));
    QDir().mkpath(QFileInfo(percorso).absolutePath());
    auto db = Database::Crea(percorso, PasswordDb);
    const QDir dati(cartellaDati);
    db->IniziaTransazione();
    for (const QString& istruzione : IstruzioniSchema(LeggiFile(fileSchema)))
        db->Execute(istruzione);
    CaricaTabella(*db, QStringLiteral("TAB_PROVINCIE"), dati.filePath(QStringLiteral("province.csv")));
    CaricaTabella(*db, QStringLiteral("VARIETA"), dati.filePath(QStringLiteral("varieta.csv")));
    CaricaTabella(*db, QStringLiteral("LAVORAZIONI"), dati.filePath(QStringLiteral("lavorazioni.csv")));
    CaricaTabella(*db, QStringLiteral("TAB_COLORE"), dati.filePath(QStringLiteral("colori.csv")));
    CaricaTabella(*db, QStringLiteral("help"), dati.filePath(QStringLiteral("help.csv")));
    for (int anno = 2001; anno <= 2005; ++anno)
        db->Execute(QStringLiteral("INSERT INTO CAMPAGNA (ANNUALITA) VALUES (?)"), {anno});
    for (const char* articolo : {"29", "30"})
        db->Execute(QStringLiteral("INSERT INTO TIPO_ARTICOLO_DOMANDA (TIPO_ARTICOLO) VALUES (?)"),
                    {QString::fromLatin1(articolo)});
    db->Execute(QStringLiteral("INSERT INTO PROG_DSK (PROG) VALUES (0)"));
    db->Execute(QStringLiteral("INSERT INTO tab_setup (VERSIONE, DATA_VERSIONE, DESCRIZIONE) VALUES (?, ?, ?)"),
                {VersioneProgramma(), DataVersioneSchema, DescrizioneSetup});
    db->ConfermaTransazione();
    db->Close();
}
