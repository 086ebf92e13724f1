#pragma once
// Pezzi comuni ai tracciati dei due rami: estrazione a posizioni fisse,
// riempimenti, date e importi con i decimali sottintesi.

#include <QString>
#include <QStringView>
#include <algorithm>

namespace TracciatoComune {

// Errore di esecuzione di un record fuori posto (un record figlio senza il
// suo record padre): l'indice della lista non esiste.
constexpr int IndiceFuoriIntervallo = 9;
[[noreturn]] void RecordFuoriPosto(const QString& tipo);

// Come Mid: posizione da 1; oltre la fine della riga dà quel che resta o "".
inline QString Mid(const QString& riga, int inizio, int lunghezza)
{
    return riga.mid(inizio - 1, lunghezza);
}

// Lo stesso senza copia, per chi legge subito il valore.
inline QStringView MidVista(const QString& riga, int inizio, int lunghezza)
{
    return QStringView(riga).mid(inizio - 1, lunghezza);
}

// Come Mid, ma un testo uguale a "precedente" (lo stesso campo del record
// prima) ne diventa una copia condivisa: domanda, codici e date che si
// ripetono a ogni record di una fornitura grande non chiedono memoria nuova.
inline QString MidCome(const QString& riga, int inizio, int lunghezza, const QString& precedente)
{
    const QStringView valore = MidVista(riga, inizio, lunghezza);
    return !precedente.isEmpty() && valore == precedente ? precedente : valore.toString();
}

inline QString Spazi(int n) { return QString(n, QLatin1Char(' ')); }

// I riempimenti accodati al record in costruzione, senza testi di passaggio
// (uno scarico ne farebbe milioni): lo stesso risultato di
// r += PadDestra(valore, ...) e di r += PadSinistra(valore, ...).
inline void AccodaDestra(QString& r, QStringView valore, qsizetype larghezza, QChar riempimento)
{
    const qsizetype n = std::min(valore.size(), larghezza);
    r.append(valore.first(n));
    r.resize(r.size() + larghezza - n, riempimento);
}
inline void AccodaSinistra(QString& r, QStringView valore, qsizetype larghezza, QChar riempimento)
{
    if (valore.size() >= larghezza) {
        r.append(valore.last(larghezza));
        return;
    }
    r.resize(r.size() + larghezza - valore.size(), riempimento);
    r.append(valore);
}
// La cifra senza virgole, zeri a sinistra: r += PadSinistra(SenzaVirgole(valore), ...).
void AccodaCifra(QString& r, QStringView valore, qsizetype larghezza);

// La cifra tolta la virgola: nessun cambio di scala, solo testo.
inline QString SenzaVirgole(QString valore) { return valore.remove(QLatin1Char(',')); }

// Format di una data tenuta come testo: se il testo è una data la si scrive
// con la maschera ("YYYYMMDD", "DD/MM/YYYY"); un testo che non è una data,
// anche vuoto, esce così com'è.
QString FormatoData(const QString& testo, const QString& maschera);
// r += FormatoData(testo, maschera), poi riempito e tagliato a "larghezza"
// come PadDestra se larghezza non è negativa; una data GG/MM/AAAA si scrive
// senza testi di passaggio.
void AccodaData(QString& r, const QString& testo, const QString& maschera, qsizetype larghezza = -1,
                QChar riempimento = QLatin1Char(' '));

// Importo in entrata spezzato in parte intera e decimali, consecutive dalla
// posizione data: valore numerico della parte intera riscritto come numero
// semplice (zeri e spazi in testa spariscono, tutta bianca vale 0), la
// virgola, i decimali così come stanno, spazi compresi.
// Un risultato uguale a "precedente" ne è una copia condivisa, come MidCome.
QString ImportoDiviso(const QString& riga, int inizio, int cifreIntere, int decimali,
                      const QString& precedente = QString());

// Lo stesso su un campo solo con gli ultimi "decimali" caratteri per
// decimali: il risultato di InserisciVirgola, condiviso come sopra.
QString ImportoConVirgola(QStringView valore, int decimali, const QString& precedente);

// Tipo di un record in entrata (il primo carattere, da 0 a 3; -1 per ogni
// altro) e avanzamento dei contatori annidati del carico: un record di un
// livello conta uno in più al suo livello e azzera quelli sotto.
int AvanzaContatori(const QString& riga, qint32& domande, qint32& figli, qint32& nipoti);

// Una riga di un carico: avanza i contatori e passa la riga al Tipo_ del suo
// tipo. Restituisce il tipo letto, -1 per una riga saltata.
template <typename Carico>
int SmistaRiga(Carico& carico, const QString& riga, qint32& domande, qint32& figli, qint32& nipoti)
{
    const int tipo = AvanzaContatori(riga, domande, figli, nipoti);
    switch (tipo) {
    case 0: carico.Tipo_0(riga); break;
    case 1: carico.Tipo_1(riga); break;
    case 2: carico.Tipo_2(riga); break;
    case 3: carico.Tipo_3(riga); break;
    default: break;
    }
    return tipo;
}

}  // namespace TracciatoComune
