#pragma once
// Elenco dei produttori che non hanno un certificato UTF (nessuna riga in
// TAB_ID_UTF_PRODUTTORE) e legame di uno di loro al certificato in mano
// (UtfSel). Si apre modale dal pulsante "Assegna" del browser dei certificati.

#include <QDialog>
#include <QMap>

#include "common/liste.h"

class QLabel;
class QLineEdit;
class QPushButton;
class QTableView;

// Il modello di "like" di Jet nel dialetto di SQLite: "*" diventa "%", "?"
// diventa "_", e "%", "_" e "\" battuti dall'utente valgono per sé stessi
// (con ESCAPE '\').
QString LikeDaJet(const QString& modello);

class frmProduttoriNoAssociati : public QDialog {
    Q_OBJECT

public:
    explicit frmProduttoriNoAssociati(QWidget* genitore = nullptr);

    QLineEdit* txtDenominazione = nullptr;
    QLineEdit* txtCodiFisc = nullptr;
    // 0 "Associa", 1 "Esci", 2 "Help" (senza azione), 3 "Cerca ...".
    QMap<int, QPushButton*> cmdOperazioni;
    QTableView* TDBG_ProduttoriNoAss = nullptr;
    ModelloLista* Data_produttoriNoAss = nullptr;

    // Chiave del produttore della riga corrente, 0 a lista finita.
    qint32 ProduttoreCorrente() const { return m_idProduttore; }

protected:
    bool eventFilter(QObject* oggetto, QEvent* evento) override;

private:
    void cmdOperazioni_Click(int Index);
    void Cerca();
    void Associa();
    void Riposiziona();

    QLabel* m_didascalia = nullptr;
    qint32 m_idProduttore = 0;
    IstruzioneSql m_filtro;
};
