#pragma once
// Righe dei file di fornitura: pagina di codici windows-1252, un byte per
// carattere, ritorno carrello e avanzamento riga dopo ogni riga, anche
// l'ultima. Le larghezze dei tracciati contano i caratteri: una lettera
// accentata è un carattere e un byte.

#include <QByteArray>
#include <QByteArrayView>
#include <QFile>
#include <QString>

// La riga in byte, senza fine riga. Un carattere che la pagina non ha diventa
// "?" (ogni unità UTF-16, così il numero di byte resta quello dei caratteri).
QByteArray CodificaRiga(const QString& riga);
// I byte di una riga in testo: ogni byte un carattere.
QString DecodificaRiga(const QByteArray& byte);

// Scrittura sequenziale, come "Open ... For Output" e "Print #": il file
// esistente è sostituito. Errori: 76 cartella inesistente, 75 accesso negato,
// 61 scrittura non riuscita.
class ScritturaFornitura {
public:
    explicit ScritturaFornitura(const QString& percorso);
    ~ScritturaFornitura();
    ScritturaFornitura(const ScritturaFornitura&) = delete;
    ScritturaFornitura& operator=(const ScritturaFornitura&) = delete;

    // Scrive la riga seguita da CR LF.
    void Print(const QString& riga);
    void Close();

private:
    void Svuota();
    QFile m_file;
    QByteArray m_buffer;
};

// Lettura sequenziale, come "Line Input #": una riga finisce con CR o con
// CR LF; un LF da solo resta nella riga. Errori in apertura: 53 file
// inesistente, 75 accesso negato. Il file resta aperto finché l'oggetto vive.
class LetturaFornitura {
public:
    explicit LetturaFornitura(const QString& percorso);
    LetturaFornitura(const LetturaFornitura&) = delete;
    LetturaFornitura& operator=(const LetturaFornitura&) = delete;

    bool eof() const { return m_pos >= m_byte.size(); }
    // La riga seguente senza fine riga; a fine file solleva l'errore 62.
    QString LineInput();
    // Lo stesso nel testo dato, che tiene la sua memoria da una riga all'altra.
    void LineInput(QString& riga);

private:
    QFile m_file;
    QByteArray m_byte;  // i byte del file, di solito mappati
    qsizetype m_pos = 0;
};
