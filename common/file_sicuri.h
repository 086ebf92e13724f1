#pragma once
// File consegnati all'utente (forniture, archivi): il programma li dice
// scritti solo quando sono sul supporto. Il contenuto è forzato sul disco
// (fsync) insieme alla cartella che lo nomina; una copia si scrive con un nome
// provvisorio, si rilegge dal supporto e si confronta byte per byte, e solo
// allora prende il nome definitivo. Un guasto a metà non lascia mai un file
// parziale sotto il nome definitivo.
//
// Gli errori escono come ErroreSistema: 61 disco pieno o supporto tolto,
// 75 scrittura negata, 76 cartella inesistente, 53 sorgente assente.

#include <QFile>
#include <QString>

// Suffisso dei file provvisori scritti accanto alla destinazione.
inline const QString SuffissoProvvisorio = QStringLiteral(".nuovo");

// File scritto da capo e forzato sul supporto. Se non è chiuso con Chiudi()
// (un errore a metà) il file si cancella.
class FileSuDisco {
public:
    explicit FileSuDisco(const QString& percorso);
    ~FileSuDisco();
    FileSuDisco(const FileSuDisco&) = delete;
    FileSuDisco& operator=(const FileSuDisco&) = delete;

    void Scrivi(const char* dati, qint64 n);
    // Svuota i buffer, forza sul supporto, chiude: ogni guasto è un errore.
    void Chiudi();

private:
    [[noreturn]] void Guasto(int numero);
    QFile m_file;
    bool m_chiuso = false;
};

// Forza sul supporto la voce dei file di una cartella (creazioni, rinomini).
void ForzaCartella(const QString& cartella);
// Rinomina sostituendo la destinazione in un colpo, poi forza la cartella.
void RinominaSuDisco(const QString& da, const QString& a);
// Copia verificata: nome provvisorio, scrittura forzata, rilettura dal
// supporto e confronto con la sorgente, poi il nome definitivo. Il file che
// c'era col nome definitivo resta intatto finché la copia non è buona.
void CopiaVerificata(const QString& sorgente, const QString& destinazione);
