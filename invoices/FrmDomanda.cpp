#include "invoices/FrmDomanda.h"

#include "common/RegoleDomanda.h"
#include "common/aiuti_maschera.h"
#include "common/errore.h"
#include "shell/session_state.h"
#include "store/database.h"

#include <QComboBox>
#include <QLineEdit>

FrmDomanda::FrmDomanda(QWidget* genitore) : SchermataDomanda(genitore)
{
    setObjectName(QStringLiteral("FrmDomanda"));
    AggiungiCampagna();
    AggiungiNumero(QStringLiteral("DOMANDA"), QStringLiteral("Num. Domanda"), QStringLiteral("Domanda"));
    AggiungiCampo(2, QStringLiteral("PROGRESSIVO"), QStringLiteral("Progressivo"), QStringLiteral("Progressivo domanda"),
                  2, GenereCampo::Progressivo);
    ImpostaFiltroCampo(2, FiltroCampo::Intero);
    AggiungiArticolo(QStringLiteral("Articolo"));
    QComboBox* prodotto = AggiungiCombo(cboDomanda, 4, QStringLiteral("Id_varieta"), QStringLiteral("Prodotto ottenuto"),
                                        QStringLiteral("Prodotto ottenuto"));
    prodotto->setMinimumContentsLength(28);
    AggiungiPulsantiStandard();

    const QString obbligatorio = QStringLiteral(" campo obbligatorio. ");
    // Il campo di testo ha la sua forma, senza l'ultimo spazio e con il titolo breve.
    AggiungiRifiuto({1, TxtDati[1], QStringLiteral(" campo obbligatorio."), {}, true});
    AggiungiRifiuto({2, TxtDati[2], QStringLiteral(" campo obbligatorio."), {}, true});
    AggiungiRifiuto({3, cboDomanda[3], obbligatorio, {}, false});
    AggiungiRifiuto({4, cboDomanda[4], obbligatorio, {}, false});
    AggiungiRifiuto({5, TxtDati[1], QStringLiteral(" già esistente."), {}, false});
    AggiungiRifiuto({6, cboDomanda[0], obbligatorio, {}, false});

    Form_Load();
}

void FrmDomanda::CaricaAltreCombo()
{
    CaricaCmb(cboDomanda[4], QStringLiteral("VARIETA"), QStringLiteral("CODI_PROD || ' ' || DESC_PROD"), QString(),
              false, QStringLiteral(" ORDER BY CODI_PROD"), false, true);
}

// La voce vuota, ultima: la campagna va scelta.
int FrmDomanda::CampagnaIniziale() const { return cboDomanda[0]->count() - 1; }

void FrmDomanda::RiempiCampi() { MetodiDOMANDA(3, QString()); }

int FrmDomanda::ControllaCampi()
{
    return ControllaDomanda({cboDomanda[0]->currentText(), TxtDati[1]->text(), TxtDati[2]->text(),
                             cboDomanda[3]->currentText(), cboDomanda[4]->currentText()},
                            Inserimento());
}

bool FrmDomanda::Scrivi()
{
    if (Inserimento())
        return MetodiDOMANDA(0, QString());
    return MetodiDOMANDA(1, QStringLiteral("where  iD_DOMANDa = ") + QString::number(sessione().DomandaSel.ID_DOMANDA));
}

bool FrmDomanda::MetodiDOMANDA(int modo, const QString& clausola)
{
    if (modo == 3) {
        const DomandaSelezionata& d = sessione().DomandaSel;
        TxtDati[1]->setText(d.DOMANDA.trimmed());
        TxtDati[2]->setText(d.PROGRESSIVO.trimmed());
        ImpostaTesto(cboDomanda[4], d.PRODOTTO.trimmed());
        ImpostaArticolo(d.TIPO_ARTICOLO.trimmed());
        // La campagna per ultima: la sua scelta rifà la lista degli articoli.
        if (!d.CAMPAGNA.trimmed().isEmpty())
            ImpostaTesto(cboDomanda[0], d.CAMPAGNA.trimmed());
        return true;
    }
    return ScriviDomanda(TabellaDomande::Fatture, QStringLiteral("ID_DOMANDA"), modo, clausola, [this] {
        // Il prodotto si cerca per codice: le prime tre lettere della voce.
        Recordset varieta = Db().OpenRecordset(QStringLiteral(" SELECT ID_VARIETA FROM VARIETA WHERE CODI_PROD = ?"),
                                               {cboDomanda[4]->currentText().left(3)});
        if (varieta.eof())
            throw ErroreSistema(CodiciErrore::NessunRecordCorrente);
        return Campi{
            {QStringLiteral("DOMANDA"), TxtDati[1]->text().trimmed()},
            {QStringLiteral("PROGRESSIVO"), TxtDati[2]->text().trimmed()},
            {QStringLiteral("ID_VARIETA"), varieta.Fields(0).testo()},
            {QStringLiteral("TIPO_ARTICOLO"), cboDomanda[3]->currentText().left(2)},
            {QStringLiteral("STAM"), QStringLiteral("N")},
            {QStringLiteral("SCAR"), QStringLiteral("N")},
            {QStringLiteral("PROG_VERS"), QStringLiteral("1")},
            {QStringLiteral("DATA_CAMP"), cboDomanda[0]->currentText().trimmed()},
        };
    });
}
