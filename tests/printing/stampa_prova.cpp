#include "stampa_prova.h"

#include <QProcess>
#include <QRegularExpression>

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
    return db().InserisciRiga(QStringLiteral("DOMANDE"),
                              {{QStringLiteral("DOMANDA"), numero}, {QStringLiteral("PROGRESSIVO"), progressivo},
                               {QStringLiteral("STAM"), QStringLiteral("N")}, {QStringLiteral("SCAR"), QStringLiteral("N")},
                               {QStringLiteral("TIPO_ARTICOLO"), QStringLiteral("29")}, {QStringLiteral("ID_VARIETA"), 1},
                               {QStringLiteral("PROG_VERS"), QStringLiteral("1")}, {QStringLiteral("DATA_CAMP"), campagna}});
}

qint64 ProvaDiStampa::Fattura(qint64 domanda, const QString& foglio, const QString& rigo, const QString& numero,
                              const QString& qtaProd, const QString& impo, const QString& iva, const QString& totale,
                              const QString& qtaLavo, const QString& denominazione)
{
    return db().InserisciRiga(
        QStringLiteral("FATTURE"),
        {{QStringLiteral("ID_DOMANDA"), domanda}, {QStringLiteral("CODI_FISC"), QStringLiteral("01234567890")},
         {QStringLiteral("DENOMINAZIONE"), denominazione}, {QStringLiteral("NUME_FATT"), numero},
         {QStringLiteral("DATA_FATT"), QStringLiteral("10/10/2005")}, {QStringLiteral("QTA_PROD"), qtaProd},
         {QStringLiteral("QTA_LAVO"), qtaLavo}, {QStringLiteral("GRAD"), QStringLiteral("11,5")},
         {QStringLiteral("PREZ_MINI"), QStringLiteral("2,50")}, {QStringLiteral("IMPO"), impo},
         {QStringLiteral("IVA"), iva}, {QStringLiteral("IMPO_TOTA"), totale}, {QStringLiteral("ID_LAVORAZIONE"), 1},
         {QStringLiteral("FOGL"), foglio}, {QStringLiteral("RIGO"), rigo}});
}

void ProvaDiStampa::Bolla(qint64 fattura, const QString& numero, const QString& data, const QString& quantita)
{
    db().InserisciRiga(QStringLiteral("BOLLE"), {{QStringLiteral("FK_ID_FATTURA"), fattura},
                                                {QStringLiteral("NUMERO_BOLLA"), numero},
                                                {QStringLiteral("DATA_CONSEGNA"), data},
                                                {QStringLiteral("QUANTITA_PRODOTTO"), quantita},
                                                {QStringLiteral("GRADO"), QStringLiteral("11")}});
}

QStringList ProvaDiStampa::UltimaAnteprima()
{
    if (script->anteprime.isEmpty()) {
        ADD_FAILURE() << "nessuna anteprima";
        return {};
    }
    return PagineDelPdf(script->anteprime.last().pdf);
}
