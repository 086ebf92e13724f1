#pragma once
// Numero dell'ErroreSistema sollevato da f, 0 se non ne solleva.

#include "common/errore.h"

template <typename F>
int NumeroErrore(F&& f)
{
    try {
        f();
    } catch (const ErroreSistema& e) {
        return e.numero();
    }
    return 0;
}
