#include "invoices/FrmSelezione.h"

#include "common/aiuto.h"
#include "common/errore.h"
#include "common/numeri.h"
#include "common/piattaforma.h"
#include "printing/StampeFatture.h"
#include "shell/session_state.h"
#include "store/database.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>

namespace {

const QString NessunaRiga = QStringLiteral("Selezionare almeno una domanda.");

}  // namespace

FrmSelezione::FrmSelezione(QWidget* genitore)
    : ListaSelezione({QStringLiteral("FrmSelezione"), QStringLiteral("Fra_Selezuione"), QStringLiteral("AFraSelezione"),
                      QStringLiteral("Domande"), QStringLiteral("TDBG_DISTILLA"), true},
                     genitore)
{
    const QString esci = QStringLiteral("Esci");
    const QString help = QStringLiteral("Help");
    AggiungiCornice(QStringLiteral("Fradomande"),
                    {{1, QStringLiteral("Nuovo")}, {2, QStringLiteral("Modifica")}, {6, QStringLiteral("Cancella")},
                     {13, help}, {3, esci}});
    AggiungiCornice(QStringLiteral("Frafatture"), {{4, QStringLiteral("Seleziona")}, {11, help}, {5, esci}});
    AggiungiCornice(QStringLiteral("FrasTAMPA"),
                    {{8, QStringLiteral("Fatture")}, {15, QStringLiteral("Bolle")}, {12, help}, {7, esci}});
    AggiungiCornice(QStringLiteral("FraScarico"), {{10, QStringLiteral("Scarico")}, {14, help}, {9, esci}});
    Form_Load();
}

bool FrmSelezione::ApriPerCodice(int codice)
{
    QString cornice;
    QString etichetta = QStringLiteral("N° Progressivo ");
    int lunghezza = 2;
    switch (codice) {
    case 0: cornice = QStringLiteral("Fradomande"); break;
    case 1:
        cornice = QStringLiteral("Frafatture");
        etichetta = QStringLiteral("N° Fattura ");
        lunghezza = 15;
        break;
    case 3: cornice = QStringLiteral("Frafatture"); break;
    case 4:
        // Si scaricano solo domande stampate: le caselle non si toccano.
        cornice = QStringLiteral("FraScarico");
        Check1[0]->setChecked(true);
        Check1[0]->setEnabled(false);
        Check1[1]->setEnabled(false);
        break;
    case 5: cornice = QStringLiteral("FrasTAMPA"); break;
    default: break;
    }
    LblSEL_NumDom[1]->setText(etichetta);
    TxtSEL_NumDom[1]->setMaxLength(lunghezza);
    if (QGroupBox* c = Cornice(cornice))
        c->show();
    return true;
}

ListaSelezione::Combo FrmSelezione::ComboPerCodice(int codice) const
{
    return codice == 4 || codice == 5 ? Combo::SullaCampagnaCorrente : Combo::ConRigaVuota;
}

IstruzioneSql FrmSelezione::ImpostaFiltro()
{
    const QString numero = TxtSEL_NumDom[0]->text().trimmed();
    const QString secondo = TxtSEL_NumDom[1]->text().trimmed();
    const QString campo = Codice() == 1 ? QStringLiteral("NUME_FATT") : QStringLiteral("PROGRESSIVO");

    IstruzioneSql filtro;
    if (!numero.isEmpty() && !secondo.isEmpty())
        filtro = IstruzioneSql(QStringLiteral(" AND (DOMANDA = ? AND ") + campo + QStringLiteral(" = ?)"), {numero, secondo});
    else if (!numero.isEmpty())
        filtro = IstruzioneSql(QStringLiteral(" AND DOMANDA = ?"), {numero});
    else if (!secondo.isEmpty())
        filtro = IstruzioneSql(QStringLiteral(" AND ") + campo + QStringLiteral("= ?"), {secondo});

    // Con le due caselle spuntate numero e progressivo si ignorano: voluto.
    const bool stampate = Check1[0]->isChecked();
    const bool scaricate = Check1[1]->isChecked();
    if (stampate && scaricate)
        filtro = IstruzioneSql(" and scar = 'S'  and stam = 'S'");
    else if (stampate)
        filtro += " and stam = 'S' ";
    else if (scaricate)
        filtro += "  and scar = 'S' ";

    const QString campagna = sessione().CampagnaSelezionata;
    if (!campagna.trimmed().isEmpty()) {
        const bool conTabella = TitoloApertura == QLatin1String("FATTURE") || TitoloApertura == QLatin1String("DOMANDE");
        filtro += IstruzioneSql(conTabella ? QStringLiteral(" AND (DOMANDE.DATA_CAMP = ?") : QStringLiteral(" AND (DATA_CAMP = ?"),
                                {campagna});
        filtro += ")";
    }
    filtro += " Order by domanda,progressivo,DOMANDE.DATA_CAMP";
    return filtro;
}

QString FrmSelezione::TestoAggiunto() const { return QStringLiteral(" Order by domanda,progressivo"); }

void FrmSelezione::Aggiorna(const IstruzioneSql& condizione, const QString& testoAggiunto)
{
    AggiornaGrigliaDomande(condizione, Griglia, sessione().OperazioneCorrente, nullptr, false, Data, testoAggiunto);
}

void FrmSelezione::Colonne() { ColonneGrigliaDomande(Griglia, sessione().OperazioneCorrente, windowTitle()); }

void FrmSelezione::SEL_RECORD(int operazione)
{
    Protetto(QStringLiteral("FrmSelezione.SEL_RECORD"), [&] {
        DomandaSelezionata& d = sessione().DomandaSel;
        d.ID_DOMANDA = static_cast<qint32>(Campo(QStringLiteral("DOMANDE.ID_DOMANDA")).intero());
        d.DOMANDA = Campo(QStringLiteral("DOMANDA")).testo();
        d.PROGRESSIVO = Campo(QStringLiteral("PROGRESSIVO")).testo();
        d.STAM = Campo(QStringLiteral("STAM")).testo();
        d.SCAR = Campo(QStringLiteral("SCAR")).testo();
        d.TIPO_ARTICOLO = Campo(QStringLiteral("DOMANDE.TIPO_ARTICOLO")).testo();
        d.ID_VARIETA = Campo(QStringLiteral("ID_VARIETA")).testo();
        d.PROG_VERS = Campo(QStringLiteral("PROG_VERS")).testo();
        d.PRODOTTO = Campo(QStringLiteral("PRODOTTO")).testo() + QLatin1Char(' ') +
                     Campo(QStringLiteral("DESCRIZIONE_PRODOTTO")).testo();
        d.PROG_INVIO = static_cast<qint32>(Campo(QStringLiteral("PROG_INVIO")).intero());
        d.CAMPAGNA = Campo(QStringLiteral("DOMANDE.DATA_CAMP")).testo();
        if (operazione != 1)
            return;
        // Nessuno li usa: FrmSelezionaFatture riempie di nuovo FatturaSel dalla sua griglia.
        FatturaSelezionata& f = sessione().FatturaSel;
        const auto fattura = [this](const char* nome) { return Campo(QStringLiteral("FATTURE.") + QLatin1String(nome)).testo(); };
        f.ID_DOMANDA = static_cast<qint32>(Val(fattura("ID_DOMANDA")));
        f.CODI_FISC = fattura("CODI_FISC");
        f.DENOMINAZIONE = fattura("DENOMINAZIONE");
        f.NUME_FATT = fattura("NUME_FATT");
        f.DATA_FATT = fattura("DATA_FATT");
        f.QTA_PROD = fattura("QTA_PROD");
        f.GRAD = fattura("GRAD");
        f.PREZ_MINI = fattura("PREZ_MINI");
        f.IMPO = fattura("IMPO");
        f.IVA = fattura("IVA");
        f.IMPO_TOTA = fattura("IMPO_TOTA");
        f.DATA_PAGA = fattura("DATA_PAGA");
        f.DATA_COMP = fattura("DATA_COMP");
        f.QTA_LAVO = fattura("QTA_LAVO");
        f.ID_LAVORAZIONE = fattura("ID_LAVORAZIONE");
    });
}

void FrmSelezione::ChiamaFORM(int operazione)
{
    switch (operazione) {
    case 0: ApriSeguente(QStringLiteral("FrmDomanda")); break;
    case 1: ApriSeguente(QStringLiteral("FrmSelezionaFatture")); break;
    case 3: ApriSeguente(QStringLiteral("frmCambioDomanda")); break;
    case 4: ApriSeguente(QStringLiteral("frmScarico")); break;
    default: break;
    }
    Cerca();
}

bool FrmSelezione::VerificaCongruenzaQuantitaProdotto()
{
    bool esito = false;
    Protetto(QStringLiteral("FrmSelezione VerificaCongruenzaQuantitaProdotto"), [&] {
        QString elenco;
        Recordset fatture = Db().OpenRecordset(QStringLiteral("select * from fatture where ID_DOMANDA = ?"),
                                               {Campo(QStringLiteral("DOMANDE.ID_DOMANDA")).variante()});
        for (; !fatture.eof(); fatture.MoveNext()) {
            // In singola precisione, come il programma originale: i due lati
            // si confrontano arrotondati a quattro decimali.
            const float lavorata = static_cast<float>(CDbl(QStringLiteral("0") + fatture.Fields(QStringLiteral("QTA_LAVO")).testo()));
            float bolle = 0;
            Recordset somma = Db().OpenRecordset(
                QStringLiteral("select sum(csng(QUANTITA_PRODOTTO)) as somma from bolle where FK_ID_FATTURA = ?"),
                {fatture.Fields(QStringLiteral("Id_fattura")).variante()});
            if (!somma.eof()) {
                // Una fattura senza bolle ha la somma Null: la conversione fallisce.
                const Valore s = somma.Fields(QStringLiteral("somma"));
                if (s.isNull())
                    throw ErroreSistema(94, QStringLiteral("Utilizzo non valido di Null"));
                bolle = static_cast<float>(s.numero());
            }
            if (Round(Decimale::daSingle(bolle), 4) != Round(Decimale::daSingle(lavorata), 4))
                elenco += QStringLiteral("\r\n - ") + fatture.Fields(QStringLiteral("Denominazione")).testo() +
                          QStringLiteral(" fattura n° ") + fatture.Fields(QStringLiteral("NUME_FATT")).testo();
        }
        if (!elenco.trimmed().isEmpty()) {
            MsgBox(QStringLiteral("La domanda presenta incogruenze tra la somma") + QStringLiteral("\r\n") +
                       QStringLiteral("del prodotto distillato delle fatture e la somma del prodotto delle bolle di "
                                      "consegna.") +
                       elenco,
                   StileMsg::Informazione, windowTitle());
            return;
        }
        esito = true;
    });
    return esito;
}

void FrmSelezione::Esegui(int indice)
{
    const int codice = Codice();
    switch (indice) {
    case 0: Cerca(); break;
    case 1:
    case 4:
    case 8:
    case 10: Prosegui(); break;
    case 2: Modifica(); break;
    case 3:
    case 5:
    case 7:
    case 9: Scarica(); break;
    case 6: Cancella(); break;
    case 11: Help(codice == 3 ? QStringLiteral("FRMSELEZIONE_CAMBIO") : QStringLiteral("FRMSELEZIONE_FATTU")); break;
    case 12: Help(QStringLiteral("FRMSELEZIONE_STAMPA")); break;
    case 13: Help(codice == 0 ? QStringLiteral("FRMSELEZIONE_DOMA") : QString()); break;
    case 14: Help(QStringLiteral("frmScarico")); break;
    case 15: Bolle(); break;
    default: break;
    }
}

void FrmSelezione::Prosegui()
{
    sessione().ModoMaschera = QStringLiteral("I");
    const int codice = Codice();
    if (codice == 0) {
        ChiamaFORM(codice);
        return;
    }
    if ((codice == 1 || codice == 3 || codice == 4 || codice == 5) &&
        !UnaSolaRiga(NessunaRiga, QStringLiteral("Selezionare una domanda alla volta.")))
        return;
    SEL_RECORD(codice);
    if (codice == 4) {
        // Il controllo avverte e non blocca.
        VerificaCongruenzaQuantitaProdotto();
        if (sessione().DomandaSel.STAM == QLatin1String("S"))
            ChiamaFORM(codice);
    } else if (codice == 5) {
        if (STAMPA(Campo(QStringLiteral("DOMANDE.DATA_CAMP")).testo())) {
            Db().Execute(QStringLiteral("UPDATE DOMANDE SET stam =  'S' where id_domanda = ?"),
                         {sessione().DomandaSel.ID_DOMANDA});
            if (Db().RecordsAffected() == 0)
                Avviso(QStringLiteral("Flag di stampa non aggiornato , rifare la stampa."));
        }
    } else if (codice == 1 || codice == 3) {
        ChiamaFORM(codice);
    }
    Cerca();
}

void FrmSelezione::Modifica()
{
    // Più righe selezionate non si rifiutano: vale la corrente.
    if (!AlmenoUnaRiga())
        return;
    sessione().ModoMaschera = QStringLiteral("M");
    SEL_RECORD(Codice());
    ChiamaFORM(Codice());
}

void FrmSelezione::Cancella()
{
    if (!AlmenoUnaRiga())
        return;
    SEL_RECORD(Codice());
    if (MsgBox(QStringLiteral("Confermi la cancellazione della domanda : ") + sessione().DomandaSel.DOMANDA,
               StileMsg::SiNo + StileMsg::SecondoPredefinito + StileMsg::Informazione,
               sessione().TitoloMaschera) == RispostaMsg::Si) {
        // Le fatture trattengono la domanda, come la relazione tra le due
        // tabelle nel database originale: non si cancellano mai da qui.
        Db().Execute(QStringLiteral("DELETE FROM DOMANDE WHERE id_domanda = ? AND NOT EXISTS "
                                    "(SELECT 1 FROM FATTURE WHERE FATTURE.ID_DOMANDA = DOMANDE.ID_DOMANDA)"),
                     {sessione().DomandaSel.ID_DOMANDA});
        if (Db().RecordsAffected() != 0)
            MsgBox(QStringLiteral("Operazione correttamente eseguita."), StileMsg::Informazione);
        else
            MsgBox(QStringLiteral("Operazione non eseguita, verificare eventuale presenza di fatture."),
                   StileMsg::Esclamativo);
    }
    Cerca();
}

void FrmSelezione::Bolle()
{
    // Nessun segno di stampa per le bolle.
    if (!UnaSolaRiga(QStringLiteral("Selezionare una domanda."), QStringLiteral("Selezionare una sola domanda.")))
        return;
    StampaBolleDomanda(Campo(QStringLiteral("DOMANDE.ID_DOMANDA")).testo(), Campo(QStringLiteral("DOMANDA")).testo(),
                       Campo(QStringLiteral("PROGRESSIVO")).testo(), Campo(QStringLiteral("DOMANDE.DATA_CAMP")).testo());
}

void FrmSelezione::F1()
{
    // Il pulsante Help della cornice mostra l'aiuto, poi F1 lo mostra ancora:
    // l'aiuto compare due volte, come nel programma originale.
    switch (Codice()) {
    case 4: Cmddati_Click(14); break;
    case 5: Cmddati_Click(12); break;
    case 1:
    case 3: Cmddati_Click(11); break;
    case 0: Cmddati_Click(13); break;
    default: break;
    }
    MostraHelp(NomeHelp);
}
