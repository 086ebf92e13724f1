// Stampe del ramo conferimenti: la domanda del distillatore con certificati e
// produttori, il certificato UTF; le query rifatte prima di ogni stampa.
#include "common/piattaforma.h"
#include "printing/StampeConferimenti.h"
#include "stampa_prova.h"

namespace {

using namespace Qt::StringLiterals;

const QString Didascalia = u"Elenco Stampa Domanda del distillatore"_s;
const QString Etichetta = u"StampaDomandaProduttore"_s;

class StampeConferimenti : public ProvaDiStampa {
protected:
    void SetUp() override
    {
        ProvaDiStampa::SetUp();
        script->AccettaMessaggiSenzaRisposta();
        Distilleria(u"02468135799"_s, u"Distilleria dell'Etna"_s);
        sessione().TitoloMaschera = u"Stampa Domanda del distillatore"_s;
        idDomanda = DomandaDistillatore(u"00000000077"_s);
        auto certificato = [this](const QString& numero, const QString& vino, const QString& neutro, const QString& grezzo) {
            return Certificato(idDomanda, numero, {{u"QTA_TOT_VINO_LAVORATO"_s, vino}, {u"QTA_TOT_ALCOLE_NEUTRO_OTTENUTO"_s, neutro},
                                                   {u"QTA_TOT_ALCOLE_GREZZO_OTTENUTO"_s, grezzo}});
        };
        auto produttore = [this](qint64 c, const QString& cf, const QString& nome, const QString& vino,
                                 const QString& neutro, const QString& aiuto) {
            Produttore(c, cf, nome, {{u"QTA_VINO_EFFETIVAMENTE_DISTILLATA"_s, vino}, {u"QTA_VINO_DISTILLATA_AIUTO"_s, vino},
                                     {u"QTA_ALCOLE_NEUTRO"_s, neutro}, {u"AIUTO_ALCOLE_NEUTRO"_s, aiuto},
                                     {u"TOTALE_AIUTO"_s, aiuto}});
        };
        const qint64 c1 = certificato(u"000000011"_s, u"100"_s, u"30"_s, u"20"_s);
        const qint64 c2 = certificato(u"000000012"_s, u"7"_s, u"3"_s, u"1"_s);
        certificato(u"000000013"_s, u"0"_s, u"0"_s, u"0"_s);  // senza produttori: non compare
        produttore(c1, u"RSSMRA80A01H501U"_s, u"Mario Rossi"_s, u"60,5"_s, u"6,0000"_s, u"1200,50"_s);
        produttore(c1, u"BNCLGU70B02F205X"_s, u"Luigi Bianchi"_s, u"39,5"_s, u"4,25"_s, u"800,25"_s);
        produttore(c2, u"VRDGPP60C03L219Y"_s, u"Giuseppe Verdi"_s, u"7"_s, u"0,7"_s, u"70"_s);
        riga = {1, u"00000000077"_s, u"000000011"_s, QString::number(idDomanda), u"2005"_s, Didascalia};
    }
    QString Stam() { return Righe(db(), u"SELECT STAM FROM DOMANDE_PRODUTTORI WHERE ID_DOMANDA_PRODUTTORE = ?"_s, {idDomanda}).value(0); }
    qint64 idDomanda = 0;
    RigaStampaConferimenti riga;
};

// Le due carte lette indietro; la query del certificato è rifatta a ogni stampa.
TEST_F(StampeConferimenti, DomandaECertificati)
{
    struct Caso { const char* nome; std::function<void()> stampa; QString stam; QStringList presenti, assenti, ordine; };
    const Caso casi[] = {
        {"domanda: certificati, produttori per codice fiscale, somme",
         [this] { EXPECT_TRUE(StampaDomandaProduttore(riga)); }, u"S"_s,
         {u"DOMANDA DEL DISTILLATORE"_s, u"2005/2006"_s, u"Distilleria dell'Etna 02468135799 00000000077 29 1 1500,00"_s,
          u"Certificato UTF n° 000000011 del 15/11/2005"_s, u"Certificato UTF n° 000000012"_s, u"RSSMRA80A01H501U"_s,
          // Somme del primo certificato: vino, ettogradi, neutro, aiuti.
          u"Totale del certificato 000000011 100,0000 100,0000 20,0000 10,2500 0,0000 0,0000 2000,75"_s,
          u"107,0000 30,0000 10,9500 0,0000 0,0000 0,00 2070,75"_s, u"Pagina 1 di 1"_s},
         {u"000000013"_s}, {u"Luigi Bianchi"_s, u"Mario Rossi"_s, u"Giuseppe Verdi"_s}},
        {"primo certificato", [this] { StampaUTF(riga); }, u"N"_s,
         {u"CERTIFICATO UTF"_s, u"Campagna 2005/2006"_s, u"Distilleria dell'Etna 02468135799"_s,
          u"00000000077 000000011 15/11/2005 CATANIA (CT)"_s, u" 60,5 10 6,0000 0 0"_s, u" 39,5 10 4,25 0 0"_s,
          u"Somma dei produttori 100,0000 20,0000 10,2500 0,0000 0,0000"_s, u"Totali del certificato 100 1150 30 20 0"_s},
         {u"Giuseppe Verdi"_s, u"7 10 0,7"_s}, {}},
        {"dopo il primo, il secondo certificato",
         [this] { StampaUTF(riga); riga.certificato = u"000000012"_s; StampaUTF(riga); },
         u"N"_s, {u"1 7 10 0,7 0 0"_s}, {u"60,5"_s}, {}},
    };
    for (const Caso& c : casi) {
        SCOPED_TRACE(c.nome);
        SetUp();
        c.stampa();
        EXPECT_EQ(script->messaggi, Messaggi{});
        EXPECT_EQ(Stam(), c.stam);
        EXPECT_EQ(script->anteprime.value(0).titolo, Didascalia);
        const QString testo = UltimaAnteprima().join(u'\f');
        for (const QString& t : c.presenti)
            EXPECT_TRUE(testo.contains(t)) << t.toStdString() << "\n" << testo.toStdString();
        for (const QString& t : c.assenti)
            EXPECT_FALSE(testo.contains(t)) << t.toStdString();
        for (int i = 1; i < c.ordine.size(); ++i)
            EXPECT_LT(testo.indexOf(c.ordine[i - 1]), testo.indexOf(c.ordine[i])) << c.ordine[i].toStdString();
        TearDown();
    }
}

// Le due stampe sulla stessa riga: rifiuti, guasti nel registro, segno mai messo a torto.
TEST_F(StampeConferimenti, NonRiusciteSenzaSegno)
{
    // attesi: i messaggi delle due stampe, quando non c'è un guasto nel registro.
    struct Caso { const char* nome; std::function<void(RigaStampaConferimenti&)> cambia; Messaggi attesi; QStringList log;
                  int anteprime; };
    auto msg = [](const QString& testo) { return MessaggioRegistrato{testo, 64, Didascalia}; };
    const auto nessunaRiga = msg(u"Selezionare una delle domande."_s), troppe = msg(u"Selezionare una domanda alla volta."_s);
    const auto nessunRecord = msg(u"Non ci sono record da stampare."_s), nessunRecordUtf = msg(u"Non ci sono record da stampare. "_s);
    const Caso casi[] = {
        {"nessuna riga scelta", [](RigaStampaConferimenti& r) { r.righeSelezionate = 0; }, {nessunaRiga, nessunaRiga}, {}, 0},
        {"due righe scelte", [](RigaStampaConferimenti& r) { r.righeSelezionate = 2; }, {troppe, troppe}, {}, 0},
        {"domanda senza certificati", [](RigaStampaConferimenti& r) { r.domanda = u"00000000078"_s; },
         {nessunRecord, nessunRecordUtf}, {}, 0},
        {"numero con un apice", [](RigaStampaConferimenti& r) { r.domanda = u"0000'77"_s; }, {nessunRecord, nessunRecordUtf}, {}, 0},
        // La domanda si stampa, ma con un altro numero il segno non si aggiorna.
        {"certificato senza produttori, segno non aggiornato",
         [](RigaStampaConferimenti& r) { r.certificato = u"000000013"_s; r.idDomandaProduttore = u"999"_s; },
         {{u"Flag di stampa non aggiornato , ripetere la stampa."_s, 64, u"Stampa Domanda del distillatore"_s}, nessunRecordUtf},
         {}, 1},
        {"annullate dall'utente",
         [this](RigaStampaConferimenti&) {
             script->risposteAnteprima.enqueue(RispostaMsg::Annulla);
             script->risposteAnteprima.enqueue(RispostaMsg::Annulla);
         },
         {}, {Etichetta + u"|20545"_s, Etichetta + u"|20545"_s}, 2},
        {"file dei report assenti",
         [this](RigaStampaConferimenti&) {
             QFile::remove(cartella->cartella() + u"/Report/DomandaProduttoriUTF_PAGUnica.rpt"_s);
             QFile::remove(cartella->cartella() + u"/Report/utf.rpt"_s);
         },
         {}, {Etichetta + u"|20507"_s, Etichetta + u"|20507"_s}, 0},
    };
    for (const Caso& c : casi) {
        SCOPED_TRACE(c.nome);
        SetUp();
        c.cambia(riga);
        EXPECT_FALSE(StampaDomandaProduttore(riga));
        StampaUTF(riga);
        EXPECT_EQ(Log(), c.log);
        EXPECT_TRUE(!c.log.isEmpty() || script->messaggi == c.attesi) << script->messaggi.value(0).testo.toStdString();
        EXPECT_EQ(script->anteprime.size(), c.anteprime);
        EXPECT_EQ(Stam(), u"N"_s);
        TearDown();
    }
}

}  // namespace
