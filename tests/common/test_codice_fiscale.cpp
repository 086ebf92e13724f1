#include "common/codice_fiscale.h"
#include "common/piattaforma.h"
#include "shell/session_state.h"
#include "support/piattaforma_script.h"

#include <gtest/gtest.h>

// Codici inventati (comune Z999 inesistente), con il carattere di controllo
// calcolato a parte secondo l'algoritmo pubblicato.
namespace {

const QString Domanda = QStringLiteral("Si tratta di un caso di Omocodia ?");

class CodiceFiscale : public ::testing::Test {
protected:
    void SetUp() override
    {
        sessione().Azzera();
        sessione().TitoloMaschera = QStringLiteral("Gestione Fatture");
        script = &InstallaPiattaformaScript();
    }
    void TearDown() override { sessione().Azzera(); }
    bool Verifica(const char* codice)
    {
        QString s = QString::fromUtf8(codice);
        const QString prima = s;
        const bool esito = CodFisc(s);
        EXPECT_EQ(s, prima) << "il campo non va toccato";
        return esito;
    }
    PiattaformaScript* script = nullptr;
};

}  // namespace

TEST_F(CodiceFiscale, CodiciBenFormati)
{
    for (const char* codice : {"PRVTST80A01Z999U", "FNTCDC75T52Z998P", "XYZKWJ99E41Z990E",
                               // una cifra nelle prime sei posizioni non basta a scartarlo
                               "PRV1ST80A01Z999C"}) {
        EXPECT_TRUE(Verifica(codice)) << codice;
    }
    EXPECT_TRUE(script->messaggi.isEmpty());
}

TEST_F(CodiceFiscale, CodiciSbagliatiSenzaDomande)
{
    for (const char* codice : {
             "PRVTST80A01Z999A",   // carattere di controllo sbagliato
             "PRVTST80A01Z999",    // 15 caratteri
             "PRVTST80A01Z99 U",   // spazio in posizione 15: il controllo non torna
             "               U",  // corto dopo il ritaglio
             "PRVTST8AA01Z999U",   // lettera in posizione 8
             "PRVTSTL0A01Z999U",   // lettera in posizione 7 (omocodia non ammessa qui)
             "PRVTST80A0MZ999U",   // lettera in posizione 11
             "PRVTST80101Z999U",   // cifra in posizione 9
             "PRVTST80A011999U",   // cifra in posizione 12
             "PRVTST80A01Z9991",   // cifra in posizione 16
             "prvtst80a01z999u",   // minuscole: il controllo non torna
         }) {
        EXPECT_FALSE(Verifica(codice)) << codice;
    }
    EXPECT_TRUE(script->messaggi.isEmpty());
}

TEST_F(CodiceFiscale, OmocodiaChiedeConferma)
{
    // Z999 con le cifre del comune mutate in lettere: ZVVV.
    script->Rispondi(RispostaMsg::Si);
    EXPECT_TRUE(Verifica("PRVTST80A01ZVVVK"));
    script->Rispondi(RispostaMsg::No);
    EXPECT_FALSE(Verifica("PRVTST80A01ZVVVK"));
    script->Rispondi(RispostaMsg::Si);
    EXPECT_FALSE(Verifica("PRVTST80A01ZVVVA"));  // sì, ma controllo sbagliato
    ASSERT_EQ(script->messaggi.size(), 3);
    for (const auto& m : script->messaggi) {
        EXPECT_EQ(m.testo, Domanda);
        EXPECT_EQ(m.stile, StileMsg::SiNo + StileMsg::Informazione);
        EXPECT_EQ(m.titolo, QStringLiteral("Gestione Fatture"));
    }
}

TEST(PartitaIva, ControlloDellaCifraFinale)
{
    struct Caso {
        const char* valore;
        bool atteso;
    };
    const Caso casi[] = {
        {"01234567897", true},
        {"13579246805", true},
        {"98765432103", true},
        {"10000000009", true},
        {"20000000008", true},
        {"00000000190", true},   // somma 10: cifra attesa 0, mai 10
        {"00000000191", false},
        {"01234567890", false},
        {"01234567898", false},
        {"00000000000", false},
        {"0123456789", false},   // 10 cifre
        {"012345678970", false}, // 12 cifre
        {"1234567890123456", false},  // 16 cifre: numerico, lunghezza sbagliata
        {"0123456789A", false},
        {"", false},
        {"12.345.678.901", false},
        // spazi ai lati: numerico e lungo 11 dopo il ritaglio, ma le posizioni
        // contano sul testo così com'è
        {"01234567897 ", true},
        {" 01234567897", false},
        {" 00000000000", true},  // non è il testo di undici zeri, e la somma torna
    };
    for (const auto& c : casi)
        EXPECT_EQ(CheckPartitaIva(QString::fromUtf8(c.valore)), c.atteso) << "'" << c.valore << "'";
}
