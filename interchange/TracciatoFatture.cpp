#include "interchange/TracciatoFatture.h"

#include "common/numeri.h"
#include "common/testo.h"
#include "interchange/TracciatoComune.h"

using namespace TracciatoComune;

namespace TracciatoFatture {

namespace {

const QChar Zero = QLatin1Char('0');
const QChar Spazio = QLatin1Char(' ');
const QChar Nove = QLatin1Char('9');

}  // namespace

// ------------------------------------------------------------------ scarico

QString Scarico::TRACCIATO_0() const
{
    return TRACCIATO_0(sessione().DistilleriaDati, sessione().DomandaSel);
}

QString Scarico::TRACCIATO_0(const DatiDistilleria& distilleria, const DomandaSelezionata& domanda) const
{
    const QDate oggi = DataScarico.isValid() ? DataScarico : QDate::currentDate();
    QString r;
    r.reserve(LunghezzaRecord);
    r += QLatin1Char('0');
    r += PadSinistra(QString(), 16, Zero);
    r += CampagnaEstesa;  // sempre "2005/2006", qualunque sia la campagna della domanda
    r += PadSinistra(NumeroScarico, 4, Zero);
    r += Format(oggi, QStringLiteral("YYYYMMDD"));
    r += PadDestra(distilleria.RAGI_SOCI, 50, Spazio);
    r += PadDestra(distilleria.INDI_DIST, 30, Spazio);
    r += PadSinistra(domanda.ID_VARIETA, 2, Zero);
    r += domanda.TIPO_ARTICOLO;  // "29" o "30", senza riempimento
    r += Spazi(138);
    return r;
}

QString Scarico::TRACCIATO_1(const RigaDati& riga) const
{
    return TRACCIATO_1(riga, sessione().DistilleriaDati);
}

QString Scarico::TRACCIATO_1(const RigaDati& riga, const DatiDistilleria& distilleria) const
{
    QString r;
    r.reserve(LunghezzaRecord);
    r += QLatin1Char('1');
    // Zeri a destra di un numero corto: è voluto.
    AccodaDestra(r, riga.Campo(QStringLiteral("DOMANDA")), 11, Zero);
    AccodaDestra(r, distilleria.CODI_FISC, 16, Spazio);
    r += QLatin1Char('A');
    // Codici di tre caratteri nelle tabelle: scritti come sono, senza tagli.
    r += riga.Campo(QStringLiteral("CODI_LAVO"));
    r += riga.Campo(QStringLiteral("PRODOTTO"));
    AccodaDestra(r, riga.Campo(QStringLiteral("CODI_FISC")), 16, Spazio);
    AccodaDestra(r, riga.Campo(QStringLiteral("NUME_FATT")), 15, Spazio);
    AccodaData(r, riga.Campo(QStringLiteral("DATA_FATT")), QStringLiteral("YYYYMMDD"));
    AccodaCifra(r, riga.Campo(QStringLiteral("QTA_PROD")), 11);
    AccodaCifra(r, riga.Campo(QStringLiteral("GRAD")), 6);
    AccodaCifra(r, riga.Campo(QStringLiteral("PREZ_MINI")), 8);
    AccodaCifra(r, riga.Campo(QStringLiteral("IMPO")), 14);
    AccodaCifra(r, riga.Campo(QStringLiteral("IVA")), 14);
    AccodaCifra(r, riga.Campo(QStringLiteral("IMPO_TOTA")), 14);
    AccodaData(r, riga.Campo(QStringLiteral("DATA_PAGA")), QStringLiteral("YYYYMMDD"), 8, Zero);
    AccodaCifra(r, riga.Campo(QStringLiteral("QTA_LAVO")), 11);
    AccodaDestra(r, riga.Campo(QStringLiteral("DENOMINAZIONE")), 70, Spazio);
    r.resize(r.size() + 30, Spazio);
    return r;
}

QString Scarico::TRACCIATO_2(const RigaDati& riga) const
{
    QString r;
    r.reserve(LunghezzaRecord);
    r += QLatin1Char('2');
    AccodaDestra(r, riga.Campo(QStringLiteral("DOMANDA")), 11, Zero);
    AccodaDestra(r, riga.Campo(QStringLiteral("NUME_FATT")), 15, Spazio);
    AccodaDestra(r, riga.Campo(QStringLiteral("CODI_FISC")), 16, Spazio);
    AccodaDestra(r, riga.Campo(QStringLiteral("NUMERO_BOLLA")), 20, Spazio);
    AccodaData(r, riga.Campo(QStringLiteral("DATA_CONSEGNA")), QStringLiteral("DD/MM/YYYY"));
    AccodaCifra(r, riga.Campo(QStringLiteral("QUANTITA_PRODOTTO")), 11);
    AccodaData(r, riga.Campo(QStringLiteral("BOLLE.DATA_PAGA")), QStringLiteral("DD/MM/YYYY"), 10, Spazio);
    // Lo "0" davanti fa di un Null uno zero.
    AccodaCifra(r, QLatin1Char('0') + riga.Campo(QStringLiteral("GRADO")), 6);
    r.resize(r.size() + 160, Spazio);
    return r;
}

QString Scarico::TRACCIATO_9()
{
    QString r;
    r.reserve(LunghezzaRecord);
    r += QLatin1Char('9');
    r += PadSinistra(QString(), 16, Nove);
    r += PadSinistra(QString::number(ContaFatture), 6, Zero);
    r += PadSinistra(QString::number(ContaBolle), 6, Zero);
    r += Spazi(231);
    ContaFatture = 0;
    return r;
}

// ------------------------------------------------------------------- carico

void Carico::Azzera()
{
    Fornitura = IntestazioneCarico{};
    Domande = {DomandaCarico{}};
    NumeroDomande = 0;
    NumeroFatture = 0;
    IndiceBolla = 0;
}

int Carico::LeggiRiga(const QString& riga)
{
    return SmistaRiga(*this, riga, NumeroDomande, NumeroFatture, IndiceBolla);
}

void Carico::Tipo_0(const QString& riga)
{
    Fornitura.CAMPAGNA = Mid(riga, 2, 4);
    Fornitura.Numero_domaNDe = Mid(riga, 6, 6);
    Fornitura.Numero_fatture = Mid(riga, 12, 6);
    Fornitura.Numero_bolle = Mid(riga, 18, 6);
    Fornitura.Data_forniturE = Mid(riga, 24, 10);
    Fornitura.PROGRESSIVO_fornitura = Mid(riga, 34, 3);
}

void Carico::Tipo_1(const QString& riga)
{
    if (NumeroDomande < 1)
        RecordFuoriPosto(QStringLiteral("1"));
    Domande.resize(NumeroDomande + 1);
    DomandaCarico& d = Domande[NumeroDomande];
    d = DomandaCarico{};
    d.DOMANDA = Mid(riga, 2, 11);
    d.PROGRESSIVO = Mid(riga, 13, 2);
    d.TIPO_ARTICOLO = Mid(riga, 15, 2);
    d.CODI_PROD = Mid(riga, 17, 3);
}

DomandaCarico& Carico::DomandaAperta(const QString& tipo)
{
    if (NumeroDomande < 1 || NumeroDomande >= Domande.size())
        RecordFuoriPosto(tipo);
    return Domande[NumeroDomande];
}

void Carico::Tipo_2(const QString& riga)
{
    DomandaCarico& d = DomandaAperta(QStringLiteral("2"));
    if (NumeroFatture < 1)
        RecordFuoriPosto(QStringLiteral("2"));
    d.Fatture.resize(NumeroFatture + 1);
    const FatturaCarico& p = d.Fatture.at(NumeroFatture - 1);
    FatturaCarico& f = d.Fatture[NumeroFatture];
    f = FatturaCarico{};
    f.DOMANDA = MidCome(riga, 2, 11, d.DOMANDA);
    f.PROGRESSIVO = MidCome(riga, 13, 2, d.PROGRESSIVO);
    f.NUME_FATT = Mid(riga, 15, 15);
    f.CODI_FISC = MidCome(riga, 30, 16, p.CODI_FISC);
    f.DENOMINAZIONE = MidCome(riga, 46, 50, p.DENOMINAZIONE);
    f.DATA_FATT = MidCome(riga, 96, 10, p.DATA_FATT);
    f.QTA_PROD = ImportoDiviso(riga, 106, 7, 4, p.QTA_PROD);
    f.GRAD = ImportoDiviso(riga, 117, 2, 4, p.GRAD);
    f.PREZ_MINI = ImportoDiviso(riga, 123, 4, 4).trimmed();
    f.IMPO = ImportoDiviso(riga, 131, 12, 2, p.IMPO);
    f.IVA = ImportoDiviso(riga, 145, 12, 2, p.IVA);
    f.IMPO_TOTA = ImportoDiviso(riga, 159, 12, 2, p.IMPO_TOTA);
    f.DATA_PAGA = MidCome(riga, 173, 10, p.DATA_PAGA);
    f.QTA_LAVO = ImportoDiviso(riga, 183, 7, 4, p.QTA_LAVO);
    f.CODI_LAVO = MidCome(riga, 194, 3, p.CODI_LAVO);
}

void Carico::Tipo_3(const QString& riga)
{
    DomandaCarico& d = DomandaAperta(QStringLiteral("3"));
    if (IndiceBolla < 1)
        RecordFuoriPosto(QStringLiteral("3"));
    // La lista prende la lunghezza dell'indice: dopo una nuova fattura le
    // bolle lette prima oltre questo indice si perdono.
    d.Bolle.resize(IndiceBolla + 1);
    const BollaCarico& p = d.Bolle.at(IndiceBolla - 1);
    BollaCarico& b = d.Bolle[IndiceBolla];
    b = BollaCarico{};
    b.DOMANDA = MidCome(riga, 2, 11, d.DOMANDA);
    b.PROGRESSIVO = MidCome(riga, 13, 2, d.PROGRESSIVO);
    b.NUME_FATT = MidCome(riga, 15, 15, p.NUME_FATT);
    b.CODI_FISC = MidCome(riga, 30, 16, p.CODI_FISC);
    b.NUMERO_BOLLA = Mid(riga, 46, 20);
    b.DATA_CONSEGNA = MidCome(riga, 66, 10, p.DATA_CONSEGNA);
    b.QUANTITA_PRODOTTO = ImportoDiviso(riga, 76, 7, 4, p.QUANTITA_PRODOTTO);
    b.DATA_PAGA = MidCome(riga, 87, 10, p.DATA_PAGA);
    b.GRADO = ImportoDiviso(riga, 97, 2, 4, p.GRADO);
}

}  // namespace TracciatoFatture
