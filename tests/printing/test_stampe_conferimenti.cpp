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
        idDomanda = db().InserisciRiga(u"DOMANDE_PRODUTTORI"_s,
                                       {{u"TIPO_ARTICOLO"_s, u"29"_s}, {u"DOMANDA"_s, u"00000000077"_s}, {u"STAM"_s, u"N"_s},
                                        {u"SCAR"_s, u"N"_s}, {u"ANTICIPO_RICEVUTO"_s, u"1500,00"_s}, {u"PROG_VERS"_s, u"1"_s},
                                        {u"DATA_CAMP"_s, u"2005"_s}});
        const qint64 c1 = Certificato(u"000000011"_s, u"100"_s, u"30"_s, u"20"_s);
        const qint64 c2 = Certificato(u"000000012"_s, u"7"_s, u"3"_s, u"1"_s);
        Certificato(u"000000013"_s, u"0"_s, u"0"_s, u"0"_s);  // senza produttori: non compare
        Produttore(c1, u"RSSMRA80A01H501U"_s, u"Mario Rossi"_s, u"60,5"_s, u"6,0000"_s, u"1200,50"_s);
        Produttore(c1, u"BNCLGU70B02F205X"_s, u"Luigi Bianchi"_s, u"39,5"_s, u"4,25"_s, u"800,25"_s);
        Produttore(c2, u"VRDGPP60C03L219Y"_s, u"Giuseppe Verdi"_s, u"7"_s, u"0,7"_s, u"70"_s);
        riga.righeSelezionate = 1;
        riga.domanda = u"00000000077"_s;
        riga.certificato = u"000000011"_s;
        riga.idDomandaProduttore = QString::number(idDomanda);
        riga.chiaveCampagna = u"2005"_s;
        riga.didascaliaMaschera = Didascalia;
    }
    qint64 Certificato(const QString& numero, const QString& vino, const QString& neutro, const QString& grezzo)
    {
        return db().InserisciRiga(
            u"TAB_UTF"_s, {{u"iD_DOMANDA"_s, idDomanda}, {u"NUMERO_CERTIFICATO_UTF"_s, numero},
                           {u"DESCR_UFFICIO_UTF_PROVINCIA"_s, u"CATANIA"_s}, {u"SIGLA_UFFICIO_UTF_PROVINCIA"_s, u"CT"_s},
                           {u"DATA_EMISSIONE_CERTIFICATO"_s, u"15/11/2005"_s}, {u"QTA_TOT_VINO_LAVORATO"_s, vino},
                           {u"QTA_TOT_ETTOGRADI_VINO_LAVORATO"_s, u"1150"_s}, {u"QTA_TOT_ALCOLE_NEUTRO_OTTENUTO"_s, neutro},
                           {u"QTA_TOT_ALCOLE_GREZZO_OTTENUTO"_s, grezzo}, {u"QTA_TOT_ACQUAVITE_OTTENUTO"_s, u"0"_s}});
    }
    void Produttore(qint64 certificato, const QString& cf, const QString& nome, const QString& vino,
                    const QString& neutro, const QString& aiuto)
    {
        const qint64 p = db().InserisciRiga(
            u"PRODUTTORI"_s, {{u"CODI_FISC"_s, cf}, {u"DENOMINAZIONE"_s, nome}, {u"COMUNICAZIONE_CONTRATTO"_s, u"01"_s},
                              {u"CODICE_CONTRATTO_DISTILLAZIONE"_s, u"12345678901"_s}, {u"QTA_MAX_DISTILLABILE"_s, u"100"_s},
                              {u"QTA_VINO_EFFETIVAMENTE_DISTILLATA"_s, vino}, {u"QTA_VINO_DISTILLATA_AIUTO"_s, vino},
                              {u"TITOLO_ALCOLOMETRICO_FATTURATO"_s, u"11,5"_s}, {u"ETTOGRADI"_s, u"10"_s},
                              {u"QTA_ALCOLE_NEUTRO"_s, neutro}, {u"QTA_ALCOLE_GREZZO"_s, u"0"_s}, {u"QTA_ACQUAVITE"_s, u"0"_s},
                              {u"AIUTO_ALCOLE_NEUTRO"_s, aiuto}, {u"AIUTO_ALCOLE_GREZZO"_s, u"0,00"_s},
                              {u"AIUTO_ACQUAVITE"_s, u"0,00"_s}, {u"IMPORTO_DETRAIBILE"_s, u"0,00"_s},
                              {u"TOTALE_AIUTO"_s, aiuto}, {u"APPROVAZIONE_ANTICIPATA"_s, u"N"_s}, {u"ID_COLORE"_s, 1}});
        db().Execute(u"INSERT INTO TAB_ID_UTF_PRODUTTORE(id_utf,id_produttore) values(?, ?)"_s, {certificato, p});
    }
    QString Stam() { return Righe(db(), u"SELECT STAM FROM DOMANDE_PRODUTTORI WHERE ID_DOMANDA_PRODUTTORE = ?"_s, {idDomanda}).value(0); }
    QStringList Log() { return Righe(db(), u"SELECT DESC_APPL || '|' || CODI_ERRO FROM LOGERR"_s); }
    qint64 idDomanda = 0;
    RigaStampaConferimenti riga;
};

TEST_F(StampeConferimenti, DomandaConCertificatiEProduttori)
{
    EXPECT_TRUE(StampaDomandaProduttore(riga));
    EXPECT_EQ(script->messaggi, Messaggi{});
    EXPECT_EQ(Stam(), u"S"_s);
    ASSERT_EQ(script->anteprime.size(), 1);
    EXPECT_EQ(script->anteprime[0].titolo, Didascalia);
    const QString testo = UltimaAnteprima().join(u'\f');
    for (const QString& atteso :
         {u"DOMANDA DEL DISTILLATORE"_s, u"2005/2006"_s, u"Distilleria dell'Etna 02468135799 00000000077 29 1 1500,00"_s,
          u"Certificato UTF n° 000000011 del 15/11/2005"_s, u"Certificato UTF n° 000000012"_s, u"Mario Rossi"_s,
          u"Luigi Bianchi"_s, u"Giuseppe Verdi"_s, u"RSSMRA80A01H501U"_s,
          // Somme del primo certificato: vino, ettogradi, neutro, aiuti.
          u"Totale del certificato 000000011 100,0000 100,0000 20,0000 10,2500 0,0000 0,0000 2000,75"_s,
          u"107,0000 30,0000 10,9500 0,0000 0,0000 0,00 2070,75"_s, u"Pagina 1 di 1"_s})
        EXPECT_TRUE(testo.contains(atteso)) << atteso.toStdString() << "\n" << testo.toStdString();
    EXPECT_FALSE(testo.contains(u"000000013"_s));
    // Il primo certificato prima del secondo, i produttori per codice fiscale.
    EXPECT_LT(testo.indexOf(u"Luigi Bianchi"_s), testo.indexOf(u"Mario Rossi"_s));
    EXPECT_LT(testo.indexOf(u"Mario Rossi"_s), testo.indexOf(u"Giuseppe Verdi"_s));
}

TEST_F(StampeConferimenti, CertificatoConProduttoriETotali)
{
    StampaUTF(riga);
    EXPECT_EQ(script->messaggi, Messaggi{});
    EXPECT_EQ(Stam(), u"N"_s);
    QString testo = UltimaAnteprima().join(u'\f');
    for (const QString& atteso : {u"CERTIFICATO UTF"_s, u"Campagna 2005/2006"_s, u"Distilleria dell'Etna 02468135799"_s,
                                  u"00000000077 000000011 15/11/2005 CATANIA (CT)"_s, u" 60,5 10 6,0000 0 0"_s,
                                  u" 39,5 10 4,25 0 0"_s, u"Somma dei produttori 100,0000 20,0000 10,2500 0,0000 0,0000"_s,
                                  u"Totali del certificato 100 1150 30 20 0"_s})
        EXPECT_TRUE(testo.contains(atteso)) << atteso.toStdString() << "\n" << testo.toStdString();
    EXPECT_FALSE(testo.contains(u"Giuseppe Verdi"_s) || testo.contains(u"7 10 0,7"_s));

    // La query è rifatta a ogni stampa: ora il secondo certificato soltanto.
    riga.certificato = u"000000012"_s;
    StampaUTF(riga);
    testo = UltimaAnteprima().join(u'\f');
    EXPECT_TRUE(testo.contains(u"1 7 10 0,7 0 0"_s)) << testo.toStdString();
    EXPECT_FALSE(testo.contains(u"60,5"_s));
}

TEST_F(StampeConferimenti, RifiutiSenzaStampa)
{
    struct Caso {
        const char* nome;
        std::function<void(RigaStampaConferimenti&)> cambia;
        QString domanda, certificato;  // messaggi delle due stampe
    };
    const QString nessunaRiga = u"Selezionare una delle domande."_s;
    const QString troppe = u"Selezionare una domanda alla volta."_s;
    const Caso casi[] = {
        {"nessuna riga scelta", [](RigaStampaConferimenti& r) { r.righeSelezionate = 0; }, nessunaRiga, nessunaRiga},
        {"due righe scelte", [](RigaStampaConferimenti& r) { r.righeSelezionate = 2; }, troppe, troppe},
        {"domanda senza certificati", [](RigaStampaConferimenti& r) { r.domanda = u"00000000078"_s; },
         u"Non ci sono record da stampare."_s, u"Non ci sono record da stampare. "_s},
        {"numero con un apice", [](RigaStampaConferimenti& r) { r.domanda = u"0000'77"_s; },
         u"Non ci sono record da stampare."_s, u"Non ci sono record da stampare. "_s},
        {"certificato senza produttori", [](RigaStampaConferimenti& r) { r.certificato = u"000000013"_s; },
         QString(), u"Non ci sono record da stampare. "_s},
    };
    for (const Caso& c : casi) {
        SCOPED_TRACE(c.nome);
        RigaStampaConferimenti r = riga;
        c.cambia(r);
        script->messaggi.clear();
        script->anteprime.clear();
        const bool segnata = StampaDomandaProduttore(r);
        EXPECT_EQ(segnata, c.domanda.isEmpty());
        StampaUTF(r);
        Messaggi attesi;
        if (!c.domanda.isEmpty())
            attesi << MessaggioRegistrato{c.domanda, 64, Didascalia};
        attesi << MessaggioRegistrato{c.certificato, 64, Didascalia};
        EXPECT_EQ(script->messaggi, attesi);
        EXPECT_EQ(script->anteprime.size(), c.domanda.isEmpty() ? 1 : 0);
        EXPECT_EQ(Log(), QStringList());
        db().Execute(u"UPDATE DOMANDE_PRODUTTORI SET STAM = 'N'"_s);
    }
}

TEST_F(StampeConferimenti, GuastiNelRegistroSenzaSegno)
{
    struct Caso {
        const char* nome;
        std::function<void()> guasta;
        QStringList log;  // dopo le due stampe
    };
    const Caso casi[] = {
        {"annullate dall'utente",
         [this] {
             script->risposteAnteprima.enqueue(RispostaMsg::Annulla);
             script->risposteAnteprima.enqueue(RispostaMsg::Annulla);
         },
         {Etichetta + u"|20545"_s, Etichetta + u"|20545"_s}},
        {"file dei report assenti",
         [this] {
             QFile::remove(cartella->cartella() + u"/Report/DomandaProduttoriUTF_PAGUnica.rpt"_s);
             QFile::remove(cartella->cartella() + u"/Report/utf.rpt"_s);
         },
         {Etichetta + u"|20507"_s, Etichetta + u"|20507"_s}},
    };
    for (const Caso& c : casi) {
        SCOPED_TRACE(c.nome);
        SetUp();
        c.guasta();
        EXPECT_FALSE(StampaDomandaProduttore(riga));
        StampaUTF(riga);
        EXPECT_EQ(Log(), c.log);
        EXPECT_EQ(Stam(), u"N"_s);
        TearDown();
    }
}

TEST_F(StampeConferimenti, SegnoNonAggiornato)
{
    riga.idDomandaProduttore = u"999"_s;
    EXPECT_FALSE(StampaDomandaProduttore(riga));
    EXPECT_EQ(script->messaggi, (Messaggi{{u"Flag di stampa non aggiornato , ripetere la stampa."_s, 64,
                                           u"Stampa Domanda del distillatore"_s}}));
    EXPECT_EQ(script->anteprime.size(), 1);
    EXPECT_EQ(Stam(), u"N"_s);
}

}  // namespace
