#include "platform/ui/NumberEdits.h"

#include "platform/core/Format.h"
#include "platform/core/NumberReader.h"
#include "platform/core/Translation.h"

#include <QToolButton>

using namespace Qt::StringLiterals;

namespace ui {

namespace {

QString tooManyDecimals(const QString &text, int places)
{
    if (places == 0)
        return core::tr("\"%1\" non è un numero intero.").arg(text);
    return core::tr("\"%1\" ha più di %2.")
        .arg(text, places == 2 ? core::tr("due decimali") : core::tr("%1 decimali").arg(places));
}

} // namespace

NumberEdit::NumberEdit(int places, double maximum, QWidget *parent)
    : TypedEdit(parent)
    , places_(places)
    , maximum_(maximum)
{
    setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    // Where no decimals may be typed a point is no more welcome than the comma it stands for.
    setPointTypesComma(true);
}

void NumberEdit::setRange(double minimum, double maximum)
{
    minimum_ = minimum;
    maximum_ = maximum;
}

TypedEdit::Reading NumberEdit::read(const QString &text) const
{
    const std::optional<core::WrittenNumber> number = core::readNumber(text);
    if (text.trimmed().isEmpty())
        return {.problem = core::tr("manca il numero.")};
    if (!number)
        return {.problem = core::tr("\"%1\" non è un numero valido.").arg(text)};
    if (number->places > places_)
        return {.problem = tooManyDecimals(text, places_)};
    if (number->value < minimum_ || number->value > maximum_)
        return {.problem =
                    core::tr("\"%1\" non è compreso tra %2 e %3.")
                        .arg(text, core::formatNumber(minimum_, places_), core::formatNumber(maximum_, places_))};
    return {.value = stored(number->value)};
}

QVariant NumberEdit::stepped(const QVariant &value, int steps, bool large) const
{
    constexpr int largeStep = 10;
    const double moved = value.toDouble() + steps * (large ? largeStep : 1);
    return moved < minimum_ || moved > maximum_ ? QVariant() : stored(moved);
}

DecimalEdit::DecimalEdit(QWidget *parent)
    : NumberEdit(2, 99'999'999'999.99, parent)
{
    setValue(0);
}

void DecimalEdit::setPrefix(const QString &prefix)
{
    prefix_ = prefix;
    setValue(value());
}

void DecimalEdit::setDecimals(int places)
{
    setPlaces(places);
    setValue(value());
}

QString DecimalEdit::written(const QVariant &value, bool editing) const
{
    if (!value.isValid())
        return {};
    if (editing)
        return core::plainNumber(value.toDouble(), places());
    const QString number = core::formatNumber(value.toDouble(), places());
    return number.startsWith(u'-') ? u'-' + prefix_ + number.mid(1) : prefix_ + number;
}

QString DecimalEdit::widest() const
{
    return prefix_ + u"-9.999.999.999,99"_s;
}

IntegerEdit::IntegerEdit(QWidget *parent)
    : NumberEdit(0, 999'999'999, parent)
{
    setValue(0);
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

QString IntegerEdit::written(const QVariant &value, bool) const
{
    return value.isValid() ? QString::number(value.toLongLong()) : QString();
}

QString IntegerEdit::widest() const
{
    return QString::number(static_cast<qint64>(maximum()));
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
