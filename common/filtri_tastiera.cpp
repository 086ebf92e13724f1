#include "common/filtri_tastiera.h"

#include "common/errore.h"
#include "common/log_errori.h"
#include "common/numeri.h"
#include "common/piattaforma.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPointer>
#include <QWidget>

namespace {

// Caratteri dei codici 128..159 di windows-1252 (0 dove la pagina non ne ha).
constexpr char16_t Pagina1252[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

constexpr int Backspace = 8;
constexpr int Invio = 13;

int g_consegne = 0;
QList<TastoSimulato> g_coda;

bool Cifra(int codice) { return codice >= '0' && codice <= '9'; }

void Rifiuta(int& KeyAscii)
{
    Beep();
    KeyAscii = 0;
}

QList<TastoSimulato> ScomponiTasti(const QString& tasti)
{
    QList<TastoSimulato> lista;
    for (qsizetype i = 0; i < tasti.size(); ++i) {
        if (tasti.mid(i, 5).compare(QLatin1String("{TAB}"), Qt::CaseInsensitive) == 0) {
            lista.append({Qt::Key_Tab, QStringLiteral("\t")});
            i += 4;
        } else if (tasti.mid(i, 7).compare(QLatin1String("{ENTER}"), Qt::CaseInsensitive) == 0) {
            lista.append({Qt::Key_Return, QStringLiteral("\r")});
            i += 6;
        } else {
            const QChar c = tasti.at(i);
            const char16_t u = c.toUpper().unicode();
            lista.append({u < 0x100 ? static_cast<Qt::Key>(u) : Qt::Key_unknown, QString(c)});
        }
    }
    return lista;
}

// Valore letto come Val, con la virgola già mutata in punto: segno, cifre,
// un punto, cifre; si ferma al primo altro carattere.
Decimale ValoreComeVal(const QString& testo)
{
    QString numero;
    qsizetype i = 0;
    while (i < testo.size() && testo.at(i).isSpace())
        ++i;
    if (i < testo.size() && (testo.at(i) == QLatin1Char('-') || testo.at(i) == QLatin1Char('+')))
        numero += testo.at(i++);
    bool punto = false;
    for (; i < testo.size(); ++i) {
        const QChar c = testo.at(i);
        if (c.isDigit() && c.unicode() < 0x80)
            numero += c;
        else if (c == QLatin1Char('.') && !punto) {
            punto = true;
            numero += QLatin1Char(',');
        } else
            break;
    }
    // "12." si legge 12, come farebbe Val.
    if (numero.endsWith(QLatin1Char(',')))
        numero.chop(1);
    if (numero.isEmpty() || numero == QLatin1String("-") || numero == QLatin1String("+"))
        return Decimale();
    return Decimale(numero);
}

}  // namespace

int CodiceCarattere(QChar carattere)
{
    const char16_t u = carattere.unicode();
    if (u < 0x80 || (u >= 0xA0 && u <= 0xFF))
        return u;
    for (int i = 0; i < 32; ++i)
        if (Pagina1252[i] == u)
            return 0x80 + i;
    return '?';
}

QChar CarattereCodice(int codice)
{
    if (codice >= 0x80 && codice < 0xA0)
        return QChar(Pagina1252[codice - 0x80]);
    return QChar(static_cast<char16_t>(codice & 0xFF));
}

int PosizioneCursore(const QLineEdit* campo)
{
    return campo->hasSelectedText() ? campo->selectionStart() : campo->cursorPosition();
}

ConsegnaTasto::ConsegnaTasto() { ++g_consegne; }

ConsegnaTasto::~ConsegnaTasto()
{
    if (--g_consegne == 0)
        g_coda.clear();
}

QList<TastoSimulato> ConsegnaTasto::PrendiCoda()
{
    QList<TastoSimulato> coda;
    coda.swap(g_coda);
    return coda;
}

void InviaTasti(const QString& tasti)
{
    const QList<TastoSimulato> lista = ScomponiTasti(tasti);
    if (g_consegne > 0) {
        g_coda.append(lista);
        return;
    }
    QWidget* destinatario = QApplication::focusWidget();
    if (!destinatario)
        return;
    for (const TastoSimulato& t : lista) {
        QCoreApplication::postEvent(destinatario, new QKeyEvent(QEvent::KeyPress, t.tasto, Qt::NoModifier, t.testo));
        QCoreApplication::postEvent(destinatario, new QKeyEvent(QEvent::KeyRelease, t.tasto, Qt::NoModifier, t.testo));
    }
}

void Keypress_Upper(int& KeyAscii)
{
    const int originale = KeyAscii;
    try {
        if (KeyAscii >= 0 && KeyAscii <= 31)
            return;
        if (KeyAscii == '*') {
            KeyAscii = 0;
            return;
        }
        if (KeyAscii >= 'a' && KeyAscii <= 'z') {
            KeyAscii -= 'a' - 'A';
            return;
        }
        // Le vocali accentate si scrivono in maiuscolo con l'apostrofo.
        char vocale = 0;
        switch (KeyAscii) {
        case 224: case 225: vocale = 'A'; break;
        case 232: case 233: vocale = 'E'; break;
        case 236: case 237: vocale = 'I'; break;
        case 242: case 243: vocale = 'O'; break;
        case 249: case 250: vocale = 'U'; break;
        default: return;
        }
        KeyAscii = vocale;
        InviaTasti(QStringLiteral("'"));
    } catch (const ErroreSistema& e) {
        KeyAscii = originale;
        ScriviLogErr(QStringLiteral("GE"), QStringLiteral("TOLMEN_GENERALE Keypress_Upper"), e.numero(), e.descrizione());
    }
}

void FiltroCaratteri(int& KeyAscii)
{
    const int k = KeyAscii;
    const bool tenuto = (k >= 0 && k <= 32) || k == '&' || k == '\'' || (k >= ',' && k <= '/') || Cifra(k) ||
                        (k >= 'A' && k <= 'Z') || (k >= 'a' && k <= 'z');
    if (!tenuto)
        KeyAscii = 0;
}

void Keypress_Integer(int& KeyAscii)
{
    const int originale = KeyAscii;
    try {
        if ((KeyAscii >= 0 && KeyAscii <= 31) || Cifra(KeyAscii) || KeyAscii == '.' || KeyAscii == ',')
            return;
        Rifiuta(KeyAscii);
    } catch (const ErroreSistema& e) {
        KeyAscii = originale;
        ScriviLogErr(QString(), QStringLiteral("Md_FunzioniGenerali Keypress_Integer"), e.numero(), e.descrizione());
    }
}

void Keypress_Decimale(QLineEdit* campo, int& KeyAscii, int decimali)
{
    if (!campo)
        return;
    const int originale = KeyAscii;
    try {
        const QString testo = campo->text();
        const int cursore = PosizioneCursore(campo);

        // Invio porta al campo successivo: solo in questi due filtri.
        if (KeyAscii == Invio) {
            KeyAscii = 0;
            InviaTasti(QStringLiteral("{TAB}"));
            return;
        }
        if (Cifra(KeyAscii) || (KeyAscii >= 0 && KeyAscii < 32 && KeyAscii != Backspace)) {
            const qsizetype virgola = testo.indexOf(QLatin1Char(','));
            if (virgola >= 0 && testo.size() - virgola - 1 >= decimali && cursore > virgola) {
                Rifiuta(KeyAscii);
                return;
            }
        } else if (KeyAscii == Backspace) {
            // passa
        } else if (KeyAscii == '.' || KeyAscii == ',') {
            KeyAscii = ',';
            if (testo.isEmpty() || testo.contains(QLatin1Char(','))) {
                Rifiuta(KeyAscii);
                return;
            }
        } else {
            Rifiuta(KeyAscii);
            return;
        }

        // Il testo come sarebbe dopo il tasto: il tasto non sostituisce la
        // selezione, il Backspace toglie il carattere a sinistra del cursore.
        QString formato;
        if (KeyAscii == Backspace)
            formato = cursore > 0 ? testo.left(cursore - 1) + testo.mid(cursore) : testo;
        else if (KeyAscii < 32)
            formato = testo;
        else
            formato = testo.left(cursore) + CarattereCodice(KeyAscii) + testo.mid(cursore);
        formato.replace(QLatin1Char(','), QLatin1Char('.'));

        const Decimale valore = ValoreComeVal(formato);
        // Massimo: tante cifre 9 quante la lunghezza del campo meno una.
        const int cifre = campo->maxLength() - 1;
        if (cifre < 28) {
            Decimale::Mantissa nove = 1;
            for (int i = 0; i < cifre; ++i)
                nove *= 10;
            Decimale::Mantissa scala = 1;
            for (int i = 0; i < decimali && i < 28; ++i)
                scala *= 10;
            bool eccede;
            try {
                eccede = valore * Decimale::daMantissa(scala, 0) > Decimale::daMantissa(nove - 1, 0);
            } catch (const ErroreSistema&) {
                eccede = true;  // oltre la capacità del Decimale: certamente troppo grande
            }
            if (eccede) {
                Rifiuta(KeyAscii);
                return;
            }
        }
        if (valore.zero() && formato == QLatin1String(".")) {
            campo->setText(QStringLiteral("0"));
            KeyAscii = 0;
        }
    } catch (const ErroreSistema& e) {
        KeyAscii = originale;
        MsgBox(e.descrizione());
    }
}

void Keypress_Decimale2(QLineEdit* campo, int& KeyAscii) { Keypress_Decimale(campo, KeyAscii, 2); }

void Keypress_Data(QLineEdit* campo, int& KeyAscii)
{
    if (!campo)
        return;
    const int originale = KeyAscii;
    try {
        const QString testo = campo->text();
        const int cursore = PosizioneCursore(campo);
        const auto car = [&](int i) { return i >= 0 && i < testo.size() ? testo.at(i).unicode() : char16_t(0); };
        const auto cifraIn = [&](int i) { return Cifra(car(i)); };
        const auto scrivi = [&](const QString& nuovo) {
            campo->setText(nuovo);
            campo->setCursorPosition(static_cast<int>(campo->text().size()));
            KeyAscii = 0;
        };

        if (KeyAscii >= 0 && KeyAscii < 32) {
            // La barra non si cancella.
            if (KeyAscii == Backspace && (cursore == 3 || cursore == 6))
                KeyAscii = 0;
            return;
        }
        if (KeyAscii == '/') {
            if (cursore != 2 && cursore != 5)
                Rifiuta(KeyAscii);
            return;
        }
        if (!Cifra(KeyAscii)) {
            Rifiuta(KeyAscii);
            return;
        }

        const QChar cifra(static_cast<char16_t>(KeyAscii));
        switch (cursore) {
        case 0:
            if (cifraIn(0) && cifraIn(1)) {
                Rifiuta(KeyAscii);  // il giorno ha già due cifre
            } else if (KeyAscii >= '4') {
                if (testo.isEmpty())
                    scrivi(QStringLiteral("0") + cifra + QLatin1Char('/'));
                else if (car(0) == u'/')
                    scrivi(QStringLiteral("0") + cifra + testo);
                else
                    Rifiuta(KeyAscii);
            } else if (KeyAscii == '3' && car(0) > u'1') {
                Rifiuta(KeyAscii);
            }
            break;
        case 1:
            if ((car(0) == u'3' && KeyAscii > '1') || (car(0) == u'0' && KeyAscii == '0'))
                Rifiuta(KeyAscii);
            else if (testo.size() == 1)
                scrivi(testo + cifra + QLatin1Char('/'));
            break;
        case 3:
            if (cifraIn(3) && cifraIn(4)) {
                Rifiuta(KeyAscii);  // il mese ha già due cifre
            } else if (KeyAscii > '1') {
                // "0", la cifra e la barra diventano il mese; il resto dopo la barra resta.
                const qsizetype barra = testo.indexOf(QLatin1Char('/'), 3);
                const QString resto = barra >= 0 ? testo.mid(barra + 1) : QString();
                scrivi(testo.left(3) + QLatin1Char('0') + cifra + QLatin1Char('/') + resto);
            }
            break;
        case 4:
            if ((car(3) == u'1' && KeyAscii > '2') || (car(3) == u'0' && KeyAscii == '0'))
                Rifiuta(KeyAscii);
            else if (testo.size() == 4)
                scrivi(testo + cifra + QLatin1Char('/'));
            break;
        case 2: case 5: case 6: case 7: case 8: case 9:
            break;
        default:
            Rifiuta(KeyAscii);  // oltre l'anno
            break;
        }
    } catch (const ErroreSistema& e) {
        KeyAscii = originale;
        ScriviLogErr(QString(), QStringLiteral("Md_FunzioniGenerali Keypress_Data"), e.numero(), e.descrizione());
    }
}
