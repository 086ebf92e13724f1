// Motore dei report: formule e selezione come le scrive il programma, la
// composizione in pagine e gruppi, i guasti con il loro numero.
#include "common/piattaforma.h"
#include "printing/MotoreReport.h"
#include "stampa_prova.h"

#include <QRegularExpression>
#include <QTextDocument>

namespace {

using namespace Qt::StringLiterals;

TEST(Formule, NomeEValore)
{
    struct Caso { QString testo, nome, valore; int errore; };
    const Caso casi[] = {
        {u"CAMPAGNA = '2005/2006'"_s, u"CAMPAGNA"_s, u"2005/2006"_s, 0},
        {u"SOMMA_IVAS = ''"_s, u"SOMMA_IVAS"_s, QString(), 0},
        {u"DISTILLERIA = \"Cantina dell'Etna\""_s, u"DISTILLERIA"_s, u"Cantina dell'Etna"_s, 0},
        {u"DISTILLERIA = \"La \"Botte\" d'oro\""_s, u"DISTILLERIA"_s, u"La \"Botte\" d'oro"_s, 0},
        {u"  Campagna='x'  "_s, u"Campagna"_s, u"x"_s, 0},
        {u"CAMPAGNA = '2005"_s, {}, {}, 20515},
        {u"CAMPAGNA '2005'"_s, {}, {}, 20515},
        {u"CAMPAGNA = \"2005'"_s, {}, {}, 20515},
        {QString(), {}, {}, 20515},
        {u"DISTILLERIA = 'Cantina d'Etna'"_s, u"DISTILLERIA"_s, u"Cantina d'Etna"_s, 0},
    };
    for (const Caso& c : casi) {
        SCOPED_TRACE(c.testo.toStdString());
        FormulaReport f;
        EXPECT_EQ(NumeroErrore([&] { f = AnalizzaFormula(c.testo); }), c.errore);
        EXPECT_EQ(f.nome + u'=' + f.valore, c.nome + u'=' + c.valore);
    }
}

TEST(Selezione, CondizioniUniteDaAnd)
{
    struct Caso { QString testo; QStringList attese; int errore; };  // attese: "query.campo=valore"
    const Caso casi[] = {
        {u"{Queryreport.DOMANDA} =  '00000000042' AND  {Queryreport.PROGRESSIVO} =  '01' "_s,
         {u"Queryreport.DOMANDA=00000000042"_s, u"Queryreport.PROGRESSIVO=01"_s}, 0},
        {u"{Q.A}='' and {Q.B} = 'x''y'"_s, {u"Q.A="_s, u"Q.B=x'y"_s}, 0},
        {u"   "_s, {}, 0},
        {u"{Q.A} = 'x' OR {Q.B} = 'y'"_s, {}, 20515},
        {u"{Q.A} = 'x' AND"_s, {}, 20515},
        {u"{Q.A} = x"_s, {}, 20515},
        {u"{Q.A} = 'x' AND  {Q.B} =  '00' 1'"_s, {}, 20515},
        {u"Q.A = 'x'"_s, {}, 20515},
    };
    for (const Caso& c : casi) {
        SCOPED_TRACE(c.testo.toStdString());
        QStringList lette;
        EXPECT_EQ(NumeroErrore([&] {
                      for (const auto& s : AnalizzaSelezione(c.testo))
                          lette << s.query + u'.' + s.campo + u'=' + s.valore;
                  }),
                  c.errore);
        EXPECT_EQ(lette, c.attese);
    }
}

// Un modello piccolo: ogni sezione lascia un segno riconoscibile nell'HTML.
const QString ModelloProva = uR"(<html><head>
<meta name="query" content="Q"><meta name="salto" content="S"><meta name="gruppo" content="G">
<meta name="righe" content="%1"><title>Prova</title></head><body>
<!--PAGINA-->[P:[[S]]|{{TITOLO}}]<!--TESTA-->[T:[[G]]]<!--/TESTA--><!--RIGA-->[R:[[V]]]<!--/RIGA-->
<!--PIEDE-->[F:[[G]]={{SOMMA:V}}]<!--/PIEDE-->[M]<!--FINE-->[E:{{SOMMA:V}}]<!--/FINE-->[C]<!--/PAGINA--></body></html>)"_s;

QString Segni(const QString& html)
{
    QStringList segni;
    static const QRegularExpression re(u"\\[([^\\]]*)\\]"_s);
    for (auto it = re.globalMatch(html); it.hasNext();)
        segni << it.next().captured(1);
    return segni.join(u' ');
}

TEST(Composizione, PagineGruppiESomme)
{
    // Righe: S, G, V; attesi: i segni in ordine, "/" dove cambia la pagina.
    struct Caso { const char* nome; int righePerPagina; QList<QStringList> righe; QString attesi; };
    const Caso casi[] = {
        {"nessuna riga: una pagina con i campi della selezione", 10, {}, u"P:fisso|T1 M E:0,0000 C"_s},
        {"un gruppo", 10, {{u"1"_s, u"a"_s, u"1,5"_s}, {u"1"_s, u"a"_s, u"2"_s}},
         u"P:1|T1 T:a R:1,5 R:2 F:a=3,5000 M E:3,5000 C"_s},
        {"salto di pagina quando cambia S, il gruppo riparte",
         10,
         {{u"1"_s, u"a"_s, u"1"_s}, {u"2"_s, u"a"_s, u"2"_s}},
         u"P:1|T1 T:a R:1 F:a=1,0000 M C / P:2|T1 T:a R:2 F:a=2,0000 M E:3,0000 C"_s},
        {"gruppo che non sta in pagina: la testata si ripete, il piede solo alla fine",
         4,
         {{u"1"_s, u"a"_s, u"1"_s}, {u"1"_s, u"a"_s, u"1"_s}, {u"1"_s, u"a"_s, u"1"_s}, {u"1"_s, u"b"_s, u"x"_s}},
         u"P:1|T1 T:a R:1 R:1 M C / P:1|T1 T:a R:1 F:a=3,0000 M C / P:1|T1 T:b R:x F:b=0,0000 M E:3,0000 C"_s},
    };
    for (const Caso& c : casi) {
        SCOPED_TRACE(c.nome);
        const ModelloReport m = ModelloReport::DaTesto(ModelloProva.arg(c.righePerPagina), u"prova.rpt"_s);
        DatiReport dati;
        dati.colonne = QStringList{u"S"_s, u"G"_s, u"V"_s};
        dati.righe = c.righe;
        dati.formule.insert(u"TITOLO"_s, u"T1"_s);
        dati.fissi.insert(u"S"_s, u"fisso"_s);
        QString html = m.Componi(dati);
        html.replace(u"<p style=\"page-break-before: always; margin: 0; font-size: 1pt;\"></p>"_s, u"[/]"_s);
        EXPECT_EQ(Segni(html), c.attesi);
    }
}

TEST(Composizione, ValoriProtettiECampiSconosciuti)
{
    const ModelloReport m = ModelloReport::DaTesto(ModelloProva.arg(10), u"prova.rpt"_s);
    DatiReport dati;
    dati.colonne = QStringList{u"S"_s, u"G"_s, u"V"_s};
    dati.righe = {{u"<b>"_s, u"D'Amico & \"figli\""_s, u"1"_s}};
    const QString html = m.Componi(dati);
    EXPECT_TRUE(html.contains(u"T:D'Amico &amp; &quot;figli&quot;"_s)) << html.toStdString();
    EXPECT_TRUE(html.contains(u"P:&lt;b&gt;"_s));
    dati.colonne = QStringList{u"S"_s, u"G"_s, u"ALTRO"_s};
    EXPECT_EQ(ErroreDi([&] { m.Componi(dati); }), u"20515 Campo sconosciuto nel report prova.rpt: V"_s);
}

// Il controllo completo su un database di prova, con i suoi guasti.
QString Meta(const QString& query, const QString& ordine = {})
{
    return u"<meta name=\"query\" content=\"%1\"><meta name=\"ordine\" content=\"%2\">"_s.arg(query, ordine);
}
const QString Corpo = u"<!--PAGINA-->{{TITOLO}}<!--RIGA-->x<!--/RIGA--><!--/PAGINA-->"_s;

class Controllo : public ProvaDiStampa {
protected:
    void SetUp() override
    {
        ProvaDiStampa::SetUp();
        report = ControlloReport{};
        const qint64 d = Domanda(u"00000000007"_s, u"01"_s);
        Fattura(d, u"1"_s, u"1"_s, u"F1"_s, u"1"_s, u"1"_s, u"1"_s, u"1"_s, u"1"_s);
        report.ReportFileName = QDir(cartella->cartella()).filePath(u"Report/prova.rpt"_s);
        report.DataFiles = QStringList{db().Name()};
        report.SelectionFormula = u"{Queryreport.DOMANDA} = '00000000007'"_s;
        report.Formulas[1] = u"TITOLO = 'Elenco'"_s;
        Scrivi(uR"(<html><head><meta name="query" content="Queryreport"><meta name="ordine" content="RIGO_NUM"></head>
<body><!--PAGINA-->{{TITOLO}} [[DOMANDA]]<!--RIGA--> fattura [[NUME_FATT]]<!--/RIGA--><!--/PAGINA--></body></html>)"_s);
    }
    void Scrivi(const QString& testo)
    {
        QFile f(report.ReportFileName);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
        f.write(testo.toUtf8());
    }
    ControlloReport report;
};

TEST_F(Controllo, GuastiConNumero)
{
    struct Caso { const char* nome; std::function<void()> guasta; int errore; };
    const Caso casi[] = {
        {"tutto in ordine", [] {}, 0},
        {"file assente", [this] { report.ReportFileName += u".manca"_s; }, 20507},
        {"modello senza righe", [this] { Scrivi(Meta(u"Queryreport"_s) + u"<!--PAGINA-->x<!--/PAGINA-->"_s); }, 20525},
        {"ordine che non è un elenco di colonne",
         [this] { Scrivi(Meta(u"Queryreport"_s, u"1; DROP TABLE DOMANDE"_s) + Corpo); }, 20525},
        {"ordine su una colonna che la query non ha",
         [this] { Scrivi(Meta(u"Queryreport"_s, u"RIGO_NUM, NIENTE DESC"_s) + Corpo); }, 20515},
        {"query che non esiste", [this] { Scrivi(Meta(u"Nessuna"_s) + Corpo); }, 3078},
        {"formula che il report non ha", [this] { report.Formulas[2] = u"ALTRA = 'x'"_s; }, 20510},
        {"formula scritta male", [this] { report.Formulas[1] = u"TITOLO = 'x"_s; }, 20515},
        {"campo della selezione sconosciuto",
         [this] { report.SelectionFormula = u"{Queryreport.NIENTE} = '1'"_s; }, 20515},
        {"selezione su un'altra query",
         [this] { report.SelectionFormula = u"{Queryreport_bolle.DOMANDA} = '1'"_s; }, 20515},
        {"password sbagliata", [this] { report.Connect = u";PWD=cedro5"_s; }, 3031},
        {"database che non esiste",
         [this] {
             report.DataFiles = QStringList{cartella->cartella() + u"/niente.mdb"_s};
             report.Connect = u";PWD=cedro4"_s;
         },
         3024},
        {"annullata dall'utente", [this] { script->risposteAnteprima.enqueue(RispostaMsg::Annulla); }, 20545},
    };
    for (const Caso& c : casi) {
        SCOPED_TRACE(c.nome);
        SetUp();
        c.guasta();
        EXPECT_EQ(NumeroErrore([&] { report.Action(); }), c.errore);
        EXPECT_EQ(script->anteprime.size(), c.errore == 0 || c.errore == 20545 ? 1 : 0);
        TearDown();
    }
}

}  // namespace
