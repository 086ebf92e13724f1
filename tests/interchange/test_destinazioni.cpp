// Destinazioni: la ricerca del file in una cartella, il dischetto sul suo
// punto di montaggio, la protezione in scrittura distinta dal dischetto assente.

#include "interchange/Destinazioni.h"
#include "support/prova.h"

#include <QTemporaryDir>
#include <list>

namespace {

class Destinazioni : public ProvaConDatabase {
protected:
    void SetUp() override
    {
        ProvaConDatabase::SetUp();
        sessione().TitoloMaschera = QStringLiteral(" Carico della Domanda ");
        floppy = QDir(cartella->cartella()).filePath(QStringLiteral("floppy"));
        sessione().CartellaFloppy = floppy;
    }

public:
    void Scrivi(const QString& nome, QFile::Permissions permessi = QFile::ReadOwner | QFile::WriteOwner)
    {
        QFile f(QDir(floppy).filePath(nome));
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write("x");
        f.close();
        f.setPermissions(permessi);
    }
    QString floppy;
};

const MessaggioRegistrato Svuota{"Attenzione il contenuto del floppy verra cancellato", 64, ""};
const MessaggioRegistrato Inserire{"Inserire il dischetto nel drive.", 20, ""};
const MessaggioRegistrato Terminare{"ATTENZIONE ,vuoi terminare il rilascio.", 68, ""};

TEST_F(Destinazioni, Chk_Disk)
{
    struct Caso {
        const char* nome;
        std::function<void(Destinazioni&)> prepara;
        QList<int> risposte;
        bool risultato;
        Messaggi messaggi;
        QStringList restano;
        bool termina = false;
    };
    // Cartelle e file nascosti non contano e restano.
    const auto nascosti = [](Destinazioni& t) {
        QDir().mkpath(t.floppy + "/foto");
        t.Scrivi(".nascosto");
    };
    const QList<Caso> casi = {
        {"dischetto vuoto", nascosti, {}, true, {}, {".nascosto", "foto"}},
        {"file a sola lettura: si chiede il dischetto",
         [](Destinazioni& t) {
             QDir().mkpath(t.floppy);
             t.Scrivi("a.txt", QFile::ReadOwner);
         },
         {1, 6}, false, {Svuota, Inserire}, {"a.txt"}},
        {"assente, l'utente lo inserirà", [](Destinazioni&) {}, {6}, false, {Inserire}, {}},
        {"assente, l'utente non termina", [](Destinazioni&) {}, {7, 7}, false, {Inserire, Terminare}, {}},
        {"assente, l'utente termina", [](Destinazioni&) {}, {7, 6}, false, {Inserire, Terminare}, {}, true},
    };
    for (const Caso& caso : casi) {
        SCOPED_TRACE(caso.nome);
        TearDown();
        SetUp();
        caso.prepara(*this);
        for (int r : caso.risposte)
            script->Rispondi(r);
        bool risultato = false;
        try {
            risultato = Chk_Disk();
        } catch (const ProcessoTerminato&) {
        }
        EXPECT_EQ(caso.termina, script->terminato);
        EXPECT_EQ(caso.risultato, risultato);
        EXPECT_EQ(caso.messaggi, script->messaggi);
        EXPECT_EQ(caso.restano, QDir(floppy).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
    }
}

TEST_F(Destinazioni, SullaCartellaFloppy)
{
    const struct { QString cartella; bool sul; QString reale; } casi[] = {
        {"b:", true, floppy},          {"A:\\sotto", true, floppy + "/sotto"},
        {floppy, true, floppy},        {floppy + "/sotto", true, floppy + "/sotto"},
        {floppy + "2", false, floppy + "2"}, {"", false, ""},
    };
    for (const auto& c : casi) {
        EXPECT_EQ(c.sul, SullaCartellaFloppy(c.cartella)) << c.cartella.toStdString();
        EXPECT_EQ(c.reale, CartellaReale(c.cartella)) << c.cartella.toStdString();
    }
}

// Il nome si cerca con qualunque maiuscola; due nomi che differiscono solo
// per le maiuscole non si scelgono a caso.
TEST_F(Destinazioni, TrovaFileInCartella)
{
    std::list<QTemporaryDir> dirs;
    const auto con = [&](const QStringList& nomi) {
        const QString c = dirs.emplace_back().path();
        for (const QString& nome : nomi) {
            QFile f(QDir(c).filePath(nome));
            EXPECT_TRUE(f.open(QIODevice::WriteOnly));
        }
        return c;
    };
    const QString giusta = con({"ART29FAT2005.txt"}), maiuscole = con({"ART29FAT2005.TXT"}),
                  minuscole = con({"art29fat2005.txt"}), doppie = con({"ART29FAT2005.TXT", "ART29FAT2005.txt"});
    const QString trovato = QDir(giusta).filePath("ART29FAT2005.txt");
    const QString titolo = " Carico della Domanda ";
    const MessaggioRegistrato sbagliato{"Il percorso indicato non è corretto", 53, titolo};
    const struct {
        const char* nome;
        QStringList cartelle;
        QList<int> risposte;
        QString risultato;
        Messaggi messaggi;
    } casi[] = {
        {"trovato subito", {giusta}, {}, trovato, {}},
        {"cartella con la barra", {giusta + "/"}, {}, trovato, {}},
        {"riprova e trova", {"/tmp", giusta}, {4}, trovato, {sbagliato}},
        {"annulla dopo il rifiuto", {"/tmp"}, {2}, "", {sbagliato}},
        {"nessuna cartella", {}, {}, "", {}},
        {"maiuscole diverse dall'etichetta", {maiuscole}, {}, QDir(maiuscole).filePath("ART29FAT2005.TXT"), {}},
        {"tutto minuscolo", {minuscole}, {}, QDir(minuscole).filePath("art29fat2005.txt"), {}},
        {"due nomi che differiscono per le maiuscole", {doppie}, {2}, "",
         {{"Nella cartella ci sono più file di nome ART29FAT2005.txt che differiscono solo per maiuscole e "
           "minuscole: ART29FAT2005.TXT, ART29FAT2005.txt. Lasciarne uno solo.",
           53, titolo}}},
    };
    for (const auto& c : casi) {
        SCOPED_TRACE(c.nome);
        script->messaggi.clear();
        for (const QString& cartella : c.cartelle)
            script->cartelle.enqueue(cartella);
        for (int r : c.risposte)
            script->Rispondi(r);
        QString nome = "ART29FAT2005.txt";
        EXPECT_EQ(c.risultato, TrovaFileInCartella(nome, "titolo"));
        EXPECT_EQ(c.risultato.isEmpty() ? QString("ART29FAT2005.txt") : c.risultato, nome);
        EXPECT_EQ(c.messaggi, script->messaggi);
        EXPECT_TRUE(script->risposte.isEmpty());
    }
}

}  // namespace
