#pragma once
// Database seminato per le prove del ramo conferimenti: tre domande del
// distillatore (la 1 con due certificati, la 2 senza, la 3 di un altro
// articolo), produttori legati al certificato 1 e produttori liberi.

#include "support/prova.h"

// I certificati come li lascia SeminaCertificati, nelle colonne di TutteLeRigheUtf.
inline const QString TutteLeRigheUtf = QStringLiteral(
    "SELECT iD_UTF, iD_DOMANDA, NUMERO_CERTIFICATO_UTF, DESCR_UFFICIO_UTF_PROVINCIA, SIGLA_UFFICIO_UTF_PROVINCIA, "
    "ISTAT_UFFICIO_UTF_PROVINCIA, DATA_EMISSIONE_CERTIFICATO, QTA_TOT_ETTOGRADI_VINO_LAVORATO, "
    "QTA_TOT_VINO_LAVORATO, QTA_TOT_ALCOLE_GREZZO_OTTENUTO, QTA_TOT_ALCOLE_NEUTRO_OTTENUTO, "
    "QTA_TOT_ACQUAVITE_OTTENUTO, QUADRATURA FROM TAB_UTF ORDER BY iD_UTF");
inline const QString Utf1 = QStringLiteral("1|1|UTF000001|TORINO|TO|001|10/01/2006|3300,0000|300,0000|10,0000|20,0000|0,0000|");
inline const QString Utf2 = QStringLiteral("2|1|UTF000002|CUNEO|CN|004|11/01/2006|600,0000|50,0000|0,0000|5,0000|0,0000|0");

class ProvaConferimenti : public ProvaConDatabase {
protected:
    void SetUp() override
    {
        ProvaConDatabase::SetUp();
        for (const char* sql : {
                 "INSERT INTO DOMANDE_PRODUTTORI (ID_DOMANDA_PRODUTTORE, TIPO_ARTICOLO, DOMANDA, STAM, SCAR, "
                 "PROG_VERS, ANTICIPO_RICEVUTO, PROG_INVIO, DATA_CAMP) VALUES "
                 "(1, '29', '00000000011', 'S', 'S', '1', '0,00', 2, '2005'), "
                 "(2, '29', '00000000012', 'S', 'S', '1', '0,00', 0, '2005'), "
                 "(3, '30', '00000000013', 'S', 'S', '1', '0,00', 0, '2006')",
                 "INSERT INTO PRODUTTORI (iD_PRODUTTORI, CODI_FISC, DENOMINAZIONE, ID_COLORE, "
                 "QTA_VINO_EFFETIVAMENTE_DISTILLATA, ETTOGRADI, AIUTO_ALCOLE_GREZZO, QTA_ALCOLE_NEUTRO, "
                 "IMPORTO_DETRAIBILE) VALUES "
                 "(1, '01234567890', 'CANTINA DELL''OLMO', 1, '100,5000', '1100,2500', '12,34', '1,5000', '0,00'), "
                 "(2, '09876543210', 'VIGNE ALTE', 1, '200,0000', '2200,0000', '56,78', '2,5000', '1,00'), "
                 "(3, 'RSSMRA70A01L219X', 'ROSSI MARIO', 1, '10,0000', '110,0000', '', '', ''), "
                 "(4, 'RSSLGU71B02L219Y', 'ROSSETTI LUIGI', 1, '20,0000', '220,0000', '', '', ''), "
                 "(5, 'BNCNNA80C03L219Z', 'BIANCHI ANNA', 1, '30,0000', '330,0000', '', '', ''), "
                 "(6, NULL, 'SENZA CODICE', 1, '1,0000', '1,0000', '', '', '')",
                 "INSERT INTO TAB_ID_UTF_PRODUTTORE (iD_UTF, iD_PRODUTTORE) VALUES (1, 1), (1, 2)"})
            db().Execute(QString::fromUtf8(sql));
        SeminaCertificati();
    }

    // I due certificati della domanda 1, di nuovo come all'inizio.
    void SeminaCertificati()
    {
        db().Execute(QStringLiteral("DELETE FROM TAB_UTF"));
        db().Execute(QStringLiteral(
            "INSERT INTO TAB_UTF (iD_UTF, iD_DOMANDA, NUMERO_CERTIFICATO_UTF, DESCR_UFFICIO_UTF_PROVINCIA, "
            "SIGLA_UFFICIO_UTF_PROVINCIA, ISTAT_UFFICIO_UTF_PROVINCIA, DATA_EMISSIONE_CERTIFICATO, "
            "QTA_TOT_VINO_LAVORATO, QTA_TOT_ETTOGRADI_VINO_LAVORATO, QTA_TOT_ALCOLE_GREZZO_OTTENUTO, "
            "QTA_TOT_ALCOLE_NEUTRO_OTTENUTO, QTA_TOT_ACQUAVITE_OTTENUTO, QUADRATURA) VALUES "
            "(1, 1, 'UTF000001', 'TORINO', 'TO', '001', '10/01/2006', '300,0000', '3300,0000', '10,0000', "
            "'20,0000', '0,0000', ''), "
            "(2, 1, 'UTF000002', 'CUNEO', 'CN', '004', '11/01/2006', '50,0000', '600,0000', '0,0000', "
            "'5,0000', '0,0000', '0')"));
    }

    // Le marche di stampa e scarico delle tre domande, "id|STAM|SCAR".
    QStringList Marche()
    {
        return Righe(db(), QStringLiteral("SELECT ID_DOMANDA_PRODUTTORE, STAM, SCAR FROM DOMANDE_PRODUTTORI "
                                          "ORDER BY ID_DOMANDA_PRODUTTORE"));
    }
    // I legami "utf|produttore".
    QStringList Legami()
    {
        return Righe(db(), QStringLiteral("SELECT iD_UTF, iD_PRODUTTORE FROM TAB_ID_UTF_PRODUTTORE "
                                          "ORDER BY iD_UTF, iD_PRODUTTORE"));
    }
    // Le righe di LOGERR "settore|etichetta".
    QStringList Errori()
    {
        return Righe(db(), QStringLiteral("SELECT SETTORE, DESC_APPL FROM LOGERR ORDER BY rowid"));
    }
};
