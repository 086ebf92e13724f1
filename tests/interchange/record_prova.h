#pragma once
// Aiuti per scrivere e confrontare i record attesi dei tracciati.

#include <QString>
#include <gtest/gtest.h>

// Il testo seguito da spazi fino alla larghezza: solo per scrivere i campi
// lunghi dei record attesi senza contare gli spazi a mano.
inline QString Sx(const QString& testo, int larghezza)
{
    EXPECT_LE(testo.size(), larghezza) << "campo atteso più lungo della sua larghezza";
    return testo + QString(larghezza - testo.size(), QLatin1Char(' '));
}

inline QString Bianchi(int n) { return QString(n, QLatin1Char(' ')); }

// Confronto di due record carattere per carattere: in caso di differenza dice
// la prima posizione (da 1) e le due righe.
inline ::testing::AssertionResult RecordUguale(const QString& atteso, const QString& ottenuto)
{
    if (atteso == ottenuto)
        return ::testing::AssertionSuccess();
    qsizetype i = 0;
    while (i < atteso.size() && i < ottenuto.size() && atteso.at(i) == ottenuto.at(i))
        ++i;
    return ::testing::AssertionFailure()
           << "prima differenza in posizione " << (i + 1) << " (lunghezze " << atteso.size() << " e "
           << ottenuto.size() << ")\natteso:   [" << atteso.toStdString() << "]\nottenuto: ["
           << ottenuto.toStdString() << "]";
}

inline std::ostream& operator<<(std::ostream& os, const QString& s) { return os << s.toStdString(); }
