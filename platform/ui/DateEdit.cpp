#include "platform/ui/DateEdit.h"

#include "platform/core/Clock.h"
#include "platform/core/DateReader.h"
#include "platform/core/Format.h"
#include "platform/core/Translation.h"

#include <QCalendarWidget>
#include <QKeyEvent>
#include <QLocale>
#include <QScreen>
#include <QToolButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace ui {

namespace {

const QDate firstDate(1900, 1, 1);
const QDate lastDate(3000, 12, 31);

// The month to pick a day from, below the field; it goes away by itself when something else is clicked.
QFrame *calendarFor(QWidget *field, QDate date, const std::function<void(QDate)> &picked)
{
    auto *popup = new QFrame(field, Qt::Popup);
    popup->setAttribute(Qt::WA_DeleteOnClose);
    popup->setObjectName(u"calendario"_s);
    popup->setFrameStyle(QFrame::Box | QFrame::Plain);
    auto *calendar = new QCalendarWidget(popup);
    calendar->setLocale(QLocale(QLocale::Italian, QLocale::Italy));
    calendar->setFirstDayOfWeek(Qt::Monday);
    calendar->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    calendar->setDateRange(firstDate, lastDate);
    calendar->setSelectedDate(date);
    auto *layout = new QVBoxLayout(popup);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(calendar);
    popup->setFocusProxy(calendar);
    const auto pick = [popup, picked](QDate day) {
        picked(day);
        popup->close();
    };
    QObject::connect(calendar, &QCalendarWidget::clicked, popup, pick);
    QObject::connect(calendar, &QCalendarWidget::activated, popup, pick);
    popup->adjustSize();
    return popup;
}

// Below the field, or above it where the screen ends.
QPoint placeFor(const QWidget &field, QSize popup)
{
    const QRect screen = field.screen()->availableGeometry();
    QPoint place = field.mapToGlobal(QPoint(0, field.height()));
    if (place.y() + popup.height() > screen.bottom())
        place.setY(field.mapToGlobal(QPoint()).y() - popup.height());
    place.setX(std::clamp(place.x(), screen.left(), std::max(screen.left(), screen.right() - popup.width())));
    return place;
}

} // namespace

DateEdit::DateEdit(QWidget *parent)
    : TypedEdit(parent)
{
    auto *button = new QToolButton(this);
    button->setArrowType(Qt::DownArrow);
    button->setToolTip(core::tr("Calendario"));
    connect(button, &QToolButton::clicked, this, &DateEdit::openCalendar);
    addSideButtons({button});
    setDate(core::today());
}

TypedEdit::Reading DateEdit::read(const QString &text) const
{
    const std::optional<QDate> date = core::readDate(text, core::today());
    if (text.trimmed().isEmpty())
        return {.problem = core::tr("manca la data.")};
    if (!date)
        return {.problem = core::tr("\"%1\" non è una data valida.").arg(text)};
    if (*date < firstDate || *date > lastDate)
        return {.problem = core::tr("la data deve essere compresa tra il %1 e il %2.")
                               .arg(core::formatDate(firstDate), core::formatDate(lastDate))};
    return {.value = *date};
}

QString DateEdit::written(const QVariant &value, bool) const
{
    return core::formatDate(value.toDate());
}

QVariant DateEdit::stepped(const QVariant &value, int steps, bool large) const
{
    const QDate from = value.toDate();
    if (!from.isValid())
        return core::today();
    const QDate moved = large ? from.addMonths(steps) : from.addDays(steps);
    return moved < firstDate || moved > lastDate ? QVariant() : QVariant(moved);
}

void DateEdit::keyPressEvent(QKeyEvent *event)
{
    const bool pull =
        event->key() == Qt::Key_F4 || (event->key() == Qt::Key_Down && event->modifiers().testFlag(Qt::AltModifier));
    if (pull)
        openCalendar();
    else
        TypedEdit::keyPressEvent(event);
}

void DateEdit::openCalendar()
{
    if (isReadOnly())
        return;
    setFocus();
    const QDate shown = date().isValid() ? date() : core::today();
    QFrame *popup = calendarFor(this, shown, [this](QDate day) { take(day); });
    popup->move(placeFor(*this, popup->sizeHint()));
    popup->show();
    popup->setFocus();
}

TimeEdit::TimeEdit(QWidget *parent)
    : TypedEdit(parent)
{
    setTime(core::now().time());
}

TypedEdit::Reading TimeEdit::read(const QString &text) const
{
    const std::optional<QTime> time = core::readTime(text);
    if (text.trimmed().isEmpty())
        return {.problem = core::tr("manca l'ora.")};
    if (!time)
        return {.problem = core::tr("\"%1\" non è un'ora valida.").arg(text)};
    return {.value = *time};
}

QString TimeEdit::written(const QVariant &value, bool) const
{
    return value.toTime().toString(u"HH:mm"_s);
}

QVariant TimeEdit::stepped(const QVariant &value, int steps, bool large) const
{
    constexpr int minute = 60;
    constexpr int hour = 60 * minute;
    const QTime from = value.toTime();
    return from.isValid() ? from.addSecs(steps * (large ? hour : minute)) : core::now().time();
}

} // namespace ui
