#include "common/codice_fiscale.h"
#include "common/piattaforma.h"
#include "support/prova.h"

// Codici inventati (comune Z999 inesistente), con il carattere di controllo
// calcolato a parte secondo l'algoritmo pubblicato.
namespace {

class CodiceFiscale : public ProvaConDatabase {
protected:
    void SetUp() override
    {
        ProvaConDatabase::SetUp();
        sessione().TitoloMaschera = QStringLiteral("Gestione Fatture");
    }
    bool Verifica(const char* codice)
    {
        QString s = QString::fromUtf8(codice);
        const bool esito = CodFisc(s);
        EXPECT_EQ(s, QString::fromUtf8(codice)) << "il campo non va toccato";
        return esito;
    }
};

}  // namespace

TEST_F(CodiceFiscale, BenFormatiESbagliatiSenzaDomande)
{
    // una cifra nelle prime sei posizioni non basta a scartarlo; uno spazio in posizione dispari vale 0
    for (const char* codice : {"PRVTST80A01Z999U", "PRV1ST80A01Z999C", "PRVTST80A01Z99 Z"})
        EXPECT_TRUE(Verifica(codice)) << codice;
    for (const char* codice : {
             "PRVTST80A01Z999A",                     // carattere di controllo sbagliato
             "PRVTST80A01Z999", "               U",  // 15 caratteri, corto dopo il ritaglio
             "PRVTSTL0A01Z999U", "PRVTST80A0MZ999U",  // lettera in posizione 7 o 11: omocodia non ammessa qui
             "PRVTST80101Z999U", "PRVTST80A011999U", "PRVTST80A01Z9991",  // cifra in posizione 9, 12 o 16
             "prvtst80a01z999u",  // minuscole: il controllo non torna
         })
        EXPECT_FALSE(Verifica(codice)) << codice;
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
    const MessaggioRegistrato domanda{QStringLiteral("Si tratta di un caso di Omocodia ?"),
                                      StileMsg::SiNo + StileMsg::Informazione, QStringLiteral("Gestione Fatture")};
    EXPECT_EQ(script->messaggi, (Messaggi{domanda, domanda, domanda}));
}

TEST(PartitaIva, ControlloDellaCifraFinale)
{
    const struct { const char* valore; bool atteso; } casi[] = {
        {"01234567897", true}, {"13579246805", true}, {"01234567890", false},
        {"00000000190", true},  // somma 10: cifra attesa 0, mai 10
        {"00000000191", false}, {"00000000000", false},
        {"0123456789", false}, {"012345678970", false}, {"1234567890123456", false},  // 10, 12 e 16 cifre
        {"0123456789A", false}, {"", false},
        // spazi ai lati: numerico e lungo 11 dopo il ritaglio, ma le posizioni
        // contano sul testo così com'è
        {"01234567897 ", true}, {" 01234567897", false},
        {" 00000000000", true},  // non è il testo di undici zeri, e la somma torna
    };
    for (const auto& c : casi)
        EXPECT_EQ(CheckPartitaIva(QString::fromUtf8(c.valore)), c.atteso) << "'" << c.valore << "'";
}
