// Impaginazione delle quattro carte: con i valori più larghi che i campi
// ammettono, codici, date, importi e quantità restano interi nel PDF e le
// parole dei nomi non si spezzano; il nome proposto per il PDF dice la carta
// e la domanda.
#include "common/disegno_documento.h"
#include "printing/MotoreReport.h"
#include "printing/StampeConferimenti.h"
#include "printing/StampeFatture.h"
#include "shell/session_state.h"
#include "stampa_prova.h"
#include "store/database.h"

#include <gtest/gtest.h>
#include <functional>
#include <QAbstractTextDocumentLayout>
#include <QImage>
#include <QProcess>
#include <QRectF>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTextDocument>

namespace {

using namespace Qt::StringLiterals;

const QString CfLungo = u"RSSMRA80A01H501U"_s;
const QString Nome = u"CANTINA SOCIALE COOPERATIVA VITICOLTORI ASSOCIATI DELL'ALTOPIANO"_s;

// Parole del PDF (pdftotext -bbox) che escono dal corpo del foglio (margine di
// 12 mm ai lati) o che ne coprono un'altra: una colonna troppo stretta.
QStringList ParoleFuoriPosto(const QString& pdf)
{
    QProcess p;
    p.start(u"pdftotext"_s, {u"-bbox"_s, pdf, u"-"_s});
    if (!p.waitForFinished(30000))
        return {u"pdftotext non riuscito"_s};
    static const QRegularExpression larghezza(uR"x(^width="([\d.]+)")x"_s);
    static const QRegularExpression parola(
        uR"x(<word xMin="([\d.]+)" yMin="([\d.]+)" xMax="([\d.]+)" yMax="([\d.]+)">([^<]*)</word>)x"_s);
    constexpr double Margine = 12 * 72 / 25.4;
    QStringList esito;
    const QStringList pagine = QString::fromUtf8(p.readAllStandardOutput()).split(u"<page "_s);
    for (int n = 1; n < pagine.size(); ++n) {
        const double bordo = larghezza.match(pagine[n]).captured(1).toDouble() - Margine + 0.5;
        QList<std::pair<QRectF, QString>> parole;
        for (auto it = parola.globalMatch(pagine[n]); it.hasNext();) {
            const auto m = it.next();
            const QRectF r(QPointF(m.captured(1).toDouble(), m.captured(2).toDouble()),
                           QPointF(m.captured(3).toDouble(), m.captured(4).toDouble()));
            if (r.left() < Margine - 0.5 || r.right() > bordo)
                esito << u"pagina %1, fuori dal foglio: %2"_s.arg(n).arg(m.captured(5));
            for (const auto& [altra, testo] : parole) {
                const QRectF comune = r.intersected(altra);
                if (comune.width() > 0.5 && comune.height() > 2)
                    esito << u"pagina %1, sovrapposte: %2 / %3"_s.arg(n).arg(testo, m.captured(5));
            }
            parole.append({r, m.captured(5)});
        }
    }
    return esito;
}

class Impaginazione : public ProvaDiStampa {
protected:
    void SetUp() override
    {
        ProvaDiStampa::SetUp();
        script->AccettaMessaggiSenzaRisposta();
        Distilleria(u"02468135799"_s, u"Distilleria Valle Verde S.p.A."_s);
    }
    // Una domanda di fatture piena: quattro righe larghe e due bolle per fattura.
    void Fatture()
    {
        const qint64 d = Domanda(u"00000000042"_s, u"01"_s);
        for (int r = 1; r <= 4; ++r) {
            const qint64 f = Fattura(d, u"1"_s, QString::number(r), u"2005/00012%1"_s.arg(r), u"123456,7890"_s,
                                     u"1234567,89"_s, u"246913,58"_s, u"1481481,47"_s, u"98765,4321"_s,
                                     {{u"CODI_FISC"_s, CfLungo}, {u"DENOMINAZIONE"_s, Nome}, {u"DATA_FATT"_s, u"31/12/2005"_s},
                                      {u"DATA_PAGA"_s, u"15/01/2006"_s}, {u"DATA_COMP"_s, u"20/01/2006"_s},
                                      {u"GRAD"_s, u"12,50"_s}, {u"PREZ_MINI"_s, u"2,5000"_s}, {u"ID_LAVORAZIONE"_s, 3}});
            for (int b = 1; b <= 2; ++b)
                Bolla(f, u"DDT-2005-00471%1"_s.arg(b), u"30/09/2005"_s, u"12345,6789"_s,
                      {{u"GRADO"_s, u"11,75"_s}, {u"DATA_PAGA"_s, u"15/10/2005"_s}, {u"NUME_FATT_TRAS"_s, u"TR-2005-0042"_s},
                       {u"DATA_FATT_TRAS"_s, u"16/10/2005"_s}});
        }
        sessione().DomandaSel.ID_DOMANDA = static_cast<qint32>(d);
        sessione().DomandaSel.DOMANDA = u"00000000042"_s;
        sessione().DomandaSel.PROGRESSIVO = u"01"_s;
    }
    // Una domanda del distillatore con un certificato e tre produttori larghi.
    RigaStampaConferimenti Conferimenti()
    {
        const qint64 d = DomandaDistillatore(u"00000000077"_s, {{u"ANTICIPO_RICEVUTO"_s, u"1234567,89"_s}});
        const qint64 c = Certificato(
            d, u"000000011"_s,
            {{u"DESCR_UFFICIO_UTF_PROVINCIA"_s, u"REGGIO NELL'EMILIA"_s}, {u"SIGLA_UFFICIO_UTF_PROVINCIA"_s, u"RE"_s},
             {u"QTA_TOT_VINO_LAVORATO"_s, u"370370,3670"_s}, {u"QTA_TOT_ETTOGRADI_VINO_LAVORATO"_s, u"4629629,5875"_s},
             {u"QTA_TOT_ALCOLE_NEUTRO_OTTENUTO"_s, u"37037,0367"_s}, {u"QTA_TOT_ALCOLE_GREZZO_OTTENUTO"_s, u"3703,7034"_s},
             {u"QTA_TOT_ACQUAVITE_OTTENUTO"_s, u"370,3707"_s}});
        for (int p = 1; p <= 3; ++p)
            Produttore(c, CfLungo.left(15) + QString::number(p), Nome,
                       {{u"COMUNICAZIONE_CONTRATTO"_s, u"000123"_s}, {u"QTA_MAX_DISTILLABILE"_s, u"123456,7890"_s},
                        {u"QTA_VINO_EFFETIVAMENTE_DISTILLATA"_s, u"123456,7890"_s},
                        {u"QTA_VINO_DISTILLATA_AIUTO"_s, u"123456,7890"_s}, {u"TITOLO_ALCOLOMETRICO_FATTURATO"_s, u"12,50"_s},
                        {u"ETTOGRADI"_s, u"1543209,8625"_s}, {u"QTA_ALCOLE_NEUTRO"_s, u"12345,6789"_s},
                        {u"QTA_ALCOLE_GREZZO"_s, u"1234,5678"_s}, {u"QTA_ACQUAVITE"_s, u"123,4569"_s},
                        {u"AIUTO_ALCOLE_NEUTRO"_s, u"123456,78"_s}, {u"AIUTO_ALCOLE_GREZZO"_s, u"12345,67"_s},
                        {u"AIUTO_ACQUAVITE"_s, u"1234,56"_s}, {u"IMPORTO_DETRAIBILE"_s, u"12345,67"_s},
                        {u"TOTALE_AIUTO"_s, u"124691,34"_s}, {u"APPROVAZIONE_ANTICIPATA"_s, u"S"_s},
                        {u"PERC_APPROVAZIONE_ANTICIPATA"_s, u"100"_s}});
        sessione().TitoloMaschera = u"Stampa Domanda del distillatore"_s;
        return {1, u"00000000077"_s, u"000000011"_s, QString::number(d), u"2005"_s, u"Elenco"_s};
    }
};

TEST_F(Impaginazione, CodiciDateEImportiInteriSuOgniCarta)
{
    // Parole del nome e della lavorazione: vanno a capo fra l'una e l'altra, mai dentro.
    const QStringList parole = Nome.split(u' ');
    struct Caso { const char* carta; std::function<void()> stampa; QString nomePdf; QStringList interi; };
    const Caso casi[] = {
        {"elenco fatture",
         [this] { Fatture(); STAMPA(u"2005"_s); },
         u"Elenco_fatture_00000000042_01"_s,
         parole + QStringList{CfLungo, u"02468135799"_s, u"00000000042"_s, u"2005/000121"_s, u"2005/000124"_s,
                              u"31/12/2005"_s, u"15/01/2006"_s, u"20/01/2006"_s, u"ALCOLIZZATO"_s, u"123456,7890"_s,
                              u"98765,4321"_s, u"1234567,89"_s, u"246913,58"_s, u"1481481,47"_s, u"4938271,56"_s,
                              u"5925925,88"_s, u"493827,1560"_s, u"395061,7284"_s, u"Denominazione"_s, u"distillata"_s}},
        {"bolle",
         [this] {
             Fatture();
             StampaBolleDomanda(QString::number(sessione().DomandaSel.ID_DOMANDA), u"00000000042"_s, u"01"_s, u"2005"_s);
         },
         u"Bolle_00000000042_01"_s,
         parole + QStringList{CfLungo, u"DDT-2005-004711"_s, u"DDT-2005-004712"_s, u"30/09/2005"_s, u"12345,6789"_s,
                              u"15/10/2005"_s, u"TR-2005-0042"_s, u"16/10/2005"_s, u"2005/000123"_s, u"24691,3578"_s,
                              u"395061,7284"_s, u"98765,4321"_s}},
        {"domanda del distillatore",
         [this] { StampaDomandaProduttore(Conferimenti()); },
         u"Domanda_distillatore_00000000077"_s,
         parole + QStringList{u"RSSMRA80A01H5011"_s, u"RSSMRA80A01H5013"_s, u"12345678901"_s, u"000123"_s,
                              u"00000000077"_s, u"1234567,89"_s, u"123456,7890"_s, u"1543209,8625"_s, u"12345,6789"_s,
                              u"1234,5678"_s, u"123,4569"_s, u"123456,78"_s, u"12345,67"_s, u"1234,56"_s,
                              u"124691,34"_s, u"370370,3670"_s, u"4629629,5875"_s, u"374074,02"_s, u"15/11/2005"_s,
                              u"detraibile"_s, u"distillabile"_s, u"REGGIO"_s, u"NELL'EMILIA"_s}},
        {"certificato UTF",
         [this] { StampaUTF(Conferimenti()); },
         u"Certificato_UTF_00000000077_000000011"_s,
         {u"00000000077"_s, u"000000011"_s, u"15/11/2005"_s, u"02468135799"_s, u"123456,7890"_s, u"1543209,8625"_s,
          u"12345,6789"_s, u"1234,5678"_s, u"123,4569"_s, u"370370,3670"_s, u"4629629,5875"_s, u"37037,0367"_s,
          u"3703,7034"_s, u"370,3707"_s, u"4629629,5875"_s, u"NELL'EMILIA"_s}},
    };
    for (const Caso& c : casi) {
        SCOPED_TRACE(c.carta);
        SetUp();
        c.stampa();
        // Nessun guasto: al più il messaggio di stampa riuscita.
        EXPECT_TRUE(script->messaggi.isEmpty() || (script->messaggi.size() == 1 && script->messaggi[0].stile == 64))
            << script->messaggi.value(0).testo.toStdString();
        ASSERT_EQ(script->anteprime.size(), 1);
        EXPECT_EQ(script->anteprime[0].nomePdf, c.nomePdf);
        const QString testo = UltimaAnteprima().join(u'\f');
        const QStringList fuoriPosto = ParoleFuoriPosto(script->anteprime[0].pdf);
        EXPECT_TRUE(fuoriPosto.isEmpty()) << fuoriPosto.join(u'\n').toStdString();
        for (const QString& t : c.interi)
            EXPECT_TRUE(testo.contains(t)) << t.toStdString() << "\n" << testo.toStdString();
        TearDown();
    }
}

TEST(NomePdf, CampiFissiOUgualiInTutteLeRighe)
{
    struct Caso { const char* nome; QString meta; QHash<QString, QString> fissi; QList<QStringList> righe; QString atteso; };
    const Caso casi[] = {
        {"dalla selezione, senza spazi", u"Bolle_[[DOMANDA]]"_s, {{u"DOMANDA"_s, u" 042 "_s}}, {}, u"Bolle_042"_s},
        // Tutte le domande insieme: nessun numero, restano la carta e il progressivo comune.
        {"domande diverse", u"Bolle_[[DOMANDA]]_[[PROGRESSIVO]]"_s, {}, {{u"041"_s, u"01"_s}, {u"042"_s, u"01"_s}},
         u"Bolle_01"_s},
        {"caratteri che un disco rifiuta", u"Certificato [[DOMANDA]]"_s, {}, {{u"A/B:C*D"_s, u""_s}},
         u"Certificato_A_B_C_D"_s},
        {"senza nome: il titolo", QString(), {}, {}, u"Bolle_di_consegna"_s},
    };
    for (const Caso& c : casi) {
        SCOPED_TRACE(c.nome);
        const QString meta = c.meta.isNull() ? QString() : u"<meta name=\"pdf\" content=\"%1\">"_s.arg(c.meta);
        const ModelloReport m = ModelloReport::DaTesto(
            u"<meta name=\"query\" content=\"Q\">%1<title>Bolle di consegna</title><!--PAGINA--><!--RIGA--><!--/RIGA--><!--/PAGINA-->"_s.arg(meta), {});
        EXPECT_EQ(m.NomePdf(DatiReport{{u"DOMANDA"_s, u"PROGRESSIVO"_s}, c.righe, {}, c.fissi}), c.atteso);
    }
}

// L'anteprima resta disposta per lo schermo anche dopo un PDF salvato da lei;
// finita l'anteprima il documento torna com'era.
TEST(Anteprima, PdfDallAnteprima)
{
    QTextDocument documento;
    documento.setHtml(u"<p>uno</p><p style=\"page-break-before: always\">due</p>"_s);
    documento.setPageSize(QSizeF(842, 595));
    QTemporaryDir cartella;
    QImage schermo(1, 1, QImage::Format_RGB32);
    {
        const ::Impaginazione anteprima(documento, schermo, FoglioDelDocumento(documento));
        const QSizeF pagina = documento.pageSize();
        ASSERT_TRUE(ScriviPdf(documento, cartella.filePath(u"a.pdf"_s)));
        EXPECT_EQ(PagineDelPdf(cartella.filePath(u"a.pdf"_s)).size(), 2);
        EXPECT_EQ(documento.documentLayout()->paintDevice(), &schermo);
        EXPECT_EQ(documento.pageSize(), pagina);
        EXPECT_EQ(anteprima.pagine(), 2);
    }
    EXPECT_EQ(documento.documentLayout()->paintDevice(), nullptr);
    EXPECT_EQ(documento.pageSize(), QSizeF(842, 595));
}

}  // namespace
