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
    // Una tabella che non entra nel foglio nemmeno con le colonne al minimo
    // non si taglia: il documento si dispone più largo e si disegna in scala.
    qreal scala = 1;
    const qreal largo = documento.documentLayout()->documentSize().width();
    if (largo > corpo.width() + 1) {
        scala = corpo.width() / largo;
        documento.setPageSize(QSizeF(corpo.width() / scala, corpo.height() / scala));
    }
    const QSizeF pagina = documento.pageSize();
    const int pagine = documento.pageCount();

    QPainter pittore(&dispositivo);
    QFont carattere = documento.defaultFont();
    carattere.setPointSizeF(8);
    for (int p = 0; p < pagine; ++p) {
        if (p > 0)
            dispositivo.newPage();
        pittore.save();
        pittore.scale(scala, scala);
        const QRectF vista(0, p * pagina.height(), pagina.width(), pagina.height());
        pittore.translate(0, -vista.top());
        QAbstractTextDocumentLayout::PaintContext contesto;
        contesto.clip = vista;
        contesto.palette.setColor(QPalette::Text, Qt::black);
        pittore.setClipRect(vista);
        documento.documentLayout()->draw(&pittore, contesto);
        pittore.restore();
        // Numero di pagina in calce, a destra, nello spazio del margine basso.
        pittore.setFont(QFont(carattere, &dispositivo));
        const QString testo = QStringLiteral("Pagina %1 di %2").arg(p + 1).arg(pagine);
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

void ImpostaNomePdf(QTextDocument& documento, const QString& nome) { documento.setProperty("nomePdf", nome); }

QString NomePdf(const QTextDocument& documento)
{
    const QString nome = documento.property("nomePdf").toString();
    return nome.isEmpty() ? QStringLiteral("Stampa") : nome;
}
