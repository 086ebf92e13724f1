// L'elenco delle domande del distillatore: apertura per codice, ricerca con
// il numero tenuto, ricarica al clic sulle caselle, consegna alle maschere
// seguenti, cancellazione con il controllo dei certificati, aiuto.
#include "common/aiuto.h"
#include "deliveries/FrmProduttori_Selezione.h"
#include "shell/registro_maschere.h"
#include "support/prova.h"
#include "support/maschere_finte.h"

#include <QGroupBox>
#include <QHeaderView>

namespace {

using namespace Qt::StringLiterals;

class ListaConferimenti : public ProvaConDatabase {
protected:
    void SetUp() override
    {
        ProvaConDatabase::SetUp();
        AnnullaRegistrazioni();
        // Domanda 1 in due articoli (29 del 2005 con due certificati, 30 del
        // 2004 senza), 2 non stampata del 2004, 3 stampata e scaricata con un certificato.
        for (const char* sql : {
                 "INSERT INTO DOMANDE_PRODUTTORI (ID_DOMANDA_PRODUTTORE, TIPO_ARTICOLO, DOMANDA, STAM, SCAR, "
                 "PROG_VERS, PROG_INVIO, DATA_CAMP) VALUES (1, '29', '00000000001', 'S', 'N', '1', 0, '2005'),"
                 "(2, '30', '00000000002', 'N', 'N', '1', 0, '2004'), (3, '29', '00000000003', 'S', 'S', '1', 1, '2005'),"
                 "(4, '30', '00000000001', 'S', 'S', '1', 1, '2004')",
                 "INSERT INTO TAB_UTF (iD_UTF, iD_DOMANDA, NUMERO_CERTIFICATO_UTF) VALUES (1, 1, 'U1'), (2, 1, 'U2'),"
                 "(3, 3, 'U3')"})
            db().Execute(QString::fromUtf8(sql));
        help = ImpostaMostraHelp([this](const QString& nome) { aiuti << nome; });
        finte = std::make_unique<MaschereFinte>(
            QStringList{u"Frmproduttore_Domanda"_s, u"FrmProduttore_SelezionaProd"_s, u"frmProduttori_CambioDomanda"_s,
                        u"frmProduttori_CambioUtf"_s, u"frmProduttori_Scarico"_s},
            [] {
                const Sessione& s = sessione();
                return s.ModoMaschera + u" %1 %2"_s.arg(s.DomandaProduttoreSel.ID_DOMANDA_PRODUTTORE)
                                            .arg(s.UtfSel.NUMERO_CERTIFICATO_UTF);
            });
    }
    void TearDown() override
    {
        lista.reset();
        ImpostaMostraHelp(help);
        AnnullaRegistrazioni();
        ProvaConDatabase::TearDown();
    }

    FrmProduttori_Selezione& Apri(int codice, const QString& titolo = u" Domande del distillatore "_s)
    {
        db();
        sessione().OperazioneCorrente = codice;
        sessione().TitoloMaschera = titolo;
        lista.reset();
        lista = std::make_unique<FrmProduttori_Selezione>();
        return *lista;
    }
    // Le righe come "numero/articolo" (con "/certificato" se la lista li unisce).
    QStringList Righe(bool ordinate = false)
    {
        ModelloLista* m = lista->Data;
        const bool certificati = m->Colonna(u"NUMERO_CERTIFICATO_UTF"_s) >= 0;
        QStringList r;
        for (int i = 0; i < m->rowCount(); ++i)
            r << m->Campo(i, u"DOMANDA"_s).testo().right(1) + u'/' + m->Campo(i, u"TIPO_ARTICOLO"_s).testo() +
                     (certificati ? u'/' + m->Campo(i, u"NUMERO_CERTIFICATO_UTF"_s).testo() : QString());
        if (ordinate)
            r.sort();
        return r;
    }
    void Seleziona(const QList<int>& righe, int corrente) { SelezionaRighe(lista->Griglia, righe, corrente, 2); }

    std::unique_ptr<FrmProduttori_Selezione> lista;
    std::unique_ptr<MaschereFinte> finte;
    QStringList aiuti;
    FunzioneHelp help;
};

TEST_F(ListaConferimenti, AperturaPerCodice)
{
    const QStringList domande = {u"1/30"_s, u"1/29"_s, u"2/30"_s, u"3/29"_s};
    const QStringList certificati = {u"1/30/"_s, u"1/29/U1"_s, u"1/29/U2"_s, u"2/30/"_s, u"3/29/U3"_s};
    const struct {
        int codice;
        QString cornice, didascalia;
        bool stampate, stampateAbilitata;
        QString campagna;
        QStringList righe;
    } casi[] = {
        {7, u"Fra_Nuovo_Mod_Canc_Esci"_s, u"Domande del distillatore"_s, false, true, u""_s, domande},
        {11, u"FraSeleziona_Esci"_s, u"Elenco Titolo"_s, false, true, u""_s, certificati},
        {12, u"FraSeleziona_Esci"_s, u"Elenco Titolo"_s, false, true, u""_s, domande},
        {13, u"FraSeleziona_Esci"_s, u"Elenco Titolo"_s, false, true, u""_s, certificati},
        // Lo scarico tiene le sole stampate della campagna corrente; "Scaricate" resta libera.
        {16, u"FraScarico_Esci"_s, u"Elenco Titolo"_s, true, false, u"2005"_s, {u"1/29"_s, u"3/29"_s}},
        {18, u"FraStampa_Esci"_s, u"Domande del distillatore da stampare"_s, false, true, u"2005"_s,
         {u"1/29/U1"_s, u"1/29/U2"_s, u"3/29/U3"_s}},
        {19, u"FraStampa_Esci"_s, u"Elenco Titolo"_s, false, true, u"2005"_s, {u"1/29/U1"_s, u"1/29/U2"_s, u"3/29/U3"_s}},
    };
    for (const auto& c : casi) {
        SCOPED_TRACE(c.codice);
        FrmProduttori_Selezione& f = Apri(c.codice, u"Titolo"_s);
        EXPECT_EQ(f.windowTitle(), u"Elenco Titolo"_s);
        for (const char* n : {"Fra_Nuovo_Mod_Canc_Esci", "FraSeleziona_Esci", "FraStampa_Esci", "FraScarico_Esci"})
            EXPECT_EQ(f.Cornice(QString::fromLatin1(n))->isHidden(), c.cornice != QLatin1String(n)) << n;
        EXPECT_EQ(DidascaliaGriglia(f.Griglia), c.didascalia);
        EXPECT_EQ(f.Check1[0]->isChecked(), c.stampate);
        EXPECT_EQ(f.Check1[0]->isEnabled(), c.stampateAbilitata);
        EXPECT_FALSE(f.Check1[1]->isChecked());
        EXPECT_TRUE(f.Check1[1]->isEnabled());
        EXPECT_EQ(f.CmbDomAnnualita->currentText(), c.campagna);
        EXPECT_EQ(sessione().CampagnaSelezionata, c.campagna);
        EXPECT_EQ(Righe(), c.righe);
        // La sessione segue la riga corrente, che all'apertura è la prima.
        EXPECT_EQ(sessione().DomandaProduttoreSel.DOMANDA, f.Data->Campo(0, u"DOMANDA"_s).testo());
        f.close();
        EXPECT_EQ(sessione().CampagnaSelezionata, u""_s);
    }
    EXPECT_EQ(script->messaggi, Messaggi{});
}

TEST_F(ListaConferimenti, RicercaEClicSulleCaselle)
{
    const struct {
        int codice;
        const char* numero;
        bool stampate, scaricate;
        int campagna;  // voce della combo, -1 nessuna
        QStringList righe;
    } casi[] = {
        {7, "00000000001", false, false, -1, {u"1/30"_s, u"1/29"_s}},
        {7, "00000000001", true, true, -1, {u"1/30"_s}},  // entrambe spuntate: il numero resta
        {7, "", true, true, -1, {u"1/30"_s, u"3/29"_s}},
        {7, "00000000001", false, false, 4, {u"1/29"_s}},
        {7, "", false, true, 3, {u"1/30"_s}},
        {11, "00000000001", false, false, -1, {u"1/30/"_s, u"1/29/U1"_s, u"1/29/U2"_s}},
        {7, "1'", false, false, -1, {}},
        {11, "\"1'", true, false, 4, {}},
    };
    for (const auto& c : casi) {
        SCOPED_TRACE(c.numero);
        FrmProduttori_Selezione& f = Apri(c.codice);
        f.TxtSEL_NumDom[0]->setText(QString::fromUtf8(c.numero));
        f.Check1[0]->setChecked(c.stampate);
        f.Check1[1]->setChecked(c.scaricate);
        if (c.campagna >= 0) {
            f.CmbDomAnnualita->setCurrentIndex(c.campagna);
            emit f.CmbDomAnnualita->activated(c.campagna);
        } else {
            f.Cmddati[0]->click();
        }
        EXPECT_EQ(Righe(), c.righe);
    }
    // Il clic su una casella ricarica subito, senza numero né campagna; la
    // ricerca seguente riporta la campagna.
    FrmProduttori_Selezione& f = Apri(7);
    f.CmbDomAnnualita->setCurrentIndex(4);
    emit f.CmbDomAnnualita->activated(4);
    f.TxtSEL_NumDom[0]->setText(u"00000000003"_s);
    f.Check1[0]->click();
    EXPECT_EQ(f.TxtSEL_NumDom[0]->text(), u""_s);
    EXPECT_EQ(Righe(true), (QStringList{u"1/29"_s, u"1/30"_s, u"3/29"_s}));
    f.Check1[1]->click();
    EXPECT_EQ(Righe(true), (QStringList{u"1/30"_s, u"3/29"_s}));
    f.Cmddati[0]->click();
    EXPECT_EQ(Righe(), QStringList{u"3/29"_s});
    // L'intestazione ordina l'intera lista per la sua colonna.
    emit f.Griglia->horizontalHeader()->sectionClicked(f.Data->Colonna(u"TIPO_ARTICOLO"_s));
    EXPECT_EQ(Righe().mid(0, 2), (QStringList{u"1/29"_s, u"3/29"_s}));
    EXPECT_EQ(Righe().size(), 4);
    EXPECT_EQ(script->messaggi, Messaggi{});
}

TEST_F(ListaConferimenti, SelezioneEConsegna)
{
    const QString nessuna = u"Selezionare almeno una domanda."_s;
    const struct { int codice, pulsante; QList<int> selezionate; int corrente; QString messaggio, aperta; } casi[] = {
        {7, 1, {}, 0, {}, u"Frmproduttore_Domanda I 4 "_s},
        {7, 2, {}, 0, nessuna, {}},
        {7, 2, {0, 2}, 2, {}, u"Frmproduttore_Domanda M 2 "_s},  // vale la corrente
        {11, 6, {}, 0, nessuna, {}},
        {11, 6, {1, 2}, 2, {}, u"FrmProduttore_SelezionaProd I 1 U2"_s},  // più righe ammesse
        {12, 6, {3}, 3, {}, u"frmProduttori_CambioDomanda I 3 "_s},
        {13, 6, {4}, 4, {}, u"frmProduttori_CambioUtf I 3 U3"_s},
        {16, 12, {}, 1, {}, u"frmProduttori_Scarico I 3 "_s},  // senza selezione: la riga corrente
    };
    for (const auto& c : casi) {
        SCOPED_TRACE(u"%1/%2"_s.arg(c.codice).arg(c.pulsante).toStdString());
        sessione().ModoMaschera = u"I"_s;
        sessione().UtfSel = {};
        FrmProduttori_Selezione& f = Apri(c.codice, u"Titolo"_s);
        script->AccettaMessaggiSenzaRisposta();
        script->messaggi.clear();
        finte->aperte.clear();
        Seleziona(c.selezionate, c.corrente);
        f.Cmddati_Click(c.pulsante);
        const Messaggi attesi = c.messaggio.isEmpty() ? Messaggi{} : Messaggi{{c.messaggio, 64, u"Titolo"_s}};
        EXPECT_EQ(script->messaggi, attesi);
        EXPECT_EQ(finte->aperte, c.aperta.isEmpty() ? QStringList{} : QStringList{c.aperta});
    }
    // Scarico su una lista vuota: non si apre nulla.
    FrmProduttori_Selezione& f = Apri(16);
    finte->aperte.clear();
    f.TxtSEL_NumDom[0]->setText(u"00000000002"_s);
    f.Cmddati_Click(0);
    f.Cmddati_Click(12);
    EXPECT_EQ(finte->aperte, QStringList{});
}

TEST_F(ListaConferimenti, Cancellazione)
{
    const QString domanda = u"Confermi la cancellazione della domanda : "_s;
    // Riga 1: la domanda 1 del 2005, con certificati; riga 2: la domanda 2, senza.
    const struct { int riga, risposta; Messaggi dopo; int restano; } casi[] = {
        {1, RispostaMsg::Si,
         {{u"Operazione non eseguita.\r\nVerificare eventuale presenza di certificati UTF."_s, 48, u""_s}}, 4},
        {2, RispostaMsg::No, {}, 4},
        {2, RispostaMsg::Si, {{u"Operazione correttamente eseguita."_s, 64, u""_s}}, 3},
    };
    FrmProduttori_Selezione& f = Apri(7);
    for (const auto& c : casi) {
        SCOPED_TRACE(c.riga);
        const QString numero = f.Data->Campo(c.riga, u"DOMANDA"_s).testo();
        script->messaggi.clear();
        script->Rispondi(c.risposta);
        if (!c.dopo.isEmpty())
            script->Rispondi(RispostaMsg::OK);
        Seleziona({c.riga}, c.riga);
        f.Cmddati_Click(3);
        EXPECT_EQ(script->messaggi, (Messaggi{{domanda + numero, 324, u" Domande del distillatore "_s}} + c.dopo));
        EXPECT_EQ(Righe().size(), c.restano);
    }
    EXPECT_EQ(::Righe(db(), u"SELECT COUNT(*) FROM TAB_UTF"_s), QStringList{u"3"_s});
}

TEST_F(ListaConferimenti, StampeEGuasti)
{
    script->AccettaMessaggiSenzaRisposta();
    // La prima riga non ha produttori legati: le due stampe lo dicono, ciascuna
    // con il suo testo, la maschera resta e nulla si segna.
    const struct {
        int codice;
        QString testo;
    } casi[] = {{18, u"Non ci sono record da stampare."_s}, {19, u"Non ci sono record da stampare. "_s}};
    for (const auto& c : casi) {
        SCOPED_TRACE(c.codice);
        FrmProduttori_Selezione& f = Apri(c.codice);
        f.show();
        script->messaggi.clear();
        Seleziona({0}, 0);
        f.Cmddati_Click(9);
        ASSERT_EQ(script->messaggi.size(), 1);
        EXPECT_EQ(script->messaggi[0].testo, c.testo);
        EXPECT_TRUE(f.isVisible());
    }
    EXPECT_EQ(::Righe(db(), u"SELECT STAM FROM DOMANDE_PRODUTTORI ORDER BY 1"_s),
              (QStringList{u"N"_s, u"S"_s, u"S"_s, u"S"_s}));
}

TEST_F(ListaConferimenti, Aiuto)
{
    const struct { int codice, pulsante; QString argomento; } casi[] = {
        {7, 5, u"Frmproduttore_Domanda"_s},
        {11, 8, u"Frmproduttore_Domanda"_s},  // non ne imposta uno: resta il precedente
        {18, 11, u"FRMSELEZIONE_STAMPA"_s},
        {16, 14, u"frmProduttori_Scarico"_s},
    };
    for (const auto& c : casi) {
        SCOPED_TRACE(c.codice);
        FrmProduttori_Selezione& f = Apri(c.codice);
        f.show();
        aiuti.clear();
        f.Cmddati_Click(c.pulsante);
        // F1 mostra l'aiuto una volta sola, con l'argomento che c'è.
        QTest::keyClick(f.TxtSEL_NumDom[0], Qt::Key_F1);
        EXPECT_EQ(aiuti, (QStringList{c.argomento, c.argomento}));
    }
}

}  // namespace
