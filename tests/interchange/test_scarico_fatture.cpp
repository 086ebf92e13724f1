// Scarico di una domanda del ramo fatture: il file finale byte per byte, i
// numeri PROG_DSK e PROG_INVIO, ogni riga della tabella dei guasti, il
// dischetto e la maschera frmScarico; poi il file consegnato davanti ai
// guasti veri: supporti protetti, disco pieno, un processo ucciso a metà.

#include "interchange/Destinazioni.h"
#include "interchange/ScaricoFatture.h"
#include "interchange/frmScarico.h"
#include "scarico_prova.h"
#include "shell/frmSpalsh.h"
#include "shell/registro_maschere.h"
#include "support/figlio_prova.h"
#include "../archive/sola_lettura.h"

#include <QRegularExpression>
#include <QThread>
#include <cerrno>
#include <cstring>
#include <functional>
#include <optional>
#include <sys/mount.h>

namespace {

const QString Titolo = QStringLiteral(" Scarico della Domanda ");
const QString NomeLungo = QStringLiteral("CANTINA SOCIALE COOPERATIVA DEI VIGNAIOLI RIUNITI DELLE COLLINE DI CANELLI E");
const QString Etichetta = QStringLiteral(" FrmSelezionaFatture.SelRiga_SelFatture");
const char* const VariabileFiglio = "FERMOLA_SCARICO_FIGLIO";

class ScaricoFatture : public ProvaScarico {
protected:
    ScaricoFatture() : ProvaScarico(Titolo, QStringLiteral("DOMANDE"), QStringLiteral("KelvarFAT.")) {}

    // Domanda di 9 cifre con due fatture fuori ordine di numero: la "10"
    // scritta per prima, con un nome di 75 caratteri, senza data di pagamento
    // e senza quantità lavorata; la "9" con la sua bolla senza grado. Le bolle
    // escono nell'ordine delle fatture che le portano.
    void SeminaDomanda(bool conFatture = true)
    {
        db().Execute("INSERT INTO DOMANDE (DOMANDA, PROGRESSIVO, STAM, SCAR, TIPO_ARTICOLO, ID_VARIETA, PROG_INVIO,"
                     " DATA_CAMP) VALUES ('123456789', '01', 'S', 'N', '29', 2, 0, '2005')");
        const qint64 id = db().OpenRecordset("SELECT MAX(ID_DOMANDA) FROM DOMANDE").Fields(0).intero();
        DomandaSelezionata& d = sessione().DomandaSel;
        d.ID_DOMANDA = static_cast<qint32>(id);
        d.DOMANDA = QStringLiteral("123456789");
        d.ID_VARIETA = QStringLiteral("2");
        d.TIPO_ARTICOLO = QStringLiteral("29");
        if (!conFatture)
            return;
        const QString fattura =
            "INSERT INTO FATTURE (ID_DOMANDA, CODI_FISC, DENOMINAZIONE, NUME_FATT, DATA_FATT, DATA_COMP, DATA_PAGA,"
            " QTA_PROD, QTA_LAVO, GRAD, PREZ_MINI, IMPO, IVA, IMPO_TOTA, ID_LAVORAZIONE)"
            " VALUES (?, 'RSSMRA70A01H501S', ?, ?, '15/03/2006', '02/03/2006', ?, '1500,0000', '1480,0000',"
            " '12,5000', '2,4500', '3675,00', '735,00', '4410,00', ?)";
        db().Execute(fattura, {id, NomeLungo, "10", "", 1});
        const qint64 f10 = db().OpenRecordset("SELECT MAX(ID_FATTURA) FROM FATTURE").Fields(0).intero();
        db().Execute(fattura, {id, "CANTINA SOCIALE DI CANELLI", "9", "20/04/2006", 2});
        const qint64 f9 = f10 + 1;
        const QString bolla = "INSERT INTO BOLLE (FK_ID_FATTURA, NUMERO_BOLLA, DATA_CONSEGNA, QUANTITA_PRODOTTO,"
                              " DATA_PAGA, GRADO) VALUES (?, ?, ?, ?, ?, ?)";
        // La data di pagamento è quella della bolla, anche Null.
        db().Execute(bolla, {f9, "B-2", "05/03/2006", "100,0000", QVariant(), QVariant()});
        db().Execute(bolla, {f10, "B-1", "02/03/2006", "750,0000", "21/04/2006", "12,5000"});
        db().Execute("UPDATE FATTURE SET QTA_LAVO = NULL WHERE ID_FATTURA = ?", {f10});
    }

    // La domanda con "fatture" fatture uguali (262 byte l'una nel file).
    void SeminaFatture(int fatture)
    {
        SeminaDomanda(false);
        for (int i = 1; i <= fatture; ++i)
            db().Execute("INSERT INTO FATTURE (ID_DOMANDA, CODI_FISC, DENOMINAZIONE, NUME_FATT, DATA_FATT, QTA_PROD,"
                         " QTA_LAVO, GRAD, IMPO, ID_LAVORAZIONE) VALUES (?, 'RSSMRA70A01H501S', 'CANTINA', ?,"
                         " '15/03/2006', '1500,0000', '1480,0000', '12,5000', '3675,00', 1)",
                         {sessione().DomandaSel.ID_DOMANDA, i});
    }

    std::optional<SolaLettura> blocco;
    bool montata = false;
};

QString Testata(const QString& numero)
{
    return "0" + QString(16, '0') + "2005/2006" + numero + QDate::currentDate().toString("yyyyMMdd") +
           Sx("DISTILLERIA BOSCO SPA", 50) + Sx("VIA ROMA 12 ASTI", 30) + "02" + "29" + Bianchi(138);
}

TEST_F(ScaricoFatture, FileFinaleBytePerByte)
{
    SeminaDomanda();
    ASSERT_TRUE(ScaricaDomanda(destinazione + "/"));
    const QStringList attese = {
        Testata("0001"),
        "1" "12345678900" "01234567890     " "A" "VAT" "ANE" "RSSMRA70A01H501S" + Sx("9", 15) +
            "20060315" "00015000000" "125000" "00024500" "00000000367500" "00000000073500" "00000000441000"
            "20060420" "00014800000" + Sx("CANTINA SOCIALE DI CANELLI", 70) + Bianchi(30),
        "1" "12345678900" "01234567890     " "A" "VDT" "ANE" "RSSMRA70A01H501S" + Sx("10", 15) +
            "20060315" "00015000000" "125000" "00024500" "00000000367500" "00000000073500" "00000000441000"
            "00000000" "00000000000" + NomeLungo.left(70) + Bianchi(30),
        "2" "12345678900" + Sx("10", 15) + "RSSMRA70A01H501S" + Sx("B-1", 20) + "02/03/2006" "00007500000"
            "21/04/2006" "125000" + Bianchi(160),
        "2" "12345678900" + Sx("9", 15) + "RSSMRA70A01H501S" + Sx("B-2", 20) + "05/03/2006" "00001000000" +
            Bianchi(10) + "000000" + Bianchi(160),
        "9" + QString(16, '9') + "000002" "000002" + Bianchi(231),
    };
    ConfrontaRighe(attese, Finale());
    EXPECT_FALSE(QFile::exists(Temporaneo()));
    EXPECT_TRUE(script->messaggi.isEmpty());
    EXPECT_EQ("1 S1", Stato());

    // Un secondo scarico della stessa domanda prende il numero seguente.
    ASSERT_TRUE(ScaricaDomanda(destinazione));
    EXPECT_TRUE(QFile::exists(Finale("002")));
    EXPECT_EQ(Testata("0002"), LeggiRighe(Finale("002")).first());
    EXPECT_EQ("2 S2", Stato());
}

TEST_F(ScaricoFatture, DomandaSenzaFattureDaTestataECoda)
{
    SeminaDomanda(false);
    // Il file di lavoro rimasto da prima si riscrive da capo.
    ScriviByte(Temporaneo(), QByteArray(1000, 'x'));
    ASSERT_TRUE(ScaricaDomanda(destinazione));
    EXPECT_EQ(QStringList({Testata("0001"), "9" + QString(16, '9') + "000000" "000000" + Bianchi(231)}),
              LeggiRighe(Finale()));
    EXPECT_EQ("1 S1", Stato());
}

TEST_F(ScaricoFatture, SulDischettoSvuotatoPrimaDellaCopia)
{
    SeminaDomanda();
    // Si tolgono i soli file visibili in cima: cartelle e file nascosti restano.
    QDir().mkpath(sessione().CartellaFloppy + "/foto");
    for (const char* nome : {"vecchio.txt", ".nascosto"})
        ScriviByte(QDir(sessione().CartellaFloppy).filePath(nome));
    script->Rispondi(RispostaMsg::OK);
    // "A:\" perde la barra e diventa il punto di montaggio del dischetto.
    ASSERT_TRUE(ScaricaDomanda("a:\\"));
    EXPECT_EQ(Messaggi({{"Attenzione il contenuto del floppy verra cancellato", 64, ""}}), script->messaggi);
    EXPECT_EQ(QStringList({".nascosto", "KelvarFAT.001", "foto"}), Contenuto(sessione().CartellaFloppy));
}

// La maschera: la cartella si sceglie appena si apre, lo scarico va da sé e
// la maschera si chiude; senza cartella non si tocca nulla.
TEST_F(ScaricoFatture, MascheraRegistrataEApertaPerNome)
{
    AnnullaRegistrazioni();
    RegistraMaschereDelSistema();
    SeminaDomanda();
    {
        frmScarico maschera;  // scelta annullata
        EXPECT_EQ("Scarico in corso della Domanda n. 123456789", maschera.Label1->text());
        EXPECT_EQ(Titolo, maschera.windowTitle());
        EXPECT_EQ(maschera.exec(), QDialog::Rejected);
        EXPECT_EQ("0 N0", Stato());
    }
    script->cartelle.enqueue(destinazione);
    EXPECT_TRUE(ApriMascheraModale("frmScarico", nullptr));
    EXPECT_TRUE(QFile::exists(Finale()));
    EXPECT_EQ("1 S1", Stato());
    EXPECT_EQ(QStringList({"Selezionare il Percorso di scarico.", "Selezionare il Percorso di scarico."}),
              script->titoliCartella);
    AnnullaRegistrazioni();
}

MessaggioRegistrato LogErr(int numero, const QString& descrizione)
{
    return {MessaggioLogErr(numero, descrizione, Etichetta), 48, "Gestione Errori"};
}

// I guasti del database e delle destinazioni (protette, piene, senza
// cartella): che cosa si dice, che cosa resta nella destinazione e nel
// database, e se resta la copia provvisoria. Nei messaggi "%1" è la
// destinazione.
TEST_F(ScaricoFatture, Guasti)
{
    using Prepara = std::function<std::optional<QString>()>;  // nulla: qui non si prova
    const auto protetta = [this](bool floppy) -> Prepara {
        return [this, floppy]() -> std::optional<QString> {
            const QString dove = floppy ? sessione().CartellaFloppy : destinazione;
            QDir().mkpath(dove);
            ScriviByte(QDir(dove).filePath("vecchio.txt"));
            blocco.emplace(dove);
            return ScritturaNegata(dove) ? std::optional(dove) : std::nullopt;
        };
    };
    const MessaggioRegistrato svuota{"Attenzione il contenuto del floppy verra cancellato", 64, ""};
    const MessaggioRegistrato protezione{"Togliere la protezione in scrittura dal dischetto", 17, Titolo};
    const struct {
        const char* nome;
        Prepara prepara;
        QList<int> risposte;
        Messaggi messaggi;
        bool riuscito, temporaneo;
        QString stato;
        QStringList restano;
    } casi[] = {
        {"PROG_DSK non aggiornata",
         [this] {
             db().Execute("CREATE TRIGGER fermo BEFORE UPDATE ON PROG_DSK BEGIN SELECT RAISE(IGNORE); END");
             return std::optional(destinazione);
         },
         {}, {{"Flag di stampa non aggiornato , rifare la stampa.", 64, Titolo}}, false, false, "0 S1", {}},
        {"DOMANDE non aggiornata",
         [this] {
             sessione().DomandaSel.ID_DOMANDA = 999999;
             return std::optional(destinazione);
         },
         {}, {{"Flag di scarico non aggiornato, lo scarico sarà terminato.", 64, ""}}, true, false, "1 N0",
         {"KelvarFAT.001"}},
        {"cartella di destinazione che non c'è",
         [this] { return std::optional(destinazione + "/manca"); }, {},
         {LogErr(76, "Impossibile trovare il percorso")}, false, true, "1 N0", {}},
        {"PROG_DSK vuota",
         [this] {
             db().Execute("DELETE FROM PROG_DSK");
             return std::optional(destinazione);
         },
         {}, {LogErr(3075, "Errore di sintassi nell'istruzione UPDATE.")}, false, true, " N0", {}},
        {"cartella protetta: errore registrato, nessuna ripetizione", protetta(false), {},
         {LogErr(75, "Impossibile scrivere '%1/KelvarFAT.001.nuovo': cartella o supporto protetti in scrittura.")},
         false, true, "1 N0", {"vecchio.txt"}},
        {"dischetto protetto: OK ripete, Annulla chiude lo scarico", protetta(true),
         {RispostaMsg::OK, RispostaMsg::OK, RispostaMsg::OK, RispostaMsg::Annulla},
         {svuota, protezione, svuota, protezione, LogErr(75, "Errore di accesso al percorso/file")}, false, true,
         "0 N0", {"vecchio.txt"}},
        {"copia provvisoria di uno scarico interrotto",
         [this] {
             ScriviByte(QDir(destinazione).filePath("vecchio.txt"));
             ScriviByte(QDir(destinazione).filePath("KelvarFAT.007.nuovo"), "a met");
             return std::optional(destinazione);
         },
         {}, {}, true, false, "1 S1", {"KelvarFAT.001", "vecchio.txt"}},
        // Un supporto davvero pieno: un file system piccolo montato per la prova.
        {"disco pieno",
         [this] {
             montata = ::mount("tmpfs", QFile::encodeName(destinazione).constData(), "tmpfs", 0, "size=4k") == 0;
             return montata ? std::optional(destinazione) : std::nullopt;
         },
         {},
         {LogErr(61, "Impossibile scrivere '%1/KelvarFAT.001.nuovo': disco pieno o supporto tolto durante la "
                     "scrittura.")},
         false, true, "1 N0", {}},
    };
    QStringList saltati;
    for (const auto& c : casi) {
        SCOPED_TRACE(c.nome);
        TearDown();
        SetUp();
        script->AccettaMessaggiSenzaRisposta();
        SeminaFatture(20);  // più di una pagina da 4 KB
        const std::optional<QString> dove = c.prepara();
        script->risposte.append(c.risposte);
        const bool riuscito = dove && ScaricaDomanda(*dove);
        const QStringList restano = dove ? Contenuto(*dove) : QStringList();
        blocco.reset();
        if (std::exchange(montata, false))
            ::umount2(QFile::encodeName(destinazione).constData(), MNT_DETACH);
        if (!dove) {
            saltati << c.nome;  // né protezione né montaggio qui, neppure per root
            continue;
        }
        Messaggi attesi = c.messaggi;
        for (MessaggioRegistrato& m : attesi)
            m.testo.replace("%1", *dove);
        EXPECT_EQ(c.riuscito, riuscito);
        EXPECT_EQ(attesi, script->messaggi);
        EXPECT_TRUE(script->risposte.isEmpty());
        EXPECT_EQ(c.stato, Stato());
        EXPECT_EQ(c.temporaneo, QFile::exists(Temporaneo()));
        EXPECT_EQ(c.restano, restano);
    }
    if (!saltati.isEmpty())
        GTEST_SKIP() << "non provati su questa macchina: " << saltati.join(", ").toStdString();
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

TEST_F(ScaricoFatture, UnoScaricoUccisoNonLasciaFileAMeta)
{
    script->AccettaMessaggiSenzaRisposta();
    SeminaFatture(40);
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
    ASSERT_TRUE(ScaricaDomanda(destinazione));
    const QStringList finali = Contenuto(destinazione);
    ASSERT_FALSE(finali.isEmpty());
    QFile ultimo(QDir(destinazione).filePath(finali.last()));
    ASSERT_TRUE(ultimo.open(QIODevice::ReadOnly));
    // Il corpo: tutto dopo la testata, che cambia da un file all'altro.
    const auto Corpo = [](const QByteArray& dati) { return dati.mid(dati.indexOf('\n') + 1); };
    const QByteArray corpo = Corpo(ultimo.readAll());
    const QList<QByteArray> righe = corpo.split('\n');
    ASSERT_EQ(42, righe.size()) << "40 fatture, la coda e il fine riga";
    EXPECT_TRUE(righe.at(40).startsWith('9'));
    for (const QString& nome : finali) {
        SCOPED_TRACE(nome.toStdString());
        EXPECT_TRUE(QRegularExpression("^KelvarFAT\\.\\d{3}$").match(nome).hasMatch());
        QFile f(QDir(destinazione).filePath(nome));
        ASSERT_TRUE(f.open(QIODevice::ReadOnly));
        EXPECT_EQ(corpo, Corpo(f.readAll())) << "file intero, uguale all'ultimo fuori che nella testata";
    }
}

}  // namespace
