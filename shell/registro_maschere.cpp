#include "shell/registro_maschere.h"

#include "deliveries/registra_conferimenti_utf.h"
#include "deliveries/registra_domande_produttori.h"
#include "deliveries/registra_produttore.h"
#include "interchange/registra_carico_conferimenti.h"
#include "interchange/registra_forniture.h"
#include "invoices/registra_domande.h"
#include "invoices/registra_fatture.h"
#include "invoices/registra_liste_domande.h"
#include "printing/registra_stampe.h"
#include "shell/registra_distilleria.h"

#include <QDialog>
#include <QHash>
#include <QPointer>

namespace {

QHash<QString, MascheraRegistrata>& maschere()
{
    static QHash<QString, MascheraRegistrata> m;
    return m;
}

QHash<QString, std::function<void()>>& azioni()
{
    static QHash<QString, std::function<void()>> a;
    return a;
}

}  // namespace

void RegistraMaschera(const QString& nome, FabbricaMaschera fabbrica, Apertura apertura)
{
    maschere().insert(nome, MascheraRegistrata{std::move(fabbrica), apertura});
}

void RegistraAzione(const QString& nome, std::function<void()> azione) { azioni().insert(nome, std::move(azione)); }

const MascheraRegistrata* TrovaMaschera(const QString& nome)
{
    const auto it = maschere().constFind(nome);
    return it == maschere().constEnd() ? nullptr : &it.value();
}

const std::function<void()>* TrovaAzione(const QString& nome)
{
    const auto it = azioni().constFind(nome);
    return it == azioni().constEnd() ? nullptr : &it.value();
}

bool ApriMascheraModale(const QString& nome, QWidget* genitore)
{
    const MascheraRegistrata* registrata = TrovaMaschera(nome);
    if (!registrata || !registrata->fabbrica)
        return false;
    QPointer<QWidget> maschera = registrata->fabbrica(genitore);
    if (auto* dialogo = qobject_cast<QDialog*>(maschera.data())) {
        dialogo->exec();
        delete maschera.data();  // "unload": il prossimo uso la ricarica
    } else if (maschera) {
        maschera->setAttribute(Qt::WA_DeleteOnClose);
        maschera->setWindowModality(Qt::ApplicationModal);
        maschera->show();
    }
    return true;
}

void AnnullaRegistrazioni()
{
    maschere().clear();
    azioni().clear();
}

void RegistraMaschereDelSistema()
{
    // Le maschere si aggiungono qui man mano che esistono, per esempio:
    //   RegistraMaschera(QStringLiteral("FrmSelezione"), [](QWidget*) { return new FrmSelezione; });
    //   RegistraMaschera(QStringLiteral("FrmHelp"), [](QWidget* g) { return new FrmHelp(g); }, Apertura::Modale);
    RegistraMaschereDistilleria();
    RegistraMaschereConferimentiUtf();
    RegistraStampe();
    RegistraMaschereProduttore();
    RegistraMaschereDomande();
    RegistraMaschereDomandeProduttori();
    RegistraMaschereFatture();
    RegistraMaschereForniture();
    RegistraMaschereCaricoConferimenti();
    RegistraListeDomande();
}
