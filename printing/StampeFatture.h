#pragma once
// Le stampe del ramo fatture: l'elenco delle fatture di una domanda (STAMPA),
// le bolle di una domanda e le bolle di tutte le domande. Il titolo dei
// messaggi è TitoloMaschera; i dati della distilleria si rileggono qui.

#include <QString>

// Elenco fatture della domanda DomandaSel. chiaveCampagna è la chiave della
// campagna della riga scelta (colonna 9 della lista). Vero quando il report è
// andato: solo allora il chiamante segna la domanda come stampata.
bool STAMPA(const QString& chiaveCampagna);

// Bolle di consegna di una domanda, dai campi della riga corrente della lista.
void StampaBolleDomanda(const QString& idDomanda, const QString& domanda, const QString& progressivo,
                        const QString& chiaveCampagna);

// Bolle di tutte le domande, campagna CampagnaCorrente (voce di menu spenta).
void StampaBolleMenu();
