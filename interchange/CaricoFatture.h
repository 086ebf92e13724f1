#pragma once
// Carico di una fornitura del ramo fatture: il file intero in memoria, il
// controllo di tutte le domande, e la scrittura di DOMANDE, FATTURE e BOLLE
// solo se nessuna domanda è stata scartata. La fornitura caricata resta in
// TAB_Fornitura, ed è così che un secondo carico dello stesso file è rifiutato.
// Nessun widget: i messaggi passano per la piattaforma, i titoli sono
// TitoloMaschera.
//
// La scrittura sta in una transazione confermata in ogni caso, anche dopo un
// errore: resta quel che è stato scritto, come senza transazione, ma un
// processo interrotto a metà (caduta, corrente) non lascia nulla del carico.

#include "interchange/CaricoComune.h"

#include <QString>

// L'elenco delle fatture tolte a fine carico perché senza data di
// introduzione, accanto al programma.
inline const QString NomeFattureScartate = QStringLiteral("scartati.txt");

// BATTONCARICA sul file dato.
void CaricaFornitura(const QString& percorsoFile);
void CaricaFornitura(const QString& percorsoFile, OsservatoreCarico* osservatore);
