#pragma once
// Carico di una fornitura del ramo fatture: la maschera comune dei carichi
// sopra CaricaFornitura, col tag "FAT" nel nome del file.

#include "interchange/MascheraCarico.h"

class frmCarico : public MascheraCarico {
    Q_OBJECT
public:
    explicit frmCarico(QWidget* genitore = nullptr);
};
