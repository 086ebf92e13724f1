// L'elenco delle domande del distillatore: i casi della suite comune, poi il
// numero tenuto con il clic sulle caselle, l'ordinamento e le stampe.
#include "deliveries/FrmProduttori_Selezione.h"
#include "support/lista_domande_prova.h"

#include <QHeaderView>

namespace {

using namespace Qt::StringLiterals;

const QString Nessuna = u"Selezionare almeno una domanda."_s;

RamoLista Conferimenti()
{
    const QStringList domande = {u"1/30"_s, u"1/29"_s, u"2/30"_s, u"3/29"_s};
    const QStringList certificati = {u"1/30/"_s, u"1/29/U1"_s, u"1/29/U2"_s, u"2/30/"_s, u"3/29/U3"_s};
    const QStringList stampa = {u"1/29/U1"_s, u"1/29/U2"_s, u"3/29/U3"_s};
    const QString elenco = u"Elenco Titolo"_s;
    return {
        "Conferimenti",
        // Domanda 1 in due articoli (29 del 2005 con due certificati, 30 del
        // 2004 senza), 2 non stampata del 2004, 3 stampata e scaricata con un certificato.
        {u"INSERT INTO DOMANDE_PRODUTTORI (ID_DOMANDA_PRODUTTORE, TIPO_ARTICOLO, DOMANDA, STAM, SCAR, PROG_VERS, "
         u"PROG_INVIO, DATA_CAMP) VALUES (1, '29', '00000000001', 'S', 'N', '1', 0, '2005'),"
         u"(2, '30', '00000000002', 'N', 'N', '1', 0, '2004'), (3, '29', '00000000003', 'S', 'S', '1', 1, '2005'),"
         u"(4, '30', '00000000001', 'S', 'S', '1', 1, '2004')"_s,
         u"INSERT INTO TAB_UTF (iD_UTF, iD_DOMANDA, NUMERO_CERTIFICATO_UTF) VALUES (1, 1, 'U1'), (2, 1, 'U2'),"
         u"(3, 3, 'U3')"_s},
        {u"Frmproduttore_Domanda"_s, u"FrmProduttore_SelezionaProd"_s, u"frmProduttori_CambioDomanda"_s,
         u"frmProduttori_CambioUtf"_s, u"frmProduttori_Scarico"_s},
        [] {
            const Sessione& s = sessione();
            return s.ModoMaschera + u" %1 %2"_s.arg(s.DomandaProduttoreSel.ID_DOMANDA_PRODUTTORE)
                                        .arg(s.UtfSel.NUMERO_CERTIFICATO_UTF);
        },
        [] { return std::make_unique<FrmProduttori_Selezione>(); },
        // "numero/articolo", con "/certificato" se la lista li unisce.
        [](const ModelloLista& m, int i) {
            const bool utf = m.Colonna(u"NUMERO_CERTIFICATO_UTF"_s) >= 0;
            return m.Campo(i, u"DOMANDA"_s).testo().right(1) + u'/' + m.Campo(i, u"TIPO_ARTICOLO"_s).testo() +
                   (utf ? u'/' + m.Campo(i, u"NUMERO_CERTIFICATO_UTF"_s).testo() : QString());
        },
        // La didascalia della griglia e la domanda di sessione, che segue la riga corrente.
        [](ListaSelezione& f) {
            return DidascaliaGriglia(f.Griglia) + u'|' + sessione().DomandaProduttoreSel.DOMANDA.right(1);
        },
        {u"Fra_Nuovo_Mod_Canc_Esci"_s, u"FraSeleziona_Esci"_s, u"FraStampa_Esci"_s, u"FraScarico_Esci"_s},
        2, u"I"_s, 7, 3, u" Domande del distillatore "_s, u"SELECT * FROM TAB_UTF"_s, 1,
        {
            {7, u"Titolo"_s, u"Fra_Nuovo_Mod_Canc_Esci"_s, u"Domande del distillatore|1"_s, false, true, true,
             u""_s, domande},
            {11, u"Titolo"_s, u"FraSeleziona_Esci"_s, elenco + u"|1"_s, false, true, true, u""_s, certificati},
            {12, u"Titolo"_s, u"FraSeleziona_Esci"_s, elenco + u"|1"_s, false, true, true, u""_s, domande},
            {13, u"Titolo"_s, u"FraSeleziona_Esci"_s, elenco + u"|1"_s, false, true, true, u""_s, certificati},
            // Lo scarico tiene le sole stampate della campagna corrente; "Scaricate" resta libera.
            {16, u"Titolo"_s, u"FraScarico_Esci"_s, elenco + u"|1"_s, true, false, true, u"2005"_s,
             {u"1/29"_s, u"3/29"_s}},
            {18, u"Titolo"_s, u"FraStampa_Esci"_s, u"Domande del distillatore da stampare|1"_s, false, true, true,
             u"2005"_s, stampa},
            {19, u"Titolo"_s, u"FraStampa_Esci"_s, elenco + u"|1"_s, false, true, true, u"2005"_s, stampa},
        },
        {
            {7, "00000000001", "", false, false, -1, {u"1/30"_s, u"1/29"_s}},
            {7, "00000000001", "", true, true, -1, {u"1/30"_s}},  // entrambe spuntate: il numero resta
            {7, "", "", true, true, -1, {u"1/30"_s, u"3/29"_s}},
            {7, "00000000001", "", false, false, 4, {u"1/29"_s}},
            {7, "", "", false, true, 3, {u"1/30"_s}},
            {11, "00000000001", "", false, false, -1, {u"1/30/"_s, u"1/29/U1"_s, u"1/29/U2"_s}},
            {7, "1'", "", false, false, -1, {}},
            {11, "\"1'", "", true, false, 4, {}},
        },
        {
            {7, 1, {}, 0, {}, u"Frmproduttore_Domanda I 4 "_s},
            {7, 2, {}, 0, Nessuna, {}},
            {7, 2, {0, 2}, 2, {}, u"Frmproduttore_Domanda M 2 "_s},  // vale la corrente
            {11, 6, {}, 0, Nessuna, {}},
            {11, 6, {1, 2}, 2, {}, u"FrmProduttore_SelezionaProd I 1 U2"_s},  // più righe ammesse
            {12, 6, {3}, 3, {}, u"frmProduttori_CambioDomanda I 3 "_s},
            {13, 6, {4}, 4, {}, u"frmProduttori_CambioUtf I 3 U3"_s},
            {16, 12, {}, 1, {}, u"frmProduttori_Scarico I 3 "_s},  // senza selezione: la riga corrente
        },
        {
            // Riga 1: la domanda 1 del 2005, con certificati; riga 2: la domanda 2, senza.
            {1, RispostaMsg::Si,
             {{u"Operazione non eseguita.\r\nVerificare eventuale presenza di certificati UTF."_s, 48, u""_s}}, 4},
            {2, RispostaMsg::No, {}, 4},
            {2, RispostaMsg::Si, {{u"Operazione correttamente eseguita."_s, 64, u""_s}}, 3},
        },
        {
            {7, 5, u"Frmproduttore_Domanda"_s},
            {11, 8, u"Frmproduttore_Domanda"_s},  // non ne imposta uno: resta il precedente
            {18, 11, u"FRMSELEZIONE_STAMPA"_s},
            {16, 14, u"frmProduttori_Scarico"_s},
        },
    };
}

INSTANTIATE_TEST_SUITE_P(Conferimenti, ListaDomande, ::testing::Values(Conferimenti()));

// Il clic su una casella ricarica subito, senza numero né campagna; la
// ricerca seguente riporta la campagna. L'intestazione ordina l'intera lista.
TEST_P(ListaDomande, ClicSulleCaselleEOrdinamento)
{
    ListaSelezione& f = Apri(7);
    ScegliCampagna(f, 4);
    f.TxtSEL_NumDom[0]->setText(u"00000000003"_s);
    f.Check1[0]->click();
    EXPECT_EQ(f.TxtSEL_NumDom[0]->text(), u""_s);
    const auto ordinate = [this] {
        QStringList r = Righe();
        r.sort();
        return r;
    };
    EXPECT_EQ(ordinate(), (QStringList{u"1/29"_s, u"1/30"_s, u"3/29"_s}));
    f.Check1[1]->click();
    EXPECT_EQ(ordinate(), (QStringList{u"1/30"_s, u"3/29"_s}));
    f.Cmddati[0]->click();
    EXPECT_EQ(Righe(), QStringList{u"3/29"_s});
    emit f.Griglia->horizontalHeader()->sectionClicked(f.Data->Colonna(u"TIPO_ARTICOLO"_s));
    EXPECT_EQ(Righe().mid(0, 2), (QStringList{u"1/29"_s, u"3/29"_s}));
    EXPECT_EQ(Righe().size(), 4);
    // Scarico su una lista vuota: non si apre nulla.
    Apri(16).TxtSEL_NumDom[0]->setText(u"00000000002"_s);
    lista->Cmddati_Click(0);
    lista->Cmddati_Click(12);
    EXPECT_EQ(finte->aperte, QStringList{});
    EXPECT_EQ(script->messaggi, Messaggi{});
}

// La prima riga non ha produttori legati: le due stampe lo dicono, ciascuna
// con il suo testo, la maschera resta e nulla si segna.
TEST_P(ListaDomande, StampeSenzaProduttori)
{
    script->AccettaMessaggiSenzaRisposta();
    for (const auto& [codice, testo] :
         {std::pair{18, u"Non ci sono record da stampare."_s}, {19, u"Non ci sono record da stampare. "_s}}) {
        SCOPED_TRACE(codice);
        ListaSelezione& f = Apri(codice);
        f.show();
        script->messaggi.clear();
        Seleziona({0}, 0);
        f.Cmddati_Click(9);
        ASSERT_EQ(script->messaggi.size(), 1);
        EXPECT_EQ(script->messaggi[0].testo, testo);
        EXPECT_TRUE(f.isVisible());
    }
    EXPECT_EQ(::Righe(db(), u"SELECT STAM FROM DOMANDE_PRODUTTORI ORDER BY 1"_s),
              (QStringList{u"N"_s, u"S"_s, u"S"_s, u"S"_s}));
}

}  // namespace
