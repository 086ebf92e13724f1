#pragma once
// Un certificato UTF (TAB_UTF) sotto una domanda del distillatore: cosa la
// distilleria ha lavorato (vino, ettogradi) e cosa ha ottenuto (alcole
// grezzo, neutro, acquavite). Si apre modale dal browser dei certificati con
// ModoMaschera "I" o "M"; la scrittura è MetodiUtf, che non ha bisogno della
// maschera.

#include "common/SchermataRecord.h"

class frmProduttore_Utf : public SchermataRecord {
    Q_OBJECT

public:
    explicit frmProduttore_Utf(QWidget* genitore = nullptr);

    // 0 se tutto va bene; l'indice del primo campo mancante (3..7, 4 è la
    // provincia); 8 se nessuno dei tre prodotti ottenuti è indicato.
    int ControllaCampi();
    // 3 carica la maschera da UtfSel, 4 riempie UtfSel dalla maschera; altri
    // valori non fanno nulla. Errori: ErroreSistema.
    void UTF_CaricaScarica_type(int verso);

    // Argomento dell'aiuto secondo il modo.
    QString NomeHelp() const;

protected:
    void Cmddati_Click(int Index) override;
    QString Didascalia() const override;
    void RiempiCampi() override;
    QString EtichettaErrore(const QString& routine) const override;

private:
    void Form_Load();
    void Salva();
    int Controlli();
};
