#pragma once
// Istruzioni sul motore SQLite della connessione di sessione, senza passare
// per Qt SQL: per le forniture grandi, dove la conversione di ogni colonna
// di ogni riga in QVariant costa più della lettura stessa. Gli errori escono
// come ErroreSistema, con il numero delle nostre funzioni SQL ("[13] ...")
// o 3000 più il codice del motore.

#include "interchange/RigaDati.h"

#include <QHash>
#include <QString>
#include <QVariantList>
#include <string>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

// Istruzione preparata una volta e ripetuta con nuovi valori.
class Istruzione {
public:
    Istruzione(sqlite3* db, const QString& sql);
    ~Istruzione();
    Istruzione(const Istruzione&) = delete;
    Istruzione& operator=(const Istruzione&) = delete;

    // Il testo è copiato in UTF-8, la codifica del database: il motore non
    // deve convertirlo a ogni riga. Un testo nullo vale "".
    Istruzione& Testo(QStringView valore);
    Istruzione& Intero(qint64 valore);
    // Valori di un'IstruzioneSql: interi e testi.
    Istruzione& Valori(const QVariantList& valori);
    // Scrittura: restituisce la chiave dell'ultima riga inserita.
    qint64 Esegui();
    // Lettura: vero se trova almeno una riga.
    bool TrovaRiga();

protected:
    friend class CursoreSqlite;
    [[noreturn]] void Errore(int codice);
    sqlite3* m_db;
    sqlite3_stmt* m_stmt = nullptr;
    int m_indice = 0;
    std::vector<std::string> m_utf8;  // un testo per parametro, riusato riga dopo riga
};

// Cursore in avanti su una lettura, letto per nome di colonna come
// RigaRecordset: un nome qualificato "TABELLA.COLONNA" che il motore non
// conosce vale l'ultima colonna con quel nome semplice.
class CursoreSqlite : public RigaDati {
public:
    CursoreSqlite(sqlite3* db, const QString& sql, const QVariantList& parametri = {});
    bool eof() const { return m_eof; }
    void MoveNext();
    QString Campo(const QString& nome) const override;

private:
    int Indice(const QString& nome) const;
    int IndiceDaNome(const QString& nome) const;
    Istruzione m_istruzione;
    QHash<QString, int> m_colonne;  // nome in maiuscolo: prima e ultima posizione
    QHash<QString, int> m_ultime;
    struct NomeCercato {
        const QChar* testo;
        QString nome;
        int indice;
    };
    mutable QList<NomeCercato> m_giaCercati;
    bool m_eof = true;
};
