// L'elenco delle domande del ramo fatture nei suoi cinque lavori: apertura,
// ricerca, regole di selezione, consegna alla maschera seguente, cancellazione,
// controllo delle bolle, aiuto, e il menu che cambia il lavoro sotto la lista.
#include "common/aiuto.h"
#include "invoices/FrmSelezione.h"
#include "invoices/registra_liste_domande.h"
#include "shell/FrmMenu.h"
#include "shell/registro_maschere.h"
#include "support/prova.h"
#include "support/maschere_finte.h"

#include <QAction>
#include <QGroupBox>

namespace {

using namespace Qt::StringLiterals;

const QString Log = u" FrmSeleziona CmdDATI_Click"_s;

class ListaFatture : public ProvaConDatabase {
protected:
    void SetUp() override
    {
        ProvaConDatabase::SetUp();
        AnnullaRegistrazioni();
        // 1/01 stampata con due fatture (la seconda con bolle che non
        // tornano), 2/01 del 2004 senza fatture, 3/02 con una fattura senza
        // bolle, 1/02 con una fattura che torna solo in singola precisione.
        for (const char* sql : {
                 "INSERT INTO DOMANDE (ID_DOMANDA, DOMANDA, PROGRESSIVO, STAM, SCAR, TIPO_ARTICOLO, ID_VARIETA, "
                 "PROG_VERS, PROG_INVIO, DATA_CAMP) VALUES (1, '00000000001', '01', 'S', 'N', '29', 1, '1', 0, '2005'),"
                 "(2, '00000000002', '01', 'N', 'N', '30', 1, '1', 0, '2004'),"
                 "(3, '00000000003', '02', 'S', 'S', '29', 1, '1', 2, '2005'),"
                 "(4, '00000000001', '02', 'S', 'S', '29', 1, '1', 1, '2005')",
                 "INSERT INTO FATTURE (ID_FATTURA, ID_DOMANDA, DENOMINAZIONE, NUME_FATT, QTA_LAVO, ID_LAVORAZIONE) "
                 "VALUES (1, 1, 'CANTINA D''ANNA', '10', '100,0000', 1), (2, 1, 'CANTINA NOVE', '9', '50,5000', 1),"
                 "(3, 3, 'CANTINA UNO', '1', '10,0000', 1), (4, 4, 'CANTINA PARI', '7', '1000,0001', 1)",
                 "INSERT INTO BOLLE (FK_ID_FATTURA, QUANTITA_PRODOTTO) VALUES (1, '60,0000'), (1, '40,0000'),"
                 "(2, '50,4999'), (4, '1000')"})
            db().Execute(QString::fromUtf8(sql));
        help = ImpostaMostraHelp([this](const QString& nome) { aiuti << nome; });
        finte = std::make_unique<MaschereFinte>(
            QStringList{u"FrmDomanda"_s, u"FrmSelezionaFatture"_s, u"frmCambioDomanda"_s, u"frmScarico"_s}, [] {
                const Sessione& s = sessione();
                return s.ModoMaschera + u" %1 %2/%3 %4"_s.arg(s.DomandaSel.ID_DOMANDA)
                                            .arg(s.DomandaSel.DOMANDA, s.DomandaSel.PROGRESSIVO, s.DomandaSel.CAMPAGNA);
            });
    }
    void TearDown() override
    {
        lista.reset();
        FrmMenu::Scarica();
        ImpostaMostraHelp(help);
        AnnullaRegistrazioni();
        ProvaConDatabase::TearDown();
    }

    FrmSelezione& Apri(int codice, const QString& titolo = u" Domande "_s)
    {
        db();
        sessione().OperazioneCorrente = codice;
        sessione().TitoloMaschera = titolo;
        lista.reset();  // una sola istanza alla volta, come nel programma
        lista = std::make_unique<FrmSelezione>();
        attiva = lista.get();
        return *lista;
    }
    // Le righe della lista come "numero/progressivo".
    QStringList Righe()
    {
        QStringList r;
        for (int i = 0; i < attiva->Data->rowCount(); ++i)
            r << attiva->Data->Campo(i, u"DOMANDA"_s).testo().right(1) + u'/' +
                     attiva->Data->Campo(i, u"PROGRESSIVO"_s).testo();
        return r;
    }
    // Seleziona le righe date (posizioni) e porta la corrente su "corrente".
    void Seleziona(const QList<int>& righe, int corrente) { SelezionaRighe(attiva->Griglia, righe, corrente, 1); }
    QString Cornice() const
    {
        for (const char* n : {"Fradomande", "Frafatture", "FrasTAMPA", "FraScarico"})
            if (!attiva->Cornice(QString::fromLatin1(n))->isHidden())
                return QString::fromLatin1(n);
        return {};
    }

    std::unique_ptr<FrmSelezione> lista;
    FrmSelezione* attiva = nullptr;
    std::unique_ptr<MaschereFinte> finte;
    QStringList aiuti;
    FunzioneHelp help;
};

TEST_F(ListaFatture, AperturaPerCodice)
{
    const struct {
        int codice;
        QString titolo, cornice, etichetta;
        int lunghezza;
        bool stampate, abilitate;
        QString campagna;
        QStringList righe;
    } casi[] = {
        {0, u" Domande "_s, u"Fradomande"_s, u"N° Progressivo "_s, 2, false, true, u""_s,
         {u"1/01"_s, u"1/02"_s, u"2/01"_s, u"3/02"_s}},
        // Il join esterno: una riga per fattura, una per la domanda senza.
        {1, u" Fatture "_s, u"Frafatture"_s, u"N° Fattura "_s, 15, false, true, u""_s,
         {u"1/01"_s, u"1/01"_s, u"1/02"_s, u"2/01"_s, u"3/02"_s}},
        {3, u" Cambio Num. Domande "_s, u"Frafatture"_s, u"N° Progressivo "_s, 2, false, true, u""_s,
         {u"1/01"_s, u"1/02"_s, u"2/01"_s, u"3/02"_s}},
        // Scarico e stampe si aprono sulla campagna corrente; lo scarico solo sulle stampate.
        {4, u" Scarico della Domanda "_s, u"FraScarico"_s, u"N° Progressivo "_s, 2, true, false, u"2005"_s,
         {u"1/01"_s, u"1/02"_s, u"3/02"_s}},
        {5, u"Stampa Domanda "_s, u"FrasTAMPA"_s, u"N° Progressivo "_s, 2, false, true, u"2005"_s,
         {u"1/01"_s, u"1/02"_s, u"3/02"_s}},
    };
    for (const auto& c : casi) {
        SCOPED_TRACE(c.codice);
        FrmSelezione& f = Apri(c.codice, c.titolo);
        EXPECT_EQ(f.windowTitle(), u"Elenco "_s + c.titolo);
        EXPECT_EQ(Cornice(), c.cornice);
        EXPECT_EQ(f.LblSEL_NumDom[1]->text(), c.etichetta);
        EXPECT_EQ(f.TxtSEL_NumDom[1]->maxLength(), c.lunghezza);
        EXPECT_EQ(f.Check1[0]->isChecked(), c.stampate);
        EXPECT_EQ(f.Check1[0]->isEnabled(), c.abilitate);
        EXPECT_EQ(f.Check1[1]->isEnabled(), c.abilitate);
        EXPECT_EQ(f.CmbDomAnnualita->currentText(), c.campagna);
        EXPECT_EQ(sessione().CampagnaSelezionata, c.campagna);
        EXPECT_EQ(Righe(), c.righe);
        f.close();
        EXPECT_EQ(sessione().CampagnaSelezionata, u""_s);
    }
    EXPECT_EQ(script->messaggi, Messaggi{});
}

TEST_F(ListaFatture, Ricerca)
{
    const struct {
        int codice;
        const char *numero, *secondo;
        bool stampate, scaricate;
        int campagna;  // voce della combo scelta, -1 nessuna
        QStringList righe;
    } casi[] = {
        {0, "00000000001", "", false, false, -1, {u"1/01"_s, u"1/02"_s}},
        {0, "00000000001", "02", false, false, -1, {u"1/02"_s}},
        {0, "1", "", false, false, -1, {}},  // il numero si cerca per intero
        {0, "", "01", false, false, -1, {u"1/01"_s, u"2/01"_s}},
        {1, "", "9", false, false, -1, {u"1/01"_s}},       // il secondo campo è il numero di fattura
        {1, "00000000001", " 10 ", false, false, -1, {u"1/01"_s}},
        {0, "00000000002", "01", true, true, -1, {u"1/02"_s, u"3/02"_s}},  // entrambe spuntate: il numero cade
        {0, "", "", true, false, -1, {u"1/01"_s, u"1/02"_s, u"3/02"_s}},
        {0, "", "", false, true, -1, {u"1/02"_s, u"3/02"_s}},
        {0, "", "", false, false, 3, {u"2/01"_s}},           // 2004
        {1, "", "", false, true, 4, {u"1/02"_s, u"3/02"_s}},  // 2005 con FATTURE unita
        {0, "1'", "0'1", false, false, -1, {}},               // apostrofi: nessun errore
        {1, "\"1", "1'0", false, false, -1, {}},
    };
    for (const auto& c : casi) {
        SCOPED_TRACE(std::string(c.numero) + "|" + c.secondo);
        FrmSelezione& f = Apri(c.codice);
        f.TxtSEL_NumDom[0]->setText(QString::fromUtf8(c.numero));
        f.TxtSEL_NumDom[1]->setText(QString::fromUtf8(c.secondo));
        f.Check1[0]->setChecked(c.stampate);
        f.Check1[1]->setChecked(c.scaricate);
        if (c.campagna >= 0) {
            f.CmbDomAnnualita->setCurrentIndex(c.campagna);
            emit f.CmbDomAnnualita->activated(c.campagna);
        } else {
            f.Cmddati[0]->click();
        }
        EXPECT_EQ(Righe(), c.righe);
        EXPECT_EQ(script->messaggi, Messaggi{});
        f.close();
    }
}

TEST_F(ListaFatture, TastiDeiCampiDiRicercaEInvio)
{
    FrmSelezione& f = Apri(1, u" Fatture "_s);
    f.show();
    QTest::keyClicks(f.TxtSEL_NumDom[0], u"1a'2,3"_s);
    EXPECT_EQ(f.TxtSEL_NumDom[0]->text(), u"12,3"_s);
    EXPECT_EQ(script->beep, 2);
    // Invio cerca.
    QTest::keyClicks(f.TxtSEL_NumDom[1], u"9"_s);
    QTest::keyClick(f.TxtSEL_NumDom[1], Qt::Key_Return);
    EXPECT_EQ(Righe(), QStringList{});
    f.TxtSEL_NumDom[0]->clear();
    QTest::keyClick(f.TxtSEL_NumDom[1], Qt::Key_Enter);
    EXPECT_EQ(Righe(), QStringList{u"1/01"_s});
}

TEST_F(ListaFatture, RegoleDiSelezioneEConsegna)
{
    const QString nessuna = u"Selezionare almeno una domanda."_s;
    const struct { int codice, pulsante; QList<int> selezionate; int corrente; QString messaggio, aperta; } casi[] = {
        {1, 4, {}, 0, nessuna, {}},
        {1, 4, {0, 3}, 3, u"Selezionare una domanda alla volta."_s, {}},
        {1, 4, {4}, 4, {}, u"FrmSelezionaFatture I 3 00000000003/02 2005"_s},
        {3, 4, {1}, 1, {}, u"frmCambioDomanda I 4 00000000001/02 2005"_s},
        {0, 2, {0, 2}, 2, {}, u"FrmDomanda M 2 00000000002/01 2004"_s},  // Modifica: vale la corrente
        {0, 2, {}, 2, nessuna, {}},
        {0, 1, {}, 0, {}, u"FrmDomanda I 0 / "_s},  // Nuovo non guarda la selezione
        {5, 15, {}, 0, u"Selezionare una domanda."_s, {}},
        {5, 15, {0, 1}, 1, u"Selezionare una sola domanda."_s, {}},
        {5, 8, {0, 1}, 1, u"Selezionare una domanda alla volta."_s, {}},
        {4, 10, {}, 0, nessuna, {}},
        // Scarico di una domanda le cui bolle tornano solo in singola precisione.
        {4, 10, {1}, 1, {}, u"frmScarico I 4 00000000001/02 2005"_s},
    };
    for (const auto& c : casi) {
        SCOPED_TRACE(u"%1/%2 %3"_s.arg(c.codice).arg(c.pulsante).arg(c.selezionate.size()).toStdString());
        script->AccettaMessaggiSenzaRisposta();
        sessione().DomandaSel = {};
        FrmSelezione& f = Apri(c.codice, u"Titolo"_s);
        script->messaggi.clear();
        finte->aperte.clear();
        Seleziona(c.selezionate, c.corrente);
        f.Cmddati_Click(c.pulsante);
        const Messaggi attesi = c.messaggio.isEmpty() ? Messaggi{} : Messaggi{{c.messaggio, 64, u"Titolo"_s}};
        EXPECT_EQ(script->messaggi, attesi);
        EXPECT_EQ(finte->aperte, c.aperta.isEmpty() ? QStringList{} : QStringList{c.aperta});
        f.close();
    }
}

TEST_F(ListaFatture, DopoLaMascheraSeguenteLaListaSiRicostruisce)
{
    FrmSelezione& f = Apri(1, u" Fatture "_s);
    finte->azione = [] { Db().Execute(u"UPDATE DOMANDE SET STAM = 'N' WHERE ID_DOMANDA = 3"_s); };
    Seleziona({4}, 4);
    f.Cmddati_Click(4);
    ASSERT_EQ(finte->aperte.size(), 1);
    EXPECT_EQ(f.Data->Campo(4, u"STAM"_s).testo(), u"N"_s);
    EXPECT_EQ(f.RigheSelezionate(), 0);
    // FatturaSel segue la riga sotto il codice 1, per nome di colonna.
    EXPECT_EQ(sessione().FatturaSel.DENOMINAZIONE + u'|' + sessione().FatturaSel.NUME_FATT, u"CANTINA UNO|1"_s);
    EXPECT_EQ(sessione().FatturaSel.ID_DOMANDA, 3);
}

TEST_F(ListaFatture, Cancellazione)
{
    const QString domanda = u"Confermi la cancellazione della domanda : "_s;
    const struct { int riga, risposta; Messaggi dopo; int restano; } casi[] = {
        {0, RispostaMsg::Si, {{u"Operazione non eseguita, verificare eventuale presenza di fatture."_s, 48, u""_s}}, 4},
        {2, RispostaMsg::No, {}, 4},
        {2, RispostaMsg::Si, {{u"Operazione correttamente eseguita."_s, 64, u""_s}}, 3},
    };
    for (const auto& c : casi) {
        SCOPED_TRACE(c.riga);
        FrmSelezione& f = Apri(0);
        const QString numero = f.Data->Campo(c.riga, u"DOMANDA"_s).testo();
        script->messaggi.clear();
        script->Rispondi(c.risposta);
        if (!c.dopo.isEmpty())
            script->Rispondi(RispostaMsg::OK);
        Seleziona({c.riga}, c.riga);
        f.Cmddati_Click(6);
        const Messaggi attesi = Messaggi{{domanda + numero, 4 + 256 + 64, u" Domande "_s}} + c.dopo;
        EXPECT_EQ(script->messaggi, attesi);
        EXPECT_EQ(Righe().size(), c.restano);
        f.close();
    }
    EXPECT_EQ(::Righe(db(), u"SELECT COUNT(*) FROM FATTURE"_s), QStringList{u"4"_s});
}

TEST_F(ListaFatture, VerificaCongruenzaQuantitaProdotto)
{
    const QString incongruenze = u"La domanda presenta incogruenze tra la somma\r\ndel prodotto distillato delle "
                                 u"fatture e la somma del prodotto delle bolle di consegna."_s;
    const struct { int riga; bool esito; Messaggi messaggi; } casi[] = {
        {0, false, {{incongruenze + u"\r\n - CANTINA NOVE fattura n° 9"_s, 64, u"Elenco  Domande "_s}}},
        {1, true, {}},  // 1000,0001 e 1000 sono uguali in singola precisione
        {3, false,
         {{MessaggioLogErr(94, u"Utilizzo non valido di Null"_s, u"FrmSelezione VerificaCongruenzaQuantitaProdotto"_s),
           48, u"Gestione Errori"_s}}},
        {2, true, {}},  // nessuna fattura
    };
    FrmSelezione& f = Apri(0);
    script->AccettaMessaggiSenzaRisposta();
    for (const auto& c : casi) {
        SCOPED_TRACE(c.riga);
        script->messaggi.clear();
        Seleziona({c.riga}, c.riga);
        EXPECT_EQ(f.VerificaCongruenzaQuantitaProdotto(), c.esito);
        EXPECT_EQ(script->messaggi, c.messaggi);
    }
}

TEST_F(ListaFatture, UnGuastoPassaDalRegistroELaMascheraRestaAperta)
{
    script->AccettaMessaggiSenzaRisposta();
    const struct { int codice, pulsante; const char* guasto; QString etichetta; } casi[] = {
        // Senza il report nella cartella del programma la stampa fallisce
        // dentro STAMPA: la domanda non si segna stampata.
        {5, 8, "UPDATE DOMANDE SET STAM = 'N' WHERE ID_DOMANDA = 1", u"FrmSelezioneLOAD Stampa"_s},
        {0, 0, "DROP TABLE VARIETA", Log},
    };
    for (const auto& c : casi) {
        SCOPED_TRACE(c.codice);
        FrmSelezione& f = Apri(c.codice);
        f.show();
        script->messaggi.clear();
        if (*c.guasto)
            db().Execute(QString::fromLatin1(c.guasto));
        Seleziona({0}, 0);
        f.Cmddati_Click(c.pulsante);
        ASSERT_EQ(script->messaggi.size(), 1);
        EXPECT_TRUE(script->messaggi[0].testo.endsWith(u"Nome Funzione \t: "_s + c.etichetta));
        EXPECT_TRUE(f.isVisible());
        f.close();
    }
    EXPECT_EQ(::Righe(db(), u"SELECT STAM FROM DOMANDE WHERE ID_DOMANDA = 1"_s), QStringList{u"N"_s});
    EXPECT_EQ(::Righe(db(), u"SELECT COUNT(*) FROM LOGERR WHERE DESC_APPL = ?"_s, {Log}), QStringList{u"1"_s});
}

TEST_F(ListaFatture, Aiuto)
{
    // F1 sulla griglia mostra l'aiuto due volte; il pulsante una.
    const struct { int codice, pulsante; QString argomento; } casi[] = {
        {0, 13, u"FRMSELEZIONE_DOMA"_s},
        {1, 11, u"FRMSELEZIONE_FATTU"_s},
        {3, 11, u"FRMSELEZIONE_CAMBIO"_s},
        {4, 14, u"frmScarico"_s},
        {5, 12, u"FRMSELEZIONE_STAMPA"_s},
        // Sotto il codice 1 il pulsante della cornice delle domande non imposta l'argomento.
        {1, 13, u"FRMSELEZIONE_FATTU"_s},
    };
    for (const auto& c : casi) {
        SCOPED_TRACE(c.codice);
        FrmSelezione& f = Apri(c.codice);
        f.show();
        aiuti.clear();
        QTest::keyClick(f.Griglia, Qt::Key_F1);
        f.Cmddati_Click(c.pulsante);
        EXPECT_EQ(aiuti, (QStringList{c.argomento, c.argomento, c.argomento}));
        f.close();
    }
}

// "Fatture" con la lista delle domande aperta: la stessa maschera, con il
// lavoro cambiato sotto; le cornici restano quelle dell'apertura.
TEST_F(ListaFatture, IlMenuCambiaIlLavoroSottoLaListaAperta)
{
    RegistraListeDomande();
    finte = std::make_unique<MaschereFinte>(QStringList{u"FrmSelezionaFatture"_s},
                                            [] { return sessione().DomandaSel.DOMANDA; });
    FrmMenu& menu = FrmMenu::Carica();
    menu.findChild<QAction*>(u"mnuDist_1"_s)->trigger();
    auto* f = qobject_cast<FrmSelezione*>(menu.MascheraAperta(u"FrmSelezione"_s));
    ASSERT_NE(f, nullptr);
    lista.reset();
    attiva = f;
    EXPECT_EQ(f->Data->rowCount(), 4);
    f->CmbDomAnnualita->setCurrentIndex(4);
    emit f->CmbDomAnnualita->activated(4);
    EXPECT_EQ(sessione().CampagnaSelezionata, u"2005"_s);

    menu.findChild<QAction*>(u"mnuDist_2"_s)->trigger();
    EXPECT_EQ(menu.MascheraAperta(u"FrmSelezione"_s), f);
    EXPECT_EQ(f->windowTitle(), u"Elenco  Domande "_s);
    f->Cmddati_Click(0);
    EXPECT_EQ(f->Data->rowCount(), 4);  // 2005 con le fatture unite: 1/01 due volte
    // "Nuovo" ora segue il codice 1: una riga, e si aprono le fatture.
    Seleziona({2}, 2);
    f->Cmddati_Click(1);
    EXPECT_EQ(finte->aperte, QStringList{u"FrmSelezionaFatture 00000000001"_s});

    f->Cmddati_Click(3);  // Esci
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(menu.MascheraAperta(u"FrmSelezione"_s), nullptr);
    EXPECT_EQ(sessione().CampagnaSelezionata, u""_s);
}

}  // namespace
