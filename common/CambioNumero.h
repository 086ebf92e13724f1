#pragma once
// Cambio di un numero già dato: la domanda della fatturazione, la domanda del
// distillatore e il certificato UTF. Le tre maschere sono una sola
// (SchermataCambioNumero); qui stanno, come dati, le loro differenze e il
// salvataggio senza widget: controlli, aggiornamento, segni di stampa e di
// scarico rimessi a "N".

#include <QString>
#include <QVariantList>
#include <functional>

enum class EsitoCambio {
    NumeroMancante,     // nuovo numero vuoto (o zero, per le domande)
    NumeroNonCorretto,  // lunghezza diversa da 11
    GiaEsistente,
    Eseguito,
    NonEseguito,        // nessuna riga aggiornata
};

enum class GenereCambio { Domanda, DomandaProduttore, CertificatoUtf };

struct VarianteCambio {
    GenereCambio genere;
    QString nomeMaschera;
    QString didascalia;  // titolo della finestra
    QString cornice;     // titolo del riquadro dei due campi
    QString etichettaVecchio, tooltipVecchio;
    QString etichettaNuovo, tooltipNuovo;
    int lunghezzaVecchio = 11;
    int lunghezzaNuovo = 11;
    // Numero di domanda: solo cifre e zeri a sinistra fino a 11 uscendo dal
    // campo; altrimenti maiuscole e caratteri ammessi, nessuna riscrittura.
    bool numeroDomanda = true;
    QString argomentoHelp;
    // frmCambioDomanda: il pulsante Help imposta solo l'argomento, F1 mostra l'aiuto.
    bool pulsanteHelpMuto = false;
    QString etichettaErrore;
    // Testi degli esiti, nell'ordine di EsitoCambio.
    QString testoMancante, testoNonCorretto, testoEsistente;
};

const VarianteCambio& Variante(GenereCambio genere);

// Il numero attuale, dal record di sessione della variante.
QString NumeroAttuale(GenereCambio genere);

// Controlli e aggiornamento sulle righe in mano alla sessione (DomandaSel,
// DomandaProduttoreSel, UtfSel). Un errore del database esce come
// ErroreSistema e il certificato non resta cambiato a metà.
EsitoCambio CambiaNumero(GenereCambio genere, const QString& vecchio, const QString& nuovo);

// Testo del messaggio di un esito per la variante.
QString TestoEsito(const VarianteCambio& variante, EsitoCambio esito);
