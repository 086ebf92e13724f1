#include "common/log_errori.h"

#include "common/errore.h"
#include "common/piattaforma.h"
#include "common/testo.h"
#include "shell/session_state.h"
#include "store/database.h"

#include <QCoreApplication>
#include <QDate>
#include <QFileInfo>
#include <QTime>

void ScriviLogErr(const QString& settore, const QString& etichetta, int numero, const QString& descrizione)
{
    try {
        const QString data = QDate::currentDate().toString(QStringLiteral("dd/MM/yyyy"));
        const QString ora = QTime::currentTime().toString(QStringLiteral("HH:mm:ss"));
        const QString codice = QStringLiteral("%1").arg(numero, 5, 10, QLatin1Char('0'));
        // Il testo dell'istruzione resta in StrSql come nel programma
        // originale; i valori viaggiano comunque come parametri.
        sessione().StrSql = QStringLiteral("INSERT INTO LOGERR  (SETTORE, DATA_APPL, ORA_APPL, DESC_APPL,"
                                           " CODI_ERRO, DESC_ERRO, FLAG_STAM) VALUES ('")
                            + settore + QStringLiteral("', '") + data + QStringLiteral("', '") + ora
                            + QStringLiteral("', '") + ApiceSql(etichetta) + QStringLiteral("', '") + codice
                            + QStringLiteral("', '") + ApiceSql(descrizione) + QStringLiteral("','N');");
        Db().Execute(QStringLiteral("INSERT INTO LOGERR (SETTORE, DATA_APPL, ORA_APPL, DESC_APPL, CODI_ERRO,"
                                    " DESC_ERRO, FLAG_STAM) VALUES (?, ?, ?, ?, ?, ?, 'N')"),
                     {settore, data, ora, etichetta, codice, descrizione});
        Clessidra(true);
        const QString aCapo = QStringLiteral("\n\r\n");
        const QString eseguibile = QFileInfo(QCoreApplication::applicationFilePath()).completeBaseName();
        const QString messaggio = QStringLiteral("Errore numero\t: ") + QString::number(numero) + aCapo
                                  + QStringLiteral("Descrizione    \t: ") + descrizione + aCapo
                                  + QStringLiteral("Nome Eseguibile\t: ") + eseguibile + aCapo
                                  + QStringLiteral("Nome Form\t: ") + etichetta + aCapo
                                  + QStringLiteral("Nome Funzione \t: ") + etichetta;
        MsgBox(messaggio, StileMsg::Esclamativo, QStringLiteral("Gestione Errori"));
        Clessidra(false);
    } catch (const ErroreSistema&) {
        const QString dueRitorni = QStringLiteral("\r\r");
        MsgBox(QStringLiteral("SI E' VERIFICATA UNA ANOMALIA BLOCCANTE:") + dueRitorni
                   + QStringLiteral("ERRORE NUMERO - ") + QString::number(numero) + dueRitorni
                   + QStringLiteral("DESCRIZIONE - ") + descrizione + dueRitorni + QStringLiteral("SETTORE - ")
                   + etichetta + dueRitorni
                   + QStringLiteral("appuntarsi il tipo di errore e contattare il servizio tecnico."),
               StileMsg::Critico, QStringLiteral("Consultare il servizio tecnico"));
        Clessidra(false);
        TerminaProcesso();
    }
}
