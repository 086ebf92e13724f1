#pragma once
// Fixture delle maschere di record delle domande e dei cambi di numero: un
// database con due domande per ramo (7 e 8 in DOMANDE, 7 e 9 in
// DOMANDE_PRODUTTORI, tutte dell'articolo 30, stampate e scaricate) e due
// certificati; i record di sessione sulla domanda 7 come li lascia la lista;
// l'aiuto intercettato; la maschera mostrata e attiva.

#include "support/prova.h"

#include <QDialog>

inline const QString TitoloProva = QStringLiteral(" Domande ");

class ProvaMascheraDomanda : public ProvaConDatabase {
protected:
    void SetUp() override
    {
        ProvaConDatabase::SetUp();
        for (const char* sql :
             {"INSERT INTO DOMANDE (ID_DOMANDA, DOMANDA, PROGRESSIVO, STAM, SCAR, TIPO_ARTICOLO, ID_VARIETA, PROG_VERS, "
              "PROG_INVIO, DATA_CAMP) VALUES (1, '00000000007', '01', 'S', 'S', '30', 2, '3', 4, '2003'), "
              "(2, '00000000008', '01', 'S', 'S', '30', 2, '3', 4, '2003')",
              "INSERT INTO DOMANDE_PRODUTTORI (ID_DOMANDA_PRODUTTORE, TIPO_ARTICOLO, DOMANDA, STAM, SCAR, "
              "ANTICIPO_RICEVUTO, PROG_VERS, PROG_INVIO, DATA_CAMP) VALUES "
              "(1, '30', '00000000007', 'S', 'S', '10,00', '2', 3, '2003'), "
              "(2, '30', '00000000009', 'S', 'S', '10,00', '2', 3, '2003')",
              "INSERT INTO TAB_UTF (iD_UTF, iD_DOMANDA, NUMERO_CERTIFICATO_UTF) VALUES (1, 1, 'UTF1'), (2, 2, 'UTF2')"})
            db().Execute(QString::fromLatin1(sql));
        SelezionaDomanda7();
    }
    // I record di sessione come li lascia la lista sulla domanda 7 (e sul suo primo certificato).
    static void SelezionaDomanda7()
    {
        auto& s = sessione();
        s.TitoloMaschera = TitoloProva;
        s.DomandaSel = {1, "00000000007", "S", "S", "2", "30", "01", "3", "ANE ALCOLE NEUTRO", 4, "2003"};
        s.DomandaProduttoreSel = {1, "00000000007", "S", "S", "30", "2", "10,00", 3, "2003"};
        s.UtfSel.iD_UTF = 1;
        s.UtfSel.iD_DOMANDA = 1;
        s.UtfSel.NUMERO_CERTIFICATO_UTF = QStringLiteral("UTF1");
    }
    void TearDown() override
    {
        maschera.reset();
        ProvaConDatabase::TearDown();
    }

    template <typename T>
    T& Mostra(T* m)
    {
        maschera.reset(m);
        EXPECT_TRUE(MostraAttiva(m));
        return *m;
    }

    // Batte il testo nel campo, come l'utente, dopo averlo svuotato.
    static void Scrivi(QLineEdit* campo, const QString& testo)
    {
        campo->setFocus(Qt::MouseFocusReason);
        campo->selectAll();
        QTest::keyClick(campo, Qt::Key_Backspace);
        QTest::keyClicks(campo, testo);
    }
    static void Scegli(QComboBox* combo, const char* testo) { combo->setCurrentIndex(combo->findText(QString::fromUtf8(testo))); }
    static QStringList Voci(const QComboBox* combo)
    {
        QStringList v;
        for (int i = 0; i < combo->count(); ++i)
            v << combo->itemText(i);
        return v;
    }
    static void Premi(QPushButton* pulsante) { QTest::mouseClick(pulsante, Qt::LeftButton); }
    QStringList Registro() { return Righe(db(), QStringLiteral("SELECT DESC_APPL, CODI_ERRO FROM LOGERR")); }

    AiutiChiesti aiuti;
    std::unique_ptr<QDialog> maschera;
};

// Un guasto del database preparato da un trigger sulla tabella.
inline QString Blocca(const char* tabella, const char* evento = "UPDATE")
{
    return QStringLiteral("CREATE TRIGGER blocco BEFORE %1 ON %2 BEGIN SELECT RAISE(ABORT, 'database bloccato'); END")
        .arg(QString::fromLatin1(evento), QString::fromLatin1(tabella));
}
inline MessaggioRegistrato MessaggioGuasto(const QString& etichetta)
{
    return {MessaggioLogErr(3019, QStringLiteral("Errore del database: database bloccato"), etichetta), 48,
            QStringLiteral("Gestione Errori")};
}
