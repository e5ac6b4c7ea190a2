#include "platform/ui/ListKeys.h"

#include "platform/core/Messages.h"
#include "platform/ui/LetterBar.h"
#include "platform/ui/ListPanel.h"
#include "platform/ui/TypedEdit.h"

#include <QAbstractButton>

namespace ui {

namespace {

bool isEnter(const QKeyEvent &event)
{
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

bool isPlain(const QKeyEvent &event)
{
    return !(event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
}

} // namespace

ListKeys::ListKeys(ListPanel &list, QWidget &window)
    : QObject(&list)
    , list_(list)
    , window_(window)
{
    for (QWidget *input : list.filterInputs())
        input->installEventFilter(this);
    list.grid().installEventFilter(this);
    window.installEventFilter(this);
    if (list.letters())
        connect(list.letters(), &LetterBar::leftDown, this, &ListKeys::enterGrid);
    // Rows that came another way, from the letter bar say, are not what Enter searched for.
    connect(&list.grid().rows(), &QAbstractItemModel::modelReset, this, [this] {
        if (!searching_)
            forget();
    });
}

// The window sees the keys that the control with the focus had no use for.
bool ListKeys::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress)
        return false;
    const auto &key = *static_cast<QKeyEvent *>(event);
    if (watched == &window_)
        return windowKey(key);
    if (watched == &list_.grid())
        return pressLetter(key);
    return filterKey(static_cast<QWidget *>(watched), key);
}

bool ListKeys::filterKey(const QWidget *filter, const QKeyEvent &event)
{
    if (isEnter(event)) {
        enterInFilter();
        return true;
    }
    // Years, dates and categories have a use of their own for the arrows.
    const bool isText = qobject_cast<const QLineEdit *>(filter) && !qobject_cast<const TypedEdit *>(filter);
    if (event.key() != Qt::Key_Down || !isPlain(event) || !isText)
        return false;
    enterGrid();
    return true;
}

bool ListKeys::windowKey(const QKeyEvent &event)
{
    QWidget *focused = window_.focusWidget();
    auto *button = qobject_cast<QAbstractButton *>(focused);
    // No button is the default one, or Enter in a filter would press it; the one with the focus is still meant.
    if (button && isEnter(event)) {
        button->click();
        return true;
    }
    return !list_.filterInputs().contains(focused) && pressLetter(event);
}

bool ListKeys::pressLetter(const QKeyEvent &event)
{
    return list_.letters() && isPlain(event) && event.text().size() == 1 &&
           list_.letters()->press(event.text().front());
}

void ListKeys::enterInFilter()
{
    const QVariantList asked = list_.asked();
    const bool again = searched_ == asked;
    searching_ = true;
    bool found = false;
    core::guarded(&list_, [this, &found] { found = list_.search(); });
    searching_ = false;
    searched_.reset();
    if (!found)
        return;
    searched_ = asked;
    if (again && list_.grid().rows().rowCount() == 1) {
        list_.grid().selectRow(0);
        Q_EMIT list_.grid().chosen();
    }
}

void ListKeys::enterGrid()
{
    if (list_.grid().rows().rowCount() == 0)
        return;
    if (list_.grid().selectedKey() < 0)
        list_.grid().selectRow(0);
    list_.grid().setFocus(Qt::OtherFocusReason);
}

} // namespace ui
