#pragma once
// Dove si lavora una domanda del distillatore: la pagina 0 elenca i
// certificati UTF della domanda (DomandaProduttoreSel), la pagina 1 i
// produttori del certificato scelto, con i dati del produttore corrente e le
// somme del certificato. Alla pagina dei produttori si arriva solo da un
// certificato. Le due pagine condividono i record di sessione, che seguono
// sempre l'ultima riga visitata.

#include "common/liste.h"

#include <QDialog>
#include <QMap>

class QLineEdit;
class QPushButton;
class QTabWidget;
class QTableView;

class FrmProduttore_SelezionaProd : public QDialog {
    Q_OBJECT

public:
    explicit FrmProduttore_SelezionaProd(QWidget* genitore = nullptr);

    // Intestazione 1, 2, 20; pagina 1: certificato 4, 5, dati 6..14, somme 15, 16.
    QMap<int, QLineEdit*> TxtDati;
    // Pagina 0: 0 Nuovo, 1 Modifica, 2 Cancella, 3 Assegna, 4 Esci, 5 Help;
    // pagina 1: 6 Nuovo, 7 Modifica, 8 Cancella, 9 Esci, 10 Help.
    QMap<int, QPushButton*> Cmddati;
    QMap<int, QTableView*> TDBG_SelProd;
    QMap<int, ModelloLista*> Data_SelProd_utf;
    QTabWidget* SSTabutf_prod = nullptr;

    // Intestazione della pagina 1 dal certificato; con indice diverso da 0
    // anche i dati del produttore e le somme del certificato.
    void PassaCampi_SelProd(int indice);
    // Riga corrente della griglia "indice" nei record di sessione.
    void SelRiga_SelFatture(int indice);

protected:
    void keyPressEvent(QKeyEvent* evento) override;

private:
    void Cmddati_Click(int Index);
    void ComandiCertificato(int Index);
    void ComandiProduttore(int Index);
    void SSTabutf_prod_Click(int PreviousTab);
    void TornaAllaPagina(int pagina);
    // Ricarica la griglia nel suo modo ("711" o 10) con l'ordinamento dato.
    void CaricaGriglia(int indice, const QString& ordine = QString());
    void RigaCambiata(int indice);
    void IntestazioneCliccata(int indice, int colonna);
    QString Titolo() const;

    int m_pagina = 0;
    // Testo dell'etichetta di ciascuna griglia, didascalia della lista.
    QMap<int, QString> m_etichette;
};
