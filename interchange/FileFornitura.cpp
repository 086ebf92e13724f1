#include "interchange/FileFornitura.h"

#include "common/errore.h"

#include <QDir>
#include <QFileInfo>
#include <QStringDecoder>
#include <array>

namespace {

const char* const PaginaCodici = "windows-1252";
constexpr qsizetype SogliaBuffer = 1 << 16;
constexpr int InputOltreFineFile = 62;

// Caratteri non ASCII che la pagina sa scrivere, ricavati dalla pagina stessa.
struct CaratteriPagina {
    CaratteriPagina()
    {
        QByteArray tutti;
        for (int b = 0x80; b < 0x100; ++b)
            tutti.append(static_cast<char>(b));
        const QString testo = QStringDecoder(PaginaCodici).decode(tutti);
        for (QChar c : testo)
            presenti[c.unicode()] = true;
    }
    bool contiene(char16_t c) const { return c < 0x80 || presenti[c]; }
    std::array<bool, 0x10000> presenti{};
};

const CaratteriPagina& Pagina()
{
    static const CaratteriPagina pagina;
    return pagina;
}

// Il testo con "?" al posto di ciò che la pagina non ha; di solito non copia.
QString SoloPagina(const QString& riga)
{
    const CaratteriPagina& pagina = Pagina();
    qsizetype i = 0;
    while (i < riga.size() && pagina.contiene(riga.at(i).unicode()))
        ++i;
    if (i == riga.size())
        return riga;
    QString copia = riga;
    for (; i < copia.size(); ++i)
        if (!pagina.contiene(copia.at(i).unicode()))
            copia[i] = QLatin1Char('?');
    return copia;
}

[[noreturn]] void ErroreApertura(const QFile& file, bool scrittura)
{
    const QFileInfo info(file.fileName());
    if (!scrittura && !info.exists())
        throw ErroreSistema(CodiciErrore::FileNonTrovatoRuntime);
    if (scrittura && !info.absoluteDir().exists())
        throw ErroreSistema(CodiciErrore::PercorsoNonTrovato);
    throw ErroreSistema(CodiciErrore::AccessoPercorso);
}

}  // namespace

QByteArray CodificaRiga(const QString& riga)
{
    QStringEncoder codifica(PaginaCodici);
    return codifica.encode(SoloPagina(riga));
}

QString DecodificaRiga(const QByteArray& byte)
{
    QStringDecoder decodifica(PaginaCodici);
    return decodifica.decode(byte);
}

ScritturaFornitura::ScritturaFornitura(const QString& percorso)
    : m_file(percorso), m_codifica(PaginaCodici)
{
    if (!m_file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        ErroreApertura(m_file, true);
}

ScritturaFornitura::~ScritturaFornitura()
{
    // Chiusura silenziosa: un errore qui non può più essere riportato.
    if (m_file.isOpen()) {
        m_file.write(m_buffer);
        m_file.close();
    }
}

void ScritturaFornitura::Print(const QString& riga)
{
    if (!m_file.isOpen())
        throw ErroreSistema(52, QStringLiteral("Nome o numero di file non valido"));
    m_buffer += m_codifica.encode(SoloPagina(riga));
    m_buffer += "\r\n";
    if (m_buffer.size() >= SogliaBuffer)
        Svuota();
}

void ScritturaFornitura::Svuota()
{
    if (m_buffer.isEmpty())
        return;
    if (m_file.write(m_buffer) != m_buffer.size()) {
        m_buffer.clear();
        throw ErroreSistema(CodiciErrore::DiscoPieno);
    }
    m_buffer.clear();
}

void ScritturaFornitura::Close()
{
    if (!m_file.isOpen())
        return;
    Svuota();
    const bool scritto = m_file.flush();
    m_file.close();
    if (!scritto)
        throw ErroreSistema(CodiciErrore::DiscoPieno);
}

LetturaFornitura::LetturaFornitura(const QString& percorso)
{
    QFile file(percorso);
    if (!file.open(QIODevice::ReadOnly))
        ErroreApertura(file, false);
    m_testo = QStringDecoder(PaginaCodici).decode(file.readAll());
}

QString LetturaFornitura::LineInput()
{
    if (eof())
        throw ErroreSistema(InputOltreFineFile, QStringLiteral("Input oltre la fine del file"));
    qsizetype fine = m_testo.indexOf(QLatin1Char('\r'), m_pos);
    if (fine < 0)
        fine = m_testo.size();
    QString riga = m_testo.mid(m_pos, fine - m_pos);
    m_pos = fine + 1;
    if (m_pos < m_testo.size() && m_testo.at(m_pos) == QLatin1Char('\n'))
        ++m_pos;
    return riga;
}
