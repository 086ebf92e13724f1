#pragma once
// PROVVISORIO: sostituito dalle routine comuni delle maschere quando arrivano.
#include <QString>
#include <QWidget>
#include <functional>
void PosizionaForm(QWidget* form, bool schermo, QWidget* genitore);
void MostraHelp(const QString& nome);
void ImpostaMostraHelp(std::function<void(const QString&)> aggancio);
