#pragma once
// Base delle due maschere elenco delle domande (FrmSelezione per le fatture,
// FrmProduttori_Selezione per i conferimenti). Tiene una volta sola ciò che
// le gemelle hanno in comune:
//   - la barra di ricerca (numero domanda, combo della campagna, "Cerca ..."),
//     le due caselle "Stampate"/"Scaricate", la griglia e le cornici dei
//     pulsanti, di cui si vede solo quella del lavoro in corso;
//   - l'apertura: didascalia "Elenco " + TitoloMaschera, caselle abilitate,
//     cornici nascoste, lista caricata, combo riempita; dove la combo parte
//     sulla campagna corrente vale come una scelta e la lista si filtra subito;
//   - la scelta della campagna, la ricerca, il ricaricamento dopo la maschera
//     seguente, il conteggio delle righe selezionate e la riga corrente letta
//     per nome di colonna, il colore di evidenziazione al clic, l'ordinamento
//     al clic su un'intestazione, F1 e la CampagnaSelezionata svuotata
//     all'uscita;
//   - la trappola degli errori dei pulsanti: ScriviLogErr con l'etichetta
//     " FrmSeleziona CmdDATI_Click" e la maschera resta aperta.
// Il lavoro è sempre l'OperazioneCorrente del momento: se il menu lo cambia
// mentre la maschera è aperta, i pulsanti seguono il nuovo codice.

#include "common/liste.h"

#include <QMap>
#include <QString>
#include <QWidget>
#include <functional>

class QCheckBox;
class QComboBox;
class QGroupBox;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableView;

class ListaSelezione : public QWidget {
    Q_OBJECT

public:
    ~ListaSelezione() override;

    QMap<int, QLineEdit*> TxtSEL_NumDom;
    QMap<int, QLabel*> LblSEL_NumDom;
    QComboBox* CmbDomAnnualita = nullptr;
    QMap<int, QCheckBox*> Check1;
    QMap<int, QPushButton*> Cmddati;
    QTableView* Griglia = nullptr;
    ModelloLista* Data = nullptr;

    // Cornice dei pulsanti per nome (nullptr se non c'è).
    QGroupBox* Cornice(const QString& nome) const;
    // Il clic su Cmddati(indice), con la trappola degli errori.
    void Cmddati_Click(int indice);
    // Il codice del lavoro: l'OperazioneCorrente del momento.
    static int Codice();

    int RigheSelezionate() const;
    // Riga corrente della griglia, -1 se la lista è vuota.
    int RigaCorrente() const;
    // Campo della riga corrente per nome ("TABELLA.CAMPO" ammesso) o per
    // posizione. Senza riga corrente: errore 3021.
    Valore Campo(const QString& nome) const;
    Valore Campo(int posizione) const;

    // L'argomento che la finestra di aiuto ha ricevuto per ultimo da una lista:
    // un pulsante "Help" che non ne imposta uno mostra di nuovo quello.
    static QString NomeHelp;

protected:
    struct Aspetto {
        QString nome;             // objectName della maschera
        QString corniceRicerca;   // "Fra_Selezuione", "Fra_Sele"
        QString corniceCaselle;   // "AFraSelezione", "Frastampate"
        QString titoloCaselle;    // "Domande", "Seleziona tutte le  domande  "
        QString nomeGriglia;      // "TDBG_DISTILLA", "TDBG_SelProd(3)"
        bool secondoCampo = false;  // TxtSEL_NumDom(1) presente
    };
    // Come si riempie la combo delle campagne all'apertura.
    enum class Combo { NonRiempita, ConRigaVuota, SullaCampagnaCorrente };

    ListaSelezione(const Aspetto& aspetto, QWidget* genitore);

    // Una cornice di pulsanti (indice, didascalia) sotto la griglia, nascosta.
    QGroupBox* AggiungiCornice(const QString& nome, const QList<QPair<int, QString>>& pulsanti);

    // L'apertura comune; le gemelle la chiamano in fondo al costruttore.
    void Form_Load();
    // La ricerca ("Cerca ...") e ogni ricostruzione della lista.
    void Cerca();
    // Carica la lista con la condizione e la dispone.
    void CaricaLista(const IstruzioneSql& condizione, const QString& testoAggiunto = QString());
    // La scelta di una campagna: CampagnaSelezionata e subito la ricerca.
    void CmbDomAnnualita_Click();
    // Pulsante "Help": imposta l'argomento (vuoto: lascia quello di prima) e mostra l'aiuto.
    void Help(const QString& argomento);
    // La maschera seguente, modale, aperta per nome registrato; un nome non
    // registrato non apre nulla.
    void ApriSeguente(const QString& nome);
    // Messaggio con il titolo della sessione, stile informazione.
    static void Avviso(const QString& testo);
    // Una sola riga selezionata, altrimenti il messaggio (e falso).
    bool UnaSolaRiga(const QString& nessuna, const QString& troppe) const;
    bool AlmenoUnaRiga() const;
    void Scarica();
    // Esegue f; un errore va a ScriviLogErr con l'etichetta data.
    static void Protetto(const QString& etichetta, const std::function<void()>& f);

    // Le differenze delle gemelle.
    // Passo 2 dell'apertura: cornici, etichette e caselle per codice. Falso:
    // la lista non si carica.
    virtual bool ApriPerCodice(int codice) = 0;
    virtual Combo ComboPerCodice(int codice) const = 0;
    virtual IstruzioneSql ImpostaFiltro() = 0;
    // Il testo aggiunto della ricerca, che il caricatore ignora.
    virtual QString TestoAggiunto() const { return {}; }
    virtual void Aggiorna(const IstruzioneSql& condizione, const QString& testoAggiunto) = 0;
    virtual void Colonne() = 0;
    virtual void Esegui(int indice) = 0;
    virtual void F1() = 0;
    virtual void Check1_Click(int /*indice*/) {}
    virtual void RigaCambiata() {}

    // Testo maiuscolo del titolo all'apertura ("DOMANDE", "FATTURE", ...).
    QString TitoloApertura;

    void keyPressEvent(QKeyEvent* evento) override;
    void closeEvent(QCloseEvent* evento) override;
    void showEvent(QShowEvent* evento) override;
    bool eventFilter(QObject* oggetto, QEvent* evento) override;

private:
    void Intestazione_Click(int colonna);
    void Griglia_Click();

    QMap<QString, QGroupBox*> m_cornici;
    QHBoxLayout* m_areaCornici = nullptr;
    QLabel* m_didascalia = nullptr;
    bool m_posizionata = false;
};
