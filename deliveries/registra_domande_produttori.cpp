#include "deliveries/registra_domande_produttori.h"

#include "common/SchermataCambioNumero.h"
#include "deliveries/Frmproduttore_Domanda.h"
#include "shell/registro_maschere.h"

void RegistraMaschereDomandeProduttori()
{
    RegistraMaschera(
        QStringLiteral("Frmproduttore_Domanda"), [](QWidget* g) { return new Frmproduttore_Domanda(g); },
        Apertura::Modale);
    RegistraMaschera(
        QStringLiteral("frmProduttori_CambioDomanda"),
        [](QWidget* g) { return new SchermataCambioNumero(GenereCambio::DomandaProduttore, g); }, Apertura::Modale);
    RegistraMaschera(
        QStringLiteral("frmProduttori_CambioUtf"),
        [](QWidget* g) { return new SchermataCambioNumero(GenereCambio::CertificatoUtf, g); }, Apertura::Modale);
}
