#pragma once
// Errore del sistema: un numero e una descrizione in italiano, come li
// riportava il motore originale. Un'unica eccezione per tutti i sottosistemi.

#include <QByteArray>
#include <QString>
#include <exception>

namespace CodiciErrore {
constexpr int Overflow = 6;
constexpr int DivisionePerZero = 11;
constexpr int TipoNonCorrispondente = 13;
constexpr int FileNonTrovatoRuntime = 53;
constexpr int DiscoPieno = 61;
constexpr int AutorizzazioneNegata = 70;
constexpr int DiscoNonPronto = 71;
constexpr int AccessoPercorso = 75;
constexpr int PercorsoNonTrovato = 76;
// Indice che non c'è in una matrice di controlli (TxtDati, Cmddati, ...).
constexpr int ElementoControlloMancante = 340;
constexpr int NessunRecordCorrente = 3021;
constexpr int ChiaveDuplicata = 3022;
constexpr int FileNonTrovato = 3024;
constexpr int PasswordNonValida = 3031;
constexpr int FileInUso = 3045;
constexpr int ErroreSintassi = 3075;
constexpr int TabellaMancante = 3078;
constexpr int FormatoNonRiconosciuto = 3343;
// Annullamento della stampa da parte dell'utente.
constexpr int StampaAnnullata = 20545;
}  // namespace CodiciErrore

class ErroreSistema : public std::exception {
public:
    ErroreSistema(int numero, QString descrizione);
    // Errore con la descrizione standard del numero.
    explicit ErroreSistema(int numero);

    int numero() const { return m_numero; }
    const QString& descrizione() const { return m_descrizione; }
    const char* what() const noexcept override { return m_what.constData(); }

private:
    int m_numero;
    QString m_descrizione;
    QByteArray m_what;
};

// Descrizione italiana dei numeri d'errore noti ("" se sconosciuto).
QString DescrizioneErrore(int numero);
