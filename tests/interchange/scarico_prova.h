#pragma once
// Quello che le prove dei due scarichi hanno in comune: la cartella di uscita,
// il file finale e la copia provvisoria, i numeri di scarico e d'invio, le
// righe del file confrontate una per una.

#include "record_prova.h"

class ProvaScarico : public ProvaConDatabase {
protected:
    ProvaScarico(QString titolo, QString domande, QString file)
        : m_titolo(std::move(titolo)), m_domande(std::move(domande)), m_file(std::move(file))
    {
    }
    void SetUp() override
    {
        ProvaConDatabase::SetUp();
        sessione().TitoloMaschera = m_titolo;
        sessione().DistilleriaDati = Distilleria();
        destinazione = QDir(cartella->cartella()).filePath(QStringLiteral("uscita"));
        QDir().mkpath(destinazione);
        sessione().CartellaFloppy = QDir(cartella->cartella()).filePath(QStringLiteral("floppy"));
    }

    QString Finale(const QString& numero = QStringLiteral("001")) const
    {
        return QDir(destinazione).filePath(m_file + numero);
    }
    QString Temporaneo() const { return QDir(cartella->cartella()).filePath(QStringLiteral("COPI1.666")); }
    // L'ultimo numero di scarico e, per ogni domanda, il flag di scarico col numero d'invio.
    QString Stato()
    {
        return Righe(db(), QStringLiteral("SELECT PROG FROM PROG_DSK")).join(',') + " " +
               Righe(db(), "SELECT SCAR || PROG_INVIO FROM " + m_domande).join(',');
    }
    static QStringList Contenuto(const QString& cartella)
    {
        return QDir(cartella).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    }
    // Le righe del file, ognuna chiusa da CR LF.
    static QStringList LeggiRighe(const QString& percorso)
    {
        QFile f(percorso);
        if (!f.open(QIODevice::ReadOnly))
            return {QStringLiteral("(file assente)")};
        const QByteArray dati = f.readAll();
        if (!dati.endsWith("\r\n"))
            return {QStringLiteral("(manca CR LF in fondo)")};
        return QString::fromLatin1(dati.chopped(2)).split(QStringLiteral("\r\n"));
    }
    static void ConfrontaRighe(const QStringList& attese, const QString& percorso)
    {
        const QStringList ottenute = LeggiRighe(percorso);
        ASSERT_EQ(attese.size(), ottenute.size());
        for (qsizetype i = 0; i < attese.size(); ++i)
            EXPECT_TRUE(RecordUguale(attese.at(i), ottenute.at(i))) << "riga " << i + 1;
    }

    QString destinazione;

private:
    QString m_titolo, m_domande, m_file;
};
