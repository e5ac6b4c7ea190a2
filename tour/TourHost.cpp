#include "tour/TourHost.h"

#include "host/Application.h"
#include "host/HostCommands.h"
#include "host/ui/MainWindow.h"
#include "platform/core/Format.h"
#include "platform/data/Connection.h"
#include "platform/ui/NumberEdits.h"
#include "tour/TourDriver.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTableView>
#include <QTreeWidget>

using namespace Qt::StringLiterals;

namespace host {

namespace {

class HostTour
{
public:
    HostTour(TourDriver &driver, Session &session)
        : driver_(driver)
        , session_(session)
    {
    }
    void run();

private:
    QWidget *open(const QString &action) { return session_.commands().openForm(action); }
    void close(QWidget *form) { driver_.trigger(form, u"actChiudi"_s); }
    void type(QWidget *form, const QString &name, const QString &text);
    void pick(QWidget *form, const QString &name, const QString &text);
    QString one(const QString &sql);
    void answerText(const QString &text);

    void article();
    void usedArticle();
    void customer();
    void categories();
    void tables();
    void usersAndRoles();
    void settings();

    TourDriver &driver_;
    Session &session_;
};

void HostTour::type(QWidget *form, const QString &name, const QString &text)
{
    driver_.control<QLineEdit>(form, name)->setText(text);
}

void HostTour::pick(QWidget *form, const QString &name, const QString &text)
{
    auto *box = driver_.control<QComboBox>(form, name);
    box->setCurrentIndex(box->findText(text));
}

QString HostTour::one(const QString &sql)
{
    const data::Rows rows = session_.connection().select(sql);
    return rows.isEmpty() ? QString() : rows.values(0).constFirst().toString();
}

void HostTour::answerText(const QString &text)
{
    driver_.expectDialog([this, text](QDialog &dialog) {
        type(&dialog, u"txtTesto"_s, text);
        driver_.press(&dialog, u"cmdOk"_s);
    });
}

void HostTour::article()
{
    driver_.tell(u"Un articolo nuovo"_s);
    QWidget *list = open(u"actRicercaArticoli"_s);
    driver_.picture(&session_.window(), u"elenco-articoli"_s);
    driver_.trigger(list, u"actNuovo"_s);
    QWidget *form = driver_.control<QWidget>(&session_.window(), u"InserimentoArticoli"_s);
    driver_.expectMessage(u"Attenzione"_s, u"Non è stato indicato il codice!"_s, core::Answer::Ok);
    type(form, u"txtDescrizione"_s, u"Lucchetto d'ottone 40 mm"_s);
    driver_.trigger(form, u"actSalva"_s);
    type(form, u"txtCodice"_s, u"OTT-0040"_s);
    pick(form, u"txtUM"_s, u"PZ"_s);
    pick(form, u"txtAliquotaIVA"_s,
         one(u"SELECT CODICE || ' - ' || DESCRIZIONE FROM ALIQUOTE_IVA WHERE CODICE='22'"_s));
    driver_.control<QComboBox>(form, u"txtCategoria"_s)->setCurrentIndex(1);
    driver_.control<ui::DecimalEdit>(form, u"txtPrezzo"_s)->setValue(7.9);
    driver_.control<ui::DecimalEdit>(form, u"txtCosto"_s)->setValue(4.25);
    driver_.control<ui::DecimalEdit>(form, u"txtSottoscorta"_s)->setValue(10);
    driver_.control<ui::DecimalEdit>(form, u"txtRiordino"_s)->setValue(25);
    driver_.picture(&session_.window(), u"articolo"_s);
    driver_.pictureAtSmallestSize(form, u"articolo"_s);
    driver_.pictureAtSmallestSize(list, u"elenco-articoli"_s);
    driver_.trigger(form, u"actSalva"_s);
    driver_.check(u"prezzo registrato"_s,
                  core::formatNumber(one(u"SELECT PREZZO FROM ANA_MAGA WHERE CODICE = 'OTT-0040'"_s).toDouble()),
                  u"7,90"_s);

    driver_.tell(u"Lo stesso codice, scritto in minuscolo, viene rifiutato"_s);
    driver_.trigger(form, u"actNuovo"_s);
    type(form, u"txtCodice"_s, u"ott-0040"_s);
    type(form, u"txtDescrizione"_s, u"Doppione"_s);
    driver_.expectMessage(u"Attenzione"_s, u"Codice già utilizzato!"_s, core::Answer::Ok);
    driver_.trigger(form, u"actSalva"_s);
    driver_.expectMessage(u"Conferma"_s, u"Salvare le modifiche"_s, core::Answer::No);
    close(form);

    driver_.tell(u"Un articolo mai usato si può eliminare"_s);
    type(list, u"txtCodice"_s, u"ott-"_s);
    driver_.trigger(list, u"actCerca"_s);
    driver_.selectRow(driver_.control<QTableView>(list, u"GridRisultati"_s), u"OTT-0040"_s);
    driver_.expectMessage(u"Conferma"_s, u"Confermare l'eliminazione?"_s, core::Answer::Yes);
    driver_.trigger(list, u"actElimina"_s);
    driver_.check(u"articolo eliminato"_s, one(u"SELECT COUNT(*) FROM ANA_MAGA WHERE CODICE = 'OTT-0040'"_s), u"0"_s);
}

void HostTour::usedArticle()
{
    driver_.tell(u"Un articolo usato nei documenti resta"_s);
    QWidget *list = open(u"actRicercaArticoli"_s);
    type(list, u"txtCodice"_s, u"TRA-0018"_s);
    driver_.trigger(list, u"actCerca"_s);
    driver_.selectRow(driver_.control<QTableView>(list, u"GridRisultati"_s), u"TRA-0018"_s);
    driver_.expectMessage(u"Attenzione"_s, u"righe di bolle di carico: 2"_s, core::Answer::Ok);
    driver_.trigger(list, u"actElimina"_s);
    driver_.trigger(list, u"actModifica"_s);
    QWidget *form = driver_.control<QWidget>(&session_.window(), u"InserimentoArticoli"_s);
    type(form, u"txtCodice"_s, u"TRA-18"_s);
    driver_.expectMessage(u"Attenzione"_s, u"Il codice non si può cambiare"_s, core::Answer::Ok);
    driver_.trigger(form, u"actSalva"_s);
    driver_.expectMessage(u"Conferma"_s, u"Salvare le modifiche"_s, core::Answer::No);
    close(form);
    close(list);
}

void HostTour::customer()
{
    driver_.tell(u"Un cliente con una partita IVA sbagliata: un avviso, non un rifiuto"_s);
    QWidget *list = open(u"actRicercaClienti"_s);
    driver_.picture(&session_.window(), u"elenco-clienti"_s);
    driver_.trigger(list, u"actNuovo"_s);
    QWidget *form = driver_.control<QWidget>(&session_.window(), u"InserimentoClienti"_s);
    type(form, u"txtRagioneSociale"_s, u"Osteria \"Ai Do' Mori\" di D'Este & C."_s);
    type(form, u"txtCitta"_s, u"Venezia"_s);
    type(form, u"txtPartitaIVA"_s, u"01234567890"_s);
    pick(form, u"txtTipoPagamento"_s, one(u"SELECT FIRST 1 TIPO_PAGAMENTO FROM TIPI_PAGAMENTO ORDER BY 1"_s));
    driver_.picture(&session_.window(), u"cliente"_s);
    driver_.pictureAtSmallestSize(form, u"cliente"_s);
    driver_.expectMessage(u"Conferma"_s, u"Partita IVA: il carattere di controllo non corrisponde."_s,
                          core::Answer::Yes);
    driver_.trigger(form, u"actSalva"_s);
    driver_.check(u"cliente registrato"_s,
                  one(u"SELECT COUNT(*) FROM CLIENTI WHERE CITTA = 'Venezia' AND RAGIONESOCIALE STARTING 'Osteria'"_s),
                  u"1"_s);
    close(form);
    close(list);
}

void HostTour::categories()
{
    driver_.tell(u"Le categorie: aggiungere, spostare, eliminare"_s);
    QWidget *form = open(u"actCategorieArticoli"_s);
    auto *tree = driver_.control<QTreeWidget>(form, u"treeCategorie"_s);
    tree->setCurrentItem(tree->topLevelItem(0));
    answerText(u"Lucchetti"_s);
    driver_.trigger(form, u"actNuovaSottocategoria"_s);
    driver_.check(u"categoria selezionata"_s, tree->currentItem()->text(0), u"Lucchetti"_s);
    driver_.picture(form, u"categorie"_s);
    driver_.expectDialog([this](QDialog &dialog) {
        driver_.control<QComboBox>(&dialog, u"txtDestinazione"_s)->setCurrentIndex(0);
        driver_.picture(&dialog, u"sposta-categoria"_s);
        driver_.press(&dialog, u"cmdOk"_s);
    });
    driver_.trigger(form, u"actSposta"_s);
    driver_.check(u"spostata al primo livello"_s, tree->currentItem()->parent() == nullptr);
    driver_.expectMessage(u"Conferma"_s, u"Confermare l'eliminazione?"_s, core::Answer::Yes);
    driver_.trigger(form, u"actElimina"_s);
    tree->setCurrentItem(tree->topLevelItem(0));
    driver_.expectMessage(u"Attenzione"_s, u"esistono dei dati correlati"_s, core::Answer::Ok);
    driver_.trigger(form, u"actElimina"_s);
    close(form);
}

void HostTour::tables()
{
    driver_.tell(u"Le tabelle"_s);
    for (const QString &name :
         {u"AliquoteIVA"_s, u"UnitaMisura"_s, u"TipiPagamento"_s, u"NoteDocumenti"_s, u"Servizi"_s}) {
        QWidget *list = open(u"actRicerca"_s + name);
        auto *grid = driver_.control<QTableView>(list, u"GridRisultati"_s);
        driver_.check(u"righe in elenco: "_s + name, grid->model()->rowCount() > 0);
        grid->selectRow(0);
        driver_.trigger(list, u"actModifica"_s);
        QWidget *form = driver_.control<QWidget>(&session_.window(), u"Inserimento"_s + name);
        driver_.picture(&session_.window(), u"tabella-"_s + name.toLower());
        close(form);
        close(list);
    }
}

void HostTour::usersAndRoles()
{
    driver_.tell(u"Un utente nuovo, con la sua password"_s);
    QWidget *list = open(u"actRicercaUtenti"_s);
    driver_.trigger(list, u"actNuovo"_s);
    QWidget *form = driver_.control<QWidget>(&session_.window(), u"InserimentoUtenti"_s);
    type(form, u"txtNomeUtente"_s, u"giulia"_s);
    type(form, u"txtNome"_s, u"Giulia De' Rossi"_s);
    driver_.expectMessage(u"Attenzione"_s, u"Non è stata impostata la password!"_s, core::Answer::Ok);
    driver_.trigger(form, u"actSalva"_s);
    driver_.expectDialog([this](QDialog &dialog) {
        type(&dialog, u"txtPassword"_s, u"magazzino-7"_s);
        type(&dialog, u"txtRipeti"_s, u"magazzino-7"_s);
        driver_.picture(&dialog, u"nuova-password"_s);
        driver_.press(&dialog, u"cmdOk"_s);
    });
    driver_.press(form, u"cmdPassword"_s);
    driver_.control<QListWidget>(form, u"list"_s)->item(1)->setCheckState(Qt::Checked);
    driver_.picture(&session_.window(), u"utente"_s);
    driver_.pictureAtSmallestSize(form, u"utente"_s);
    driver_.trigger(form, u"actSalva"_s);
    driver_.check(u"la password non è leggibile"_s,
                  one(u"SELECT PASSWORD_HASH FROM UTENTI WHERE USER_NAME = 'GIULIA'"_s).startsWith(u"pbkdf2-sha512$"));
    close(form);

    driver_.tell(u"L'ultimo amministratore resta tale"_s);
    driver_.trigger(list, u"actCerca"_s);
    driver_.selectRow(driver_.control<QTableView>(list, u"GridRisultati"_s), administrator);
    driver_.trigger(list, u"actModifica"_s);
    form = driver_.control<QWidget>(&session_.window(), u"InserimentoUtenti"_s);
    driver_.control<QCheckBox>(form, u"chkAttivo"_s)->setChecked(false);
    driver_.expectMessage(u"Attenzione"_s, u"Almeno un utente attivo"_s, core::Answer::Ok);
    driver_.trigger(form, u"actSalva"_s);
    driver_.expectMessage(u"Conferma"_s, u"Salvare le modifiche"_s, core::Answer::No);
    close(form);
    close(list);

    driver_.tell(u"I diritti di un ruolo"_s);
    list = open(u"actRicercaRuoli"_s);
    driver_.control<QTableView>(list, u"GridRisultati"_s)->selectRow(0);
    driver_.trigger(list, u"actModifica"_s);
    form = driver_.control<QWidget>(&session_.window(), u"InserimentoRuoli"_s);
    driver_.picture(&session_.window(), u"ruolo"_s);
    close(form);
    close(list);
}

void HostTour::settings()
{
    driver_.tell(u"Dati dell'azienda e opzioni"_s);
    QWidget *form = open(u"actAzienda"_s);
    driver_.picture(&session_.window(), u"azienda"_s);
    close(form);
    driver_.expectDialog([this](QDialog &dialog) {
        driver_.control<QCheckBox>(&dialog, u"NUMERAZIONE_UNICA_FATTURE"_s)->setChecked(true);
        driver_.picture(&dialog, u"opzioni"_s);
        driver_.press(&dialog, u"cmdOk"_s);
    });
    driver_.trigger(&session_.commands(), u"actOpzioni"_s);
    const QString option = u"SELECT VALORE FROM OPZIONI WHERE OPZIONE = 'NUMERAZIONE_UNICA_FATTURE'"_s;
    driver_.check(u"opzione registrata"_s, one(option), u"True"_s);
    session_.connection().execute(u"UPDATE OPZIONI SET VALORE='False' WHERE OPZIONE = 'NUMERAZIONE_UNICA_FATTURE'"_s);
}

void HostTour::run()
{
    article();
    usedArticle();
    customer();
    categories();
    tables();
    usersAndRoles();
    settings();
}

} // namespace

void tourHost(TourDriver &driver, Session &session)
{
    HostTour(driver, session).run();
}

} // namespace host
