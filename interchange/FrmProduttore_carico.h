#pragma once
// Carico di una fornitura del ramo conferimenti: la maschera comune dei
// carichi sopra CaricaFornituraConferimenti, col tag "CONF" nel nome del file.

#include "interchange/MascheraCarico.h"

class FrmProduttore_carico : public MascheraCarico {
    Q_OBJECT
public:
    explicit FrmProduttore_carico(QWidget* genitore = nullptr);
};
