#include "tour/TourFirm.h"

#include "host/Application.h"
#include "host/HostCommands.h"
#include "host/PackageLoader.h"
#include "host/start/DatabaseMemory.h"
#include "host/start/FileCommands.h"
#include "host/start/FirstRows.h"
#include "host/start/StartDialogs.h"
#include "host/ui/MainWindow.h"
#include "host/users/PasswordDialogs.h"
#include "platform/core/Error.h"
#include "platform/data/Connection.h"
#include "platform/ui/Dialogs.h"
#include "tour/Part.h"

#include <QFile>
#include <QScopeGuard>
#include <QTableView>

using namespace Qt::StringLiterals;

namespace tour {

namespace {

const QString firmName = u"Ferramenta D'Orazio S.r.l."_s;
const QString userName = u"LUCIA"_s;
const QString password = u"magazzino-7"_s;

const QByteArray articleFile = "Codice;Descrizione;U.M.;IVA;Prezzo;Costo;Sottoscorta\r\n"
                               "CHI-050;Chiodi 50 mm;KG;22;5,50;3,00;20\r\n"
                               "CHI-080;Chiodi 80 mm;KG;22;5,80;3,20;20\r\n"
                               "VER-001;\"Vernice bianca; opaca, 1 l\";PZ;22;1.012,90;8,10;6\r\n";

void type(const QWidget *window, const QString &name, const QString &text)
{
    test::typeOver(control<QWidget>(window, name), text);
}

data::DatabaseAddress newFirm(Visit &visit)
{
    visit.tell(u"Primo avvio: creare la propria azienda"_s);
    visit.dialogs.expect([&visit](QDialog &dialog) {
        visit.picture(&dialog, u"primo-avvio"_s);
        press(&dialog, u"cmdNuovaAzienda"_s);
    });
    visit.check(u"scelta"_s, host::askFirstStart() == host::FirstStart::NewFirm);
    visit.dialogs.expect([&visit](QDialog &dialog) {
        type(&dialog, u"txtRagioneSociale"_s, firmName);
        type(&dialog, u"txtIndirizzo"_s, u"Via Roma, 5"_s);
        type(&dialog, u"txtCap"_s, u"36061"_s);
        type(&dialog, u"txtCitta"_s, u"Bassano del Grappa"_s);
        type(&dialog, u"txtProvincia"_s, u"VI"_s);
        type(&dialog, u"txtPartitaIVA"_s, u"01234567897"_s);
        type(&dialog, u"txtNomeUtente"_s, userName.toLower());
        type(&dialog, u"txtPassword"_s, password);
        type(&dialog, u"txtRipeti"_s, password);
        QFile::remove(shown(&dialog, u"txtFile"_s));
        visit.picture(&dialog, u"nuova-azienda"_s);
        press(&dialog, u"cmdOk"_s);
    });
    const auto firm = host::askNewFirm(nullptr, visit.folder());
    if (!firm)
        throw core::Error(u"La nuova azienda non è stata creata."_s);
    visit.check(u"archivio creato"_s, QFile::exists(firm->database.file));
    return firm->database;
}

QString login(Visit &visit, const data::DatabaseAddress &database)
{
    visit.tell(u"L'accesso, prima con una password sbagliata"_s);
    data::Connection connection(data::nativeConnectionString(database));
    visit.messages.expectPart(u"Attenzione"_s, u"Nome utente o password non corretti."_s, core::Answer::Ok);
    visit.dialogs.expect([&visit](QDialog &dialog) {
        type(&dialog, u"txtPassword"_s, u"magazzino-8"_s);
        press(&dialog, u"cmdOk"_s);
        visit.picture(&dialog, u"accesso"_s);
        type(&dialog, u"txtPassword"_s, password);
        press(&dialog, u"cmdOk"_s);
    });
    QString user = host::logIn(nullptr, userName, connection).user;
    visit.check(u"utente"_s, user, userName);
    return user;
}

class Firm : private Part
{
public:
    Firm(Visit &visit, host::Session &session)
        : Part(visit, session)
    {
    }

    void importArticles();
    void customer();
    void deliveryNote();
    void exportArticles();
    void backup(const data::DatabaseAddress &address);
};

void Firm::importArticles()
{
    tell(u"Gli articoli da un file CSV"_s);
    QString path = visit().file(u"articoli.csv"_s);
    QFile csv(path);
    if (!csv.open(QIODevice::WriteOnly) || csv.write(articleFile) != articleFile.size())
        throw core::Error(u"Impossibile scrivere \"%1\"."_s.arg(path));
    csv.close();
    const auto restore = qScopeGuard([] { ui::setOpenFileChooser({}); });
    ui::setOpenFileChooser([path](QWidget *, const ui::OpenFileRequest &) { return path; });
    expectInformation(u"Importazione completata: 3 record nuovi, 0 aggiornati."_s);
    expectDialog([this](QDialog &dialog) {
        press(&dialog, u"cmdSfoglia"_s);
        visit().picture(&dialog, u"importazione"_s);
        expectDialog(test::waiting());
        press(&dialog, u"cmdImporta"_s);
    });
    trigger(&session().commands(), u"actImporta"_s);
    check(u"prezzo importato"_s, decimal(u"SELECT PREZZO FROM ANA_MAGA WHERE CODICE = 'VER-001'"_s), u"1.012,90"_s);
}

void Firm::customer()
{
    tell(u"Il primo cliente"_s);
    QWidget *form = openOfHost(u"actInserimentoClienti"_s);
    check(u"codice proposto"_s, shown(form, u"txtCodice"_s), u"CLI000001"_s);
    type(form, u"txtRagioneSociale"_s, u"Rossi Mario & C. S.n.c."_s);
    type(form, u"txtIndirizzo"_s, u"Via Verdi, 1"_s);
    type(form, u"txtCitta"_s, u"Marostica"_s);
    type(form, u"txtPartitaIVA"_s, u"00743110157"_s);
    trigger(form, u"actSalva"_s);
    close(form);
}

void Firm::deliveryNote()
{
    tell(u"Il primo D.d.T., salvato e in PDF"_s);
    QWidget *form = open(u"actInserimentoDdTScarico"_s, u"MMGInserimentoDdTScarico"_s);
    expectChoice(u"Rossi Mario & C. S.n.c."_s, u"*"_s);
    press(form, u"cmdSelezionaCliente"_s);
    expectChoice(u"Mittente"_s, u"*"_s);
    press(form, u"cmdSelezionaTipoTrasporto"_s);
    expectChoice(u"Vendita"_s, u"*"_s);
    press(form, u"cmdSelezionaCausaleTrasporto"_s);
    showPage(form, 1);
    expectChoice(u"CHI-050"_s, u"*"_s);
    trigger(form, u"actAggiungiArticolo"_s);
    auto *rows = control<QTableView>(form, u"gridRigheDocumento"_s);
    typeIntoCell(rows, 0, u"Q.tà"_s, u"12,5"_s);
    check(u"importo della riga"_s, cellText(rows, 0, u"Importo"_s), u"€ 68,75"_s);
    trigger(form, u"actSalva"_s);
    const QString pdf = visit().file(u"primo-ddt.pdf"_s);
    const SaveAnswer answer(pdf);
    trigger(form, u"actSalvaPDF"_s);
    check(u"PDF scritto"_s, QFile::exists(pdf));
    close(form);
}

void Firm::exportArticles()
{
    tell(u"L'elenco degli articoli in un foglio di calcolo"_s);
    const QString path = visit().file(u"articoli.xlsx"_s);
    const SaveAnswer answer(path);
    QWidget *list = openOfHost(u"actRicercaArticoli"_s);
    trigger(list, u"actEsportaXLSX"_s);
    check(u"foglio di calcolo scritto"_s, QFile::exists(path));
}

void Firm::backup(const data::DatabaseAddress &address)
{
    tell(u"La copia di sicurezza, verificata"_s);
    host::DatabaseMemory memory(visit().folder());
    host::FileCommands commands(window(), {.database = address}, memory, visit().folder());
    const QString copy = visit().file(u"ferramenta.fbk"_s);
    const SaveAnswer answer(copy);
    expectDialog(test::waiting());
    expectInformation(u"La copia di sicurezza è stata fatta e verificata"_s);
    trigger(&commands, u"actCopiaSicurezza"_s);
    check(u"copia scritta"_s, QFile::exists(copy));
    // The forms that stayed open go on with the reopened connections.
    trigger(&window(), u"actCerca"_s);
    check(u"si continua a lavorare"_s, one(u"SELECT COUNT(*) FROM ANA_MAGA"_s), u"3"_s);
}

} // namespace

void tourFirm(Visit &visit)
{
    const data::DatabaseAddress database = newFirm(visit);
    host::Session session(database, login(visit, database), {});
    host::startModules();
    host::insertNotedFirstRows(session.connection());
    visit.show(session.window());
    Firm firm(visit, session);
    firm.importArticles();
    firm.customer();
    firm.deliveryNote();
    firm.exportArticles();
    firm.backup(database);
    session.window().close();
}

} // namespace tour
