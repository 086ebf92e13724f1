// Scrittura della domanda del distillatore senza maschera, come la chiamano
// la cancellazione dalla lista e il carico: inserimento, cancellazione, righe
// mancanti e guasti nel registro (modifica e scrittura rifiutata passano per
// la maschera nelle sue prove).
#include "deliveries/MetodiDomandaProduttori.h"
#include "support/prova.h"

namespace {

const char* const Colonne = "SELECT ID_DOMANDA_PRODUTTORE, TIPO_ARTICOLO, DOMANDA, STAM, SCAR, ANTICIPO_RICEVUTO, "
                            "PROG_VERS, PROG_INVIO, DATA_CAMP FROM DOMANDE_PRODUTTORI ORDER BY 1";
const QString Etichetta = QStringLiteral("FrmDomanda.MetodiDOMANDA ");

struct Caso {
    const char* nome;
    int operazione;
    const char* condizione;
    bool esito;
    QStringList righe;
    Messaggi messaggi;
    QStringList registro;  // DESC_APPL|CODI_ERRO
};

class MetodiDomandaProduttori : public ProvaConDatabase, public ::testing::WithParamInterface<Caso> {};

TEST_P(MetodiDomandaProduttori, ScriveDalRecordDiSessione)
{
    const Caso& c = GetParam();
    db().Execute(QStringLiteral("INSERT INTO DOMANDE_PRODUTTORI (ID_DOMANDA_PRODUTTORE, TIPO_ARTICOLO, DOMANDA, STAM, "
                                "SCAR, ANTICIPO_RICEVUTO, PROG_VERS, PROG_INVIO, DATA_CAMP) VALUES "
                                "(7, '29', '00000000007', 'S', 'S', '5,00', '3', 2, '2004')"));
    auto& d = sessione().DomandaProduttoreSel;
    d.DOMANDA = QStringLiteral(" 0000000'123 ");  // un apostrofo non rompe nulla
    d.ANTICIPO_RICEVUTO = QStringLiteral("1250,50 ");
    d.TIPO_ARTICOLO = QStringLiteral(" 30");
    d.CAMPAGNA = QStringLiteral("2006 ");
    d.STAM = d.SCAR = QStringLiteral("S");
    d.PROG_VERS = QStringLiteral("4");
    script->AccettaMessaggiSenzaRisposta();

    EXPECT_EQ(MetodiDOMANDA_produttori(c.operazione, QString::fromLatin1(c.condizione)), c.esito);
    EXPECT_EQ(Righe(db(), QString::fromLatin1(Colonne)), c.righe);
    EXPECT_EQ(script->messaggi, c.messaggi);
    EXPECT_EQ(Righe(db(), QStringLiteral("SELECT DESC_APPL, CODI_ERRO FROM LOGERR")), c.registro);
}

const QString Esistente = QStringLiteral("7|29|00000000007|S|S|5,00|3|2|2004");
const QString Scritta = QStringLiteral("|30|0000000'123|N|N|1250,50|1|0|2006");

MessaggioRegistrato Guasto(int numero, const QString& descrizione)
{
    return {MessaggioLogErr(numero, descrizione, Etichetta), 48, QStringLiteral("Gestione Errori")};
}

INSTANTIATE_TEST_SUITE_P(
    Casi, MetodiDomandaProduttori,
    ::testing::Values(
        Caso{"inserimento", 0, "", true, {Esistente, "8" + Scritta}, {}, {}},
        Caso{"modifica_senza_riga", 1, "where  iD_DOMANDa_produttore = 99", false, {Esistente},
             {{"Nessun record da aggiornare", 64, ""}}, {}},
        Caso{"cancellazione", 2, "where id_domanda_produttore=7", true, {}, {}, {}},
        Caso{"cancellazione_senza_riga", 2, "where id_domanda_produttore=99", false, {Esistente},
             {Guasto(3021, "Nessun record corrente.")}, {Etichetta + "|03021"}},
        Caso{"condizione_errata", 1, "where colonna_assente = 1", false, {Esistente},
             {Guasto(3061, "Parametri insufficienti: campo sconosciuto 'colonna_assente'.")},
             {Etichetta + "|03061"}}),
    [](const auto& info) { return std::string(info.param.nome); });

}  // namespace
