#pragma once
// Misure dei benchmark. A mano girano sui dati pieni; con la variabile
// d'ambiente FERMOLA_BENCH_FUMO=1 (così li fa girare ctest) i dati scendono a
// poche centinaia di righe: quanto basta a provare che ogni benchmark compila,
// gira fino in fondo e non fallisce, senza misurare nulla.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <unistd.h>

namespace Bench {

inline bool Fumo()
{
    const char* valore = std::getenv("FERMOLA_BENCH_FUMO");
    return valore && *valore && *valore != '0';
}

// La misura piena, oppure al più "ridotta" nella prova di fumo.
inline int Dimensione(int piena, int ridotta = 300) { return Fumo() ? std::min(piena, ridotta) : piena; }

// Il resoconto solito a schermo, che in più ricorda se una misura è fallita
// (SkipWithError): la libreria da sola esce comunque con 0.
class ResocontoConErrori final : public benchmark::ConsoleReporter {
public:
    // A colori solo sul terminale, come il resoconto della libreria.
    ResocontoConErrori() : ConsoleReporter(isatty(STDOUT_FILENO) ? OO_Color : OO_None) {}
    void ReportRuns(const std::vector<Run>& misure) override
    {
        for (const Run& m : misure)
            if (m.error_occurred) {
                ++errori;
                std::fprintf(stderr, "misura fallita: %s: %s\n", m.benchmark_name().c_str(),
                             m.error_message.c_str());
            }
        ConsoleReporter::ReportRuns(misure);
    }
    int errori = 0;
};

// Esegue le misure chieste dalla riga di comando: 0 se sono andate tutte,
// 1 se una è fallita o nessuna corrisponde al filtro.
inline int Esegui(int& argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    ResocontoConErrori resoconto;
    const size_t eseguite = benchmark::RunSpecifiedBenchmarks(&resoconto);
    benchmark::Shutdown();
    return resoconto.errori == 0 && eseguite > 0 ? 0 : 1;
}

}  // namespace Bench
