// Cambio dei numeri (domanda, domanda del distillatore, certificato UTF):
// i controlli nell'ordine, l'aggiornamento con i segni rimessi a "N", e il
// certificato che non resta cambiato a metà.
#include "common/CambioNumero.h"
#include "shell/session_state.h"
#include "store/database.h"
#include "support/cartella_prova.h"
#include "support/errori_prova.h"
#include "support/verifiche.h"

#include <gtest/gtest.h>

namespace {

struct Caso {
    const char* nome;
    GenereCambio genere;
    const char* prima;
    const char* vecchio;
    const char* nuovo;
    EsitoCambio esito;
    // Stato dopo: DOMANDE, DOMANDE_PRODUTTORI, TAB_UTF ("" = come prima).
    const char* domande;
    const char* produttori;
    const char* certificati;
    int errore = 0;
};

void PrintTo(const Caso& c, std::ostream* os) { *os << c.nome; }

const char* const Domande = "1:00000000001:29SS 2:00000000012:30SS";
const char* const Produttori = "1:00000000001:29SS 2:00000000002:30SS 3:00000000003:29SS";
const char* const Certificati = "1:1:UTF1 2:2:UTF2";

class CambioNumero : public ProvaConDatabase, public ::testing::WithParamInterface<Caso> {
protected:
    QString Stato(const char* tabella, const char* espressione)
    {
        return Righe(db(), QStringLiteral("SELECT group_concat(%1, ' ') FROM (SELECT * FROM %2 ORDER BY 1)")
                               .arg(QString::fromLatin1(espressione), QString::fromLatin1(tabella)))
            .value(0);
    }
};

TEST_P(CambioNumero, ControlliEAggiornamento)
{
    const Caso& c = GetParam();
    for (const char* sql :
         {"INSERT INTO DOMANDE (ID_DOMANDA, DOMANDA, TIPO_ARTICOLO, STAM, SCAR, PROG_VERS) VALUES "
          "(1, '00000000001', '29', 'S', 'S', '3'), (2, '00000000012', '30', 'S', 'S', '1')",
          "INSERT INTO DOMANDE_PRODUTTORI (ID_DOMANDA_PRODUTTORE, DOMANDA, TIPO_ARTICOLO, STAM, SCAR) VALUES "
          "(1, '00000000001', '29', 'S', 'S'), (2, '00000000002', '30', 'S', 'S'), (3, '00000000003', '29', 'S', 'S')",
          "INSERT INTO TAB_UTF (iD_UTF, iD_DOMANDA, NUMERO_CERTIFICATO_UTF) VALUES (1, 1, 'UTF1'), (2, 2, 'UTF2')",
          c.prima})
        if (*sql)
            db().Execute(QString::fromLatin1(sql));
    auto& s = sessione();
    s.DomandaSel.ID_DOMANDA = 1;
    s.DomandaSel.TIPO_ARTICOLO = QStringLiteral("29");
    s.DomandaProduttoreSel.ID_DOMANDA_PRODUTTORE = 1;
    s.DomandaProduttoreSel.TIPO_ARTICOLO = QStringLiteral("29");
    s.UtfSel.iD_UTF = 1;
    s.UtfSel.iD_DOMANDA = 1;

    EsitoCambio esito{};
    const int errore = NumeroErrore([&] {
        esito = CambiaNumero(c.genere, QString::fromUtf8(c.vecchio), QString::fromUtf8(c.nuovo));
    });
    EXPECT_EQ(errore, c.errore);
    if (!c.errore) {
        EXPECT_EQ(esito, c.esito);
    }
    const auto atteso = [](const char* t, const char* prima) { return QString::fromUtf8(*t ? t : prima); };
    EXPECT_EQ(Stato("DOMANDE", "ID_DOMANDA||':'||DOMANDA||':'||TIPO_ARTICOLO||STAM||SCAR"),
              atteso(c.domande, Domande));
    EXPECT_EQ(Stato("DOMANDE_PRODUTTORI", "ID_DOMANDA_PRODUTTORE||':'||DOMANDA||':'||TIPO_ARTICOLO||STAM||SCAR"),
              atteso(c.produttori, Produttori));
    EXPECT_EQ(Stato("TAB_UTF", "iD_UTF||':'||iD_DOMANDA||':'||NUMERO_CERTIFICATO_UTF"),
              atteso(c.certificati, Certificati));
    EXPECT_TRUE(script->messaggi.isEmpty());
}

using G = GenereCambio;
using E = EsitoCambio;
const char* const Mai = "";  // nessun guasto preparato

INSTANTIATE_TEST_SUITE_P(
    Casi, CambioNumero,
    ::testing::Values(
        // Si misura il numero vecchio, non il nuovo.
        Caso{"domanda_vecchio_corto", G::Domanda, Mai, "1", "00000000012", E::NumeroNonCorretto, "", "", ""},
        Caso{"domanda_nuovo_corto_passa", G::Domanda, Mai, "00000000001", "5", E::Eseguito,
             "1:5:29NN 2:00000000012:30SS", "", ""},
        Caso{"domanda_numero_di_altro_articolo", G::Domanda, Mai, "00000000001", "00000000012", E::Eseguito,
             "1:00000000012:29NN 2:00000000012:30SS", "", ""},
        Caso{"domanda_numero_preso", G::Domanda, "UPDATE DOMANDE SET TIPO_ARTICOLO = '29' WHERE ID_DOMANDA = 2",
             "00000000001", "00000000012", E::GiaEsistente, "1:00000000001:29SS 2:00000000012:29SS", "", ""},
        Caso{"domanda_cambiata_nel_frattempo", G::Domanda, Mai, "00000000099", "00000000077", E::NonEseguito, "",
             "", ""},
        Caso{"produttore_corto", G::DomandaProduttore, Mai, "00000000001", "123", E::NumeroNonCorretto, "", "", ""},
        Caso{"produttore_preso_stesso_articolo", G::DomandaProduttore, Mai, "00000000001", "00000000003",
             E::GiaEsistente, "", "", ""},
        Caso{"produttore_preso_altro_articolo", G::DomandaProduttore, Mai, "00000000001", "00000000002", E::Eseguito,
             "", "1:00000000002:29NN 2:00000000002:30SS 3:00000000003:29SS", ""},
        Caso{"produttore_sparito", G::DomandaProduttore,
             "DELETE FROM DOMANDE_PRODUTTORI WHERE ID_DOMANDA_PRODUTTORE = 1", "00000000001", "00000000009",
             E::NonEseguito, "", "2:00000000002:30SS 3:00000000003:29SS", ""},
        Caso{"utf_certificato_sparito", G::CertificatoUtf, "DELETE FROM TAB_UTF WHERE iD_UTF = 1", "UTF1", "UTF9",
             E::NonEseguito, "", "", "2:2:UTF2"},
        // Senza la domanda il certificato resta cambiato e l'esito è negativo.
        Caso{"utf_domanda_sparita", G::CertificatoUtf,
             "DELETE FROM DOMANDE_PRODUTTORI WHERE ID_DOMANDA_PRODUTTORE = 1", "UTF1", "UTF9", E::NonEseguito, "",
             "2:00000000002:30SS 3:00000000003:29SS", "1:1:UTF9 2:2:UTF2"},
        // Un guasto sulla seconda scrittura non lascia cambiato il certificato.
        Caso{"utf_guasto_sui_segni", G::CertificatoUtf,
             "CREATE TRIGGER blocco BEFORE UPDATE ON DOMANDE_PRODUTTORI BEGIN SELECT RAISE(ABORT, 'bloccato'); END",
             "UTF1", "UTF9", E::NonEseguito, "", "", "", 3019}),
    [](const auto& info) { return std::string(info.param.nome); });

}  // namespace
