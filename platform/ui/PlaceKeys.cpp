#include "platform/ui/PlaceKeys.h"

#include "platform/core/Translation.h"
#include "platform/data/WordIndex.h"
#include "platform/ui/CallAfter.h"
#include "platform/ui/ChildForm.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QSet>
#include <QTabBar>
#include <QTabWidget>
#include <QToolButton>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace ui {

namespace {

bool isInput(const QWidget &widget)
{
    const bool isButton = qobject_cast<const QPushButton *>(&widget) || qobject_cast<const QToolButton *>(&widget);
    return qobject_cast<const QLineEdit *>(&widget) || qobject_cast<const QComboBox *>(&widget) ||
           qobject_cast<const QPlainTextEdit *>(&widget) || qobject_cast<const QAbstractSpinBox *>(&widget) ||
           qobject_cast<const QAbstractItemView *>(&widget) ||
           (qobject_cast<const QAbstractButton *>(&widget) && !isButton);
}

// The editor of a cell and the line of a drop-down list belong to another input.
bool isPartOfInput(const QWidget &widget, const QWidget &window)
{
    for (const QWidget *around = widget.parentWidget(); around && around != &window; around = around->parentWidget()) {
        if (isInput(*around))
            return true;
    }
    return false;
}

// Of buttons that exclude each other Tab reaches the chosen one, too.
bool isLeftOut(const QWidget &widget)
{
    const auto *button = qobject_cast<const QRadioButton *>(&widget);
    return button && !button->isChecked();
}

// From the top, and from the left.
QList<QWidget *> fieldsInSight(const QWidget &window)
{
    QList<QWidget *> fields;
    for (QWidget *widget : window.findChildren<QWidget *>()) {
        if (widget->isVisibleTo(&window) && (widget->focusPolicy() & Qt::TabFocus) == Qt::TabFocus &&
            isInput(*widget) && !isPartOfInput(*widget, window) && !isLeftOut(*widget))
            fields.append(widget);
    }
    std::stable_sort(fields.begin(), fields.end(), [&window](const QWidget *one, const QWidget *other) {
        const QPoint first = one->mapTo(&window, QPoint());
        const QPoint second = other->mapTo(&window, QPoint());
        return std::pair(first.y(), first.x()) < std::pair(second.y(), second.x());
    });
    return fields;
}

const QGroupBox *groupOf(const QWidget &widget)
{
    for (const QWidget *around = widget.parentWidget(); around; around = around->parentWidget()) {
        if (const auto *group = qobject_cast<const QGroupBox *>(around))
            return group;
    }
    return nullptr;
}

// The label to the left of the field. Elided ones show what is chosen, and a mark has no letters.
QString labelBefore(const QWidget &field, const QList<QLabel *> &labels, const QWidget &window)
{
    static const QRegularExpression letters(u"\\w\\w"_s);
    const QRect place(field.mapTo(&window, QPoint()), field.size());
    const QLabel *nearest = nullptr;
    int nearestEnd = 0;
    for (const QLabel *label : labels) {
        const QRect beside(label->mapTo(&window, QPoint()), label->size());
        const bool isBefore = beside.right() < place.left() && beside.top() < place.center().y() &&
                              beside.bottom() > place.center().y() && beside.right() > nearestEnd;
        if (isBefore && label->isVisibleTo(&window) && !qobject_cast<const ElidedLabel *>(label) &&
            groupOf(*label) == groupOf(field) && label->text().contains(letters)) {
            nearest = label;
            nearestEnd = beside.right();
        }
    }
    return nearest ? nearest->text() : QString();
}

// What stands beside the field, or around it.
QString captionOf(const QWidget &field, const QWidget &window)
{
    const QList<QLabel *> labels = window.findChildren<QLabel *>();
    for (const QLabel *label : labels) {
        if (label->buddy() == &field)
            return label->text();
    }
    if (const auto *button = qobject_cast<const QAbstractButton *>(&field))
        return button->text();
    if (qobject_cast<const QAbstractItemView *>(&field))
        return core::tr("Elenco");
    const auto *line = qobject_cast<const QLineEdit *>(&field);
    const QGroupBox *group = groupOf(field);
    for (const QString &caption : {labelBefore(field, labels, window), group ? group->title().trimmed() : QString(),
                                   line ? line->placeholderText() : QString()}) {
        if (!caption.isEmpty())
            return caption;
    }
    return core::tr("Campo");
}

QKeySequence altKey(QChar character, bool withShift)
{
    return {u"Alt+%1%2"_s.arg(withShift ? u"Shift+"_s : QString()).arg(character)};
}

// Those of the main menu, which work in all windows, and of the window's own commands.
QSet<QKeySequence> takenKeys(const QWidget &window)
{
    QSet<QKeySequence> taken;
    const auto *main = qobject_cast<const QMainWindow *>(window.window());
    const QList<QAction *> menus = main && main->menuWidget() ? main->menuWidget()->actions() : QList<QAction *>();
    for (const QAction *menu : menus)
        taken.insert(QKeySequence::mnemonic(menu->text()));
    for (const QAction *action : window.findChildren<QAction *>())
        taken.insert(action->shortcut());
    for (const QAbstractButton *button : window.findChildren<QAbstractButton *>())
        taken.insert(button->shortcut());
    return taken;
}

// Letters of the caption, first letters of words before others.
QString lettersFor(const QString &caption)
{
    QString first;
    QString others;
    QChar before = u' ';
    const QString text = data::searchable(caption);
    for (const QChar letter : text) {
        if (letter >= u'A' && letter <= u'Z')
            (before.isLetter() ? others : first).append(letter);
        before = letter;
    }
    return first + others;
}

std::optional<QKeySequence> freeKey(const QString &caption, const QSet<QKeySequence> &taken)
{
    for (const QString &letters : {lettersFor(caption), u"ABCDEFGHIJKLMNOPQRSTUVWXYZ"_s}) {
        for (const bool withShift : {false, true}) {
            for (const QChar letter : letters) {
                if (const QKeySequence key = altKey(letter, withShift); !taken.contains(key))
                    return key;
            }
        }
    }
    return {};
}

// With the focus on the main window itself, on a tool bar say, the keys are those of its active child window.
QWidget *servedWindow()
{
    QWidget *window = windowOf(QApplication::focusWidget());
    const auto *main = qobject_cast<QMainWindow *>(window);
    if (!main)
        return window;
    const auto *area = main->findChild<QMdiArea *>();
    const QMdiSubWindow *active = area ? area->activeSubWindow() : nullptr;
    return active ? active->widget() : nullptr;
}

QList<PlaceKey> pageKeys(const QWidget &window)
{
    QList<PlaceKey> keys;
    auto *pages = window.findChild<QTabWidget *>();
    const int last = pages && pages->isVisibleTo(&window) ? std::min(pages->count(), 9) : 0;
    for (int page = 0; page < last; ++page)
        keys.append({altKey(QChar(u'1' + page), false), pages->tabText(page).trimmed(), pages, page});
    return keys;
}

void goTo(const PlaceKey &place)
{
    if (place.page < 0) {
        place.target->setFocus(Qt::ShortcutFocusReason);
        return;
    }
    auto *pages = qobject_cast<QTabWidget *>(place.target);
    pages->setCurrentIndex(place.page);
    const QList<QWidget *> fields = fieldsInSight(*pages->currentWidget());
    const auto first =
        std::find_if(fields.begin(), fields.end(), [](const QWidget *field) { return field->isEnabled(); });
    (first == fields.end() ? pages : *first)->setFocus(Qt::ShortcutFocusReason);
}

/// The keys, drawn over the corners of what they lead to.
class KeyHints : public QWidget
{
public:
    explicit KeyHints(QWidget *window)
        : QWidget(window)
        , places_(placeKeys(*window))
    {
        setObjectName(u"tastiDeiCampi"_s);
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setGeometry(window->rect());
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        for (const PlaceKey &place : places_) {
            if (!place.target->visibleRegion().isEmpty())
                drawHint(painter, place);
        }
    }

private:
    void drawHint(QPainter &painter, const PlaceKey &place) const
    {
        const QString text = place.key.toString().mid(4).replace(u"Shift+"_s, u"⇧"_s);
        QRect box(QPoint(), fontMetrics().size(Qt::TextSingleLine, text) + QSize(8, 2));
        const auto *pages = qobject_cast<const QTabWidget *>(place.target);
        const QPoint corner = pages ? pages->tabBar()->tabRect(place.page).topLeft() : place.target->rect().topLeft();
        const QWidget *on = pages ? static_cast<const QWidget *>(pages->tabBar()) : place.target;
        // To the left of the field, whose text stays to be read.
        box.moveTopRight(on->mapTo(parentWidget(), corner) + QPoint(3, -4));
        box.moveTopLeft({std::max(box.left(), 0), std::max(box.top(), 0)});
        painter.setPen(palette().color(QPalette::ToolTipText));
        painter.setBrush(palette().color(QPalette::ToolTipBase));
        painter.drawRoundedRect(box, 3, 3);
        painter.drawText(box, Qt::AlignCenter, text);
    }

    QList<PlaceKey> places_;
};

} // namespace

QWidget *windowOf(QWidget *widget)
{
    while (widget && !widget->isWindow() && !qobject_cast<ChildForm *>(widget))
        widget = widget->parentWidget();
    return widget;
}

QList<PlaceKey> placeKeys(const QWidget &window)
{
    QList<PlaceKey> places = pageKeys(window);
    QSet<QKeySequence> taken = takenKeys(window);
    for (QWidget *field : fieldsInSight(window)) {
        const QString caption = captionOf(*field, window);
        if (const auto key = freeKey(caption, taken)) {
            taken.insert(*key);
            places.append({*key, caption, field});
        }
    }
    return places;
}

PlaceKeyFilter::PlaceKeyFilter(QObject *owner)
    : QObject(owner)
{
    constexpr int delay = 350; // ms: longer than a key with Alt takes
    callAfter(held_, delay, this, &PlaceKeyFilter::showHints);
    qApp->installEventFilter(this);
}

bool PlaceKeyFilter::eventFilter(QObject *, QEvent *event)
{
    const QEvent::Type type = event->type();
    if (type == QEvent::KeyPress)
        return keyPressed(*static_cast<QKeyEvent *>(event));
    if (type != QEvent::KeyRelease && type != QEvent::MouseButtonPress && type != QEvent::ApplicationDeactivate &&
        type != QEvent::WindowDeactivate)
        return false;
    held_.stop();
    // Alt let go behind the hints does not lead into the menu.
    const bool wasShown = hints_ && type == QEvent::KeyRelease;
    delete hints_;
    return wasShown;
}

bool PlaceKeyFilter::keyPressed(const QKeyEvent &event)
{
    if (event.key() == Qt::Key_Alt) {
        if (!hints_ && !event.isAutoRepeat())
            held_.start();
        return false;
    }
    held_.stop();
    delete hints_;
    QWidget *window = servedWindow();
    const Qt::KeyboardModifiers modifiers = event.modifiers() & ~Qt::KeypadModifier;
    if (!window || QApplication::activePopupWidget() || !modifiers.testFlag(Qt::AltModifier) ||
        (modifiers & ~(Qt::AltModifier | Qt::ShiftModifier)))
        return false;
    const QKeySequence pressed(QKeyCombination(modifiers, static_cast<Qt::Key>(event.key())));
    for (const PlaceKey &place : placeKeys(*window)) {
        if (place.key == pressed) {
            goTo(place);
            return true;
        }
    }
    return false;
}

void PlaceKeyFilter::showHints()
{
    QWidget *window = servedWindow();
    if (!window || QApplication::activePopupWidget())
        return;
    hints_ = new KeyHints(window);
    hints_->show();
    hints_->raise();
    // Before the menu bar's filter, which came when Alt was pressed.
    qApp->installEventFilter(this);
}

} // namespace ui
