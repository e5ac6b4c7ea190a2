#pragma once
#include "platform/ui/DateEdit.h"
#include "platform/ui/Field.h"
#include "platform/ui/NumberEdits.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QPlainTextEdit>
#include <QRadioButton>

namespace ui {

struct TextSpec
{
    QString name; ///< control name
    QString label;
    QString column;
    int maxLength = 100; ///< characters
    bool upperCase = false;
    bool readOnly = false; ///< filled by program only
};

/// A one-line text; an empty one is stored as empty text.
class TextField : public ColumnField
{
public:
    /// The field that `spec` describes, empty.
    TextField(const TextSpec &spec, QWidget *parent);

    /// What stands there.
    QString text() const { return edit_->text(); }
    /// Does nothing stand there?
    bool isEmpty() const { return edit_->text().isEmpty(); }
    /// Shows `text`, as if the user had typed it.
    void setText(const QString &text) { edit_->setText(text); }

    QWidget *widget() const override { return edit_; }
    void clear() override { edit_->clear(); }

protected:
    void show(const QVariant &stored) override;
    QVariant toStore() const override { return text(); }

private:
    LineEdit *edit_;
};

struct MemoSpec
{
    QString name;
    QString label;
    QString column;
};

/// A text of several lines; Tab leaves it. Untouched it is written back as it was loaded, NULL and its line ends too.
class MemoField : public ColumnField
{
public:
    /// The field that `spec` describes, empty.
    MemoField(const MemoSpec &spec, QWidget *parent);

    /// What stands there, its lines ended by line feeds.
    QString text() const { return edit_->toPlainText(); }
    /// Adds `text` behind what is there.
    void append(const QString &text);

    QWidget *widget() const override { return edit_; }
    void clear() override { show(QStringLiteral("")); }
    QVariant state() const override;
    void restore(const QVariant &state) override;

protected:
    void show(const QVariant &stored) override;
    QVariant toStore() const override;

private:
    QPlainTextEdit *edit_;
    // What was loaded and the text that the control made of it.
    QVariant loaded_;
    QString shown_;
};

/// A value that is typed. Untouched it is written back as it was loaded.
template <typename Edit>
class TypedField : public ColumnField
{
public:
    QWidget *widget() const override { return edit_; }
    void clear() override { edit_->load(initial_); }
    QVariant state() const override { return edit_->state(); }
    void restore(const QVariant &state) override { edit_->restore(state); }

protected:
    /// What `spec` describes; `initial` stands there until a record is loaded and for its NULL.
    template <typename Spec>
    TypedField(const Spec &spec, const QVariant &initial, QWidget *parent)
        : ColumnField(spec.label, spec.column, parent)
        , edit_(new Edit(parent))
        , initial_(initial)
    {
        edit_->setObjectName(spec.name);
        connect(edit_, &TypedEdit::changed, this, &Field::edited);
    }

    void show(const QVariant &stored) override { edit_->load(stored, initial_); }
    QVariant toStore() const override { return edit_->toStore(); }
    Edit *edit() const { return edit_; }

private:
    Edit *edit_;
    QVariant initial_;
};

struct IntegerSpec
{
    QString name;
    QString label;
    QString column;
    int minimum = 0;
    int maximum = 999'999'999;
    int initial = 0;
};

/// An integer; NULL shows as the initial value.
class IntegerField : public TypedField<IntegerEdit>
{
public:
    /// The field that `spec` describes, at its initial value.
    IntegerField(const IntegerSpec &spec, QWidget *parent);

    /// The number that stands there; 0 while it cannot be read.
    int value() const { return edit()->value(); }
    /// Shows a number.
    void setValue(int value) { edit()->setValue(value); }
};

struct DecimalSpec
{
    QString name;
    QString label;
    QString column;
    int places = 2;
    QString prefix; ///< "€ " for money
    double initial = 0;
    double minimum = 0;
    bool readOnly = false;
};

/// A decimal number; NULL shows as the initial value. Untouched it keeps the decimals that are not shown.
class DecimalField : public TypedField<DecimalEdit>
{
public:
    /// The field that `spec` describes, at its initial value.
    DecimalField(const DecimalSpec &spec, QWidget *parent);

    /// The number that stands there; 0 while it cannot be read.
    double value() const { return edit()->value(); }
    /// Shows a number.
    void setValue(double value) { edit()->setValue(value); }
};

struct DateSpec
{
    QString name;
    QString label;
    QString column;
    QString yearColumn; ///< also takes the year of the date; may be empty
};

/// A date; cleared it is today. One that was loaded as NULL shows nothing and is written back as NULL while untouched.
class DateField : public TypedField<DateEdit>
{
public:
    /// The field that `spec` describes, on today.
    DateField(const DateSpec &spec, QWidget *parent);

    /// The date that stands there; invalid while it cannot be read, or when none does.
    QDate date() const { return edit()->date(); }
    /// Shows a date; an invalid one shows nothing.
    void setDate(QDate date) { edit()->setDate(date); }

    void clear() override;
    void write(data::DataSet &record) const override;

private:
    QString yearColumn_;
};

struct MomentSpec
{
    QString checkName;
    QString dateName;
    QString timeName;
    QString caption; ///< of the check box
    QString dateColumn;
    QString timeColumn;
};

/// A date and a time behind a check box: stored only while it is checked, else both NULL.
class MomentField : public Field
{
public:
    /// The field that `spec` describes, not checked.
    MomentField(const MomentSpec &spec, QWidget *parent);

    QWidget *widget() const override { return box_; }
    void clear() override;
    void load(const data::DataSet &record) override;
    void write(data::DataSet &record) const override;
    QVariant state() const override;
    void restore(const QVariant &state) override;

private:
    QWidget *box_;
    QCheckBox *check_;
    DateEdit *date_;
    TimeEdit *time_;
    MomentSpec spec_;
};

struct FlagSpec
{
    QString name;
    QString caption;
    QString column;
};

/// A check box, stored as 'True' or 'False'.
class FlagField : public ColumnField
{
public:
    /// The field that `spec` describes, not checked.
    FlagField(const FlagSpec &spec, QWidget *parent);

    /// Is it checked?
    bool isChecked() const { return check_->isChecked(); }
    /// Checks it, or takes the check back.
    void setChecked(bool checked) { check_->setChecked(checked); }

    QWidget *widget() const override { return check_; }
    void clear() override { check_->setChecked(false); }

protected:
    void show(const QVariant &stored) override;
    QVariant toStore() const override;

private:
    QCheckBox *check_;
};

struct RadioSpec
{
    QString name;
    QString caption;
    QString column;
    QStringList items; ///< as shown and as stored
};

/// A choice of texts, one button each. A stored text that is none of them leaves the choice as it was.
class RadioField : public ColumnField
{
public:
    /// The field that `spec` describes, on its first item.
    RadioField(const RadioSpec &spec, QWidget *parent);

    /// Of the item chosen.
    QString text() const;

    QWidget *widget() const override { return box_; }
    void clear() override { buttons_.first()->setChecked(true); }

protected:
    void show(const QVariant &stored) override;
    QVariant toStore() const override { return text(); }

private:
    QGroupBox *box_;
    QList<QRadioButton *> buttons_;
};

/// A column without a control: what was loaded is written back, a new record gets `initial`.
class KeptField : public ColumnField
{
public:
    /// Holds `initial` until a record is loaded.
    KeptField(QString column, QVariant initial, QObject *parent);

    QWidget *widget() const override { return nullptr; }
    void clear() override { value_ = initial_; }

protected:
    void show(const QVariant &stored) override { value_ = stored; }
    QVariant toStore() const override { return value_; }

private:
    QVariant initial_;
    QVariant value_;
};

} // namespace ui
