#include "common/SchermataDomanda.h"

#include "common/aiuti_maschera.h"
#include "common/aiuto.h"
#include "common/piattaforma.h"
#include "shell/session_state.h"

#include <QComboBox>
#include <QLineEdit>
#include <QSignalBlocker>

SchermataDomanda::SchermataDomanda(QWidget* genitore) : SchermataRecord(genitore)
{
    setModal(true);
}

QString SchermataDomanda::EtichettaErrore(const QString&) const { return EtichettaMetodiDomanda; }

bool SchermataDomanda::Inserimento() const
{
    return sessione().ModoMaschera.trimmed().toUpper() != QLatin1String("M");
}

void SchermataDomanda::AggiungiCampagna()
{
    QComboBox* c = AggiungiCombo(cboDomanda, 0, QString(), QStringLiteral("Campagna"), QStringLiteral("Campagna"));
    c->setMinimumContentsLength(6);
    // Ogni cambio di campagna, battuto o impostato, rifà la lista degli articoli.
    connect(c, &QComboBox::currentIndexChanged, this, [this] { RegolaArticoli(); });
}

void SchermataDomanda::AggiungiNumero(const QString& tag, const QString& etichetta, const QString& tooltip)
{
    AggiungiCampo(1, tag, etichetta, tooltip, 11, GenereCampo::NumeroDomanda);
    ImpostaFiltroCampo(1, FiltroCampo::Intero);
}

void SchermataDomanda::AggiungiArticolo(const QString& etichetta)
{
    QComboBox* c = AggiungiCombo(cboDomanda, 3, QStringLiteral("TIPO_ARTICOLO"), etichetta, QStringLiteral("Tipo Articolo"));
    c->setMinimumContentsLength(6);
    AggiungiRifiuto({10, c, {}, QStringLiteral("La domanda appartiene a un altro articolo."), false});
    AggiungiRifiuto({11, c, {},
                     QStringLiteral(" Non è possibile effettuare una domanda del 2004 o del 2005 con l'articolo '30'. "),
                     false});
}

void SchermataDomanda::ImpostaTesto(QComboBox* combo, const QString& testo)
{
    combo->setCurrentIndex(combo->findText(testo));
}

void SchermataDomanda::ImpostaArticolo(const QString& testo)
{
    ImpostaTesto(Articolo(), testo);
    m_articoloDaParte = Articolo()->currentIndex() < 0 ? testo : QString();
}

void SchermataDomanda::RegolaArticoli()
{
    QComboBox* articolo = Articolo();
    if (!articolo)
        return;
    const QString campagna = Campagna()->currentText();
    const QString ricordato = articolo->currentIndex() < 0 ? m_articoloDaParte : articolo->currentText();
    m_articoloDaParte.clear();
    articolo->clear();
    articolo->addItems(ArticoliDellaCampagna(campagna));
    if (CampagnaSoloArt29(campagna))
        ImpostaTesto(articolo, QStringLiteral("29"));
    else
        // Una combo appena riempita non ha voce scelta, salvo l'articolo di prima.
        ImpostaTesto(articolo, ricordato.trimmed().isEmpty() ? QString() : ricordato);
}

void SchermataDomanda::Form_Load()
{
    PulisciCampi(this, QStringLiteral("*TIPO_ARTICOLO*"));
    {
        // Riempire le combo non è un clic dell'utente.
        const QSignalBlocker blocco(Campagna());
        CaricaCmb(Articolo(), QStringLiteral("TIPO_ARTICOLO_DOMANDA"), QStringLiteral("TIPO_ARTICOLO"), QString(), false,
                  QStringLiteral(" ORDER BY TIPO_ARTICOLO"), false, true);
        CaricaAltreCombo();
        CaricaCmb(Campagna(), QStringLiteral("CAMPAGNA"), QStringLiteral("ANNUALITA"), QString(), false,
                  QStringLiteral(" ORDER BY ANNUALITA"), false, true);
    }
    if (Campagna()->count() > 0)
        Campagna()->setCurrentIndex(CampagnaIniziale());
    TxtDati[1]->setReadOnly(!Inserimento());
    CaricaMaschera();
}

void SchermataDomanda::Cmddati_Click(int indice)
{
    switch (indice) {
    case 0: Salva(); break;
    case 2: MostraHelp(Inserimento() ? QStringLiteral("FRMDOMANDA_INS") : QStringLiteral("FRMDOMANDA_MOD")); break;
    default: SchermataRecord::Cmddati_Click(indice); break;
    }
}

void SchermataDomanda::Salva()
{
    auto& s = sessione();
    // Un guasto nei controlli esce di qui verso il percorso d'errore della
    // base; uno nella scrittura è già nel registro. La maschera resta aperta.
    Clessidra(false);  // il puntatore torna normale in ogni caso
    PrimaDiControllare();
    s.IndiceCampo = static_cast<qint16>(ControllaCampi());
    if (s.IndiceCampo != 0)
        MostraRifiuto(s.IndiceCampo);
    else if (Scrivi())
        Scarica(QDialog::Accepted);
}

void SchermataDomanda::MostraRifiuto(int codice)
{
    for (const Rifiuto& r : std::as_const(m_rifiuti)) {
        if (r.codice != codice)
            continue;
        if (!(r.mutoInModifica && !Inserimento())) {
            const QString testo = r.testoFisso.isEmpty() ? r.controllo->toolTip() + r.coda : r.testoFisso;
            const QString titolo = QStringLiteral("Salvataggio ") + (r.titoloBreve ? QString() : sessione().TitoloMaschera);
            MsgBox(testo, StileMsg::Informazione, titolo);
        }
        r.controllo->setFocus();
        return;
    }
}
