#include "common/numeri.h"

#include "common/errore.h"

#include <QStringList>
#include <QVarLengthArray>
#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>
#include <string_view>

namespace {

__extension__ typedef unsigned __int128 u128;
__extension__ typedef __int128 i128;

constexpr int ScalaMassima = 28;
constexpr int CifreMassime = 28;

// Potenze di 10 fino a 10^38 (la più grande che sta in 128 bit senza segno).
struct TabellaPotenze {
    u128 v[39];
    constexpr TabellaPotenze() : v()
    {
        v[0] = 1;
        for (int i = 1; i < 39; ++i)
            v[i] = v[i - 1] * 10;
    }
};
constexpr TabellaPotenze Potenze;
constexpr u128 P10(int n) { return Potenze.v[n]; }
constexpr u128 Limite = Potenze.v[CifreMassime];  // 10^28: prima mantissa non ammessa

[[noreturn]] void ErroreOverflow() { throw ErroreSistema(CodiciErrore::Overflow, QStringLiteral("Overflow")); }
[[noreturn]] void ErroreTipo()
{
    throw ErroreSistema(CodiciErrore::TipoNonCorrispondente, QStringLiteral("Tipo non corrispondente"));
}
[[noreturn]] void ErroreArgomento()
{
    throw ErroreSistema(5, QStringLiteral("Chiamata di routine o argomento non validi"));
}

u128 Assoluto(i128 v) { return v < 0 ? static_cast<u128>(-v) : static_cast<u128>(v); }

int Cifre128(u128 v)
{
    int n = 0;
    while (n < 39 && v >= P10(n))
        ++n;
    return n;
}

// Intero senza segno a 256 bit, quanto basta per i prodotti e gli
// allineamenti di scala prima dell'arrotondamento.
struct U256 {
    std::uint64_t w[4] = {0, 0, 0, 0};

    static U256 Da(u128 v)
    {
        U256 r;
        r.w[0] = static_cast<std::uint64_t>(v);
        r.w[1] = static_cast<std::uint64_t>(v >> 64);
        return r;
    }
    bool sta128() const { return w[2] == 0 && w[3] == 0; }
    u128 a128() const { return (static_cast<u128>(w[1]) << 64) | w[0]; }
    bool zero() const { return (w[0] | w[1] | w[2] | w[3]) == 0; }

    void moltiplica(std::uint64_t m)
    {
        u128 riporto = 0;
        for (auto& parola : w) {
            const u128 p = static_cast<u128>(parola) * m + riporto;
            parola = static_cast<std::uint64_t>(p);
            riporto = p >> 64;
        }
    }
    // Divide per d e restituisce il resto.
    std::uint64_t dividi(std::uint64_t d)
    {
        u128 resto = 0;
        for (int i = 3; i >= 0; --i) {
            const u128 corrente = (resto << 64) | w[i];
            w[i] = static_cast<std::uint64_t>(corrente / d);
            resto = corrente % d;
        }
        return static_cast<std::uint64_t>(resto);
    }
    void somma(const U256& b)
    {
        u128 riporto = 0;
        for (int i = 0; i < 4; ++i) {
            const u128 s = static_cast<u128>(w[i]) + b.w[i] + riporto;
            w[i] = static_cast<std::uint64_t>(s);
            riporto = s >> 64;
        }
    }
    // Richiede *this >= b.
    void sottrai(const U256& b)
    {
        std::uint64_t prestito = 0;
        for (int i = 0; i < 4; ++i) {
            const std::uint64_t x = w[i];
            const std::uint64_t d = x - b.w[i] - prestito;
            prestito = (x < b.w[i] || (x == b.w[i] && prestito)) ? 1 : 0;
            w[i] = d;
        }
    }
    static int confronta(const U256& a, const U256& b)
    {
        for (int i = 3; i >= 0; --i) {
            if (a.w[i] != b.w[i])
                return a.w[i] < b.w[i] ? -1 : 1;
        }
        return 0;
    }
    int cifre() const
    {
        U256 c = *this;
        int n = 0;
        while (!c.sta128()) {
            c.dividi(10'000'000'000'000'000'000ULL);
            n += 19;
        }
        return n + Cifre128(c.a128());
    }
    static U256 prodotto(u128 a, u128 b)
    {
        const std::uint64_t x[2] = {static_cast<std::uint64_t>(a), static_cast<std::uint64_t>(a >> 64)};
        const std::uint64_t y[2] = {static_cast<std::uint64_t>(b), static_cast<std::uint64_t>(b >> 64)};
        U256 r;
        for (int i = 0; i < 2; ++i) {
            u128 riporto = 0;
            for (int j = 0; j < 2; ++j) {
                const u128 p = static_cast<u128>(x[i]) * y[j] + r.w[i + j] + riporto;
                r.w[i + j] = static_cast<std::uint64_t>(p);
                riporto = p >> 64;
            }
            r.w[i + 2] = static_cast<std::uint64_t>(riporto);
        }
        return r;
    }
    void moltiplicaPotenza(int n)
    {
        while (n > 0) {
            const int passo = std::min(n, 19);
            moltiplica(static_cast<std::uint64_t>(P10(passo)));
            n -= passo;
        }
    }
};

// Porta un modulo a 256 bit con la sua scala dentro i limiti di Decimale:
// al più 28 cifre e scala 0..28, togliendo le cifre decimali in eccesso con
// l'arrotondamento al pari. "resto" dice se oltre le cifre date c'era ancora
// qualcosa di non nullo (serve alla divisione).
Decimale Normalizza(bool negativo, U256 modulo, int scala, bool resto)
{
    if (modulo.zero() && !resto)
        return Decimale();
    if (scala < 0) {
        if (modulo.zero())
            return Decimale();
        if (modulo.cifre() - scala > CifreMassime)
            ErroreOverflow();
        modulo.moltiplicaPotenza(-scala);
        scala = 0;
    }
    const int cifre = modulo.cifre();
    const int togli = std::max({cifre - CifreMassime, scala - ScalaMassima, 0});
    if (togli > 0) {
        if (togli > scala)
            ErroreOverflow();
        if (togli > cifre)
            return Decimale();  // tutto sotto la metà dell'ultima cifra tenuta
        int k = togli - 1;
        while (k > 0) {
            const int passo = std::min(k, 19);
            if (modulo.dividi(static_cast<std::uint64_t>(P10(passo))) != 0)
                resto = true;
            k -= passo;
        }
        const std::uint64_t ultima = modulo.dividi(10);
        scala -= togli;
        const bool dispari = (modulo.w[0] & 1) != 0;
        if (ultima > 5 || (ultima == 5 && (resto || dispari)))
            modulo.somma(U256::Da(1));
        if (!modulo.sta128() || modulo.a128() >= Limite) {
            // il riporto ha dato 10^28
            if (scala == 0)
                ErroreOverflow();
            modulo.dividi(10);
            --scala;
        }
    }
    const i128 m = static_cast<i128>(modulo.a128());
    return Decimale::daMantissa(negativo ? -m : m, scala);
}

// Toglie "togli" cifre da un modulo: al pari oppure a metà lontano da zero.
u128 Riduci(u128 modulo, int togli, bool alPari)
{
    if (togli <= 0)
        return modulo;
    if (togli > 38)
        return 0;
    const u128 q = modulo / P10(togli);
    const u128 r = modulo % P10(togli);
    const u128 meta = 5 * P10(togli - 1);
    if (r > meta || (r == meta && (!alPari || (q & 1))))
        return q + 1;
    return q;
}

QString CifreDi(u128 v)
{
    if (v == 0)
        return QStringLiteral("0");
    char buf[48];
    int n = 0;
    while (v > 0) {
        buf[n++] = static_cast<char>('0' + static_cast<int>(v % 10));
        v /= 10;
    }
    QString s;
    s.reserve(n);
    while (n > 0)
        s.append(QLatin1Char(buf[--n]));
    return s;
}

// ---------------------------------------------------------------------------
// Lettura dei testi numerici.

struct NumeroLetto {
    bool negativo = false;
    std::string cifre;  // cifre significative (senza zeri in testa)
    long esponente = 0; // valore = cifre * 10^esponente
    bool intero = false;  // forma &H / &O: valore già calcolato
    double valoreIntero = 0;
};

bool Spazio(QChar c) { return c == QLatin1Char(' ') || c == QLatin1Char('\t'); }

QStringView Ritaglia(QStringView s)
{
    qsizetype i = 0, j = s.size();
    while (i < j && Spazio(s[i]))
        ++i;
    while (j > i && Spazio(s[j - 1]))
        --j;
    return s.mid(i, j - i);
}

int ValoreCifraBase(QChar c, int base)
{
    const char16_t u = c.unicode();
    int v = -1;
    if (u >= u'0' && u <= u'9')
        v = u - u'0';
    else if (u >= u'a' && u <= u'f')
        v = u - u'a' + 10;
    else if (u >= u'A' && u <= u'F')
        v = u - u'A' + 10;
    return v < base ? v : -1;
}

// Valore di un letterale &H/&O come lo dava il motore: fino a 16 bit è un
// intero con segno a 16 bit, poi a 32 bit. Restituisce false se è troppo lungo.
bool ValoreEsadecimale(quint64 valore, bool& ok, double& risultato)
{
    ok = true;
    if (valore <= 0xFFFFu)
        risultato = static_cast<qint16>(static_cast<quint16>(valore));
    else if (valore <= 0xFFFFFFFFu)
        risultato = static_cast<qint32>(static_cast<quint32>(valore));
    else
        ok = false;
    return ok;
}

// Legge "&H..." o "&O..." dall'inizio; consumati i caratteri letti.
bool LeggiLetterale(QStringView s, qsizetype& pos, double& risultato, bool& troppoGrande)
{
    troppoGrande = false;
    if (pos + 1 >= s.size() || s[pos] != QLatin1Char('&'))
        return false;
    const QChar tipo = s[pos + 1].toUpper();
    const int base = tipo == QLatin1Char('H') ? 16 : (tipo == QLatin1Char('O') ? 8 : 0);
    if (base == 0)
        return false;
    qsizetype i = pos + 2;
    quint64 valore = 0;
    int n = 0;
    while (i < s.size()) {
        const int v = ValoreCifraBase(s[i], base);
        if (v < 0)
            break;
        if (valore > (0xFFFFFFFFFFull))
            troppoGrande = true;
        else
            valore = valore * static_cast<quint64>(base) + static_cast<quint64>(v);
        ++n;
        ++i;
    }
    if (n == 0)
        return false;
    pos = i;
    bool ok = false;
    if (!troppoGrande)
        ValoreEsadecimale(valore, ok, risultato);
    troppoGrande = troppoGrande || !ok;
    return true;
}

// Forma italiana (CDbl, IsNumeric). Vedi numeri.h.
enum class Esito { Numero, NonNumero, Overflow };

// Con zeroDavanti il testo si legge come se avesse uno "0" davanti (dopo
// l'eventuale segno): vuoto e ",5" sono numeri, parentesi e &H no.
Esito LeggiNumero(QStringView testo, NumeroLetto& n, bool zeroDavanti = false)
{
    QStringView s = Ritaglia(testo);
    if (s.isEmpty())
        return zeroDavanti ? Esito::Numero : Esito::NonNumero;
    bool parentesi = false;
    if (s.front() == QLatin1Char('(')) {
        if (zeroDavanti)
            return Esito::NonNumero;
        if (s.back() != QLatin1Char(')'))
            return Esito::NonNumero;
        parentesi = true;
        s = s.mid(1, s.size() - 2);
        n.negativo = true;
    }
    qsizetype i = 0;
    bool segno = false;
    if (i < s.size() && (s[i] == QLatin1Char('+') || s[i] == QLatin1Char('-'))) {
        if (parentesi)
            return Esito::NonNumero;
        n.negativo = s[i] == QLatin1Char('-');
        segno = true;
        ++i;
    }
    if (i < s.size() && s[i] == QLatin1Char('&') && !zeroDavanti) {
        bool troppoGrande = false;
        double v = 0;
        if (!LeggiLetterale(s, i, v, troppoGrande) || i != s.size())
            return Esito::NonNumero;
        if (troppoGrande)
            return Esito::Overflow;
        n.intero = true;
        n.valoreIntero = n.negativo ? -v : v;
        return Esito::Numero;
    }
    int cifreViste = zeroDavanti ? 1 : 0;
    long decimali = 0;
    auto aggiungi = [&](QChar c) {
        ++cifreViste;
        if (n.cifre.empty() && c == QLatin1Char('0'))
            return;  // zeri in testa
        n.cifre.push_back(static_cast<char>(c.unicode()));
    };
    while (i < s.size()) {
        const QChar c = s[i];
        if (c.unicode() >= u'0' && c.unicode() <= u'9') {
            aggiungi(c);
        } else if (c == QLatin1Char('.') && cifreViste > 0) {
            // separatore delle migliaia: ignorato
        } else {
            break;
        }
        ++i;
    }
    if (i < s.size() && s[i] == QLatin1Char(',')) {
        ++i;
        while (i < s.size() && s[i].unicode() >= u'0' && s[i].unicode() <= u'9') {
            aggiungi(s[i]);
            ++decimali;
            ++i;
        }
    }
    if (cifreViste == 0)
        return Esito::NonNumero;
    long esponente = 0;
    if (i < s.size()) {
        const char16_t e = s[i].toUpper().unicode();
        if (e == u'E' || e == u'D') {
            ++i;
            bool negEsp = false;
            if (i < s.size() && (s[i] == QLatin1Char('+') || s[i] == QLatin1Char('-'))) {
                negEsp = s[i] == QLatin1Char('-');
                ++i;
            }
            int cifreEsp = 0;
            while (i < s.size() && s[i].unicode() >= u'0' && s[i].unicode() <= u'9') {
                if (esponente < 100000)
                    esponente = esponente * 10 + (s[i].unicode() - u'0');
                ++cifreEsp;
                ++i;
            }
            if (cifreEsp == 0)
                return Esito::NonNumero;
            if (negEsp)
                esponente = -esponente;
        }
    }
    if (i < s.size() && !segno && !parentesi && (s[i] == QLatin1Char('+') || s[i] == QLatin1Char('-'))) {
        n.negativo = s[i] == QLatin1Char('-');
        ++i;
    }
    if (i != s.size())
        return Esito::NonNumero;
    n.esponente = esponente - decimali;
    // zeri in coda: nell'esponente
    while (!n.cifre.empty() && n.cifre.back() == '0') {
        n.cifre.pop_back();
        ++n.esponente;
    }
    if (n.cifre.empty())
        n.esponente = 0;
    return Esito::Numero;
}

double ComeDouble(const std::string& cifre, long esponente, bool negativo)
{
    if (cifre.empty())
        return 0.0;
    std::string t = cifre;
    t += 'e';
    t += std::to_string(esponente);
    double v = 0;
    const auto r = std::from_chars(t.data(), t.data() + t.size(), v);
    if (r.ec == std::errc::result_out_of_range) {
        // sotto il minimo: zero; sopra il massimo: overflow
        if (esponente + static_cast<long>(cifre.size()) > 0)
            ErroreOverflow();
        v = 0.0;
    }
    if (!std::isfinite(v))
        ErroreOverflow();
    return negativo ? -v : v;
}

Decimale DaCifre(const std::string& cifre, long esponente, bool negativo)
{
    if (cifre.empty())
        return Decimale();
    // al più 29 cifre nel modulo (una in più per l'arrotondamento)
    const std::size_t tieni = std::min<std::size_t>(cifre.size(), 29);
    bool resto = false;
    for (std::size_t k = tieni; k < cifre.size(); ++k)
        resto = resto || cifre[k] != '0';
    u128 modulo = 0;
    for (std::size_t k = 0; k < tieni; ++k)
        modulo = modulo * 10 + static_cast<u128>(cifre[k] - '0');
    long esp = esponente + static_cast<long>(cifre.size() - tieni);
    if (esp > 100)
        ErroreOverflow();
    if (esp < -200)
        return Decimale();
    return Normalizza(negativo, U256::Da(modulo), static_cast<int>(-esp), resto);
}

// Cifre significative e esponente decimale di un double con "cifre" cifre.
void CifreDouble(double v, int cifre, std::string& mantissa, int& esponente)
{
    char buf[64];
    const auto r = std::to_chars(buf, buf + sizeof buf, std::fabs(v), std::chars_format::scientific, cifre - 1);
    const std::string_view s(buf, static_cast<std::size_t>(r.ptr - buf));
    const auto e = s.find('e');
    mantissa.clear();
    for (std::size_t k = 0; k < e; ++k) {
        if (s[k] >= '0' && s[k] <= '9')
            mantissa.push_back(s[k]);
    }
    esponente = 0;
    std::from_chars(s.data() + e + (s[e + 1] == '+' ? 2 : 1), s.data() + s.size(), esponente);
}

Decimale DaBinario(double v, int cifre)
{
    if (!std::isfinite(v))
        ErroreOverflow();
    if (v == 0.0)
        return Decimale();
    std::string m;
    int esp = 0;
    CifreDouble(v, cifre, m, esp);
    return DaCifre(m, esp - (cifre - 1), v < 0);
}

}  // namespace

// ---------------------------------------------------------------------------
// Decimale

Decimale Decimale::daMantissa(Mantissa mantissa, int scala)
{
    if (scala < 0 || scala > ScalaMassima)
        ErroreArgomento();
    if (Assoluto(mantissa) >= Limite)
        ErroreOverflow();
    Decimale d;
    d.m_mantissa = mantissa;
    d.m_scala = mantissa == 0 ? 0 : scala;
    return d;
}

Decimale::Decimale(const QString& testo)
{
    NumeroLetto n;
    if (LeggiNumero(testo, n, true) != Esito::Numero)
        ErroreTipo();
    *this = DaCifre(n.cifre, n.esponente, n.negativo);
}

Decimale Decimale::daDouble(double valore) { return DaBinario(valore, 15); }

Decimale Decimale::daSingle(float valore) { return DaBinario(static_cast<double>(valore), 7); }

Decimale Decimale::operator-() const
{
    Decimale d = *this;
    d.m_mantissa = -d.m_mantissa;
    return d;
}

Decimale operator+(const Decimale& a, const Decimale& b)
{
    const int scala = std::max(a.m_scala, b.m_scala);
    i128 x = a.m_mantissa, y = b.m_mantissa, s = 0;
    const bool allineati = !__builtin_mul_overflow(x, static_cast<i128>(P10(scala - a.m_scala)), &x) &&
                           !__builtin_mul_overflow(y, static_cast<i128>(P10(scala - b.m_scala)), &y);
    if (allineati && !__builtin_add_overflow(x, y, &s) && Assoluto(s) < Limite)
        return Decimale::daMantissa(s, scala);

    U256 ma = U256::prodotto(Assoluto(a.m_mantissa), P10(scala - a.m_scala));
    U256 mb = U256::prodotto(Assoluto(b.m_mantissa), P10(scala - b.m_scala));
    const bool na = a.m_mantissa < 0, nb = b.m_mantissa < 0;
    if (na == nb) {
        ma.somma(mb);
        return Normalizza(na, ma, scala, false);
    }
    if (U256::confronta(ma, mb) >= 0) {
        ma.sottrai(mb);
        return Normalizza(na, ma, scala, false);
    }
    mb.sottrai(ma);
    return Normalizza(nb, mb, scala, false);
}

Decimale operator-(const Decimale& a, const Decimale& b) { return a + (-b); }

Decimale operator*(const Decimale& a, const Decimale& b)
{
    const int scala = a.m_scala + b.m_scala;
    i128 p = 0;
    if (scala <= ScalaMassima && !__builtin_mul_overflow(a.m_mantissa, b.m_mantissa, &p) && Assoluto(p) < Limite)
        return Decimale::daMantissa(p, scala);
    const bool negativo = (a.m_mantissa < 0) != (b.m_mantissa < 0);
    return Normalizza(negativo, U256::prodotto(Assoluto(a.m_mantissa), Assoluto(b.m_mantissa)), scala, false);
}

Decimale operator/(const Decimale& a, const Decimale& b)
{
    if (b.m_mantissa == 0)
        throw ErroreSistema(CodiciErrore::DivisionePerZero, QStringLiteral("Divisione per zero"));
    if (a.m_mantissa == 0)
        return Decimale();
    const bool negativo = (a.m_mantissa < 0) != (b.m_mantissa < 0);
    const u128 divisore = Assoluto(b.m_mantissa);
    u128 r = Assoluto(a.m_mantissa);
    u128 q = r / divisore;
    r %= divisore;
    int scala = a.m_scala - b.m_scala;
    int cifre = Cifre128(q);
    // Cifre decimali a gruppi di nove finché si hanno 29 cifre significative
    // (una per l'arrotondamento) o la scala passa 28.
    while (r != 0 && cifre <= CifreMassime && scala <= ScalaMassima) {
        const int k = std::min({9, CifreMassime + 1 - cifre, ScalaMassima + 1 - scala});
        r *= P10(k);
        q = q * P10(k) + r / divisore;
        r %= divisore;
        scala += k;
        cifre = Cifre128(q);
    }
    return Normalizza(negativo, U256::Da(q), scala, r != 0);
}

int Decimale::Confronta(const Decimale& a, const Decimale& b)
{
    const bool na = a.m_mantissa < 0, nb = b.m_mantissa < 0;
    if (na != nb)
        return na ? -1 : 1;
    if (a.m_scala == b.m_scala)
        return a.m_mantissa < b.m_mantissa ? -1 : (a.m_mantissa > b.m_mantissa ? 1 : 0);
    // stesso segno: si confrontano i moduli allineati
    const int scala = std::max(a.m_scala, b.m_scala);
    const U256 ma = U256::prodotto(Assoluto(a.m_mantissa), P10(scala - a.m_scala));
    const U256 mb = U256::prodotto(Assoluto(b.m_mantissa), P10(scala - b.m_scala));
    const int c = U256::confronta(ma, mb);
    return na ? -c : c;
}

QString Decimale::testo() const
{
    if (m_mantissa == 0)
        return QStringLiteral("0");
    u128 modulo = Assoluto(m_mantissa);
    int scala = m_scala;
    while (scala > 0 && modulo % 10 == 0) {
        modulo /= 10;
        --scala;
    }
    // dalla fine: decimali, virgola, parte intera (almeno "0"), segno
    char buf[64];
    int pos = sizeof buf;
    for (int k = 0; k < scala; ++k) {
        buf[--pos] = static_cast<char>('0' + static_cast<int>(modulo % 10));
        modulo /= 10;
    }
    if (scala > 0)
        buf[--pos] = ',';
    do {
        buf[--pos] = static_cast<char>('0' + static_cast<int>(modulo % 10));
        modulo /= 10;
    } while (modulo > 0);
    if (m_mantissa < 0)
        buf[--pos] = '-';
    return QString::fromLatin1(buf + pos, static_cast<qsizetype>(sizeof buf) - pos);
}

double Decimale::aDouble() const
{
    if (m_mantissa == 0)
        return 0.0;
    return ComeDouble(CifreDi(Assoluto(m_mantissa)).toStdString(), -m_scala, m_mantissa < 0);
}

Decimale Round(const Decimale& valore, int decimali)
{
    if (decimali < 0)
        ErroreArgomento();
    if (decimali >= valore.scala())
        return valore;
    const u128 modulo = Riduci(Assoluto(valore.mantissa()), valore.scala() - decimali, true);
    const i128 m = static_cast<i128>(modulo);
    return Decimale::daMantissa(valore.negativo() ? -m : m, decimali);
}

// ---------------------------------------------------------------------------
// Format

namespace {

// Maschera numerica già scomposta.
struct MascheraNumerica {
    QString prefisso, suffisso;
    int decimali = 0;            // cifre dopo il punto, "0" e "#"
    int decimaliObbligatori = 0; // fino all'ultimo "0" dopo il punto
    int interiObbligatori = 0;   // "0" prima del punto
    bool punto = false;
    bool migliaia = false;
};

MascheraNumerica Scomponi(const QString& maschera)
{
    auto segnaposto = [](QChar c) {
        return c == QLatin1Char('0') || c == QLatin1Char('#') || c == QLatin1Char('.') || c == QLatin1Char(',');
    };
    MascheraNumerica m;
    qsizetype inizio = 0;
    while (inizio < maschera.size() && !segnaposto(maschera[inizio]))
        ++inizio;
    qsizetype fine = inizio;
    while (fine < maschera.size() && segnaposto(maschera[fine]))
        ++fine;
    m.prefisso = maschera.left(inizio);
    m.suffisso = maschera.mid(fine);
    for (qsizetype i = inizio; i < fine; ++i) {
        const QChar c = maschera[i];
        if (c == QLatin1Char('.')) {
            m.punto = true;
        } else if (!m.punto) {
            if (c == QLatin1Char('0'))
                ++m.interiObbligatori;
            else if (c == QLatin1Char(','))
                m.migliaia = true;
        } else if (c == QLatin1Char('0') || c == QLatin1Char('#')) {
            ++m.decimali;
            if (c == QLatin1Char('0'))
                m.decimaliObbligatori = m.decimali;
        }
    }
    return m;
}

}  // namespace

QString Format(const Decimale& valore, const QString& maschera)
{
    if (maschera.isEmpty())
        return valore.testo();
    // Le maschere del programma sono poche: si tiene l'ultima scomposta.
    thread_local QString ultimaMaschera;
    thread_local MascheraNumerica m;
    if (maschera != ultimaMaschera) {
        m = Scomponi(maschera);
        ultimaMaschera = maschera;
    }

    // arrotondamento a metà lontano da zero
    u128 modulo = Assoluto(valore.mantissa());
    int scala = valore.scala();
    if (scala > m.decimali) {
        modulo = Riduci(modulo, scala - m.decimali, false);
        scala = m.decimali;
    }
    // cifre del modulo, dalla meno significativa, completate con gli zeri
    // dei decimali mancanti
    QVarLengthArray<char, 80> cifre;
    for (int k = scala; k < m.decimali; ++k)
        cifre.append('0');
    while (modulo > 0) {
        cifre.append(static_cast<char>('0' + static_cast<int>(modulo % 10)));
        modulo /= 10;
    }
    while (cifre.size() < m.decimali + m.interiObbligatori)
        cifre.append('0');
    const int n = static_cast<int>(cifre.size());
    // decimali: si tolgono gli zeri finali oltre quelli obbligatori
    int decimali = m.decimali;
    int salta = 0;
    while (decimali > m.decimaliObbligatori && cifre[salta] == '0') {
        ++salta;
        --decimali;
    }
    const int interi = n - m.decimali;

    QString r;
    r.reserve(m.prefisso.size() + m.suffisso.size() + n + n / 3 + 3);
    if (valore.negativo())
        r += QLatin1Char('-');
    r += m.prefisso;
    for (int k = 0; k < interi; ++k) {
        if (m.migliaia && k > 0 && (interi - k) % 3 == 0)
            r += QLatin1Char('.');
        r += QLatin1Char(cifre[n - 1 - k]);
    }
    if (m.punto && (decimali > 0 || m.decimali == 0))
        r += QLatin1Char(',');
    for (int k = 0; k < decimali; ++k)
        r += QLatin1Char(cifre[m.decimali - 1 - k]);
    r += m.suffisso;
    return r;
}

QString Format(const QDate& data, const QString& maschera)
{
    if (!data.isValid())
        return QString();
    QString r;
    const QString m = maschera.toUpper();
    qsizetype i = 0;
    auto ripetizioni = [&](QChar c) {
        qsizetype n = 0;
        while (i + n < m.size() && m[i + n] == c)
            ++n;
        return n;
    };
    while (i < m.size()) {
        const QChar c = m[i];
        if (c == QLatin1Char('D') || c == QLatin1Char('M')) {
            const qsizetype n = ripetizioni(c);
            const int v = c == QLatin1Char('D') ? data.day() : data.month();
            r += n >= 2 ? QStringLiteral("%1").arg(v, 2, 10, QLatin1Char('0')) : QString::number(v);
            i += n;
        } else if (c == QLatin1Char('Y')) {
            const qsizetype n = ripetizioni(c);
            if (n >= 3)
                r += QStringLiteral("%1").arg(data.year(), 4, 10, QLatin1Char('0'));
            else
                r += QStringLiteral("%1").arg(data.year() % 100, 2, 10, QLatin1Char('0'));
            i += n;
        } else {
            r += c;
            ++i;
        }
    }
    return r;
}

QString FormatTesto(const QString& testo, const QString& maschera)
{
    if (!IsNumeric(testo))
        return testo;
    try {
        return Format(Decimale(testo), maschera);
    } catch (const ErroreSistema&) {
        // Forme accettate dal runtime ma non dalla lettura esatta (segno,
        // separatore delle migliaia): si passa dalla doppia precisione.
        return Format(Decimale::daDouble(CDbl(testo)), maschera);
    }
}

// ---------------------------------------------------------------------------
// Conversioni dal testo

bool IsNumeric(const QString& testo)
{
    NumeroLetto n;
    return LeggiNumero(testo, n) != Esito::NonNumero;
}

double CDbl(const QString& testo)
{
    NumeroLetto n;
    switch (LeggiNumero(testo, n)) {
    case Esito::NonNumero: ErroreTipo();
    case Esito::Overflow: ErroreOverflow();
    case Esito::Numero: break;
    }
    if (n.intero)
        return n.valoreIntero;
    return ComeDouble(n.cifre, n.esponente, n.negativo);
}

double Val(const QString& testo)
{
    // Spazi, tabulazioni e ritorni a capo non contano, ovunque siano.
    QString s;
    s.reserve(testo.size());
    for (QChar c : testo) {
        if (c != QLatin1Char(' ') && c != QLatin1Char('\t') && c != QLatin1Char('\n') && c != QLatin1Char('\r'))
            s.append(c);
    }
    qsizetype i = 0;
    if (i < s.size() && s[i] == QLatin1Char('&')) {
        double v = 0;
        bool troppoGrande = false;
        if (!LeggiLetterale(s, i, v, troppoGrande))
            return 0.0;
        if (troppoGrande)
            ErroreOverflow();
        return v;
    }
    bool negativo = false;
    if (i < s.size() && (s[i] == QLatin1Char('+') || s[i] == QLatin1Char('-'))) {
        negativo = s[i] == QLatin1Char('-');
        ++i;
    }
    std::string cifre;
    long decimali = 0;
    bool viste = false;
    auto cifra = [&](qsizetype k) { return k < s.size() && s[k].unicode() >= u'0' && s[k].unicode() <= u'9'; };
    while (cifra(i)) {
        viste = true;
        if (!cifre.empty() || s[i] != QLatin1Char('0'))
            cifre.push_back(static_cast<char>(s[i].unicode()));
        ++i;
    }
    if (i < s.size() && s[i] == QLatin1Char('.')) {
        ++i;
        while (cifra(i)) {
            viste = true;
            cifre.push_back(static_cast<char>(s[i].unicode()));
            ++decimali;
            ++i;
        }
    }
    if (!viste)
        return 0.0;
    long esponente = 0;
    if (i < s.size()) {
        const char16_t e = s[i].toUpper().unicode();
        qsizetype j = i + 1;
        bool negEsp = false;
        if (e == u'E' || e == u'D') {
            if (j < s.size() && (s[j] == QLatin1Char('+') || s[j] == QLatin1Char('-'))) {
                negEsp = s[j] == QLatin1Char('-');
                ++j;
            }
            while (cifra(j)) {
                if (esponente < 100000)
                    esponente = esponente * 10 + (s[j].unicode() - u'0');
                ++j;
            }
            if (negEsp)
                esponente = -esponente;
        }
    }
    // zeri in testa della parte decimale
    std::size_t k = 0;
    while (k < cifre.size() && cifre[k] == '0')
        ++k;
    cifre.erase(0, k);
    return ComeDouble(cifre, esponente - decimali, negativo);
}

QString CStr(double valore)
{
    if (!std::isfinite(valore))
        ErroreOverflow();
    if (valore == 0.0)
        return QStringLiteral("0");
    std::string m;
    int esp = 0;
    CifreDouble(valore, 15, m, esp);
    while (m.size() > 1 && m.back() == '0')
        m.pop_back();
    QString r = valore < 0 ? QStringLiteral("-") : QString();
    if (esp >= 15 || esp < -5) {
        r += QLatin1Char(m[0]);
        if (m.size() > 1)
            r += QLatin1Char(',') + QString::fromLatin1(m.data() + 1, static_cast<qsizetype>(m.size() - 1));
        r += QStringLiteral("E%1%2").arg(esp < 0 ? QLatin1Char('-') : QLatin1Char('+')).arg(std::abs(esp), 2, 10, QLatin1Char('0'));
        return r;
    }
    r += DaCifre(m, esp - static_cast<long>(m.size()) + 1, false).testo();
    return r;
}

// ---------------------------------------------------------------------------
// Date

namespace {

int MeseInLettere(const QString& parola)
{
    static const char* const mesi[] = {"gennaio", "febbraio", "marzo",     "aprile",  "maggio",   "giugno",
                                       "luglio",  "agosto",   "settembre", "ottobre", "novembre", "dicembre"};
    const QString p = parola.toLower();
    for (int i = 0; i < 12; ++i) {
        const QString nome = QString::fromLatin1(mesi[i]);
        if (p == nome || (p.size() == 3 && nome.startsWith(p)))
            return i + 1;
    }
    return 0;
}

int EspandiAnno(const QString& cifre)
{
    const int v = cifre.toInt();
    if (cifre.size() <= 2)
        return v < 30 ? 2000 + v : 1900 + v;
    return v;
}

QDate Componi(int anno, int mese, int giorno)
{
    if (anno < 100 || anno > 9999)
        return QDate();
    return QDate(anno, mese, giorno);  // non valida se i numeri non formano una data
}

QDate LeggiData(const QString& testo)
{
    QStringList parti;
    QString corrente;
    bool lettere = false;
    // Ultimo separatore visto dopo una parte: uno spazio può stare accanto a
    // un altro separatore, due separatori veri di fila no.
    QChar separatore;
    for (QChar c : testo.trimmed()) {
        if (c == QLatin1Char('/') || c == QLatin1Char('-') || c == QLatin1Char('.') || Spazio(c)) {
            if (!corrente.isEmpty()) {
                parti.append(corrente);
                corrente.clear();
                separatore = c;
            } else if (!Spazio(c)) {
                if (parti.isEmpty() || !Spazio(separatore))
                    return QDate();
                separatore = c;
            }
            continue;
        }
        const bool cifra = c.unicode() >= u'0' && c.unicode() <= u'9';
        if (!cifra && !c.isLetter())
            return QDate();
        if (!corrente.isEmpty() && cifra == lettere)
            return QDate();  // cifre e lettere mescolate
        lettere = !cifra;
        corrente.append(c);
    }
    if (corrente.isEmpty())
        return QDate();
    parti.append(corrente);
    if (parti.size() < 2 || parti.size() > 3)
        return QDate();

    int posMese = -1;
    QList<QString> numeri;
    for (int i = 0; i < parti.size(); ++i) {
        if (parti[i][0].isLetter()) {
            if (posMese >= 0)
                return QDate();
            posMese = i;
        } else {
            if (parti[i].size() > 4)
                return QDate();
            numeri.append(parti[i]);
        }
    }
    // L'anno corrente serve solo alle forme senza anno; leggerlo costa (fuso orario).
    auto annoCorrente = [] { return QDate::currentDate().year(); };
    if (posMese >= 0) {
        const int mese = MeseInLettere(parti[posMese]);
        if (mese == 0)
            return QDate();
        if (numeri.size() == 2)
            return Componi(EspandiAnno(numeri[1]), mese, numeri[0].toInt());
        // un solo numero: giorno dell'anno corrente, o anno col giorno 1
        QDate d;
        if (numeri[0].size() <= 2)
            d = Componi(annoCorrente(), mese, numeri[0].toInt());
        return d.isValid() ? d : Componi(EspandiAnno(numeri[0]), mese, 1);
    }
    const int a = numeri[0].toInt(), b = numeri[1].toInt();
    if (numeri.size() == 3) {
        if (numeri[0].size() >= 3)
            return Componi(a, b, numeri[2].toInt());
        const int anno = EspandiAnno(numeri[2]);
        const QDate d = Componi(anno, b, a);
        return d.isValid() ? d : Componi(anno, a, b);
    }
    if (numeri[0].size() >= 3)
        return Componi(a, b, 1);
    QDate d = Componi(annoCorrente(), b, a);
    if (!d.isValid())
        d = Componi(annoCorrente(), a, b);
    if (!d.isValid())
        d = Componi(EspandiAnno(numeri[1]), a, 1);
    return d;
}

}  // namespace

bool IsDate(const QString& testo) { return LeggiData(testo).isValid(); }

QDate CDate(const QString& testo)
{
    const QDate d = LeggiData(testo);
    if (!d.isValid())
        ErroreTipo();
    return d;
}
