// Il database consegnato (tabelle, colonne, dati di riferimento) e
// l'aggiornamento di un database della versione precedente.
#include "common/errore.h"
#include "shell/session_state.h"
#include "store/aggiornamento_schema.h"
#include "store/database.h"
#include "store/database_consegnato.h"
#include "support/cartella_prova.h"

#include <gtest/gtest.h>

namespace {

QStringList S(std::initializer_list<const char*> nomi)
{
    QStringList l;
    for (const char* n : nomi)
        l << QString::fromLatin1(n);
    return l;
}

QString Valore1(Database& db, const QString& sql)
{
    Recordset rs = db.OpenRecordset(sql);
    return rs.eof() ? QStringLiteral("<vuoto>") : rs.Fields(0).testo();
}

class Consegnato : public ProvaConDatabase {};

TEST_F(Consegnato, OrdineDelleColonneLettePerPosizione)
{
    EXPECT_EQ(db().ColonneTabella(QStringLiteral("DOMANDE")),
              S({"ID_DOMANDA", "DOMANDA", "PROGRESSIVO", "STAM", "SCAR", "TIPO_ARTICOLO", "ID_VARIETA", "PROG_VERS",
                 "PROG_INVIO", "DATA_CAMP"}));
    EXPECT_EQ(db().ColonneTabella(QStringLiteral("DOMANDE_PRODUTTORI")),
              S({"ID_DOMANDA_PRODUTTORE", "TIPO_ARTICOLO", "DOMANDA", "STAM", "SCAR", "ANTICIPO_RICEVUTO", "PROG_VERS",
                 "PROG_INVIO", "DATA_CAMP"}));

    // In "SELECT DOMANDE.*, FATTURE.*" la chiave della fattura precede CODI_FISC (12) .. DATA_FATT (15).
    Recordset rs = db().OpenRecordset(QStringLiteral("SELECT DOMANDE.*, FATTURE.* FROM DOMANDE, FATTURE"));
    EXPECT_EQ(rs.NomeCampo(10), QStringLiteral("ID_FATTURA"));
    EXPECT_EQ(rs.NomeCampo(12), QStringLiteral("CODI_FISC"));
    EXPECT_EQ(rs.NomeCampo(13), QStringLiteral("DENOMINAZIONE"));
    EXPECT_EQ(rs.NomeCampo(14), QStringLiteral("NUME_FATT"));
    EXPECT_EQ(rs.NomeCampo(15), QStringLiteral("DATA_FATT"));

    Recordset utf = db().OpenRecordset(QStringLiteral("SELECT DOMANDE_PRODUTTORI.*,TAB_UTF.* FROM DOMANDE_PRODUTTORI, TAB_UTF"));
    EXPECT_EQ(utf.NomeCampo(8), QStringLiteral("DATA_CAMP"));
    EXPECT_EQ(utf.NomeCampo(9), QStringLiteral("iD_UTF"));
    EXPECT_EQ(utf.NomeCampo(11), QStringLiteral("NUMERO_CERTIFICATO_UTF"));
    EXPECT_EQ(utf.NomeCampo(12), QStringLiteral("DESCR_UFFICIO_UTF_PROVINCIA"));
    EXPECT_EQ(utf.NomeCampo(15), QStringLiteral("DATA_EMISSIONE_CERTIFICATO"));

    const QStringList produttori = db().ColonneTabella(QStringLiteral("PRODUTTORI"));
    EXPECT_EQ(produttori.value(1), QStringLiteral("CODI_FISC"));
    EXPECT_EQ(produttori.value(2), QStringLiteral("DENOMINAZIONE"));
    EXPECT_EQ(produttori.value(5), QStringLiteral("CODICE_CONTRATTO_DISTILLAZIONE"));
    EXPECT_EQ(produttori.value(8), QStringLiteral("QTA_VINO_EFFETIVAMENTE_DISTILLATA"));
    EXPECT_EQ(produttori.value(9), QStringLiteral("QTA_VINO_DISTILLATA_AIUTO"));
    EXPECT_EQ(produttori.value(10), QStringLiteral("TITOLO_ALCOLOMETRICO_FATTURATO"));
}

TEST_F(Consegnato, OgniTabellaEColonnaUsataDalleIstruzioni)
{
    const QMap<QString, QStringList> attese = {
        {QStringLiteral("FATTURE"), S({"ID_FATTURA", "ID_DOMANDA", "CODI_FISC", "DENOMINAZIONE", "NUME_FATT", "DATA_FATT",
                                       "DATA_COMP", "DATA_PAGA", "QTA_PROD", "QTA_LAVO", "GRAD", "PREZ_MINI", "PREZ_TRAS",
                                       "IMPO", "IVA", "IMPO_TOTA", "ID_LAVORAZIONE", "FOGL", "RIGO"})},
        {QStringLiteral("BOLLE"), S({"ID_BOLLA", "FK_ID_FATTURA", "NUMERO_BOLLA", "DATA_CONSEGNA", "QUANTITA_PRODOTTO",
                                     "DATA_PAGA", "GRADO", "NUME_FATT_TRAS", "DATA_FATT_TRAS"})},
        {QStringLiteral("TAB_UTF"), S({"iD_UTF", "iD_DOMANDA", "NUMERO_CERTIFICATO_UTF", "DESCR_UFFICIO_UTF_PROVINCIA",
                                       "SIGLA_UFFICIO_UTF_PROVINCIA", "ISTAT_UFFICIO_UTF_PROVINCIA",
                                       "DATA_EMISSIONE_CERTIFICATO", "QTA_TOT_VINO_LAVORATO",
                                       "QTA_TOT_ETTOGRADI_VINO_LAVORATO", "QTA_TOT_ALCOLE_GREZZO_OTTENUTO",
                                       "QTA_TOT_ALCOLE_NEUTRO_OTTENUTO", "QTA_TOT_ACQUAVITE_OTTENUTO", "QUADRATURA"})},
        {QStringLiteral("TAB_ID_UTF_PRODUTTORE"), S({"iD_TAB_ID_UP", "iD_UTF", "iD_PRODUTTORE"})},
        {QStringLiteral("DISTILLERIA"), S({"CODI_FISC", "RAGI_SOCI", "INDI_DIST"})},
        {QStringLiteral("LOGERR"), S({"SETTORE", "DATA_APPL", "ORA_APPL", "DESC_APPL", "CODI_ERRO", "DESC_ERRO", "FLAG_STAM"})},
        {QStringLiteral("TAB_Fornitura"), S({"ID", "CAMPAGNA", "NUMERO_DOMANDE", "NUMERO_FATTURE", "DATA_FORNITURE",
                                             "PROGRESSIVO_FORNITURA", "Numero_bolle"})},
        {QStringLiteral("TAB_Fornitura_utf"), S({"Campagnafornitura", "Numero_versione", "Data_forniture",
                                                 "PROGRESSIVO_fornitura", "ARTICOLO", "Distilleria_CODI_FISC",
                                                 "Distilleria_RAGI_SOCI"})},
        {QStringLiteral("tab_setup"), S({"VERSIONE", "DATA_VERSIONE", "DESCRIZIONE"})},
        {QStringLiteral("VARIETA"), S({"ID_VARIETA", "CODI_PROD", "DESC_PROD"})},
        {QStringLiteral("LAVORAZIONI"), S({"ID_LAVORAZIONE", "CODI_LAVO", "DESC_LAVO"})},
        {QStringLiteral("TIPO_ARTICOLO_DOMANDA"), S({"TIPO_ARTICOLO"})},
        {QStringLiteral("TAB_COLORE"), S({"ID_COLORE", "CODI_COLORE", "DESC_COLORE"})},
        {QStringLiteral("TAB_PROVINCIE"), S({"TABPROCOD", "TABPRODES", "TABPROSIG"})},
        {QStringLiteral("CAMPAGNA"), S({"ANNUALITA"})},
        {QStringLiteral("help"), S({"nome", "TITOLO", "Descrizione"})},
        {QStringLiteral("PROG_DSK"), S({"PROG"})},
    };
    for (auto it = attese.begin(); it != attese.end(); ++it)
        EXPECT_EQ(db().ColonneTabella(it.key()), it.value()) << qPrintable(it.key());
    QStringList produttori = db().ColonneTabella(QStringLiteral("PRODUTTORI"));
    produttori.sort();
    QStringList attesiProduttori = S({"iD_PRODUTTORI", "ID_COLORE", "CODI_FISC", "DENOMINAZIONE", "CAMPAGNA_PRESCELTA",
        "CODICE_CONTRATTO_DISTILLAZIONE", "COMUNICAZIONE_CONTRATTO", "QTA_MAX_DISTILLABILE",
        "QTA_VINO_EFFETIVAMENTE_DISTILLATA", "QTA_VINO_DISTILLATA_AIUTO", "TITOLO_ALCOLOMETRICO_FATTURATO", "ETTOGRADI",
        "QTA_ALCOLE_GREZZO", "QTA_ALCOLE_NEUTRO", "QTA_ACQUAVITE", "AIUTO_ALCOLE_GREZZO", "AIUTO_ALCOLE_NEUTRO",
        "AIUTO_ACQUAVITE", "IMPORTO_DETRAIBILE", "TOTALE_AIUTO", "APPROVAZIONE_ANTICIPATA", "PERC_APPROVAZIONE_ANTICIPATA"});
    attesiProduttori.sort();
    EXPECT_EQ(produttori, attesiProduttori);
    EXPECT_EQ(db().ColonneTabella(QStringLiteral("DOMANDE_PRODUTTORI")).size(), 9);
}

TEST_F(Consegnato, DatiDiRiferimentoEVersione)
{
    EXPECT_EQ(Valore1(db(), QStringLiteral("SELECT COUNT(*) FROM TAB_PROVINCIE")), QStringLiteral("107"));
    EXPECT_EQ(Valore1(db(), QStringLiteral("SELECT TABPRODES || ' ' || TABPROSIG FROM TAB_PROVINCIE WHERE TABPROCOD='040'")),
              QStringLiteral("FORLI'-CESENA FC"));
    EXPECT_EQ(Valore1(db(), QStringLiteral("SELECT COUNT(*) FROM VARIETA WHERE LENGTH(CODI_PROD) = 3")), QStringLiteral("4"));
    EXPECT_EQ(Valore1(db(), QStringLiteral("SELECT COUNT(*) FROM LAVORAZIONI WHERE LENGTH(CODI_LAVO) = 3")), QStringLiteral("4"));
    EXPECT_EQ(Valore1(db(), QStringLiteral("SELECT COUNT(*) FROM TAB_COLORE WHERE LENGTH(CODI_COLORE) = 2")), QStringLiteral("3"));
    EXPECT_EQ(Valore1(db(), QStringLiteral("SELECT group_concat(TIPO_ARTICOLO, ',') FROM TIPO_ARTICOLO_DOMANDA")),
              QStringLiteral("29,30"));
    EXPECT_EQ(Valore1(db(), QStringLiteral("select max(ANNUALITA) as UltimaCampagna  from CAMPAGNA")), QStringLiteral("2005"));
    EXPECT_EQ(Valore1(db(), QStringLiteral("SELECT COUNT(*) FROM CAMPAGNA WHERE ANNUALITA BETWEEN 2001 AND 2005")),
              QStringLiteral("5"));
    EXPECT_EQ(Valore1(db(), QStringLiteral("SELECT COUNT(*) FROM PROG_DSK")), QStringLiteral("1"));
    EXPECT_EQ(Valore1(db(), QStringLiteral("SELECT MAX(PROG) +1 AS MASSIMO  FROM  PROG_DSK")), QStringLiteral("1"));
    EXPECT_EQ(Valore1(db(), QStringLiteral("SELECT COUNT(*) FROM tab_setup")), QStringLiteral("1"));
    EXPECT_EQ(Valore1(db(), QStringLiteral("SELECT VERSIONE FROM tab_setup")), QStringLiteral("1.0.0"));
    for (const char* t : {"DOMANDE", "FATTURE", "BOLLE", "DOMANDE_PRODUTTORI", "TAB_UTF", "TAB_ID_UTF_PRODUTTORE",
                          "PRODUTTORI", "LOGERR", "TAB_Fornitura", "TAB_Fornitura_utf", "DISTILLERIA"})
        EXPECT_EQ(Valore1(db(), QStringLiteral("SELECT COUNT(*) FROM ") + QString::fromLatin1(t)), QStringLiteral("0")) << t;
}

TEST_F(Consegnato, UnTestoDiAiutoPerOgniMaschera)
{
    for (const char* nome : {"frmAbout", "frmCambioDomanda", "frmCambioUTF", "frmInizializza", "FRMDOMANDA_INS",
                             "FRMDOMANDA_MOD", "FRMFATTURA_INS", "FRMFATTURA_MOD", "frmProduttore_Utf_INS",
                             "frmProduttore_Utf_MOD", "FRMSELEZIONE_DOMA", "FRMSELEZIONE_FATTU", "FRMSELEZIONE_CAMBIO",
                             "FRMSELEZIONE_STAMPA", "frmScarico", "frmProduttori_Scarico", "frmProduttore",
                             "Frmproduttore_Domanda", "frmProduttore_Utf", "FRMSELEZIONE_SELFAT"}) {
        Recordset rs = db().OpenRecordset(QStringLiteral("Select Descrizione,TITOLO from help  where nome= '") +
                                          QString::fromLatin1(nome) + QStringLiteral("'"));
        ASSERT_FALSE(rs.eof()) << nome;
        EXPECT_GT(rs.Fields(QStringLiteral("Descrizione")).testo().size(), 40) << nome;
        EXPECT_FALSE(rs.Fields(QStringLiteral("TITOLO")).testo().isEmpty()) << nome;
    }
}

TEST(SchemaTesto, IstruzioniECsv)
{
    EXPECT_EQ(IstruzioniSchema(QStringLiteral("-- commento\nCREATE TABLE A (X)\n;;\n\n;;\nCREATE TABLE B (Y)\n")),
              (QStringList{QStringLiteral("CREATE TABLE A (X)"), QStringLiteral("CREATE TABLE B (Y)")}));
    const auto righe = LeggiCsv(QStringLiteral("a;b;c\r\n1;\"due; e \"\"tre\"\"\";\r\n\"x\ny\";;z\n"));
    ASSERT_EQ(righe.size(), 3);
    EXPECT_EQ(righe[1], (QStringList{QStringLiteral("1"), QStringLiteral("due; e \"tre\""), QString()}));
    EXPECT_EQ(righe[2], (QStringList{QStringLiteral("x\ny"), QString(), QStringLiteral("z")}));
}

// Un database della versione precedente: SETUP al posto di tab_setup.
class Aggiornamento : public ProvaConDatabase {
protected:
    void Vecchio(const QString& nomeSetup)
    {
        db().Execute(QStringLiteral("DROP TABLE tab_setup"));
        db().Execute(QStringLiteral("CREATE TABLE \"%1\" (VERSIONE TEXT, NOTE TEXT)").arg(nomeSetup));
        db().Execute(QStringLiteral("INSERT INTO \"%1\" VALUES ('0.9', 'vecchia')").arg(nomeSetup));
        db().Execute(QStringLiteral("INSERT INTO TAB_Fornitura (CAMPAGNA) VALUES ('2004')"));
    }
};

TEST_F(Aggiornamento, SetupSostituitaDaTabSetupVuotaUnaVoltaSola)
{
    Vecchio(QStringLiteral("SETUP"));
    ASSERT_TRUE(CreaTabSetup(db()));
    for (const QString& t : db().TableDefs())
        EXPECT_NE(t.toUpper(), QStringLiteral("SETUP"));
    EXPECT_EQ(db().ColonneTabella(QStringLiteral("tab_setup")), S({"VERSIONE", "DATA_VERSIONE", "DESCRIZIONE"}));
    EXPECT_EQ(Valore1(db(), QStringLiteral("SELECT COUNT(*) FROM tab_setup")), QStringLiteral("0"));
    // La seconda volta tab_setup non corrisponde a "SETUP": nulla cambia.
    db().Execute(QStringLiteral("INSERT INTO tab_setup VALUES ('1.0.0', '01/01/2006', 'x')"));
    EXPECT_FALSE(CreaTabSetup(db()));
    EXPECT_EQ(Valore1(db(), QStringLiteral("SELECT COUNT(*) FROM tab_setup")), QStringLiteral("1"));
}

TEST_F(Aggiornamento, NomeConfrontatoInMaiuscolo)
{
    Vecchio(QStringLiteral("Setup"));
    EXPECT_TRUE(CreaTabSetup(db()));
    EXPECT_TRUE(db().EsisteTabella(QStringLiteral("tab_setup")));
}

TEST_F(Aggiornamento, SenzaSetupNeTabSetupNonFaNulla)
{
    db().Execute(QStringLiteral("DROP TABLE tab_setup"));
    EXPECT_FALSE(CreaTabSetup(db()));
    EXPECT_FALSE(db().EsisteTabella(QStringLiteral("tab_setup")));
}

TEST_F(Aggiornamento, TabFornituraRicreataVuotaConLeSueColonne)
{
    Vecchio(QStringLiteral("SETUP"));
    CreaTabFornitura(db());
    EXPECT_EQ(db().ColonneTabella(QStringLiteral("TAB_Fornitura")),
              S({"ID", "CAMPAGNA", "NUMERO_DOMANDE", "NUMERO_FATTURE", "DATA_FORNITURE", "PROGRESSIVO_FORNITURA"}));
    EXPECT_EQ(Valore1(db(), QStringLiteral("SELECT COUNT(*) FROM TAB_Fornitura")), QStringLiteral("0"));
    const qint64 id = db().InserisciRiga(QStringLiteral("TAB_Fornitura"), {{QStringLiteral("CAMPAGNA"), QStringLiteral("2005")}});
    EXPECT_EQ(id, 1);
    // Anche senza la tabella da eliminare la ricostruzione riesce.
    db().Execute(QStringLiteral("DROP TABLE TAB_Fornitura"));
    EXPECT_NO_THROW(CreaTabFornitura(db()));
}

TEST_F(Aggiornamento, CampagnaSenzaLUltimoElemento)
{
    CREA_TAB_CAMPAGNA(db(), S({"2003", "2004", "2005"}));
    EXPECT_EQ(Valore1(db(), QStringLiteral("SELECT group_concat(ANNUALITA, ',') FROM CAMPAGNA")), QStringLiteral("2003,2004"));
    CREA_TAB_CAMPAGNA(db(), S({"2005"}));
    EXPECT_EQ(Valore1(db(), QStringLiteral("SELECT COUNT(*) FROM CAMPAGNA")), QStringLiteral("0"));
}

}  // namespace
