#include "deliveries/griglie_conferimenti.h"

#include <QAbstractItemView>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QTableView>

void PreparaGriglia(QTableView* griglia)
{
    griglia->setSelectionBehavior(QAbstractItemView::SelectRows);
    griglia->setSelectionMode(QAbstractItemView::ExtendedSelection);
    griglia->setEditTriggers(QAbstractItemView::NoEditTriggers);
    griglia->verticalHeader()->setDefaultSectionSize(griglia->fontMetrics().height() + 6);
    griglia->horizontalHeader()->setSectionsClickable(true);
    // Il clic porta l'evidenziazione al colore FF8080 della griglia originale
    // (ordine blu, verde, rosso).
    QObject::connect(griglia, &QAbstractItemView::clicked, griglia, [griglia] {
        QPalette p = griglia->palette();
        p.setColor(QPalette::Highlight, QColor(0x80, 0x80, 0xFF));
        griglia->setPalette(p);
    });
}

int RigheSelezionate(const QTableView* griglia)
{
    const QItemSelectionModel* selezione = griglia->selectionModel();
    return selezione ? static_cast<int>(selezione->selectedRows().size()) : 0;
}

int RigaCorrente(const QTableView* griglia)
{
    const QAbstractItemModel* modello = griglia->model();
    if (!modello || modello->rowCount() == 0)
        return -1;
    const int riga = griglia->currentIndex().row();
    return riga >= 0 ? riga : 0;
}

void PortaAllaPrimaRiga(QTableView* griglia)
{
    QItemSelectionModel* selezione = griglia->selectionModel();
    if (!selezione)
        return;
    selezione->clearSelection();
    const QAbstractItemModel* modello = griglia->model();
    // La prima colonna visibile, perché la vista la possa mostrare.
    int colonna = 0;
    while (modello && colonna < modello->columnCount() && griglia->isColumnHidden(colonna))
        ++colonna;
    if (modello && modello->rowCount() > 0)
        selezione->setCurrentIndex(modello->index(0, colonna), QItemSelectionModel::NoUpdate);
    else
        selezione->setCurrentIndex(QModelIndex(), QItemSelectionModel::NoUpdate);
}
