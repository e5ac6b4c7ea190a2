#pragma once
#include "platform/ui/TypedEdit.h"

namespace ui {

/// What edits of numbers have in common: right-aligned, with a range and a number of decimals.
class NumberEdit : public TypedEdit
{
public:
    /// What may be typed.
    void setRange(double minimum, double maximum);
    /// Changes the lower end of the range alone.
    void setMinimum(double minimum) { setRange(minimum, maximum_); }

protected:
    NumberEdit(int places, double maximum, QWidget *parent);

    int places() const { return places_; }
    void setPlaces(int places) { places_ = places; }
    double maximum() const { return maximum_; }
    /// The number as current() and toStore() give it.
    virtual QVariant stored(double number) const { return number; }

    Reading read(const QString &text) const override;
    QVariant stepped(const QVariant &value, int steps, bool large) const override;

private:
    int places_;
    double minimum_ = 0;
    double maximum_;
};

/// A decimal number: shown with thousands separated, edited without (core::readNumber). A typed point is
/// the decimal comma.
class DecimalEdit : public NumberEdit
{
    Q_OBJECT

public:
    explicit DecimalEdit(QWidget *parent = nullptr);

    /// Text before the number, "€ " for money.
    void setPrefix(const QString &prefix);
    /// Decimals that are shown and that may be typed, 0 to 6.
    void setDecimals(int places);

    /// The number as it stands there; 0 while it cannot be read.
    double value() const { return current().toDouble(); }
    /// Shows a number, also one that could not be typed here.
    void setValue(double value) { load(value); }

protected:
    QString written(const QVariant &value, bool editing) const override;
    QString widest() const override;

private:
    QString prefix_;
};

/// An integer, 0 to 999.999.999 unless told otherwise.
class IntegerEdit : public NumberEdit
{
    Q_OBJECT

public:
    explicit IntegerEdit(QWidget *parent = nullptr);

    /// Two small arrows at the right end, as a spin field has.
    void showArrows();

    /// The number as it stands there; 0 while it cannot be read.
    int value() const { return current().toInt(); }
    /// Shows a number, also one that could not be typed here.
    void setValue(int value) { load(value); }

protected:
    QVariant stored(double number) const override { return static_cast<int>(number); }
    QString written(const QVariant &value, bool editing) const override;
    QString widest() const override;
};

/// A year, 1900 to 3000; two digits mean 2000 to 2099.
class YearEdit : public IntegerEdit
{
    Q_OBJECT

public:
    explicit YearEdit(QWidget *parent = nullptr);

protected:
    Reading read(const QString &text) const override;
};

} // namespace ui
