#pragma once
// Maschera dello scarico di una domanda: una sola etichetta; lo scarico
// parte da sé appena la maschera diventa attiva, dalla scelta della cartella
// fino alla chiusura della maschera. Il lavoro lo fa il nucleo (ScaricaDomanda
// per le fatture); la stessa maschera serve il ramo conferimenti con il suo
// nucleo, la sua didascalia e il suo numero di domanda.

#include <QDialog>
#include <QString>
#include <functional>

class QLabel;

class frmScarico : public QDialog {
    Q_OBJECT
public:
    using Nucleo = std::function<bool(const QString& cartella)>;
    // Scarico delle fatture: didascalia TitoloMaschera, domanda DomandaSel.
    explicit frmScarico(QWidget* genitore = nullptr);
    frmScarico(const QString& didascalia, const QString& domanda, Nucleo nucleo, QWidget* genitore = nullptr);

    QLabel* Label1 = nullptr;
    // Vero quando il file finale è stato scritto.
    bool Scritto() const { return m_scritto; }

protected:
    void showEvent(QShowEvent* evento) override;

private:
    void Form_Activate();
    Nucleo m_nucleo;
    bool m_avviato = false;
    bool m_giaChiusa = false;
    bool m_scritto = false;
};
