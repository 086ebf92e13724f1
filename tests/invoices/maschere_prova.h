#pragma once
// Aiuti delle prove delle maschere delle fatture: maschere mostrate e attive,
// azioni sulle finestre modali mentre il loro exec() è in corso.

#include "fatture_prova.h"

#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <functional>

// Esegue "azione" sulla finestra modale di nome "nome" appena è a video.
inline void QuandoModale(const QString& nome, std::function<void(QDialog*)> azione)
{
    auto* timer = new QTimer;
    timer->setInterval(5);
    QObject::connect(timer, &QTimer::timeout, [timer, nome, azione] {
        auto* d = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (!d || d->objectName() != nome || !d->isVisible())
            return;
        timer->stop();
        timer->deleteLater();
        // Attiva, perché il fuoco e la validazione all'uscita dai campi funzionino.
        d->activateWindow();
        if (!QTest::qWaitForWindowActive(d))
            ADD_FAILURE() << "finestra non attiva: " << nome.toStdString();
        azione(d);
    });
    timer->start();
}

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
