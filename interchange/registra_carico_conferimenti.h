#pragma once

// Registra FrmProduttore_carico, che il menu apre per nome.
void RegistraMaschereCaricoConferimenti();
