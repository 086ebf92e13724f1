// Semi dei corpus dei due bersagli di fuzzing dei carichi: poche forniture
// valide, scritte come nelle prove del carico, nella cartella data. Il primo
// argomento è il ramo: fatture (righe di 260 caratteri) o conferimenti (300).

#include "../interchange/fornitura_conferimenti_prova.h"
#include "../interchange/fornitura_prova.h"

#include <QDir>
#include <QFile>
#include <cstdio>

namespace {

namespace C = ConferimentiProva;
namespace F = FornituraProva;
using Semi = QList<QPair<const char*, QStringList>>;

Semi Fatture()
{
    const QString d1 = QStringLiteral("00000000011"), d2 = QStringLiteral("00000000012");
    return {
        {"una_domanda", {F::R0(), F::R1(d1), F::R2(d1, "1"), F::R3(d1, "1", "B1")}},
        {"due_domande",
         {F::R0("2005", "002"), F::R1(d1), F::R2(d1, "1"), F::R2(d1, "2", "VDT", "CANTINA L'ALBA"),
          F::R3(d1, "1", "B1"), F::R3(d1, "2", "B2", "31/12/2005"), F::R1(d2, "ANE", "02"), F::R2(d2, "7"),
          F::R3(d2, "7", "B7")}},
        {"senza_bolle", {F::R0(), F::R1(d1), F::R2(d1, "1"), F::R2(d1, "2")}},
        {"record_fuori_posto", {F::R0(), F::R2(d1, "1"), F::R3(d1, "1", "B1"), F::R1(d1)}},
        {"solo_testata", {F::R0()}},
    };
}

Semi Conferimenti()
{
    const QString rossi = QStringLiteral("RSSMRA70A01L219X");
    return {
        {"una_domanda", {C::R0(), C::R1("00000000041"), C::R2("UTF000401"), C::R3(rossi, "ROSSI MARIO"), C::R9()}},
        {"due_domande",
         {C::R0(), C::R1("00000000021"), C::R2("UTF000101"), C::R3(rossi, "ROSSI MARIO"),
          C::R3("01234567891", "CANTINA L'ALBA \"VECCHIA\"", "BI"), C::R2("UTF000102", "CN"),
          C::R3("VRDLGU60B02A479Z", "VERDI LUIGI"), C::R1("00000000022", "00000000000000"),
          C::R2("UTF000201", "AT"), C::R3("BNCNNA80C03L219Z", "BIANCHI ANNA"), C::R9()}},
        {"senza_quadratura", {C::R0("0008", "0"), C::R1("00000000031"), C::R2("UTF000301", "AT"),
                              C::R3("BNCNNA80C03L219Z", "BIANCHI ANNA", "BI"), C::R9()}},
        {"domande_uguali", {C::R0(), C::R1("00000000051"), C::R2("UTF000501"), C::R1("00000000051"), C::R9()}},
        {"grande", C::FornituraGrande(1, 2, 2)},
    };
}

}  // namespace

int main(int argc, char** argv)
{
    const QString ramo = argc == 3 ? QString::fromLocal8Bit(argv[1]) : QString();
    if (ramo != QLatin1String("fatture") && ramo != QLatin1String("conferimenti")) {
        std::fprintf(stderr, "uso: %s fatture|conferimenti cartella\n", argv[0]);
        return 2;
    }
    const QDir cartella(QString::fromLocal8Bit(argv[2]));
    if (!cartella.mkpath(QStringLiteral(".")))
        return 1;
    for (const auto& [nome, righe] : ramo == QLatin1String("fatture") ? Fatture() : Conferimenti()) {
        const QByteArray byte = C::File(righe);
        QFile f(cartella.filePath(QString::fromLatin1(nome)));
        if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate) || f.write(byte) != byte.size())
            return 1;
    }
    return 0;
}
