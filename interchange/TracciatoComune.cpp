#include "interchange/TracciatoComune.h"

#include "common/errore.h"
#include "common/numeri.h"

#include <algorithm>
#include <iterator>

namespace TracciatoComune {

void RecordFuoriPosto(const QString& tipo)
{
    throw ErroreSistema(IndiceFuoriIntervallo,
                        QStringLiteral("Indice non compreso nell'intervallo (record di tipo %1 fuori posto)")
                            .arg(tipo));
}

namespace {

// La forma GG/MM/AAAA che le maschere scrivono, letta senza passare per le
// regole generali delle date (che guardano anche l'anno corrente).
QDate DataCanonica(const QString& t)
{
    if (t.size() != 10 || t.at(2) != QLatin1Char('/') || t.at(5) != QLatin1Char('/'))
        return QDate();
    int valori[3] = {0, 0, 0};
    const int inizio[3] = {0, 3, 6};
    const int lunghezza[3] = {2, 2, 4};
    for (int k = 0; k < 3; ++k)
        for (int i = inizio[k]; i < inizio[k] + lunghezza[k]; ++i) {
            const char16_t c = t.at(i).unicode();
            if (c < u'0' || c > u'9')
                return QDate();
            valori[k] = valori[k] * 10 + (c - u'0');
        }
    if (valori[2] < 1000)
        return QDate();
    return QDate(valori[2], valori[1], valori[0]);
}

}  // namespace

void AccodaCifra(QString& r, QStringView valore, qsizetype larghezza)
{
    const qsizetype cifre = valore.size() - valore.count(QLatin1Char(','));
    // Una cifra più larga perde la sua parte sinistra.
    qsizetype salta = cifre - larghezza;
    if (salta < 0)
        r.resize(r.size() - salta, QLatin1Char('0'));
    for (QChar c : valore)
        if (c != QLatin1Char(',') && salta-- <= 0)
            r.append(c);
}

QString FormatoData(const QString& testo, const QString& maschera)
{
    const QDate canonica = DataCanonica(testo);
    if (canonica.isValid()) {
        // Le due maschere dei tracciati, scritte dai pezzi del testo: è la
        // via di ogni riga di uno scarico.
        if (maschera == QLatin1String("DD/MM/YYYY"))
            return testo;
        if (maschera == QLatin1String("YYYYMMDD"))
            return testo.mid(6, 4) + testo.mid(3, 2) + testo.left(2);
        return Format(canonica, maschera);
    }
    if (!IsDate(testo))
        return testo;
    return Format(CDate(testo), maschera);
}

void AccodaData(QString& r, const QString& testo, const QString& maschera, qsizetype larghezza, QChar riempimento)
{
    const qsizetype inizio = r.size();
    const bool canonica = DataCanonica(testo).isValid();
    if (canonica && maschera == QLatin1String("YYYYMMDD")) {
        const QStringView t(testo);
        r.append(t.sliced(6, 4));
        r.append(t.sliced(3, 2));
        r.append(t.first(2));
    } else if (canonica && maschera == QLatin1String("DD/MM/YYYY")) {
        r.append(testo);
    } else {
        r.append(FormatoData(testo, maschera));
    }
    if (larghezza >= 0) {
        const qsizetype scritti = r.size() - inizio;
        if (scritti > larghezza)
            r.truncate(inizio + larghezza);
        else
            r.resize(inizio + larghezza, riempimento);
    }
}

namespace {

// Parte intera riscritta come numero semplice, la virgola, i decimali come stanno.
QString ImportoInParti(QStringView intera, QStringView parteDecimale, const QString& precedente)
{
    // Solo cifre e spazi, al più 15 cifre: il valore è l'intero delle cifre e
    // Val seguito da CStr lo riscriverebbe tale e quale. Altrimenti si passa
    // per le due routine.
    bool semplice = intera.size() <= 15;
    qint64 valore = 0;
    for (qsizetype i = 0; semplice && i < intera.size(); ++i) {
        const char16_t c = intera[i].unicode();
        if (c >= u'0' && c <= u'9')
            valore = valore * 10 + (c - u'0');
        else if (c != u' ')
            semplice = false;
    }
    if (!semplice) {
        QString risultato = CStr(Val(intera.toString()));
        risultato += QLatin1Char(',');
        risultato += parteDecimale;
        return risultato;
    }
    // Le cifre scritte a rovescio in un buffer, senza testi di passaggio: è
    // la via di ogni importo di ogni riga di una fornitura.
    char16_t testo[32];
    qsizetype n = 0;
    do {
        testo[n++] = char16_t(u'0' + valore % 10);
        valore /= 10;
    } while (valore > 0);
    std::reverse(testo, testo + n);
    testo[n++] = u',';
    // I decimali sono al più pochi: oltre il buffer si passa per un testo.
    if (n + parteDecimale.size() > qsizetype(std::size(testo))) {
        QString lungo = QStringView(testo, n).toString();
        lungo += parteDecimale;
        return lungo;
    }
    std::copy(parteDecimale.utf16(), parteDecimale.utf16() + parteDecimale.size(), testo + n);
    const QStringView risultato(testo, n + parteDecimale.size());
    return !precedente.isEmpty() && risultato == precedente ? precedente : risultato.toString();
}

}  // namespace

QString ImportoDiviso(const QString& riga, int inizio, int cifreIntere, int decimali, const QString& precedente)
{
    return ImportoInParti(MidVista(riga, inizio, cifreIntere), MidVista(riga, inizio + cifreIntere, decimali),
                          precedente);
}

QString ImportoConVirgola(QStringView valore, int decimali, const QString& precedente)
{
    const qsizetype resto = std::max<qsizetype>(valore.size() - decimali, 0);
    return ImportoInParti(valore.first(resto), valore.sliced(resto), precedente);
}

int AvanzaContatori(const QString& riga, qint32& domande, qint32& figli, qint32& nipoti)
{
    switch (riga.isEmpty() ? 0 : riga.at(0).unicode()) {
    case u'0':
        return 0;
    case u'1':
        ++domande;
        figli = 0;
        nipoti = 0;
        return 1;
    case u'2':
        ++figli;
        nipoti = 0;
        return 2;
    case u'3':
        ++nipoti;
        return 3;
    default:
        return -1;
    }
}

}  // namespace TracciatoComune
