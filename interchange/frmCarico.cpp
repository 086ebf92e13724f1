#include "interchange/frmCarico.h"

#include "interchange/CaricoFatture.h"
#include "shell/session_state.h"

frmCarico::frmCarico(QWidget* genitore)
    : MascheraCarico(QStringLiteral("frmCarico"), TagFatturazione,
                     [](const QString& file, OsservatoreCarico* o) { CaricaFornitura(file, o); }, genitore)
{
}
