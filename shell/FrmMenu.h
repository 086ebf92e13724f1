#pragma once
// Finestra principale: la finestra MDI con la barra dei menu. Ogni voce
// imposta l'operazione e il titolo della sessione e apre la sua maschera;
// il menu non ha altra logica.

#include <QHash>
#include <QMainWindow>
#include <QPointer>

class QMdiArea;
class QMenu;

class FrmMenu : public QMainWindow {
    Q_OBJECT
public:
    // L'istanza unica, nullptr finché non è stata caricata.
    static FrmMenu* Istanza();
    // Crea l'istanza al primo uso ed esegue il passo di caricamento, che
    // apre la connessione della sessione.
    static FrmMenu& Carica();
    // Distrugge l'istanza (per i test: nel programma la finestra vive fino alla fine).
    static void Scarica();

    ~FrmMenu() override;

    QMdiArea* AreaMdi() const { return m_area; }
    // Mostra la maschera registrata con quel nome: una figlia già aperta
    // viene portata davanti, non ricreata. Un nome non registrato non fa nulla.
    void MostraMaschera(const QString& nome);
    // La figlia MDI aperta con quel nome, o nullptr.
    QWidget* MascheraAperta(const QString& nome) const;

    // Gestori dei menu, per indice come nei vettori di controlli.
    void mnuDist_Click(int Index);
    void mnuDistprod_Click(int Index);
    void mnuDistCambio_Click(int Index);
    void mnuDistprodstampa_Click(int Index);
    void mnuGestDist_Click(int Index);
    void mnuSistema_Click(int Index);
    void mnuAr_Click(int Index);
    void mnVer_Click();
    void mnuhelp_Click();

protected:
    void closeEvent(QCloseEvent* evento) override;

private:
    FrmMenu();
    void Form_Load();
    void CostruisciMenu();
    // Imposta codice e titolo della sessione, poi apre la maschera.
    void Operazione(int codice, const QString& titolo, const QString& maschera);
    void EseguiAzione(const QString& nome);
    // Smista il clic di una voce al gestore del suo vettore.
    void Clic(const QString& controllo, int indice);

    QAction* Voce(QMenu* menu, const QString& testo, const QString& controllo, int indice, bool disponibile = true);
    void Separatore(QMenu* menu, const QString& controllo, int indice);
    QMenu* Sottomenu(QMenu* menu, const QString& testo, const QString& controllo, int indice);

    QMdiArea* m_area = nullptr;
    QHash<QString, QPointer<QWidget>> m_figli;
    bool m_chiudiDopoCarico = false;  // uscita chiesta durante un carico
};
