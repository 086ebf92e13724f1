#pragma once
// Maschera di una fattura della domanda scelta: fornitore, quantità, grado,
// prezzo, importi e date. Qui si controllano i conti della fattura, si
// entra nelle sue bolle di consegna, e ogni salvataggio toglie alla domanda
// la stampa e lo scarico e rinumera le fatture in fogli e righe.

#include "common/SchermataRecord.h"
#include "invoices/ScrittureFatture.h"

class QGroupBox;

class FrmFattura : public SchermataRecord {
    Q_OBJECT

public:
    explicit FrmFattura(QWidget* genitore = nullptr);
    ~FrmFattura() override;

    QPushButton* CmdTrovadenominazione = nullptr;

    // 0 quando si può salvare; altrimenti l'indice del campo in errore, più
    // 100 per un valore errato o una domanda a cui si è risposto No.
    int ControllaCampi();
    // 0 inserisce, 1 aggiorna, 2 cancella la fattura; 3 porta FatturaSel nei campi.
    void MetodiFatture(int modo);
    // Id della riga scritta per ultima.
    qint64 IdFattura() const { return m_idFattura; }

    QString NomeMaschera() const override;

protected:
    QString Didascalia() const override;
    bool DaRiempire() const override;
    void RiempiCampi() override;
    QString EtichettaErrore(const QString& routine) const override;
    void TxtDati_KeyPress(int indice, int& KeyAscii) override;
    void Cmddati_Click(int indice) override;
    void closeEvent(QCloseEvent* evento) override;

private:
    bool InModifica() const;
    void Salva();
    void Esci();
    void Bolle();
    void TrovaDenominazione();
    void Normalizza();
    void MostraEsito(int codice);
    QString Testo(int indice) const;

    QGroupBox* Frame1 = nullptr;
    QGroupBox* Frame2 = nullptr;
    qint64 m_idFattura = 0;
};
