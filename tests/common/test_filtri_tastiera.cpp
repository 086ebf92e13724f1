// I filtri dei tasti provati battendo nei campi veri di una maschera.
#include "common/filtri_tastiera.h"
#include "maschera_prova.h"

struct CasoTasto {
    const char* nome;
    QString battuto;
    QString atteso;
    int beep;
};

void PrintTo(const CasoTasto& c, std::ostream* os) { *os << c.nome; }

// ---------------------------------------------------------------- codici

TEST(CodiciTasti, PaginaWindows1252)
{
    EXPECT_EQ(CodiceCarattere(QChar(u'A')), 65);
    EXPECT_EQ(CodiceCarattere(QChar(u'à')), 224);
    EXPECT_EQ(CodiceCarattere(QChar(u'€')), 128);
    EXPECT_EQ(CodiceCarattere(QChar(u'’')), 146);
    EXPECT_EQ(CodiceCarattere(QChar(u'Ω')), 63);  // fuori pagina: "?"
    EXPECT_EQ(CarattereCodice(128), QChar(u'€'));
    EXPECT_EQ(CarattereCodice(233), QChar(u'é'));
    for (int codice = 0; codice < 256; ++codice)
        EXPECT_EQ(CodiceCarattere(CarattereCodice(codice)), codice) << codice;
}

// ---------------------------------------------------------------- Keypress_Upper

class TastiMaiuscole : public ProvaMaschera, public ::testing::WithParamInterface<CasoTasto> {};

TEST_P(TastiMaiuscole, BattutoNelCampo)
{
    const CasoTasto& caso = GetParam();
    QLineEdit* c = Prepara(campo::Maiuscole, QString());
    Digita(c, caso.battuto);
    EXPECT_EQ(c->text(), caso.atteso);
    EXPECT_EQ(script->beep, caso.beep);
}

INSTANTIATE_TEST_SUITE_P(
    Tabella, TastiMaiuscole,
    ::testing::Values(CasoTasto{"minuscole", QStringLiteral("rossi mario"), QStringLiteral("ROSSI MARIO"), 0},
                      CasoTasto{"maiuscole_restano", QStringLiteral("ABC"), QStringLiteral("ABC"), 0},
                      CasoTasto{"asterisco_senza_beep", QStringLiteral("A*B"), QStringLiteral("AB"), 0},
                      CasoTasto{"a_grave_acuta", QStringLiteral("càá"), QStringLiteral("CA'A'"), 0},
                      CasoTasto{"e_grave_acuta", QStringLiteral("èé"), QStringLiteral("E'E'"), 0},
                      CasoTasto{"i_grave_acuta", QStringLiteral("ìí"), QStringLiteral("I'I'"), 0},
                      CasoTasto{"o_grave_acuta", QStringLiteral("òó"), QStringLiteral("O'O'"), 0},
                      CasoTasto{"u_grave_acuta", QStringLiteral("ùú"), QStringLiteral("U'U'"), 0},
                      CasoTasto{"accento_in_mezzo", QStringLiteral("cittàx"), QStringLiteral("CITTA'X"), 0},
                      CasoTasto{"altri_invariati", QStringLiteral("1çÀ-"), QStringLiteral("1çÀ-"), 0}),
    [](const auto& info) { return std::string(info.param.nome); });

TEST_F(ProvaMaschera, MaiuscoleControlliPassano)
{
    QLineEdit* c = Prepara(campo::Maiuscole, QStringLiteral("AB"));
    QTest::keyClick(c, Qt::Key_Backspace);
    EXPECT_EQ(c->text(), QStringLiteral("A"));
    // Ctrl+A (codice 1) passa e seleziona tutto.
    QTest::keyClick(c, Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(c->selectedText(), QStringLiteral("A"));
}

TEST_F(ProvaMaschera, ApostrofoSegueLoStessoPercorsoDiUnTastoBattuto)
{
    // Nel campo data la "A" e poi l'apostrofo sono rifiutati entrambi, con due beep.
    QLineEdit* data = Prepara(campo::Data, QString());
    Digita(data, QStringLiteral("à"));
    EXPECT_EQ(data->text(), QString());
    EXPECT_EQ(script->beep, 2);
    // Nel campo numerico anche: Keypress_Integer non vuole né "A" né "'".
    QLineEdit* intero = Prepara(campo::Intero, QString());
    Digita(intero, QStringLiteral("1è2"));
    EXPECT_EQ(intero->text(), QStringLiteral("12"));
    EXPECT_EQ(script->beep, 2);
    // Nel campo dei nomi FiltroCaratteri tiene sia la "E" sia l'apostrofo.
    QLineEdit* nome = Prepara(campo::Nome, QString());
    Digita(nome, QStringLiteral("perché"));
    EXPECT_EQ(nome->text(), QStringLiteral("PERCHE'"));
}

TEST(FiltroDiretto, KeypressUpperSenzaMaschera)
{
    // Fuori da una maschera l'apostrofo va in coda agli eventi del widget col
    // fuoco: qui non ce n'è, e il codice della vocale cambia comunque.
    int k = 233;
    Keypress_Upper(k);
    EXPECT_EQ(k, 'E');
    k = '*';
    Keypress_Upper(k);
    EXPECT_EQ(k, 0);
    k = 0xC0;  // À resta
    Keypress_Upper(k);
    EXPECT_EQ(k, 0xC0);
}

// ---------------------------------------------------------------- FiltroCaratteri

TEST_F(ProvaMaschera, FiltroCaratteriTabella)
{
    struct Codice {
        int codice;
        bool tenuto;
    };
    // Ai bordi di ogni intervallo della tabella.
    const Codice casi[] = {{32, true},   {33, false},  {37, false},  {38, true},  {39, true},   {40, false},
                           {43, false},  {44, true},   {45, true},   {46, true},  {47, true},   {48, true},
                           {57, true},   {58, false},  {64, false},  {65, true},  {90, true},   {91, false},
                           {96, false},  {97, true},   {122, true},  {123, false}, {128, false}, {224, false},
                           {255, false}};
    for (const Codice& c : casi) {
        QLineEdit* f = Prepara(campo::Caratteri, QString());
        Batti(f, CarattereCodice(c.codice));
        EXPECT_EQ(f->text(), c.tenuto ? QString(CarattereCodice(c.codice)) : QString()) << c.codice;
        EXPECT_EQ(script->beep, 0) << c.codice;
    }
    // Con Keypress_Upper davanti "à" arriva come "A" e poi l'apostrofo.
    QLineEdit* nome = Prepara(campo::Nome, QString());
    Digita(nome, QStringLiteral("d'ànna!"));
    EXPECT_EQ(nome->text(), QStringLiteral("D'A'NNA"));
    EXPECT_EQ(script->beep, 0);
}

// ---------------------------------------------------------------- Keypress_Integer

class TastiInteri : public ProvaMaschera, public ::testing::WithParamInterface<CasoTasto> {};

TEST_P(TastiInteri, BattutoNelCampo)
{
    const CasoTasto& caso = GetParam();
    QLineEdit* c = Prepara(campo::Intero, QString());
    Digita(c, caso.battuto);
    EXPECT_EQ(c->text(), caso.atteso);
    EXPECT_EQ(script->beep, caso.beep);
}

INSTANTIATE_TEST_SUITE_P(
    Tabella, TastiInteri,
    ::testing::Values(CasoTasto{"cifre", QStringLiteral("0123456789"), QStringLiteral("0123456789"), 0},
                      // I separatori passano anche se il filtro si chiama "intero".
                      CasoTasto{"separatori", QStringLiteral("1.234,5"), QStringLiteral("1.234,5"), 0},
                      CasoTasto{"lettere", QStringLiteral("1a2Z"), QStringLiteral("12"), 2},
                      CasoTasto{"segni_e_spazio", QStringLiteral("-1 +"), QStringLiteral("1"), 3},
                      CasoTasto{"asterisco_annullato_prima", QStringLiteral("*"), QString(), 0}),
    [](const auto& info) { return std::string(info.param.nome); });

// ---------------------------------------------------------------- Keypress_Decimale

class TastiDecimali : public ProvaMaschera, public ::testing::WithParamInterface<CasoTasto> {};

TEST_P(TastiDecimali, BattutoNelCampo)
{
    const CasoTasto& caso = GetParam();
    QLineEdit* c = Prepara(campo::Importo, QString());
    Digita(c, caso.battuto);
    EXPECT_EQ(c->text(), caso.atteso);
    EXPECT_EQ(script->beep, caso.beep);
}

INSTANTIATE_TEST_SUITE_P(
    Tabella, TastiDecimali,
    ::testing::Values(CasoTasto{"due_decimali", QStringLiteral("12,34"), QStringLiteral("12,34"), 0},
                      CasoTasto{"terzo_decimale_rifiutato", QStringLiteral("12,345"), QStringLiteral("12,34"), 1},
                      CasoTasto{"punto_diventa_virgola", QStringLiteral("1.5"), QStringLiteral("1,5"), 0},
                      CasoTasto{"virgola_in_campo_vuoto", QStringLiteral(",5"), QStringLiteral("5"), 1},
                      CasoTasto{"seconda_virgola", QStringLiteral("1,2,"), QStringLiteral("1,2"), 1},
                      CasoTasto{"altri_tasti", QStringLiteral("1a-2 "), QStringLiteral("12"), 3},
                      // MaxLength 15: dodici nove prima della virgola e due dopo.
                      CasoTasto{"massimo_del_campo", QStringLiteral("999999999999,99"),
                                QStringLiteral("999999999999,99"), 0},
                      CasoTasto{"tredicesima_cifra", QStringLiteral("9999999999999"),
                                QStringLiteral("999999999999"), 1}),
    [](const auto& info) { return std::string(info.param.nome); });

TEST_F(ProvaMaschera, DecimaleGuardaIlCursore)
{
    // Con i decimali completi si può ancora scrivere prima della virgola.
    QLineEdit* c = Prepara(campo::Importo, QStringLiteral("12,34"), 0);
    QTest::keyClick(c, '5');
    EXPECT_EQ(c->text(), QStringLiteral("512,34"));
    EXPECT_EQ(script->beep, 0);
    c->setCursorPosition(static_cast<int>(c->text().size()));
    QTest::keyClick(c, '6');
    EXPECT_EQ(c->text(), QStringLiteral("512,34"));
    EXPECT_EQ(script->beep, 1);
    // Il Backspace passa sempre.
    QTest::keyClick(c, Qt::Key_Backspace);
    EXPECT_EQ(c->text(), QStringLiteral("512,3"));
    // Il limite vale anche inserendo davanti: 99999999999,99 più un 9 in testa supera.
    c = Prepara(campo::Importo, QStringLiteral("99999999999,99"), 0);
    QTest::keyClick(c, '9');
    EXPECT_EQ(c->text(), QStringLiteral("999999999999,99"));
    QTest::keyClick(c, '1');
    EXPECT_EQ(c->text(), QStringLiteral("999999999999,99"));
    EXPECT_EQ(script->beep, 1);
}

TEST_F(ProvaMaschera, DecimaleQuattroDecimali)
{
    QLineEdit* c = Prepara(campo::Quantita, QString());
    Digita(c, QStringLiteral("1,23456"));
    EXPECT_EQ(c->text(), QStringLiteral("1,2345"));
    EXPECT_EQ(script->beep, 1);
    // MaxLength 15 con 4 decimali: al più dieci cifre intere.
    c = Prepara(campo::Quantita, QString());
    Digita(c, QStringLiteral("99999999999"));
    EXPECT_EQ(c->text(), QStringLiteral("9999999999"));
}

TEST_F(ProvaMaschera, InvioPassaAlCampoSuccessivoSoloNeiDecimali)
{
    QLineEdit* importo = Prepara(campo::Importo, QStringLiteral("7"));
    QTest::keyClick(importo, Qt::Key_Return);
    EXPECT_EQ(QApplication::focusWidget(), Campo(campo::Data));
    // Il campo lasciato è stato validato come importo.
    EXPECT_EQ(importo->text(), QStringLiteral("7,00"));

    QLineEdit* nome = Prepara(campo::Maiuscole, QStringLiteral("X"));
    QTest::keyClick(nome, Qt::Key_Return);
    EXPECT_EQ(QApplication::focusWidget(), nome);
    EXPECT_TRUE(maschera->isVisible());  // Invio non preme pulsanti e non chiude
    EXPECT_TRUE(maschera->clic.isEmpty());
}

// ---------------------------------------------------------------- Keypress_Data

struct CasoData {
    const char* nome;
    QString testo;
    int cursore;
    Qt::Key tasto;
    QString atteso;
    int beep;
};

void PrintTo(const CasoData& c, std::ostream* os) { *os << c.nome; }

class TastiData : public ProvaMaschera, public ::testing::WithParamInterface<CasoData> {};

TEST_P(TastiData, TastoAlCursore)
{
    const CasoData& caso = GetParam();
    QLineEdit* c = Prepara(campo::Data, caso.testo, caso.cursore);
    QTest::keyClick(c, caso.tasto);
    EXPECT_EQ(c->text(), caso.atteso);
    EXPECT_EQ(script->beep, caso.beep);
}

INSTANTIATE_TEST_SUITE_P(
    Tabella, TastiData,
    ::testing::Values(
        CasoData{"cinque_in_data_vuota", QString(), 0, Qt::Key_5, QStringLiteral("05/"), 0},
        CasoData{"quattro_in_data_vuota", QString(), 0, Qt::Key_4, QStringLiteral("04/"), 0},
        CasoData{"uno_in_data_vuota", QString(), 0, Qt::Key_1, QStringLiteral("1"), 0},
        CasoData{"tre_in_data_vuota", QString(), 0, Qt::Key_3, QStringLiteral("3"), 0},
        CasoData{"giorno_con_due_cifre", QStringLiteral("12/05/2005"), 0, Qt::Key_1, QStringLiteral("12/05/2005"), 1},
        CasoData{"giorno_vuoto_davanti_alla_barra", QStringLiteral("/05/2005"), 0, Qt::Key_7,
                 QStringLiteral("07/05/2005"), 0},
        CasoData{"cinque_davanti_a_una_cifra", QStringLiteral("1"), 0, Qt::Key_5, QStringLiteral("1"), 1},
        CasoData{"tre_davanti_a_cifra_alta", QStringLiteral("5/05/2005"), 0, Qt::Key_3, QStringLiteral("5/05/2005"), 1},
        CasoData{"tre_davanti_a_uno", QStringLiteral("1/05/2005"), 0, Qt::Key_3, QStringLiteral("31/05/2005"), 0},
        CasoData{"due_dopo_tre", QStringLiteral("3"), 1, Qt::Key_2, QStringLiteral("3"), 1},
        CasoData{"uno_dopo_tre", QStringLiteral("3"), 1, Qt::Key_1, QStringLiteral("31/"), 0},
        CasoData{"zero_dopo_zero", QStringLiteral("0"), 1, Qt::Key_0, QStringLiteral("0"), 1},
        CasoData{"nove_dopo_zero", QStringLiteral("0"), 1, Qt::Key_9, QStringLiteral("09/"), 0},
        CasoData{"mese_uno", QStringLiteral("12/"), 3, Qt::Key_1, QStringLiteral("12/1"), 0},
        CasoData{"mese_zero", QStringLiteral("12/"), 3, Qt::Key_0, QStringLiteral("12/0"), 0},
        CasoData{"mese_cinque", QStringLiteral("12/"), 3, Qt::Key_5, QStringLiteral("12/05/"), 0},
        CasoData{"mese_con_due_cifre", QStringLiteral("12/05/"), 3, Qt::Key_1, QStringLiteral("12/05/"), 1},
        CasoData{"mese_vuoto_nella_data", QStringLiteral("12//2005"), 3, Qt::Key_5, QStringLiteral("12/05/2005"), 0},
        CasoData{"tre_dopo_uno_nel_mese", QStringLiteral("12/1"), 4, Qt::Key_3, QStringLiteral("12/1"), 1},
        CasoData{"due_dopo_uno_nel_mese", QStringLiteral("12/1"), 4, Qt::Key_2, QStringLiteral("12/12/"), 0},
        CasoData{"zero_dopo_zero_nel_mese", QStringLiteral("12/0"), 4, Qt::Key_0, QStringLiteral("12/0"), 1},
        CasoData{"anno", QStringLiteral("12/05/"), 6, Qt::Key_2, QStringLiteral("12/05/2"), 0},
        CasoData{"anno_ultima_cifra", QStringLiteral("12/05/200"), 9, Qt::Key_5, QStringLiteral("12/05/2005"), 0},
        CasoData{"oltre_anno", QStringLiteral("12/05/2005"), 10, Qt::Key_1, QStringLiteral("12/05/2005"), 1},
        CasoData{"barra_al_posto_giusto", QStringLiteral("12"), 2, Qt::Key_Slash, QStringLiteral("12/"), 0},
        CasoData{"barra_dopo_il_mese", QStringLiteral("12/05"), 5, Qt::Key_Slash, QStringLiteral("12/05/"), 0},
        CasoData{"barra_fuori_posto", QStringLiteral("1"), 1, Qt::Key_Slash, QStringLiteral("1"), 1},
        CasoData{"lettera", QStringLiteral("12/"), 3, Qt::Key_A, QStringLiteral("12/"), 1},
        CasoData{"backspace_sulla_barra", QStringLiteral("12/"), 3, Qt::Key_Backspace, QStringLiteral("12/"), 0},
        CasoData{"backspace_seconda_barra", QStringLiteral("12/05/"), 6, Qt::Key_Backspace, QStringLiteral("12/05/"),
                 0},
        CasoData{"backspace_su_cifra", QStringLiteral("12/1"), 4, Qt::Key_Backspace, QStringLiteral("12/"), 0}),
    [](const auto& info) { return std::string(info.param.nome); });

TEST_F(ProvaMaschera, DataBattutaPerIntero)
{
    QLineEdit* c = Prepara(campo::Data, QString());
    Digita(c, QStringLiteral("5122005"));
    EXPECT_EQ(c->text(), QStringLiteral("05/12/2005"));
    EXPECT_EQ(script->beep, 0);
    // Il mese che comincia con 1 passa al cursore 3; 3 al cursore 4 no.
    c = Prepara(campo::Data, QString());
    Digita(c, QStringLiteral("2113"));
    EXPECT_EQ(c->text(), QStringLiteral("21/1"));
    EXPECT_EQ(script->beep, 1);
    // 3 e poi 2 nel giorno: il 2 è rifiutato.
    c = Prepara(campo::Data, QString());
    Digita(c, QStringLiteral("32"));
    EXPECT_EQ(c->text(), QStringLiteral("3"));
    EXPECT_EQ(script->beep, 1);
}

TEST_F(ProvaMaschera, DataTuttaSelezionataContaDalPrimoCarattere)
{
    // Entrando nel campo il testo è selezionato: il cursore conta 0 e il
    // giorno ha già due cifre, quindi il tasto è rifiutato.
    QLineEdit* c = Prepara(campo::Data, QStringLiteral("12/05/2005"));
    c->selectAll();
    QTest::keyClick(c, Qt::Key_1);
    EXPECT_EQ(c->text(), QStringLiteral("12/05/2005"));
    EXPECT_EQ(script->beep, 1);
}
