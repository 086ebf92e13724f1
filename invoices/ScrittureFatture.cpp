#include "invoices/ScrittureFatture.h"

#include "common/errore.h"
#include "common/numeri.h"
#include "invoices/ContiFatture.h"
#include "shell/session_state.h"
#include "store/database.h"

#include <QList>

std::optional<qint64> ScriviFattura(int modo, const CampiFattura& campi, qint64 idFattura, qint32 idDomanda)
{
    Database& db = Db();
    qint64 id = idFattura;
    if (modo == ModoFattura::Aggiorna || modo == ModoFattura::Cancella) {
        Recordset rs = db.OpenRecordset(QStringLiteral("SELECT id_fattura FROM fatture WHERE id_fattura = ?"),
                                        {idFattura});
        if (rs.eof()) {
            if (modo == ModoFattura::Aggiorna)
                return std::nullopt;
            throw ErroreSistema(CodiciErrore::NessunRecordCorrente);
        }
    }
    // La riga e i segni della domanda: tutti o nessuno.
    PuntoDiRipristino punto(db);
    if (modo == ModoFattura::Cancella) {
        db.Execute(QStringLiteral("DELETE FROM fatture WHERE id_fattura = ?"), {idFattura});
    } else {
        // Il prodotto si cerca prima di scrivere: senza prodotto la riga non
        // si scrive affatto.
        Recordset lav = db.OpenRecordset(
            QStringLiteral("SELECT ID_LAVORAZIONe FROM lavorazioni WHERE CODI_LAVO = ?"), {campi.Prodotto.left(3)});
        if (lav.eof())
            throw ErroreSistema(CodiciErrore::NessunRecordCorrente);
        const qint64 idLavorazione = lav.Fields(0).intero();
        const Campi riga = {
            {QStringLiteral("id_domanda"), idDomanda},
            {QStringLiteral("CODI_FISC"), campi.CODI_FISC.trimmed()},
            {QStringLiteral("DENOMINAZIONE"), campi.DENOMINAZIONE.trimmed()},
            {QStringLiteral("NUME_FATT"), campi.NUME_FATT.trimmed()},
            {QStringLiteral("DATA_FATT"), campi.DATA_FATT.trimmed()},
            {QStringLiteral("DATA_COMP"), campi.DATA_COMP.trimmed()},
            {QStringLiteral("DATA_PAGA"), campi.DATA_PAGA.trimmed()},
            {QStringLiteral("IMPO"), campi.IMPO.trimmed()},
            {QStringLiteral("IVA"), campi.IVA.trimmed()},
            {QStringLiteral("IMPO_TOTA"), campi.IMPO_TOTA.trimmed()},
            {QStringLiteral("GRAD"), campi.GRAD.trimmed()},
            {QStringLiteral("QTA_PROD"), campi.QTA_PROD.trimmed()},
            {QStringLiteral("QTA_LAVO"), campi.QTA_LAVO.trimmed()},
            {QStringLiteral("PREZ_MINI"), campi.PREZ_MINI.trimmed()},
            {QStringLiteral("ID_LAVORAZIONE"), idLavorazione},
            {QStringLiteral("FOGL"), QStringLiteral("0")},
            {QStringLiteral("RIGO"), QStringLiteral("0")},
        };
        if (modo == ModoFattura::Inserisci)
            id = db.InserisciRiga(QStringLiteral("FATTURE"), riga);
        else
            db.AggiornaRiga(QStringLiteral("FATTURE"), riga, QStringLiteral("WHERE id_fattura = ?"), {idFattura});
    }
    // Ogni cambiamento di una fattura toglie alla domanda la stampa e lo scarico.
    db.Execute(QStringLiteral("UPDATE DOMANDE SET STAM='N',SCAR='N' WHERE ID_DOMANDA = ?"), {idDomanda});
    punto.Conferma();
    return id;
}

void iMPO_RIGAFOGLIO(const QString& domanda, const QString& progressivo)
{
    Database& db = Db();
    QList<qint64> fatture;
    {
        Recordset rs = db.OpenRecordset(
            QStringLiteral("SELECT FATTURE.ID_FATTURA "
                           "FROM VARIETA INNER JOIN (LAVORAZIONI INNER JOIN (DOMANDE INNER JOIN FATTURE "
                           "ON DOMANDE.ID_DOMANDA = FATTURE.ID_DOMANDA) ON LAVORAZIONI.ID_LAVORAZIONE = "
                           "FATTURE.ID_LAVORAZIONE) "
                           "ON VARIETA.ID_VARIETA = DOMANDE.ID_VARIETA WHERE DOMANDE.DOMANDA = ? "
                           "AND DOMANDE.PROGRESSIVO = ? ORDER BY FATTURE.ID_FATTURA"),
            {domanda, progressivo});
        for (; !rs.eof(); rs.MoveNext())
            fatture << rs.Fields(0).intero();
    }
    int foglio = 1;
    int riga = 0;
    for (const qint64 id : fatture) {
        if (riga == 4) {
            ++foglio;
            riga = 0;
        }
        ++riga;
        db.Execute(QStringLiteral("UPDATE FATTURE SET FOGL = ?, RIGO = ? WHERE ID_FATTURA = ?"),
                   {QString::number(foglio), QString::number(riga), id});
    }
}

void EliminaAppoggioBolle()
{
    try {
        Db().Execute(QStringLiteral("DROP TABLE APPO_BOLLE"));
    } catch (const ErroreSistema&) {
        // Nessuna copia: niente da buttare.
    }
}

void CopiaBolleInAppoggio(qint64 idFattura)
{
    EliminaAppoggioBolle();
    Db().Execute(QStringLiteral("CREATE TABLE APPO_BOLLE AS SELECT * FROM BOLLE WHERE FK_ID_FATTURA = ?"),
                 {idFattura});
}

void RipristinaBolle(qint64 idFattura)
{
    Database& db = Db();
    db.Execute(QStringLiteral("DELETE FROM BOLLE WHERE FK_ID_FATTURA = ?"), {idFattura});
    db.Execute(QStringLiteral("INSERT INTO BOLLE SELECT * FROM APPO_BOLLE WHERE FK_ID_FATTURA = ?"), {idFattura});
    EliminaAppoggioBolle();
}

void AdottaBolleNuove(qint64 idFattura)
{
    Db().Execute(QStringLiteral("UPDATE bolle SET FK_ID_FATTURA = ? WHERE FK_ID_FATTURA = 0"), {idFattura});
}

void ScartaBolleNuove() { Db().Execute(QStringLiteral("DELETE FROM BOLLE WHERE FK_ID_FATTURA = 0")); }

bool PagamentoNelleBolle(qint64 idFattura)
{
    Recordset rs = Db().OpenRecordset(QStringLiteral("SELECT 1 FROM bolle WHERE (FK_ID_FATTURA = ? AND "
                                                     "(trim(DATA_PAGA) <> '')) OR (FK_ID_FATTURA = 0 AND "
                                                     "(trim(DATA_PAGA) <> ''))"),
                                      {idFattura});
    return !rs.eof();
}

double SommaBolle(qint64 idFattura, qint64 idBolla)
{
    QString sql = QStringLiteral("SELECT sum(cdbl(QUANTITA_PRODOTTO)) AS somma FROM bolle WHERE FK_ID_FATTURA = ?");
    QVariantList parametri{idFattura};
    if (idBolla != 0) {
        sql += QStringLiteral(" AND ID_BOLLA <> ?");
        parametri << idBolla;
    }
    Recordset rs = Db().OpenRecordset(sql, parametri);
    return rs.eof() ? 0.0 : rs.Fields(QStringLiteral("somma")).numero();
}

QString PrimaDataConsegna(qint64 idFattura)
{
    // Le date sono testo GG/MM/AAAA: il minimo si prende su AAAAMMGG.
    Recordset rs = Db().OpenRecordset(
        QStringLiteral("SELECT min(mid(DATA_CONSEGNA,7,4) || mid(DATA_CONSEGNA,4,2) || mid(DATA_CONSEGNA,1,2)) "
                       "AS mindata FROM bolle WHERE FK_ID_FATTURA = ?"),
        {idFattura});
    return rs.eof() ? QString() : DataDaMinimo(rs.Fields(QStringLiteral("mindata")).testo());
}

bool EliminaFattura(qint64 idFattura, qint32 idDomanda)
{
    Database& db = Db();
    // Prima la fattura, poi i segni della domanda, poi le bolle: tutto o niente.
    PuntoDiRipristino punto(db);
    if (db.Execute(QStringLiteral("DELETE FROM fatture WHERE id_fattura = ?"), {idFattura}) == 0)
        return false;
    db.Execute(QStringLiteral("UPDATE DOMANDE SET STAM='N',SCAR='N' WHERE ID_DOMANDA = ?"), {idDomanda});
    db.Execute(QStringLiteral("DELETE FROM BOLLE WHERE FK_ID_FATTURA = ?"), {idFattura});
    punto.Conferma();
    return true;
}

std::optional<QString> TotaleQuintali(qint32 idDomanda)
{
    Recordset rs = Db().OpenRecordset(
        QStringLiteral("SELECT DOMANDE.DOMANDA, Sum(CDBL(FATTURE.QTA_PROD)) AS Somma_QTAPROD "
                       " FROM DOMANDE, FATTURE "
                       "WHERE DOMANDE.ID_DOMANDA = FATTURE.ID_DOMANDA AND "
                       " DOMANDE.id_DOMANDA = ? GROUP BY DOMANDE.DOMANDA"),
        {idDomanda});
    if (rs.eof())
        return std::nullopt;
    const Valore somma = rs.Fields(QStringLiteral("Somma_QTAPROD"));
    const Decimale valore = somma.isNull() ? Decimale() : Decimale::daDouble(somma.numero());
    return Format(valore, QStringLiteral("##0.0000"));
}
