#pragma once
// Piccoli servizi di tutte le maschere: il Tag dei controlli, il caricamento
// delle combo da una tabella, la pulizia dei campi, la selezione del testo e
// la posizione della finestra.

#include <QString>
#include <QVariantList>

class QComboBox;
class QLineEdit;
class QWidget;

// Tag di un controllo: il nome della colonna che il campo modifica ("dont"
// per i campi che mostrano dati del record padre e non si scrivono). È la
// proprietà dinamica "Tag".
void ImpostaTag(QWidget* controllo, const QString& tag);
QString Tag(const QWidget* controllo);

// Riempie una combo con "SELECT campo FROM tabella [WHERE condizione] ordine".
// Per ogni riga la prima colonna senza spazi ai lati (Null: testo vuoto); con
// "unisci" anche una voce con tutte le colonne, ognuna preceduta da uno
// spazio; con "datiVoce" il valore intero della prima colonna come dato della
// voce. Alla fine, con "rigaVuota" una voce vuota; senza, la combo si porta
// sulla CampagnaCorrente se non è vuota. Un errore va a ScriviLogErr e la
// combo resta come è arrivata.
// L'espressione si scrive come la voce si compone, "CODI_PROD & ' ' &
// DESC_PROD" (o con "||"): prima di eseguirla ogni parte unita da "&" o "||"
// diventa IFNULL(parte, ''), così una parte Null resta vuota e non annulla
// tutta la voce, come faceva "&". Le colonne si separano con la virgola.
void CaricaCmb(QComboBox* combo, const QString& tabella, const QString& campo, const QString& condizione,
               bool datiVoce, const QString& ordine, bool unisci, bool rigaVuota,
               const QVariantList& parametri = {});

// Svuota le caselle di testo e le combo/liste della maschera, tranne quelle il
// cui Tag sta nell'elenco "esclusi" ("*TAG1*TAG2*", senza distinguere
// maiuscole). I Tag "dont" sono sempre esclusi.
void PulisciCampi(QWidget* maschera, const QString& esclusi);

// Seleziona tutto il testo del campo.
void SelezionaTesto(QLineEdit* campo);

// Con "schermo" vero mette la finestra a un terzo della larghezza libera
// dello schermo e a un quarto dell'altezza libera; con falso la centra sulla
// finestra padre (senza padre vale come vero).
void PosizionaForm(QWidget* maschera, bool schermo, const QWidget* padre);
