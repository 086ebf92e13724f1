#pragma once
// Base delle maschere di un record (domanda, fattura, certificato, produttore,
// ...). Dà una volta sola il comportamento comune:
//   - i campi sono l'array TxtDati per indice, con la colonna nel Tag e
//     l'etichetta umana nel tooltip; le combo stanno negli array cboDomanda,
//     cboProdotto, cboProvincia; i pulsanti nell'array Cmddati (0 "Salva",
//     1 "Esci", 2 "Help");
//   - il testo si seleziona quando un campo prende il fuoco, il tasto Canc è
//     ignorato, F1 vale come "Help";
//   - ogni tasto battuto diventa un codice di carattere per TxtDati_KeyPress,
//     dove la maschera sceglie i filtri per indice (0 annulla il tasto, un
//     codice cambiato batte il carattere cambiato);
//   - quando un campo perde il fuoco verso un altro controllo della maschera
//     gira TxtDati_Validate: date, importi, quantità, numero domanda e
//     progressivo si riscrivono secondo il genere del campo; un rifiuto
//     riporta il fuoco nel campo e il clic che aveva preso il fuoco va perso.
//     "Esci" e "Help" non aspettano la validazione.

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

using ArrayCampi = QMap<int, QLineEdit*>;
using ArrayCombo = QMap<int, QComboBox*>;
using ArrayPulsanti = QMap<int, QPushButton*>;
using ArrayEtichette = QMap<int, QLabel*>;

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

    // Crea il campo TxtDati(indice) con la sua etichetta nella griglia dei
    // campi. La lunghezza massima è quella della colonna.
    QLineEdit* AggiungiCampo(int indice, const QString& tag, const QString& etichetta, int lunghezzaMassima,
                             GenereCampo genere = GenereCampo::Libero);
    // Registra un campo creato dalla maschera (già posato dove vuole lei).
    void RegistraCampo(int indice, QLineEdit* campo, const QString& tag, const QString& etichetta,
                       int lunghezzaMassima, GenereCampo genere = GenereCampo::Libero);
    // Sceglie i filtri del campo usati da TxtDati_KeyPress di base.
    void ImpostaFiltroCampo(int indice, FiltroCampo filtro, int decimali = 2, bool maiuscole = true);
    void ImpostaGenere(int indice, GenereCampo genere);
    GenereCampo Genere(int indice) const;

    QComboBox* AggiungiCombo(ArrayCombo& array, int indice, const QString& tag, const QString& etichetta);
    void RegistraCombo(ArrayCombo& array, int indice, QComboBox* combo, const QString& tag,
                       const QString& etichetta);

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
