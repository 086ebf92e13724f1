#include "common/testo.h"

#include "common/errore.h"
#include "common/log_errori.h"
#include "common/numeri.h"

#include <algorithm>
#include <new>

namespace {

void VerificaLarghezza(int larghezza)
{
    if (larghezza < 0)
        throw ErroreSistema(5, QStringLiteral("Chiamata di routine o argomento non validi"));
}

// Etichetta d'errore: la riga nel registro, poi la routine esce con quello che aveva.
template <typename Corpo>
void ConEtichetta(const QString& etichetta, Corpo&& corpo)
{
    try {
        corpo();
    } catch (const ErroreSistema& e) {
        ScriviLogErr(QString(), etichetta, e.numero(), e.descrizione());
    } catch (const std::bad_alloc&) {
        ScriviLogErr(QString(), etichetta, 7, QStringLiteral("Memoria esaurita"));
    }
}

}  // namespace

QString PadDestra(const QString& valore, int larghezza, QChar riempimento)
{
    VerificaLarghezza(larghezza);
    if (valore.size() >= larghezza)
        return valore.left(larghezza);
    return valore + QString(larghezza - valore.size(), riempimento);
}

QString PadSinistra(const QString& valore, int larghezza, QChar riempimento)
{
    VerificaLarghezza(larghezza);
    if (valore.size() >= larghezza)
        return valore.right(larghezza);
    return QString(larghezza - valore.size(), riempimento) + valore;
}

QString FormattaDecimali(const QString& valore, int decimali)
{
    if (valore.isEmpty() || Decimale(valore).zero())
        return QString();
    const qsizetype virgola = valore.indexOf(QLatin1Char(','));
    if (virgola < 0)
        return decimali == 0 ? QString() : valore + QString(decimali, QLatin1Char('0'));
    const QString intera = valore.left(virgola);
    const QString frazione = valore.mid(virgola + 1);
    if (decimali == 0 || frazione.size() == decimali)
        return intera + frazione;
    return intera + PadDestra(frazione, decimali, QLatin1Char('0'));
}

QString InserisciVirgola(const QString& valore, int decimali) { return InserisciVirgola(QStringView(valore), decimali); }

QString InserisciVirgola(QStringView valore, int decimali)
{
    VerificaLarghezza(decimali);
    const qsizetype resto = std::max<qsizetype>(valore.size() - decimali, 0);
    // Solo cifre e spazi, al più 15 cifre (il caso dei tracciati): il valore
    // è l'intero delle cifre, e Val seguito da CStr lo riscriverebbe tale e
    // quale. Un carico ne legge decine di migliaia.
    qint64 intero = 0;
    bool semplice = resto <= 15;
    for (qsizetype i = 0; semplice && i < resto; ++i) {
        const char16_t c = valore.at(i).unicode();
        if (c >= u'0' && c <= u'9')
            intero = intero * 10 + (c - u'0');
        else if (c != u' ')
            semplice = false;
    }
    QString risultato = semplice ? QString::number(intero) : CStr(Val(valore.left(resto).toString()));
    risultato.reserve(risultato.size() + 1 + valore.size() - resto);
    risultato += QLatin1Char(',');
    risultato += valore.mid(resto);
    return risultato;
}

QString FormattazioneData(const QString& valore, const QString& mascheraIngresso, const QString& mascheraUscita,
                          const QString& tipo)
{
    QString risultato;
    ConEtichetta(QStringLiteral("Tolmen_generale FormattazioneData"), [&] {
        if (!valore.trimmed().isEmpty()) {
            QString giorno, mese, anno;
            for (qsizetype i = 0; i < mascheraIngresso.size(); ++i) {
                const QChar c = mascheraIngresso[i].toUpper();
                const QString carattere = valore.mid(i, 1);
                if (c == QLatin1Char('G'))
                    giorno += carattere;
                else if (c == QLatin1Char('M'))
                    mese += carattere;
                else if (c == QLatin1Char('A'))
                    anno += carattere;
            }
            if (giorno.isEmpty())
                giorno = QStringLiteral("01");
            if (mese.isEmpty())
                mese = QStringLiteral("01");
            if (anno.isEmpty())
                anno = QStringLiteral("00");
            QString uscita = mascheraUscita.toUpper();
            uscita.replace(QLatin1Char('G'), QLatin1Char('D')).replace(QLatin1Char('A'), QLatin1Char('Y'));
            const QString data = giorno + QLatin1Char('/') + mese + QLatin1Char('/') + anno;
            if (IsDate(data)) {
                risultato = Format(CDate(data), uscita);
                return;
            }
        }
        const QChar riempimento = tipo == QLatin1String("D0") ? QLatin1Char('0') : QLatin1Char(' ');
        risultato = QString(mascheraUscita.size(), riempimento);
    });
    return risultato;
}

QString ApiceSql(const QString& testo)
{
    QString risultato = testo;
    ConEtichetta(QStringLiteral("Md_FunzioniGenerali ApiceSql"), [&] {
        QString t = testo;
        t.replace(QLatin1Char('\''), QStringLiteral("''"));
        t.replace(QLatin1Char('"'), QStringLiteral("\"\""));
        risultato = t;
    });
    return risultato;
}

QString SostituisciApici(const QString& testo)
{
    QString t = testo.trimmed();
    if (t.isEmpty())
        return QString();
    t.replace(QLatin1Char('\''), QChar(96));
    if (t.endsWith(QStringLiteral("``")))
        t.chop(1);
    return t;
}
