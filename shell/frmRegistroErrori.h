#pragma once
// Consultazione del registro degli errori (LOGERR), in sola lettura: l'errore
// più recente in cima. LOGERR non ha chiave, l'ordine è quello di scrittura.

#include <QWidget>

class QPushButton;
class QStandardItemModel;
class QTableView;

class frmRegistroErrori : public QWidget {
    Q_OBJECT
public:
    explicit frmRegistroErrori(QWidget* genitore = nullptr);

    QTableView* Griglia() const { return m_griglia; }
    QPushButton* CmdAggiorna() const { return m_cmdAggiorna; }
    QPushButton* CmdEsci() const { return m_cmdEsci; }

    // Rilegge LOGERR; un errore di lettura va nel registro stesso.
    void Aggiorna();

    // Abbastanza larga per le colonne anche come figlia MDI.
    QSize sizeHint() const override { return {900, 420}; }

private:
    QTableView* m_griglia = nullptr;
    QStandardItemModel* m_modello = nullptr;
    QPushButton* m_cmdAggiorna = nullptr;
    QPushButton* m_cmdEsci = nullptr;
};
