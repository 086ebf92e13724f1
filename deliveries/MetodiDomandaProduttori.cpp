#include "deliveries/MetodiDomandaProduttori.h"

#include "common/RegoleDomanda.h"
#include "shell/session_state.h"

bool MetodiDOMANDA_produttori(int operazione, const QString& condizione)
{
    return ScriviDomanda(TabellaDomande::Produttori, QStringLiteral("ID_DOMANDA_PRODUTTORE"), operazione, condizione,
                         [] {
                             const DomandaProduttoreSelezionata& d = sessione().DomandaProduttoreSel;
                             // Ogni salvataggio rimette la domanda da stampare e da scaricare, versione 1.
                             return Campi{
                                 {QStringLiteral("DOMANDA"), d.DOMANDA.trimmed()},
                                 {QStringLiteral("ANTICIPO_RICEVUTO"), d.ANTICIPO_RICEVUTO.trimmed()},
                                 {QStringLiteral("TIPO_ARTICOLO"), d.TIPO_ARTICOLO.trimmed()},
                                 {QStringLiteral("STAM"), QStringLiteral("N")},
                                 {QStringLiteral("SCAR"), QStringLiteral("N")},
                                 {QStringLiteral("PROG_VERS"), QStringLiteral("1")},
                                 {QStringLiteral("DATA_CAMP"), d.CAMPAGNA.trimmed()},
                             };
                         });
}
