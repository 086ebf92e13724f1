#pragma once
// Finestra di aiuto: mostra i testi della tabella help scelti per nome della
// maschera che la chiama; con il nome vuoto (menu "Help") tutti i testi, uno
// dopo l'altro. Si apre sempre modale.

#include <QDialog>
#include <QString>

class QPlainTextEdit;
class QPushButton;

class FrmHelp : public QDialog {
    Q_OBJECT
public:
    explicit FrmHelp(QWidget* genitore = nullptr);

    // Impostato dal chiamante prima di mostrare la finestra.
    QString NomeHelp;

    QPlainTextEdit* TxtHElp() const { return m_txtHelp; }
    QPushButton* CmdHelp() const { return m_cmdHelp; }

protected:
    void showEvent(QShowEvent* evento) override;

private:
    // Eseguito alla prima apparizione, quando NomeHelp è già impostato.
    void Form_Load();
    void CmdHelp_Click();

    QPlainTextEdit* m_txtHelp = nullptr;
    QPushButton* m_cmdHelp = nullptr;
    bool m_caricata = false;
};

// Apre l'aiuto modale con quel nome e lo distrugge alla chiusura. È la
// funzione che il programma installa come aggancio dell'aiuto delle maschere.
void MostraFrmHelp(const QString& nome);
