#pragma once
// Registra le routine di stampa che il menu principale lancia per nome.
void RegistraStampe();
