#include "support/piattaforma_script.h"

#include "common/disegno_documento.h"
#include "shell/session_state.h"

#include <QDir>
#include <gtest/gtest.h>

namespace {
PiattaformaScript* corrente = nullptr;
}

int PiattaformaScript::MsgBox(const QString& testo, int stile, const QString& titolo)
{
    MessaggioRegistrato m{testo, stile, titolo};
    messaggi << m;
    if (alMessaggio)
        alMessaggio(m);
    if (!risposte.isEmpty())
        return risposte.dequeue();
    if (!accettaTutto)
        ADD_FAILURE() << "Messaggio inatteso: \"" << testo.toStdString() << "\" stile " << stile << " titolo \""
                      << titolo.toStdString() << "\"";
    switch (stile & 0x7) {
    case StileMsg::SiNo:
    case StileMsg::SiNoAnnulla: return RispostaMsg::Si;
    case StileMsg::RiprovaAnnulla: return RispostaMsg::Riprova;
    case StileMsg::InterrompiRiprovaIgnora: return RispostaMsg::Interrompi;
    default: return RispostaMsg::OK;
    }
}

QString PiattaformaScript::SfogliaCartella(const QString& titolo)
{
    titoliCartella << titolo;
    return cartelle.isEmpty() ? QString() : cartelle.dequeue();
}

void PiattaformaScript::MostraTesto(const QString& percorso) { testiMostrati << percorso; }

void PiattaformaScript::TerminaProcesso()
{
    terminato = true;
    throw ProcessoTerminato{};
}

int PiattaformaScript::AnteprimaStampa(QTextDocument& documento, const QString& titolo)
{
    // La cartella del programma è la madre di PathDatabase; senza, la temporanea.
    const QString base = sessione().PathDatabase.isEmpty()
                             ? QDir::tempPath()
                             : QDir(QDir(sessione().PathDatabase).absoluteFilePath(QStringLiteral(".."))).absolutePath();
    const QString pdf = QDir(base).filePath(QStringLiteral("anteprima_%1.pdf").arg(anteprime.size() + 1));
    if (!ScriviPdf(documento, pdf))
        ADD_FAILURE() << "PDF dell'anteprima non scritto: " << pdf.toStdString();
    anteprime << AnteprimaRegistrata{titolo, pdf, NomePdf(documento)};
    return risposteAnteprima.isEmpty() ? RispostaMsg::OK : risposteAnteprima.dequeue();
}

PiattaformaScript& InstallaPiattaformaScript()
{
    auto nuova = std::make_unique<PiattaformaScript>();
    corrente = nuova.get();
    ImpostaPiattaforma(std::move(nuova));
    return *corrente;
}

PiattaformaScript& Script() { return *corrente; }
