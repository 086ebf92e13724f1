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

namespace {

// Il testo che resta memorizzato da un letterale '...' costruito con
// ApiceSql: gli apici raddoppiati tornano singoli, le virgolette raddoppiate
// restano doppie (dentro gli apici il motore non le riduce).
QString ComeDaLetterale(const QString& testo)
{
    return ApiceSql(testo).replace(QLatin1String("''"), QLatin1String("'"));
}

QString NomeEseguibile()
{
    return QFileInfo(QCoreApplication::applicationFilePath()).completeBaseName();
}

}  // namespace

QString NumeroErroreCinqueCifre(int numero)
{
    const qint64 n = numero;
    const QString cifre = QString::number(n < 0 ? -n : n).rightJustified(5, QLatin1Char('0'));
    return n < 0 ? QLatin1Char('-') + cifre : cifre;
}

void ScriviLogErr(const QString& settore, const QString& etichetta, int numero, const QString& descrizione)
{
    try {
        // L'istruzione resta in StrSql, come nel resto del sistema.
        sessione().StrSql = QStringLiteral("INSERT INTO LOGERR ") + QStringLiteral(" (SETTORE,") +
                            QStringLiteral(" DATA_APPL,") + QStringLiteral(" ORA_APPL,") +
                            QStringLiteral(" DESC_APPL,") + QStringLiteral(" CODI_ERRO,") +
                            QStringLiteral(" DESC_ERRO,") + QStringLiteral(" FLAG_STAM)") +
                            QStringLiteral(" VALUES ") + QStringLiteral("(?, ?, ?, ?, ?, ?,'N');");
        Db().Execute(sessione().StrSql,
                     {settore, QDate::currentDate().toString(QStringLiteral("dd/MM/yyyy")),
                      QTime::currentTime().toString(QStringLiteral("HH:mm:ss")), ComeDaLetterale(etichetta),
                      NumeroErroreCinqueCifre(numero), ComeDaLetterale(descrizione)});

        Clessidra(true);
        const QString aCapo = QStringLiteral("\n\r\n");
        const QString messaggio =
            QStringLiteral("Errore numero") + QLatin1Char('\t') + QStringLiteral(": ") + QString::number(numero) +
            aCapo + QStringLiteral("Descrizione    ") + QLatin1Char('\t') + QStringLiteral(": ") + descrizione +
            aCapo + QStringLiteral("Nome Eseguibile") + QLatin1Char('\t') + QStringLiteral(": ") + NomeEseguibile() +
            aCapo + QStringLiteral("Nome Form") + QLatin1Char('\t') + QStringLiteral(": ") + etichetta + aCapo +
            QStringLiteral("Nome Funzione ") + QLatin1Char('\t') + QStringLiteral(": ") + etichetta;
        MsgBox(messaggio, StileMsg::Esclamativo, QStringLiteral("Gestione Errori"));
        Clessidra(false);
    } catch (const ErroreSistema&) {
        // Il registro stesso non si scrive: si mostrano i dati ricevuti, non
        // quelli di quest'ultimo guasto, e il programma termina.
        const QString dueRitorni = QStringLiteral("\r\r");
        MsgBox(QStringLiteral("SI E' VERIFICATA UNA ANOMALIA BLOCCANTE:") + dueRitorni +
                   QStringLiteral("ERRORE NUMERO - ") + QString::number(numero) + dueRitorni +
                   QStringLiteral("DESCRIZIONE - ") + descrizione + dueRitorni + QStringLiteral("SETTORE - ") +
                   etichetta + dueRitorni +
                   QStringLiteral("appuntarsi il tipo di errore e contattare il servizio tecnico."),
               StileMsg::Critico, QStringLiteral("Consultare il servizio tecnico"));
        Clessidra(false);
        TerminaProcesso();
    }
}
