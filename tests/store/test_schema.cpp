// Il database consegnato (tabelle, colonne, dati di riferimento) e
// l'aggiornamento di un database della versione precedente.
#include "support/prova.h"
#include "store/aggiornamento_schema.h"
#include "store/database_consegnato.h"

namespace {

using namespace Qt::StringLiterals;

QStringList S(const char* nomi) { return QString::fromLatin1(nomi).split(u' '); }

class Consegnato : public ProvaConDatabase {};

TEST_F(Consegnato, ColonneNellOrdineInCuiSiLeggonoPerPosizione)
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

TEST_F(Aggiornamento, CampagnaSenzaLUltimoElemento)
{
    CREA_TAB_CAMPAGNA(db(), S("2003 2004 2005"));
    EXPECT_EQ(Righe(db(), u"SELECT group_concat(ANNUALITA, ',') FROM CAMPAGNA"_s), QStringList{u"2003,2004"_s});
    CREA_TAB_CAMPAGNA(db(), {u"20'5"_s, u"2006"_s});  // il valore è un parametro, l'apice non rompe l'istruzione
    EXPECT_EQ(Righe(db(), u"SELECT ANNUALITA FROM CAMPAGNA"_s), QStringList{u"20'5"_s});
    CREA_TAB_CAMPAGNA(db(), S("2005"));
    EXPECT_EQ(Righe(db(), u"SELECT COUNT(*) FROM CAMPAGNA"_s), QStringList{u"0"_s});
}

TEST_F(Aggiornamento, VisteEIndiciDiUnaVersionePrecedenteRiallineati)
{
    // Un database creato da una versione precedente: Queryreport senza le colonne
    // d'ordine, Queryreport_bolle e un indice mancanti. Ciò che è già allineato
    // non si tocca.
    db().Execute(u"DROP VIEW Queryreport"_s);
    db().Execute(u"DROP VIEW Queryreport_bolle"_s);
    db().Execute(u"CREATE VIEW Queryreport AS SELECT DOMANDE.DOMANDA FROM DOMANDE"_s);
    db().Execute(u"DROP INDEX DOMANDE_PRODUTTORI_ORDINE"_s);
    AggiornaVisteEIndiciConsegnati(db());
    EXPECT_EQ(Righe(db(), u"SELECT COUNT(*) FROM sqlite_master WHERE name = 'DOMANDE_PRODUTTORI_ORDINE'"_s),
              QStringList{u"1"_s});
    EXPECT_TRUE(db().ColonneTabella(u"Queryreport"_s).contains(u"FOGL_NUM"_s));
    EXPECT_TRUE(db().ColonneTabella(u"Queryreport_bolle"_s).contains(u"QTA_LAVO"_s));
    // Già allineate: nessun cambiamento dello schema.
    const QStringList prima = Righe(db(), u"SELECT schema_version FROM pragma_schema_version"_s);
    AggiornaVisteEIndiciConsegnati(db());
    EXPECT_EQ(Righe(db(), u"SELECT schema_version FROM pragma_schema_version"_s), prima);
    EXPECT_EQ(Righe(db(), u"SELECT COUNT(*) FROM LOGERR"_s), QStringList{u"0"_s});
}

}  // namespace
