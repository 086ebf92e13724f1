// Il database consegnato (tabelle, colonne, dati di riferimento) e
// l'aggiornamento di un database della versione precedente.
#include "shell/session_state.h"
#include "store/aggiornamento_schema.h"
#include "store/database.h"
#include "store/database_consegnato.h"
#include "support/cartella_prova.h"
#include "support/verifiche.h"

#include <gtest/gtest.h>

namespace {

using namespace Qt::StringLiterals;

QStringList S(const char* nomi) { return QString::fromLatin1(nomi).split(u' '); }

class Consegnato : public ProvaConDatabase {};

TEST_F(Consegnato, OgniTabellaConLeSueColonneNellOrdineInCuiSiLeggonoPerPosizione)
{
    // DOMANDE e DOMANDE_PRODUTTORI si leggono per posizione anche nelle unioni
    // ("SELECT DOMANDE.*, FATTURE.*"), PRODUTTORI nelle liste dei produttori.
    const QMap<QString, QStringList> attese = {
        {u"DOMANDE"_s,
         S("ID_DOMANDA DOMANDA PROGRESSIVO STAM SCAR TIPO_ARTICOLO ID_VARIETA PROG_VERS PROG_INVIO DATA_CAMP")},
        {u"DOMANDE_PRODUTTORI"_s,
         S("ID_DOMANDA_PRODUTTORE TIPO_ARTICOLO DOMANDA STAM SCAR ANTICIPO_RICEVUTO PROG_VERS PROG_INVIO DATA_CAMP")},
        {u"PRODUTTORI"_s,
         S("iD_PRODUTTORI CODI_FISC DENOMINAZIONE CAMPAGNA_PRESCELTA COMUNICAZIONE_CONTRATTO "
           "CODICE_CONTRATTO_DISTILLAZIONE QTA_MAX_DISTILLABILE ETTOGRADI QTA_VINO_EFFETIVAMENTE_DISTILLATA "
           "QTA_VINO_DISTILLATA_AIUTO TITOLO_ALCOLOMETRICO_FATTURATO QTA_ALCOLE_GREZZO QTA_ALCOLE_NEUTRO QTA_ACQUAVITE "
           "AIUTO_ALCOLE_GREZZO AIUTO_ALCOLE_NEUTRO AIUTO_ACQUAVITE IMPORTO_DETRAIBILE TOTALE_AIUTO "
           "APPROVAZIONE_ANTICIPATA PERC_APPROVAZIONE_ANTICIPATA ID_COLORE")},
        {u"FATTURE"_s, S("ID_FATTURA ID_DOMANDA CODI_FISC DENOMINAZIONE NUME_FATT DATA_FATT DATA_COMP DATA_PAGA QTA_PROD "
                         "QTA_LAVO GRAD PREZ_MINI PREZ_TRAS IMPO IVA IMPO_TOTA ID_LAVORAZIONE FOGL RIGO")},
        {u"BOLLE"_s, S("ID_BOLLA FK_ID_FATTURA NUMERO_BOLLA DATA_CONSEGNA QUANTITA_PRODOTTO DATA_PAGA GRADO "
                       "NUME_FATT_TRAS DATA_FATT_TRAS")},
        {u"TAB_UTF"_s, S("iD_UTF iD_DOMANDA NUMERO_CERTIFICATO_UTF DESCR_UFFICIO_UTF_PROVINCIA SIGLA_UFFICIO_UTF_PROVINCIA "
                         "ISTAT_UFFICIO_UTF_PROVINCIA DATA_EMISSIONE_CERTIFICATO QTA_TOT_VINO_LAVORATO "
                         "QTA_TOT_ETTOGRADI_VINO_LAVORATO QTA_TOT_ALCOLE_GREZZO_OTTENUTO QTA_TOT_ALCOLE_NEUTRO_OTTENUTO "
                         "QTA_TOT_ACQUAVITE_OTTENUTO QUADRATURA")},
        {u"TAB_ID_UTF_PRODUTTORE"_s, S("iD_TAB_ID_UP iD_UTF iD_PRODUTTORE")},
        {u"DISTILLERIA"_s, S("CODI_FISC RAGI_SOCI INDI_DIST")},
        {u"LOGERR"_s, S("SETTORE DATA_APPL ORA_APPL DESC_APPL CODI_ERRO DESC_ERRO FLAG_STAM")},
        {u"TAB_Fornitura"_s,
         S("ID CAMPAGNA NUMERO_DOMANDE NUMERO_FATTURE DATA_FORNITURE PROGRESSIVO_FORNITURA Numero_bolle")},
        {u"TAB_Fornitura_utf"_s, S("Campagnafornitura Numero_versione Data_forniture PROGRESSIVO_fornitura ARTICOLO "
                                   "Distilleria_CODI_FISC Distilleria_RAGI_SOCI")},
        {u"tab_setup"_s, S("VERSIONE DATA_VERSIONE DESCRIZIONE")},
        {u"VARIETA"_s, S("ID_VARIETA CODI_PROD DESC_PROD")},
        {u"LAVORAZIONI"_s, S("ID_LAVORAZIONE CODI_LAVO DESC_LAVO")},
        {u"TIPO_ARTICOLO_DOMANDA"_s, S("TIPO_ARTICOLO")},
        {u"TAB_COLORE"_s, S("ID_COLORE CODI_COLORE DESC_COLORE")},
        {u"TAB_PROVINCIE"_s, S("TABPROCOD TABPRODES TABPROSIG")},
        {u"CAMPAGNA"_s, S("ANNUALITA")},
        {u"help"_s, S("nome TITOLO Descrizione")},
        {u"PROG_DSK"_s, S("PROG")},
    };
    for (auto it = attese.begin(); it != attese.end(); ++it)
        EXPECT_EQ(db().ColonneTabella(it.key()), it.value()) << qPrintable(it.key());
}

TEST_F(Consegnato, DatiDiRiferimentoEVersione)
{
    const struct { const char *sql, *atteso; } casi[] = {
        {"SELECT COUNT(*) FROM TAB_PROVINCIE", "107"},
        {"SELECT TABPRODES || ' ' || TABPROSIG FROM TAB_PROVINCIE WHERE TABPROCOD='040'", "FORLI'-CESENA FC"},
        {"SELECT COUNT(*) FROM VARIETA WHERE LENGTH(CODI_PROD) = 3", "4"},
        {"SELECT COUNT(*) FROM LAVORAZIONI WHERE LENGTH(CODI_LAVO) = 3", "4"},
        {"SELECT COUNT(*) FROM TAB_COLORE WHERE LENGTH(CODI_COLORE) = 2", "3"},
        {"SELECT group_concat(TIPO_ARTICOLO, ',') FROM TIPO_ARTICOLO_DOMANDA", "29,30"},
        {"select max(ANNUALITA) as UltimaCampagna  from CAMPAGNA", "2005"},
        {"SELECT COUNT(*) FROM CAMPAGNA WHERE ANNUALITA BETWEEN 2001 AND 2005", "5"},
        {"SELECT COUNT(*), MAX(PROG) +1 AS MASSIMO FROM PROG_DSK", "1|1"},
        {"SELECT COUNT(*), MAX(VERSIONE) FROM tab_setup", "1|1.0.0"},
    };
    for (const auto& c : casi)
        EXPECT_EQ(Righe(db(), QString::fromUtf8(c.sql)), QStringList{QString::fromUtf8(c.atteso)}) << c.sql;
    // I dati delle transazioni partono vuoti.
    for (const QString& t : S("DOMANDE FATTURE BOLLE DOMANDE_PRODUTTORI TAB_UTF TAB_ID_UTF_PRODUTTORE PRODUTTORI LOGERR "
                              "TAB_Fornitura TAB_Fornitura_utf DISTILLERIA"))
        EXPECT_EQ(Righe(db(), u"SELECT COUNT(*) FROM "_s + t), QStringList{u"0"_s}) << qPrintable(t);
}

TEST_F(Consegnato, UnTestoDiAiutoPerOgniMaschera)
{
    for (const QString& nome : S("frmAbout frmCambioDomanda frmCambioUTF frmInizializza FRMDOMANDA_INS FRMDOMANDA_MOD "
                                 "FRMFATTURA_INS FRMFATTURA_MOD frmProduttore_Utf_INS frmProduttore_Utf_MOD "
                                 "FRMSELEZIONE_DOMA FRMSELEZIONE_FATTU FRMSELEZIONE_CAMBIO FRMSELEZIONE_STAMPA frmScarico "
                                 "frmProduttori_Scarico frmProduttore Frmproduttore_Domanda frmProduttore_Utf "
                                 "FRMSELEZIONE_SELFAT"))
        EXPECT_EQ(Righe(db(), u"SELECT LENGTH(Descrizione) > 40 AND TITOLO <> '' FROM help WHERE nome = ?"_s, {nome}),
                  QStringList{u"1"_s})
            << qPrintable(nome);
}

TEST(SchemaTesto, IstruzioniECsv)
{
    EXPECT_EQ(IstruzioniSchema(u"-- commento\nCREATE TABLE A (X)\n;;\n\n;;\nCREATE TABLE B (Y)\n"_s),
              (QStringList{u"CREATE TABLE A (X)"_s, u"CREATE TABLE B (Y)"_s}));
    const auto righe = LeggiCsv(u"a;b;c\r\n1;\"due; e \"\"tre\"\"\";\r\n\"x\ny\";;z\n"_s);
    ASSERT_EQ(righe.size(), 3);
    EXPECT_EQ(righe[1], (QStringList{u"1"_s, u"due; e \"tre\""_s, QString()}));
    EXPECT_EQ(righe[2], (QStringList{u"x\ny"_s, QString(), u"z"_s}));
}

class Aggiornamento : public ProvaConDatabase {};

TEST_F(Aggiornamento, SetupSostituitaDaTabSetupVuotaUnaVoltaSolaETabFornituraRicreata)
{
    // Un database della versione precedente: SETUP al posto di tab_setup.
    db().Execute(u"DROP TABLE tab_setup"_s);
    db().Execute(u"CREATE TABLE SETUP (VERSIONE TEXT, NOTE TEXT)"_s);
    db().Execute(u"INSERT INTO SETUP VALUES ('0.9', 'vecchia')"_s);
    db().Execute(u"INSERT INTO TAB_Fornitura (CAMPAGNA) VALUES ('2004')"_s);
    ASSERT_TRUE(CreaTabSetup(db()));
    EXPECT_FALSE(db().EsisteTabella(u"SETUP"_s));
    EXPECT_EQ(db().ColonneTabella(u"tab_setup"_s), S("VERSIONE DATA_VERSIONE DESCRIZIONE"));
    EXPECT_EQ(Righe(db(), u"SELECT COUNT(*) FROM tab_setup"_s), QStringList{u"0"_s});
    // La seconda volta tab_setup non corrisponde a "SETUP": nulla cambia.
    db().Execute(u"INSERT INTO tab_setup VALUES ('1.0.0', '01/01/2006', 'x')"_s);
    EXPECT_FALSE(CreaTabSetup(db()));
    EXPECT_EQ(Righe(db(), u"SELECT COUNT(*) FROM tab_setup"_s), QStringList{u"1"_s});

    CreaTabFornitura(db());
    EXPECT_EQ(db().ColonneTabella(u"TAB_Fornitura"_s),
              S("ID CAMPAGNA NUMERO_DOMANDE NUMERO_FATTURE DATA_FORNITURE PROGRESSIVO_FORNITURA"));
    EXPECT_EQ(db().InserisciRiga(u"TAB_Fornitura"_s, {{u"CAMPAGNA"_s, u"2005"_s}}), 1) << "ricreata vuota";
    // Anche senza la tabella da eliminare la ricostruzione riesce.
    db().Execute(u"DROP TABLE TAB_Fornitura"_s);
    EXPECT_NO_THROW(CreaTabFornitura(db()));
}

TEST_F(Aggiornamento, SenzaSetupNeTabSetupNonFaNulla)
{
    db().Execute(u"DROP TABLE tab_setup"_s);
    EXPECT_FALSE(CreaTabSetup(db()));
    EXPECT_FALSE(db().EsisteTabella(u"tab_setup"_s));
}

TEST_F(Aggiornamento, CampagnaSenzaLUltimoElemento)
{
    CREA_TAB_CAMPAGNA(db(), S("2003 2004 2005"));
    EXPECT_EQ(Righe(db(), u"SELECT group_concat(ANNUALITA, ',') FROM CAMPAGNA"_s), QStringList{u"2003,2004"_s});
    CREA_TAB_CAMPAGNA(db(), {u"20'5"_s, u"2006"_s});  // il valore è un parametro, l'apice non rompe l'istruzione
    EXPECT_EQ(Righe(db(), u"SELECT ANNUALITA FROM CAMPAGNA"_s), QStringList{u"20'5"_s});
    CREA_TAB_CAMPAGNA(db(), S("2005"));
    EXPECT_EQ(Righe(db(), u"SELECT COUNT(*) FROM CAMPAGNA"_s), QStringList{u"0"_s});
}

TEST_F(Aggiornamento, VisteDelleStampeDiUnaVersionePrecedenteRiallineate)
{
    // Un database creato da una versione precedente: Queryreport senza le colonne
    // d'ordine e Queryreport_bolle mancante. Le viste consegnate intatte non si toccano.
    db().Execute(u"DROP VIEW Queryreport"_s);
    db().Execute(u"DROP VIEW Queryreport_bolle"_s);
    db().Execute(u"CREATE VIEW Queryreport AS SELECT DOMANDE.DOMANDA FROM DOMANDE"_s);
    AggiornaVisteConsegnate(db());
    EXPECT_TRUE(db().ColonneTabella(u"Queryreport"_s).contains(u"FOGL_NUM"_s));
    EXPECT_TRUE(db().ColonneTabella(u"Queryreport_bolle"_s).contains(u"QTA_LAVO"_s));
    // Già allineate: nessun cambiamento dello schema.
    const QStringList prima = Righe(db(), u"SELECT schema_version FROM pragma_schema_version"_s);
    AggiornaVisteConsegnate(db());
    EXPECT_EQ(Righe(db(), u"SELECT schema_version FROM pragma_schema_version"_s), prima);
    EXPECT_EQ(Righe(db(), u"SELECT COUNT(*) FROM LOGERR"_s), QStringList{u"0"_s});
}

}  // namespace
