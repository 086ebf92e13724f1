#include "interchange/TracciatoConferimenti.h"

#include "common/numeri.h"
#include "common/testo.h"
#include "interchange/TracciatoComune.h"
#include "store/database.h"

using namespace TracciatoComune;

namespace TracciatoConferimenti {

namespace {

const QChar Zero = QLatin1Char('0');
const QChar Spazio = QLatin1Char(' ');
const QChar Nove = QLatin1Char('9');

// Cifra con i decimali sottintesi: un valore vuoto o zero dà solo zeri.
QString Cifra(const QString& valore, int decimali, int larghezza)
{
    return PadSinistra(FormattaDecimali(valore, decimali), larghezza, Zero);
}

QString Cifra(const RigaDati& riga, const QString& colonna, int decimali, int larghezza)
{
    return Cifra(riga.Campo(colonna), decimali, larghezza);
}

// Somma in doppia precisione passata per "##0.00", come usciva dalla query.
QString Totale(double somma)
{
    return Cifra(Format(Decimale::daDouble(somma), QStringLiteral("##0.00")), 2, 15);
}

// Le due query dei totali condividono tabelle e condizione.
const QString DaDomanda = QStringLiteral(
    " FROM DOMANDE_PRODUTTORI"
    " INNER JOIN TAB_UTF ON DOMANDE_PRODUTTORI.ID_DOMANDA_PRODUTTORE = TAB_UTF.iD_DOMANDA"
    " INNER JOIN TAB_ID_UTF_PRODUTTORE ON TAB_UTF.iD_UTF = TAB_ID_UTF_PRODUTTORE.iD_UTF"
    " INNER JOIN PRODUTTORI ON PRODUTTORI.iD_PRODUTTORI = TAB_ID_UTF_PRODUTTORE.iD_PRODUTTORE"
    " WHERE (((DOMANDE_PRODUTTORI.DOMANDA)=?))");

QString SommaAiuto(const QString& colonna, const QString& alias)
{
    return QStringLiteral("Sum(CDbl(IIF(TRIM('' || IFNULL(PRODUTTORI.%1, '')) = '', 0, PRODUTTORI.%1))) AS %2")
        .arg(colonna, alias);
}

}  // namespace

std::optional<TotaliDomanda> LeggiTotali(const QString& domanda)
{
    const QString sqlSomme = QStringLiteral(" SELECT ") +
                             SommaAiuto(QStringLiteral("AIUTO_ALCOLE_NEUTRO"), QStringLiteral("T_aIUTO_NEUTRO")) +
                             QStringLiteral(", ") +
                             SommaAiuto(QStringLiteral("AIUTO_ALCOLE_GREZZO"), QStringLiteral("t_AIUTO_GREZZO")) +
                             QStringLiteral(", ") +
                             SommaAiuto(QStringLiteral("IMPORTO_DETRAIBILE"), QStringLiteral("t_DETRA")) +
                             QStringLiteral(", ") +
                             SommaAiuto(QStringLiteral("AIUTO_ACQUAVITE"), QStringLiteral("T_AIUTO_ACQUAVITE")) +
                             DaDomanda + QStringLiteral(" GROUP BY DOMANDE_PRODUTTORI.DOMANDA");
    const QString sqlAnticipo =
        QStringLiteral(" SELECT DOMANDE_PRODUTTORI.DOMANDA, DOMANDE_PRODUTTORI.ANTICIPO_RICEVUTO") + DaDomanda +
        QStringLiteral(" Group By DOMANDE_PRODUTTORI.DOMANDA, DOMANDE_PRODUTTORI.ANTICIPO_RICEVUTO,"
                       "PRODUTTORI.IMPORTO_DETRAIBILE");

    Recordset somme = Db().OpenRecordset(sqlSomme, {domanda});
    Recordset anticipo = Db().OpenRecordset(sqlAnticipo, {domanda});
    if (anticipo.eof())
        return std::nullopt;
    TotaliDomanda t;
    t.T_aIUTO_NEUTRO = somme.Fields(QStringLiteral("T_aIUTO_NEUTRO")).numero();
    t.t_AIUTO_GREZZO = somme.Fields(QStringLiteral("t_AIUTO_GREZZO")).numero();
    t.T_AIUTO_ACQUAVITE = somme.Fields(QStringLiteral("T_AIUTO_ACQUAVITE")).numero();
    t.t_DETRA = somme.Fields(QStringLiteral("t_DETRA")).numero();
    t.ANTICIPO_RICEVUTO = anticipo.Fields(QStringLiteral("ANTICIPO_RICEVUTO")).testo();
    return t;
}

// ------------------------------------------------------------------ scarico

QString Scarico::TRACCIATO_0() const { return TRACCIATO_0(sessione().DistilleriaDati); }

QString Scarico::TRACCIATO_0(const DatiDistilleria& distilleria) const
{
    const QDate oggi = DataScarico.isValid() ? DataScarico : QDate::currentDate();
    QString r;
    r.reserve(LunghezzaRecord);
    r += QLatin1Char('0');
    r += PadSinistra(QString(), 30, Zero);
    r += PadDestra(CampagnaEstesa, 9, Spazio);
    r += PadSinistra(NumeroScarico, 4, Zero);
    r += Format(oggi, QStringLiteral("YYYYMMDD"));
    r += PadDestra(distilleria.RAGI_SOCI, 70, Spazio);
    r += PadDestra(distilleria.CODI_FISC, 16, Spazio);
    r += QStringLiteral("10");  // versione del tracciato
    r += QStringLiteral("29");  // articolo
    r += Spazi(158);
    return r;
}

QString Scarico::TRACCIATO_1(const RigaDati& riga)
{
    DomandaRicordata = riga.Campo(QStringLiteral("domanda"));
    QString r;
    r.reserve(LunghezzaRecord);
    r += QLatin1Char('1');
    r += PadDestra(DomandaRicordata, 11, Spazio);
    r += PadDestra(riga.Campo(QStringLiteral("tab_utf.NUMERO_CERTIFICATO_UTF")), 9, Spazio);
    r += PadDestra(riga.Campo(QStringLiteral("SIGLA_UFFICIO_UTF_PROVINCIA")), 2, Spazio);
    r += FormattazioneData(riga.Campo(QStringLiteral("tab_utf.DATA_EMISSIONE_CERTIFICATO")),
                           QStringLiteral("GG/MM/AAAA"), QStringLiteral("AAAAMMGG"), QStringLiteral("DT"));
    r += Cifra(riga, QStringLiteral("QTA_TOT_VINO_LAVORATO"), 4, 11);
    r += Cifra(riga, QStringLiteral("QTA_TOT_ALCOLE_NEUTRO_OTTENUTO"), 4, 11);
    r += Cifra(riga, QStringLiteral("QTA_TOT_ALCOLE_GREZZO_OTTENUTO"), 4, 11);
    r += Cifra(riga, QStringLiteral("QTA_TOT_ACQUAVITE_OTTENUTO"), 4, 11);
    r += Cifra(riga, QStringLiteral("QTA_TOT_ETTOGRADI_VINO_LAVORATO"), 4, 12);
    r += Spazi(213);
    UltimoRecord1 = r;
    return r;
}

QString Scarico::TRACCIATO_2(const RigaDati& riga) const
{
    QString r;
    r.reserve(LunghezzaRecord);
    r += QLatin1Char('2');
    // Qui gli spazi vanno a sinistra del numero, al contrario del record 1.
    r += PadSinistra(DomandaRicordata, 11, Spazio);
    r += PadDestra(Mid(UltimoRecord1, 13, 9), 9, Spazio);
    r += PadDestra(Mid(UltimoRecord1, 22, 2), 2, Spazio);
    r += PadDestra(Mid(UltimoRecord1, 24, 8), 8, Spazio);
    r += PadDestra(riga.Campo(QStringLiteral("CODI_FISC")), 16, Spazio);
    r += PadDestra(riga.Campo(QStringLiteral("Denominazione")), 70, Spazio);
    r += PadSinistra(riga.Campo(QStringLiteral("CODICE_CONTRATTO_DISTILLAZIONE")), 11, Zero);
    r += Cifra(riga, QStringLiteral("QTA_VINO_EFFETIVAMENTE_DISTILLATA"), 4, 11);
    r += Cifra(riga, QStringLiteral("TITOLO_ALCOLOMETRICO_FATTURATO"), 4, 6);
    r += Cifra(riga, QStringLiteral("ETTOGRADI"), 4, 12);
    r += Cifra(riga, QStringLiteral("QTA_ALCOLE_NEUTRO"), 4, 11);
    r += Cifra(riga, QStringLiteral("QTA_ALCOLE_GREZZO"), 4, 11);
    r += Cifra(riga, QStringLiteral("QTA_ACQUAVITE"), 4, 11);
    r += Cifra(riga, QStringLiteral("AIUTO_ALCOLE_NEUTRO"), 2, 14);
    r += Cifra(riga, QStringLiteral("AIUTO_ALCOLE_GREZZO"), 2, 14);
    r += Cifra(riga, QStringLiteral("AIUTO_ACQUAVITE"), 2, 14);
    r += Cifra(riga, QStringLiteral("IMPORTO_DETRAIBILE"), 2, 14);
    r += PadSinistra(riga.Campo(QStringLiteral("Id_COLORE")), 2, Zero);  // la chiave, non il codice
    r += PadSinistra(riga.Campo(QStringLiteral("APPROVAZIONE_ANTICIPATA")), 1, Spazio);
    r += PadSinistra(riga.Campo(QStringLiteral("PERC_APPROVAZIONE_ANTICIPATA")), 3, Zero);
    r += Spazi(48);
    return r;
}

QString Scarico::TRACCIATO_9() { return TRACCIATO_9(LeggiTotali(DomandaRicordata)); }

QString Scarico::TRACCIATO_9(const std::optional<TotaliDomanda>& totali)
{
    QString r;
    r.reserve(LunghezzaRecord);
    r += QLatin1Char('9');
    r += PadSinistra(QString(), 30, Nove);
    r += PadSinistra(QString::number(ContaCertificati), 6, Zero);
    r += PadSinistra(QString::number(ContaProduttori), 6, Zero);
    if (totali) {
        const TotaliDomanda& t = *totali;
        r += Totale(t.T_aIUTO_NEUTRO);
        r += Totale(t.t_AIUTO_GREZZO);
        r += Totale(t.T_AIUTO_ACQUAVITE);
        r += Totale(t.t_DETRA);
        const Decimale netto = Decimale::daDouble(t.T_aIUTO_NEUTRO) + Decimale::daDouble(t.t_AIUTO_GREZZO) +
                               Decimale::daDouble(t.T_AIUTO_ACQUAVITE) - Decimale::daDouble(t.t_DETRA);
        r += Cifra(netto.testo(), 2, 15);
        r += Cifra(t.ANTICIPO_RICEVUTO, 2, 14);
        r += Cifra((netto - Decimale(t.ANTICIPO_RICEVUTO)).testo(), 2, 15);
        r += Spazi(153);
    }
    ContaCertificati = 0;
    return r;
}

// ------------------------------------------------------------------- carico

void Carico::Azzera()
{
    Fornitura = IntestazioneCarico{};
    Domande = {DomandaCarico{}};
    NumeroDomande = 0;
    NumeroCertificati = 0;
    NumeroProduttori = 0;
    m_province.clear();
    m_colori.clear();
}

int Carico::LeggiRiga(const QString& riga)
{
    return SmistaRiga(*this, riga, NumeroDomande, NumeroCertificati, NumeroProduttori);
}

void Carico::Tipo_0(const QString& riga)
{
    Fornitura.Campagnafornitura = Mid(riga, 32, 9);
    Fornitura.CAMPAGNA = Mid(riga, 32, 4);
    Fornitura.PROGRESSIVO_fornitura = Mid(riga, 41, 4);
    Fornitura.Data_forniture = Mid(riga, 45, 8);
    Fornitura.Distilleria_RAGI_SOCI = Mid(riga, 53, 70);
    Fornitura.Distilleria_CODI_FISC = Mid(riga, 123, 16);
    Fornitura.Numero_versione = Mid(riga, 139, 2);
    Fornitura.ARTICOLO = Mid(riga, 141, 2);
    const QString quadratura = Mid(riga, 143, 1);
    Fornitura.QUADRATURA = quadratura.trimmed().isEmpty() ? QStringLiteral("0") : quadratura;
}

void Carico::Tipo_1(const QString& riga)
{
    if (NumeroDomande < 1)
        RecordFuoriPosto(QStringLiteral("1"));
    Domande.resize(NumeroDomande + 1);
    DomandaCarico& d = Domande[NumeroDomande];
    d = DomandaCarico{};
    d.Domanda.DOMANDA = Mid(riga, 2, 11);
    d.Domanda.TIPO_ARTICOLO = Mid(riga, 13, 2);
    d.Domanda.ANTICIPO_RICEVUTO = ImportoDiviso(riga, 15, 12, 2);
}

DomandaCarico& Carico::DomandaAperta(const QString& tipo)
{
    if (NumeroDomande < 1 || NumeroDomande >= Domande.size())
        RecordFuoriPosto(tipo);
    return Domande[NumeroDomande];
}

void Carico::Tipo_2(const QString& riga)
{
    DomandaCarico& d = DomandaAperta(QStringLiteral("2"));
    if (NumeroCertificati < 1)
        RecordFuoriPosto(QStringLiteral("2"));
    d.Certificati.resize(NumeroCertificati + 1);
    CertificatoCarico& c = d.Certificati[NumeroCertificati];
    c = CertificatoCarico{};
    UtfSelezionato& u = c.Utf;
    // Le posizioni sono quelle del record 1 in uscita; il numero di domanda non si legge.
    u.NUMERO_CERTIFICATO_UTF = Mid(riga, 13, 9);
    u.SIGLA_UFFICIO_UTF_PROVINCIA = Mid(riga, 22, 2);
    const auto [descrizione, istat] = Provincia(u.SIGLA_UFFICIO_UTF_PROVINCIA);
    u.DESCR_UFFICIO_UTF_PROVINCIA = descrizione;
    u.ISTAT_UFFICIO_UTF_PROVINCIA = istat;
    u.DATA_EMISSIONE_CERTIFICATO = FormattazioneData(Mid(riga, 24, 8), QStringLiteral("AAAAMMGG"),
                                                     QStringLiteral("GG/MM/AAAA"), QStringLiteral("DT"));
    u.QTA_TOT_VINO_LAVORATO = ImportoDiviso(riga, 32, 7, 4);
    u.QTA_TOT_ALCOLE_NEUTRO_OTTENUTO = ImportoDiviso(riga, 43, 7, 4);
    u.QTA_TOT_ALCOLE_GREZZO_OTTENUTO = ImportoDiviso(riga, 54, 7, 4);
    u.QTA_TOT_ACQUAVITE_OTTENUTO = ImportoDiviso(riga, 65, 7, 4);
    u.QTA_TOT_ETTOGRADI_VINO_LAVORATO = ImportoDiviso(riga, 76, 8, 4);
    u.QUADRATURA = Fornitura.QUADRATURA;
}

void Carico::Tipo_3(const QString& riga)
{
    DomandaCarico& d = DomandaAperta(QStringLiteral("3"));
    if (NumeroCertificati < 1 || NumeroCertificati >= d.Certificati.size() || NumeroProduttori < 1)
        RecordFuoriPosto(QStringLiteral("3"));
    CertificatoCarico& c = d.Certificati[NumeroCertificati];
    c.Produttori.resize(NumeroProduttori + 1);
    const ProduttoreSelezionato& prima = c.Produttori.at(NumeroProduttori - 1);
    ProduttoreSelezionato& p = c.Produttori[NumeroProduttori];
    p = ProduttoreSelezionato{};
    p.CODI_FISC = Mid(riga, 32, 16);
    p.DENOMINAZIONE = Mid(riga, 48, 70);
    p.CODICE_CONTRATTO_DISTILLAZIONE = Mid(riga, 118, 11);
    p.QTA_VINO_EFFETIVAMENTE_DISTILLATA =
        ImportoConVirgola(MidVista(riga, 129, 11), 4, prima.QTA_VINO_EFFETIVAMENTE_DISTILLATA);
    p.TITOLO_ALCOLOMETRICO_FATTURATO =
        ImportoConVirgola(MidVista(riga, 140, 6), 4, prima.TITOLO_ALCOLOMETRICO_FATTURATO);
    p.ETTOGRADI = ImportoConVirgola(MidVista(riga, 146, 12), 4, prima.ETTOGRADI);
    p.QTA_ALCOLE_NEUTRO = ImportoConVirgola(MidVista(riga, 158, 11), 4, prima.QTA_ALCOLE_NEUTRO);
    p.QTA_ALCOLE_GREZZO = ImportoConVirgola(MidVista(riga, 169, 11), 4, prima.QTA_ALCOLE_GREZZO);
    p.QTA_ACQUAVITE = ImportoConVirgola(MidVista(riga, 180, 11), 4, prima.QTA_ACQUAVITE);
    p.AIUTO_ALCOLE_NEUTRO = ImportoConVirgola(MidVista(riga, 191, 14), 2, prima.AIUTO_ALCOLE_NEUTRO);
    p.AIUTO_ALCOLE_GREZZO = ImportoConVirgola(MidVista(riga, 205, 14), 2, prima.AIUTO_ALCOLE_GREZZO);
    p.AIUTO_ACQUAVITE = ImportoConVirgola(MidVista(riga, 219, 14), 2, prima.AIUTO_ACQUAVITE);
    p.IMPORTO_DETRAIBILE = ImportoConVirgola(MidVista(riga, 233, 14), 2, prima.IMPORTO_DETRAIBILE);
    // In entrata a 247 c'è il codice del colore, non la chiave.
    p.iD_COLORE = Colore(Mid(riga, 247, 2));
    p.TOTALE_AIUTO = ImportoConVirgola(MidVista(riga, 249, 15), 2, prima.TOTALE_AIUTO);
    p.APPROVAZIONE_ANTICIPATA = Mid(riga, 264, 1) == QLatin1String("S") ? QStringLiteral("S") : QString();
    p.PERC_APPROVAZIONE_ANTICIPATA = PadDestra(Mid(riga, 265, 3), 3, Zero);
}

QPair<QString, QString> Carico::Provincia(const QString& sigla)
{
    auto it = m_province.constFind(sigla);
    if (it != m_province.constEnd())
        return *it;
    QPair<QString, QString> trovata;
    Recordset rs = Db().OpenRecordset(
        QStringLiteral("select tabprodes,tabprocod from tab_provincie where tabprosig = ?"), {sigla});
    if (!rs.eof())
        trovata = {rs.Fields(QStringLiteral("tabprodes")).testo(), rs.Fields(QStringLiteral("tabprocod")).testo()};
    m_province.insert(sigla, trovata);
    return trovata;
}

QString Carico::Colore(const QString& codice)
{
    auto it = m_colori.constFind(codice);
    if (it != m_colori.constEnd())
        return *it;
    QString trovato;
    Recordset rs =
        Db().OpenRecordset(QStringLiteral("select id_colore from tab_colore where codi_colore = ?"), {codice});
    if (!rs.eof())
        trovato = rs.Fields(QStringLiteral("id_colore")).testo();
    m_colori.insert(codice, trovato);
    return trovato;
}

}  // namespace TracciatoConferimenti
