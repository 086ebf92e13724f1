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

// Seleziona le righe della griglia (nessuna: toglie la selezione, la corrente resta).
inline void Seleziona(QTableView* griglia, std::initializer_list<int> righe)
{
    SelezionaRighe(griglia, righe, righe.size() > 0 ? *righe.begin() : griglia->currentIndex().row(), 1);
}
