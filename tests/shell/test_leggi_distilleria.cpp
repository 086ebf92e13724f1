// Lettura della distilleria: tabella vuota, una riga, valori Null, più righe.
#include "common/errore.h"
#include "shell/LeggiDistilleria.h"
#include "shell/session_state.h"
#include "store/database.h"
#include "support/cartella_prova.h"

#include <gtest/gtest.h>

namespace {

class LetturaDistilleria : public ProvaConDatabase {
protected:
    void Inserisci(const QVariant& cf, const QVariant& ragione, const QVariant& indirizzo)
    {
        db().Execute(QStringLiteral("INSERT INTO DISTILLERIA (CODI_FISC,RAGI_SOCI,INDI_DIST) VALUES (?,?,?)"),
                     {cf, ragione, indirizzo});
    }
};

TEST_F(LetturaDistilleria, TabellaVuota)
{
    db();
    // Valori di una lettura precedente: la tabella vuota non li tocca.
    sessione().DistilleriaDati = {QStringLiteral("X"), QStringLiteral("Y"), QStringLiteral("Z")};
    sessione().TitoloMaschera = QStringLiteral(" Domande ");

    EXPECT_FALSE(LeggiDistilleria());
    EXPECT_TRUE(sessione().DistilleriaAssente);
    EXPECT_EQ(sessione().ModoDistilleria, QStringLiteral("I"));
    EXPECT_EQ(sessione().TitoloMaschera, QStringLiteral(" Inizializza Distilleria "));
    EXPECT_EQ(sessione().DistilleriaDati.CODI_FISC, QStringLiteral("X"));
}

TEST_F(LetturaDistilleria, RigaPresente)
{
    const struct {
        const char* caso;
        QVariant cf, ragione, indirizzo;
        QString attesoCf, attesaRagione, attesoIndirizzo;
    } casi[] = {
        {"tre testi", QStringLiteral("DSTFRM70C12Z404F"), QStringLiteral("CANTINA D'ANNA"),
         QStringLiteral("VIA DEI TINI 4"), QStringLiteral("DSTFRM70C12Z404F"), QStringLiteral("CANTINA D'ANNA"),
         QStringLiteral("VIA DEI TINI 4")},
        {"Null diventa vuoto", QStringLiteral("02468135799"), QVariant(), QVariant(), QStringLiteral("02468135799"),
         QString(), QString()},
    };
    for (const auto& c : casi) {
        SCOPED_TRACE(c.caso);
        db().Execute(QStringLiteral("DELETE FROM DISTILLERIA"));
        Inserisci(c.cf, c.ragione, c.indirizzo);
        sessione().DistilleriaAssente = true;
        sessione().TitoloMaschera = QStringLiteral(" Fatture ");

        EXPECT_TRUE(LeggiDistilleria());
        EXPECT_FALSE(sessione().DistilleriaAssente);
        EXPECT_EQ(sessione().ModoDistilleria, QStringLiteral("M"));
        EXPECT_EQ(sessione().DistilleriaDati.CODI_FISC, c.attesoCf);
        EXPECT_EQ(sessione().DistilleriaDati.RAGI_SOCI, c.attesaRagione);
        EXPECT_EQ(sessione().DistilleriaDati.INDI_DIST, c.attesoIndirizzo);
        EXPECT_EQ(sessione().TitoloMaschera, QStringLiteral(" Fatture ")) << "il titolo cambia solo senza distilleria";
    }
}

TEST_F(LetturaDistilleria, ConPiuRigheValeLaPrima)
{
    Inserisci(QStringLiteral("02468135799"), QStringLiteral("PRIMA"), QStringLiteral("VIA UNO"));
    Inserisci(QStringLiteral("13579246805"), QStringLiteral("SECONDA"), QStringLiteral("VIA DUE"));
    ASSERT_TRUE(LeggiDistilleria());
    EXPECT_EQ(sessione().DistilleriaDati.RAGI_SOCI, QStringLiteral("PRIMA"));
}

TEST_F(LetturaDistilleria, SenzaTabellaLErroreEsceAlChiamante)
{
    db().Execute(QStringLiteral("DROP TABLE DISTILLERIA"));
    try {
        LeggiDistilleria();
        FAIL() << "nessun errore";
    } catch (const ErroreSistema& e) {
        EXPECT_EQ(e.numero(), CodiciErrore::TabellaMancante);
    }
    EXPECT_TRUE(script->messaggi.isEmpty()) << "la routine non ha etichetta d'errore";
}

}  // namespace
