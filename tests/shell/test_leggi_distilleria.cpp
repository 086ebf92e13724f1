// Lettura della distilleria: tabella vuota, una riga, valori Null, più righe.
#include "common/errore.h"
#include "shell/LeggiDistilleria.h"
#include "support/prova.h"

namespace {

using LetturaDistilleria = ProvaConDatabase;

QString Letta()
{
    const auto& d = sessione().DistilleriaDati;
    return QStringList{sessione().ModoDistilleria, d.CODI_FISC, d.RAGI_SOCI, d.INDI_DIST, sessione().TitoloMaschera}
        .join(QLatin1Char('|'));
}

TEST_F(LetturaDistilleria, TabellaVuotaUnaRigaNullEPiuRighe)
{
    const struct {
        const char* caso;
        const char* righe;  // valori da inserire, vuoto per nessuna riga
        bool trovata;
        const char* letta;  // modo|codice|ragione|indirizzo|titolo
    } casi[] = {
        // La tabella vuota lascia i dati letti prima; il titolo cambia solo senza distilleria.
        {"vuota", nullptr, false, "I|X|Y|Z| Inizializza Distilleria "},
        {"una riga", "('DSTFRM70C12Z404F', 'CANTINA D''ANNA', 'VIA DEI TINI 4')", true,
         "M|DSTFRM70C12Z404F|CANTINA D'ANNA|VIA DEI TINI 4| Fatture "},
        {"Null diventa vuoto", "('02468135799', NULL, NULL)", true, "M|02468135799||| Fatture "},
        {"vale la prima", "('02468135799', 'PRIMA', 'UNO'), ('13579246805', 'SECONDA', 'DUE')", true,
         "M|02468135799|PRIMA|UNO| Fatture "},
    };
    for (const auto& c : casi) {
        SCOPED_TRACE(c.caso);
        db().Execute(QStringLiteral("DELETE FROM DISTILLERIA"));
        if (c.righe)
            db().Execute(QStringLiteral("INSERT INTO DISTILLERIA (CODI_FISC,RAGI_SOCI,INDI_DIST) VALUES ") +
                         QString::fromLatin1(c.righe));
        sessione().DistilleriaDati = {QStringLiteral("X"), QStringLiteral("Y"), QStringLiteral("Z")};
        sessione().DistilleriaAssente = c.trovata;
        sessione().TitoloMaschera = QStringLiteral(" Fatture ");
        EXPECT_EQ(LeggiDistilleria(), c.trovata);
        EXPECT_EQ(sessione().DistilleriaAssente, !c.trovata);
        EXPECT_EQ(Letta(), QString::fromLatin1(c.letta));
    }
}

TEST_F(LetturaDistilleria, SenzaTabellaLErroreEsceAlChiamante)
{
    db().Execute(QStringLiteral("DROP TABLE DISTILLERIA"));
    EXPECT_TRUE(ErroreDi([] { LeggiDistilleria(); }).startsWith(QString::number(CodiciErrore::TabellaMancante) + ' '));
    EXPECT_TRUE(script->messaggi.isEmpty()) << "la routine non ha etichetta d'errore";
}

}  // namespace
