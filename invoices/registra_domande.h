#pragma once
// Le maschere di record della domanda (fatturazione): FrmDomanda e frmCambioDomanda.
void RegistraMaschereDomande();
