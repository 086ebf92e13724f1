#include "interchange/FrmProduttore_carico.h"

#include "interchange/CaricoConferimenti.h"
#include "shell/session_state.h"

FrmProduttore_carico::FrmProduttore_carico(QWidget* genitore)
    : MascheraCarico(QStringLiteral("FrmProduttore_carico"), TagConferimenti,
                     [](const QString& file, OsservatoreCarico* o) { CaricaFornituraConferimenti(file, o); },
                     genitore)
{
}
