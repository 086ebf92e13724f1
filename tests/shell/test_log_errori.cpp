// Registro degli errori: riga in LOGERR, messaggio all'utente, e fine del
// programma quando il registro stesso non si può scrivere.
#include "common/log_errori.h"
#include "shell/session_state.h"
#include "store/database.h"
#include "support/cartella_prova.h"

#include <QDate>
#include <QRegularExpression>
#include <gtest/gtest.h>

namespace {

struct RigaLog {
    QString SETTORE, DATA_APPL, ORA_APPL, DESC_APPL, CODI_ERRO, DESC_ERRO, FLAG_STAM;
};

QList<RigaLog> RigheLog(Database& db)
{
    QList<RigaLog> righe;
    for (Recordset rs = db.OpenRecordset(QStringLiteral("SELECT * FROM LOGERR")); !rs.eof(); rs.MoveNext()) {
        auto campo = [&](const char* nome) { return rs.Fields(QString::fromLatin1(nome)).testo(); };
        righe << RigaLog{campo("SETTORE"),   campo("DATA_APPL"), campo("ORA_APPL"), campo("DESC_APPL"),
                         campo("CODI_ERRO"), campo("DESC_ERRO"), campo("FLAG_STAM")};
    }
    return righe;
}

// Il messaggio di cinque righe, scritto per intero.
QString MessaggioAtteso(int numero, const QString& descrizione, const QString& etichetta)
{
    return QStringLiteral("Errore numero\t: %1\n\r\nDescrizione    \t: %2\n\r\nNome Eseguibile\t: test_shell\n\r\n"
                          "Nome Form\t: %3\n\r\nNome Funzione \t: %3")
        .arg(numero)
        .arg(descrizione, etichetta);
}

class LogErrori : public ProvaConDatabase {};

struct CasoLog {
    const char* caso;
    QString settore;
    QString etichetta;
    int numero;
    QString descrizione;
    // Come restano nella tabella.
    QString codiceMemorizzato;
    QString descrizioneMemorizzata;
    QString etichettaMemorizzata;
};

TEST_F(LogErrori, LaRigaPrecedeIlMessaggioEConservaITesti)
{
    const QList<CasoLog> casi = {
        {"numero a quattro cifre con lo zero davanti", QString(), QStringLiteral(" FrmSelezionaFatture CmdDATI_Click"),
         3021, QStringLiteral("Nessun record corrente."), QStringLiteral("03021"), QStringLiteral("Nessun record corrente."),
         QStringLiteral(" FrmSelezionaFatture CmdDATI_Click")},
        {"apostrofo nella descrizione e nell'etichetta", QString(), QStringLiteral("FrmDomanda.MetodiDOMANDA "), 3075,
         QStringLiteral("Errore di sintassi nell'espressione 'DOMANDA = 'L'ARCO''"), QStringLiteral("03075"),
         QStringLiteral("Errore di sintassi nell'espressione 'DOMANDA = 'L'ARCO''"),
         QStringLiteral("FrmDomanda.MetodiDOMANDA ")},
        {"numero piccolo", QStringLiteral("GE"), QStringLiteral("Keypress_Upper"), 94,
         QStringLiteral("Utilizzo non valido di Null"), QStringLiteral("00094"),
         QStringLiteral("Utilizzo non valido di Null"), QStringLiteral("Keypress_Upper")},
        {"numero oltre le cinque cifre", QString(), QStringLiteral("StampaDomandaProduttore"), 20545,
         QStringLiteral("Stampa annullata dall'utente."), QStringLiteral("20545"),
         QStringLiteral("Stampa annullata dall'utente."), QStringLiteral("StampaDomandaProduttore")},
        {"numero negativo", QStringLiteral("Md_FunzioniGenerali"), QStringLiteral("rfAssociaDeAssociaProduttore"),
         -2147467259, QStringLiteral("Errore non specificato"), QStringLiteral("-2147467259"),
         QStringLiteral("Errore non specificato"), QStringLiteral("rfAssociaDeAssociaProduttore")},
        // ApiceSql raddoppia anche i doppi apici, che dentro un testo tra
        // apici il motore non riduce: restano doppi nella tabella.
        {"doppi apici raddoppiati", QString(), QStringLiteral("frmCarico.CARICOTABELLE"), 13,
         QStringLiteral("Tipo \"A\" non corrispondente"), QStringLiteral("00013"),
         QStringLiteral("Tipo \"\"A\"\" non corrispondente"), QStringLiteral("frmCarico.CARICOTABELLE")},
    };

    db().Execute(QStringLiteral("DELETE FROM LOGERR"));
    const QString oggi = QDate::currentDate().toString(QStringLiteral("dd/MM/yyyy"));
    for (const CasoLog& c : casi) {
        SCOPED_TRACE(c.caso);
        script->messaggi.clear();
        int righeAlMessaggio = -1;
        bool clessidraAlMessaggio = false;
        script->alMessaggio = [&](const MessaggioRegistrato&) {
            righeAlMessaggio = static_cast<int>(RigheLog(db()).size());
            clessidraAlMessaggio = script->clessidra;
        };
        script->Rispondi(RispostaMsg::OK);
        const int righePrima = static_cast<int>(RigheLog(db()).size());

        ScriviLogErr(c.settore, c.etichetta, c.numero, c.descrizione);

        ASSERT_EQ(script->messaggi.size(), 1);
        EXPECT_EQ(script->messaggi[0].testo, MessaggioAtteso(c.numero, c.descrizione, c.etichetta));
        EXPECT_EQ(script->messaggi[0].stile, 48);
        EXPECT_EQ(script->messaggi[0].titolo, QStringLiteral("Gestione Errori"));
        EXPECT_EQ(righeAlMessaggio, righePrima + 1) << "la riga deve essere scritta prima del messaggio";
        EXPECT_TRUE(clessidraAlMessaggio);
        EXPECT_FALSE(script->clessidra);
        EXPECT_FALSE(script->terminato);

        const QList<RigaLog> righe = RigheLog(db());
        ASSERT_EQ(righe.size(), righePrima + 1);
        const RigaLog& r = righe.last();
        EXPECT_EQ(r.SETTORE, c.settore);
        EXPECT_EQ(r.DATA_APPL, oggi);
        EXPECT_TRUE(QRegularExpression(QStringLiteral("^\\d\\d:\\d\\d:\\d\\d$")).match(r.ORA_APPL).hasMatch())
            << r.ORA_APPL.toStdString();
        EXPECT_EQ(r.DESC_APPL, c.etichettaMemorizzata);
        EXPECT_EQ(r.CODI_ERRO, c.codiceMemorizzato);
        EXPECT_EQ(r.DESC_ERRO, c.descrizioneMemorizzata);
        EXPECT_EQ(r.FLAG_STAM, QStringLiteral("N"));
    }
    // L'istruzione resta nel testo di lavoro della sessione.
    EXPECT_TRUE(sessione().StrSql.startsWith(QStringLiteral("INSERT INTO LOGERR  (SETTORE, DATA_APPL,")))
        << sessione().StrSql.toStdString();
}

TEST_F(LogErrori, ConnessioneChiusaMostraLAnomaliaBloccanteETermina)
{
    // Tra il controllo di versione e il menu la connessione non c'è.
    db();
    sessione().DbDistilleria->Close();
    script->Rispondi(RispostaMsg::OK);

    EXPECT_THROW(ScriviLogErr(QString(), QStringLiteral("frmInizializza Form_Load"), 3021,
                              QStringLiteral("Nessun record corrente.")),
                 ProcessoTerminato);

    ASSERT_EQ(script->messaggi.size(), 1);
    // Si vedono numero e descrizione ricevuti, non quelli del guasto del registro.
    EXPECT_EQ(script->messaggi[0].testo,
              QStringLiteral("SI E' VERIFICATA UNA ANOMALIA BLOCCANTE:\r\rERRORE NUMERO - 3021\r\r"
                             "DESCRIZIONE - Nessun record corrente.\r\rSETTORE - frmInizializza Form_Load\r\r"
                             "appuntarsi il tipo di errore e contattare il servizio tecnico."));
    EXPECT_EQ(script->messaggi[0].stile, 16);
    EXPECT_EQ(script->messaggi[0].titolo, QStringLiteral("Consultare il servizio tecnico"));
    EXPECT_TRUE(script->terminato);
    EXPECT_FALSE(script->clessidra);

    sessione().DbDistilleria.reset();
    EXPECT_TRUE(RigheLog(db()).isEmpty());
}

}  // namespace
