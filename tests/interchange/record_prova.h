#pragma once
// Aiuti per scrivere e confrontare i record attesi dei tracciati.

#include "support/prova.h"

// La distilleria delle prove dei due rami.
inline DatiDistilleria Distilleria()
{
    DatiDistilleria d;
    d.CODI_FISC = QStringLiteral("01234567890");
    d.RAGI_SOCI = QStringLiteral("DISTILLERIA BOSCO SPA");
    d.INDI_DIST = QStringLiteral("VIA ROMA 12 ASTI");
    return d;
}

// Il testo seguito da spazi fino alla larghezza: solo per scrivere i campi
// lunghi dei record attesi senza contare gli spazi a mano.
inline QString Sx(const QString& testo, int larghezza)
{
    EXPECT_LE(testo.size(), larghezza) << "campo atteso più lungo della sua larghezza";
    return testo + QString(larghezza - testo.size(), QLatin1Char(' '));
}

inline QString Bianchi(int n) { return QString(n, QLatin1Char(' ')); }

// Il file scritto da capo con i byte dati.
inline void ScriviByte(const QString& percorso, const QByteArray& dati = "x")
{
    QFile f(percorso);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate)) << percorso;
    f.write(dati);
}

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
