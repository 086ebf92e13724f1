#include "shell/registra_distilleria.h"

#include "common/aiuti_maschera.h"
#include "common/aiuto.h"
#include "shell/FrmHelp.h"
#include "shell/FrmMenu.h"
#include "shell/LeggiDistilleria.h"
#include "shell/frmAbout.h"
#include "shell/frmInizializza.h"
#include "shell/frmRegistroErrori.h"
#include "shell/registro_maschere.h"

#include <QTimer>

void RegistraMaschereDistilleria()
{
    RegistraMaschera(
        QString::fromLatin1(NomiMaschere::Inizializza), [](QWidget* g) { return new frmInizializza(g); },
        Apertura::Modale);
    RegistraMaschera(
        QString::fromLatin1(NomiMaschere::About), [](QWidget* g) { return new frmAbout(g); }, Apertura::Modale);
    // Dal menu: nome vuoto, tutti i testi.
    RegistraMaschera(
        QString::fromLatin1(NomiMaschere::Help), [](QWidget* g) { return new FrmHelp(g); }, Apertura::Modale);
    RegistraMaschera(QString::fromLatin1(NomiMaschere::RegistroErrori),
                     [](QWidget*) { return new frmRegistroErrori; });

    // Il tasto F1 e il pulsante Help delle maschere aprono questa finestra.
    ImpostaMostraHelp(MostraFrmHelp);

    RegistraAzione(NomiAzioni::VerificaDistilleria, [] {
        if (LeggiDistilleria())
            return;
        // Senza distilleria frmInizializza compare sopra il menu appena
        // questo è a video; uscirne senza salvare termina il programma.
        QTimer::singleShot(0, FrmMenu::Istanza(), [] {
            if (FrmMenu* menu = FrmMenu::Istanza())
                menu->MostraMaschera(QString::fromLatin1(NomiMaschere::Inizializza));
        });
    });
}
