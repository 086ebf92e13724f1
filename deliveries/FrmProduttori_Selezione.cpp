#include "deliveries/FrmProduttori_Selezione.h"

#include "common/aiuto.h"
#include "common/piattaforma.h"
#include "deliveries/MetodiDomandaProduttori.h"
#include "printing/StampeConferimenti.h"
#include "shell/FrmMenu.h"
#include "shell/session_state.h"
#include "store/database.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLineEdit>

namespace {

bool Tra(int codice, std::initializer_list<int> codici) { return std::find(codici.begin(), codici.end(), codice) != codici.end(); }

// Unisce una condizione al testo con " and " quando il testo ne ha già una.
void Unisci(IstruzioneSql& testo, const IstruzioneSql& condizione)
{
    if (!testo.testo.trimmed().isEmpty())
        testo += " and ";
    testo += condizione;
}

}  // namespace

FrmProduttori_Selezione::FrmProduttori_Selezione(QWidget* genitore)
    : ListaSelezione({QStringLiteral("FrmProduttori_Selezione"), QStringLiteral("Fra_Sele"), QStringLiteral("Frastampate"),
                      QStringLiteral("Seleziona tutte le  domande  "), QStringLiteral("TDBG_SelProd_3"), false},
                     genitore)
{
    const QString esci = QStringLiteral("Esci");
    const QString help = QStringLiteral("Help");
    AggiungiCornice(QStringLiteral("Fra_Nuovo_Mod_Canc_Esci"),
                    {{1, QStringLiteral("Nuovo")}, {2, QStringLiteral("Modifica")}, {3, QStringLiteral("Cancella")},
                     {5, help}, {4, esci}});
    AggiungiCornice(QStringLiteral("FraSeleziona_Esci"), {{6, QStringLiteral("Seleziona")}, {8, help}, {7, esci}});
    AggiungiCornice(QStringLiteral("FraStampa_Esci"), {{9, QStringLiteral("Stampa")}, {11, help}, {10, esci}});
    AggiungiCornice(QStringLiteral("FraScarico_Esci"), {{12, QStringLiteral("Scarico")}, {14, help}, {13, esci}});
    Form_Load();
}

bool FrmProduttori_Selezione::ApriPerCodice(int codice)
{
    QString cornice;
    if (codice == 7) {
        cornice = QStringLiteral("Fra_Nuovo_Mod_Canc_Esci");
    } else if (Tra(codice, {11, 12, 13})) {
        cornice = QStringLiteral("FraSeleziona_Esci");
    } else if (codice == 16) {
        // Si scaricano solo domande stampate; "Scaricate" resta libera.
        cornice = QStringLiteral("FraScarico_Esci");
        Check1[0]->setChecked(true);
        Check1[1]->setChecked(false);
        Check1[0]->setEnabled(false);
    } else if (Tra(codice, {18, 19, 20})) {
        cornice = QStringLiteral("FraStampa_Esci");
    } else if (codice == 14) {
        if (FrmMenu* menu = FrmMenu::Istanza())
            menu->MostraMaschera(QStringLiteral("FrmProduttore_carico"));
        return false;
    }
    if (QGroupBox* c = Cornice(cornice))
        c->show();
    return true;
}

ListaSelezione::Combo FrmProduttori_Selezione::ComboPerCodice(int codice) const
{
    if (Tra(codice, {7, 11, 12, 13}))
        return Combo::ConRigaVuota;
    if (Tra(codice, {16, 18, 19}))
        return Combo::SullaCampagnaCorrente;
    return Combo::NonRiempita;
}

IstruzioneSql FrmProduttori_Selezione::ImpostaFiltro()
{
    IstruzioneSql filtro;
    const QString numero = TxtSEL_NumDom[0]->text().trimmed();
    if (!numero.isEmpty())
        filtro = IstruzioneSql(QStringLiteral(" DOMANDA = ?"), {numero});
    // Qui il numero resta anche con le due caselle spuntate.
    const bool stampate = Check1[0]->isChecked();
    const bool scaricate = Check1[1]->isChecked();
    if (stampate && scaricate)
        Unisci(filtro, "  scar = 'S'  and stam = 'S'");
    else if (stampate)
        Unisci(filtro, "  stam = 'S' ");
    else if (scaricate)
        Unisci(filtro, "  scar = 'S' ");
    const QString campagna = sessione().CampagnaSelezionata.trimmed();
    if (!campagna.isEmpty())
        Unisci(filtro, IstruzioneSql(QStringLiteral(" (DOMANDE_PRODUTTORI.DATA_CAMP = ?)"), {campagna}));
    if (!filtro.testo.trimmed().isEmpty())
        filtro = " where " + filtro;
    filtro += " Order by domanda,DOMANDE_PRODUTTORI.DATA_CAMP";
    return filtro;
}

QString FrmProduttori_Selezione::ImpostaOrderBy() const
{
    const int codice = Codice();
    if (Tra(codice, {7, 12, 16}))
        return QStringLiteral(" Order by tipo_articolo, domanda");
    if (Tra(codice, {11, 13, 18, 19, 20}))
        return QStringLiteral(" Order by TAB_UTF.ID_DOMANDA,TAB_UTF.NUMERO_CERTIFICATO_UTF,"
                              "TAB_UTF.DESCR_UFFICIO_UTF_PROVINCIA,TAB_UTF.DATA_EMISSIONE_CERTIFICATO ");
    if (codice == 8)
        return QStringLiteral(" Order by Codi_fisc , denominazione ");
    return {};
}

void FrmProduttori_Selezione::Aggiorna(const IstruzioneSql& condizione, const QString& testoAggiunto)
{
    AggiornaGrigliaProduttori(condizione, Griglia, sessione().OperazioneCorrente, nullptr, false, Data, testoAggiunto);
}

void FrmProduttori_Selezione::Colonne()
{
    ColonneGrigliaProduttori(Griglia, sessione().OperazioneCorrente, windowTitle());
}

void FrmProduttori_Selezione::Check1_Click(int)
{
    // Ricarica subito, senza numero e senza campagna: la ricerca seguente
    // riporta la campagna.
    Protetto(objectName() + QStringLiteral(" Check1_Click"), [&] {
        TxtSEL_NumDom[0]->clear();
        const bool stampate = Check1[0]->isChecked();
        const bool scaricate = Check1[1]->isChecked();
        QString condizione;
        if (stampate && scaricate)
            condizione = QStringLiteral(" scar = 'S' and stam = 'S'");
        else if (stampate)
            condizione = QStringLiteral(" stam = 'S' ");
        else if (scaricate)
            condizione = QStringLiteral(" scar = 'S' ");
        sessione().StrSql = condizione;
        CaricaLista((condizione.trimmed().isEmpty() ? QString() : QStringLiteral("where ") + condizione) +
                    QStringLiteral(" ORDER BY domanda"));
    });
}

void FrmProduttori_Selezione::RigaCambiata()
{
    if (RigaCorrente() >= 0)
        SEL_RECORD(Codice());
}

void FrmProduttori_Selezione::SEL_RECORD(int operazione)
{
    Protetto(QStringLiteral("FrmSelezione.SEL_RECORD"), [&] {
        if (Campo(QStringLiteral("DOMANDA")).testo().trimmed().isEmpty())
            return;
        DomandaProduttoreSelezionata& d = sessione().DomandaProduttoreSel;
        d.ID_DOMANDA_PRODUTTORE = static_cast<qint32>(Campo(QStringLiteral("ID_DOMANDA_PRODUTTORE")).intero());
        d.DOMANDA = Campo(QStringLiteral("DOMANDA")).testo();
        d.STAM = Campo(QStringLiteral("STAM")).testo();
        d.SCAR = Campo(QStringLiteral("SCAR")).testo();
        d.TIPO_ARTICOLO = Campo(QStringLiteral("TIPO_ARTICOLO")).testo();
        d.PROG_VERS = Campo(QStringLiteral("PROG_VERS")).testo();
        d.ANTICIPO_RICEVUTO = Campo(QStringLiteral("ANTICIPO_RICEVUTO")).testo();
        d.PROG_INVIO = static_cast<qint32>(Campo(QStringLiteral("PROG_INVIO")).intero());
        d.CAMPAGNA = Campo(QStringLiteral("DOMANDE_PRODUTTORI.DATA_CAMP")).testo();
        if (operazione != 11 && operazione != 13)
            return;
        UtfSelezionato& u = sessione().UtfSel;
        const auto utf = [this](const char* nome) { return Campo(QStringLiteral("TAB_UTF.") + QLatin1String(nome)); };
        u.iD_UTF = static_cast<qint32>(utf("iD_UTF").intero());
        u.iD_DOMANDA = static_cast<qint32>(utf("iD_DOMANDA").intero());
        u.NUMERO_CERTIFICATO_UTF = utf("NUMERO_CERTIFICATO_UTF").testo();
        u.DATA_EMISSIONE_CERTIFICATO = utf("DATA_EMISSIONE_CERTIFICATO").testo();
        u.QTA_TOT_VINO_LAVORATO = utf("QTA_TOT_VINO_LAVORATO").testo();
        u.QTA_TOT_ETTOGRADI_VINO_LAVORATO = utf("QTA_TOT_ETTOGRADI_VINO_LAVORATO").testo();
        u.QTA_TOT_ALCOLE_NEUTRO_OTTENUTO = utf("QTA_TOT_ALCOLE_NEUTRO_OTTENUTO").testo();
        u.QTA_TOT_ALCOLE_GREZZO_OTTENUTO = utf("QTA_TOT_ALCOLE_GREZZO_OTTENUTO").testo();
        u.QTA_TOT_ACQUAVITE_OTTENUTO = utf("QTA_TOT_ACQUAVITE_OTTENUTO").testo();
    });
}

void FrmProduttori_Selezione::ChiamaFORM(int operazione)
{
    switch (operazione) {
    case 7: ApriSeguente(QStringLiteral("Frmproduttore_Domanda")); break;
    case 8: ApriSeguente(QStringLiteral("FrmProduttore")); break;
    case 11: ApriSeguente(QStringLiteral("frmProduttore_Utf")); break;
    case 12: ApriSeguente(QStringLiteral("frmProduttori_CambioDomanda")); break;
    case 13: ApriSeguente(QStringLiteral("frmProduttori_CambioUtf")); break;
    case 16: ApriSeguente(QStringLiteral("frmProduttori_Scarico")); break;
    default: break;
    }
    Cerca();
}

void FrmProduttori_Selezione::Esegui(int indice)
{
    const int codice = Codice();
    switch (indice) {
    case 0: Cerca(); break;
    case 1:
        sessione().ModoMaschera = QStringLiteral("I");
        ChiamaFORM(codice);
        break;
    case 2:
        // Più righe selezionate non si rifiutano: vale la corrente.
        if (!AlmenoUnaRiga())
            return;
        sessione().ModoMaschera = QStringLiteral("M");
        SEL_RECORD(codice);
        ChiamaFORM(codice);
        break;
    case 3: Cancella(); break;
    case 4:
    case 7:
    case 10:
    case 13: Scarica(); break;
    case 5:
        Help(codice == 7    ? QStringLiteral("Frmproduttore_Domanda")
             : codice == 11 ? QStringLiteral("frmProduttore_Utf")
             : codice == 8  ? QStringLiteral("frmProduttore")
                            : QString());
        break;
    case 6: Seleziona(); break;
    case 8: Help(codice == 0 ? QStringLiteral("FRMSELEZIONE_DOMA") : QString()); break;
    case 9: Stampa(); break;
    case 11: Help(QStringLiteral("FRMSELEZIONE_STAMPA")); break;
    case 12: Scarico(); break;
    case 14: Help(QStringLiteral("frmProduttori_Scarico")); break;
    default: break;
    }
}

void FrmProduttori_Selezione::Cancella()
{
    if (!AlmenoUnaRiga())
        return;
    SEL_RECORD(Codice());
    const DomandaProduttoreSelezionata& d = sessione().DomandaProduttoreSel;
    if (MsgBox(QStringLiteral("Confermi la cancellazione della domanda : ") + d.DOMANDA,
               StileMsg::SiNo + StileMsg::SecondoPredefinito + StileMsg::Informazione,
               sessione().TitoloMaschera) != RispostaMsg::Si)
        return;
    // Una domanda con certificati resta.
    const IstruzioneSql certificati =
        QueryListaProduttori(QStringLiteral("711")) +
        IstruzioneSql(QStringLiteral("where id_domanda_produttore= ?"), {d.ID_DOMANDA_PRODUTTORE});
    bool conCertificati = false;
    for (Recordset rs = Db().OpenRecordset(certificati.testo, certificati.parametri); !rs.eof(); rs.MoveNext())
        conCertificati = conCertificati || rs.Fields(QStringLiteral("iD_UTF")).intero() != 0;
    if (conCertificati) {
        MsgBox(QStringLiteral("Operazione non eseguita.") + QStringLiteral("\r\n") +
                   QStringLiteral("Verificare eventuale presenza di certificati UTF."),
               StileMsg::Esclamativo);
    } else if (MetodiDOMANDA_produttori(2, QStringLiteral("where id_domanda_produttore=") +
                                               QString::number(d.ID_DOMANDA_PRODUTTORE))) {
        MsgBox(QStringLiteral("Operazione correttamente eseguita."), StileMsg::Informazione);
    } else {
        MsgBox(QStringLiteral("Operazione non eseguita, verificare eventuale presenza di fatture."), StileMsg::Esclamativo);
    }
    Cerca();
}

void FrmProduttori_Selezione::Seleziona()
{
    if (!AlmenoUnaRiga())
        return;
    const int codice = Codice();
    const QString seguente = codice == 11   ? QStringLiteral("FrmProduttore_SelezionaProd")
                             : codice == 12 ? QStringLiteral("frmProduttori_CambioDomanda")
                             : codice == 13 ? QStringLiteral("frmProduttori_CambioUtf")
                                            : QString();
    if (seguente.isEmpty())
        return;
    SEL_RECORD(codice);
    ApriSeguente(seguente);
    // Il numero cambiato si vede subito nella lista.
    Cerca();
}

void FrmProduttori_Selezione::Stampa()
{
    RigaStampaConferimenti riga;
    riga.righeSelezionate = RigheSelezionate();
    riga.didascaliaMaschera = windowTitle();
    if (RigaCorrente() >= 0) {
        riga.domanda = Campo(QStringLiteral("DOMANDA")).testo();
        riga.certificato = Campo(QStringLiteral("TAB_UTF.NUMERO_CERTIFICATO_UTF")).testo();
        riga.idDomandaProduttore = Campo(QStringLiteral("ID_DOMANDA_PRODUTTORE")).testo();
        riga.chiaveCampagna = Campo(8).testo();
    }
    const int codice = Codice();
    if (codice == 18) {
        // La domanda segnata come stampata: la ricerca ricostruisce la lista.
        if (StampaDomandaProduttore(riga))
            Cerca();
    } else if (codice == 19) {
        StampaUTF(riga);
    }
}

void FrmProduttori_Selezione::Scarico()
{
    // Nessun controllo sulla selezione: vale la riga corrente, che
    // DomandaProduttoreSel segue. Una domanda non stampata non apre nulla.
    if (RigaCorrente() >= 0 && sessione().DomandaProduttoreSel.STAM == QLatin1String("S"))
        ApriSeguente(QStringLiteral("frmProduttori_Scarico"));
    Cerca();
}

void FrmProduttori_Selezione::F1()
{
    // I codici che F1 guarda sono quelli del ramo fatture: qui mostra
    // l'aiuto una volta, con l'argomento che aveva.
    MostraHelp(NomeHelp);
}
