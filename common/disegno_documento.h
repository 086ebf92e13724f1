#pragma once
// Disegno di un report composto su carta, su PDF o a video, una pagina A4 dopo
// l'altra, con "Pagina n di N" in calce. Lo usano l'anteprima e la stampa vera:
// così la carta è uguale a quello che l'utente ha visto.
//
// Il documento dice il foglio con la sua pageSize: A4 in punti tipografici,
// 595 x 842 verticale, 842 x 595 orizzontale. Il corpo è disegnato dentro i
// margini; i salti di pagina del documento (page-break) sono rispettati.

#include <QPageLayout>
#include <QRect>
#include <QSizeF>
#include <QString>

class QPagedPaintDevice;
class QPaintDevice;
class QPainter;
class QTextDocument;

// Foglio A4 del documento (verticale se pageSize non dice orizzontale).
bool FoglioOrizzontale(const QTextDocument& documento);
// Il foglio A4 del documento con i suoi margini.
QPageLayout FoglioDelDocumento(const QTextDocument& documento);
// Imposta sul dispositivo il foglio A4 e i margini del documento.
void PreparaFoglio(const QTextDocument& documento, QPagedPaintDevice& dispositivo);

// Il documento disposto una volta sola per un dispositivo (la sua risoluzione
// decide le misure dei caratteri): poi ogni pagina si disegna quando serve,
// senza ridisporre nulla. Finché vive, il documento resta disposto così; alla
// fine torna com'era (anche disposto per l'anteprima da cui si stampa).
class Impaginazione {
public:
    Impaginazione(QTextDocument& documento, QPaintDevice& dispositivo, const QPageLayout& foglio);
    ~Impaginazione();
    Impaginazione(const Impaginazione&) = delete;
    Impaginazione& operator=(const Impaginazione&) = delete;

    int pagine() const { return m_pagine; }
    // Foglio intero e corpo dentro i margini, in punti del dispositivo.
    QRect foglio() const { return m_foglio; }
    QRect corpo() const { return m_corpo; }
    // Disegna la pagina p (da 0) con l'origine del pittore sull'angolo del corpo.
    void DisegnaPagina(QPainter& pittore, int p) const;
    // Il foglio p intero, bianco, con l'origine del pittore sul suo angolo.
    void DisegnaFoglio(QPainter& pittore, int p) const;

private:
    QTextDocument& m_documento;
    QPaintDevice* m_dispositivoPrecedente;
    QSizeF m_foglioOriginale;
    QRect m_foglio, m_corpo;
    int m_dpi = 72;
    qreal m_scala = 1;
    int m_pagine = 0;
};

// Disegna tutte le pagine sul dispositivo già preparato.
void DisegnaDocumento(QTextDocument& documento, QPagedPaintDevice& dispositivo);
// Scrive il documento in un file PDF; falso se il file non si può scrivere.
bool ScriviPdf(QTextDocument& documento, const QString& percorso);
// Nome proposto per il PDF del documento (senza cartella né estensione).
void ImpostaNomePdf(QTextDocument& documento, const QString& nome);
QString NomePdf(const QTextDocument& documento);
