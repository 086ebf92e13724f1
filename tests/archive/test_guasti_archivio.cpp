// Salvataggio e ripristino davanti ai guasti veri: disco pieno (un processo
// figlio con un limite alla grandezza dei file), processi uccisi a metà
// seguiti da un avvio, avanzi lasciati accanto al database, un dischetto che
// è in realtà una chiavetta con cartelle e file nascosti.

#include "archive/Archivio.h"
#include "archive/floppy.h"
#include "archive/zip_archivio.h"
#include "interchange/Destinazioni.h"
#include "shell/frmSpalsh.h"
#include "shell/session_state.h"
#include "store/database.h"
#include "support/cartella_prova.h"
#include "support/figlio_prova.h"
#include "support/verifiche.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QThread>
#include <csignal>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <zip.h>

namespace {

using namespace Qt::StringLiterals;

const MessaggioRegistrato NonABuonFine{u"Operazione non andata a buon fine."_s, 64, u"Backup/Restore"_s};
const char* const FiglioPieno = "FERMOLA_FIGLIO_PIENO";

class GuastiArchivio : public ProvaConDatabase {
protected:
    void SetUp() override
    {
        ProvaConDatabase::SetUp();
        script->AccettaMessaggiSenzaRisposta();
        sessione().CartellaFloppy = Cartella(u"floppy"_s);
    }

    QString Cartella(const QString& nome)
    {
        const QString c = QDir(m_altrove.path()).filePath(nome);
        QDir().mkpath(c);
        return c;
    }
    static QString Bkp(const QString& cartella) { return QDir(cartella).filePath(u"orvelta_2005.bkp"_s); }
    static QStringList Contenuto(const QString& cartella)
    {
        QStringList c = QDir(cartella).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
        c.removeIf([](const QString& n) { return n.endsWith(u"-wal"_s) || n.endsWith(u"-shm"_s); });
        return c;
    }
    static void Distilleria(const QString& ragione, const QString& database)
    {
        auto d = Database::Apri(database, false, ConnessioneDb);
        d->Execute(u"DELETE FROM DISTILLERIA"_s);
        d->Execute(u"INSERT INTO DISTILLERIA VALUES (?,?,?)"_s, {u"02468135799"_s, ragione, u"Via dell'Uva 1"_s});
    }
    // La distilleria e l'esito del controllo d'integrità del file.
    static QStringList Stato(const QString& database)
    {
        return RigheDelFile(database, u"SELECT RAGI_SOCI FROM DISTILLERIA UNION ALL "
                                      "SELECT * FROM pragma_integrity_check"_s);
    }
    // L'avvio del programma sulla cartella del database; i messaggi che dà.
    Messaggi Avvio()
    {
        script->messaggi.clear();
        AggiornamentoVersione();
        EXPECT_FALSE(sessione().DbDistilleria) << "la schermata d'avvio non tiene connessioni";
        return script->messaggi;
    }

    QTemporaryDir m_altrove;
};

// Il figlio del disco pieno: l'operazione dal menu con i file limitati a
// pochi byte, come su un disco che si riempie; stampa i messaggi avuti.
TEST(DISABLED_FiglioPieno, OperazioneDalMenu)
{
    const QStringList argomenti = qEnvironmentVariable(FiglioPieno).split(u'|');
    ASSERT_EQ(argomenti.size(), 4);
    auto& script = InstallaPiattaformaScript();
    script.AccettaMessaggiSenzaRisposta();
    script.cartelle.enqueue(argomenti[2]);
    sessione().PathDatabase = argomenti[0];
    sessione().CartellaFloppy = u"/nessun/floppy"_s;
    const rlimit limite{argomenti[3].toULongLong(), RLIM_INFINITY};
    std::signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limite), 0);
    ArchivioDaMenu(argomenti[1].toInt());
    sessione().Azzera();
    for (const MessaggioRegistrato& m : script.messaggi)
        printf("MSG\t%d\t%s\t%s\n", m.stile, qPrintable(m.titolo), qPrintable(QString(m.testo).replace(u'\n', u"\\n"_s)));
}

TEST_F(GuastiArchivio, DiscoPienoVero)
{
    // Un database che non si comprime molto: l'archivio supera il limite.
    {
        auto d = Database::Apri(cartella->percorsoDatabase(), false, ConnessioneDb);
        d->IniziaTransazione();
        for (int i = 0; i < 64; ++i) {
            QByteArray caso(4096, Qt::Uninitialized);
            QRandomGenerator(i).fillRange(reinterpret_cast<quint32*>(caso.data()), caso.size() / 4);
            d->Execute(u"INSERT INTO LOGERR (DESC_APPL, CODI_ERRO, DESC_ERRO) VALUES ('riga', ?, ?)"_s,
                       {i, QString::fromLatin1(caso.toBase64())});
        }
        d->ConfermaTransazione();
    }
    Distilleria(u"Cantina Salvata"_s, cartella->percorsoDatabase());
    const QString archivi = Cartella(u"archivi"_s), vuota = Cartella(u"vuota"_s);
    CreaArchivio(cartella->percorsoDatabase(), Bkp(archivi));
    Distilleria(u"Cantina di Oggi"_s, cartella->percorsoDatabase());
    const QStringList prima = Stato(cartella->percorsoDatabase());
    const QString database = QDir::toNativeSeparators(cartella->percorsoDatabase());
    const auto pieno = [](const QString& file) {
        return MessaggioRegistrato{u"Impossibile scrivere '"_s + QDir::toNativeSeparators(file) +
                                       u"': disco pieno o supporto tolto durante la scrittura."_s,
                                   48, u"Backup/Restore"_s};
    };
    const auto menu = [&](const char* operazione) {
        return MessaggioRegistrato{u"Si è verificato un errore durante il "_s + QLatin1String(operazione) +
                                       u" dell'archivio:\n- "_s + sessione().PathDatabase + u"orvelta_2005.mdb"_s,
                                   64, u"FERMOLA_2005"_s};
    };
    struct Caso {
        const char* nome;
        int index;
        QString cartella;
        Messaggi attesi;
    } casi[] = {
        {"salvataggio su una destinazione piena", 0, vuota,
         {pieno(Bkp(vuota) + u".nuovo"_s), NonABuonFine, menu("BackUp")}},
        {"ripristino con il disco del database pieno", 1, archivi,
         {pieno(database + u".nuovo"_s), NonABuonFine, menu("Restore")}},
    };
    for (const Caso& c : casi) {
        SCOPED_TRACE(c.nome);
        QProcess figlio;
        AvviaFiglio(figlio, u"DISABLED_FiglioPieno.*"_s, FiglioPieno,
                    QStringList{sessione().PathDatabase, QString::number(c.index), c.cartella,
                                QString::number(128 * 1024)}
                        .join(u'|'));
        ASSERT_TRUE(figlio.waitForFinished(60000));
        const QByteArray uscita = figlio.readAllStandardOutput();
        ASSERT_EQ(figlio.exitCode(), 0) << uscita.constData() << figlio.readAllStandardError().constData();
        Messaggi avuti;
        for (const QByteArray& riga : uscita.split('\n'))
            if (riga.startsWith("MSG\t")) {
                const QList<QByteArray> campi = riga.split('\t');
                avuti.append({QString::fromUtf8(campi.value(3)).replace(u"\\n"_s, u"\n"_s), campi.value(1).toInt(),
                              QString::fromUtf8(campi.value(2))});
            }
        EXPECT_EQ(c.attesi, avuti);
        EXPECT_EQ(prima, Stato(cartella->percorsoDatabase()));
        EXPECT_EQ(QStringList{u"orvelta_2005.mdb"_s}, Contenuto(sessione().PathDatabase));
        EXPECT_EQ(QStringList{}, Contenuto(vuota));
    }
}

// Il figlio: ripristini e salvataggi senza sosta finché non lo si uccide.
TEST(DISABLED_FiglioArchivio, CicloSenzaFine)
{
    const QString cartella = qEnvironmentVariable("FERMOLA_FIGLIO_ARCHIVIO");
    ASSERT_FALSE(cartella.isEmpty());
    const QString db = QDir(cartella).filePath(u"database"_s);
    fputs("via\n", stderr);
    for (int i = 0;; ++i) {
        RipristinaArchivio(QDir(cartella).filePath(i % 2 ? u"a/orvelta_2005.bkp"_s : u"b/orvelta_2005.bkp"_s), db);
        CreaArchivio(QDir(db).filePath(u"orvelta_2005.mdb"_s), QDir(cartella).filePath(u"c/orvelta_2005.bkp"_s));
    }
}

TEST_F(GuastiArchivio, UnProcessoUccisoESeguitoDaUnAvvioNonLasciaAvanzi)
{
    const QString a = Cartella(u"a"_s), b = Cartella(u"b"_s), c = Cartella(u"c"_s);
    for (const auto& [cartellaArchivio, ragione] : {std::pair{a, u"Cantina A"_s}, std::pair{b, u"Cantina B"_s}}) {
        CartellaProva altra;
        Distilleria(ragione, altra.percorsoDatabase());
        CreaArchivio(altra.percorsoDatabase(), Bkp(cartellaArchivio));
    }
    sessione().PathDatabase = Cartella(u"database"_s) + u'/';
    const QString db = sessione().PathDatabase + u"orvelta_2005.mdb"_s;
    ASSERT_TRUE(QFile::copy(cartella->percorsoDatabase(), db));
    bool giaRipristinato = false;
    for (int giro = 0; giro < 12; ++giro) {
        SCOPED_TRACE(giro);
        QProcess figlio;
        AvviaFiglio(figlio, u"DISABLED_FiglioArchivio.*"_s, u"FERMOLA_FIGLIO_ARCHIVIO"_s, m_altrove.path());
        ASSERT_TRUE(FiglioPartito(figlio));
        QThread::msleep(40 + (giro * 97) % 500);
        figlio.kill();
        figlio.waitForFinished();
        EXPECT_EQ(figlio.exitStatus(), QProcess::CrashExit) << "ucciso, non finito";
        EXPECT_EQ(Messaggi{}, Avvio());
        // Resta il database (e quello di prima del ripristino, che si apre anch'esso).
        QStringList restano = Contenuto(sessione().PathDatabase);
        restano.removeAll(u"orvelta_2005.mdb.bak"_s);
        EXPECT_EQ(QStringList{u"orvelta_2005.mdb"_s}, restano);
        const QStringList righe = Stato(db);
        // Prima che un ripristino arrivi in fondo resta il database di partenza, senza distilleria.
        const bool ripristinato = righe == QStringList({u"Cantina A"_s, u"ok"_s}) ||
                                  righe == QStringList({u"Cantina B"_s, u"ok"_s});
        EXPECT_TRUE(ripristinato || (!giaRipristinato && righe == QStringList{u"ok"_s})) << righe.join(u' ').toStdString();
        giaRipristinato = giaRipristinato || ripristinato;
        // Un archivio col suo nome è sempre intero.
        if (QFile::exists(Bkp(c))) {
            zip_t* z = zip_open(QFile::encodeName(Bkp(c)).constData(), ZIP_RDONLY | ZIP_CHECKCONS, nullptr);
            EXPECT_NE(z, nullptr);
            if (z)
                zip_discard(z);
        }
    }
}

TEST_F(GuastiArchivio, AvanziAllAvvio)
{
    const MessaggioRegistrato rimesso{
        u"Il database non si apriva: è stato rimesso quello che c'era prima dell'ultimo ripristino."_s, 48,
        u"FERMOLA_2005"_s};
    enum class Database { Buono, Mancante, Guasto };
    struct Caso {
        const char* nome;
        bool precedente;  // c'è "orvelta_2005.mdb.bak", della "Cantina di Ieri"
        Database stato;
        Messaggi attesi;
        QStringList restano;
        QString distilleria;
    } casi[] = {
        {"copie provvisorie e di verifica", false, Database::Buono, {}, {u"orvelta_2005.mdb"_s}, u"Cantina di Oggi"_s},
        {".bak con il database che si apre", true, Database::Buono, {},
         {u"orvelta_2005.mdb"_s, u"orvelta_2005.mdb.bak"_s}, u"Cantina di Oggi"_s},
        {".bak senza database", true, Database::Mancante, {rimesso}, {u"orvelta_2005.mdb"_s}, u"Cantina di Ieri"_s},
        {".bak con un database guasto", true, Database::Guasto, {rimesso}, {u"orvelta_2005.mdb"_s},
         u"Cantina di Ieri"_s},
    };
    for (const Caso& c : casi) {
        SCOPED_TRACE(c.nome);
        TearDown();
        SetUp();
        const QString db = cartella->percorsoDatabase();
        if (c.precedente) {
            QFile::copy(db, db + u".bak"_s);
            Distilleria(u"Cantina di Ieri"_s, db + u".bak"_s);
        }
        Distilleria(u"Cantina di Oggi"_s, db);
        for (const char* avanzo : {".nuovo", ".nuovo-wal", ".verifica", ".verifica-journal"}) {
            QFile f(db + QLatin1String(avanzo));
            ASSERT_TRUE(f.open(QIODevice::WriteOnly));
            f.write("a metà");
        }
        if (c.stato == Database::Mancante)
            QFile::remove(db);
        if (c.stato == Database::Guasto) {
            QFile f(db);
            ASSERT_TRUE(f.open(QIODevice::ReadWrite));
            f.seek(100);
            f.write(QByteArray(8192, '\xff'));
        }
        EXPECT_EQ(c.attesi, Avvio());
        EXPECT_EQ(c.restano, Contenuto(sessione().PathDatabase));
        EXPECT_EQ(QStringList({c.distilleria, u"ok"_s}), Stato(db));
    }
}

// Di un supporto si tolgono solo i file comuni e visibili in cima, come
// faceva il "Kill" del dischetto: cartelle e file nascosti restano.
TEST_F(GuastiArchivio, DelDischettoSiTolgonoSoloIFileVisibili)
{
    const MessaggioRegistrato svuota{u"Attenzione il contenuto del floppy verra cancellato"_s, 64, {}};
    const MessaggioRegistrato vuoto{u"Il dischetto deve essere vuoto. Vuoi cancellare il contenuto nel disco?"_s, 35,
                                    u"Controllo floppy "_s};
    const MessaggioRegistrato noFiles{u"Il dischetto non deve contenere files."_s, 64, {}};
    const MessaggioRegistrato cancellare{u"Vuoi cancellare i files contenuti nel disco?"_s, 36, {}};
    struct Caso {
        const char* nome;
        std::function<void()> controllo;
        QList<int> risposte;
        Messaggi attesi;
    } casi[] = {
        {"scarico", [] { EXPECT_TRUE(Chk_Disk()); }, {RispostaMsg::OK}, {svuota}},
        {"salvataggio", [] { ControlloFloppyVuoto(); }, {RispostaMsg::Si}, {vuoto}},
        {"cambio di disco", [] { EXPECT_TRUE(ControlloFloppyFile()); }, {RispostaMsg::OK, RispostaMsg::Si},
         {noFiles, cancellare}},
    };
    const QString floppy = sessione().CartellaFloppy;
    for (const Caso& c : casi)
        for (const bool conFile : {true, false}) {
            SCOPED_TRACE(std::string(c.nome) + (conFile ? " con un file" : " senza file"));
            QDir().mkpath(floppy + u"/foto"_s);
            QStringList file{u"/foto/a.jpg"_s, u"/.nascosto"_s};
            if (conFile)
                file << u"/vecchio.txt"_s;
            for (const QString& nome : file) {
                QFile f(floppy + nome);
                ASSERT_TRUE(f.open(QIODevice::WriteOnly));
            }
            script->messaggi.clear();
            script->risposte.clear();
            script->risposte.append(c.risposte);
            c.controllo();
            EXPECT_EQ(conFile ? c.attesi : Messaggi{}, script->messaggi);
            EXPECT_FALSE(sessione().OperazioneAnnullata || sessione().ControlloFloppyRipeti);
            EXPECT_EQ(QStringList({u".nascosto"_s, u"foto"_s}), Contenuto(floppy));
            EXPECT_TRUE(QFile::exists(floppy + u"/foto/a.jpg"_s));
        }
}

}  // namespace
