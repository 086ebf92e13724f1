// Tempi di Decimale: lettura dal testo, prodotto, quoziente, Format.
#include "common/numeri.h"

#include <QString>
#include <QStringList>
#include "dimensioni.h"

#include <benchmark/benchmark.h>

namespace {

// Figure tipiche delle maschere: quantità a quattro decimali, importi a due.
const QStringList& Testi()
{
    static const QStringList testi = [] {
        QStringList t;
        for (int i = 0; i < 1024; ++i)
            t << QStringLiteral("%1,%2").arg(i * 37 % 100000).arg(i * 7919 % 10000, 4, 10, QLatin1Char('0'));
        return t;
    }();
    return testi;
}

void BM_Lettura(benchmark::State& stato)
{
    const QStringList& testi = Testi();
    qsizetype i = 0;
    for (auto _ : stato) {
        benchmark::DoNotOptimize(Decimale(testi[i]));
        i = (i + 1) & 1023;
    }
}
BENCHMARK(BM_Lettura);

void BM_Prodotto(benchmark::State& stato)
{
    const Decimale a(QStringLiteral("1234,5678")), b(QStringLiteral("1,751"));
    for (auto _ : stato)
        benchmark::DoNotOptimize(a * b);
}
BENCHMARK(BM_Prodotto);

// Prodotto oltre le 28 cifre: passa dall'arrotondamento a 256 bit.
void BM_ProdottoLungo(benchmark::State& stato)
{
    const Decimale a(QStringLiteral("12345678901234,5678")), b(QStringLiteral("98765432109876,5432"));
    for (auto _ : stato)
        benchmark::DoNotOptimize(a * b);
}
BENCHMARK(BM_ProdottoLungo);

void BM_QuozienteEsatto(benchmark::State& stato)
{
    const Decimale a(120), b(1000);
    for (auto _ : stato)
        benchmark::DoNotOptimize(a / b);
}
BENCHMARK(BM_QuozienteEsatto);

// Quoziente periodico: tutte le 28 cifre.
void BM_Quoziente28Cifre(benchmark::State& stato)
{
    const Decimale a(QStringLiteral("1234,5678")), b(QStringLiteral("7,0003"));
    for (auto _ : stato)
        benchmark::DoNotOptimize(a / b);
}
BENCHMARK(BM_Quoziente28Cifre);

void BM_Format(benchmark::State& stato)
{
    const Decimale a(QStringLiteral("1050,60449"));
    const QString maschera = QStringLiteral("##0.0000");
    for (auto _ : stato)
        benchmark::DoNotOptimize(Format(a, maschera));
}
BENCHMARK(BM_Format);

void BM_Testo(benchmark::State& stato)
{
    const Decimale a(QStringLiteral("1050,6"));
    for (auto _ : stato)
        benchmark::DoNotOptimize(a.testo());
}
BENCHMARK(BM_Testo);

// Il confronto naturale: la stessa figura letta con CDbl.
void BM_CDbl(benchmark::State& stato)
{
    const QStringList& testi = Testi();
    qsizetype i = 0;
    for (auto _ : stato) {
        benchmark::DoNotOptimize(CDbl(testi[i]));
        i = (i + 1) & 1023;
    }
}
BENCHMARK(BM_CDbl);

void BM_DaDouble(benchmark::State& stato)
{
    const double v = 6.0 * 1.751 * 100.0;
    for (auto _ : stato)
        benchmark::DoNotOptimize(Decimale::daDouble(v));
}
BENCHMARK(BM_DaDouble);

}  // namespace

int main(int argc, char** argv) { return Bench::Esegui(argc, argv); }
