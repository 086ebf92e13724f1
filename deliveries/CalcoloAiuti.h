#pragma once
// Calcolo automatico delle quantità ottenute e degli aiuti del produttore.
// Lavora sui testi dei campi della maschera FrmProduttore (TxtDati per indice):
// i numeri sono testi con la virgola e ogni confronto è un confronto di testi.
// I totali del certificato vengono da sessione().UtfSel.
//
// Le aliquote e i valori Calc... restano nell'oggetto tra una chiamata e
// l'altra, come le variabili di modulo della maschera: l'oggetto vive quanto
// la maschera.

#include <QMap>
#include <QString>

class CalcoloAiuti {
public:
    explicit CalcoloAiuti(QMap<int, QString>& TxtDati);

    // Calcola e scrive i campi. Con true ricalcola prima gli Ettogradi da vino
    // e titolo alcolometrico.
    void calcoliAutomatici(bool calcolaEttogradi);
    // Ricalcola e riporta le differenze: "" se tutto combacia (e allora scrive
    // il totale), altrimenti il testo "OVERFLOW - ..." o quello delle
    // differenze. Scrive comunque "0,00" negli aiuti vuoti, tramite fun_Totale.
    QString CTRL_calcoliAutomatici();
    // Totale aiuto, testo a due decimali. Usa le aliquote impostate
    // dall'ultima delle due entrate qui sopra.
    QString fun_Totale();
    // Controllo delle cifre intere; abilita o disabilita Salva.
    bool CtrlQuantita(const QString& valore, int cifre);
    // Porta un campo alla sua forma normale.
    void formattaAutomatico(int indice);
    // Stato di Cmddati(0) (Salva) dopo l'ultimo CtrlQuantita.
    bool SalvaAbilitato() const { return m_salvaAbilitato; }

    // Pulsante Cmdcalcolo. Restituisce l'indice del campo su cui la maschera
    // deve portare il fuoco, 0 se il calcolo è stato eseguito.
    int Cmdcalcolo();
    // Passo del salvataggio: formattazione dei campi da 10 a 25, confronto con
    // i valori calcolati e le due domande. false se l'utente annulla (overflow).
    bool ControllaCalcoliAlSalvataggio();

    // Testo del campo per i messaggi (tooltip della maschera).
    static QString Descrizione(int indice);

    // Variabili di modulo, lette dai test e dalla maschera.
    const QString& AliquotaGrezzo() const { return m_aliquotaGrezzo; }
    const QString& AliquotaNeutro() const { return m_aliquotaNeutro; }
    const QString& AliquotaAcquavite() const { return m_aliquotaAcquavite; }
    const QString& CalcEttogradi() const { return m_calcEttogradi; }
    const QString& CalcQtaGrezzo() const { return m_calcQtaGrezzo; }
    const QString& CalcQtaNeutro() const { return m_calcQtaNeutro; }
    const QString& CalcQtaAcquavite() const { return m_calcQtaAcquavite; }
    const QString& CalcAiutoGrezzo() const { return m_calcAiutoGrezzo; }
    const QString& CalcAiutoNeutro() const { return m_calcAiutoNeutro; }
    const QString& CalcAiutoAcquavite() const { return m_calcAiutoAcquavite; }

private:
    QString& campo(int indice) { return m_txt[indice]; }
    bool vuoto(int indice) const;
    void impostaAliquote();
    void calcolaEttogradiDaVino();
    QString quoziente() const;
    void calcolaGrezzo();
    void calcolaNeutro();
    void calcolaAcquavite();
    // Il valore calcolato va nel campo solo se passa il controllo di
    // grandezza; altrimenti il campo si svuota e il calcolo si ferma (falso).
    bool scriviQuantita(int indice, const QString& valore, int cifre);
    bool scriviAiuto(int indice, const QString& valore, int cifre);

    QMap<int, QString>& m_txt;
    bool m_salvaAbilitato = true;

    QString m_aliquotaGrezzo;
    QString m_aliquotaNeutro;
    QString m_aliquotaAcquavite;
    QString m_calcEttogradi;
    QString m_calcQtaGrezzo;
    QString m_calcQtaNeutro;
    QString m_calcQtaAcquavite;
    QString m_calcAiutoGrezzo;
    QString m_calcAiutoNeutro;
    QString m_calcAiutoAcquavite;
};

// Taglia un numero in testo a due decimali, senza arrotondare: 12,349 dà 12,34.
QString Formatta2dec(const QString& valore);
