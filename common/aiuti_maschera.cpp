#include "common/aiuti_maschera.h"

#include "common/errore.h"
#include "common/log_errori.h"
#include "common/numeri.h"
#include "shell/session_state.h"
#include "store/database.h"

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QGuiApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QScreen>
#include <QStringList>
#include <QTextEdit>
#include <QWidget>

namespace {
constexpr auto ProprietaTag = "Tag";

// Le colonne dell'espressione (separate da virgole) con le parti unite da
// "&" o "||" messe al riparo dal Null. Le virgole e i segni dentro le
// parentesi, i testi e i nomi tra virgolette o parentesi quadre non contano.
QString UnioneSenzaNull(const QString& espressione)
{
    QStringList colonne;
    QStringList parti;
    QString parte;
    const auto chiudiParte = [&] { parti << parte.trimmed(); parte.clear(); };
    const auto chiudiColonna = [&] {
        chiudiParte();
        if (parti.size() == 1) {
            colonne << parti.first();
        } else {
            QStringList protette;
            for (const QString& p : std::as_const(parti))
                protette << QStringLiteral("IFNULL(") + p + QStringLiteral(", '')");
            colonne << protette.join(QStringLiteral(" || "));
        }
        parti.clear();
    };

    int profondita = 0;
    QChar chiusura;  // dentro un testo o un nome quotato: il carattere che lo chiude
    for (qsizetype i = 0; i < espressione.size(); ++i) {
        const QChar c = espressione.at(i);
        if (!chiusura.isNull()) {
            if (c == chiusura)
                chiusura = QChar();
        } else if (c == QLatin1Char('\'') || c == QLatin1Char('"')) {
            chiusura = c;
        } else if (c == QLatin1Char('[')) {
            chiusura = QLatin1Char(']');
        } else if (c == QLatin1Char('(')) {
            ++profondita;
        } else if (c == QLatin1Char(')')) {
            --profondita;
        } else if (profondita == 0 && c == QLatin1Char(',')) {
            chiudiColonna();
            continue;
        } else if (profondita == 0 && c == QLatin1Char('&')) {
            chiudiParte();
            continue;
        } else if (profondita == 0 && c == QLatin1Char('|') && i + 1 < espressione.size() &&
                   espressione.at(i + 1) == QLatin1Char('|')) {
            chiudiParte();
            ++i;
            continue;
        }
        parte += c;
    }
    chiudiColonna();
    return colonne.join(QStringLiteral(", "));
}
}  // namespace

void ImpostaTag(QWidget* controllo, const QString& tag)
{
    if (controllo)
        controllo->setProperty(ProprietaTag, tag);
}

QString Tag(const QWidget* controllo)
{
    return controllo ? controllo->property(ProprietaTag).toString() : QString();
}

void CaricaCmb(QComboBox* combo, const QString& tabella, const QString& campo, const QString& condizione,
               bool datiVoce, const QString& ordine, bool unisci, bool rigaVuota, const QVariantList& parametri)
{
    if (!combo)
        return;
    try {
        QString sql = QStringLiteral("SELECT ") + UnioneSenzaNull(campo) + QStringLiteral(" FROM ") + tabella;
        if (!condizione.trimmed().isEmpty())
            sql += QStringLiteral(" WHERE ") + condizione;
        sql += ordine;
        sessione().StrSql = sql;
        Recordset rs = Db().OpenRecordset(sql, parametri);
        combo->clear();
        while (!rs.eof()) {
            const QString primo = rs.Fields(0).testo().trimmed();
            combo->addItem(primo);
            if (unisci) {
                QString tutti;
                for (int i = 0; i < rs.NumeroCampi(); ++i)
                    tutti += QLatin1Char(' ') + rs.Fields(i).testo().trimmed();
                combo->addItem(tutti);
            }
            if (datiVoce)
                combo->setItemData(combo->count() - 1, static_cast<int>(Val(primo)));
            rs.MoveNext();
        }
        // Come nel programma originale la combo appena riempita non ha una voce scelta.
        combo->setCurrentIndex(-1);
        if (rigaVuota)
            combo->addItem(QString());
        else if (!sessione().CampagnaCorrente.isEmpty())
            combo->setCurrentText(sessione().CampagnaCorrente);
    } catch (const ErroreSistema& e) {
        ScriviLogErr(QString(), QStringLiteral("Md_FunzioniGenerali CaricaCmb"), e.numero(), e.descrizione());
    }
}

void PulisciCampi(QWidget* maschera, const QString& esclusi)
{
    if (!maschera)
        return;
    QString elenco = esclusi;
    if (!elenco.startsWith(QLatin1Char('*')))
        elenco.prepend(QLatin1Char('*'));
    if (!elenco.endsWith(QLatin1Char('*')))
        elenco.append(QLatin1Char('*'));
    // Si aggiunge "*DONT*" così com'è: con l'asterisco di chiusura già
    // presente nasce "**", e anche i controlli senza Tag restano intatti.
    elenco = (elenco + QStringLiteral("*DONT*")).toUpper();

    const auto escluso = [&](const QWidget* w) {
        return elenco.contains(QLatin1Char('*') + Tag(w).toUpper() + QLatin1Char('*'));
    };
    for (QWidget* w : maschera->findChildren<QWidget*>()) {
        if (auto* testo = qobject_cast<QLineEdit*>(w)) {
            // La casella interna di una combo o di uno spin non è un campo.
            if (qobject_cast<QComboBox*>(w->parentWidget()) || qobject_cast<QAbstractSpinBox*>(w->parentWidget()))
                continue;
            if (!escluso(w))
                testo->clear();
        } else if (auto* piano = qobject_cast<QPlainTextEdit*>(w)) {
            if (!escluso(w))
                piano->clear();
        } else if (auto* ricco = qobject_cast<QTextEdit*>(w)) {
            if (!escluso(w))
                ricco->clear();
        } else if (auto* combo = qobject_cast<QComboBox*>(w)) {
            if (!escluso(w))
                combo->clear();
        } else if (auto* lista = qobject_cast<QListWidget*>(w)) {
            if (!escluso(w))
                lista->clear();
        }
    }
}

void SelezionaTesto(QLineEdit* campo)
{
    if (campo)
        campo->setSelection(0, static_cast<int>(campo->text().size()));
}

void PosizionaForm(QWidget* maschera, bool schermo, const QWidget* padre)
{
    if (!maschera)
        return;
    const QSize dimensione = maschera->frameGeometry().size();
    if (schermo || !padre) {
        const QScreen* s = maschera->screen() ? maschera->screen() : QGuiApplication::primaryScreen();
        if (!s)
            return;
        const QRect area = s->geometry();
        maschera->move(area.left() + (area.width() - dimensione.width()) / 3,
                       area.top() + (area.height() - dimensione.height()) / 4);
        return;
    }
    // Tutto in coordinate dello schermo, poi in quelle del contenitore se la
    // maschera è una finestra figlia (MDI).
    const QRect p = padre->isWindow() ? padre->frameGeometry()
                                      : QRect(padre->mapToGlobal(QPoint(0, 0)), padre->size());
    QPoint posizione(p.left() + (p.width() - dimensione.width()) / 2,
                     p.top() + (p.height() - dimensione.height()) / 2);
    if (!maschera->isWindow() && maschera->parentWidget())
        posizione = maschera->parentWidget()->mapFromGlobal(posizione);
    maschera->move(posizione);
}
