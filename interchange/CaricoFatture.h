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

#include <QString>

// Chi mostra l'avanzamento di un carico (la maschera). Le chiamate arrivano
// dal carico stesso, a intervalli, e sono il momento di servire gli eventi.
class OsservatoreCarico {
public:
    virtual ~OsservatoreCarico() = default;
    // Avvia o ferma l'animazione, che riparte dal primo fotogramma.
    virtual void PLAY(bool attiva) = 0;
    virtual void RecordLetti(qint64 numero) = 0;
    virtual void FattureScritte(qint64 numero) = 0;
};

// Il nome della fornitura da cercare: "ART", "29" per le campagne 2004 e
// 2005 ("29-30" per le altre), il ramo ("FAT", "CONF"), la campagna, ".txt".
QString NomeFileFornitura(const QString& tag, const QString& campagna);

// Elenchi degli scarti accanto al programma. Sono scritti nella codifica
// locale del sistema (UTF-8 su Linux, la pagina ANSI su Windows), la stessa
// con cui MostraTesto li legge.
inline const QString NomeDomandeScartate = QStringLiteral("Domande_Scartate.txt");
inline const QString NomeFattureScartate = QStringLiteral("scartati.txt");

// BATTONCARICA sul file dato.
void CaricaFornitura(const QString& percorsoFile);
void CaricaFornitura(const QString& percorsoFile, OsservatoreCarico* osservatore);
