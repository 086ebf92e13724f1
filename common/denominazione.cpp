#include "common/denominazione.h"

#include "common/piattaforma.h"
#include "shell/session_state.h"
#include "store/database.h"

#include <QLineEdit>

std::optional<QString> CercaDenominazione(const QString& codice)
{
    for (const char* tabella : {"produttori", "fatture"}) {
        Recordset rs = Db().OpenRecordset(
            QStringLiteral("SELECT denominazione FROM %1 WHERE codi_fisc = ?").arg(QLatin1String(tabella)), {codice});
        if (!rs.eof())
            return rs.Fields(QStringLiteral("Denominazione")).testo();
    }
    return std::nullopt;
}

void TrovaDenominazione(QLineEdit* codice, QLineEdit* denominazione, QWidget* seguente)
{
    if (codice->text().trimmed().isEmpty()) {
        MsgBox(QStringLiteral("Inserire il codice fiscale o la Partita IVA."), StileMsg::Informazione,
               QStringLiteral("Produttore"));
        codice->setFocus(Qt::OtherFocusReason);
        return;
    }
    if (const auto nome = CercaDenominazione(codice->text())) {
        denominazione->setText(*nome);
        seguente->setFocus(Qt::OtherFocusReason);
        return;
    }
    MsgBox(QStringLiteral("Denominazione non esistente con la p.iva o codice fiscale inserito."),
           StileMsg::Informazione, QStringLiteral("Produttore"));
    denominazione->setFocus(Qt::OtherFocusReason);
}
