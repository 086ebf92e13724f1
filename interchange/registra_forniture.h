#pragma once
// Registra le maschere delle forniture: "frmScarico" e
// "frmProduttori_Scarico" (aperte per nome dalle liste delle domande dei due
// rami) e "frmCarico" (voce "Carico fornitura").
void RegistraMaschereForniture();
