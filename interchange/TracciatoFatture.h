#pragma once
// Tracciati della fornitura del ramo fatture, 260 caratteri per record.
//
// In uscita (scarico di una domanda): record 0 testata, 1 fattura, 2 bolla,
// 9 coda. In entrata (carico di una fornitura con più domande): record 0
// identità della fornitura, 1 domanda, 2 fattura, 3 bolla; ogni altro tipo è
// saltato. I due tracciati sono diversi di proposito (tipi, ordine dei campi,
// forme delle date e dei decimali): un file scaricato non si ricarica così.

#include "interchange/RigaDati.h"
#include "shell/session_state.h"

#include <QDate>
#include <QList>
#include <QString>

namespace TracciatoFatture {

constexpr int LunghezzaRecord = 260;

// Scrittura dei record di uno scarico. Chi scarica conta i record: aggiunge 1
// al contatore e poi scrive il record, così la coda riporta i conteggi.
class Scarico {
public:
    QString NumeroScarico;   // PROG di PROG_DSK più 1, col formato "000"
    qint32 ContaFatture = 0; // record 1 scritti
    qint32 ContaBolle = 0;   // record 2 scritti
    QDate DataScarico;       // non valida: la data di sistema

    // Testata: numero dello scarico, DistilleriaDati e DomandaSel della sessione.
    QString TRACCIATO_0() const;
    QString TRACCIATO_0(const DatiDistilleria& distilleria, const DomandaSelezionata& domanda) const;
    // Una fattura dalla riga della query SCARICO; il codice fiscale della
    // distilleria viene da DistilleriaDati.
    QString TRACCIATO_1(const RigaDati& riga) const;
    QString TRACCIATO_1(const RigaDati& riga, const DatiDistilleria& distilleria) const;
    // Una bolla dalla riga della query SCARICO2 (data di pagamento BOLLE.DATA_PAGA).
    QString TRACCIATO_2(const RigaDati& riga) const;
    // Coda con i due conteggi; dopo, il contatore delle fatture torna a 0.
    QString TRACCIATO_9();
};

// Strutture di lavoro del carico. Le liste partono da 1: l'elemento 0 resta vuoto.
struct FatturaCarico {
    QString CODI_FISC;
    QString NUME_FATT;
    QString DENOMINAZIONE;
    QString DATA_FATT;
    QString QTA_PROD;
    QString GRAD;
    QString PREZ_MINI;
    QString IMPO;
    QString IVA;
    QString IMPO_TOTA;
    QString DATA_PAGA;
    QString QTA_LAVO;
    QString ID_LAVORAZIONE;  // riempito dal controllo
    QString CODI_LAVO;
    QString DOMANDA;
    QString PROGRESSIVO;
};

struct BollaCarico {
    QString NUME_FATT;
    QString CODI_FISC;
    QString NUMERO_BOLLA;
    QString DATA_CONSEGNA;
    QString QUANTITA_PRODOTTO;
    QString DATA_PAGA;
    QString GRADO;
    QString DOMANDA;
    QString PROGRESSIVO;
};

struct DomandaCarico {
    QString DOMANDA;
    QString TIPO_ARTICOLO;
    QString PROGRESSIVO;
    QString ID_VARIETA;  // riempito dal controllo
    QString CODI_PROD;
    QList<FatturaCarico> Fatture{FatturaCarico{}};
    QList<BollaCarico> Bolle{BollaCarico{}};
};

struct IntestazioneCarico {
    QString CAMPAGNA;
    QString Numero_domaNDe;
    QString Numero_fatture;
    QString Numero_bolle;
    QString Data_forniturE;
    QString PROGRESSIVO_fornitura;
};

// Lettura dei record di una fornitura in entrata. I campi di testo sono presi
// come stanno nella riga, spazi in coda compresi.
//
// Le bolle appartengono alla domanda, non alla fattura che le precede: un
// record 2 riporta a zero l'indice delle bolle della domanda, e un record 3
// scrive all'indice seguente accorciando la lista a quell'indice. Se fatture
// e bolle si alternano, le bolle dopo l'ultima fattura prendono il posto
// delle prime e le altre si perdono. È il comportamento voluto: l'ordine che
// non perde nulla è domanda, tutte le sue fatture, tutte le sue bolle.
class Carico {
public:
    IntestazioneCarico Fornitura;
    QList<DomandaCarico> Domande{DomandaCarico{}};
    qint32 NumeroDomande = 0;  // domande lette
    qint32 NumeroFatture = 0;  // fatture della domanda aperta
    qint32 IndiceBolla = 0;    // indice delle bolle della domanda aperta

    // Liste e contatori vuoti, come all'inizio di un carico.
    void Azzera();

    // Una riga del file: aggiorna i contatori secondo il tipo (primo
    // carattere) e chiama il Tipo_ corrispondente. Restituisce il tipo letto,
    // da 0 a 3, oppure -1 per una riga saltata (ogni altro tipo).
    int LeggiRiga(const QString& riga);

    void Tipo_0(const QString& riga);
    // Riempie la domanda numero NumeroDomande, con le liste vuote.
    void Tipo_1(const QString& riga);
    // Riempie la fattura NumeroFatture della domanda aperta.
    void Tipo_2(const QString& riga);
    // Riempie la bolla IndiceBolla della domanda aperta e accorcia lì la lista.
    void Tipo_3(const QString& riga);

private:
    DomandaCarico& DomandaAperta(const QString& tipo);
};

}  // namespace TracciatoFatture
