#include "archive/Archivio.h"

#include "archive/floppy.h"
#include "archive/zip_archivio.h"
#include "common/errore.h"
#include "common/log_errori.h"
#include "common/piattaforma.h"
#include "common/scelta_cartella.h"
#include "shell/ApriDatabase.h"
#include "shell/LeggiDistilleria.h"
#include "shell/session_state.h"
#include "store/database.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

const QString OperazioneAnnullataTesto = QStringLiteral("Operazione annullata.");

// La didascalia della finestra principale, titolo di alcuni messaggi.
QString DidascaliaMenu() { return TitoloLungo + QStringLiteral(" - Campagna ") + CampagnaEstesa; }

QString Unisci(const QString& cartella, const QString& nome)
{
    return cartella.endsWith(QLatin1Char('/')) || cartella.endsWith(QLatin1Char('\\')) ? cartella + nome
                                                                                       : cartella + QLatin1Char('/') + nome;
}

// La prova di scrittura: un file "CHECK" creato, chiuso e cancellato.
bool CartellaScrivibile(const QString& cartella)
{
    QFile prova(Unisci(cartella, QStringLiteral("CHECK")));
    if (!prova.open(QIODevice::WriteOnly))
        return false;
    prova.close();
    return prova.remove();
}

// Nel ripristino la cartella scelta deve contenere l'archivio: vuoto se
// l'utente rinuncia, altrimenti la cartella (eventualmente scelta di nuovo).
QString CartellaConArchivio(QString cartella, const QString& nomeFile, const QString& richiesta)
{
    while (!cartella.isEmpty()) {
        QString testo;
        if (SullaCartellaFloppy(cartella) && !QFileInfo(sessione().CartellaFloppy).isDir())
            testo = QStringLiteral("Attenzione, nessun floppy disk inserito.");
        else if (QFileInfo(cartella).isDir() && !QFileInfo(cartella).isReadable())
            testo = QString::number(CodiciErrore::AutorizzazioneNegata) + QStringLiteral(" - ") +
                    DescrizioneErrore(CodiciErrore::AutorizzazioneNegata);
        else if (QFileInfo(Unisci(cartella, nomeFile)).isFile())
            return cartella;
        else
            testo = QStringLiteral("Il percorso indicato non è corretto");
        if (MsgBox(testo, StileMsg::RiprovaAnnulla, QStringLiteral(" Percorso file ")) != RispostaMsg::Riprova)
            return QString();
        cartella = SfogliaCartellaPer(QStringLiteral("restore"), richiesta, sessione().PathDatabase);
    }
    return cartella;
}

// Chiede la cartella finché l'utente ne dà una usabile o rinuncia.
void ChiediPercorso(int modo, const QString& nomeFile)
{
    auto& s = sessione();
    s.PercorsoArchivio.clear();
    const QString richiesta = (modo == 0 ? QStringLiteral("Selezionare il percorso dove destinare il file: ")
                                         : QStringLiteral("Selezionare il percorso dove recuperare il file: ")) +
                              QStringLiteral("'' ") + nomeFile + QStringLiteral("''.");
    for (;;) {
        // Il ripristino parte dalla cartella del database; il backup dall'ultima scelta.
        QString cartella = SfogliaCartellaPer(modo == 1 ? QStringLiteral("restore") : QStringLiteral("backup"), richiesta,
                                              modo == 1 ? sessione().PathDatabase : QString());
        if (modo == 1)
            cartella = CartellaConArchivio(cartella, nomeFile, richiesta);
        // Il dischetto non si prova: lo controllano le routine del floppy.
        if (!cartella.isEmpty() && !SullaCartellaFloppy(cartella) && !CartellaScrivibile(cartella))
            cartella.clear();
        if (cartella.isEmpty()) {
            if (MsgBox(QStringLiteral("Annullare operazione ?"), StileMsg::SiNo + StileMsg::Informazione,
                       QStringLiteral("Gestione Dati")) == RispostaMsg::Si) {
                s.OperazioneAnnullata = true;
                return;
            }
            continue;
        }
        while (cartella.size() > 1 && (cartella.endsWith(QLatin1Char('/')) || cartella.endsWith(QLatin1Char('\\'))))
            cartella.chop(1);
        s.PercorsoArchivio = cartella;
        return;
    }
}

// Il passo zip: vero se riuscito (o annullato sul dischetto).
bool PassoZip(int modo, const QString& sorgente, const QString& destinazione)
{
    auto& s = sessione();
    const QString archivio = modo == 0 ? destinazione : sorgente;
    if (modo == 0 && SullaCartellaFloppy(archivio)) {
        do
            ControlloFloppyVuoto();
        while (s.ControlloFloppyRipeti);
        if (s.OperazioneAnnullata) {
            MsgBox(OperazioneAnnullataTesto, StileMsg::Informazione, TitoloBackupRestore);
            return true;
        }
    }
    // Dal dischetto si chiede l'unico disco, che è anche l'ultimo.
    if (modo == 1 && SullaCartellaFloppy(archivio) && !XZipDataBase_DiscoSuccessivo(0))
        return false;
    try {
        if (modo == 0)
            CreaArchivio(sorgente, destinazione);
        else
            RipristinaArchivio(sorgente, destinazione);
    } catch (const ErroreSistema& e) {
        // Il motivo, poi i messaggi di sempre.
        MsgBox(e.descrizione(), StileMsg::Esclamativo, TitoloBackupRestore);
        return false;
    }
    return true;
}

}  // namespace

bool XZipDataBase_DiscoSuccessivo(int numero)
{
    auto& s = sessione();
    const QString testo = numero == 0 ? QStringLiteral("Inserire l'ultimo disco della serie nel drive.")
                                      : QStringLiteral("Inserire il disco N° ") + QString::number(numero) +
                                            QStringLiteral(" ");
    if (MsgBox(testo, StileMsg::OKAnnulla + StileMsg::Informazione, DidascaliaMenu()) == RispostaMsg::Annulla) {
        MsgBox(OperazioneAnnullataTesto, StileMsg::Informazione, DidascaliaMenu());
        s.OperazioneAnnullata = true;
        return false;
    }
    s.OperazioneAnnullata = false;
    do {
        const bool presente = s.ModoArchivio == 0 ? ControlloFloppyFile() : ControlloFloppyInserito();
        s.ControlloDiscoRipeti = !presente && s.ControlloFloppyRipeti;
    } while (s.ControlloDiscoRipeti);
    if (s.OperazioneAnnullata) {
        MsgBox(OperazioneAnnullataTesto, StileMsg::Informazione, DidascaliaMenu());
        return false;
    }
    return true;
}

bool Gestione_DataBase(int modo, const QString& nomeFile, const QString& percorso)
{
    auto& s = sessione();
    bool riuscito = false;
    try {
        s.OperazioneAnnullata = false;
        s.ModoArchivio = modo;
        ChiediPercorso(modo, nomeFile);
        if (s.PercorsoArchivio.isEmpty()) {
            Clessidra(false);
            return false;
        }
        const QString archivio = Unisci(s.PercorsoArchivio, nomeFile);
        riuscito = modo == 1 ? PassoZip(modo, archivio, percorso) : PassoZip(modo, percorso, archivio);
        if (riuscito && !s.OperazioneAnnullata)
            MsgBox(QStringLiteral("Trasferimento dei dati effettuato correttamente"), StileMsg::Informazione,
                   QStringLiteral("Gestione dati "));
        if (!riuscito && !s.OperazioneAnnullata)
            MsgBox(QStringLiteral("Operazione non andata a buon fine."), StileMsg::Informazione, TitoloBackupRestore);
    } catch (const std::exception&) {
        // Senza connessione non c'è LOGERR su cui scrivere.
        MsgBox(QStringLiteral("Attenzione si è verificata una anomalia"), StileMsg::Critico, TitoloBackupRestore);
    }
    Clessidra(false);
    return riuscito;
}

void ArchivioDaMenu(int Index)
{
    auto& s = sessione();
    Clessidra(true);
    if (s.DbDistilleria)
        s.DbDistilleria->Close();
    s.DbDistilleria.reset();
    const bool riuscito = Index == 0 ? Gestione_DataBase(0, NomeArchivio, s.PathDatabase + NomeDatabase)
                                     : Gestione_DataBase(1, NomeArchivio, s.PathDatabase);
    if (!riuscito && !s.OperazioneAnnullata)
        MsgBox((Index == 0 ? QStringLiteral("Si è verificato un errore durante il BackUp dell'archivio:")
                           : QStringLiteral("Si è verificato un errore durante il Restore dell'archivio:")) +
                   QStringLiteral("\n- ") + s.PathDatabase + NomeDatabase,
               StileMsg::Informazione, TitoloApplicazione);
    if (!riuscito && s.OperazioneAnnullata)
        MsgBox(OperazioneAnnullataTesto, StileMsg::Informazione, DidascaliaMenu());
    ApriDatabase(false);
    try {
        LeggiDistilleria();
    } catch (const ErroreSistema& e) {
        ScriviLogErr(QString(), QStringLiteral("FrmMenu mnuAr_Click"), e.numero(), e.descrizione());
    }
    Clessidra(false);
}
