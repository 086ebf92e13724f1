#pragma once
// Tracciati della fornitura del ramo conferimenti, 300 caratteri per record.
//
// In uscita (scarico di una domanda del distillatore): record 0 testata, per
// ogni certificato UTF il suo record 1 seguito dai record 2 dei produttori,
// record 9 coda con i totali. In entrata: record 0 identità della fornitura,
// 1 domanda, 2 certificato, 3 produttore; il 9 e ogni altro tipo sono saltati.
// Certificato e produttore stanno alle stesse posizioni nei due versi, ma con
// un altro tipo e una coda diversa del produttore: il file scaricato non si
// ricarica così com'è.

#include "interchange/RigaDati.h"
#include "shell/session_state.h"

#include <QDate>
#include <QHash>
#include <QList>
#include <QPair>
#include <QString>
#include <optional>

namespace TracciatoConferimenti {

constexpr int LunghezzaRecord = 300;
// La coda di una domanda senza totali si ferma qui.
constexpr int LunghezzaCodaSenzaTotali = 43;

// Totali di una domanda per la coda, dalle due query sul numero di domanda.
struct TotaliDomanda {
    double T_aIUTO_NEUTRO = 0;
    double t_AIUTO_GREZZO = 0;
    double T_AIUTO_ACQUAVITE = 0;
    double t_DETRA = 0;
    QString ANTICIPO_RICEVUTO;  // della prima riga della seconda query
};

// Le due query dei totali per il numero di domanda, sul database della
// sessione. Vuoto quando la seconda non trova righe.
std::optional<TotaliDomanda> LeggiTotali(const QString& domanda);

// Scrittura dei record di uno scarico. Chi scarica conta i record: aggiunge 1
// al contatore e poi scrive il record.
class Scarico {
public:
    QString NumeroScarico;         // PROG di PROG_DSK più 1, col formato "000"
    qint32 ContaCertificati = 0;   // record 1 scritti
    qint32 ContaProduttori = 0;    // record 2 scritti
    QString DomandaRicordata;      // numero di domanda dell'ultimo record 1
    QString UltimoRecord1;         // l'ultimo record 1, per i record 2 che lo seguono
    QDate DataScarico;             // non valida: la data di sistema

    // Testata con DistilleriaDati della sessione.
    QString TRACCIATO_0() const;
    QString TRACCIATO_0(const DatiDistilleria& distilleria) const;
    // Un certificato dalla riga della lista dei certificati; ricorda il numero
    // di domanda e la riga scritta.
    QString TRACCIATO_1(const RigaDati& riga);
    // Un produttore del certificato, con i valori ricordati dal record 1.
    QString TRACCIATO_2(const RigaDati& riga) const;
    // Coda con i totali letti dal database per la domanda ricordata; dopo, il
    // contatore dei certificati torna a 0.
    QString TRACCIATO_9();
    // La stessa con i totali dati; senza totali la riga è di 43 caratteri.
    QString TRACCIATO_9(const std::optional<TotaliDomanda>& totali);
};

// Strutture di lavoro del carico. Le liste partono da 1: l'elemento 0 resta
// vuoto. Domanda, certificato e produttore hanno i campi dei record di
// sessione che il carico passa poi ai metodi di scrittura.
struct CertificatoCarico {
    UtfSelezionato Utf;  // iD_UTF e iD_DOMANDA non sono mai riempiti
    QList<ProduttoreSelezionato> Produttori{ProduttoreSelezionato{}};
};

struct DomandaCarico {
    DomandaProduttoreSelezionata Domanda;  // solo DOMANDA, TIPO_ARTICOLO, ANTICIPO_RICEVUTO
    QList<CertificatoCarico> Certificati{CertificatoCarico{}};
};

struct IntestazioneCarico {
    QString Distilleria_CODI_FISC;
    QString Distilleria_RAGI_SOCI;
    QString Campagnafornitura;
    QString Numero_versione;
    QString Data_forniture;
    QString PROGRESSIVO_fornitura;
    QString ARTICOLO;
    QString QUADRATURA;  // va in ogni certificato letto dopo
    QString CAMPAGNA;    // i primi quattro caratteri della campagna, per ogni domanda
};

// Lettura dei record di una fornitura in entrata. Ogni certificato ha la sua
// lista di produttori: qui nulla si perde se i record si alternano.
// Tipo_2 e Tipo_3 cercano provincia e colore nel database della sessione
// mentre leggono; un codice sconosciuto lascia vuoti i campi che ne dipendono.
class Carico {
public:
    IntestazioneCarico Fornitura;
    QList<DomandaCarico> Domande{DomandaCarico{}};
    qint32 NumeroDomande = 0;      // domande lette
    qint32 NumeroCertificati = 0;  // certificati della domanda aperta
    qint32 NumeroProduttori = 0;   // produttori del certificato aperto

    // Liste e contatori vuoti, come all'inizio di un carico.
    void Azzera();

    // Una riga del file: aggiorna i contatori secondo il tipo (primo
    // carattere) e chiama il Tipo_ corrispondente. Restituisce il tipo letto,
    // da 0 a 3, oppure -1 per una riga saltata (il 9 e ogni altro tipo).
    int LeggiRiga(const QString& riga);

    void Tipo_0(const QString& riga);
    // Riempie la domanda numero NumeroDomande, con la lista vuota.
    void Tipo_1(const QString& riga);
    // Riempie il certificato NumeroCertificati della domanda aperta.
    void Tipo_2(const QString& riga);
    // Riempie il produttore NumeroProduttori del certificato aperto.
    void Tipo_3(const QString& riga);

private:
    DomandaCarico& DomandaAperta(const QString& tipo);
    // Le tabelle di riferimento non cambiano durante un carico: ogni codice
    // si cerca una volta sola.
    QPair<QString, QString> Provincia(const QString& sigla);
    QString Colore(const QString& codice);
    QHash<QString, QPair<QString, QString>> m_province;
    QHash<QString, QString> m_colori;
};

}  // namespace TracciatoConferimenti
