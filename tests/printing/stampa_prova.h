#pragma once
// Aiuti delle prove di stampa: i modelli dei report copiati nella cartella di
// prova, il testo delle pagine di un PDF letto con pdftotext.

#include "store/database.h"
#include "support/prova.h"

// Copia data/Report/* nella cartella Report/ del programma di prova.
void CopiaModelli(const QString& cartellaProgramma);
// Testo di ogni pagina del PDF (pdftotext -layout), spazi ripetuti ridotti a uno.
QStringList PagineDelPdf(const QString& percorso);

// Fixture: database di prova, modelli copiati, una distilleria.
class ProvaDiStampa : public ProvaConDatabase {
protected:
    void SetUp() override;
    void Distilleria(const QString& cf, const QString& ragione);
    // Domanda con il prodotto 1 e l'articolo "29"; restituisce la chiave.
    qint64 Domanda(const QString& numero, const QString& progressivo, const QString& campagna = QStringLiteral("2005"));
    // Fattura: foglio e rigo, numero, quantità prodotto, imponibile, IVA, totale, quantità distillata.
    // Gli altri campi prendono il posto di quelli di base.
    qint64 Fattura(qint64 domanda, const QString& foglio, const QString& rigo, const QString& numero,
                   const QString& qtaProd, const QString& impo, const QString& iva, const QString& totale,
                   const QString& qtaLavo, const Campi& altri = {});
    void Bolla(qint64 fattura, const QString& numero, const QString& data, const QString& quantita,
               const Campi& altri = {});
    // Ramo conferimenti: domanda del distillatore, certificato UTF, produttore del certificato.
    qint64 DomandaDistillatore(const QString& numero, const Campi& altri = {});
    qint64 Certificato(qint64 domanda, const QString& numero, const Campi& altri = {});
    qint64 Produttore(qint64 certificato, const QString& cf, const QString& nome, const Campi& altri = {});
    // Le righe del registro degli errori, "etichetta|codice".
    QStringList Log() { return Righe(db(), QStringLiteral("SELECT DESC_APPL || '|' || CODI_ERRO FROM LOGERR")); }
    // Pagine dell'ultima anteprima.
    QStringList UltimaAnteprima();
};
