// File di fornitura: pagina windows-1252, un byte per carattere, CR LF dopo
// ogni riga; scrittura e lettura come le facevano Print e Line Input.

#include "interchange/FileFornitura.h"
#include "interchange/TracciatoConferimenti.h"
#include "interchange/TracciatoFatture.h"
#include "record_prova.h"

namespace {

class FileFornitura : public ProvaConDatabase {
protected:
    QString Percorso(const QString& nome) const { return QDir(cartella->cartella()).filePath(nome); }
    QByteArray Contenuto(const QString& nome) const
    {
        QFile f(Percorso(nome));
        EXPECT_TRUE(f.open(QIODevice::ReadOnly)) << nome.toStdString();
        return f.readAll();
    }
};

// Una lettera accentata è un carattere e un byte: le righe restano di 260 e
// 300 caratteri e i campi dopo restano al loro posto, anche riletti.
TEST_F(FileFornitura, LetteraAccentataUnCarattereEUnByte)
{
    const QString bolla = TracciatoFatture::Scarico().TRACCIATO_2(RigaValori{
        {"DOMANDA", "00000012345"}, {"NUME_FATT", "125"}, {"CODI_FISC", "RSSMRA70A01H501S"},
        {"NUMERO_BOLLA", QStringLiteral("SAN DONÀ 44")}, {"DATA_CONSEGNA", "02/03/2006"},
        {"QUANTITA_PRODOTTO", "750,0000"}, {"BOLLE.DATA_PAGA", ""}, {"GRADO", "12,5000"}});
    const QString produttore = QStringLiteral("3") + Bianchi(30) + "BNCGPP60B02A479X" +
                               Sx(QStringLiteral("NICOLÒ ROSSI"), 70) + QString(129, '0') + "RO" +
                               "000000000016250" + "S" + "050" + Bianchi(33);
    ASSERT_EQ(260, bolla.size());
    ASSERT_EQ(300, produttore.size());
    {
        ScritturaFornitura file(Percorso("misto.txt"));
        file.Print(bolla);
        file.Print(produttore);
    }  // chiuso dal distruttore
    const QByteArray byte = Contenuto("misto.txt");
    ASSERT_EQ(262 + 302, byte.size());
    EXPECT_EQ(QByteArray("SAN DON\xC0 44         02/03/2006"), byte.mid(43, 30));  // "À" è il byte C0
    EXPECT_EQ(QByteArray(160, ' ') + "\r\n", byte.mid(100, 162));
    EXPECT_EQ(QByteArray("NICOL\xD2 ROSSI"), byte.mid(262 + 47, 12));

    LetturaFornitura lettura(Percorso("misto.txt"));
    EXPECT_TRUE(RecordUguale(bolla, lettura.LineInput()));
    db();  // il colore si cerca nel database della sessione
    TracciatoConferimenti::Carico c;
    c.LeggiRiga(QStringLiteral("1"));
    c.LeggiRiga(QStringLiteral("2"));
    c.LeggiRiga(lettura.LineInput());
    EXPECT_TRUE(lettura.eof());
    const ProduttoreSelezionato& p = c.Domande[1].Certificati[1].Produttori[1];
    EXPECT_EQ(Sx(QStringLiteral("NICOLÒ ROSSI"), 70), p.DENOMINAZIONE);
    EXPECT_EQ("2|162,50|S|050", QStringList({p.iD_COLORE, p.TOTALE_AIUTO, p.APPROVAZIONE_ANTICIPATA,
                                             p.PERC_APPROVAZIONE_ANTICIPATA})
                                    .join('|'));
}

TEST(CodificaRiga, PaginaWindows1252)
{
    // "€" e "Š" sono nella pagina; "ł" no, e una coppia surrogata vale due "?".
    const QString riga = QStringLiteral("A€Šł") + QString::fromUtf8("\xF0\x9F\x8D\x87") + QStringLiteral("Z");
    EXPECT_EQ(QByteArray("A\x80\x8A???Z"), CodificaRiga(riga));
    // Ogni byte è un carattere, andata e ritorno.
    QByteArray tutti;
    for (int b = 0; b < 256; ++b)
        tutti.append(static_cast<char>(b));
    const QString testo = DecodificaRiga(tutti);
    ASSERT_EQ(256, testo.size());
    EXPECT_EQ(QChar(0x20AC), testo.at(0x80));
    EXPECT_EQ(tutti, CodificaRiga(testo));
}

TEST_F(FileFornitura, FineRigaComeLineInputEdErrori)
{
    // CR LF, CR da solo, LF da solo (resta nella riga), riga vuota, ultima senza fine riga.
    ScriviByte(Percorso("righe.txt"), "uno\r\ndue\rtre\nquattro\r\n\r\ncinque");
    LetturaFornitura lettura(Percorso("righe.txt"));
    QStringList righe;
    while (!lettura.eof())
        righe << lettura.LineInput();
    EXPECT_EQ((QStringList{"uno", "due", "tre\nquattro", "", "cinque"}), righe);
    EXPECT_EQ(62, NumeroErrore([&] { lettura.LineInput(); }));
    EXPECT_EQ(53, NumeroErrore([&] { LetturaFornitura l(Percorso("manca.txt")); }));
    EXPECT_EQ(76, NumeroErrore([&] { ScritturaFornitura s(Percorso("cartella/manca.txt")); }));
}

}  // namespace
