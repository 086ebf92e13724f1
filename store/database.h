#pragma once
// Facciata del motore di database: le operazioni che le maschere chiedono al
// database, sopra QSqlDatabase/SQLite. Ogni errore esce come ErroreSistema
// con un numero e una descrizione in italiano (3000 + codice SQLite quando il
// motore originale non ha un numero corrispondente).
//
// Modo del giornale: WAL con synchronous=FULL: una riga data per salvata
// regge una caduta di corrente (il giornale va sul disco a ogni conferma).
// Misurato (compilazione Release, macchina condivisa, carico 1,5-2):
//   autocommit riga per riga, giornale DELETE/FULL   ~     520 righe/s
//   autocommit riga per riga, WAL/NORMAL (prima)     ~  40 000 righe/s
//   autocommit riga per riga, WAL/FULL               ~   1 300-1 600 righe/s
//   una transazione, WAL/FULL                        ~ 250 000-287 000 righe/s
//   sqlite3 nudo, istruzione preparata, WAL/FULL     ~ 230 000-358 000 righe/s
// Un salvataggio di maschera resta sotto il millesimo di secondo. Carichi
// contro il pavimento sqlite3 nudo con la stessa durata (FULL), tempo di
// processore: fatture 0,36-0,37 (prima 0,48 con NORMAL), conferimenti
// 0,43-0,48 (prima 0,40). Con WAL un'interruzione non danneggia il file.
// Le scritture ripetute riusano l'istruzione preparata.

#include <QHash>
#include <QList>
#include <QPair>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <functional>
#include <memory>

struct sqlite3;

// Valore di un campo che distingue il Null: testo() lo rende vuoto, come
// l'accodare "" a un valore nel programma originale.
class Valore {
public:
    Valore() = default;
    explicit Valore(QVariant v) : m_v(std::move(v)) {}
    bool isNull() const { return m_v.isNull() || !m_v.isValid(); }
    QString testo() const;
    qint64 intero() const;  // Null vale 0
    double numero() const;  // Null vale 0
    const QVariant& variante() const { return m_v; }

private:
    QVariant m_v;
};

// Cursore in avanti sul risultato di una lettura.
class Recordset {
public:
    Recordset() = default;
    Recordset(Recordset&&) noexcept = default;
    Recordset& operator=(Recordset&&) noexcept = default;
    Recordset(const Recordset&) = delete;
    Recordset& operator=(const Recordset&) = delete;

    // Vero su un risultato vuoto o dopo l'ultima riga (l'EOF del programma).
    bool eof() const { return m_eof; }
    void MoveNext();
    // Nome cercato senza distinguere maiuscole; un nome assente dà l'errore 3265.
    Valore Fields(const QString& nome) const;
    Valore Fields(int indice) const;
    int NumeroCampi() const { return m_nomi.size(); }
    QString NomeCampo(int indice) const { return m_nomi.value(indice); }
    void Close();

private:
    friend class Database;
    explicit Recordset(QSqlQuery&& query);
    std::unique_ptr<QSqlQuery> m_query;
    QStringList m_nomi;
    bool m_eof = true;
};

// Colonne di una riga da scrivere, nell'ordine in cui vanno scritte.
using Campi = QList<QPair<QString, QVariant>>;

// Definizione di un campo per CreaTabella: tipo 10 testo, 4 intero a 32 bit;
// attributi 17 è il contatore automatico.
struct DefinizioneCampo {
    QString nome;
    int tipo = 10;
    int dimensione = 0;
    int attributi = 2;
};

namespace TipoCampo {
constexpr int Intero = 4;
constexpr int Testo = 10;
}  // namespace TipoCampo
namespace AttributoCampo {
constexpr int LunghezzaVariabile = 2;
constexpr int Contatore = 17;
}  // namespace AttributoCampo

class Database {
public:
    // Apre un database esistente, verificando la password della stringa di
    // connessione (";PWD=..."). Non crea mai il file. Errori: 3024 file
    // assente, 3031 password errata, 3045 file in uso, 3343 non è un database.
    static std::unique_ptr<Database> Apri(const QString& percorso, bool esclusivo,
                                          const QString& connessione);
    // Crea un database nuovo e vuoto protetto dalla password data.
    static std::unique_ptr<Database> Crea(const QString& percorso, const QString& password);

    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    bool aperto() const;
    void Close();
    // Percorso del file.
    QString Name() const { return m_percorso; }

    // INSERT, UPDATE, DELETE, CREATE, DROP: fallisce sempre con un errore.
    int Execute(const QString& sql, const QVariantList& parametri = {});
    int RecordsAffected() const { return m_righeToccate; }
    Recordset OpenRecordset(const QString& sql, const QVariantList& parametri = {});
    // La prima colonna della prima riga, Null se non ce n'è: per le letture
    // ripetute migliaia di volte (i carichi), con l'istruzione già preparata.
    Valore PrimoValore(const QString& sql, const QVariantList& parametri = {});
    // Lettura già eseguita e scorrevole, per i modelli delle griglie
    // (QSqlQueryModel legge le righe a richiesta). Errori come OpenRecordset.
    QSqlQuery Interroga(const QString& sql, const QVariantList& parametri = {});
    // La connessione Qt sottostante.
    QSqlDatabase connessione() const;

    // Scrittura di una riga intera; InserisciRiga restituisce la nuova chiave contatore.
    qint64 InserisciRiga(const QString& tabella, const Campi& campi);
    int AggiornaRiga(const QString& tabella, const Campi& campi, const QString& condizione,
                     const QVariantList& parametri = {});

    // Tabelle (senza quelle di sistema), nell'ordine di creazione.
    QStringList TableDefs();
    bool EsisteTabella(const QString& nome);
    void EliminaTabella(const QString& nome);
    void CreaTabella(const QString& nome, const QList<DefinizioneCampo>& campi);
    // Indice; quello primario su un contatore coincide con la chiave stessa.
    void CreaIndice(const QString& tabella, const QString& nome, const QStringList& campi,
                    bool primario, bool unico);
    QStringList ColonneTabella(const QString& nome);

    // Query memorizzate (viste).
    QStringList QueryDefs();
    void EliminaQuery(const QString& nome);
    void CreaQuery(const QString& nome, const QString& sql);

    // Per i caricamenti lunghi: una transazione sempre confermata, mai
    // annullata. Una conferma che fallisce annulla tutta la transazione,
    // lascia la connessione in autocommit e dà l'errore.
    void IniziaTransazione();
    void ConfermaTransazione();
    // Vero dentro una transazione (anche quella di un punto di ripristino).
    bool InTransazione();

    sqlite3* handle();

private:
    Database() = default;
    static std::unique_ptr<Database> Connetti(const QString& percorso, bool crea, bool esclusivo);
    void VerificaPassword(const QString& password);
    QSqlQuery Esegui(const QString& sql, const QVariantList& parametri, bool avanti);
    // Le scritture ripetute (i caricamenti) riusano l'istruzione già
    // preparata, direttamente sul motore: il legame dei valori di QSqlQuery
    // compone un testo per ogni parametro e costa più dell'inserimento.
    struct Istruzione;
    Istruzione& Preparata(const QString& sql);

    QString m_nomeConnessione;
    sqlite3* m_handle = nullptr;  // il motore della connessione aperta, dopo il primo handle()
    QHash<QString, std::shared_ptr<Istruzione>> m_preparate;
    // Testo di InserisciRiga per tabella, con le colonne da cui viene.
    struct Inserimento {
        QStringList colonne;
        QString sql;
    };
    QHash<QString, Inserimento> m_inserimenti;
    QString m_percorso;
    int m_righeToccate = 0;
};

// Una scrittura intera o niente: un SAVEPOINT aperto alla costruzione, tolto
// da Conferma; senza Conferma (un errore in mezzo) tutto ciò che è stato
// scritto dopo l'apertura si annulla. Dentro la transazione di un carico è un
// punto di ripristino annidato; fuori, la sua Conferma è la conferma su disco
// e, se fallisce, non resta nulla e l'errore esce da Conferma.
class PuntoDiRipristino {
public:
    explicit PuntoDiRipristino(Database& db);
    ~PuntoDiRipristino();
    PuntoDiRipristino(const PuntoDiRipristino&) = delete;
    PuntoDiRipristino& operator=(const PuntoDiRipristino&) = delete;
    void Conferma();

private:
    void Annulla() noexcept;
    Database& m_db;
    bool m_aperto = true;
    bool m_esterno = false;  // aperto in autocommit: è lui la transazione
};

// Estrae la password da una stringa di connessione ";PWD=...".
QString PasswordDaConnessione(const QString& connessione);
