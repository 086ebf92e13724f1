#include "interchange/MascheraCarico.h"

#include "common/aiuti_maschera.h"
#include "interchange/Destinazioni.h"
#include "shell/session_state.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QCoreApplication>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QPushButton>
#include <QStyle>
#include <QTimer>

namespace {

constexpr int Fotogrammi = 10;
constexpr int IntervalloTimer = 120;

}  // namespace

MascheraCarico::MascheraCarico(const QString& nome, const QString& tag, FunzioneCarico carico, QWidget* genitore)
    : QWidget(genitore), m_tag(tag), m_carico(std::move(carico))
{
    setObjectName(nome);
    setWindowTitle(sessione().TitoloMaschera);

    LblSelezione[2] = new QLabel(QStringLiteral("Campagna : "), this);
    CmbDomAnnualita = new QComboBox(this);
    CmbDomAnnualita->setObjectName(QStringLiteral("CmbDomAnnualita"));
    CmbDomAnnualita->setMinimumWidth(90);
    LblSelezione[2]->setBuddy(CmbDomAnnualita);

    percorso = new QLabel(QStringLiteral("Seleziona percorso file"), this);
    percorso->setObjectName(QStringLiteral("percorso"));
    percorso->setWordWrap(true);
    carica = new QLabel(QStringLiteral("Carico in corso . . ."), this);
    carica->setObjectName(QStringLiteral("carica"));
    carica->setVisible(false);
    conteggio = new QLabel(this);
    conteggio->setObjectName(QStringLiteral("conteggio"));
    conteggio->setVisible(false);

    auto* animazione = new QHBoxLayout;
    const QPixmap dischetto = style()->standardIcon(QStyle::SP_DriveFDIcon).pixmap(32, 32);
    for (int i = 0; i < Fotogrammi; ++i) {
        auto* img = new QLabel(this);
        img->setObjectName(QStringLiteral("imgFloppy_%1").arg(i));
        img->setPixmap(dischetto);
        img->setFixedSize(36, 36);
        img->setAlignment(Qt::AlignCenter);
        // Un fotogramma nascosto tiene il suo posto: l'icona si sposta.
        QSizePolicy politica = img->sizePolicy();
        politica.setRetainSizeWhenHidden(true);
        img->setSizePolicy(politica);
        img->setVisible(false);
        imgFloppy.append(img);
        animazione->addWidget(img);
    }
    animazione->addStretch();

    Cmddati[0] = new QPushButton(QStringLiteral("&Selezione"), this);
    Cmddati[1] = new QPushButton(QStringLiteral("&Esci"), this);
    for (auto it = Cmddati.cbegin(); it != Cmddati.cend(); ++it) {
        it.value()->setObjectName(QStringLiteral("Cmddati_%1").arg(it.key()));
        const int indice = it.key();
        connect(it.value(), &QPushButton::clicked, this, [this, indice] { Cmddati_Click(indice); });
    }
    connect(CmbDomAnnualita, &QComboBox::activated, this, [this] { CmbDomAnnualita_Click(); });

    Timer = new QTimer(this);
    Timer->setInterval(IntervalloTimer);
    connect(Timer, &QTimer::timeout, this, [this] { Timer_Timer(); });

    auto* griglia = new QGridLayout(this);
    griglia->addWidget(LblSelezione[2], 0, 0);
    griglia->addWidget(CmbDomAnnualita, 0, 1);
    griglia->addWidget(percorso, 1, 0, 1, 3);
    griglia->addLayout(animazione, 2, 0, 1, 3);
    griglia->addWidget(carica, 3, 0, 1, 2);
    griglia->addWidget(conteggio, 3, 2);
    auto* pulsanti = new QHBoxLayout;
    pulsanti->addStretch();
    pulsanti->addWidget(Cmddati[0]);
    pulsanti->addWidget(Cmddati[1]);
    griglia->addLayout(pulsanti, 4, 0, 1, 3);
    griglia->setColumnStretch(2, 1);
    setMinimumWidth(460);

    CaricaCmb(CmbDomAnnualita, QStringLiteral("CAMPAGNA"), QStringLiteral("ANNUALITA"), QString(), false,
              QStringLiteral(" ORDER BY ANNUALITA"), false, false);
    percorso->setText(percorso->text() + QLatin1Char(' ') + NomeFileFornitura(m_tag, QString()));
    Cmddati[0]->setDefault(true);
}

MascheraCarico::~MascheraCarico() = default;

QString MascheraCarico::NomeSenzaCampagna() const
{
    QString nome = NomeFileFornitura(m_tag, CmbDomAnnualita->currentText());
    nome.chop(4);  // ".txt"
    nome.chop(CmbDomAnnualita->currentText().size());
    return nome;
}

void MascheraCarico::CmbDomAnnualita_Click()
{
    // Il testo cresce a ogni scelta: un'abitudine innocua, tenuta.
    percorso->setText(percorso->text() + QLatin1Char(' ') + NomeSenzaCampagna() + CmbDomAnnualita->currentText() +
                      QStringLiteral(".TXT"));
    sessione().CampagnaSelezionata = CmbDomAnnualita->currentText();
}

void MascheraCarico::Cmddati_Click(int Index)
{
    if (m_inCorso)
        return;
    if (Index == 1) {
        Timer->stop();
        Scarica();
        return;
    }
    QString nome = NomeFileFornitura(m_tag, CmbDomAnnualita->currentText());
    QString file =
        TrovaFileInCartella(nome, QStringLiteral("Selezionare il Percorso del file ") + nome + QStringLiteral(" di Carico."),
                            QStringLiteral("carico ") + m_tag)
            .trimmed();
    if (file.isEmpty()) {
        Scarica();
        return;
    }
    if (file.endsWith(QLatin1Char('\\')) || file.endsWith(QLatin1Char('/')))
        file.chop(1);
    Occupata(true);
    m_carico(file, this);
    Occupata(false);
    repaint();
    emit CaricoFinito();
}

// Figlia del menu, la maschera sta dentro la sua cornice: si chiude quella,
// altrimenti nella finestra principale resterebbe una cornice vuota.
void MascheraCarico::Scarica()
{
    if (auto* cornice = qobject_cast<QMdiSubWindow*>(parentWidget()))
        cornice->close();
    else
        close();
}

void MascheraCarico::Occupata(bool occupata)
{
    m_inCorso = occupata;
    // Un solo scrittore alla volta: durante il carico il menu e le altre
    // maschere sono spenti, solo questa resta viva e ne mostra il conto.
    if (occupata) {
        if (auto* principale = qobject_cast<QMainWindow*>(window()); principale && principale->menuBar()->isEnabled())
            m_spenti.append(principale->menuBar());
        auto* sotto = qobject_cast<QMdiSubWindow*>(parentWidget());
        if (QMdiArea* area = sotto ? sotto->mdiArea() : nullptr)
            for (QMdiSubWindow* altra : area->subWindowList())
                if (altra != sotto && altra->isEnabled())
                    m_spenti.append(altra);
        for (const QPointer<QWidget>& w : std::as_const(m_spenti))
            w->setEnabled(false);
    } else {
        for (const QPointer<QWidget>& w : std::as_const(m_spenti))
            if (w)
                w->setEnabled(true);
        m_spenti.clear();
    }
    Cmddati[0]->setEnabled(!occupata);
    Cmddati[1]->setEnabled(!occupata);
    CmbDomAnnualita->setEnabled(!occupata);
    carica->setVisible(occupata);
    if (occupata)
        conteggio->setText(QString());
    conteggio->setVisible(true);
}

void MascheraCarico::PLAY(bool attiva)
{
    for (QLabel* img : std::as_const(imgFloppy))
        img->setVisible(false);
    m_fotogramma = 0;
    if (attiva) {
        imgFloppy.at(0)->setVisible(true);
        Timer->start();
    } else {
        Timer->stop();
    }
}

void MascheraCarico::Timer_Timer()
{
    const int precedente = m_fotogramma;
    m_fotogramma = (m_fotogramma + 1) % Fotogrammi;
    imgFloppy.at(m_fotogramma)->setVisible(true);
    imgFloppy.at(precedente)->setVisible(false);
}

void MascheraCarico::RecordLetti(qint64 numero)
{
    conteggio->setText(QStringLiteral("Record letti: %1").arg(numero));
    QCoreApplication::processEvents();
}

void MascheraCarico::RigheScritte(qint64 numero)
{
    conteggio->setText(QStringLiteral("Righe scritte: %1").arg(numero));
    QCoreApplication::processEvents();
}

void MascheraCarico::closeEvent(QCloseEvent* evento)
{
    if (m_inCorso) {
        evento->ignore();
        return;
    }
    Timer->stop();
    sessione().CampagnaSelezionata.clear();
    QWidget::closeEvent(evento);
}
