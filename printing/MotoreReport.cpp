#include "printing/MotoreReport.h"

#include "common/disegno_documento.h"
#include "common/errore.h"
#include "common/numeri.h"
#include "common/piattaforma.h"
#include "shell/session_state.h"
#include "store/database.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTextDocument>
#include <QTextOption>

namespace {

[[noreturn]] void Errore(int numero, const QString& descrizione) { throw ErroreSistema(numero, descrizione); }

// Testo fra due commenti <!--NOME--> e <!--/NOME-->; vuoto se la sezione manca.
QString Sezione(const QString& html, const QString& nome, int* inizio = nullptr, int* fine = nullptr)
{
    const QString apre = QStringLiteral("<!--%1-->").arg(nome);
    const QString chiude = QStringLiteral("<!--/%1-->").arg(nome);
    const int a = html.indexOf(apre);
    const int c = a < 0 ? -1 : html.indexOf(chiude, a + apre.size());
    if (a < 0 || c < 0)
        return QString();
    if (inizio)
        *inizio = a;
    if (fine)
        *fine = c + chiude.size();
    return html.mid(a + apre.size(), c - a - apre.size());
}

QString Meta(const QString& html, const QString& nome)
{
    const QRegularExpression re(
        QStringLiteral("<meta\\s+name=\"%1\"\\s+content=\"([^\"]*)\"\\s*/?>").arg(QRegularExpression::escape(nome)),
        QRegularExpression::CaseInsensitiveOption);
    return re.match(html).captured(1).trimmed();
}

const QRegularExpression& ReFormula()
{
    static const QRegularExpression re(QStringLiteral("\\{\\{([A-Za-z_][A-Za-z0-9_]*)\\}\\}"));
    return re;
}
const QRegularExpression& ReSomma()
{
    static const QRegularExpression re(QStringLiteral("\\{\\{SOMMA:([A-Za-z_][A-Za-z0-9_.]*)(?::([0-9]))?\\}\\}"));
    return re;
}
const QRegularExpression& ReCampo()
{
    static const QRegularExpression re(QStringLiteral("\\[\\[([A-Za-z_][A-Za-z0-9_.]*)\\]\\]"));
    return re;
}

// Somma di un campo sulle righe [da, a], a quattro decimali se non detto;
// vuoti e testi non numerici non contano.
QString Somma(const DatiReport& dati, int colonna, int da, int a, int decimali)
{
    Decimale totale;
    for (int r = da; r >= 0 && r <= a && r < dati.righe.size(); ++r) {
        const QString v = dati.righe[r].value(colonna).trimmed();
        if (!v.isEmpty() && IsNumeric(v))
            totale += Decimale(v);
    }
    return Format(totale, decimali > 0 ? QStringLiteral("#0.") + QString(decimali, QLatin1Char('0')) : QStringLiteral("#0"));
}

// Compositore di un report: tiene le colonne e sostituisce i segnaposti.
class Compositore {
public:
    Compositore(const DatiReport& dati, const QString& nomeModello) : m_dati(dati), m_nome(nomeModello)
    {
        for (int i = 0; i < dati.colonne.size(); ++i)
            m_colonne.insert(dati.colonne[i].toUpper(), i);
    }

    int Colonna(const QString& campo) const
    {
        const auto it = m_colonne.constFind(campo.toUpper());
        if (it == m_colonne.constEnd())
            Errore(ErroriReport::ErroreFormula,
                   QStringLiteral("Campo sconosciuto nel report %1: %2").arg(m_nome, campo));
        return it.value();
    }

    // riga: la riga dei campi (-1 nessuna: valgono i campi fissi della
    // selezione); da..a: le righe delle somme.
    // numero: il numero d'ordine della riga nel gruppo ([[#]]).
    QString Espandi(const QString& sezione, int riga, int da, int a, int numero = 0) const
    {
        QString testo = sezione;
        if (numero > 0)
            testo.replace(QStringLiteral("[[#]]"), QString::number(numero));
        Sostituisci(testo, ReSomma(), [&](const QRegularExpressionMatch& m) {
            return Somma(m_dati, Colonna(m.captured(1)), da, a, m.hasCaptured(2) ? m.captured(2).toInt() : 4);
        });
        Sostituisci(testo, ReCampo(), [&](const QRegularExpressionMatch& m) {
            const int c = Colonna(m.captured(1));
            if (riga < 0)
                return m_dati.fissi.value(m.captured(1).toUpper());
            return m_dati.righe[riga].value(c);
        });
        Sostituisci(testo, ReFormula(),
                    [&](const QRegularExpressionMatch& m) { return m_dati.formule.value(m.captured(1).toUpper()); });
        return testo;
    }

    QString Valore(int riga, int colonna) const { return colonna < 0 ? QString() : m_dati.righe[riga].value(colonna); }

private:
    template <typename F>
    static void Sostituisci(QString& testo, const QRegularExpression& re, F&& valore)
    {
        if (!testo.contains(re))
            return;
        QString esito;
        qsizetype ultimo = 0;
        for (auto it = re.globalMatch(testo); it.hasNext();) {
            const auto m = it.next();
            esito += QStringView(testo).mid(ultimo, m.capturedStart() - ultimo);
            esito += valore(m).toHtmlEscaped();
            ultimo = m.capturedEnd();
        }
        esito += QStringView(testo).mid(ultimo);
        testo = esito;
    }

    const DatiReport& m_dati;
    QString m_nome;
    QHash<QString, int> m_colonne;
};

}  // namespace

FormulaReport AnalizzaFormula(const QString& testo)
{
    // Il valore sta fra il primo apice dopo "=" e l'ultimo dello stesso tipo:
    // un nome con apostrofo va fra doppi apici.
    static const QRegularExpression re(QStringLiteral("^\\s*([A-Za-z_][A-Za-z0-9_]*)\\s*=\\s*(['\"])(.*)\\2\\s*$"),
                                       QRegularExpression::DotMatchesEverythingOption);
    const auto m = re.match(testo);
    if (!m.hasMatch())
        Errore(ErroriReport::ErroreFormula, QStringLiteral("Errore nella formula: %1").arg(testo));
    return {m.captured(1), m.captured(3)};
}

QList<CondizioneSelezione> AnalizzaSelezione(const QString& testo)
{
    static const QRegularExpression condizione(
        QStringLiteral("\\s*\\{\\s*([A-Za-z_][A-Za-z0-9_]*)\\.([A-Za-z_][A-Za-z0-9_]*)\\s*\\}\\s*=\\s*'((?:[^']|'')*)'\\s*"));
    static const QRegularExpression congiunzione(QStringLiteral("AND\\b"), QRegularExpression::CaseInsensitiveOption);
    QList<CondizioneSelezione> esito;
    if (testo.trimmed().isEmpty())
        return esito;
    qsizetype pos = 0;
    for (;;) {
        const auto m = condizione.match(testo, pos, QRegularExpression::NormalMatch,
                                        QRegularExpression::AnchorAtOffsetMatchOption);
        if (!m.hasMatch())
            Errore(ErroriReport::ErroreFormula, QStringLiteral("Errore nella formula di selezione: %1").arg(testo));
        esito << CondizioneSelezione{m.captured(1), m.captured(2),
                                     m.captured(3).replace(QStringLiteral("''"), QStringLiteral("'"))};
        pos = m.capturedEnd();
        if (pos >= testo.size())
            return esito;
        const auto e = congiunzione.match(testo, pos, QRegularExpression::NormalMatch,
                                          QRegularExpression::AnchorAtOffsetMatchOption);
        if (!e.hasMatch())
            Errore(ErroriReport::ErroreFormula, QStringLiteral("Errore nella formula di selezione: %1").arg(testo));
        pos = e.capturedEnd();
    }
}

ModelloReport ModelloReport::Leggi(const QString& percorso)
{
    QFile file(percorso);
    if (!QFileInfo(percorso).isFile() || !file.open(QIODevice::ReadOnly))
        Errore(ErroriReport::FileNonValido, QStringLiteral("Impossibile aprire il file del report: %1")
                                                .arg(QDir::toNativeSeparators(percorso)));
    const QByteArray byte = file.read(4 * 1024 * 1024);
    return DaTesto(QString::fromUtf8(byte), QFileInfo(percorso).fileName());
}

ModelloReport ModelloReport::DaTesto(const QString& html, const QString& nome)
{
    ModelloReport m;
    m.m_nome = nome;
    int inizio = -1, fine = -1;
    const QString pagina = Sezione(html, QStringLiteral("PAGINA"), &inizio, &fine);
    m.m_query = Meta(html, QStringLiteral("query"));
    static const QRegularExpression nomeValido(QStringLiteral("^[A-Za-z_][A-Za-z0-9_]*$"));
    if (pagina.isEmpty() || !nomeValido.match(m.m_query).hasMatch())
        Errore(ErroriReport::ReportNonCaricato, QStringLiteral("Il file %1 non è un modello di report.").arg(nome));
    m.m_prologo = html.left(inizio);
    m.m_epilogo = html.mid(fine);
    m.m_ordine = Meta(html, QStringLiteral("ordine"));
    m.m_salto = Meta(html, QStringLiteral("salto"));
    m.m_gruppo = Meta(html, QStringLiteral("gruppo"));
    m.m_pdf = Meta(html, QStringLiteral("pdf"));
    m.m_orizzontale = Meta(html, QStringLiteral("foglio")).compare(QLatin1String("orizzontale"), Qt::CaseInsensitive) == 0;
    const int righe = Meta(html, QStringLiteral("righe")).toInt();
    if (righe > 0)
        m.m_righe = righe;
    static const QRegularExpression titolo(QStringLiteral("<title>([^<]*)</title>"), QRegularExpression::CaseInsensitiveOption);
    m.m_titolo = titolo.match(html).captured(1).trimmed();
    static const QRegularExpression voceOrdine(QStringLiteral("^([A-Za-z_][A-Za-z0-9_.]*)(\\s+DESC)?$"),
                                               QRegularExpression::CaseInsensitiveOption);
    for (const QString& voce : m.m_ordine.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
        const auto v = voceOrdine.match(voce.trimmed());
        if (!v.hasMatch())
            Errore(ErroriReport::ReportNonCaricato, QStringLiteral("Ordine non valido nel report %1: %2").arg(nome, m.m_ordine));
        m.m_ordinePer << v.captured(1);
        m.m_discendente << v.hasCaptured(2);
    }

    // La pagina: testa, sezioni di gruppo e di riga, mezzo, fine, coda.
    int a = -1, b = -1;
    QString resto = pagina;
    m.m_riga = Sezione(resto, QStringLiteral("RIGA"), &a, &b);
    if (a < 0)
        Errore(ErroriReport::ReportNonCaricato, QStringLiteral("Il file %1 non ha la sezione delle righe.").arg(nome));
    int ta = a, pb = b;
    m.m_testaGruppo = Sezione(resto, QStringLiteral("TESTA"), &ta, nullptr);
    m.m_testaPagina = resto.left(std::min(a, ta));
    m.m_piedeGruppo = Sezione(resto, QStringLiteral("PIEDE"), nullptr, &pb);
    QString dopo = resto.mid(std::max(b, pb));
    int fa = -1, fb = -1;
    m.m_fine = Sezione(dopo, QStringLiteral("FINE"), &fa, &fb);
    if (fa >= 0) {
        m.m_mezzo = dopo.left(fa);
        m.m_coda = dopo.mid(fb);
    } else {
        m.m_mezzo = dopo;
    }
    return m;
}

QStringList ModelloReport::formule() const
{
    QStringList nomi;
    const QString tutto = m_prologo + m_testaPagina + m_testaGruppo + m_riga + m_piedeGruppo + m_mezzo + m_fine + m_coda;
    for (auto it = ReFormula().globalMatch(tutto); it.hasNext();) {
        const QString n = it.next().captured(1).toUpper();
        if (!nomi.contains(n))
            nomi << n;
    }
    return nomi;
}

QStringList ModelloReport::campi() const
{
    QStringList nomi;
    const QString tutto = m_testaPagina + m_testaGruppo + m_riga + m_piedeGruppo + m_mezzo + m_fine + m_coda;
    for (const auto* re : {&ReCampo(), &ReSomma()})
        for (auto it = re->globalMatch(tutto); it.hasNext();) {
            const QString n = it.next().captured(1).toUpper();
            if (!nomi.contains(n))
                nomi << n;
        }
    for (const QString& n : {m_salto, m_gruppo})
        if (!n.isEmpty() && !nomi.contains(n.toUpper()))
            nomi << n.toUpper();
    return nomi;
}

QString ModelloReport::NomePdf(const DatiReport& dati) const
{
    QHash<QString, int> colonne;
    for (int i = 0; i < dati.colonne.size(); ++i)
        colonne.insert(dati.colonne[i].toUpper(), i);
    // Un campo vale quando la selezione lo fissa o tutte le righe lo hanno uguale.
    auto valore = [&](const QString& campo) -> QString {
        const QString fisso = dati.fissi.value(campo.toUpper());
        const int c = colonne.value(campo.toUpper(), -1);
        if (!fisso.isEmpty() || c < 0 || dati.righe.isEmpty())
            return fisso;
        const QString primo = dati.righe[0].value(c);
        for (const QStringList& riga : dati.righe)
            if (riga.value(c) != primo)
                return QString();
        return primo;
    };
    const QString modello = m_pdf.isEmpty() ? m_titolo : m_pdf;
    QString nome;
    qsizetype ultimo = 0;
    for (auto it = ReCampo().globalMatch(modello); it.hasNext();) {
        const auto m = it.next();
        nome += modello.mid(ultimo, m.capturedStart() - ultimo) + valore(m.captured(1)).trimmed();
        ultimo = m.capturedEnd();
    }
    nome += modello.mid(ultimo);
    // Solo lettere, cifre, trattino e trattino basso: il nome vale su ogni disco.
    static const QRegularExpression vietati(QStringLiteral("[^A-Za-z0-9_-]+"));
    static const QRegularExpression doppi(QStringLiteral("_{2,}"));
    nome.replace(vietati, QStringLiteral("_")).replace(doppi, QStringLiteral("_"));
    while (nome.startsWith(QLatin1Char('_')))
        nome.remove(0, 1);
    while (nome.endsWith(QLatin1Char('_')))
        nome.chop(1);
    return nome.isEmpty() ? QStringLiteral("Stampa") : nome;
}

QString ModelloReport::Componi(const DatiReport& dati) const
{
    const Compositore c(dati, m_nome);
    for (const QString& campo : campi())
        c.Colonna(campo);
    const int colSalto = m_salto.isEmpty() ? -1 : c.Colonna(m_salto);
    const int colGruppo = m_gruppo.isEmpty() ? -1 : c.Colonna(m_gruppo);
    const int n = static_cast<int>(dati.righe.size());
    const int ultima = n - 1;
    // Gruppo nuovo alla riga r: cambia il gruppo o cambia la pagina per salto.
    auto cambiaSalto = [&](int r) { return r == 0 || (colSalto >= 0 && c.Valore(r, colSalto) != c.Valore(r - 1, colSalto)); };
    auto cambiaGruppo = [&](int r) {
        return colGruppo >= 0 && (cambiaSalto(r) || c.Valore(r, colGruppo) != c.Valore(r - 1, colGruppo));
    };

    QString html = m_prologo;
    html.reserve(static_cast<qsizetype>(n) * (m_riga.size() + 64) + 4096);
    int pagine = 0;
    int occupate = 0;
    int inizioGruppo = 0;
    auto apriPagina = [&](int r) {
        // Il salto di pagina sta su un paragrafo vuoto in testa alla pagina.
        if (pagine++ > 0)
            html += QStringLiteral("<p style=\"page-break-before: always; margin: 0; font-size: 1pt;\"></p>");
        html += c.Espandi(m_testaPagina, r, 0, ultima);
        occupate = 0;
    };
    auto chiudiPagina = [&](bool ultimaPagina, int r) {
        html += c.Espandi(m_mezzo, r, 0, ultima);
        if (ultimaPagina)
            html += c.Espandi(m_fine, r, 0, ultima);
        html += c.Espandi(m_coda, r, 0, ultima);
    };

    int primaDellaPagina = -1;
    for (int r = 0; r < n; ++r) {
        const bool gruppoNuovo = cambiaGruppo(r);
        if (gruppoNuovo)
            inizioGruppo = r;
        const bool fineGruppo = colGruppo >= 0 && (r == ultima || cambiaGruppo(r + 1));
        const int serve = 1 + (gruppoNuovo ? 1 : 0) + (fineGruppo ? 1 : 0);
        const bool paginaNuova = r == 0 || cambiaSalto(r) || occupate + serve > m_righe;
        if (paginaNuova) {
            if (r > 0)
                chiudiPagina(false, primaDellaPagina);
            apriPagina(r);
            primaDellaPagina = r;
            // Un gruppo che continua riprende la sua testata.
            if (colGruppo >= 0 && !gruppoNuovo) {
                html += c.Espandi(m_testaGruppo, inizioGruppo, inizioGruppo, ultima);
                ++occupate;
            }
        }
        if (gruppoNuovo) {
            html += c.Espandi(m_testaGruppo, r, r, ultima);
            ++occupate;
        }
        html += c.Espandi(m_riga, r, r, r, r - inizioGruppo + 1);
        ++occupate;
        if (fineGruppo) {
            html += c.Espandi(m_piedeGruppo, inizioGruppo, inizioGruppo, r);
            ++occupate;
        }
    }
    if (n == 0) {
        apriPagina(-1);
        chiudiPagina(true, -1);
    } else {
        chiudiPagina(true, primaDellaPagina);
    }
    html += m_epilogo;
    return html;
}

std::unique_ptr<QTextDocument> CreaDocumento(const ModelloReport& modello, const QString& html)
{
    auto documento = std::make_unique<QTextDocument>();
    documento->setUndoRedoEnabled(false);
    documento->setDocumentMargin(0);
    // Le parole vanno a capo solo fra l'una e l'altra, mai nel mezzo: una
    // colonna troppo stretta si allarga, non spezza un codice o un importo.
    QTextOption opzione = documento->defaultTextOption();
    opzione.setWrapMode(QTextOption::WordWrap);
    documento->setDefaultTextOption(opzione);
    documento->setHtml(html);
    documento->setMetaInformation(QTextDocument::DocumentTitle, modello.titolo());
    // A4 in punti: il disegno ne prende il verso.
    documento->setPageSize(modello.orizzontale() ? QSizeF(842, 595) : QSizeF(595, 842));
    return documento;
}

std::unique_ptr<QTextDocument> ControlloReport::Componi()
{
    const ModelloReport modello = ModelloReport::Leggi(ReportFileName);

    DatiReport dati;
    const QStringList formuleDelModello = modello.formule();
    for (const QString& testo : Formulas) {
        const FormulaReport f = AnalizzaFormula(testo);
        if (!formuleDelModello.contains(f.nome.toUpper()))
            Errore(ErroriReport::FormulaSconosciuta,
                   QStringLiteral("Nome di formula sconosciuto nel report: %1").arg(f.nome));
        dati.formule.insert(f.nome.toUpper(), f.valore);
    }
    const QList<CondizioneSelezione> selezione = AnalizzaSelezione(SelectionFormula);

    // Il database: quello della sessione, oppure il file dei DataFiles
    // aperto con la password di Connect (controllata come all'apertura).
    Database* fonte = sessione().DbDistilleria.get();
    std::unique_ptr<Database> propria;
    const QString file = DataFiles.value(0);
    const bool stessoFile = fonte && (file.isEmpty() || QFileInfo(file).absoluteFilePath() == QFileInfo(fonte->Name()).absoluteFilePath());
    if (!Connect.isEmpty() || !stessoFile) {
        propria = Database::Apri(file.isEmpty() && fonte ? fonte->Name() : file, false, Connect);
        fonte = propria.get();
    }

    bool esiste = false;
    for (const QString& q : fonte->QueryDefs() + fonte->TableDefs())
        esiste = esiste || q.compare(modello.query(), Qt::CaseInsensitive) == 0;
    if (!esiste)
        Errore(CodiciErrore::TabellaMancante,
               QStringLiteral("Tabella o query di input '%1' non trovata.").arg(modello.query()));

    QString sql = QStringLiteral("SELECT * FROM \"%1\"").arg(modello.query());
    QVariantList parametri;
    QStringList condizioni;
    QSqlQuery intestazione = fonte->Interroga(sql + QStringLiteral(" WHERE 0"));
    const QSqlRecord record = intestazione.record();
    for (int i = 0; i < record.count(); ++i)
        dati.colonne << record.fieldName(i);
    intestazione.finish();
    for (const CondizioneSelezione& s : selezione) {
        if (s.query.compare(modello.query(), Qt::CaseInsensitive) != 0 || record.indexOf(s.campo) < 0)
            Errore(ErroriReport::ErroreFormula, QStringLiteral("Campo sconosciuto nella formula di selezione: {%1.%2}")
                                                    .arg(s.query, s.campo));
        condizioni << QStringLiteral("\"%1\" = ?").arg(s.campo);
        parametri << s.valore;
        dati.fissi.insert(s.campo.toUpper(), s.valore);
    }
    if (!condizioni.isEmpty())
        sql += QStringLiteral(" WHERE ") + condizioni.join(QStringLiteral(" AND "));
    // L'ordine nomina colonne della query, scritte tra doppi apici.
    QStringList ordine;
    for (int i = 0; i < modello.ordinePer().size(); ++i) {
        const QString& campo = modello.ordinePer()[i];
        if (record.indexOf(campo) < 0)
            Errore(ErroriReport::ErroreFormula, QStringLiteral("Campo sconosciuto nell'ordine del report: %1").arg(campo));
        ordine << QStringLiteral("\"%1\"%2").arg(campo, modello.discendente()[i] ? QStringLiteral(" DESC") : QString());
    }
    if (!ordine.isEmpty())
        sql += QStringLiteral(" ORDER BY ") + ordine.join(QStringLiteral(", "));
    const int colonne = static_cast<int>(dati.colonne.size());
    for (Recordset rs = fonte->OpenRecordset(sql, parametri); !rs.eof(); rs.MoveNext()) {
        QStringList riga;
        riga.reserve(colonne);
        for (int i = 0; i < colonne; ++i)
            riga << rs.Fields(i).testo();
        dati.righe << riga;
    }
    if (propria)
        propria->Close();

    auto documento = CreaDocumento(modello, modello.Componi(dati));
    ImpostaNomePdf(*documento, modello.NomePdf(dati));
    if (!WindowTitle.isEmpty())
        documento->setMetaInformation(QTextDocument::DocumentTitle, WindowTitle);
    return documento;
}

void ControlloReport::Action()
{
    auto documento = Componi();
    const QString titolo = WindowTitle.isEmpty() ? documento->metaInformation(QTextDocument::DocumentTitle) : WindowTitle;
    if (AnteprimaStampa(*documento, titolo) == RispostaMsg::Annulla)
        throw ErroreSistema(CodiciErrore::StampaAnnullata);
}

QString CartellaReport()
{
    QDir programma(sessione().PathDatabase);
    return QDir::cleanPath(programma.absoluteFilePath(QStringLiteral("../Report")));
}
