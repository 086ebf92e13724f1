#pragma once
// Aiuti delle prove delle maschere delle fatture: maschere mostrate e attive,
// righe scelte nelle griglie.

#include "fatture_prova.h"
#include "support/maschere_finte.h"

#include <QDialog>

template <typename M>
void Mostra(M* maschera)
{
    maschera->show();
    maschera->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(maschera));
}

// Batte il testo nel campo e ne esce con Tab: gira la validazione.
inline void BattiEdEsci(QLineEdit* campo, const QString& testo)
{
    campo->setFocus(Qt::OtherFocusReason);
    campo->selectAll();
    QTest::keyClicks(campo, testo);
    QTest::keyClick(campo, Qt::Key_Tab);
}

// Seleziona le righe della griglia (nessuna: toglie la selezione).
inline void Seleziona(QTableView* griglia, std::initializer_list<int> righe)
{
    griglia->clearSelection();
    for (int r : righe)
        griglia->selectionModel()->select(griglia->model()->index(r, 1),
                                          QItemSelectionModel::Select | QItemSelectionModel::Rows);
    if (righe.size() > 0)
        griglia->selectionModel()->setCurrentIndex(griglia->model()->index(*righe.begin(), 1),
                                                   QItemSelectionModel::NoUpdate);
}
