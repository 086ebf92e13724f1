// Le istruzioni delle liste per modo e la disposizione delle griglie, su un
// database seminato: tre domande (due fatture, nessuna, una), bolle, domande
// del distillatore con e senza certificati, produttori legati e no.
#include "common/aiuti_maschera.h"
#include "common/errore.h"
#include "common/liste.h"
#include "shell/session_state.h"
#include "store/database.h"
#include "support/cartella_prova.h"

#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QSet>
#include <QTableView>

namespace {

struct Seme {
    qint64 domandaDueFatture = 0;
    qint64 domandaSenzaFatture = 0;
    qint64 domandaUnaFattura = 0;
    qint64 fattura9 = 0;
    qint64 domandaDistConUtf = 0;
    qint64 utf1 = 0;
    qint64 produttoreLegato = 0;
};

class ProvaListe : public ProvaConDatabase {
protected:
    void SetUp() override
    {
        ProvaConDatabase::SetUp();
        Database& d = db();
        const auto domanda = [&](const char* numero, const char* prog) {
            return d.InserisciRiga(QStringLiteral("DOMANDE"),
                                   {{QStringLiteral("DOMANDA"), QString::fromLatin1(numero)},
                                    {QStringLiteral("PROGRESSIVO"), QString::fromLatin1(prog)},
                                    {QStringLiteral("STAM"), QStringLiteral("N")},
                                    {QStringLiteral("SCAR"), QStringLiteral("N")},
                                    {QStringLiteral("TIPO_ARTICOLO"), QStringLiteral("29")},
                                    {QStringLiteral("ID_VARIETA"), 1},
                                    {QStringLiteral("DATA_CAMP"), QStringLiteral("2005")}});
        };
        const auto fattura = [&](qint64 idDomanda, const char* numero, const char* nome) {
            return d.InserisciRiga(QStringLiteral("FATTURE"), {{QStringLiteral("ID_DOMANDA"), idDomanda},
                                                               {QStringLiteral("CODI_FISC"), QStringLiteral("RSSMRA80A01H501U")},
                                                               {QStringLiteral("DENOMINAZIONE"), QString::fromLatin1(nome)},
                                                               {QStringLiteral("NUME_FATT"), QString::fromLatin1(numero)},
                                                               {QStringLiteral("DATA_FATT"), QStringLiteral("01/02/2005")},
                                                               {QStringLiteral("ID_LAVORAZIONE"), 1}});
        };
        s.domandaDueFatture = domanda("00000000001", "01");
        s.domandaSenzaFatture = domanda("00000000002", "01");
        s.domandaUnaFattura = domanda("00000000003", "01");
        // "10" prima di "9" come testo, dopo come numero.
        const qint64 fattura10 = fattura(s.domandaDueFatture, "10", "CANTINA DIECI");
        s.fattura9 = fattura(s.domandaDueFatture, "9", "CANTINA NOVE");
        fattura(s.domandaUnaFattura, "1", "CANTINA UNO");
        for (const auto& [f, n] : {std::pair{fattura10, "B2"}, std::pair{s.fattura9, "B1"}, std::pair{fattura10, "B3"}})
            d.InserisciRiga(QStringLiteral("BOLLE"), {{QStringLiteral("FK_ID_FATTURA"), f},
                                                      {QStringLiteral("NUMERO_BOLLA"), QString::fromLatin1(n)}});

        const auto domandaDist = [&](const char* numero) {
            return d.InserisciRiga(QStringLiteral("DOMANDE_PRODUTTORI"),
                                   {{QStringLiteral("TIPO_ARTICOLO"), QStringLiteral("29")},
                                    {QStringLiteral("DOMANDA"), QString::fromLatin1(numero)},
                                    {QStringLiteral("DATA_CAMP"), QStringLiteral("2005")}});
        };
        const auto utf = [&](qint64 idDomanda, const char* numero) {
            return d.InserisciRiga(QStringLiteral("TAB_UTF"),
                                   {{QStringLiteral("iD_DOMANDA"), idDomanda},
                                    {QStringLiteral("NUMERO_CERTIFICATO_UTF"), QString::fromLatin1(numero)},
                                    {QStringLiteral("DESCR_UFFICIO_UTF_PROVINCIA"), QStringLiteral("ASTI")}});
        };
        const auto produttore = [&](const char* nome) {
            return d.InserisciRiga(QStringLiteral("PRODUTTORI"),
                                   {{QStringLiteral("CODI_FISC"), QStringLiteral("RSSMRA80A01H501U")},
                                    {QStringLiteral("DENOMINAZIONE"), QString::fromLatin1(nome)},
                                    {QStringLiteral("ID_COLORE"), 1}});
        };
        s.domandaDistConUtf = domandaDist("D1");
        domandaDist("D2");
        s.utf1 = utf(s.domandaDistConUtf, "U1");
        utf(s.domandaDistConUtf, "U2");
        s.produttoreLegato = produttore("LEGATO");
        produttore("LIBERO UNO");
        produttore("LIBERO DUE");
        d.InserisciRiga(QStringLiteral("TAB_ID_UTF_PRODUTTORE"),
                        {{QStringLiteral("iD_UTF"), s.utf1}, {QStringLiteral("iD_PRODUTTORE"), s.produttoreLegato}});
    }
    void TearDown() override
    {
        griglia.reset();
        ProvaConDatabase::TearDown();
    }

    // Valori di una colonna, riga per riga, letti tutti.
    QStringList Colonna(const char* nome)
    {
        auto* m = qobject_cast<ModelloLista*>(griglia->model());
        m->TerminaLettura();
        QStringList valori;
        for (int r = 0; r < m->rowCount(); ++r)
            valori << m->Campo(r, QString::fromLatin1(nome)).testo();
        return valori;
    }

    QList<int> Visibili() const
    {
        QList<int> v;
        for (int i = 0; i < griglia->model()->columnCount(); ++i)
            if (!griglia->isColumnHidden(i))
                v << i;
        return v;
    }

    QString Didascalia(int colonna) const
    {
        return griglia->model()->headerData(colonna, Qt::Horizontal).toString();
    }

    Seme s;
    std::unique_ptr<QTableView> griglia = std::make_unique<QTableView>();
};

}  // namespace

TEST_F(ProvaListe, Modo1UnaRigaPerFattura)
{
    AggiornaGrigliaDomande(QStringLiteral(" Order by domanda,progressivo,DOMANDE.DATA_CAMP"), griglia.get(), 1,
                           nullptr, false, nullptr);
    EXPECT_EQ(Colonna("DOMANDA"), (QStringList{QStringLiteral("00000000001"), QStringLiteral("00000000001"),
                                              QStringLiteral("00000000002"), QStringLiteral("00000000003")}));
    const QStringList fatture = Colonna("NUME_FATT");
    EXPECT_EQ(QSet<QString>(fatture.begin(), fatture.begin() + 2), (QSet<QString>{"10", "9"}));
    // La domanda senza fatture c'è una volta, con le colonne della fattura vuote.
    EXPECT_EQ(fatture[2], QString());
    auto* m = qobject_cast<ModelloLista*>(griglia->model());
    EXPECT_TRUE(m->Campo(2, QStringLiteral("ID_FATTURA")).isNull());
}

TEST_F(ProvaListe, Modo5SoloDomandeConFatture)
{
    AggiornaGrigliaDomande(QStringLiteral(" Order by domanda"), griglia.get(), 5, nullptr, false, nullptr);
    EXPECT_EQ(Colonna("DOMANDA"), (QStringList{QStringLiteral("00000000001"), QStringLiteral("00000000003")}));
}

TEST_F(ProvaListe, Modi0Cerca3E4TutteLeDomande)
{
    for (const QVariant& modo : {QVariant(0), QVariant(QStringLiteral("CERCA")), QVariant(3), QVariant(4)}) {
        AggiornaGrigliaDomande(QStringLiteral(" and stam = 'N' Order by domanda"), griglia.get(), modo, nullptr, false,
                               nullptr);
        EXPECT_EQ(Colonna("DOMANDA").size(), 3) << ChiaveModo(modo).toStdString();
    }
    // Il numero e il suo testo sono lo stesso modo.
    EXPECT_EQ(QueryListaDomande(0), QueryListaDomande(QStringLiteral("0")));
    EXPECT_TRUE(QueryListaDomande(0).testo.endsWith(QLatin1String("TIPO_ARTICOLO ")));
}

TEST_F(ProvaListe, Fatture2EScaricoSullaDomandaScelta)
{
    sessione().DomandaSel.ID_DOMANDA = static_cast<qint32>(s.domandaDueFatture);
    AggiornaGrigliaDomande(QString(), griglia.get(), QStringLiteral("FATTURE2"), nullptr, false, nullptr);
    EXPECT_EQ(Colonna("DENOMINAZIONE").size(), 2);
    EXPECT_EQ(Colonna("DESC_LAVO").first(), QStringLiteral("VINO DA TAVOLA"));
    // L'ordinamento dello scarico è per valore numerico del numero di fattura.
    AggiornaGrigliaDomande(QString(), griglia.get(), QStringLiteral("SCARICO"), nullptr, false, nullptr);
    EXPECT_EQ(Colonna("NUME_FATT"), (QStringList{"9", "10"}));
    // Le bolle delle fatture, per fattura e per bolla.
    AggiornaGrigliaDomande(QString(), griglia.get(), QStringLiteral("SCARICO2"), nullptr, false, nullptr);
    EXPECT_EQ(Colonna("NUMERO_BOLLA"), (QStringList{"B2", "B3", "B1"}));
    // Un'altra domanda, un'altra lista.
    sessione().DomandaSel.ID_DOMANDA = static_cast<qint32>(s.domandaSenzaFatture);
    AggiornaGrigliaDomande(QString(), griglia.get(), QStringLiteral("FATTURE2"), nullptr, false, nullptr);
    EXPECT_EQ(griglia->model()->rowCount(), 0);
}

TEST_F(ProvaListe, ColonneConNomeDiTabella)
{
    sessione().DomandaSel.ID_DOMANDA = static_cast<qint32>(s.domandaDueFatture);
    AggiornaGrigliaDomande(QString(), griglia.get(), QStringLiteral("FATTURE2"), nullptr, false, nullptr);
    auto* m = qobject_cast<ModelloLista*>(griglia->model());
    // DOMANDE.* viene prima: ID_DOMANDA in posizione 0, quello di FATTURE in 11.
    EXPECT_EQ(m->Colonna(QStringLiteral("DOMANDE.ID_DOMANDA")), 0);
    EXPECT_EQ(m->Colonna(QStringLiteral("fatture.id_domanda")), 11);
    EXPECT_EQ(m->Colonna(QStringLiteral("id_fattura")), 10);
    EXPECT_EQ(m->Colonna(QStringLiteral("NESSUNA")), -1);
    EXPECT_THROW(m->Campo(0, QStringLiteral("NESSUNA")), ErroreSistema);
    EXPECT_THROW(m->Campo(5, QStringLiteral("DOMANDA")), ErroreSistema);
}

TEST_F(ProvaListe, Modo9SoloProduttoriSenzaLegame)
{
    AggiornaGrigliaProduttori(FiltroListaProduttori(9) + QStringLiteral(" ORDER BY DENOMINAZIONE"), griglia.get(), 9,
                              nullptr, false, nullptr);
    EXPECT_EQ(Colonna("DENOMINAZIONE"), (QStringList{"LIBERO DUE", "LIBERO UNO"}));
}

TEST_F(ProvaListe, ProduttoriDelCertificato)
{
    sessione().UtfSel.iD_UTF = static_cast<qint32>(s.utf1);
    AggiornaGrigliaProduttori(FiltroListaProduttori(10), griglia.get(), 10, nullptr, false, nullptr);
    EXPECT_EQ(Colonna("DENOMINAZIONE"), QStringList{"LEGATO"});
    EXPECT_EQ(Colonna("DESC_COLORE"), QStringList{"BIANCO"});
    AggiornaGrigliaProduttori(FiltroListaProduttori(8), griglia.get(), 8, nullptr, false, nullptr);
    EXPECT_EQ(Colonna("DENOMINAZIONE"), QStringList{"LEGATO"});
    // "168" ha la stessa istruzione con la condizione del chiamante.
    AggiornaGrigliaProduttori(IstruzioneSql(QStringLiteral(" WHERE TAB_ID_UTF_PRODUTTORE.iD_UTF= ?"), {s.utf1 + 1}),
                              griglia.get(), QStringLiteral("168"), nullptr, false, nullptr);
    EXPECT_EQ(griglia->model()->rowCount(), 0);
}

TEST_F(ProvaListe, DomandeDelDistillatoreEloroCertificati)
{
    AggiornaGrigliaProduttori(QStringLiteral(" Order by tipo_articolo, domanda"), griglia.get(), 7, nullptr, false,
                              nullptr);
    EXPECT_EQ(Colonna("DOMANDA"), (QStringList{"D1", "D2"}));
    // Join esterno: D1 una volta per certificato, D2 una volta senza.
    AggiornaGrigliaProduttori(QStringLiteral(" ORDER BY domanda, NUMERO_CERTIFICATO_UTF"), griglia.get(), 11, nullptr,
                              false, nullptr);
    EXPECT_EQ(Colonna("NUMERO_CERTIFICATO_UTF"), (QStringList{"U1", "U2", ""}));
    sessione().DomandaProduttoreSel.ID_DOMANDA_PRODUTTORE = static_cast<qint32>(s.domandaDistConUtf);
    for (const char* modo : {"711", "1611"}) {
        AggiornaGrigliaProduttori(FiltroListaProduttori(QString::fromLatin1(modo)), griglia.get(),
                                  QString::fromLatin1(modo), nullptr, false, nullptr);
        EXPECT_EQ(Colonna("DOMANDA"), (QStringList{"D1", "D1"})) << modo;
    }
}

TEST_F(ProvaListe, ModiSenzaIstruzione)
{
    for (int modo : {14, 15, 17, 20}) {
        EXPECT_EQ(QueryListaProduttori(modo).testo, QStringLiteral(" ")) << modo;
        try {
            AggiornaGrigliaProduttori(QString(), griglia.get(), modo, nullptr, false, nullptr);
            ADD_FAILURE() << "nessun errore per il modo " << modo;
        } catch (const ErroreSistema& e) {
            EXPECT_EQ(e.numero(), 3129);
        }
    }
    EXPECT_TRUE(FiltroListaProduttori(9).testo.isEmpty());
    EXPECT_TRUE(FiltroListaProduttori(7).testo.isEmpty());
}

TEST_F(ProvaListe, ErroreDiSintassiDalChiamante)
{
    try {
        AggiornaGrigliaDomande(QStringLiteral(" AND AND"), griglia.get(), 0, nullptr, false, nullptr);
        ADD_FAILURE() << "nessun errore";
    } catch (const ErroreSistema& e) {
        EXPECT_EQ(e.numero(), CodiciErrore::ErroreSintassi);
    }
}

// ---------------------------------------------------------------- griglie

TEST_F(ProvaListe, ColonneDomandeModo1)
{
    AggiornaGrigliaDomande(QString(), griglia.get(), 1, nullptr, false, nullptr);
    ColonneGrigliaDomande(griglia.get(), 1, QStringLiteral("Elenco Fatture"));
    EXPECT_EQ(DidascaliaGriglia(griglia.get()), QStringLiteral("Elenco Fatture"));
    EXPECT_EQ(Visibili(), (QList<int>{1, 2, 3, 4, 5, 9, 14, 15}));
    EXPECT_EQ(Didascalia(1), QStringLiteral("Numero Domanda"));
    EXPECT_EQ(Didascalia(3), QStringLiteral("Stampata "));
    EXPECT_EQ(Didascalia(9), QStringLiteral("Campagna"));
    EXPECT_EQ(Didascalia(14), QStringLiteral("Num. Fattura"));
    EXPECT_EQ(Didascalia(15), QStringLiteral("Data Fattura"));
    EXPECT_EQ(griglia->model()->index(0, 9).data().toString(), QStringLiteral("2005"));  // DATA_CAMP
    EXPECT_EQ(griglia->model()->index(0, 14).data(Qt::TextAlignmentRole).value<Qt::Alignment>(), Qt::AlignCenter);
    EXPECT_GT(griglia->columnWidth(5), 0);
}

TEST_F(ProvaListe, ColonneDomandeAltriModi)
{
    AggiornaGrigliaDomande(QString(), griglia.get(), 0, nullptr, false, nullptr);
    ColonneGrigliaDomande(griglia.get(), 0, QStringLiteral("Domande"));
    EXPECT_EQ(Visibili(), (QList<int>{1, 2, 3, 4, 5, 9}));
    EXPECT_EQ(Didascalia(5), QStringLiteral("Articolo"));

    sessione().DomandaSel.ID_DOMANDA = static_cast<qint32>(s.domandaDueFatture);
    AggiornaGrigliaDomande(QString(), griglia.get(), QStringLiteral("FATTURE2"), nullptr, false, nullptr);
    // Il nuovo caricamento rende visibili tutte le colonne, con i nomi dei campi.
    EXPECT_EQ(Visibili().size(), griglia->model()->columnCount());
    EXPECT_EQ(Didascalia(1), QStringLiteral("DOMANDA"));
    ColonneGrigliaDomande(griglia.get(), QStringLiteral("FATTURE2"), QStringLiteral("Fatture"));
    EXPECT_EQ(Visibili(), (QList<int>{12, 13, 14, 15}));
    EXPECT_EQ(Didascalia(12), QStringLiteral(" Codice fiscale "));
    EXPECT_EQ(Didascalia(14), QStringLiteral(" Fattura N° "));
    EXPECT_EQ(griglia->model()->index(0, 13).data().toString(), QStringLiteral("CANTINA DIECI"));

    // "CERCA" non è tra i modi disposti: la griglia resta com'è caricata.
    AggiornaGrigliaDomande(QString(), griglia.get(), QStringLiteral("CERCA"), nullptr, false, nullptr);
    ColonneGrigliaDomande(griglia.get(), QStringLiteral("CERCA"), QStringLiteral("Cerca"));
    EXPECT_EQ(Visibili().size(), griglia->model()->columnCount());
}

TEST_F(ProvaListe, ColonneProduttori)
{
    QLabel titolo;
    AssociaDidascalia(griglia.get(), &titolo);
    AggiornaGrigliaProduttori(QString(), griglia.get(), 7, nullptr, false, nullptr);
    ColonneGrigliaProduttori(griglia.get(), 7, QStringLiteral("Etichetta"));
    EXPECT_EQ(titolo.text(), QStringLiteral("Domande del distillatore"));
    EXPECT_EQ(Visibili(), (QList<int>{1, 2, 3, 4, 8}));
    EXPECT_EQ(Didascalia(1), QStringLiteral("Articolo rif."));

    AggiornaGrigliaProduttori(QString(), griglia.get(), 11, nullptr, false, nullptr);
    ColonneGrigliaProduttori(griglia.get(), 11, QStringLiteral("Certificati"));
    EXPECT_EQ(titolo.text(), QStringLiteral("Certificati"));
    EXPECT_EQ(Visibili(), (QList<int>{1, 2, 8, 11, 12, 15}));
    EXPECT_EQ(Didascalia(12), QStringLiteral("Emesso dalla Provincia"));
    EXPECT_EQ(Didascalia(15), QStringLiteral("In data "));

    ColonneGrigliaProduttori(griglia.get(), 18, QStringLiteral("Certificati"));
    EXPECT_EQ(titolo.text(), QStringLiteral("Domande del distillatore da stampare"));
    EXPECT_EQ(Visibili(), (QList<int>{1, 2, 3, 4, 8, 11, 12, 15}));
    EXPECT_EQ(Didascalia(11), QStringLiteral("N° Certificato UTF"));

    AggiornaGrigliaProduttori(QString(), griglia.get(), 9, nullptr, false, nullptr);
    ColonneGrigliaProduttori(griglia.get(), 9, QStringLiteral("Produttori"));
    EXPECT_EQ(Visibili(), (QList<int>{1, 2, 5, 8, 9, 10, 21}));
    EXPECT_EQ(Didascalia(9), QStringLiteral("Q.tà vino distillata beneficiaria dell'aiuto"));
    // "1611" lascia la griglia come l'ha trovata.
    ColonneGrigliaProduttori(griglia.get(), QStringLiteral("1611"), QStringLiteral("Altro"));
    EXPECT_EQ(Visibili(), (QList<int>{1, 2, 5, 8, 9, 10, 21}));
}

TEST_F(ProvaListe, SoloRinfrescoNonRicarica)
{
    AggiornaGrigliaDomande(QString(), griglia.get(), 0, nullptr, false, nullptr);
    db().Execute(QStringLiteral("DELETE FROM DOMANDE WHERE ID_DOMANDA = ?"), {s.domandaSenzaFatture});
    AggiornaGrigliaDomande(QString(), griglia.get(), 0, nullptr, true, nullptr);
    EXPECT_EQ(griglia->model()->rowCount(), 3);
    AggiornaGrigliaDomande(QString(), griglia.get(), 0, nullptr, false, nullptr);
    EXPECT_EQ(griglia->model()->rowCount(), 2);
}

// Una lettura a metà della griglia non blocca un DROP TABLE sulla connessione.
TEST_F(ProvaListe, LetturaAMetaNonBloccaIlDropTable)
{
    Database& d = db();
    d.IniziaTransazione();
    for (int i = 0; i < 1000; ++i)
        d.Execute(QStringLiteral("INSERT INTO BOLLE (FK_ID_FATTURA, NUMERO_BOLLA) VALUES (?, ?)"),
                  {s.fattura9, QString::number(i)});
    d.ConfermaTransazione();
    d.Execute(QStringLiteral("CREATE TABLE APPO_BOLLE AS SELECT * FROM BOLLE WHERE FK_ID_FATTURA = ?"), {s.fattura9});
    ModelloLista modello;
    modello.Imposta(QStringLiteral("SELECT * FROM BOLLE"));
    ASSERT_TRUE(modello.canFetchMore());
    EXPECT_LT(modello.rowCount(), 1000);
    d.Execute(QStringLiteral("DROP TABLE APPO_BOLLE"));
    EXPECT_FALSE(d.EsisteTabella(QStringLiteral("APPO_BOLLE")));
    EXPECT_EQ(modello.rowCount(), 1003);
    EXPECT_EQ(modello.Campo(1002, QStringLiteral("NUMERO_BOLLA")).testo(), QStringLiteral("999"));
}

// ---------------------------------------------------------------- CaricaCmb

TEST_F(ProvaListe, CaricaCmbConRigaVuota)
{
    db();
    QComboBox combo;
    CaricaCmb(&combo, QStringLiteral("CAMPAGNA"), QStringLiteral("ANNUALITA"), QString(), false,
              QStringLiteral(" ORDER BY ANNUALITA"), false, true);
    ASSERT_EQ(combo.count(), 6);
    EXPECT_EQ(combo.itemText(0), QStringLiteral("2001"));
    EXPECT_EQ(combo.itemText(4), QStringLiteral("2005"));
    EXPECT_EQ(combo.itemText(5), QString());
    EXPECT_EQ(combo.currentText(), QString());
}

TEST_F(ProvaListe, CaricaCmbSenzaRigaVuotaSceglieLaCampagna)
{
    db();
    QComboBox combo;
    sessione().CampagnaCorrente = QStringLiteral("2004");
    CaricaCmb(&combo, QStringLiteral("CAMPAGNA"), QStringLiteral("ANNUALITA"), QStringLiteral("  "), false,
              QStringLiteral(" ORDER BY ANNUALITA"), false, false);
    EXPECT_EQ(combo.count(), 5);
    EXPECT_EQ(combo.currentText(), QStringLiteral("2004"));
    // Senza campagna corrente il testo resta vuoto.
    sessione().CampagnaCorrente.clear();
    CaricaCmb(&combo, QStringLiteral("CAMPAGNA"), QStringLiteral("ANNUALITA"), QString(), false,
              QStringLiteral(" ORDER BY ANNUALITA"), false, false);
    EXPECT_EQ(combo.currentText(), QString());
    EXPECT_EQ(combo.count(), 5);
}

TEST_F(ProvaListe, CaricaCmbEspressioneCondizioneEDati)
{
    db();
    QComboBox combo;
    CaricaCmb(&combo, QStringLiteral("VARIETA"), QStringLiteral("CODI_PROD || ' ' || DESC_PROD"),
              QStringLiteral("CODI_PROD = ?"), false, QStringLiteral(" ORDER BY CODI_PROD"), false, true,
              {QStringLiteral("agr")});
    ASSERT_EQ(combo.count(), 2);
    EXPECT_EQ(combo.itemText(0), QStringLiteral("AGR ALCOLE GREZZO"));

    CaricaCmb(&combo, QStringLiteral("CAMPAGNA"), QStringLiteral("ANNUALITA, ANNUALITA + 1"), QString(), true,
              QStringLiteral(" ORDER BY ANNUALITA"), true, true);
    ASSERT_EQ(combo.count(), 11);
    EXPECT_EQ(combo.itemText(0), QStringLiteral("2001"));
    EXPECT_EQ(combo.itemText(1), QStringLiteral(" 2001 2002"));
    EXPECT_EQ(combo.itemData(1).toInt(), 2001);
}

TEST_F(ProvaListe, CaricaCmbErroreLasciaLaComboEScriveIlRegistro)
{
    db();
    QComboBox combo;
    combo.addItems({QStringLiteral("A"), QStringLiteral("B")});
    script->Rispondi(RispostaMsg::OK);
    CaricaCmb(&combo, QStringLiteral("NON_ESISTE"), QStringLiteral("X"), QString(), false, QString(), false, true);
    EXPECT_EQ(combo.count(), 2);
    ASSERT_EQ(script->messaggi.size(), 1);
    EXPECT_EQ(script->messaggi.first().titolo, QStringLiteral("Gestione Errori"));
    Recordset rs = db().OpenRecordset(QStringLiteral("SELECT DESC_APPL, CODI_ERRO FROM LOGERR"));
    ASSERT_FALSE(rs.eof());
    EXPECT_EQ(rs.Fields(QStringLiteral("DESC_APPL")).testo(), QStringLiteral("Md_FunzioniGenerali CaricaCmb"));
    EXPECT_EQ(rs.Fields(QStringLiteral("CODI_ERRO")).testo(), QStringLiteral("03078"));
}
