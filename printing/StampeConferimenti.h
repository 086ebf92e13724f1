#pragma once
// Le stampe del ramo conferimenti: il riepilogo della domanda del distillatore
// e il certificato UTF, sulla riga scelta nella lista delle domande.

#include <QString>

// Ciò che le due stampe leggono dalla lista: quante righe sono selezionate e i
// campi della riga corrente.
struct RigaStampaConferimenti {
    int righeSelezionate = 0;
    QString domanda;                // campo "Domanda"
    QString certificato;            // campo "TAB_UTF.NUMERO_CERTIFICATO_UTF" (solo StampaUTF)
    QString idDomandaProduttore;    // campo "ID_DOMANDA_PRODUTTORE"
    QString chiaveCampagna;         // colonna in posizione 8
    QString didascaliaMaschera;     // titolo dei messaggi della maschera
};

// Rifanno le query memorizzate delle due stampe (sqlReportDomandaPeroduttore,
// sqlReportUTF) sul numero dato. Un guasto va nel registro e l'esito resta
// vero: la stampa proverà sulla query com'è.
bool rsCreaQueryStampaProduttore(const QString& domanda);
bool rsCreaQueryStampaUTF(const QString& domanda, const QString& certificato);

// Vero quando la domanda è stata segnata come stampata: la lista va ricaricata.
bool StampaDomandaProduttore(const RigaStampaConferimenti& riga);
void StampaUTF(const RigaStampaConferimenti& riga);
