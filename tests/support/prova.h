#pragma once
// Ciò che quasi ogni prova usa: la cartella di programma con il database, la
// piattaforma a copione, i confronti dei messaggi e delle righe, la sessione e
// i controlli Qt che le maschere mostrano.

#include "shell/session_state.h"
#include "store/database.h"
#include "support/cartella_prova.h"
#include "support/errori_prova.h"
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
