#include "shell/FrmHelp.h"

#include "common/aiuti_maschera.h"
#include "common/aiuto.h"
#include "common/errore.h"
#include "common/log_errori.h"
#include "shell/FrmMenu.h"
#include "shell/session_state.h"
#include "store/database.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

FrmHelp::FrmHelp(QWidget* genitore) : QDialog(genitore)
{
    setObjectName(QStringLiteral("FrmHelp"));
    setWindowTitle(QStringLiteral(" Help "));
    setModal(true);

    m_txtHelp = new QPlainTextEdit(this);
    m_txtHelp->setObjectName(QStringLiteral("TxtHElp"));
    m_txtHelp->setLineWrapMode(QPlainTextEdit::WidgetWidth);
    m_cmdHelp = new QPushButton(QStringLiteral("Esci"), this);
    m_cmdHelp->setObjectName(QStringLiteral("CmdHelp"));
    connect(m_cmdHelp, &QPushButton::clicked, this, [this] { CmdHelp_Click(); });

    auto* pulsanti = new QHBoxLayout;
    pulsanti->addStretch();
    pulsanti->addWidget(m_cmdHelp);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_txtHelp);
    layout->addLayout(pulsanti);
    resize(560, 420);
}

void FrmHelp::showEvent(QShowEvent* evento)
{
    if (!m_caricata) {
        m_caricata = true;
        Form_Load();
    }
    QDialog::showEvent(evento);
}

void FrmHelp::Form_Load()
{
    PosizionaForm(this, true, nullptr);
    m_txtHelp->clear();
    m_txtHelp->setReadOnly(true);

    const QString condizione = NomeHelp.trimmed().isEmpty()
                                   ? QString()
                                   : QStringLiteral(" where nome= '") + NomeHelp + QStringLiteral("'");
    try {
        Recordset rs = Db().OpenRecordset(QStringLiteral("Select Descrizione,TITOLO from help ") + condizione);
        QString testo;
        for (; !rs.eof(); rs.MoveNext()) {
            if (!testo.isEmpty())
                testo += QStringLiteral("\n\n");
            testo += rs.Fields(QStringLiteral("TITOLO")).testo().toUpper() + QLatin1Char('\n') +
                     rs.Fields(QStringLiteral("Descrizione")).testo();
        }
        m_txtHelp->setPlainText(testo);
    } catch (const ErroreSistema& e) {
        // Senza testi la finestra resta vuota; il guasto va nel registro.
        ScriviLogErr(QString(), QStringLiteral("FrmHelp Form_Load"), e.numero(), e.descrizione());
    }
    m_txtHelp->moveCursor(QTextCursor::Start);
}

void FrmHelp::CmdHelp_Click() { accept(); }

void MostraFrmHelp(const QString& nome)
{
    QWidget* genitore = QApplication::activeModalWidget();
    if (!genitore)
        genitore = FrmMenu::Istanza();
    FrmHelp help(genitore);
    help.NomeHelp = nome;
    help.exec();
}
