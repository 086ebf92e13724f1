#pragma once
// I passi d'avvio del programma, in un posto solo: il programma e il banco
// dell'avvio li fanno uguali.

#include <QApplication>
#include <memory>

class Piattaforma;

// L'applicazione pronta per la schermata d'avvio: località italiana (anche
// per i dialoghi di Qt), traduzioni di Qt, piattaforma data, maschere
// registrate. "argc" deve vivere quanto l'applicazione.
std::unique_ptr<QApplication> AvviaApplicazione(int& argc, char** argv, std::unique_ptr<Piattaforma> piattaforma);
