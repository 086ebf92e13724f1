// La maschera della fattura: controlli e domande del salvataggio, bolle
// della fattura nuova e di quella in modifica, ricerca della denominazione.
#include "invoices/FrmFattura.h"
#include "invoices/frmBolleConsegne.h"
#include "maschere_prova.h"

namespace {

const QString PartitaIva = QStringLiteral("01234567897");

class ProvaFrmFattura : public ProvaFatture {
protected:
    void Apri(const QString& modo)
    {
        sessione().ModoMaschera = modo;
        maschera = std::make_unique<FrmFattura>();
        Mostra(maschera.get());
    }
    QLineEdit* Campo(int i) { return maschera->TxtDati.value(i); }
    QComboBox* Prodotto() { return maschera->cboProdotto.value(10); }
    // Una fattura nuova giusta: 10 gradi × 100 × 1 = 1000,00.
    void Compila(const QString& impo = QStringLiteral("1000,00"), const QString& iva = QStringLiteral("200,00"),
                 const QString& totale = QStringLiteral("1200,00"))
    {
        const std::pair<int, QString> valori[] = {
            {4, PartitaIva},    {5, QStringLiteral("CANTINA SOCIALE")}, {6, QStringLiteral("15")},
            {7, "10/01/2006"},  {8, QStringLiteral("05/01/2006")},       {9, QStringLiteral("20/01/2006")},
            {11, "1"},          {12, QStringLiteral("10")},              {13, QStringLiteral("100")},
            {14, "100"},        {15, impo},                              {16, iva},
            {17, totale},
        };
        for (const auto& [i, v] : valori)
            Campo(i)->setText(v);
        Prodotto()->setCurrentIndex(0);
    }
    void Salva() { QTest::mouseClick(maschera->Cmddati.value(0), Qt::LeftButton); }
    QStringList Fatture()
    {
        return Righe(db(), QStringLiteral("SELECT ID_FATTURA, IMPO, IVA, IMPO_TOTA, ID_LAVORAZIONE, FOGL, RIGO "
                                          "FROM FATTURE ORDER BY ID_FATTURA"));
    }
    static MessaggioRegistrato Domanda(const char* testo)
    {
        return {QString::fromUtf8(testo) + QStringLiteral("\rProseguo ?"), StileMsg::SiNo + StileMsg::Esclamativo,
                QString()};
    }
    static MessaggioRegistrato Salvataggio(const char* testo)
    {
        return {QString::fromUtf8(testo), StileMsg::Informazione, QStringLiteral("Salvataggio ")};
    }

    std::unique_ptr<FrmFattura> maschera;
};

struct CasoImporti {
    const char* nome;
    const char *impo, *iva, *totale;
    bool conProdotto;
    QList<int> risposte;
    Messaggi messaggi;
    const char* salvata;  // IMPO|IVA|IMPO_TOTA della riga, nullptr se non salvata
};

TEST_F(ProvaFrmFattura, DomandeSugliImporti)
{
    const MessaggioRegistrato imponibile = Domanda("Imponibile immesso non corretto");
    const MessaggioRegistrato totale = Domanda("Totale immesso non corretto");
    const CasoImporti casi[] = {
        // La tolleranza è nelle prove dei conti. IVA e totale riscritti a due
        // decimali: l'IVA vuota passa, "0,00" dopo la normalizzazione.
        {"IVA vuota passa", "1000,00", "", "1000,0", true, {}, {}, "1000,00|0,00|1000,00"},
        {"1000,61 chiede, No", "1000,61", "200,00", "1200,61", true, {RispostaMsg::No}, {imponibile}, nullptr},
        {"un centesimo sul totale, No", "1000,00", "200,00", "1200,01", true, {RispostaMsg::No}, {totale}, nullptr},
        {"Sì a tutte e due", "1000,61", "200,00", "1200,00", true, {RispostaMsg::Si, RispostaMsg::Si},
         {imponibile, totale}, "1000,61|200,00|1200,00"},
        {"prodotto vuoto detto dopo le domande", "1000,61", "200,00", "1200,61", false, {RispostaMsg::Si},
         {imponibile, Salvataggio("Prodotto lavorato campo obbligatorio. ")}, nullptr},
    };
    for (const auto& c : casi) {
        SCOPED_TRACE(c.nome);
        db().Execute(QStringLiteral("DELETE FROM FATTURE"));
        script->messaggi.clear();
        Apri(QStringLiteral("I"));
        Compila(QString::fromUtf8(c.impo), QString::fromUtf8(c.iva), QString::fromUtf8(c.totale));
        // La riga vuota in fondo alla combo ritira la scelta.
        if (!c.conProdotto)
            QTest::keyClick(Prodotto(), Qt::Key_End);
        for (int r : c.risposte)
            script->Rispondi(r);
        Salva();
        EXPECT_EQ(script->messaggi, c.messaggi);
        const QStringList righe = Righe(db(), QStringLiteral("SELECT IMPO, IVA, IMPO_TOTA FROM FATTURE"));
        EXPECT_EQ(righe, c.salvata ? QStringList(QString::fromUtf8(c.salvata)) : QStringList());
        if (c.salvata) {
            EXPECT_FALSE(maschera->isVisible());
        } else {
            // Dopo un No il fuoco va sull'importo, anche se il dubbio era l'imponibile.
            QWidget* atteso = c.conProdotto ? static_cast<QWidget*>(Campo(17)) : Prodotto();
            EXPECT_EQ(QApplication::focusWidget(), atteso);
        }
    }
}

TEST_F(ProvaFrmFattura, CampiObbligatoriEMessaggi)
{
    // Il fuoco torna sul campo rifiutato.
    const struct { int indice; const char *valore, *messaggio; } casi[] = {
        {4, "", "Codice fiscale o partita iva errato. "}, {4, "01234567890", "Codice fiscale o partita iva errato. "},
        {5, " ", "Denominazione campo obbligatorio. "}, {7, "", "Data della fattura campo obbligatorio. "},
        // Senza bolle la fattura nuova non ha la data di introduzione.
        {8, "", "Data di introduzione campo obbligatorio. "}, {9, "", "Data pagamento campo obbligatorio. "},
        {11, "", "Prezzo Unitario al grado campo obbligatorio. "}, {13, ",0", "Prodotto Ql/Hl campo obbligatorio. "},
        {15, "", "Imponibile campo obbligatorio. "}, {17, "0", "Importo campo obbligatorio. "},
    };
    for (const auto& c : casi) {
        SCOPED_TRACE(c.messaggio);
        script->messaggi.clear();
        Apri(QStringLiteral("I"));
        Compila();
        Campo(c.indice)->setText(QString::fromUtf8(c.valore));
        Salva();
        EXPECT_EQ(script->messaggi, Messaggi{Salvataggio(c.messaggio)});
        EXPECT_EQ(QApplication::focusWidget(), Campo(c.indice));
        EXPECT_TRUE(maschera->isVisible());
    }
}

TEST_F(ProvaFrmFattura, DataDiPagamentoDalleBolle)
{
    Fattura(1, QStringLiteral("1"));
    Fattura(2, QStringLiteral("2"));
    const struct { const char* nome; const char* modo; qint64 fatturaDellaBolla; bool passa; } casi[] = {
        {"nuova, bolla non legata con la data", "I", 0, true},
        {"in modifica, bolla sua con la data", "M", 1, true},
        {"in modifica, bolla rimasta da una caduta", "M", 0, true},
        {"in modifica, solo la bolla di un'altra fattura", "M", 2, false},
    };
    for (const auto& c : casi) {
        SCOPED_TRACE(c.nome);
        db().Execute(QStringLiteral("DELETE FROM BOLLE"));
        Bolla(10, c.fatturaDellaBolla, QStringLiteral("B10"), QStringLiteral("02/01/2006"),
              QStringLiteral("10,0000"), QStringLiteral("25/01/2006"));
        sessione().FatturaSel = FatturaSelezionata{};
        sessione().FatturaSel.ID_FATTURA = QLatin1String(c.modo) == QLatin1String("M") ? 1 : 0;
        sessione().FatturaSel.ID_LAVORAZIONE = QStringLiteral("1");
        script->messaggi.clear();
        Apri(QString::fromLatin1(c.modo));
        Compila();
        Campo(9)->clear();
        EXPECT_EQ(maschera->ControllaCampi(), c.passa ? 0 : 9);
    }
}

TEST_F(ProvaFrmFattura, FatturaNuovaConLeSueBolle)
{
    // Una bolla rimasta da una fattura nuova mai salvata viene adottata anch'essa.
    Bolla(5, 0, QStringLiteral("VECCHIA"), QStringLiteral("03/01/2006"), QStringLiteral("1"));
    for (int id = 1; id <= 4; ++id)
        Fattura(id, QString::number(id));
    Apri(QStringLiteral("I"));
    Compila();
    Campo(8)->clear();
    Campo(14)->setText(QStringLiteral("0,0000"));

    // Senza quantità distillata le bolle non si aprono, e senza bolle non si salva.
    QTest::mouseClick(maschera->Cmddati.value(3), Qt::LeftButton);
    Salva();
    EXPECT_EQ(script->messaggi,
              (Messaggi{{QStringLiteral("Prima di inserire le bolle di consegna, inserire la quantità distillata."),
                         StileMsg::Informazione, QStringLiteral("Fattura")},
                        Salvataggio("Data di introduzione campo obbligatorio. ")}));

    Campo(14)->setText(QStringLiteral("100,0000"));
    QuandoModale(QStringLiteral("frmBolleConsegne"), [](QDialog* d) {
        auto* b = static_cast<frmBolleConsegne*>(d);
        EXPECT_EQ(b->IdFatturaBolle(), QStringLiteral("0"));
        QTest::mouseClick(b->Cmddati.value(1), Qt::LeftButton);
        b->TxtDati.value(1)->setText(QStringLiteral("B1"));
        b->TxtDati.value(2)->setText(QStringLiteral("02/01/2006"));
        BattiEdEsci(b->TxtDati.value(3), QStringLiteral("60"));
        b->TxtDati.value(7)->setText(QStringLiteral("10,0000"));
        QTest::mouseClick(b->Cmddati.value(0), Qt::LeftButton);
        QTest::mouseClick(b->Cmddati.value(2), Qt::LeftButton);
    });
    QTest::mouseClick(maschera->Cmddati.value(3), Qt::LeftButton);
    EXPECT_EQ(Campo(8)->text(), QStringLiteral("02/01/2006"));
    Salva();
    EXPECT_FALSE(maschera->isVisible());
    EXPECT_EQ(maschera->IdFattura(), 5);
    EXPECT_EQ(Righe(db(), QStringLiteral("SELECT NUMERO_BOLLA, FK_ID_FATTURA FROM BOLLE ORDER BY ID_BOLLA")),
              (QStringList{QStringLiteral("VECCHIA|5"), QStringLiteral("B1|5")}));
    EXPECT_EQ(Fatture().last(), QStringLiteral("5|1000,00|200,00|1200,00|3|2|1"));
    EXPECT_EQ(Segni(), QStringLiteral("N|N"));
}

TEST_F(ProvaFrmFattura, EsciButtaOppureRimetteLeBolle)
{
    Fattura(1, QStringLiteral("1"));
    Bolla(10, 1, QStringLiteral("B10"), QStringLiteral("02/01/2006"), QStringLiteral("60,0000"));
    Bolla(11, 1, QStringLiteral("B11"), QStringLiteral("03/01/2006"), QStringLiteral("40,0000"));
    const QStringList diPartenza = Bolle();

    // Fattura nuova: via tutte le bolle senza fattura.
    Bolla(12, 0, QStringLiteral("NUOVA"), QStringLiteral("04/01/2006"), QStringLiteral("1"));
    Apri(QStringLiteral("I"));
    QTest::mouseClick(maschera->Cmddati.value(1), Qt::LeftButton);
    EXPECT_FALSE(maschera->isVisible());
    EXPECT_EQ(Bolle(), diPartenza);

    // Fattura in modifica: l'elenco ha copiato le bolle, la maschera delle
    // bolle le ha cambiate, l'uscita le rimette come erano.
    sessione().FatturaSel.ID_FATTURA = 1;
    sessione().FatturaSel.ID_LAVORAZIONE = QStringLiteral("1");
    CopiaBolleInAppoggio(1);
    Apri(QStringLiteral("M"));
    db().Execute(QStringLiteral("UPDATE BOLLE SET QUANTITA_PRODOTTO = '1' WHERE ID_BOLLA = 10"));
    db().Execute(QStringLiteral("DELETE FROM BOLLE WHERE ID_BOLLA = 11"));
    Bolla(13, 1, QStringLiteral("B13"), QStringLiteral("05/01/2006"), QStringLiteral("5"));
    maschera->close();  // chiudere la finestra vale come Esci
    EXPECT_FALSE(maschera->isVisible());
    EXPECT_EQ(Bolle(), diPartenza);
    EXPECT_FALSE(db().EsisteTabella(QStringLiteral("APPO_BOLLE")));
    EXPECT_EQ(script->messaggi, Messaggi{});
}

TEST_F(ProvaFrmFattura, ModificaCaricaESalva)
{
    Fattura(1, QStringLiteral("1"));
    Fattura(2, QStringLiteral("2"));
    Bolla(10, 1, QStringLiteral("B10"), QStringLiteral("02/01/2006"), QStringLiteral("60,0000"));
    FatturaSelezionata& f = sessione().FatturaSel;
    f = {2, IdDomanda, " 01234567897 ", "2", "CANTINA 2", "10/01/2006", "100,0000", "10,0000", "1,0000",
         "1000,00", "200,00", "1200,00", "20/01/2006", "05/01/2006", "100,0000", "4"};
    CopiaBolleInAppoggio(2);
    Apri(QStringLiteral("M"));
    EXPECT_EQ(Campo(4)->text(), QStringLiteral("01234567897"));
    EXPECT_EQ(Prodotto()->currentText(), QStringLiteral("VQP V.Q.P.R.D."));
    EXPECT_EQ(Campo(0)->text() + Campo(1)->text() + Campo(20)->text(), QStringLiteral("00000000123012005"));
    EXPECT_EQ(maschera->NomeMaschera(), QStringLiteral("FRMFATTURA_MOD"));

    Campo(16)->setText(QStringLiteral("220"));
    Campo(17)->setText(QStringLiteral("1220"));
    Salva();
    EXPECT_EQ(script->messaggi, Messaggi{});
    EXPECT_EQ(Fatture(), (QStringList{QStringLiteral("1|1000,00|200,00|1200,00|1|1|1"),
                                      QStringLiteral("2|1000,00|220,00|1220,00|4|1|2")}));
    EXPECT_FALSE(db().EsisteTabella(QStringLiteral("APPO_BOLLE")));
    EXPECT_EQ(Segni(), QStringLiteral("N|N"));

    // La fattura sparita nel frattempo: il messaggio, nessuna riga nuova.
    f.ID_FATTURA = 9;
    Apri(QStringLiteral("M"));
    Salva();
    EXPECT_EQ(script->messaggi, (Messaggi{{QStringLiteral("Nessuna fattura da aggiornare"), StileMsg::Esclamativo,
                                           QString()}}));
    EXPECT_EQ(Fatture().size(), 2);
}

TEST_F(ProvaFrmFattura, RicercaDellaDenominazione)
{
    Fattura(1, QStringLiteral("1"), QStringLiteral("RSSMRA80A01H501U"));
    Fattura(2, QStringLiteral("2"), PartitaIva);  // i produttori vengono prima delle fatture
    db().Execute(QStringLiteral("INSERT INTO PRODUTTORI (CODI_FISC, DENOMINAZIONE) VALUES (?, 'AZIENDA BIANCHI')"),
                 {PartitaIva});
    const MessaggioRegistrato manca{QStringLiteral("Inserire il codice fiscale o la Partita IVA."),
                                    StileMsg::Informazione, QStringLiteral("Produttore")};
    const MessaggioRegistrato nessuna{
        QStringLiteral("Denominazione non esistente con la p.iva o codice fiscale inserito."),
        StileMsg::Informazione, QStringLiteral("Produttore")};
    const struct { const char *codice, *denominazione; QList<MessaggioRegistrato> messaggi; int fuoco; } casi[] = {
        {"  ", "", {manca}, 4},
        {"01234567897", "AZIENDA BIANCHI", {}, 6},
        {"RSSMRA80A01H501U", "CANTINA 1", {}, 6},
        {"X'Y", "", {nessuna}, 5},
    };
    Apri(QStringLiteral("I"));
    for (const auto& c : casi) {
        SCOPED_TRACE(c.codice);
        script->messaggi.clear();
        Campo(5)->clear();
        Campo(4)->setText(QString::fromUtf8(c.codice));
        QTest::mouseClick(maschera->CmdTrovadenominazione, Qt::LeftButton);
        EXPECT_EQ(Campo(5)->text(), QString::fromUtf8(c.denominazione));
        EXPECT_EQ(script->messaggi, c.messaggi);
        EXPECT_EQ(QApplication::focusWidget(), Campo(c.fuoco));
    }
}

}  // namespace
