#include "stampa_prova.h"

#include <QProcess>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

void CopiaModelli(const QString& cartellaProgramma)
{
    const QDir sorgente(FileDiProva(QStringLiteral("../../data/Report")));
    QDir(cartellaProgramma).mkpath(QStringLiteral("Report"));
    const QDir destinazione(QDir(cartellaProgramma).filePath(QStringLiteral("Report")));
    for (const QString& nome : sorgente.entryList(QDir::Files))
        QFile::copy(sorgente.filePath(nome), destinazione.filePath(nome));
}

QStringList PagineDelPdf(const QString& percorso)
{
    QProcess p;
    p.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), percorso, QStringLiteral("-")});
    if (!p.waitForFinished(30000) || p.exitCode() != 0) {
        ADD_FAILURE() << "pdftotext non riuscito su " << percorso.toStdString();
        return {};
    }
    QStringList pagine = QString::fromUtf8(p.readAllStandardOutput()).split(QLatin1Char('\f'));
    if (!pagine.isEmpty() && pagine.last().trimmed().isEmpty())
        pagine.removeLast();
    static const QRegularExpression spazi(QStringLiteral("[ \\t]+"));
    // Le legature del carattere ("ﬁ") tornano lettere semplici.
    for (QString& pagina : pagine)
        pagina = pagina.normalized(QString::NormalizationForm_KC).replace(spazi, QStringLiteral(" "));
    return pagine;
}

void ProvaDiStampa::SetUp()
{
    ProvaConDatabase::SetUp();
    CopiaModelli(cartella->cartella());
    sessione().TitoloMaschera = QStringLiteral("Stampa Domanda ");
    db();
}

void ProvaDiStampa::Distilleria(const QString& cf, const QString& ragione)
{
    db().Execute(QStringLiteral("DELETE FROM DISTILLERIA"));
    db().Execute(QStringLiteral("INSERT INTO DISTILLERIA VALUES (?, ?, 'Via del Torchio 3')"), {cf, ragione});
}

qint64 ProvaDiStampa::Domanda(const QString& numero, const QString& progressivo, const QString& campagna)
{
    return db().InserisciRiga(u"DOMANDE"_s, {{u"DOMANDA"_s, numero}, {u"PROGRESSIVO"_s, progressivo}, {u"STAM"_s, u"N"_s},
                                            {u"SCAR"_s, u"N"_s}, {u"TIPO_ARTICOLO"_s, u"29"_s}, {u"ID_VARIETA"_s, 1},
                                            {u"PROG_VERS"_s, u"1"_s}, {u"DATA_CAMP"_s, campagna}});
}

namespace {
Campi Con(Campi base, const Campi& altri)
{
    for (const auto& c : altri)
        base.removeIf([&](const auto& b) { return b.first == c.first; }), base.append(c);
    return base;
}
}  // namespace

qint64 ProvaDiStampa::Fattura(qint64 domanda, const QString& foglio, const QString& rigo, const QString& numero,
                              const QString& qtaProd, const QString& impo, const QString& iva, const QString& totale,
                              const QString& qtaLavo, const Campi& altri)
{
    return db().InserisciRiga(
        u"FATTURE"_s,
        Con({{u"ID_DOMANDA"_s, domanda}, {u"CODI_FISC"_s, u"01234567890"_s}, {u"DENOMINAZIONE"_s, u"Cantina Rossi"_s},
             {u"NUME_FATT"_s, numero}, {u"DATA_FATT"_s, u"10/10/2005"_s}, {u"QTA_PROD"_s, qtaProd},
             {u"QTA_LAVO"_s, qtaLavo}, {u"GRAD"_s, u"11,5"_s}, {u"PREZ_MINI"_s, u"2,50"_s}, {u"IMPO"_s, impo},
             {u"IVA"_s, iva}, {u"IMPO_TOTA"_s, totale}, {u"ID_LAVORAZIONE"_s, 1}, {u"FOGL"_s, foglio}, {u"RIGO"_s, rigo}},
            altri));
}

void ProvaDiStampa::Bolla(qint64 fattura, const QString& numero, const QString& data, const QString& quantita,
                          const Campi& altri)
{
    db().InserisciRiga(u"BOLLE"_s, Con({{u"FK_ID_FATTURA"_s, fattura}, {u"NUMERO_BOLLA"_s, numero},
                                        {u"DATA_CONSEGNA"_s, data}, {u"QUANTITA_PRODOTTO"_s, quantita},
                                        {u"GRADO"_s, u"11"_s}},
                                       altri));
}

qint64 ProvaDiStampa::DomandaDistillatore(const QString& numero, const Campi& altri)
{
    return db().InserisciRiga(u"DOMANDE_PRODUTTORI"_s,
                              Con({{u"TIPO_ARTICOLO"_s, u"29"_s}, {u"DOMANDA"_s, numero}, {u"STAM"_s, u"N"_s},
                                   {u"SCAR"_s, u"N"_s}, {u"ANTICIPO_RICEVUTO"_s, u"1500,00"_s}, {u"PROG_VERS"_s, u"1"_s},
                                   {u"DATA_CAMP"_s, u"2005"_s}},
                                  altri));
}

qint64 ProvaDiStampa::Certificato(qint64 domanda, const QString& numero, const Campi& altri)
{
    return db().InserisciRiga(
        u"TAB_UTF"_s,
        Con({{u"iD_DOMANDA"_s, domanda}, {u"NUMERO_CERTIFICATO_UTF"_s, numero}, {u"DESCR_UFFICIO_UTF_PROVINCIA"_s, u"CATANIA"_s},
             {u"SIGLA_UFFICIO_UTF_PROVINCIA"_s, u"CT"_s}, {u"DATA_EMISSIONE_CERTIFICATO"_s, u"15/11/2005"_s},
             {u"QTA_TOT_VINO_LAVORATO"_s, u"0"_s}, {u"QTA_TOT_ETTOGRADI_VINO_LAVORATO"_s, u"1150"_s},
             {u"QTA_TOT_ALCOLE_NEUTRO_OTTENUTO"_s, u"0"_s}, {u"QTA_TOT_ALCOLE_GREZZO_OTTENUTO"_s, u"0"_s},
             {u"QTA_TOT_ACQUAVITE_OTTENUTO"_s, u"0"_s}},
            altri));
}

qint64 ProvaDiStampa::Produttore(qint64 certificato, const QString& cf, const QString& nome, const Campi& altri)
{
    const qint64 p = db().InserisciRiga(
        u"PRODUTTORI"_s,
        Con({{u"CODI_FISC"_s, cf}, {u"DENOMINAZIONE"_s, nome}, {u"COMUNICAZIONE_CONTRATTO"_s, u"01"_s},
             {u"CODICE_CONTRATTO_DISTILLAZIONE"_s, u"12345678901"_s}, {u"QTA_MAX_DISTILLABILE"_s, u"100"_s},
             {u"QTA_VINO_EFFETIVAMENTE_DISTILLATA"_s, u"0"_s}, {u"QTA_VINO_DISTILLATA_AIUTO"_s, u"0"_s},
             {u"TITOLO_ALCOLOMETRICO_FATTURATO"_s, u"11,5"_s}, {u"ETTOGRADI"_s, u"10"_s}, {u"QTA_ALCOLE_NEUTRO"_s, u"0"_s},
             {u"QTA_ALCOLE_GREZZO"_s, u"0"_s}, {u"QTA_ACQUAVITE"_s, u"0"_s}, {u"AIUTO_ALCOLE_NEUTRO"_s, u"0,00"_s},
             {u"AIUTO_ALCOLE_GREZZO"_s, u"0,00"_s}, {u"AIUTO_ACQUAVITE"_s, u"0,00"_s}, {u"IMPORTO_DETRAIBILE"_s, u"0,00"_s},
             {u"TOTALE_AIUTO"_s, u"0,00"_s}, {u"APPROVAZIONE_ANTICIPATA"_s, u"N"_s}, {u"ID_COLORE"_s, 1}},
            altri));
    db().Execute(u"INSERT INTO TAB_ID_UTF_PRODUTTORE(id_utf,id_produttore) values(?, ?)"_s, {certificato, p});
    return p;
}

QStringList ProvaDiStampa::UltimaAnteprima()
{
    if (script->anteprime.isEmpty()) {
        ADD_FAILURE() << "nessuna anteprima";
        return {};
    }
    return PagineDelPdf(script->anteprime.last().pdf);
}
