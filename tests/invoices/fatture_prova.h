#pragma once
// Fixture delle prove delle fatture: una domanda scelta in DomandaSel, fatture
// e bolle seminate con chiavi fisse.

#include "support/prova.h"

class ProvaFatture : public ProvaConDatabase {
protected:
    static constexpr qint32 IdDomanda = 7;

    void SetUp() override
    {
        ProvaConDatabase::SetUp();
        db().Execute(QStringLiteral("INSERT INTO DOMANDE (ID_DOMANDA, DOMANDA, PROGRESSIVO, STAM, SCAR, "
                                    "TIPO_ARTICOLO, ID_VARIETA, PROG_VERS, DATA_CAMP) "
                                    "VALUES (?, '00000000123', '01', 'S', 'S', '29', 1, '1', '2005')"),
                     {IdDomanda});
        DomandaSelezionata& d = sessione().DomandaSel;
        d.ID_DOMANDA = IdDomanda;
        d.DOMANDA = QStringLiteral("00000000123");
        d.PROGRESSIVO = QStringLiteral("01");
        d.TIPO_ARTICOLO = QStringLiteral("29");
        d.PRODOTTO = QStringLiteral("AGR ALCOLE GREZZO");
        d.CAMPAGNA = QStringLiteral("2005");
        sessione().TitoloMaschera = QStringLiteral("Fatture");
        // I messaggi informativi ricevono OK; le domande hanno la risposta in coda.
        script->AccettaMessaggiSenzaRisposta();
    }

    // Una fattura con la chiave data; i campi che contano nelle prove come argomenti.
    void Fattura(qint64 id, const QString& nume, const QString& codiFisc = QStringLiteral("01234567890"),
                 const QString& qtaProd = QStringLiteral("100,0000"), qint32 domanda = IdDomanda)
    {
        db().Execute(QStringLiteral("INSERT INTO FATTURE (ID_FATTURA, ID_DOMANDA, CODI_FISC, DENOMINAZIONE, "
                                    "NUME_FATT, DATA_FATT, DATA_COMP, DATA_PAGA, QTA_PROD, QTA_LAVO, GRAD, "
                                    "PREZ_MINI, IMPO, IVA, IMPO_TOTA, ID_LAVORAZIONE, FOGL, RIGO) VALUES "
                                    "(?, ?, ?, 'CANTINA ' || ?, ?, '10/01/2006', '05/01/2006', '20/01/2006', ?, "
                                    "'100,0000', '10,0000', '1,0000', '1000,00', '200,00', '1200,00', 1, '0', '0')"),
                     {id, domanda, codiFisc, nume, nume, qtaProd});
    }

    void Bolla(qint64 id, qint64 fattura, const QString& numero, const QString& data, const QString& quantita,
               const QString& pagamento = QString())
    {
        db().Execute(QStringLiteral("INSERT INTO BOLLE (ID_BOLLA, FK_ID_FATTURA, NUMERO_BOLLA, DATA_CONSEGNA, "
                                    "QUANTITA_PRODOTTO, DATA_PAGA, GRADO, NUME_FATT_TRAS, DATA_FATT_TRAS) "
                                    "VALUES (?, ?, ?, ?, ?, ?, '10,0000', 'T1', '01/01/2006')"),
                     {id, fattura, numero, data, quantita, pagamento});
    }

    QStringList Bolle() { return Righe(db(), QStringLiteral("SELECT * FROM BOLLE ORDER BY ID_BOLLA")); }
    QString Segni()
    {
        return Righe(db(), QStringLiteral("SELECT STAM, SCAR FROM DOMANDE WHERE ID_DOMANDA = ?"), {IdDomanda})
            .join(QLatin1Char(';'));
    }
};
