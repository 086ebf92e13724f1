#pragma once
// La maschera del carico di una fornitura, uguale nei due rami (figlia del
// menu): la campagna, il nome del file che si cercherà, la scelta della
// cartella e il carico, con un'animazione e il conto dei record letti e delle
// righe scritte. Il lavoro lo fa il carico senza maschera del ramo; la
// maschera resta aperta per un altro carico qualunque sia l'esito. Un ramo
// dà il suo nome, il suo tag nel nome del file e il suo carico.

#include "interchange/CaricoComune.h"

#include <QList>
#include <QMap>
#include <QPointer>
#include <QWidget>
#include <functional>

class QComboBox;
class QLabel;
class QPushButton;
class QTimer;

class MascheraCarico : public QWidget, public OsservatoreCarico {
    Q_OBJECT
public:
    using FunzioneCarico = std::function<void(const QString& percorsoFile, OsservatoreCarico*)>;
    MascheraCarico(const QString& nome, const QString& tag, FunzioneCarico carico, QWidget* genitore = nullptr);
    ~MascheraCarico() override;

    QComboBox* CmbDomAnnualita = nullptr;
    QMap<int, QPushButton*> Cmddati;
    QLabel* percorso = nullptr;
    QLabel* carica = nullptr;
    QLabel* conteggio = nullptr;
    QMap<int, QLabel*> LblSelezione;
    QList<QLabel*> imgFloppy;
    QTimer* Timer = nullptr;

    void PLAY(bool attiva) override;
    void RecordLetti(qint64 numero) override;
    void RigheScritte(qint64 numero) override;

    void Cmddati_Click(int Index);
    void CmbDomAnnualita_Click();
    bool InCorso() const { return m_inCorso; }

signals:
    // Un carico è finito: chi ha chiesto di uscire intanto può riprovare.
    void CaricoFinito();

protected:
    void closeEvent(QCloseEvent* evento) override;

private:
    void Timer_Timer();
    void Scarica();
    void Occupata(bool occupata);
    QString NomeSenzaCampagna() const;

    QString m_tag;
    FunzioneCarico m_carico;
    int m_fotogramma = 0;
    bool m_inCorso = false;
    // Menu e maschere spenti durante il carico, da riaccendere alla fine.
    QList<QPointer<QWidget>> m_spenti;
};
