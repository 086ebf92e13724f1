#pragma once
// Elenco delle domande del distillatore: la gemella di FrmSelezione per il
// ramo conferimenti (7 domande, 11 certificati, 12 e 13 cambio di numero,
// 16 scarico, 18 e 19 stampe). Le differenze dalla gemella: un solo campo di
// ricerca, il " where " costruito qui, il numero tenuto con le due caselle,
// il clic su una casella che ricarica subito senza campagna, almeno una riga
// per proseguire (vale la corrente), le stampe fuori da qui, la
// cancellazione con la routine della domanda dopo il controllo dei certificati.

#include "common/ListaSelezione.h"

class FrmProduttori_Selezione : public ListaSelezione {
    Q_OBJECT

public:
    explicit FrmProduttori_Selezione(QWidget* genitore = nullptr);

    IstruzioneSql ImpostaFiltro() override;
    QString ImpostaOrderBy() const;
    // Riga corrente nei record di sessione; segue il cursore della griglia.
    void SEL_RECORD(int operazione);
    void ChiamaFORM(int operazione);

protected:
    bool ApriPerCodice(int codice) override;
    Combo ComboPerCodice(int codice) const override;
    QString TestoAggiunto() const override { return ImpostaOrderBy(); }
    void Aggiorna(const IstruzioneSql& condizione, const QString& testoAggiunto) override;
    void Colonne() override;
    void Esegui(int indice) override;
    void F1() override;
    void Check1_Click(int indice) override;
    void RigaCambiata() override;

private:
    void Cancella();
    void Seleziona();
    void Stampa();
    void Scarico();
};
