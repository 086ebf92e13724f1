#pragma once
// Domanda della fatturazione: la riga di DOMANDE sotto cui la distilleria
// raccoglie le fatture di una domanda di aiuto. Si apre dalla lista delle
// domande in inserimento ("Nuovo") o in modifica ("Modifica"); non cancella e
// non mostra fatture. Ogni salvataggio rimette la domanda da stampare e da
// scaricare, con la versione 1.

#include "common/SchermataDomanda.h"

class FrmDomanda : public SchermataDomanda {
    Q_OBJECT
public:
    explicit FrmDomanda(QWidget* genitore = nullptr);

    // Codici: 6, 1, 2, 3, 4, 11, 5, 10 in quest'ordine (vedi ControllaDomanda).
    int ControllaCampi() override;
    // 0 inserisce, 1 modifica la riga di "Select * from DOMANDE " + clausola,
    // 2 la cancella, 3 porta DomandaSel nella maschera. Falso dopo un errore
    // (già nel registro).
    bool MetodiDOMANDA(int modo, const QString& clausola);

protected:
    void CaricaAltreCombo() override;
    int CampagnaIniziale() const override;
    void RiempiCampi() override;
    QString Didascalia() const override { return QStringLiteral("Domanda "); }
    bool Scrivi() override;
};
