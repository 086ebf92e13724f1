// La maschera delle bolle di consegna: le due facce, la somma contro il
// distillato, i rifiuti di Modifica e Cancella, la prima data all'uscita.
#include "invoices/frmBolleConsegne.h"
#include "maschere_prova.h"

#include <QGroupBox>

namespace {

class ProvaBolle : public ProvaFatture {
protected:
    void SetUp() override
    {
        ProvaFatture::SetUp();
        Fattura(1, QStringLiteral("1"));
    }
    void Apri(const QString& id = QStringLiteral("1"), const QString& distillata = QStringLiteral("100,0000"))
    {
        maschera = std::make_unique<frmBolleConsegne>();
        maschera->ImpostaIdFatturaBolle(id);
        maschera->ImpostaQuantitaDistillata(distillata);
        Mostra(maschera.get());
    }
    QLineEdit* Campo(int i) { return maschera->TxtDati.value(i); }
    void Premi(int i) { QTest::mouseClick(maschera->Cmddati.value(i), Qt::LeftButton); }
    MessaggioRegistrato Info(const QString& testo) const
    {
        return {testo, StileMsg::Informazione, QStringLiteral("Bolle consegne")};
    }
    // Nuova bolla (o modifica della riga data) con la quantità battuta; poi Salva.
    void Scrivi(int riga, const QString& quantita)
    {
        if (riga < 0) {
            Premi(1);
        } else {
            Seleziona(maschera->tdbgBolle, {riga});
            Premi(0);
        }
        if (riga < 0) {
            Campo(1)->setText(QStringLiteral("B%1").arg(maschera->tdbgBolle->model()->rowCount() + 1));
            Campo(2)->setText(QStringLiteral("02/01/2006"));
            Campo(7)->setText(QStringLiteral("10,0000"));
        }
        BattiEdEsci(Campo(3), quantita);
        Premi(0);
    }
    QStringList Quantita()
    {
        return Righe(db(), QStringLiteral("SELECT QUANTITA_PRODOTTO FROM BOLLE ORDER BY ID_BOLLA"));
    }

    std::unique_ptr<frmBolleConsegne> maschera;
};

TEST_F(ProvaBolle, SommaControIlDistillato)
{
    const QString testa = QStringLiteral("La somma delle quantità di prodotto consegnata\r\n"
                                         "è maggiore della quantità totale distillata.\r\n");
    const struct {
        const char* nome;
        QList<std::pair<int, const char*>> passi;  // riga da modificare (-1 nuova), quantità
        QStringList quantita;
        const char* rifiuto;
    } casi[] = {
        {"la sola bolla da 60 a 100", {{-1, "60"}, {0, "100"}}, {"100,0000"}, nullptr},
        // Le prime due passano (l'uguaglianza), la modifica della seconda no.
        {"la seconda bolla oltre", {{-1, "60"}, {-1, "40"}, {1, "40,0001"}}, {"60,0000", "40,0000"},
         "Somma inserita 100,0001 somma consentita 100,0000"},
    };
    for (const auto& c : casi) {
        SCOPED_TRACE(c.nome);
        db().Execute(QStringLiteral("DELETE FROM BOLLE"));
        script->messaggi.clear();
        Apri();
        for (const auto& [riga, quantita] : c.passi)
            Scrivi(riga, QString::fromUtf8(quantita));
        EXPECT_EQ(Quantita(), c.quantita);
        if (c.rifiuto) {
            // Una volta uscendo dal campo, una volta al clic su Salva, che va perso.
            EXPECT_EQ(script->messaggi, Messaggi(2, Info(testa + QString::fromUtf8(c.rifiuto))));
            // Il fuoco resta nella quantità, sulla faccia del dettaglio.
            EXPECT_EQ(QApplication::focusWidget(), Campo(3));
            EXPECT_EQ(maschera->Cmddati.value(0)->text(), QStringLiteral("Salva"));
        } else {
            EXPECT_EQ(script->messaggi, Messaggi{});
            EXPECT_EQ(maschera->Cmddati.value(0)->text(), QStringLiteral("Modifica"));
        }
    }
}

TEST_F(ProvaBolle, DueFacce)
{
    Apri();
    const auto faccia = [this] {
        QString s = maschera->fraGriglia.value(0)->isVisible() ? QStringLiteral("griglia:") : QStringLiteral("dettaglio:");
        for (int i : {0, 1, 2, 3})
            if (maschera->Cmddati.value(i)->isVisible())
                s += QLatin1Char(' ') + maschera->Cmddati.value(i)->text();
        return s;
    };
    EXPECT_EQ(faccia(), QStringLiteral("griglia: Modifica Nuova Esci Cancella"));
    Premi(1);
    EXPECT_EQ(faccia(), QStringLiteral("dettaglio: Salva Esci"));
    EXPECT_EQ(QApplication::focusWidget(), Campo(1));
    EXPECT_FALSE(Campo(5)->isVisible() || Campo(6)->isVisible());
    // F1 non preme il pulsante 2, che qui è Esci.
    QTest::keyClick(Campo(1), Qt::Key_F1);
    EXPECT_EQ(faccia(), QStringLiteral("dettaglio: Salva Esci"));
    // Esci dal dettaglio torna alla griglia senza salvare.
    Campo(1)->setText(QStringLiteral("B1"));
    Premi(2);
    EXPECT_EQ(faccia(), QStringLiteral("griglia: Modifica Nuova Esci Cancella"));
    EXPECT_EQ(Bolle(), QStringList());
}

TEST_F(ProvaBolle, CampiObbligatori)
{
    const struct { int indice; const char *valore, *messaggio; } casi[] = {
        {1, " ", "Numero bolla campo obbligatorio. "},
        {2, "", "Data consegna campo obbligatorio. "},
        {3, "0,0000", "Quantità di prodotto consegnata campo obbligatorio. "},
        {7, "", "Grado alcolometrico campo obbligatorio. "},
        // La coppia nascosta della fattura di trasporto.
        {5, "T9", "Data della fattura trasporto campo obbligatorio. "},
        {6, "01/01/2006", "N. fattura trasporto campo obbligatorio. "},
    };
    Apri();
    for (const auto& c : casi) {
        SCOPED_TRACE(c.messaggio);
        script->messaggi.clear();
        Premi(1);
        Campo(1)->setText(QStringLiteral("B1"));
        Campo(2)->setText(QStringLiteral("02/01/2006"));
        Campo(3)->setText(QStringLiteral("1,0000"));
        Campo(7)->setText(QStringLiteral("10,0000"));
        Campo(c.indice)->setText(QString::fromUtf8(c.valore));
        Premi(0);
        EXPECT_EQ(script->messaggi, (Messaggi{{QString::fromUtf8(c.messaggio), StileMsg::Informazione,
                                               QStringLiteral("Salvataggio ")}}));
        EXPECT_EQ(Bolle(), QStringList());
        Premi(2);
    }
}

TEST_F(ProvaBolle, ModificaECancellaRifiutanoECancellano)
{
    Bolla(10, 1, QStringLiteral("B10"), QStringLiteral("02/01/2006"), QStringLiteral("60,0000"));
    Bolla(11, 1, QStringLiteral("B11"), QStringLiteral("03/01/2006"), QStringLiteral("40,0000"));
    Bolla(12, 2, QStringLiteral("ALTRA"), QStringLiteral("03/01/2006"), QStringLiteral("40,0000"));
    Apri();
    ASSERT_EQ(maschera->tdbgBolle->model()->rowCount(), 2);
    const struct { std::initializer_list<int> righe; int pulsante; const char* messaggio; } rifiuti[] = {
        {{}, 0, "Selezionare una bolla di consegna da modificare."},
        {{0, 1}, 0, "Selezionare una sola bolla di consegna da modificare."},
        {{}, 3, "Nessuna bolla selezionata."},
        {{0, 1}, 3, "E' possibile eliminare una bolla di consegna alla volta."},
    };
    for (const auto& r : rifiuti) {
        script->messaggi.clear();
        Seleziona(maschera->tdbgBolle, r.righe);
        Premi(r.pulsante);
        EXPECT_EQ(script->messaggi, Messaggi{Info(QString::fromUtf8(r.messaggio))});
        EXPECT_EQ(maschera->Cmddati.value(0)->text(), QStringLiteral("Modifica"));
    }
    const MessaggioRegistrato domanda{QStringLiteral("Sicuro di voler eliminare la bolla n° B11?"),
                                      StileMsg::SiNo + StileMsg::SecondoPredefinito + StileMsg::Informazione,
                                      QStringLiteral("Bolle consegne")};
    for (int risposta : {RispostaMsg::No, RispostaMsg::Si}) {
        script->messaggi.clear();
        script->Rispondi(risposta);
        Seleziona(maschera->tdbgBolle, {1});
        Premi(3);
        EXPECT_EQ(script->messaggi, Messaggi{domanda});
    }
    EXPECT_EQ(Righe(db(), QStringLiteral("SELECT NUMERO_BOLLA FROM BOLLE ORDER BY ID_BOLLA")),
              (QStringList{QStringLiteral("B10"), QStringLiteral("ALTRA")}));
    EXPECT_EQ(maschera->tdbgBolle->model()->rowCount(), 1);

    // La modifica tiene la fattura di trasporto che il carico aveva scritto.
    Seleziona(maschera->tdbgBolle, {0});
    Premi(0);
    EXPECT_EQ(Campo(3)->text(), QStringLiteral("60,0000"));
    Campo(1)->setText(QStringLiteral("B10BIS"));
    Premi(0);
    EXPECT_EQ(Righe(db(), QStringLiteral("SELECT * FROM BOLLE WHERE ID_BOLLA = 10")),
              QStringList(QStringLiteral("10|1|B10BIS|02/01/2006|60,0000||10,0000|T1|01/01/2006")));
}

TEST_F(ProvaBolle, UscitaConLaPrimaData)
{
    const struct { QStringList date; const char* attesa; } casi[] = {
        {{"15/02/2006", "14/03/2005", "01/02/2006"}, "14/03/2005"},
        {{}, ""},
    };
    for (const auto& c : casi) {
        db().Execute(QStringLiteral("DELETE FROM BOLLE"));
        int id = 10;
        for (const QString& d : c.date)
            Bolla(id++, 0, QStringLiteral("B"), d, QStringLiteral("1"));
        Apri(QStringLiteral("0"));
        EXPECT_EQ(maschera->DataIntroduzione(), std::nullopt);
        Premi(2);
        EXPECT_FALSE(maschera->isVisible());
        EXPECT_EQ(maschera->DataIntroduzione(), QString::fromUtf8(c.attesa));
    }
}

TEST_F(ProvaBolle, BollaSparitaDuranteLaModifica)
{
    Bolla(10, 1, QStringLiteral("B10"), QStringLiteral("02/01/2006"), QStringLiteral("60,0000"));
    Apri();
    Seleziona(maschera->tdbgBolle, {0});
    Premi(0);
    db().Execute(QStringLiteral("DELETE FROM BOLLE"));
    Premi(0);
    ASSERT_EQ(script->messaggi.size(), 2);
    EXPECT_EQ(script->messaggi.at(0),
              (MessaggioRegistrato{QStringLiteral("Errore imprevisto dell'applicazione! Contattare il servizio tecnico!"),
                                   StileMsg::Critico, QStringLiteral("Errore Tecnico")}));
    EXPECT_TRUE(script->messaggi.at(1).testo.contains(QStringLiteral("FrmBolleConsegne CmdDati_click")));
    EXPECT_EQ(Bolle(), QStringList());
    EXPECT_TRUE(maschera->isVisible());
}

}  // namespace
