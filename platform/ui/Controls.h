#pragma once
#include <QComboBox>
#include <QDateEdit>
#include <QLabel>
#include <QSpinBox>

/// Input controls as Italian desktop programs have them, whatever the machine's locale.
namespace ui {

/// Shown by a label that stands for a choice when nothing has been chosen.
inline const QString nothingChosen = QStringLiteral("...");

/// A one-line label that shortens what does not fit; the whole text is its tool tip.
class ElidedLabel : public QLabel
{
    Q_OBJECT

public:
    explicit ElidedLabel(QWidget *parent = nullptr);
    QSize minimumSizeHint() const override;
    QSize sizeHint() const override { return minimumSizeHint(); }

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QRect textArea() const;
};

/// An integer typed into a right-aligned edit without arrows.
class IntegerEdit : public QSpinBox
{
    Q_OBJECT

public:
    explicit IntegerEdit(QWidget *parent = nullptr);
};

/// A decimal with thousands separator, right-aligned, without arrows; the keypad's point types the decimal comma.
class DecimalEdit : public QDoubleSpinBox
{
    Q_OBJECT

public:
    explicit DecimalEdit(QWidget *parent = nullptr);

protected:
    void keyPressEvent(QKeyEvent *event) override;
};

/// A dd/MM/yyyy date with a drop-down calendar.
class DateEdit : public QDateEdit
{
    Q_OBJECT

public:
    explicit DateEdit(QWidget *parent = nullptr);
};

/// If `event` is the keypad's point, posts a comma to `target` instead and returns true.
bool typeKeypadPointAsComma(QWidget *target, const QKeyEvent *event);

/// Icons of the commands, from the style, so that they follow the desktop.
enum class Icon
{
    New,
    Open,
    Save,
    Delete,
    Close,
    Print,
    Pdf,
    Add,
    Remove,
    Up,
    Down,
    Search,
    Reset,
    Text,
    Choose,
    Clear,
    Service,
    Export
};
QIcon icon(Icon which);

} // namespace ui
