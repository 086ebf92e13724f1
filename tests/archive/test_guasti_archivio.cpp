// Salvataggio e ripristino davanti ai guasti veri: disco pieno (un processo
// figlio con un limite alla grandezza dei file), processi uccisi a metà
// seguiti da un avvio, avanzi lasciati accanto al database.

#include "archive/Archivio.h"
#include "archivio_prova.h"
#include "shell/frmSpalsh.h"
#include "support/figlio_prova.h"

#include <QRandomGenerator>
#include <QThread>
#include <csignal>
#include <sys/resource.h>
#include <zip.h>

namespace {

using namespace Qt::StringLiterals;

const char* const FiglioPieno = "FERMOLA_FIGLIO_PIENO";

class GuastiArchivio : public ProvaArchivio {
protected:
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
    struct Caso {
        const char* nome;
        int index;
        QString cartella;
        Messaggi attesi;
    } casi[] = {
        {"salvataggio su una destinazione piena", 0, vuota,
         {pieno(Bkp(vuota) + u".nuovo"_s), NonABuonFine, ErroreMenu("BackUp")}},
        {"ripristino con il disco del database pieno", 1, archivi,
         {pieno(database + u".nuovo"_s), NonABuonFine, ErroreMenu("Restore")}},
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
    ArchivioDi(u"Cantina A"_s, a);
    ArchivioDi(u"Cantina B"_s, b);
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

}  // namespace
