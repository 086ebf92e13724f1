// Tempi dell'avvio sul database consegnato (con una distilleria registrata,
// come dopo il primo uso). Il benchmark lancia se stesso come processo figlio,
// che fa ciò che fa main() e segnala su una pipe i due traguardi:
// - "schermata": la schermata d'avvio disegnata per la prima volta;
// - "menu": il menu principale disegnato, con il clic su "Skip" dato appena
//   il controllo di versione è finito (nessuna attesa dell'utente).
// Il tempo di ogni misura va dal lancio del processo al traguardo: comprende
// il caricamento delle librerie. I contatori danno anche il tempo dall'ingresso
// in main() e il tempo di processore del figlio. Obiettivo: la schermata ben
// sotto i 300 ms.
//
// Inoltre il solo controllo di versione, nello stesso processo.

#include "dimensioni.h"

#include "common/piattaforma.h"
#include "shell/FrmMenu.h"
#include "shell/frmSpalsh.h"
#include "shell/avvio.h"
#include "shell/session_state.h"
#include "store/database.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QPointer>
#include <QTemporaryDir>
#include <QTimer>
#include <benchmark/benchmark.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <ctime>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace {

const char* const OpzioneFiglio = "--avvio-figlio";
// Oltre questo il figlio si considera bloccato (una finestra modale inattesa).
constexpr int AttesaMassimaMs = 120000;

qint64 Nanosecondi(clockid_t orologio)
{
    timespec t{};
    clock_gettime(orologio, &t);
    return qint64(t.tv_sec) * 1000000000 + t.tv_nsec;
}

// Nessun messaggio è atteso: se ne arriva uno la misura non vale.
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

// ------------------------------------------------------------------ figlio

// Scrive "nome tempo_monotono tempo_processore" sulla pipe del padre.
void Segnala(int fd, const char* nome)
{
    char riga[96];
    const int n = std::snprintf(riga, sizeof riga, "%s %lld %lld\n", nome,
                                static_cast<long long>(Nanosecondi(CLOCK_MONOTONIC)),
                                static_cast<long long>(Nanosecondi(CLOCK_PROCESS_CPUTIME_ID)));
    if (write(fd, riga, size_t(n)) != n)
        std::abort();
}

// Osserva i disegni di tutte le finestre: al primo disegno della schermata e
// del menu segnala il traguardo, appena finito il giro di disegno in corso.
class Osservatore final : public QObject {
public:
    explicit Osservatore(int fd) : m_fd(fd) {}
    bool eventFilter(QObject* oggetto, QEvent* evento) override
    {
        if (evento->type() != QEvent::Paint)
            return false;
        if (!m_schermata && oggetto->objectName() == QLatin1String("frmSpalsh")) {
            m_schermata = true;
            QPointer<frmSpalsh> splash = static_cast<frmSpalsh*>(oggetto);
            QTimer::singleShot(0, this, [this, splash] {
                Segnala(m_fd, "schermata");
                SaltaQuandoPronta(splash);
            });
        } else if (!m_menu && oggetto->objectName() == QLatin1String("FrmMenu")) {
            m_menu = true;
            QTimer::singleShot(0, this, [this] {
                Segnala(m_fd, "menu");
                QApplication::exit(0);
            });
        }
        return false;
    }

private:
    // Il clic su "Skip" appena il controllo di versione ha letto la versione.
    void SaltaQuandoPronta(QPointer<frmSpalsh> splash)
    {
        if (!splash)
            return;
        if (sessione().VersioneDb.isEmpty()) {
            QTimer::singleShot(1, this, [this, splash] { SaltaQuandoPronta(splash); });
            return;
        }
        splash->Label1_Click(2);
    }

    int m_fd;
    bool m_schermata = false, m_menu = false;
};

// I passi di main(), gli stessi, con i traguardi segnalati al padre.
int Figlio(int argc, char** argv, const QString& cartella, int fd)
{
    Segnala(fd, "ingresso");
    const auto app = AvviaApplicazione(argc, argv, std::make_unique<PiattaformaMuta>());
    Osservatore osservatore(fd);
    app->installEventFilter(&osservatore);

    auto* splash = new frmSpalsh(cartella);
    splash->setAttribute(Qt::WA_DeleteOnClose);
    splash->show();
    const int esito = QApplication::exec();
    FrmMenu::Scarica();
    sessione().DbDistilleria.reset();
    return esito;
}

// ------------------------------------------------------------------- padre

// Cartella di programma con una copia del database consegnato.
class CartellaAvvio {
public:
    CartellaAvvio()
    {
        const QString database = QDir(m_dir.path()).filePath(QStringLiteral("database"));
        if (!QDir().mkpath(database) || !QFile::copy(QStringLiteral(FERMOLA_DB_PULITO), database + "/" + NomeDatabase))
            throw std::runtime_error("database consegnato non copiato");
        auto db = Database::Apri(database + "/" + NomeDatabase, false, ConnessioneDb);
        db->Execute(QStringLiteral("INSERT INTO DISTILLERIA VALUES ('01234567890', 'DISTILLERIA BOSCO SPA',"
                                   " 'VIA ROMA 12 ASTI')"));
        db->Close();
    }
    QString cartella() const { return m_dir.path(); }

private:
    QTemporaryDir m_dir;
};

struct Traguardi {
    qint64 lancio = 0;           // monotono, prima del lancio
    qint64 ingresso = 0;         // monotono, all'ingresso in main del figlio
    qint64 schermata[2] = {};    // monotono, processore
    qint64 menu[2] = {};
};

// Un avvio completo in un processo figlio. Vuoto se fallisce, con il motivo.
std::string Avvio(const QString& cartella, Traguardi& t)
{
    int pipa[2];
    if (pipe2(pipa, O_CLOEXEC) != 0)
        return "pipe non creata";
    fcntl(pipa[1], F_SETFD, 0);  // il figlio eredita solo l'estremo di scrittura
    const std::string eseguibile = QCoreApplication::applicationFilePath().toStdString();
    const std::string cart = cartella.toStdString();
    const std::string fd = std::to_string(pipa[1]);
    char* argomenti[] = {const_cast<char*>(eseguibile.c_str()), const_cast<char*>(OpzioneFiglio),
                         const_cast<char*>(cart.c_str()), const_cast<char*>(fd.c_str()), nullptr};
    pid_t figlio = 0;
    t.lancio = Nanosecondi(CLOCK_MONOTONIC);
    const int lanciato = posix_spawn(&figlio, eseguibile.c_str(), nullptr, nullptr, argomenti, environ);
    close(pipa[1]);
    if (lanciato != 0) {
        close(pipa[0]);
        return "figlio non lanciato";
    }
    std::string letto;
    bool bloccato = false;
    for (;;) {
        pollfd p{pipa[0], POLLIN, 0};
        const int pronti = poll(&p, 1, AttesaMassimaMs);
        if (pronti < 0 && errno == EINTR)
            continue;
        if (pronti <= 0) {
            bloccato = true;
            break;
        }
        char buffer[256];
        const ssize_t n = read(pipa[0], buffer, sizeof buffer);
        if (n <= 0)
            break;
        letto.append(buffer, size_t(n));
    }
    close(pipa[0]);
    if (bloccato)
        kill(figlio, SIGKILL);
    int stato = 0;
    waitpid(figlio, &stato, 0);
    if (bloccato)
        return "figlio bloccato, fermato";
    if (!WIFEXITED(stato) || WEXITSTATUS(stato) != 0)
        return "figlio finito male (stato " + std::to_string(stato) + ")";

    char nome[16];
    long long monotono = 0, processore = 0;
    int trovati = 0;
    for (const char* r = letto.c_str(); std::sscanf(r, "%15s %lld %lld", nome, &monotono, &processore) == 3;) {
        if (!std::strcmp(nome, "ingresso"))
            t.ingresso = monotono, trovati |= 1;
        else if (!std::strcmp(nome, "schermata"))
            t.schermata[0] = monotono, t.schermata[1] = processore, trovati |= 2;
        else if (!std::strcmp(nome, "menu"))
            t.menu[0] = monotono, t.menu[1] = processore, trovati |= 4;
        r = std::strchr(r, '\n');
        if (!r)
            break;
        ++r;
    }
    return trovati == 7 ? std::string() : "traguardi mancanti: " + letto;
}

enum class Traguardo { Schermata, Menu };

void Avvio(benchmark::State& stato, Traguardo traguardo)
{
    CartellaAvvio c;
    double dalMain = 0, processore = 0;
    for (auto _ : stato) {
        Traguardi t;
        if (const std::string errore = Avvio(c.cartella(), t); !errore.empty()) {
            stato.SkipWithError(errore.c_str());
            break;
        }
        const qint64* fine = traguardo == Traguardo::Schermata ? t.schermata : t.menu;
        stato.SetIterationTime(double(fine[0] - t.lancio) / 1e9);
        dalMain += double(fine[0] - t.ingresso) / 1e6;
        processore += double(fine[1]) / 1e6;
    }
    stato.counters["dal_main_ms"] = benchmark::Counter(dalMain, benchmark::Counter::kAvgIterations);
    stato.counters["processore_ms"] = benchmark::Counter(processore, benchmark::Counter::kAvgIterations);
}
// Cinque avvii per misura: ognuno costa un processo intero.
BENCHMARK_CAPTURE(Avvio, schermata, Traguardo::Schermata)
    ->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(Bench::Fumo() ? 1 : 5);
BENCHMARK_CAPTURE(Avvio, menu, Traguardo::Menu)
    ->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(Bench::Fumo() ? 1 : 5);

// Il solo controllo di versione, nello stesso processo.
void ControlloVersione(benchmark::State& stato)
{
    CartellaAvvio c;
    sessione().PathDatabase = CalcolaPathDatabase(c.cartella());
    for (auto _ : stato) {
        AggiornamentoVersione();
        if (sessione().CampagnaCorrente != QLatin1String("2005"))
            stato.SkipWithError("campagna corrente non letta");
    }
}
BENCHMARK(ControlloVersione)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    if (argc == 4 && !std::strcmp(argv[1], OpzioneFiglio)) {
        int ridotti = 1;
        return Figlio(ridotti, argv, QString::fromLocal8Bit(argv[2]), std::atoi(argv[3]));
    }
    QCoreApplication app(argc, argv);
    ImpostaPiattaforma(std::make_unique<PiattaformaMuta>());
    return Bench::Esegui(argc, argv);
}
