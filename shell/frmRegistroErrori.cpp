#include "shell/frmRegistroErrori.h"

#include "common/errore.h"
#include "common/log_errori.h"
#include "shell/session_state.h"
#include "store/database.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTableView>
#include <QVBoxLayout>

namespace {

// Colonne mostrate, nell'ordine della griglia, con la loro intestazione.
const struct {
    const char* colonna;
    const char* intestazione;
} Colonne[] = {
    {"DATA_APPL", "Data"},          {"ORA_APPL", "Ora"},           {"CODI_ERRO", "Errore"},
    {"DESC_ERRO", "Descrizione"},   {"DESC_APPL", "Routine"},      {"SETTORE", "Settore"},
    {"FLAG_STAM", "Stampato"},
};

}  // namespace

frmRegistroErrori::frmRegistroErrori(QWidget* genitore) : QWidget(genitore)
{
    setObjectName(QStringLiteral("frmRegistroErrori"));
    setWindowTitle(QStringLiteral(" Registro errori "));

    m_modello = new QStandardItemModel(this);
    m_griglia = new QTableView(this);
    m_griglia->setObjectName(QStringLiteral("GrigliaErrori"));
    m_griglia->setModel(m_modello);
    m_griglia->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_griglia->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_griglia->setSelectionMode(QAbstractItemView::SingleSelection);
    m_griglia->setAlternatingRowColors(true);
    m_griglia->setWordWrap(false);
    m_griglia->verticalHeader()->hide();
    m_griglia->horizontalHeader()->setStretchLastSection(false);

    m_cmdAggiorna = new QPushButton(QStringLiteral("Aggiorna"), this);
    m_cmdAggiorna->setObjectName(QStringLiteral("CmdAggiorna"));
    m_cmdEsci = new QPushButton(QStringLiteral("Esci"), this);
    m_cmdEsci->setObjectName(QStringLiteral("CmdEsci"));
    connect(m_cmdAggiorna, &QPushButton::clicked, this, [this] { Aggiorna(); });
    connect(m_cmdEsci, &QPushButton::clicked, this, [this] {
        // Figlia MDI: si chiude la sottofinestra che la contiene.
        if (parentWidget())
            parentWidget()->close();
        else
            close();
    });

    auto* pulsanti = new QHBoxLayout;
    pulsanti->addStretch();
    pulsanti->addWidget(m_cmdAggiorna);
    pulsanti->addWidget(m_cmdEsci);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_griglia);
    layout->addLayout(pulsanti);

    Aggiorna();
}

void frmRegistroErrori::Aggiorna()
{
    m_modello->clear();
    QStringList intestazioni;
    for (const auto& c : Colonne)
        intestazioni << QString::fromLatin1(c.intestazione);
    m_modello->setHorizontalHeaderLabels(intestazioni);
    try {
        Recordset rs = Db().OpenRecordset(QStringLiteral("SELECT * FROM LOGERR ORDER BY rowid DESC"));
        for (; !rs.eof(); rs.MoveNext()) {
            QList<QStandardItem*> riga;
            for (const auto& c : Colonne)
                riga << new QStandardItem(rs.Fields(QString::fromLatin1(c.colonna)).testo());
            m_modello->appendRow(riga);
        }
    } catch (const ErroreSistema& e) {
        ScriviLogErr(QString(), QStringLiteral("frmRegistroErrori Aggiorna"), e.numero(), e.descrizione());
    }
    m_griglia->resizeColumnsToContents();
    if (m_modello->rowCount() > 0)
        m_griglia->selectRow(0);
}
