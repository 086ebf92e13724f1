// Fuzzing del carico di una fornitura fatture: ogni ingresso diventa il file
// caricato, e passa per la lettura, i controlli e, se li supera, per la
// scrittura sul database di prova. Qualunque cosa arrivi, il carico finisce
// con un messaggio o un errore registrato, mai con un crollo.

#include "fuzz_comune.h"
#include "interchange/CaricoFatture.h"

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    FuzzCarico::Prepara(argc, argv, QStringLiteral(" Carico della Domanda "), QStringLiteral("fornitura.txt"));
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* dati, size_t misura)
{
    CaricaFornitura(FuzzCarico::ScriviFornitura(dati, misura));
    FuzzCarico::Ripulisci({"DOMANDE", "FATTURE", "BOLLE", "TAB_Fornitura", "LOGERR"});
    return 0;
}
