// Le tre maschere del cambio di numero (frmCambioDomanda,
// frmProduttori_CambioDomanda, frmProduttori_CambioUtf): aspetto, tasti,
// esiti con il loro messaggio, guasti nel registro, aiuto.
#include "common/SchermataCambioNumero.h"
#include "deliveries/registra_domande_produttori.h"
#include "invoices/prova_maschere_domanda.h"
#include "invoices/registra_domande.h"
#include "shell/modale_di_prova.h"
#include "shell/registro_maschere.h"

#include <QGroupBox>
#include <QLabel>
#include <gtest/gtest.h>

namespace {

const QString Titolo = QStringLiteral(" Cambio Num. Domande ");

class MaschereCambio : public ProvaMascheraDomanda {
protected:
    void SetUp() override
    {
        ProvaMascheraDomanda::SetUp();
        sessione().TitoloMaschera = Titolo;
        for (const char* sql :
             {"INSERT INTO DOMANDE (ID_DOMANDA, DOMANDA, TIPO_ARTICOLO, STAM, SCAR) VALUES (1, '00000000007', '29', 'S', 'S')",
              "INSERT INTO DOMANDE_PRODUTTORI (ID_DOMANDA_PRODUTTORE, DOMANDA, TIPO_ARTICOLO, STAM, SCAR) VALUES "
              "(1, '00000000007', '29', 'S', 'S')",
              "INSERT INTO TAB_UTF (iD_UTF, iD_DOMANDA, NUMERO_CERTIFICATO_UTF) VALUES (1, 1, 'UTF1'), (2, 9, 'UTF2')"})
            db().Execute(QString::fromLatin1(sql));
        auto& s = sessione();
        s.DomandaSel = {1, "00000000007", "S", "S", "", "29", "01", "1", "", 0, "2005"};
        s.DomandaProduttoreSel = {1, "00000000007", "S", "S", "29", "1", "", 0, "2005"};
        s.UtfSel.iD_UTF = 1;
        s.UtfSel.iD_DOMANDA = 1;
        s.UtfSel.NUMERO_CERTIFICATO_UTF = QStringLiteral("UTF1");
    }
    SchermataCambioNumero& Apri(GenereCambio genere)
    {
        return ProvaMascheraDomanda::Apri<SchermataCambioNumero>(QStringLiteral("M"), genere);
    }
    QString Stato()
    {
        return Righe(db(), QStringLiteral("SELECT IFNULL((SELECT DOMANDA||STAM||SCAR FROM DOMANDE), '') || ' ' || "
                                          "(SELECT DOMANDA||STAM||SCAR FROM DOMANDE_PRODUTTORI) || ' ' || "
                                          "(SELECT group_concat(NUMERO_CERTIFICATO_UTF, ',') FROM TAB_UTF)"))
            .value(0);
    }
};

using G = GenereCambio;

TEST_F(MaschereCambio, AspettoDelleTreVarianti)
{
    const struct {
        G genere;
        QString nome, didascalia, cornice, vecchio, nuovo, attuale;
        int lunghezza;
    } casi[] = {
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
        EXPECT_EQ(m.TxtDati[2]->maxLength(), c.lunghezza);
    }
    EXPECT_EQ(Apri(G::Domanda).TxtDati[2]->toolTip(), QStringLiteral("Numero U.T.F."));
}

struct CasoEsito {
    const char* nome;
    G genere;
    const char* prima;
    const char* battuto;
    MessaggioRegistrato messaggio;
    bool chiusa;
    const char* stato;
};

void PrintTo(const CasoEsito& c, std::ostream* os) { *os << c.nome; }

class EsitiCambio : public MaschereCambio, public ::testing::WithParamInterface<CasoEsito> {};

TEST_P(EsitiCambio, MessaggioEChiusura)
{
    const CasoEsito& c = GetParam();
    if (*c.prima)
        db().Execute(QString::fromLatin1(c.prima));
    SchermataCambioNumero& m = Apri(c.genere);
    script->Rispondi(RispostaMsg::OK);
    Scrivi(m.TxtDati[2], QString::fromUtf8(c.battuto));
    Premi(m.Cmddati[0]);
    EXPECT_EQ(script->messaggi, Messaggi{c.messaggio});
    EXPECT_EQ(m.isVisible(), !c.chiusa);
    if (!c.chiusa) {
        EXPECT_EQ(QApplication::focusWidget(), m.TxtDati[2]);
    }
    EXPECT_EQ(Stato(), QString::fromUtf8(c.stato));
}

const MessaggioRegistrato Eseguita{"Operazione correttamente eseguita.", 64, Titolo};
const char* const Prima = "00000000007SS 00000000007SS UTF1,UTF2";

MessaggioRegistrato Guasto(const char* etichetta)
{
    return {MessaggioLogErr(3019, "Errore del database: database bloccato", QString::fromLatin1(etichetta)), 48,
            "Gestione Errori"};
}

INSTANTIATE_TEST_SUITE_P(
    Casi, EsitiCambio,
    ::testing::Values(
        // 12 diventa 00000000012 uscendo dal campo; i segni tornano a "N".
        CasoEsito{"domanda_12", G::Domanda, "", "12", Eseguita, true, "00000000012NN 00000000007SS UTF1,UTF2"},
        CasoEsito{"domanda_vuota", G::Domanda, "", "", {"Inserire il nuovo numero domanda. ", 64, Titolo}, false, Prima},
        CasoEsito{"domanda_stesso_numero", G::Domanda, "", "7",
                  {"Il nuovo numero domanda è già esistente. ", 64, Titolo}, false, Prima},
        CasoEsito{"domanda_lettere_perse", G::Domanda, "", "1a2", Eseguita, true,
                  "00000000012NN 00000000007SS UTF1,UTF2"},
        CasoEsito{"produttore_123", G::DomandaProduttore, "", "123", Eseguita, true,
                  "00000000007SS 00000000123NN UTF1,UTF2"},
        CasoEsito{"produttore_stesso_numero", G::DomandaProduttore, "", "7", Eseguita, true,
                  "00000000007SS 00000000007NN UTF1,UTF2"},
        // Maiuscole; l'apostrofo non rompe nulla.
        CasoEsito{"utf_apostrofo", G::CertificatoUtf, "", "ab'9", Eseguita, true, "00000000007SS 00000000007NN AB'9,UTF2"},
        CasoEsito{"utf_vuoto", G::CertificatoUtf, "", "", {"Inserire il nuovo certificato UTF. ", 64, Titolo}, false,
                  Prima},
        CasoEsito{"utf_di_altra_domanda", G::CertificatoUtf, "", "utf2",
                  {"Il nuovo certificato UTF è già esistente. ", 64, Titolo}, false, Prima},
        // Il database che rifiuta la scrittura: registro, maschera aperta, nulla di scritto.
        CasoEsito{"domanda_guasto", G::Domanda, "CREATE TRIGGER blocco BEFORE UPDATE ON DOMANDE BEGIN SELECT RAISE(ABORT, 'database bloccato'); END",
                  "12", Guasto("frmCambioDomanda Cmddati_Click"), false, Prima},
        CasoEsito{"produttore_guasto", G::DomandaProduttore,
                  "CREATE TRIGGER blocco BEFORE UPDATE ON DOMANDE_PRODUTTORI BEGIN SELECT RAISE(ABORT, 'database bloccato'); END",
                  "12", Guasto("frmProduttori_CambioDomanda.Cmddati_CLick"), false, Prima},
        CasoEsito{"utf_guasto", G::CertificatoUtf,
                  "CREATE TRIGGER blocco BEFORE UPDATE ON DOMANDE_PRODUTTORI BEGIN SELECT RAISE(ABORT, 'database bloccato'); END",
                  "UTF9", Guasto("frmProduttori_CambioUTF.Cmddati_CLick"), false, Prima}),
    [](const auto& info) { return std::string(info.param.nome); });

// frmCambioDomanda: il pulsante Help non mostra nulla, F1 sì; le gemelle mostrano l'aiuto col pulsante.
TEST_F(MaschereCambio, Aiuto)
{
    const struct {
        G genere;
        QStringList attesi;
    } casi[] = {
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

// Le liste aprono le maschere per nome, modali, e le distruggono alla chiusura.
TEST_F(MaschereCambio, ApertePerNomeDalleListe)
{
    AnnullaRegistrazioni();
    RegistraMaschereDomande();
    RegistraMaschereDomandeProduttori();
    for (const char* nome : {"FrmDomanda", "frmCambioDomanda", "Frmproduttore_Domanda", "frmProduttori_CambioDomanda",
                             "frmProduttori_CambioUtf"}) {
        SCOPED_TRACE(nome);
        QPointer<QDialog> aperta;
        AttesaModale attesa(QString::fromLatin1(nome), [&](QDialog* d) {
            aperta = d;
            d->done(QDialog::Rejected);
        });
        EXPECT_TRUE(ApriMascheraModale(QString::fromLatin1(nome), nullptr));
        EXPECT_TRUE(attesa.eseguita());
        EXPECT_TRUE(aperta.isNull());
    }
    AnnullaRegistrazioni();
}

}  // namespace
