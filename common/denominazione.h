#pragma once
// La denominazione di un codice fiscale o di una partita IVA, cercata tra i
// produttori e poi tra le fatture: la usano la fattura e il produttore.

#include <QString>
#include <optional>

class QLineEdit;
class QWidget;

std::optional<QString> CercaDenominazione(const QString& codice);

// Il pulsante di ricerca accanto al codice: il nome trovato va nel suo campo
// e il fuoco passa a "seguente"; altrimenti il messaggio e il fuoco sul campo
// da completare. Un guasto del database solleva ErroreSistema.
void TrovaDenominazione(QLineEdit* codice, QLineEdit* denominazione, QWidget* seguente);
