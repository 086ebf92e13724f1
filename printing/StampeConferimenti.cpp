#include "printing/StampeConferimenti.h"

#include "common/errore.h"
#include "common/log_errori.h"
#include "common/piattaforma.h"
#include "common/testo.h"
#include "printing/MotoreReport.h"
#include "printing/TestoCampagna.h"
#include "shell/session_state.h"
#include "store/database.h"

#include <QDir>

namespace {

const QString EtichettaStampa = QStringLiteral("StampaDomandaProduttore");

// Le due query si scrivono come testo: una vista non ha parametri, il valore
// passa per ApiceSql. Tabelle e join sono quelli delle due stampe; i due
// CODI_FISC prendono il nome con la tabella davanti.
const QString DaJoin = QStringLiteral(
    "FROM DISTILLERIA, (DOMANDE_PRODUTTORI INNER JOIN TAB_UTF ON DOMANDE_PRODUTTORI.ID_DOMANDA_PRODUTTORE = "
    "TAB_UTF.iD_DOMANDA) "
    "INNER JOIN (PRODUTTORI INNER JOIN TAB_ID_UTF_PRODUTTORE ON PRODUTTORI.iD_PRODUTTORI = "
    "TAB_ID_UTF_PRODUTTORE.iD_PRODUTTORE) "
    "ON TAB_UTF.iD_UTF = TAB_ID_UTF_PRODUTTORE.iD_UTF ");

// Cancella la query memorizzata con quel nome, se c'è, e la ricrea.
bool RicreaQuery(const QString& nome, const QString& sql, const QString& etichetta)
{
    auto& s = sessione();
    const bool esito = true;
    try {
        for (const QString& q : Db().QueryDefs()) {
            if (q.compare(nome, Qt::CaseInsensitive) == 0) {
                Db().EliminaQuery(q);
                break;
            }
        }
        s.StrSql = sql;
        Db().CreaQuery(nome, s.StrSql);
    } catch (const ErroreSistema& e) {
        // L'esito resta vero: la stampa troverà la query com'è.
        ScriviLogErr(QString(), etichetta, e.numero(), e.descrizione());
    }
    return esito;
}

struct StampaConferimenti {
    QString query;
    QString report;
    bool formaUtf;
    QString nessunRecord;
};

// Il corpo comune delle due stampe; vero quando il report è andato.
bool Stampa(const RigaStampaConferimenti& riga, const StampaConferimenti& quale, const std::function<bool()>& creaQuery)
{
    if (riga.righeSelezionate == 0) {
        MsgBox(QStringLiteral("Selezionare una delle domande."), StileMsg::Informazione, riga.didascaliaMaschera);
        return false;
    }
    if (riga.righeSelezionate != 1) {
        MsgBox(QStringLiteral("Selezionare una domanda alla volta."), StileMsg::Informazione, riga.didascaliaMaschera);
        return false;
    }
    try {
        const QString campagna = TestoCampagna(riga.chiaveCampagna, quale.formaUtf);
        if (!creaQuery())
            return false;
        {
            Recordset rs = Db().OpenRecordset(QStringLiteral("SELECT * FROM ") + quale.query);
            if (rs.eof()) {
                MsgBox(quale.nessunRecord, StileMsg::Informazione, riga.didascaliaMaschera);
                return false;
            }
        }
        ControlloReport report;
        report.DataFiles = QStringList{Db().Name()};
        report.Connect = ConnessioneDb;
        report.ReportFileName = QDir(CartellaReport()).filePath(quale.report);
        report.Formulas[0] = QStringLiteral("CAMPAGNA = '") + campagna + QLatin1Char('\'');
        report.WindowTitle = riga.didascaliaMaschera;
        report.Action();
        return true;
    } catch (const ErroreSistema& e) {
        // Anche l'annullamento dell'utente finisce nel registro.
        ScriviLogErr(QString(), EtichettaStampa, e.numero(), e.descrizione());
    }
    return false;
}

}  // namespace

bool rsCreaQueryStampaProduttore(const QString& domanda)
{
    return RicreaQuery(
        QueryReportDomandaProduttore,
        QStringLiteral(
            "SELECT DOMANDE_PRODUTTORI.DOMANDA, DOMANDE_PRODUTTORI.ANTICIPO_RICEVUTO, DOMANDE_PRODUTTORI.TIPO_ARTICOLO, "
            "DISTILLERIA.RAGI_SOCI, DISTILLERIA.CODI_FISC AS \"DISTILLERIA.CODI_FISC\", "
            "TAB_UTF.NUMERO_CERTIFICATO_UTF, TAB_UTF.DATA_EMISSIONE_CERTIFICATO, TAB_UTF.SIGLA_UFFICIO_UTF_PROVINCIA, "
            "TAB_UTF.DESCR_UFFICIO_UTF_PROVINCIA, TAB_UTF.QTA_TOT_VINO_LAVORATO, TAB_UTF.QTA_TOT_ETTOGRADI_VINO_LAVORATO, "
            "TAB_UTF.QTA_TOT_ALCOLE_NEUTRO_OTTENUTO, TAB_UTF.QTA_TOT_ALCOLE_GREZZO_OTTENUTO, "
            "TAB_UTF.QTA_TOT_ACQUAVITE_OTTENUTO, "
            "PRODUTTORI.COMUNICAZIONE_CONTRATTO, PRODUTTORI.DENOMINAZIONE, "
            "PRODUTTORI.CODI_FISC AS \"PRODUTTORI.CODI_FISC\", PRODUTTORI.CODICE_CONTRATTO_DISTILLAZIONE, "
            "PRODUTTORI.QTA_MAX_DISTILLABILE, PRODUTTORI.QTA_ALCOLE_NEUTRO, PRODUTTORI.QTA_ALCOLE_GREZZO, "
            "PRODUTTORI.QTA_ACQUAVITE, PRODUTTORI.QTA_VINO_EFFETIVAMENTE_DISTILLATA, "
            "PRODUTTORI.QTA_VINO_DISTILLATA_AIUTO, PRODUTTORI.TITOLO_ALCOLOMETRICO_FATTURATO, PRODUTTORI.ETTOGRADI, "
            "PRODUTTORI.AIUTO_ALCOLE_NEUTRO, PRODUTTORI.AIUTO_ALCOLE_GREZZO, PRODUTTORI.AIUTO_ACQUAVITE, "
            "PRODUTTORI.IMPORTO_DETRAIBILE, PRODUTTORI.TOTALE_AIUTO, PRODUTTORI.APPROVAZIONE_ANTICIPATA, "
            "PRODUTTORI.PERC_APPROVAZIONE_ANTICIPATA, DOMANDE_PRODUTTORI.PROG_VERS ") +
            DaJoin + QStringLiteral("WHERE (((DOMANDE_PRODUTTORI.DOMANDA)='") + ApiceSql(domanda) +
            QStringLiteral("')) ORDER BY PRODUTTORI.CODI_FISC, PRODUTTORI.COMUNICAZIONE_CONTRATTO"),
        QStringLiteral("rsCreaQueryStampaProduttore"));
}

bool rsCreaQueryStampaUTF(const QString& domanda, const QString& certificato)
{
    return RicreaQuery(
        QueryReportUtf,
        QStringLiteral(
            "SELECT TAB_UTF.NUMERO_CERTIFICATO_UTF, TAB_UTF.DATA_EMISSIONE_CERTIFICATO, DOMANDE_PRODUTTORI.DOMANDA, "
            "DISTILLERIA.RAGI_SOCI, DISTILLERIA.CODI_FISC, TAB_UTF.DESCR_UFFICIO_UTF_PROVINCIA, "
            "TAB_UTF.SIGLA_UFFICIO_UTF_PROVINCIA, TAB_UTF.QTA_TOT_VINO_LAVORATO, TAB_UTF.QTA_TOT_ETTOGRADI_VINO_LAVORATO, "
            "TAB_UTF.QTA_TOT_ALCOLE_NEUTRO_OTTENUTO, TAB_UTF.QTA_TOT_ALCOLE_GREZZO_OTTENUTO, "
            "TAB_UTF.QTA_TOT_ACQUAVITE_OTTENUTO, PRODUTTORI.QTA_VINO_EFFETIVAMENTE_DISTILLATA, PRODUTTORI.ETTOGRADI, "
            "PRODUTTORI.QTA_ALCOLE_NEUTRO, PRODUTTORI.QTA_ALCOLE_GREZZO, PRODUTTORI.QTA_ACQUAVITE ") +
            DaJoin + QStringLiteral("WHERE (TAB_UTF.NUMERO_CERTIFICATO_UTF='") + ApiceSql(certificato) +
            QStringLiteral("') AND (DOMANDE_PRODUTTORI.DOMANDA='") + ApiceSql(domanda) + QStringLiteral("')"),
        QStringLiteral("rsCreaQueryStampaUTF"));
}

bool StampaDomandaProduttore(const RigaStampaConferimenti& riga)
{
    const StampaConferimenti quale{QueryReportDomandaProduttore, QStringLiteral("DomandaProduttoriUTF_PAGUnica.rpt"),
                                   false, QStringLiteral("Non ci sono record da stampare.")};
    if (!Stampa(riga, quale, [&] { return rsCreaQueryStampaProduttore(riga.domanda); }))
        return false;
    // Il segno di stampa, appena il report è tornato senza errori.
    try {
        const int toccate = Db().Execute(
            QStringLiteral("UPDATE DOMANDE_produttori SET stam =  'S' where ID_DOMANDA_PRODUTTORE = ?"),
            {riga.idDomandaProduttore.trimmed()});
        if (toccate != 0)
            return true;
        MsgBox(QStringLiteral("Flag di stampa non aggiornato , ripetere la stampa."), StileMsg::Informazione,
               sessione().TitoloMaschera);
    } catch (const ErroreSistema& e) {
        ScriviLogErr(QString(), EtichettaStampa, e.numero(), e.descrizione());
    }
    return false;
}

void StampaUTF(const RigaStampaConferimenti& riga)
{
    const StampaConferimenti quale{QueryReportUtf, QStringLiteral("utf.rpt"), true,
                                   QStringLiteral("Non ci sono record da stampare. ")};
    Stampa(riga, quale, [&] { return rsCreaQueryStampaUTF(riga.domanda, riga.certificato); });
}
