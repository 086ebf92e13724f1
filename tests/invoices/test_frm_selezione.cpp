// L'elenco delle domande del ramo fatture: i casi della suite comune, poi il
// controllo delle bolle, i guasti e il menu che cambia il lavoro sotto la lista.
#include "invoices/FrmSelezione.h"
#include "invoices/registra_liste_domande.h"
#include "shell/FrmMenu.h"
#include "support/lista_domande_prova.h"

#include <QAction>
#include <QLabel>
#include <QScopeGuard>

namespace {

using namespace Qt::StringLiterals;

const QString Log = u" FrmSeleziona CmdDATI_Click"_s;
const QString Nessuna = u"Selezionare almeno una domanda."_s;

RamoLista Fatture()
{
    return {
        "Fatture",
        // 1/01 stampata con due fatture (la seconda con bolle che non
        // tornano), 2/01 del 2004 senza fatture, 3/02 con una fattura senza
        // bolle, 1/02 con una fattura che torna solo in singola precisione.
        {u"INSERT INTO DOMANDE (ID_DOMANDA, DOMANDA, PROGRESSIVO, STAM, SCAR, TIPO_ARTICOLO, ID_VARIETA, PROG_VERS, "
         u"PROG_INVIO, DATA_CAMP) VALUES (1, '00000000001', '01', 'S', 'N', '29', 1, '1', 0, '2005'),"
         u"(2, '00000000002', '01', 'N', 'N', '30', 1, '1', 0, '2004'),"
         u"(3, '00000000003', '02', 'S', 'S', '29', 1, '1', 2, '2005'),"
         u"(4, '00000000001', '02', 'S', 'S', '29', 1, '1', 1, '2005')"_s,
         u"INSERT INTO FATTURE (ID_FATTURA, ID_DOMANDA, DENOMINAZIONE, NUME_FATT, QTA_LAVO, ID_LAVORAZIONE) "
         u"VALUES (1, 1, 'CANTINA D''ANNA', '10', '100,0000', 1), (2, 1, 'CANTINA NOVE', '9', '50,5000', 1),"
         u"(3, 3, 'CANTINA UNO', '1', '10,0000', 1), (4, 4, 'CANTINA PARI', '7', '1000,0001', 1)"_s,
         u"INSERT INTO BOLLE (FK_ID_FATTURA, QUANTITA_PRODOTTO) VALUES (1, '60,0000'), (1, '40,0000'),"
         u"(2, '50,4999'), (4, '1000')"_s},
        {u"FrmDomanda"_s, u"FrmSelezionaFatture"_s, u"frmCambioDomanda"_s, u"frmScarico"_s},
        [] {
            const Sessione& s = sessione();
            return s.ModoMaschera + u" %1 %2/%3 %4"_s.arg(s.DomandaSel.ID_DOMANDA)
                                        .arg(s.DomandaSel.DOMANDA, s.DomandaSel.PROGRESSIVO, s.DomandaSel.CAMPAGNA);
        },
        [] { return std::make_unique<FrmSelezione>(); },
        // "numero/progressivo"
        [](const ModelloLista& m, int i) {
            return m.Campo(i, u"DOMANDA"_s).testo().right(1) + u'/' + m.Campo(i, u"PROGRESSIVO"_s).testo();
        },
        // Il secondo campo di ricerca: etichetta e lunghezza.
        [](ListaSelezione& f) { return f.LblSEL_NumDom[1]->text() + QString::number(f.TxtSEL_NumDom[1]->maxLength()); },
        {u"Fradomande"_s, u"Frafatture"_s, u"FrasTAMPA"_s, u"FraScarico"_s},
        1, u"-"_s, 0, 6, u" Domande "_s, u"SELECT * FROM FATTURE"_s, 2,
        {
            {0, u" Domande "_s, u"Fradomande"_s, u"N° Progressivo 2"_s, false, true, true, u""_s,
             {u"1/01"_s, u"1/02"_s, u"2/01"_s, u"3/02"_s}},
            // Il join esterno: una riga per fattura, una per la domanda senza.
            {1, u" Fatture "_s, u"Frafatture"_s, u"N° Fattura 15"_s, false, true, true, u""_s,
             {u"1/01"_s, u"1/01"_s, u"1/02"_s, u"2/01"_s, u"3/02"_s}},
            {3, u" Cambio Num. Domande "_s, u"Frafatture"_s, u"N° Progressivo 2"_s, false, true, true, u""_s,
             {u"1/01"_s, u"1/02"_s, u"2/01"_s, u"3/02"_s}},
            // Scarico e stampe si aprono sulla campagna corrente; lo scarico solo sulle stampate.
            {4, u" Scarico della Domanda "_s, u"FraScarico"_s, u"N° Progressivo 2"_s, true, false, false, u"2005"_s,
             {u"1/01"_s, u"1/02"_s, u"3/02"_s}},
            {5, u"Stampa Domanda "_s, u"FrasTAMPA"_s, u"N° Progressivo 2"_s, false, true, true, u"2005"_s,
             {u"1/01"_s, u"1/02"_s, u"3/02"_s}},
        },
        {
            {0, "00000000001", "", false, false, -1, {u"1/01"_s, u"1/02"_s}},
            {0, "00000000001", "02", false, false, -1, {u"1/02"_s}},
            {0, "1", "", false, false, -1, {}},  // il numero si cerca per intero
            {0, "", "01", false, false, -1, {u"1/01"_s, u"2/01"_s}},
            {1, "00000000001", " 10 ", false, false, -1, {u"1/01"_s}},  // il secondo campo è il numero di fattura
            {0, "00000000002", "01", true, true, -1, {u"1/02"_s, u"3/02"_s}},  // entrambe spuntate: il numero cade
            {0, "", "", true, false, -1, {u"1/01"_s, u"1/02"_s, u"3/02"_s}},
            {0, "", "", false, true, -1, {u"1/02"_s, u"3/02"_s}},
            {0, "", "", false, false, 3, {u"2/01"_s}},           // 2004
            {1, "", "", false, true, 4, {u"1/02"_s, u"3/02"_s}},  // 2005 con FATTURE unita
            {0, "1'", "0'1", false, false, -1, {}},               // apostrofi: nessun errore
            {1, "\"1", "1'0", false, false, -1, {}},
        },
        {
            {1, 4, {}, 0, Nessuna, {}},
            {1, 4, {0, 3}, 3, u"Selezionare una domanda alla volta."_s, {}},
            {1, 4, {4}, 4, {}, u"FrmSelezionaFatture I 3 00000000003/02 2005"_s},
            {3, 4, {1}, 1, {}, u"frmCambioDomanda I 4 00000000001/02 2005"_s},
            {0, 2, {0, 2}, 2, {}, u"FrmDomanda M 2 00000000002/01 2004"_s},  // Modifica: vale la corrente
            {0, 2, {}, 2, Nessuna, {}},
            {0, 1, {}, 0, {}, u"FrmDomanda I 0 / "_s},  // Nuovo non guarda la selezione
            {5, 15, {}, 0, u"Selezionare una domanda."_s, {}},
            {5, 15, {0, 1}, 1, u"Selezionare una sola domanda."_s, {}},
            {5, 8, {0, 1}, 1, u"Selezionare una domanda alla volta."_s, {}},
            {4, 10, {}, 0, Nessuna, {}},
            // Scarico di una domanda le cui bolle tornano solo in singola precisione.
            {4, 10, {1}, 1, {}, u"frmScarico I 4 00000000001/02 2005"_s},
        },
        {
            {0, RispostaMsg::Si, {{u"Operazione non eseguita, verificare eventuale presenza di fatture."_s, 48, u""_s}},
             4},
            {2, RispostaMsg::No, {}, 4},
            {2, RispostaMsg::Si, {{u"Operazione correttamente eseguita."_s, 64, u""_s}}, 3},
        },
        {
            {0, 13, u"FRMSELEZIONE_DOMA"_s},
            {3, 11, u"FRMSELEZIONE_CAMBIO"_s},
            {4, 14, u"frmScarico"_s},
            {5, 12, u"FRMSELEZIONE_STAMPA"_s},
            {1, 11, u"FRMSELEZIONE_FATTU"_s},
            // Sotto il codice 1 il pulsante della cornice delle domande non imposta l'argomento.
            {1, 13, u"FRMSELEZIONE_FATTU"_s},
        },
    };
}

INSTANTIATE_TEST_SUITE_P(Fatture, ListaDomande, ::testing::Values(Fatture()));

FrmSelezione& Frm(ListaSelezione& l) { return static_cast<FrmSelezione&>(l); }

TEST_P(ListaDomande, DopoLaMascheraSeguenteLaListaSiRicostruisce)
{
    ListaSelezione& f = Apri(1, u" Fatture "_s);
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

TEST_P(ListaDomande, VerificaCongruenzaQuantitaProdotto)
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
    FrmSelezione& f = Frm(Apri(0, u" Domande "_s));
    script->AccettaMessaggiSenzaRisposta();
    for (const auto& c : casi) {
        SCOPED_TRACE(c.riga);
        script->messaggi.clear();
        Seleziona({c.riga}, c.riga);
        EXPECT_EQ(f.VerificaCongruenzaQuantitaProdotto(), c.esito);
        EXPECT_EQ(script->messaggi, c.messaggi);
    }
}

TEST_P(ListaDomande, UnGuastoPassaDalRegistroELaMascheraRestaAperta)
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
        ListaSelezione& f = Apri(c.codice);
        f.show();
        script->messaggi.clear();
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

// "Fatture" con la lista delle domande aperta: la stessa maschera, con il
// lavoro cambiato sotto; le cornici restano quelle dell'apertura.
TEST_P(ListaDomande, IlMenuCambiaIlLavoroSottoLaListaAperta)
{
    const auto scarica = qScopeGuard([] { FrmMenu::Scarica(); });
    RegistraListeDomande();
    finte = std::make_unique<MaschereFinte>(QStringList{u"FrmSelezionaFatture"_s},
                                            [] { return sessione().DomandaSel.DOMANDA; });
    FrmMenu& menu = FrmMenu::Carica();
    menu.findChild<QAction*>(u"mnuDist_1"_s)->trigger();
    auto* f = qobject_cast<FrmSelezione*>(menu.MascheraAperta(u"FrmSelezione"_s));
    ASSERT_NE(f, nullptr);
    EXPECT_EQ(f->Data->rowCount(), 4);
    ScegliCampagna(*f, 4);
    EXPECT_EQ(sessione().CampagnaSelezionata, u"2005"_s);

    menu.findChild<QAction*>(u"mnuDist_2"_s)->trigger();
    EXPECT_EQ(menu.MascheraAperta(u"FrmSelezione"_s), f);
    EXPECT_EQ(f->windowTitle(), u"Elenco  Domande "_s);
    f->Cmddati_Click(0);
    EXPECT_EQ(f->Data->rowCount(), 4);  // 2005 con le fatture unite: 1/01 due volte
    // "Nuovo" ora segue il codice 1: una riga, e si aprono le fatture.
    SelezionaRighe(f->Griglia, {2}, 2, 1);
    f->Cmddati_Click(1);
    EXPECT_EQ(finte->aperte, QStringList{u"FrmSelezionaFatture 00000000001"_s});

    f->Cmddati_Click(3);  // Esci
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(menu.MascheraAperta(u"FrmSelezione"_s), nullptr);
    EXPECT_EQ(sessione().CampagnaSelezionata, u""_s);
}

}  // namespace
