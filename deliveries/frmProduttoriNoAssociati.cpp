#include "deliveries/frmProduttoriNoAssociati.h"

#include "common/aiuti_maschera.h"
#include "common/errore.h"
#include "common/filtri_tastiera.h"
#include "common/log_errori.h"
#include "common/piattaforma.h"
#include "deliveries/AssociaProduttore.h"
#include "deliveries/griglie_conferimenti.h"
#include "shell/session_state.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

namespace {

constexpr int ModoLista = 9;
enum : int { CmdAssocia = 0, CmdEsci = 1, CmdHelp = 2, CmdCerca = 3 };

}  // namespace

QString LikeDaJet(const QString& modello)
{
    QString sqlite;
    for (const QChar c : modello) {
        if (c == QLatin1Char('*'))
            sqlite += QLatin1Char('%');
        else if (c == QLatin1Char('?'))
            sqlite += QLatin1Char('_');
        else if (c == QLatin1Char('%') || c == QLatin1Char('_') || c == QLatin1Char('\\'))
            sqlite += QLatin1Char('\\') + c;
        else
            sqlite += c;
    }
    return sqlite;
}

frmProduttoriNoAssociati::frmProduttoriNoAssociati(QWidget* genitore) : QDialog(genitore)
{
    setObjectName(QStringLiteral("frmProduttoriNoAssociati"));
    setWindowTitle(QStringLiteral("Elenco Produttori non Associati"));
    setModal(true);

    auto* principale = new QVBoxLayout(this);
    auto* ricerca = new QGridLayout;
    txtDenominazione = new QLineEdit(this);
    txtDenominazione->setObjectName(QStringLiteral("txtDenominazione"));
    txtDenominazione->setMaxLength(70);
    txtDenominazione->setMinimumWidth(fontMetrics().horizontalAdvance(QLatin1Char('W')) * 24);
    txtDenominazione->installEventFilter(this);
    txtCodiFisc = new QLineEdit(this);
    txtCodiFisc->setObjectName(QStringLiteral("txtCodiFisc"));
    txtCodiFisc->setMaxLength(16);
    txtCodiFisc->setMinimumWidth(fontMetrics().horizontalAdvance(QLatin1Char('W')) * 12);
    auto* etichettaNome = new QLabel(QStringLiteral("Denominazione : "), this);
    etichettaNome->setBuddy(txtDenominazione);
    auto* etichettaCf = new QLabel(QStringLiteral("Codice Fiscale : "), this);
    etichettaCf->setBuddy(txtCodiFisc);
    ricerca->addWidget(etichettaNome, 0, 0);
    ricerca->addWidget(txtDenominazione, 0, 1);
    ricerca->addWidget(etichettaCf, 1, 0);
    ricerca->addWidget(txtCodiFisc, 1, 1, Qt::AlignLeft);
    const struct {
        int indice;
        const char* didascalia;
    } pulsanti[] = {{CmdAssocia, "Associa"}, {CmdEsci, "Esci"}, {CmdHelp, "Help"}, {CmdCerca, "Cerca ..."}};
    for (const auto& p : pulsanti) {
        auto* pulsante = new QPushButton(QString::fromUtf8(p.didascalia), this);
        pulsante->setObjectName(QStringLiteral("cmdOperazioni_%1").arg(p.indice));
        pulsante->setAutoDefault(false);
        cmdOperazioni[p.indice] = pulsante;
        connect(pulsante, &QPushButton::clicked, this, [this, i = p.indice] { cmdOperazioni_Click(i); });
    }
    // Invio in un campo di ricerca cerca.
    cmdOperazioni[CmdCerca]->setDefault(true);
    ricerca->addWidget(cmdOperazioni[CmdCerca], 1, 2);
    ricerca->setColumnStretch(3, 1);
    principale->addLayout(ricerca);

    m_didascalia = new QLabel(this);
    m_didascalia->setAlignment(Qt::AlignCenter);
    principale->addWidget(m_didascalia);
    TDBG_ProduttoriNoAss = new QTableView(this);
    TDBG_ProduttoriNoAss->setObjectName(QStringLiteral("TDBG_ProduttoriNoAss"));
    PreparaGriglia(TDBG_ProduttoriNoAss);
    Data_produttoriNoAss = new ModelloLista(this);
    TDBG_ProduttoriNoAss->setModel(Data_produttoriNoAss);
    AssociaDidascalia(TDBG_ProduttoriNoAss, m_didascalia);
    connect(TDBG_ProduttoriNoAss->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this] { Riposiziona(); });
    principale->addWidget(TDBG_ProduttoriNoAss, 1);

    auto* comandi = new QHBoxLayout;
    comandi->addStretch(1);
    for (int i : {CmdAssocia, CmdEsci, CmdHelp})
        comandi->addWidget(cmdOperazioni[i]);
    principale->addLayout(comandi);
    setTabOrder(txtDenominazione, txtCodiFisc);
    setTabOrder(txtCodiFisc, cmdOperazioni[CmdCerca]);
    setTabOrder(cmdOperazioni[CmdCerca], TDBG_ProduttoriNoAss);
    setTabOrder(TDBG_ProduttoriNoAss, cmdOperazioni[CmdAssocia]);

    resize(860, 480);
    PosizionaForm(this, false, genitore);
    Cerca();
}

bool frmProduttoriNoAssociati::eventFilter(QObject* oggetto, QEvent* evento)
{
    // Nella denominazione passano solo i caratteri ammessi dei nomi.
    if (oggetto == txtDenominazione && evento->type() == QEvent::KeyPress) {
        const auto* tasto = static_cast<QKeyEvent*>(evento);
        for (const QChar c : tasto->text()) {
            int KeyAscii = CodiceCarattere(c);
            FiltroCaratteri(KeyAscii);
            if (KeyAscii == 0)
                return true;
        }
    }
    return QDialog::eventFilter(oggetto, evento);
}

void frmProduttoriNoAssociati::cmdOperazioni_Click(int Index)
{
    switch (Index) {
    case CmdCerca: Cerca(); break;
    case CmdAssocia: Associa(); break;
    case CmdEsci: reject(); break;
    default: break;  // "Help" non ha un'azione
    }
}

void frmProduttoriNoAssociati::Cerca()
{
    // Il filtro sta sempre nell'istruzione: un nome o un codice Null non
    // soddisfa "like" e resta fuori anche a campi vuoti.
    m_filtro = IstruzioneSql(
        QStringLiteral("and denominazione like ? ESCAPE '\\' and codi_fisc like ? ESCAPE '\\'"),
        {LikeDaJet(txtDenominazione->text() + QLatin1Char('*')), LikeDaJet(txtCodiFisc->text() + QLatin1Char('*'))});
    try {
        AggiornaGrigliaProduttori(m_filtro, TDBG_ProduttoriNoAss, ModoLista, nullptr, false, Data_produttoriNoAss);
        ColonneGrigliaProduttori(TDBG_ProduttoriNoAss, ModoLista, m_didascalia->text());
        ImpostaDidascaliaGriglia(TDBG_ProduttoriNoAss, QStringLiteral("Produttori non Associati a nessuna UTF"));
        TDBG_ProduttoriNoAss->resizeColumnsToContents();
        PortaAllaPrimaRiga(TDBG_ProduttoriNoAss);
        Riposiziona();
    } catch (const ErroreSistema& e) {
        ScriviLogErr(QString(), QStringLiteral("frmProduttoriNoAssociati Cerca"), e.numero(), e.descrizione());
    }
}

void frmProduttoriNoAssociati::Riposiziona()
{
    const int riga = RigaCorrente(TDBG_ProduttoriNoAss);
    m_idProduttore = riga < 0 ? 0
                              : static_cast<qint32>(
                                    Data_produttoriNoAss->Campo(riga, QStringLiteral("id_produttori")).intero());
}

void frmProduttoriNoAssociati::Associa()
{
    if (RigheSelezionate(TDBG_ProduttoriNoAss) != 1) {
        MsgBox(QStringLiteral("Selezionare un solo produttore!"), StileMsg::Informazione, sessione().TitoloMaschera);
        return;
    }
    // Legato al certificato 0 il produttore sparirebbe da ogni elenco.
    if (sessione().UtfSel.iD_UTF == 0) {
        MsgBox(QStringLiteral("Nessun certificato UTF scelto: il produttore non si può associare."),
               StileMsg::Informazione, sessione().TitoloMaschera);
        return;
    }
    if (rfAssociaDeAssociaProduttore(m_idProduttore, sessione().UtfSel.iD_UTF, 0))
        Cerca();
}
