#pragma once
// Ciò che quasi ogni prova usa: la cartella di programma con il database, la
// piattaforma a copione, i confronti dei messaggi e delle righe, la sessione e
// i controlli Qt che le maschere mostrano.

#include "common/aiuto.h"
#include "shell/session_state.h"
#include "store/database.h"
#include "support/cartella_prova.h"
#include "support/verifiche.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDate>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <functional>
#include <gtest/gtest.h>
#include <memory>

// Batte un carattere qualunque: QTest::keyClick conosce solo l'ASCII ("\b" è
// il Backspace), le lettere accentate e i segni di windows-1252 passano col
// loro testo.
inline void Batti(QWidget* w, QChar c)
{
    if (c.unicode() < 0x80)
        return QTest::keyClick(w, static_cast<char>(c.unicode()));
    const char16_t u = c.toUpper().unicode();
    QTest::sendKeyEvent(QTest::Click, w, u < 0x100 ? static_cast<Qt::Key>(u) : Qt::Key_unknown, QString(c),
                        Qt::NoModifier);
}
inline void Digita(QWidget* w, const QString& testo)
{
    for (const QChar c : testo)
        Batti(w, c);
}

// I nomi chiesti all'aiuto finché vive; poi torna l'aiuto di prima.
struct AiutiChiesti : QStringList {
    AiutiChiesti() : prima(ImpostaMostraHelp([this](const QString& nome) { append(nome); })) {}
    ~AiutiChiesti() { ImpostaMostraHelp(prima); }
    FunzioneHelp prima;
};

// Mostra la finestra e la rende attiva, come quella che l'utente ha davanti:
// il fuoco e la validazione all'uscita dai campi funzionano solo così.
inline bool MostraAttiva(QWidget* w)
{
    w->show();
    w->activateWindow();
    return QTest::qWaitForWindowActive(w);
}
