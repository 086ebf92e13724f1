#pragma once
// Le liste delle maschere elenco dei due rami: l'istruzione della lista per
// ogni modo, la disposizione delle colonne della griglia e il ricaricamento.
// Il modo è OperazioneCorrente o uno dei valori speciali passati dal
// chiamante: "CERCA", "FATTURE2", "SCARICO", "SCARICO2", "168", "711",
// "1611". Un numero e il suo testo valgono lo stesso modo.
//
// Le griglie sono QTableView su un ModelloLista: il modello conosce subito
// il numero delle righe e legge dal database solo le finestre di righe che
// la vista chiede, così una lista di 100 000 fatture si apre e si scorre fino
// in fondo al costo di una schermata. Le colonne si indirizzano per posizione
// nell'istruzione, per questo l'ordine delle colonne delle tabelle conta.

#include "store/database.h"

#include <QAbstractTableModel>
#include <QHash>
#include <QList>
#include <QSet>
#include <QSqlRecord>
#include <QString>
#include <QVariant>

#include <optional>
#include <vector>

class QLabel;
class QTableView;

// Un'istruzione con i suoi parametri posizionali ("?"). Si concatena con
// altro testo o con un'altra istruzione, e i parametri seguono l'ordine.
struct IstruzioneSql {
    QString testo;
    QVariantList parametri;

    IstruzioneSql() = default;
    IstruzioneSql(QString t, QVariantList p = {}) : testo(std::move(t)), parametri(std::move(p)) {}  // NOLINT
    IstruzioneSql(const char* t) : testo(QString::fromUtf8(t)) {}  // NOLINT

    IstruzioneSql& operator+=(const IstruzioneSql& altra);
    friend IstruzioneSql operator+(IstruzioneSql a, const IstruzioneSql& b) { return a += b; }
    friend bool operator==(const IstruzioneSql& a, const IstruzioneSql& b)
    {
        return a.testo == b.testo && a.parametri == b.parametri;
    }
};

// Il modo come testo: i numeri nella loro forma decimale, i testi come sono.
QString ChiaveModo(const QVariant& modo);

// Istruzione della lista delle domande (ramo fatture) per il modo, con uno
// spazio in fondo. "FATTURE2", "SCARICO" e "SCARICO2" sono filtrati sulla
// domanda DomandaSel.ID_DOMANDA (parametro). Un modo sconosciuto dà " ".
IstruzioneSql QueryListaDomande(const QVariant& modo);
// Istruzione della lista del ramo conferimenti, con uno spazio in fondo; i
// modi 14, 15, 17 e 20 non hanno istruzione (" "): il chiamante fa la sua.
IstruzioneSql QueryListaProduttori(const QVariant& modo);
// Condizione da aggiungere a QueryListaProduttori per il modo (8: il
// certificato UtfSel; 10: i produttori legati al certificato; "711" e
// "1611": la domanda DomandaProduttoreSel); vuota per gli altri.
IstruzioneSql FiltroListaProduttori(const QVariant& modo);

// Modello delle griglie. All'impostazione legge la prima finestra di righe;
// se la lista è più lunga ne conta le righe appena la vista è disegnata (o
// subito, se qualcuno chiede una riga oltre la prima finestra). Poi legge a
// richiesta solo le finestre che la vista mostra (LIMIT/OFFSET sulla stessa
// istruzione) e ne tiene in memoria poche, le ultime usate. Un ordinamento
// che nessun indice serve costerebbe un ordinamento intero a ogni finestra:
// allora le chiavi delle righe si leggono una volta, nell'ordine, e ogni
// finestra si legge per chiave. Nessuna lettura resta aperta sulla
// connessione tra una richiesta e l'altra. Didascalie e allineamenti per
// colonna si azzerano a ogni nuova istruzione, come le colonne di una
// griglia legata a un nuovo recordset.
class ModelloLista : public QAbstractTableModel {
    Q_OBJECT

public:
    static constexpr int RigheFinestra = 256;
    static constexpr int FinestreTenute = 8;

    explicit ModelloLista(QObject* parent = nullptr);
    ~ModelloLista() override;

    // Esegue l'istruzione sulla connessione di sessione. Errori: ErroreSistema,
    // e il modello resta com'era.
    void Imposta(const IstruzioneSql& istruzione);
    const IstruzioneSql& istruzione() const { return m_istruzione; }
    // Rilegge la stessa istruzione (righe cambiate sotto la lista, database
    // ripristinato): colonne, didascalie e allineamenti restano. Un errore
    // lascia la lista vuota e risale al chiamante.
    void Rileggi();
    // Rilegge tutte le liste vive; il primo errore, dopo averle rilette tutte.
    static void RileggiTutte();

    // Nomi, tabelle d'origine e tipi delle colonne dell'istruzione.
    const QSqlRecord& record() const { return m_record; }
    // Finestre lette dal database dall'ultima impostazione.
    int FinestreLette() const { return m_lette; }

    // Colonna di un nome di campo, senza distinguere maiuscole; "TABELLA.CAMPO"
    // sceglie la colonna di quella tabella. -1 se non c'è.
    int Colonna(const QString& nome) const;
    // Valore di una riga per nome di campo; nome assente: errore 3265, riga
    // fuori dalla lista (o sparita dal database): errore 3021.
    Valore Campo(int riga, const QString& nome) const;
    Valore Campo(int riga, int colonna) const;

    // Un allineamento dato vale più di quello a destra delle cifre.
    void ImpostaAllineamento(int colonna, Qt::Alignment allineamento);

    // Vero se le righe si leggono per chiave, nell'ordine letto all'impostazione.
    bool PerChiavi() const { return m_ordinata.numeroChiavi > 0; }

    // Il conteggio ancora da fare: fetchMore lo fa e aggiunge le righe.
    bool canFetchMore(const QModelIndex& genitore) const override;
    void fetchMore(const QModelIndex& genitore) override;
    int rowCount(const QModelIndex& genitore = QModelIndex()) const override;
    int columnCount(const QModelIndex& genitore = QModelIndex()) const override;
    QVariant data(const QModelIndex& indice, int ruolo = Qt::DisplayRole) const override;
    QVariant headerData(int sezione, Qt::Orientation orientamento, int ruolo = Qt::DisplayRole) const override;
    bool setHeaderData(int sezione, Qt::Orientation orientamento, const QVariant& valore,
                       int ruolo = Qt::EditRole) override;

private:
    struct Finestra {
        int numero = -1;
        int righe = 0;
        QList<QVariant> celle;       // righe * colonne
        std::vector<bool> mancanti;  // lette per chiave: righe sparite dal database
    };
    // Le chiavi delle righe nell'ordine della lista, e l'istruzione che
    // legge le righe di un insieme di chiavi (con le chiavi in fondo alle
    // colonne). Vuota se la lista si legge per LIMIT/OFFSET.
    struct Ordinata {
        QString perChiavi;
        int numeroChiavi = 0;
        std::vector<qint64> chiavi;  // righe * numeroChiavi
    };
    struct Lettura {
        QSqlRecord record;
        Finestra prima;
        int righe = 0;
        bool daContare = false;
        Ordinata ordinata;
    };
    // Colonne, prima finestra, righe; il conteggio, se non "contaSubito",
    // resta da fare. Errori: ErroreSistema.
    static Lettura Leggi(const IstruzioneSql& istruzione, bool contaSubito);
    static std::optional<Lettura> LeggiOrdinata(const IstruzioneSql& istruzione);
    // Legge la finestra "numero" (righe da numero * RigheFinestra) e, se
    // chiesto, le colonne. Errori: ErroreSistema.
    static Finestra LeggiFinestra(const IstruzioneSql& istruzione, int numero, QSqlRecord* record = nullptr);
    static Finestra LeggiPerChiavi(const IstruzioneSql& istruzione, const Ordinata& ordinata, int colonne,
                                   int numero);
    Finestra LeggiNumero(int numero) const;
    // La finestra che contiene la riga, dalla memoria o dal database; nullptr
    // se la lettura fallisce (la vista mostra celle vuote).
    const Finestra* FinestraDi(int riga) const;
    const QVariant* Cella(int riga, int colonna) const;
    void Conserva(Finestra finestra) const;
    static int Conta(const IstruzioneSql& istruzione);

    IstruzioneSql m_istruzione;
    QSqlRecord m_record;
    int m_righe = 0;
    bool m_daContare = false;
    int m_generazione = 0;  // cresce a ogni lettura: un conteggio rimandato vale solo per la sua
    Ordinata m_ordinata;
    QSet<int> m_cifre;  // colonne di quantità, importi e numeri
    QHash<int, QVariant> m_didascalie;
    QHash<int, Qt::Alignment> m_allineamenti;
    mutable QList<Finestra> m_finestre;  // la più recente in testa
    mutable int m_lette = 0;
};

// Didascalia della griglia (il titolo sopra le righe): è la proprietà
// "Caption" della vista, mostrata dall'etichetta associata se ce n'è una.
void AssociaDidascalia(QTableView* griglia, QLabel* etichetta);
void ImpostaDidascaliaGriglia(QTableView* griglia, const QString& didascalia);
QString DidascaliaGriglia(const QTableView* griglia);

// Dispone le colonne della lista delle domande: la didascalia della griglia
// prende il testo dell'etichetta della maschera; per i modi 0, 1, 3, 4, 5 e
// "FATTURE2" solo le colonne della lista restano visibili, centrate.
void ColonneGrigliaDomande(QTableView* griglia, const QVariant& modo, const QString& etichettaMaschera);
// Lo stesso per le liste dei conferimenti.
void ColonneGrigliaProduttori(QTableView* griglia, const QVariant& modo, const QString& etichettaMaschera);

// Ricarica la griglia. Con "soloRinfresca" falso: l'istruzione della lista
// per il modo, seguita dal testo del chiamante (condizioni e ordinamento),
// va nel modello "data" (nuovo se manca, legato alla griglia), e tutte le
// colonne tornano visibili. Poi, in ogni caso, la griglia si ridisegna. Chi
// chiama dispone poi le colonne con ColonneGriglia.... L'etichetta e il testo
// aggiunto sono accettati e non usati, come nel programma originale (il
// chiamante mette l'ordinamento nel testo della condizione). Errori:
// ErroreSistema, per l'etichetta d'errore del chiamante.
void AggiornaGrigliaDomande(const IstruzioneSql& condizione, QTableView* griglia, const QVariant& modo,
                            QLabel* etichetta, bool soloRinfresca, ModelloLista* data,
                            const QString& testoAggiunto = QString());
void AggiornaGrigliaProduttori(const IstruzioneSql& condizione, QTableView* griglia, const QVariant& modo,
                               QLabel* etichetta, bool soloRinfresca, ModelloLista* data,
                               const QString& testoAggiunto = QString());
