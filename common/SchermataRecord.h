#pragma once
// Base delle maschere di un record (domanda, fattura, certificato, produttore,
// ...). Dà una volta sola il comportamento comune:
//   - i campi sono l'array TxtDati per indice, con la colonna nel Tag e
//     l'etichetta umana nel tooltip (è il tooltip che entra nei messaggi);
//     il testo accanto al campo è Lbldati(indice), che può essere diverso;
//     le combo stanno negli array cboDomanda, cboProdotto, cboProvincia; i
//     pulsanti nell'array Cmddati (0 "Salva", 1 "Esci", 2 "Help");
//   - leggere un indice che un array non ha solleva l'errore 340, che come
//     ogni ErroreSistema sfuggito a un evento della maschera va a ScriviLogErr
//     con l'etichetta della maschera (EtichettaErrore): la maschera resta;
//   - il caricamento comune (posizione, titolo, campi del record in modo
//     "M") è CaricaMaschera, che la maschera chiama in fondo al costruttore;
//   - il testo si seleziona quando un campo prende il fuoco, il tasto Canc è
//     ignorato, F1 vale come il clic sul pulsante d'aiuto della maschera
//     (Cmddati_Click(IndiceHelp()));
//   - ogni tasto battuto diventa un codice di carattere per TxtDati_KeyPress,
//     dove la maschera sceglie i filtri per indice (0 annulla il tasto, un
//     codice cambiato batte il carattere cambiato);
//   - quando un campo perde il fuoco verso un altro controllo della maschera
//     gira TxtDati_Validate: date, importi, quantità, numero domanda e
//     progressivo si riscrivono secondo il genere del campo; un rifiuto
//     riporta il fuoco nel campo e il clic che aveva preso il fuoco va perso
//     sui campi, le combo, i pulsanti e i controlli registrati con
//     RegistraControllo. "Esci" e "Help" non aspettano la validazione.

#include "common/ArrayControlli.h"

#include <QDialog>
#include <QMap>
#include <QPointer>
#include <QString>

class QComboBox;
class QGridLayout;
class QHBoxLayout;
class QKeyEvent;
class QLabel;
class QLineEdit;
class QPushButton;

// Come si valida un campo quando perde il fuoco.
enum class GenereCampo {
    Libero,
    Data,           // riscritta GG/MM/AAAA; non valida e non vuota: "Data non valida"
    Importo,        // "0" + testo nel formato "##0.00"
    Quantita,       // quantità e gradi: "0" + testo nel formato "##0.0000"
    NumeroDomanda,  // zeri a sinistra fino a 11 cifre
    Progressivo,    // zeri a sinistra fino a 2 cifre
};

// Filtro dei tasti scelto per un campo (dopo Keypress_Upper, se richiesto).
enum class FiltroCampo {
    Nessuno,
    Caratteri,  // FiltroCaratteri
    Intero,     // Keypress_Integer
    Decimale,   // Keypress_Decimale con i decimali del campo
    Data,       // Keypress_Data
};

using ArrayCampi = ArrayControlli<QLineEdit>;
using ArrayCombo = ArrayControlli<QComboBox>;
using ArrayPulsanti = ArrayControlli<QPushButton>;
using ArrayEtichette = ArrayControlli<QLabel>;

class SchermataRecord : public QDialog {
    Q_OBJECT

public:
    explicit SchermataRecord(QWidget* parent = nullptr);
    ~SchermataRecord() override;

    ArrayCampi TxtDati;
    ArrayEtichette Lbldati;
    ArrayPulsanti Cmddati;
    ArrayCombo cboDomanda;
    ArrayCombo cboProdotto;
    ArrayCombo cboProvincia;

    // Crea il campo TxtDati(indice) con l'etichetta Lbldati(indice) nella
    // griglia dei campi. Il tooltip è il nome del campo nei messaggi; la
    // lunghezza massima è quella della colonna.
    QLineEdit* AggiungiCampo(int indice, const QString& tag, const QString& etichetta, const QString& tooltip,
                             int lunghezzaMassima, GenereCampo genere = GenereCampo::Libero);
    // Registra un campo creato dalla maschera (già posato dove vuole lei).
    // L'etichetta va in Lbldati(indice) se c'è; altrimenti, se non è vuota,
    // nasce lì una QLabel nuova che la maschera posa dove vuole.
    void RegistraCampo(int indice, QLineEdit* campo, const QString& tag, const QString& etichetta,
                       const QString& tooltip, int lunghezzaMassima, GenereCampo genere = GenereCampo::Libero);
    // Sceglie i filtri del campo usati da TxtDati_KeyPress di base.
    void ImpostaFiltroCampo(int indice, FiltroCampo filtro, int decimali = 2, bool maiuscole = true);
    void ImpostaGenere(int indice, GenereCampo genere);
    GenereCampo Genere(int indice) const;

    // Le combo come i campi: etichetta in Lbldati(indice), tooltip sulla combo.
    QComboBox* AggiungiCombo(ArrayCombo& array, int indice, const QString& tag, const QString& etichetta,
                             const QString& tooltip);
    void RegistraCombo(ArrayCombo& array, int indice, QComboBox* combo, const QString& tag, const QString& etichetta,
                       const QString& tooltip);

    // Un altro controllo della maschera (pulsante di ricerca o di calcolo,
    // casella di spunta, griglia, riquadro): con i suoi figli, anche lui
    // perde il clic che ha tolto il fuoco a un campo rifiutato.
    void RegistraControllo(QWidget* controllo);

    // Pulsante Cmddati(indice). "validazione" falso: il pulsante non fa
    // validare il campo che lascia (così "Esci" e "Help").
    QPushButton* AggiungiPulsante(int indice, const QString& didascalia, bool validazione = true);
    void RegistraPulsante(int indice, QPushButton* pulsante, bool validazione = true);
    // 0 "Salva", 1 "Esci", 2 "Help".
    void AggiungiPulsantiStandard();

    // Nome della maschera per l'aiuto: objectName, o il nome della classe.
    virtual QString NomeMaschera() const;
    // Apre l'aiuto della maschera.
    void Help();
    // Chiude la maschera (il proprietario dell'unica istanza la distrugge).
    void Scarica(int esito = QDialog::Rejected);

    // Caricamento comune: misura (se la maschera non se ne è data una) e
    // posizione con PosizionaForm sullo schermo, titolo da Didascalia(), e
    // RiempiCampi quando DaRiempire(). La maschera lo chiama in fondo al
    // costruttore, dopo aver riempito le sue combo. Un errore va a
    // ScriviLogErr con EtichettaErrore("Form_Load").
    void CaricaMaschera();

    // Indice di un campo in TxtDati, -1 se non c'è.
    int IndiceCampo(const QObject* campo) const;

protected:
    // Filtri per indice. Di base: Keypress_Upper (se il campo lo vuole) e il
    // filtro scelto con ImpostaFiltroCampo.
    virtual void TxtDati_KeyPress(int indice, int& KeyAscii);
    // Falso rifiuta: il fuoco resta nel campo. Di base applica le regole del
    // genere del campo (ValidaGenere).
    virtual bool TxtDati_Validate(int indice);
    // Clic su Cmddati(indice). Di base 1 chiude e 2 apre l'aiuto.
    virtual void Cmddati_Click(int indice);
    // Il pulsante d'aiuto, che F1 preme: di base 2.
    virtual int IndiceHelp() const { return 2; }
    // Il tasto F1: di base Cmddati_Click(IndiceHelp()). Solo una maschera in
    // cui F1 fa altro dal pulsante la ridefinisce.
    virtual void TastoF1();

    // Titolo della finestra: TitoloMaschera, o quello che la maschera ha già
    // se TitoloMaschera è vuoto.
    virtual QString Didascalia() const;
    // Se il caricamento riempie i campi dal record scelto: di base con
    // ModoMaschera "M" (senza spazi, maiuscole o minuscole).
    virtual bool DaRiempire() const;
    // Riempie i campi dal record scelto (sessione). Di base non fa nulla.
    virtual void RiempiCampi() {}
    // Etichetta per ScriviLogErr di un errore sfuggito alla routine:
    // "Form_Load", "Cmddati_Click" (anche da F1), "TxtDati_KeyPress",
    // "TxtDati_Validate". Di base NomeMaschera() + " " + routine; una maschera
    // la ridefinisce per dare le etichette che l'assistenza conosce.
    virtual QString EtichettaErrore(const QString& routine) const;

    // Le regole del genere del campo.
    bool ValidaGenere(int indice);

    // Griglia (etichetta, campo) e riga dei pulsanti in fondo.
    QGridLayout* areaCampi() const { return m_areaCampi; }
    QHBoxLayout* areaPulsanti() const { return m_areaPulsanti; }

    bool eventFilter(QObject* oggetto, QEvent* evento) override;
    void keyPressEvent(QKeyEvent* evento) override;

private:
    struct RegoleCampo {
        GenereCampo genere = GenereCampo::Libero;
        FiltroCampo filtro = FiltroCampo::Nessuno;
        int decimali = 2;
        bool maiuscole = true;
    };

    bool TastoNelCampo(QLineEdit* campo, int indice, QKeyEvent* evento);
    void Consegna(QWidget* destinatario, QKeyEvent& evento);
    bool FuocoPerso(QLineEdit* campo, int indice);
    void Sorveglia(QWidget* controllo);
    // Lbldati(indice) con il testo dato, creata se manca e il testo c'è.
    QLabel* Etichetta(int indice, const QString& testo, QWidget* compagno);
    // Esegue un gestore di evento: un ErroreSistema che ne esce va a
    // ScriviLogErr con EtichettaErrore(routine). Falso se c'è stato.
    template <typename F>
    bool Protetto(const QString& routine, F&& gestore);

    QMap<int, RegoleCampo> m_regole;
    QGridLayout* m_areaCampi = nullptr;
    QHBoxLayout* m_areaPulsanti = nullptr;
    int m_rigaCampi = 0;
    // Evento che stiamo consegnando noi: il filtro lo lascia passare.
    const QEvent* m_eventoProprio = nullptr;
    // Campo che ha rifiutato la validazione: finché il rifiuto è in corso i
    // clic sugli altri controlli vanno persi.
    QPointer<QLineEdit> m_campoRifiutato;
    bool m_inValidazione = false;
    bool m_ripristino = false;
};
