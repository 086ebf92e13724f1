// Facciata del database: apertura e suoi errori, letture e scritture,
// regole su Null e maiuscole, funzioni SQL del dialetto, definizioni e viste.
#include "common/errore.h"
#include "support/prova.h"

#include <QCryptographicHash>
#include <QProcess>

namespace {

using namespace Qt::StringLiterals;

// Impronta del contenuto, vuota se il file non c'è.
QByteArray Impronta(const QString& percorso)
{
    QFile f(percorso);
    return f.open(QIODevice::ReadOnly) ? QCryptographicHash::hash(f.readAll(), QCryptographicHash::Sha256)
                                       : QByteArray();
}

TEST(Apertura, OgniFileCheNonSiApreDaIlSuoNumeroENonVieneToccato)
{
    CartellaProva cartella;
    const QString consegnato = cartella.percorsoDatabase();
    const QString testo = cartella.cartella() + u"/testo.mdb"_s, estraneo = cartella.cartella() + u"/estraneo.db"_s;
    {
        QFile f(testo);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(QByteArray("Questo non è un database, solo testo.\r\n").repeated(200));
    }
    ASSERT_EQ(QProcess::execute(u"sqlite3"_s, {estraneo, u"CREATE TABLE T (A TEXT);"_s}), 0);
    const struct { const char* caso; QString percorso, connessione; int numero; } casi[] = {
        {"password giusta", consegnato, ConnessioneDb, 0},
        {"file assente: non si crea", cartella.cartella() + u"/manca.mdb"_s, ConnessioneDb, 3024},
        {"password errata", consegnato, u";PWD=cedro5"_s, 3031},
        {"senza password", consegnato, QString(), 3031},
        {"testo, non un database", testo, ConnessioneDb, 3343},
        {"database SQLite estraneo, senza password", estraneo, ConnessioneDb, 3343},
    };
    for (const auto& c : casi) {
        SCOPED_TRACE(c.caso);
        const QByteArray prima = Impronta(c.percorso);
        std::unique_ptr<Database> db;
        EXPECT_EQ(NumeroErrore([&] { db = Database::Apri(c.percorso, false, c.connessione); }), c.numero);
        EXPECT_EQ(db && db->aperto() && db->Name() == c.percorso, c.numero == 0);
        if (db)
            db->Close();
        EXPECT_EQ(Impronta(c.percorso), prima);
    }
    // Nello stesso processo: in uso finché l'apertura esclusiva non si chiude.
    auto esclusivo = Database::Apri(consegnato, true, ConnessioneDb);
    EXPECT_EQ(NumeroErrore([&] { Database::Apri(consegnato, false, ConnessioneDb); }), 3045);
    esclusivo->Close();
    EXPECT_NO_THROW(Database::Apri(consegnato, false, ConnessioneDb));
}

class Operazioni : public ProvaConDatabase {};

TEST_F(Operazioni, ExecuteERecordsetInAvantiConNullENomiSenzaMaiuscole)
{
    Recordset vuoto = db().OpenRecordset(u"SELECT * FROM DOMANDE"_s);
    EXPECT_TRUE(vuoto.eof());
    EXPECT_EQ(NumeroErrore([&] { vuoto.Fields(u"DOMANDA"_s); }), 3021);

    db().Execute(u"INSERT INTO DOMANDE (DOMANDA, PROGRESSIVO) VALUES ('00000000001', NULL), ('00000000002', '01')"_s);
    EXPECT_EQ(db().Execute(u"UPDATE DOMANDE SET STAM = 'N' WHERE DOMANDA <> '3'"_s), 2);
    EXPECT_EQ(db().RecordsAffected(), 2);
    EXPECT_EQ(db().Execute(u"DELETE FROM DOMANDE WHERE DOMANDA = '9'"_s), 0);

    Recordset rs = db().OpenRecordset(u"SELECT * FROM DOMANDE ORDER BY DOMANDA"_s);
    ASSERT_FALSE(rs.eof());
    EXPECT_EQ(rs.Fields(u"domanda"_s).testo(), u"00000000001"_s);
    EXPECT_EQ(rs.Fields(u"Domanda"_s).testo(), rs.Fields(1).testo());
    EXPECT_TRUE(rs.Fields(u"PROGRESSIVO"_s).isNull());
    EXPECT_EQ(rs.Fields(u"PROGRESSIVO"_s).testo(), QString());
    EXPECT_EQ(rs.Fields(u"PROGRESSIVO"_s).numero(), 0.0);
    EXPECT_EQ(NumeroErrore([&] { rs.Fields(u"NON_ESISTE"_s); }), 3265);
    rs.MoveNext();
    ASSERT_FALSE(rs.eof());
    EXPECT_EQ(rs.Fields(u"progressivo"_s).testo(), u"01"_s);
    rs.MoveNext();
    EXPECT_TRUE(rs.eof());
    EXPECT_EQ(NumeroErrore([&] { rs.MoveNext(); }), 3021);

    // Il testo si confronta senza riguardo alle maiuscole, anche con LIKE.
    db().Execute(u"INSERT INTO FATTURE (CODI_FISC, DENOMINAZIONE) VALUES ('RSSMRA80A01H501U', 'Cantina Rossi')"_s);
    EXPECT_EQ(Righe(db(), u"SELECT COUNT(*) FROM FATTURE WHERE CODI_FISC = ? AND DENOMINAZIONE LIKE 'CANT%'"_s,
                    {u"rssmra80a01h501u"_s}),
              QStringList{u"1"_s});
}

TEST_F(Operazioni, InserimentoERigaInteraConChiaveContatoreMaiRiusata)
{
    const qint64 primo = db().InserisciRiga(u"BOLLE"_s, {{u"FK_ID_FATTURA"_s, 0}, {u"NUMERO_BOLLA"_s, u"B1"_s}});
    const qint64 secondo = db().InserisciRiga(u"BOLLE"_s, {{u"NUMERO_BOLLA"_s, u"B2"_s}});
    EXPECT_EQ(secondo, primo + 1);
    db().Execute(u"DELETE FROM BOLLE WHERE ID_BOLLA = ?"_s, {secondo});
    EXPECT_EQ(db().InserisciRiga(u"BOLLE"_s, {{u"NUMERO_BOLLA"_s, u"B3"_s}}), secondo + 1);
    EXPECT_EQ(db().AggiornaRiga(u"BOLLE"_s, {{u"GRADO"_s, u"12,5"_s}}, u"WHERE ID_BOLLA = ?"_s, {primo}), 1);
    EXPECT_EQ(Righe(db(), u"SELECT GRADO, FK_ID_FATTURA FROM BOLLE WHERE ID_BOLLA = ?"_s, {primo}),
              QStringList{u"12,5|0"_s});
}

// I valori legati alle scritture: tipo e valore come li legava il driver Qt
// (un testo nullo è Null, un testo vuoto no); una stessa tabella scritta con
// altre colonne non riusa l'istruzione di prima.
TEST_F(Operazioni, ValoriLegatiEColonneDiInserisciRiga)
{
    db().Execute(u"CREATE TABLE PROVA (X)"_s);
    const struct {
        QVariant valore;
        const char* atteso;  // typeof|valore
    } casi[] = {
        {QVariant(QString()), "null|"},
        {QVariant(u""_s), "text|"},
        {QVariant(u"L'ALBA \"È\""_s), "text|L'ALBA \"È\""},
        {QVariant(42), "integer|42"},
        {QVariant(qint64(1) << 40), "integer|1099511627776"},
        {QVariant(true), "integer|1"},
        {QVariant(2.5), "real|2,5"},
        {QVariant(QByteArray("\x01\x02", 2)), "blob|\x01\x02"},
        {QVariant(), "null|"},
    };
    for (const auto& c : casi) {
        db().Execute(u"DELETE FROM PROVA"_s);
        db().Execute(u"INSERT INTO PROVA (X) VALUES (?)"_s, {c.valore});
        EXPECT_EQ(Righe(db(), u"SELECT typeof(X), X FROM PROVA"_s), QStringList{QString::fromUtf8(c.atteso)})
            << c.atteso;
    }
    db().InserisciRiga(u"DOMANDE"_s, {{u"DOMANDA"_s, u"1"_s}});
    db().InserisciRiga(u"DOMANDE"_s, {{u"DOMANDA"_s, u"2"_s}, {u"PROGRESSIVO"_s, u"07"_s}});
    db().InserisciRiga(u"DOMANDE"_s, {{u"PROGRESSIVO"_s, u"08"_s}});
    EXPECT_EQ(Righe(db(), u"SELECT DOMANDA, PROGRESSIVO FROM DOMANDE ORDER BY ID_DOMANDA"_s),
              (QStringList{u"1|"_s, u"2|07"_s, u"|08"_s}));
    // La prima colonna della prima riga, Null senza righe.
    const QString primo = u"SELECT PROGRESSIVO, DOMANDA FROM DOMANDE WHERE DOMANDA >= ? ORDER BY ID_DOMANDA"_s;
    EXPECT_EQ(db().PrimoValore(primo, {u"2"_s}).testo(), u"07"_s);
    EXPECT_TRUE(db().PrimoValore(primo, {u"3"_s}).isNull());
    EXPECT_EQ(NumeroErrore([&] { db().PrimoValore(u"SELECT X FROM NON_CE"_s); }), 3078);
}

TEST_F(Operazioni, ErroriDelMotoreConINumeriNoti)
{
    EXPECT_EQ(NumeroErrore([&] { db().Execute(u"DELETE FROM TABELLA_CHE_NON_CE"_s); }), 3078);
    EXPECT_EQ(NumeroErrore([&] { db().OpenRecordset(u"SELEC * FORM DOMANDE"_s); }), 3075);
    EXPECT_EQ(NumeroErrore([&] { db().Execute(u"INSERT INTO TIPO_ARTICOLO_DOMANDA VALUES ('29')"_s); }), 3022);
    db().Close();
    EXPECT_NE(NumeroErrore([&] { db().Execute(u"DELETE FROM LOGERR"_s); }), 0);
}

TEST_F(Operazioni, FunzioniSqlConLaVirgolaDecimale)
{
    const struct { const char *espressione, *atteso; } casi[] = {
        {"CDBL('12,5')", "12,5"}, {"CDBL('1.234,5')", "1234,5"}, {"CDBL(7)", "7"},
        {"CDBL(IIF(TRIM(IFNULL(NULL,''))='',0,NULL))", "0"},
        {"CSNG('0,123456789')", "0,1234568"},  // singola precisione, attraverso 7 cifre
        {"VAL('12abc')", "12"}, {"FORMAT(2.345,'#0.00')", "2,35"}, {"FORMAT(-2.345,'#0.00')", "-2,35"},
        {"FORMAT('3,14159','#0.0000')", "3,1416"}, {"FORMAT(1234567.5,'#0.00')", "1234567,50"},
        {"FORMAT(NULL,'#0.00') IS NULL", "1"},
        {"MID('23/11/2005',7,4) || MID('23/11/2005',4,2) || MID('23/11/2005',1,2)", "20051123"},
        {"MID('àbcdè',5)", "è"},
        // un reale letto come testo è scritto come da CStr
        {"CDBL('1000000000000000')", "1E+15"}, {"CDBL('0,00001')", "0,00001"},
        // somme e ordinamenti come nelle liste: VAL ordina per numero, non per testo
        {"format(Sum(CDBL(Q)*10000)/10000,'#0.0000') FROM (SELECT '10,5' Q UNION ALL SELECT '0,25' UNION ALL "
         "SELECT '2')", "12,7500"},
        {"group_concat(Q, ' ') FROM (SELECT Q FROM (SELECT '10' Q UNION ALL SELECT '0,' UNION ALL SELECT '2') "
         "ORDER BY VAL(Q))", "0, 2 10"},
    };
    for (const auto& c : casi)
        EXPECT_EQ(Righe(db(), u"SELECT "_s + QString::fromUtf8(c.espressione)), QStringList{QString::fromUtf8(c.atteso)})
            << c.espressione;
    // CDBL('') fallisce come nel motore originale.
    for (const char* testo : {"''", "'dodici'"})
        EXPECT_EQ(NumeroErrore([&] { Righe(db(), u"SELECT CDBL(%1)"_s.arg(QLatin1String(testo))); }), 13) << testo;
}

TEST_F(Operazioni, TabelleEVisteDaDefinire)
{
    db().CreaTabella(u"PROVA"_s, {{u"ID"_s, TipoCampo::Intero, 4, AttributoCampo::Contatore},
                                  {u"NOME"_s, TipoCampo::Testo, 10, AttributoCampo::LunghezzaVariabile}});
    EXPECT_EQ(db().ColonneTabella(u"PROVA"_s), (QStringList{u"ID"_s, u"NOME"_s}));
    EXPECT_EQ(NumeroErrore([&] { db().CreaTabella(u"prova"_s, {}); }), 3010);
    db().EliminaTabella(u"prova"_s);
    EXPECT_FALSE(db().EsisteTabella(u"PROVA"_s));
    EXPECT_EQ(NumeroErrore([&] { db().EliminaTabella(u"PROVA"_s); }), 3265);

    db().CreaQuery(u"sqlReportUTF"_s, u"SELECT * FROM TAB_UTF WHERE iD_DOMANDA = 1"_s);
    EXPECT_TRUE(db().QueryDefs().contains(u"sqlReportUTF"_s));
    EXPECT_TRUE(db().OpenRecordset(u"SELECT * FROM sqlReportUTF"_s).eof());
    db().EliminaQuery(u"SQLREPORTUTF"_s);
    EXPECT_FALSE(db().QueryDefs().contains(u"sqlReportUTF"_s));
    EXPECT_EQ(NumeroErrore([&] { db().EliminaQuery(u"sqlReportUTF"_s); }), 3265);
}

}  // namespace
