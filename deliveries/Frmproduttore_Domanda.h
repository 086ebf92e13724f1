#pragma once
// Domanda del distillatore: la riga di DOMANDE_PRODUTTORI che apre il ramo
// dei conferimenti. Si apre dalla sua lista in inserimento o in modifica; il
// numero non si cambia qui ma con la rinumerazione. La scrittura è
// MetodiDOMANDA_produttori, che lavora sul record di sessione.

#include "common/SchermataDomanda.h"

class Frmproduttore_Domanda : public SchermataDomanda {
    Q_OBJECT
public:
    explicit Frmproduttore_Domanda(QWidget* genitore = nullptr);

    // Codici: 4, 1, 3, 11, 5 (solo in inserimento), 10 (vedi ControllaDomandaProduttore).
    int ControllaCampi() override;
    // 3: dal record di sessione alla maschera; 4: dalla maschera al record.
    void DomandaProduttore_CaricaScarica_type(int verso);

protected:
    void TxtDati_KeyPress(int indice, int& KeyAscii) override;
    int CampagnaIniziale() const override;
    void RiempiCampi() override;
    QString Didascalia() const override { return QStringLiteral("Domanda del distillatore"); }
    void PrimaDiControllare() override;
    bool Scrivi() override;
};
