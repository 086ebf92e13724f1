#pragma once
// Quello che le prove del salvataggio e del ripristino hanno in comune: una
// cartella fuori dal programma per gli archivi e il dischetto, la
// distilleria scritta in un database, gli archivi di un'altra cartella di
// programma e i messaggi di un'operazione non andata a buon fine.

#include "archive/zip_archivio.h"
#include "shell/FrmMenu.h"
#include "shell/registro_maschere.h"
#include "sola_lettura.h"

#include <QTemporaryDir>

inline const MessaggioRegistrato NonABuonFine{QStringLiteral("Operazione non andata a buon fine."), 64,
                                              QStringLiteral("Backup/Restore")};

class ProvaArchivio : public ProvaConDatabase {
protected:
    void SetUp() override
    {
        ProvaConDatabase::SetUp();
        // Gli avvisi con il solo OK non hanno risposta in coda: li controlla l'elenco dei messaggi.
        script->AccettaMessaggiSenzaRisposta();
        sessione().CartellaFloppy = QDir(m_altrove.path()).filePath(QStringLiteral("floppy"));
    }
    void TearDown() override
    {
        FrmMenu::Scarica();
        AnnullaRegistrazioni();
        ProvaConDatabase::TearDown();
    }

    QString Cartella(const QString& nome)
    {
        const QString c = QDir(m_altrove.path()).filePath(nome);
        QDir().mkpath(c);
        return c;
    }
    static QString Bkp(const QString& cartella) { return QDir(cartella).filePath(QStringLiteral("orvelta_2005.bkp")); }
    // Il contenuto di una cartella, nascosti compresi, senza giornale e memoria condivisa.
    static QStringList Contenuto(const QString& cartella)
    {
        QStringList c = QDir(cartella).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
        c.removeIf([](const QString& n) {
            return n.endsWith(QStringLiteral("-wal")) || n.endsWith(QStringLiteral("-shm"));
        });
        return c;
    }
    static void Distilleria(const QString& ragione, Database& d)
    {
        d.Execute(QStringLiteral("DELETE FROM DISTILLERIA"));
        d.Execute(QStringLiteral("INSERT INTO DISTILLERIA VALUES (?,?,?)"),
                  {QStringLiteral("02468135799"), ragione, QStringLiteral("Via dell'Uva 1")});
    }
    static void Distilleria(const QString& ragione, const QString& database)
    {
        Distilleria(ragione, *Database::Apri(database, false, ConnessioneDb));
    }
    // Un archivio buono, salvato da un'altra cartella di programma con la sua distilleria.
    static void ArchivioDi(const QString& ragione, const QString& cartella)
    {
        CartellaProva altra;
        Distilleria(ragione, altra.percorsoDatabase());
        CreaArchivio(altra.percorsoDatabase(), Bkp(cartella));
    }
    static MessaggioRegistrato ErroreMenu(const char* operazione)
    {
        return {QStringLiteral("Si è verificato un errore durante il ") + QLatin1String(operazione) +
                    QStringLiteral(" dell'archivio:\n- ") + sessione().PathDatabase + QStringLiteral("orvelta_2005.mdb"),
                64, QStringLiteral("FERMOLA_2005")};
    }

    QTemporaryDir m_altrove;
};
