#pragma once
// I passi comuni ai due scarichi (fatture e conferimenti) dopo la scelta
// della cartella: numero dello scarico da PROG_DSK, scrittura di COPI1.666
// nella cartella del programma, dischetto svuotato, numero registrato, copia
// nella cartella scelta col nome "Kelvar" + ramo + "." + numero, domanda
// segnata come scaricata. Ogni ramo dà i suoi record e il suo flag.

#include <QString>
#include <functional>

class ScritturaFornitura;

struct RamoScarico {
    QString Tag;  // "FAT" o "CONF"
    // Scrive i record della domanda nel file temporaneo già aperto, con il
    // numero dello scarico. Falso: lo scarico si ferma qui senza toccare
    // nulla (il file temporaneo è cancellato, nessun messaggio).
    std::function<bool(ScritturaFornitura& file, const QString& numero)> Scrivi;
    // Segna la domanda come scaricata; le righe toccate.
    std::function<int()> SegnaScaricata;
};

// Etichetta d'errore dei due scarichi (presa da un'altra maschera, così com'è).
inline const QString EtichettaScarico = QStringLiteral(" FrmSelezionaFatture.SelRiga_SelFatture");
inline const QString NomeFileTemporaneo = QStringLiteral("COPI1.666");

// Numero dello scarico: "SELECT MAX(PROG) +1 ..." col formato "000"; vuoto se
// PROG_DSK non ha righe.
QString NumeroProssimoScarico();
// Nome del file finale nella cartella.
QString NomeFileScarico(const QString& tag, const QString& numero);

// Vero quando il file finale è stato scritto, forzato sul supporto e riletto
// uguale. Un errore va a ScriviLogErr con l'etichetta degli scarichi e lascia
// il file temporaneo dov'è; col nome finale non resta mai un file a metà.
bool EseguiScarico(const QString& cartella, const RamoScarico& ramo);
