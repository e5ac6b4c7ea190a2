#include "benchmark/Program.h"

#include "host/PackageLoader.h"
#include "host/ui/MainWindow.h"
#include "magazzino/uMMGModMagazzino.h"
#include "platform/core/Error.h"
#include "platform/core/Messages.h"
#include "platform/ui/Dialogs.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QTableView>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

template <typename Control>
Control &child(const QObject &owner, const QString &name)
{
    auto *found = owner.findChild<Control *>(name);
    if (!found)
        throw core::Error(u"There is no \"%1\"."_s.arg(name));
    return *found;
}

void chooseRow(QDialog &dialog, const QString &text)
{
    auto &grid = child<QTableView>(dialog, u"gridRisultati"_s);
    const QAbstractItemModel &rows = *grid.model();
    for (int row = 0; row < rows.rowCount(); ++row) {
        for (int column = 0; column < rows.columnCount(); ++column) {
            if (rows.index(row, column).data().toString() == text)
                grid.selectRow(row);
        }
    }
    child<QAbstractButton>(dialog, u"cmdOk"_s).click();
}

// Nobody is there to answer: whatever asks ends the measurement.
[[noreturn]] void refuse(const QString &text)
{
    throw core::Error(u"Unexpected: "_s + text);
}

} // namespace

void settle()
{
    QApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QApplication::processEvents();
}

Program::Program(const data::DatabaseAddress &address, std::unique_ptr<data::Connection> opened)
{
    core::setMessageHandler([](const core::Message &message) -> core::Answer { refuse(message.text); });
    ui::setModalRunner([this](QDialog &dialog) {
        dialog.show();
        settle();
        dialogUse_(dialog);
        return dialog.result();
    });
    session_ = std::make_unique<host::Session>(address, host::administrator, QString(), std::move(opened));
    session_->window().show();
}

Program::~Program()
{
    session_.reset();
    ui::setModalRunner({});
}

QWidget &Program::openForm(const QString &action)
{
    QWidget *form = Modulo().openForm(action);
    if (!form)
        refuse(action);
    return *form;
}

void Program::choose(const QWidget &form, const QString &command, const QString &text, const QString &code)
{
    dialogUse_ = [&text, &code](QDialog &dialog) {
        if (!code.isEmpty()) {
            child<QLineEdit>(dialog, u"txtCodice"_s).setText(code);
            child<QAbstractButton>(dialog, u"actCerca"_s).click();
        }
        chooseRow(dialog, text);
    };
    if (auto *action = form.findChild<QAction *>(command))
        action->trigger();
    else
        child<QAbstractButton>(form, command).click();
}

void startModule()
{
    host::startPackages(qApp);
}

void forget(const QString &action)
{
    // With its frame in the main window, as after the user's own close: the form alone would leave an empty tab.
    QWidget *form = Modulo().openForm(action);
    delete qobject_cast<QMdiSubWindow *>(form->parentWidget());
    settle();
}

} // namespace bench
