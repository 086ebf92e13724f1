#pragma once
// Le due liste delle domande (fatture e conferimenti) poggiano sulla stessa
// base: una suite sola, che ogni ramo istanzia con i suoi dati e i suoi casi.
// Le prove di ciò che un ramo ha di suo usano la stessa fixture nel file del ramo.

#include "common/ListaSelezione.h"
#include "common/aiuto.h"
#include "shell/registro_maschere.h"
#include "support/maschere_finte.h"
#include "support/prova.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>

struct CasoApertura {
    int codice;
    QString titolo, cornice;
    QString proprio;  // ciò che il ramo mostra di suo (RamoLista::proprio)
    bool stampate, stampateLibera, scaricateLibera;
    QString campagna;
    QStringList righe;
};

struct CasoRicerca {
    int codice;
    const char *numero, *secondo;
    bool stampate, scaricate;
    int campagna;  // voce della combo scelta, -1 nessuna
    QStringList righe;
};

struct CasoConsegna { int codice, pulsante; QList<int> selezionate; int corrente; QString messaggio, aperta; };
struct CasoCancellazione { int riga, risposta; Messaggi dopo; int restano; };
struct CasoAiuto { int codice, pulsante; QString argomento; };

struct RamoLista {
    const char* nome;
    QStringList semina;              // le righe del database
    QStringList seguenti;            // le maschere che la lista apre, finte
    std::function<QString()> fotografia;
    std::function<std::unique_ptr<ListaSelezione>()> crea;
    std::function<QString(const ModelloLista&, int)> riga;
    std::function<QString(ListaSelezione&)> proprio;
    QStringList cornici;
    int colonna;                     // una colonna visibile della griglia
    QString modoIniziale;            // ModoMaschera prima di ogni consegna
    int codiceDomande, cancella;     // il lavoro delle domande e il suo "Cancella"
    QString titoloDomande, figlie;   // figlie: le righe che la cancellazione non tocca
    int aiutiPerF1;                  // quante volte F1 mostra l'aiuto
    QList<CasoApertura> apertura;
    QList<CasoRicerca> ricerca;
    QList<CasoConsegna> consegna;
    QList<CasoCancellazione> cancellazione;
    QList<CasoAiuto> aiuto;
};

inline void PrintTo(const RamoLista& r, std::ostream* os) { *os << r.nome; }

class ListaDomande : public ProvaConDatabase, public ::testing::WithParamInterface<RamoLista> {
protected:
    void SetUp() override
    {
        ProvaConDatabase::SetUp();
        AnnullaRegistrazioni();
        for (const QString& sql : GetParam().semina)
            db().Execute(sql);
        help = ImpostaMostraHelp([this](const QString& nome) { aiuti << nome; });
        finte = std::make_unique<MaschereFinte>(GetParam().seguenti, GetParam().fotografia);
    }
    void TearDown() override
    {
        lista.reset();
        ImpostaMostraHelp(help);
        AnnullaRegistrazioni();
        ProvaConDatabase::TearDown();
    }

    ListaSelezione& Apri(int codice, const QString& titolo = QStringLiteral("Titolo"))
    {
        db();
        sessione().OperazioneCorrente = codice;
        sessione().TitoloMaschera = titolo;
        lista.reset();  // una sola istanza alla volta, come nel programma
        lista = GetParam().crea();
        return *lista;
    }
    QStringList Righe() const
    {
        QStringList r;
        for (int i = 0; i < lista->Data->rowCount(); ++i)
            r << GetParam().riga(*lista->Data, i);
        return r;
    }
    void Seleziona(const QList<int>& righe, int corrente)
    {
        SelezionaRighe(lista->Griglia, righe, corrente, GetParam().colonna);
    }
    QString Cornice() const
    {
        for (const QString& nome : GetParam().cornici)
            if (!lista->Cornice(nome)->isHidden())
                return nome;
        return {};
    }
    // La campagna scelta dalla combo, come un clic dell'utente.
    static void ScegliCampagna(ListaSelezione& f, int voce)
    {
        f.CmbDomAnnualita->setCurrentIndex(voce);
        emit f.CmbDomAnnualita->activated(voce);
    }

    std::unique_ptr<ListaSelezione> lista;
    std::unique_ptr<MaschereFinte> finte;
    QStringList aiuti;
    FunzioneHelp help;
};

TEST_P(ListaDomande, Apertura)
{
    for (const CasoApertura& c : GetParam().apertura) {
        SCOPED_TRACE(c.codice);
        ListaSelezione& f = Apri(c.codice, c.titolo);
        EXPECT_EQ(f.windowTitle(), QStringLiteral("Elenco ") + c.titolo);
        EXPECT_EQ(Cornice(), c.cornice);
        EXPECT_EQ(GetParam().proprio(f), c.proprio);
        EXPECT_EQ(f.Check1[0]->isChecked(), c.stampate);
        EXPECT_FALSE(f.Check1[1]->isChecked());
        EXPECT_EQ(f.Check1[0]->isEnabled(), c.stampateLibera);
        EXPECT_EQ(f.Check1[1]->isEnabled(), c.scaricateLibera);
        EXPECT_EQ(f.CmbDomAnnualita->currentText(), c.campagna);
        EXPECT_EQ(sessione().CampagnaSelezionata, c.campagna);
        EXPECT_EQ(Righe(), c.righe);
        f.close();
        EXPECT_EQ(sessione().CampagnaSelezionata, QString());
    }
    EXPECT_EQ(script->messaggi, Messaggi{});
}

TEST_P(ListaDomande, Ricerca)
{
    for (const CasoRicerca& c : GetParam().ricerca) {
        SCOPED_TRACE(std::string(c.numero) + "|" + c.secondo);
        ListaSelezione& f = Apri(c.codice);
        f.TxtSEL_NumDom[0]->setText(QString::fromUtf8(c.numero));
        if (*c.secondo)
            f.TxtSEL_NumDom[1]->setText(QString::fromUtf8(c.secondo));
        f.Check1[0]->setChecked(c.stampate);
        f.Check1[1]->setChecked(c.scaricate);
        if (c.campagna >= 0)
            ScegliCampagna(f, c.campagna);
        else
            f.Cmddati[0]->click();
        EXPECT_EQ(Righe(), c.righe);
    }
    EXPECT_EQ(script->messaggi, Messaggi{});
}

// Nei campi di ricerca solo cifre e virgola; Invio cerca.
TEST_P(ListaDomande, TastiDiRicerca)
{
    ListaSelezione& f = Apri(GetParam().codiceDomande);
    f.show();
    const qsizetype tutte = Righe().size();
    QTest::keyClicks(f.TxtSEL_NumDom[0], QStringLiteral("1a'2,3"));
    EXPECT_EQ(f.TxtSEL_NumDom[0]->text(), QStringLiteral("12,3"));
    EXPECT_EQ(script->beep, 2);
    QTest::keyClick(f.TxtSEL_NumDom[0], Qt::Key_Return);
    EXPECT_EQ(Righe(), QStringList{});
    f.TxtSEL_NumDom[0]->clear();
    QTest::keyClick(f.TxtSEL_NumDom[0], Qt::Key_Enter);
    EXPECT_EQ(Righe().size(), tutte);
}

TEST_P(ListaDomande, Consegna)
{
    for (const CasoConsegna& c : GetParam().consegna) {
        SCOPED_TRACE(QStringLiteral("%1/%2 %3").arg(c.codice).arg(c.pulsante).arg(c.selezionate.size()).toStdString());
        script->AccettaMessaggiSenzaRisposta();
        sessione().DomandaSel = {};
        sessione().UtfSel = {};
        sessione().ModoMaschera = GetParam().modoIniziale;
        ListaSelezione& f = Apri(c.codice);
        script->messaggi.clear();
        finte->aperte.clear();
        Seleziona(c.selezionate, c.corrente);
        f.Cmddati_Click(c.pulsante);
        const Messaggi attesi =
            c.messaggio.isEmpty() ? Messaggi{} : Messaggi{{c.messaggio, 64, QStringLiteral("Titolo")}};
        EXPECT_EQ(script->messaggi, attesi);
        EXPECT_EQ(finte->aperte, c.aperta.isEmpty() ? QStringList{} : QStringList{c.aperta});
        f.close();
    }
}

TEST_P(ListaDomande, Cancellazione)
{
    const RamoLista& ramo = GetParam();
    const QStringList figlie = ::Righe(db(), ramo.figlie);
    for (const CasoCancellazione& c : ramo.cancellazione) {
        SCOPED_TRACE(c.riga);
        ListaSelezione& f = Apri(ramo.codiceDomande, ramo.titoloDomande);
        const QString numero = f.Data->Campo(c.riga, QStringLiteral("DOMANDA")).testo();
        script->messaggi.clear();
        script->Rispondi(c.risposta);
        if (!c.dopo.isEmpty())
            script->Rispondi(RispostaMsg::OK);
        Seleziona({c.riga}, c.riga);
        f.Cmddati_Click(ramo.cancella);
        const Messaggi attesi =
            Messaggi{{QStringLiteral("Confermi la cancellazione della domanda : ") + numero, 4 + 256 + 64,
                      ramo.titoloDomande}} +
            c.dopo;
        EXPECT_EQ(script->messaggi, attesi);
        EXPECT_EQ(Righe().size(), c.restano);
    }
    EXPECT_EQ(::Righe(db(), ramo.figlie), figlie);
}

// Il pulsante Help, poi F1 sulla griglia e in un campo di ricerca. Un
// pulsante che non imposta l'argomento mostra quello di prima.
TEST_P(ListaDomande, Aiuto)
{
    for (const CasoAiuto& c : GetParam().aiuto) {
        SCOPED_TRACE(c.codice);
        ListaSelezione& f = Apri(c.codice);
        f.show();
        aiuti.clear();
        f.Cmddati_Click(c.pulsante);
        QTest::keyClick(f.Griglia, Qt::Key_F1);
        QTest::keyClick(f.TxtSEL_NumDom[0], Qt::Key_F1);
        EXPECT_EQ(aiuti, QStringList(1 + 2 * GetParam().aiutiPerF1, c.argomento));
    }
}
