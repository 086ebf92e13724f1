// I controlli del dischetto: disco assente, vuoto, con file, protetto, con
// ogni risposta che l'utente può dare. Di un supporto si tolgono solo i file
// comuni e visibili in cima, come faceva il "Kill" del dischetto: cartelle e
// file nascosti restano e non contano.
#include "archive/floppy.h"
#include "sola_lettura.h"

#include <QTemporaryDir>

namespace {

using namespace Qt::StringLiterals;

enum class Disco { Assente, ConFile, Protetto, SoloNascosti };
enum class Routine { Vuoto, File, Inserito };

const MessaggioRegistrato Svuotare{u"Il dischetto deve essere vuoto. Vuoi cancellare il contenuto nel disco?"_s, 35,
                                   u"Controllo floppy "_s};
const MessaggioRegistrato InserireSiNo{u"Inserire il dischetto nel drive."_s, 20, {}};
const MessaggioRegistrato InserireOK{u"Inserire il dischetto nel drive."_s, 65, {}};
const MessaggioRegistrato Terminare{u"ATTENZIONE ,vuoi terminare il rilascio."_s, 68, {}};
const MessaggioRegistrato Protezione{u"Togliere la protezione in scrittura dal dischetto"_s, 16, {}};
const MessaggioRegistrato ProtezioneVuoto{Protezione.testo, 16, u"Controllo floppy "_s};
const MessaggioRegistrato NoFiles{u"Il dischetto non deve contenere files."_s, 64, {}};
const MessaggioRegistrato Cancellare{u"Vuoi cancellare i files contenuti nel disco?"_s, 36, {}};

constexpr int Si = RispostaMsg::Si, No = RispostaMsg::No, OK = RispostaMsg::OK, Annulla = RispostaMsg::Annulla;

struct Caso {
    const char* nome;
    Routine routine;
    Disco disco;
    QList<int> risposte;
    Messaggi attesi;
    bool risultato;  // per ControlloFloppyVuoto, che non ne ha, vale falso
    bool ripeti;
    bool annullata;
    bool fileRimasti;
};

const Caso Casi[] = {
    {"vuoto: Sì cancella", Routine::Vuoto, Disco::ConFile, {Si}, {Svuotare}, false, false, false, false},
    {"vuoto: Annulla", Routine::Vuoto, Disco::ConFile, {Annulla}, {Svuotare}, false, false, true, true},
    {"vuoto: No, Sì a un altro disco", Routine::Vuoto, Disco::ConFile, {No, Si}, {Svuotare, InserireSiNo}, false,
     true, false, true},
    {"vuoto: No, No, Sì a terminare", Routine::Vuoto, Disco::ConFile, {No, No, Si},
     {Svuotare, InserireSiNo, Terminare}, false, false, true, true},
    {"vuoto: No, No, No", Routine::Vuoto, Disco::ConFile, {No, No, No}, {Svuotare, InserireSiNo, Terminare}, false,
     true, false, true},
    {"vuoto: solo nascosti", Routine::Vuoto, Disco::SoloNascosti, {}, {}, false, false, false, false},
    {"vuoto: nessun disco", Routine::Vuoto, Disco::Assente, {Si}, {InserireSiNo}, false, true, false, false},
    {"vuoto: protetto", Routine::Vuoto, Disco::Protetto, {Si}, {Svuotare, ProtezioneVuoto}, false, true, false, true},
    {"file: Sì cancella", Routine::File, Disco::ConFile, {OK, Si}, {NoFiles, Cancellare}, true, false, false, false},
    {"file: No", Routine::File, Disco::ConFile, {OK, No}, {NoFiles, Cancellare}, false, false, true, true},
    {"file: solo nascosti", Routine::File, Disco::SoloNascosti, {}, {}, true, false, false, false},
    {"file: nessun disco, OK", Routine::File, Disco::Assente, {OK}, {InserireOK}, false, true, false, false},
    {"file: nessun disco, Annulla", Routine::File, Disco::Assente, {Annulla}, {InserireOK}, false, false, true, false},
    {"file: protetto", Routine::File, Disco::Protetto, {OK, Si, OK}, {NoFiles, Cancellare, Protezione}, false, true,
     false, true},
    {"inserito: c'è", Routine::Inserito, Disco::ConFile, {}, {}, true, false, false, true},
    {"inserito: nessun disco, OK", Routine::Inserito, Disco::Assente, {OK}, {InserireOK}, false, true, false, false},
    {"inserito: nessun disco, Annulla", Routine::Inserito, Disco::Assente, {Annulla}, {InserireOK}, false, false, true,
     false},
};

TEST(Floppy, OgniDiscoEOgniRisposta)
{
    for (const Caso& c : Casi) {
        SCOPED_TRACE(c.nome);
        sessione().Azzera();
        auto& script = InstallaPiattaformaScript();
        script.AccettaMessaggiSenzaRisposta();
        QTemporaryDir radice;
        const QString floppy = radice.filePath(u"floppy"_s);
        sessione().CartellaFloppy = floppy;
        sessione().OperazioneAnnullata = true;  // le routine lo azzerano
        QStringList file;
        if (c.disco != Disco::Assente)
            file << u"/foto/a.jpg"_s << u"/.nascosto"_s;
        if (c.disco == Disco::ConFile || c.disco == Disco::Protetto)
            file << u"/domanda.txt"_s;
        if (c.disco != Disco::Assente)
            QDir().mkpath(floppy + u"/foto"_s);
        for (const QString& nome : file) {
            QFile f(floppy + nome);
            ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        }
        if (c.disco == Disco::Protetto) {
            Immutabile(floppy, true);
            if (!ScritturaNegata(floppy)) {
                Immutabile(floppy, false);
                continue;  // qui la cartella non si protegge
            }
        }
        script.risposte.append(c.risposte);
        bool risultato = false;
        switch (c.routine) {
        case Routine::Vuoto: ControlloFloppyVuoto(); break;
        case Routine::File: risultato = ControlloFloppyFile(); break;
        case Routine::Inserito: risultato = ControlloFloppyInserito(); break;
        }
        Immutabile(floppy, false);
        EXPECT_EQ(script.messaggi, c.attesi);
        EXPECT_TRUE(script.risposte.isEmpty());
        EXPECT_EQ(risultato, c.risultato);
        EXPECT_EQ(sessione().ControlloFloppyRipeti, c.ripeti);
        EXPECT_EQ(sessione().OperazioneAnnullata, c.annullata);
        EXPECT_EQ(QFileInfo::exists(floppy + u"/domanda.txt"_s), c.fileRimasti);
        EXPECT_EQ(QFileInfo::exists(floppy + u"/foto/a.jpg"_s) && QFileInfo::exists(floppy + u"/.nascosto"_s),
                  c.disco != Disco::Assente);
    }
    sessione().Azzera();
    InstallaPiattaformaScript();
}

}  // namespace
