#pragma once
// Motore dei report: prende ciò che prendeva il controllo di stampa (file,
// selezione, formule, database e password, titolo della finestra), compone il
// documento dal modello HTML del file e lo mostra nell'anteprima modale della
// piattaforma. Ogni guasto esce come ErroreSistema con numero e descrizione;
// l'annullamento dell'utente è l'errore 20545.
//
// Il file del report (cartella Report/ del programma) è un modello HTML con:
//   <meta name="query" content="Queryreport">   la query memorizzata da leggere
//   <meta name="ordine" content="A, B">         ordine delle righe (colonne della query)
//   <meta name="salto" content="CAMPO">         pagina nuova quando il campo cambia
//   <meta name="gruppo" content="CAMPO">        testata e piede di gruppo quando cambia
//   <meta name="righe" content="30">            righe al più per pagina (testate e piedi contano uno)
//   <meta name="foglio" content="orizzontale">  A4 orizzontale (altrimenti verticale)
//   <meta name="pdf" content="Bolle_[[DOMANDA]]">  nome proposto per il PDF
// e nel corpo le sezioni, in quest'ordine, tra commenti:
//   <!--PAGINA--> testa della pagina
//     <!--TESTA--> testata di gruppo <!--/TESTA-->
//     <!--RIGA--> riga di dettaglio <!--/RIGA-->
//     <!--PIEDE--> piede di gruppo <!--/PIEDE-->
//   mezzo <!--FINE--> solo sull'ultima pagina <!--/FINE--> coda <!--/PAGINA-->
// Segnaposti: {{NOME}} valore di una formula; [[CAMPO]] campo della riga (nella
// testa della pagina e del gruppo: della loro prima riga); [[#]] numero della
// riga nel suo gruppo; {{SOMMA:CAMPO}} somma del campo nel gruppo (nel piede)
// o in tutto il report, a 4 decimali ({{SOMMA:CAMPO:2}} a 2).
// Pagine e numeri di pagina li disegna common/disegno_documento.

#include <QHash>
#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>
#include <memory>

class QTextDocument;

namespace ErroriReport {
constexpr int FileNonValido = 20507;   // file del report assente o illeggibile
constexpr int FormulaSconosciuta = 20510;
constexpr int ErroreFormula = 20515;   // formula o selezione scritta male, campo sconosciuto
constexpr int ReportNonCaricato = 20525;  // il file non è un modello di report
}  // namespace ErroriReport

// "NOME = 'valore'" oppure "NOME = "valore"".
struct FormulaReport {
    QString nome;
    QString valore;
};
FormulaReport AnalizzaFormula(const QString& testo);

// "{Query.CAMPO} = 'valore' AND ..." (vuota: nessuna condizione).
struct CondizioneSelezione {
    QString query;
    QString campo;
    QString valore;
};
QList<CondizioneSelezione> AnalizzaSelezione(const QString& testo);

// Righe lette dalla query, per nome di colonna.
struct DatiReport {
    QStringList colonne;
    QList<QStringList> righe;
    QHash<QString, QString> formule;  // nome in maiuscolo -> valore
    // Campi fissati dalla selezione: valgono anche quando non c'è nessuna riga.
    QHash<QString, QString> fissi;
};

class ModelloReport {
public:
    // Errori: 20507 file assente o illeggibile, 20525 non è un modello.
    static ModelloReport Leggi(const QString& percorso);
    static ModelloReport DaTesto(const QString& html, const QString& nome);

    QString query() const { return m_query; }
    // Colonne dell'ordine delle righe e, per ciascuna, se è discendente.
    const QStringList& ordinePer() const { return m_ordinePer; }
    const QList<bool>& discendente() const { return m_discendente; }
    bool orizzontale() const { return m_orizzontale; }
    QString titolo() const { return m_titolo; }
    // Nome proposto per il PDF (senza estensione): i campi valgono quando la
    // selezione li fissa o tutte le righe li hanno uguali, altrimenti restano vuoti.
    QString NomePdf(const DatiReport& dati) const;
    // Nomi (in maiuscolo) dei segnaposti di formula e dei campi usati.
    QStringList formule() const;
    QStringList campi() const;
    // HTML del report; solleva 20515 per un campo che la query non ha.
    QString Componi(const DatiReport& dati) const;

private:
    QString m_nome;
    QString m_query, m_ordine, m_salto, m_gruppo, m_titolo, m_pdf;
    QStringList m_ordinePer;
    QList<bool> m_discendente;
    int m_righe = 40;
    bool m_orizzontale = false;
    QString m_prologo, m_testaPagina, m_testaGruppo, m_riga, m_piedeGruppo, m_mezzo, m_fine, m_coda, m_epilogo;
};

// Il documento pronto per l'anteprima (pagina A4 secondo il modello).
std::unique_ptr<QTextDocument> CreaDocumento(const ModelloReport& modello, const QString& html);

// Il controllo di stampa di una maschera: si impostano le proprietà e si
// chiama Action().
class ControlloReport {
public:
    QString ReportFileName;
    QString Connect;            // vuoto: la connessione della sessione
    QStringList DataFiles;      // voce 0: il database
    QString SelectionFormula;
    QMap<int, QString> Formulas;
    QString WindowTitle;

    // Compone e mostra l'anteprima; l'annullamento dell'utente è l'errore 20545.
    void Action();
    // Tutto tranne l'anteprima: il documento composto (per le prove e le misure).
    std::unique_ptr<QTextDocument> Componi();
};

// Cartella Report/ del programma: accanto a database/, madre di PathDatabase.
QString CartellaReport();
