#pragma once
// Record in entrata del ramo conferimenti scritti per campi: ogni campo alla
// sua posizione in una riga di 300 spazi.

#include <QByteArray>
#include <QList>
#include <QPair>
#include <QString>
#include <QStringList>

namespace ConferimentiProva {

inline QString Record(QChar tipo, const QList<QPair<int, QString>>& campi)
{
    QString riga(300, QLatin1Char(' '));
    riga[0] = tipo;
    for (const auto& [posizione, testo] : campi)
        riga.replace(posizione - 1, testo.size(), testo);
    return riga;
}

// Testata: progressivo a 41, quadratura a 143.
inline QString R0(const QString& progressivo = QStringLiteral("0007"), const QString& quadratura = QStringLiteral("1"))
{
    return Record(QLatin1Char('0'), {{2, QString(30, QLatin1Char('0'))},
                                     {32, QStringLiteral("2005/2006")},
                                     {41, progressivo},
                                     {45, QStringLiteral("20060131")},
                                     {53, QStringLiteral("CANTINA SOCIALE DI CANELLI")},
                                     {123, QStringLiteral("00123450056")},
                                     {139, QStringLiteral("10")},
                                     {141, QStringLiteral("29")},
                                     {143, quadratura}});
}

// Domanda: numero, articolo, anticipo in 12 + 2 cifre.
inline QString R1(const QString& numero, const QString& anticipo = QStringLiteral("00000000150050"))
{
    return Record(QLatin1Char('1'), {{2, numero}, {13, QStringLiteral("29")}, {15, anticipo}});
}

// Certificato: numero, sigla della provincia, quantità in 7 + 4 cifre.
inline QString R2(const QString& numero, const QString& sigla = QStringLiteral("TO"))
{
    return Record(QLatin1Char('2'), {{13, numero},
                                     {22, sigla},
                                     {24, QStringLiteral("20060110")},
                                     {32, QStringLiteral("00003005000")},
                                     {43, QStringLiteral("00000202500")},
                                     {54, QStringLiteral("00000100000")},
                                     {65, QStringLiteral("00000000000")},
                                     {76, QStringLiteral("000033000000")}});
}

// Produttore: codice fiscale, nome, codice del colore.
inline QString R3(const QString& codiceFiscale, const QString& nome, const QString& colore = QStringLiteral("RO"))
{
    return Record(QLatin1Char('3'), {{32, codiceFiscale},
                                     {48, nome},
                                     {118, QStringLiteral("00000004711")},
                                     {129, QStringLiteral("00001005000")},
                                     {140, QStringLiteral("110000")},
                                     {146, QStringLiteral("000011055000")},
                                     {158, QStringLiteral("00000100000")},
                                     {169, QStringLiteral("00000050000")},
                                     {180, QStringLiteral("00000000000")},
                                     {191, QStringLiteral("00000000018840")},
                                     {205, QStringLiteral("00000000008755")},
                                     {219, QStringLiteral("00000000000000")},
                                     {233, QStringLiteral("00000000000100")},
                                     {247, colore},
                                     {249, QStringLiteral("000000000027495")},
                                     {264, QStringLiteral("S")},
                                     {265, QStringLiteral("020")}});
}

inline QString R9() { return Record(QLatin1Char('9'), {{2, QString(30, QLatin1Char('9'))}}); }

// Le righe unite da CR LF, come le scrive il programma.
inline QByteArray File(const QStringList& righe)
{
    QByteArray byte;
    for (const QString& r : righe)
        byte += r.toLatin1() + "\r\n";
    return byte;
}


// Una fornitura grande: domande x certificati x produttori.
inline QStringList FornituraGrande(int domande, int certificati, int produttori)
{
    QStringList righe{R0()};
    int n = 0;
    for (int d = 1; d <= domande; ++d) {
        righe << R1(QStringLiteral("%1").arg(d, 11, 10, QLatin1Char('0')));
        for (int c = 1; c <= certificati; ++c) {
            righe << R2(QStringLiteral("U%1").arg(d * 10000 + c, 8, 10, QLatin1Char('0')));
            for (int p = 1; p <= produttori; ++p, ++n)
                righe << R3(QStringLiteral("CF%1").arg(n, 14, 10, QLatin1Char('0')), QStringLiteral("PRODUTTORE %1").arg(n));
        }
    }
    return righe << R9();
}

}  // namespace ConferimentiProva
