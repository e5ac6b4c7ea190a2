#pragma once
#include <QObject>

namespace ui {

/// In every menu of the program, the bar among them, a letter chooses: the entry that alone begins with it is taken at
/// once, of several each press marks the next one. Where no entry begins with it, the words inside count. Letters that
/// a menu underlines come first.
class MenuKeyFilter : public QObject
{
    Q_OBJECT

public:
    /// Works as long as `owner` lives.
    explicit MenuKeyFilter(QObject *owner);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
};

} // namespace ui
