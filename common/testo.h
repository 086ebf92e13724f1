#pragma once
// Testi a larghezza fissa dei tracciati, conversione delle date tra maschere
// e apici nelle istruzioni SQL.

#include <QChar>
#include <QString>

// I primi "larghezza" caratteri del valore seguito da "larghezza" riempitivi:
// allineato a sinistra, tagliato se più lungo. Larghezza negativa: errore 5.
QString PadDestra(const QString& valore, int larghezza, QChar riempimento);
// Gli ultimi "larghezza" caratteri di "larghezza" riempitivi seguiti dal
// valore: allineato a destra, di un valore più lungo resta la coda.
QString PadSinistra(const QString& valore, int larghezza, QChar riempimento);

// Cifre di un campo di esportazione da una cifra memorizzata ("12,5" con 3
// decimali dà "12500"). Vuoto o valore zero danno il testo vuoto; un valore
// senza virgola con 0 decimali dà anch'esso il testo vuoto (voluto). Un testo
// che non è un numero solleva l'errore 13.
QString FormattaDecimali(const QString& valore, int decimali);
// Il contrario, all'importazione: le ultime "decimali" cifre sono i decimali,
// il resto passa per il suo valore numerico (Val, perdendo gli zeri in testa)
// e torna testo: "00012345" con 2 dà "123,45".
QString InserisciVirgola(const QString& valore, int decimali);
// La stessa su una parte di riga, senza copiarla prima (i tracciati in entrata).
QString InserisciVirgola(QStringView valore, int decimali);

// Data tra due maschere: "G" giorno, "M" mese, "A" anno ("GG/MM/AAAA",
// "AAAAMMGG"). Senza una data valida il risultato è lungo quanto la maschera
// d'uscita: tutto "0" con il tipo "D0", spazi con ogni altro tipo ("DT").
QString FormattazioneData(const QString& valore, const QString& mascheraIngresso, const QString& mascheraUscita,
                          const QString& tipo);

// Testo pronto per stare tra apici in un'istruzione: apostrofi e doppi apici
// raddoppiati.
QString ApiceSql(const QString& testo);
// Per la stampa delle bolle: testo senza spazi ai lati, apostrofi mutati in
// accenti gravi (`), dei due finali ne resta uno.
QString SostituisciApici(const QString& testo);
