#pragma once
// Dati della distilleria che usa il programma: codice fiscale o partita IVA,
// ragione sociale, indirizzo. Al primo avvio (DISTILLERIA vuota) è l'unica
// via per lavorare: uscirne senza aver salvato termina il programma. Dal menu
// "Inizializza Distilleria" cambia la riga esistente, cercata con il vecchio
// codice.

#include <QDialog>
#include <QMap>

class QLineEdit;
class QPushButton;

class frmInizializza : public QDialog {
    Q_OBJECT
public:
    explicit frmInizializza(QWidget* genitore = nullptr);

    // Vettore dei campi, indici 1..3, e dei pulsanti 0 Salva, 1 Esci, 2 Help.
    QLineEdit* TxtDISTDati(int indice) const { return m_campi.value(indice); }
    QPushButton* Cmddati(int indice) const { return m_pulsanti.value(indice); }

    // 0 se tutto va bene; l'indice del campo vuoto; 4 codice fiscale errato,
    // 5 partita IVA errata.
    int ControllaCampi();
    void Cmddati_Click(int Index);

protected:
    // Esc e la chiusura della finestra valgono "Esci".
    void reject() override;

private:
    void Form_Load();
    void Salva();

    QMap<int, QLineEdit*> m_campi;
    QMap<int, QPushButton*> m_pulsanti;
};
