#include "platform/ui/Fields.h"

#include "platform/core/Clock.h"
#include "platform/core/Format.h"
#include "platform/core/LineText.h"
#include "platform/data/DataSet.h"
#include "platform/ui/Controls.h"

#include <QHBoxLayout>
#include <QValidator>

using namespace Qt::StringLiterals;

namespace ui {

namespace {

class UpperCase : public QValidator
{
public:
    using QValidator::QValidator;
    State validate(QString &text, int &) const override
    {
        text = text.toUpper();
        return Acceptable;
    }
};

// Wide enough for its limit where that is short, so a two-letter province does not stretch over the form.
void limitWidth(QLineEdit *edit, int maxLength)
{
    constexpr int alwaysShort = 20;
    constexpr int frame = 16;
    if (maxLength <= alwaysShort) {
        const QChar typical = maxLength <= 5 ? u'0' : u'M';
        edit->setMaximumWidth(edit->fontMetrics().horizontalAdvance(QString(maxLength + 1, typical)) + frame);
    }
}

} // namespace

TextField::TextField(const TextSpec &spec, QWidget *parent)
    : ColumnField(spec.label, spec.column, parent)
    , edit_(named(spec.name, new LineEdit(parent)))
{
    edit_->setMaxLength(spec.maxLength);
    if (spec.upperCase)
        edit_->setValidator(new UpperCase(edit_));
    if (spec.readOnly)
        showReadOnly(edit_);
    limitWidth(edit_, spec.maxLength);
    connect(edit_, &QLineEdit::textChanged, this, &Field::edited);
}

void TextField::show(const QVariant &stored)
{
    edit_->setText(stored.toString());
    edit_->setCursorPosition(0);
}

MemoField::MemoField(const MemoSpec &spec, QWidget *parent)
    : ColumnField(spec.label, spec.column, parent)
    , edit_(new QPlainTextEdit(parent))
{
    edit_->setObjectName(spec.name);
    edit_->setTabChangesFocus(true);
    edit_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    connect(edit_, &QPlainTextEdit::textChanged, this, &Field::edited);
}

void MemoField::append(const QString &text)
{
    // What is shown has lost the ends of its lines as they are stored.
    const QString before = edit_->toPlainText();
    const QString joined = (before == shown_ ? loaded_.toString() : before) + text;
    edit_->moveCursor(QTextCursor::End);
    edit_->insertPlainText(core::withLineFeeds(text));
    loaded_ = joined;
    shown_ = edit_->toPlainText();
}

void MemoField::show(const QVariant &stored)
{
    loaded_ = stored;
    edit_->setPlainText(core::withLineFeeds(stored.toString()));
    shown_ = edit_->toPlainText();
}

QVariant MemoField::toStore() const
{
    const QString text = edit_->toPlainText();
    return text == shown_ ? loaded_ : text;
}

QVariant MemoField::state() const
{
    return QVariantList{loaded_, shown_, edit_->toPlainText()};
}

void MemoField::restore(const QVariant &state)
{
    const QVariantList parts = state.toList();
    edit_->setPlainText(parts.value(2).toString());
    loaded_ = parts.value(0);
    shown_ = parts.value(1).toString();
}

IntegerField::IntegerField(const IntegerSpec &spec, QWidget *parent)
    : TypedField(spec, spec.initial, parent)
{
    edit()->setRange(spec.minimum, spec.maximum);
    edit()->setMaximumWidth(std::max(110, edit()->sizeHint().width()));
}

DecimalField::DecimalField(const DecimalSpec &spec, QWidget *parent)
    : TypedField(spec, spec.initial, parent)
{
    edit()->setDecimals(spec.places);
    edit()->setMinimum(spec.minimum);
    if (spec.readOnly)
        showReadOnly(edit());
    edit()->setPrefix(spec.prefix);
    edit()->setMaximumWidth(std::max(150, edit()->sizeHint().width()));
}

DateField::DateField(const DateSpec &spec, QWidget *parent)
    : TypedField(spec, {}, parent)
    , yearColumn_(spec.yearColumn)
{
    edit()->setMaximumWidth(std::max(130, edit()->sizeHint().width()));
}

void DateField::clear()
{
    edit()->setDate(core::today());
}

void DateField::write(data::DataSet &record) const
{
    TypedField::write(record);
    if (!yearColumn_.isEmpty())
        record.setValue(yearColumn_, date().year());
}

MomentField::MomentField(const MomentSpec &spec, QWidget *parent)
    : Field({}, parent)
    , box_(new QWidget(parent))
    , check_(named(spec.checkName, new QCheckBox(spec.caption, box_)))
    , date_(named(spec.dateName, new DateEdit(box_)))
    , time_(named(spec.timeName, new TimeEdit(box_)))
    , spec_(spec)
{
    date_->setAccessibleName(spec.caption);
    time_->setAccessibleName(spec.caption);
    auto *line = withoutMargins<QHBoxLayout>(box_);
    line->addWidget(check_);
    line->addWidget(date_);
    line->addWidget(time_);
    line->addStretch();
    connect(check_, &QCheckBox::toggled, date_, &QWidget::setEnabled);
    connect(check_, &QCheckBox::toggled, time_, &QWidget::setEnabled);
    connect(check_, &QCheckBox::toggled, this, &Field::edited);
    connect(date_, &TypedEdit::changed, this, &Field::edited);
    connect(time_, &TypedEdit::changed, this, &Field::edited);
}

void MomentField::clear()
{
    check_->setChecked(false);
    date_->setEnabled(false);
    time_->setEnabled(false);
    date_->setDate(core::today());
    time_->setTime(core::now().time());
}

void MomentField::load(const data::DataSet &record)
{
    clear();
    if (record.isNull(spec_.dateColumn) && record.isNull(spec_.timeColumn))
        return;
    check_->setChecked(true);
    date_->load(record.value(spec_.dateColumn));
    time_->load(record.value(spec_.timeColumn));
}

void MomentField::write(data::DataSet &record) const
{
    const bool given = check_->isChecked();
    record.setValue(spec_.dateColumn, given ? date_->toStore() : QVariant());
    record.setValue(spec_.timeColumn, given ? time_->toStore() : QVariant());
}

QVariant MomentField::state() const
{
    return QVariantList{check_->isChecked(), date_->state(), time_->state()};
}

void MomentField::restore(const QVariant &state)
{
    const QVariantList parts = state.toList();
    check_->setChecked(parts.value(0).toBool());
    date_->restore(parts.value(1));
    time_->restore(parts.value(2));
}

FlagField::FlagField(const FlagSpec &spec, QWidget *parent)
    : ColumnField({}, spec.column, parent)
    , check_(new QCheckBox(spec.caption, parent))
{
    check_->setObjectName(spec.name);
    connect(check_, &QCheckBox::toggled, this, &Field::edited);
}

void FlagField::show(const QVariant &stored)
{
    setChecked(core::parseFlag(stored.toString()).value_or(false));
}

QVariant FlagField::toStore() const
{
    return core::flagText(isChecked());
}

RadioField::RadioField(const RadioSpec &spec, QWidget *parent)
    : ColumnField({}, spec.column, parent)
    , box_(new QGroupBox(spec.caption, parent))
{
    box_->setObjectName(spec.name);
    auto *line = new QHBoxLayout(box_);
    for (const QString &item : spec.items) {
        auto *button = new QRadioButton(item, box_);
        line->addWidget(button);
        buttons_.append(button);
        connect(button, &QRadioButton::toggled, this, &Field::edited);
    }
    line->addStretch();
}

QString RadioField::text() const
{
    const auto chosen = std::find_if(buttons_.cbegin(), buttons_.cend(),
                                     [](const QRadioButton *button) { return button->isChecked(); });
    return chosen == buttons_.cend() ? QString() : (*chosen)->text();
}

void RadioField::show(const QVariant &stored)
{
    for (QRadioButton *button : std::as_const(buttons_)) {
        if (button->text() == stored.toString())
            button->setChecked(true);
    }
}

KeptField::KeptField(QString column, QVariant initial, QObject *parent)
    : ColumnField({}, std::move(column), parent)
    , initial_(std::move(initial))
    , value_(initial_)
{
}

} // namespace ui
