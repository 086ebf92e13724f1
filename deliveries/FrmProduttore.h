#pragma once
// Maschera di un produttore sotto un certificato UTF (caption "Produttori"):
// si apre dal certificato in modo "I" o "M" con DomandaProduttoreSel,
// UtfSel e ProduttoreSel riempiti. Il calcolo delle quote e degli aiuti è
// CalcoloAiuti, che lavora su una copia dei testi dei campi.

#include "common/SchermataRecord.h"
#include "deliveries/CalcoloAiuti.h"

#include <QMap>

class QCheckBox;
class QGroupBox;

class FrmProduttore : public SchermataRecord {
    Q_OBJECT

public:
    explicit FrmProduttore(QWidget* parent = nullptr);

    // 3 porta ProduttoreSel nella maschera, 4 riempie ProduttoreSel.
    void Produttore_CaricaScarica_type(int verso);
    // 0, o il codice del primo campo che non va (100 in più per un valore errato).
    int ControllaCampi();

    QCheckBox* chkApprovazioneAnticipata = nullptr;
    QGroupBox* Fra29 = nullptr;
    QPushButton* Cmdcalcolo = nullptr;
    QPushButton* CmdTrovadenominazione = nullptr;

protected:
    void TxtDati_KeyPress(int indice, int& KeyAscii) override;
    bool TxtDati_Validate(int indice) override;
    void Cmddati_Click(int indice) override;
    QString EtichettaErrore(const QString& routine) const override;
    QString Didascalia() const override;
    void RiempiCampi() override;

private:
    void CostruisciCampi();
    void Salva();
    void Cmdcalcolo_Click();
    void CmdTrovadenominazione_Click();
    // CtrlQuantita dalla validazione di un campo: solo il messaggio e Salva.
    void CtrlQuantita(int indice, int cifre);
    // I testi dei campi passano al calcolo e tornano indietro, con lo stato di Salva.
    void VersoCalcolo();
    void DalCalcolo();

    QMap<int, QString> m_testi;
    CalcoloAiuti m_calcolo{m_testi};
};
