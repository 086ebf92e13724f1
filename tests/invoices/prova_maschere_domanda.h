#pragma once
// Fixture delle maschere di record delle domande (fatturazione e
// conferimenti): database di prova, titolo della voce di menu, aiuto
// intercettato, la maschera mostrata e attiva come davanti all'utente.

#include "common/aiuto.h"
#include "shell/session_state.h"
#include "store/database.h"
#include "support/cartella_prova.h"
#include "support/verifiche.h"

#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <memory>

class ProvaMascheraDomanda : public ProvaConDatabase {
protected:
    void SetUp() override
    {
        ProvaConDatabase::SetUp();
        db();
        vecchioHelp = ImpostaMostraHelp([this](const QString& nome) { aiuti << nome; });
    }
    void TearDown() override
    {
        maschera.reset();
        ImpostaMostraHelp(vecchioHelp);
        ProvaConDatabase::TearDown();
    }

    template <typename T, typename... A>
    T& Apri(const QString& modo, A&&... argomenti)
    {
        maschera.reset();
        sessione().ModoMaschera = modo;
        auto* m = new T(std::forward<A>(argomenti)...);
        maschera.reset(m);
        m->show();
        m->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(m));
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
    // Sceglie la voce con quel testo (-1 se non c'è).
    static void Scegli(QComboBox* combo, const QString& testo) { combo->setCurrentIndex(combo->findText(testo)); }
    static QStringList Voci(const QComboBox* combo)
    {
        QStringList v;
        for (int i = 0; i < combo->count(); ++i)
            v << combo->itemText(i);
        return v;
    }
    static void Premi(QPushButton* pulsante) { QTest::mouseClick(pulsante, Qt::LeftButton); }

    QStringList Domande()
    {
        return Righe(db(), QStringLiteral("SELECT ID_DOMANDA, DOMANDA, PROGRESSIVO, STAM, SCAR, TIPO_ARTICOLO, ID_VARIETA, "
                                          "PROG_VERS, PROG_INVIO, DATA_CAMP FROM DOMANDE ORDER BY 1"));
    }
    QStringList DomandeProduttori()
    {
        return Righe(db(), QStringLiteral("SELECT ID_DOMANDA_PRODUTTORE, TIPO_ARTICOLO, DOMANDA, STAM, SCAR, "
                                          "ANTICIPO_RICEVUTO, PROG_VERS, PROG_INVIO, DATA_CAMP FROM DOMANDE_PRODUTTORI "
                                          "ORDER BY 1"));
    }
    QStringList Registro() { return Righe(db(), QStringLiteral("SELECT DESC_APPL, CODI_ERRO FROM LOGERR")); }

    std::unique_ptr<QDialog> maschera;
    QStringList aiuti;
    FunzioneHelp vecchioHelp;
};
