#include "common/liste.h"

#include "common/errore.h"
#include "shell/session_state.h"

#include <QFontMetrics>
#include <QHeaderView>
#include <QLabel>
#include <QPointer>
#include <QRegularExpression>
#include <QSet>
#include <QSqlError>
#include <QSqlField>
#include <QSqlRecord>
#include <QTableView>
#include <QTimer>

#include <sqlite3.h>

#include <algorithm>
#include <limits>
#include <memory>
#include <optional>

namespace {

// Una colonna da mostrare: posizione, didascalia, larghezza in twip (0: la sua).
struct ColonnaLista {
    int posizione;
    const char* didascalia;
    int larghezza = 0;
};

QSet<ModelloLista*>& modelliVivi()
{
    static QSet<ModelloLista*> modelli;
    return modelli;
}

bool Tra(const QString& chiave, std::initializer_list<const char*> modi)
{
    for (const char* m : modi)
        if (chiave == QLatin1String(m))
            return true;
    return false;
}

// La prima parte delle liste dei modi 0, "CERCA", 3, 4 e 5.
const QString SelectDomande = QStringLiteral(
    "SELECT DOMANDE.*,  VARIETA.CODI_PROD AS PRODOTTO, VARIETA.DESC_PROD AS DESCRIZIONE_PRODOTTO ");
const QString DaDomande = QStringLiteral(
    " FROM DOMANDE,VARIETA,TIPO_ARTICOLO_DOMANDA where DOMANDE.ID_VARIETA = VARIETA.ID_VARIETA and "
    "DOMANDE.TIPO_ARTICOLO=TIPO_ARTICOLO_DOMANDA.TIPO_ARTICOLO");

IstruzioneSql Fatture2()
{
    return IstruzioneSql(QStringLiteral("SELECT DOMANDE.* , FATTURE.*, ") +
                             QStringLiteral(" VARIETA.CODI_PROD AS PRODOTTO, VARIETA.DESC_PROD AS DESCRIZIONE_PRODOTTO, ") +
                             QStringLiteral(" LAVORAZIONI.CODI_LAVO, LAVORAZIONI.DESC_LAVO ") +
                             QStringLiteral(" FROM DOMANDE,FATTURE,VARIETA, TIPO_ARTICOLO_DOMANDA , LAVORAZIONI ") +
                             QStringLiteral(" WHERE DOMANDE.ID_DOMANDA=FATTURE.ID_DOMANDA ") +
                             QStringLiteral(" AND DOMANDE.ID_VARIETA = VARIETA.ID_VARIETA ") +
                             QStringLiteral(" AND DOMANDE.TIPO_ARTICOLO=TIPO_ARTICOLO_DOMANDA.TIPO_ARTICOLO ") +
                             QStringLiteral(" AND FATTURE.ID_LAVORAZIONE=LAVORAZIONI.ID_LAVORAZIONE ") +
                             QStringLiteral(" AND DOMANDE.ID_DOMANDA = ?"),
                         {sessione().DomandaSel.ID_DOMANDA});
}

// Larghezza in pixel di una larghezza in twip della griglia originale; mai
// meno di quanto serve alla didascalia.
int Larghezza(const QTableView* griglia, int twip, const QString& didascalia)
{
    const int pixel = twip * griglia->logicalDpiX() / 1440;
    const int testo = griglia->horizontalHeader()->fontMetrics().horizontalAdvance(didascalia) + 16;
    return std::max(pixel, testo);
}

// Mostra solo le colonne dell'elenco, con le loro didascalie; le altre si nascondono.
void DisponiColonne(QTableView* griglia, const QList<ColonnaLista>& colonne, bool centrate)
{
    QAbstractItemModel* modello = griglia->model();
    if (!modello)
        return;
    auto* lista = qobject_cast<ModelloLista*>(modello);
    const int numero = modello->columnCount();
    for (int i = 0; i < numero; ++i) {
        const auto trovata = std::find_if(colonne.cbegin(), colonne.cend(),
                                          [i](const ColonnaLista& c) { return c.posizione == i; });
        if (trovata == colonne.cend()) {
            griglia->setColumnHidden(i, true);
            continue;
        }
        const QString didascalia = QString::fromUtf8(trovata->didascalia);
        griglia->setColumnHidden(i, false);
        modello->setHeaderData(i, Qt::Horizontal, didascalia);
        if (trovata->larghezza > 0)
            griglia->setColumnWidth(i, Larghezza(griglia, trovata->larghezza, didascalia));
        if (centrate && lista)
            lista->ImpostaAllineamento(i, Qt::AlignCenter);
    }
}

void AggiornaGriglia(const IstruzioneSql& lista, const IstruzioneSql& condizione, QTableView* griglia,
                     bool soloRinfresca, ModelloLista* data)
{
    if (!soloRinfresca) {
        const IstruzioneSql completa = lista + condizione;
        sessione().StrSql = completa.testo;
        if (completa.testo.trimmed().isEmpty())
            throw ErroreSistema(3129, QStringLiteral("Istruzione SQL non valida. Prevista 'DELETE', 'INSERT', "
                                                     "'PROCEDURE', 'SELECT' o 'UPDATE'."));
        ModelloLista* modello = data;
        if (!modello && griglia)
            modello = qobject_cast<ModelloLista*>(griglia->model());
        if (!modello) {
            if (!griglia)
                return;
            modello = new ModelloLista(griglia);
        }
        modello->Imposta(completa);
        if (griglia) {
            if (griglia->model() != modello)
                griglia->setModel(modello);
            for (int i = 0; i < modello->columnCount(); ++i)
                griglia->setColumnHidden(i, false);
        }
    }
    if (griglia)
        griglia->viewport()->update();
}

}  // namespace

// ---------------------------------------------------------------- IstruzioneSql

IstruzioneSql& IstruzioneSql::operator+=(const IstruzioneSql& altra)
{
    testo += altra.testo;
    parametri += altra.parametri;
    return *this;
}

QString ChiaveModo(const QVariant& modo)
{
    switch (modo.typeId()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Long:
    case QMetaType::ULong:
    case QMetaType::Double:
    case QMetaType::Float:
        return QString::number(modo.toLongLong());
    default:
        return modo.toString();
    }
}

// ---------------------------------------------------------------- istruzioni

IstruzioneSql QueryListaDomande(const QVariant& modo)
{
    const QString m = ChiaveModo(modo);
    IstruzioneSql q;
    if (Tra(m, {"0", "CERCA", "3", "4"})) {
        q = SelectDomande + DaDomande;
    } else if (m == QLatin1String("5")) {
        // Si stampano solo le domande che hanno almeno una fattura.
        q = QStringLiteral("SELECT DOMANDE.*, TIPO_ARTICOLO_DOMANDA.TIPO_ARTICOLO, VARIETA.CODI_PROD AS PRODOTTO, "
                           "VARIETA.DESC_PROD AS DESCRIZIONE_PRODOTTO ") +
            DaDomande + QStringLiteral(" and exists (select 1 from fatture where id_domanda=DOMANDE.id_domanda)");
    } else if (m == QLatin1String("1")) {
        // Il join esterno fa di ogni fattura una riga; una domanda senza
        // fatture compare una volta, con le colonne della fattura vuote.
        q = QStringLiteral(" SELECT DOMANDE.*, FATTURE.*, VARIETA.CODI_PROD AS PRODOTTO, VARIETA.DESC_PROD AS "
                           "DESCRIZIONE_PRODOTTO") +
            QStringLiteral(" FROM (TIPO_ARTICOLO_DOMANDA INNER JOIN (VARIETA INNER JOIN DOMANDE ON "
                           "VARIETA.ID_VARIETA = DOMANDE.ID_VARIETA) ON TIPO_ARTICOLO_DOMANDA.TIPO_ARTICOLO = "
                           "DOMANDE.TIPO_ARTICOLO) LEFT JOIN FATTURE ON DOMANDE.ID_DOMANDA = FATTURE.ID_DOMANDA") +
            QStringLiteral(" Where DOMANDE.iD_VARIETA = VARIETA.iD_VARIETA") +
            QStringLiteral(" AND DOMANDE.TIPO_ARTICOLO=TIPO_ARTICOLO_DOMANDA.TIPO_ARTICOLO");
    } else if (m == QLatin1String("FATTURE2")) {
        q = Fatture2();
    } else if (m == QLatin1String("SCARICO")) {
        q = Fatture2() + QStringLiteral(" ORDER BY VAL(FATTURE.NUME_FATT)");
    } else if (m == QLatin1String("SCARICO2")) {
        q = IstruzioneSql(QStringLiteral("SELECT DOMANDE.* , FATTURE.*,BOLLE.* ") +
                              QStringLiteral(" FROM DOMANDE, FATTURE, VARIETA, LAVORAZIONI, BOLLE") +
                              QStringLiteral(" WHERE DOMANDE.ID_DOMANDA=FATTURE.ID_DOMANDA  AND ") +
                              QStringLiteral(" DOMANDE.ID_VARIETA = VARIETA.ID_VARIETA  AND ") +
                              QStringLiteral(" FATTURE.ID_LAVORAZIONE=LAVORAZIONI.ID_LAVORAZIONE  AND ") +
                              QStringLiteral(" DOMANDE.ID_DOMANDA = ?") +
                              QStringLiteral(" AND FATTURE.ID_FATTURA=BOLLE.FK_ID_FATTURA ORDER BY "
                                             "BOLLE.FK_ID_FATTURA,BOLLE.ID_BOLLA"),
                          {sessione().DomandaSel.ID_DOMANDA});
    }
    q.testo += QLatin1Char(' ');
    return q;
}

IstruzioneSql QueryListaProduttori(const QVariant& modo)
{
    const QString m = ChiaveModo(modo);
    QString q;
    if (Tra(m, {"7", "12", "16"})) {
        q = QStringLiteral("SELECT DOMANDE_PRODUTTORI.* FROM DOMANDE_PRODUTTORI ");
    } else if (Tra(m, {"8", "168"})) {
        q = QStringLiteral("SELECT TAB_ID_UTF_PRODUTTORE.iD_TAB_ID_UP, PRODUTTORI.* ") +
            QStringLiteral("FROM TAB_UTF INNER JOIN (PRODUTTORI INNER JOIN  ") +
            QStringLiteral("TAB_ID_UTF_PRODUTTORE ON ") +
            QStringLiteral("PRODUTTORI.iD_PRODUTTORI = TAB_ID_UTF_PRODUTTORE.iD_PRODUTTORE) ") +
            QStringLiteral("ON TAB_UTF.iD_UTF = TAB_ID_UTF_PRODUTTORE.iD_UTF ");
    } else if (m == QLatin1String("9")) {
        q = QStringLiteral("SELECT PRODUTTORI.* ") + QStringLiteral("From PRODUTTORI ") +
            QStringLiteral("Where Not Exists ") + QStringLiteral("(SELECT 1 From TAB_ID_UTF_PRODUTTORE ") +
            QStringLiteral("WHERE  PRODUTTORI.ID_PRODUTTORI = TAB_ID_UTF_PRODUTTORE.ID_PRODUTTORE) ");
    } else if (m == QLatin1String("10")) {
        q = QStringLiteral("SELECT PRODUTTORI.*, TAB_COLORE.CODI_COLORE, TAB_COLORE.DESC_COLORE") +
            QStringLiteral(" FROM TAB_COLORE INNER JOIN PRODUTTORI ON TAB_COLORE.ID_COLORE = PRODUTTORI.ID_COLORE ");
    } else if (Tra(m, {"11", "711", "13", "18", "19", "1611"})) {
        q = QStringLiteral("SELECT DOMANDE_PRODUTTORI.*,TAB_UTF.*, ") +
            QStringLiteral("TAB_UTF.ID_DOMANDA,TAB_UTF.NUMERO_CERTIFICATO_UTF, ") +
            QStringLiteral("TAB_UTF.DESCR_UFFICIO_UTF_PROVINCIA,TAB_UTF.DATA_EMISSIONE_CERTIFICATO ") +
            QStringLiteral("From DOMANDE_PRODUTTORI LEFT JOIN TAB_UTF ") +
            QStringLiteral(" ON DOMANDE_PRODUTTORI.ID_DOMANDA_PRODUTTORE = TAB_UTF.iD_DOMANDA ");
    }
    return IstruzioneSql(q + QLatin1Char(' '));
}

IstruzioneSql FiltroListaProduttori(const QVariant& modo)
{
    const QString m = ChiaveModo(modo);
    if (m == QLatin1String("8"))
        return IstruzioneSql(QStringLiteral("WHERE TAB_UTF.iD_UTF = ?"), {sessione().UtfSel.iD_UTF});
    if (m == QLatin1String("10"))
        return IstruzioneSql(QStringLiteral(" WHERE EXISTS (SELECT 1 From TAB_ID_UTF_PRODUTTORE WHERE ") +
                                 QStringLiteral(" PRODUTTORI.ID_PRODUTTORI = TAB_ID_UTF_PRODUTTORE.ID_PRODUTTORE ") +
                                 QStringLiteral(" and TAB_ID_UTF_PRODUTTORE.id_utf = ?)"),
                             {sessione().UtfSel.iD_UTF});
    if (Tra(m, {"711", "1611"}))
        return IstruzioneSql(QStringLiteral(" WHERE DOMANDE_PRODUTTORI.ID_DOMANDA_PRODUTTORE= ?"),
                             {sessione().DomandaProduttoreSel.ID_DOMANDA_PRODUTTORE});
    return {};
}

// ---------------------------------------------------------------- ModelloLista

namespace {

// Il testo con quanto sta tra apici o tra parentesi coperto da spazi: le
// parole chiave che restano sono quelle dell'istruzione esterna, alle loro
// posizioni nel testo.
QString AltoLivello(const QString& testo)
{
    QString alto = testo;
    int profondita = 0;
    QChar apice;
    for (qsizetype i = 0; i < alto.size(); ++i) {
        const QChar c = alto.at(i);
        if (!apice.isNull()) {
            if (c == apice)
                apice = QChar();
            alto[i] = QLatin1Char(' ');
            continue;
        }
        if (c == QLatin1Char('\'') || c == QLatin1Char('"')) {
            apice = c;
            alto[i] = QLatin1Char(' ');
        } else if (c == QLatin1Char('(')) {
            ++profondita;
        } else if (c == QLatin1Char(')')) {
            --profondita;
        } else if (profondita > 0) {
            alto[i] = QLatin1Char(' ');
        }
    }
    return alto;
}

// Dove comincia l'ORDER BY finale dell'istruzione esterna; -1 se non c'è o
// se ha parametri (i parametri seguono l'ordine del testo).
qsizetype InizioOrdine(const QString& testo, const QString& alto)
{
    static const QRegularExpression ordine(QStringLiteral("\\bORDER\\s+BY\\b"),
                                           QRegularExpression::CaseInsensitiveOption);
    qsizetype ultimo = -1;
    for (auto it = ordine.globalMatch(alto); it.hasNext();)
        ultimo = it.next().capturedStart();
    return ultimo < 0 || testo.indexOf(QLatin1Char('?'), ultimo) >= 0 ? -1 : ultimo;
}

// Il testo senza l'ORDER BY finale: per contare le righe l'ordine non serve
// e costerebbe un ordinamento intero.
QString SenzaOrdine(const QString& testo)
{
    const qsizetype ordine = InizioOrdine(testo, AltoLivello(testo));
    return ordine < 0 ? testo : testo.left(ordine);
}

// Vero se l'ordinamento dell'istruzione non viene da un indice.
bool OrdineSenzaIndice(const IstruzioneSql& istruzione)
{
    QSqlQuery piano = Db().Interroga(QStringLiteral("EXPLAIN QUERY PLAN ") + istruzione.testo, istruzione.parametri);
    while (piano.next()) {
        const QString passo = piano.value(3).toString();
        if (passo.contains(QLatin1String("TEMP B-TREE")) && passo.contains(QLatin1String("ORDER BY")))
            return true;
    }
    return false;
}

ErroreSistema ErroreLettura(const QSqlQuery& q)
{
    const QSqlError e = q.lastError();
    return ErroreSistema(3000 + std::max(1, e.nativeErrorCode().toInt() & 0xff),
                         QStringLiteral("Errore del database: ") + e.text());
}

QString NomeChiave(int i) { return QStringLiteral("FERMOLA_CHIAVE_%1").arg(i); }

constexpr qint64 ChiaveNull = std::numeric_limits<qint64>::min();

// Tutte le chiavi di una lettura di sole colonne intere, riga dopo riga:
// direttamente dal motore, senza un QVariant per valore.
std::vector<qint64> LeggiChiavi(const QString& sql, const QVariantList& parametri)
{
    sqlite3* db = Db().handle();
    if (!db)
        throw ErroreSistema(3420, QStringLiteral("Oggetto non valido o non più impostato."));
    sqlite3_stmt* st = nullptr;
    int esito = sqlite3_prepare16_v2(db, sql.utf16(), int(sql.size() * sizeof(QChar)), &st, nullptr);
    const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> chiudi(st, sqlite3_finalize);
    QList<QByteArray> testi;
    for (int i = 0; i < parametri.size() && esito == SQLITE_OK; ++i) {
        const QVariant& v = parametri.at(i);
        switch (v.isNull() ? QMetaType::UnknownType : v.typeId()) {
        case QMetaType::UnknownType: esito = sqlite3_bind_null(st, i + 1); break;
        case QMetaType::Bool:
        case QMetaType::Int:
        case QMetaType::UInt:
        case QMetaType::LongLong:
        case QMetaType::ULongLong: esito = sqlite3_bind_int64(st, i + 1, v.toLongLong()); break;
        case QMetaType::Double: esito = sqlite3_bind_double(st, i + 1, v.toDouble()); break;
        default: {
            const QByteArray& t = testi.emplaceBack(v.toString().toUtf8());
            esito = sqlite3_bind_text(st, i + 1, t.constData(), int(t.size()), SQLITE_STATIC);
        }
        }
    }
    std::vector<qint64> chiavi;
    const int colonne = esito == SQLITE_OK ? sqlite3_column_count(st) : 0;
    while (esito == SQLITE_OK || esito == SQLITE_ROW) {
        esito = sqlite3_step(st);
        for (int c = 0; esito == SQLITE_ROW && c < colonne; ++c)
            chiavi.push_back(sqlite3_column_type(st, c) == SQLITE_NULL ? ChiaveNull : sqlite3_column_int64(st, c));
    }
    if (esito != SQLITE_DONE)
        throw ErroreSistema(3000 + std::max(1, sqlite3_errcode(db) & 0xff),
                            QStringLiteral("Errore del database: ") + QString::fromUtf8(sqlite3_errmsg(db)));
    return chiavi;
}

// Colonne di cifre (quantità, importi, gradi, numeri), allineate a destra.
bool DiCifre(const QSqlField& campo)
{
    QString nome = campo.name().toUpper();
    if (const qsizetype duePunti = nome.lastIndexOf(QLatin1Char(':')); duePunti > 0)
        nome.truncate(duePunti);
    static const QSet<QString> nomi = {
        QStringLiteral("DOMANDA"),   QStringLiteral("PROGRESSIVO"),        QStringLiteral("NUME_FATT"),
        QStringLiteral("NUME_FATT_TRAS"), QStringLiteral("GRAD"),          QStringLiteral("GRADO"),
        QStringLiteral("IVA"),       QStringLiteral("IMPO"),               QStringLiteral("IMPO_TOTA"),
        QStringLiteral("ETTOGRADI"), QStringLiteral("TOTALE_AIUTO"),       QStringLiteral("IMPORTO_DETRAIBILE"),
        QStringLiteral("TITOLO_ALCOLOMETRICO_FATTURATO")};
    static const char* const prefissi[] = {"QTA_", "QUANTITA_", "PREZ_", "AIUTO_", "PERC_"};
    if (nomi.contains(nome))
        return true;
    for (const char* p : prefissi)
        if (nome.startsWith(QLatin1String(p)))
            return true;
    switch (campo.metaType().id()) {
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::Double: return true;
    default: return false;
    }
}

}  // namespace

ModelloLista::ModelloLista(QObject* parent) : QAbstractTableModel(parent) { modelliVivi().insert(this); }

ModelloLista::~ModelloLista() { modelliVivi().remove(this); }

ModelloLista::Finestra ModelloLista::LeggiFinestra(const IstruzioneSql& istruzione, int numero, QSqlRecord* record)
{
    QVariantList parametri = istruzione.parametri;
    parametri << RigheFinestra << qint64(numero) * RigheFinestra;
    QSqlQuery q = Db().Interroga(istruzione.testo + QStringLiteral(" LIMIT ? OFFSET ?"), parametri);
    if (record)
        *record = q.record();
    const int colonne = q.record().count();
    Finestra f;
    f.numero = numero;
    f.celle.reserve(qsizetype(colonne) * RigheFinestra);
    while (q.next()) {
        for (int c = 0; c < colonne; ++c)
            f.celle.append(q.value(c));
        ++f.righe;
    }
    if (q.lastError().isValid())
        throw ErroreLettura(q);
    return f;
}

std::optional<ModelloLista::Lettura> ModelloLista::LeggiOrdinata(const IstruzioneSql& istruzione)
{
    // Solo un SELECT semplice ordinato: le righe sono quelle delle tabelle, e
    // la chiave di ciascuna tabella (il suo contatore) le riconosce.
    static const QRegularExpression select(QStringLiteral("^\\s*SELECT\\b"), QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression escluse(
        QStringLiteral("\\b(DISTINCT|GROUP\\s+BY|HAVING|UNION|INTERSECT|EXCEPT|LIMIT|WINDOW)\\b"),
        QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression da(QStringLiteral("\\bFROM\\b"), QRegularExpression::CaseInsensitiveOption);
    const QString& testo = istruzione.testo;
    const QString alto = AltoLivello(testo);
    const qsizetype ordine = InizioOrdine(testo, alto);
    const QRegularExpressionMatch from = da.match(alto);
    if (ordine < 0 || !from.hasMatch() || from.capturedStart() > ordine || !select.match(alto).hasMatch() ||
        escluse.match(alto).hasMatch() || !OrdineSenzaIndice(istruzione))
        return std::nullopt;

    Lettura l;
    l.record = Db().Interroga(testo + QStringLiteral(" LIMIT 0"), istruzione.parametri).record();
    QStringList chiavi, nomi;
    QSet<QString> tabelle;
    for (int c = 0; c < l.record.count(); ++c) {
        const QString tabella = l.record.field(c).tableName();
        if (tabella.isEmpty() || tabelle.contains(tabella.toUpper()))
            continue;
        tabelle.insert(tabella.toUpper());
        const Valore contatore = Db().PrimoValore(
            QStringLiteral("SELECT MAX(name) FROM pragma_table_info(?) WHERE pk > 0 "
                           "HAVING COUNT(*) = 1 AND upper(MAX(type)) = 'INTEGER'"),
            {tabella});
        if (contatore.isNull())
            return std::nullopt;
        nomi << NomeChiave(int(chiavi.size()));
        chiavi << tabella + QLatin1Char('.') + contatore.testo() + QStringLiteral(" AS ") + nomi.last();
    }
    if (chiavi.isEmpty())
        return std::nullopt;
    const QString colonne = testo.left(from.capturedStart()) + QStringLiteral(", ") + chiavi.join(QStringLiteral(", ")) +
                            QLatin1Char(' ');
    Ordinata& o = l.ordinata;
    try {
        o.chiavi = LeggiChiavi(QStringLiteral("SELECT ") + nomi.join(QStringLiteral(", ")) + QStringLiteral(" FROM (") +
                                   colonne + testo.mid(from.capturedStart()) + QLatin1Char(')'),
                               istruzione.parametri);
    } catch (const ErroreSistema&) {
        // Una tabella con un alias o presa due volte: si legge per LIMIT/OFFSET.
        return std::nullopt;
    }
    o.numeroChiavi = int(chiavi.size());
    o.perChiavi = QStringLiteral("SELECT * FROM (") + colonne +
                  testo.mid(from.capturedStart(), ordine - from.capturedStart()) + QStringLiteral(") WHERE ");
    l.righe = int(o.chiavi.size() / size_t(o.numeroChiavi));
    l.prima = LeggiPerChiavi(istruzione, o, int(l.record.count()), 0);
    return l;
}

ModelloLista::Finestra ModelloLista::LeggiPerChiavi(const IstruzioneSql& istruzione, const Ordinata& ordinata,
                                                    int colonne, int numero)
{
    const int n = ordinata.numeroChiavi;
    const int da = numero * RigheFinestra;
    const int a = std::min(int(ordinata.chiavi.size() / size_t(n)), da + RigheFinestra);
    Finestra f;
    f.numero = numero;
    f.righe = std::max(0, a - da);
    if (f.righe == 0)
        return f;
    f.celle.resize(qsizetype(f.righe) * colonne);
    f.mancanti.assign(size_t(f.righe), true);
    const auto chiave = [n](const qint64* p) {
        return QByteArray(reinterpret_cast<const char*>(p), qsizetype(n * sizeof(qint64)));
    };
    // Le posizioni di ogni chiave: più d'una se la lista ripete la riga.
    QHash<QByteArray, QList<int>> posizioni;
    for (int r = da; r < a; ++r)
        posizioni[chiave(&ordinata.chiavi[size_t(r) * size_t(n)])].append(r - da);

    // La chiave con più valori guida la lettura; le altre, con "+", non
    // usano un indice e filtrano soltanto.
    std::vector<std::vector<qint64>> valori(static_cast<size_t>(n));
    std::vector<bool> nulle(static_cast<size_t>(n), false);
    int guida = -1;
    for (int k = 0; k < n; ++k) {
        for (int r = da; r < a; ++r) {
            const qint64 v = ordinata.chiavi[size_t(r) * size_t(n) + size_t(k)];
            if (v == ChiaveNull)
                nulle[size_t(k)] = true;
            else
                valori[size_t(k)].push_back(v);
        }
        auto& vk = valori[size_t(k)];
        std::sort(vk.begin(), vk.end());
        vk.erase(std::unique(vk.begin(), vk.end()), vk.end());
        if (!nulle[size_t(k)] && (guida < 0 || vk.size() >= valori[size_t(guida)].size()))
            guida = k;
    }
    QStringList condizioni;
    for (int k = 0; k < n; ++k) {
        const QString nome = NomeChiave(k);
        QStringList elenco;
        for (const qint64 v : valori[size_t(k)])
            elenco << QString::number(v);
        QString condizione = elenco.isEmpty() ? QString()
                                              : (k == guida ? QString() : QStringLiteral("+")) + nome +
                                                    QStringLiteral(" IN (") + elenco.join(QLatin1Char(',')) +
                                                    QLatin1Char(')');
        if (nulle[size_t(k)])
            condizione = condizione.isEmpty() ? nome + QStringLiteral(" IS NULL")
                                              : QLatin1Char('(') + condizione + QStringLiteral(" OR ") + nome +
                                                    QStringLiteral(" IS NULL)");
        condizioni << condizione;
    }

    QSqlQuery q = Db().Interroga(ordinata.perChiavi + condizioni.join(QStringLiteral(" AND ")), istruzione.parametri);
    std::vector<qint64> letta(static_cast<size_t>(n));
    while (q.next()) {
        for (int k = 0; k < n; ++k) {
            const QVariant v = q.value(colonne + k);
            letta[size_t(k)] = v.isNull() ? ChiaveNull : v.toLongLong();
        }
        const auto it = posizioni.constFind(chiave(letta.data()));
        if (it == posizioni.cend())
            continue;
        for (const int r : it.value()) {
            if (!f.mancanti[size_t(r)])
                continue;
            f.mancanti[size_t(r)] = false;
            for (int c = 0; c < colonne; ++c)
                f.celle[qsizetype(r) * colonne + c] = q.value(c);
            break;
        }
    }
    if (q.lastError().isValid())
        throw ErroreLettura(q);
    return f;
}

ModelloLista::Lettura ModelloLista::Leggi(const IstruzioneSql& istruzione, bool contaSubito)
{
    if (std::optional<Lettura> ordinata = LeggiOrdinata(istruzione))
        return std::move(*ordinata);
    Lettura l;
    l.prima = LeggiFinestra(istruzione, 0, &l.record);
    l.righe = l.prima.righe;
    l.daContare = l.prima.righe >= RigheFinestra;
    if (l.daContare && contaSubito) {
        l.righe = std::max(l.righe, Conta(istruzione));
        l.daContare = false;
    }
    return l;
}

ModelloLista::Finestra ModelloLista::LeggiNumero(int numero) const
{
    return PerChiavi() ? LeggiPerChiavi(m_istruzione, m_ordinata, int(m_record.count()), numero)
                       : LeggiFinestra(m_istruzione, numero);
}

int ModelloLista::Conta(const IstruzioneSql& istruzione)
{
    return static_cast<int>(Db().PrimoValore(QStringLiteral("SELECT COUNT(*) FROM (") + SenzaOrdine(istruzione.testo) +
                                                  QStringLiteral(")"),
                                              istruzione.parametri)
                                .intero());
}

void ModelloLista::Imposta(const IstruzioneSql& istruzione)
{
    // Tutto si legge prima di toccare il modello: un errore lo lascia com'era.
    Lettura l = Leggi(istruzione, false);
    beginResetModel();
    m_istruzione = istruzione;
    m_record = l.record;
    m_righe = l.righe;
    m_daContare = l.daContare;
    ++m_generazione;
    m_ordinata = std::move(l.ordinata);
    m_cifre.clear();
    for (int c = 0; c < m_record.count(); ++c)
        if (DiCifre(m_record.field(c)))
            m_cifre.insert(c);
    m_didascalie.clear();
    m_allineamenti.clear();
    m_finestre = {std::move(l.prima)};
    m_lette = 1;
    endResetModel();
    // Il conteggio dopo la prima schermata, se nessuno l'ha chiesto prima.
    if (m_daContare)
        QTimer::singleShot(0, this, [this, generazione = m_generazione] {
            if (generazione == m_generazione)
                fetchMore(QModelIndex());
        });
}

void ModelloLista::Rileggi()
{
    if (m_record.isEmpty())
        return;
    Lettura l;
    try {
        l = Leggi(m_istruzione, true);
    } catch (const ErroreSistema&) {
        ++m_generazione;
        m_daContare = false;
        if (m_righe > 0) {
            beginRemoveRows(QModelIndex(), 0, m_righe - 1);
            m_righe = 0;
            m_finestre.clear();
            m_ordinata = Ordinata();
            endRemoveRows();
        }
        throw;
    }
    if (l.record.count() != m_record.count()) {
        // Altre colonne: come una nuova istruzione.
        Imposta(m_istruzione);
        return;
    }
    ++m_generazione;
    m_daContare = false;
    // Le righe in più o in meno si tolgono o si aggiungono in fondo: la vista
    // tiene colonne nascoste, larghezze e didascalie.
    if (l.righe < m_righe) {
        beginRemoveRows(QModelIndex(), l.righe, m_righe - 1);
        m_righe = l.righe;
        endRemoveRows();
    } else if (l.righe > m_righe) {
        beginInsertRows(QModelIndex(), m_righe, l.righe - 1);
        m_righe = l.righe;
        endInsertRows();
    }
    m_record = l.record;
    m_ordinata = std::move(l.ordinata);
    m_finestre = {std::move(l.prima)};
    m_lette = 1;
    if (m_righe > 0)
        emit dataChanged(index(0, 0), index(m_righe - 1, columnCount() - 1));
}

bool ModelloLista::canFetchMore(const QModelIndex& genitore) const { return !genitore.isValid() && m_daContare; }

void ModelloLista::fetchMore(const QModelIndex& genitore)
{
    if (genitore.isValid() || !m_daContare)
        return;
    int righe = 0;
    try {
        righe = Conta(m_istruzione);
    } catch (const ErroreSistema&) {
        // Database chiuso nel frattempo: si riprova alla prossima richiesta.
        return;
    }
    m_daContare = false;
    if (righe > m_righe) {
        beginInsertRows(QModelIndex(), m_righe, righe - 1);
        m_righe = righe;
        endInsertRows();
    }
}

void ModelloLista::RileggiTutte()
{
    std::optional<ErroreSistema> primo;
    for (ModelloLista* m : modelliVivi().values()) {
        try {
            m->Rileggi();
        } catch (const ErroreSistema& e) {
            if (!primo)
                primo = e;
        }
    }
    if (primo)
        throw *primo;
}

void ModelloLista::Conserva(Finestra finestra) const
{
    m_finestre.prepend(std::move(finestra));
    while (m_finestre.size() > FinestreTenute)
        m_finestre.removeLast();
}

const ModelloLista::Finestra* ModelloLista::FinestraDi(int riga) const
{
    const int numero = riga / RigheFinestra;
    for (qsizetype i = 0; i < m_finestre.size(); ++i) {
        if (m_finestre.at(i).numero != numero)
            continue;
        if (i > 0)
            m_finestre.move(i, 0);
        return &m_finestre.first();
    }
    try {
        Conserva(LeggiNumero(numero));
        ++m_lette;
    } catch (const ErroreSistema&) {
        // Database chiuso (un ripristino in corso) o tabella sparita: celle
        // vuote, e la finestra si riprova alla prossima richiesta.
        return nullptr;
    }
    return &m_finestre.first();
}

const QVariant* ModelloLista::Cella(int riga, int colonna) const
{
    if (riga < 0 || riga >= m_righe || colonna < 0 || colonna >= m_record.count())
        return nullptr;
    const Finestra* f = FinestraDi(riga);
    const int locale = riga % RigheFinestra;
    if (!f || locale >= f->righe || (!f->mancanti.empty() && f->mancanti[size_t(locale)]))
        return nullptr;  // riga sparita dal database dopo il conteggio
    return &f->celle.at(qsizetype(locale) * m_record.count() + colonna);
}

int ModelloLista::rowCount(const QModelIndex& genitore) const { return genitore.isValid() ? 0 : m_righe; }

int ModelloLista::columnCount(const QModelIndex& genitore) const
{
    return genitore.isValid() ? 0 : static_cast<int>(m_record.count());
}

int ModelloLista::Colonna(const QString& nome) const
{
    const QSqlRecord r = record();
    const qsizetype punto = nome.lastIndexOf(QLatin1Char('.'));
    const QString tabella = punto >= 0 ? nome.left(punto) : QString();
    const QString campo = punto >= 0 ? nome.mid(punto + 1) : nome;
    int primo = -1;
    for (int i = 0; i < r.count(); ++i) {
        // SQLite può dare a un nome ripetuto nei join un seguito ":1"
        // ("ID_VARIETA:1" nella lista delle fatture): il campo è lo stesso.
        QString nomeCampo = r.fieldName(i);
        if (const qsizetype duePunti = nomeCampo.lastIndexOf(QLatin1Char(':')); duePunti > 0) {
            bool numero = false;
            nomeCampo.mid(duePunti + 1).toInt(&numero);
            if (numero)
                nomeCampo.truncate(duePunti);
        }
        if (nomeCampo.compare(campo, Qt::CaseInsensitive) != 0)
            continue;
        if (tabella.isEmpty() || r.field(i).tableName().compare(tabella, Qt::CaseInsensitive) == 0)
            return i;
        if (primo < 0)
            primo = i;
    }
    // Senza il nome della tabella d'origine vale la prima colonna con quel nome.
    return primo;
}

Valore ModelloLista::Campo(int riga, const QString& nome) const
{
    const int colonna = Colonna(nome);
    if (colonna < 0)
        throw ErroreSistema(3265, QStringLiteral("Elemento non trovato in questo insieme: '%1'.").arg(nome));
    return Campo(riga, colonna);
}

Valore ModelloLista::Campo(int riga, int colonna) const
{
    // Chi legge oltre le righe contate aspetta il conteggio.
    if (riga >= m_righe && m_daContare)
        const_cast<ModelloLista*>(this)->fetchMore(QModelIndex());
    if (riga < 0 || riga >= rowCount())
        throw ErroreSistema(CodiciErrore::NessunRecordCorrente);
    if (colonna < 0 || colonna >= columnCount())
        throw ErroreSistema(3265, QStringLiteral("Elemento non trovato in questo insieme."));
    const int numero = riga / RigheFinestra;
    const bool inMemoria = std::any_of(m_finestre.cbegin(), m_finestre.cend(),
                                       [numero](const Finestra& f) { return f.numero == numero; });
    // Qui l'errore di lettura risale al chiamante, che ha la sua etichetta.
    if (!inMemoria) {
        Conserva(LeggiNumero(numero));
        ++m_lette;
    }
    const QVariant* valore = Cella(riga, colonna);
    if (!valore)
        throw ErroreSistema(CodiciErrore::NessunRecordCorrente);
    return Valore(*valore);
}

void ModelloLista::ImpostaAllineamento(int colonna, Qt::Alignment allineamento)
{
    m_allineamenti[colonna] = allineamento;
    if (rowCount() > 0)
        emit dataChanged(index(0, colonna), index(rowCount() - 1, colonna), {Qt::TextAlignmentRole});
}

QVariant ModelloLista::data(const QModelIndex& indice, int ruolo) const
{
    if (!indice.isValid())
        return {};
    if (ruolo == Qt::TextAlignmentRole) {
        const auto it = m_allineamenti.constFind(indice.column());
        if (it != m_allineamenti.cend())
            return QVariant::fromValue(it.value());
        if (m_cifre.contains(indice.column()))
            return QVariant::fromValue(Qt::Alignment(Qt::AlignRight | Qt::AlignVCenter));
        return {};
    }
    if (ruolo != Qt::DisplayRole && ruolo != Qt::EditRole)
        return {};
    const QVariant* valore = Cella(indice.row(), indice.column());
    return valore ? *valore : QVariant();
}

QVariant ModelloLista::headerData(int sezione, Qt::Orientation orientamento, int ruolo) const
{
    if (orientamento == Qt::Horizontal && (ruolo == Qt::DisplayRole || ruolo == Qt::EditRole)) {
        const auto it = m_didascalie.constFind(sezione);
        if (it != m_didascalie.cend())
            return it.value();
        if (sezione >= 0 && sezione < m_record.count())
            return m_record.fieldName(sezione);
    }
    return QAbstractTableModel::headerData(sezione, orientamento, ruolo);
}

bool ModelloLista::setHeaderData(int sezione, Qt::Orientation orientamento, const QVariant& valore, int ruolo)
{
    if (orientamento != Qt::Horizontal || (ruolo != Qt::DisplayRole && ruolo != Qt::EditRole) || sezione < 0 ||
        sezione >= columnCount())
        return QAbstractTableModel::setHeaderData(sezione, orientamento, valore, ruolo);
    m_didascalie[sezione] = valore;
    emit headerDataChanged(orientamento, sezione, sezione);
    return true;
}

// ---------------------------------------------------------------- griglie

void AssociaDidascalia(QTableView* griglia, QLabel* etichetta)
{
    if (!griglia)
        return;
    griglia->setProperty("EtichettaDidascalia", QVariant::fromValue(static_cast<QObject*>(etichetta)));
    if (etichetta)
        etichetta->setText(DidascaliaGriglia(griglia));
}

void ImpostaDidascaliaGriglia(QTableView* griglia, const QString& didascalia)
{
    if (!griglia)
        return;
    griglia->setProperty("Caption", didascalia);
    if (auto* etichetta = qobject_cast<QLabel*>(griglia->property("EtichettaDidascalia").value<QObject*>()))
        etichetta->setText(didascalia);
}

QString DidascaliaGriglia(const QTableView* griglia)
{
    return griglia ? griglia->property("Caption").toString() : QString();
}

void ColonneGrigliaDomande(QTableView* griglia, const QVariant& modo, const QString& etichettaMaschera)
{
    if (!griglia)
        return;
    ImpostaDidascaliaGriglia(griglia, etichettaMaschera);
    const QString m = ChiaveModo(modo);
    if (Tra(m, {"0", "1", "3", "4", "5"})) {
        QList<ColonnaLista> colonne = {{1, "Numero Domanda", 800}, {2, "Progressivo"},   {3, "Stampata ", 800},
                                       {4, "Scaricata", 800},      {5, "Articolo", 600}, {9, "Campagna", 800}};
        if (m == QLatin1String("1"))
            colonne += {{14, "Num. Fattura"}, {15, "Data Fattura"}};
        DisponiColonne(griglia, colonne, true);
    } else if (m == QLatin1String("FATTURE2")) {
        DisponiColonne(griglia,
                       {{12, " Codice fiscale "}, {13, " Denominazione "}, {14, " Fattura N° "}, {15, " Data fattura "}},
                       true);
    }
}

void ColonneGrigliaProduttori(QTableView* griglia, const QVariant& modo, const QString& etichettaMaschera)
{
    if (!griglia)
        return;
    const QString m = ChiaveModo(modo);
    if (m == QLatin1String("7"))
        ImpostaDidascaliaGriglia(griglia, QStringLiteral("Domande del distillatore"));
    else if (m == QLatin1String("18"))
        ImpostaDidascaliaGriglia(griglia, QStringLiteral("Domande del distillatore da stampare"));
    else
        ImpostaDidascaliaGriglia(griglia, etichettaMaschera);

    if (Tra(m, {"7", "12", "16"})) {
        DisponiColonne(griglia,
                       {{1, "Articolo rif."}, {2, "Numero Domanda"}, {3, "Stampata"}, {4, "Scaricata"}, {8, "Campagna"}},
                       false);
    } else if (Tra(m, {"11", "13"})) {
        DisponiColonne(griglia,
                       {{1, "Articolo rif."},
                        {2, "Numero Domanda"},
                        {8, "Campagna"},
                        {11, "Num. Certificato UTF"},
                        {12, "Emesso dalla Provincia"},
                        {15, "In data "}},
                       false);
    } else if (m == QLatin1String("711")) {
        DisponiColonne(griglia, {{11, "Num. Certificato UTF"}, {12, "Emesso dalla Provincia"}, {15, "In data "}},
                       false);
    } else if (Tra(m, {"18", "19"})) {
        DisponiColonne(griglia,
                       {{1, "Articolo rif."},
                        {2, "Numero Domanda"},
                        {3, "Stampata"},
                        {4, "Scaricata"},
                        {8, "Campagna"},
                        {11, "N° Certificato UTF"},
                        {12, "Provincia"},
                        {15, "Data"}},
                       false);
    } else if (Tra(m, {"9", "10"})) {
        DisponiColonne(griglia,
                       {{1, "Codice fiscale"},
                        {2, "Denominazione"},
                        {5, "Cod. barre Contratto"},
                        {8, "Q.tà Vino effettivamente distillata"},
                        {9, "Q.tà vino distillata beneficiaria dell'aiuto"},
                        {10, "Titolo alcolometrico fatturato"},
                        {21, "Colore del vino "}},
                       false);
    }
}

void AggiornaGrigliaDomande(const IstruzioneSql& condizione, QTableView* griglia, const QVariant& modo,
                            QLabel* /*etichetta*/, bool soloRinfresca, ModelloLista* data,
                            const QString& /*testoAggiunto*/)
{
    AggiornaGriglia(soloRinfresca ? IstruzioneSql() : QueryListaDomande(modo), condizione, griglia, soloRinfresca,
                    data);
}

void AggiornaGrigliaProduttori(const IstruzioneSql& condizione, QTableView* griglia, const QVariant& modo,
                               QLabel* /*etichetta*/, bool soloRinfresca, ModelloLista* data,
                               const QString& /*testoAggiunto*/)
{
    AggiornaGriglia(soloRinfresca ? IstruzioneSql() : QueryListaProduttori(modo), condizione, griglia,
                    soloRinfresca, data);
}
