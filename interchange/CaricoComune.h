#pragma once
// Ciò che i carichi dei due rami hanno in comune: il percorso di BATTONCARICA
// (copia di lavoro, lettura con il controllo della lunghezza, fornitura già
// caricata, controlli, elenco degli scarti, scrittura, messaggi), l'elenco
// delle domande scartate, la transazione del carico e chi ne mostra
// l'avanzamento. Ogni ramo dà solo quel che lo distingue: tracciato, tabella
// delle forniture caricate, controlli e scrittura.

#include <QList>
#include <QVariantList>
#include <QString>

// Chi mostra l'avanzamento di un carico (la maschera). Le chiamate arrivano
// dal carico stesso, a intervalli, e sono il momento di servire gli eventi.
class OsservatoreCarico {
public:
    virtual ~OsservatoreCarico() = default;
    // Avvia o ferma l'animazione, che riparte dal primo fotogramma.
    virtual void PLAY(bool attiva) = 0;
    virtual void RecordLetti(qint64 numero) = 0;
    virtual void RigheScritte(qint64 numero) = 0;
};

// Il nome della fornitura da cercare: "ART", "29" per le campagne 2004 e
// 2005 ("29-30" per le altre), il ramo ("FAT", "CONF"), la campagna, ".txt".
QString NomeFileFornitura(const QString& tag, const QString& campagna);

// L'elenco delle domande scartate, accanto al programma, nella codifica
// locale del sistema (la stessa con cui MostraTesto lo legge).
inline const QString NomeDomandeScartate = QStringLiteral("Domande_Scartate.txt");

namespace CaricoComune {

using Osservatore = OsservatoreCarico;

// Vero mentre un carico gira: il menu e le altre maschere restano fermi,
// perché nulla entri nella transazione del carico o vada perso con essa.
bool CaricoInCorso();

// Ogni quanti record letti o righe scritte si avvisa l'osservatore.
constexpr qint64 PassoAvanzamento = 2000;

// Una riga dell'elenco degli scarti.
struct Scarto {
    QString Domanda;
    QString Progressivo;
    QString Fattura;  // nel ramo conferimenti il certificato, quando c'è
    QString Motivo;
    QString Bolla;  // tenuta, ma non scritta nell'elenco
};

// Il testo di Domande_Scartate.txt: per ogni scarto domanda, progressivo,
// fattura e motivo a larghezza fissa, seguiti da una riga vuota.
QString TestoScarti(const QList<Scarto>& scarti);

// Transazione di un carico, confermata in ogni caso, anche dopo un errore
// del carico: resta quel che è stato scritto, come senza transazione, ma un
// processo interrotto a metà non lascia nulla del carico. Una conferma che
// fallisce non lascia nulla del carico e dà l'errore; uscendo senza conferma
// (un'eccezione in mezzo) si conferma lo stesso, tacendo un fallimento che
// l'errore già in corso basta a riportare.
class TransazioneConfermata {
public:
    TransazioneConfermata();
    ~TransazioneConfermata();
    TransazioneConfermata(const TransazioneConfermata&) = delete;
    TransazioneConfermata& operator=(const TransazioneConfermata&) = delete;
    void Conferma();

private:
    bool m_aperta = true;
};

// BATTONCARICA: il percorso comune. Un ramo deriva e riempie i passi suoi.
class CaricoFornitura {
public:
    explicit CaricoFornitura(Osservatore* osservatore) : m_osservatore(osservatore) {}
    virtual ~CaricoFornitura() = default;
    CaricoFornitura(const CaricoFornitura&) = delete;
    CaricoFornitura& operator=(const CaricoFornitura&) = delete;

    void BATTONCARICA(const QString& percorsoFile);

protected:
    virtual int LunghezzaRecord() const = 0;
    // Liste e contatori del tracciato vuoti.
    virtual void Azzera() = 0;
    // Una riga del file; il tipo letto, -1 per una riga saltata.
    virtual int LeggiRiga(const QString& riga) = 0;
    // Dopo il record 0: vero se la stessa fornitura è già stata caricata.
    virtual bool GiaCaricata() = 0;
    virtual qint32 NumeroDomandeLette() const = 0;
    // Riempie gli scarti; falso ferma il carico.
    virtual bool Controllodati() = 0;
    // Scrive le domande, dentro la transazione del carico. Conta ogni riga
    // principale scritta con RigaScritta.
    virtual bool AllineaDB() = 0;

    // "select * from " tabella condizione: vero se trova una riga.
    bool ctrlCloni(const QString& tabella, const QString& condizione, const QVariantList& parametri);
    void ValoreScarto(const QString& motivo, const QString& domanda, const QString& progressivo = QString(),
                      const QString& fattura = QString(), const QString& bolla = QString());
    void RigaScritta();

private:
    void ScriviNote();
    void PLAY(bool attiva);

    Osservatore* m_osservatore;
    QList<Scarto> m_scarti;
    qint64 m_scritte = 0;
};

}  // namespace CaricoComune
