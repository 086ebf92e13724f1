#include "common/SchermataCambioNumero.h"

#include "common/aiuti_maschera.h"
#include "common/piattaforma.h"
#include "shell/session_state.h"

#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>

SchermataCambioNumero::SchermataCambioNumero(GenereCambio genere, QWidget* genitore)
    : SchermataRecord(genitore), m_variante(Variante(genere))
{
    const VarianteCambio& v = m_variante;
    setObjectName(v.nomeMaschera);
    setModal(true);

    m_cornice = new QGroupBox(v.cornice, this);
    auto* griglia = new QFormLayout(m_cornice);
    areaCampi()->addWidget(m_cornice, 0, 0);
    RegistraControllo(m_cornice);
    const struct {
        int indice;
        QString etichetta, tooltip;
        int lunghezza;
    } campi[] = {{1, v.etichettaVecchio, v.tooltipVecchio, v.lunghezzaVecchio},
                 {2, v.etichettaNuovo, v.tooltipNuovo, v.lunghezzaNuovo}};
    for (const auto& c : campi) {
        auto* campo = new QLineEdit(m_cornice);
        campo->setMinimumWidth(campo->fontMetrics().horizontalAdvance(QLatin1Char('0')) * 16);
        RegistraCampo(c.indice, campo, c.indice == 1 ? QStringLiteral("DOMANDA") : QStringLiteral("DOMANDA_NUOVA"),
                      c.etichetta, c.tooltip, c.lunghezza);
        griglia->addRow(Lbldati[c.indice], campo);
        if (v.numeroDomanda)
            ImpostaFiltroCampo(c.indice, FiltroCampo::Intero);
        else
            ImpostaFiltroCampo(c.indice, FiltroCampo::Caratteri);
    }
    // Solo il numero nuovo si riscrive uscendo dal campo; il vecchio è bloccato.
    if (v.numeroDomanda)
        ImpostaGenere(2, GenereCampo::NumeroDomanda);
    AggiungiPulsantiStandard();

    TxtDati[1]->setReadOnly(true);
    TxtDati[1]->setText(NumeroAttuale(genere));
    // Si comincia dal numero nuovo: il vecchio è solo da leggere.
    TxtDati[2]->setFocus();
    CaricaMaschera();
}

void SchermataCambioNumero::Cmddati_Click(int indice)
{
    switch (indice) {
    case 0: Salva(); break;
    // frmCambioDomanda: il pulsante imposta solo l'argomento dell'aiuto, non lo mostra (F1 sì).
    case 2:
        if (!m_variante.pulsanteHelpMuto)
            Help();
        break;
    default: SchermataRecord::Cmddati_Click(indice); break;
    }
}

void SchermataCambioNumero::Salva()
{
    // Rifiuto o guasto (che la base porta al registro): si resta sul numero nuovo.
    TxtDati[2]->setFocus();
    const EsitoCambio esito = CambiaNumero(m_variante.genere, TxtDati[1]->text(), TxtDati[2]->text());
    MsgBox(TestoEsito(m_variante, esito), StileMsg::Informazione, sessione().TitoloMaschera);
    if (esito == EsitoCambio::Eseguito)
        Scarica(QDialog::Accepted);
}
