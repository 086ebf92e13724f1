#include "common/errore.h"

ErroreSistema::ErroreSistema(int numero, QString descrizione)
    : m_numero(numero), m_descrizione(std::move(descrizione)),
      m_what(QStringLiteral("%1 %2").arg(m_numero).arg(m_descrizione).toUtf8())
{
}

ErroreSistema::ErroreSistema(int numero) : ErroreSistema(numero, DescrizioneErrore(numero)) {}

QString DescrizioneErrore(int numero)
{
    using namespace CodiciErrore;
    switch (numero) {
    case Overflow: return QStringLiteral("Overflow");
    case DivisionePerZero: return QStringLiteral("Divisione per zero");
    case TipoNonCorrispondente: return QStringLiteral("Tipo non corrispondente");
    case FileNonTrovatoRuntime: return QStringLiteral("Impossibile trovare il file");
    case DiscoPieno: return QStringLiteral("Disco pieno");
    case AutorizzazioneNegata: return QStringLiteral("Autorizzazione negata");
    case DiscoNonPronto: return QStringLiteral("Disco non pronto");
    case AccessoPercorso: return QStringLiteral("Errore di accesso al percorso/file");
    case PercorsoNonTrovato: return QStringLiteral("Impossibile trovare il percorso");
    case ElementoControlloMancante: return QStringLiteral("L'elemento della matrice di controlli non esiste.");
    case NessunRecordCorrente: return QStringLiteral("Nessun record corrente.");
    case ChiaveDuplicata:
        return QStringLiteral("Impossibile apportare le modifiche richieste: si creerebbero valori "
                              "duplicati nell'indice o nella chiave primaria.");
    case PasswordNonValida: return QStringLiteral("Password non valida.");
    case StampaAnnullata: return QStringLiteral("Stampa annullata dall'utente.");
    default: return QString();
    }
}
