#pragma once
// Registra le due maschere elenco delle domande (FrmSelezione e
// FrmProduttori_Selezione), figlie MDI della finestra principale.
void RegistraListeDomande();
