// Semi del corpus per fuzz_carico_conferimenti: poche forniture valide a 300
// caratteri, scritte come nelle prove del carico, nella cartella data.

#include "../interchange/fornitura_conferimenti_prova.h"

#include <QDir>
#include <QFile>
#include <cstdio>

using namespace ConferimentiProva;

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "uso: %s cartella\n", argv[0]);
        return 2;
    }
    const QDir cartella(QString::fromLocal8Bit(argv[1]));
    if (!cartella.mkpath(QStringLiteral(".")))
        return 1;
    const QList<QPair<const char*, QStringList>> semi{
        {"una_domanda", {R0(), R1("00000000041"), R2("UTF000401"), R3("RSSMRA70A01L219X", "ROSSI MARIO"), R9()}},
        {"due_domande",
         {R0(), R1("00000000021"), R2("UTF000101"), R3("RSSMRA70A01L219X", "ROSSI MARIO"),
          R3("01234567891", "CANTINA L'ALBA \"VECCHIA\"", "BI"), R2("UTF000102", "CN"),
          R3("VRDLGU60B02A479Z", "VERDI LUIGI"), R1("00000000022", "00000000000000"), R2("UTF000201", "AT"),
          R3("BNCNNA80C03L219Z", "BIANCHI ANNA"), R9()}},
        {"senza_quadratura", {R0("0008", "0"), R1("00000000031"), R2("UTF000301", "AT"),
                              R3("BNCNNA80C03L219Z", "BIANCHI ANNA", "BI"), R9()}},
        {"domande_uguali", {R0(), R1("00000000051"), R2("UTF000501"), R1("00000000051"), R9()}},
        {"grande", FornituraGrande(1, 2, 2)},
    };
    for (const auto& [nome, righe] : semi) {
        QFile f(cartella.filePath(QString::fromLatin1(nome)));
        if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate) || f.write(File(righe)) < 0)
            return 1;
    }
    return 0;
}
