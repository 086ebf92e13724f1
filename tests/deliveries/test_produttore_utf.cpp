// Maschera del certificato UTF: rifiuti del salvataggio con messaggio e
// fuoco, inserimento e modifica con le righe scritte (la data battuta come
// "01022006" torna nella sua forma), aiuto per modo.
#include "common/aiuto.h"
#include "deliveries/frmProduttore_Utf.h"

#include "conferimenti_prova.h"

namespace {

// I campi da battere: numero, provincia, data, ettogradi, vino, grezzo, neutro, acquavite.
struct Dati { QString numero, provincia, data, ettogradi, vino, grezzo, neutro, acquavite; };
const Dati Validi{"ab1'x", "L'AQUILA AQ", "01022006", "3300", "300", "10,5", "", ""};

class Certificato : public ProvaConferimenti {
protected:
    void SetUp() override
    {
        ProvaConferimenti::SetUp();
        auto& s = sessione();
        s.TitoloMaschera = QStringLiteral(" Certificato UTF ");
        s.DomandaProduttoreSel =
            DomandaProduttoreSelezionata{2, "00000000012", "S", "S", "29", "1", "0,00", 0, "2005"};
        s.ModoMaschera = QStringLiteral("I");
    }
    void TearDown() override
    {
        f.reset();
        ProvaConferimenti::TearDown();
    }
    frmProduttore_Utf& Apri()
    {
        f = std::make_unique<frmProduttore_Utf>();
        f->show();
        QApplication::setActiveWindow(f.get());
        return *f;
    }
    void Scrivi(int indice, const QString& testo)
    {
        QLineEdit* campo = f->TxtDati[indice];
        campo->setFocus();
        campo->clear();
        QTest::keyClicks(campo, testo);
    }
    // Batte i dati campo per campo (la provincia si sceglie dalla lista) e preme Salva.
    void Salva(const Dati& d)
    {
        Scrivi(3, d.numero);
        f->cboProvincia[4]->setCurrentIndex(f->cboProvincia[4]->findText(d.provincia));
        int i = 5;
        for (const QString& t : {d.data, d.ettogradi, d.vino, d.grezzo, d.neutro, d.acquavite})
            Scrivi(i++, t);
        QTest::mouseClick(f->Cmddati[0], Qt::LeftButton);
    }
    QStringList Testi(std::initializer_list<int> indici)
    {
        QStringList t;
        for (int i : indici)
            t << f->TxtDati[i]->text();
        return t;
    }
    std::unique_ptr<frmProduttore_Utf> f;
};

}  // namespace

TEST_F(Certificato, RifiutiConMessaggioEFuoco)
{
    const struct { const char* caso; Dati dati; QString messaggio, fuoco; } casi[] = {
        {"tre prodotti vuoti", {"A1", "TORINO TO", "01022006", "10", "1", "", "", ""},
         "Inserire almeno uno dei prodotti ottenuti. ", "TxtDati_8"},
        {"numero", {"", "TORINO TO", "01022006", "10", "1", "1", "", ""},
         "Numero del certificato  campo obbligatorio. ", "TxtDati_3"},
        {"provincia", {"A1", "", "01022006", "10", "1", "1", "", ""},
         "Ufficio di rilascio certificato Utf  campo obbligatorio. ", "cboProvincia_4"},
        {"data", {"A1", "TORINO TO", "", "10", "1", "1", "", ""},
         "Data emissione certificato Utf campo obbligatorio. ", "TxtDati_5"},
        {"ettogradi a zero", {"A1", "TORINO TO", "01022006", "0", "1", "1", "", ""},
         "Totale quantità in ettogradi del vino lavorato campo obbligatorio. ", "TxtDati_6"},
        {"vino vuoto", {"A1", "TORINO TO", "01022006", "10", "", "", "", "1"},
         "Totale quantità di vino lavorate campo obbligatorio. ", "TxtDati_7"},
    };
    for (const auto& c : casi) {
        SCOPED_TRACE(c.caso);
        Apri();
        script->messaggi.clear();
        script->Rispondi(RispostaMsg::OK);
        Salva(c.dati);
        EXPECT_EQ(script->messaggi, (Messaggi{{c.messaggio, 64, "Salvataggio "}}));
        ASSERT_TRUE(f->focusWidget());
        EXPECT_EQ(f->focusWidget()->objectName(), c.fuoco);
        EXPECT_TRUE(f->isVisible());
        EXPECT_EQ(Righe(db(), TutteLeRigheUtf), QStringList({Utf1, Utf2}));
    }
    // I prodotti vuoti sono stati scritti come zeri prima del controllo.
    EXPECT_EQ(Testi({7, 8, 9, 10}), QStringList({"0,0000", "0,0000", "0,0000", "1,0000"}));
}

TEST_F(Certificato, InserimentoEModifica)
{
    const struct {
        const char* modo;
        qint32 utf, domandaUtf;
        QStringList caricati;  // numero, data, ettogradi, vino, grezzo, neutro, acquavite, provincia
        Dati dati;
        QStringList righe, marche;
    } casi[] = {
        // Dal browser su una domanda senza certificati: UtfSel.iD_DOMANDA è 0 e
        // la domanda 2 resta segnata come stampata, come ha sempre fatto.
        {"I", 0, 0, {"", "", "", "", "", "", "", ""}, Validi,
         {Utf1, Utf2, "3|2|AB1'X|L'AQUILA|AQ|066|01/02/2006|3300,0000|300,0000|10,5000|0,0000|0,0000|"},
         {"1|S|S", "2|S|S", "3|S|S"}},
        {"M", 2, 1, {"UTF000002", "11/01/2006", "600,0000", "50,0000", "0,0000", "5,0000", "0,0000", "CUNEO CN"},
         {"UTF000002", "CUNEO CN", "11/01/2006", "600", "55", "", "5", ""},
         {Utf1, "2|2|UTF000002|CUNEO|CN|004|11/01/2006|600,0000|55,0000|0,0000|5,0000|0,0000|"},
         {"1|N|N", "2|S|S", "3|S|S"}},
    };
    for (const auto& c : casi) {
        SCOPED_TRACE(c.modo);
        SeminaCertificati();
        db().Execute(QStringLiteral("UPDATE DOMANDE_PRODUTTORI SET STAM='S', SCAR='S'"));
        auto& s = sessione();
        s.ModoMaschera = QString::fromLatin1(c.modo);
        s.UtfSel = UtfSelezionato{c.utf, c.domandaUtf, "UTF000002", "CUNEO", "CN", "004", "11/01/2006", "50,0000",
                                  "600,0000", "5,0000", "0,0000", "0,0000", "", 0};
        if (c.utf == 0)
            s.UtfSel = UtfSelezionato{};
        Apri();
        EXPECT_EQ(f->windowTitle(), QStringLiteral("Certificati UTF"));
        EXPECT_EQ(Testi({1, 2, 20}), QStringList({"00000000012", "29", "2005"}));
        EXPECT_EQ(Testi({3, 5, 6, 7, 8, 9, 10}) << f->cboProvincia[4]->currentText(), c.caricati);
        script->messaggi.clear();
        Salva(c.dati);
        EXPECT_TRUE(script->messaggi.isEmpty());
        EXPECT_FALSE(f->isVisible());
        EXPECT_EQ(f->result(), QDialog::Accepted);
        EXPECT_EQ(Righe(db(), TutteLeRigheUtf), c.righe);
        EXPECT_EQ(Marche(), c.marche);
    }
}

TEST_F(Certificato, AiutoPerModoEdEsci)
{
    QStringList nomi;
    const FunzioneHelp prima = ImpostaMostraHelp([&](const QString& n) { nomi << n; });
    for (const char* modo : {"I", "M"}) {
        sessione().ModoMaschera = QString::fromLatin1(modo);
        Apri();
        QTest::mouseClick(f->Cmddati[2], Qt::LeftButton);
        QTest::keyClick(f->TxtDati[3], Qt::Key_F1);
        Scrivi(3, QStringLiteral("NUOVO"));
        QTest::mouseClick(f->Cmddati[1], Qt::LeftButton);
        EXPECT_FALSE(f->isVisible());
    }
    ImpostaMostraHelp(prima);
    EXPECT_EQ(nomi, QStringList({"frmProduttore_Utf_INS", "frmProduttore_Utf_INS", "frmProduttore_Utf_MOD",
                                 "frmProduttore_Utf_MOD"}));
    EXPECT_EQ(Righe(db(), TutteLeRigheUtf), QStringList({Utf1, Utf2}));
    EXPECT_TRUE(script->messaggi.isEmpty());
}

// Una provincia sparita dalla tabella dopo l'apertura: l'errore va nel
// registro con l'etichetta del salvataggio e la maschera resta aperta.
TEST_F(Certificato, ProvinciaSenzaRigaPrendeLaViaDellErrore)
{
    Apri();
    db().Execute(QStringLiteral("DELETE FROM TAB_PROVINCIE WHERE TABPROSIG = 'AQ'"));
    script->AccettaMessaggiSenzaRisposta();
    Salva(Validi);
    ASSERT_EQ(script->messaggi.size(), 1);
    EXPECT_EQ(script->messaggi[0].testo,
              MessaggioLogErr(3021, DescrizioneErrore(3021), QStringLiteral("frmProduttore_Utf.CMDDATI_CLICK")));
    EXPECT_EQ(Errori(), QStringList{"|frmProduttore_Utf.CMDDATI_CLICK"});
    EXPECT_TRUE(f->isVisible());
    EXPECT_EQ(Righe(db(), TutteLeRigheUtf), QStringList({Utf1, Utf2}));
}
