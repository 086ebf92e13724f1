#pragma once
// Costruzione del database consegnato con il programma: schema, dati di
// riferimento (data/*.csv), password, versione dello schema.

#include <QList>
#include <QString>
#include <QStringList>

// Data della versione dello schema scritta in tab_setup.
inline const QString DataVersioneSchema = QStringLiteral("01/12/2005");

// Crea il file (che non deve esistere) da schema.sql e dalla cartella dei dati.
// Solleva ErroreSistema se qualcosa manca o non va.
void CreaDatabaseConsegnato(const QString& percorso, const QString& fileSchema, const QString& cartellaDati);

// Istruzioni di uno schema separate dalle righe ";;".
QStringList IstruzioniSchema(const QString& testo);

// Righe di un file CSV separato da punto e virgola (UTF-8, intestazione
// compresa). I campi tra virgolette possono contenere ';', a capo e "" per ".
QList<QStringList> LeggiCsv(const QString& testo);
