// Le due maschere di una domanda, FrmDomanda e Frmproduttore_Domanda, nelle
// stesse tabelle di casi: apertura, tasti, rifiuti con testo, titolo e fuoco,
// salvataggi, guasti del database.
#include "deliveries/Frmproduttore_Domanda.h"
#include "invoices/FrmDomanda.h"
#include "prova_maschere_domanda.h"

namespace {

enum class Ramo { Fatture, Produttori };
constexpr Ramo F = Ramo::Fatture;
constexpr Ramo P = Ramo::Produttori;

// Valori scelti o battuti: nullptr lascia il controllo com'è; "30!" aggiunge
// alla combo l'articolo 30 che la campagna non offre.
struct Campi {
    const char* campagna = nullptr;
    const char* numero = nullptr;
    const char* secondo = nullptr;  // progressivo o anticipo
    const char* articolo = nullptr;
    const char* prodotto = nullptr;
};

class MaschereDomanda : public ProvaMascheraDomanda {
protected:
    SchermataDomanda& Apri(Ramo ramo, const char* modo, const char* campagnaSel = nullptr)
    {
        auto& s = sessione();
        s.ModoMaschera = QString::fromLatin1(modo);
        if (campagnaSel)
            s.DomandaSel.CAMPAGNA = s.DomandaProduttoreSel.CAMPAGNA = QString::fromLatin1(campagnaSel);
        if (ramo == F)
            return Mostra<SchermataDomanda>(new FrmDomanda);
        return Mostra<SchermataDomanda>(new Frmproduttore_Domanda);
    }
    static void CompilaESalva(SchermataDomanda& m, const Campi& c)
    {
        if (c.campagna)
            Scegli(m.cboDomanda[0], c.campagna);
        if (c.articolo && QString::fromLatin1(c.articolo) == QLatin1String("30!"))
            m.cboDomanda[3]->addItem(QStringLiteral("30"));
        if (c.articolo)
            Scegli(m.cboDomanda[3], QString::fromLatin1(c.articolo).left(2).toLatin1().constData());
        if (c.prodotto)
            Scegli(m.cboDomanda[4], c.prodotto);
        if (c.numero)
            Scrivi(m.TxtDati[1], QString::fromLatin1(c.numero));
        if (c.secondo)
            Scrivi(m.TxtDati[2], QString::fromLatin1(c.secondo));
        Premi(m.Cmddati[0]);
    }
    QStringList Righe_(Ramo ramo)
    {
        return Righe(db(), ramo == F ? QStringLiteral("SELECT ID_DOMANDA, DOMANDA, PROGRESSIVO, STAM, SCAR, TIPO_ARTICOLO, "
                                                      "ID_VARIETA, PROG_VERS, PROG_INVIO, DATA_CAMP FROM DOMANDE ORDER BY 1")
                                     : QStringLiteral("SELECT ID_DOMANDA_PRODUTTORE, TIPO_ARTICOLO, DOMANDA, STAM, SCAR, "
                                                      "ANTICIPO_RICEVUTO, PROG_VERS, PROG_INVIO, DATA_CAMP "
                                                      "FROM DOMANDE_PRODUTTORI ORDER BY 1"));
    }
};

const char* const Neutro = "ANE ALCOLE NEUTRO";

TEST_F(MaschereDomanda, AperturaTastiERegolaDegliArticoli)
{
    const struct {
        Ramo ramo;
        const char* modo;
        QString titolo, campagna, articolo;
        QStringList articoli;
        bool bloccato;
        QString numero, secondo;
    } casi[] = {
        // La fatturazione parte dalla voce vuota, il distillatore dall'anno più recente.
        {F, "I", "Domanda ", "", "", {"29", "30"}, false, "", ""},
        {P, "I", "Domanda del distillatore", "2005", "29", {"29"}, false, "", ""},
        {F, "M", "Domanda ", "2003", "30", {"29", "30"}, true, "00000000007", "01"},
        {P, "M", "Domanda del distillatore", "2003", "30", {"29", "30"}, true, "00000000007", "10,00"},
    };
    for (const auto& c : casi) {
        SCOPED_TRACE(c.titolo.toStdString() + c.modo);
        SchermataDomanda& m = Apri(c.ramo, c.modo);
        EXPECT_EQ(QStringList({m.windowTitle(), m.cboDomanda[0]->currentText(), m.cboDomanda[3]->currentText(),
                               m.TxtDati[1]->text(), m.TxtDati[2]->text()}),
                  QStringList({c.titolo, c.campagna, c.articolo, c.numero, c.secondo}));
        EXPECT_EQ(Voci(m.cboDomanda[3]), c.articoli);
        EXPECT_EQ(Voci(m.cboDomanda[0]), (QStringList{"2001", "2002", "2003", "2004", "2005", ""}));
        EXPECT_EQ(m.TxtDati[1]->isReadOnly(), c.bloccato);
    }
    // Tasti: solo cifre nel numero; l'anticipo ha una virgola e due decimali.
    SchermataDomanda& p = Apri(P, "I");
    Scrivi(p.TxtDati[1], QStringLiteral("1a2'3"));
    Scrivi(p.TxtDati[2], QStringLiteral("1x2.505"));
    EXPECT_EQ(QStringList({p.TxtDati[1]->text(), p.TxtDati[2]->text()}), (QStringList{"00000000123", "12,50"}));

    // La campagna scelta rifà la lista degli articoli e tiene quello di prima se può.
    SchermataDomanda& m = Apri(F, "I");
    const struct { const char *campagna, *prima; QStringList voci; const char* articolo; } regole[] = {
        {"2003", "30", {"29", "30"}, "30"}, {"2005", "30", {"29"}, "29"}, {"2004", "", {"29"}, "29"}, {"", "", {"29", "30"}, ""}};
    for (const auto& r : regole) {
        SCOPED_TRACE(r.campagna);
        Scegli(m.cboDomanda[0], "2001");
        Scegli(m.cboDomanda[3], r.prima);
        Scegli(m.cboDomanda[0], r.campagna);
        EXPECT_EQ(Voci(m.cboDomanda[3]), r.voci);
        EXPECT_EQ(m.cboDomanda[3]->currentText(), QString::fromLatin1(r.articolo));
    }
}

struct CasoRifiuto {
    const char* nome;
    Ramo ramo;
    const char* modo;
    const char* prima;
    Campi campi;
    Messaggi messaggi;
    int fuoco;  // < 10 TxtDati, altrimenti cboDomanda(fuoco - 10)
    const char* campagnaSel = nullptr;
};

void PrintTo(const CasoRifiuto& c, std::ostream* os) { *os << c.nome; }

class Rifiuti : public MaschereDomanda, public ::testing::WithParamInterface<CasoRifiuto> {};

TEST_P(Rifiuti, MessaggioTitoloEFuoco)
{
    const CasoRifiuto& c = GetParam();
    if (*c.prima)
        db().Execute(QString::fromLatin1(c.prima));
    SchermataDomanda& m = Apri(c.ramo, c.modo, c.campagnaSel);
    for (qsizetype i = 0; i < c.messaggi.size(); ++i)
        script->Rispondi(RispostaMsg::OK);
    const QStringList prima = Righe_(c.ramo);
    CompilaESalva(m, c.campi);
    EXPECT_EQ(script->messaggi, c.messaggi);
    QWidget* atteso = c.fuoco < 10 ? static_cast<QWidget*>(m.TxtDati[c.fuoco]) : m.cboDomanda[c.fuoco - 10];
    EXPECT_EQ(QApplication::focusWidget(), atteso);
    EXPECT_TRUE(m.isVisible());
    EXPECT_EQ(Righe_(c.ramo), prima);
}

const QString SalvataggioT = QStringLiteral("Salvataggio ") + TitoloProva;
const QString Breve = QStringLiteral("Salvataggio ");
const MessaggioRegistrato Art30{" Non è possibile effettuare una domanda del 2004 o del 2005 con l'articolo '30'. ", 64,
                                SalvataggioT};
const MessaggioRegistrato AltroArticolo{"La domanda appartiene a un altro articolo.", 64, SalvataggioT};

INSTANTIATE_TEST_SUITE_P(
    Codici, Rifiuti,
    ::testing::Values(
        CasoRifiuto{"F6_campagna", F, "I", "", {"", "12", "1", "29", Neutro},
                    {{"Campagna campo obbligatorio. ", 64, SalvataggioT}}, 10},
        // Un numero vuoto diventa zeri uscendo dal campo, e resta obbligatorio.
        CasoRifiuto{"F1_numero_vuoto", F, "I", "", {"2003", "", "1", "29", Neutro}, {{"Domanda campo obbligatorio.", 64, Breve}}, 1},
        CasoRifiuto{"F2_progressivo_00", F, "I", "", {"2003", "12", "00", "29", Neutro},
                    {{"Progressivo domanda campo obbligatorio.", 64, Breve}}, 2},
        CasoRifiuto{"F3_articolo", F, "I", "", {"2003", "12", "1", "", Neutro},
                    {{"Tipo Articolo campo obbligatorio. ", 64, SalvataggioT}}, 13},
        CasoRifiuto{"F4_prodotto", F, "I", "", {"2003", "12", "1", "29", ""},
                    {{"Prodotto ottenuto campo obbligatorio. ", 64, SalvataggioT}}, 14},
        CasoRifiuto{"F11_2005", F, "I", "", {"2005", "12", "1", "30!", Neutro}, {Art30}, 13},
        CasoRifiuto{"F11_2004", F, "I", "", {"2004", "12", "1", "30!", Neutro}, {Art30}, 13},
        // Lo stesso numero con un altro progressivo è già esistente.
        CasoRifiuto{"F5_stesso_numero", F, "I", "", {"2003", "7", "2", "30", Neutro},
                    {{"Domanda già esistente.", 64, SalvataggioT}}, 1},
        CasoRifiuto{"F10_distillatore", F, "I", "", {"2003", "9", "1", "29", Neutro}, {AltroArticolo}, 13},
        // In modifica basta cambiare il progressivo per incontrare il rifiuto.
        CasoRifiuto{"F10_distillatore_modifica", F, "M",
                    "UPDATE DOMANDE_PRODUTTORI SET TIPO_ARTICOLO = '29' WHERE DOMANDA = '00000000007'",
                    {nullptr, nullptr, "2"}, {AltroArticolo}, 13},
        CasoRifiuto{"P4_campagna", P, "I", "", {"", "12", nullptr, "29"},
                    {{"Campagna campo obbligatorio. ", 64, SalvataggioT}}, 10},
        CasoRifiuto{"P1_numero_zero", P, "I", "", {"2003", "000", nullptr, "29"},
                    {{"Domanda Produttore campo obbligatorio.", 64, Breve}}, 1},
        CasoRifiuto{"P3_articolo", P, "I", "", {"2003", "12", nullptr, ""},
                    {{"Tipo Articolo campo obbligatorio. ", 64, SalvataggioT}}, 13},
        // In modifica il 3 non dice nulla: solo il fuoco.
        CasoRifiuto{"P3_articolo_muto_in_modifica", P, "M", "", {nullptr, nullptr, nullptr, ""}, {}, 13},
        CasoRifiuto{"P11_2005", P, "I", "", {"2005", "12", nullptr, "30!"}, {Art30}, 13},
        CasoRifiuto{"P5_esistente", P, "I", "", {"2003", "7", nullptr, "29"},
                    {{"Domanda Produttore già esistente.", 64, SalvataggioT}}, 1},
        CasoRifiuto{"P10_in_domande", P, "I", "", {"2003", "8", nullptr, "29"}, {AltroArticolo}, 13},
        CasoRifiuto{"P10_in_domande_modifica", P, "M", "UPDATE DOMANDE SET TIPO_ARTICOLO = '29' WHERE DOMANDA = '00000000007'",
                    {nullptr, nullptr, "5"}, {AltroArticolo}, 13}),
    [](const auto& info) { return std::string(info.param.nome); });

TEST_F(MaschereDomanda, Salvataggi)
{
    const struct {
        const char* nome;
        Ramo ramo;
        const char* modo;
        const char* prima;
        Campi campi;
        QString riga;
        const char* campagnaSel = nullptr;
    } casi[] = {
        // 123 si riempie di zeri, l'anticipo vuoto è 0,00; assente in DOMANDE.
        {"P_inserimento", P, "I", "", {"2004", "123", "", nullptr}, "3|29|00000000123|N|N|0,00|1|0|2004"},
        {"P_modifica", P, "M", "", {nullptr, nullptr, "7,5"}, "1|30|00000000007|N|N|7,50|1|3|2003"},
        // Zeri a sinistra; lo stesso numero nell'altro ramo con lo stesso articolo passa.
        {"F_inserimento", F, "I", "", {"2003", "9", "3", "30", "ACQ ACQUAVITE DI VINO"}, "3|00000000009|03|N|N|30|3|1|0|2003"},
        // Anche senza cambiare nulla: segni a "N", versione 1, PROG_INVIO resta.
        {"F_modifica", F, "M", "", {}, "1|00000000007|01|N|N|30|2|1|4|2003"},
        // Una domanda del 2005 con il 30 si apre con il 29 e si salva così.
        {"F_modifica_2005", F, "M", "UPDATE DOMANDE_PRODUTTORI SET DOMANDA = '1' WHERE ID_DOMANDA_PRODUTTORE = 1", {},
         "1|00000000007|01|N|N|29|2|1|4|2005", "2005"},
    };
    for (const auto& c : casi) {
        SCOPED_TRACE(c.nome);
        SelezionaDomanda7();  // il salvataggio di prima ha riscritto il record di sessione
        if (*c.prima)
            db().Execute(QString::fromLatin1(c.prima));
        SchermataDomanda& m = Apri(c.ramo, c.modo, c.campagnaSel);
        CompilaESalva(m, c.campi);
        EXPECT_TRUE(script->messaggi.isEmpty());
        EXPECT_EQ(m.result(), QDialog::Accepted);
        EXPECT_TRUE(Righe_(c.ramo).contains(c.riga)) << Righe_(c.ramo).join(QLatin1Char(' ')).toStdString();
    }
}

// Il database che rifiuta la scrittura: messaggio del registro, maschera aperta, niente scritto.
TEST_F(MaschereDomanda, GuastoDelDatabaseLasciaLaMascheraAperta)
{
    const struct {
        Ramo ramo;
        const char *modo, *tabella, *evento;
        Campi campi;
    } casi[] = {{F, "I", "DOMANDE", "INSERT", {"2003", "12", "1", "29", Neutro}},
                {P, "M", "DOMANDE_PRODUTTORI", "UPDATE", {nullptr, nullptr, "1"}}};
    for (const auto& c : casi) {
        SCOPED_TRACE(c.tabella);
        db().Execute(Blocca(c.tabella, c.evento));
        SchermataDomanda& m = Apri(c.ramo, c.modo);
        const QStringList prima = Righe_(c.ramo);
        script->messaggi.clear();
        script->Rispondi(RispostaMsg::OK);
        CompilaESalva(m, c.campi);
        EXPECT_EQ(script->messaggi, Messaggi{MessaggioGuasto(EtichettaMetodiDomanda)});
        EXPECT_TRUE(m.isVisible());
        EXPECT_EQ(Righe_(c.ramo), prima);
        db().Execute(QStringLiteral("DROP TRIGGER blocco"));
    }
    EXPECT_EQ(Registro(), QStringList(2, EtichettaMetodiDomanda + "|03019"));
}

// In sola lettura nemmeno il registro si scrive: la fine bloccante del
// programma, e nessuna riga toccata.
TEST_F(MaschereDomanda, DatabaseInSolaLetturaNonScriveNulla)
{
    SchermataDomanda& m = Apri(P, "M");
    const QStringList prima = Righe_(P);
    db().Execute(QStringLiteral("PRAGMA query_only = 1"));
    script->AccettaMessaggiSenzaRisposta();
    EXPECT_THROW(m.Cmddati[0]->click(), ProcessoTerminato);
    ASSERT_EQ(script->messaggi.size(), 1);
    EXPECT_TRUE(script->messaggi[0].testo.startsWith(QStringLiteral("SI E' VERIFICATA UNA ANOMALIA BLOCCANTE:")));
    EXPECT_TRUE(script->messaggi[0].testo.contains(EtichettaMetodiDomanda));
    db().Execute(QStringLiteral("PRAGMA query_only = 0"));
    EXPECT_EQ(Righe_(P), prima);
    EXPECT_TRUE(Registro().isEmpty());
}

}  // namespace
