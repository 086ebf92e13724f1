#pragma once
// Maschera del carico di una fornitura del ramo fatture (figlia del menu):
// la campagna, il nome del file che si cercherà, la scelta della cartella e
// il carico, con un'animazione che dice anche quanti record sono stati letti.
// Il lavoro lo fa CaricaFornitura; la maschera resta aperta per un altro
// carico qualunque sia l'esito.

#include "interchange/CaricoFatture.h"

#include <QList>
#include <QMap>
#include <QWidget>

class QComboBox;
class QLabel;
class QPushButton;
class QTimer;

class frmCarico : public QWidget, public OsservatoreCarico {
    Q_OBJECT
public:
    explicit frmCarico(QWidget* genitore = nullptr);
    ~frmCarico() override;

    QComboBox* CmbDomAnnualita = nullptr;
    QMap<int, QPushButton*> Cmddati;
    QLabel* percorso = nullptr;
    QLabel* carica = nullptr;
    QLabel* conteggio = nullptr;
    QMap<int, QLabel*> LblSelezione;
    QList<QLabel*> imgFloppy;
    QTimer* Timer = nullptr;

    // OsservatoreCarico
    void PLAY(bool attiva) override;
    void RecordLetti(qint64 numero) override;
    void FattureScritte(qint64 numero) override;

    void Cmddati_Click(int Index);
    void CmbDomAnnualita_Click();

protected:
    void closeEvent(QCloseEvent* evento) override;

private:
    void Timer_Timer();
    void Occupata(bool occupata);
    void Chiudi();
    QString NomeSenzaCampagna() const;
    int m_fotogramma = 0;
    bool m_inCorso = false;
};
