// Il modello a finestre delle griglie: solo le finestre mostrate lette, per
// LIMIT/OFFSET o per chiave, lettura per nome lontano dalla cima, ordini con
// righe pari, una lista che cambia sotto la griglia, la consegna dell'ultima
// riga di una lista lunga e le liste aperte rilette dopo un ripristino.
#include "archive/zip_archivio.h"
#include "common/errore.h"
#include "common/liste.h"
#include "invoices/FrmSelezione.h"
#include "invoices/registra_liste_domande.h"
#include "shell/FrmMenu.h"
#include "shell/registro_maschere.h"
#include "shell/session_state.h"
#include "store/database.h"
#include "support/cartella_prova.h"
#include "support/maschere_finte.h"
#include "support/verifiche.h"

#include <QAction>
#include <QDir>
#include <QScrollBar>
#include <QSet>
#include <QTableView>
#include <QTest>

namespace {

using namespace Qt::StringLiterals;

constexpr int Bolle = 3000;  // quasi dodici finestre

// "numero" domande 0000000000n/01 della campagna data.
void Domande(Database& d, int numero, const QString& campagna = u"2005"_s)
{
    d.Execute(u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < ?) "
              "INSERT INTO DOMANDE (DOMANDA, PROGRESSIVO, STAM, SCAR, TIPO_ARTICOLO, ID_VARIETA, PROG_VERS, "
              "PROG_INVIO, DATA_CAMP) SELECT printf('%011d', i), '01', 'N', 'N', '29', 1, '1', 0, ? FROM n"_s,
              {numero, campagna});
}

class ModelloFinestre : public ProvaConDatabase {
protected:
    void SetUp() override
    {
        ProvaConDatabase::SetUp();
        // Bolle con ID_BOLLA e NUMERO_BOLLA da 1 a 3000, su tre fatture.
        db().Execute(u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < ?) "
                     "INSERT INTO BOLLE (ID_BOLLA, FK_ID_FATTURA, NUMERO_BOLLA, QUANTITA_PRODOTTO) "
                     "SELECT i, i % 3, i, '1,0000' FROM n"_s,
                     {Bolle});
    }
};

TEST_F(ModelloFinestre, LeggeSoloLeFinestreChieste)
{
    const struct {
        const char* sql;
        QVariantList parametri;
        bool perChiavi;      // ordine senza indice
        int righe, lontana;  // lontana: riga letta lontano dalla cima
        const char* valore;  // suo NUMERO_BOLLA
    } casi[] = {
        {"SELECT * FROM BOLLE ORDER BY ID_BOLLA", {}, false, Bolle, Bolle - 1, "3000"},
        {"SELECT * FROM BOLLE WHERE FK_ID_FATTURA = ? ORDER BY ID_BOLLA DESC", {1}, false, 1000, 999, "1"},
        {"SELECT * FROM BOLLE WHERE ID_BOLLA < 0", {}, false, 0, -1, ""},
        // Un ORDER BY tra apici non è l'ordine della lista; quello di una sottoquery resta.
        {"SELECT * FROM BOLLE WHERE NUMERO_BOLLA <> 'x ORDER BY' ORDER BY ID_BOLLA", {}, false, Bolle, 256, "257"},
        {"SELECT * FROM (SELECT * FROM BOLLE ORDER BY ID_BOLLA DESC LIMIT 600) ORDER BY ID_BOLLA", {}, false, 600,
         599, "3000"},
        {"SELECT * FROM BOLLE WHERE FK_ID_FATTURA <> ? ORDER BY NUMERO_BOLLA + 0 DESC", {0}, true, 2000, 1999, "1"},
        {"SELECT * FROM BOLLE ORDER BY NUMERO_BOLLA || 'x'", {}, true, Bolle, 2000, "2801"},
        {"SELECT * FROM BOLLE ORDER BY FK_ID_FATTURA DESC, ID_BOLLA", {}, true, Bolle, 0, "2"},
        // Con un alias la chiave non si trova: per LIMIT/OFFSET.
        {"SELECT B.* FROM BOLLE B ORDER BY NUMERO_BOLLA + 0", {}, false, Bolle, Bolle - 1, "3000"},
    };
    for (const auto& c : casi) {
        SCOPED_TRACE(c.sql);
        ModelloLista m;
        m.Imposta(IstruzioneSql(QString::fromLatin1(c.sql), c.parametri));
        EXPECT_EQ(m.PerChiavi(), c.perChiavi);
        // Le righe oltre la prima finestra si contano dopo, per chi le chiede.
        EXPECT_EQ(m.canFetchMore({}), !c.perChiavi && c.righe >= ModelloLista::RigheFinestra);
        EXPECT_EQ(m.FinestreLette(), 1);
        EXPECT_EQ(m.columnCount(), 9) << "colonne note anche senza righe";
        if (c.lontana < 0) {
            EXPECT_EQ(ErroreDi([&] { m.Campo(0, u"NUMERO_BOLLA"_s); }).section(u' ', 0, 0), u"3021"_s);
            continue;
        }
        EXPECT_EQ(m.Campo(c.lontana, u"numero_bolla"_s).testo(), QString::fromLatin1(c.valore));
        EXPECT_EQ(m.rowCount(), c.righe);
        EXPECT_EQ(m.FinestreLette(), c.lontana < ModelloLista::RigheFinestra ? 1 : 2);
    }
}

// Un ordine con molte righe pari non ripete né perde righe tra una finestra e l'altra.
TEST_F(ModelloFinestre, OrdineConRighePariSenzaDoppioni)
{
    for (const char* ordine : {" ORDER BY QUANTITA_PRODOTTO", " ORDER BY FK_ID_FATTURA DESC", ""}) {
        SCOPED_TRACE(ordine);
        ModelloLista m;
        m.Imposta(IstruzioneSql(u"SELECT * FROM BOLLE"_s + QLatin1String(ordine)));
        QSet<qint64> chiavi;
        for (int i = 0; i < Bolle; ++i)
            chiavi << m.Campo(i, u"ID_BOLLA"_s).intero();
        EXPECT_EQ(chiavi.size(), Bolle);
        EXPECT_EQ(m.FinestreLette(), (Bolle + ModelloLista::RigheFinestra - 1) / ModelloLista::RigheFinestra);
    }
}

// Righe cancellate o tabella tolta da un'altra maschera con la lista aperta:
// celle vuote, errore 3021 per nome, nessuna lettura rimasta aperta.
TEST_F(ModelloFinestre, UnaListaCheCambiaSottoLaGriglia)
{
    QTableView griglia;
    auto* m = new ModelloLista(&griglia);
    griglia.setModel(m);
    griglia.resize(400, 300);
    griglia.show();
    const int numero = 2;
    // Per LIMIT/OFFSET (3000 righe, ne restano 2000) e per chiave (da 2000 a 1000).
    for (const auto& [ordine, resta] : {std::pair{"ID_BOLLA", 2000}, {"NUMERO_BOLLA + 0", 1000}}) {
        SCOPED_TRACE(ordine);
        m->Imposta(IstruzioneSql(u"SELECT * FROM BOLLE ORDER BY "_s + QLatin1String(ordine)));
        m->fetchMore({});
        const int prima = m->rowCount();
        db().Execute(u"DELETE FROM BOLLE WHERE ID_BOLLA > ?"_s, {resta});
        griglia.scrollToBottom();
        griglia.repaint();
        EXPECT_FALSE(m->data(m->index(prima - 1, numero)).isValid());
        EXPECT_EQ(ErroreDi([&] { m->Campo(prima - 1, numero); }).section(u' ', 0, 0), u"3021"_s);
        EXPECT_EQ(m->Campo(resta - 1, numero).testo(), QString::number(resta));
        griglia.setColumnHidden(0, true);
        m->setHeaderData(numero, Qt::Horizontal, u"Bolla"_s);
        m->Rileggi();
        EXPECT_EQ(m->rowCount(), resta);
        EXPECT_TRUE(griglia.isColumnHidden(0)) << "la disposizione resta";
        EXPECT_EQ(m->headerData(numero, Qt::Horizontal).toString(), u"Bolla"_s);
    }

    // Nessuna lettura aperta: la tabella si toglie anche con la lista a metà.
    db().Execute(u"CREATE TABLE APPO_BOLLE AS SELECT * FROM BOLLE"_s);
    m->Imposta(IstruzioneSql(u"SELECT * FROM APPO_BOLLE"_s));
    m->fetchMore({});
    db().Execute(u"DROP TABLE APPO_BOLLE"_s);
    EXPECT_FALSE(db().EsisteTabella(u"APPO_BOLLE"_s));
    griglia.scrollToBottom();
    griglia.repaint();
    EXPECT_FALSE(m->data(m->index(999, numero)).isValid());
    EXPECT_TRUE(ErroreDi([&] { m->Rileggi(); }).startsWith(u"3078 "_s));
    EXPECT_EQ(m->rowCount(), 0);
}

TEST_F(ModelloFinestre, CifreADestra)
{
    ModelloLista m;
    m.Imposta(IstruzioneSql(u"SELECT NUMERO_BOLLA, QUANTITA_PRODOTTO, GRADO, ID_BOLLA, DATA_CONSEGNA FROM BOLLE"_s));
    m.ImpostaAllineamento(2, Qt::AlignCenter);
    const Qt::Alignment d = Qt::AlignRight | Qt::AlignVCenter, attesi[] = {{}, d, Qt::AlignCenter, d, {}};
    for (int c = 0; c < int(std::size(attesi)); ++c)
        EXPECT_EQ(m.index(0, c).data(Qt::TextAlignmentRole).value<Qt::Alignment>(), attesi[c]) << c;
}

class ListeAperte : public ProvaConDatabase {
protected:
    void SetUp() override
    {
        ProvaConDatabase::SetUp();
        script->AccettaMessaggiSenzaRisposta();
        AnnullaRegistrazioni();
        RegistraListeDomande();
        finte = std::make_unique<MaschereFinte>(QStringList{u"FrmDomanda"_s}, [] {
            const DomandaSelezionata& d = sessione().DomandaSel;
            return u"%1 %2/%3"_s.arg(d.ID_DOMANDA).arg(d.DOMANDA, d.PROGRESSIVO);
        });
    }
    void TearDown() override
    {
        FrmMenu::Scarica();
        finte.reset();
        AnnullaRegistrazioni();
        ProvaConDatabase::TearDown();
    }
    // La lista delle domande aperta dal menu, come fa l'utente.
    FrmSelezione* ApriDomande()
    {
        FrmMenu& menu = FrmMenu::Carica();
        menu.show();
        menu.findChild<QAction*>(u"mnuDist_1"_s)->trigger();
        QCoreApplication::processEvents();  // il conteggio dopo la prima schermata
        return qobject_cast<FrmSelezione*>(menu.MascheraAperta(u"FrmSelezione"_s));
    }
    std::unique_ptr<MaschereFinte> finte;
};

// Ctrl+Fine sull'ultima di 2000 domande e "Modifica": la consegna legge la
// riga per nome, senza che le righe di mezzo vengano dal database.
TEST_F(ListeAperte, ConsegnaDellUltimaRigaDiUnaListaLunga)
{
    Domande(db(), 2000);
    FrmSelezione* f = ApriDomande();
    ASSERT_NE(f, nullptr);
    ASSERT_EQ(f->Data->rowCount(), 2000);
    f->Griglia->setFocus();
    QTest::keyClick(f->Griglia, Qt::Key_End, Qt::ControlModifier);
    ASSERT_EQ(f->RigaCorrente(), 1999);
    SelezionaRighe(f->Griglia, {1999}, 1999, 1);
    f->Griglia->repaint();
    EXPECT_LE(f->Data->FinestreLette(), 2) << "Ctrl+Fine non legge la lista intera";
    f->Cmddati_Click(2);
    EXPECT_EQ(finte->aperte, QStringList{u"FrmDomanda 2000 00000002000/01"_s});
    EXPECT_EQ(script->messaggi, Messaggi{});
}

// Un ripristino con altre domande: la lista aperta le mostra subito.
TEST_F(ListeAperte, DopoUnRipristinoLaListaApertaMostraIDatiRipristinati)
{
    Domande(db(), 3);
    QTemporaryDir altrove;
    const QString archivio = QDir(altrove.path()).filePath(u"orvelta_2005.bkp"_s);
    {
        CartellaProva altra;
        auto d = Database::Apri(altra.percorsoDatabase(), false, ConnessioneDb);
        Domande(*d, 700, u"2004"_s);
        d->Close();
        CreaArchivio(altra.percorsoDatabase(), archivio);
    }
    FrmSelezione* f = ApriDomande();
    ASSERT_NE(f, nullptr);
    ASSERT_EQ(f->Data->rowCount(), 3);

    script->cartelle << altrove.path();
    FrmMenu::Istanza()->findChild<QAction*>(u"mnuAr_1"_s)->trigger();
    const Messaggi riuscito = {{u"Trasferimento dei dati effettuato correttamente"_s, 64, u"Gestione dati "_s}};
    EXPECT_EQ(script->messaggi, riuscito);
    ASSERT_EQ(f->Data->rowCount(), 700);
    EXPECT_EQ(f->Data->Campo(699, u"DOMANDA"_s).testo() + u'|' + f->Data->Campo(0, u"DATA_CAMP"_s).testo(),
              u"00000000700|2004"_s);
    f->Griglia->scrollToBottom();
    f->Griglia->repaint();
    EXPECT_EQ(f->Griglia->model()->index(699, 1).data().toString(), u"00000000700"_s);
}

}  // namespace
