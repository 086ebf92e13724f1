// L'elenco delle fatture della domanda: dettagli che seguono il cursore,
// totale, ordinamento, Nuovo, Modifica con la copia delle bolle, Cancella.
#include "invoices/FrmFattura.h"
#include "invoices/FrmSelezionaFatture.h"
#include "invoices/registra_fatture.h"
#include "maschere_prova.h"
#include "shell/registro_maschere.h"

#include <QHeaderView>

namespace {

class ProvaElenco : public ProvaFatture {
protected:
    void SetUp() override
    {
        ProvaFatture::SetUp();
        RegistraMaschereFatture();
        Fattura(1, QStringLiteral("B-1"), QStringLiteral("CCC"), QStringLiteral("100,0000"));
        Fattura(2, QStringLiteral("A-2"), QStringLiteral("AAA"), QStringLiteral("50,5"));
        Fattura(3, QStringLiteral("ALTRA"), QStringLiteral("BBB"), QStringLiteral("1"), IdDomanda + 1);
        Bolla(10, 1, QStringLiteral("B10"), QStringLiteral("02/01/2006"), QStringLiteral("60,0000"));
        Bolla(11, 2, QStringLiteral("B11"), QStringLiteral("03/01/2006"), QStringLiteral("50,5000"));
    }
    void TearDown() override
    {
        elenco.reset();
        AnnullaRegistrazioni();
        ProvaFatture::TearDown();
    }
    void Apri()
    {
        elenco = std::make_unique<FrmSelezionaFatture>();
        Mostra(elenco.get());
    }
    void Premi(int i) { QTest::mouseClick(elenco->Cmddati.value(i), Qt::LeftButton); }
    QTableView* Griglia() { return elenco->TDBG_Selfatt; }
    // Numeri delle fatture nell'ordine della griglia.
    QString Numeri()
    {
        QStringList n;
        for (int r = 0; r < Griglia()->model()->rowCount(); ++r)
            n << Griglia()->model()->index(r, 14).data().toString();
        return n.join(QLatin1Char(' '));
    }
    QString Dettagli()
    {
        QStringList d;
        for (int i : {4, 7, 9, 11, 14})
            d << elenco->TxtDati.value(i)->text();
        return d.join(QLatin1Char('|'));
    }

    std::unique_ptr<FrmSelezionaFatture> elenco;
};

TEST_F(ProvaElenco, DettagliTotaleEOrdinamento)
{
    db().Execute(QStringLiteral("UPDATE FATTURE SET DENOMINAZIONE = 'ZETA' WHERE ID_FATTURA = 2"));
    Apri();
    EXPECT_EQ(elenco->windowTitle(), QStringLiteral("Seleziona Fatture"));
    EXPECT_EQ(elenco->TxtDati.value(0)->text() + elenco->TxtDati.value(15)->text(), QStringLiteral("000000001232005"));
    EXPECT_EQ(Numeri(), QStringLiteral("B-1 A-2"));
    // Il cursore sulla prima riga: dettagli e totale del prodotto (non del lavorato).
    EXPECT_EQ(Dettagli(), QStringLiteral("100,0000|1000,00|1200,00|05/01/2006|150,5000"));
    EXPECT_EQ(sessione().FatturaSel.ID_FATTURA, 1);
    Griglia()->setCurrentIndex(Griglia()->model()->index(1, 13));
    EXPECT_EQ(Dettagli(), QStringLiteral("50,5|1000,00|1200,00|05/01/2006|150,5000"));
    EXPECT_EQ(sessione().FatturaSel.ID_FATTURA, 2);
    EXPECT_EQ(sessione().FatturaSel.ID_DOMANDA, IdDomanda);

    // Solo le quattro colonne in vista ordinano; un clic altrove non ricarica.
    const struct { int colonna; const char* ordine; } clic[] = {{12, "A-2 B-1"}, {5, "A-2 B-1"}, {13, "B-1 A-2"}};
    for (const auto& c : clic) {
        Griglia()->horizontalHeader()->sectionClicked(c.colonna);
        EXPECT_EQ(Numeri(), QString::fromUtf8(c.ordine)) << c.colonna;
    }
    EXPECT_EQ(script->messaggi, Messaggi{});
}

TEST_F(ProvaElenco, SenzaSelezioneRifiuta)
{
    Apri();
    Griglia()->clearSelection();
    Premi(2);
    Premi(4);
    const MessaggioRegistrato rifiuto{QStringLiteral("Selezionare almeno una fattura."), StileMsg::Informazione,
                                      QStringLiteral("Fatture")};
    EXPECT_EQ(script->messaggi, Messaggi(2, rifiuto));
    EXPECT_FALSE(db().EsisteTabella(QStringLiteral("APPO_BOLLE")));
    EXPECT_EQ(Righe(db(), QStringLiteral("SELECT count(*) FROM FATTURE")), QStringList(QStringLiteral("3")));
}

TEST_F(ProvaElenco, NuovoEModificaApronoLaFattura)
{
    Apri();
    // Una copia rimasta da una caduta precedente si butta.
    db().Execute(QStringLiteral("CREATE TABLE APPO_BOLLE AS SELECT * FROM BOLLE WHERE FK_ID_FATTURA = 2"));
    QStringList visti;
    const auto guarda = [&](QDialog* d) {
        auto* f = static_cast<FrmFattura*>(d);
        visti << sessione().ModoMaschera + QLatin1Char(' ') + QString::number(sessione().FatturaSel.ID_FATTURA) +
                     QLatin1Char(' ') + f->TxtDati.value(6)->text() + QLatin1Char(' ') +
                     (db().EsisteTabella(QStringLiteral("APPO_BOLLE"))
                          ? Righe(db(), QStringLiteral("SELECT group_concat(ID_BOLLA) FROM APPO_BOLLE")).join(QString())
                          : QStringLiteral("-"));
        QTest::mouseClick(f->Cmddati.value(1), Qt::LeftButton);
    };
    Seleziona(Griglia(), {1});
    QuandoModale(QStringLiteral("FrmFattura"), guarda);
    Premi(2);
    Seleziona(Griglia(), {0});
    QuandoModale(QStringLiteral("FrmFattura"), guarda);
    Premi(1);  // Nuovo con una riga scelta: la fattura è vuota lo stesso
    EXPECT_EQ(visti, (QStringList{QStringLiteral("M 2 A-2 11"), QStringLiteral("I 0  -")}));
    EXPECT_FALSE(db().EsisteTabella(QStringLiteral("APPO_BOLLE")));
    EXPECT_EQ(Bolle().size(), 2);
}

TEST_F(ProvaElenco, CancellaFatturaPoiBolle)
{
    db().Execute(QStringLiteral("DELETE FROM FATTURE WHERE ID_FATTURA = 2"));
    Apri();
    const MessaggioRegistrato domanda{QStringLiteral("Confermi la cancellazione della fattura: B-1"),
                                      StileMsg::SiNo + StileMsg::SecondoPredefinito + StileMsg::Informazione,
                                      QStringLiteral("Fatture")};
    const MessaggioRegistrato fatto{QStringLiteral("Operazione correttamente eseguita."), StileMsg::Informazione,
                                    QString()};
    const MessaggioRegistrato nonFatto{QStringLiteral("Operazione non eseguita."), StileMsg::Informazione,
                                       QString()};
    script->Rispondi(RispostaMsg::No);
    Seleziona(Griglia(), {0});
    Premi(4);
    EXPECT_EQ(Numeri(), QStringLiteral("B-1"));

    script->Rispondi(RispostaMsg::Si);
    Seleziona(Griglia(), {0});
    Premi(4);
    EXPECT_EQ(script->messaggi, (Messaggi{domanda, domanda, fatto}));
    EXPECT_EQ(Numeri(), QString());
    EXPECT_EQ(Segni(), QStringLiteral("N|N"));
    EXPECT_EQ(Righe(db(), QStringLiteral("SELECT ID_BOLLA FROM BOLLE")), QStringList(QStringLiteral("11")));
    // L'ultima fattura andata: il totale resta com'era finché il cursore non si muove.
    EXPECT_EQ(elenco->TxtDati.value(14)->text(), QStringLiteral("100,0000"));

    // La fattura già sparita: nulla da cancellare.
    script->messaggi.clear();
    script->Rispondi(RispostaMsg::Si);
    Fattura(5, QStringLiteral("C-5"));
    elenco->CaricaGriglia();
    Seleziona(Griglia(), {0});
    db().Execute(QStringLiteral("DELETE FROM FATTURE WHERE ID_FATTURA = 5"));
    Premi(4);
    EXPECT_EQ(script->messaggi.value(1), nonFatto);
}

}  // namespace
