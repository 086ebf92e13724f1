// Le istruzioni delle liste per modo e la disposizione delle griglie, su un
// database seminato: tre domande (due fatture, nessuna, una), bolle, domande
// del distillatore con e senza certificati, produttori legati e no.
#include "common/aiuti_maschera.h"
#include "common/errore.h"
#include "common/liste.h"
#include "support/prova.h"

namespace {

class ProvaListe : public ProvaConDatabase {
protected:
    void SetUp() override
    {
        ProvaConDatabase::SetUp();
        // Chiavi fisse. La fattura "10" ha la chiave più bassa della "9": come
        // testo viene prima, come numero dopo.
        for (const char* sql : {
                 "INSERT INTO DOMANDE (ID_DOMANDA, DOMANDA, PROGRESSIVO, STAM, TIPO_ARTICOLO, ID_VARIETA) VALUES "
                 "(1, '00000000001', '01', 'N', '29', 1), (2, '00000000002', '01', 'N', '29', 1), "
                 "(3, '00000000003', '01', 'N', '29', 1)",
                 "INSERT INTO FATTURE (ID_FATTURA, ID_DOMANDA, DENOMINAZIONE, NUME_FATT, ID_LAVORAZIONE) VALUES "
                 "(1, 1, 'CANTINA DIECI', '10', 1), (2, 1, 'CANTINA NOVE', '9', 1), (3, 3, 'CANTINA UNO', '1', 1)",
                 "INSERT INTO BOLLE (FK_ID_FATTURA, NUMERO_BOLLA) VALUES (1, 'B2'), (2, 'B1'), (1, 'B3')",
                 "INSERT INTO DOMANDE_PRODUTTORI (ID_DOMANDA_PRODUTTORE, TIPO_ARTICOLO, DOMANDA) VALUES "
                 "(1, '29', 'D1'), (2, '29', 'D2')",
                 "INSERT INTO TAB_UTF (iD_UTF, iD_DOMANDA, NUMERO_CERTIFICATO_UTF) VALUES (1, 1, 'U1'), (2, 1, 'U2')",
                 "INSERT INTO PRODUTTORI (ID_PRODUTTORI, DENOMINAZIONE, ID_COLORE) VALUES "
                 "(1, 'LEGATO', 1), (2, 'LIBERO UNO', 1), (3, 'LIBERO DUE', 1)",
                 "INSERT INTO TAB_ID_UTF_PRODUTTORE (iD_UTF, iD_PRODUTTORE) VALUES (1, 1)"})
            db().Execute(QString::fromUtf8(sql));
        sessione().DomandaSel.ID_DOMANDA = 1;
        sessione().UtfSel.iD_UTF = 1;
        sessione().DomandaProduttoreSel.ID_DOMANDA_PRODUTTORE = 1;
    }
    void TearDown() override
    {
        griglia.reset();
        ProvaConDatabase::TearDown();
    }

    // Carica la griglia nel modo dato ("7" è il numero 7, "711" il testo),
    // con il filtro del modo se chiesto e il testo del chiamante.
    void Carica(const char* nome, bool produttori, bool conFiltro = false, const char* coda = "")
    {
        bool numero = false;
        const int n = QString::fromLatin1(nome).toInt(&numero);
        modo = numero && n < 100 ? QVariant(n) : QVariant(QString::fromLatin1(nome));
        const IstruzioneSql condizione = (conFiltro ? FiltroListaProduttori(modo) : IstruzioneSql()) + coda;
        if (produttori)
            AggiornaGrigliaProduttori(condizione, griglia.get(), modo, nullptr, false, nullptr);
        else
            AggiornaGrigliaDomande(condizione, griglia.get(), modo, nullptr, false, nullptr);
    }

    ModelloLista* Modello() { return qobject_cast<ModelloLista*>(griglia->model()); }

    // Le righe della griglia, con le colonne date ("A|B") unite da "|".
    QStringList Colonne(const char* nomi)
    {
        QStringList righe;
        for (int r = 0; r < Modello()->rowCount(); ++r) {
            QStringList valori;
            for (const QString& nome : QString::fromLatin1(nomi).split(QLatin1Char('|')))
                valori << Modello()->Campo(r, nome).testo();
            righe << valori.join(QLatin1Char('|'));
        }
        return righe;
    }

    std::unique_ptr<QTableView> griglia = std::make_unique<QTableView>();
    QVariant modo;
};

}  // namespace

TEST_F(ProvaListe, RighePerModo)
{
    const struct {
        const char* modo;
        bool produttori, conFiltro;
        const char *coda, *colonne;
        QStringList attese;
    } casi[] = {
        {"5", false, false, " Order by domanda", "DOMANDA", {"00000000001", "00000000003"}},
        {"CERCA", false, false, " Order by domanda", "PROGRESSIVO", {"01", "01", "01"}},
        {"FATTURE2", false, false, " ORDER BY NUME_FATT", "DENOMINAZIONE|DESC_LAVO",
         {"CANTINA DIECI|VINO DA TAVOLA", "CANTINA NOVE|VINO DA TAVOLA"}},
        {"SCARICO", false, false, "", "NUME_FATT", {"9", "10"}},  // per valore numerico
        // Ordine senza indice, per chiave: la domanda senza fatture ha la chiave della fattura Null.
        {"1", false, false, " ORDER BY FATTURE.DENOMINAZIONE DESC", "DOMANDA|NUME_FATT",
         {"00000000003|1", "00000000001|9", "00000000001|10", "00000000002|"}},
        {"SCARICO2", false, false, "", "NUMERO_BOLLA", {"B2", "B3", "B1"}},
        {"9", true, true, " ORDER BY DENOMINAZIONE", "DENOMINAZIONE", {"LIBERO DUE", "LIBERO UNO"}},
        {"10", true, true, "", "DENOMINAZIONE|DESC_COLORE", {"LEGATO|BIANCO"}},
        {"8", true, true, "", "DENOMINAZIONE", {"LEGATO"}},
        {"168", true, false, " WHERE TAB_ID_UTF_PRODUTTORE.iD_UTF= 1", "DENOMINAZIONE", {"LEGATO"}},
        {"711", true, true, "", "DOMANDA", {"D1", "D1"}},
        {"1611", true, true, "", "DOMANDA", {"D1", "D1"}},
    };
    // Le liste delle due maschere di selezione (0, 1, 4, 7, 11) si provano con le maschere.
    for (const auto& c : casi) {
        SCOPED_TRACE(c.modo);
        Carica(c.modo, c.produttori, c.conFiltro, c.coda);
        EXPECT_EQ(Colonne(c.colonne), c.attese);
    }
    // Il modo 3 ha l'istruzione del modo 0, come numero o come testo.
    EXPECT_EQ(QueryListaDomande(3), QueryListaDomande(QStringLiteral("0")));
}

TEST_F(ProvaListe, ColonneConNomeDiTabella)
{
    Carica("FATTURE2", false);
    // DOMANDE.* viene prima: ID_DOMANDA in posizione 0, quello di FATTURE in 11.
    EXPECT_EQ(Modello()->Colonna(QStringLiteral("DOMANDE.ID_DOMANDA")), 0);
    EXPECT_EQ(Modello()->Colonna(QStringLiteral("fatture.id_domanda")), 11);
    EXPECT_EQ(Modello()->Colonna(QStringLiteral("NESSUNA")), -1);
    EXPECT_THROW(Modello()->Campo(0, QStringLiteral("NESSUNA")), ErroreSistema);
    EXPECT_THROW(Modello()->Campo(5, QStringLiteral("DOMANDA")), ErroreSistema);
    // Nel join della lista delle fatture SQLite chiama "ID_VARIETA:1" la colonna di DOMANDE.
    Carica("1", false);
    EXPECT_EQ(Modello()->Colonna(QStringLiteral("ID_VARIETA")), 6);
    EXPECT_EQ(Modello()->Colonna(QStringLiteral("DOMANDE.ID_VARIETA")), 6);
}

TEST_F(ProvaListe, ModiSenzaIstruzioneEErroriDelChiamante)
{
    for (int modo : {14, 15, 17, 20}) {
        EXPECT_TRUE(ErroreDi([&] { AggiornaGrigliaProduttori(QString(), griglia.get(), modo, nullptr, false, nullptr); })
                        .startsWith(QStringLiteral("3129 ")))
            << modo;
    }
    EXPECT_TRUE(ErroreDi([&] { AggiornaGrigliaDomande(" AND AND", griglia.get(), 0, nullptr, false, nullptr); })
                    .startsWith(QString::number(CodiciErrore::ErroreSintassi) + QLatin1Char(' ')));
}

// La didascalia della griglia: quella del chiamante, o quella propria del modo.
TEST_F(ProvaListe, DidascaliaDelleGriglie)
{
    QLabel titolo;
    AssociaDidascalia(griglia.get(), &titolo);
    const struct { const char *modo, *didascalia; bool produttori; } casi[] = {
        {"1", "Etichetta", false}, {"7", "Domande del distillatore", true}, {"11", "Etichetta", true},
        {"18", "Domande del distillatore da stampare", true}};
    for (const auto& c : casi) {
        Carica(c.modo, c.produttori, c.produttori);
        if (c.produttori)
            ColonneGrigliaProduttori(griglia.get(), modo, QStringLiteral("Etichetta"));
        else
            ColonneGrigliaDomande(griglia.get(), modo, QStringLiteral("Etichetta"));
        EXPECT_EQ(titolo.text(), QString::fromUtf8(c.didascalia)) << c.modo;
    }
}

TEST_F(ProvaListe, SoloRinfrescoNonRicarica)
{
    Carica("0", false);
    db().Execute(QStringLiteral("DELETE FROM DOMANDE WHERE ID_DOMANDA = 2"));
    AggiornaGrigliaDomande(QString(), griglia.get(), 0, nullptr, true, nullptr);
    EXPECT_EQ(griglia->model()->rowCount(), 3);
    Carica("0", false);
    EXPECT_EQ(griglia->model()->rowCount(), 2);
}

// Come con "&" di Jet una parte Null della voce resta vuota e non annulla
// tutta la voce; virgole e segni dentro parentesi e testi non dividono.
TEST_F(ProvaListe, CaricaCmbUnaParteNullNonAnnullaLaVoce)
{
    db().Execute(QStringLiteral("INSERT INTO VARIETA VALUES (901, 'N1', NULL), (902, NULL, 'SOLO DESC'), (903, NULL, NULL)"));
    const struct { const char* espressione; bool unisci; QStringList voci; } casi[] = {
        {" CODI_PROD & ' '&  DESC_PROD ", false, {"N1", "SOLO DESC", ""}},
        {"CODI_PROD || ' ' || DESC_PROD", false, {"N1", "SOLO DESC", ""}},
        {"IFNULL(CODI_PROD, 'X') & '-' & DESC_PROD", false, {"N1-", "X-SOLO DESC", "X-"}},
        {"'a,b&c||' & CODI_PROD", false, {"a,b&c||N1", "a,b&c||", "a,b&c||"}},
        {"DESC_PROD, CODI_PROD & '/'", true, {"", "  N1/", "SOLO DESC", " SOLO DESC /", "", "  /"}},
    };
    QComboBox combo;
    for (const auto& c : casi) {
        CaricaCmb(&combo, QStringLiteral("VARIETA"), QString::fromLatin1(c.espressione),
                  QStringLiteral("ID_VARIETA > 900"), false, QStringLiteral(" ORDER BY ID_VARIETA"), c.unisci, false);
        QStringList voci;
        for (int i = 0; i < combo.count(); ++i)
            voci << combo.itemText(i);
        EXPECT_EQ(voci, c.voci) << c.espressione;
    }
}

TEST_F(ProvaListe, CaricaCmb)
{
    QComboBox combo;
    const auto voci = [&] {
        QStringList v;
        for (int i = 0; i < combo.count(); ++i)
            v << combo.itemText(i);
        return v << QStringLiteral("=") + combo.currentText();
    };
    const QString ordine = QStringLiteral(" ORDER BY ANNUALITA");
    CaricaCmb(&combo, QStringLiteral("CAMPAGNA"), QStringLiteral("ANNUALITA"), QString(), false, ordine, false, true);
    EXPECT_EQ(voci(), (QStringList{"2001", "2002", "2003", "2004", "2005", "", "="}));
    // Senza riga vuota la combo va sulla campagna corrente, se c'è.
    sessione().CampagnaCorrente = QStringLiteral("2004");
    CaricaCmb(&combo, QStringLiteral("CAMPAGNA"), QStringLiteral("ANNUALITA"), QStringLiteral("  "), false, ordine,
              false, false);
    EXPECT_EQ(voci(), (QStringList{"2001", "2002", "2003", "2004", "2005", "=2004"}));
    sessione().CampagnaCorrente.clear();
    CaricaCmb(&combo, QStringLiteral("CAMPAGNA"), QStringLiteral("ANNUALITA"), QString(), false, ordine, false, false);
    EXPECT_EQ(voci().last(), QStringLiteral("="));
    // Espressione, condizione con parametro, voce unita e dato della voce.
    CaricaCmb(&combo, QStringLiteral("VARIETA"), QStringLiteral("CODI_PROD || ' ' || DESC_PROD"),
              QStringLiteral("CODI_PROD = ?"), false, QStringLiteral(" ORDER BY CODI_PROD"), false, true,
              {QStringLiteral("agr")});
    EXPECT_EQ(voci(), (QStringList{"AGR ALCOLE GREZZO", "", "="}));
    CaricaCmb(&combo, QStringLiteral("CAMPAGNA"), QStringLiteral("ANNUALITA, ANNUALITA + 1"), QString(), true, ordine,
              true, true);
    ASSERT_EQ(combo.count(), 11);
    EXPECT_EQ(combo.itemText(1), QStringLiteral(" 2001 2002"));
    EXPECT_EQ(combo.itemData(1).toInt(), 2001);
    // Un errore lascia la combo com'era e va nel registro.
    script->Rispondi(RispostaMsg::OK);
    CaricaCmb(&combo, QStringLiteral("NON_ESISTE"), QStringLiteral("X"), QString(), false, QString(), false, true);
    EXPECT_EQ(combo.count(), 11);
    ASSERT_EQ(script->messaggi.size(), 1);
    EXPECT_EQ(script->messaggi.first().titolo, QStringLiteral("Gestione Errori"));
    EXPECT_EQ(Righe(db(), QStringLiteral("SELECT DESC_APPL, CODI_ERRO FROM LOGERR")),
              QStringList{QStringLiteral("Md_FunzioniGenerali CaricaCmb|03078")});
}
