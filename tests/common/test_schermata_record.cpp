// Le convenzioni delle maschere di record: selezione all'ingresso, Canc, F1,
// validazione all'uscita dal campo, pulsanti e pulizia dei campi.
#include "common/aiuti_maschera.h"
#include "maschera_prova.h"
#include "support/verifiche.h"

#include <QComboBox>

namespace {
const MessaggioRegistrato DataNonValida{QStringLiteral("Data non valida"), StileMsg::Esclamativo, QString()};
}

TEST_F(ProvaMaschera, CancNonFaNullaInNessunCampo)
{
    for (auto it = maschera->TxtDati.cbegin(); it != maschera->TxtDati.cend(); ++it) {
        QLineEdit* c = Prepara(it.key(), QStringLiteral("12"), 0);
        QTest::keyClick(c, Qt::Key_Delete);
        c->selectAll();
        QTest::keyClick(c, Qt::Key_Delete, Qt::ShiftModifier);
        EXPECT_EQ(c->text(), QStringLiteral("12")) << it.key();
        c->clear();  // "12" non è una data: il campo si lascia vuoto
    }
}

TEST_F(ProvaMaschera, IngressoSelezionaF1AiutaEscNonChiude)
{
    Campo(campo::Libero)->setText(QStringLiteral("ROSSI"));
    Campo(campo::Libero)->setFocus(Qt::MouseFocusReason);
    EXPECT_EQ(Campo(campo::Libero)->selectedText(), QStringLiteral("ROSSI"));

    QTest::keyClick(Campo(campo::Data), Qt::Key_F1);
    QTest::keyClick(maschera->Cmddati.value(0), Qt::Key_F1);
    QTest::keyClick(Campo(campo::Libero), Qt::Key_Escape);
    EXPECT_EQ(aiuti, QStringList(2, QStringLiteral("FrmProva")));
    EXPECT_TRUE(maschera->isVisible());
}

// ---------------------------------------------------------------- validazione

struct CasoValidazione {
    const char* nome;
    int indice;
    const char* battuto;
    const char* atteso;
};

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
// campo o su Salva: solo il messaggio, il fuoco resta, nessun clic.
TEST_F(ProvaMaschera, DataNonValidaTieneIlFuocoFinoAlSalvataggio)
{
    QLineEdit* data = Prepara(campo::Data, QStringLiteral("31/02/2005"));
    QWidget* const verso[] = {nullptr, Campo(campo::Libero), maschera->Cmddati.value(0)};
    for (QWidget* w : verso) {
        script->Rispondi(RispostaMsg::OK);
        w ? QTest::mouseClick(w, Qt::LeftButton) : QTest::keyClick(data, Qt::Key_Tab);
        QCoreApplication::processEvents();  // il rifiuto vale per il clic in corso
        EXPECT_EQ(QApplication::focusWidget(), data);
        EXPECT_EQ(data->text(), QStringLiteral("31/02/2005"));
        EXPECT_TRUE(maschera->clic.isEmpty());
    }
    EXPECT_EQ(script->messaggi, Messaggi(3, DataNonValida));
    // Data valida: riscritta, e il pulsante premuto.
    data->setText(QStringLiteral("1/2/2005"));
    QTest::mouseClick(maschera->Cmddati.value(0), Qt::LeftButton);
    EXPECT_EQ(data->text(), QStringLiteral("01/02/2005"));
    EXPECT_EQ(maschera->clic, QList<int>{0});
    EXPECT_EQ(script->messaggi.size(), 3);
}

TEST_F(ProvaMaschera, EsciEHelpNonAspettanoLaValidazione)
{
    Prepara(campo::Data, QStringLiteral("99/99/9999"));
    QTest::mouseClick(maschera->Cmddati.value(2), Qt::LeftButton);
    Prepara(campo::Data, QStringLiteral("99/99/9999"));
    QTest::mouseClick(maschera->Cmddati.value(1), Qt::LeftButton);
    EXPECT_EQ(aiuti, QStringList{QStringLiteral("FrmProva")});
    EXPECT_EQ(maschera->clic, (QList<int>{2, 1}));
    EXPECT_FALSE(maschera->isVisible());
    EXPECT_EQ(maschera->result(), QDialog::Rejected);
    EXPECT_TRUE(script->messaggi.isEmpty());
}

TEST_F(ProvaMaschera, ValidazioneRidefinita)
{
    maschera->validazione = [](int indice) {
        if (indice != campo::Libero)
            return true;
        MsgBox(QStringLiteral("Note errate"), StileMsg::Esclamativo);
        return false;
    };
    QLineEdit* note = Prepara(campo::Libero, QStringLiteral("X"));
    script->Rispondi(RispostaMsg::OK);
    QTest::keyClick(note, Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), note);
    EXPECT_EQ(script->messaggi, (Messaggi{{QStringLiteral("Note errate"), StileMsg::Esclamativo, QString()}}));
}

TEST_F(ProvaMaschera, PulisciCampiRisparmiaITagEsclusiEDont)
{
    ImpostaTag(Campo(campo::Libero), QStringLiteral("Dont"));
    ImpostaTag(Campo(campo::Nome), QStringLiteral("dONT"));
    ImpostaTag(Campo(campo::Progressivo), QStringLiteral("tipo_articolo"));
    auto* articolo = maschera->AggiungiCombo(maschera->cboDomanda, 3, QStringLiteral("TIPO_ARTICOLO"),
                                             QStringLiteral("Articolo"));
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
