#pragma once
// Informazioni sul programma: nome, versione del programma con la data della
// versione del database, descrizione. Si apre modale dal menu "Versione".

#include <QDialog>

class QLabel;
class QPushButton;

class frmAbout : public QDialog {
    Q_OBJECT
public:
    explicit frmAbout(QWidget* genitore = nullptr);

    QLabel* lblTitle() const { return m_lblTitle; }
    QLabel* lblVersion() const { return m_lblVersion; }
    QLabel* lblDescription() const { return m_lblDescription; }
    QPushButton* cmdOK() const { return m_cmdOK; }
    QPushButton* cmdSysInfo() const { return m_cmdSysInfo; }

    // Lo strumento di informazioni di sistema della piattaforma: qui non ce
    // n'è, e si dice all'utente che non è disponibile.
    void StartSysInfo();

protected:
    void showEvent(QShowEvent* evento) override;
    void keyPressEvent(QKeyEvent* evento) override;

private:
    void Form_Load();

    QLabel* m_lblTitle = nullptr;
    QLabel* m_lblVersion = nullptr;
    QLabel* m_lblDescription = nullptr;
    QPushButton* m_cmdOK = nullptr;
    QPushButton* m_cmdSysInfo = nullptr;
    bool m_posizionata = false;
};

// Il testo di lblVersion: "  Versione 1.0.0 del " + DataVersioneDb.
QString TestoVersioneAbout();
