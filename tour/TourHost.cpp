#include "tour/TourHost.h"

#include "host/Application.h"
#include "host/HostCommands.h"
#include "platform/data/Connection.h"
#include "tour/Part.h"

#include <QComboBox>
#include <QListWidget>
#include <QTableView>
#include <QTreeWidget>

using namespace Qt::StringLiterals;

namespace tour {

namespace {

class Host : private Part
{
public:
    Host(Visit &visit, host::Session &session)
        : Part(visit, session)
    {
    }

    void article();
    void usedArticle();
    void customer();
    void categories();
    void tables();
    void usersAndRoles();
    void settings();

private:
    void answerText(const QString &text);
};

void Host::answerText(const QString &text)
{
    expectDialog([this, text](QDialog &dialog) {
        type(&dialog, u"txtTesto"_s, text);
        press(&dialog, u"cmdOk"_s);
    });
}

void Host::article()
{
    tell(u"Un articolo nuovo"_s);
    QWidget *list = openOfHost(u"actRicercaArticoli"_s);
    picture(u"elenco-articoli"_s);
    trigger(list, u"actNuovo"_s);
    QWidget *form = opened(u"InserimentoArticoli"_s);
    expectWarning(u"Non è stato indicato il codice!"_s);
    type(form, u"txtDescrizione"_s, u"Lucchetto d'ottone 40 mm"_s);
    trigger(form, u"actSalva"_s);
    type(form, u"txtCodice"_s, u"OTT-0040"_s);
    pick(form, u"txtUM"_s, u"PZ"_s);
    pick(form, u"txtAliquotaIVA"_s,
         one(u"SELECT CODICE || ' - ' || DESCRIZIONE FROM ALIQUOTE_IVA WHERE CODICE='22'"_s));
    control<QComboBox>(form, u"txtCategoria"_s)->setCurrentIndex(1);
    type(form, u"txtPrezzo"_s, u"7,9"_s);
    type(form, u"txtCosto"_s, u"4,25"_s);
    type(form, u"txtSottoscorta"_s, u"10"_s);
    type(form, u"txtRiordino"_s, u"25"_s);
    picture(u"articolo"_s);
    pictureAtSmallestSize(form, u"articolo"_s);
    pictureAtSmallestSize(list, u"elenco-articoli"_s);
    trigger(form, u"actSalva"_s);
    check(u"prezzo registrato"_s, decimal(u"SELECT PREZZO FROM ANA_MAGA WHERE CODICE = 'OTT-0040'"_s), u"7,90"_s);

    tell(u"Lo stesso codice, scritto in minuscolo, viene rifiutato"_s);
    trigger(form, u"actNuovo"_s);
    type(form, u"txtCodice"_s, u"ott-0040"_s);
    type(form, u"txtDescrizione"_s, u"Doppione"_s);
    expectWarning(u"Codice già utilizzato!"_s);
    trigger(form, u"actSalva"_s);
    expectQuestion(u"Salvare le modifiche"_s, core::Answer::No);
    close(form);

    tell(u"Un articolo mai usato si può eliminare"_s);
    type(list, u"txtCodice"_s, u"ott-"_s);
    trigger(list, u"actCerca"_s);
    selectRow(results(list), u"OTT-0040"_s);
    expectQuestion(u"Confermare l'eliminazione?"_s, core::Answer::Yes);
    trigger(list, u"actElimina"_s);
    check(u"articolo eliminato"_s, one(u"SELECT COUNT(*) FROM ANA_MAGA WHERE CODICE = 'OTT-0040'"_s), u"0"_s);
}

void Host::usedArticle()
{
    tell(u"Un articolo usato nei documenti resta"_s);
    QWidget *list = openOfHost(u"actRicercaArticoli"_s);
    type(list, u"txtCodice"_s, u"TRA-0018"_s);
    trigger(list, u"actCerca"_s);
    selectRow(results(list), u"TRA-0018"_s);
    expectWarning(u"righe di bolle di carico: 2"_s);
    trigger(list, u"actElimina"_s);
    trigger(list, u"actModifica"_s);
    QWidget *form = opened(u"InserimentoArticoli"_s);
    type(form, u"txtCodice"_s, u"TRA-18"_s);
    expectWarning(u"Il codice non si può cambiare"_s);
    trigger(form, u"actSalva"_s);
    expectQuestion(u"Salvare le modifiche"_s, core::Answer::No);
    close(form);
    close(list);
}

void Host::customer()
{
    tell(u"Un cliente con una partita IVA sbagliata: un avviso, non un rifiuto"_s);
    QWidget *list = openOfHost(u"actRicercaClienti"_s);
    picture(u"elenco-clienti"_s);
    trigger(list, u"actNuovo"_s);
    QWidget *form = opened(u"InserimentoClienti"_s);
    type(form, u"txtRagioneSociale"_s, u"Osteria \"Ai Do' Mori\" di D'Este & C."_s);
    type(form, u"txtCitta"_s, u"Venezia"_s);
    type(form, u"txtPartitaIVA"_s, u"01234567890"_s);
    pick(form, u"txtTipoPagamento"_s, one(u"SELECT FIRST 1 TIPO_PAGAMENTO FROM TIPI_PAGAMENTO ORDER BY 1"_s));
    picture(u"cliente"_s);
    pictureAtSmallestSize(form, u"cliente"_s);
    expectQuestion(u"Partita IVA: il carattere di controllo non corrisponde."_s, core::Answer::Yes);
    trigger(form, u"actSalva"_s);
    check(u"cliente registrato"_s,
          one(u"SELECT COUNT(*) FROM CLIENTI WHERE CITTA = 'Venezia' AND RAGIONESOCIALE STARTING 'Osteria'"_s), u"1"_s);
    close(form);
    close(list);
}

void Host::categories()
{
    tell(u"Le categorie: aggiungere, spostare, eliminare"_s);
    QWidget *form = openOfHost(u"actCategorieArticoli"_s);
    auto *tree = control<QTreeWidget>(form, u"treeCategorie"_s);
    tree->setCurrentItem(tree->topLevelItem(0));
    answerText(u"Lucchetti"_s);
    trigger(form, u"actNuovaSottocategoria"_s);
    check(u"categoria selezionata"_s, tree->currentItem()->text(0), u"Lucchetti"_s);
    visit().picture(form, u"categorie"_s);
    expectDialog([this](QDialog &dialog) {
        control<QComboBox>(&dialog, u"txtDestinazione"_s)->setCurrentIndex(0);
        visit().picture(&dialog, u"sposta-categoria"_s);
        press(&dialog, u"cmdOk"_s);
    });
    trigger(form, u"actSposta"_s);
    check(u"spostata al primo livello"_s, tree->currentItem()->parent() == nullptr);
    expectQuestion(u"Confermare l'eliminazione?"_s, core::Answer::Yes);
    trigger(form, u"actElimina"_s);
    tree->setCurrentItem(tree->topLevelItem(0));
    expectWarning(u"esistono dei dati correlati"_s);
    trigger(form, u"actElimina"_s);
    close(form);
}

void Host::tables()
{
    tell(u"Le tabelle"_s);
    for (const QString &name :
         {u"AliquoteIVA"_s, u"UnitaMisura"_s, u"TipiPagamento"_s, u"NoteDocumenti"_s, u"Servizi"_s}) {
        QWidget *list = openOfHost(u"actRicerca"_s + name);
        auto *grid = results(list);
        check(u"righe in elenco: "_s + name, grid->model()->rowCount() > 0);
        grid->selectRow(0);
        trigger(list, u"actModifica"_s);
        QWidget *form = opened(u"Inserimento"_s + name);
        picture(u"tabella-"_s + name.toLower());
        close(form);
        close(list);
    }
}

void Host::usersAndRoles()
{
    tell(u"Un utente nuovo, con la sua password"_s);
    QWidget *list = openOfHost(u"actRicercaUtenti"_s);
    trigger(list, u"actNuovo"_s);
    QWidget *form = opened(u"InserimentoUtenti"_s);
    type(form, u"txtNomeUtente"_s, u"giulia"_s);
    type(form, u"txtNome"_s, u"Giulia De' Rossi"_s);
    expectWarning(u"Non è stata impostata la password!"_s);
    trigger(form, u"actSalva"_s);
    expectDialog([this](QDialog &dialog) {
        type(&dialog, u"txtPassword"_s, u"magazzino-7"_s);
        type(&dialog, u"txtRipeti"_s, u"magazzino-7"_s);
        visit().picture(&dialog, u"nuova-password"_s);
        press(&dialog, u"cmdOk"_s);
    });
    press(form, u"cmdPassword"_s);
    control<QListWidget>(form, u"list"_s)->item(1)->setCheckState(Qt::Checked);
    picture(u"utente"_s);
    pictureAtSmallestSize(form, u"utente"_s);
    trigger(form, u"actSalva"_s);
    check(u"la password non è leggibile"_s,
          one(u"SELECT PASSWORD_HASH FROM UTENTI WHERE USER_NAME = 'GIULIA'"_s).startsWith(u"pbkdf2-sha512$"));
    close(form);

    tell(u"L'ultimo amministratore resta tale"_s);
    trigger(list, u"actCerca"_s);
    selectRow(results(list), host::administrator);
    trigger(list, u"actModifica"_s);
    form = opened(u"InserimentoUtenti"_s);
    tick(form, u"chkAttivo"_s, false);
    expectWarning(u"Almeno un utente attivo"_s);
    trigger(form, u"actSalva"_s);
    expectQuestion(u"Salvare le modifiche"_s, core::Answer::No);
    close(form);
    close(list);

    tell(u"I diritti di un ruolo"_s);
    list = openOfHost(u"actRicercaRuoli"_s);
    results(list)->selectRow(0);
    trigger(list, u"actModifica"_s);
    form = opened(u"InserimentoRuoli"_s);
    picture(u"ruolo"_s);
    close(form);
    close(list);
}

void Host::settings()
{
    tell(u"Dati dell'azienda e opzioni"_s);
    QWidget *form = openOfHost(u"actAzienda"_s);
    picture(u"azienda"_s);
    close(form);
    expectDialog([this](QDialog &dialog) {
        tick(&dialog, u"NUMERAZIONE_UNICA_FATTURE"_s, true);
        visit().picture(&dialog, u"opzioni"_s);
        press(&dialog, u"cmdOk"_s);
    });
    trigger(&session().commands(), u"actOpzioni"_s);
    const QString option = u"SELECT VALORE FROM OPZIONI WHERE OPZIONE = 'NUMERAZIONE_UNICA_FATTURE'"_s;
    check(u"opzione registrata"_s, one(option), u"True"_s);
    database().execute(u"UPDATE OPZIONI SET VALORE='False' WHERE OPZIONE = 'NUMERAZIONE_UNICA_FATTURE'"_s);
}

} // namespace

void tourHost(Visit &visit, host::Session &session)
{
    Host host(visit, session);
    host.article();
    host.usedArticle();
    host.customer();
    host.categories();
    host.tables();
    host.usersAndRoles();
    host.settings();
}

} // namespace tour
