#pragma once
// Una maschera di record di prova, con un campo per ogni filtro e per ogni
// genere di validazione, mostrata e attiva come quella che l'utente ha davanti.

#include "common/SchermataRecord.h"
#include "support/prova.h"

#include <QGridLayout>

namespace campo {
enum : int { Maiuscole, Caratteri, Intero, Importo, Data, Quantita, Libero, Nome, NumDomanda, Progressivo, ImportoLibero };
}

class MascheraProva : public SchermataRecord {
public:
    MascheraProva()
    {
        setObjectName(QStringLiteral("FrmProva"));
        AggiungiCampo(campo::Maiuscole, "DENOMINAZIONE", "Denominazione", "Denominazione", 30);
        AggiungiCampo(campo::Caratteri, "CODICE", "Codice", "Codice", 30);
        ImpostaFiltroCampo(campo::Caratteri, FiltroCampo::Caratteri, 0, false);
        AggiungiCampo(campo::Intero, "NUMERO", "Numero", "Numero", 11);
        ImpostaFiltroCampo(campo::Intero, FiltroCampo::Intero);
        // Dove l'etichetta differisce dal tooltip, i messaggi prendono il tooltip.
        AggiungiCampo(campo::Importo, "IMPO", "Imponibile €", "Imponibile", 15, GenereCampo::Importo);
        ImpostaFiltroCampo(campo::Importo, FiltroCampo::Decimale, 2);
        AggiungiCampo(campo::Data, "DATA_FATT", "Data fattura", "Data fattura", 10, GenereCampo::Data);
        ImpostaFiltroCampo(campo::Data, FiltroCampo::Data);
        AggiungiCampo(campo::Quantita, "QTA_PROD", "Quantità", "Quantità", 15, GenereCampo::Quantita);
        ImpostaFiltroCampo(campo::Quantita, FiltroCampo::Decimale, 4);
        AggiungiCampo(campo::Libero, "NOTE", "Note", "Note", 50);
        ImpostaFiltroCampo(campo::Libero, FiltroCampo::Nessuno, 0, false);
        AggiungiCampo(campo::Nome, "NOME", "Nome", "Nome", 30);
        ImpostaFiltroCampo(campo::Nome, FiltroCampo::Caratteri);
        AggiungiCampo(campo::NumDomanda, "DOMANDA", "Num. Domanda", "Domanda", 11, GenereCampo::NumeroDomanda);
        AggiungiCampo(campo::Progressivo, "PROGRESSIVO", "Progressivo", "Progressivo domanda", 2,
                      GenereCampo::Progressivo);
        AggiungiCampo(campo::ImportoLibero, "IVA", "Iva", "Iva", 15, GenereCampo::Importo);
        AggiungiPulsantiStandard();
    }

    QList<int> clic;
    std::function<bool(int)> validazione;  // una validazione propria, al posto di quella di base
    std::function<void(int)> azione;       // fatta a ogni clic su Cmddati, dopo quella di base
    std::function<void()> riempi;          // RiempiCampi
    int indiceHelp = 2;
    int riempite = 0;

    // Posa un controllo in più sotto i campi (la maschera lo registra a parte).
    void Posa(QWidget* controllo) { areaCampi()->addWidget(controllo, areaCampi()->rowCount(), 1); }

protected:
    bool TxtDati_Validate(int indice) override
    {
        return validazione ? validazione(indice) : SchermataRecord::TxtDati_Validate(indice);
    }
    void Cmddati_Click(int indice) override
    {
        clic << indice;
        SchermataRecord::Cmddati_Click(indice);
        if (azione)
            azione(indice);
    }
    int IndiceHelp() const override { return indiceHelp; }
    void RiempiCampi() override
    {
        ++riempite;
        if (riempi)
            riempi();
    }
};

// Fixture: maschera mostrata e attiva, piattaforma a copione nuova, aiuto
// intercettato.
class ProvaMaschera : public ::testing::Test {
protected:
    void SetUp() override
    {
        script = &InstallaPiattaformaScript();
        maschera = std::make_unique<MascheraProva>();
        ASSERT_TRUE(MostraAttiva(maschera.get()));
    }

    QLineEdit* Campo(int indice) { return maschera->TxtDati.value(indice); }

    // Porta il fuoco nel campo con testo e cursore dati, senza selezione.
    QLineEdit* Prepara(int indice, const QString& testo, int cursore = -1)
    {
        QLineEdit* c = Campo(indice);
        c->setFocus(Qt::OtherFocusReason);
        c->setText(testo);
        c->deselect();
        c->setCursorPosition(cursore < 0 ? static_cast<int>(testo.size()) : cursore);
        script->beep = 0;
        return c;
    }

    PiattaformaScript* script = nullptr;
    AiutiChiesti aiuti;
    std::unique_ptr<MascheraProva> maschera;
};
