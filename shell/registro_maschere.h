#pragma once
// Punto unico di registrazione delle maschere e delle routine che il menu
// principale apre. Il menu conosce solo i nomi: chi scrive una maschera la
// registra in RegistraMaschereDelSistema() e da quel momento la voce la apre.
// Una voce il cui nome non è registrato imposta operazione e titolo e basta.

#include <QString>
#include <QWidget>
#include <functional>

enum class Apertura {
    FiglioMdi,  // figlia non modale della finestra principale, una sola istanza
    Modale,     // QDialog eseguito con exec() e distrutto alla chiusura
};

// Crea la maschera (il genitore è la finestra principale per le modali,
// nullptr per le figlie MDI, che la finestra principale adotta).
using FabbricaMaschera = std::function<QWidget*(QWidget* genitore)>;

struct MascheraRegistrata {
    FabbricaMaschera fabbrica;
    Apertura apertura = Apertura::FiglioMdi;
};

void RegistraMaschera(const QString& nome, FabbricaMaschera fabbrica, Apertura apertura = Apertura::FiglioMdi);
// Routine senza maschera propria lanciate dal menu.
void RegistraAzione(const QString& nome, std::function<void()> azione);
// nullptr se il nome non è registrato.
const MascheraRegistrata* TrovaMaschera(const QString& nome);
const std::function<void()>* TrovaAzione(const QString& nome);
// Apre la maschera registrata con quel nome come finestra modale (exec) e la
// distrugge alla chiusura, come fa il menu. Falso se il nome non è registrato.
bool ApriMascheraModale(const QString& nome, QWidget* genitore);
// Svuota il registro (per i test).
void AnnullaRegistrazioni();

// Registra tutte le maschere e le routine del programma; la chiama main().
void RegistraMaschereDelSistema();

// Nomi delle routine del menu che non sono maschere.
namespace NomiAzioni {
// Passo di caricamento del menu dopo l'apertura della connessione: legge la
// distilleria e, se manca, mostra frmInizializza.
inline const QString VerificaDistilleria = QStringLiteral("VerificaDistilleria");
// Stampa di tutte le bolle (voce "Stampe Bolle", dichiarata non disponibile).
inline const QString StampaBolleMenu = QStringLiteral("StampaBolleMenu");
}  // namespace NomiAzioni
