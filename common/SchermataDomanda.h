#pragma once
// Base delle due maschere di una domanda: FrmDomanda (fatturazione) e
// Frmproduttore_Domanda (conferimenti). In comune hanno la campagna
// cboDomanda(0), il numero TxtDati(1) (bloccato in modifica), l'articolo
// cboDomanda(3) con la regola degli articoli per campagna, il caricamento, il
// salvataggio che trasforma il codice di ControllaCampi in messaggio e fuoco,
// e l'aiuto per modo.

#include "common/RegoleDomanda.h"
#include "common/SchermataRecord.h"

#include <QList>

class SchermataDomanda : public SchermataRecord {
    Q_OBJECT
public:
    // 0 se tutto va bene, altrimenti il codice del rifiuto.
    virtual int ControllaCampi() = 0;

protected:
    explicit SchermataDomanda(QWidget* genitore);

    // Un rifiuto di ControllaCampi: testo (tooltip del controllo + coda, o
    // testo fisso), titolo e controllo che riceve il fuoco.
    struct Rifiuto {
        int codice;
        QWidget* controllo;
        QString coda;        // dopo il tooltip del controllo
        QString testoFisso;  // al posto di tooltip + coda
        bool titoloBreve;    // "Salvataggio " senza il titolo della maschera
        bool mutoInModifica = false;  // in modifica solo il fuoco
    };
    void AggiungiRifiuto(const Rifiuto& rifiuto) { m_rifiuti << rifiuto; }

    // Controlli comuni, nell'ordine in cui la maschera li vuole a video.
    void AggiungiCampagna();
    void AggiungiNumero(const QString& tag, const QString& etichetta, const QString& tooltip);
    void AggiungiArticolo(const QString& etichetta);

    bool Inserimento() const;
    QComboBox* Campagna() const { return cboDomanda.value(0); }
    QComboBox* Articolo() const { return cboDomanda.value(3); }

    // Passo di caricamento: pulizia, combo, campagna iniziale, numero
    // bloccato in modifica, poi il caricamento comune (posizione, titolo e,
    // in modifica, i campi dal record di sessione).
    void Form_Load();
    // Riempie le combo proprie della maschera (dopo l'articolo, prima della campagna).
    virtual void CaricaAltreCombo() {}
    // Indice della campagna da scegliere all'apertura.
    virtual int CampagnaIniziale() const = 0;
    // Modifica: i campi dal record di sessione.
    void RiempiCampi() override = 0;
    // Il titolo è quello della maschera, non quello della voce di menu.
    QString Didascalia() const override = 0;
    // Le due maschere hanno una sola etichetta d'errore, quella della scrittura.
    QString EtichettaErrore(const QString& routine) const override;

    // Salva: prepara i campi, controlla, scrive; chiude solo se la scrittura riesce.
    void Salva();
    virtual void PrimaDiControllare() {}
    virtual bool Scrivi() = 0;

    // 0 salva, 2 apre l'aiuto: "FRMDOMANDA_MOD" in modifica, "FRMDOMANDA_INS" altrimenti.
    void Cmddati_Click(int indice) override;

    // Sceglie la voce con quel testo; senza una voce uguale la combo resta senza scelta.
    static void ImpostaTesto(QComboBox* combo, const QString& testo);
    // L'articolo del record: se la lista di ora non lo offre resta da parte,
    // e la prossima lista degli articoli lo riprende se lo contiene.
    void ImpostaArticolo(const QString& testo);

private:
    // Clic sulla campagna: gli articoli ammessi per quella campagna.
    void RegolaArticoli();
    void MostraRifiuto(int codice);

    QList<Rifiuto> m_rifiuti;
    QString m_articoloDaParte;
};

