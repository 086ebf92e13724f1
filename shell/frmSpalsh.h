#pragma once
// Schermata d'avvio (il nome è scritto così di proposito). Trova il database,
// lo apre una volta per aggiornare lo schema e confrontare la sua versione con
// quella del programma, legge la campagna corrente, lo richiude e aspetta un
// clic su una delle sue etichette. Solo allora nasce il menu principale.

#include <QMap>
#include <QString>
#include <QWidget>

class QLabel;

// Cartella del database: la cartella del programma, una barra se non c'è
// già, poi "database/".
QString CalcolaPathDatabase(const QString& cartellaProgramma);

// Prima di aprire il database si tolgono gli avanzi di un salvataggio o di un
// ripristino interrotti; il database di prima del ripristino torna al suo
// posto, con un avviso, solo se quello attuale non si apre.
void SistemaAvanzi();

// Il controllo di versione, senza finestra: toglie gli avanzi, apre il database, sostituisce la
// vecchia tabella SETUP, legge CampagnaCorrente, confronta VERSIONE con la
// versione del programma e richiude. Ogni errore va nel registro con
// l'etichetta "AGGIORNAMENTO VERSIONE" e termina il processo; una versione
// diversa termina il processo con il suo messaggio.
void AggiornamentoVersione();

class frmSpalsh : public QWidget {
    Q_OBJECT
public:
    // cartellaProgramma vuota: quella dell'eseguibile.
    explicit frmSpalsh(const QString& cartellaProgramma = QString(), QWidget* genitore = nullptr);

    // Il vettore di etichette Label1 (indici 0..3).
    QLabel* Label1(int indice) const { return m_label1.value(indice); }

    void Form_Activate();
    void Label1_Click(int Index);

protected:
    void showEvent(QShowEvent* evento) override;
    void closeEvent(QCloseEvent* evento) override;
    bool eventFilter(QObject* oggetto, QEvent* evento) override;

private:
    void Form_Load(const QString& cartellaProgramma);
    void Form_Unload();

    QMap<int, QLabel*> m_label1;
    bool m_attivata = false;
};
