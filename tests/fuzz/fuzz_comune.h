#pragma once
// Quello che i bersagli di fuzzing dei carichi hanno in comune: una
// piattaforma muta, il database di prova ricreato dallo schema e dai dati
// consegnati, il file della fornitura scritto a ogni ingresso e le tabelle
// svuotate quando il carico vi ha scritto.

#include "common/piattaforma.h"
#include "shell/session_state.h"
#include "store/database.h"
#include "store/database_consegnato.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <cstdint>
#include <cstdlib>
#include <initializer_list>
#include <sqlite3.h>

namespace FuzzCarico {

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
    int AnteprimaStampa(QTextDocument&, const QString&) override { return RispostaMsg::OK; }
    [[noreturn]] void TerminaProcesso() override { std::abort(); }
    // Le forniture non stampano nulla.
};

inline QTemporaryDir* cartella = nullptr;
inline QString fornitura;
inline int modifiche = 0;
// La sessione rilascia la connessione a fine processo senza chiuderla: il
// suo indirizzo tenuto qui la lascia raggiungibile per LeakSanitizer.
inline Database* connessione = nullptr;

// Da LLVMFuzzerInitialize: applicazione, database di prova e sessione.
inline void Prepara(int* argc, char*** argv, const QString& titolo, const QString& nomeFornitura)
{
    static QCoreApplication app(*argc, *argv);
    // Meglio in memoria (TMPDIR=/dev/shm): ogni ingresso scrive dei file.
    cartella = new QTemporaryDir;
    QDir(cartella->path()).mkpath("database");
    const QString db = QDir(cartella->path()).filePath("database/") + NomeDatabase;
    CreaDatabaseConsegnato(db, QStringLiteral(FERMOLA_SORGENTI "/store/schema.sql"),
                           QStringLiteral(FERMOLA_SORGENTI "/data"));
    ImpostaPiattaforma(std::make_unique<PiattaformaMuta>());
    sessione().PathDatabase = QDir(cartella->path()).filePath("database") + '/';
    sessione().TitoloMaschera = titolo;
    sessione().DbDistilleria = Database::Apri(db, false, ConnessioneDb);
    connessione = sessione().DbDistilleria.get();
    // Database di prova: nessuna scrittura su disco che non serva.
    sessione().DbDistilleria->Execute(QStringLiteral("PRAGMA journal_mode=MEMORY"));
    sessione().DbDistilleria->Execute(QStringLiteral("PRAGMA synchronous=OFF"));
    fornitura = QDir(cartella->path()).filePath(nomeFornitura);
    modifiche = sqlite3_total_changes(sessione().DbDistilleria->handle());
}

// L'ingresso diventa il file caricato; ne dà il percorso.
inline const QString& ScriviFornitura(const uint8_t* dati, size_t misura)
{
    QFile file(fornitura);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        std::abort();
    file.write(reinterpret_cast<const char*>(dati), static_cast<qint64>(misura));
    file.close();
    return fornitura;
}

// Ogni ingresso riparte dallo stesso database: le tabelle date, nell'ordine
// dato (le figlie prima delle madri), tornano vuote se il carico ha scritto.
inline void Ripulisci(std::initializer_list<const char*> tabelle)
{
    Database& db = *sessione().DbDistilleria;
    if (sqlite3_total_changes(db.handle()) == modifiche)
        return;
    db.IniziaTransazione();
    for (const char* tabella : tabelle)
        db.Execute(QStringLiteral("DELETE FROM ") + QString::fromLatin1(tabella));
    db.ConfermaTransazione();
    modifiche = sqlite3_total_changes(db.handle());
}

}  // namespace FuzzCarico
