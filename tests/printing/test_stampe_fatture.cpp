// Stampe del ramo fatture: elenco fatture (STAMPA), bolle di una domanda e
// bolle di tutte le domande, lette indietro dal PDF dell'anteprima.
#include "common/piattaforma.h"
#include "printing/StampeFatture.h"
#include "printing/registra_stampe.h"
#include "shell/registro_maschere.h"
#include "stampa_prova.h"

namespace {

using namespace Qt::StringLiterals;

const QString Titolo = u"Stampa Domanda "_s;
const MessaggioRegistrato Riuscita{u"Stampa effettuata con successo."_s, 64, Titolo};
const MessaggioRegistrato Annullata{u"Stampa annullata dall'utente."_s, 64, Titolo};
const QString EtichettaStampa = u"FrmSelezioneLOAD Stampa"_s;
const QString EtichettaBolle = u"FrmMenu Stampa Bolle"_s;

MessaggioRegistrato Guasto(int numero, const QString& descrizione, const QString& etichetta)
{
    return {MessaggioLogErr(numero, descrizione, etichetta), 48, u"Gestione Errori"_s};
}

class StampeFatture : public ProvaDiStampa {
protected:
    void SetUp() override
    {
        ProvaDiStampa::SetUp();
        Distilleria(u"02468135799"_s, u"Distilleria Valle Verde S.p.A."_s);
        script->AccettaMessaggiSenzaRisposta();
    }
    // La domanda come SEL_RECORD la mette in DomandaSel.
    void Seleziona(qint64 id, const QString& numero, const QString& progressivo)
    {
        sessione().DomandaSel.ID_DOMANDA = static_cast<qint32>(id);
        sessione().DomandaSel.DOMANDA = numero;
        sessione().DomandaSel.PROGRESSIVO = progressivo;
    }
    // Il pulsante Fatture della lista: il segno di stampa solo se STAMPA risponde vero.
    bool StampaESegna(const QString& chiave)
    {
        const bool esito = STAMPA(chiave);
        if (esito)
            db().Execute(u"UPDATE DOMANDE SET stam =  'S' where id_domanda = ?"_s, {sessione().DomandaSel.ID_DOMANDA});
        return esito;
    }
    QString Stam(qint64 id) { return Righe(db(), u"SELECT STAM FROM DOMANDE WHERE ID_DOMANDA = ?"_s, {id}).value(0); }
    QStringList Log() { return Righe(db(), u"SELECT DESC_APPL || '|' || CODI_ERRO FROM LOGERR"_s); }
    qint64 DomandaConTreFatture()
    {
        const qint64 d = Domanda(u"00000000042"_s, u"01"_s);
        Fattura(d, u"10"_s, u"1"_s, u"F-10-1"_s, u"100,5"_s, u"1000,00"_s, u"200,00"_s, u"1200,00"_s, u"90,25"_s);
        Fattura(d, u"2"_s, u"2"_s, u"F-2-2"_s, u"10"_s, u"50,50"_s, u"10,10"_s, u"60,60"_s, u"9,75"_s);
        Fattura(d, u"2"_s, u"1"_s, u"F-2-1"_s, u"1,25"_s, u"5"_s, u"1"_s, u"6"_s, u"1"_s);
        // Stesso numero, altro progressivo: non deve comparire.
        const qint64 altra = Domanda(u"00000000042"_s, u"02"_s);
        Fattura(altra, u"1"_s, u"1"_s, u"ALTRA"_s, u"1"_s, u"1"_s, u"1"_s, u"1"_s, u"1"_s);
        Seleziona(d, u" 00000000042 "_s, u"01"_s);
        return d;
    }
};

TEST_F(StampeFatture, UnFoglioPerPaginaInOrdineNumericoETotaliInFondo)
{
    const qint64 d = DomandaConTreFatture();
    ASSERT_TRUE(StampaESegna(u"2005"_s));
    EXPECT_EQ(script->messaggi, Messaggi{Riuscita});
    EXPECT_EQ(Stam(d), u"S"_s);
    ASSERT_EQ(script->anteprime.size(), 1);
    EXPECT_EQ(script->anteprime[0].titolo, u"Elenco delle fatture della domanda"_s);
    const QStringList pagine = UltimaAnteprima();
    ASSERT_EQ(pagine.size(), 2);
    // Il foglio "2" prima del foglio "10", i righi in ordine.
    const QString& p1 = pagine[0];
    const QString& p2 = pagine[1];
    EXPECT_LT(p1.indexOf(u"F-2-1"_s), p1.indexOf(u"F-2-2"_s));
    EXPECT_GE(p1.indexOf(u"F-2-1"_s), 0);
    EXPECT_FALSE(p1.contains(u"F-10-1"_s));
    EXPECT_TRUE(p2.contains(u"F-10-1"_s));
    EXPECT_TRUE(p1.contains(u"29 2\n"_s)) << p1.toStdString();    // articolo e foglio
    EXPECT_TRUE(p2.contains(u"29 10\n"_s)) << p2.toStdString();
    for (int i = 0; i < pagine.size(); ++i) {
        SCOPED_TRACE(i);
        for (const QString& atteso : {u"ELENCO DELLE FATTURE"_s, u"2005/2006"_s, u"Distilleria Valle Verde S.p.A."_s,
                                      u"02468135799 00000000042 01"_s, u"AGR ALCOLE GREZZO"_s,
                                      u"Pagina %1 di 2"_s.arg(i + 1)})
            EXPECT_TRUE(pagine[i].contains(atteso)) << atteso.toStdString() << "\n" << pagine[i].toStdString();
        EXPECT_FALSE(pagine[i].contains(u"ALTRA"_s));
    }
    // Totali: quantità scalate a quattro decimali, importi a due.
    EXPECT_FALSE(p1.contains(u"Totali della domanda"_s));
    EXPECT_TRUE(p2.contains(u"111,7500 101,0000 1055,50 211,10 1266,60"_s)) << p2.toStdString();
}

TEST_F(StampeFatture, ValoriDelleFormule)
{
    struct Caso { QString ragione, chiave, iva; QStringList presenti, assenti; };
    const Caso casi[] = {
        {u"Distilleria dell'Etna"_s, u"2003"_s, u"5"_s, {u"Distilleria dell'Etna"_s, u"2003/2004"_s}, {u"2005/2006"_s}},
        {u"Vini d'Oro \"Riserva\""_s, u"2005"_s, u"5"_s, {u"Vini d'Oro \"Riserva\""_s}, {}},
        // Chiave fuori tabella: campagna vuota, non un errore.
        {u"Distilleria Sud"_s, u"2006"_s, u"5"_s, {u"Distilleria Sud"_s}, {u"2005/2006"_s, u"2006/2007"_s}},
        // IVA tutta zero: il totale dell'IVA è vuoto, non "0,00".
        {u"Distilleria Sud"_s, u"2005"_s, u"0"_s, {u" 12,0000 12,0000 10,00 10,00\n"_s}, {u"10,00 0,00"_s}},
    };
    for (const Caso& c : casi) {
        SCOPED_TRACE(c.ragione.toStdString() + " " + c.chiave.toStdString() + " " + c.iva.toStdString());
        SetUp();
        Distilleria(u"02468135799"_s, c.ragione);
        const qint64 d = Domanda(u"00000000042"_s, u"01"_s);
        Fattura(d, u"1"_s, u"1"_s, u"F1"_s, u"2"_s, u"4,00"_s, c.iva, u"4,00"_s, u"2"_s);
        Fattura(d, u"1"_s, u"2"_s, u"F2"_s, u"10"_s, u"6,00"_s, c.iva, u"6,00"_s, u"10"_s);
        Seleziona(d, u"00000000042"_s, u"01"_s);
        EXPECT_TRUE(STAMPA(c.chiave));
        EXPECT_EQ(script->messaggi, Messaggi{Riuscita});
        const QString testo = UltimaAnteprima().join(u'\f');
        for (const QString& t : c.presenti)
            EXPECT_TRUE(testo.contains(t)) << t.toStdString() << "\n" << testo.toStdString();
        for (const QString& t : c.assenti)
            EXPECT_FALSE(testo.contains(t)) << t.toStdString() << "\n" << testo.toStdString();
        TearDown();
    }
}

TEST_F(StampeFatture, StampaNonRiuscitaNonSegna)
{
    struct Caso {
        const char* nome;
        std::function<void()> prepara;
        Messaggi attesi;
        QStringList log;
    };
    const Caso casi[] = {
        {"annullata dall'utente", [this] { script->risposteAnteprima.enqueue(RispostaMsg::Annulla); },
         {Annullata}, {}},
        {"domanda senza fatture", [this] { db().Execute(u"DELETE FROM FATTURE"_s); },
         {Guasto(3021, u"Nessun record corrente."_s, EtichettaStampa)}, {EtichettaStampa + u"|03021"_s}},
        {"file del report assente",
         [this] { QFile::remove(cartella->cartella() + u"/Report/Rpt_distillerie_ElenchiFatture.rpt"_s); },
         {},
         {EtichettaStampa + u"|20507"_s}},
        {"file che non è un modello",
         [this] {
             QFile f(cartella->cartella() + u"/Report/Rpt_distillerie_ElenchiFatture.rpt"_s);
             ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
             f.write("\0\1\2 binario", 11);
         },
         {Guasto(20525, u"Il file Rpt_distillerie_ElenchiFatture.rpt non è un modello di report."_s, EtichettaStampa)},
         {EtichettaStampa + u"|20525"_s}},
    };
    for (const Caso& c : casi) {
        SCOPED_TRACE(c.nome);
        SetUp();
        const qint64 d = DomandaConTreFatture();
        c.prepara();
        EXPECT_FALSE(StampaESegna(u"2005"_s));
        EXPECT_EQ(Stam(d), u"N"_s);
        EXPECT_EQ(Log(), c.log);
        if (c.attesi.isEmpty()) {  // il percorso del file sta nella descrizione
            EXPECT_TRUE(script->messaggi.value(0).testo.contains(u"/Report/Rpt_distillerie_ElenchiFatture.rpt"_s));
        } else {
            EXPECT_EQ(script->messaggi, c.attesi);
        }
        TearDown();
    }
}

TEST_F(StampeFatture, BolleDiUnaDomandaPerFattura)
{
    struct Caso { const char* nome; bool conBolle; QStringList presenti, assenti; };
    const Caso casi[] = {
        {"con bolle",
         true,
         {u"Fattura n° F-2-1"_s, u"B-1 01/10/2005 0,75"_s, u"B-2 02/10/2005 0,25"_s,
          u"Totale bolle della fattura 1,0000"_s, u"Quantità distillata in fattura 1\n"_s,
          u"Totale bolle della fattura 5,5000"_s, u"Quantità distillata in fattura 9,75"_s,
          u"101,0000 6,5000"_s, u"Distilleria D`Amico"_s, u"2004/2005"_s},
         {u"F-10-1"_s, u"ALTRA"_s}},
        {"senza bolle", false, {u"101,0000 0,0000"_s, u"Distilleria D`Amico"_s, u"00000000042"_s}, {u"Fattura n°"_s}},
    };
    for (const Caso& c : casi) {
        SCOPED_TRACE(c.nome);
        SetUp();
        Distilleria(u"02468135799"_s, u"Distilleria D'Amico"_s);
        const qint64 d = Domanda(u"00000000042"_s, u"01"_s);
        Fattura(d, u"10"_s, u"1"_s, u"F-10-1"_s, u"100,5"_s, u"1000,00"_s, u"200,00"_s, u"1200,00"_s, u"90,25"_s);
        const qint64 f22 = Fattura(d, u"2"_s, u"2"_s, u"F-2-2"_s, u"10"_s, u"50,50"_s, u"10,10"_s, u"60,60"_s, u"9,75"_s);
        const qint64 f21 = Fattura(d, u"2"_s, u"1"_s, u"F-2-1"_s, u"1,25"_s, u"5"_s, u"1"_s, u"6"_s, u"1"_s);
        const qint64 altra = Fattura(Domanda(u"00000000042"_s, u"02"_s), u"1"_s, u"1"_s, u"ALTRA"_s, u"1"_s, u"1"_s,
                                     u"1"_s, u"1"_s, u"1"_s);
        Bolla(altra, u"B-ALTRA"_s, u"01/10/2005"_s, u"1"_s);
        if (c.conBolle) {
            Bolla(f21, u"B-2"_s, u"02/10/2005"_s, u"0,25"_s);
            Bolla(f21, u"B-1"_s, u"01/10/2005"_s, u"0,75"_s);
            Bolla(f22, u"B-3"_s, u"03/10/2005"_s, u"5,5"_s);
        }
        StampaBolleDomanda(QString::number(d), u"00000000042 "_s, u"01"_s, u"2004"_s);
        EXPECT_EQ(script->messaggi, Messaggi{Riuscita});
        EXPECT_EQ(Log(), QStringList());
        EXPECT_EQ(Stam(d), u"N"_s);
        const QStringList pagine = UltimaAnteprima();
        ASSERT_EQ(pagine.size(), 1);
        for (const QString& t : c.presenti)
            EXPECT_TRUE(pagine[0].contains(t)) << t.toStdString() << "\n" << pagine[0].toStdString();
        for (const QString& t : c.assenti)
            EXPECT_FALSE(pagine[0].contains(t)) << t.toStdString();
        if (c.conBolle) {
            // Fatture in ordine di foglio e rigo, bolle in ordine di data.
            EXPECT_LT(pagine[0].indexOf(u"F-2-1"_s), pagine[0].indexOf(u"F-2-2"_s));
            EXPECT_LT(pagine[0].indexOf(u"B-1 "_s), pagine[0].indexOf(u"B-2 "_s));
        }
        TearDown();
    }
}

// Una quantità vuota fa fallire la somma delle bolle: registro, nessuna anteprima.
TEST_F(StampeFatture, BolleConQuantitaVuota)
{
    const qint64 d = Domanda(u"00000000042"_s, u"01"_s);
    Bolla(Fattura(d, u"1"_s, u"1"_s, u"F1"_s, u"1"_s, u"1"_s, u"1"_s, u"1"_s, u"1"_s), u"B"_s, u"01/10/2005"_s, u""_s);
    StampaBolleDomanda(QString::number(d), u"00000000042"_s, u"01"_s, u"2005"_s);
    EXPECT_EQ(Log(), QStringList{EtichettaBolle + u"|00013"_s});
    EXPECT_EQ(script->messaggi, Messaggi{Guasto(13, u"Tipo non corrispondente"_s, EtichettaBolle)});
    EXPECT_TRUE(script->anteprime.isEmpty());
}

TEST_F(StampeFatture, BolleDiTutteLeDomandeDalMenu)
{
    AnnullaRegistrazioni();
    RegistraStampe();
    const auto* azione = TrovaAzione(NomiAzioni::StampaBolleMenu);
    ASSERT_NE(azione, nullptr);
    sessione().TitoloMaschera = u"Stampa Bolle "_s;
    sessione().CampagnaCorrente = u"2002"_s;
    const qint64 d1 = Domanda(u"00000000001"_s, u"01"_s);
    const qint64 d2 = Domanda(u"00000000002"_s, u"01"_s);
    Bolla(Fattura(d2, u"1"_s, u"1"_s, u"FD2"_s, u"1"_s, u"1"_s, u"1"_s, u"1"_s, u"3"_s), u"BD2"_s, u"01/10/2005"_s, u"3"_s);
    Bolla(Fattura(d1, u"1"_s, u"1"_s, u"FD1"_s, u"1"_s, u"1"_s, u"1"_s, u"1"_s, u"2"_s), u"BD1"_s, u"01/10/2005"_s, u"2"_s);
    (*azione)();
    AnnullaRegistrazioni();
    // Nessun messaggio quando va bene; una domanda per pagina, senza totali.
    EXPECT_EQ(script->messaggi, Messaggi{});
    const QStringList pagine = UltimaAnteprima();
    ASSERT_EQ(pagine.size(), 2);
    EXPECT_TRUE(pagine[0].contains(u"00000000001"_s) && pagine[0].contains(u"BD1"_s) && !pagine[0].contains(u"BD2"_s));
    EXPECT_TRUE(pagine[1].contains(u"00000000002"_s) && pagine[1].contains(u"BD2"_s));
    for (const QString& p : pagine)
        EXPECT_TRUE(p.contains(u"2002/2003"_s) && p.contains(u"Distilleria Valle Verde S.p.A."_s));

    script->risposteAnteprima.enqueue(RispostaMsg::Annulla);
    StampaBolleMenu();
    EXPECT_EQ(script->messaggi, (Messaggi{{u"Stampa annullata dall'utente."_s, 64, u"Stampa Bolle "_s}}));
}

}  // namespace
