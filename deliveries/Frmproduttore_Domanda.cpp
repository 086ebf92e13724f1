#include "deliveries/Frmproduttore_Domanda.h"

#include "common/RegoleDomanda.h"
#include "common/filtri_tastiera.h"
#include "deliveries/MetodiDomandaProduttori.h"
#include "shell/session_state.h"

#include <QComboBox>
#include <QLineEdit>

Frmproduttore_Domanda::Frmproduttore_Domanda(QWidget* genitore) : SchermataDomanda(genitore)
{
    setObjectName(QStringLiteral("Frmproduttore_Domanda"));
    AggiungiCampagna();
    AggiungiNumero(QStringLiteral("DOMANDA_PRODUTTORE"), QStringLiteral("Domanda Produttore"),
                   QStringLiteral("Domanda Produttore"));
    AggiungiCampo(2, QStringLiteral("ANTICIPO_RICEVUTO"), QStringLiteral("Importo dell'aiuto in fase di anticipo"),
                  QStringLiteral("Importo ricevuto"), 15, GenereCampo::Importo);
    AggiungiArticolo(QStringLiteral("Tipo Articolo"));
    AggiungiPulsantiStandard();

    const QString obbligatorio = QStringLiteral(" campo obbligatorio. ");
    AggiungiRifiuto({1, TxtDati[1], QStringLiteral(" campo obbligatorio."), {}, true});
    // Nessuna regola dà il 2: l'anticipo non si controlla.
    AggiungiRifiuto({2, TxtDati[2], QStringLiteral(" campo obbligatorio."), {}, true});
    AggiungiRifiuto({3, cboDomanda[3], obbligatorio, {}, false, true});
    AggiungiRifiuto({4, cboDomanda[0], obbligatorio, {}, false});
    AggiungiRifiuto({5, TxtDati[1], QStringLiteral(" già esistente."), {}, false});

    Form_Load();
}

// Ogni tasto passa da Keypress_Integer; l'anticipo poi da Keypress_Decimale2.
void Frmproduttore_Domanda::TxtDati_KeyPress(int indice, int& KeyAscii)
{
    Keypress_Integer(KeyAscii);
    if (KeyAscii != 0 && indice == 2)
        Keypress_Decimale2(TxtDati.value(2), KeyAscii);
}

// L'anno più recente: l'ultimo prima della voce vuota.
int Frmproduttore_Domanda::CampagnaIniziale() const
{
    const QComboBox* c = cboDomanda[0];
    int i = c->count() - 1;
    if (i > 0 && c->itemText(i).isEmpty())
        --i;
    return i;
}

void Frmproduttore_Domanda::RiempiCampi() { DomandaProduttore_CaricaScarica_type(3); }

void Frmproduttore_Domanda::DomandaProduttore_CaricaScarica_type(int verso)
{
    DomandaProduttoreSelezionata& d = sessione().DomandaProduttoreSel;
    if (verso == 4) {
        d.DOMANDA = TxtDati[1]->text();
        d.ANTICIPO_RICEVUTO = TxtDati[2]->text();
        d.TIPO_ARTICOLO = cboDomanda[3]->currentText();
        d.CAMPAGNA = cboDomanda[0]->currentText();
    } else if (verso == 3) {
        TxtDati[1]->setText(d.DOMANDA.trimmed());
        TxtDati[2]->setText(d.ANTICIPO_RICEVUTO.trimmed());
        // Prima la campagna, che rifà la lista degli articoli, poi l'articolo:
        // un articolo che la campagna non ammette resta senza scelta e il
        // salvataggio lo ferma, qualunque sia la campagna più recente.
        if (!d.CAMPAGNA.trimmed().isEmpty())
            ImpostaTesto(cboDomanda[0], d.CAMPAGNA.trimmed());
        ImpostaArticolo(d.TIPO_ARTICOLO.trimmed());
    }
}

// Prima dei controlli l'anticipo e il numero si riscrivono come all'uscita dal campo.
void Frmproduttore_Domanda::PrimaDiControllare()
{
    ValidaGenere(2);
    ValidaGenere(1);
}

int Frmproduttore_Domanda::ControllaCampi()
{
    return ControllaDomandaProduttore({cboDomanda[0]->currentText(), TxtDati[1]->text(), cboDomanda[3]->currentText()},
                                      Inserimento());
}

bool Frmproduttore_Domanda::Scrivi()
{
    DomandaProduttore_CaricaScarica_type(4);
    if (Inserimento())
        return MetodiDOMANDA_produttori(0, QString());
    return MetodiDOMANDA_produttori(1, QStringLiteral("where  iD_DOMANDa_produttore = ") +
                                           QString::number(sessione().DomandaProduttoreSel.ID_DOMANDA_PRODUTTORE));
}
