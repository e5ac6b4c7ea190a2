#pragma once
#include "platform/data/SqlText.h"

#include <QToolButton>
#include <QWidget>

namespace ui {

/// A bar of buttons "A" to "Z" and "*": one stop of the Tab key, in which the arrow keys, Home and End move.
class LetterBar : public QWidget
{
    Q_OBJECT

public:
    explicit LetterBar(QWidget *parent);

    /// Presses the button of `letter`, capital or small; false when there is none.
    bool press(QChar letter);
    /// Marks the button of the letter that the list shows; none for an empty text.
    void showCurrent(const QString &letter);

    /// The WHERE clause for a pressed button: names in `column` that begin with the letter, empty text for "*". `like`
    /// is the text of the comparison with its blanks, where it is fixed.
    static QString condition(const QString &caption, const QString &column, const QString &like, data::Values &values);

Q_SIGNALS:
    /// A button was pressed: its letter, or "*".
    void pressed(const QString &caption);
    /// Down was pressed in the bar: on to what the letters fill.
    void leftDown();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void stopAt(qsizetype position);

    QList<QToolButton *> buttons_;
};

} // namespace ui
