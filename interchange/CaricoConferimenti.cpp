#include "interchange/CaricoConferimenti.h"

#include "common/errore.h"
#include "common/log_errori.h"
#include "common/numeri.h"
#include "deliveries/MetodiDomandaProduttori.h"
#include "deliveries/MetodiProduttore.h"
#include "deliveries/MetodiUtf.h"
#include "interchange/TracciatoConferimenti.h"
#include "shell/session_state.h"
#include "store/database.h"

#include <QHash>

using namespace TracciatoConferimenti;

namespace {

const QString EtichettaControllo = QStringLiteral("frmCarico.CARICOTABELLE");
const QString EtichettaAllinea = QStringLiteral(" frmCarico.AllineaDB");
const QString EtichettaSelRecord = QStringLiteral("FrmSelezione.SEL_RECORD");

// Tipi di SEL_RECORD: domanda, certificato, produttore.
enum TipoSelezione { SelDomanda = 7, SelProduttore = 8, SelCertificato = 11 };

// Una chiave letta come testo e assegnata a un intero a 32 bit: un testo
// vuoto o non numerico è un tipo non corrispondente.
qint32 Chiave(const QString& testo)
{
    bool ok = false;
    const qint32 valore = testo.trimmed().toInt(&ok);
    if (!ok)
        throw ErroreSistema(CodiciErrore::TipoNonCorrispondente);
    return valore;
}

class CaricoConferimenti final : public CaricoComune::CaricoFornitura {
public:
    using CaricoFornitura::CaricoFornitura;

protected:
    int LunghezzaRecord() const override { return TracciatoConferimenti::LunghezzaRecord; }
    void Azzera() override
    {
        m_carico.Azzera();
        m_colori.clear();
    }
    int LeggiRiga(const QString& riga) override { return m_carico.LeggiRiga(riga); }
    qint32 NumeroDomandeLette() const override { return m_carico.NumeroDomande; }
    bool GiaCaricata() override;
    bool Controllodati() override;
    bool AllineaDB() override;

private:
    QString Trova_id(const QString& colonna, const QString& tabella, const QString& condizione,
                     const QVariantList& parametri);
    void SEL_RECORD(TipoSelezione tipo, qsizetype domanda, qsizetype certificato, qsizetype produttore);
    bool VerificaCloniDomnadaInArray(const QString& numero) const { return m_numeri.value(numero) > 1; }
    bool VerificaCloniUtfInArray(const DomandaCarico& domanda, qint32 chiave) const;
    void AnnullaAMano();

    Carico m_carico;
    QHash<QString, int> m_numeri;  // quante volte ogni numero di domanda compare
    QHash<qint32, QPair<QString, QString>> m_colori;
};

bool CaricoConferimenti::GiaCaricata()
{
    const IntestazioneCarico& f = m_carico.Fornitura;
    return ctrlCloni(QStringLiteral("TAB_Fornitura_utf"),
                     QStringLiteral(" where Campagnafornitura = ? and  Numero_versione = ?"
                                    " and  Distilleria_CODI_FISC = ? and  Distilleria_RAGI_SOCI = ?"
                                    " and  Data_forniturE = ? and  ARTICOLO = ? and PROGRESSIVO_fornitura = ?"),
                     {f.Campagnafornitura, f.Numero_versione, f.Distilleria_CODI_FISC, f.Distilleria_RAGI_SOCI,
                      f.Data_forniture, f.ARTICOLO, f.PROGRESSIVO_fornitura});
}

bool CaricoConferimenti::VerificaCloniUtfInArray(const DomandaCarico& domanda, qint32 chiave) const
{
    int volte = 0;
    for (qsizetype j = 1; j < domanda.Certificati.size(); ++j)
        if (domanda.Certificati.at(j).Utf.iD_UTF == chiave)
            ++volte;
    return volte > 1;
}

bool CaricoConferimenti::Controllodati()
{
    try {
        const QList<DomandaCarico>& domande = m_carico.Domande;
        m_numeri.clear();
        for (qsizetype i = 1; i < domande.size(); ++i)
            ++m_numeri[domande.at(i).Domanda.DOMANDA];
        for (qsizetype i = 1; i < domande.size(); ++i) {
            const DomandaCarico& d = domande.at(i);
            const QString& numero = d.Domanda.DOMANDA;
            // Il ramo conferimenti non ha progressivo: conta il numero da solo.
            if (ctrlCloni(QStringLiteral("DOMANDE_produttori"), QStringLiteral(" where domanda = ?"), {numero})) {
                ValoreScarto(QStringLiteral("Fornitura con domande gia presenti nell'archivio."), numero);
            } else if (VerificaCloniDomnadaInArray(numero)) {
                ValoreScarto(QStringLiteral("Fornitura con domande uguali."), numero);
            } else {
                // La chiave della domanda del certificato non è mai riempita:
                // il confronto riesce solo per un numero che vale zero.
                for (qsizetype j = 1; j < d.Certificati.size(); ++j) {
                    const UtfSelezionato& u = d.Certificati.at(j).Utf;
                    if (Val(numero) == u.iD_DOMANDA && VerificaCloniUtfInArray(d, u.iD_UTF))
                        ValoreScarto(QStringLiteral("Certificato Utf non appartenente alla domanda."), numero,
                                     QString(), u.NUMERO_CERTIFICATO_UTF);
                }
            }
        }
        return true;
    } catch (const ErroreSistema& e) {
        ScriviLogErr(QString(), EtichettaControllo, e.numero(), e.descrizione());
        return false;
    }
}

QString CaricoConferimenti::Trova_id(const QString& colonna, const QString& tabella, const QString& condizione,
                                     const QVariantList& parametri)
{
    return Db().PrimoValore(QStringLiteral("Select ") + colonna + QStringLiteral(" from ") + tabella + condizione,
                            parametri)
        .testo();
}

void CaricoConferimenti::SEL_RECORD(TipoSelezione tipo, qsizetype domanda, qsizetype certificato,
                                    qsizetype produttore)
{
    Sessione& s = sessione();
    try {
        const DomandaCarico& d = m_carico.Domande.at(domanda);
        switch (tipo) {
        case SelDomanda: {
            DomandaProduttoreSelezionata& r = s.DomandaProduttoreSel;
            r.DOMANDA = d.Domanda.DOMANDA;
            r.STAM = d.Domanda.STAM;
            r.SCAR = d.Domanda.SCAR;
            r.TIPO_ARTICOLO = d.Domanda.TIPO_ARTICOLO;
            r.PROG_VERS = d.Domanda.PROG_VERS;
            r.ANTICIPO_RICEVUTO = d.Domanda.ANTICIPO_RICEVUTO;
            r.CAMPAGNA = m_carico.Fornitura.CAMPAGNA;
            break;
        }
        case SelCertificato: {
            const UtfSelezionato& u = d.Certificati.at(certificato).Utf;
            UtfSelezionato& r = s.UtfSel;
            r.DESCR_UFFICIO_UTF_PROVINCIA = u.DESCR_UFFICIO_UTF_PROVINCIA;
            r.ISTAT_UFFICIO_UTF_PROVINCIA = u.ISTAT_UFFICIO_UTF_PROVINCIA;
            r.SIGLA_UFFICIO_UTF_PROVINCIA = u.SIGLA_UFFICIO_UTF_PROVINCIA;
            r.NUMERO_CERTIFICATO_UTF = u.NUMERO_CERTIFICATO_UTF;
            r.DATA_EMISSIONE_CERTIFICATO = u.DATA_EMISSIONE_CERTIFICATO;
            r.QTA_TOT_VINO_LAVORATO = u.QTA_TOT_VINO_LAVORATO;
            r.QTA_TOT_ETTOGRADI_VINO_LAVORATO = u.QTA_TOT_ETTOGRADI_VINO_LAVORATO;
            r.QTA_TOT_ALCOLE_NEUTRO_OTTENUTO = u.QTA_TOT_ALCOLE_NEUTRO_OTTENUTO;
            r.QTA_TOT_ALCOLE_GREZZO_OTTENUTO = u.QTA_TOT_ALCOLE_GREZZO_OTTENUTO;
            r.QTA_TOT_ACQUAVITE_OTTENUTO = u.QTA_TOT_ACQUAVITE_OTTENUTO;
            r.QUADRATURA = u.QUADRATURA;
            break;
        }
        case SelProduttore: {
            ProduttoreSelezionato& r = s.ProduttoreSel;
            // Tutti i campi di testo; le chiavi restano quelle del record.
            const qint32 id = r.iD_PRODUTTORI, idDomanda = r.iD_DOMANDA, idUtf = r.iD_UTF;
            r = d.Certificati.at(certificato).Produttori.at(produttore);
            r.iD_PRODUTTORI = id;
            r.iD_DOMANDA = idDomanda;
            r.iD_UTF = idUtf;
            // Il colore per chiave: una chiave vuota (codice sconosciuto) lascia
            // l'istruzione monca, ed è il motore a rifiutarla.
            bool numerica = false;
            const qint32 chiave = r.iD_COLORE.trimmed().toInt(&numerica);
            if (!numerica) {
                Recordset rs = Db().OpenRecordset(QStringLiteral("SELECT * FROM TAB_COLORE WHERE ID_COLORE = ") +
                                                  r.iD_COLORE.trimmed());
                break;
            }
            auto it = m_colori.constFind(chiave);
            if (it == m_colori.constEnd()) {
                Recordset rs = Db().OpenRecordset(QStringLiteral("SELECT * FROM TAB_COLORE WHERE ID_COLORE = ?"),
                                                  {chiave});
                QPair<QString, QString> colore;
                if (!rs.eof())
                    colore = {rs.Fields(QStringLiteral("CODI_COLORE")).testo(),
                              rs.Fields(QStringLiteral("DESC_COLORE")).testo()};
                it = m_colori.insert(chiave, colore);
            }
            r.CODI_COLORE = it->first;
            r.DESC_COLORE = it->second;
            break;
        }
        }
    } catch (const ErroreSistema& e) {
        ScriviLogErr(QString(), EtichettaSelRecord, e.numero(), e.descrizione());
    }
}

bool CaricoConferimenti::AllineaDB()
{
    Sessione& s = sessione();
    // Nessuna chiave di un lavoro precedente: l'annullamento tocca solo
    // quel che questo carico ha scritto.
    s.UtfSel.iD_UTF = 0;
    s.DomandaProduttoreSel.ID_DOMANDA_PRODUTTORE = 0;
    try {
        const QList<DomandaCarico>& domande = m_carico.Domande;
        for (qsizetype i = 1; i < domande.size(); ++i) {
            const DomandaCarico& d = domande.at(i);
            SEL_RECORD(SelDomanda, i, 0, 0);
            if (!MetodiDOMANDA_produttori(0, QString()))
                return false;
            RigaScritta();
            const qint32 idDomanda =
                Chiave(Trova_id(QStringLiteral("ID_DOMANDA_PRODUTTORE"), QStringLiteral("DOMANDE_PRODUTTORI"),
                                QStringLiteral(" where domanda = ?"), {d.Domanda.DOMANDA}));
            s.DomandaProduttoreSel.ID_DOMANDA_PRODUTTORE = idDomanda;
            s.DomandaSel.ID_DOMANDA = idDomanda;
            for (qsizetype j = 1; j < d.Certificati.size(); ++j) {
                const CertificatoCarico& c = d.Certificati.at(j);
                SEL_RECORD(SelCertificato, i, j, 0);
                if (!MetodiUtf(0, QString()))
                    return false;
                RigaScritta();
                s.UtfSel.iD_UTF =
                    Chiave(Trova_id(QStringLiteral("iD_UTF"), QStringLiteral("TAB_UTF"),
                                    QStringLiteral(" where NUMERO_CERTIFICATO_UTF = ? AND ID_DOMANDA = ?"),
                                    {c.Utf.NUMERO_CERTIFICATO_UTF, idDomanda}));
                for (qsizetype k = 1; k < c.Produttori.size(); ++k) {
                    SEL_RECORD(SelProduttore, i, j, k);
                    if (!MetodiProduttore(0, QString()))
                        return false;
                    RigaScritta();
                }
            }
        }
        const IntestazioneCarico& f = m_carico.Fornitura;
        Db().Execute(QStringLiteral("INSERT INTO TAB_Fornitura_UTF (Campagnafornitura, Numero_versione, "
                                    "Data_forniture, PROGRESSIVO_fornitura, ARTICOLO, Distilleria_CODI_FISC, "
                                    "Distilleria_RAGI_SOCI) VALUES (?, ?, ?, ?, ?, ?, ?)"),
                     {f.Campagnafornitura, f.Numero_versione, f.Data_forniture, f.PROGRESSIVO_fornitura, f.ARTICOLO,
                      f.Distilleria_CODI_FISC, f.Distilleria_RAGI_SOCI});
        return true;
    } catch (const ErroreSistema& e) {
        ScriviLogErr(QString(), EtichettaAllinea, e.numero(), e.descrizione());
        // Un guasto dell'annullamento risale a chi ha chiamato.
        AnnullaAMano();
        return false;
    }
}

void CaricoConferimenti::AnnullaAMano()
{
    Sessione& s = sessione();
    const qint32 utf = s.UtfSel.iD_UTF;
    if (utf != 0) {
        QList<QPair<qint64, qint64>> legami;
        {
            Recordset rs = Db().OpenRecordset(
                QStringLiteral("SELECT * FROM TAB_ID_UTF_PRODUTTORE WHERE iD_UTF=?"), {utf});
            for (; !rs.eof(); rs.MoveNext())
                legami.append({rs.Fields(QStringLiteral("iD_TAB_ID_UP")).intero(),
                               rs.Fields(QStringLiteral("iD_PRODUTTORE")).intero()});
        }
        for (const auto& [legame, produttore] : std::as_const(legami)) {
            Db().Execute(QStringLiteral("DELETE FROM TAB_ID_UTF_PRODUTTORE WHERE iD_TAB_ID_UP = ?"), {legame});
            // Il nome della tabella manca dell'ultima lettera, da sempre: qui
            // l'istruzione fallisce e l'annullamento si ferma.
            Db().Execute(QStringLiteral("DELETE FROM PRODUTTORE WHERE ID_PRODUTTORI = ?"), {produttore});
        }
        MetodiUtf(2, QStringLiteral(" where ID_DOMANDA = ") + QString::number(utf));
    } else if (s.DomandaProduttoreSel.ID_DOMANDA_PRODUTTORE != 0) {
        MetodiDOMANDA_produttori(2, QStringLiteral(" where ID_domanda_PRODUTTORE = '") +
                                        QString::number(s.DomandaProduttoreSel.ID_DOMANDA_PRODUTTORE) +
                                        QStringLiteral("'"));
    }
}

}  // namespace

void CaricaFornituraConferimenti(const QString& percorsoFile) { CaricaFornituraConferimenti(percorsoFile, nullptr); }

void CaricaFornituraConferimenti(const QString& percorsoFile, OsservatoreCarico* osservatore)
{
    CaricoConferimenti carico(osservatore);
    carico.BATTONCARICA(percorsoFile);
}
