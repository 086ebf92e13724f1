// Il file consegnato all'utente: disco pieno vero, cartella o dischetto
// protetti con la loro via d'uscita, copie provvisorie che non restano, un
// processo ucciso a metà scarico, il file di carico con qualunque maiuscola.

#include "interchange/Destinazioni.h"
#include "interchange/ScaricoFatture.h"
#include "record_prova.h"
#include "shell/frmSpalsh.h"
#include "store/database.h"
#include "support/cartella_prova.h"
#include "support/figlio_prova.h"
#include "support/verifiche.h"
#include "../archive/sola_lettura.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QThread>
#include <cerrno>
#include <cstring>
#include <functional>
#include <optional>
#include <sys/mount.h>

namespace {

const QString Titolo = QStringLiteral(" Scarico della Domanda ");
const QString Etichetta = QStringLiteral(" FrmSelezionaFatture.SelRiga_SelFatture");
const char* const VariabileFiglio = "FERMOLA_SCARICO_FIGLIO";

class Supporti : public ProvaConDatabase {
protected:
    void SetUp() override
    {
        ProvaConDatabase::SetUp();
        script->AccettaMessaggiSenzaRisposta();
        sessione().TitoloMaschera = Titolo;
        sessione().DistilleriaDati = Distilleria();
        dest = QDir(cartella->cartella()).filePath("uscita");
        QDir().mkpath(dest);
        sessione().CartellaFloppy = QDir(cartella->cartella()).filePath("floppy");
        QDir().mkpath(sessione().CartellaFloppy);
    }

public:
    // Una domanda stampata con le sue fatture (262 byte l'una nel file).
    void Semina(int fatture)
    {
        db().Execute("INSERT INTO DOMANDE (DOMANDA, PROGRESSIVO, STAM, SCAR, TIPO_ARTICOLO, ID_VARIETA, PROG_INVIO,"
                     " DATA_CAMP) VALUES ('123456789', '01', 'S', 'N', '29', 2, 0, '2005')");
        const qint64 id = db().OpenRecordset("SELECT MAX(ID_DOMANDA) FROM DOMANDE").Fields(0).intero();
        sessione().DomandaSel.ID_DOMANDA = static_cast<qint32>(id);
        sessione().DomandaSel.DOMANDA = "123456789";
        for (int i = 1; i <= fatture; ++i)
            db().Execute("INSERT INTO FATTURE (ID_DOMANDA, CODI_FISC, DENOMINAZIONE, NUME_FATT, DATA_FATT, QTA_PROD,"
                         " QTA_LAVO, GRAD, IMPO, ID_LAVORAZIONE) VALUES (?, 'RSSMRA70A01H501S', 'CANTINA', ?,"
                         " '15/03/2006', '1500,0000', '1480,0000', '12,5000', '3675,00', 1)",
                         {id, i});
    }
    QString Stato()
    {
        return Righe(db(), "SELECT PROG FROM PROG_DSK").join(',') + " " +
               Righe(db(), "SELECT SCAR || PROG_INVIO FROM DOMANDE").join(',');
    }
    static QStringList Contenuto(const QString& cartella)
    {
        return QDir(cartella).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    }
    bool Temporaneo() const { return QFile::exists(FileDelProgramma("COPI1.666")); }
    static void Scrivi(const QString& percorso, const QByteArray& dati = "x")
    {
        QFile f(percorso);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(dati);
    }
    QString dest;
};

MessaggioRegistrato LogErr(int numero, const QString& descrizione)
{
    return {MessaggioLogErr(numero, descrizione, Etichetta), 48, "Gestione Errori"};
}

TEST_F(Supporti, DestinazioniCheNonSiScrivonoNonLascianoNullaAMeta)
{
    const MessaggioRegistrato svuota{"Attenzione il contenuto del floppy verra cancellato", 64, ""};
    const MessaggioRegistrato protezione{"Togliere la protezione in scrittura dal dischetto", 17, Titolo};
    struct Caso {
        const char* nome;
        bool floppy;      // destinazione sul dischetto, altrimenti la cartella
        bool protetta;
        QList<int> risposte;
        std::function<Messaggi(const QString& cartella)> attesi;
        QString stato;
        QStringList restano;
    } casi[] = {
        {"cartella protetta: errore registrato, nessuna ripetizione", false, true, {},
         [](const QString& c) {
             return Messaggi{LogErr(75, "Impossibile scrivere '" + QDir(c).filePath("KelvarFAT.001.nuovo") +
                                            "': cartella o supporto protetti in scrittura.")};
         },
         "1 N0", {"vecchio.txt"}},
        {"dischetto protetto: OK ripete, Annulla chiude lo scarico", true, true,
         {RispostaMsg::OK, RispostaMsg::OK, RispostaMsg::OK, RispostaMsg::Annulla},
         [&](const QString&) {
             return Messaggi{svuota, protezione, svuota, protezione, LogErr(75, "Errore di accesso al percorso/file")};
         },
         "0 N0", {"vecchio.txt"}},
        {"copia provvisoria di uno scarico interrotto", false, false, {},
         [](const QString&) { return Messaggi{}; }, "1 S1", {"KelvarFAT.001", "vecchio.txt"}},
    };
    for (const Caso& c : casi) {
        SCOPED_TRACE(c.nome);
        TearDown();
        SetUp();
        Semina(3);
        const QString cartella = c.floppy ? sessione().CartellaFloppy : dest;
        Scrivi(QDir(cartella).filePath("vecchio.txt"));
        Scrivi(QDir(cartella).filePath("KelvarFAT.007.nuovo"), "a met");
        std::optional<SolaLettura> blocco;
        if (c.protetta) {
            QFile::remove(QDir(cartella).filePath("KelvarFAT.007.nuovo"));
            blocco.emplace(cartella);
            if (!ScritturaNegata(cartella))
                continue;  // qui neppure root si ferma: la prova non ha senso
        }
        script->risposte.append(c.risposte);
        EXPECT_EQ(!c.protetta, ScaricaDomanda(cartella));
        blocco.reset();
        EXPECT_EQ(c.attesi(cartella), script->messaggi);
        EXPECT_TRUE(script->risposte.isEmpty());
        EXPECT_EQ(c.stato, Stato());
        EXPECT_EQ(c.protetta, Temporaneo());
        EXPECT_EQ(c.restano, Contenuto(cartella));
    }
}

// Un supporto davvero pieno: un file system piccolo montato per la prova.
TEST_F(Supporti, DiscoPienoVero)
{
    Semina(20);  // più di una pagina da 4 KB
    if (::mount("tmpfs", QFile::encodeName(dest).constData(), "tmpfs", 0, "size=4k") != 0)
        GTEST_SKIP() << "montaggio non permesso qui: " << std::strerror(errno);
    EXPECT_FALSE(ScaricaDomanda(dest));
    const QStringList restano = Contenuto(dest);
    ::umount2(QFile::encodeName(dest).constData(), MNT_DETACH);
    EXPECT_EQ(Messaggi{LogErr(61, "Impossibile scrivere '" + QDir(dest).filePath("KelvarFAT.001.nuovo") +
                                      "': disco pieno o supporto tolto durante la scrittura.")},
              script->messaggi);
    EXPECT_EQ(QStringList{}, restano);
    EXPECT_EQ("1 N0", Stato());
    EXPECT_TRUE(Temporaneo());
}

// Il figlio: scarichi della stessa domanda senza sosta finché non lo si uccide.
TEST(DISABLED_FiglioScarico, CicloSenzaFine)
{
    const QString cartella = qEnvironmentVariable(VariabileFiglio);
    ASSERT_FALSE(cartella.isEmpty());
    InstallaPiattaformaScript().AccettaMessaggiSenzaRisposta();
    sessione().PathDatabase = QDir(cartella).filePath("database") + '/';
    sessione().DistilleriaDati = Distilleria();
    sessione().CampagnaCorrente = "2005";
    sessione().DbDistilleria = Database::Apri(sessione().PathDatabase + NomeDatabase, false, ConnessioneDb);
    sessione().DomandaSel.ID_DOMANDA =
        static_cast<qint32>(Db().OpenRecordset("SELECT MAX(ID_DOMANDA) FROM DOMANDE").Fields(0).intero());
    fputs("via\n", stderr);
    for (;;)
        ScaricaDomanda(QDir(cartella).filePath("uscita"));
}

TEST_F(Supporti, UnoScaricoUccisoNonLasciaFileAMeta)
{
    Semina(40);
    sessione().DbDistilleria.reset();
    for (int giro = 0; giro < 8; ++giro) {
        SCOPED_TRACE(giro);
        QProcess figlio;
        AvviaFiglio(figlio, "DISABLED_FiglioScarico.*", VariabileFiglio, cartella->cartella());
        ASSERT_TRUE(FiglioPartito(figlio));
        QThread::msleep(30 + (giro * 89) % 400);
        figlio.kill();
        figlio.waitForFinished();
        // L'avvio: il database si apre ed è integro.
        script->messaggi.clear();
        AggiornamentoVersione();
        EXPECT_EQ(Messaggi{}, script->messaggi);
        EXPECT_EQ(QStringList{"ok"}, RigheDelFile(cartella->percorsoDatabase(), "PRAGMA integrity_check"));
    }
    // Uno scarico ancora: toglie le sue copie provvisorie rimaste.
    db();
    ASSERT_TRUE(ScaricaDomanda(dest));
    const QStringList finali = Contenuto(dest);
    ASSERT_FALSE(finali.isEmpty());
    QFile ultimo(QDir(dest).filePath(finali.last()));
    ASSERT_TRUE(ultimo.open(QIODevice::ReadOnly));
    const QByteArray corpo = ultimo.readAll().mid(262);
    const QList<QByteArray> righe = corpo.split('\n');
    ASSERT_EQ(42, righe.size()) << "40 fatture, la coda e il fine riga";
    EXPECT_TRUE(righe.at(40).startsWith('9'));
    for (const QString& nome : finali) {
        SCOPED_TRACE(nome.toStdString());
        EXPECT_TRUE(QRegularExpression("^KelvarFAT\\.\\d{3}$").match(nome).hasMatch());
        QFile f(QDir(dest).filePath(nome));
        ASSERT_TRUE(f.open(QIODevice::ReadOnly));
        EXPECT_EQ(corpo, f.readAll().mid(262)) << "file intero, uguale all'ultimo fuori che nella testata";
    }
}

TEST_F(Supporti, FileDiCaricoConQualunqueMaiuscola)
{
    const QString etichetta = "ART29FAT2005.txt";
    struct Caso {
        const char* nome;
        QStringList file;
        QString trovato;
        Messaggi messaggi;
    } casi[] = {
        {"maiuscole come nell'etichetta della maschera", {"ART29FAT2005.TXT"}, "ART29FAT2005.TXT", {}},
        {"tutto minuscolo", {"art29fat2005.txt"}, "art29fat2005.txt", {}},
        {"due nomi che differiscono per le maiuscole", {"ART29FAT2005.TXT", "ART29FAT2005.txt"}, "",
         {{"Nella cartella ci sono più file di nome ART29FAT2005.txt che differiscono solo per maiuscole e "
           "minuscole: ART29FAT2005.TXT, ART29FAT2005.txt. Lasciarne uno solo.",
           53, Titolo}}},
    };
    for (const Caso& c : casi) {
        SCOPED_TRACE(c.nome);
        QTemporaryDir cartellaCarico;
        for (const QString& nome : c.file)
            Scrivi(cartellaCarico.filePath(nome));
        script->messaggi.clear();
        script->cartelle.enqueue(cartellaCarico.path());
        script->Rispondi(RispostaMsg::Annulla);
        QString nome = etichetta;
        const QString atteso = c.trovato.isEmpty() ? QString() : cartellaCarico.filePath(c.trovato);
        EXPECT_EQ(atteso, TrovaFileInCartella(nome, "titolo"));
        EXPECT_EQ(atteso.isEmpty() ? etichetta : atteso, nome);
        EXPECT_EQ(c.messaggi, script->messaggi);
        script->risposte.clear();
    }
}

}  // namespace
