#pragma once
// Registra le maschere delle fatture e delle bolle.
void RegistraMaschereFatture();
