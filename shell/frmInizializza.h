#pragma once
// Dati della distilleria che usa il programma: codice fiscale o partita IVA,
// ragione sociale, indirizzo. Al primo avvio (DISTILLERIA vuota) è l'unica
// via per lavorare: uscirne senza aver salvato termina il programma. Dal menu
// "Inizializza Distilleria" cambia la riga esistente, cercata con il vecchio
// codice.

#include "common/SchermataRecord.h"

class frmInizializza : public SchermataRecord {
    Q_OBJECT
public:
    explicit frmInizializza(QWidget* genitore = nullptr);

    // Il vettore dei campi di questa maschera, indici 1..3.
    QLineEdit* TxtDISTDati(int indice) const { return TxtDati.value(indice); }

    // 0 se tutto va bene; l'indice del primo campo vuoto; 4 codice fiscale
    // errato, 5 partita IVA errata.
    int ControllaCampi();

protected:
    void Cmddati_Click(int Index) override;
    // La chiusura della finestra vale "Esci".
    void reject() override;

    // I dati della distilleria si mostrano sempre, anche al primo avvio
    // (vuoti), qualunque sia ModoMaschera.
    bool DaRiempire() const override { return true; }
    void RiempiCampi() override;

private:
    void Salva();
};
