// I filtri dei tasti provati battendo nei campi veri di una maschera.
#include "common/filtri_tastiera.h"
#include "maschera_prova.h"

TEST(CodiciTasti, PaginaWindows1252)
{
    EXPECT_EQ(CodiceCarattere(QChar(u'’')), 146);
    EXPECT_EQ(CodiceCarattere(QChar(u'Ω')), 63);  // fuori pagina: "?"
    EXPECT_EQ(CarattereCodice(128), QChar(u'€'));
    for (int codice = 0; codice < 256; ++codice)
        EXPECT_EQ(CodiceCarattere(CarattereCodice(codice)), codice) << codice;
}

// Un caso: nel campo, con il testo e il cursore dati (-1 in fondo, -2 tutto
// selezionato), si batte una sequenza ("\b" è il Backspace).
struct CasoTasto {
    const char* nome;
    int campo;
    const char* testo;
    int cursore;
    const char* battuto;
    const char* atteso;
    int beep;
};

void PrintTo(const CasoTasto& c, std::ostream* os) { *os << c.nome; }

class Tasti : public ProvaMaschera, public ::testing::WithParamInterface<CasoTasto> {};

TEST_P(Tasti, BattutoNelCampo)
{
    const CasoTasto& caso = GetParam();
    QLineEdit* c = Prepara(caso.campo, QString::fromUtf8(caso.testo), std::max(caso.cursore, -1));
    if (caso.cursore == -2)
        c->selectAll();
    Digita(c, QString::fromUtf8(caso.battuto));
    EXPECT_EQ(c->text(), QString::fromUtf8(caso.atteso));
    EXPECT_EQ(script->beep, caso.beep);
}

using namespace campo;

INSTANTIATE_TEST_SUITE_P(
    Filtri, Tasti,
    ::testing::Values(CasoTasto{"minuscole", Maiuscole, "", -1, "rossi mario", "ROSSI MARIO", 0},
                      CasoTasto{"asterisco_senza_beep", Maiuscole, "", -1, "A*B", "AB", 0},
                      CasoTasto{"vocali_accentate", Maiuscole, "", -1, "càáèéìíòóùú", "CA'A'E'E'I'I'O'O'U'U'", 0},
                      CasoTasto{"altri_invariati", Maiuscole, "", -1, "1çÀ-", "1çÀ-", 0},
                      CasoTasto{"controlli_passano", Maiuscole, "AB", -1, "\b", "A", 0},
                      // L'apostrofo aggiunto passa dal filtro del campo come un tasto battuto.
                      CasoTasto{"accento_in_data", Data, "", -1, "à", "", 2},
                      CasoTasto{"accento_in_intero", Intero, "", -1, "1è2", "12", 2},
                      CasoTasto{"accento_nei_nomi", Nome, "", -1, "d'ànna!perché", "D'A'NNAPERCHE'", 0},
                      // Interi e decimali.
                      CasoTasto{"cifre", Intero, "", -1, "0123456789", "0123456789", 0},
                      // I separatori passano anche se il filtro si chiama "intero".
                      CasoTasto{"separatori", Intero, "", -1, "1.234,5", "1.234,5", 0},
                      CasoTasto{"lettere", Intero, "", -1, "1a2Z", "12", 2},
                      CasoTasto{"segni_e_spazio", Intero, "", -1, "-1 +", "1", 3},
                      CasoTasto{"asterisco_annullato_prima", Intero, "", -1, "*", "", 0},
                      CasoTasto{"terzo_decimale", Importo, "", -1, "12,345", "12,34", 1},
                      CasoTasto{"punto_diventa_virgola", Importo, "", -1, "1.5", "1,5", 0},
                      CasoTasto{"virgola_in_campo_vuoto", Importo, "", -1, ",5", "5", 1},
                      CasoTasto{"seconda_virgola", Importo, "", -1, "1,2,", "1,2", 1},
                      CasoTasto{"altri_tasti", Importo, "", -1, "1a-2 ", "12", 3},
                      // MaxLength 15: dodici nove prima della virgola e due dopo.
                      CasoTasto{"massimo_del_campo", Importo, "", -1, "999999999999,99", "999999999999,99", 0},
                      CasoTasto{"tredicesima_cifra", Importo, "", -1, "9999999999999", "999999999999", 1},
                      CasoTasto{"limite_inserendo_davanti", Importo, "99999999999,99", 0, "91", "999999999999,99", 1},
                      // Con i decimali completi si scrive ancora prima della virgola; il Backspace passa.
                      CasoTasto{"prima_della_virgola", Importo, "12,34", 0, "5", "512,34", 0},
                      CasoTasto{"dopo_decimali_completi", Importo, "12,34", -1, "6\b", "12,3", 1},
                      CasoTasto{"quattro_decimali", Quantita, "", -1, "1,23456", "1,2345", 1},
                      CasoTasto{"dieci_cifre_intere", Quantita, "", -1, "99999999999", "9999999999", 1},
                      // Date.
                      CasoTasto{"quattro_in_data_vuota", Data, "", 0, "4", "04/", 0},
                      CasoTasto{"tre_in_data_vuota", Data, "", 0, "3", "3", 0},
                      CasoTasto{"giorno_con_due_cifre", Data, "12/05/2005", 0, "1", "12/05/2005", 1},
                      CasoTasto{"tutta_selezionata_conta_da_zero", Data, "12/05/2005", -2, "1", "12/05/2005", 1},
                      CasoTasto{"giorno_vuoto_davanti_alla_barra", Data, "/05/2005", 0, "7", "07/05/2005", 0},
                      CasoTasto{"tre_davanti_a_cifra_alta", Data, "5/05/2005", 0, "3", "5/05/2005", 1},
                      CasoTasto{"tre_davanti_a_uno", Data, "1/05/2005", 0, "3", "31/05/2005", 0},
                      CasoTasto{"tre_e_due_nel_giorno", Data, "", 0, "32", "3", 1},
                      CasoTasto{"uno_dopo_tre", Data, "3", 1, "1", "31/", 0},
                      CasoTasto{"zero_dopo_zero", Data, "0", 1, "0", "0", 1},
                      CasoTasto{"nove_dopo_zero", Data, "0", 1, "9", "09/", 0},
                      CasoTasto{"mese_uno", Data, "12/", 3, "1", "12/1", 0},
                      CasoTasto{"mese_cinque", Data, "12/", 3, "5", "12/05/", 0},
                      CasoTasto{"mese_con_due_cifre", Data, "12/05/", 3, "1", "12/05/", 1},
                      CasoTasto{"mese_vuoto_nella_data", Data, "12//2005", 3, "5", "12/05/2005", 0},
                      CasoTasto{"tre_dopo_uno_nel_mese", Data, "", 0, "2113", "21/1", 1},
                      CasoTasto{"due_dopo_uno_nel_mese", Data, "12/1", 4, "2", "12/12/", 0},
                      CasoTasto{"zero_dopo_zero_nel_mese", Data, "12/0", 4, "0", "12/0", 1},
                      CasoTasto{"data_per_intero", Data, "", 0, "5122005", "05/12/2005", 0},
                      CasoTasto{"oltre_anno", Data, "12/05/2005", 10, "1", "12/05/2005", 1},
                      CasoTasto{"barra_dopo_il_giorno", Data, "12", 2, "/", "12/", 0},
                      CasoTasto{"barra_dopo_il_mese", Data, "12/05", 5, "/", "12/05/", 0},
                      CasoTasto{"barra_fuori_posto", Data, "1", 1, "/", "1", 1},
                      CasoTasto{"lettera", Data, "12/", 3, "A", "12/", 1},
                      CasoTasto{"backspace_sulle_barre", Data, "12/05/", 6, "\b", "12/05/", 0},
                      CasoTasto{"backspace_su_cifra", Data, "12/1", 4, "\b", "12/", 0}),
    [](const auto& info) { return std::string(info.param.nome); });

TEST_F(ProvaMaschera, FiltroCaratteriTabella)
{
    // Ai bordi di ogni intervallo della tabella; quel che non passa, senza beep.
    const struct {
        int codice;
        bool tenuto;
    } casi[] = {{32, true},  {33, false}, {37, false}, {38, true},  {39, true},   {40, false},  {43, false},
                {44, true},  {47, true},  {48, true},  {57, true},  {58, false},  {64, false},  {65, true},
                {90, true},  {91, false}, {96, false}, {97, true},  {122, true},  {123, false}, {128, false},
                {224, false}, {255, false}};
    for (const auto& c : casi) {
        QLineEdit* f = Prepara(campo::Caratteri, QString());
        Batti(f, CarattereCodice(c.codice));
        EXPECT_EQ(f->text(), c.tenuto ? QString(CarattereCodice(c.codice)) : QString()) << c.codice;
        EXPECT_EQ(script->beep, 0) << c.codice;
    }
}

TEST_F(ProvaMaschera, InvioPassaAlCampoSuccessivoSoloNeiDecimali)
{
    QLineEdit* importo = Prepara(campo::Importo, QStringLiteral("7"));
    QTest::keyClick(importo, Qt::Key_Return);
    EXPECT_EQ(QApplication::focusWidget(), Campo(campo::Data));
    EXPECT_EQ(importo->text(), QStringLiteral("7,00"));  // validato lasciandolo

    QLineEdit* nome = Prepara(campo::Maiuscole, QStringLiteral("X"));
    QTest::keyClick(nome, Qt::Key_Return);
    EXPECT_EQ(QApplication::focusWidget(), nome);
    EXPECT_TRUE(maschera->isVisible());  // Invio non preme pulsanti e non chiude
    EXPECT_TRUE(maschera->clic.isEmpty());
}
