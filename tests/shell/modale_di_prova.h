#pragma once
// Per agire su una finestra modale mentre il suo exec() è in corso: un timer
// controlla la finestra modale attiva e, appena è quella col nome atteso,
// esegue l'azione una volta sola.

#include <QApplication>
#include <QDialog>
#include <QPointer>
#include <QTimer>
#include <functional>
#include <memory>
#include <ostream>

#include "support/verifiche.h"

class AttesaModale {
public:
    AttesaModale(const QString& nome, std::function<void(QDialog*)> azione)
        : m_nome(nome), m_azione(std::move(azione)), m_timer(std::make_unique<QTimer>())
    {
        m_timer->setInterval(5);
        QObject::connect(m_timer.get(), &QTimer::timeout, [this] { Controlla(); });
        m_timer->start();
    }

    bool eseguita() const { return m_eseguita; }

private:
    void Controlla()
    {
        auto* d = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (!d || d->objectName() != m_nome || !d->isVisible())
            return;
        m_timer->stop();
        m_eseguita = true;
        m_azione(d);
    }

    QString m_nome;
    std::function<void(QDialog*)> m_azione;
    std::unique_ptr<QTimer> m_timer;
    bool m_eseguita = false;
};
