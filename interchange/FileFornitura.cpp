#include "interchange/FileFornitura.h"

#include "common/errore.h"

#include <QDir>
#include <QFileInfo>
#include <QStringDecoder>
#include <QStringEncoder>
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

// Un byte, un carattere: la tavola dei 256 byte ricavata una volta dalla
// pagina. Leggere così un file grande evita il convertitore generico, che
// su 100 000 righe pesa quanto tutto il resto della lettura.
struct TavolaPagina {
    TavolaPagina()
    {
        QStringDecoder decodifica(PaginaCodici);
        for (int b = 0; b < 0x100; ++b) {
            const char c = static_cast<char>(b);
            const QString testo = decodifica.decode(QByteArrayView(&c, 1));
            carattere[b] = testo.size() == 1 ? testo.at(0).unicode() : char16_t(0xFFFD);
        }
    }
    QString Decodifica(QByteArrayView byte) const
    {
        QString testo;
        Decodifica(byte, testo);
        return testo;
    }
    // Nel testo dato: se non è condiviso, senza memoria nuova.
    void Decodifica(QByteArrayView byte, QString& testo) const
    {
        testo.resize(byte.size());
        char16_t* destinazione = reinterpret_cast<char16_t*>(testo.data());
        const auto* origine = reinterpret_cast<const unsigned char*>(byte.data());
        for (qsizetype i = 0; i < byte.size(); ++i)
            destinazione[i] = carattere[origine[i]];
    }
    std::array<char16_t, 0x100> carattere{};
};

const TavolaPagina& Tavola()
{
    static const TavolaPagina tavola;
    return tavola;
}

// Il byte di ogni unità UTF-16, ricavato una volta dal convertitore della
// pagina; "?" per ciò che la pagina non ha. Scrivere così uno scarico evita
// il convertitore generico a ogni riga.
struct CodificaPagina {
    CodificaPagina()
    {
        const CaratteriPagina& pagina = Pagina();
        QStringEncoder codifica(PaginaCodici);
        for (int c = 0; c < 0x10000; ++c) {
            byte[c] = '?';
            if (!pagina.contiene(char16_t(c)))
                continue;
            const QChar carattere{char16_t(c)};
            const QByteArray codificato = codifica.encode(QStringView(&carattere, 1));
            if (codificato.size() == 1)
                byte[c] = codificato.at(0);
        }
    }
    void Accoda(QByteArray& destinazione, QStringView testo) const
    {
        const qsizetype inizio = destinazione.size();
        destinazione.resize(inizio + testo.size());
        char* d = destinazione.data() + inizio;
        for (QChar c : testo)
            *d++ = byte[c.unicode()];
    }
    std::array<char, 0x10000> byte{};
};

const CodificaPagina& Codifica()
{
    static const CodificaPagina codifica;
    return codifica;
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
    QByteArray byte;
    Codifica().Accoda(byte, riga);
    return byte;
}

QString DecodificaRiga(const QByteArray& byte) { return Tavola().Decodifica(byte); }

ScritturaFornitura::ScritturaFornitura(const QString& percorso)
    : m_file(percorso)
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
    Codifica().Accoda(m_buffer, riga);
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

LetturaFornitura::LetturaFornitura(const QString& percorso) : m_file(percorso)
{
    if (!m_file.open(QIODevice::ReadOnly))
        ErroreApertura(m_file, false);
    // Il file mappato in memoria: niente copia di una fornitura grande. Un
    // file vuoto (o che non si mappa) si legge come sempre.
    const qint64 misura = m_file.size();
    if (uchar* mappa = misura > 0 ? m_file.map(0, misura) : nullptr)
        m_byte = QByteArray::fromRawData(reinterpret_cast<const char*>(mappa), misura);
    else
        m_byte = m_file.readAll();
}

QString LetturaFornitura::LineInput()
{
    QString riga;
    LineInput(riga);
    return riga;
}

void LetturaFornitura::LineInput(QString& riga)
{
    if (eof())
        throw ErroreSistema(InputOltreFineFile, QStringLiteral("Input oltre la fine del file"));
    // Un byte è un carattere: la riga si cerca nei byte e si decodifica da sola.
    qsizetype fine = m_byte.indexOf('\r', m_pos);
    if (fine < 0)
        fine = m_byte.size();
    Tavola().Decodifica(QByteArrayView(m_byte).sliced(m_pos, fine - m_pos), riga);
    m_pos = fine + 1;
    if (m_pos < m_byte.size() && m_byte.at(m_pos) == '\n')
        ++m_pos;
}
