#pragma once
// Maschere finte registrate sotto i nomi di quelle che una lista apre: un
// QDialog che annota di essere stato aperto, con ciò che la sessione teneva in
// quel momento (la "fotografia" scelta dal test), e si chiude da solo. E le
// azioni su una finestra modale mentre il suo exec() è in corso.

#include "shell/registro_maschere.h"
#include "support/prova.h"

#include <QAbstractItemModel>
#include <QDialog>
#include <QItemSelectionModel>
#include <QTimer>

class MaschereFinte {
public:
    // fotografia: ciò che la sessione tiene all'apertura, come testo.
    MaschereFinte(const QStringList& nomi, std::function<QString()> fotografia)
        : m_fotografia(std::move(fotografia))
    {
        for (const QString& nome : nomi)
            RegistraMaschera(
                nome,
                [this, nome](QWidget* genitore) -> QWidget* {
                    aperte << nome + QLatin1Char(' ') + m_fotografia();
                    if (azione)
                        azione();
                    auto* d = new QDialog(genitore);
                    d->setObjectName(nome);
                    QTimer::singleShot(0, d, &QDialog::accept);
                    return d;
                },
                Apertura::Modale);
    }

    QStringList aperte;
    // Eseguita all'apertura (per esempio per cambiare il database come farebbe la maschera).
    std::function<void()> azione;

private:
    std::function<QString()> m_fotografia;
};

// Seleziona nella griglia le righe date (posizioni) e porta la corrente su
// "corrente", come farebbe l'utente; la colonna è una qualunque visibile.
inline void SelezionaRighe(QTableView* griglia, const QList<int>& righe, int corrente, int colonna)
{
    QItemSelectionModel* sel = griglia->selectionModel();
    QAbstractItemModel* modello = griglia->model();
    sel->clearSelection();
    for (int r : righe)
        sel->select(modello->index(r, colonna), QItemSelectionModel::Select | QItemSelectionModel::Rows);
    sel->setCurrentIndex(modello->index(corrente, colonna), QItemSelectionModel::NoUpdate);
}

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
        if (!MostraAttiva(d))
            ADD_FAILURE() << "finestra non attiva: " << nome.toStdString();
        azione(d);
    });
    timer->start();
}
