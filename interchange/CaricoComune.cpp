#include "interchange/CaricoComune.h"

#include "common/errore.h"
#include "common/log_errori.h"
#include "common/piattaforma.h"
#include "common/testo.h"
#include "interchange/Destinazioni.h"
#include "interchange/FileFornitura.h"
#include "interchange/ScaricoComune.h"
#include "shell/session_state.h"
#include "store/database.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>

QString NomeFileFornitura(const QString& tag, const QString& campagna)
{
    const bool soloArt29 = campagna == QLatin1String("2005") || campagna == QLatin1String("2004");
    return QStringLiteral("ART") + (soloArt29 ? Articoli.left(2) : Articoli) + tag + campagna +
           QStringLiteral(".txt");
}

namespace CaricoComune {

namespace {

const QString ACapo = QStringLiteral("\r\n");
// Le etichette sono quelle della maschera delle fatture, anche per i conferimenti.
const QString EtichettaCarico = QStringLiteral(" frmCarico.battoncarica");
const QString EtichettaNote = QStringLiteral(" frmCarico.ScriviNote");
const QString EtichettaAllinea = QStringLiteral(" frmCarico.AllineaDB");

bool s_inCorso = false;

}  // namespace

bool CaricoInCorso() { return s_inCorso; }

QString TestoScarti(const QList<Scarto>& scarti)
{
    QString testo;
    for (const Scarto& s : scarti)
        testo += PadDestra(s.Domanda, 11, QLatin1Char(' ')) + QStringLiteral(" - ") +
                 PadDestra(s.Progressivo, 2, QLatin1Char(' ')) + QStringLiteral(" - ") +
                 PadDestra(s.Fattura.trimmed(), 15, QLatin1Char(' ')) + QStringLiteral(" - ") +
                 PadDestra(s.Motivo, 70, QLatin1Char(' ')) + ACapo + ACapo;
    return testo;
}

TransazioneConfermata::TransazioneConfermata() { Db().IniziaTransazione(); }

TransazioneConfermata::~TransazioneConfermata()
{
    try {
        Conferma();
    } catch (const ErroreSistema&) {
        // Già in uscita per un altro errore: è quello a essere riportato.
    }
}

void TransazioneConfermata::Conferma()
{
    if (!m_aperta)
        return;
    m_aperta = false;
    Db().ConfermaTransazione();
}

bool CaricoFornitura::ctrlCloni(const QString& tabella, const QString& condizione, const QVariantList& parametri)
{
    sessione().StrSql = QStringLiteral("select * from ") + tabella + QLatin1Char(' ') + condizione;
    Recordset rs = Db().OpenRecordset(sessione().StrSql, parametri);
    return !rs.eof();
}

void CaricoFornitura::ValoreScarto(const QString& motivo, const QString& domanda, const QString& progressivo,
                                   const QString& fattura, const QString& bolla)
{
    m_scarti.append(Scarto{domanda, progressivo, fattura, motivo, bolla});
}

void CaricoFornitura::RigaScritta()
{
    if (m_osservatore && ++m_scritte % PassoAvanzamento == 0)
        m_osservatore->RigheScritte(m_scritte);
}

void CaricoFornitura::PLAY(bool attiva)
{
    if (m_osservatore)
        m_osservatore->PLAY(attiva);
}

void CaricoFornitura::BATTONCARICA(const QString& percorsoFile)
{
    const QString titolo = sessione().TitoloMaschera;
    const QString copia = FileDelProgramma(NomeFileTemporaneo);
    m_scarti.clear();
    m_scritte = 0;
    s_inCorso = true;
    const auto fine = qScopeGuard([] { s_inCorso = false; });
    Azzera();
    Clessidra(true);
    try {
        FileCopy(percorsoFile, copia);
        bool giaCaricata = false;
        {
            LetturaFornitura file(copia);
            qint64 letti = 0;
            QString riga;
            while (!file.eof()) {
                file.LineInput(riga);
                if (riga.size() != LunghezzaRecord()) {
                    // Nonostante le parole, si va avanti con quel che si è letto.
                    MsgBox(QStringLiteral("Il tracciato a una lunghezza di tipo record errata.") + ACapo +
                               QStringLiteral("IL caricamento sarà terminato."),
                           StileMsg::Critico, titolo);
                    break;
                }
                if (LeggiRiga(riga) == 0) {
                    if (GiaCaricata()) {
                        MsgBox(QStringLiteral("Fornitura già caricata."), StileMsg::Informazione, titolo);
                        giaCaricata = true;
                        break;
                    }
                    PLAY(true);
                }
                if (m_osservatore && ++letti % PassoAvanzamento == 0)
                    m_osservatore->RecordLetti(letti);
            }
            if (m_osservatore)
                m_osservatore->RecordLetti(letti);
        }

        if (giaCaricata) {
        } else if (NumeroDomandeLette() == 0) {
            MsgBox(QStringLiteral("Nell'archivio le domande da caricare sono già presenti. "), StileMsg::Informazione,
                   titolo);
        } else if (!Controllodati()) {
            MsgBox(QStringLiteral("Carico fornitura non riuscito."), StileMsg::Critico, titolo);
        } else if (!m_scarti.isEmpty()) {
            // Nulla va nelle tabelle.
            if (MsgBox(QStringLiteral("Tracciato fornitura anomala.") + ACapo +
                           QStringLiteral("Visualizzare le domande non caricate?"),
                       StileMsg::SiNo, titolo) == RispostaMsg::Si)
                ScriviNote();
        } else {
            bool scritte = false;
            {
                TransazioneConfermata transazione;
                scritte = AllineaDB();
                try {
                    transazione.Conferma();
                } catch (const ErroreSistema& e) {
                    // La conferma fallita non ha lasciato nulla del carico:
                    // è un carico non riuscito, registrato come ogni errore.
                    ScriviLogErr(QString(), EtichettaAllinea, e.numero(), e.descrizione());
                    scritte = false;
                }
            }
            if (scritte)
                MsgBox(QStringLiteral("Carico fornitura correttamente eseguito"), StileMsg::Informazione, titolo);
            else
                MsgBox(QStringLiteral("Carico fornitura non riuscito."), StileMsg::Critico, titolo);
            // Il conto finale, anche sotto il passo.
            if (m_osservatore && m_scritte > 0)
                m_osservatore->RigheScritte(m_scritte);
        }
        PLAY(false);
        CancellaSeEsiste(copia);
    } catch (const ErroreSistema& e) {
        PLAY(false);
        ScriviLogErr(QString(), EtichettaCarico, e.numero(), e.descrizione());
    }
    Clessidra(false);
}

void CaricoFornitura::ScriviNote()
{
    const QString percorso = FileDelProgramma(NomeDomandeScartate);
    try {
        QFile file(percorso);
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
            throw ErroreSistema(CodiciErrore::AccessoPercorso);
        // Nella codifica locale, la stessa con cui MostraTesto legge.
        const QByteArray byte = TestoScarti(m_scarti).toLocal8Bit();
        const bool scritto = file.write(byte) == byte.size() && file.flush();
        file.close();
        if (!scritto)
            throw ErroreSistema(CodiciErrore::DiscoPieno);
        MostraTesto(percorso);
    } catch (const ErroreSistema& e) {
        QFile::remove(percorso);
        ScriviLogErr(QString(), EtichettaNote, e.numero(), e.descrizione());
    }
}

}  // namespace CaricoComune
