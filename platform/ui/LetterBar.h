#pragma once
#include <QWidget>

namespace ui {

/// A bar of buttons "A" to "Z" and "*".
class LetterBar : public QWidget
{
    Q_OBJECT

public:
    explicit LetterBar(QWidget *parent);

    /// The WHERE clause for a pressed button: names in `column` that begin with the letter, empty text for "*".
    /// `spacing` stands around LIKE.
    static QString condition(const QString &caption, const QString &column,
                             const QString &like = QStringLiteral(" LIKE "));

Q_SIGNALS:
    void pressed(const QString &caption);
};

} // namespace ui
