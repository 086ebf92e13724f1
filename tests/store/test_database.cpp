// Facciata del database: apertura e suoi errori, letture e scritture,
// regole su Null e maiuscole, funzioni SQL del dialetto, definizioni e viste.
#include "common/errore.h"
#include "support/errori_prova.h"
#include "shell/session_state.h"
#include "store/database.h"
#include "support/cartella_prova.h"

#include <QCryptographicHash>
#include <QFile>
#include <QProcess>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {


QByteArray Impronta(const QString& percorso)
{
    QFile f(percorso);
    f.open(QIODevice::ReadOnly);
    return QCryptographicHash::hash(f.readAll(), QCryptographicHash::Sha256);
}

class Apertura : public ::testing::Test {
protected:
    CartellaProva cartella;
};

TEST_F(Apertura, DatabaseConsegnatoConPasswordGiusta)
{
    auto db = Database::Apri(cartella.percorsoDatabase(), false, ConnessioneDb);
    ASSERT_TRUE(db->aperto());
    EXPECT_EQ(db->Name(), cartella.percorsoDatabase());
}

TEST_F(Apertura, FileAssenteDa3024ESenzaCrearlo)
{
    const QString percorso = cartella.cartella() + QStringLiteral("/database/manca.mdb");
    try {
        Database::Apri(percorso, false, ConnessioneDb);
        FAIL() << "nessun errore";
    } catch (const ErroreSistema& e) {
        EXPECT_EQ(e.numero(), 3024);
        EXPECT_TRUE(e.descrizione().contains(QStringLiteral("manca.mdb")));
    }
    EXPECT_FALSE(QFile::exists(percorso));
}

TEST_F(Apertura, PasswordErrataDa3031ENonTocca)
{
    const QByteArray prima = Impronta(cartella.percorsoDatabase());
    EXPECT_EQ(NumeroErrore([&] { Database::Apri(cartella.percorsoDatabase(), false, QStringLiteral(";PWD=cedro5")); }),
              3031);
    EXPECT_EQ(NumeroErrore([&] { Database::Apri(cartella.percorsoDatabase(), false, QString()); }), 3031);
    EXPECT_EQ(Impronta(cartella.percorsoDatabase()), prima);
}

TEST_F(Apertura, FileCheNonEUnDatabaseDa3343ENonVieneToccato)
{
    const QString percorso = cartella.cartella() + QStringLiteral("/finto.mdb");
    {
        QFile f(percorso);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(QByteArray("Questo non è un database, solo testo.\r\n").repeated(200));
    }
    const QByteArray prima = Impronta(percorso);
    EXPECT_EQ(NumeroErrore([&] { Database::Apri(percorso, false, ConnessioneDb); }), 3343);
    EXPECT_EQ(Impronta(percorso), prima);
}

TEST_F(Apertura, DatabaseSqliteEstraneoDa3343)
{
    const QString percorso = cartella.cartella() + QStringLiteral("/altro.db");
    {
        QSqlDatabase c = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("estraneo"));
        c.setDatabaseName(percorso);
        ASSERT_TRUE(c.open());
        QSqlQuery(c).exec(QStringLiteral("CREATE TABLE T (A TEXT)"));
        c.close();
    }
    QSqlDatabase::removeDatabase(QStringLiteral("estraneo"));
    EXPECT_EQ(NumeroErrore([&] { Database::Apri(percorso, false, ConnessioneDb); }), 3343);
}

TEST_F(Apertura, FileBloccatoInEsclusivaDa3045)
{
    auto primo = Database::Apri(cartella.percorsoDatabase(), true, ConnessioneDb);
    EXPECT_EQ(NumeroErrore([&] { Database::Apri(cartella.percorsoDatabase(), false, ConnessioneDb); }), 3045);
    primo->Close();
    EXPECT_NO_THROW(Database::Apri(cartella.percorsoDatabase(), false, ConnessioneDb));
}

TEST_F(Apertura, FileBloccatoDaUnAltroProcessoDa3045)
{
    // Un altro processo (la riga di comando di sqlite3) tiene il file in esclusiva.
    QProcess altro;
    altro.start(QStringLiteral("sqlite3"), {cartella.percorsoDatabase()});
    ASSERT_TRUE(altro.waitForStarted()) << "sqlite3 non disponibile";
    altro.write("PRAGMA locking_mode=EXCLUSIVE;\nBEGIN EXCLUSIVE;\nSELECT 'pronto';\n");
    QByteArray uscita;
    while (!uscita.contains("pronto") && altro.waitForReadyRead(5000))
        uscita += altro.readAllStandardOutput();
    ASSERT_TRUE(uscita.contains("pronto")) << uscita.constData();
    try {
        Database::Apri(cartella.percorsoDatabase(), false, ConnessioneDb);
        ADD_FAILURE() << "aperto nonostante il blocco";
    } catch (const ErroreSistema& e) {
        EXPECT_EQ(e.numero(), 3045);
        EXPECT_EQ(e.descrizione(), QStringLiteral("Impossibile utilizzare '%1': file già in uso.").arg(cartella.percorsoDatabase()));
    }
    altro.write("COMMIT;\n.quit\n");
    altro.closeWriteChannel();
    ASSERT_TRUE(altro.waitForFinished(5000));
    EXPECT_NO_THROW(Database::Apri(cartella.percorsoDatabase(), false, ConnessioneDb));
}

TEST(StringaConnessione, PasswordEstratta)
{
    EXPECT_EQ(PasswordDaConnessione(QStringLiteral(";PWD=cedro4")), QStringLiteral("cedro4"));
    EXPECT_EQ(PasswordDaConnessione(QStringLiteral("ODBC;pwd=x;UID=y")), QStringLiteral("x"));
    EXPECT_EQ(PasswordDaConnessione(QStringLiteral(";UID=y")), QString());
}

class Operazioni : public ProvaConDatabase {};

TEST_F(Operazioni, ExecuteDaIRecordsAffected)
{
    for (const char* n : {"1", "2", "3"})
        db().Execute(QStringLiteral("INSERT INTO DOMANDE (DOMANDA, STAM, SCAR) VALUES (?, 'S', 'S')"),
                     {QString::fromLatin1(n)});
    EXPECT_EQ(db().Execute(QStringLiteral("UPDATE DOMANDE SET STAM='N',SCAR='N' WHERE DOMANDA <> '2'")), 2);
    EXPECT_EQ(db().RecordsAffected(), 2);
    EXPECT_EQ(db().Execute(QStringLiteral("DELETE FROM DOMANDE WHERE DOMANDA = '9'")), 0);
    EXPECT_EQ(db().RecordsAffected(), 0);
}

TEST_F(Operazioni, RecordsetInAvantiConNullENomiSenzaMaiuscole)
{
    Recordset vuoto = db().OpenRecordset(QStringLiteral("SELECT * FROM DOMANDE"));
    EXPECT_TRUE(vuoto.eof());
    EXPECT_EQ(NumeroErrore([&] { vuoto.Fields(QStringLiteral("DOMANDA")); }), 3021);

    db().Execute(QStringLiteral("INSERT INTO DOMANDE (DOMANDA, PROGRESSIVO) VALUES ('00000000001', NULL)"));
    db().Execute(QStringLiteral("INSERT INTO DOMANDE (DOMANDA, PROGRESSIVO) VALUES ('00000000002', '01')"));
    Recordset rs = db().OpenRecordset(QStringLiteral("SELECT * FROM DOMANDE ORDER BY DOMANDA"));
    ASSERT_FALSE(rs.eof());
    EXPECT_EQ(rs.Fields(QStringLiteral("domanda")).testo(), QStringLiteral("00000000001"));
    EXPECT_EQ(rs.Fields(QStringLiteral("Domanda")).testo(), rs.Fields(1).testo());
    EXPECT_TRUE(rs.Fields(QStringLiteral("PROGRESSIVO")).isNull());
    EXPECT_EQ(rs.Fields(QStringLiteral("PROGRESSIVO")).testo(), QString());
    EXPECT_EQ(NumeroErrore([&] { rs.Fields(QStringLiteral("NON_ESISTE")); }), 3265);
    rs.MoveNext();
    ASSERT_FALSE(rs.eof());
    EXPECT_EQ(rs.Fields(QStringLiteral("progressivo")).testo(), QStringLiteral("01"));
    rs.MoveNext();
    EXPECT_TRUE(rs.eof());
    EXPECT_EQ(NumeroErrore([&] { rs.MoveNext(); }), 3021);
}

TEST_F(Operazioni, TestoConfrontatoSenzaMaiuscole)
{
    db().Execute(QStringLiteral("INSERT INTO FATTURE (CODI_FISC, DENOMINAZIONE) VALUES ('RSSMRA80A01H501U', 'Cantina Rossi')"));
    EXPECT_FALSE(db().OpenRecordset(QStringLiteral("SELECT 1 FROM FATTURE WHERE CODI_FISC = ?"),
                                    {QStringLiteral("rssmra80a01h501u")}).eof());
    EXPECT_FALSE(db().OpenRecordset(QStringLiteral("SELECT 1 FROM FATTURE WHERE DENOMINAZIONE LIKE 'CANT%'")).eof());
}

TEST_F(Operazioni, InserimentoERigaInteraConChiaveContatoreMaiRiusata)
{
    const qint64 primo = db().InserisciRiga(QStringLiteral("BOLLE"),
                                            {{QStringLiteral("FK_ID_FATTURA"), 0}, {QStringLiteral("NUMERO_BOLLA"), QStringLiteral("B1")}});
    const qint64 secondo = db().InserisciRiga(QStringLiteral("BOLLE"), {{QStringLiteral("NUMERO_BOLLA"), QStringLiteral("B2")}});
    EXPECT_EQ(secondo, primo + 1);
    db().Execute(QStringLiteral("DELETE FROM BOLLE WHERE ID_BOLLA = ?"), {secondo});
    const qint64 terzo = db().InserisciRiga(QStringLiteral("BOLLE"), {{QStringLiteral("NUMERO_BOLLA"), QStringLiteral("B3")}});
    EXPECT_EQ(terzo, secondo + 1);

    EXPECT_EQ(db().AggiornaRiga(QStringLiteral("BOLLE"), {{QStringLiteral("GRADO"), QStringLiteral("12,5")}},
                                QStringLiteral("WHERE ID_BOLLA = ?"), {primo}), 1);
    Recordset rs = db().OpenRecordset(QStringLiteral("SELECT GRADO, FK_ID_FATTURA FROM BOLLE WHERE ID_BOLLA = ?"), {primo});
    EXPECT_EQ(rs.Fields(QStringLiteral("GRADO")).testo(), QStringLiteral("12,5"));
    EXPECT_EQ(rs.Fields(QStringLiteral("FK_ID_FATTURA")).intero(), 0);
}

TEST_F(Operazioni, ErroriDelMotoreConINumeriNoti)
{
    EXPECT_EQ(NumeroErrore([&] { db().Execute(QStringLiteral("DELETE FROM TABELLA_CHE_NON_CE")); }), 3078);
    EXPECT_EQ(NumeroErrore([&] { db().OpenRecordset(QStringLiteral("SELEC * FORM DOMANDE")); }), 3075);
    EXPECT_EQ(NumeroErrore([&] { db().Execute(QStringLiteral("INSERT INTO TIPO_ARTICOLO_DOMANDA VALUES ('29')")); }),
              3022);
    db().Close();
    EXPECT_NE(NumeroErrore([&] { db().Execute(QStringLiteral("DELETE FROM LOGERR")); }), 0);
}

TEST_F(Operazioni, FunzioniSqlConLaVirgolaDecimale)
{
    auto valore = [&](const QString& espressione) {
        Recordset rs = db().OpenRecordset(QStringLiteral("SELECT ") + espressione + QStringLiteral(" AS V"));
        return rs.Fields(QStringLiteral("V"));
    };
    EXPECT_DOUBLE_EQ(valore(QStringLiteral("CDBL('12,5')")).numero(), 12.5);
    EXPECT_DOUBLE_EQ(valore(QStringLiteral("CDBL('1.234,5')")).numero(), 1234.5);
    EXPECT_DOUBLE_EQ(valore(QStringLiteral("CDBL(7)")).numero(), 7.0);
    EXPECT_EQ(NumeroErrore([&] { valore(QStringLiteral("CDBL('')")); }), 13);
    EXPECT_EQ(NumeroErrore([&] { valore(QStringLiteral("CDBL('dodici')")); }), 13);
    EXPECT_DOUBLE_EQ(valore(QStringLiteral("CDBL(IIF(TRIM(IFNULL(NULL,''))='',0,NULL))")).numero(), 0.0);
    EXPECT_FLOAT_EQ(static_cast<float>(valore(QStringLiteral("CSNG('0,1')")).numero()), 0.1f);
    EXPECT_DOUBLE_EQ(valore(QStringLiteral("VAL('12abc')")).numero(), 12.0);
    EXPECT_EQ(valore(QStringLiteral("FORMAT(2.345,'#0.00')")).testo(), QStringLiteral("2,35"));
    EXPECT_EQ(valore(QStringLiteral("FORMAT(-2.345,'#0.00')")).testo(), QStringLiteral("-2,35"));
    EXPECT_EQ(valore(QStringLiteral("FORMAT('3,14159','#0.0000')")).testo(), QStringLiteral("3,1416"));
    EXPECT_EQ(valore(QStringLiteral("FORMAT(1234567.5,'#0.00')")).testo(), QStringLiteral("1234567,50"));
    EXPECT_TRUE(valore(QStringLiteral("FORMAT(NULL,'#0.00')")).isNull());
    EXPECT_EQ(valore(QStringLiteral("MID('23/11/2005',7,4) || MID('23/11/2005',4,2) || MID('23/11/2005',1,2)")).testo(),
              QStringLiteral("20051123"));
    EXPECT_EQ(valore(QStringLiteral("MID('àbcdè',5)")).testo(), QStringLiteral("è"));
}

TEST_F(Operazioni, SommeEOrdinamentiComeNelleListe)
{
    for (const char* q : {"10,5", "0,25", "2"})
        db().Execute(QStringLiteral("INSERT INTO FATTURE (ID_DOMANDA, NUME_FATT, QTA_PROD, IMPO) VALUES (1, ?, ?, ?)"),
                     {QString::fromLatin1(q).left(2), QString::fromLatin1(q), QString::fromLatin1(q)});
    Recordset somma = db().OpenRecordset(QStringLiteral(
        "SELECT format(Sum(CDBL(FATTURE.QTA_PROD)*10000)/10000,'#0.0000') AS Q, format(Sum(CDBL(FATTURE.IMPO)),'#0.00') AS I "
        "FROM FATTURE WHERE ID_DOMANDA = 1"));
    EXPECT_EQ(somma.Fields(QStringLiteral("Q")).testo(), QStringLiteral("12,7500"));
    EXPECT_EQ(somma.Fields(QStringLiteral("I")).testo(), QStringLiteral("12,75"));

    Recordset ordine = db().OpenRecordset(QStringLiteral("SELECT NUME_FATT FROM FATTURE ORDER BY VAL(FATTURE.NUME_FATT)"));
    QStringList numeri;
    for (; !ordine.eof(); ordine.MoveNext())
        numeri << ordine.Fields(0).testo();
    EXPECT_EQ(numeri, (QStringList{QStringLiteral("0,"), QStringLiteral("2"), QStringLiteral("10")}));
}

TEST_F(Operazioni, TabelleEVisteDaDefinire)
{
    db().CreaTabella(QStringLiteral("PROVA"), {{QStringLiteral("ID"), TipoCampo::Intero, 4, AttributoCampo::Contatore},
                                              {QStringLiteral("NOME"), TipoCampo::Testo, 10, AttributoCampo::LunghezzaVariabile}});
    EXPECT_TRUE(db().TableDefs().contains(QStringLiteral("PROVA")));
    EXPECT_EQ(db().ColonneTabella(QStringLiteral("PROVA")), (QStringList{QStringLiteral("ID"), QStringLiteral("NOME")}));
    EXPECT_EQ(NumeroErrore([&] { db().CreaTabella(QStringLiteral("prova"), {}); }), 3010);
    db().EliminaTabella(QStringLiteral("prova"));
    EXPECT_FALSE(db().EsisteTabella(QStringLiteral("PROVA")));
    EXPECT_EQ(NumeroErrore([&] { db().EliminaTabella(QStringLiteral("PROVA")); }), 3265);

    db().CreaQuery(QStringLiteral("sqlReportUTF"), QStringLiteral("SELECT * FROM TAB_UTF WHERE iD_DOMANDA = 1"));
    EXPECT_TRUE(db().QueryDefs().contains(QStringLiteral("sqlReportUTF")));
    EXPECT_TRUE(db().OpenRecordset(QStringLiteral("SELECT * FROM sqlReportUTF")).eof());
    db().EliminaQuery(QStringLiteral("SQLREPORTUTF"));
    EXPECT_FALSE(db().QueryDefs().contains(QStringLiteral("sqlReportUTF")));
    EXPECT_EQ(NumeroErrore([&] { db().EliminaQuery(QStringLiteral("sqlReportUTF")); }), 3265);
}

TEST_F(Operazioni, VisteDiStampaConsegnate)
{
    const qint64 domanda = db().InserisciRiga(QStringLiteral("DOMANDE"),
        {{QStringLiteral("DOMANDA"), QStringLiteral("00000000042")}, {QStringLiteral("PROGRESSIVO"), QStringLiteral("01")},
         {QStringLiteral("TIPO_ARTICOLO"), QStringLiteral("29")}, {QStringLiteral("ID_VARIETA"), 1}});
    const qint64 fattura = db().InserisciRiga(QStringLiteral("FATTURE"),
        {{QStringLiteral("ID_DOMANDA"), domanda}, {QStringLiteral("NUME_FATT"), QStringLiteral("7")},
         {QStringLiteral("ID_LAVORAZIONE"), 1}});
    db().InserisciRiga(QStringLiteral("BOLLE"), {{QStringLiteral("FK_ID_FATTURA"), fattura}, {QStringLiteral("NUMERO_BOLLA"), QStringLiteral("B9")}});

    Recordset rs = db().OpenRecordset(QStringLiteral("SELECT * FROM Queryreport WHERE DOMANDA = '00000000042' AND PROGRESSIVO = '01'"));
    ASSERT_FALSE(rs.eof());
    EXPECT_EQ(rs.Fields(QStringLiteral("NUME_FATT")).testo(), QStringLiteral("7"));
    EXPECT_EQ(rs.Fields(QStringLiteral("CODI_PROD")).testo(), QStringLiteral("AGR"));
    EXPECT_EQ(rs.Fields(QStringLiteral("CODI_LAVO")).testo(), QStringLiteral("VDT"));
    Recordset bolle = db().OpenRecordset(QStringLiteral("SELECT * FROM Queryreport_bolle WHERE DOMANDA = '00000000042'"));
    ASSERT_FALSE(bolle.eof());
    EXPECT_EQ(bolle.Fields(QStringLiteral("NUMERO_BOLLA")).testo(), QStringLiteral("B9"));
    EXPECT_EQ(bolle.Fields(QStringLiteral("PROGRESSIVO")).testo(), QStringLiteral("01"));
}

}  // namespace
