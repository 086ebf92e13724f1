#pragma once
// Le liste delle maschere elenco dei due rami: l'istruzione della lista per
// ogni modo, la disposizione delle colonne della griglia e il ricaricamento.
// Il modo è OperazioneCorrente o uno dei valori speciali passati dal
// chiamante: "CERCA", "FATTURE2", "SCARICO", "SCARICO2", "168", "711",
// "1611". Un numero e il suo testo valgono lo stesso modo.
//
// Le griglie sono QTableView su un ModelloLista (QSqlQueryModel): le righe si
// leggono a richiesta, così una lista di 100 000 fatture mostra la prima
// schermata subito. Le colonne si indirizzano per posizione
// nell'istruzione, per questo l'ordine delle colonne delle tabelle conta.

#include "store/database.h"

#include <QHash>
#include <QSqlQueryModel>
#include <QString>
#include <QVariant>

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

// Modello delle griglie: legge le righe a richiesta dalla connessione di
// sessione. Didascalie e allineamenti per colonna si azzerano a ogni nuova
// istruzione, come le colonne di una griglia legata a un nuovo recordset.
class ModelloLista : public QSqlQueryModel {
    Q_OBJECT

public:
    explicit ModelloLista(QObject* parent = nullptr);
    ~ModelloLista() override;

    // Esegue l'istruzione sulla connessione di sessione. Errori: ErroreSistema.
    void Imposta(const IstruzioneSql& istruzione);
    const IstruzioneSql& istruzione() const { return m_istruzione; }

    // Legge le righe che mancano, così la lettura sulla connessione si chiude.
    // Vero se c'era qualcosa da leggere.
    bool TerminaLettura();

    // Colonna di un nome di campo, senza distinguere maiuscole; "TABELLA.CAMPO"
    // sceglie la colonna di quella tabella. -1 se non c'è.
    int Colonna(const QString& nome) const;
    // Valore di una riga per nome di campo; nome assente: errore 3265, riga
    // fuori dalla lista: errore 3021.
    Valore Campo(int riga, const QString& nome) const;
    Valore Campo(int riga, int colonna) const;

    void ImpostaAllineamento(int colonna, Qt::Alignment allineamento);

    QVariant data(const QModelIndex& indice, int ruolo = Qt::DisplayRole) const override;
    QVariant headerData(int sezione, Qt::Orientation orientamento, int ruolo = Qt::DisplayRole) const override;
    bool setHeaderData(int sezione, Qt::Orientation orientamento, const QVariant& valore,
                       int ruolo = Qt::EditRole) override;

    // Termina le letture aperte di tutti i modelli vivi (vedi
    // Database::ImpostaTerminaLetture).
    static bool TerminaTutteLeLetture();

private:
    IstruzioneSql m_istruzione;
    QHash<int, QVariant> m_didascalie;
    QHash<int, Qt::Alignment> m_allineamenti;
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
