#include "platform/ui/LineEdit.h"

#include "platform/core/LineText.h"

#include <QAction>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMenu>

using namespace Qt::StringLiterals;

namespace ui {

LineEdit::LineEdit(QWidget *parent)
    : QLineEdit(parent)
{
    // Drops, the middle button and input methods insert by themselves; only here all of them pass.
    connect(this, &QLineEdit::textEdited, this, &LineEdit::cleanUp);
}

LineEdit::LineEdit(const QString &text, QWidget *parent)
    : LineEdit(parent)
{
    setText(text);
}

void LineEdit::keyPressEvent(QKeyEvent *event)
{
    const Qt::KeyboardModifiers commands = event->modifiers() & (Qt::ControlModifier | Qt::AltModifier);
    if (event->matches(QKeySequence::Paste)) {
        pasteClean();
    } else if (pointTypesComma_ && event->text() == u'.' && !commands && !isReadOnly()) {
        insert(u","_s);
    } else if (event->text().size() > 1 && !commands && !isReadOnly()) {
        insertWhole(event->text());
    } else {
        QLineEdit::keyPressEvent(event);
    }
}

void LineEdit::inputMethodEvent(QInputMethodEvent *event)
{
    if (pointTypesComma_ && event->commitString() == u'.')
        event->setCommitString(u","_s, event->replacementStart(), event->replacementLength());
    QLineEdit::inputMethodEvent(event);
}

void LineEdit::contextMenuEvent(QContextMenuEvent *event)
{
    QMenu *menu = createStandardContextMenu();
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (QAction *action : menu->actions()) {
        // The entries have no names, only their texts with the keys behind them.
        if (action->text().section(u'\t', 0, 0) != QLineEdit::tr("&Paste"))
            continue;
        disconnect(action, &QAction::triggered, this, nullptr);
        connect(action, &QAction::triggered, this, &LineEdit::pasteClean);
    }
    menu->popup(event->globalPos());
}

void LineEdit::pasteClean()
{
    if (!isReadOnly())
        insertWhole(QGuiApplication::clipboard()->text());
}

// The edit's own limit would cut a character in two, and count what is about to be dropped.
void LineEdit::insertWhole(const QString &text)
{
    insert(core::cutTo(core::pastedLine(text), maxLength() - this->text().size() + selectedText().size()));
}

void LineEdit::cleanUp()
{
    const QString clean = core::lineOf(text());
    if (clean == text())
        return;
    const qsizetype before = core::lineOf(text().left(cursorPosition())).size();
    setText(clean);
    setCursorPosition(static_cast<int>(before));
}

} // namespace ui
