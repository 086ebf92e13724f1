#include "common/piattaforma.h"

#include "common/disegno_documento.h"
#include "common/scelta_cartella.h"

#include <QApplication>
#include <QDialog>
#include <QFile>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QScrollBar>
#include <QGuiApplication>
#include <QHash>
#include <QMessageBox>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QPrintDialog>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollArea>
#include <QPrinter>
#include <QPushButton>
#include <QTextDocument>
#include <QVBoxLayout>
#include <algorithm>
#include <cstdlib>

namespace {

std::unique_ptr<Piattaforma>& istanza()
{
    static std::unique_ptr<Piattaforma> p;
    return p;
}

// L'ultima cartella scelta per ogni lavoro, per la sola sessione: nessuna
// configurazione resta dopo l'uscita.
QHash<QString, QString>& ultimeCartelle()
{
    static QHash<QString, QString> c;
    return c;
}

QString& partenza()
{
    static QString p;
    return p;
}

// Le pagine dell'anteprima una sotto l'altra, larghe quanto la finestra. Il
// documento si dispone una volta sola all'apertura; a ogni disegno si
// disegnano solo le pagine in vista.
class FogliAnteprima final : public QWidget {
public:
    FogliAnteprima(QTextDocument& documento, QWidget* madre)
        : QWidget(madre), m_impaginazione(documento, *this, FoglioDelDocumento(documento))
    {
        setAttribute(Qt::WA_OpaquePaintEvent);
    }

    // Larghezza del foglio adattata a quella disponibile.
    void Adatta(int larghezza)
    {
        const QRect foglio = m_impaginazione.foglio();
        m_zoom = std::max(0.1, qreal(larghezza - 2 * Bordo) / foglio.width());
        m_passo = qRound(foglio.height() * m_zoom) + Bordo;
        setFixedSize(larghezza, Bordo + m_passo * std::max(1, m_impaginazione.pagine()));
        update();
    }

protected:
    void paintEvent(QPaintEvent* evento) override
    {
        QPainter pittore(this);
        const QRect zona = evento->rect();
        pittore.fillRect(zona, palette().dark());
        const int prima = std::max(0, (zona.top() - Bordo) / m_passo);
        const int ultima = std::min(m_impaginazione.pagine() - 1, zona.bottom() / m_passo);
        for (int p = prima; p <= ultima; ++p) {
            pittore.save();
            pittore.translate(Bordo, Bordo + p * m_passo);
            pittore.scale(m_zoom, m_zoom);
            pittore.setClipRect(QRect(QPoint(0, 0), m_impaginazione.foglio().size()));
            m_impaginazione.DisegnaFoglio(pittore, p);
            pittore.restore();
        }
    }

private:
    static constexpr int Bordo = 12;
    Impaginazione m_impaginazione;
    qreal m_zoom = 1;
    int m_passo = 1;
};

class VistaAnteprima final : public QScrollArea {
public:
    VistaAnteprima(QTextDocument& documento, QWidget* madre) : QScrollArea(madre)
    {
        m_fogli = new FogliAnteprima(documento, this);
        setWidget(m_fogli);
        setBackgroundRole(QPalette::Dark);
        verticalScrollBar()->setSingleStep(40);
        setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
        setFocusPolicy(Qt::StrongFocus);
    }

protected:
    void resizeEvent(QResizeEvent* evento) override
    {
        QScrollArea::resizeEvent(evento);
        // La stessa parte del documento resta in cima dopo il cambio di misura.
        const int vecchia = m_fogli->height();
        const double dove = vecchia > 0 ? double(verticalScrollBar()->value()) / vecchia : 0;
        m_fogli->Adatta(viewport()->width());
        verticalScrollBar()->setValue(qRound(dove * m_fogli->height()));
    }

private:
    FogliAnteprima* m_fogli = nullptr;
};

class PiattaformaQt final : public Piattaforma {
public:
    int MsgBox(const QString& testo, int stile, const QString& titolo) override
    {
        QMessageBox box(QApplication::activeWindow());
        box.setWindowTitle(titolo.isEmpty() ? TitoloPredefinito() : titolo);
        // Alcuni messaggi vanno a capo con il solo ritorno carrello: a video
        // ogni \r, da solo o seguito da \n, vale un a capo.
        QString mostrato = testo;
        mostrato.replace(QLatin1String("\r\n"), QLatin1String("\n")).replace(QLatin1Char('\r'), QLatin1Char('\n'));
        box.setTextFormat(Qt::PlainText);
        box.setText(mostrato);
        switch (stile & 0x70) {
        case StileMsg::Critico: box.setIcon(QMessageBox::Critical); break;
        case StileMsg::Domanda: box.setIcon(QMessageBox::Question); break;
        case StileMsg::Esclamativo: box.setIcon(QMessageBox::Warning); break;
        case StileMsg::Informazione: box.setIcon(QMessageBox::Information); break;
        default: break;
        }
        struct Pulsante { QString testo; int risposta; };
        QList<Pulsante> pulsanti;
        switch (stile & 0x7) {
        case StileMsg::OKAnnulla: pulsanti = {{"OK", RispostaMsg::OK}, {"Annulla", RispostaMsg::Annulla}}; break;
        case StileMsg::InterrompiRiprovaIgnora:
            pulsanti = {{"Interrompi", RispostaMsg::Interrompi}, {"Riprova", RispostaMsg::Riprova},
                        {"Ignora", RispostaMsg::Ignora}};
            break;
        case StileMsg::SiNoAnnulla:
            pulsanti = {{"Sì", RispostaMsg::Si}, {"No", RispostaMsg::No}, {"Annulla", RispostaMsg::Annulla}};
            break;
        case StileMsg::SiNo: pulsanti = {{"Sì", RispostaMsg::Si}, {"No", RispostaMsg::No}}; break;
        case StileMsg::RiprovaAnnulla: pulsanti = {{"Riprova", RispostaMsg::Riprova}, {"Annulla", RispostaMsg::Annulla}}; break;
        default: pulsanti = {{"OK", RispostaMsg::OK}}; break;
        }
        QList<QPushButton*> creati;
        for (const auto& p : pulsanti)
            creati << box.addButton(p.testo, QMessageBox::AcceptRole);
        const int predefinito = (stile & StileMsg::SecondoPredefinito) && creati.size() > 1 ? 1 : 0;
        box.setDefaultButton(creati[predefinito]);
        // Esc vale come l'ultimo pulsante (Annulla o No), o OK se è l'unico.
        box.setEscapeButton(creati.last());
        box.exec();
        const int scelto = creati.indexOf(qobject_cast<QPushButton*>(box.clickedButton()));
        return pulsanti[scelto < 0 ? creati.size() - 1 : scelto].risposta;
    }

    QString SfogliaCartella(const QString& titolo) override
    {
        return QFileDialog::getExistingDirectory(QApplication::activeWindow(), titolo, CartellaDiPartenza());
    }

    void MostraTesto(const QString& percorso) override
    {
        QFile file(percorso);
        QString testo;
        if (file.open(QIODevice::ReadOnly))
            testo = QString::fromLocal8Bit(file.readAll());
        QDialog finestra(QApplication::activeWindow());
        finestra.setWindowTitle(percorso);
        finestra.resize(640, 480);
        auto* layout = new QVBoxLayout(&finestra);
        auto* vista = new QPlainTextEdit(testo, &finestra);
        vista->setReadOnly(true);
        auto* chiudi = new QPushButton(QStringLiteral("Chiudi"), &finestra);
        QObject::connect(chiudi, &QPushButton::clicked, &finestra, &QDialog::accept);
        layout->addWidget(vista);
        layout->addWidget(chiudi);
        finestra.exec();
    }

    void Beep() override { QApplication::beep(); }

    void Clessidra(bool attiva) override
    {
        if (attiva)
            QGuiApplication::setOverrideCursor(Qt::WaitCursor);
        else
            while (QGuiApplication::overrideCursor())
                QGuiApplication::restoreOverrideCursor();
    }

    [[noreturn]] void TerminaProcesso() override { std::exit(0); }

    int AnteprimaStampa(QTextDocument& documento, const QString& titolo) override
    {
        // La clessidra della stampa non deve coprire l'anteprima.
        const bool clessidra = QGuiApplication::overrideCursor() != nullptr;
        if (clessidra)
            QGuiApplication::setOverrideCursor(Qt::ArrowCursor);
        QDialog finestra(QApplication::activeWindow());
        finestra.setWindowTitle(titolo.isEmpty() ? TitoloPredefinito() : titolo);
        finestra.resize(900, 700);
        auto* layout = new QVBoxLayout(&finestra);
        // Si apre sulla cima della prima pagina, larga quanto la finestra.
        auto* vista = new VistaAnteprima(documento, &finestra);
        auto* pulsanti = new QHBoxLayout;
        auto* stampa = new QPushButton(QStringLiteral("&Stampa..."), &finestra);
        auto* pdf = new QPushButton(QStringLiteral("Salva &PDF..."), &finestra);
        auto* chiudi = new QPushButton(QStringLiteral("&Chiudi"), &finestra);
        auto* annulla = new QPushButton(QStringLiteral("&Annulla"), &finestra);
        pulsanti->addWidget(stampa);
        pulsanti->addWidget(pdf);
        pulsanti->addStretch();
        pulsanti->addWidget(chiudi);
        pulsanti->addWidget(annulla);
        layout->addWidget(vista);
        layout->addLayout(pulsanti);
        QObject::connect(stampa, &QPushButton::clicked, &finestra, [&] {
            QPrinter stampante(QPrinter::HighResolution);
            PreparaFoglio(documento, stampante);
            QPrintDialog scelta(&stampante, &finestra);
            if (scelta.exec() == QDialog::Accepted)
                DisegnaDocumento(documento, stampante);
        });
        QObject::connect(pdf, &QPushButton::clicked, &finestra, [&] {
            // Il nome dice la carta e la domanda, nella cartella dell'ultimo PDF.
            const QString proposto = QDir(m_cartellaPdf.isEmpty() ? QDir::homePath() : m_cartellaPdf)
                                         .filePath(NomePdf(documento) + QLatin1String(".pdf"));
            QString nome = QFileDialog::getSaveFileName(&finestra, QStringLiteral("Salva PDF"), proposto,
                                                        QStringLiteral("PDF (*.pdf)"));
            if (nome.isEmpty())
                return;
            if (!nome.endsWith(QLatin1String(".pdf"), Qt::CaseInsensitive))
                nome += QLatin1String(".pdf");
            if (!ScriviPdf(documento, nome)) {
                MsgBox(QStringLiteral("Impossibile scrivere il file ") + nome, StileMsg::Esclamativo, titolo);
                return;
            }
            m_cartellaPdf = QFileInfo(nome).absolutePath();
            MsgBox(QStringLiteral("PDF salvato in ") + QDir::toNativeSeparators(nome), StileMsg::Informazione, titolo);
        });
        // Chiudere la finestra, anche con Esc, è la fine normale della stampa;
        // solo Annulla la annulla.
        int risposta = RispostaMsg::OK;
        QObject::connect(annulla, &QPushButton::clicked, &finestra, [&] {
            risposta = RispostaMsg::Annulla;
            finestra.reject();
        });
        QObject::connect(chiudi, &QPushButton::clicked, &finestra, &QDialog::accept);
        chiudi->setDefault(true);
        finestra.setWindowState(Qt::WindowMaximized);
        finestra.exec();
        if (clessidra)
            QGuiApplication::restoreOverrideCursor();
        return risposta;
    }

private:
    QString m_cartellaPdf;  // cartella dell'ultimo PDF salvato in questa sessione
};

}  // namespace

void ImpostaPiattaforma(std::unique_ptr<Piattaforma> nuova)
{
    istanza() = std::move(nuova);
    ultimeCartelle().clear();
}

Piattaforma& piattaforma()
{
    if (!istanza())
        istanza() = CreaPiattaformaQt();
    return *istanza();
}

QString TitoloPredefinito() { return QStringLiteral("Fermola"); }

int MsgBox(const QString& testo, int stile, const QString& titolo)
{
    return piattaforma().MsgBox(testo, stile, titolo);
}
QString SfogliaCartella(const QString& titolo) { return piattaforma().SfogliaCartella(titolo); }

QString SfogliaCartellaPer(const QString& lavoro, const QString& titolo, const QString& iniziale)
{
    partenza() = iniziale.isEmpty() ? ultimeCartelle().value(lavoro) : iniziale;
    const QString scelta = piattaforma().SfogliaCartella(titolo);
    partenza().clear();
    if (!scelta.isEmpty())
        ultimeCartelle().insert(lavoro, scelta);
    return scelta;
}

QString CartellaDiPartenza() { return partenza(); }

void MostraTesto(const QString& percorso) { piattaforma().MostraTesto(percorso); }
void Beep() { piattaforma().Beep(); }
void Clessidra(bool attiva) { piattaforma().Clessidra(attiva); }
void TerminaProcesso()
{
    piattaforma().TerminaProcesso();
    std::abort();  // un'implementazione che ritorna e' un errore di programmazione
}

int AnteprimaStampa(QTextDocument& documento, const QString& titolo)
{
    return piattaforma().AnteprimaStampa(documento, titolo);
}

std::unique_ptr<Piattaforma> CreaPiattaformaQt() { return std::make_unique<PiattaformaQt>(); }
