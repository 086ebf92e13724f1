#include "interchange/frmScarico.h"

#include "common/aiuti_maschera.h"
#include "common/piattaforma.h"
#include "common/scelta_cartella.h"
#include "interchange/ScaricoFatture.h"
#include "shell/session_state.h"

#include <QLabel>
#include <QShowEvent>
#include <QTimer>
#include <QVBoxLayout>

frmScarico::frmScarico(QWidget* genitore)
    : frmScarico(sessione().TitoloMaschera, sessione().DomandaSel.DOMANDA, ScaricaDomanda, genitore)
{
}

frmScarico::frmScarico(const QString& didascalia, const QString& domanda, Nucleo nucleo, QWidget* genitore)
    : QDialog(genitore), m_nucleo(std::move(nucleo))
{
    setObjectName(QStringLiteral("frmScarico"));
    setWindowTitle(didascalia);
    Label1 = new QLabel(QStringLiteral("Scarico in corso della Domanda n. ") + domanda, this);
    Label1->setObjectName(QStringLiteral("Label1"));
    Label1->setAlignment(Qt::AlignCenter);
    QFont carattere = Label1->font();
    carattere.setBold(true);
    Label1->setFont(carattere);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 24, 24, 24);
    layout->addWidget(Label1);
    setMinimumWidth(420);
    PosizionaForm(this, false, genitore);
}

void frmScarico::showEvent(QShowEvent* evento)
{
    QDialog::showEvent(evento);
    if (m_avviato)
        return;
    m_avviato = true;
    // Dopo la comparsa: la maschera si vede mentre si sceglie la cartella.
    QTimer::singleShot(0, this, &frmScarico::Form_Activate);
}

void frmScarico::Form_Activate()
{
    // Ogni ramo ricorda la sua cartella di scarico.
    const QString cartella =
        SfogliaCartellaPer(QStringLiteral("scarico ") + windowTitle(), QStringLiteral("Selezionare il Percorso di scarico."));
    repaint();
    if (cartella.trimmed().isEmpty()) {
        m_giaChiusa = true;
        reject();
        return;
    }
    m_scritto = m_nucleo(cartella);
    if (!m_giaChiusa)
        accept();
}
