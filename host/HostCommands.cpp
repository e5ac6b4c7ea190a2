#include "host/HostCommands.h"

#include "host/Corvane3Impl.h"
#include "host/registers/CategoryEditor.h"
#include "host/registers/OptionsDialog.h"
#include "host/registers/RegisterEntry.h"
#include "host/registers/RegisterList.h"
#include "host/transfer/ImportDialog.h"
#include "host/ui/MainWindow.h"
#include "host/users/PasswordDialogs.h"
#include "host/users/UserForms.h"
#include "host/users/Users.h"
#include "platform/core/Error.h"
#include "platform/core/Messages.h"
#include "platform/data/Connection.h"

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
    : QObject(&window)
    , window_(window)
    , connection_(connection)
{
    addRegisters();
    addSettings();
    QToolBar *bar = window.commonToolBar(TKxCommonToolBars::Anagrafiche);
    for (const QString &name : {u"actRicercaArticoli"_s, u"actRicercaClienti"_s})
        bar->addAction(action(name));
    bar->show();
}

HostCommands::~HostCommands()
{
    // The forms live in the main window's child windows, but they work on the connection, which goes before those.
    for (const QPointer<QWidget> &form : std::as_const(forms_))
        delete form;
}

void HostCommands::addRegisters()
{
    addRegister(articles(), registersMenu);
    addRegister(services(), registersMenu);
    addRegister(customers(), registersMenu);
    for (const CategoryEditorSpec *spec : {&articleCategoryEditor(), &serviceCategoryEditor()})
        add({.name = u"act"_s + spec->name, .caption = spec->caption, .menu = tablesMenu, .create = [this, spec] {
                 return new CategoryEditor(*spec, connection_, &window_);
             }});
    addRegister(vatRates(), tablesMenu);
    addRegister(units(), tablesMenu);
    addRegister(paymentTypes(), tablesMenu);
    addRegister(documentNotes(), tablesMenu);
}

void HostCommands::addRegister(const RegisterSpec &spec, const QString &menu)
{
    const QString entry = u"actInserimento"_s + spec.name;
    add({.name = entry, .caption = u"Inserimento "_s + spec.lowerCaption(), .menu = {}, .create = [this, &spec] {
             auto *form = new RegisterEntry(spec, connection_, &window_);
             form->finish();
             return form;
         }});
    add({.name = u"actRicerca"_s + spec.name, .caption = spec.caption, .menu = menu, .create = [this, &spec, entry] {
             return new RegisterList(
                 spec, connection_, [this, entry]() -> ui::EntryForm & { return entryForm(entry); }, &window_);
         }});
}

void HostCommands::addSettings()
{
    add({.name = u"actAzienda"_s,
         .caption = u"Dati dell'azienda"_s,
         .menu = toolsMenu,
         .create =
             [this] {
                 auto *form = new RegisterEntry(company(), connection_, &window_);
                 form->finish();
                 const data::Rows rows = connection_.select(u"SELECT FIRST 1 IDAZIENDA FROM AZIENDA ORDER BY 1"_s);
                 if (!rows.isEmpty())
                     form->openRecord(rows.integer(0, u"IDAZIENDA"));
                 return form;
             },
         .administratorsOnly = true});
    add({.name = u"actOpzioni"_s,
         .caption = u"Opzioni..."_s,
         .menu = toolsMenu,
         .run = [this] { editOptions(&window_, connection_); },
         .administratorsOnly = true});
    const auto lists = {std::pair(&users(), u"actInserimentoUtenti"_s), {&roles(), u"actInserimentoRuoli"_s}};
    for (const auto &[spec, entry] : lists)
        add({.name = u"actRicerca"_s + spec->name,
             .caption = spec->caption,
             .menu = toolsMenu,
             .create =
                 [this, spec = spec, entry = entry] {
                     return new RegisterList(
                         *spec, connection_, [this, entry]() -> ui::EntryForm & { return entryForm(entry); }, &window_);
                 },
             .administratorsOnly = true});
    add({.name = u"actInserimentoUtenti"_s,
         .caption = u"Inserimento utenti"_s,
         .menu = {},
         .create = [this] { return new UserEntry(connection_, &window_); },
         .administratorsOnly = true});
    add({.name = u"actInserimentoRuoli"_s,
         .caption = u"Inserimento ruoli"_s,
         .menu = {},
         .create = [this] { return new RoleEntry(connection_, &window_); },
         .administratorsOnly = true});
    add({.name = u"actImporta"_s,
         .caption = u"Importa da CSV..."_s,
         .menu = toolsMenu,
         .run = [this] { importFromCsv(&window_, connection_); },
         .administratorsOnly = true});
    add({.name = u"actCambiaPassword"_s,
         .caption = u"Cambia password..."_s,
         .menu = toolsMenu,
         .create = {},
         .run = [this] { changeOwnPassword(&window_, connection_); }});
}

void HostCommands::add(const Command &command)
{
    auto *action = new QAction(command.caption, this);
    action->setObjectName(command.name);
    connect(action, &QAction::triggered, this, [this, command] { core::guarded(&window_, [&] { execute(command); }); });
    if (auto *menu = command.menu.isEmpty() ? nullptr : window_.menuBar()->findChild<QMenu *>(command.menu)) {
        menu->addAction(action);
        menu->menuAction()->setVisible(true);
    }
}

void HostCommands::execute(const Command &command)
{
    if (command.administratorsOnly && !currentUserInControl(connection_)) {
        refuseForRights(&window_);
        return;
    }
    if (command.run) {
        command.run();
        return;
    }
    // By value: a form that is made may open others, and with them the hash moves.
    QPointer<QWidget> form = forms_.value(command.name);
    if (!form) {
        form = command.create();
        forms_.insert(command.name, form);
    }
    ShowChildForm(form);
}

QAction *HostCommands::action(const QString &name) const
{
    return findChild<QAction *>(name, Qt::FindDirectChildrenOnly);
}

QWidget *HostCommands::openForm(const QString &actionName)
{
    action(actionName)->trigger();
    return forms_.value(actionName);
}

ui::EntryForm &HostCommands::entryForm(const QString &actionName)
{
    auto *form = qobject_cast<ui::EntryForm *>(openForm(actionName));
    if (!form)
        throw core::Error(u"La maschera di inserimento non è disponibile."_s);
    return *form;
}

} // namespace host
