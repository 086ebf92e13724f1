#include "shell/ponte_provvisorio.h"
#include <QGuiApplication>
#include <QScreen>
namespace {
std::function<void(const QString&)>& aggancio() { static std::function<void(const QString&)> a; return a; }
}
void PosizionaForm(QWidget* form, bool schermo, QWidget* genitore)
{
    if (schermo || !genitore) {
        const QRect s = QGuiApplication::primaryScreen()->availableGeometry();
        form->move((s.width() - form->width()) / 3, (s.height() - form->height()) / 4);
    } else {
        form->move(genitore->x() + (genitore->width() - form->width()) / 2,
                   genitore->y() + (genitore->height() - form->height()) / 2);
    }
}
void MostraHelp(const QString& nome) { if (aggancio()) aggancio()(nome); }
void ImpostaMostraHelp(std::function<void(const QString&)> a) { aggancio() = std::move(a); }
