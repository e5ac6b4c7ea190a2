#pragma once
#include "platform/ui/TypedEdit.h"

namespace ui {

/// A decimal number, right-aligned: shown with thousands separated, edited without (core::readNumber). A typed point is
/// the decimal comma.
class DecimalEdit : public TypedEdit
{
    Q_OBJECT

public:
    explicit DecimalEdit(QWidget *parent = nullptr);

    /// Text before the number, "€ " for money.
    void setPrefix(const QString &prefix);
    /// Decimals that are shown and that may be typed, 0 to 6.
    void setDecimals(int places);
    /// What may be typed.
    void setRange(double minimum, double maximum);
    /// Changes the lower end of the range alone.
    void setMinimum(double minimum) { setRange(minimum, maximum_); }

    /// The number as it stands there; 0 while it cannot be read.
    double value() const { return current().toDouble(); }
    /// Shows a number, also one that could not be typed here.
    void setValue(double value) { load(value); }

protected:
    Reading read(const QString &text) const override;
    QString written(const QVariant &value, bool editing) const override;
    QVariant stepped(const QVariant &value, int steps, bool large) const override;
    QString widest() const override;

private:
    QString prefix_;
    int places_ = 2;
    double minimum_ = 0;
    double maximum_ = 99'999'999'999.99;
};

/// An integer, right-aligned, 0 to 999.999.999 unless told otherwise.
class IntegerEdit : public TypedEdit
{
    Q_OBJECT

public:
    explicit IntegerEdit(QWidget *parent = nullptr);

    /// What may be typed.
    void setRange(int minimum, int maximum);
    /// Two small arrows at the right end, as a spin field has.
    void showArrows();

    /// The number as it stands there; 0 while it cannot be read.
    int value() const { return current().toInt(); }
    /// Shows a number, also one that could not be typed here.
    void setValue(int value) { load(value); }

protected:
    Reading read(const QString &text) const override;
    QString written(const QVariant &value, bool editing) const override;
    QVariant stepped(const QVariant &value, int steps, bool large) const override;
    QString widest() const override;

private:
    int minimum_ = 0;
    int maximum_ = 999'999'999;
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
