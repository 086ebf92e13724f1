#include "common/RegoleDomanda.h"

#include "common/errore.h"
#include "common/log_errori.h"
#include "common/numeri.h"
#include "common/piattaforma.h"
#include "shell/session_state.h"
#include "store/database.h"

bool CampagnaSoloArt29(const QString& campagna)
{
    const QString c = campagna.trimmed();
    return c == QLatin1String("2005") || c == QLatin1String("2004");
}

QStringList ArticoliDellaCampagna(const QString& campagna)
{
    if (CampagnaSoloArt29(campagna))
        return {QStringLiteral("29")};
    return {QStringLiteral("29"), QStringLiteral("30")};
}

bool ArticoloNonAmmesso(const QString& campagna, const QString& articolo)
{
    return CampagnaSoloArt29(campagna) && articolo.trimmed() == QLatin1String("30");
}

bool NumeroNullo(const QString& testo)
{
    const QString t = testo.trimmed();
    return t.isEmpty() || Val(t) == 0.0;
}

bool NumeroGiaPresente(const QString& tabella, const QString& numero)
{
    sessione().StrSql = QStringLiteral("select * from ") + tabella + QStringLiteral(" where domanda = ?");
    return !Db().OpenRecordset(sessione().StrSql, {numero.trimmed()}).eof();
}

bool NumeroDiAltroArticolo(const QString& tabella, const QString& numero, const QString& articolo)
{
    sessione().StrSql = QStringLiteral("select * from ") + tabella + QStringLiteral(" where domanda = ?");
    Recordset rs = Db().OpenRecordset(sessione().StrSql, {numero.trimmed()});
    if (rs.eof())
        return false;
    // Una riga senza articolo non è in conflitto (il confronto con Null non è vero).
    const Valore tipo = rs.Fields(QStringLiteral("TIPO_ARTICOLO"));
    return !tipo.isNull() && tipo.testo() != articolo.trimmed();
}

int ControllaDomanda(const DatiDomanda& d, bool inserimento)
{
    if (d.campagna.trimmed().isEmpty())
        return 6;
    if (NumeroNullo(d.numero))
        return 1;
    if (NumeroNullo(d.progressivo))
        return 2;
    if (d.articolo.trimmed().isEmpty())
        return 3;
    if (d.prodotto.trimmed().isEmpty())
        return 4;
    if (ArticoloNonAmmesso(d.campagna, d.articolo))
        return 11;
    if (inserimento && NumeroGiaPresente(TabellaDomande::Fatture, d.numero))
        return 5;
    if (NumeroDiAltroArticolo(TabellaDomande::Produttori, d.numero, d.articolo))
        return 10;
    return 0;
}

int ControllaDomandaProduttore(const DatiDomandaProduttore& d, bool inserimento)
{
    if (d.campagna.trimmed().isEmpty())
        return 4;
    if (NumeroNullo(d.numero))
        return 1;
    if (d.articolo.trimmed().isEmpty())
        return 3;
    if (ArticoloNonAmmesso(d.campagna, d.articolo))
        return 11;
    if (inserimento && NumeroGiaPresente(TabellaDomande::Produttori, d.numero))
        return 5;
    if (NumeroDiAltroArticolo(TabellaDomande::Fatture, d.numero, d.articolo))
        return 10;
    return 0;
}

bool ScriviDomanda(const QString& tabella, const QString& colonnaChiave, int modo, const QString& clausola,
                   const std::function<Campi()>& campi)
{
    auto& s = sessione();
    try {
        s.StrSql = QStringLiteral("Select * from ") + tabella + QLatin1Char(' ') + clausola;
        // L'inserimento non ha bisogno della riga corrente: niente lettura,
        // il carico di una fornitura ne fa una per domanda.
        qint64 chiave = 0;
        if (modo == 1 || modo == 2) {
            Recordset rs = Db().OpenRecordset(s.StrSql);
            if (rs.eof()) {
                if (modo == 1) {
                    MsgBox(QStringLiteral("Nessun record da aggiornare"), StileMsg::Informazione);
                    return false;
                }
                // Cancellare senza una riga corrente è l'errore 3021 del motore.
                throw ErroreSistema(CodiciErrore::NessunRecordCorrente);
            }
            chiave = rs.Fields(colonnaChiave).intero();
        } else if (modo != 0) {
            return false;
        }
        const QString perChiave = QStringLiteral("WHERE ") + colonnaChiave + QStringLiteral(" = ?");
        if (modo == 2) {
            Db().Execute(QStringLiteral("DELETE FROM ") + tabella + QLatin1Char(' ') + perChiave, {chiave});
            return true;
        }
        const Campi valori = campi();
        PuntoDiRipristino punto(Db());
        if (modo == 0)
            Db().InserisciRiga(tabella, valori);
        else
            Db().AggiornaRiga(tabella, valori, perChiave, {chiave});
        punto.Conferma();
        return true;
    } catch (const ErroreSistema& e) {
        ScriviLogErr(QString(), EtichettaMetodiDomanda, e.numero(), e.descrizione());
        return false;
    }
}
