#pragma once

// Registra la maschera del produttore ("FrmProduttore", modale).
void RegistraMaschereProduttore();
