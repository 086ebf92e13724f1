#pragma once
// Bolle di consegna della fattura aperta in FrmFattura, in due facce: la
// griglia delle bolle e il dettaglio di una bolla. Ogni bolla si scrive
// subito in BOLLE; è FrmFattura che alla fine tiene o annulla l'insieme.
// Dalla fattura riceve la chiave e la quantità distillata; le restituisce
// la prima data di consegna quando si esce dalla griglia.

#include "common/SchermataRecord.h"

#include <optional>

class ModelloLista;
class QGroupBox;
class QTableView;

class frmBolleConsegne : public SchermataRecord {
    Q_OBJECT

public:
    explicit frmBolleConsegne(QWidget* genitore = nullptr);
    ~frmBolleConsegne() override;

    // "0" per una fattura non ancora salvata, altrimenti il suo ID_FATTURA.
    void ImpostaIdFatturaBolle(const QString& id);
    QString IdFatturaBolle() const { return m_idFatturaBolle; }
    // Il testo della quantità distillata della fattura (il limite della somma).
    void ImpostaQuantitaDistillata(const QString& quantita) { m_distillata = quantita; }
    // La prima data di consegna, scritta quando si esce dalla griglia
    // ("" se non ci sono bolle); nessun valore se non si è usciti così.
    std::optional<QString> DataIntroduzione() const { return m_dataIntroduzione; }

    // Indice del primo campo che non va, 0 se vanno tutti.
    int CONTROLLACAMPI();
    // Vero: la faccia della griglia; falso: quella del dettaglio.
    void MostraGriglia(bool griglia);
    // Somma delle altre bolle della fattura, tolta la bolla idBolla.
    void SommaBolle(qint64 idBolla);
    double SommaAltreBolle() const { return m_sommaAltreBolle; }

    ArrayControlli<QGroupBox> fraGriglia;
    QTableView* tdbgBolle = nullptr;

protected:
    QString Didascalia() const override;
    // Nessun record da riempire: le bolle si leggono dalla chiave della fattura.
    bool DaRiempire() const override { return false; }
    QString EtichettaErrore(const QString& routine) const override;
    // Niente aiuto su questa maschera: il pulsante 2 è "Esci".
    void TastoF1() override {}
    bool TxtDati_Validate(int indice) override;
    void Cmddati_Click(int indice) override;
    void closeEvent(QCloseEvent* evento) override;

private:
    bool SuGriglia() const;
    void Aggiorna();
    void Modifica();
    void Nuova();
    void Salva();
    void Cancella();
    void Esci();
    int RigaScelta() const;
    int NumeroScelte() const;

    ModelloLista* datBolle = nullptr;
    QString m_idFatturaBolle = QStringLiteral("0");
    QString m_distillata;
    double m_sommaAltreBolle = 0;
    qint64 m_idBollaInModifica = 0;
    std::optional<QString> m_dataIntroduzione;
};
