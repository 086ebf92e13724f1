#include "common/ListaSelezione.h"

#include "common/aiuti_maschera.h"
#include "common/aiuto.h"
#include "common/errore.h"
#include "common/filtri_tastiera.h"
#include "common/log_errori.h"
#include "common/piattaforma.h"
#include "shell/registro_maschere.h"
#include "shell/session_state.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QSqlField>
#include <QSqlRecord>
#include <QTableView>
#include <QVBoxLayout>

QString ListaSelezione::NomeHelp;

ListaSelezione::ListaSelezione(const Aspetto& aspetto, QWidget* genitore) : QWidget(genitore)
{
    setObjectName(aspetto.nome);
    setWindowTitle(QStringLiteral("Elenco "));

    // Barra di ricerca.
    auto* ricerca = new QGroupBox(this);
    ricerca->setObjectName(aspetto.corniceRicerca);
    auto* griglia = new QGridLayout(ricerca);
    const auto campo = [&](int indice, const QString& etichetta, int lunghezza) {
        auto* lbl = new QLabel(etichetta, ricerca);
        auto* txt = new QLineEdit(ricerca);
        txt->setObjectName(QStringLiteral("TxtSEL_NumDom_%1").arg(indice));
        txt->setMaxLength(lunghezza);
        // Undici cifre e qualcosa d'aria.
        txt->setMinimumWidth(txt->fontMetrics().horizontalAdvance(QStringLiteral("0")) * 14);
        txt->installEventFilter(this);
        lbl->setBuddy(txt);
        TxtSEL_NumDom.insert(indice, txt);
        LblSEL_NumDom.insert(indice, lbl);
        griglia->addWidget(lbl, 0, indice * 2);
        griglia->addWidget(txt, 0, indice * 2 + 1);
    };
    campo(0, QStringLiteral("Numero domanda : "), 11);
    if (aspetto.secondoCampo)
        campo(1, QStringLiteral("N° Progressivo "), 2);
    const int colonna = aspetto.secondoCampo ? 4 : 2;
    griglia->addWidget(new QLabel(QStringLiteral("Campagna : "), ricerca), 0, colonna);
    CmbDomAnnualita = new QComboBox(ricerca);
    CmbDomAnnualita->setObjectName(QStringLiteral("CmbDomAnnualita"));
    CmbDomAnnualita->setMinimumContentsLength(6);
    griglia->addWidget(CmbDomAnnualita, 0, colonna + 1);
    auto* cerca = new QPushButton(QStringLiteral("Cerca ..."), ricerca);
    Cmddati.insert(0, cerca);
    griglia->addWidget(cerca, 0, colonna + 2);
    griglia->setColumnStretch(colonna + 3, 1);

    // Caselle dei segni di stampa e di scarico.
    auto* caselle = new QGroupBox(aspetto.titoloCaselle, this);
    caselle->setObjectName(aspetto.corniceCaselle);
    auto* rigaCaselle = new QHBoxLayout(caselle);
    for (const auto& [indice, testo] : {std::pair{0, "Stampate"}, std::pair{1, "Scaricate"}}) {
        auto* c = new QCheckBox(QString::fromLatin1(testo), caselle);
        c->setObjectName(QStringLiteral("Check1_%1").arg(indice));
        Check1.insert(indice, c);
        rigaCaselle->addWidget(c);
        connect(c, &QCheckBox::clicked, this, [this, i = indice] { Check1_Click(i); });
    }

    auto* testa = new QHBoxLayout;
    testa->addWidget(ricerca, 1);
    testa->addWidget(caselle);

    // Griglia: righe intere, selezione multipla con Ctrl e Maiusc come il
    // selettore di record della griglia originale.
    m_didascalia = new QLabel(this);
    m_didascalia->setObjectName(QStringLiteral("Didascalia"));
    m_didascalia->setAlignment(Qt::AlignCenter);
    QFont grassetto = m_didascalia->font();
    grassetto.setBold(true);
    m_didascalia->setFont(grassetto);
    Griglia = new QTableView(this);
    Griglia->setObjectName(aspetto.nomeGriglia);
    Griglia->setSelectionBehavior(QAbstractItemView::SelectRows);
    Griglia->setSelectionMode(QAbstractItemView::ExtendedSelection);
    Griglia->setEditTriggers(QAbstractItemView::NoEditTriggers);
    Griglia->verticalHeader()->setDefaultSectionSize(Griglia->fontMetrics().height() + 6);
    Griglia->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    Griglia->horizontalHeader()->setSectionsClickable(true);
    Griglia->horizontalHeader()->setStretchLastSection(true);
    Data = new ModelloLista(this);
    Griglia->setModel(Data);
    AssociaDidascalia(Griglia, m_didascalia);
    connect(Griglia->horizontalHeader(), &QHeaderView::sectionClicked, this,
            [this](int c) { Intestazione_Click(c); });
    connect(Griglia, &QTableView::clicked, this, [this] { Griglia_Click(); });
    connect(Griglia->selectionModel(), &QItemSelectionModel::currentRowChanged, this, [this] { RigaCambiata(); });

    m_areaCornici = new QHBoxLayout;

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(testa);
    layout->addWidget(m_didascalia);
    layout->addWidget(Griglia, 1);
    layout->addLayout(m_areaCornici);

    connect(cerca, &QPushButton::clicked, this, [this] { Cmddati_Click(0); });
    connect(CmbDomAnnualita, &QComboBox::activated, this, [this] { CmbDomAnnualita_Click(); });
    resize(860, 560);
}

ListaSelezione::~ListaSelezione()
{
    // Anche quando la maschera se ne va senza chiudersi (la finestra
    // principale che si distrugge).
    sessione().CampagnaSelezionata.clear();
}

QGroupBox* ListaSelezione::AggiungiCornice(const QString& nome, const QList<QPair<int, QString>>& pulsanti)
{
    auto* cornice = new QGroupBox(this);
    cornice->setObjectName(nome);
    auto* riga = new QHBoxLayout(cornice);
    riga->addStretch();
    for (const auto& [indice, didascalia] : pulsanti) {
        auto* p = new QPushButton(didascalia, cornice);
        p->setObjectName(QStringLiteral("Cmddati_%1").arg(indice));
        p->setMinimumWidth(96);
        Cmddati.insert(indice, p);
        riga->addWidget(p);
        connect(p, &QPushButton::clicked, this, [this, i = indice] { Cmddati_Click(i); });
    }
    riga->addStretch();
    cornice->hide();
    m_cornici.insert(nome, cornice);
    m_areaCornici->addWidget(cornice);
    return cornice;
}

QGroupBox* ListaSelezione::Cornice(const QString& nome) const { return m_cornici.value(nome); }

int ListaSelezione::Codice() { return sessione().OperazioneCorrente.toInt(); }

void ListaSelezione::Protetto(const QString& etichetta, const std::function<void()>& f)
{
    try {
        f();
    } catch (const ErroreSistema& e) {
        ScriviLogErr(QString(), etichetta, e.numero(), e.descrizione());
    }
}

void ListaSelezione::Form_Load()
{
    setWindowTitle(windowTitle() + sessione().TitoloMaschera);
    TitoloApertura = sessione().TitoloMaschera.toUpper().trimmed();
    Check1[0]->setEnabled(true);
    Check1[1]->setEnabled(true);
    for (QGroupBox* c : std::as_const(m_cornici))
        c->hide();

    const int codice = Codice();
    // L'apertura non ha un'etichetta d'errore nel programma originale: un
    // guasto qui si registra e la maschera resta aperta, con la lista vuota.
    Protetto(objectName() + QStringLiteral(" Form_Load"), [&] {
        if (ApriPerCodice(codice))
            Cerca();
    });

    const Combo combo = ComboPerCodice(codice);
    if (combo == Combo::NonRiempita)
        return;
    CaricaCmb(CmbDomAnnualita, QStringLiteral("CAMPAGNA"), QStringLiteral("ANNUALITA"), QString(), false,
              QStringLiteral(" ORDER BY ANNUALITA"), false, combo == Combo::ConRigaVuota);
    // La combo portata sulla campagna corrente vale come una scelta: la
    // lista dello scarico e delle stampe si apre già filtrata.
    if (combo == Combo::SullaCampagnaCorrente && !sessione().CampagnaCorrente.isEmpty())
        CmbDomAnnualita_Click();
}

void ListaSelezione::CaricaLista(const IstruzioneSql& condizione, const QString& testoAggiunto)
{
    Aggiorna(condizione, testoAggiunto);
    Colonne();
    // Nessuna intestazione tagliata: una colonna è larga almeno quanto la sua didascalia.
    QHeaderView* intestazione = Griglia->horizontalHeader();
    for (int i = 0; i < Data->columnCount(); ++i)
        if (!Griglia->isColumnHidden(i))
            Griglia->setColumnWidth(i, std::max(Griglia->columnWidth(i), intestazione->sectionSizeHint(i)));
    // Come una griglia legata a un recordset appena aperto: la riga corrente
    // è la prima, nessuna selezionata.
    if (Data->rowCount() > 0) {
        int prima = 0;
        while (prima < Data->columnCount() - 1 && Griglia->isColumnHidden(prima))
            ++prima;
        Griglia->selectionModel()->setCurrentIndex(Data->index(0, prima), QItemSelectionModel::NoUpdate);
    }
}

void ListaSelezione::Cerca() { CaricaLista(ImpostaFiltro(), TestoAggiunto()); }

void ListaSelezione::CmbDomAnnualita_Click()
{
    sessione().CampagnaSelezionata = CmbDomAnnualita->currentIndex() < 0 ? QString() : CmbDomAnnualita->currentText();
    Cmddati_Click(0);
}

void ListaSelezione::Cmddati_Click(int indice)
{
    Protetto(QStringLiteral(" FrmSeleziona CmdDATI_Click"), [&] { Esegui(indice); });
    Clessidra(false);
}

void ListaSelezione::Help(const QString& argomento)
{
    if (!argomento.isEmpty())
        NomeHelp = argomento;
    MostraHelp(NomeHelp);
}

void ListaSelezione::ApriSeguente(const QString& nome) { ApriMascheraModale(nome, this); }

void ListaSelezione::Avviso(const QString& testo)
{
    MsgBox(testo, StileMsg::Informazione, sessione().TitoloMaschera);
}

int ListaSelezione::RigheSelezionate() const { return Griglia->selectionModel()->selectedRows().size(); }

int ListaSelezione::RigaCorrente() const
{
    const QModelIndex corrente = Griglia->selectionModel()->currentIndex();
    return corrente.isValid() && corrente.row() < Data->rowCount() ? corrente.row() : -1;
}

Valore ListaSelezione::Campo(const QString& nome) const { return Data->Campo(RigaCorrente(), nome); }

Valore ListaSelezione::Campo(int posizione) const { return Data->Campo(RigaCorrente(), posizione); }

bool ListaSelezione::AlmenoUnaRiga() const
{
    if (RigheSelezionate() > 0)
        return true;
    Avviso(QStringLiteral("Selezionare almeno una domanda."));
    return false;
}

bool ListaSelezione::UnaSolaRiga(const QString& nessuna, const QString& troppe) const
{
    const int righe = RigheSelezionate();
    if (righe == 1)
        return true;
    Avviso(righe == 0 ? nessuna : troppe);
    return false;
}

void ListaSelezione::Scarica()
{
    if (auto* sotto = qobject_cast<QMdiSubWindow*>(parentWidget()))
        sotto->close();
    else
        close();
}

void ListaSelezione::Intestazione_Click(int colonna)
{
    // La lista intera ordinata per il campo della colonna, con il nome della
    // tabella davanti: nelle liste con FATTURE o TAB_UTF unite un nome solo
    // può essere ambiguo.
    Protetto(objectName() + QStringLiteral(" HeadClick"), [&] {
        const QSqlField campo = Data->record().field(colonna);
        if (campo.name().isEmpty())
            return;
        const QString nome = campo.tableName().isEmpty() ? campo.name() : campo.tableName() + QLatin1Char('.') + campo.name();
        CaricaLista(IstruzioneSql(QStringLiteral(" ORDER BY ") + nome));
    });
}

void ListaSelezione::Griglia_Click()
{
    // Colore di evidenziazione &HFF8080 (blu, verde, rosso).
    QPalette p = Griglia->palette();
    p.setColor(QPalette::Highlight, QColor(0x80, 0x80, 0xFF));
    p.setColor(QPalette::Inactive, QPalette::Highlight, QColor(0x80, 0x80, 0xFF));
    Griglia->setPalette(p);
}

void ListaSelezione::keyPressEvent(QKeyEvent* evento)
{
    if (evento->key() == Qt::Key_F1) {
        F1();
        return;
    }
    QWidget::keyPressEvent(evento);
}

bool ListaSelezione::eventFilter(QObject* oggetto, QEvent* evento)
{
    // I campi di ricerca accettano solo cifre (Keypress_Integer).
    auto* campo = qobject_cast<QLineEdit*>(oggetto);
    if (campo && evento->type() == QEvent::KeyPress) {
        auto* tasto = static_cast<QKeyEvent*>(evento);
        if (tasto->key() == Qt::Key_F1) {
            F1();
            return true;
        }
        // Invio in un campo di ricerca cerca, come "Cerca ...".
        if (tasto->key() == Qt::Key_Return || tasto->key() == Qt::Key_Enter) {
            Cmddati_Click(0);
            return true;
        }
        if (tasto->text().size() == 1 && !(tasto->modifiers() & (Qt::ControlModifier | Qt::AltModifier))) {
            const int originale = CodiceCarattere(tasto->text().at(0));
            int codice = originale;
            Keypress_Integer(codice);
            if (codice == 0)
                return true;
            if (codice != originale) {
                campo->insert(QString(CarattereCodice(codice)));
                return true;
            }
        }
    }
    return QWidget::eventFilter(oggetto, evento);
}

void ListaSelezione::showEvent(QShowEvent* evento)
{
    QWidget::showEvent(evento);
    if (m_posizionata)
        return;
    m_posizionata = true;
    if (auto* sotto = qobject_cast<QMdiSubWindow*>(parentWidget()))
        if (QMdiArea* area = sotto->mdiArea())
            PosizionaForm(sotto, false, area->viewport());
}

void ListaSelezione::closeEvent(QCloseEvent* evento)
{
    // All'uscita nessuna campagna resta scelta.
    sessione().CampagnaSelezionata.clear();
    evento->accept();
}
