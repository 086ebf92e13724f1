#include "shell/frmSpalsh.h"

#include "archive/zip_archivio.h"
#include "common/errore.h"
#include "common/log_errori.h"
#include "common/piattaforma.h"
#include "shell/ApriDatabase.h"
#include "shell/FrmMenu.h"
#include "shell/session_state.h"
#include "store/aggiornamento_schema.h"
#include "store/database.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QDate>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QLinearGradient>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>

namespace {

// Versione scritta nella tab_setup appena creata al posto di SETUP.
const QString VersioneSetupIniziale = QStringLiteral("1.0.0");

// Un Null assegnato a un testo è l'errore 94 del programma originale.
QString TestoNonNull(const Valore& valore)
{
    if (valore.isNull())
        throw ErroreSistema(94, QStringLiteral("Utilizzo non valido di Null"));
    return valore.testo();
}

// L'immagine della schermata: un alambicco stilizzato su fondo color vino.
QPixmap Immagine(const QSize& dimensione)
{
    QPixmap pixmap(dimensione);
    QPainter p(&pixmap);
    p.setRenderHint(QPainter::Antialiasing);
    QLinearGradient fondo(0, 0, 0, dimensione.height());
    fondo.setColorAt(0, QColor(0x7a, 0x1f, 0x3d));
    fondo.setColorAt(1, QColor(0x3b, 0x0c, 0x1e));
    p.fillRect(pixmap.rect(), fondo);

    const qreal w = dimensione.width();
    const qreal h = dimensione.height();
    QPen tratto(QColor(0xf3, 0xd9, 0xa4), 3);
    p.setPen(tratto);
    // Caldaia, collo e serpentina.
    p.setBrush(QColor(0xb8, 0x73, 0x33));
    p.drawEllipse(QPointF(w * 0.38, h * 0.62), w * 0.22, h * 0.15);
    p.setBrush(Qt::NoBrush);
    QPainterPath collo;
    collo.moveTo(w * 0.38, h * 0.47);
    collo.lineTo(w * 0.38, h * 0.32);
    collo.quadTo(w * 0.38, h * 0.26, w * 0.50, h * 0.26);
    collo.lineTo(w * 0.70, h * 0.34);
    p.drawPath(collo);
    for (int i = 0; i < 4; ++i)
        p.drawEllipse(QPointF(w * 0.72, h * (0.40 + i * 0.06)), w * 0.10, h * 0.025);
    p.drawLine(QPointF(w * 0.72, h * 0.62), QPointF(w * 0.72, h * 0.72));
    p.setBrush(QColor(0xf3, 0xd9, 0xa4));
    p.drawEllipse(QPointF(w * 0.72, h * 0.76), w * 0.03, h * 0.02);

    QFont carattere = p.font();
    carattere.setPointSizeF(20);
    carattere.setBold(true);
    p.setFont(carattere);
    p.drawText(QRectF(0, h * 0.84, w, h * 0.12), Qt::AlignCenter, QStringLiteral("Fermola"));
    return pixmap;
}

}  // namespace

void SistemaAvanzi()
{
    try {
        if (SistemaAvanziArchivio(sessione().PathDatabase))
            MsgBox(QStringLiteral("Il database non si apriva: è stato rimesso quello che c'era prima dell'ultimo "
                                  "ripristino."),
                   StileMsg::Esclamativo, TitoloApplicazione);
    } catch (const ErroreSistema&) {
        // Se non si è potuto rimettere, l'apertura che segue dice perché.
    }
}

QString CalcolaPathDatabase(const QString& cartellaProgramma)
{
    QString path = cartellaProgramma;
    if (!path.endsWith(QLatin1Char('/')))
        path += QLatin1Char('/');
    return path + QStringLiteral("database/");
}

void AggiornamentoVersione()
{
    auto& s = sessione();
    try {
        Clessidra(true);
        SistemaAvanzi();
        ApriDatabase(false);
        Database& db = *s.DbDistilleria;

        // Un database di una versione precedente: SETUP diventa tab_setup.
        if (CreaTabSetup(db)) {
            CreaTabFornitura(db);
            db.InserisciRiga(QStringLiteral("tab_setup"),
                             {{QStringLiteral("VERSIONE"), VersioneSetupIniziale},
                              {QStringLiteral("data_versione"),
                               QDate::currentDate().toString(QStringLiteral("dd/MM/yyyy"))},
                              {QStringLiteral("DESCRIZIONE"), DescrizioneSetup}});
        }

        {
            Recordset rs =
                db.OpenRecordset(QStringLiteral("select max(ANNUALITA) as UltimaCampagna  from CAMPAGNA"));
            // Con CAMPAGNA vuota il massimo è Null: errore, come nell'originale.
            if (!rs.eof())
                s.CampagnaCorrente = TestoNonNull(rs.Fields(QStringLiteral("UltimaCampagna"))).trimmed();
        }

        Recordset rs = db.OpenRecordset(QStringLiteral("select * from tab_setup"));
        // Senza righe la lettura del campo dà "nessun record corrente".
        const Valore versione = rs.Fields(QStringLiteral("VERSIONE"));
        // Confronto di testo esatto: un database più nuovo è rifiutato come uno più vecchio.
        if (!versione.isNull() && versione.testo() != VersioneProgramma()) {
            MsgBox(QStringLiteral("Versioni non congruenti DB ") + versione.testo() + QStringLiteral(" - ExE ") +
                       VersioneProgramma() + QLatin1Char('\n') +
                       QStringLiteral("Aggiornamento fallito contattare assistenza"),
                   StileMsg::Critico, QString());
            rs.Close();
            // La connessione resta aperta: la rilascia la fine del processo.
            TerminaProcesso();
        }
        s.VersioneDb = TestoNonNull(versione);
        s.DataVersioneDb = TestoNonNull(rs.Fields(QStringLiteral("data_versione")));
        rs.Close();
        // Solo un database della versione giusta riceve le viste di questa.
        AggiornaVisteEIndiciConsegnati(db);

        // Mentre la schermata aspetta non si tiene aperta nessuna connessione.
        s.DbDistilleria->Close();
        s.DbDistilleria.reset();
        Clessidra(false);
    } catch (const ErroreSistema& e) {
        ScriviLogErr(QString(), QStringLiteral("AGGIORNAMENTO VERSIONE"), e.numero(), e.descrizione());
        TerminaProcesso();
    }
}

frmSpalsh::frmSpalsh(const QString& cartellaProgramma, QWidget* genitore) : QWidget(genitore)
{
    setObjectName(QStringLiteral("frmSpalsh"));
    setWindowFlags(Qt::SplashScreen | Qt::FramelessWindowHint);
    setWindowTitle(QStringLiteral("Fermola"));

    auto* esterno = new QVBoxLayout(this);
    esterno->setContentsMargins(0, 0, 0, 0);
    auto* cornice = new QFrame(this);
    cornice->setObjectName(QStringLiteral("Cornice"));
    cornice->setFrameShape(QFrame::Box);
    cornice->setStyleSheet(QStringLiteral("QFrame#Cornice { background: #fbf7ef; border: 2px solid #3b0c1e; }"));
    esterno->addWidget(cornice);

    auto* riga = new QHBoxLayout(cornice);
    riga->setContentsMargins(2, 2, 14, 10);
    riga->setSpacing(18);
    auto* immagine = new QLabel(cornice);
    immagine->setObjectName(QStringLiteral("Immagine"));
    immagine->setPixmap(Immagine(QSize(190, 330)));
    riga->addWidget(immagine);

    auto* testi = new QVBoxLayout;
    testi->setSpacing(6);
    riga->addLayout(testi, 1);

    auto* prodotto = new QLabel(QStringLiteral("Fermola"), cornice);
    QFont grande = prodotto->font();
    grande.setPointSizeF(grande.pointSizeF() * 2.2);
    grande.setBold(true);
    prodotto->setFont(grande);
    prodotto->setStyleSheet(QStringLiteral("color: #5a1530;"));
    auto* titolo = new QLabel(TitoloLungo, cornice);
    titolo->setWordWrap(true);
    QFont medio = titolo->font();
    medio.setPointSizeF(medio.pointSizeF() * 1.1);
    titolo->setFont(medio);
    auto* campagna = new QLabel(QStringLiteral("Campagna ") + CampagnaEstesa, cornice);
    campagna->setFont(medio);
    testi->addSpacing(18);
    testi->addWidget(prodotto);
    testi->addWidget(titolo);
    testi->addWidget(campagna);
    testi->addStretch(1);

    for (int i = 0; i < 4; ++i) {
        auto* etichetta = new QLabel(cornice);
        etichetta->setObjectName(QStringLiteral("Label1_%1").arg(i));
        etichetta->installEventFilter(this);
        m_label1.insert(i, etichetta);
    }
    testi->addWidget(m_label1[0]);
    testi->addWidget(m_label1[1]);
    testi->addSpacing(12);
    auto* salta = new QHBoxLayout;
    salta->addWidget(m_label1[2]);
    salta->addStretch(1);
    salta->addWidget(m_label1[3]);
    testi->addLayout(salta);
    for (int i : {2, 3}) {
        m_label1[i]->setText(QStringLiteral("Skip"));
        m_label1[i]->setToolTip(QStringLiteral("Prosegui"));
        m_label1[i]->setCursor(Qt::PointingHandCursor);
        m_label1[i]->setStyleSheet(QStringLiteral("color: #1d4f91; text-decoration: underline;"));
    }

    setFixedSize(680, 340);
    Form_Load(cartellaProgramma.isEmpty() ? QCoreApplication::applicationDirPath() : cartellaProgramma);
}

void frmSpalsh::Form_Load(const QString& cartellaProgramma)
{
    m_label1[0]->setText(QStringLiteral("Per sistemi Microsoft Windows"));
    m_label1[1]->setText(QStringLiteral("Versione ") + QString::number(VersioneMajor) + QLatin1Char('.') +
                         QString::number(VersioneMinor) + QLatin1Char('.') + QString::number(VersioneRevision));
    sessione().PathDatabase = CalcolaPathDatabase(cartellaProgramma);
}

void frmSpalsh::showEvent(QShowEvent* evento)
{
    QWidget::showEvent(evento);
    if (QScreen* schermo = screen())
        move(schermo->availableGeometry().center() - rect().center());
    // Il controllo parte una volta, a finestra già disegnata.
    if (!m_attivata) {
        m_attivata = true;
        QTimer::singleShot(0, this, &frmSpalsh::Form_Activate);
    }
}

void frmSpalsh::Form_Activate()
{
    m_attivata = true;
    AggiornamentoVersione();
    // Nessun tempo limite: la schermata resta finché l'utente non fa clic.
}

bool frmSpalsh::eventFilter(QObject* oggetto, QEvent* evento)
{
    if (evento->type() == QEvent::MouseButtonRelease) {
        const auto* mouse = static_cast<QMouseEvent*>(evento);
        for (auto it = m_label1.cbegin(); it != m_label1.cend(); ++it) {
            if (it.value() == oggetto && mouse->button() == Qt::LeftButton) {
                Label1_Click(it.key());
                return true;
            }
        }
    }
    return QWidget::eventFilter(oggetto, evento);
}

void frmSpalsh::Label1_Click(int Index)
{
    Q_UNUSED(Index);  // qualunque etichetta chiude la schermata
    close();
}

void frmSpalsh::closeEvent(QCloseEvent* evento)
{
    Form_Unload();
    evento->accept();
}

void frmSpalsh::Form_Unload()
{
    // Il menu apre la connessione che dura fino alla fine della sessione.
    // A tutto schermo: le maschere modali più grandi restano dentro la finestra.
    FrmMenu& menu = FrmMenu::Carica();
    menu.showMaximized();
}
