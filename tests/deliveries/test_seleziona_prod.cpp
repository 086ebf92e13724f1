// Browser dei certificati e dei produttori e produttori senza certificato:
// comandi con i loro rifiuti e messaggi, pagine, dati e somme che seguono il
// cursore, ricerca per l'inizio del nome e assegnazione dei produttori liberi.
#include "deliveries/FrmProduttore_SelezionaProd.h"
#include "deliveries/frmProduttoriNoAssociati.h"
#include "deliveries/registra_conferimenti_utf.h"
#include "shell/registro_maschere.h"
#include "support/maschere_finte.h"

#include "conferimenti_prova.h"

#include <QHeaderView>
#include <QTabWidget>

namespace {

const QString Titolo = QStringLiteral(" Certificato UTF ");

// Le denominazioni della lista dei produttori senza certificato.
QStringList Nomi(const frmProduttoriNoAssociati& l)
{
    QStringList n;
    for (int r = 0; r < l.Data_produttoriNoAss->rowCount(); ++r)
        n << l.Data_produttoriNoAss->Campo(r, QStringLiteral("DENOMINAZIONE")).testo();
    return n;
}

class Browser : public ProvaConferimenti {
protected:
    void SetUp() override
    {
        ProvaConferimenti::SetUp();
        AnnullaRegistrazioni();
        RegistraMaschereConferimentiUtf();
        // Al posto delle maschere aperte per nome: annotano come trovano la
        // sessione; il certificato salvato cambia nome, come dopo un salvataggio.
        finte = std::make_unique<MaschereFinte>(
            QStringList{"FrmProduttore", "frmProduttore_Utf", "frmProduttoriNoAssociati"}, [] {
                const auto& s = sessione();
                return QStringLiteral("%1 %2 %3").arg(s.ModoMaschera).arg(s.UtfSel.iD_UTF).arg(s.ProduttoreSel.iD_PRODUTTORI);
            });
        finte->azione = [] {
            Db().Execute(QStringLiteral("UPDATE TAB_UTF SET NUMERO_CERTIFICATO_UTF = 'SALVATO' WHERE iD_UTF = 2"));
        };
        sessione().TitoloMaschera = Titolo;
        script->AccettaMessaggiSenzaRisposta();
    }
    void TearDown() override
    {
        f.reset();
        AnnullaRegistrazioni();
        ProvaConferimenti::TearDown();
    }

    // Il browser aperto dalla lista sulla domanda data.
    FrmProduttore_SelezionaProd& Apri(qint32 domanda)
    {
        sessione().DomandaProduttoreSel = DomandaProduttoreSelezionata{
            domanda, QStringLiteral("0000000001%1").arg(domanda), "S", "S", "29", "1", "0,00", 0, "2005"};
        f = std::make_unique<FrmProduttore_SelezionaProd>();
        f->show();
        return *f;
    }
    // Seleziona una riga della griglia (-1: nessuna, la griglia resta sulla prima).
    void Seleziona(int griglia, int riga)
    {
        if (riga >= 0)
            f->TDBG_SelProd[griglia]->selectRow(riga);
    }
    QStringList Colonna(int griglia, const char* nome)
    {
        QStringList valori;
        for (int r = 0; r < f->Data_SelProd_utf[griglia]->rowCount(); ++r)
            valori << f->Data_SelProd_utf[griglia]->Campo(r, QString::fromLatin1(nome)).testo();
        return valori;
    }
    QStringList Campi(std::initializer_list<int> indici)
    {
        QStringList testi;
        for (int i : indici)
            testi << f->TxtDati[i]->text();
        return testi;
    }
    QStringList CertificatiRimasti()
    {
        return Righe(db(), QStringLiteral("SELECT iD_UTF FROM TAB_UTF ORDER BY iD_UTF"));
    }

    std::unique_ptr<FrmProduttore_SelezionaProd> f;
    std::unique_ptr<MaschereFinte> finte;
};

}  // namespace

TEST_F(Browser, CaricamentoEPagine)
{
    const QString Almeno = QStringLiteral("Selezionare almeno un certificato UTF.");
    const QString Inserire = QStringLiteral("Per inserire un produttore bisogna inserire almeno un certificato UTF.");
    const struct {
        qint32 domanda;
        int riga;
        QStringList certificati;
        int pagina;
        Messaggi messaggi;
        QStringList produttori, certificato, somme;
    } casi[] = {
        {1, -1, {"UTF000001", "UTF000002"}, 0, {{Almeno, 64, Titolo}}, {}, {}, {}},
        // Domanda senza certificati: una riga vuota, per il join esterno.
        {2, 0, {""}, 0, {{Inserire, 64, Titolo}}, {}, {}, {}},
        {1, 0, {"UTF000001", "UTF000002"}, 1, {}, {"CANTINA DELL'OLMO", "VIGNE ALTE"}, {"UTF000001", "TORINO"},
         {"300,5000", "3300,2500"}},
        {1, 1, {"UTF000001", "UTF000002"}, 1, {}, {}, {"UTF000002", "CUNEO"}, {"", ""}},
    };
    for (const auto& c : casi) {
        SCOPED_TRACE(testing::Message() << c.domanda << "/" << c.riga);
        script->messaggi.clear();
        Apri(c.domanda);
        EXPECT_EQ(Campi({1, 2, 20}), QStringList({"0000000001" + QString::number(c.domanda), "29", "2005"}));
        EXPECT_EQ(Colonna(0, "TAB_UTF.NUMERO_CERTIFICATO_UTF"), c.certificati);
        Seleziona(0, c.riga);
        f->SSTabutf_prod->setCurrentIndex(1);
        EXPECT_EQ(f->SSTabutf_prod->currentIndex(), c.pagina);
        EXPECT_EQ(script->messaggi, c.messaggi);
        if (c.pagina == 0)
            continue;
        EXPECT_EQ(Colonna(1, "DENOMINAZIONE"), c.produttori);
        EXPECT_EQ(Campi({4, 5}), c.certificato);
        EXPECT_EQ(Campi({15, 16}), c.somme);
        // Il certificato della riga passa intero alla maschera di modifica.
        const UtfSelezionato& u = sessione().UtfSel;
        EXPECT_EQ(QStringList({QString::number(u.iD_UTF), u.NUMERO_CERTIFICATO_UTF, u.DESCR_UFFICIO_UTF_PROVINCIA,
                               u.SIGLA_UFFICIO_UTF_PROVINCIA, u.DATA_EMISSIONE_CERTIFICATO, u.QTA_TOT_VINO_LAVORATO,
                               u.QTA_TOT_ETTOGRADI_VINO_LAVORATO, u.QTA_TOT_ALCOLE_NEUTRO_OTTENUTO})
                      .join(u'|'),
                  c.riga == 0 ? QStringLiteral("1|UTF000001|TORINO|TO|10/01/2006|300,0000|3300,0000|20,0000")
                              : QStringLiteral("2|UTF000002|CUNEO|CN|11/01/2006|50,0000|600,0000|5,0000"));
        // I dati del produttore seguono il cursore; senza produttori restano vuoti.
        const QStringList vuoti(9, QString());
        EXPECT_EQ(Campi({6, 7, 8, 9, 10, 11, 12, 13, 14}),
                  c.produttori.isEmpty() ? vuoti
                                         : QStringList({"12,34", "", "", "", "1,5000", "", "1100,2500", "100,5000",
                                                        "0,00"}));
        if (!c.produttori.isEmpty()) {
            f->TDBG_SelProd[1]->selectRow(1);
            EXPECT_EQ(Campi({6, 10, 12, 13, 14}), QStringList({"56,78", "2,5000", "2200,0000", "200,0000", "1,00"}));
            EXPECT_EQ(sessione().ProduttoreSel.iD_PRODUTTORI, 2);
            EXPECT_EQ(sessione().ProduttoreSel.DESC_COLORE, QStringLiteral("BIANCO"));
        }
        // Tornando alla pagina 0 la lista dei certificati si ricarica.
        db().Execute(QStringLiteral("UPDATE TAB_UTF SET NUMERO_CERTIFICATO_UTF = 'NUOVO' WHERE iD_UTF = 2"));
        f->SSTabutf_prod->setCurrentIndex(0);
        EXPECT_EQ(Colonna(0, "TAB_UTF.NUMERO_CERTIFICATO_UTF"), QStringList({"UTF000001", "NUOVO"}));
        SeminaCertificati();
    }
}

// Il clic su un'intestazione riordina la griglia per quella colonna.
TEST_F(Browser, OrdinePerIntestazione)
{
    Apri(1);
    const struct {
        int colonna;
        QStringList certificati;
    } casi[] = {{12, {"UTF000002", "UTF000001"}}, {11, {"UTF000001", "UTF000002"}}};
    for (const auto& c : casi) {
        f->TDBG_SelProd[0]->horizontalHeader()->sectionClicked(c.colonna);
        EXPECT_EQ(Colonna(0, "TAB_UTF.NUMERO_CERTIFICATO_UTF"), c.certificati) << c.colonna;
    }
    EXPECT_TRUE(script->messaggi.isEmpty());
}

TEST_F(Browser, ComandiDeiCertificati)
{
    const QString AlmenoUtf = QStringLiteral("Selezionare almeno un certificato UTF ."),
                  AlmenoDomanda = QStringLiteral("Selezionare almeno una domanda."),
                  Nessuno = QStringLiteral("Non sono presenti certificato UTF.");
    const auto Domanda = [](const char* numero) {
        return MessaggioRegistrato{QStringLiteral("Confermi la cancellazione del certificato UTF n. ") +
                                       QString::fromLatin1(numero),
                                   324, Titolo};
    };
    const MessaggioRegistrato ConProduttori{
        QStringLiteral("Operazione non eseguita.\r\nVerificare eventuale presenza di Produttori per il certificato "
                       "UTF selezionato."),
        48, Titolo};
    const struct {
        const char* caso;
        qint32 domanda;
        int riga, pulsante;
        QList<int> risposte;
        Messaggi messaggi;
        QString aperta;  // "maschera modo certificato produttore"
        QStringList certificati, marche;
    } casi[] = {
        {"modifica senza riga", 1, -1, 1, {}, {{AlmenoUtf, 64, Titolo}}, "", {"1", "2"}, {}},
        {"modifica senza certificato", 2, 0, 1, {}, {{Nessuno, 64, Titolo}}, "", {"1", "2"}, {}},
        {"cancella senza riga", 1, -1, 2, {}, {{AlmenoDomanda, 64, Titolo}}, "", {"1", "2"}, {}},
        {"cancella senza certificato", 2, 0, 2, {}, {{Nessuno, 64, Titolo}}, "", {"1", "2"}, {}},
        {"assegna senza riga", 1, -1, 3, {}, {{AlmenoUtf, 64, Titolo}}, "", {"1", "2"}, {}},
        {"cancella con produttori", 1, 0, 2, {6}, {Domanda("UTF000001"), ConProduttori}, "", {"1", "2"}, {}},
        {"cancella, risposta no", 1, 1, 2, {7}, {Domanda("UTF000002")}, "", {"1", "2"}, {}},
        {"cancella", 1, 1, 2, {6},
         {Domanda("UTF000002"), {QStringLiteral("Operazione correttamente eseguita."), 64, Titolo}}, "", {"1"},
         {"1|N|N", "2|S|S", "3|S|S"}},
        {"nuovo", 2, -1, 0, {}, {}, "frmProduttore_Utf I 0 0", {"1", "2"}, {}},
        {"modifica", 1, 1, 1, {}, {}, "frmProduttore_Utf M 2 0", {"1", "2"}, {}},
        {"assegna", 1, 1, 3, {}, {}, "frmProduttoriNoAssociati  2 0", {"1", "2"}, {}},
    };
    for (const auto& c : casi) {
        SCOPED_TRACE(c.caso);
        SeminaCertificati();
        db().Execute(QStringLiteral("UPDATE DOMANDE_PRODUTTORI SET STAM='S', SCAR='S'"));
        script->messaggi.clear();
        finte->aperte.clear();
        sessione().ModoMaschera.clear();
        Apri(c.domanda);
        Seleziona(0, c.riga);
        for (int r : c.risposte)
            script->Rispondi(r);
        QTest::mouseClick(f->Cmddati[c.pulsante], Qt::LeftButton);
        EXPECT_EQ(script->messaggi, c.messaggi);
        EXPECT_EQ(finte->aperte, c.aperta.isEmpty() ? QStringList() : QStringList{c.aperta});
        EXPECT_EQ(CertificatiRimasti(), c.certificati);
        // Le marche tornano "N" solo se un certificato è stato cancellato.
        EXPECT_EQ(Marche(), c.marche.isEmpty() ? QStringList({"1|S|S", "2|S|S", "3|S|S"}) : c.marche);
        // La lista si ricarica: il certificato cancellato ne esce, il salvato si vede.
        EXPECT_EQ(f->Data_SelProd_utf[0]->rowCount(), c.domanda == 1 ? c.certificati.size() : 1);
        if (c.aperta.contains(QLatin1String(" M "))) {
            EXPECT_EQ(Colonna(0, "TAB_UTF.NUMERO_CERTIFICATO_UTF"), QStringList({"UTF000001", "SALVATO"}));
        }
        EXPECT_TRUE(f->isVisible());
    }
}

TEST_F(Browser, ComandiDeiProduttori)
{
    const MessaggioRegistrato Domanda{QStringLiteral("Confermi la cancellazione del produttore VIGNE ALTE - 09876543210"),
                                      68, QStringLiteral("Cancella Produttore")};
    const struct {
        const char* caso;
        int riga, pulsante;
        QList<int> risposte;
        Messaggi messaggi;
        QString aperta;
        QStringList legami, somme;
    } casi[] = {
        {"modifica senza riga", -1, 7, {}, {{QStringLiteral("Selezionare almeno un Produttore."), 64, "PRODUTTORE"}},
         "", {"1|1", "1|2"}, {"300,5000", "3300,2500"}},
        {"cancella senza riga", -1, 8, {}, {{QStringLiteral("Selezionare almeno una domanda."), 64, Titolo}}, "",
         {"1|1", "1|2"}, {"300,5000", "3300,2500"}},
        {"cancella, risposta no", 1, 8, {7}, {Domanda}, "", {"1|1", "1|2"}, {"300,5000", "3300,2500"}},
        {"nuovo", -1, 6, {}, {}, "FrmProduttore I 1 1", {"1|1", "1|2"}, {"300,5000", "3300,2500"}},
        {"modifica", 1, 7, {}, {}, "FrmProduttore M 1 2", {"1|1", "1|2"}, {"300,5000", "3300,2500"}},
        // Si toglie solo il legame; le somme si rifanno sul produttore rimasto.
        {"cancella", 1, 8, {6}, {Domanda, {QStringLiteral("Operazione correttamente eseguita."), 64, Titolo}},
         "", {"1|1"}, {"100,5000", "1100,2500"}},
    };
    for (const auto& c : casi) {
        SCOPED_TRACE(c.caso);
        script->messaggi.clear();
        finte->aperte.clear();
        Apri(1);
        Seleziona(0, 0);
        f->SSTabutf_prod->setCurrentIndex(1);
        Seleziona(1, c.riga);
        for (int r : c.risposte)
            script->Rispondi(r);
        QTest::mouseClick(f->Cmddati[c.pulsante], Qt::LeftButton);
        EXPECT_EQ(script->messaggi, c.messaggi);
        EXPECT_EQ(finte->aperte, c.aperta.isEmpty() ? QStringList() : QStringList{c.aperta});
        EXPECT_EQ(Legami(), c.legami);
        EXPECT_EQ(Campi({15, 16}), c.somme);
        EXPECT_EQ(f->Data_SelProd_utf[1]->rowCount(), c.legami.size());
        EXPECT_EQ(Righe(db(), QStringLiteral("SELECT COUNT(*) FROM PRODUTTORI")), QStringList{"6"});
    }
    EXPECT_EQ(Marche(), QStringList({"1|S|S", "2|S|S", "3|S|S"}));
}

TEST_F(ProvaConferimenti, RicercaEAssegnazioneDeiProduttoriLiberi)
{
    sessione().UtfSel.iD_UTF = 2;
    sessione().TitoloMaschera = Titolo;
    script->AccettaMessaggiSenzaRisposta();
    frmProduttoriNoAssociati l;
    l.show();
    EXPECT_EQ(l.windowTitle(), QStringLiteral("Elenco Produttori non Associati"));
    // Il produttore senza codice fiscale non soddisfa "like" e non compare mai.
    EXPECT_EQ(Nomi(l), QStringList({"ROSSI MARIO", "ROSSETTI LUIGI", "BIANCHI ANNA"}));
    EXPECT_EQ(l.ProduttoreCorrente(), 3);
    const struct { const char *nome, *codice; QStringList attesi; } ricerche[] = {
        {"ROSS", "", {"ROSSI MARIO", "ROSSETTI LUIGI"}},
        {"rossi", "", {"ROSSI MARIO"}},   // senza distinguere maiuscole
        {"R#OS$S", "", {"ROSSI MARIO", "ROSSETTI LUIGI"}},  // "#" e "$" non passano dal filtro
        {"MARIO", "", {}},                // solo l'inizio del nome
        {"", "BNC", {"BIANCHI ANNA"}},
        {"ROSS", "RSSL", {"ROSSETTI LUIGI"}},
        {"", "%", {}},                    // un "%" battuto vale per sé stesso
        {"", "RSS*7", {"ROSSI MARIO", "ROSSETTI LUIGI"}},  // l'asterisco è il jolly di sempre
        {"", "", {"ROSSI MARIO", "ROSSETTI LUIGI", "BIANCHI ANNA"}},
    };
    for (const auto& r : ricerche) {
        SCOPED_TRACE(std::string(r.nome) + "/" + r.codice);
        l.txtDenominazione->clear();
        l.txtCodiFisc->clear();
        QTest::keyClicks(l.txtDenominazione, QString::fromLatin1(r.nome));
        QTest::keyClicks(l.txtCodiFisc, QString::fromLatin1(r.codice));
        QTest::keyClick(l.txtCodiFisc, Qt::Key_Return);  // Invio cerca
        EXPECT_EQ(Nomi(l), r.attesi);
        EXPECT_EQ(l.ProduttoreCorrente(), r.attesi.isEmpty() ? 0 : l.Data_produttoriNoAss->Campo(0, "iD_PRODUTTORI").intero());
        EXPECT_EQ(l.TDBG_ProduttoriNoAss->property("Caption").toString(),
                  QStringLiteral("Produttori non Associati a nessuna UTF"));
    }

    // Associa vuole una sola riga selezionata e un certificato in mano: legato
    // al certificato 0 il produttore sparirebbe da ogni elenco.
    const MessaggioRegistrato Solo{QStringLiteral("Selezionare un solo produttore!"), 64, Titolo};
    const MessaggioRegistrato SenzaUtf{
        QStringLiteral("Nessun certificato UTF scelto: il produttore non si può associare."), 64, Titolo};
    const QStringList tutti = {"ROSSI MARIO", "ROSSETTI LUIGI", "BIANCHI ANNA"};
    const struct { qint32 utf; QList<int> selezionate; Messaggi messaggi; QStringList legami, rimasti; } associa[] = {
        {2, {}, {Solo}, {"1|1", "1|2"}, tutti},
        {2, {0, 2}, {Solo}, {"1|1", "1|2"}, tutti},
        {0, {1}, {SenzaUtf}, {"1|1", "1|2"}, tutti},
        {2, {1}, {}, {"1|1", "1|2", "2|4"}, {"ROSSI MARIO", "BIANCHI ANNA"}},
    };
    for (const auto& a : associa) {
        sessione().UtfSel.iD_UTF = a.utf;
        script->messaggi.clear();
        l.TDBG_ProduttoriNoAss->clearSelection();
        for (int r : a.selezionate) {
            l.TDBG_ProduttoriNoAss->selectionModel()->setCurrentIndex(l.Data_produttoriNoAss->index(r, 1),
                                                                      QItemSelectionModel::Select |
                                                                          QItemSelectionModel::Rows);
        }
        QTest::mouseClick(l.cmdOperazioni[0], Qt::LeftButton);
        EXPECT_EQ(script->messaggi, a.messaggi);
        EXPECT_EQ(Legami(), a.legami);
        EXPECT_EQ(Nomi(l), a.rimasti);
    }
    // Lista vuota: chiave 0 e Associa rifiutato.
    l.txtDenominazione->setText(QStringLiteral("NESSUNO"));
    QTest::mouseClick(l.cmdOperazioni[3], Qt::LeftButton);
    EXPECT_EQ(l.ProduttoreCorrente(), 0);
    script->messaggi.clear();
    QTest::mouseClick(l.cmdOperazioni[0], Qt::LeftButton);
    EXPECT_EQ(script->messaggi, Messaggi{Solo});
}
