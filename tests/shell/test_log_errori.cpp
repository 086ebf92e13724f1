// Registro degli errori: riga in LOGERR, messaggio all'utente, e fine del
// programma quando il registro stesso non si può scrivere.
#include "common/log_errori.h"
#include "support/prova.h"

#include <QRegularExpression>

namespace {

using namespace Qt::StringLiterals;

class LogErrori : public ProvaConDatabase {};

TEST_F(LogErrori, LaRigaPrecedeIlMessaggioEConservaITesti)
{
    const struct {
        const char* caso;
        QString settore, etichetta;
        int numero;
        QString descrizione;
        QString riga;  // SETTORE|DESC_APPL|CODI_ERRO|DESC_ERRO come restano nella tabella
    } casi[] = {
        {"numero a quattro cifre con lo zero davanti", u""_s, u" FrmSelezionaFatture CmdDATI_Click"_s, 3021,
         u"Nessun record corrente."_s, u"| FrmSelezionaFatture CmdDATI_Click|03021|Nessun record corrente."_s},
        {"apostrofi", u"GE"_s, u"L'ETICHETTA"_s, 3075, u"Errore di sintassi nell'espressione 'DOMANDA = 'L'ARCO''"_s,
         u"GE|L'ETICHETTA|03075|Errore di sintassi nell'espressione 'DOMANDA = 'L'ARCO''"_s},
        {"numero di cinque cifre", u""_s, u"StampaDomandaProduttore"_s, 20545, u"Stampa annullata dall'utente."_s,
         u"|StampaDomandaProduttore|20545|Stampa annullata dall'utente."_s},
        {"numero negativo", u"Md_FunzioniGenerali"_s, u"rfAssociaDeAssociaProduttore"_s, -2147467259,
         u"Errore non specificato"_s,
         u"Md_FunzioniGenerali|rfAssociaDeAssociaProduttore|-2147467259|Errore non specificato"_s},
        // ApiceSql raddoppia anche i doppi apici, che dentro un testo tra
        // apici il motore non riduce: restano doppi nella tabella.
        {"doppi apici raddoppiati", u""_s, u"frmCarico.CARICOTABELLE"_s, 13, u"Tipo \"A\" non corrispondente"_s,
         u"|frmCarico.CARICOTABELLE|00013|Tipo \"\"A\"\" non corrispondente"_s},
    };
    const QString oggi = QDate::currentDate().toString(u"dd/MM/yyyy"_s);
    for (const auto& c : casi) {
        SCOPED_TRACE(c.caso);
        db().Execute(u"DELETE FROM LOGERR"_s);
        script->messaggi.clear();
        QStringList rigaAlMessaggio;
        bool clessidraAlMessaggio = false;
        script->alMessaggio = [&](const MessaggioRegistrato&) {
            rigaAlMessaggio = Righe(db(), u"SELECT SETTORE, DESC_APPL, CODI_ERRO, DESC_ERRO, FLAG_STAM, DATA_APPL "
                                          "FROM LOGERR"_s);
            clessidraAlMessaggio = script->clessidra;
        };
        script->Rispondi(RispostaMsg::OK);

        ScriviLogErr(c.settore, c.etichetta, c.numero, c.descrizione);

        EXPECT_EQ(script->messaggi,
                  (Messaggi{{MessaggioLogErr(c.numero, c.descrizione, c.etichetta), 48, u"Gestione Errori"_s}}));
        EXPECT_EQ(rigaAlMessaggio, QStringList{c.riga + u"|N|"_s + oggi}) << "la riga precede il messaggio";
        EXPECT_TRUE(clessidraAlMessaggio);
        EXPECT_FALSE(script->clessidra);
        EXPECT_FALSE(script->terminato);
        const QString ora = Righe(db(), u"SELECT ORA_APPL FROM LOGERR"_s).value(0);
        EXPECT_TRUE(QRegularExpression(u"^\\d\\d:\\d\\d:\\d\\d$"_s).match(ora).hasMatch()) << ora.toStdString();
    }
    // L'istruzione resta nel testo di lavoro della sessione.
    EXPECT_TRUE(sessione().StrSql.startsWith(u"INSERT INTO LOGERR  (SETTORE, DATA_APPL,"_s));
}

TEST_F(LogErrori, ConnessioneChiusaMostraLAnomaliaBloccanteETermina)
{
    // Tra il controllo di versione e il menu la connessione non c'è.
    db().Close();
    script->Rispondi(RispostaMsg::OK);
    EXPECT_THROW(ScriviLogErr(QString(), u"frmInizializza Form_Load"_s, 3021, u"Nessun record corrente."_s),
                 ProcessoTerminato);
    // Si vedono numero e descrizione ricevuti, non quelli del guasto del registro.
    EXPECT_EQ(script->messaggi, (Messaggi{{u"SI E' VERIFICATA UNA ANOMALIA BLOCCANTE:\r\rERRORE NUMERO - 3021\r\r"
                                           "DESCRIZIONE - Nessun record corrente.\r\rSETTORE - frmInizializza Form_Load"
                                           "\r\rappuntarsi il tipo di errore e contattare il servizio tecnico."_s,
                                           16, u"Consultare il servizio tecnico"_s}}));
    EXPECT_FALSE(script->clessidra);
    sessione().DbDistilleria.reset();
    EXPECT_TRUE(Righe(db(), u"SELECT * FROM LOGERR"_s).isEmpty());
}

}  // namespace
