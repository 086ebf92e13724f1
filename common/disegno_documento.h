#pragma once
// Disegno di un report composto su carta o su PDF, una pagina A4 dopo l'altra,
// con "Pagina n di N" in calce. Lo usano l'anteprima e la stampa vera: così
// la carta è uguale a quello che l'utente ha visto.
//
// Il documento dice il foglio con la sua pageSize: A4 in punti tipografici,
// 595 x 842 verticale, 842 x 595 orizzontale. Il corpo è disegnato dentro i
// margini; i salti di pagina del documento (page-break) sono rispettati.

#include <QString>

class QPagedPaintDevice;
class QPrinter;
class QTextDocument;

// Foglio A4 del documento (verticale se pageSize non dice orizzontale).
bool FoglioOrizzontale(const QTextDocument& documento);
// Imposta sul dispositivo il foglio A4 e i margini del documento.
void PreparaFoglio(const QTextDocument& documento, QPagedPaintDevice& dispositivo);
// Disegna tutte le pagine sul dispositivo già preparato. Ridispone il
// documento per la risoluzione del dispositivo.
void DisegnaDocumento(QTextDocument& documento, QPagedPaintDevice& dispositivo);
// Scrive il documento in un file PDF; falso se il file non si può scrivere.
bool ScriviPdf(QTextDocument& documento, const QString& percorso);
// Nome proposto per il PDF del documento (senza cartella né estensione).
void ImpostaNomePdf(QTextDocument& documento, const QString& nome);
QString NomePdf(const QTextDocument& documento);
