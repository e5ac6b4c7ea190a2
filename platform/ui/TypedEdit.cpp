#include "platform/ui/TypedEdit.h"

#include "platform/core/Messages.h"
#include "platform/ui/AccessibleNames.h"
#include "platform/ui/Colours.h"

#include <QKeyEvent>
#include <QLabel>
#include <QStyle>
#include <QStyleOptionFrame>
#include <QTabWidget>

using namespace Qt::StringLiterals;

namespace ui {

namespace {

constexpr int sideButtonWidth = 18;
constexpr const char *usualHint = "usualHint"; // the tool tip while it is not red

// What stands beside the control, without mnemonic, blanks and colon.
QString captionOf(const QWidget *edit)
{
    // What the whole window gave it as a name says more than a message needs.
    QString caption = edit->property(namedByWindow).isValid() ? QString() : edit->accessibleName();
    for (const QLabel *label : edit->window()->findChildren<QLabel *>()) {
        if (label->buddy() == edit)
            caption = label->text();
    }
    caption = caption.remove(u'&').trimmed();
    return caption.endsWith(u':') ? caption.chopped(1) : caption;
}

void turnToPageOf(QWidget *control)
{
    for (QWidget *page = control; page->parentWidget(); page = page->parentWidget()) {
        // The pages of a tab widget lie in a stack of its own.
        if (auto *pages = qobject_cast<QTabWidget *>(page->parentWidget()->parentWidget()))
            pages->setCurrentWidget(page);
    }
}

} // namespace

TypedEdit::TypedEdit(QWidget *parent)
    : LineEdit(parent)
{
    setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Fixed);
    connect(this, &QLineEdit::textChanged, this, &TypedEdit::textTyped);
}

void TypedEdit::load(const QVariant &stored, const QVariant &ifNull)
{
    const QString before = text();
    const bool same = stored == stored_;
    stored_ = stored;
    value_ = stored.isNull() ? ifNull : stored;
    setRed(false);
    showValue();
    if (!same || text() != before)
        Q_EMIT changed();
}

void TypedEdit::take(const QVariant &value)
{
    load(value);
    selectAll();
}

// A value may be written with less than it holds: as long as that text stands there, it is the value that counts.
bool TypedEdit::isTyped() const
{
    return text() != written(value_, true) && text() != written(value_, false);
}

QVariant TypedEdit::current() const
{
    return isTyped() ? read(text()).value : value_;
}

QVariant TypedEdit::toStore() const
{
    return isTyped() ? read(text()).value : stored_;
}

QString TypedEdit::problem() const
{
    const QString found = isTyped() ? read(text()).problem : QString();
    const QString caption = captionOf(this);
    return found.isEmpty() || caption.isEmpty() ? found : caption + u": "_s + found;
}

bool TypedEdit::judge()
{
    if (isTyped()) {
        const Reading typed = read(text());
        if (!typed.problem.isEmpty()) {
            setRed(true);
            return false;
        }
        stored_ = value_ = typed.value;
    }
    setRed(false);
    showValue();
    return true;
}

void TypedEdit::showValue()
{
    const QString shown = written(value_, hasFocus());
    if (shown != text())
        showText(shown);
}

void TypedEdit::showText(const QString &text)
{
    showing_ = true;
    setText(text);
    showing_ = false;
}

QVariant TypedEdit::state() const
{
    return QVariantList{stored_, value_, text(), red_};
}

void TypedEdit::restore(const QVariant &state)
{
    const QVariantList parts = state.toList();
    stored_ = parts.value(0);
    value_ = parts.value(1);
    showText(parts.value(2).toString());
    setRed(parts.value(3).toBool());
    Q_EMIT changed();
}

void TypedEdit::textTyped()
{
    if (showing_)
        return;
    if (red_ && problem().isEmpty())
        setRed(false);
    Q_EMIT changed();
}

void TypedEdit::setRed(bool red)
{
    if (red == red_)
        return;
    red_ = red;
    QPalette palette;
    if (red) {
        palette.setColor(QPalette::Base, unreadableGround);
        palette.setColor(QPalette::Text, unreadableText);
    }
    setPalette(palette);
    if (red)
        setProperty(usualHint, toolTip());
    setToolTip(red ? problem() : property(usualHint).toString());
}

void TypedEdit::step(int steps, bool large)
{
    const QVariant from = current();
    // What cannot be read has no next one; what is empty because nothing was stored begins somewhere.
    if (isReadOnly() || (isTyped() && !from.isValid()))
        return;
    if (const QVariant moved = stepped(from, steps, large); moved.isValid())
        take(moved);
}

bool TypedEdit::stepByKey(const QKeyEvent &event)
{
    const bool up = event.key() == Qt::Key_Up || event.key() == Qt::Key_PageUp;
    const bool large = event.key() == Qt::Key_PageUp || event.key() == Qt::Key_PageDown;
    if (!up && !large && event.key() != Qt::Key_Down)
        return false;
    // With Ctrl the Page keys turn pages; they never change a value.
    if (event.modifiers() & ~Qt::KeypadModifier)
        return false;
    step(up ? 1 : -1, large);
    return true;
}

void TypedEdit::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        judge();
    if (!stepByKey(*event))
        LineEdit::keyPressEvent(event);
}

void TypedEdit::focusInEvent(QFocusEvent *event)
{
    if (!isTyped())
        showValue();
    LineEdit::focusInEvent(event);
}

void TypedEdit::focusOutEvent(QFocusEvent *event)
{
    LineEdit::focusOutEvent(event);
    // Another window, a menu or the calendar over it is no leaving.
    if (event->reason() != Qt::ActiveWindowFocusReason && event->reason() != Qt::PopupFocusReason)
        judge();
}

void TypedEdit::addSideButtons(const QList<QToolButton *> &buttons)
{
    buttons_ = buttons;
    for (QToolButton *button : buttons) {
        button->setFocusPolicy(Qt::NoFocus);
        button->setAutoRaise(true);
        button->setCursor(Qt::ArrowCursor);
    }
    setTextMargins(0, 0, sideButtonWidth, 0);
}

void TypedEdit::resizeEvent(QResizeEvent *event)
{
    LineEdit::resizeEvent(event);
    const int frame = style()->pixelMetric(QStyle::PM_DefaultFrameWidth, nullptr, this);
    const QRect inside = rect().adjusted(frame, frame, -frame, -frame);
    const int count = static_cast<int>(buttons_.size());
    for (int i = 0; i < count; ++i) {
        const int top = inside.height() * i / count;
        buttons_[i]->setGeometry(inside.right() + 1 - sideButtonWidth, inside.top() + top, sideButtonWidth,
                                 inside.height() * (i + 1) / count - top);
    }
}

QSize TypedEdit::sizeHint() const
{
    constexpr int air = 12;
    const QSize line = QLineEdit::sizeHint();
    return {fontMetrics().horizontalAdvance(widest()) + textMargins().right() + air, line.height()};
}

bool everythingReadable(QWidget *window)
{
    TypedEdit *unreadable = nullptr;
    for (TypedEdit *edit : window->findChildren<TypedEdit *>()) {
        // What is disabled is not stored.
        if (edit->isEnabledTo(window) && !edit->judge() && !unreadable)
            unreadable = edit;
    }
    if (!unreadable)
        return true;
    core::warn(window, unreadable->problem());
    turnToPageOf(unreadable);
    unreadable->setFocus();
    unreadable->selectAll();
    return false;
}

} // namespace ui
