#pragma once
// La maschera del cambio di un numero: frmCambioDomanda,
// frmProduttori_CambioDomanda e frmProduttori_CambioUtf sono questa classe
// con la loro variante (CambioNumero.h). Il numero attuale sta bloccato in
// TxtDati(1), il nuovo si batte in TxtDati(2).

#include "common/CambioNumero.h"
#include "common/SchermataRecord.h"

class QGroupBox;

class SchermataCambioNumero : public SchermataRecord {
    Q_OBJECT
public:
    explicit SchermataCambioNumero(GenereCambio genere, QWidget* genitore = nullptr);

    QString NomeMaschera() const override { return m_variante.argomentoHelp; }
    QGroupBox* AFracAMBIO() const { return m_cornice; }

protected:
    void Cmddati_Click(int indice) override;
    // F1 mostra l'aiuto anche dove il pulsante non lo mostra.
    void TastoF1() override { Help(); }
    QString Didascalia() const override { return m_variante.didascalia; }
    // Il numero attuale si scrive nel costruttore, in qualunque modo.
    bool DaRiempire() const override { return false; }
    QString EtichettaErrore(const QString&) const override { return m_variante.etichettaErrore; }

private:
    void Salva();

    const VarianteCambio& m_variante;
    QGroupBox* m_cornice = nullptr;
};
