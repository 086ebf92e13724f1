#pragma once
// Cartella di programma temporanea con una copia del database consegnato:
// nessun test tocca quello vero. Prepara anche la sessione e la piattaforma
// a copione.

#include "support/piattaforma_script.h"

#include <QString>
#include <QTemporaryDir>
#include <gtest/gtest.h>

class Database;

class CartellaProva {
public:
    CartellaProva();
    ~CartellaProva();
    // Cartella del programma (con database/ dentro).
    QString cartella() const { return m_dir.path(); }
    QString percorsoDatabase() const;

private:
    QTemporaryDir m_dir;
};

// Fixture di base: una CartellaProva nuova, la sessione azzerata con
// PathDatabase impostato e la piattaforma a copione installata.
class ProvaConDatabase : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;
    Database& db();
    PiattaformaScript* script = nullptr;
    std::unique_ptr<CartellaProva> cartella;
};

// Percorso di un file dei dati di prova (tests/data/...).
QString FileDiProva(const QString& nome);
