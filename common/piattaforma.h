#pragma once
// Unico punto da cui il programma parla all'utente e al sistema operativo:
// messaggi, domande, scelta di una cartella, visualizzatore di testo, beep,
// clessidra e fine immediata del processo. Nessuna maschera usa QMessageBox
// direttamente: i test installano un'implementazione a copione.

#include <QString>
#include <memory>

class QTextDocument;

// Stili dei messaggi (si sommano: pulsanti + icona + pulsante predefinito).
namespace StileMsg {
constexpr int OK = 0;
constexpr int OKAnnulla = 1;
constexpr int InterrompiRiprovaIgnora = 2;
constexpr int SiNoAnnulla = 3;
constexpr int SiNo = 4;
constexpr int RiprovaAnnulla = 5;
constexpr int Critico = 16;
constexpr int Domanda = 32;
constexpr int Esclamativo = 48;
constexpr int Informazione = 64;
constexpr int SecondoPredefinito = 256;
}  // namespace StileMsg

// Risposte di MsgBox.
namespace RispostaMsg {
constexpr int OK = 1;
constexpr int Annulla = 2;
constexpr int Interrompi = 3;
constexpr int Riprova = 4;
constexpr int Ignora = 5;
constexpr int Si = 6;
constexpr int No = 7;
}  // namespace RispostaMsg

class Piattaforma {
public:
    virtual ~Piattaforma() = default;
    // titolo vuoto: il titolo predefinito del programma.
    virtual int MsgBox(const QString& testo, int stile, const QString& titolo) = 0;
    // "" se l'utente annulla.
    virtual QString SfogliaCartella(const QString& titolo) = 0;
    virtual void MostraTesto(const QString& percorso) = 0;
    virtual void Beep() = 0;
    virtual void Clessidra(bool attiva) = 0;
    // Non ritorna: termina il processo (nei test solleva un'eccezione).
    [[noreturn]] virtual void TerminaProcesso() = 0;
    // Anteprima modale di un report composto, da cui l'utente stampa o salva
    // un PDF: RispostaMsg::OK quando la chiude, RispostaMsg::Annulla se annulla.
    virtual int AnteprimaStampa(QTextDocument& documento, const QString& titolo) = 0;
};

// Sostituisce l'implementazione in uso (la precedente viene distrutta).
void ImpostaPiattaforma(std::unique_ptr<Piattaforma> nuova);
Piattaforma& piattaforma();

// Titolo predefinito dei messaggi senza titolo proprio.
QString TitoloPredefinito();

int MsgBox(const QString& testo, int stile = StileMsg::OK, const QString& titolo = QString());
QString SfogliaCartella(const QString& titolo);
void MostraTesto(const QString& percorso);
void Beep();
void Clessidra(bool attiva);
[[noreturn]] void TerminaProcesso();
int AnteprimaStampa(QTextDocument& documento, const QString& titolo);

// Implementazione di produzione, sopra Qt Widgets.
std::unique_ptr<Piattaforma> CreaPiattaformaQt();
