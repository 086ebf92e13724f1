#include "common/disegno_documento.h"

#include <QAbstractTextDocumentLayout>
#include <QPageLayout>
#include <QPageSize>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QFileInfo>
#include <QPdfWriter>
#include <QTextDocument>

namespace {
// Margini in millimetri: sopra, ai lati, e sotto con lo spazio per il numero di pagina.
constexpr double MargineSopra = 12;
constexpr double MargineLati = 12;
constexpr double MargineSotto = 16;
}  // namespace

bool FoglioOrizzontale(const QTextDocument& documento)
{
    const QSizeF foglio = documento.pageSize();
    return foglio.isValid() && foglio.width() > foglio.height();
}

void PreparaFoglio(const QTextDocument& documento, QPagedPaintDevice& dispositivo)
{
    dispositivo.setPageLayout(QPageLayout(QPageSize(QPageSize::A4),
                                          FoglioOrizzontale(documento) ? QPageLayout::Landscape : QPageLayout::Portrait,
                                          QMarginsF(MargineLati, MargineSopra, MargineLati, MargineSotto),
                                          QPageLayout::Millimeter));
}

void DisegnaDocumento(QTextDocument& documento, QPagedPaintDevice& dispositivo)
{
    const QSizeF foglioOriginale = documento.pageSize();
    const int dpi = dispositivo.logicalDpiY();
    const QPageLayout layout = dispositivo.pageLayout();
    const QRect corpo = layout.paintRectPixels(dpi);
    // Il documento si dispone alla risoluzione del dispositivo: i punti
    // tipografici dei caratteri restano tali su ogni carta.
    documento.documentLayout()->setPaintDevice(&dispositivo);
    documento.setPageSize(QSizeF(corpo.width(), corpo.height()));
    const int pagine = documento.pageCount();

    QPainter pittore(&dispositivo);
    QFont carattere = documento.defaultFont();
    carattere.setPointSizeF(8);
    for (int pagina = 0; pagina < pagine; ++pagina) {
        if (pagina > 0)
            dispositivo.newPage();
        pittore.save();
        const QRectF vista(0, pagina * corpo.height(), corpo.width(), corpo.height());
        pittore.translate(0, -vista.top());
        QAbstractTextDocumentLayout::PaintContext contesto;
        contesto.clip = vista;
        contesto.palette.setColor(QPalette::Text, Qt::black);
        pittore.setClipRect(vista);
        documento.documentLayout()->draw(&pittore, contesto);
        pittore.restore();
        // Numero di pagina in calce, a destra, nello spazio del margine basso.
        pittore.setFont(QFont(carattere, &dispositivo));
        const QString testo = QStringLiteral("Pagina %1 di %2").arg(pagina + 1).arg(pagine);
        const QRectF calce(0, corpo.height() + dpi * 0.08, corpo.width(), dpi * 0.25);
        pittore.drawText(calce, Qt::AlignRight | Qt::AlignTop, testo);
    }
    pittore.end();
    documento.documentLayout()->setPaintDevice(nullptr);
    documento.setPageSize(foglioOriginale);
}

bool ScriviPdf(QTextDocument& documento, const QString& percorso)
{
    QPdfWriter scrittore(percorso);
    scrittore.setResolution(300);
    scrittore.setCreator(QStringLiteral("Fermola"));
    scrittore.setTitle(documento.metaInformation(QTextDocument::DocumentTitle));
    PreparaFoglio(documento, scrittore);
    DisegnaDocumento(documento, scrittore);
    return QFileInfo::exists(percorso);
}
