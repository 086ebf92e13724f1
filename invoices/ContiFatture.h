#pragma once
// I conti della fattura e delle sue bolle, senza maschere: il controllo
// dell'imponibile e del totale, la somma delle bolle contro la quantità
// distillata, la prima data di consegna. Le cifre arrivano come testo con la
// virgola; un testo vuoto vale 0.

#include "common/numeri.h"

#include <QString>
#include <optional>

// Tolleranza dell'imponibile, in euro, inclusa.
inline const QString TolleranzaImponibile = QStringLiteral("0,60");

// Vero quando Round(grado × prodotto × prezzo, 2) cade fuori da
// [Round(imponibile − 0,60, 2); Round(imponibile + 0,60, 2)].
bool ImponibileFuoriTolleranza(const QString& grado, const QString& prodotto, const QString& prezzo,
                               const QString& imponibile);
// Vero quando Round(totale, 2) differisce da Round(imponibile + iva, 2).
bool TotaleNonCorrisponde(const QString& imponibile, const QString& iva, const QString& totale);

// Controllo della quantità di una bolla all'uscita dal campo: la somma delle
// altre bolle (in doppia precisione, come la dà il database) più la quantità
// battuta, contro la quantità distillata della fattura, arrotondate al pari a
// 4 decimali. Solo una somma maggiore è rifiutata: il risultato è allora il
// testo del messaggio, in tre righe.
std::optional<QString> ControllaSommaBolle(double sommaAltreBolle, const QString& quantita,
                                           const QString& distillata);

// La data "GG/MM/AAAA" da una "AAAAMMGG" del minimo delle consegne; vuota se
// il minimo è vuoto.
QString DataDaMinimo(const QString& mindata);
