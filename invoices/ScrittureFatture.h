#pragma once
// Le scritture della fattura e delle sue bolle, senza maschere: la riga di
// FATTURE, la numerazione in fogli e righe, la copia di riserva delle bolle
// in APPO_BOLLE e il suo ripristino, le bolle della fattura nuova (quelle con
// FK_ID_FATTURA 0), le letture che servono alle tre maschere. Gli errori del
// database escono come ErroreSistema: è la maschera che li registra con la
// sua etichetta.

#include <QString>
#include <optional>

// I campi della maschera che vanno nella riga, come testo.
struct CampiFattura {
    QString CODI_FISC;
    QString DENOMINAZIONE;
    QString NUME_FATT;
    QString DATA_FATT;
    QString DATA_COMP;
    QString DATA_PAGA;
    QString IMPO;
    QString IVA;
    QString IMPO_TOTA;
    QString GRAD;
    QString QTA_PROD;
    QString QTA_LAVO;
    QString PREZ_MINI;
    // Testo della voce del prodotto lavorato: le prime tre lettere sono CODI_LAVO.
    QString Prodotto;
};

namespace ModoFattura {
constexpr int Inserisci = 0;
constexpr int Aggiorna = 1;
constexpr int Cancella = 2;
constexpr int Carica = 3;
}  // namespace ModoFattura

// Modi 0, 1 e 2 di MetodiFatture. Dopo la scrittura la domanda idDomanda
// torna non stampata e non scaricata. Restituisce l'id_fattura della riga
// (la nuova chiave per il modo 0); nessun valore quando il modo 1 non trova
// la fattura, e allora non è cambiato nulla. FOGL e RIGO sono scritti 0:
// li numera iMPO_RIGAFOGLIO subito dopo.
std::optional<qint64> ScriviFattura(int modo, const CampiFattura& campi, qint64 idFattura, qint32 idDomanda);

// Numera FOGL e RIGO di tutte le fatture della domanda: quattro righe per
// foglio, nell'ordine delle chiavi delle fatture.
void iMPO_RIGAFOGLIO(const QString& domanda, const QString& progressivo);

// Copia di riserva delle bolle di una fattura aperta in modifica. Una copia
// rimasta da una caduta del programma viene buttata prima.
void CopiaBolleInAppoggio(qint64 idFattura);
// Butta APPO_BOLLE, se c'è; un errore è ignorato.
void EliminaAppoggioBolle();
// Rimette le bolle della fattura come erano nella copia e butta la copia.
void RipristinaBolle(qint64 idFattura);
// Le bolle della fattura nuova prendono la sua chiave.
void AdottaBolleNuove(qint64 idFattura);
// Le bolle della fattura nuova abbandonata vanno via.
void ScartaBolleNuove();

// Vero se una bolla della fattura, o una bolla non ancora legata a una
// fattura, ha una data di pagamento.
bool PagamentoNelleBolle(qint64 idFattura);

// Somma delle quantità delle bolle della fattura, tolta la bolla idBolla
// (0: nessuna tolta). Nessuna bolla: 0.
double SommaBolle(qint64 idFattura, qint64 idBolla);
// La prima data di consegna delle bolle della fattura, "GG/MM/AAAA"; vuota
// se non ci sono bolle con la data.
QString PrimaDataConsegna(qint64 idFattura);

// Cancella la fattura; se c'era, poi la domanda torna non stampata e non
// scaricata e le bolle della fattura vanno via. Vero se la fattura c'era.
bool EliminaFattura(qint64 idFattura, qint32 idDomanda);
// Totale dei quintali (QTA_PROD) delle fatture della domanda in "##0.0000";
// nessun valore se la domanda non ha fatture.
std::optional<QString> TotaleQuintali(qint32 idDomanda);
