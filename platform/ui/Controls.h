#pragma once
#include <QComboBox>
#include <QLabel>
#include <QPushButton>

#include <functional>

class QLineEdit;

/// Small controls and the icons of the commands.
namespace ui {

/// A control or command that was just made, now with the name by which forms, manual and tests find it.
template <typename Object>
Object *named(const QString &name, Object *object)
{
    object->setObjectName(name);
    return object;
}

/// A layout of `parent` that begins at its edges: what it holds stands in line with what is around it.
template <typename Layout>
Layout *withoutMargins(QWidget *parent)
{
    auto *layout = new Layout(parent);
    layout->setContentsMargins({});
    return layout;
}

/// A button of a dialog that Enter presses only while it has the focus.
QPushButton *plainButton(const QString &name, const QString &caption, QWidget *parent);

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

/// A drop-down list whose choice changes only by what is meant for it: not by Ctrl and a Page key, nor by the wheel
/// while the focus is elsewhere.
class ComboBox : public QComboBox
{
    Q_OBJECT

public:
    explicit ComboBox(QWidget *parent = nullptr);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
};

/// `palette` with the colours of what is refused, readable on light and on dark ground; so is what is selected in it.
QPalette refusedPalette(QPalette palette);
/// Gives `widget` the colours that `change` makes of the theme's, now and whenever the theme changes. The last one
/// counts.
void recolour(QWidget *widget, const std::function<QPalette(QPalette)> &change);

/// What only the program fills must not look like something to type into.
void showReadOnly(QLineEdit *edit);

/// The mark of what a save requires: it stands before the input, behind the caption or button that names it.
QLabel *requiredMark(QWidget *parent);

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
    Recover,
    Export,
    Import,
    Send,
    Check,
    Done,
    Rename,
    LastTime,
    Duplicate,
    FitWidth,
    FitPage
};
/// The icon of a command.
QIcon icon(Icon which);

} // namespace ui
