#pragma once
// Regole comuni alle due domande (fatturazione e conferimenti): gli articoli
// ammessi per campagna, i confronti di numero e articolo fra DOMANDE e
// DOMANDE_PRODUTTORI, la scrittura della riga. Niente widget: le maschere
// passano i testi.

#include "store/database.h"

#include <QString>
#include <QStringList>
#include <functional>

// Le campagne 2004 e 2005 non hanno l'articolo "30".
bool CampagnaSoloArt29(const QString& campagna);
// Articoli da offrire nella combo per la campagna.
QStringList ArticoliDellaCampagna(const QString& campagna);
// Campagna 2004 o 2005 con articolo "30": il rifiuto 11 di entrambe le maschere.
bool ArticoloNonAmmesso(const QString& campagna, const QString& articolo);
// Numero vuoto o di valore zero (il rifiuto "campo obbligatorio" del numero).
bool NumeroNullo(const QString& testo);

// Etichetta d'errore delle due domande (quella del distillatore usa
// l'etichetta della gemella, come la conosce l'assistenza).
inline const QString EtichettaMetodiDomanda = QStringLiteral("FrmDomanda.MetodiDOMANDA ");

// Tabelle delle domande dei due rami.
namespace TabellaDomande {
inline const QString Fatture = QStringLiteral("DOMANDE");
inline const QString Produttori = QStringLiteral("DOMANDE_PRODUTTORI");
}  // namespace TabellaDomande

// Vero se nella tabella c'è una domanda con quel numero.
bool NumeroGiaPresente(const QString& tabella, const QString& numero);
// Vero se la prima domanda della tabella con quel numero ha un articolo
// diverso: lo stesso numero nei due rami deve avere lo stesso articolo.
bool NumeroDiAltroArticolo(const QString& tabella, const QString& numero, const QString& articolo);

// Campi di FrmDomanda come li legge ControllaCampi.
struct DatiDomanda {
    QString campagna, numero, progressivo, articolo, prodotto;
};
// Codici di FrmDomanda: 6 campagna, 1 numero, 2 progressivo, 3 articolo,
// 4 prodotto, 11 articolo "30" nel 2004/2005, 5 numero già presente (solo in
// inserimento, qualunque progressivo), 10 stesso numero fra le domande del
// distillatore con un altro articolo. 0 se tutto va bene.
int ControllaDomanda(const DatiDomanda& dati, bool inserimento);

struct DatiDomandaProduttore {
    QString campagna, numero, articolo;
};
// Codici di Frmproduttore_Domanda: 4 campagna, 1 numero, 3 articolo, 11, 5
// (solo in inserimento), 10 stesso numero in DOMANDE con un altro articolo.
int ControllaDomandaProduttore(const DatiDomandaProduttore& dati, bool inserimento);

// Scrittura di una domanda sulla riga di "Select * from " + tabella + " " +
// clausola: 0 inserisce, 1 modifica la prima riga (senza righe: "Nessun
// record da aggiornare" e falso), 2 la cancella (senza righe: errore 3021).
// I campi si leggono solo per 0 e 1, prima di scrivere, così un guasto nel
// prepararli non lascia nulla a metà. Falso dopo un errore, già passato a
// ScriviLogErr con l'etichetta delle due maschere.
bool ScriviDomanda(const QString& tabella, const QString& colonnaChiave, int modo, const QString& clausola,
                   const std::function<Campi()>& campi);
