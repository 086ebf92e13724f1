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

QPageLayout FoglioDelDocumento(const QTextDocument& documento)
{
    return QPageLayout(QPageSize(QPageSize::A4),
                       FoglioOrizzontale(documento) ? QPageLayout::Landscape : QPageLayout::Portrait,
                       QMarginsF(MargineLati, MargineSopra, MargineLati, MargineSotto), QPageLayout::Millimeter);
}

void PreparaFoglio(const QTextDocument& documento, QPagedPaintDevice& dispositivo)
{
    dispositivo.setPageLayout(FoglioDelDocumento(documento));
}

Impaginazione::Impaginazione(QTextDocument& documento, QPaintDevice& dispositivo, const QPageLayout& foglio)
    : m_documento(documento),
      m_dispositivoPrecedente(documento.documentLayout()->paintDevice()),
      m_foglioOriginale(documento.pageSize()), m_dpi(dispositivo.logicalDpiY())
{
    m_foglio = foglio.fullRectPixels(m_dpi);
    m_corpo = foglio.paintRectPixels(m_dpi);
    // Il documento si dispone alla risoluzione del dispositivo: i punti
    // tipografici dei caratteri restano tali su ogni carta.
    documento.documentLayout()->setPaintDevice(&dispositivo);
    documento.setPageSize(QSizeF(m_corpo.width(), m_corpo.height()));
    // Una tabella che non entra nel foglio nemmeno con le colonne al minimo
    // non si taglia: il documento si dispone più largo e si disegna in scala.
    const qreal largo = documento.documentLayout()->documentSize().width();
    if (largo > m_corpo.width() + 1) {
        m_scala = m_corpo.width() / largo;
        documento.setPageSize(QSizeF(m_corpo.width() / m_scala, m_corpo.height() / m_scala));
    }
    m_pagine = documento.pageCount();
}

Impaginazione::~Impaginazione()
{
    m_documento.documentLayout()->setPaintDevice(m_dispositivoPrecedente);
    m_documento.setPageSize(m_foglioOriginale);
}

void Impaginazione::DisegnaPagina(QPainter& pittore, int p) const
{
    const QSizeF pagina = m_documento.pageSize();
    pittore.save();
    pittore.scale(m_scala, m_scala);
    const QRectF vista(0, p * pagina.height(), pagina.width(), pagina.height());
    pittore.translate(0, -vista.top());
    QAbstractTextDocumentLayout::PaintContext contesto;
    contesto.clip = vista;
    contesto.palette.setColor(QPalette::Text, Qt::black);
    pittore.setClipRect(vista, Qt::IntersectClip);
    m_documento.documentLayout()->draw(&pittore, contesto);
    pittore.restore();
    // Numero di pagina in calce, a destra, nello spazio del margine basso.
    QFont carattere = m_documento.defaultFont();
    carattere.setPointSizeF(8);
    pittore.save();
    pittore.setFont(QFont(carattere, pittore.device()));
    pittore.setPen(Qt::black);
    const QString testo = QStringLiteral("Pagina %1 di %2").arg(p + 1).arg(m_pagine);
    const QRectF calce(0, m_corpo.height() + m_dpi * 0.08, m_corpo.width(), m_dpi * 0.25);
    pittore.drawText(calce, Qt::AlignRight | Qt::AlignTop, testo);
    pittore.restore();
}

void Impaginazione::DisegnaFoglio(QPainter& pittore, int p) const
{
    pittore.fillRect(QRect(QPoint(0, 0), m_foglio.size()), Qt::white);
    pittore.save();
    pittore.translate(m_corpo.topLeft() - m_foglio.topLeft());
    DisegnaPagina(pittore, p);
    pittore.restore();
}

void DisegnaDocumento(QTextDocument& documento, QPagedPaintDevice& dispositivo)
{
    const Impaginazione impaginazione(documento, dispositivo, dispositivo.pageLayout());
    QPainter pittore(&dispositivo);
    for (int p = 0; p < impaginazione.pagine(); ++p) {
        if (p > 0)
            dispositivo.newPage();
        impaginazione.DisegnaPagina(pittore, p);
    }
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
