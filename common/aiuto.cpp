#include "common/aiuto.h"

namespace {
FunzioneHelp& funzioneHelp()
{
    static FunzioneHelp f;
    return f;
}
}  // namespace

void MostraHelp(const QString& nome)
{
    // Copia: la funzione può sostituire sé stessa mentre gira.
    const FunzioneHelp f = funzioneHelp();
    if (f)
        f(nome);
}

FunzioneHelp ImpostaMostraHelp(FunzioneHelp funzione)
{
    FunzioneHelp vecchia = std::move(funzioneHelp());
    funzioneHelp() = std::move(funzione);
    return vecchia;
}
