#include "tour/Visit.h"

#include "platform/core/Error.h"
#include "tests/support/Controls.h"

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QDir>
#include <QPainter>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace tour {

Visit::Visit(const QString &folder)
    : folder_(QDir(folder).absolutePath())
    , scripted_(core::setMessageHandler([this](const core::Message &message) { return answer(message); }))
    , warnings_([this](QtMsgType, const QString &text) { fail(u"Qt: "_s + text); })
{
}

Visit::~Visit()
{
    core::setMessageHandler(scripted_);
    takeProblems();
}

QString Visit::file(const QString &name) const
{
    return folder_ + u'/' + name;
}

void Visit::tell(const QString &text)
{
    if (takeProblems())
        throw core::Error(u"La visita si ferma al primo fatto inatteso."_s);
    std::printf("\n%s\n", qUtf8Printable(text));
    std::fflush(stdout);
}

void Visit::pass(const QString &text)
{
    ++passed_;
    std::printf("  ok  %s\n", qUtf8Printable(text));
}

void Visit::fail(const QString &text)
{
    ++failed_;
    std::printf("  NO  %s\n", qUtf8Printable(text));
    std::fflush(stdout);
}

// Counts what went wrong with boxes and dialogs; true when something did.
bool Visit::takeProblems()
{
    const QStringList problems = messages.verify() + dialogs.verify();
    for (const QString &problem : problems)
        fail(problem.simplified());
    return !problems.isEmpty();
}

void Visit::check(const QString &what, const QString &actual, const QString &expected)
{
    if (actual == expected)
        pass(u"%1: %2"_s.arg(what, actual));
    else
        fail(u"%1: \"%2\" invece di \"%3\""_s.arg(what, actual, expected));
}

void Visit::check(const QString &what, bool holds)
{
    check(what, holds ? u"sì"_s : u"no"_s, u"sì"_s);
}

void Visit::trigger(const QObject *owner, const QString &action)
{
    if (!test::control<QAction>(owner, action)->isEnabled())
        fail(u"il comando \"%1\" non è disponibile"_s.arg(action));
    test::trigger(owner, action);
}

void Visit::show(QWidget &mainWindow)
{
    mainWindow.resize(1366, 740);
    mainWindow.show();
}

void Visit::picture(QWidget *window, const QString &name)
{
    test::settle();
    const QString path = file(u"%1-%2.png"_s.arg(++pictures_, 2, 10, QLatin1Char('0')).arg(name));
    QPixmap seen = window->grab();
    // A list that drops down is a window of its own.
    for (QWidget *other : QApplication::topLevelWidgets()) {
        if (other->isVisible() && qobject_cast<QAbstractItemView *>(other))
            QPainter(&seen).drawPixmap(other->mapToGlobal(QPoint()) - window->mapToGlobal(QPoint()), other->grab());
    }
    if (!seen.save(path))
        fail(u"immagine non salvata: %1"_s.arg(path));
}

void Visit::pictureAtSmallestSize(QWidget *form, const QString &name, const QString &suffix)
{
    // A tab is as large as the main window lets it be.
    const QString arrangement = u"actFinestreLibere"_s;
    trigger(form->window(), arrangement);
    QWidget *frame = form->parentWidget();
    frame->resize(frame->minimumSizeHint().expandedTo(form->minimumSize()));
    picture(form, name + u"-dimensione-minima"_s + suffix);
    trigger(form->window(), arrangement);
}

core::Answer Visit::answer(const core::Message &message)
{
    const core::Answer given = scripted_(message);
    if (!messages.hasProblems())
        pass(u"messaggio \"%1\": %2"_s.arg(message.title, message.text.simplified()));
    return given;
}

bool Visit::finish()
{
    takeProblems();
    std::printf("\n%d passed, %d failed\n", passed_, failed_);
    return failed_ == 0;
}

} // namespace tour
