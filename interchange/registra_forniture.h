#pragma once
// Registra le maschere delle forniture: "frmScarico" (aperta per nome dalla
// lista delle domande) e "frmCarico" (voce "Carico fornitura").
void RegistraMaschereForniture();
