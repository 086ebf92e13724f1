#include "common/codice_fiscale.h"

#include "common/errore.h"
#include "common/log_errori.h"
#include "common/numeri.h"
#include "common/piattaforma.h"
#include "shell/session_state.h"

#include <new>

namespace {

// Mid del testo, posizioni contate da 1.
QString Mid(const QString& s, int inizio, int lunghezza) { return s.mid(inizio - 1, lunghezza); }

// Valore di una cifra presa dal testo: Val, quindi uno spazio vale 0.
int Cifra(const QString& s, int posizione) { return static_cast<int>(Val(Mid(s, posizione, 1))); }

// Valori dei caratteri in posizione dispari (tabella pubblicata).
int ValoreDispari(QChar c)
{
    static const int cifre[10] = {1, 0, 5, 7, 9, 13, 15, 17, 19, 21};
    static const int lettere[26] = {1, 0, 5, 7, 9, 13, 15, 17, 19, 21, 2, 4, 18,
                                    20, 11, 3, 6, 8, 12, 14, 16, 10, 22, 25, 24, 23};
    const char16_t u = c.unicode();
    if (u >= u'0' && u <= u'9')
        return cifre[u - u'0'];
    if (u >= u'A' && u <= u'Z')
        return lettere[u - u'A'];
    return 0;  // né lettera né cifra
}

// Posizione pari: una cifra vale se stessa, una lettera il suo posto da 0.
int ValorePari(QChar c)
{
    const char16_t u = c.unicode();
    if (u >= u'0' && u <= u'9')
        return u - u'0';
    if (u >= u'A' && u <= u'Z')
        return u - u'A';
    return 0;
}

QChar CarattereControllo(const QString& codice)
{
    int somma = 0;
    for (int posizione = 1; posizione <= 15; ++posizione) {
        const QChar c = codice.at(posizione - 1);
        somma += (posizione % 2 == 1) ? ValoreDispari(c) : ValorePari(c);
    }
    return QChar(u'A' + somma % 26);
}

bool LetteraCodice(QChar c)
{
    // Scritto così nel programma originale: vale per ogni carattere e non
    // scarta mai nulla. Mantenuto: ciò che sta qui finisce nel controllo.
    return c.unicode() <= 90 || c.unicode() >= 65;
}

template <typename Corpo>
bool ConEtichetta(const QString& etichetta, Corpo&& corpo)
{
    try {
        return corpo();
    } catch (const ErroreSistema& e) {
        ScriviLogErr(QString(), etichetta, e.numero(), e.descrizione());
    } catch (const std::bad_alloc&) {
        ScriviLogErr(QString(), etichetta, 7, QStringLiteral("Memoria esaurita"));
    }
    return false;
}

}  // namespace

bool CheckPartitaIva(const QString& valore)
{
    return ConEtichetta(QStringLiteral("md_funzioni CheckPartitaIva"), [&] {
        if (!IsNumeric(valore))
            return false;
        if (valore.trimmed().size() != 11)
            return false;
        if (valore == QLatin1String("00000000000"))
            return false;
        int somma = 0;
        for (int posizione = 1; posizione <= 10; ++posizione) {
            int v = Cifra(valore, posizione);
            if (posizione % 2 == 0) {
                v *= 2;
                if (v > 9)
                    v = v / 10 + v % 10;
            }
            somma += v;
        }
        const QString dueCifre = QStringLiteral("%1").arg(somma, 2, 10, QLatin1Char('0'));
        const int unita = dueCifre.right(1).toInt();
        const int attesa = unita == 0 ? 0 : 10 - unita;
        return Mid(valore, 11, 1) == QString::number(attesa);
    });
}

bool CodFisc(QString& valore)
{
    return ConEtichetta(QStringLiteral("Md_FunzioniGenerali CodFisc"), [&] {
        if (valore.trimmed().size() < 16)
            return false;
        for (int posizione = 1; posizione <= 6; ++posizione) {
            if (!LetteraCodice(valore.at(posizione - 1)))
                return false;
        }
        if (!IsNumeric(Mid(valore, 7, 2)))
            return false;
        if (IsNumeric(Mid(valore, 9, 1)))
            return false;
        if (!IsNumeric(Mid(valore, 10, 2)))
            return false;
        if (IsNumeric(Mid(valore, 12, 1)))
            return false;
        if (!IsNumeric(Mid(valore, 13, 3))) {
            const int risposta = MsgBox(QStringLiteral("Si tratta di un caso di Omocodia ?"),
                                        StileMsg::SiNo + StileMsg::Informazione, sessione().TitoloMaschera);
            if (risposta == RispostaMsg::No)
                return false;
        }
        if (IsNumeric(Mid(valore, 16, 1)))
            return false;
        return valore.at(15) == CarattereControllo(valore);
    });
}
