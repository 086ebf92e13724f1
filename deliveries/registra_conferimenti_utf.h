#pragma once
// Registra le maschere dei certificati UTF e dei loro produttori:
// "frmProduttore_Utf", "FrmProduttore_SelezionaProd", "frmProduttoriNoAssociati".

void RegistraMaschereConferimentiUtf();
