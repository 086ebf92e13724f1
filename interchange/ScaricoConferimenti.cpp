#include "interchange/ScaricoConferimenti.h"

#include "common/errore.h"
#include "common/liste.h"
#include "common/numeri.h"
#include "common/piattaforma.h"
#include "interchange/FileFornitura.h"
#include "interchange/CursoreSqlite.h"
#include "interchange/ScaricoComune.h"
#include "interchange/TracciatoConferimenti.h"
#include "shell/session_state.h"
#include "store/database.h"

#include <memory>

namespace {

const QString Quattro = QStringLiteral("##0.0000");

// Format di una somma: un Null (nessun produttore) dà il testo vuoto.
QString FormatSomma(const Valore& v)
{
    return v.isNull() ? QString() : Format(Decimale::daDouble(v.numero()), Quattro);
}

// Format di una cifra del certificato, tenuta come testo con la virgola.
QString FormatCifra(const Valore& v)
{
    if (v.isNull())
        return QString();
    const QString testo = v.testo();
    return IsNumeric(testo) ? Format(Decimale::daDouble(CDbl(testo)), Quattro) : testo;
}

// La chiave entra nell'istruzione come numero: senza chiave (domanda senza
// certificati) l'istruzione resta incompleta, come nel testo originale.
qint64 ChiaveCertificato(const QString& iD_UTF)
{
    bool numero = false;
    const qint64 chiave = iD_UTF.trimmed().toLongLong(&numero);
    if (!numero)
        throw ErroreSistema(CodiciErrore::ErroreSintassi,
                            QStringLiteral("Errore di sintassi (operatore mancante) nell'espressione della query."));
    return chiave;
}

}  // namespace

bool ctrl_Quadratura(const QString& iD_UTF)
{
    const qint64 chiave = ChiaveCertificato(iD_UTF);
    Recordset somma = Db().OpenRecordset(
        QStringLiteral("SELECT Sum(CDBL(PRODUTTORI.qta_vino_effetivamente_distillata)) as sommaEffe_dist,"
                       "sum(cdbl(PRODUTTORI.ettogradi)) as sommaEttogradi ") +
            QStringLiteral(" FROM  PRODUTTORI  ") +
            QStringLiteral(" WHERE Exists (SELECT 1 From TAB_ID_UTF_PRODUTTORE WHERE   PRODUTTORI.ID_PRODUTTORI = "
                           "TAB_ID_UTF_PRODUTTORE.ID_PRODUTTORE ") +
            QStringLiteral(" and TAB_ID_UTF_PRODUTTORE.id_utf = ?)"),
        {chiave});
    Recordset certificato = Db().OpenRecordset(QStringLiteral(" SELECT * From TAB_UTF  WHERE  id_utf = ?"), {chiave});
    if (somma.eof())
        return false;
    const QString ettogradi = FormatSomma(somma.Fields(QStringLiteral("sommaEttogradi")));
    const QString ettogradiCertificato = FormatCifra(certificato.Fields(QStringLiteral("QTA_TOT_ETTOGRADI_VINO_LAVORATO")));
    const QString vino = FormatSomma(somma.Fields(QStringLiteral("sommaEffe_dist")));
    const QString vinoCertificato = FormatCifra(certificato.Fields(QStringLiteral("QTA_TOT_VINO_LAVORATO")));

    if (ettogradi != ettogradiCertificato || vino != vinoCertificato) {
        const int risposta =
            MsgBox(QStringLiteral("Le quantità di vino risultante dei certificati Utf non corispondono con le "
                                  "quantità inserite per i singoli produttori.") +
                       QStringLiteral("\r\n") + QStringLiteral("Continuare lo scarico ?"),
                   StileMsg::SiNo + StileMsg::Esclamativo, TitoloLungo);
        sessione().UtfSel.QUADRATURA = QStringLiteral("1");
        return risposta == RispostaMsg::Si;
    }
    sessione().UtfSel.QUADRATURA = QStringLiteral("0");
    MsgBox(QStringLiteral("I dati hanno passato il controllo di Quadratura."), StileMsg::Informazione, TitoloLungo);
    return true;
}

namespace {

IstruzioneSql Certificati()
{
    return QueryListaProduttori(QStringLiteral("1611")) + FiltroListaProduttori(QStringLiteral("1611"));
}

// La quadratura del primo certificato, poi record 0, per ogni certificato il
// suo record 1 e i record 2 dei suoi produttori, record 9 con i totali.
bool ScriviConferimenti(ScritturaFornitura& file, const QString& numero, QString& domandaRicordata)
{
    {
        const IstruzioneSql lista = Certificati();
        Recordset primo = Db().OpenRecordset(lista.testo, lista.parametri);
        const QString iD_UTF = primo.Fields(QStringLiteral("iD_UTF")).testo();
        primo.Close();
        if (!ctrl_Quadratura(iD_UTF))
            return false;
    }

    TracciatoConferimenti::Scarico scarico;
    scarico.NumeroScarico = numero;
    file.Print(scarico.TRACCIATO_0());
    scarico.ContaCertificati = 0;
    scarico.ContaProduttori = 0;
    const IstruzioneSql lista = Certificati();
    const QString sqlProduttori =
        QueryListaProduttori(QStringLiteral("168")).testo + QStringLiteral(" WHERE TAB_ID_UTF_PRODUTTORE.iD_UTF= ?");
    for (CursoreSqlite certificato(Db().handle(), lista.testo, lista.parametri); !certificato.eof();
         certificato.MoveNext()) {
        ++scarico.ContaCertificati;
        file.Print(scarico.TRACCIATO_1(certificato));
        const qint64 chiave = ChiaveCertificato(certificato.Campo(QStringLiteral("iD_UTF")));
        for (CursoreSqlite produttore(Db().handle(), sqlProduttori, {chiave}); !produttore.eof();
             produttore.MoveNext()) {
            ++scarico.ContaProduttori;
            file.Print(scarico.TRACCIATO_2(produttore));
        }
    }
    domandaRicordata = scarico.DomandaRicordata;
    file.Print(scarico.TRACCIATO_9());
    return true;
}

}  // namespace

bool ScaricaDomandaProduttore(const QString& cartella)
{
    // Il numero ricordato dal record 1 serve poi al flag, che va per numero.
    auto domanda = std::make_shared<QString>();
    RamoScarico ramo;
    ramo.Tag = TagConferimenti;
    ramo.Scrivi = [domanda](ScritturaFornitura& file, const QString& numero) {
        return ScriviConferimenti(file, numero, *domanda);
    };
    ramo.SegnaScaricata = [domanda] {
        return Db().Execute(QStringLiteral("UPDATE DOMANDE_produttori SET SCAR = 'S',PROG_INVIO = PROG_INVIO + 1  "
                                           "where DOMANDA = ?"),
                            {*domanda});
    };
    return EseguiScarico(cartella, ramo);
}
