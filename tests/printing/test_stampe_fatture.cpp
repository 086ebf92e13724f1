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

// Le carte lette indietro: testo di ogni pagina, ciò che non deve esserci, l'ordine delle righe.
TEST_F(StampeFatture, CarteDelleFatture)
{
    // stam: della domanda con tre fatture; pagine: i testi attesi pagina per pagina.
    struct Caso { const char* nome; std::function<void()> stampa; Messaggi attesi; QString stam; QList<QStringList> pagine;
                  QStringList assenti, ordine; };
    const QString comune = u"02468135799 00000000042 01"_s;
    const Caso casi[] = {
        // Un foglio per pagina, in ordine numerico; i totali in fondo all'ultima.
        {"elenco fatture", [this] { ASSERT_TRUE(StampaESegna(u"2005"_s)); }, {Riuscita}, u"S"_s,
         {{u"ELENCO DELLE FATTURE"_s, u"2005/2006"_s, u"Distilleria Valle Verde S.p.A."_s, comune, u"AGR ALCOLE GREZZO"_s,
           u"29 2\n"_s, u"Pagina 1 di 2"_s},
          {comune, u"29 10\n"_s, u"F-10-1"_s, u"Pagina 2 di 2"_s, u"111,7500 101,0000 1055,50 211,10 1266,60"_s}},
         {u"ALTRA"_s}, {u"F-2-1"_s, u"F-2-2"_s, u"F-10-1"_s, u"Totali della domanda"_s}},
        // Valori delle formule: apostrofi e doppi apici nel nome, chiave fuori tabella, IVA tutta zero.
        {"nome con apostrofo",
         [this] { Distilleria(u"02468135799"_s, u"Distilleria dell'Etna"_s); ASSERT_TRUE(StampaESegna(u"2003"_s)); },
         {Riuscita}, u"S"_s, {{u"Distilleria dell'Etna"_s, u"2003/2004"_s}, {}}, {u"2005/2006"_s}, {}},
        {"nome con doppi apici, chiave fuori tabella",
         [this] { Distilleria(u"02468135799"_s, u"Vini d'Oro \"Riserva\""_s); ASSERT_TRUE(StampaESegna(u"2006"_s)); },
         {Riuscita}, u"S"_s, {{u"Vini d'Oro \"Riserva\""_s}, {}}, {u"2005/2006"_s, u"2006/2007"_s}, {}},
        {"IVA tutta zero: il totale è vuoto",
         [this] { db().Execute(u"UPDATE FATTURE SET IVA = '0'"_s); ASSERT_TRUE(StampaESegna(u"2005"_s)); },
         {Riuscita}, u"S"_s, {{}, {u"111,7500 101,0000 1055,50 1266,60\n"_s}}, {u"1055,50 0,00"_s}, {}},
        // Bolle per fattura, in ordine di foglio e rigo e poi di data; nessun segno di stampa.
        {"bolle di una domanda",
         [this] {
             Distilleria(u"02468135799"_s, u"Distilleria D'Amico"_s);
             const QStringList id = Righe(db(), u"SELECT ID_FATTURA FROM FATTURE ORDER BY ID_FATTURA"_s);
             Bolla(id[3].toLongLong(), u"B-ALTRA"_s, u"01/10/2005"_s, u"1"_s);
             Bolla(id[2].toLongLong(), u"B-2"_s, u"02/10/2005"_s, u"0,25"_s);
             Bolla(id[2].toLongLong(), u"B-1"_s, u"01/10/2005"_s, u"0,75"_s);
             Bolla(id[1].toLongLong(), u"B-3"_s, u"03/10/2005"_s, u"5,5"_s);
             StampaBolleDomanda(QString::number(sessione().DomandaSel.ID_DOMANDA), u"00000000042 "_s, u"01"_s, u"2004"_s);
         },
         {Riuscita}, u"N"_s,
         {{u"Fattura n° F-2-1"_s, u"B-1 01/10/2005 0,75"_s, u"B-2 02/10/2005 0,25"_s, u"Totale bolle della fattura 1,0000"_s,
           u"Quantità distillata in fattura 1\n"_s, u"Totale bolle della fattura 5,5000"_s,
           u"Quantità distillata in fattura 9,75"_s, u"101,0000 6,5000"_s, u"Distilleria D`Amico"_s, u"2004/2005"_s}},
         {u"F-10-1"_s, u"ALTRA"_s}, {u"F-2-1"_s, u"B-1 "_s, u"B-2 "_s, u"F-2-2"_s}},
        {"bolle di una domanda senza bolle",
         [this] { StampaBolleDomanda(QString::number(sessione().DomandaSel.ID_DOMANDA), u"00000000042"_s, u"01"_s, u"2005"_s); },
         {Riuscita}, u"N"_s, {{u"101,0000 0,0000"_s, u"00000000042"_s}}, {u"Fattura n°"_s}, {}},
        // Dal menu: tutte le domande, una per pagina, senza totali e senza messaggio.
        {"bolle di tutte le domande",
         [this] {
             const qint64 d = Domanda(u"00000000001"_s, u"01"_s);
             Bolla(Fattura(d, u"1"_s, u"1"_s, u"FD1"_s, u"1"_s, u"1"_s, u"1"_s, u"1"_s, u"2"_s), u"BD1"_s, u"01/10/2005"_s, u"2"_s);
             Bolla(Righe(db(), u"SELECT ID_FATTURA FROM FATTURE WHERE NUME_FATT = 'ALTRA'"_s)[0].toLongLong(), u"B-ALTRA"_s,
                   u"01/10/2005"_s, u"1"_s);
             sessione().CampagnaCorrente = u"2002"_s;
             AnnullaRegistrazioni();
             RegistraStampe();
             const auto* azione = TrovaAzione(NomiAzioni::StampaBolleMenu);
             ASSERT_NE(azione, nullptr);
             (*azione)();
             AnnullaRegistrazioni();
         },
         {}, u"N"_s,
         {{u"00000000001"_s, u"BD1"_s, u"2002/2003"_s, u"Distilleria Valle Verde S.p.A."_s},
          {u"00000000042 02"_s, u"B-ALTRA"_s, u"2002/2003"_s}},
         {u"F-2-1"_s}, {}},
    };
    for (const Caso& c : casi) {
        SCOPED_TRACE(c.nome);
        SetUp();
        const qint64 d = DomandaConTreFatture();
        c.stampa();
        EXPECT_EQ(script->messaggi, c.attesi);
        EXPECT_EQ(Stam(d), c.stam);
        const QStringList pagine = UltimaAnteprima();
        ASSERT_EQ(pagine.size(), c.pagine.size());
        const QString tutto = pagine.join(u'\f');
        for (int i = 0; i < pagine.size(); ++i)
            for (const QString& t : c.pagine[i])
                EXPECT_TRUE(pagine[i].contains(t)) << t.toStdString() << "\n" << pagine[i].toStdString();
        for (const QString& t : c.assenti)
            EXPECT_FALSE(tutto.contains(t)) << t.toStdString();
        for (int i = 1; i < c.ordine.size(); ++i)
            EXPECT_LT(tutto.indexOf(c.ordine[i - 1]), tutto.indexOf(c.ordine[i])) << c.ordine[i].toStdString();
        TearDown();
    }
}

TEST_F(StampeFatture, StampaNonRiuscitaNonSegna)
{
    struct Caso { const char* nome; std::function<bool()> stampa; Messaggi attesi; QStringList log; };
    const auto fatture = [this] { return StampaESegna(u"2005"_s); };
    const QString id = u"1"_s;  // la prima domanda di DomandaConTreFatture
    const Caso casi[] = {
        {"annullata dall'utente",
         [&] { script->risposteAnteprima.enqueue(RispostaMsg::Annulla); return fatture(); },
         {Annullata}, {}},
        {"domanda senza fatture",
         [&] { db().Execute(u"DELETE FROM FATTURE"_s); return fatture(); },
         {Guasto(3021, u"Nessun record corrente."_s, EtichettaStampa)}, {EtichettaStampa + u"|03021"_s}},
        {"file che non è un modello",
         [&] {
             QFile f(cartella->cartella() + u"/Report/Rpt_distillerie_ElenchiFatture.rpt"_s);
             EXPECT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
             f.write("\0\1\2 binario", 11);
             f.close();
             return fatture();
         },
         {Guasto(20525, u"Il file Rpt_distillerie_ElenchiFatture.rpt non è un modello di report."_s, EtichettaStampa)},
         {EtichettaStampa + u"|20525"_s}},
        // Una quantità vuota fa fallire la somma delle bolle.
        {"bolla con quantità vuota",
         [&] {
             Bolla(1, u"B"_s, u"01/10/2005"_s, u""_s);
             StampaBolleDomanda(id, u"00000000042"_s, u"01"_s, u"2005"_s);
             return false;
         },
         {Guasto(13, u"Tipo non corrispondente"_s, EtichettaBolle)}, {EtichettaBolle + u"|00013"_s}},
        {"bolle dal menu annullate",
         [&] {
             sessione().TitoloMaschera = u"Stampa Bolle "_s;
             script->risposteAnteprima.enqueue(RispostaMsg::Annulla);
             StampaBolleMenu();
             return false;
         },
         {{u"Stampa annullata dall'utente."_s, 64, u"Stampa Bolle "_s}}, {}},
    };
    for (const Caso& c : casi) {
        SCOPED_TRACE(c.nome);
        SetUp();
        const qint64 d = DomandaConTreFatture();
        ASSERT_EQ(QString::number(d), id);
        EXPECT_FALSE(c.stampa());
        EXPECT_EQ(Stam(d), u"N"_s);
        EXPECT_EQ(Log(), c.log);
        EXPECT_EQ(script->messaggi, c.attesi);
        TearDown();
    }
}

}  // namespace
