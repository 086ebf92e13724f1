// Le tre maschere del cambio di numero (frmCambioDomanda,
// frmProduttori_CambioDomanda, frmProduttori_CambioUtf): aspetto, tasti,
// controlli nell'ordine, segni rimessi a "N", guasti, aiuto.
#include "common/SchermataCambioNumero.h"
#include "prova_maschere_domanda.h"

#include <QGroupBox>

namespace {

using G = GenereCambio;

class MaschereCambio : public ProvaMascheraDomanda {
protected:
    SchermataCambioNumero& Apri(G genere) { return Mostra(new SchermataCambioNumero(genere)); }
    // Domanda 7 dei due rami con i segni, e i numeri dei certificati.
    QString Stato()
    {
        return Righe(db(), QStringLiteral(
                               "SELECT IFNULL((SELECT DOMANDA||STAM||SCAR FROM DOMANDE WHERE ID_DOMANDA = 1), '') || ' ' || "
                               "IFNULL((SELECT DOMANDA||STAM||SCAR FROM DOMANDE_PRODUTTORI "
                               "WHERE ID_DOMANDA_PRODUTTORE = 1), '') || ' ' || "
                               "(SELECT group_concat(NUMERO_CERTIFICATO_UTF, ',') FROM TAB_UTF)"))
            .value(0);
    }
};

TEST_F(MaschereCambio, AspettoDelleTreVarianti)
{
    const struct { G genere; QString nome, didascalia, cornice, vecchio, nuovo, attuale; int lunghezza; } casi[] = {
        {G::Domanda, "frmCambioDomanda", "Cambio", "Cambio numero di domanda", "N°Domanda", "N° Domanda nuovo",
         "00000000007", 11},
        {G::DomandaProduttore, "frmProduttori_CambioDomanda", "Cambio domanda del produttore",
         "Cambio numero di domanda del produttore", "N°Domanda ", "N° Domanda nuovo", "00000000007", 11},
        {G::CertificatoUtf, "frmProduttori_CambioUtf", "Cambio Certificato UTF", "Cambio Numero certificato UTF",
         "Certificato UTF", "Certificato UTF nuovo", "UTF1", 9},
    };
    for (const auto& c : casi) {
        SCOPED_TRACE(c.nome.toStdString());
        SchermataCambioNumero& m = Apri(c.genere);
        EXPECT_EQ(QStringList({m.objectName(), m.windowTitle(), m.AFracAMBIO()->title(), m.Lbldati[1]->text(),
                               m.Lbldati[2]->text(), m.TxtDati[1]->text()}),
                  QStringList({c.nome, c.didascalia, c.cornice, c.vecchio, c.nuovo, c.attuale}));
        EXPECT_TRUE(m.TxtDati[1]->isReadOnly());
        EXPECT_EQ(QApplication::focusWidget(), m.TxtDati[2]);
        EXPECT_EQ(m.TxtDati[2]->maxLength(), c.lunghezza);
    }
}

struct CasoCambio {
    const char* nome;
    G genere;
    const char* prima;
    const char* battuto;
    MessaggioRegistrato messaggio;
    const char* stato;  // "" = come prima
    const char* vecchio = nullptr;  // numero attuale diverso da quello della riga
};

void PrintTo(const CasoCambio& c, std::ostream* os) { *os << c.nome; }

class Cambi : public MaschereCambio, public ::testing::WithParamInterface<CasoCambio> {};

TEST_P(Cambi, EsitoMessaggioEChiusura)
{
    const CasoCambio& c = GetParam();
    if (*c.prima)
        db().Execute(QString::fromLatin1(c.prima));
    if (c.vecchio)
        sessione().DomandaSel.DOMANDA = QString::fromLatin1(c.vecchio);
    const QString prima = Stato();
    SchermataCambioNumero& m = Apri(c.genere);
    script->Rispondi(RispostaMsg::OK);
    Scrivi(m.TxtDati[2], QString::fromUtf8(c.battuto));
    Premi(m.Cmddati[0]);
    EXPECT_EQ(script->messaggi, Messaggi{c.messaggio});
    const bool eseguita = c.messaggio.testo == QLatin1String("Operazione correttamente eseguita.");
    EXPECT_EQ(m.isVisible(), !eseguita);
    if (!eseguita) {
        EXPECT_EQ(QApplication::focusWidget(), m.TxtDati[2]);
    }
    EXPECT_EQ(Stato(), *c.stato ? QString::fromUtf8(c.stato) : prima);
}

const MessaggioRegistrato Eseguita{"Operazione correttamente eseguita.", 64, TitoloProva};
const MessaggioRegistrato NonEseguita{"Operazione non eseguita.", 64, TitoloProva};
const MessaggioRegistrato Inserire{"Inserire il nuovo numero domanda. ", 64, TitoloProva};
const MessaggioRegistrato Esistente{"Il nuovo numero domanda è già esistente. ", 64, TitoloProva};
const char* const Mai = "";

INSTANTIATE_TEST_SUITE_P(
    Casi, Cambi,
    ::testing::Values(
        // 12 diventa 00000000012 uscendo dal campo; le lettere non si battono; i segni tornano a "N".
        CasoCambio{"D_12", G::Domanda, Mai, "1a2", Eseguita, "00000000012NN 00000000007SS UTF1,UTF2"},
        // Il vuoto diventa zeri, ed è come non battuto.
        CasoCambio{"D_vuoto", G::Domanda, Mai, "", Inserire, ""},
        // La riga stessa non è esclusa: lo stesso numero è già esistente.
        CasoCambio{"D_stesso_numero", G::Domanda, Mai, "7", Esistente, ""},
        CasoCambio{"D_preso_stesso_articolo", G::Domanda, Mai, "8", Esistente, ""},
        CasoCambio{"D_preso_altro_articolo", G::Domanda, "UPDATE DOMANDE SET TIPO_ARTICOLO = '29' WHERE ID_DOMANDA = 2",
                   "8", Eseguita, "00000000008NN 00000000007SS UTF1,UTF2"},
        // Si misura il numero vecchio, non il nuovo.
        CasoCambio{"D_vecchio_corto", G::Domanda, Mai, "12", {"Il nuovo numero domanda non è corretto. ", 64, TitoloProva},
                   "", "7"},
        CasoCambio{"D_cambiata_nel_frattempo", G::Domanda,
                   "UPDATE DOMANDE SET DOMANDA = '00000000077' WHERE ID_DOMANDA = 1", "12", NonEseguita, ""},
        CasoCambio{"D_guasto", G::Domanda, "CREATE TRIGGER blocco BEFORE UPDATE ON DOMANDE BEGIN SELECT RAISE(ABORT, 'database bloccato'); END",
                   "12", MessaggioGuasto("frmCambioDomanda Cmddati_Click"), ""},
        CasoCambio{"P_123", G::DomandaProduttore, Mai, "123", Eseguita, "00000000007SS 00000000123NN UTF1,UTF2"},
        // Qui la riga stessa è esclusa: lo stesso numero passa e rimette i segni.
        CasoCambio{"P_stesso_numero", G::DomandaProduttore, Mai, "7", Eseguita, "00000000007SS 00000000007NN UTF1,UTF2"},
        CasoCambio{"P_zero", G::DomandaProduttore, Mai, "0", Inserire, ""},
        CasoCambio{"P_preso_stesso_articolo", G::DomandaProduttore, Mai, "9", Esistente, ""},
        CasoCambio{"P_preso_altro_articolo", G::DomandaProduttore,
                   "UPDATE DOMANDE_PRODUTTORI SET TIPO_ARTICOLO = '29' WHERE ID_DOMANDA_PRODUTTORE = 2", "9", Eseguita,
                   "00000000007SS 00000000009NN UTF1,UTF2"},
        CasoCambio{"P_guasto", G::DomandaProduttore,
                   "CREATE TRIGGER blocco BEFORE UPDATE ON DOMANDE_PRODUTTORI BEGIN SELECT RAISE(ABORT, 'database bloccato'); END",
                   "12", MessaggioGuasto("frmProduttori_CambioDomanda.Cmddati_CLick"), ""},
        // Maiuscole; l'apostrofo non rompe nulla; la domanda del certificato torna da stampare.
        CasoCambio{"U_apostrofo", G::CertificatoUtf, Mai, "ab'9", Eseguita, "00000000007SS 00000000007NN AB'9,UTF2"},
        CasoCambio{"U_stesso_numero", G::CertificatoUtf, Mai, "UTF1", Eseguita, "00000000007SS 00000000007NN UTF1,UTF2"},
        CasoCambio{"U_vuoto", G::CertificatoUtf, Mai, "", {"Inserire il nuovo certificato UTF. ", 64, TitoloProva}, ""},
        // Unico fra i certificati di tutte le domande.
        CasoCambio{"U_di_altra_domanda", G::CertificatoUtf, Mai, "utf2",
                   {"Il nuovo certificato UTF è già esistente. ", 64, TitoloProva}, ""},
        CasoCambio{"U_certificato_sparito", G::CertificatoUtf, "DELETE FROM TAB_UTF WHERE iD_UTF = 1", "UTF9", NonEseguita,
                   ""},
        // Senza la sua domanda il certificato resta cambiato, e l'esito è negativo.
        CasoCambio{"U_domanda_sparita", G::CertificatoUtf,
                   "DELETE FROM DOMANDE_PRODUTTORI WHERE ID_DOMANDA_PRODUTTORE = 1", "UTF9", NonEseguita,
                   "00000000007SS  UTF9,UTF2"},
        // Un guasto sulla seconda scrittura non lascia cambiato il certificato.
        CasoCambio{"U_guasto_sui_segni", G::CertificatoUtf,
                   "CREATE TRIGGER blocco BEFORE UPDATE ON DOMANDE_PRODUTTORI BEGIN SELECT RAISE(ABORT, 'database bloccato'); END",
                   "UTF9", MessaggioGuasto("frmProduttori_CambioUTF.Cmddati_CLick"), ""}),
    [](const auto& info) { return std::string(info.param.nome); });

// frmCambioDomanda: il pulsante Help non mostra nulla, F1 sì; le gemelle mostrano l'aiuto col pulsante.
TEST_F(MaschereCambio, Aiuto)
{
    const struct { G genere; QStringList attesi; } casi[] = {
        {G::Domanda, {"frmCambioDomanda"}},
        {G::DomandaProduttore, {"frmCambioDomanda", "frmCambioDomanda"}},
        {G::CertificatoUtf, {"frmCambioUTF", "frmCambioUTF"}},
    };
    for (const auto& c : casi) {
        aiuti.clear();
        SchermataCambioNumero& m = Apri(c.genere);
        Premi(m.Cmddati[2]);
        QTest::keyClick(m.TxtDati[2], Qt::Key_F1);
        EXPECT_EQ(aiuti, c.attesi);
        EXPECT_TRUE(m.isVisible());
    }
}

}  // namespace
