#include "printing/StampeFatture.h"

#include "common/errore.h"
#include "common/log_errori.h"
#include "common/numeri.h"
#include "common/piattaforma.h"
#include "common/testo.h"
#include "printing/MotoreReport.h"
#include "printing/TestoCampagna.h"
#include "shell/LeggiDistilleria.h"
#include "shell/session_state.h"
#include "store/database.h"

#include <QCoreApplication>
#include <QDir>
#include <functional>

namespace {

const QString EtichettaStampa = QStringLiteral("FrmSelezioneLOAD Stampa");
const QString EtichettaBolle = QStringLiteral("FrmMenu Stampa Bolle");
const QString Annullata = QStringLiteral("Stampa annullata dall'utente.");
const QString Riuscita = QStringLiteral("Stampa effettuata con successo.");

QString FileReport(const QString& nome) { return QDir(CartellaReport()).filePath(nome); }

// Una somma del totale: Null, vuota o di valore zero va nella formula vuota.
QString SommaPerFormula(const Recordset& rs, const QString& campo)
{
    const QString t = rs.Fields(campo).testo().trimmed();
    if (t.isEmpty() || (IsNumeric(t) && CDbl(t) == 0))
        return QString();
    return t;
}

// Totale delle quantità distillate: con una riga e un valore sopra zero,
// altrimenti 0; stampato a quattro decimali.
QString TotaleDistillato(const QString& sql, const QString& campo, const QString& idDomanda)
{
    double totale = 0;
    Recordset rs = Db().OpenRecordset(sql, {idDomanda.trimmed()});
    if (!rs.eof() && rs.Fields(campo).numero() > 0)
        totale = rs.Fields(campo).numero();
    return Format(Decimale::daDouble(totale), QStringLiteral("#0.0000"));
}

// Le due stampe delle bolle: le formule 1, 2, 3 sono comuni, il resto lo
// aggiunge chi chiama. Esito come in STAMPA, con l'etichetta delle bolle.
void StampaBolle(const QString& chiaveCampagna, const std::function<void(ControlloReport&)>& completa,
                 bool messaggioRiuscita)
{
    auto& s = sessione();
    Clessidra(true);
    QCoreApplication::processEvents();
    try {
        LeggiDistilleria();
        const QString campagna = TestoCampagna(chiaveCampagna);
        ControlloReport report;
        report.ReportFileName = FileReport(QStringLiteral("Rpt_Bolle.rpt"));
        report.Connect = QStringLiteral("PWD=") + PasswordDb + QLatin1Char(';');
        report.DataFiles = QStringList{Db().Name()};
        report.Formulas[1] = QStringLiteral("CAMPAGNA = '") + campagna + QLatin1Char('\'');
        report.Formulas[2] =
            QStringLiteral("DISTI_CF_PIVA = '") + SostituisciApici(s.DistilleriaDati.CODI_FISC.trimmed()) + QLatin1Char('\'');
        report.Formulas[3] =
            QStringLiteral("DISTILLERIA = '") + SostituisciApici(s.DistilleriaDati.RAGI_SOCI.trimmed()) + QLatin1Char('\'');
        completa(report);
        report.Action();
        if (messaggioRiuscita)
            MsgBox(Riuscita, StileMsg::Informazione, s.TitoloMaschera);
    } catch (const ErroreSistema& e) {
        if (e.numero() == CodiciErrore::StampaAnnullata)
            MsgBox(Annullata, StileMsg::Informazione, s.TitoloMaschera);
        else
            ScriviLogErr(QString(), EtichettaBolle, e.numero(), e.descrizione());
    }
    Clessidra(false);
}

}  // namespace

bool STAMPA(const QString& chiaveCampagna)
{
    auto& s = sessione();
    bool esito = false;
    Clessidra(true);
    QCoreApplication::processEvents();
    try {
        LeggiDistilleria();
        // Le quantità si sommano scalate a interi e si riportano a quattro
        // decimali; gli importi passano per la doppia precisione.
        s.StrSql = QStringLiteral(
            "SELECT DOMANDE.DOMANDA, format(Sum(CDBL(FATTURE.QTA_PROD)*10000)/10000,'#0.0000') AS Somma_QTAPROD, "
            " format(Sum(CDBL(FATTURE.IMPO)),'#0.00') AS Somma_IMPO, format(Sum(CDBL(FATTURE.IVA)),'#0.00') AS Somma_IVA,"
            " format(Sum(CDBL(FATTURE.IMPO_TOTA)),'#0.00') AS Somma_IMPOTOTA, "
            "format(Sum(CDBL(FATTURE.QTA_LAVO)*10000)/10000,'#0.0000') AS Somma_QTALAVO "
            "FROM DOMANDE, FATTURE "
            "WHERE DOMANDE.ID_DOMANDA = FATTURE.ID_DOMANDA AND "
            " DOMANDE.id_DOMANDA = ? GROUP BY DOMANDE.DOMANDA");
        Recordset totali = Db().OpenRecordset(s.StrSql, {s.DomandaSel.ID_DOMANDA});
        const QString campagna = TestoCampagna(chiaveCampagna);

        ControlloReport report;
        report.DataFiles = QStringList{Db().Name()};
        report.ReportFileName = FileReport(QStringLiteral("Rpt_distillerie_ElenchiFatture.rpt"));
        report.SelectionFormula = QStringLiteral("{Queryreport.DOMANDA} =  '") + s.DomandaSel.DOMANDA.trimmed() +
                                  QStringLiteral("' AND  {Queryreport.PROGRESSIVO} =  '") +
                                  s.DomandaSel.PROGRESSIVO.trimmed() + QStringLiteral("' ");
        const QString ragione = s.DistilleriaDati.RAGI_SOCI.trimmed();
        // Un nome con l'apostrofo va fra doppi apici.
        const QChar apice = ragione.contains(QLatin1Char('\'')) ? QLatin1Char('"') : QLatin1Char('\'');
        report.Formulas[1] = QStringLiteral("CAMPAGNA = '") + campagna + QLatin1Char('\'');
        report.Formulas[2] = QStringLiteral("DISTI_CF_PIVA = '") + s.DistilleriaDati.CODI_FISC.trimmed() + QLatin1Char('\'');
        report.Formulas[3] = QStringLiteral("DISTILLERIA = ") + apice + ragione + apice;
        // Senza fatture non c'è la riga dei totali: la lettura dei campi fallisce.
        report.Formulas[4] = QStringLiteral("SOMMA_IVAS = '") + SommaPerFormula(totali, QStringLiteral("SOMMA_IVA")) + QLatin1Char('\'');
        report.Formulas[5] = QStringLiteral("SOMMA_IMPO = '") + SommaPerFormula(totali, QStringLiteral("SOMMA_IMPO")) + QLatin1Char('\'');
        report.Formulas[6] =
            QStringLiteral("SOMMA_IMPOTOTA = '") + SommaPerFormula(totali, QStringLiteral("SOMMA_IMPOTOTA")) + QLatin1Char('\'');
        report.Formulas[7] =
            QStringLiteral("SOMMA_QTALAV = '") + SommaPerFormula(totali, QStringLiteral("SOMMA_QTALAVO")) + QLatin1Char('\'');
        report.Formulas[8] =
            QStringLiteral("SOMMA_QTAPROD = '") + SommaPerFormula(totali, QStringLiteral("SOMMA_QTAPROD")) + QLatin1Char('\'');
        totali.Close();
        report.Action();
        MsgBox(Riuscita, StileMsg::Informazione, s.TitoloMaschera);
        esito = true;
    } catch (const ErroreSistema& e) {
        if (e.numero() == CodiciErrore::StampaAnnullata)
            MsgBox(Annullata, StileMsg::Informazione, s.TitoloMaschera);
        else
            ScriviLogErr(QString(), EtichettaStampa, e.numero(), e.descrizione());
    }
    Clessidra(false);
    return esito;
}

void StampaBolleDomanda(const QString& idDomanda, const QString& domanda, const QString& progressivo,
                        const QString& chiaveCampagna)
{
    StampaBolle(
        chiaveCampagna,
        [&](ControlloReport& report) {
            const QString totB = TotaleDistillato(
                QStringLiteral("select sum(cdbl(QUANTITA_PRODOTTO)) as TotB from BOLLE where FK_ID_FATTURA in"
                               "(select ID_FATTURA from fatture where id_domanda = ?)"),
                QStringLiteral("TotB"), idDomanda);
            const QString totF = TotaleDistillato(
                QStringLiteral("select sum(cdbl(QTA_LAVO)) as TotF from FATTURE where ID_DOMANDA = ?"),
                QStringLiteral("TotF"), idDomanda);
            report.SelectionFormula = QStringLiteral("{Queryreport_bolle.DOMANDA} =  '") + domanda.trimmed() +
                                      QStringLiteral("' AND  {Queryreport_bolle.PROGRESSIVO} =  '") +
                                      progressivo.trimmed() + QStringLiteral("' ");
            report.Formulas[4] = QStringLiteral("TOT_DISTILLATO_FATTURE = '") + totF + QLatin1Char('\'');
            report.Formulas[5] = QStringLiteral("TOT_DISTILLATO_BOLLE = '") + totB + QLatin1Char('\'');
        },
        true);
}

void StampaBolleMenu()
{
    // Tutte le righe della query, nessun totale e nessun messaggio di riuscita.
    StampaBolle(sessione().CampagnaCorrente, [](ControlloReport&) {}, false);
}
