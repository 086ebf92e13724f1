// Fuzzing del carico di una fornitura conferimenti: ogni ingresso diventa il
// file caricato, e passa per la lettura, i controlli e, se li supera, per la
// scrittura di domande, certificati e produttori con le routine delle
// maschere sul database di prova. Mai un crollo, qualunque cosa arrivi.

#include "fuzz_comune.h"
#include "interchange/CaricoConferimenti.h"

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    FuzzCarico::Prepara(argc, argv,
                        QStringLiteral(" Carico Domande di aiuto alla distillazione facoltativa (Art.29)"),
                        QStringLiteral("ART29CONF2005.txt"));
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* dati, size_t misura)
{
    CaricaFornituraConferimenti(FuzzCarico::ScriviFornitura(dati, misura));
    // La sessione tiene le chiavi dell'ultimo carico: si riparte da zero.
    FuzzCarico::Ripulisci({"TAB_ID_UTF_PRODUTTORE", "PRODUTTORI", "TAB_UTF", "DOMANDE_PRODUTTORI",
                           "TAB_Fornitura_utf", "LOGERR"});
    return 0;
}
