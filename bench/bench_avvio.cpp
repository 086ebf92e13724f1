// Tempi dell'avvio: il controllo di versione sul database e la costruzione
// della schermata d'avvio fino al primo disegno. Obiettivo: dall'avvio alla
// schermata ben sotto il secondo.
#include "common/piattaforma.h"
#include "shell/frmSpalsh.h"
#include "shell/session_state.h"
#include "store/database.h"

#include <QApplication>
#include <QDir>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <cstdlib>

namespace {

// Nessun messaggio è atteso: se ne arriva uno il benchmark non vale.
class PiattaformaMuta final : public Piattaforma {
public:
    int MsgBox(const QString& testo, int, const QString&) override
    {
        std::fprintf(stderr, "messaggio inatteso: %s\n", qPrintable(testo));
        std::abort();
    }
    QString SfogliaCartella(const QString&) override { return {}; }
    void MostraTesto(const QString&) override {}
    void Beep() override {}
    void Clessidra(bool) override {}
    [[noreturn]] void TerminaProcesso() override { std::abort(); }
    int AnteprimaStampa(QTextDocument&, const QString&) override { std::abort(); }
};

// Cartella di programma con un database minimo: tab_setup, CAMPAGNA, LOGERR.
class CartellaBench {
public:
    CartellaBench()
    {
        QDir(m_dir.path()).mkpath(QStringLiteral("database"));
        auto db = Database::Crea(QDir(m_dir.path()).filePath(QStringLiteral("database/") + NomeDatabase), PasswordDb);
        db->Execute(QStringLiteral("CREATE TABLE tab_setup (VERSIONE TEXT, DATA_VERSIONE TEXT, DESCRIZIONE TEXT)"));
        db->Execute(QStringLiteral("INSERT INTO tab_setup VALUES (?, '01/09/2005', ?)"),
                    {VersioneProgramma(), DescrizioneSetup});
        db->Execute(QStringLiteral("CREATE TABLE CAMPAGNA (ANNUALITA INTEGER)"));
        db->Execute(QStringLiteral("INSERT INTO CAMPAGNA VALUES (2004), (2005)"));
        db->Close();
    }
    QString cartella() const { return m_dir.path(); }

private:
    QTemporaryDir m_dir;
};

void BM_ControlloVersione(benchmark::State& stato)
{
    CartellaBench c;
    sessione().PathDatabase = CalcolaPathDatabase(c.cartella());
    for (auto _ : stato) {
        AggiornamentoVersione();
        benchmark::DoNotOptimize(sessione().CampagnaCorrente);
    }
}
BENCHMARK(BM_ControlloVersione)->Unit(benchmark::kMillisecond);

// Dalla costruzione della schermata al suo primo disegno, controllo compreso.
void BM_SchermataAvvio(benchmark::State& stato)
{
    CartellaBench c;
    for (auto _ : stato) {
        frmSpalsh splash(c.cartella());
        splash.show();
        splash.Form_Activate();
        benchmark::DoNotOptimize(splash.grab());
    }
}
BENCHMARK(BM_SchermataAvvio)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    ImpostaPiattaforma(std::make_unique<PiattaformaMuta>());
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
