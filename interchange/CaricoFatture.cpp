#include "interchange/CaricoFatture.h"

#include "common/errore.h"
#include "common/log_errori.h"
#include "common/piattaforma.h"
#include "common/testo.h"
#include "interchange/CursoreSqlite.h"
#include "interchange/Destinazioni.h"
#include "interchange/FileFornitura.h"
#include "interchange/ScaricoComune.h"
#include "interchange/TracciatoFatture.h"
#include "shell/session_state.h"
#include "store/database.h"

#include <QFile>
#include <QHash>
#include <sqlite3.h>

using namespace TracciatoFatture;

namespace {

const QString EtichettaControllo = QStringLiteral("frmCarico.CARICOTABELLE");
const QString EtichettaAllinea = QStringLiteral(" frmCarico.AllineaDB");
const QString ACapo = QStringLiteral("\r\n");
constexpr int IndiceFuoriIntervallo = 9;
QString Chiave(const QString& a, const QString& b, const QString& c = QString())
{
    return a + QChar(0x1f) + b + QChar(0x1f) + c;
}

// Le bolle di una fattura: quelle della sua domanda con lo stesso numero di
// fattura, codice fiscale e numero di domanda, nell'ordine del file. Una
// domanda normale si scorre; una con migliaia di fatture e bolle passa per
// un indice, così il carico resta lineare.
class BollePerFattura {
public:
    explicit BollePerFattura(const DomandaCarico& d) : m_domanda(d)
    {
        if (d.Bolle.size() * d.Fatture.size() <= SogliaIndice)
            return;
        for (qsizetype k = 1; k < d.Bolle.size(); ++k) {
            const BollaCarico& b = d.Bolle.at(k);
            m_indice[Chiave(b.NUME_FATT, b.CODI_FISC, b.DOMANDA)].append(k);
        }
    }
    QList<qsizetype> Di(const FatturaCarico& f) const
    {
        if (!m_indice.isEmpty() || m_domanda.Bolle.size() * m_domanda.Fatture.size() > SogliaIndice)
            return m_indice.value(Chiave(f.NUME_FATT, f.CODI_FISC, f.DOMANDA));
        QList<qsizetype> sue;
        for (qsizetype k = 1; k < m_domanda.Bolle.size(); ++k) {
            const BollaCarico& b = m_domanda.Bolle.at(k);
            if (b.NUME_FATT == f.NUME_FATT && b.CODI_FISC == f.CODI_FISC && b.DOMANDA == f.DOMANDA)
                sue.append(k);
        }
        return sue;
    }

private:
    static constexpr qsizetype SogliaIndice = 4096;
    const DomandaCarico& m_domanda;
    QHash<QString, QList<qsizetype>> m_indice;
};

// Il carico del ramo fatture sul percorso comune dei carichi.
class CaricoFatture final : public CaricoComune::CaricoFornitura {
public:
    using CaricoFornitura::CaricoFornitura;

protected:
    int LunghezzaRecord() const override { return TracciatoFatture::LunghezzaRecord; }
    void Azzera() override { m_carico.Azzera(); }
    int LeggiRiga(const QString& riga) override { return m_carico.LeggiRiga(riga); }
    qint32 NumeroDomandeLette() const override { return m_carico.NumeroDomande; }
    bool GiaCaricata() override;
    bool Controllodati() override;
    bool AllineaDB() override;

private:
    bool VerificaCloniDomnadaInArray(const QString& domanda, const QString& progressivo);
    static const FatturaCarico& FatturaAllIndice(const DomandaCarico& d, qsizetype indice);

    TracciatoFatture::Carico m_carico;
    QHash<QString, int> m_coppie;
};

bool CaricoFatture::GiaCaricata()
{
    const IntestazioneCarico& f = m_carico.Fornitura;
    return ctrlCloni(QStringLiteral("TAB_Fornitura"),
                     QStringLiteral(" where CAMPAGNA = ? and  Numero_domaNde = ? and  Numero_fatture = ?"
                                    " and  Numero_bolle   = ? and  Data_forniturE = ?"
                                    " and PROGRESSIVO_fornitura = ?"),
                     {f.CAMPAGNA, f.Numero_domaNDe, f.Numero_fatture, f.Numero_bolle, f.Data_forniturE,
                      f.PROGRESSIVO_fornitura});
}

bool CaricoFatture::VerificaCloniDomnadaInArray(const QString& domanda, const QString& progressivo)
{
    return m_coppie.value(Chiave(domanda, progressivo)) > 1;
}

const FatturaCarico& CaricoFatture::FatturaAllIndice(const DomandaCarico& d, qsizetype indice)
{
    if (indice < 0 || indice >= d.Fatture.size())
        throw ErroreSistema(IndiceFuoriIntervallo, QStringLiteral("Indice non compreso nell'intervallo"));
    return d.Fatture.at(indice);
}

bool CaricoFatture::Controllodati()
{
    try {
        QList<DomandaCarico>& domande = m_carico.Domande;
        m_coppie.clear();
        for (qsizetype i = 1; i < domande.size(); ++i)
            ++m_coppie[Chiave(domande.at(i).DOMANDA, domande.at(i).PROGRESSIVO)];
        // Le tabelle di riferimento non cambiano durante il carico.
        QHash<QString, QString> varieta, lavorazioni;

        // ctrlCloni su DOMANDE, preparata una volta per tutte le domande.
        Istruzione giaInArchivio(Db().handle(), QStringLiteral("select * from DOMANDE where domanda = ? and progressivo = ?"));
        for (qsizetype i = 1; i < domande.size(); ++i) {
            DomandaCarico& d = domande[i];
            if (giaInArchivio.Testo(d.DOMANDA).Testo(d.PROGRESSIVO).TrovaRiga()) {
                ValoreScarto(QStringLiteral("Num. Domanda e Progressivo sono già caricati in archivio."), d.DOMANDA,
                             d.PROGRESSIVO, QString(), QString());
            } else if (VerificaCloniDomnadaInArray(d.DOMANDA, d.PROGRESSIVO)) {
                ValoreScarto(QStringLiteral("Domanda presente più di una volta nella fornitura."), d.DOMANDA,
                             d.PROGRESSIVO, QString(), QString());
            } else {
                auto it = varieta.constFind(d.CODI_PROD);
                if (it == varieta.constEnd()) {
                    Recordset rs = Db().OpenRecordset(
                        QStringLiteral("SELECT ID_VARIETA FROM VARIETA WHERE CODI_PROD = ?"), {d.CODI_PROD});
                    if (rs.eof()) {
                        MsgBox(QStringLiteral("Identificativo delle varietà non esistente"), StileMsg::Informazione,
                               sessione().TitoloMaschera);
                        return false;
                    }
                    it = varieta.insert(d.CODI_PROD, rs.Fields(0).testo());
                }
                d.ID_VARIETA = *it;
            }

            if (d.Fatture.size() > 1) {
                for (qsizetype j = 1; j < d.Fatture.size(); ++j) {
                    FatturaCarico& f = d.Fatture[j];
                    if (f.DOMANDA != d.DOMANDA || f.PROGRESSIVO != d.PROGRESSIVO) {
                        ValoreScarto(QStringLiteral("Fattura non appartenente alla domanda."), d.DOMANDA,
                                     d.PROGRESSIVO, f.NUME_FATT, QString());
                        continue;
                    }
                    auto it = lavorazioni.constFind(f.CODI_LAVO);
                    if (it == lavorazioni.constEnd()) {
                        Recordset rs = Db().OpenRecordset(
                            QStringLiteral("SELECT id_LAVORAZIONE FROM lavorazioni WHERE CODI_lavo = ?"),
                            {f.CODI_LAVO});
                        if (rs.eof()) {
                            MsgBox(QStringLiteral("Identificativo lavorazione non esistente"),
                                   StileMsg::Informazione, sessione().TitoloMaschera);
                            return false;
                        }
                        it = lavorazioni.insert(f.CODI_LAVO, rs.Fields(0).testo());
                    }
                    f.ID_LAVORAZIONE = *it;
                }
            } else {
                ValoreScarto(QStringLiteral("Domanda. senza fatture"), d.DOMANDA, d.PROGRESSIVO, QString(),
                             QString());
            }

            if (d.Bolle.size() > 1) {
                QSet<QString> numeri;
                for (qsizetype j = 1; j < d.Fatture.size(); ++j)
                    numeri.insert(d.Fatture.at(j).NUME_FATT);
                for (qsizetype j = 1; j < d.Bolle.size(); ++j) {
                    const BollaCarico& b = d.Bolle.at(j);
                    if (b.DOMANDA != d.DOMANDA || b.PROGRESSIVO != d.PROGRESSIVO)
                        ValoreScarto(QStringLiteral("Domanda. senza bolle"), d.DOMANDA, d.PROGRESSIVO,
                                     FatturaAllIndice(d, j).NUME_FATT, QString());
                    else if (!numeri.contains(b.NUME_FATT))
                        ValoreScarto(QStringLiteral("Bolla non appartenente alla fattura."), d.DOMANDA,
                                     d.PROGRESSIVO, FatturaAllIndice(d, j).NUME_FATT, b.NUMERO_BOLLA);
                }
            } else {
                // La fattura dell'ultimo indice raggiunto: l'ultima della domanda.
                ValoreScarto(QStringLiteral("Domanda. senza bolle"), d.DOMANDA, d.PROGRESSIVO,
                             d.Fatture.constLast().NUME_FATT, QString());
            }
        }
        return true;
    } catch (const ErroreSistema& e) {
        ScriviLogErr(QString(), EtichettaControllo, e.numero(), e.descrizione());
        return false;
    }
}

bool CaricoFatture::AllineaDB()
{
    try {
        // Dentro la transazione del carico, confermata in ogni caso: quel che
        // è stato scritto prima di un errore resta.
        {
            sqlite3* h = Db().handle();
            Istruzione domanda(h, QStringLiteral("INSERT INTO DOMANDE (DOMANDA, PROGRESSIVO, TIPO_ARTICOLO, ID_VARIETA, STAM, SCAR,"
                                   " DATA_CAMP) VALUES (?, ?, ?, ?, 'N', 'N', ?)"));
            Istruzione fattura(h, QStringLiteral("INSERT INTO FATTURE (ID_DOMANDA, ID_LAVORAZIONE, NUME_FATT, CODI_FISC,"
                                   " DENOMINAZIONE, DATA_FATT, QTA_PROD, GRAD, PREZ_MINI, IMPO, IVA, IMPO_TOTA,"
                                   " DATA_PAGA, DATA_COMP, QTA_LAVO) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?,"
                                   " ?, ?)"));
            Istruzione bolla(h, QStringLiteral("INSERT INTO BOLLE (FK_ID_FATTURA, NUMERO_BOLLA, DATA_CONSEGNA, QUANTITA_PRODOTTO,"
                                 " GRADO, DATA_PAGA) VALUES (?, ?, ?, ?, ?, ?)"));
            const QString campagna = m_carico.Fornitura.CAMPAGNA;
            for (qsizetype i = 1; i < m_carico.Domande.size(); ++i) {
                const DomandaCarico& d = m_carico.Domande.at(i);
                const qint64 idDomanda = domanda.Testo(d.DOMANDA)
                                             .Testo(d.PROGRESSIVO)
                                             .Testo(d.TIPO_ARTICOLO)
                                             .Intero(d.ID_VARIETA.toLongLong())
                                             .Testo(campagna)
                                             .Esegui();
                const BollePerFattura bollePerFattura(d);
                for (qsizetype j = 1; j < d.Fatture.size(); ++j) {
                    const FatturaCarico& f = d.Fatture.at(j);
                    const QList<qsizetype> sue = bollePerFattura.Di(f);
                    // La data di introduzione è la consegna della prima bolla.
                    const QString dataComp = sue.isEmpty() ? QString() : d.Bolle.at(sue.first()).DATA_CONSEGNA;
                    const QString prezzo = f.PREZ_MINI.trimmed();
                    const qint64 idFattura = fattura.Intero(idDomanda)
                                                 .Intero(f.ID_LAVORAZIONE.toLongLong())
                                                 .Testo(f.NUME_FATT)
                                                 .Testo(f.CODI_FISC)
                                                 .Testo(f.DENOMINAZIONE)
                                                 .Testo(f.DATA_FATT)
                                                 .Testo(f.QTA_PROD)
                                                 .Testo(f.GRAD)
                                                 .Testo(prezzo)
                                                 .Testo(f.IMPO)
                                                 .Testo(f.IVA)
                                                 .Testo(f.IMPO_TOTA)
                                                 .Testo(f.DATA_PAGA)
                                                 .Testo(dataComp)
                                                 .Testo(f.QTA_LAVO)
                                                 .Esegui();
                    for (qsizetype k : sue) {
                        const BollaCarico& b = d.Bolle.at(k);
                        bolla.Intero(idFattura)
                            .Testo(b.NUMERO_BOLLA)
                            .Testo(b.DATA_CONSEGNA)
                            .Testo(b.QUANTITA_PRODOTTO)
                            .Testo(b.GRADO)
                            .Testo(b.DATA_PAGA)
                            .Esegui();
                    }
                    RigaScritta();
                }
            }

            // Controllo di fine carico, su tutta la tabella: le fatture senza
            // data di introduzione se ne vanno con le loro bolle.
            QString elenco;
            QList<qint64> daTogliere;
            {
                Recordset rs = Db().OpenRecordset(QStringLiteral(
                    "select ID_FATTURA, CODI_FISC, DENOMINAZIONE, NUME_FATT from fatture"
                    " where DATA_COMP IS NULL or trim(DATA_COMP) = ''"));
                for (; !rs.eof(); rs.MoveNext()) {
                    daTogliere.append(rs.Fields(QStringLiteral("ID_FATTURA")).intero());
                    elenco += rs.Fields(QStringLiteral("CODI_FISC")).testo() + QStringLiteral(" - ") +
                              rs.Fields(QStringLiteral("Denominazione")).testo() + QStringLiteral(" - ") +
                              rs.Fields(QStringLiteral("NUME_FATT")).testo() + ACapo;
                }
            }
            for (qint64 id : std::as_const(daTogliere)) {
                Db().Execute(QStringLiteral("DELETE FROM BOLLE where FK_ID_FATTURA=?"), {id});
                Db().Execute(QStringLiteral("DELETE FROM FATTURE where ID_FATTURA=?"), {id});
            }
            if (!elenco.isEmpty() &&
                MsgBox(QStringLiteral("Ci sono delle fatture scartate perchè mancanti della data di introduzione.") +
                           ACapo + QStringLiteral("Visualizzare la lista?"),
                       StileMsg::SiNo, QStringLiteral("Elenco delle fatture scartate")) == RispostaMsg::Si) {
                const QString percorso = FileDelProgramma(NomeFattureScartate);
                QFile file(percorso);
                if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
                    throw ErroreSistema(CodiciErrore::AccessoPercorso);
                file.write((elenco + ACapo).toLocal8Bit());
                file.close();
                MostraTesto(percorso);
            }

            const IntestazioneCarico& f = m_carico.Fornitura;
            Db().Execute(QStringLiteral("INSERT INTO TAB_Fornitura (CAMPAGNA, Numero_domaNDe, Numero_fatture,"
                                        " Numero_bolle, Data_forniturE, PROGRESSIVO_fornitura)"
                                        " VALUES (?, ?, ?, ?, ?, ?)"),
                         {f.CAMPAGNA, f.Numero_domaNDe, f.Numero_fatture, f.Numero_bolle, f.Data_forniturE,
                          f.PROGRESSIVO_fornitura});
            return true;
        }
    } catch (const ErroreSistema& e) {
        ScriviLogErr(QString(), EtichettaAllinea, e.numero(), e.descrizione());
        return false;
    }
}

}  // namespace

void CaricaFornitura(const QString& percorsoFile) { CaricaFornitura(percorsoFile, nullptr); }

void CaricaFornitura(const QString& percorsoFile, OsservatoreCarico* osservatore)
{
    CaricoFatture carico(osservatore);
    carico.BATTONCARICA(percorsoFile);
}
