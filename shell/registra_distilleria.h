#pragma once
// Registrazione nel menu delle maschere della distilleria, della versione,
// dell'aiuto e del registro errori, e del controllo della distilleria al
// caricamento del menu. La chiama RegistraMaschereDelSistema().
void RegistraMaschereDistilleria();

// Nomi con cui il menu apre queste maschere.
namespace NomiMaschere {
inline constexpr char Inizializza[] = "frmInizializza";
inline constexpr char About[] = "frmAbout";
inline constexpr char Help[] = "FrmHelp";
inline constexpr char RegistroErrori[] = "frmRegistroErrori";
}  // namespace NomiMaschere
