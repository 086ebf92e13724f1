#include "deliveries/FrmProduttore_SelezionaProd.h"

#include "common/aiuti_maschera.h"
#include "common/aiuto.h"
#include "common/errore.h"
#include "common/log_errori.h"
#include "common/numeri.h"
#include "common/piattaforma.h"
#include "deliveries/AssociaProduttore.h"
#include "deliveries/MetodiUtf.h"
#include "deliveries/griglie_conferimenti.h"
#include "shell/registro_maschere.h"
#include "shell/session_state.h"
#include "store/database.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSqlRecord>
#include <QTabWidget>
#include <QTableView>
#include <QVBoxLayout>

namespace {

const QString ModoCertificati = QStringLiteral("711");
constexpr int ModoProduttori = 10;
const QString TopicHelp = QStringLiteral("FRMSELEZIONE_SELFAT");
const QString EtichettaClick = QStringLiteral(" FrmSelezionaFatture CmdDATI_Click");
const QString EtichettaSelRiga = QStringLiteral(" FrmProduttore_SelezionaProd.SelRiga_SelFatture");
const QString EtichettaPassaCampi = QStringLiteral(" FrmProduttore_SelezionaProd PassaCampi_SelProd");

const QString Eseguita = QStringLiteral("Operazione correttamente eseguita.");
const QString NonEseguitaFatture = QStringLiteral("Operazione non eseguita, verificare eventuale presenza di fatture.");
const QString NessunCertificato = QStringLiteral("Non sono presenti certificato UTF.");

// Una casella di sola lettura, con il fondo della finestra: si legge bene e
// non sembra da riempire.
QLineEdit* CampoMostrato(QWidget* genitore, int indice, int caratteri)
{
    auto* campo = new QLineEdit(genitore);
    campo->setObjectName(QStringLiteral("TxtDati_%1").arg(indice));
    campo->setReadOnly(true);
    QPalette colori = campo->palette();
    colori.setColor(QPalette::Base, colori.color(QPalette::Window));
    campo->setPalette(colori);
    campo->setFocusPolicy(Qt::ClickFocus);
    campo->setMinimumWidth(campo->fontMetrics().horizontalAdvance(QLatin1Char('0')) * caratteri + 12);
    return campo;
}

// Aggiunge alla griglia di layout un'etichetta e il suo campo.
void Coppia(QGridLayout* layout, int riga, int colonna, const QString& etichetta, QLineEdit* campo)
{
    auto* label = new QLabel(etichetta, campo->parentWidget());
    label->setBuddy(campo);
    layout->addWidget(label, riga, colonna);
    layout->addWidget(campo, riga, colonna + 1);
}

}  // namespace

FrmProduttore_SelezionaProd::FrmProduttore_SelezionaProd(QWidget* genitore) : QDialog(genitore)
{
    setObjectName(QStringLiteral("FrmProduttore_SelezionaProd"));
    setWindowTitle(QStringLiteral("Seleziona Produttori"));
    setModal(true);
    auto* principale = new QVBoxLayout(this);

    // Intestazione: la domanda del distillatore.
    auto* testa = new QGridLayout;
    TxtDati[1] = CampoMostrato(this, 1, 11);
    TxtDati[2] = CampoMostrato(this, 2, 3);
    TxtDati[20] = CampoMostrato(this, 20, 4);
    for (int i : {1, 2, 20})
        TxtDati[i]->setMaximumWidth(TxtDati[i]->minimumWidth());
    Coppia(testa, 0, 0, QStringLiteral("Num. Domanda"), TxtDati[1]);
    Coppia(testa, 0, 2, QStringLiteral("Articolo"), TxtDati[2]);
    Coppia(testa, 0, 4, QStringLiteral("Campagna"), TxtDati[20]);
    testa->setColumnStretch(6, 1);
    principale->addLayout(testa);

    SSTabutf_prod = new QTabWidget(this);
    SSTabutf_prod->setObjectName(QStringLiteral("SSTabutf_prod"));
    principale->addWidget(SSTabutf_prod, 1);

    const auto pulsante = [this](QWidget* pagina, int indice, const char* didascalia) {
        auto* p = new QPushButton(QString::fromUtf8(didascalia), pagina);
        p->setObjectName(QStringLiteral("Cmddati_%1").arg(indice));
        p->setAutoDefault(false);
        Cmddati[indice] = p;
        connect(p, &QPushButton::clicked, this, [this, indice] { Cmddati_Click(indice); });
        return p;
    };
    const auto griglia = [this](QWidget* pagina, int indice, const QString& didascalia) {
        auto* g = new QTableView(pagina);
        g->setObjectName(QStringLiteral("TDBG_SelProd_%1").arg(indice));
        PreparaGriglia(g);
        auto* modello = new ModelloLista(g);
        g->setModel(modello);
        TDBG_SelProd[indice] = g;
        Data_SelProd_utf[indice] = modello;
        auto* etichetta = new QLabel(pagina);
        etichetta->setAlignment(Qt::AlignCenter);
        m_etichette[indice] = didascalia;
        AssociaDidascalia(g, etichetta);
        connect(g->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
                [this, indice] { RigaCambiata(indice); });
        connect(g->horizontalHeader(), &QHeaderView::sectionClicked, this,
                [this, indice](int colonna) { IntestazioneCliccata(indice, colonna); });
        return std::pair(etichetta, g);
    };

    // Pagina 0: i certificati della domanda.
    auto* pagina0 = new QWidget;
    auto* layout0 = new QVBoxLayout(pagina0);
    const auto [didascalia0, griglia0] = griglia(pagina0, 0, QStringLiteral("Certificati UTF della domanda"));
    layout0->addWidget(didascalia0);
    layout0->addWidget(griglia0, 1);
    auto* comandi0 = new QHBoxLayout;
    comandi0->addStretch(1);
    const struct {
        int indice;
        const char* didascalia;
    } pulsanti0[] = {{0, "Nuovo"}, {1, "Modifica"}, {2, "Cancella"}, {3, "Assegna"}, {4, "Esci"}, {5, "Help"}},
      pulsanti1[] = {{6, "Nuovo"}, {7, "Modifica"}, {8, "Cancella"}, {9, "Esci"}, {10, "Help"}};
    for (const auto& p : pulsanti0)
        comandi0->addWidget(pulsante(pagina0, p.indice, p.didascalia));
    layout0->addLayout(comandi0);
    SSTabutf_prod->addTab(pagina0, QStringLiteral("Certificati UTF"));

    // Pagina 1: i produttori del certificato.
    auto* pagina1 = new QWidget;
    auto* layout1 = new QVBoxLayout(pagina1);
    auto* certificato = new QGridLayout;
    TxtDati[4] = CampoMostrato(pagina1, 4, 9);
    TxtDati[5] = CampoMostrato(pagina1, 5, 20);
    Coppia(certificato, 0, 0, QStringLiteral("Numero del certificato UTF"), TxtDati[4]);
    Coppia(certificato, 0, 2, QStringLiteral("Ufficio UTF di "), TxtDati[5]);
    certificato->setColumnStretch(4, 1);
    layout1->addLayout(certificato);
    const auto [didascalia1, griglia1] = griglia(pagina1, 1, QStringLiteral("Produttori del certificato UTF"));
    layout1->addWidget(didascalia1);
    layout1->addWidget(griglia1, 1);

    // Due file di riquadri: in una sola la maschera usciva dalla finestra principale.
    auto* dati = new QGridLayout;
    int posto = 0;
    const QStringList prodotti = {QStringLiteral("Alcole grezzo"), QStringLiteral("Alcole neutro"),
                                  QStringLiteral("Acquavite")};
    for (const auto& [titolo, primo] : {std::pair(" Aiuto ", 6), std::pair(" Quantità ", 9)}) {
        auto* riquadro = new QGroupBox(QString::fromUtf8(titolo), pagina1);
        auto* l = new QGridLayout(riquadro);
        for (int i = 0; i < 3; ++i) {
            TxtDati[primo + i] = CampoMostrato(riquadro, primo + i, 15);
            Coppia(l, i, 0, prodotti[i], TxtDati[primo + i]);
        }
        dati->addWidget(riquadro, 0, posto++);
    }
    auto* altri = new QGroupBox(pagina1);
    auto* la = new QGridLayout(altri);
    const struct {
        int indice;
        const char* etichetta;
    } campiAltri[] = {{12, "Ettogradi"},
                      {13, "Vino effettivamenti distillato"},
                      {14, "Imp. detraibile per arricchimanto"}};
    int riga = 0;
    for (const auto& c : campiAltri) {
        TxtDati[c.indice] = CampoMostrato(altri, c.indice, 15);
        Coppia(la, riga++, 0, QString::fromUtf8(c.etichetta), TxtDati[c.indice]);
    }
    dati->addWidget(altri, 1, 0);
    auto* totali = new QGroupBox(QStringLiteral("Totali"), pagina1);
    auto* lt = new QGridLayout(totali);
    TxtDati[15] = CampoMostrato(totali, 15, 15);
    TxtDati[16] = CampoMostrato(totali, 16, 15);
    Coppia(lt, 0, 0, QStringLiteral("Vino effettivamente dist."), TxtDati[15]);
    Coppia(lt, 1, 0, QStringLiteral("Ettogradi "), TxtDati[16]);
    dati->addWidget(totali, 1, 1);
    layout1->addLayout(dati);
    auto* comandi1 = new QHBoxLayout;
    comandi1->addStretch(1);
    for (const auto& p : pulsanti1)
        comandi1->addWidget(pulsante(pagina1, p.indice, p.didascalia));
    layout1->addLayout(comandi1);
    SSTabutf_prod->addTab(pagina1, QStringLiteral("Produttori"));
    for (int i = 6; i <= 16; ++i)
        TxtDati[i]->setAlignment(Qt::AlignRight);

    connect(SSTabutf_prod, &QTabWidget::currentChanged, this, [this](int nuova) {
        const int lasciata = m_pagina;
        m_pagina = nuova;
        if (lasciata != nuova)
            SSTabutf_prod_Click(lasciata);
    });

    // Caricamento.
    const DomandaProduttoreSelezionata& d = sessione().DomandaProduttoreSel;
    TxtDati[1]->setText(d.DOMANDA);
    TxtDati[2]->setText(d.TIPO_ARTICOLO);
    TxtDati[20]->setText(d.CAMPAGNA);
    resize(980, 620);
    PosizionaForm(this, false, genitore);
    try {
        CaricaGriglia(0);
    } catch (const ErroreSistema& e) {
        ScriviLogErr(QString(), QStringLiteral("FrmProduttore_SelezionaProd Form_Load"), e.numero(), e.descrizione());
    }
}

QString FrmProduttore_SelezionaProd::Titolo() const { return sessione().TitoloMaschera; }

void FrmProduttore_SelezionaProd::keyPressEvent(QKeyEvent* evento)
{
    if (evento->key() == Qt::Key_F1) {
        MostraHelp(TopicHelp);
        return;
    }
    QDialog::keyPressEvent(evento);
}

void FrmProduttore_SelezionaProd::CaricaGriglia(int indice, const QString& ordine)
{
    const QVariant modo = indice == 0 ? QVariant(ModoCertificati) : QVariant(ModoProduttori);
    QTableView* g = TDBG_SelProd[indice];
    AggiornaGrigliaProduttori(FiltroListaProduttori(modo) + IstruzioneSql(ordine), g, modo, nullptr, false,
                              Data_SelProd_utf[indice]);
    ColonneGrigliaProduttori(g, modo, m_etichette.value(indice));
    g->resizeColumnsToContents();
    PortaAllaPrimaRiga(g);
    RigaCambiata(indice);
}

void FrmProduttore_SelezionaProd::RigaCambiata(int indice)
{
    if (RigaCorrente(TDBG_SelProd[indice]) < 0) {
        if (indice == 1)
            PassaCampi_SelProd(1);
        return;
    }
    SelRiga_SelFatture(indice);
    if (indice == 1)
        PassaCampi_SelProd(1);
}

void FrmProduttore_SelezionaProd::IntestazioneCliccata(int indice, int colonna)
{
    try {
        const QString campo = Data_SelProd_utf[indice]->record().fieldName(colonna);
        if (!campo.isEmpty())
            CaricaGriglia(indice, QStringLiteral(" ORDER BY ") + campo);
    } catch (const ErroreSistema& e) {
        ScriviLogErr(QString(), EtichettaClick, e.numero(), e.descrizione());
    }
}

void FrmProduttore_SelezionaProd::SelRiga_SelFatture(int indice)
{
    auto& s = sessione();
    try {
        const ModelloLista* m = Data_SelProd_utf[indice];
        const int riga = RigaCorrente(TDBG_SelProd[indice]);
        const auto testo = [&](const char* nome) { return m->Campo(riga, QString::fromLatin1(nome)).testo(); };
        const auto numero = [&](const char* nome) {
            return static_cast<qint32>(m->Campo(riga, QString::fromLatin1(nome)).intero());
        };
        if (indice == 0) {
            DomandaProduttoreSelezionata& d = s.DomandaProduttoreSel;
            d.ID_DOMANDA_PRODUTTORE = numero("ID_DOMANDA_PRODUTTORE");
            d.DOMANDA = testo("DOMANDA");
            d.STAM = testo("STAM");
            d.SCAR = testo("SCAR");
            d.TIPO_ARTICOLO = testo("TIPO_ARTICOLO");
            d.PROG_VERS = testo("PROG_VERS");
            d.ANTICIPO_RICEVUTO = testo("ANTICIPO_RICEVUTO");
            d.PROG_INVIO = numero("PROG_INVIO");
            // QUADRATURA non si legge: resta quella dell'ultimo carico o controllo.
            UtfSelezionato& u = s.UtfSel;
            u.iD_UTF = numero("iD_UTF");
            u.iD_DOMANDA = numero("TAB_UTF.iD_DOMANDA");
            u.NUMERO_CERTIFICATO_UTF = testo("TAB_UTF.NUMERO_CERTIFICATO_UTF");
            u.DESCR_UFFICIO_UTF_PROVINCIA = testo("TAB_UTF.DESCR_UFFICIO_UTF_PROVINCIA");
            u.SIGLA_UFFICIO_UTF_PROVINCIA = testo("SIGLA_UFFICIO_UTF_PROVINCIA");
            u.ISTAT_UFFICIO_UTF_PROVINCIA = testo("ISTAT_UFFICIO_UTF_PROVINCIA");
            u.DATA_EMISSIONE_CERTIFICATO = testo("TAB_UTF.DATA_EMISSIONE_CERTIFICATO");
            u.QTA_TOT_VINO_LAVORATO = testo("QTA_TOT_VINO_LAVORATO");
            u.QTA_TOT_ETTOGRADI_VINO_LAVORATO = testo("QTA_TOT_ETTOGRADI_VINO_LAVORATO");
            u.QTA_TOT_ALCOLE_NEUTRO_OTTENUTO = testo("QTA_TOT_ALCOLE_NEUTRO_OTTENUTO");
            u.QTA_TOT_ALCOLE_GREZZO_OTTENUTO = testo("QTA_TOT_ALCOLE_GREZZO_OTTENUTO");
            u.QTA_TOT_ACQUAVITE_OTTENUTO = testo("QTA_TOT_ACQUAVITE_OTTENUTO");
        } else {
            ProduttoreSelezionato& p = s.ProduttoreSel;
            p.AIUTO_ACQUAVITE = testo("AIUTO_ACQUAVITE");
            p.AIUTO_ALCOLE_GREZZO = testo("AIUTO_ALCOLE_GREZZO");
            p.AIUTO_ALCOLE_NEUTRO = testo("AIUTO_ALCOLE_NEUTRO");
            p.CAMPAGNA_PRESCELTA = testo("CAMPAGNA_PRESCELTA");
            p.CODICE_CONTRATTO_DISTILLAZIONE = testo("CODICE_CONTRATTO_DISTILLAZIONE");
            p.DENOMINAZIONE = testo("DENOMINAZIONE");
            p.CODI_FISC = testo("CODI_FISC");
            p.ETTOGRADI = testo("ETTOGRADI");
            p.iD_COLORE = testo("iD_COLORE");
            p.iD_PRODUTTORI = numero("iD_PRODUTTORI");
            p.IMPORTO_DETRAIBILE = testo("IMPORTO_DETRAIBILE");
            p.QTA_ACQUAVITE = testo("QTA_ACQUAVITE");
            p.QTA_ALCOLE_NEUTRO = testo("QTA_ALCOLE_NEUTRO");
            p.QTA_ALCOLE_GREZZO = testo("QTA_ALCOLE_GREZZO");
            p.QTA_MAX_DISTILLABILE = testo("QTA_MAX_DISTILLABILE");
            p.QTA_VINO_DISTILLATA_AIUTO = testo("QTA_VINO_DISTILLATA_AIUTO");
            p.QTA_VINO_EFFETIVAMENTE_DISTILLATA = testo("QTA_VINO_EFFETIVAMENTE_DISTILLATA");
            p.TITOLO_ALCOLOMETRICO_FATTURATO = testo("TITOLO_ALCOLOMETRICO_FATTURATO");
            p.TOTALE_AIUTO = testo("TOTALE_AIUTO");
            p.APPROVAZIONE_ANTICIPATA = testo("APPROVAZIONE_ANTICIPATA");
            p.PERC_APPROVAZIONE_ANTICIPATA = testo("PERC_APPROVAZIONE_ANTICIPATA");
            p.CODI_COLORE = testo("CODI_COLORE");
            p.DESC_COLORE = testo("DESC_COLORE");
        }
    } catch (const ErroreSistema& e) {
        ScriviLogErr(QString(), EtichettaSelRiga, e.numero(), e.descrizione());
    }
}

void FrmProduttore_SelezionaProd::PassaCampi_SelProd(int indice)
{
    const auto& s = sessione();
    try {
        TxtDati[4]->setText(s.UtfSel.NUMERO_CERTIFICATO_UTF);
        TxtDati[5]->setText(s.UtfSel.DESCR_UFFICIO_UTF_PROVINCIA);
        if (indice == 0)
            return;
        // Senza produttori nella lista i dati restano vuoti: quelli in
        // sessione sono di un altro certificato.
        const bool vuota = RigaCorrente(TDBG_SelProd[1]) < 0;
        const ProduttoreSelezionato& p = s.ProduttoreSel;
        const QString dati[] = {p.AIUTO_ALCOLE_GREZZO, p.AIUTO_ALCOLE_NEUTRO, p.AIUTO_ACQUAVITE,
                                p.QTA_ALCOLE_GREZZO,   p.QTA_ALCOLE_NEUTRO,   p.QTA_ACQUAVITE,
                                p.ETTOGRADI,           p.QTA_VINO_EFFETIVAMENTE_DISTILLATA,
                                p.IMPORTO_DETRAIBILE};
        for (int i = 0; i < 9; ++i)
            TxtDati[6 + i]->setText(vuota ? QString() : dati[i]);

        Recordset rs = Db().OpenRecordset(
            QStringLiteral("SELECT Sum(CDBL(PRODUTTORI.qta_vino_effetivamente_distillata)) as sommaEffe_dist,"
                           "sum(cdbl(PRODUTTORI.ettogradi)) as sommaEttogradi ") +
                QStringLiteral(" FROM  PRODUTTORI  ") +
                QStringLiteral(" WHERE Exists (SELECT 1 From TAB_ID_UTF_PRODUTTORE WHERE   "
                               "PRODUTTORI.ID_PRODUTTORI = TAB_ID_UTF_PRODUTTORE.ID_PRODUTTORE ") +
                QStringLiteral(" and TAB_ID_UTF_PRODUTTORE.id_utf = ?)"),
            {s.UtfSel.iD_UTF});
        // Una somma su nessuna riga è Null: le caselle restano vuote.
        const auto somma = [&](const char* nome) {
            if (rs.eof())
                return QString();
            const Valore v = rs.Fields(QString::fromLatin1(nome));
            return v.isNull() ? QString() : Format(Decimale::daDouble(v.numero()), QStringLiteral("##0.0000"));
        };
        TxtDati[15]->setText(somma("sommaEffe_dist"));
        TxtDati[16]->setText(somma("sommaEttogradi"));
    } catch (const ErroreSistema& e) {
        ScriviLogErr(QString(), EtichettaPassaCampi, e.numero(), e.descrizione());
    }
}

void FrmProduttore_SelezionaProd::TornaAllaPagina(int pagina)
{
    const QSignalBlocker blocco(SSTabutf_prod);
    SSTabutf_prod->setCurrentIndex(pagina);
    m_pagina = pagina;
}

void FrmProduttore_SelezionaProd::SSTabutf_prod_Click(int PreviousTab)
{
    try {
        if (PreviousTab == 0) {
            if (RigheSelezionate(TDBG_SelProd[0]) == 0) {
                MsgBox(QStringLiteral("Selezionare almeno un certificato UTF."), StileMsg::Informazione, Titolo());
                TornaAllaPagina(0);
                return;
            }
            SelRiga_SelFatture(0);
            if (!sessione().UtfSel.NUMERO_CERTIFICATO_UTF.trimmed().isEmpty()) {
                CaricaGriglia(1);
                PassaCampi_SelProd(1);
            } else {
                MsgBox(QStringLiteral("Per inserire un produttore bisogna inserire almeno un certificato UTF."),
                       StileMsg::Informazione, Titolo());
                TornaAllaPagina(0);
            }
        } else {
            CaricaGriglia(0);
        }
    } catch (const ErroreSistema& e) {
        ScriviLogErr(QString(), EtichettaClick, e.numero(), e.descrizione());
    }
}

void FrmProduttore_SelezionaProd::Cmddati_Click(int Index)
{
    try {
        switch (Index) {
        case 4:
        case 9: reject(); break;
        case 5:
        case 10: MostraHelp(TopicHelp); break;
        default:
            if (Index <= 3)
                ComandiCertificato(Index);
            else
                ComandiProduttore(Index);
            break;
        }
    } catch (const ErroreSistema& e) {
        ScriviLogErr(QString(), EtichettaClick, e.numero(), e.descrizione());
    }
}

void FrmProduttore_SelezionaProd::ComandiCertificato(int Index)
{
    auto& s = sessione();
    QTableView* griglia = TDBG_SelProd[0];
    const bool selezionata = RigheSelezionate(griglia) > 0;
    const auto senzaCertificato = [&] {
        return Data_SelProd_utf[0]
            ->Campo(RigaCorrente(griglia), QStringLiteral("tab_utf.numero_certificato_utf"))
            .testo()
            .trimmed()
            .isEmpty();
    };
    switch (Index) {
    case 0:  // Nuovo
        s.ModoMaschera = QStringLiteral("I");
        break;
    case 1:  // Modifica
        if (!selezionata) {
            MsgBox(QStringLiteral("Selezionare almeno un certificato UTF ."), StileMsg::Informazione, Titolo());
            return;
        }
        if (senzaCertificato()) {
            MsgBox(NessunCertificato, StileMsg::Informazione, Titolo());
            return;
        }
        s.ModoMaschera = QStringLiteral("M");
        break;
    case 2: {  // Cancella
        if (!selezionata) {
            MsgBox(QStringLiteral("Selezionare almeno una domanda."), StileMsg::Informazione, Titolo());
            return;
        }
        if (senzaCertificato()) {
            MsgBox(NessunCertificato, StileMsg::Informazione, Titolo());
            return;
        }
        SelRiga_SelFatture(0);
        if (MsgBox(QStringLiteral("Confermi la cancellazione del certificato UTF n. ") + s.UtfSel.NUMERO_CERTIFICATO_UTF,
                   StileMsg::SiNo + StileMsg::Informazione + StileMsg::SecondoPredefinito,
                   Titolo()) == RispostaMsg::No)
            return;
        // Un certificato con produttori non si cancella.
        const IstruzioneSql produttori = QueryListaProduttori(ModoProduttori) + FiltroListaProduttori(ModoProduttori);
        bool conProduttori = false;
        {
            Recordset rs = Db().OpenRecordset(produttori.testo, produttori.parametri);
            conProduttori = !rs.eof();
        }
        if (conProduttori) {
            MsgBox(QStringLiteral("Operazione non eseguita.\r\n"
                                  "Verificare eventuale presenza di Produttori per il certificato UTF selezionato."),
                   StileMsg::Esclamativo, Titolo());
        } else if (MetodiUtf(2, QStringLiteral("where id_utf=") + QString::number(s.UtfSel.iD_UTF))) {
            MsgBox(Eseguita, StileMsg::Informazione, Titolo());
        } else {
            MsgBox(NonEseguitaFatture, StileMsg::Esclamativo, Titolo());
        }
        CaricaGriglia(0);
        return;
    }
    case 3:  // Assegna
        if (!selezionata) {
            MsgBox(QStringLiteral("Selezionare almeno un certificato UTF ."), StileMsg::Informazione, Titolo());
            return;
        }
        SelRiga_SelFatture(0);
        ApriMascheraModale(QStringLiteral("frmProduttoriNoAssociati"), this);
        return;
    default: return;
    }
    // Nuovo e Modifica aprono il certificato.
    SelRiga_SelFatture(0);
    ApriMascheraModale(QStringLiteral("frmProduttore_Utf"), this);
    CaricaGriglia(0);
}

void FrmProduttore_SelezionaProd::ComandiProduttore(int Index)
{
    auto& s = sessione();
    QTableView* griglia = TDBG_SelProd[1];
    const bool selezionata = RigheSelezionate(griglia) > 0;
    switch (Index) {
    case 6:  // Nuovo
        s.ModoMaschera = QStringLiteral("I");
        break;
    case 7:  // Modifica
        if (!selezionata) {
            MsgBox(QStringLiteral("Selezionare almeno un Produttore."), StileMsg::Informazione,
                   QStringLiteral("PRODUTTORE"));
            return;
        }
        s.ModoMaschera = QStringLiteral("M");
        SelRiga_SelFatture(1);
        break;
    case 8:  // Cancella: toglie solo il legame con il certificato
        if (!selezionata) {
            MsgBox(QStringLiteral("Selezionare almeno una domanda."), StileMsg::Informazione, Titolo());
            return;
        }
        SelRiga_SelFatture(1);
        if (MsgBox(QStringLiteral("Confermi la cancellazione del produttore ") + s.ProduttoreSel.DENOMINAZIONE +
                       QStringLiteral(" - ") + s.ProduttoreSel.CODI_FISC,
                   StileMsg::SiNo + StileMsg::Informazione, QStringLiteral("Cancella Produttore")) == RispostaMsg::Si) {
            if (rfAssociaDeAssociaProduttore(s.ProduttoreSel.iD_PRODUTTORI, s.UtfSel.iD_UTF, 2))
                MsgBox(Eseguita, StileMsg::Informazione, Titolo());
            else
                MsgBox(NonEseguitaFatture, StileMsg::Esclamativo, Titolo());
        }
        CaricaGriglia(1);
        return;
    default: return;
    }
    ApriMascheraModale(QStringLiteral("FrmProduttore"), this);
    CaricaGriglia(1);
    PassaCampi_SelProd(1);
}
