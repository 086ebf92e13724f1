#include "shell/frmAbout.h"

#include "common/aiuti_maschera.h"
#include "common/aiuto.h"
#include "common/piattaforma.h"
#include "shell/FrmMenu.h"
#include "shell/session_state.h"

#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

// Nome del prodotto, come lo dichiara il programma.
const QString NomeProdotto = QStringLiteral("Fermola");
const QString DescrizioneFile = QStringLiteral(
    "Acquisizione fatture Allegati alla domanda di aiuto alla distillazione  art.29 e art.30 Reg. CE 1443/1999 - "
    "campagna 2005/2006");

// L'icona del programma: un grappolo stilizzato sul colore del vino.
QPixmap Icona()
{
    QPixmap pixmap(48, 48);
    pixmap.fill(Qt::transparent);
    QPainter p(&pixmap);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0x7a, 0x1f, 0x3d));
    p.drawRoundedRect(QRectF(1, 1, 46, 46), 8, 8);
    p.setBrush(QColor(0xf3, 0xd9, 0xa4));
    const QPointF acini[] = {{16, 16}, {24, 16}, {32, 16}, {20, 23}, {28, 23}, {24, 30}};
    for (const QPointF& c : acini)
        p.drawEllipse(c, 4.2, 4.2);
    p.setPen(QPen(QColor(0xf3, 0xd9, 0xa4), 2));
    p.drawLine(QPointF(24, 34), QPointF(24, 41));
    return pixmap;
}

}  // namespace

QString TestoVersioneAbout()
{
    return QStringLiteral("  Versione ") + QString::number(VersioneMajor) + QLatin1Char('.') +
           QString::number(VersioneMinor) + QLatin1Char('.') + QString::number(VersioneRevision) +
           QStringLiteral(" del ") + sessione().DataVersioneDb;
}

frmAbout::frmAbout(QWidget* genitore) : QDialog(genitore)
{
    setObjectName(QStringLiteral("frmAbout"));
    setModal(true);

    auto* picIcon = new QLabel(this);
    picIcon->setObjectName(QStringLiteral("picIcon"));
    picIcon->setPixmap(Icona());
    picIcon->setAlignment(Qt::AlignTop | Qt::AlignHCenter);

    m_lblTitle = new QLabel(this);
    m_lblTitle->setObjectName(QStringLiteral("lblTitle"));
    QFont grande = m_lblTitle->font();
    grande.setPointSizeF(grande.pointSizeF() * 1.4);
    grande.setBold(true);
    m_lblTitle->setFont(grande);
    m_lblVersion = new QLabel(this);
    m_lblVersion->setObjectName(QStringLiteral("lblVersion"));
    m_lblDescription = new QLabel(this);
    m_lblDescription->setObjectName(QStringLiteral("lblDescription"));
    m_lblDescription->setWordWrap(true);
    m_lblDescription->setMinimumWidth(360);

    auto* linea = new QFrame(this);
    linea->setFrameShape(QFrame::HLine);
    linea->setFrameShadow(QFrame::Sunken);

    m_cmdOK = new QPushButton(QStringLiteral("OK"), this);
    m_cmdOK->setObjectName(QStringLiteral("cmdOK"));
    m_cmdOK->setDefault(true);
    m_cmdSysInfo = new QPushButton(QStringLiteral("&System Info..."), this);
    m_cmdSysInfo->setObjectName(QStringLiteral("cmdSysInfo"));
    m_cmdSysInfo->setAutoDefault(false);
    connect(m_cmdOK, &QPushButton::clicked, this, &QDialog::accept);
    connect(m_cmdSysInfo, &QPushButton::clicked, this, [this] { StartSysInfo(); });

    auto* griglia = new QGridLayout;
    griglia->addWidget(picIcon, 0, 0, 3, 1);
    griglia->addWidget(m_lblTitle, 0, 1);
    griglia->addWidget(m_lblVersion, 1, 1);
    griglia->addWidget(m_lblDescription, 2, 1);
    griglia->setColumnStretch(1, 1);
    griglia->setHorizontalSpacing(16);

    auto* pulsanti = new QVBoxLayout;
    pulsanti->addWidget(m_cmdOK);
    pulsanti->addWidget(m_cmdSysInfo);
    auto* basso = new QHBoxLayout;
    basso->addStretch();
    basso->addLayout(pulsanti);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(griglia);
    layout->addSpacing(8);
    layout->addWidget(linea);
    layout->addLayout(basso);

    Form_Load();
}

void frmAbout::Form_Load()
{
    setWindowTitle(QStringLiteral("Informazioni su ") + TitoloPredefinito());
    m_lblVersion->setText(TestoVersioneAbout());
    m_lblTitle->setText(NomeProdotto + QLatin1Char('\n') + QStringLiteral("Per sistemi Windows a 32 bit"));
    m_lblDescription->setText(DescrizioneFile);
    adjustSize();
}

void frmAbout::showEvent(QShowEvent* evento)
{
    // Posizione dentro la finestra principale, a dimensioni ormai note.
    if (!m_posizionata) {
        m_posizionata = true;
        PosizionaForm(this, false, FrmMenu::Istanza());
    }
    QDialog::showEvent(evento);
}

void frmAbout::keyPressEvent(QKeyEvent* evento)
{
    if (evento->key() == Qt::Key_F1) {
        MostraHelp(QStringLiteral("frmAbout"));
        return;
    }
    QDialog::keyPressEvent(evento);
}

void frmAbout::StartSysInfo()
{
    // Nessuno strumento di sistema su questa piattaforma: il messaggio è
    // quello che il programma dava quando non ne trovava.
    MsgBox(QStringLiteral("Le informazioni sul sistema non sono attualmente disponibili."), StileMsg::OK,
           QString());
}
