#pragma once
// Numeri e date come li trattava il motore originale con le impostazioni
// internazionali italiane: la virgola separa i decimali, il punto le migliaia.
//
// Decimale è il valore esatto di tutti i conti del programma: mantissa intera
// a 128 bit e scala da 0 a 28, al più 28 cifre significative. Somma,
// sottrazione e moltiplicazione sono esatte finché il risultato sta in 28
// cifre; oltre, le ultime cifre decimali si arrotondano al pari; se non basta
// togliere decimali l'operazione solleva l'errore 6 "Overflow". La divisione
// dà 28 cifre significative arrotondate al pari; per zero solleva l'errore 11.
//
// Testi accettati come numero (IsNumeric, CDbl e il costruttore di Decimale):
//   - spazi e tabulazioni prima e dopo;
//   - un segno "+" o "-" davanti, oppure dopo le cifre ("5-"), oppure il
//     numero tra parentesi "(5)" per un negativo;
//   - cifre con punti delle migliaia in qualunque posizione dopo la prima
//     cifra ("1.050" e anche "1.0.5", come il motore originale, che non
//     controllava i gruppi di tre);
//   - una virgola decimale seguita da cifre; almeno una cifra in tutto;
//   - un esponente "E" o "D" con segno facoltativo ("1,5E3");
//   - le forme "&H1F" (esadecimale) e "&O17" (ottale).
// Il punto da solo non è mai il separatore decimale: CDbl("1.5") vale 15.
// Simbolo di valuta, spazi interni e testi vuoti non sono numeri.

#include <QDate>
#include <QString>
#include <cstdint>

class Decimale {
public:
    __extension__ typedef __int128 Mantissa;

    Decimale() = default;
    Decimale(int valore) : m_mantissa(valore) {}  // NOLINT: conversione voluta
    // Legge un testo di una maschera con lo "0" messo davanti, così che il
    // testo vuoto valga 0 e ",5" valga 0,5; per il resto le forme di CDbl,
    // tranne parentesi e "&H"/"&O" (con lo "0" davanti non sono numeri). Un
    // segno davanti è ammesso, così i testi di testo() tornano indietro. Oltre
    // 28 decimali si arrotonda al pari. Un testo che non è un numero solleva
    // l'errore 13 "Tipo non corrispondente"; oltre 28 cifre intere l'errore 6.
    explicit Decimale(const QString& testo);

    // Conversioni dalla doppia e dalla singola precisione attraverso 15 e 7
    // cifre significative, come faceva il motore originale.
    static Decimale daDouble(double valore);
    static Decimale daSingle(float valore);
    // Valore grezzo: mantissa / 10^scala (scala 0..28, |mantissa| < 10^28).
    static Decimale daMantissa(Mantissa mantissa, int scala);

    Decimale operator-() const;
    friend Decimale operator+(const Decimale& a, const Decimale& b);
    friend Decimale operator-(const Decimale& a, const Decimale& b);
    friend Decimale operator*(const Decimale& a, const Decimale& b);
    friend Decimale operator/(const Decimale& a, const Decimale& b);
    Decimale& operator+=(const Decimale& b) { return *this = *this + b; }
    Decimale& operator-=(const Decimale& b) { return *this = *this - b; }
    Decimale& operator*=(const Decimale& b) { return *this = *this * b; }
    Decimale& operator/=(const Decimale& b) { return *this = *this / b; }

    friend bool operator==(const Decimale& a, const Decimale& b) { return Confronta(a, b) == 0; }
    friend bool operator!=(const Decimale& a, const Decimale& b) { return Confronta(a, b) != 0; }
    friend bool operator<(const Decimale& a, const Decimale& b) { return Confronta(a, b) < 0; }
    friend bool operator<=(const Decimale& a, const Decimale& b) { return Confronta(a, b) <= 0; }
    friend bool operator>(const Decimale& a, const Decimale& b) { return Confronta(a, b) > 0; }
    friend bool operator>=(const Decimale& a, const Decimale& b) { return Confronta(a, b) >= 0; }
    // -1, 0, 1 secondo il valore (la scala non conta: 1,50 = 1,5).
    static int Confronta(const Decimale& a, const Decimale& b);

    // Testo semplice del valore come lo scriveva il motore: virgola, nessuno
    // zero finale, nessun separatore delle migliaia ("1050,6", "0", "-0,5").
    QString testo() const;
    double aDouble() const;
    bool zero() const { return m_mantissa == 0; }
    bool negativo() const { return m_mantissa < 0; }
    Mantissa mantissa() const { return m_mantissa; }
    int scala() const { return m_scala; }

private:
    Mantissa m_mantissa = 0;
    int m_scala = 0;
};

// Arrotondamento al pari a un numero di decimali (0..28): 2,345 -> 2,34;
// 2,355 -> 2,36. Decimali negativi: errore 5.
Decimale Round(const Decimale& valore, int decimali);

// Formato con una maschera numerica: "0" cifra obbligatoria, "#" cifra
// facoltativa, "." posto della virgola decimale, "," separatore delle
// migliaia (scritto come punto); altri caratteri in testa o in coda sono
// copiati. L'arrotondamento va a metà lontano da zero (2,345 -> "2,35") e il
// risultato usa la virgola: Format(1050,6; "##0.00") = "1050,60". Un
// negativo che si arrotonda a zero mantiene il segno ("-0,00"), come faceva
// il motore originale.
QString Format(const Decimale& valore, const QString& maschera);
// Formato di una data: "DD" o "D" giorno, "MM" o "M" mese, "YYYY" o "YY"
// anno, senza distinzione tra maiuscole e minuscole; il resto è copiato.
QString Format(const QDate& data, const QString& maschera);
// Format applicato a un testo, come faceva il runtime: un testo numerico viene
// letto e formattato, uno non numerico (vuoto compreso) torna così com'è.
QString FormatTesto(const QString& testo, const QString& maschera);

// Vero se CDbl accetterebbe il testo (vedi le forme in testa al file).
bool IsNumeric(const QString& testo);
// Numero in doppia precisione dalle regole italiane. Testo non numerico
// (anche vuoto): errore 13; valore fuori dalla doppia precisione: errore 6.
double CDbl(const QString& testo);
// Numero iniziale del testo, indipendente dalle impostazioni internazionali:
// spazi, tabulazioni e ritorni a capo sono ignorati ovunque; poi un segno,
// cifre, un punto decimale, altre cifre, un esponente "E"/"D"; la lettura si
// ferma al primo altro carattere. "&H"/"&O" leggono un esadecimale/ottale.
// Un testo senza numero vale 0; solo un valore oltre la doppia precisione
// ("1E400") solleva l'errore 6.
double Val(const QString& testo);
// Testo di un numero in doppia precisione come lo scriveva il motore: 15
// cifre significative, virgola decimale, notazione esponenziale sopra 1E15 e
// sotto 1E-5 ("1E+20", "1,5E-07").
QString CStr(double valore);

// Date, con il giorno prima del mese. Forme accettate (spazi attorno
// ignorati):
//   - tre numeri separati da "/", "-", "." o spazio: giorno, mese, anno
//     ("1/2/2005", "01-02-05"); se giorno e mese non formano una data ma
//     scambiati sì, sono scambiati come faceva il motore ("12/31/2005" è il
//     31 dicembre); con il primo numero di tre o quattro cifre l'ordine è
//     anno, mese, giorno ("2005/02/01");
//   - due numeri: giorno e mese dell'anno corrente ("1/2"), o in mancanza
//     mese e anno, col giorno 1 ("2/2005");
//   - il mese può essere scritto in lettere italiane, per intero o con le
//     prime tre lettere ("1 febbraio 2005", "1-feb-05").
// Anno di due cifre (o una): da 00 a 29 è 2000-2029, da 30 a 99 è 1930-1999.
// Anni validi da 100 a 9999. Un orario non è accettato.
bool IsDate(const QString& testo);
// Data del testo; se IsDate è falso solleva l'errore 13.
QDate CDate(const QString& testo);
