#include "host/HostCommands.h"

#include "host/Corvane3Impl.h"
#include "host/registers/ArticleEntry.h"
#include "host/registers/CategoryEditor.h"
#include "host/registers/OptionsDialog.h"
#include "host/registers/Registers.h"
#include "host/transfer/ImportDialog.h"
#include "host/ui/MainWindow.h"
#include "host/ui/SearchEverywhere.h"
#include "host/users/PasswordDialogs.h"
#include "host/users/UserForms.h"
#include "host/users/Users.h"
#include "platform/core/Translation.h"
#include "platform/ui/RegisterEntry.h"
#include "platform/ui/RegisterList.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>

using namespace Qt::StringLiterals;

namespace host {

namespace {

const QString registersMenu = u"mnAnagrafiche"_s;
const QString tablesMenu = u"mnTabelle"_s;
const QString toolsMenu = u"mnStrumenti"_s;

} // namespace

HostCommands::HostCommands(MainWindow &window, data::Connection &connection)
    : CommandRegistry({.owner = &window,
                       .show = ShowChildForm,
                       .grants =
                           [&](const QString &) {
                               const bool granted = currentUserInControl(connection);
                               if (!granted)
                                   refuseForRights(&window);
                               return granted;
                           }},
                      &window)
    , window_(window)
    , connection_(connection)
{
    addRegisters();
    addSettings();
    addUsers();
    QToolBar *bar = window.commonToolBar(TKxCommonToolBars::Anagrafiche);
    for (const QString &name : {u"actRicercaArticoli"_s, u"actRicercaClienti"_s})
        bar->addAction(action(name));
    bar->show();
}

void HostCommands::addTo(const QString &menu, const ui::ActionSpec &spec)
{
    QAction *action = add(spec);
    if (auto *target = window_.menuBar()->findChild<QMenu *>(menu)) {
        target->addAction(action);
        target->menuAction()->setVisible(true);
    }
}

void HostCommands::addRegisters()
{
    add({.name = u"actInserimentoArticoli"_s,
         .caption = core::tr("Inserimento articoli"),
         .create = [this](QWidget *owner) { return new ArticleEntry(connection_, owner); }});
    addTo(registersMenu, listOf(articles()));
    addRegister(services(), registersMenu);
    addRegister(customers(), registersMenu);
    for (const CategoryEditorSpec *spec : {&articleCategoryEditor(), &serviceCategoryEditor()})
        addTo(tablesMenu,
              {.name = u"act"_s + spec->name, .caption = spec->caption, .create = [this, spec](QWidget *owner) {
                   return new CategoryEditor(*spec, connection_, owner);
               }});
    addRegister(vatRates(), tablesMenu);
    addRegister(units(), tablesMenu);
    addRegister(paymentTypes(), tablesMenu);
    addRegister(documentNotes(), tablesMenu);
}

void HostCommands::addRegister(const ui::RegisterSpec &spec, const QString &menu)
{
    add({.name = u"actInserimento"_s + spec.name,
         .caption = u"Inserimento "_s + spec.lowerCaption(),
         .create = [this, &spec](QWidget *owner) {
             auto *form = new ui::RegisterEntry(spec, connection_, owner);
             form->finish();
             return form;
         }});
    addTo(menu, listOf(spec));
}

ui::ActionSpec HostCommands::listOf(const ui::RegisterSpec &spec)
{
    const auto entry = [this, name = u"actInserimento"_s + spec.name]() -> ui::EntryForm & { return entryForm(name); };
    return {
        .name = u"actRicerca"_s + spec.name, .caption = spec.caption, .create = [this, &spec, entry](QWidget *owner) {
            return new ui::RegisterList(spec, connection_, entry, owner);
        }};
}

void HostCommands::addSettings()
{
    addTo(toolsMenu, {.name = u"actAzienda"_s,
                      .caption = core::tr("Dati dell'azienda"),
                      .create =
                          [this](QWidget *owner) {
                              auto *form = new ui::RegisterEntry(company(), connection_, owner);
                              form->finish();
                              const data::Rows rows =
                                  connection_.select(u"SELECT FIRST 1 IDAZIENDA FROM AZIENDA ORDER BY 1"_s);
                              if (!rows.isEmpty())
                                  form->openRecord(rows.integer(0, u"IDAZIENDA"));
                              return form;
                          },
                      .right = fullControl});
    addTo(toolsMenu, {.name = u"actOpzioni"_s,
                      .caption = core::tr("Opzioni..."),
                      .kind = ui::ActionKind::Routine,
                      .right = fullControl,
                      .run = [this](QWidget *owner) { editOptions(owner, connection_); }});
    addTo(toolsMenu, {.name = u"actOpzioniDocumenti"_s,
                      .caption = core::tr("Stampa e invio dei documenti..."),
                      .kind = ui::ActionKind::Routine,
                      .right = fullControl,
                      .run = [this](QWidget *owner) { editDocumentOptions(owner, connection_); }});
}

void HostCommands::addUsers()
{
    for (const ui::RegisterSpec *spec : {&users(), &roles()}) {
        ui::ActionSpec list = listOf(*spec);
        list.right = fullControl;
        addTo(toolsMenu, list);
    }
    add({.name = u"actInserimentoUtenti"_s,
         .caption = core::tr("Inserimento utenti"),
         .create = [this](QWidget *owner) { return new UserEntry(connection_, owner); },
         .right = fullControl});
    add({.name = u"actInserimentoRuoli"_s,
         .caption = core::tr("Inserimento ruoli"),
         .create = [this](QWidget *owner) { return new RoleEntry(connection_, owner); },
         .right = fullControl});
    addTo(toolsMenu, {.name = u"actImporta"_s,
                      .caption = core::tr("Importa da CSV..."),
                      .kind = ui::ActionKind::Routine,
                      .right = fullControl,
                      .run = [this](QWidget *owner) { importFromCsv(owner, connection_); }});
    addTo(toolsMenu, {.name = u"actCercaOvunque"_s,
                      .caption = core::tr("Cerca ovunque..."),
                      .kind = ui::ActionKind::Routine,
                      .run = [this](QWidget *owner) { searchEverywhere(owner, connection_); }});
    action(u"actCercaOvunque"_s)->setShortcut(QKeySequence(u"Ctrl+K"_s));
    addTo(toolsMenu, {.name = u"actCambiaPassword"_s,
                      .caption = core::tr("Cambia password..."),
                      .kind = ui::ActionKind::Routine,
                      .run = [this](QWidget *owner) { changeOwnPassword(owner, connection_); }});
}

} // namespace host
