// Le convenzioni delle maschere di record: selezione all'ingresso, Canc, F1,
// validazione all'uscita dal campo, pulsanti e pulizia dei campi.
#include "common/aiuti_maschera.h"
#include "maschera_prova.h"
#include "support/verifiche.h"

#include <QComboBox>

namespace {
const MessaggioRegistrato DataNonValida{QStringLiteral("Data non valida"), StileMsg::Esclamativo, QString()};
}

TEST_F(ProvaMaschera, CampiConTagEToolTip)
{
    QLineEdit* c = Campo(campo::Importo);
    EXPECT_EQ(Tag(c), QStringLiteral("IMPO"));
    EXPECT_EQ(c->toolTip(), QStringLiteral("Imponibile"));
    EXPECT_EQ(c->maxLength(), 15);
    EXPECT_EQ(maschera->Cmddati.value(0)->text(), QStringLiteral("Salva"));
    EXPECT_EQ(maschera->Cmddati.value(1)->text(), QStringLiteral("Esci"));
    EXPECT_EQ(maschera->Cmddati.value(2)->text(), QStringLiteral("Help"));
}

TEST_F(ProvaMaschera, CancNonFaNullaInNessunCampo)
{
    for (auto it = maschera->TxtDati.cbegin(); it != maschera->TxtDati.cend(); ++it) {
        QLineEdit* c = Prepara(it.key(), QStringLiteral("12"), 0);
        QTest::keyClick(c, Qt::Key_Delete);
        EXPECT_EQ(c->text(), QStringLiteral("12")) << it.key();
        c->selectAll();
        QTest::keyClick(c, Qt::Key_Delete, Qt::ShiftModifier);
        EXPECT_EQ(c->text(), QStringLiteral("12")) << it.key();
        c->clear();  // "12" non è una data: il campo si lascia vuoto
    }
}

TEST_F(ProvaMaschera, TestoSelezionatoEntrandoNelCampo)
{
    Campo(campo::Libero)->setText(QStringLiteral("ROSSI"));
    Campo(campo::Maiuscole)->setFocus(Qt::OtherFocusReason);
    Campo(campo::Libero)->setFocus(Qt::MouseFocusReason);
    EXPECT_EQ(Campo(campo::Libero)->selectedText(), QStringLiteral("ROSSI"));
    // Battere sostituisce la selezione.
    Digita(Campo(campo::Libero), QStringLiteral("x"));
    EXPECT_EQ(Campo(campo::Libero)->text(), QStringLiteral("x"));
}

TEST_F(ProvaMaschera, F1ComeIlPulsanteHelp)
{
    QTest::keyClick(Campo(campo::Data), Qt::Key_F1);
    QTest::keyClick(maschera->Cmddati.value(0), Qt::Key_F1);
    QTest::mouseClick(maschera->Cmddati.value(2), Qt::LeftButton);
    EXPECT_EQ(aiuti, QStringList(3, QStringLiteral("FrmProva")));
    EXPECT_TRUE(maschera->isVisible());
}

TEST_F(ProvaMaschera, EscNonChiudeLaMaschera)
{
    QTest::keyClick(Campo(campo::Libero), Qt::Key_Escape);
    EXPECT_TRUE(maschera->isVisible());
}

// ---------------------------------------------------------------- validazione

struct CasoValidazione {
    const char* nome;
    int indice;
    QString battuto;
    QString atteso;
};

void PrintTo(const CasoValidazione& c, std::ostream* os) { *os << c.nome; }

class Validazione : public ProvaMaschera, public ::testing::WithParamInterface<CasoValidazione> {};

TEST_P(Validazione, RiscritturaUscendoDalCampo)
{
    const CasoValidazione& caso = GetParam();
    QLineEdit* c = Prepara(caso.indice, QString());
    Digita(c, caso.battuto);
    QTest::keyClick(c, Qt::Key_Tab);
    EXPECT_NE(QApplication::focusWidget(), c);
    EXPECT_EQ(c->text(), caso.atteso);
    EXPECT_TRUE(script->messaggi.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Regole, Validazione,
    ::testing::Values(
        CasoValidazione{"data_con_anno_corto", campo::Data, QStringLiteral("010205"), QStringLiteral("01/02/2005")},
        CasoValidazione{"data_completa", campo::Data, QStringLiteral("31122005"), QStringLiteral("31/12/2005")},
        CasoValidazione{"data_vuota", campo::Data, QString(), QString()},
        // ",5" diventa "0,50": il campo senza filtro lo lascia battere.
        CasoValidazione{"importo_virgola_cinque", campo::ImportoLibero, QStringLiteral(",5"), QStringLiteral("0,50")},
        CasoValidazione{"importo_arrotondato", campo::ImportoLibero, QStringLiteral("2,345"), QStringLiteral("2,35")},
        CasoValidazione{"importo_vuoto", campo::Importo, QString(), QStringLiteral("0,00")},
        CasoValidazione{"importo", campo::Importo, QStringLiteral("1050,6"), QStringLiteral("1050,60")},
        CasoValidazione{"quantita", campo::Quantita, QStringLiteral("12,5"), QStringLiteral("12,5000")},
        CasoValidazione{"numero_domanda", campo::NumDomanda, QStringLiteral("123"), QStringLiteral("00000000123")},
        CasoValidazione{"progressivo", campo::Progressivo, QStringLiteral("1"), QStringLiteral("01")},
        CasoValidazione{"libero_invariato", campo::Libero, QStringLiteral("1,5"), QStringLiteral("1,5")}),
    [](const auto& info) { return std::string(info.param.nome); });

TEST_F(ProvaMaschera, DataNonValidaTieneIlFuoco)
{
    QLineEdit* data = Prepara(campo::Data, QString());
    Digita(data, QStringLiteral("31022005"));
    ASSERT_EQ(data->text(), QStringLiteral("31/02/2005"));
    script->Rispondi(RispostaMsg::OK);
    QTest::keyClick(data, Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), data);
    EXPECT_EQ(data->text(), QStringLiteral("31/02/2005"));
    ASSERT_EQ(script->messaggi.size(), 1);
    EXPECT_EQ(script->messaggi.first(), DataNonValida);
    // Corretta la data, il fuoco esce.
    data->setText(QStringLiteral("28/02/2005"));
    QTest::keyClick(data, Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), Campo(campo::Quantita));
}

TEST_F(ProvaMaschera, SalvaConDataNonValidaMostraSoloIlMessaggio)
{
    QLineEdit* data = Prepara(campo::Data, QStringLiteral("31/02/2005"));
    script->Rispondi(RispostaMsg::OK);
    QTest::mouseClick(maschera->Cmddati.value(0), Qt::LeftButton);
    QCoreApplication::processEvents();
    EXPECT_TRUE(maschera->clic.isEmpty());
    ASSERT_EQ(script->messaggi.size(), 1);
    EXPECT_EQ(script->messaggi.first(), DataNonValida);
    EXPECT_EQ(QApplication::focusWidget(), data);
    EXPECT_TRUE(maschera->isVisible());
    // Un secondo clic, a rifiuto finito, ripete la validazione e basta.
    script->Rispondi(RispostaMsg::OK);
    QTest::mouseClick(maschera->Cmddati.value(0), Qt::LeftButton);
    EXPECT_TRUE(maschera->clic.isEmpty());
    EXPECT_EQ(script->messaggi.size(), 2);
}

TEST_F(ProvaMaschera, SalvaConDataValidaRiscriveEPremeIlPulsante)
{
    QLineEdit* data = Prepara(campo::Data, QStringLiteral("1/2/2005"));
    QTest::mouseClick(maschera->Cmddati.value(0), Qt::LeftButton);
    EXPECT_EQ(data->text(), QStringLiteral("01/02/2005"));
    EXPECT_EQ(maschera->clic, QList<int>{0});
    EXPECT_TRUE(script->messaggi.isEmpty());
}

TEST_F(ProvaMaschera, EsciEHelpNonAspettanoLaValidazione)
{
    Prepara(campo::Data, QStringLiteral("99/99/9999"));
    QTest::mouseClick(maschera->Cmddati.value(2), Qt::LeftButton);
    EXPECT_EQ(aiuti, QStringList{QStringLiteral("FrmProva")});
    Prepara(campo::Data, QStringLiteral("99/99/9999"));
    QTest::mouseClick(maschera->Cmddati.value(1), Qt::LeftButton);
    EXPECT_EQ(maschera->clic, (QList<int>{2, 1}));
    EXPECT_FALSE(maschera->isVisible());
    EXPECT_EQ(maschera->result(), QDialog::Rejected);
    EXPECT_TRUE(script->messaggi.isEmpty());
}

TEST_F(ProvaMaschera, ClicSuUnAltroCampoConDataNonValida)
{
    QLineEdit* data = Prepara(campo::Data, QStringLiteral("32/01/2005"));
    script->Rispondi(RispostaMsg::OK);
    QTest::mouseClick(Campo(campo::Libero), Qt::LeftButton);
    EXPECT_EQ(QApplication::focusWidget(), data);
    EXPECT_EQ(script->messaggi.size(), 1);
    // Finito il rifiuto i clic tornano a funzionare.
    QCoreApplication::processEvents();
    data->clear();
    QTest::mouseClick(Campo(campo::Libero), Qt::LeftButton);
    EXPECT_EQ(QApplication::focusWidget(), Campo(campo::Libero));
}

// ---------------------------------------------------------------- validazione propria

class MascheraCodice : public SchermataRecord {
public:
    MascheraCodice()
    {
        AggiungiCampo(0, QStringLiteral("CODI_FISC"), QStringLiteral("Codice fiscale"), 16);
        AggiungiCampo(1, QStringLiteral("DENOMINAZIONE"), QStringLiteral("Denominazione"), 30);
        AggiungiPulsantiStandard();
    }
    int validazioni = 0;

protected:
    // Il codice deve avere 16 caratteri; il resto come di base.
    bool TxtDati_Validate(int indice) override
    {
        ++validazioni;
        if (indice == 0 && TxtDati[0]->text().size() != 16) {
            MsgBox(QStringLiteral("Codice fiscale errato"), StileMsg::Esclamativo);
            return false;
        }
        return SchermataRecord::TxtDati_Validate(indice);
    }
};

TEST(SchermataPropria, ValidazioneRidefinitaEFiltriDiBase)
{
    PiattaformaScript& script = InstallaPiattaformaScript();
    MascheraCodice m;
    m.show();
    m.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&m));
    QLineEdit* codice = m.TxtDati[0];
    codice->setFocus();
    // Di base ogni campo ha Keypress_Upper.
    Digita(codice, QStringLiteral("rssmra"));
    EXPECT_EQ(codice->text(), QStringLiteral("RSSMRA"));
    script.Rispondi(RispostaMsg::OK);
    QTest::keyClick(codice, Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), codice);
    EXPECT_EQ(m.validazioni, 1);
    ASSERT_EQ(script.messaggi.size(), 1);
    EXPECT_EQ(script.messaggi.first().testo, QStringLiteral("Codice fiscale errato"));
}

// ---------------------------------------------------------------- PulisciCampi

TEST_F(ProvaMaschera, PulisciCampiRisparmiaITagEsclusiEDont)
{
    QLineEdit* semplice = Campo(campo::Maiuscole);
    ImpostaTag(Campo(campo::Libero), QStringLiteral("Dont"));
    ImpostaTag(Campo(campo::Nome), QStringLiteral("dONT"));
    ImpostaTag(Campo(campo::Progressivo), QStringLiteral("tipo_articolo"));
    auto* articolo = maschera->AggiungiCombo(maschera->cboDomanda, 3, QStringLiteral("TIPO_ARTICOLO"),
                                             QStringLiteral("Articolo"));
    auto* varieta = maschera->AggiungiCombo(maschera->cboDomanda, 4, QStringLiteral("ID_VARIETA"),
                                            QStringLiteral("Varietà"));
    articolo->addItems({QStringLiteral("29"), QStringLiteral("30")});
    varieta->addItems({QStringLiteral("AGR"), QStringLiteral("ANE")});
    varieta->setEditable(true);
    for (auto it = maschera->TxtDati.cbegin(); it != maschera->TxtDati.cend(); ++it)
        it.value()->setText(QStringLiteral("X"));

    PulisciCampi(maschera.get(), QStringLiteral("*TIPO_ARTICOLO*"));

    EXPECT_EQ(semplice->text(), QString());
    EXPECT_EQ(Campo(campo::Data)->text(), QString());
    EXPECT_EQ(Campo(campo::Libero)->text(), QStringLiteral("X"));
    EXPECT_EQ(Campo(campo::Nome)->text(), QStringLiteral("X"));
    EXPECT_EQ(Campo(campo::Progressivo)->text(), QStringLiteral("X"));
    EXPECT_EQ(articolo->count(), 2);
    EXPECT_EQ(varieta->count(), 0);
    // Elenco senza asterischi e in minuscolo.
    PulisciCampi(maschera.get(), QStringLiteral("tipo_articolo"));
    EXPECT_EQ(articolo->count(), 2);
    EXPECT_EQ(Campo(campo::Libero)->text(), QStringLiteral("X"));
    PulisciCampi(maschera.get(), QString());
    EXPECT_EQ(articolo->count(), 0);
    EXPECT_EQ(Campo(campo::Progressivo)->text(), QString());
    EXPECT_EQ(Campo(campo::Libero)->text(), QStringLiteral("X"));
}

// ---------------------------------------------------------------- PosizionaForm

TEST(PosizionaForm, SchermoEPadre)
{
    QWidget padre;
    padre.setGeometry(100, 80, 600, 400);
    QWidget figlia;
    figlia.resize(200, 100);
    PosizionaForm(&figlia, false, &padre);
    EXPECT_EQ(figlia.pos(), QPoint(100 + 200, 80 + 150));

    PosizionaForm(&figlia, true, &padre);
    const QRect schermo = figlia.screen()->geometry();
    EXPECT_EQ(figlia.pos(), QPoint(schermo.left() + (schermo.width() - 200) / 3,
                                   schermo.top() + (schermo.height() - 100) / 4));
}
