#include "interchange/RigaDati.h"

#include "common/errore.h"
#include "store/database.h"

namespace {

constexpr int ElementoNonTrovato = 3265;

[[noreturn]] void ColonnaAssente(const QString& nome)
{
    throw ErroreSistema(ElementoNonTrovato,
                        QStringLiteral("Elemento non trovato in questo insieme: '%1'.").arg(nome));
}

// Parte dopo l'ultimo punto di un nome qualificato, vuota se non c'è punto.
QString NomeSemplice(const QString& nome)
{
    const qsizetype punto = nome.lastIndexOf(QLatin1Char('.'));
    return punto < 0 ? QString() : nome.mid(punto + 1);
}

}  // namespace

QString RigaRecordset::Campo(const QString& nome) const
{
    int trovato = -1;
    for (int i = 0; i < m_rs.NumeroCampi() && trovato < 0; ++i)
        if (m_rs.NomeCampo(i).compare(nome, Qt::CaseInsensitive) == 0)
            trovato = i;
    if (trovato < 0) {
        const QString semplice = NomeSemplice(nome);
        if (!semplice.isEmpty())
            for (int i = m_rs.NumeroCampi() - 1; i >= 0 && trovato < 0; --i)
                if (m_rs.NomeCampo(i).compare(semplice, Qt::CaseInsensitive) == 0)
                    trovato = i;
    }
    if (trovato < 0)
        ColonnaAssente(nome);
    return m_rs.Fields(trovato).testo();
}

RigaValori::RigaValori(std::initializer_list<std::pair<QString, QString>> valori)
{
    for (const auto& [nome, valore] : valori)
        Imposta(nome, valore);
}

RigaValori& RigaValori::Imposta(const QString& nome, const QString& valore)
{
    // Il nome com'è scritto e in maiuscolo: di solito chi legge lo scrive
    // uguale e la ricerca non deve convertire nulla.
    const QString maiuscolo = nome.toUpper();
    if (m_valori.contains(maiuscolo))
        m_valori.removeIf([&](const auto& voce) { return voce.key().toUpper() == maiuscolo; });
    m_valori.insert(nome, valore);
    if (maiuscolo != nome)
        m_valori.insert(maiuscolo, valore);
    return *this;
}

QString RigaValori::Campo(const QString& nome) const
{
    auto it = m_valori.constFind(nome);
    if (it != m_valori.constEnd())
        return *it;
    const QString chiave = nome.toUpper();
    it = m_valori.constFind(chiave);
    if (it == m_valori.constEnd()) {
        const QString semplice = NomeSemplice(chiave);
        if (!semplice.isEmpty())
            it = m_valori.constFind(semplice);
    }
    if (it == m_valori.constEnd())
        ColonnaAssente(nome);
    return *it;
}
