#pragma once
// Piattaforma a copione per i test: registra ogni messaggio (testo, stile,
// titolo), risponde da una coda e trasforma la fine del processo in
// un'eccezione. Un messaggio con la coda vuota fa fallire il test, a meno che
// il test non lo abbia permesso con AccettaMessaggiSenzaRisposta().

#include "common/piattaforma.h"

#include <QQueue>
#include <QString>
#include <QStringList>
#include <functional>

struct MessaggioRegistrato {
    QString testo;
    int stile = 0;
    QString titolo;
};

// Un'anteprima di stampa: il titolo della finestra, il PDF scritto al suo posto
// e il nome che l'anteprima proporrebbe per salvarlo.
struct AnteprimaRegistrata {
    QString titolo;
    QString pdf;
    QString nomePdf;
};

// Sollevata da TerminaProcesso.
struct ProcessoTerminato {};

class PiattaformaScript final : public Piattaforma {
public:
    int MsgBox(const QString& testo, int stile, const QString& titolo) override;
    QString SfogliaCartella(const QString& titolo) override;
    void MostraTesto(const QString& percorso) override;
    void Beep() override { ++beep; }
    void Clessidra(bool attiva) override { clessidra = attiva; }
    [[noreturn]] void TerminaProcesso() override;
    // Scrive il documento in un PDF nella cartella del programma di prova
    // (accanto a database/) e risponde da risposteAnteprima, OK se è vuota.
    int AnteprimaStampa(QTextDocument& documento, const QString& titolo) override;

    // Risposte nell'ordine in cui arriveranno le domande.
    void Rispondi(int risposta) { risposte.enqueue(risposta); }
    // I messaggi senza risposta in coda ricevono la prima risposta possibile
    // (OK o Sì) invece di far fallire il test.
    void AccettaMessaggiSenzaRisposta(bool si = true) { accettaTutto = si; }

    QList<MessaggioRegistrato> messaggi;
    QQueue<int> risposte;
    QQueue<QString> cartelle;      // risposte di SfogliaCartella
    QStringList testiMostrati;     // percorsi passati a MostraTesto
    QStringList titoliCartella;
    QQueue<int> risposteAnteprima;
    QList<AnteprimaRegistrata> anteprime;
    int beep = 0;
    bool clessidra = false;
    bool terminato = false;
    bool accettaTutto = false;
    // Chiamata a ogni messaggio, prima di rispondere (per agire sulla maschera aperta).
    std::function<void(const MessaggioRegistrato&)> alMessaggio;
};

// Installa una PiattaformaScript nuova e la restituisce.
PiattaformaScript& InstallaPiattaformaScript();
PiattaformaScript& Script();
