#pragma once
// Elenco delle domande del ramo fatture: una sola maschera per i cinque
// lavori del menu (0 domande, 1 fatture, 3 cambio numero, 4 scarico,
// 5 stampe), distinti da OperazioneCorrente. Griglia, ricerca e consegna della
// riga sono quelle di ListaSelezione; qui stanno le cornici dei pulsanti, il
// filtro con il secondo campo di ricerca e ciò che apre una riga scelta.

#include "common/ListaSelezione.h"

class FrmSelezione : public ListaSelezione {
    Q_OBJECT

public:
    explicit FrmSelezione(QWidget* genitore = nullptr);

    // Condizioni " AND ..." da aggiungere alla lista, con l'ordinamento.
    IstruzioneSql ImpostaFiltro() override;
    // Riga corrente in DomandaSel (e in FatturaSel sotto il codice 1), per nome di colonna.
    void SEL_RECORD(int operazione);
    // Mostra la maschera seguente del lavoro e ricostruisce la lista.
    void ChiamaFORM(int operazione);
    // Vero quando le bolle di ogni fattura della domanda corrente sommano
    // quanto la quantità lavorata della fattura (in singola precisione).
    bool VerificaCongruenzaQuantitaProdotto();

protected:
    bool ApriPerCodice(int codice) override;
    Combo ComboPerCodice(int codice) const override;
    QString TestoAggiunto() const override;
    void Aggiorna(const IstruzioneSql& condizione, const QString& testoAggiunto) override;
    void Colonne() override;
    void Esegui(int indice) override;
    void F1() override;

private:
    void Prosegui();
    void Modifica();
    void Cancella();
    void Bolle();
};
