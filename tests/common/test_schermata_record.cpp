// Le convenzioni delle maschere di record: etichette e tooltip, selezione
// all'ingresso, Canc, F1, validazione all'uscita dal campo, pulsanti e
// controlli registrati, caricamento, errori e pulizia dei campi.
#include "common/aiuti_maschera.h"
#include "maschera_prova.h"

#include <QTableWidget>

namespace {
const MessaggioRegistrato DataNonValida{QStringLiteral("Data non valida"), StileMsg::Esclamativo, QString()};
}

// Entrando in un campo il testo si seleziona; Canc, anche con Maiuscolo, ed Esc non fanno nulla.
TEST_F(ProvaMaschera, IngressoSelezionaCancEdEscNonFannoNulla)
{
    maschera->Cmddati.value(1)->setFocus();  // il primo campo ha già il fuoco
    for (QLineEdit* c : std::as_const(maschera->TxtDati)) {
        c->setText(QStringLiteral("12"));
        c->setFocus(Qt::MouseFocusReason);
        EXPECT_EQ(c->selectedText(), QStringLiteral("12")) << c->objectName().toStdString();
        QTest::keyClick(c, Qt::Key_Delete, Qt::ShiftModifier);
        c->setCursorPosition(0);
        QTest::keyClick(c, Qt::Key_Delete);
        QTest::keyClick(c, Qt::Key_Escape);
        EXPECT_EQ(c->text(), QStringLiteral("12")) << c->objectName().toStdString();
        c->clear();  // "12" non è una data: il campo si lascia vuoto
    }
    EXPECT_TRUE(maschera->isVisible());
}

// Il testo accanto al controllo è Lbldati(indice); il tooltip, che entra nei
// messaggi, può essere un altro. Un campo o una combo posati dalla maschera
// hanno l'etichetta nuova in Lbldati, o danno il testo a quella già lì.
TEST_F(ProvaMaschera, EtichettaETooltipSeparati)
{
    auto* proprio = new QLineEdit(maschera.get());
    maschera->RegistraCampo(21, proprio, "DATA_COMP", "Data introduzione", "Data di introduzione", 10);
    maschera->Lbldati.insert(22, new QLabel(maschera.get()));
    auto* provincia = new QComboBox(maschera.get());
    maschera->RegistraCombo(maschera->cboProvincia, 22, provincia, "PROV", "Prov.", "Provincia");
    const struct { int indice; QWidget* controllo; QString etichetta, tooltip; } casi[] = {
        {campo::NumDomanda, Campo(campo::NumDomanda), "Num. Domanda", "Domanda"},
        {campo::Importo, Campo(campo::Importo), "Imponibile €", "Imponibile"},
        {20, maschera->AggiungiCombo(maschera->cboDomanda, 20, "TIPO_ARTICOLO", "Articolo", "Tipo Articolo"),
         "Articolo", "Tipo Articolo"},
        {21, proprio, "Data introduzione", "Data di introduzione"},
        {22, provincia, "Prov.", "Provincia"},
    };
    for (const auto& c : casi) {
        EXPECT_EQ(maschera->Lbldati[c.indice]->text(), c.etichetta);
        EXPECT_EQ(maschera->Lbldati[c.indice]->buddy(), c.controllo);
        EXPECT_EQ(c.controllo->toolTip(), c.tooltip);
    }
}

// ---------------------------------------------------------------- validazione

struct CasoValidazione { const char* nome; int indice; const char* battuto; const char* atteso; };

void PrintTo(const CasoValidazione& c, std::ostream* os) { *os << c.nome; }

class Validazione : public ProvaMaschera, public ::testing::WithParamInterface<CasoValidazione> {};

TEST_P(Validazione, RiscritturaUscendoDalCampo)
{
    const CasoValidazione& caso = GetParam();
    QLineEdit* c = Prepara(caso.indice, QString());
    Digita(c, QString::fromUtf8(caso.battuto));
    QTest::keyClick(c, Qt::Key_Tab);
    EXPECT_NE(QApplication::focusWidget(), c);
    EXPECT_EQ(c->text(), QString::fromUtf8(caso.atteso));
    EXPECT_TRUE(script->messaggi.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Regole, Validazione,
                         ::testing::Values(CasoValidazione{"data_con_anno_corto", campo::Data, "010205", "01/02/2005"},
                                           CasoValidazione{"data_vuota", campo::Data, "", ""},
                                           // ",5" diventa "0,50": il campo senza filtro lo lascia battere.
                                           CasoValidazione{"virgola_cinque", campo::ImportoLibero, ",5", "0,50"},
                                           CasoValidazione{"importo_arrotondato", campo::ImportoLibero, "2,345", "2,35"},
                                           CasoValidazione{"importo_vuoto", campo::Importo, "", "0,00"},
                                           CasoValidazione{"quantita", campo::Quantita, "12,5", "12,5000"},
                                           CasoValidazione{"numero_domanda", campo::NumDomanda, "123", "00000000123"},
                                           CasoValidazione{"progressivo", campo::Progressivo, "1", "01"},
                                           CasoValidazione{"libero_invariato", campo::Libero, "1,5", "1,5"}),
                         [](const auto& info) { return std::string(info.param.nome); });

// Una data non valida, lasciando il campo con Tab, con un clic su un altro
// campo, su Salva o su un controllo registrato a parte (una casella di
// spunta, un pulsante di ricerca, una griglia, dove il clic arriva alla sua
// area interna): solo il messaggio, il fuoco resta e il clic va perso. Con la
// data valida il campo si riscrive e il clic passa.
TEST_F(ProvaMaschera, DataNonValidaTieneIlFuocoEPerdeIlClic)
{
    auto* spunta = new QCheckBox(QStringLiteral("Approvazione anticipata"));
    auto* cerca = new QPushButton(QStringLiteral("Cerca"));
    auto* griglia = new QTableWidget(2, 1);
    int cercato = 0;
    QObject::connect(cerca, &QPushButton::clicked, [&] { ++cercato; });
    for (QWidget* w : {static_cast<QWidget*>(spunta), static_cast<QWidget*>(cerca), static_cast<QWidget*>(griglia)}) {
        maschera->Posa(w);
        maschera->RegistraControllo(w);
    }
    maschera->adjustSize();
    QCoreApplication::processEvents();
    const QPoint rigaDue = griglia->visualRect(griglia->model()->index(1, 0)).center();
    QWidget* const verso[] = {nullptr, Campo(campo::Libero), spunta, cerca, griglia->viewport(),
                              maschera->Cmddati.value(0)};
    for (const bool valida : {false, true}) {
        griglia->setCurrentCell(0, 0);
        for (QWidget* w : verso) {
            QLineEdit* data = Prepara(campo::Data, valida ? QStringLiteral("1/2/2005") : QStringLiteral("31/02/2005"));
            if (!valida)
                script->Rispondi(RispostaMsg::OK);
            w ? QTest::mouseClick(w, Qt::LeftButton, {}, w == griglia->viewport() ? rigaDue : QPoint())
              : QTest::keyClick(data, Qt::Key_Tab);
            QCoreApplication::processEvents();  // il rifiuto vale per il clic in corso
            EXPECT_EQ(QApplication::focusWidget() == data, !valida);
            EXPECT_EQ(data->text(), valida ? QStringLiteral("01/02/2005") : QStringLiteral("31/02/2005"));
        }
        const int passato = valida;
        EXPECT_EQ((QList<int>{spunta->isChecked(), cercato, griglia->currentRow(), int(maschera->clic.size())}),
                  QList<int>(4, passato));
    }
    EXPECT_EQ(script->messaggi, Messaggi(6, DataNonValida));
}

// Un campo bloccato non prende tasti, nemmeno attraverso i filtri che
// riscrivono il testo: l'uscita dal campo resta libera.
TEST_F(ProvaMaschera, CampoBloccatoNonPrendeTasti)
{
    const struct {
        int indice;
        const char* battuto;
    } casi[] = {{campo::Data, "0103"}, {campo::Data, "4"}, {campo::Quantita, "12,5"}, {campo::Maiuscole, "ab"}};
    for (const auto& c : casi) {
        SCOPED_TRACE(c.battuto);
        QLineEdit* campo = Prepara(c.indice, QString());
        campo->setReadOnly(true);
        Digita(campo, QString::fromUtf8(c.battuto));
        EXPECT_EQ(campo->text(), QString());
        campo->setReadOnly(false);
        campo->clear();
    }
    EXPECT_TRUE(script->messaggi.isEmpty());
}

// F1, in un campo, sulla maschera o su un pulsante, è il clic sul pulsante
// d'aiuto della maschera, qualunque sia il suo indice; né F1 né Help né Esci
// aspettano la validazione del campo lasciato.
TEST_F(ProvaMaschera, F1HelpEdEsciNonAspettanoLaValidazione)
{
    for (const int indice : {5, 2}) {
        maschera->indiceHelp = indice;
        QTest::keyClick(Prepara(campo::Data, QStringLiteral("99/99/9999")), Qt::Key_F1);
        QTest::keyClick(maschera.get(), Qt::Key_F1);
        QTest::keyClick(maschera->Cmddati.value(0), Qt::Key_F1);
    }
    QTest::mouseClick(maschera->Cmddati.value(2), Qt::LeftButton);
    Prepara(campo::Data, QStringLiteral("99/99/9999"));
    QTest::mouseClick(maschera->Cmddati.value(1), Qt::LeftButton);
    EXPECT_EQ(maschera->clic, (QList<int>{5, 5, 5, 2, 2, 2, 2, 1}));
    EXPECT_EQ(aiuti, QStringList(4, QStringLiteral("FrmProva")));
    EXPECT_FALSE(maschera->isVisible());
    EXPECT_EQ(maschera->result(), QDialog::Rejected);
    EXPECT_TRUE(script->messaggi.isEmpty());
}

// Il caricamento: titolo da TitoloMaschera (o quello proprio se è vuoto),
// campi riempiti solo in modo "M".
TEST_F(ProvaMaschera, CaricaMascheraTitoloERiempimento)
{
    const struct {
        const char *modo, *titolo, *atteso;
        int riempite;
    } casi[] = {{"M", "Domanda ", "Domanda ", 1}, {" m ", "Fattura", "Fattura", 1}, {"I", "", "Proprio", 0}};
    for (const auto& c : casi) {
        sessione().ModoMaschera = QString::fromLatin1(c.modo);
        sessione().TitoloMaschera = QString::fromLatin1(c.titolo);
        MascheraProva nuova;
        nuova.setWindowTitle(QStringLiteral("Proprio"));
        nuova.CaricaMaschera();
        EXPECT_EQ(std::pair(nuova.windowTitle(), nuova.riempite), std::pair(QString::fromLatin1(c.atteso), c.riempite));
    }
    sessione().Azzera();
}

TEST_F(ProvaMaschera, PulisciCampiRisparmiaITagEsclusiEDont)
{
    ImpostaTag(Campo(campo::Libero), QStringLiteral("Dont"));
    ImpostaTag(Campo(campo::Nome), QStringLiteral("dONT"));
    ImpostaTag(Campo(campo::Progressivo), QStringLiteral("tipo_articolo"));
    auto* articolo = maschera->AggiungiCombo(maschera->cboDomanda, 3, QStringLiteral("TIPO_ARTICOLO"),
                                             QStringLiteral("Articolo"), QStringLiteral("Tipo Articolo"));
    articolo->addItems({QStringLiteral("29"), QStringLiteral("30")});
    for (QLineEdit* c : maschera->TxtDati)
        c->setText(QStringLiteral("X"));
    const auto testi = [&] {
        QStringList t;
        for (int i : {campo::Maiuscole, campo::Data, campo::Libero, campo::Nome, campo::Progressivo})
            t << Campo(i)->text();
        return t << QString::number(articolo->count());
    };
    PulisciCampi(maschera.get(), QStringLiteral("*TIPO_ARTICOLO*"));
    EXPECT_EQ(testi(), (QStringList{"", "", "X", "X", "X", "2"}));
    PulisciCampi(maschera.get(), QStringLiteral("tipo_articolo"));  // senza asterischi, in minuscolo
    EXPECT_EQ(testi(), (QStringList{"", "", "X", "X", "X", "2"}));
    PulisciCampi(maschera.get(), QString());
    EXPECT_EQ(testi(), (QStringList{"", "", "X", "X", "", "0"}));
}

// La posizione sulla finestra madre.
TEST(PosizionaForm, SulPadre)
{
    QWidget padre;
    padre.setGeometry(100, 80, 600, 400);
    QWidget figlia;
    figlia.resize(200, 100);
    PosizionaForm(&figlia, false, &padre);
    EXPECT_EQ(figlia.pos(), QPoint(100 + 200, 80 + 150));
}

// Un indice che non c'è, letto in un clic, nel caricamento o nella
// validazione: l'errore 340 va al registro con l'etichetta della maschera e
// la maschera resta aperta.
class ErroriMaschera : public ProvaConDatabase {};

TEST_F(ErroriMaschera, VannoAlRegistroConLEtichettaDellaMaschera)
{
    db();
    MascheraProva maschera;
    ASSERT_TRUE(MostraAttiva(&maschera));
    const auto mancante = [&] { maschera.TxtDati[99]->clear(); };
    sessione().ModoMaschera = QStringLiteral("M");
    QLineEdit* nome = maschera.TxtDati[campo::Nome];
    const std::function<void()> eventi[] = {
        [&] {
            maschera.azione = [&](int) { mancante(); };
            QTest::mouseClick(maschera.Cmddati[2], Qt::LeftButton);
        },
        [&] {
            maschera.riempi = mancante;
            maschera.CaricaMaschera();
        },
        [&] {
            nome->setFocus();
            maschera.validazione = [&](int) { return mancante(), false; };
            QTest::keyClick(nome, Qt::Key_Tab);
        },
    };
    const QString descrizione = QStringLiteral("L'elemento 99 della matrice di controlli non esiste.");
    Messaggi attesi;
    for (const auto& evento : eventi) {
        script->Rispondi(RispostaMsg::OK);
        evento();
    }
    for (const char* routine : {"Cmddati_Click", "Form_Load", "TxtDati_Validate"})
        attesi.append({MessaggioLogErr(340, descrizione, QStringLiteral("FrmProva ") + QString::fromLatin1(routine)),
                       StileMsg::Esclamativo, QStringLiteral("Gestione Errori")});
    EXPECT_EQ(script->messaggi, attesi);
    EXPECT_NE(QApplication::focusWidget(), nome);  // dopo l'errore il campo si lascia
    EXPECT_EQ(Righe(db(), QStringLiteral("SELECT DESC_APPL, CODI_ERRO FROM LOGERR ORDER BY rowid")),
              (QStringList{"FrmProva Cmddati_Click|00340", "FrmProva Form_Load|00340", "FrmProva TxtDati_Validate|00340"}));
    maschera.validazione = nullptr;
}
