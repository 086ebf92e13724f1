#include "shell/frmInizializza.h"

#include "common/aiuti_maschera.h"
#include "common/codice_fiscale.h"
#include "common/errore.h"
#include "common/log_errori.h"
#include "common/numeri.h"
#include "common/piattaforma.h"
#include "common/testo.h"
#include "shell/LeggiDistilleria.h"
#include "shell/session_state.h"
#include "store/database.h"

#include <QCoreApplication>
#include <QLineEdit>
#include <QPushButton>

namespace {

// I campi: colonna (Tag), lunghezza massima, etichetta (anche tooltip).
const struct {
    int indice;
    const char* colonna;
    int lunghezza;
    const char* etichetta;
} CampiDistilleria[] = {
    {1, "CODI_FISC", 16, "Partita IVA o Codice fiscale"},
    {2, "RAGI_SOCI", 30, "Ragione sociale"},
    {3, "INDI_DIST", 30, "Indirizzo sede legale"},
};

constexpr int CodiceFiscaleErrato = 4;
constexpr int PartitaIvaErrata = 5;

}  // namespace

frmInizializza::frmInizializza(QWidget* genitore) : SchermataRecord(genitore)
{
    setObjectName(QStringLiteral("frmInizializza"));
    setModal(true);
    for (const auto& c : CampiDistilleria) {
        const QString etichetta = QString::fromLatin1(c.etichetta);
        QLineEdit* campo = AggiungiCampo(c.indice, QString::fromLatin1(c.colonna), etichetta, etichetta, c.lunghezza);
        campo->setObjectName(QStringLiteral("TxtDISTDati_%1").arg(c.indice));
        campo->setMinimumWidth(campo->fontMetrics().horizontalAdvance(QLatin1Char('W')) * 20);
        ImpostaFiltroCampo(c.indice, FiltroCampo::Caratteri);
    }
    AggiungiPulsantiStandard();
    for (auto it = Cmddati.cbegin(); it != Cmddati.cend(); ++it)
        it.value()->setObjectName(QStringLiteral("Cmddati_%1").arg(it.key()));

    CaricaMaschera();
}

void frmInizializza::RiempiCampi()
{
    const DatiDistilleria& d = sessione().DistilleriaDati;
    TxtDati[1]->setText(d.CODI_FISC);
    TxtDati[2]->setText(d.RAGI_SOCI);
    TxtDati[3]->setText(d.INDI_DIST);
}

int frmInizializza::ControllaCampi()
{
    auto& s = sessione();
    for (s.IndiceCiclo = 1; s.IndiceCiclo <= 3; ++s.IndiceCiclo) {
        QString testo = TxtDati[s.IndiceCiclo]->text();
        if (testo.trimmed().isEmpty())
            return s.IndiceCiclo;
        if (s.IndiceCiclo == 1) {
            // Un codice di sole cifre è una partita IVA.
            if (!IsNumeric(testo)) {
                if (!CodFisc(testo))
                    return CodiceFiscaleErrato;
            } else if (!CheckPartitaIva(testo)) {
                return PartitaIvaErrata;
            }
        }
    }
    return 0;
}

void frmInizializza::Cmddati_Click(int Index)
{
    switch (Index) {
    case 2: Help(); break;
    case 1:
        // Senza una distilleria il sistema non lavora.
        if (sessione().DistilleriaAssente)
            TerminaProcesso();
        Scarica();
        break;
    case 0: Salva(); break;
    default: break;
    }
}

void frmInizializza::reject() { Cmddati_Click(1); }

void frmInizializza::Salva()
{
    auto& s = sessione();
    try {
        s.IndiceCampo = static_cast<qint16>(ControllaCampi());
        switch (s.IndiceCampo) {
        case CodiceFiscaleErrato:
        case PartitaIvaErrata:
            MsgBox(s.IndiceCampo == CodiceFiscaleErrato ? QStringLiteral("Codice fiscale non corretto. ")
                                                        : QStringLiteral("P. IVA non corretta. "),
                   StileMsg::Informazione, s.TitoloMaschera);
            TxtDati[1]->setFocus();
            return;
        case 1:
        case 2:
        case 3:
            MsgBox(TxtDati[s.IndiceCampo]->toolTip() + QStringLiteral(" campo obbligatorio. "),
                   StileMsg::Informazione, QStringLiteral("Salvataggio "));
            TxtDati[s.IndiceCampo]->setFocus();
            return;
        default: break;
        }

        // I valori nuovi passano da ApiceSql anche nell'inserimento: un nome
        // con l'apostrofo non deve far fallire il primo salvataggio.
        const QString cf = ApiceSql(TxtDati[1]->text());
        const QString ragione = ApiceSql(TxtDati[2]->text());
        const QString indirizzo = ApiceSql(TxtDati[3]->text());
        if (s.ModoDistilleria == QLatin1String("I")) {
            s.StrSql = QStringLiteral("INSERT INTO DISTILLERIA (CODI_FISC,RAGI_SOCI,INDI_DIST) VALUES ('") + cf +
                       QStringLiteral("','") + ragione + QStringLiteral("','") + indirizzo + QStringLiteral("')");
        } else {
            // Il vecchio codice non passa da ApiceSql: il controllo del campo
            // non lascia entrare un apostrofo in un codice valido.
            s.StrSql = QStringLiteral("UPDATE DISTILLERIA SET CODI_FISC = '") + cf + QStringLiteral("', RAGI_SOCI= '") +
                       ragione + QStringLiteral("',INDI_DIST=  '") + indirizzo +
                       QStringLiteral("' where CODI_FISC = '") + s.DistilleriaDati.CODI_FISC + QStringLiteral("'");
        }
        const int righe = Db().Execute(s.StrSql);
        for (int i = 0; i < 5; ++i)
            QCoreApplication::processEvents();

        if (righe != 0) {
            if (LeggiDistilleria()) {
                MsgBox(QStringLiteral("Operazione correttamente eseguita."), StileMsg::Informazione, s.TitoloMaschera);
                Scarica(QDialog::Accepted);
            } else {
                MsgBox(QStringLiteral("Distilleria non inserita."), StileMsg::Informazione, s.TitoloMaschera);
            }
        } else {
            MsgBox(QStringLiteral("Operazione non eseguita."), StileMsg::Informazione, s.TitoloMaschera);
        }
    } catch (const ErroreSistema& e) {
        ScriviLogErr(QString(), QStringLiteral("frmInizializza CmdDATI_Click"), e.numero(), e.descrizione());
    }
}
