#pragma once
// Elenco delle fatture della domanda scelta (DomandaSel): i dati della
// fattura su cui sta il cursore, il totale dei quintali della domanda, e da
// qui l'inserimento, la modifica e la cancellazione delle fatture.

#include <QDialog>
#include <QMap>

class ModelloLista;
class QGroupBox;
class QLineEdit;
class QPushButton;
class QTableView;

class FrmSelezionaFatture : public QDialog {
    Q_OBJECT

public:
    explicit FrmSelezionaFatture(QWidget* genitore = nullptr);
    ~FrmSelezionaFatture() override;

    QMap<int, QLineEdit*> TxtDati;
    QMap<int, QPushButton*> Cmddati;
    QTableView* TDBG_Selfatt = nullptr;

    // Riga corrente della griglia in FatturaSel.
    void SelRiga_SelFatture();
    // FatturaSel nei campi di sola lettura, e il totale della domanda.
    void PassaCampi_SelFatt();
    // Ricarica e dispone la griglia, con un ordinamento facoltativo.
    void CaricaGriglia(const QString& ordine = QString());

protected:
    void keyPressEvent(QKeyEvent* evento) override;

private:
    void Cmddati_Click(int indice);
    void Nuovo();
    void Modifica();
    void Cancella();
    void Ordina(int colonna);
    void CursoreMosso();
    int RigheSelezionate() const;

    ModelloLista* Data_SelFatt = nullptr;
    QGroupBox* Frame1 = nullptr;
    QGroupBox* Frame2 = nullptr;
};
