// Salvataggio e ripristino dal menu: andata e ritorno, rinunce, cartelle
// sbagliate o protette, archivi estranei o maligni che non cambiano nulla,
// un'altra distilleria nella sessione.
#include "archive/Archivio.h"
#include "archivio_prova.h"

#include <QDir>
#include <QFile>
#include <zip.h>

namespace {

using namespace Qt::StringLiterals;

const QString Didascalia = u"Domande di aiuto alla distillazione facoltativa (Art.29) - Campagna 2005/2006"_s;
const MessaggioRegistrato Riuscito{u"Trasferimento dei dati effettuato correttamente"_s, 64, u"Gestione dati "_s};
const MessaggioRegistrato Annullare{u"Annullare operazione ?"_s, 68, u"Gestione Dati"_s};
const MessaggioRegistrato Annullata{u"Operazione annullata."_s, 64, Didascalia};
const MessaggioRegistrato PercorsoErrato{u"Il percorso indicato non è corretto"_s, 5, u" Percorso file "_s};

// Zip scritto con le voci date, nomi compresi così come sono.
void ScriviZip(const QString& percorso, const QList<std::pair<QByteArray, QByteArray>>& voci)
{
    zip_t* z = zip_open(QFile::encodeName(percorso).constData(), ZIP_CREATE | ZIP_TRUNCATE, nullptr);
    ASSERT_NE(z, nullptr);
    for (const auto& [nome, dati] : voci) {
        zip_source_t* s = zip_source_buffer(z, dati.constData(), zip_uint64_t(dati.size()), 0);
        ASSERT_GE(zip_file_add(z, nome.constData(), s, ZIP_FL_ENC_RAW), 0) << nome.constData();
    }
    ASSERT_EQ(zip_close(z), 0);
}

QByteArray Byte(const QString& percorso)
{
    QFile f(percorso);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

class Archivio : public ProvaArchivio {
protected:
    void SetUp() override
    {
        ProvaArchivio::SetUp();
        db();
    }
    QStringList Dati()
    {
        return Righe(db(), u"SELECT 'D', CODI_FISC, RAGI_SOCI, INDI_DIST FROM DISTILLERIA UNION ALL "
                           "SELECT 'L', DESC_APPL, CODI_ERRO, '' FROM LOGERR ORDER BY 1, 2, 3"_s);
    }
    // Il clic sulla voce con le cartelle e le risposte del copione.
    Messaggi Menu(int index, const QStringList& cartelle, const QList<int>& risposte = {})
    {
        script->messaggi.clear();
        script->cartelle.clear();
        script->cartelle.append(cartelle);
        script->risposte.clear();
        script->risposte.append(risposte);
        ArchivioDaMenu(index);
        EXPECT_TRUE(sessione().DbDistilleria && sessione().DbDistilleria->aperto()) << "connessione riaperta";
        EXPECT_TRUE(script->risposte.isEmpty() && script->cartelle.isEmpty()) << "copione non consumato";
        return script->messaggi;
    }
};

TEST_F(Archivio, IlRipristinoRiportaLeRigheSalvateAncheDellUltimaTransazione)
{
    Distilleria(u"Cantina Uno"_s, db());
    db().Execute(u"INSERT INTO LOGERR (DESC_APPL, CODI_ERRO) VALUES (?, ?)"_s, {u"riga sola"_s, u"00001"_s});
    // Un'altra connessione aperta tiene nel giornale WAL la sua ultima transazione.
    auto altra = Database::Apri(cartella->percorsoDatabase(), false, ConnessioneDb);
    altra->IniziaTransazione();
    for (int i = 0; i < 40; ++i)
        altra->Execute(u"INSERT INTO LOGERR (DESC_APPL, CODI_ERRO) VALUES (?, ?)"_s, {u"ultima"_s, i});
    altra->ConfermaTransazione();
    const QStringList prima = Dati();
    ASSERT_EQ(prima.size(), 42);

    const QString dest = Cartella(u"salvataggi"_s);
    EXPECT_EQ(Menu(0, {dest}), Messaggi{Riuscito});
    EXPECT_EQ(script->titoliCartella.last(), u"Selezionare il percorso dove destinare il file: '' orvelta_2005.bkp''."_s);
    EXPECT_EQ(QDir(dest).entryList(QDir::Files), QStringList{u"orvelta_2005.bkp"_s});
    altra.reset();

    db().Execute(u"DELETE FROM LOGERR WHERE DESC_APPL = 'ultima'"_s);
    Distilleria(u"Cantina Due"_s, db());
    sessione().DbDistilleria.reset();  // anche senza connessione aperta
    EXPECT_EQ(Menu(1, {dest + u"/"_s}), Messaggi{Riuscito});
    EXPECT_EQ(script->titoliCartella.last(), u"Selezionare il percorso dove recuperare il file: '' orvelta_2005.bkp''."_s);
    EXPECT_EQ(Dati(), prima);
    EXPECT_EQ(sessione().DistilleriaDati.RAGI_SOCI, u"Cantina Uno"_s);
    EXPECT_EQ(Contenuto(sessione().PathDatabase), QStringList{u"orvelta_2005.mdb"_s}) << "né .bak né file provvisori";
}

// Le rinunce non cambiano nulla e lasciano la connessione aperta (le prime
// righe, tutte prima dell'unico ripristino riuscito); una cartella senza
// archivio o protetta fa ripetere la scelta.
TEST_F(Archivio, RinunceECartelleDaScegliereDiNuovo)
{
    const QString floppy = Cartella(u"floppy"_s), buona = Cartella(u"buona"_s), vuota = Cartella(u"vuota"_s),
                  protetta = Cartella(u"protetta"_s);
    const MessaggioRegistrato annullataBR{u"Operazione annullata."_s, 64, u"Backup/Restore"_s};
    const MessaggioRegistrato vuoto{u"Il dischetto deve essere vuoto. Vuoi cancellare il contenuto nel disco?"_s, 35,
                                    u"Controllo floppy "_s};
    const MessaggioRegistrato ultimo{u"Inserire l'ultimo disco della serie nel drive."_s, 65, Didascalia};
    struct Caso { const char* nome; int index; QStringList cartelle; QList<int> risposte; Messaggi attesi; } casi[] = {
        {"salvataggio: nessuna cartella, Sì", 0, {}, {RispostaMsg::Si}, {Annullare, Annullata}},
        {"ripristino: nessuna cartella, No, di nuovo, Sì", 1, {}, {RispostaMsg::No, RispostaMsg::Si},
         {Annullare, Annullare, Annullata}},
        {"salvataggio su dischetto pieno, Annulla", 0, {floppy}, {RispostaMsg::Annulla}, {vuoto, annullataBR}},
        {"ripristino dal dischetto, Annulla al disco", 1, {floppy}, {RispostaMsg::Annulla},
         {ultimo, Annullata, Annullata}},
        {"senza archivio, Annulla", 1, {vuota}, {RispostaMsg::Annulla, RispostaMsg::Si},
         {PercorsoErrato, Annullare, Annullata}},
        {"senza archivio, Riprova", 1, {vuota, buona}, {RispostaMsg::Riprova}, {PercorsoErrato, Riuscito}},
        {"salvataggio in cartella protetta", 0, {protetta, vuota}, {RispostaMsg::No}, {Annullare, Riuscito}},
    };
    ArchivioDi(u"Altra"_s, floppy);
    ArchivioDi(u"Cantina Salvata"_s, buona);
    Distilleria(u"Cantina Uno"_s, db());
    const QStringList prima = Dati();
    SolaLettura blocco(protetta);
    // Dove root scrive comunque (nessun attributo immutabile) la cartella protetta si salta.
    const bool protezione = ScritturaNegata(protetta);
    for (const Caso& c : casi) {
        SCOPED_TRACE(c.nome);
        if (c.cartelle.contains(protetta) && !protezione)
            continue;
        EXPECT_EQ(Menu(c.index, c.cartelle, c.risposte), c.attesi);
        EXPECT_TRUE(c.attesi.contains(Riuscito) || Dati() == prima);
        EXPECT_EQ(QDir(floppy).entryList(QDir::Files), QStringList{u"orvelta_2005.bkp"_s});
        EXPECT_FALSE(script->clessidra);
    }
    EXPECT_EQ(sessione().DistilleriaDati.RAGI_SOCI, u"Cantina Salvata"_s);
    EXPECT_TRUE(QDir(protetta).isEmpty()) << "né CHECK né archivio";
    EXPECT_EQ(QFileInfo(Bkp(vuota)).isFile(), protezione);
}

TEST_F(Archivio, ArchiviEstraneiOMaligniNonCambianoNulla)
{
    const QByteArray buono = Byte(QStringLiteral(FERMOLA_DB_PULITO));
    const QString dest = Cartella(u"arrivo"_s);
    QByteArray danneggiato;
    {
        ArchivioDi(u"Altra"_s, dest);
        danneggiato = Byte(Bkp(dest));
        for (qsizetype i = danneggiato.size() / 3; i < danneggiato.size() / 3 + 64; ++i)
            danneggiato[i] = char(danneggiato[i] ^ 0x5a);
    }
    QByteArray sqliteEstraneo, passwordDiversa;
    {
        QTemporaryDir t;
        {
            auto d = Database::Crea(t.filePath(u"pw"_s), u"altra"_s);
            d->Execute(u"CREATE TABLE tab_setup (VERSIONE TEXT)"_s);
        }
        passwordDiversa = Byte(t.filePath(u"pw"_s));
        QFile::copy(QStringLiteral(FERMOLA_DB_PULITO), t.filePath(u"e"_s));
        auto d = Database::Apri(t.filePath(u"e"_s), false, ConnessioneDb);
        d->Execute(u"DROP TABLE tab_setup"_s);
        d->Close();
        sqliteEstraneo = Byte(t.filePath(u"e"_s));
    }
    const QString nomeZip = QDir::toNativeSeparators(Bkp(dest));
    const QString nonNostro = u"L'archivio '"_s + nomeZip +
                              u"' non è un salvataggio di questo programma: deve contenere il solo file orvelta_2005.mdb."_s;
    const QString estraneo = u"Il file orvelta_2005.mdb dell'archivio non è un database di questo programma."_s;
    struct Caso {
        const char* nome;
        QList<std::pair<QByteArray, QByteArray>> voci;  // vuoto: si scrive "grezzo"
        QByteArray grezzo;
        QString motivo;
    } casi[] = {
        {"altre voci", {{"orvelta_2005.mdb", buono}, {"leggimi.txt", "x"}}, {}, nonNostro},
        {"percorso relativo", {{"../x", buono}}, {}, nonNostro},
        {"percorso relativo col nome giusto", {{"../orvelta_2005.mdb", buono}}, {}, nonNostro},
        {"percorso assoluto", {{"/etc/x", buono}}, {}, nonNostro},
        {"zip danneggiato", {}, danneggiato,
         u"L'archivio '"_s + nomeZip + u"' è danneggiato: il file orvelta_2005.mdb non si legge per intero (controllo CRC)."_s},
        {"non è uno zip", {}, "PK\x03\x04 non proprio",
         u"L'archivio '"_s + nomeZip + u"' è danneggiato o non è un archivio zip."_s},
        {"file di un altro programma", {{"orvelta_2005.mdb", "Lettera al commercialista"}}, {}, estraneo},
        {"database SQLite di un altro programma", {{"orvelta_2005.mdb", sqliteEstraneo}}, {}, estraneo},
        {"database con un'altra password", {{"orvelta_2005.mdb", passwordDiversa}}, {}, estraneo},
    };
    Distilleria(u"Cantina Uno"_s, db());
    const QStringList prima = Dati();
    const QByteArray fileProgramma = QDir(cartella->cartella()).entryList().join(u'|').toUtf8();
    for (const Caso& c : casi) {
        SCOPED_TRACE(c.nome);
        if (c.voci.isEmpty()) {
            QFile f(Bkp(dest));
            ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
            f.write(c.grezzo);
        } else {
            ScriviZip(Bkp(dest), c.voci);
        }
        EXPECT_EQ(Menu(1, {dest}), (Messaggi{{c.motivo, 48, u"Backup/Restore"_s}, NonABuonFine, ErroreMenu("Restore")}));
        EXPECT_EQ(Dati(), prima);
        EXPECT_EQ(Contenuto(sessione().PathDatabase), QStringList{u"orvelta_2005.mdb"_s});
        EXPECT_EQ(QDir(cartella->cartella()).entryList().join(u'|').toUtf8(), fileProgramma);
        EXPECT_FALSE(QFileInfo::exists(u"/etc/x"_s));
    }
}

}  // namespace
