#include "platform/ui/NumberEdits.h"

#include "platform/core/Format.h"
#include "platform/core/NumberReader.h"

#include <QToolButton>

#include <cmath>

using namespace Qt::StringLiterals;

namespace ui {

namespace {

constexpr int largeStep = 10;

QString notANumber(const QString &text)
{
    return text.trimmed().isEmpty() ? u"manca il numero."_s : u"\"%1\" non è un numero valido."_s.arg(text);
}

QString outside(const QString &text, double minimum, double maximum, int places)
{
    return u"\"%1\" non è compreso tra %2 e %3."_s.arg(text, core::formatNumber(minimum, places),
                                                       core::formatNumber(maximum, places));
}

QString tooManyDecimals(const QString &text, int places)
{
    if (places == 0)
        return u"\"%1\" non è un numero intero."_s.arg(text);
    return u"\"%1\" ha più di %2."_s.arg(text, places == 2 ? u"due decimali"_s : u"%1 decimali"_s.arg(places));
}

QVariant within(double value, double minimum, double maximum)
{
    return value < minimum || value > maximum ? QVariant() : QVariant(value);
}

} // namespace

DecimalEdit::DecimalEdit(QWidget *parent)
    : TypedEdit(parent)
{
    setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    setPointTypesComma(true);
    setValue(0);
}

void DecimalEdit::setPrefix(const QString &prefix)
{
    prefix_ = prefix;
    setValue(value());
}

void DecimalEdit::setDecimals(int places)
{
    places_ = places;
    setValue(value());
}

void DecimalEdit::setRange(double minimum, double maximum)
{
    minimum_ = minimum;
    maximum_ = maximum;
}

TypedEdit::Reading DecimalEdit::read(const QString &text) const
{
    const std::optional<core::WrittenNumber> number = core::readNumber(text);
    if (!number)
        return {.problem = notANumber(text)};
    if (number->places > places_)
        return {.problem = tooManyDecimals(text, places_)};
    if (number->value < minimum_ || number->value > maximum_)
        return {.problem = outside(text, minimum_, maximum_, places_)};
    return {.value = number->value};
}

QString DecimalEdit::written(const QVariant &value, bool editing) const
{
    if (!value.isValid())
        return {};
    const QString number = core::formatNumber(value.toDouble(), places_);
    if (editing)
        return QString(number).remove(u'.');
    return number.startsWith(u'-') ? u'-' + prefix_ + number.mid(1) : prefix_ + number;
}

QVariant DecimalEdit::stepped(const QVariant &value, int steps, bool large) const
{
    return within(value.toDouble() + steps * (large ? largeStep : 1), minimum_, maximum_);
}

QString DecimalEdit::widest() const
{
    return prefix_ + u"-9.999.999.999,99"_s;
}

IntegerEdit::IntegerEdit(QWidget *parent)
    : TypedEdit(parent)
{
    setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    // A point is no more welcome than the comma it stands for.
    setPointTypesComma(true);
    setValue(0);
}

void IntegerEdit::setRange(int minimum, int maximum)
{
    minimum_ = minimum;
    maximum_ = maximum;
}

void IntegerEdit::showArrows()
{
    QList<QToolButton *> arrows;
    for (const int steps : {1, -1}) {
        auto *arrow = new QToolButton(this);
        arrow->setArrowType(steps > 0 ? Qt::UpArrow : Qt::DownArrow);
        arrow->setAutoRepeat(true);
        connect(arrow, &QToolButton::clicked, this, [this, steps] { step(steps, false); });
        arrows.append(arrow);
    }
    addSideButtons(arrows);
}

TypedEdit::Reading IntegerEdit::read(const QString &text) const
{
    const std::optional<core::WrittenNumber> number = core::readNumber(text);
    if (!number)
        return {.problem = notANumber(text)};
    if (number->places > 0)
        return {.problem = tooManyDecimals(text, 0)};
    if (number->value < minimum_ || number->value > maximum_)
        return {.problem = outside(text, minimum_, maximum_, 0)};
    return {.value = static_cast<int>(number->value)};
}

QString IntegerEdit::written(const QVariant &value, bool) const
{
    return value.isValid() ? QString::number(value.toLongLong()) : QString();
}

QVariant IntegerEdit::stepped(const QVariant &value, int steps, bool large) const
{
    const QVariant moved = within(value.toDouble() + steps * (large ? largeStep : 1), minimum_, maximum_);
    return moved.isValid() ? QVariant(moved.toInt()) : QVariant();
}

QString IntegerEdit::widest() const
{
    return QString::number(maximum_);
}

YearEdit::YearEdit(QWidget *parent)
    : IntegerEdit(parent)
{
    constexpr int first = 1900;
    constexpr int last = 3000;
    setRange(first, last);
    showArrows();
}

TypedEdit::Reading YearEdit::read(const QString &text) const
{
    const QString digits = text.trimmed();
    const bool two = digits.size() == 2 && digits[0].isDigit() && digits[1].isDigit();
    return IntegerEdit::read(two ? u"20"_s + digits : text);
}

} // namespace ui
