// FrmDomanda: apertura e regola degli articoli, rifiuti con testo, titolo e
// fuoco, scrittura in inserimento e in modifica, guasti del database.
#include "invoices/FrmDomanda.h"
#include "invoices/prova_maschere_domanda.h"

#include <gtest/gtest.h>

namespace {

const QString Titolo = QStringLiteral(" Domande ");
const QString SalvataggioT = QStringLiteral("Salvataggio  Domande ");

class Domanda : public ProvaMascheraDomanda {
protected:
    void SetUp() override
    {
        ProvaMascheraDomanda::SetUp();
        sessione().TitoloMaschera = Titolo;
    }
    FrmDomanda& f() { return static_cast<FrmDomanda&>(*maschera); }

    // Campagna, numero, progressivo, articolo, prodotto come li sceglie l'utente
    // (un testo nullo lascia il controllo com'è), poi Salva.
    void CompilaESalva(const char* campagna, const char* numero, const char* progressivo, const char* articolo,
                       const char* prodotto)
    {
        if (campagna)
            Scegli(f().cboDomanda[0], QString::fromLatin1(campagna));
        if (articolo)
            Scegli(f().cboDomanda[3], QString::fromLatin1(articolo));
        if (prodotto)
            Scegli(f().cboDomanda[4], QString::fromLatin1(prodotto));
        if (numero)
            Scrivi(f().TxtDati[1], QString::fromLatin1(numero));
        if (progressivo)
            Scrivi(f().TxtDati[2], QString::fromLatin1(progressivo));
        Premi(f().Cmddati[0]);
    }
    void Semina()
    {
        db().Execute(QStringLiteral(
            "INSERT INTO DOMANDE (ID_DOMANDA, DOMANDA, PROGRESSIVO, STAM, SCAR, TIPO_ARTICOLO, ID_VARIETA, PROG_VERS, "
            "PROG_INVIO, DATA_CAMP) VALUES (1, '00000000007', '01', 'S', 'S', '30', 2, '3', 4, '2003')"));
        db().Execute(QStringLiteral("INSERT INTO DOMANDE_PRODUTTORI (DOMANDA, TIPO_ARTICOLO) VALUES ('00000000009', '30')"));
    }
    // DomandaSel come la lascia la lista per la riga 1, con la campagna data.
    void Seleziona(const QString& campagna, const QString& articolo = QStringLiteral("30"))
    {
        auto& d = sessione().DomandaSel;
        d.ID_DOMANDA = 1;
        d.DOMANDA = QStringLiteral("00000000007");
        d.PROGRESSIVO = QStringLiteral("01");
        d.TIPO_ARTICOLO = articolo;
        d.PRODOTTO = QStringLiteral("ANE ALCOLE NEUTRO");
        d.CAMPAGNA = campagna;
    }
};

TEST_F(Domanda, AperturaConLaCampagnaVuotaERegolaDegliArticoli)
{
    FrmDomanda& m = Apri<FrmDomanda>(QStringLiteral("I"));
    EXPECT_EQ(m.windowTitle(), QStringLiteral("Domanda "));
    EXPECT_EQ(Voci(m.cboDomanda[0]), (QStringList{"2001", "2002", "2003", "2004", "2005", ""}));
    EXPECT_EQ(m.cboDomanda[0]->currentIndex(), 5);
    EXPECT_EQ(Voci(m.cboDomanda[4]).first(), QStringLiteral("ACQ ACQUAVITE DI VINO"));
    EXPECT_FALSE(m.TxtDati[1]->isReadOnly());
    // Campagna scelta dopo l'articolo: lista e articolo che restano.
    const struct {
        const char* campagna;
        const char* articoloPrima;
        QStringList voci;
        const char* articolo;
    } casi[] = {
        {"", "", {"29", "30"}, ""},
        {"2003", "30", {"29", "30"}, "30"},
        {"2005", "30", {"29"}, "29"},
        {"2004", "", {"29"}, "29"},
        {"2002", "29", {"29", "30"}, "29"},
    };
    for (const auto& c : casi) {
        SCOPED_TRACE(c.campagna);
        Scegli(m.cboDomanda[0], QStringLiteral("2001"));
        Scegli(m.cboDomanda[3], QString::fromLatin1(c.articoloPrima));
        Scegli(m.cboDomanda[0], QString::fromLatin1(c.campagna));
        EXPECT_EQ(Voci(m.cboDomanda[3]), c.voci);
        EXPECT_EQ(m.cboDomanda[3]->currentText(), QString::fromLatin1(c.articolo));
    }
}

struct CasoRifiuto {
    const char* nome;
    const char* modo;
    const char* campagna;
    const char* numero;
    const char* progressivo;
    const char* articolo;
    const char* prodotto;
    MessaggioRegistrato messaggio;
    int fuoco;  // indice: < 10 TxtDati, >= 10 cboDomanda(fuoco - 10)
};

void PrintTo(const CasoRifiuto& c, std::ostream* os) { *os << c.nome; }

class RifiutiDomanda : public Domanda, public ::testing::WithParamInterface<CasoRifiuto> {};

TEST_P(RifiutiDomanda, MessaggioTitoloEFuoco)
{
    const CasoRifiuto& c = GetParam();
    Semina();
    Seleziona(QStringLiteral("2003"));
    FrmDomanda& m = Apri<FrmDomanda>(QString::fromLatin1(c.modo));
    const bool forzaTrenta = QString::fromLatin1(c.articolo) == QLatin1String("30!");
    const char* campagna = c.campagna;
    if (forzaTrenta) {
        // Il 30 nel 2004/2005 la combo non lo offre: lo si aggiunge per vedere il controllo.
        Scegli(m.cboDomanda[0], QString::fromLatin1(c.campagna));
        m.cboDomanda[3]->addItem(QStringLiteral("30"));
        campagna = nullptr;
    }
    script->Rispondi(RispostaMsg::OK);
    const QStringList prima = Domande();
    CompilaESalva(campagna, c.numero, c.progressivo, forzaTrenta ? "30" : c.articolo, c.prodotto);
    EXPECT_EQ(script->messaggi, Messaggi{c.messaggio});
    QWidget* atteso = c.fuoco < 10 ? static_cast<QWidget*>(m.TxtDati[c.fuoco]) : m.cboDomanda[c.fuoco - 10];
    EXPECT_EQ(QApplication::focusWidget(), atteso);
    EXPECT_TRUE(m.isVisible());
    EXPECT_EQ(Domande(), prima);
}

const char* const Neutro = "ANE ALCOLE NEUTRO";
const char* const Tale = nullptr;  // il controllo resta com'è

INSTANTIATE_TEST_SUITE_P(
    Codici, RifiutiDomanda,
    ::testing::Values(
        CasoRifiuto{"campagna_6", "I", "", "12", "1", "29", Neutro,
                    {"Campagna campo obbligatorio. ", 64, SalvataggioT}, 10},
        // Un numero vuoto diventa zeri uscendo dal campo, e resta obbligatorio.
        CasoRifiuto{"numero_vuoto_1", "I", "2003", "", "1", "29", Neutro,
                    {"Domanda campo obbligatorio.", 64, "Salvataggio "}, 1},
        CasoRifiuto{"progressivo_zero_2", "I", "2003", "12", "00", "29", Neutro,
                    {"Progressivo domanda campo obbligatorio.", 64, "Salvataggio "}, 2},
        CasoRifiuto{"articolo_3", "I", "2003", "12", "1", "", Neutro,
                    {"Tipo Articolo campo obbligatorio. ", 64, SalvataggioT}, 13},
        CasoRifiuto{"prodotto_4", "I", "2003", "12", "1", "29", "",
                    {"Prodotto ottenuto campo obbligatorio. ", 64, SalvataggioT}, 14},
        CasoRifiuto{"articolo_30_nel_2005_11", "I", "2005", "12", "1", "30!", Neutro,
                    {" Non è possibile effettuare una domanda del 2004 o del 2005 con l'articolo '30'. ", 64,
                     SalvataggioT},
                    13},
        CasoRifiuto{"articolo_30_nel_2004_11", "I", "2004", "12", "1", "30!", Neutro,
                    {" Non è possibile effettuare una domanda del 2004 o del 2005 con l'articolo '30'. ", 64,
                     SalvataggioT},
                    13},
        // Lo stesso numero con un altro progressivo: già esistente.
        CasoRifiuto{"numero_esistente_5", "I", "2003", "7", "2", "30", Neutro,
                    {"Domanda già esistente.", 64, SalvataggioT}, 1},
        CasoRifiuto{"distillatore_altro_articolo_10", "I", "2003", "9", "1", "29", Neutro,
                    {"La domanda appartiene a un altro articolo.", 64, SalvataggioT}, 13},
        CasoRifiuto{"modifica_campagna_tolta_6", "M", "", Tale, Tale, Tale, Tale,
                    {"Campagna campo obbligatorio. ", 64, SalvataggioT}, 10}),
    [](const auto& info) { return std::string(info.param.nome); });

TEST_F(Domanda, ModificaConAltroArticoloDelDistillatore)
{
    Semina();
    db().Execute(QStringLiteral("UPDATE DOMANDE_PRODUTTORI SET DOMANDA = '00000000007', TIPO_ARTICOLO = '29'"));
    Seleziona(QStringLiteral("2003"));
    FrmDomanda& m = Apri<FrmDomanda>(QStringLiteral("M"));
    script->Rispondi(RispostaMsg::OK);
    // Cambia solo il progressivo: il rifiuto vale lo stesso.
    Scrivi(m.TxtDati[2], QStringLiteral("2"));
    Premi(m.Cmddati[0]);
    EXPECT_EQ(script->messaggi, (Messaggi{{"La domanda appartiene a un altro articolo.", 64, SalvataggioT}}));
    EXPECT_EQ(QApplication::focusWidget(), m.cboDomanda[3]);
    // Con lo stesso articolo passa.
    db().Execute(QStringLiteral("UPDATE DOMANDE_PRODUTTORI SET TIPO_ARTICOLO = '30'"));
    Premi(m.Cmddati[0]);
    EXPECT_EQ(Domande(), QStringList{"1|00000000007|02|N|N|30|2|1|4|2003"});
    EXPECT_EQ(m.result(), QDialog::Accepted);
}

TEST_F(Domanda, Salvataggi)
{
    Semina();
    const struct {
        const char* nome;
        const char* modo;
        const char* campagnaSel;  // di DomandaSel in modifica
        const char* campagna;
        const char* numero;
        const char* progressivo;
        const char* articolo;
        const char* prodotto;
        QString riga;
    } casi[] = {
        // Numero e progressivo si riempiono di zeri; lo stesso numero del distillatore con lo stesso articolo passa.
        {"inserimento", "I", "", "2003", "9", "3", "30", "ACQ ACQUAVITE DI VINO", "2|00000000009|03|N|N|30|3|1|0|2003"},
        // La modifica ricarica i campi, rimette stampa, scarico e versione; PROG_INVIO resta.
        {"modifica_invariata", "M", "2003", Tale, Tale, Tale, Tale, Tale, "1|00000000007|01|N|N|30|2|1|4|2003"},
        // Una domanda del 2005 con il 30 si apre con il 29 e si salva così.
        {"modifica_2005_diventa_29", "M", "2005", Tale, Tale, Tale, Tale, Tale, "1|00000000007|01|N|N|29|2|1|4|2005"},
    };
    for (const auto& c : casi) {
        SCOPED_TRACE(c.nome);
        db().Execute(QStringLiteral("DELETE FROM DOMANDE WHERE ID_DOMANDA > 1"));
        db().Execute(QStringLiteral("UPDATE DOMANDE SET STAM = 'S', SCAR = 'S', PROG_VERS = '3', TIPO_ARTICOLO = '30', "
                                    "DATA_CAMP = ?"),
                     {QString::fromLatin1(*c.campagnaSel ? c.campagnaSel : "2003")});
        Seleziona(QString::fromLatin1(c.campagnaSel));
        FrmDomanda& m = Apri<FrmDomanda>(QString::fromLatin1(c.modo));
        EXPECT_EQ(m.TxtDati[1]->isReadOnly(), *c.modo == 'M');
        if (*c.modo == 'M') {
            EXPECT_EQ(QStringList({m.TxtDati[1]->text(), m.TxtDati[2]->text(), m.cboDomanda[4]->currentText()}),
                      (QStringList{"00000000007", "01", Neutro}));
        }
        CompilaESalva(c.campagna, c.numero, c.progressivo, c.articolo, c.prodotto);
        EXPECT_TRUE(script->messaggi.isEmpty());
        EXPECT_EQ(m.result(), QDialog::Accepted);
        EXPECT_EQ(Domande().last(), c.riga);
    }
}

// Il database che rifiuta la scrittura: messaggio del registro, maschera aperta, niente scritto.
TEST_F(Domanda, GuastoDelDatabaseLasciaLaMascheraAperta)
{
    db().Execute(QStringLiteral(
        "CREATE TRIGGER blocco BEFORE INSERT ON DOMANDE BEGIN SELECT RAISE(ABORT, 'database bloccato'); END"));
    FrmDomanda& m = Apri<FrmDomanda>(QStringLiteral("I"));
    script->Rispondi(RispostaMsg::OK);
    CompilaESalva("2003", "12", "1", "29", Neutro);
    EXPECT_EQ(script->messaggi,
              (Messaggi{{MessaggioLogErr(3019, "Errore del database: database bloccato", "FrmDomanda.MetodiDOMANDA "),
                         48, "Gestione Errori"}}));
    EXPECT_TRUE(m.isVisible());
    EXPECT_TRUE(Domande().isEmpty());
    EXPECT_EQ(Registro(), QStringList{"FrmDomanda.MetodiDOMANDA |03019"});
}

TEST_F(Domanda, AiutoPerModoDalPulsanteEDaF1)
{
    for (const char* modo : {"I", "M"}) {
        aiuti.clear();
        FrmDomanda& m = Apri<FrmDomanda>(QString::fromLatin1(modo));
        Premi(m.Cmddati[2]);
        QTest::keyClick(m.cboDomanda[0], Qt::Key_F1);
        const QString atteso = *modo == 'M' ? QStringLiteral("FRMDOMANDA_MOD") : QStringLiteral("FRMDOMANDA_INS");
        EXPECT_EQ(aiuti, QStringList({atteso, atteso}));
    }
}

}  // namespace
