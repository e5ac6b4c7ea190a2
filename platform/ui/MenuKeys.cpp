#include "platform/ui/MenuKeys.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>

using namespace Qt::StringLiterals;

namespace ui {

namespace {

enum class Match
{
    Beginning,
    AnyWord
};

bool matches(const QAction &action, QChar letter, Match match)
{
    bool isFirst = true;
    QChar before = u' ';
    const QString text = action.text();
    for (const QChar character : text) {
        if (character.isLetterOrNumber() && !before.isLetterOrNumber()) {
            if (character.toUpper() == letter && (isFirst || match == Match::AnyWord))
                return true;
            isFirst = false;
        }
        before = character == u'&' ? before : character;
    }
    return false;
}

bool isUnderlined(const QAction &action, QChar letter)
{
    return QKeySequence::mnemonic(action.text()) == QKeySequence(u"Alt+"_s + letter);
}

QList<QAction *> fitting(const QList<QAction *> &entries, QChar letter)
{
    for (const Match match : {Match::Beginning, Match::AnyWord}) {
        QList<QAction *> found;
        for (QAction *entry : entries) {
            if (entry->isVisible() && entry->isEnabled() && !entry->isSeparator() && matches(*entry, letter, match))
                found.append(entry);
        }
        if (!found.isEmpty())
            return found;
    }
    return {};
}

// Marks the entry behind the marked one; takes it when it is the only one.
template <typename Menu>
bool choose(Menu &menu, QChar letter)
{
    const QList<QAction *> entries = menu.actions();
    const QList<QAction *> found = fitting(entries, letter);
    const auto underlined = [letter](const QAction *entry) { return isUnderlined(*entry, letter); };
    if (found.isEmpty() || std::any_of(entries.begin(), entries.end(), underlined))
        return false;
    menu.setActiveAction(found[(found.indexOf(menu.activeAction()) + 1) % found.size()]);
    if (found.size() == 1) {
        QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
        QCoreApplication::sendEvent(&menu, &enter);
    }
    return true;
}

} // namespace

MenuKeyFilter::MenuKeyFilter(QObject *owner)
    : QObject(owner)
{
    qApp->installEventFilter(this);
}

bool MenuKeyFilter::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress)
        return false;
    const auto &key = *static_cast<QKeyEvent *>(event);
    const QString text = key.text();
    if (text.size() != 1 || !text.front().isLetterOrNumber() || (key.modifiers() & ~Qt::ShiftModifier))
        return false;
    if (auto *menu = qobject_cast<QMenu *>(watched))
        return choose(*menu, text.front().toUpper());
    auto *bar = qobject_cast<QMenuBar *>(watched);
    return bar && choose(*bar, text.front().toUpper());
}

} // namespace ui
