#include "shell/frmInizializza.h"

#include "common/codice_fiscale.h"
#include "common/errore.h"
#include "common/log_errori.h"
#include "common/numeri.h"
#include "common/piattaforma.h"
#include "common/testo.h"
#include "shell/LeggiDistilleria.h"
#include "shell/ponte_provvisorio.h"
#include "shell/session_state.h"
#include "store/database.h"

#include <QCoreApplication>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

// I campi: colonna (Tag), lunghezza massima, etichetta (tooltip).
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

frmInizializza::frmInizializza(QWidget* genitore) : QDialog(genitore)
{
    setObjectName(QStringLiteral("frmInizializza"));
    setModal(true);

    auto* modulo = new QFormLayout;
    for (const auto& c : CampiDistilleria) {
        auto* campo = new QLineEdit(this);
        campo->setObjectName(QStringLiteral("TxtDISTDati_%1").arg(c.indice));
        campo->setProperty("Tag", QString::fromLatin1(c.colonna));
        campo->setToolTip(QString::fromLatin1(c.etichetta));
        campo->setMaxLength(c.lunghezza);
        campo->setMinimumWidth(campo->fontMetrics().horizontalAdvance(QLatin1Char('W')) * 20);
        m_campi.insert(c.indice, campo);
        auto* etichetta = new QLabel(QString::fromLatin1(c.etichetta), this);
        etichetta->setObjectName(QStringLiteral("Lbldati_%1").arg(c.indice));
        etichetta->setBuddy(campo);
        modulo->addRow(etichetta, campo);
    }

    const char* didascalie[] = {"Salva", "Esci", "Help"};
    auto* pulsanti = new QHBoxLayout;
    pulsanti->addStretch();
    for (int i = 0; i < 3; ++i) {
        auto* p = new QPushButton(QString::fromLatin1(didascalie[i]), this);
        p->setObjectName(QStringLiteral("Cmddati_%1").arg(i));
        p->setAutoDefault(false);
        connect(p, &QPushButton::clicked, this, [this, i] { Cmddati_Click(i); });
        m_pulsanti.insert(i, p);
        pulsanti->addWidget(p);
    }

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(modulo);
    layout->addSpacing(6);
    layout->addLayout(pulsanti);

    Form_Load();
}

void frmInizializza::Form_Load()
{
    try {
        adjustSize();
        PosizionaForm(this, true, nullptr);
        setWindowTitle(sessione().TitoloMaschera);
        const DatiDistilleria& d = sessione().DistilleriaDati;
        m_campi[1]->setText(d.CODI_FISC);
        m_campi[2]->setText(d.RAGI_SOCI);
        m_campi[3]->setText(d.INDI_DIST);
    } catch (const ErroreSistema& e) {
        ScriviLogErr(QString(), QStringLiteral("frmInizializza Form_Load"), e.numero(), e.descrizione());
    }
}

int frmInizializza::ControllaCampi()
{
    auto& s = sessione();
    for (s.IndiceCiclo = 1; s.IndiceCiclo <= 3; ++s.IndiceCiclo) {
        QString testo = m_campi[s.IndiceCiclo]->text();
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
    case 2: MostraHelp(QStringLiteral("frmInizializza")); break;
    case 1:
        // Senza una distilleria il sistema non lavora.
        if (sessione().DistilleriaAssente)
            TerminaProcesso();
        done(QDialog::Rejected);
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
            m_campi[1]->setFocus();
            return;
        case 1:
        case 2:
        case 3:
            MsgBox(m_campi[s.IndiceCampo]->toolTip() + QStringLiteral(" campo obbligatorio. "),
                   StileMsg::Informazione, QStringLiteral("Salvataggio "));
            m_campi[s.IndiceCampo]->setFocus();
            return;
        default: break;
        }

        const QString cf = ApiceSql(m_campi[1]->text());
        const QString ragione = ApiceSql(m_campi[2]->text());
        const QString indirizzo = ApiceSql(m_campi[3]->text());
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
                done(QDialog::Accepted);
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
