#include "common/SchermataRecord.h"

#include "common/aiuti_maschera.h"
#include "common/aiuto.h"
#include "common/errore.h"
#include "common/filtri_tastiera.h"
#include "common/log_errori.h"
#include "common/numeri.h"
#include "common/piattaforma.h"
#include "common/testo.h"
#include "shell/session_state.h"

#include <QApplication>
#include <QComboBox>
#include <QFocusEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>
#include <QWidget>

namespace {

constexpr auto ProprietaValidazione = "CausesValidation";
constexpr int CodiceBackspace = 8;
constexpr int CodiceInvio = 13;
constexpr int CodiceEsc = 27;

// Riscrive "0" + testo con la maschera numerica; un testo che non è un
// numero resta "0" + testo, come faceva Format con una stringa.
QString FormatoNumero(const QString& testo, const QString& maschera)
{
    const QString conZero = QLatin1Char('0') + testo;
    if (!IsNumeric(conZero))
        return conZero;
    try {
        return Format(Decimale(conZero), maschera);
    } catch (const ErroreSistema&) {
        return conZero;
    }
}

// Tasto e testo di un codice di carattere battuto al posto di un altro.
QKeyEvent EventoDelCodice(int codice, const QKeyEvent& originale)
{
    switch (codice) {
    case CodiceBackspace:
        return QKeyEvent(QEvent::KeyPress, Qt::Key_Backspace, originale.modifiers(), QStringLiteral("\b"));
    case CodiceInvio:
        return QKeyEvent(QEvent::KeyPress, Qt::Key_Return, originale.modifiers(), QStringLiteral("\r"));
    case CodiceEsc:
        return QKeyEvent(QEvent::KeyPress, Qt::Key_Escape, originale.modifiers(), QString(QChar(27)));
    default:
        break;
    }
    const QChar c = CarattereCodice(codice);
    const char16_t u = c.toUpper().unicode();
    // Il carattere cambiato si batte senza Ctrl/Alt, altrimenti il campo lo
    // prenderebbe per una scorciatoia.
    const Qt::KeyboardModifiers modificatori = originale.modifiers() & Qt::ShiftModifier;
    return QKeyEvent(QEvent::KeyPress, u < 0x100 ? static_cast<Qt::Key>(u) : Qt::Key_unknown, modificatori,
                     QString(c));
}

}  // namespace

SchermataRecord::SchermataRecord(QWidget* parent) : QDialog(parent)
{
    auto* principale = new QVBoxLayout(this);
    m_areaCampi = new QGridLayout;
    m_areaPulsanti = new QHBoxLayout;
    m_areaPulsanti->addStretch(1);
    principale->addLayout(m_areaCampi);
    principale->addStretch(1);
    principale->addLayout(m_areaPulsanti);
}

SchermataRecord::~SchermataRecord()
{
    // I figli muoiono dopo la maschera: da lì in poi nessun loro evento deve
    // arrivare al filtro.
    for (QObject* figlio : findChildren<QObject*>())
        figlio->removeEventFilter(this);
}

template <typename F>
bool SchermataRecord::Protetto(const QString& routine, F&& gestore)
{
    try {
        gestore();
        return true;
    } catch (const ErroreSistema& e) {
        ScriviLogErr(QString(), EtichettaErrore(routine), e.numero(), e.descrizione());
        return false;
    }
}

QLineEdit* SchermataRecord::AggiungiCampo(int indice, const QString& tag, const QString& etichetta,
                                          const QString& tooltip, int lunghezzaMassima, GenereCampo genere)
{
    auto* campo = new QLineEdit(this);
    RegistraCampo(indice, campo, tag, etichetta, tooltip, lunghezzaMassima, genere);
    if (QLabel* label = Lbldati.value(indice))
        m_areaCampi->addWidget(label, m_rigaCampi, 0);
    m_areaCampi->addWidget(campo, m_rigaCampi, 1);
    ++m_rigaCampi;
    return campo;
}

void SchermataRecord::RegistraCampo(int indice, QLineEdit* campo, const QString& tag, const QString& etichetta,
                                    const QString& tooltip, int lunghezzaMassima, GenereCampo genere)
{
    if (!campo)
        return;
    TxtDati.insert(indice, campo);
    Etichetta(indice, etichetta, campo);
    ImpostaTag(campo, tag);
    campo->setToolTip(tooltip);
    if (lunghezzaMassima > 0)
        campo->setMaxLength(lunghezzaMassima);
    m_regole[indice].genere = genere;
    Sorveglia(campo);
}

QLabel* SchermataRecord::Etichetta(int indice, const QString& testo, QWidget* compagno)
{
    QLabel* label = Lbldati.value(indice);
    if (!label) {
        if (testo.isEmpty())
            return nullptr;
        label = new QLabel(this);
        Lbldati.insert(indice, label);
    }
    label->setText(testo);
    label->setBuddy(compagno);
    return label;
}

void SchermataRecord::ImpostaFiltroCampo(int indice, FiltroCampo filtro, int decimali, bool maiuscole)
{
    RegoleCampo& r = m_regole[indice];
    r.filtro = filtro;
    r.decimali = decimali;
    r.maiuscole = maiuscole;
}

void SchermataRecord::ImpostaGenere(int indice, GenereCampo genere) { m_regole[indice].genere = genere; }

GenereCampo SchermataRecord::Genere(int indice) const
{
    return m_regole.value(indice).genere;
}

QComboBox* SchermataRecord::AggiungiCombo(ArrayCombo& array, int indice, const QString& tag,
                                          const QString& etichetta, const QString& tooltip)
{
    auto* combo = new QComboBox(this);
    RegistraCombo(array, indice, combo, tag, etichetta, tooltip);
    if (QLabel* label = Lbldati.value(indice))
        m_areaCampi->addWidget(label, m_rigaCampi, 0);
    m_areaCampi->addWidget(combo, m_rigaCampi, 1);
    ++m_rigaCampi;
    return combo;
}

void SchermataRecord::RegistraCombo(ArrayCombo& array, int indice, QComboBox* combo, const QString& tag,
                                    const QString& etichetta, const QString& tooltip)
{
    if (!combo)
        return;
    array.insert(indice, combo);
    Etichetta(indice, etichetta, combo);
    ImpostaTag(combo, tag);
    combo->setToolTip(tooltip);
    RegistraControllo(combo);
}

void SchermataRecord::RegistraControllo(QWidget* controllo)
{
    if (!controllo)
        return;
    // I clic di una griglia arrivano alla sua area interna, quelli di una
    // combo modificabile alla sua casella: si sorvegliano anche i figli.
    Sorveglia(controllo);
    for (QWidget* figlio : controllo->findChildren<QWidget*>())
        Sorveglia(figlio);
}

QPushButton* SchermataRecord::AggiungiPulsante(int indice, const QString& didascalia, bool validazione)
{
    auto* pulsante = new QPushButton(didascalia, this);
    m_areaPulsanti->addWidget(pulsante);
    RegistraPulsante(indice, pulsante, validazione);
    return pulsante;
}

void SchermataRecord::RegistraPulsante(int indice, QPushButton* pulsante, bool validazione)
{
    if (!pulsante)
        return;
    Cmddati.insert(indice, pulsante);
    // Invio nei campi non preme nessun pulsante.
    pulsante->setAutoDefault(false);
    pulsante->setDefault(false);
    pulsante->setProperty(ProprietaValidazione, validazione);
    connect(pulsante, &QPushButton::clicked, this,
            [this, indice] { Protetto(QStringLiteral("Cmddati_Click"), [&] { Cmddati_Click(indice); }); });
    Sorveglia(pulsante);
}

void SchermataRecord::AggiungiPulsantiStandard()
{
    AggiungiPulsante(0, QStringLiteral("Salva"));
    AggiungiPulsante(1, QStringLiteral("Esci"), false);
    AggiungiPulsante(2, QStringLiteral("Help"), false);
}

QString SchermataRecord::NomeMaschera() const
{
    return objectName().isEmpty() ? QString::fromLatin1(metaObject()->className()) : objectName();
}

void SchermataRecord::Help() { MostraHelp(NomeMaschera()); }

void SchermataRecord::Scarica(int esito) { done(esito); }

void SchermataRecord::CaricaMaschera()
{
    Protetto(QStringLiteral("Form_Load"), [this] {
        if (!testAttribute(Qt::WA_Resized))
            adjustSize();
        PosizionaForm(this, true, nullptr);
        setWindowTitle(Didascalia());
        if (DaRiempire())
            RiempiCampi();
    });
}

QString SchermataRecord::Didascalia() const
{
    const QString& titolo = sessione().TitoloMaschera;
    return titolo.isEmpty() ? windowTitle() : titolo;
}

bool SchermataRecord::DaRiempire() const
{
    return sessione().ModoMaschera.trimmed().toUpper() == QLatin1String("M");
}

QString SchermataRecord::EtichettaErrore(const QString& routine) const
{
    return NomeMaschera() + QLatin1Char(' ') + routine;
}

void SchermataRecord::TastoF1() { Cmddati_Click(IndiceHelp()); }

int SchermataRecord::IndiceCampo(const QObject* campo) const
{
    for (auto it = TxtDati.cbegin(); it != TxtDati.cend(); ++it)
        if (it.value() == campo)
            return it.key();
    return -1;
}

void SchermataRecord::TxtDati_KeyPress(int indice, int& KeyAscii)
{
    // Un campo bloccato non prende tasti: i filtri che riscrivono il testo
    // (la data) vi lascerebbero un valore che non si può più correggere.
    if (const QLineEdit* bloccato = TxtDati.value(indice); bloccato && bloccato->isReadOnly()) {
        KeyAscii = 0;
        return;
    }
    const RegoleCampo r = m_regole.value(indice);
    if (r.maiuscole)
        Keypress_Upper(KeyAscii);
    if (KeyAscii == 0)
        return;
    QLineEdit* campo = TxtDati.value(indice);
    switch (r.filtro) {
    case FiltroCampo::Nessuno: break;
    case FiltroCampo::Caratteri: FiltroCaratteri(KeyAscii); break;
    case FiltroCampo::Intero: Keypress_Integer(KeyAscii); break;
    case FiltroCampo::Decimale: Keypress_Decimale(campo, KeyAscii, r.decimali); break;
    case FiltroCampo::Data: Keypress_Data(campo, KeyAscii); break;
    }
}

bool SchermataRecord::TxtDati_Validate(int indice) { return ValidaGenere(indice); }

bool SchermataRecord::ValidaGenere(int indice)
{
    QLineEdit* campo = TxtDati.value(indice);
    if (!campo)
        return true;
    const QString testo = campo->text();
    switch (Genere(indice)) {
    case GenereCampo::Libero:
        return true;
    case GenereCampo::Data:
        if (IsDate(testo)) {
            campo->setText(Format(CDate(testo), QStringLiteral("DD/MM/YYYY")));
            return true;
        }
        if (testo.isEmpty())
            return true;
        MsgBox(QStringLiteral("Data non valida"), StileMsg::Esclamativo);
        return false;
    case GenereCampo::Importo:
        campo->setText(FormatoNumero(testo, QStringLiteral("##0.00")));
        return true;
    case GenereCampo::Quantita:
        campo->setText(FormatoNumero(testo, QStringLiteral("##0.0000")));
        return true;
    case GenereCampo::NumeroDomanda:
        campo->setText(PadSinistra(testo, 11, QLatin1Char('0')));
        return true;
    case GenereCampo::Progressivo:
        campo->setText(PadSinistra(testo, 2, QLatin1Char('0')));
        return true;
    }
    return true;
}

void SchermataRecord::Cmddati_Click(int indice)
{
    if (indice == 1)
        Scarica();
    else if (indice == 2)
        Help();
}

void SchermataRecord::Sorveglia(QWidget* controllo) { controllo->installEventFilter(this); }

void SchermataRecord::keyPressEvent(QKeyEvent* evento)
{
    switch (evento->key()) {
    case Qt::Key_F1:
        Protetto(QStringLiteral("Cmddati_Click"), [this] { TastoF1(); });
        return;
    // Esc e Invio non chiudono la maschera e non premono pulsanti.
    case Qt::Key_Escape:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        evento->accept();
        return;
    default:
        QDialog::keyPressEvent(evento);
    }
}

bool SchermataRecord::eventFilter(QObject* oggetto, QEvent* evento)
{
    if (evento == m_eventoProprio)
        return false;
    auto* controllo = qobject_cast<QWidget*>(oggetto);
    auto* campo = qobject_cast<QLineEdit*>(oggetto);
    const int indice = campo ? IndiceCampo(campo) : -1;
    if (indice < 0)
        campo = nullptr;

    switch (evento->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
        // Il clic che ha tolto il fuoco a un campo rifiutato va perso.
        if (m_campoRifiutato && controllo != m_campoRifiutato)
            return true;
        break;
    case QEvent::KeyPress: {
        auto* tasto = static_cast<QKeyEvent*>(evento);
        if (tasto->key() == Qt::Key_F1) {
            Protetto(QStringLiteral("Cmddati_Click"), [this] { TastoF1(); });
            return true;
        }
        if (campo)
            return TastoNelCampo(campo, indice, tasto);
        break;
    }
    case QEvent::FocusIn:
        if (campo && !m_ripristino)
            SelezionaTesto(campo);
        break;
    case QEvent::FocusOut: {
        const auto ragione = static_cast<QFocusEvent*>(evento)->reason();
        if (campo && ragione != Qt::ActiveWindowFocusReason && ragione != Qt::PopupFocusReason &&
            ragione != Qt::MenuBarFocusReason)
            FuocoPerso(campo, indice);
        break;
    }
    default:
        break;
    }
    return QDialog::eventFilter(oggetto, evento);
}

// Un tasto premuto in un campo: Canc ignorato, poi ogni carattere passa per
// TxtDati_KeyPress come codice windows-1252 e arriva al campo come il filtro
// l'ha lasciato. I tasti che il filtro ha inviato si battono subito dopo.
bool SchermataRecord::TastoNelCampo(QLineEdit* campo, int indice, QKeyEvent* evento)
{
    const int tasto = evento->key();
    if (tasto == Qt::Key_Delete)
        return true;

    // Solo i tasti che producono un carattere hanno un codice; frecce, tasti
    // funzione e tabulatore passano come sono.
    QList<int> codici;
    if (tasto == Qt::Key_Backspace)
        codici << CodiceBackspace;
    else if (tasto == Qt::Key_Return || tasto == Qt::Key_Enter)
        codici << CodiceInvio;
    else if (tasto == Qt::Key_Escape)
        codici << CodiceEsc;
    else if (tasto == Qt::Key_Tab || tasto == Qt::Key_Backtab)
        return false;
    else if ((evento->modifiers() & Qt::ControlModifier) && !(evento->modifiers() & Qt::AltModifier) &&
             tasto >= Qt::Key_A && tasto <= Qt::Key_Z)
        codici << (tasto - Qt::Key_A + 1);  // Ctrl+lettera: i codici di controllo 1..26
    else
        for (const QChar c : evento->text())
            codici << CodiceCarattere(c);
    if (codici.isEmpty())
        return false;

    QPointer<QLineEdit> guardia(campo);
    for (const int originale : std::as_const(codici)) {
        if (!guardia)
            break;
        QList<TastoSimulato> inviati;
        {
            ConsegnaTasto consegna;
            int KeyAscii = originale;
            // Dopo un errore del filtro il tasto resta com'era.
            if (!Protetto(QStringLiteral("TxtDati_KeyPress"), [&] { TxtDati_KeyPress(indice, KeyAscii); }))
                KeyAscii = originale;
            if (KeyAscii != 0 && guardia) {
                if (KeyAscii == originale && codici.size() == 1) {
                    QKeyEvent copia(evento->type(), evento->key(), evento->modifiers(), evento->text(),
                                    evento->isAutoRepeat(), static_cast<quint16>(evento->count()));
                    Consegna(guardia, copia);
                } else {
                    QKeyEvent cambiato = EventoDelCodice(KeyAscii, *evento);
                    Consegna(guardia, cambiato);
                }
            }
            inviati = ConsegnaTasto::PrendiCoda();
        }
        // I tasti inviati dal filtro vanno a chi ha il fuoco ora (dopo un
        // tabulatore è il campo successivo) e rifanno tutto il percorso.
        for (const TastoSimulato& t : std::as_const(inviati)) {
            QWidget* destinatario = QApplication::focusWidget();
            if (!destinatario || !isAncestorOf(destinatario))
                destinatario = guardia;
            if (!destinatario)
                break;
            QKeyEvent premuto(QEvent::KeyPress, t.tasto, Qt::NoModifier, t.testo);
            QCoreApplication::sendEvent(destinatario, &premuto);
            QKeyEvent rilasciato(QEvent::KeyRelease, t.tasto, Qt::NoModifier, t.testo);
            QCoreApplication::sendEvent(destinatario, &rilasciato);
        }
    }
    return true;
}

// Il tasto arriva al campo; se il campo non lo usa (Invio, Esc) sale alla
// maschera come avrebbe fatto l'evento originale.
void SchermataRecord::Consegna(QWidget* destinatario, QKeyEvent& evento)
{
    const QEvent* precedente = m_eventoProprio;
    m_eventoProprio = &evento;
    QCoreApplication::sendEvent(destinatario, &evento);
    m_eventoProprio = precedente;
}

// Il campo perde il fuoco: se va a un controllo della maschera che fa
// validare, gira TxtDati_Validate; un rifiuto riporta subito il fuoco nel
// campo e fa perdere il clic che lo aveva tolto.
bool SchermataRecord::FuocoPerso(QLineEdit* campo, int indice)
{
    if (m_inValidazione || m_ripristino)
        return true;
    QWidget* nuovo = QApplication::focusWidget();
    if (!nuovo || nuovo == campo || !isAncestorOf(nuovo))
        return true;
    if (nuovo->property(ProprietaValidazione).isValid() && !nuovo->property(ProprietaValidazione).toBool())
        return true;

    m_inValidazione = true;
    bool valido = true;
    QPointer<QLineEdit> guardia(campo);
    // Dopo un errore non previsto il campo si lascia: non deve bloccare la maschera.
    Protetto(QStringLiteral("TxtDati_Validate"), [&] { valido = TxtDati_Validate(indice); });
    m_inValidazione = false;
    if (valido || !guardia)
        return valido;

    m_campoRifiutato = guardia;
    m_ripristino = true;
    guardia->setFocus(Qt::OtherFocusReason);
    m_ripristino = false;
    // Il rifiuto vale per il clic in corso; poi i controlli tornano liberi.
    QTimer::singleShot(0, this, [this] { m_campoRifiutato.clear(); });
    return false;
}
