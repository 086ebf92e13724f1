// Frmproduttore_Domanda: apertura sull'ultima campagna, rifiuti con testo,
// titolo e fuoco, scrittura dal record di sessione, guasti del database.
#include "deliveries/Frmproduttore_Domanda.h"
#include "invoices/prova_maschere_domanda.h"

#include <gtest/gtest.h>

namespace {

const QString Titolo = QStringLiteral(" Domande del distillatore ");
const QString SalvataggioT = QStringLiteral("Salvataggio  Domande del distillatore ");

class DomandaProduttore : public ProvaMascheraDomanda {
protected:
    void SetUp() override
    {
        ProvaMascheraDomanda::SetUp();
        sessione().TitoloMaschera = Titolo;
        db().Execute(QStringLiteral("INSERT INTO DOMANDE_PRODUTTORI (ID_DOMANDA_PRODUTTORE, TIPO_ARTICOLO, DOMANDA, STAM, "
                                    "SCAR, ANTICIPO_RICEVUTO, PROG_VERS, PROG_INVIO, DATA_CAMP) VALUES "
                                    "(1, '30', '00000000007', 'S', 'S', '10,00', '2', 3, '2003')"));
        db().Execute(QStringLiteral("INSERT INTO DOMANDE (DOMANDA, TIPO_ARTICOLO) VALUES ('00000000009', '30'), ('00000000007', '30')"));
        SelezionaRiga1();
    }
    // DomandaProduttoreSel come la lascia la lista sulla riga 1.
    void SelezionaRiga1()
    {
        auto& d = sessione().DomandaProduttoreSel;
        d.ID_DOMANDA_PRODUTTORE = 1;
        d.DOMANDA = QStringLiteral("00000000007");
        d.TIPO_ARTICOLO = QStringLiteral("30");
        d.ANTICIPO_RICEVUTO = QStringLiteral("10,00");
        d.CAMPAGNA = QStringLiteral("2003");
    }
    Frmproduttore_Domanda& f() { return static_cast<Frmproduttore_Domanda&>(*maschera); }

    void CompilaESalva(const char* campagna, const char* numero, const char* anticipo, const char* articolo)
    {
        if (campagna)
            Scegli(f().cboDomanda[0], QString::fromLatin1(campagna));
        if (articolo)
            Scegli(f().cboDomanda[3], QString::fromLatin1(articolo));
        if (numero)
            Scrivi(f().TxtDati[1], QString::fromLatin1(numero));
        if (anticipo)
            Scrivi(f().TxtDati[2], QString::fromLatin1(anticipo));
        Premi(f().Cmddati[0]);
    }
};

const char* const Tale = nullptr;

TEST_F(DomandaProduttore, AperturaSullUltimaCampagnaConIlSoloArticolo29)
{
    Frmproduttore_Domanda& m = Apri<Frmproduttore_Domanda>(QStringLiteral("I"));
    EXPECT_EQ(m.windowTitle(), QStringLiteral("Domanda del distillatore"));
    EXPECT_EQ(m.cboDomanda[0]->currentText(), QStringLiteral("2005"));
    EXPECT_EQ(Voci(m.cboDomanda[3]), QStringList{"29"});
    EXPECT_EQ(m.cboDomanda[3]->currentText(), QStringLiteral("29"));
    EXPECT_FALSE(m.TxtDati[1]->isReadOnly());
    Scegli(m.cboDomanda[0], QStringLiteral("2003"));
    EXPECT_EQ(Voci(m.cboDomanda[3]), (QStringList{"29", "30"}));
    EXPECT_EQ(m.cboDomanda[3]->currentText(), QStringLiteral("29"));
    // Solo cifre nel numero; nell'anticipo una virgola e due decimali.
    Scrivi(m.TxtDati[1], QStringLiteral("1a2'3"));
    Scrivi(m.TxtDati[2], QStringLiteral("1x2.505"));
    EXPECT_EQ(QStringList({m.TxtDati[1]->text(), m.TxtDati[2]->text()}), (QStringList{"00000000123", "12,50"}));
}

struct CasoRifiuto {
    const char* nome;
    const char* modo;
    const char* campagna;
    const char* numero;
    const char* articolo;
    Messaggi messaggi;
    int fuoco;  // < 10 TxtDati, >= 10 cboDomanda(fuoco - 10)
};

void PrintTo(const CasoRifiuto& c, std::ostream* os) { *os << c.nome; }

class RifiutiDomandaProduttore : public DomandaProduttore, public ::testing::WithParamInterface<CasoRifiuto> {};

TEST_P(RifiutiDomandaProduttore, MessaggioTitoloEFuoco)
{
    const CasoRifiuto& c = GetParam();
    Frmproduttore_Domanda& m = Apri<Frmproduttore_Domanda>(QString::fromLatin1(c.modo));
    const char* campagna = c.campagna;
    if (c.articolo && QString::fromLatin1(c.articolo) == QLatin1String("30")) {
        // Il 30 nel 2005 la combo non lo offre: lo si aggiunge per vedere il controllo.
        Scegli(m.cboDomanda[0], QString::fromLatin1(c.campagna));
        m.cboDomanda[3]->addItem(QStringLiteral("30"));
        campagna = nullptr;
    }
    for (qsizetype i = 0; i < c.messaggi.size(); ++i)
        script->Rispondi(RispostaMsg::OK);
    const QStringList prima = DomandeProduttori();
    CompilaESalva(campagna, c.numero, "5", c.articolo);
    EXPECT_EQ(script->messaggi, c.messaggi);
    QWidget* atteso = c.fuoco < 10 ? static_cast<QWidget*>(m.TxtDati[c.fuoco]) : m.cboDomanda[c.fuoco - 10];
    EXPECT_EQ(QApplication::focusWidget(), atteso);
    EXPECT_TRUE(m.isVisible());
    EXPECT_EQ(DomandeProduttori(), prima);
}

const QString AltroArticolo = QStringLiteral("La domanda appartiene a un altro articolo.");

INSTANTIATE_TEST_SUITE_P(
    Codici, RifiutiDomandaProduttore,
    ::testing::Values(
        CasoRifiuto{"campagna_4", "I", "", "12", "29", {{"Campagna campo obbligatorio. ", 64, SalvataggioT}}, 10},
        CasoRifiuto{"numero_1", "I", "2003", "000", "29",
                    {{"Domanda Produttore campo obbligatorio.", 64, "Salvataggio "}}, 1},
        CasoRifiuto{"articolo_3", "I", "2003", "12", "", {{"Tipo Articolo campo obbligatorio. ", 64, SalvataggioT}}, 13},
        // In modifica il 3 non dice nulla: solo il fuoco.
        CasoRifiuto{"articolo_3_muto_in_modifica", "M", Tale, Tale, "", {}, 13},
        CasoRifiuto{"articolo_30_nel_2005_11", "I", "2005", "12", "30",
                    {{" Non è possibile effettuare una domanda del 2004 o del 2005 con l'articolo '30'. ", 64,
                      SalvataggioT}},
                    13},
        CasoRifiuto{"numero_esistente_5", "I", "2003", "7", "29", {{"Domanda Produttore già esistente.", 64, SalvataggioT}},
                    1},
        CasoRifiuto{"in_domande_con_altro_articolo_10", "I", "2003", "9", "29", {{AltroArticolo, 64, SalvataggioT}}, 13},
        CasoRifiuto{"in_domande_con_altro_articolo_10_modifica", "M", Tale, Tale, "29",
                    {{AltroArticolo, 64, SalvataggioT}}, 13}),
    [](const auto& info) { return std::string(info.param.nome); });

TEST_F(DomandaProduttore, Salvataggi)
{
    db().Execute(QStringLiteral("UPDATE DOMANDE SET DOMANDA = '00000000007'"));
    const struct {
        const char* nome;
        const char* modo;
        const char* campagna;
        const char* numero;
        const char* anticipo;
        const char* articolo;
        QString riga;
    } casi[] = {
        // 123 si riempie di zeri, l'anticipo vuoto diventa 0,00; assente in DOMANDE: accettata.
        {"inserimento", "I", "2004", "123", "", Tale, "2|29|00000000123|N|N|0,00|1|0|2004"},
        // Presente in DOMANDE con lo stesso articolo: accettata; i segni tornano a N, PROG_INVIO resta.
        {"modifica", "M", Tale, Tale, "7,5", Tale, "1|30|00000000007|N|N|7,50|1|3|2003"},
    };
    for (const auto& c : casi) {
        SCOPED_TRACE(c.nome);
        SelezionaRiga1();
        Frmproduttore_Domanda& m = Apri<Frmproduttore_Domanda>(QString::fromLatin1(c.modo));
        EXPECT_EQ(m.TxtDati[1]->isReadOnly(), *c.modo == 'M');
        if (*c.modo == 'M') {
            EXPECT_EQ(QStringList({m.TxtDati[1]->text(), m.TxtDati[2]->text(), m.cboDomanda[3]->currentText(),
                                   m.cboDomanda[0]->currentText()}),
                      (QStringList{"00000000007", "10,00", "30", "2003"}));
        }
        CompilaESalva(c.campagna, c.numero, c.anticipo, c.articolo);
        EXPECT_TRUE(script->messaggi.isEmpty());
        EXPECT_EQ(m.result(), QDialog::Accepted);
        EXPECT_TRUE(DomandeProduttori().contains(c.riga)) << DomandeProduttori().join(QLatin1Char(' ')).toStdString();
    }
}

// Una domanda del 2005 con il 30 (da un carico): l'articolo non si può
// scegliere e il salvataggio si ferma.
TEST_F(DomandaProduttore, ArticoloTrentaDel2005NonSiSalva)
{
    db().Execute(QStringLiteral("UPDATE DOMANDE_PRODUTTORI SET DATA_CAMP = '2005'"));
    sessione().DomandaProduttoreSel.CAMPAGNA = QStringLiteral("2005");
    Frmproduttore_Domanda& m = Apri<Frmproduttore_Domanda>(QStringLiteral("M"));
    EXPECT_EQ(Voci(m.cboDomanda[3]), QStringList{"29"});
    EXPECT_EQ(m.cboDomanda[3]->currentIndex(), -1);
    Premi(m.Cmddati[0]);
    EXPECT_EQ(QApplication::focusWidget(), m.cboDomanda[3]);
    EXPECT_EQ(DomandeProduttori().first(), QStringLiteral("1|30|00000000007|S|S|10,00|2|3|2005"));
}

TEST_F(DomandaProduttore, GuastoDelDatabaseLasciaLaMascheraAperta)
{
    db().Execute(QStringLiteral("CREATE TRIGGER blocco BEFORE UPDATE ON DOMANDE_PRODUTTORI "
                                "BEGIN SELECT RAISE(ABORT, 'database bloccato'); END"));
    Frmproduttore_Domanda& m = Apri<Frmproduttore_Domanda>(QStringLiteral("M"));
    script->Rispondi(RispostaMsg::OK);
    CompilaESalva(Tale, Tale, "1", Tale);
    EXPECT_EQ(script->messaggi,
              (Messaggi{{MessaggioLogErr(3019, "Errore del database: database bloccato", "FrmDomanda.MetodiDOMANDA "),
                         48, "Gestione Errori"}}));
    EXPECT_TRUE(m.isVisible());
    EXPECT_EQ(DomandeProduttori().first(), QStringLiteral("1|30|00000000007|S|S|10,00|2|3|2003"));
}

TEST_F(DomandaProduttore, AiutoPerModo)
{
    for (const char* modo : {"I", "M"}) {
        aiuti.clear();
        Frmproduttore_Domanda& m = Apri<Frmproduttore_Domanda>(QString::fromLatin1(modo));
        Premi(m.Cmddati[2]);
        QTest::keyClick(m.TxtDati[1], Qt::Key_F1);
        const QString atteso = *modo == 'M' ? QStringLiteral("FRMDOMANDA_MOD") : QStringLiteral("FRMDOMANDA_INS");
        EXPECT_EQ(aiuti, QStringList({atteso, atteso}));
    }
}

}  // namespace
