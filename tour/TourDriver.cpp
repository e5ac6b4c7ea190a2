#include "tour/TourDriver.h"

#include "platform/core/Error.h"
#include "platform/ui/Dialogs.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QDir>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTableView>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace host {

namespace {

// What a running event loop would do between two actions of the user; closed editors and windows are freed as well.
void settle()
{
    QApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QApplication::processEvents();
}

} // namespace

TourDriver::TourDriver(const QString &folder)
    : folder_(folder)
{
    core::setMessageHandler([this](const core::Message &message) { return answer(message); });
    ui::setModalRunner([this](QDialog &dialog) { return run(dialog); });
}

TourDriver::~TourDriver()
{
    core::setMessageHandler({});
    ui::setModalRunner({});
}

void TourDriver::tell(const QString &text)
{
    if (interrupted_)
        throw core::Error(u"La visita si ferma al primo messaggio inatteso."_s);
    std::printf("\n%s\n", qUtf8Printable(text));
    std::fflush(stdout);
}

void TourDriver::fail(const QString &text)
{
    ++failed_;
    std::printf("  NO  %s\n", qUtf8Printable(text));
    std::fflush(stdout);
}

void TourDriver::check(const QString &what, const QString &actual, const QString &expected)
{
    if (actual != expected) {
        fail(u"%1: \"%2\" invece di \"%3\""_s.arg(what, actual, expected));
        return;
    }
    ++passed_;
    std::printf("  ok  %s: %s\n", qUtf8Printable(what), qUtf8Printable(actual));
}

void TourDriver::check(const QString &what, bool holds)
{
    check(what, holds ? u"sì"_s : u"no"_s, u"sì"_s);
}

void TourDriver::picture(QWidget *window, const QString &name)
{
    settle();
    const QString file = u"%1/%2-%3.png"_s.arg(folder_).arg(++pictures_, 2, 10, QLatin1Char('0')).arg(name);
    if (!window->grab().save(file))
        fail(u"immagine non salvata: %1"_s.arg(file));
}

void TourDriver::expectMessage(const QString &title, const QString &text, core::Answer answer)
{
    messages_.append({title, text, answer});
}

void TourDriver::expectDialog(const std::function<void(QDialog &)> &use)
{
    dialogs_.append(use);
}

core::Answer TourDriver::answer(const core::Message &message)
{
    const bool expected = !messages_.isEmpty() && messages_.first().title == message.title &&
                          message.text.contains(messages_.first().text);
    if (!expected) {
        interrupted_ = true;
        fail(u"messaggio inatteso \"%1\": %2"_s.arg(message.title, message.text.simplified()));
        return message.answers.last();
    }
    ++passed_;
    std::printf("  ok  messaggio \"%s\": %s\n", qUtf8Printable(message.title),
                qUtf8Printable(message.text.simplified()));
    return messages_.takeFirst().answer;
}

int TourDriver::run(QDialog &dialog)
{
    dialog.show();
    settle();
    if (!dialogs_.isEmpty())
        dialogs_.takeFirst()(dialog);
    if (dialog.isVisible()) {
        interrupted_ = true;
        fail(u"finestra inattesa o rimasta aperta \"%1\""_s.arg(dialog.windowTitle()));
        dialog.reject();
    }
    return dialog.result();
}

void TourDriver::pictureAtSmallestSize(QWidget *form, const QString &name)
{
    QWidget *frame = form->parentWidget();
    const QSize before = frame->size();
    frame->resize(frame->minimumSizeHint().expandedTo(form->minimumSize()));
    picture(form, name + u"-dimensione-minima"_s);
    frame->resize(before);
}

void TourDriver::expectProgress()
{
    constexpr int interval = 50; // milliseconds
    expectDialog([](QDialog &dialog) {
        while (dialog.isVisible())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, interval);
    });
}

void TourDriver::missing(const QString &name)
{
    throw core::Error(u"Manca \"%1\"."_s.arg(name));
}

void TourDriver::trigger(QObject *owner, const QString &action)
{
    auto *found = owner->findChild<QAction *>(action);
    if (!found)
        missing(action);
    if (!found->isEnabled())
        fail(u"il comando \"%1\" non è disponibile"_s.arg(action));
    found->trigger();
    settle();
}

void TourDriver::press(QWidget *owner, const QString &button)
{
    control<QAbstractButton>(owner, button)->click();
    settle();
}

void TourDriver::selectRow(QTableView *grid, const QString &text)
{
    for (int row = 0; row < grid->model()->rowCount(); ++row) {
        for (int column = 0; column < grid->model()->columnCount(); ++column) {
            if (grid->model()->index(row, column).data().toString() == text) {
                grid->selectRow(row);
                grid->scrollTo(grid->model()->index(row, 0));
                return;
            }
        }
    }
    fail(u"nessuna riga con \"%1\""_s.arg(text));
}

int TourDriver::columnOf(QTableView *grid, const QString &header) const
{
    for (int column = 0; column < grid->model()->columnCount(); ++column) {
        if (grid->model()->headerData(column, Qt::Horizontal).toString() == header)
            return column;
    }
    throw core::Error(u"Manca la colonna \"%1\"."_s.arg(header));
}

void TourDriver::typeIntoCell(QTableView *grid, int row, const QString &header, const QString &text)
{
    const QModelIndex cell = grid->model()->index(row, columnOf(grid, header));
    grid->setCurrentIndex(cell);
    if (!grid->findChild<QWidget *>(u"editorRiga"_s))
        grid->edit(cell);
    if (auto *memo = grid->findChild<QPlainTextEdit *>(u"editorRiga"_s)) {
        memo->setPlainText(text);
        QKeyEvent end(QEvent::KeyPress, Qt::Key_Return, Qt::ControlModifier);
        QApplication::sendEvent(memo, &end);
    } else {
        auto *line = control<QLineEdit>(grid, u"editorRiga"_s);
        line->setText(text);
        QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
        QApplication::sendEvent(line, &enter);
    }
    settle();
}

QString TourDriver::cellText(QTableView *grid, int row, const QString &header) const
{
    return grid->model()->index(row, columnOf(grid, header)).data().toString();
}

void TourDriver::finish()
{
    for (const ExpectedMessage &message : std::as_const(messages_))
        fail(u"messaggio mai apparso \"%1\": %2"_s.arg(message.title, message.text));
    if (!dialogs_.isEmpty())
        fail(u"finestre mai aperte: %1"_s.arg(dialogs_.size()));
}

} // namespace host
