// Semi del corpus per fuzz_carico_fatture: poche forniture fatture valide a
// 260 caratteri, scritte come nelle prove del carico, nella cartella data.

#include "../interchange/fornitura_prova.h"

#include <QDir>
#include <QFile>
#include <cstdio>

using namespace FornituraProva;

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "uso: %s cartella\n", argv[0]);
        return 2;
    }
    const QDir cartella(QString::fromLocal8Bit(argv[1]));
    if (!cartella.mkpath(QStringLiteral(".")))
        return 1;
    const QString d1 = QStringLiteral("00000000011"), d2 = QStringLiteral("00000000012");
    const QList<QPair<const char*, QStringList>> semi{
        {"una_domanda", {R0(), R1(d1), R2(d1, "1"), R3(d1, "1", "B1")}},
        {"due_domande",
         {R0("2005", "002"), R1(d1), R2(d1, "1"), R2(d1, "2", "VDT", "CANTINA L'ALBA"), R3(d1, "1", "B1"),
          R3(d1, "2", "B2", "31/12/2005"), R1(d2, "ANE", "02"), R2(d2, "7"), R3(d2, "7", "B7")}},
        {"senza_bolle", {R0(), R1(d1), R2(d1, "1"), R2(d1, "2")}},
        {"record_fuori_posto", {R0(), R2(d1, "1"), R3(d1, "1", "B1"), R1(d1)}},
        {"solo_testata", {R0()}},
    };
    for (const auto& [nome, righe] : semi) {
        QByteArray byte;
        for (const QString& r : righe)
            byte += r.toLatin1() + "\r\n";
        QFile f(cartella.filePath(QString::fromLatin1(nome)));
        if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate) || f.write(byte) != byte.size())
            return 1;
    }
    return 0;
}
