#include "archive/floppy.h"

#include "common/errore.h"
#include "common/piattaforma.h"
#include "common/supporto_floppy.h"
#include "shell/session_state.h"


namespace {

const QString TitoloControllo = QStringLiteral("Controllo floppy ");
const QString TestoProtezione = QStringLiteral("Togliere la protezione in scrittura dal dischetto");
const QString TestoInserire = QStringLiteral("Inserire il dischetto nel drive.");

}  // namespace

void ControlloFloppyVuoto()
{
    auto& s = sessione();
    s.OperazioneAnnullata = false;
    s.ControlloFloppyRipeti = false;
    bool chiediDisco = false;
    try {
        const QStringList contenuto = FileDelFloppy();
        if (!contenuto.isEmpty()) {
            const int r = MsgBox(QStringLiteral("Il dischetto deve essere vuoto. Vuoi cancellare il contenuto nel disco?"),
                                 StileMsg::SiNoAnnulla + StileMsg::Domanda, TitoloControllo);
            if (r == RispostaMsg::Si)
                SvuotaFloppy(contenuto);
            else if (r == RispostaMsg::No)
                chiediDisco = true;
            else {
                s.OperazioneAnnullata = true;
                return;
            }
        }
    } catch (const ErroreSistema& e) {
        if (e.numero() == CodiciErrore::AccessoPercorso) {
            MsgBox(TestoProtezione, StileMsg::Critico, TitoloControllo);
            s.ControlloFloppyRipeti = true;
            return;
        }
        chiediDisco = true;
    }
    if (!chiediDisco)
        return;
    // "No" alla prima domanda o nessun disco: si chiede un altro disco,
    // e un secondo "No" offre di rinunciare.
    if (MsgBox(TestoInserire, StileMsg::SiNo + StileMsg::Critico) == RispostaMsg::Si) {
        s.ControlloFloppyRipeti = true;
        return;
    }
    if (MsgBox(QStringLiteral("ATTENZIONE ,vuoi terminare il rilascio."), StileMsg::SiNo + StileMsg::Informazione) ==
        RispostaMsg::Si) {
        s.OperazioneAnnullata = true;
        return;
    }
    s.ControlloFloppyRipeti = true;
}

namespace {

// Il ramo d'errore comune di ControlloFloppyFile e ControlloFloppyInserito.
bool ErroreDisco(const ErroreSistema& e)
{
    auto& s = sessione();
    if (e.numero() == CodiciErrore::AccessoPercorso) {
        MsgBox(TestoProtezione, StileMsg::Critico, QString());
        s.ControlloFloppyRipeti = true;
        return false;
    }
    if (MsgBox(TestoInserire, StileMsg::OKAnnulla + StileMsg::Informazione, QString()) == RispostaMsg::Annulla) {
        s.OperazioneAnnullata = true;
        Clessidra(false);
        return false;
    }
    s.ControlloFloppyRipeti = true;
    return false;
}

}  // namespace

bool ControlloFloppyFile()
{
    auto& s = sessione();
    s.OperazioneAnnullata = false;
    s.ControlloFloppyRipeti = false;
    try {
        const QStringList contenuto = FileDelFloppy();
        if (contenuto.isEmpty())
            return true;
        MsgBox(QStringLiteral("Il dischetto non deve contenere files."), StileMsg::Informazione, QString());
        if (MsgBox(QStringLiteral("Vuoi cancellare i files contenuti nel disco?"), StileMsg::SiNo + StileMsg::Domanda,
                   QString()) != RispostaMsg::Si) {
            s.OperazioneAnnullata = true;
            Clessidra(false);
            return false;
        }
        SvuotaFloppy(contenuto);
        return true;
    } catch (const ErroreSistema& e) {
        return ErroreDisco(e);
    }
}

bool ControlloFloppyInserito()
{
    auto& s = sessione();
    s.OperazioneAnnullata = false;
    s.ControlloFloppyRipeti = false;
    try {
        FileDelFloppy();
        return true;
    } catch (const ErroreSistema& e) {
        return ErroreDisco(e);
    }
}
