#pragma once
// Record di una fornitura fatture in entrata, campo per campo alle loro
// posizioni, e scrittura del file nella pagina di codici delle forniture.

#include "interchange/FileFornitura.h"

#include <QString>
#include <QStringList>

namespace FornituraProva {

inline QString Campo(const QString& valore, int larghezza) { return valore.leftJustified(larghezza, ' ', true); }
inline QString Riga(const QString& r) { return r.leftJustified(260, ' ', true); }

inline QString R0(const QString& campagna = "2005", const QString& progressivo = "001")
{
    return Riga("0" + campagna + "000002" "000003" "000004" "15/05/2006" + progressivo);
}
inline QString R1(const QString& domanda, const QString& prodotto = "ANE", const QString& progressivo = "01")
{
    return Riga("1" + Campo(domanda, 11) + progressivo + "29" + prodotto);
}
// Fattura della domanda: 1500,0000 di prodotto a 12,5000, prezzo 2,45,
// imponibile 3675,00, IVA 735,00, totale 4410,00.
inline QString R2(const QString& domanda, const QString& numero, const QString& lavorazione = "VDT",
                  const QString& nome = "CANTINA SOCIALE DI CANELLI", const QString& progressivo = "01")
{
    return Riga("2" + Campo(domanda, 11) + progressivo + Campo(numero, 15) + "RSSMRA70A01H501S" + Campo(nome, 50) +
                "15/03/2006" "0001500" "0000" "12" "5000" "0002" "4500" "000000003675" "00" "000000000735" "00"
                "000000004410" "00" "20/04/2006" "0001480" "0000" + lavorazione);
}
inline QString R3(const QString& domanda, const QString& fattura, const QString& bolla,
                  const QString& consegna = "02/03/2006", const QString& progressivo = "01")
{
    return Riga("3" + Campo(domanda, 11) + progressivo + Campo(fattura, 15) + "RSSMRA70A01H501S" + Campo(bolla, 20) +
                consegna + "0000750" "0000" "          " "12" "5000");
}

inline void ScriviFile(const QString& percorso, const QStringList& righe)
{
    ScritturaFornitura file(percorso);
    for (const QString& r : righe)
        file.Print(r);
    file.Close();
}

}  // namespace FornituraProva
