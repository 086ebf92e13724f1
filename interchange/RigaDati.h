#pragma once
// Una riga letta per nome di colonna: i tracciati la leggono così, che venga
// da un cursore del database o da valori preparati a mano (prove, generatori).
// Un Null vale il testo vuoto, come l'accodare "" a un campo.

#include <QHash>
#include <QString>

class Recordset;

class RigaDati {
public:
    virtual ~RigaDati() = default;
    // Testo della colonna; Null come testo vuoto. Una colonna che non c'è
    // solleva l'errore 3265, come Fields del cursore.
    virtual QString Campo(const QString& nome) const = 0;
};

// Riga corrente di un cursore. Un nome qualificato "TABELLA.COLONNA" si cerca
// prima così com'è; se il motore ha chiamato la colonna col solo nome, vale
// l'ultima colonna con quel nome: nelle query di scarico la tabella nominata
// per esteso (BOLLE.*, TAB_UTF.*) è sempre l'ultima a portare quel nome.
class RigaRecordset : public RigaDati {
public:
    explicit RigaRecordset(const Recordset& rs) : m_rs(rs) {}
    QString Campo(const QString& nome) const override;

private:
    const Recordset& m_rs;
};

// Valori preparati a mano, per nome di colonna senza distinguere maiuscole.
// Un nome qualificato assente si cerca anche col solo nome della colonna.
class RigaValori : public RigaDati {
public:
    RigaValori() = default;
    RigaValori(std::initializer_list<std::pair<QString, QString>> valori);
    // Un QString() nullo sta per il Null del database.
    RigaValori& Imposta(const QString& nome, const QString& valore);
    QString Campo(const QString& nome) const override;

private:
    QHash<QString, QString> m_valori;
};
