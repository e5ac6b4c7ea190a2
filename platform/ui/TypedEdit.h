#pragma once
#include "platform/ui/LineEdit.h"

#include <QToolButton>
#include <QVariant>

namespace ui {

/// A line in which a value is typed. It takes every key and judges when it is left, by Enter and at a save: a text that
/// can be read is written out in full, any other turns red and stays as it is. It never becomes another value.
///
/// A value set by the program is shown as it is, even one that nobody could type here, and is what toStore() gives back
/// as long as the user leaves it alone.
class TypedEdit : public LineEdit
{
    Q_OBJECT
    Q_PROPERTY(bool red READ isRed)

public:
    explicit TypedEdit(QWidget *parent);

    /// Shows what a column holds; for NULL `ifNull`, or nothing.
    void load(const QVariant &stored, const QVariant &ifNull = {});
    /// What the column shall hold: what was loaded while it is untouched, else what was typed.
    QVariant toStore() const;
    /// Text, loaded value and colour, to be brought back by restore().
    QVariant state() const;
    void restore(const QVariant &state);

    /// What is wrong with the text, in a sentence that begins with the label beside the control; empty when nothing is.
    QString problem() const;
    /// Writes a good text out in full and marks any other red; true for a good one.
    bool judge();
    bool isRed() const { return red_; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

Q_SIGNALS:
    /// The user typed something, or the program set another value.
    void changed();

protected:
    /// What a text means: a value, or else what is wrong with it.
    struct Reading
    {
        QVariant value;
        QString problem;
    };
    virtual Reading read(const QString &text) const = 0;
    /// The text of a value; `editing` while the focus is in the control.
    virtual QString written(const QVariant &value, bool editing) const = 0;
    /// `value` moved by `steps` small (arrow keys) or large (Page keys) steps; invalid where it cannot be moved.
    virtual QVariant stepped(const QVariant &value, int steps, bool large) const = 0;
    /// The longest usual text, for the width.
    virtual QString widest() const = 0;

    /// The value that the text stands for now; invalid while it cannot be read.
    QVariant current() const;
    /// Takes over a value that the user gave otherwise than by typing.
    void take(const QVariant &value);
    void step(int steps, bool large);
    /// Puts small buttons over the right end, one below the other.
    void addSideButtons(const QList<QToolButton *> &buttons);

    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    bool isTyped() const;
    void showValue();
    void showText(const QString &text);
    void setRed(bool red);
    void textTyped();
    bool stepByKey(const QKeyEvent &event);

    QVariant stored_;
    QVariant value_; // what is shown; differs from stored_ for NULL
    bool red_ = false;
    bool showing_ = false;
    QList<QToolButton *> buttons_;
};

/// Judges every enabled TypedEdit below `window`, in the order in which they were made. The first that cannot be read
/// is told ("Attenzione"), its page is turned to, and it gets the focus; false then.
bool everythingReadable(QWidget *window);

} // namespace ui
