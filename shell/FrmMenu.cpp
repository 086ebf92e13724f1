#include "shell/FrmMenu.h"

#include "archive/Archivio.h"
#include "common/errore.h"
#include "common/liste.h"
#include "common/log_errori.h"
#include "common/piattaforma.h"
#include "interchange/CaricoComune.h"
#include "interchange/MascheraCarico.h"
#include "shell/ApriDatabase.h"
#include "shell/registro_maschere.h"
#include "shell/session_state.h"

#include <QAction>
#include <QCloseEvent>
#include <QDialog>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QTimer>
#include <utility>

namespace {
FrmMenu* s_istanza = nullptr;
}

FrmMenu* FrmMenu::Istanza() { return s_istanza; }

FrmMenu& FrmMenu::Carica()
{
    if (!s_istanza) {
        s_istanza = new FrmMenu;
        s_istanza->Form_Load();
    }
    return *s_istanza;
}

void FrmMenu::Scarica() { delete s_istanza; }

FrmMenu::FrmMenu()
{
    setObjectName(QStringLiteral("FrmMenu"));
    // La didascalia dichiarata nella maschera; il caricamento la sostituisce.
    setWindowTitle(QStringLiteral("DISTILLAZIONE FACOLTATIVA Art.29 - CAMP."));
    m_area = new QMdiArea(this);
    m_area->setObjectName(QStringLiteral("AreaMdi"));
    setCentralWidget(m_area);
    resize(1024, 720);
    CostruisciMenu();
}

FrmMenu::~FrmMenu()
{
    if (s_istanza == this)
        s_istanza = nullptr;
}

void FrmMenu::Form_Load()
{
    ApriDatabase(false);
    setWindowTitle(TitoloLungo + QStringLiteral(" - Campagna ") + CampagnaEstesa);
    // Senza distilleria registrata si passa prima da frmInizializza. Il
    // caricamento non ha un'etichetta d'errore: un guasto nella lettura ferma
    // il programma come quello dell'apertura, senza uscire nel ciclo degli eventi.
    try {
        EseguiAzione(NomiAzioni::VerificaDistilleria);
    } catch (const ErroreSistema& e) {
        TerminaPerErrore(e);
    }
}

QAction* FrmMenu::Voce(QMenu* menu, const QString& testo, const QString& controllo, int indice, bool disponibile)
{
    QAction* a = menu->addAction(testo);
    a->setObjectName(QStringLiteral("%1_%2").arg(controllo).arg(indice));
    a->setProperty("Controllo", controllo);
    a->setProperty("Index", indice);
    // Le voci dichiarate non disponibili restano visibili e spente per sempre.
    a->setEnabled(disponibile);
    connect(a, &QAction::triggered, this, [this, controllo, indice] { Clic(controllo, indice); });
    return a;
}

void FrmMenu::Separatore(QMenu* menu, const QString& controllo, int indice)
{
    QAction* a = menu->addSeparator();
    a->setObjectName(QStringLiteral("%1_%2").arg(controllo).arg(indice));
    a->setProperty("Controllo", controllo);
    a->setProperty("Index", indice);
}

QMenu* FrmMenu::Sottomenu(QMenu* menu, const QString& testo, const QString& controllo, int indice)
{
    QMenu* sotto = menu->addMenu(testo);
    const QString nome = QStringLiteral("%1_%2").arg(controllo).arg(indice);
    sotto->setObjectName(nome);
    sotto->menuAction()->setObjectName(nome);
    sotto->menuAction()->setProperty("Controllo", controllo);
    sotto->menuAction()->setProperty("Index", indice);
    return sotto;
}

void FrmMenu::CostruisciMenu()
{
    QMenuBar* barra = menuBar();

    QMenu* mnuGest = barra->addMenu(QStringLiteral("Gestione"));
    mnuGest->setObjectName(QStringLiteral("mnuGest"));
    mnuGest->menuAction()->setObjectName(QStringLiteral("mnuGest"));

    const QString dist = QStringLiteral("mnuDist");
    QMenu* fatturazione = Sottomenu(mnuGest, QStringLiteral("Fatturazione"), QStringLiteral("mnuGestDist"), 1);
    Voce(fatturazione, QStringLiteral("Domande"), dist, 1);
    Voce(fatturazione, QStringLiteral("Fatture"), dist, 2);
    Separatore(fatturazione, dist, 3);
    Voce(fatturazione, QStringLiteral("Cambio N° Domanda"), dist, 4);
    Separatore(fatturazione, dist, 5);
    Voce(fatturazione, QStringLiteral("Stampe"), dist, 6);
    Voce(fatturazione, QStringLiteral("Stampe Bolle"), dist, 7, false);
    Separatore(fatturazione, dist, 8);
    Voce(fatturazione, QStringLiteral("Scarico Domande"), dist, 9);
    Separatore(fatturazione, dist, 10);
    Voce(fatturazione, QStringLiteral("Carico fornitura"), dist, 11);

    Separatore(mnuGest, QStringLiteral("mnuGestDist"), 2);

    const QString prod = QStringLiteral("mnuDistprod");
    QMenu* conferimenti = Sottomenu(mnuGest, QStringLiteral("Conferimenti"), QStringLiteral("mnuGestDist"), 3);
    Voce(conferimenti, QStringLiteral("Domande"), prod, 1);
    Voce(conferimenti, QStringLiteral("Produttore"), prod, 2, false);
    Voce(conferimenti, QStringLiteral("Certificati UTF"), prod, 3);
    Separatore(conferimenti, prod, 4);
    QMenu* cambio = Sottomenu(conferimenti, QStringLiteral("Cambio N° "), prod, 5);
    Voce(cambio, QStringLiteral("Domanda"), QStringLiteral("mnuDistCambio"), 1);
    Voce(cambio, QStringLiteral("Certificato UTF"), QStringLiteral("mnuDistCambio"), 2);
    Separatore(conferimenti, prod, 6);
    QMenu* stampe = Sottomenu(conferimenti, QStringLiteral("Stampe riepilogative"), prod, 7);
    Voce(stampe, QStringLiteral("Domanda"), QStringLiteral("mnuDistprodstampa"), 1);
    Voce(stampe, QStringLiteral("Prospetto a saldo"), QStringLiteral("mnuDistprodstampa"), 2, false);
    Voce(stampe, QStringLiteral("UTF"), QStringLiteral("mnuDistprodstampa"), 3);
    Separatore(conferimenti, prod, 8);
    Voce(conferimenti, QStringLiteral("Scarica Domanda"), prod, 9);
    Separatore(conferimenti, prod, 10);
    Voce(conferimenti, QStringLiteral("Carico fornitura"), prod, 11);

    Separatore(mnuGest, QStringLiteral("mnuGestDist"), 4);
    Voce(mnuGest, QStringLiteral("Esci"), QStringLiteral("mnuGestDist"), 5);

    QMenu* sistema = barra->addMenu(QStringLiteral("Funzioni di sistema"));
    sistema->setObjectName(QStringLiteral("Sistema"));
    sistema->menuAction()->setObjectName(QStringLiteral("Sistema"));
    Voce(sistema, QStringLiteral("Inizializza Distilleria"), QStringLiteral("mnuSistema"), 1);
    QMenu* archivi = Sottomenu(sistema, QStringLiteral("Archivi"), QStringLiteral("mnuSistema"), 2);
    Voce(archivi, QStringLiteral("Backup"), QStringLiteral("mnuAr"), 0);
    Voce(archivi, QStringLiteral("Restore"), QStringLiteral("mnuAr"), 1);
    Voce(sistema, QStringLiteral("Registro errori"), QStringLiteral("mnuSistema"), 3);

    // Voci della barra senza sottomenu: il clic le esegue direttamente.
    QAction* mnVer = barra->addAction(QStringLiteral("Versione"));
    mnVer->setObjectName(QStringLiteral("mnVer"));
    connect(mnVer, &QAction::triggered, this, [this] { mnVer_Click(); });
    QAction* mnuhelp = barra->addAction(QStringLiteral("Help"));
    mnuhelp->setObjectName(QStringLiteral("mnuhelp"));
    connect(mnuhelp, &QAction::triggered, this, [this] { mnuhelp_Click(); });
}

void FrmMenu::Clic(const QString& controllo, int indice)
{
    // Anche una scorciatoia da tastiera aspetta la fine del carico.
    if (CaricoComune::CaricoInCorso())
        return;
    if (controllo == QLatin1String("mnuDist"))
        mnuDist_Click(indice);
    else if (controllo == QLatin1String("mnuDistprod"))
        mnuDistprod_Click(indice);
    else if (controllo == QLatin1String("mnuDistCambio"))
        mnuDistCambio_Click(indice);
    else if (controllo == QLatin1String("mnuDistprodstampa"))
        mnuDistprodstampa_Click(indice);
    else if (controllo == QLatin1String("mnuGestDist"))
        mnuGestDist_Click(indice);
    else if (controllo == QLatin1String("mnuSistema"))
        mnuSistema_Click(indice);
    else if (controllo == QLatin1String("mnuAr"))
        mnuAr_Click(indice);
}

void FrmMenu::Operazione(int codice, const QString& titolo, const QString& maschera)
{
    sessione().OperazioneCorrente = QVariant(codice);
    sessione().TitoloMaschera = titolo;
    MostraMaschera(maschera);
}

void FrmMenu::EseguiAzione(const QString& nome)
{
    if (const auto* azione = TrovaAzione(nome); azione && *azione)
        (*azione)();
}

void FrmMenu::mnuDist_Click(int Index)
{
    const QString selezione = QStringLiteral("FrmSelezione");
    switch (Index) {
    case 1: Operazione(0, QStringLiteral(" Domande "), selezione); break;
    case 2: Operazione(1, QStringLiteral(" Fatture "), selezione); break;
    case 4: Operazione(3, QStringLiteral(" Cambio Num. Domande "), selezione); break;
    case 6: Operazione(5, QStringLiteral("Stampa Domanda "), selezione); break;
    case 7:
        // Voce spenta: il gestore c'è ma l'utente non lo raggiunge.
        sessione().TitoloMaschera = QStringLiteral("Stampa Bolle ");
        EseguiAzione(NomiAzioni::StampaBolleMenu);
        break;
    case 9: Operazione(4, QStringLiteral(" Scarico della Domanda "), selezione); break;
    case 11: Operazione(6, QStringLiteral(" Carico della Domanda "), QStringLiteral("frmCarico")); break;
    default: break;
    }
}

void FrmMenu::mnuDistprod_Click(int Index)
{
    const QString selezione = QStringLiteral("FrmProduttori_Selezione");
    switch (Index) {
    case 1: Operazione(7, QStringLiteral(" Domande del distillatore "), selezione); break;
    case 2: Operazione(8, QStringLiteral(" Produttore "), QStringLiteral("FrmProduttore")); break;
    case 3: Operazione(11, QStringLiteral(" Certificato UTF "), selezione); break;
    case 9: Operazione(16, QStringLiteral(" Scarico delle Domande distillatore "), selezione); break;
    case 11: Operazione(14, QStringLiteral(" Carico ") + TitoloLungo, QStringLiteral("FrmProduttore_carico")); break;
    default: break;
    }
}

void FrmMenu::mnuDistCambio_Click(int Index)
{
    const QString selezione = QStringLiteral("FrmProduttori_Selezione");
    switch (Index) {
    case 1: Operazione(12, QStringLiteral(" Cambio Num. Domande del Produttore"), selezione); break;
    case 2: Operazione(13, QStringLiteral(" Cambio Num. Certificato Utf"), selezione); break;
    default: break;
    }
}

void FrmMenu::mnuDistprodstampa_Click(int Index)
{
    const QString selezione = QStringLiteral("FrmProduttori_Selezione");
    switch (Index) {
    case 1: Operazione(18, QStringLiteral("Stampa Domanda del distillatore"), selezione); break;
    case 3: Operazione(19, QStringLiteral("Stampa UTF "), selezione); break;
    default: break;  // 2, "Prospetto a saldo": spenta e senza azione
    }
}

void FrmMenu::mnuGestDist_Click(int Index)
{
    if (Index == 5)
        close();  // la domanda di uscita è in closeEvent
}

void FrmMenu::mnuSistema_Click(int Index)
{
    if (Index == 1) {
        sessione().TitoloMaschera = QStringLiteral(" Inizializza Distilleria ");
        MostraMaschera(QStringLiteral("frmInizializza"));
    } else if (Index == 3) {
        // Consultazione del registro errori, in sola lettura.
        MostraMaschera(QStringLiteral("frmRegistroErrori"));
    }
}

void FrmMenu::mnuAr_Click(int Index)
{
    ArchivioDaMenu(Index);
    if (Index != 1)
        return;
    // Le liste aperte mostrano subito i dati ripristinati.
    try {
        ModelloLista::RileggiTutte();
    } catch (const ErroreSistema& e) {
        ScriviLogErr(QString(), QStringLiteral("FrmMenu mnuAr_Click"), e.numero(), e.descrizione());
    }
}

void FrmMenu::mnVer_Click() { MostraMaschera(QStringLiteral("frmAbout")); }

void FrmMenu::mnuhelp_Click() { MostraMaschera(QStringLiteral("FrmHelp")); }

void FrmMenu::MostraMaschera(const QString& nome)
{
    const MascheraRegistrata* registrata = TrovaMaschera(nome);
    if (!registrata || !registrata->fabbrica)
        return;  // maschera non ancora disponibile

    if (registrata->apertura == Apertura::Modale) {
        ApriMascheraModale(nome, this);
        return;
    }

    // Una figlia già aperta si porta davanti: un secondo clic non la ricrea.
    if (QWidget* aperta = m_figli.value(nome)) {
        if (auto* sotto = qobject_cast<QMdiSubWindow*>(aperta->parentWidget())) {
            sotto->showNormal();
            m_area->setActiveSubWindow(sotto);
        }
        aperta->show();
        return;
    }
    QWidget* maschera = registrata->fabbrica(nullptr);
    if (!maschera)
        return;
    maschera->setAttribute(Qt::WA_DeleteOnClose);
    if (auto* carico = qobject_cast<MascheraCarico*>(maschera))
        connect(carico, &MascheraCarico::CaricoFinito, this, [this] {
            if (std::exchange(m_chiudiDopoCarico, false))
                QTimer::singleShot(0, this, &QWidget::close);
        });
    QMdiSubWindow* sotto = m_area->addSubWindow(maschera);
    m_figli.insert(nome, maschera);
    sotto->show();
    m_area->setActiveSubWindow(sotto);
}

QWidget* FrmMenu::MascheraAperta(const QString& nome) const { return m_figli.value(nome); }

void FrmMenu::closeEvent(QCloseEvent* evento)
{
    // Si esce solo a carico finito: la domanda arriva allora.
    if (CaricoComune::CaricoInCorso()) {
        m_chiudiDopoCarico = true;
        evento->ignore();
        return;
    }
    if (MsgBox(QStringLiteral("Abbandonare la sessione di lavoro ?"), StileMsg::SiNo + StileMsg::Domanda, TitoloLungo) ==
        RispostaMsg::No) {
        evento->ignore();
        return;
    }
    // La connessione non si chiude: la chiude la fine del processo.
    evento->accept();
    TerminaProcesso();
}
