// Fuzzing del carico di una fornitura fatture: ogni ingresso diventa il file
// caricato, e passa per la lettura, i controlli e, se li supera, per la
// scrittura sul database di prova. Qualunque cosa arrivi, il carico finisce
// con un messaggio o un errore registrato, mai con un crollo.

#include "common/piattaforma.h"
#include "interchange/CaricoFatture.h"
#include "shell/session_state.h"
#include "store/database.h"
#include "store/database_consegnato.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <cstdint>
#include <cstdlib>
#include <sqlite3.h>

namespace {

// Risponde Sì alle domande, così anche gli elenchi degli scarti si scrivono.
class PiattaformaMuta final : public Piattaforma {
public:
    int MsgBox(const QString&, int stile, const QString&) override
    {
        return (stile & 7) == StileMsg::SiNo ? RispostaMsg::Si : RispostaMsg::OK;
    }
    QString SfogliaCartella(const QString&) override { return QString(); }
    void MostraTesto(const QString&) override {}
    void Beep() override {}
    void Clessidra(bool) override {}
    [[noreturn]] void TerminaProcesso() override { std::abort(); }
};

QTemporaryDir* cartella = nullptr;
QString fornitura;
int modifiche = 0;

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    static QCoreApplication app(*argc, *argv);
    // Meglio in memoria (TMPDIR=/dev/shm): ogni ingresso scrive tre file.
    cartella = new QTemporaryDir;
    QDir(cartella->path()).mkpath("database");
    const QString db = QDir(cartella->path()).filePath("database/") + NomeDatabase;
    CreaDatabaseConsegnato(db, QStringLiteral(FERMOLA_SORGENTI "/store/schema.sql"),
                           QStringLiteral(FERMOLA_SORGENTI "/data"));
    ImpostaPiattaforma(std::make_unique<PiattaformaMuta>());
    sessione().PathDatabase = QDir(cartella->path()).filePath("database") + '/';
    sessione().TitoloMaschera = QStringLiteral(" Carico della Domanda ");
    sessione().DbDistilleria = Database::Apri(db, false, ConnessioneDb);
    // Database di prova: nessuna scrittura su disco che non serva.
    sessione().DbDistilleria->Execute(QStringLiteral("PRAGMA journal_mode=MEMORY"));
    sessione().DbDistilleria->Execute(QStringLiteral("PRAGMA synchronous=OFF"));
    fornitura = QDir(cartella->path()).filePath("fornitura.txt");
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* dati, size_t misura)
{
    QFile file(fornitura);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        std::abort();
    file.write(reinterpret_cast<const char*>(dati), static_cast<qint64>(misura));
    file.close();
    CaricaFornitura(fornitura);
    // Ogni ingresso riparte dallo stesso database.
    Database& db = *sessione().DbDistilleria;
    if (sqlite3_total_changes(db.handle()) != modifiche) {
        db.IniziaTransazione();
        for (const char* tabella : {"DOMANDE", "FATTURE", "BOLLE", "TAB_Fornitura", "LOGERR"})
            db.Execute(QStringLiteral("DELETE FROM ") + QString::fromLatin1(tabella));
        db.ConfermaTransazione();
        modifiche = sqlite3_total_changes(db.handle());
    }
    return 0;
}
