#pragma once
// Filtri dei tasti dei campi: niente maschere di input, ogni regola su cosa si
// può battere è applicata tasto per tasto. Ogni filtro riceve il codice del
// carattere (pagina windows-1252) per riferimento e può cambiarlo o annullarlo
// (0). Un tasto rifiutato suona anche il beep, salvo dove detto.
//
// I filtri che battono tasti da sé (l'apostrofo dopo una vocale accentata,
// il tabulatore dopo Invio) li mandano con InviaTasti: arrivano al campo che
// ha il fuoco sullo stesso percorso di un tasto battuto dall'utente.

#include <QChar>
#include <QList>
#include <QString>
#include <Qt>

class QLineEdit;

// Codice windows-1252 di un carattere; 63 ("?") se la pagina non lo ha.
int CodiceCarattere(QChar carattere);
// Carattere di un codice windows-1252 (0..255).
QChar CarattereCodice(int codice);

// Maiuscole; "*" annullato senza beep; à á è é ì í ò ó ù ú diventano la vocale
// maiuscola seguita da un apostrofo battuto come se lo battesse l'utente.
void Keypress_Upper(int& KeyAscii);
// Tiene solo controlli e spazio, & ' , - . / cifre e lettere; il resto è
// annullato senza beep.
void FiltroCaratteri(int& KeyAscii);
// Controlli, cifre, "." e ","; il resto beep e annullato.
void Keypress_Integer(int& KeyAscii);
// Cifra con "decimali" decimali; il valore massimo dipende dalla lunghezza
// massima del campo (MaxLength - 1 cifre in tutto). Invio passa al campo dopo.
void Keypress_Decimale(QLineEdit* campo, int& KeyAscii, int decimali);
void Keypress_Decimale2(QLineEdit* campo, int& KeyAscii);
// Data GG/MM/AAAA guidata dalla posizione del cursore; le barre le batte il filtro.
void Keypress_Data(QLineEdit* campo, int& KeyAscii);

// Tasti battuti dal programma come se li battesse l'utente. "{TAB}" è il
// tabulatore, "{ENTER}" l'Invio; ogni altro carattere è sé stesso.
void InviaTasti(const QString& tasti);

struct TastoSimulato {
    Qt::Key tasto = Qt::Key_unknown;
    QString testo;
};

// Mentre un oggetto ConsegnaTasto è vivo i tasti inviati aspettano in coda:
// chi consegna il tasto in corso li prende con PrendiCoda() e li batte subito
// dopo, nell'ordine. Senza consegne in corso InviaTasti li accoda agli eventi
// del widget che ha il fuoco.
class ConsegnaTasto {
public:
    ConsegnaTasto();
    ~ConsegnaTasto();
    ConsegnaTasto(const ConsegnaTasto&) = delete;
    ConsegnaTasto& operator=(const ConsegnaTasto&) = delete;
    static QList<TastoSimulato> PrendiCoda();
};

// Posizione del cursore come la intende il filtro: l'inizio della selezione
// se c'è testo selezionato.
int PosizioneCursore(const QLineEdit* campo);
