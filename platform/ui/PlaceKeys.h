#pragma once
#include <QKeyEvent>
#include <QKeySequence>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QTimer>

class QWidget;

namespace ui {

/// A key that leads to a page of a window, or to a field that is in sight.
struct PlaceKey
{
    QKeySequence key;
    QString caption;
    QWidget *target; ///< the field; the page's tab widget
    int page = -1;   ///< counted from 0; -1 for a field
};

/// The window, child window or dialog, that `widget` is in; null for null.
QWidget *windowOf(QWidget *widget);

/// Alt and a digit for each page of `window`, Alt and a letter of its caption for each field in sight; with Shift where
/// the letter is taken, be it by a menu. They follow from what is in sight alone.
QList<PlaceKey> placeKeys(const QWidget &window);

/// Serves these keys in all windows of the program, and shows them beside the fields while Alt is held.
class PlaceKeyFilter : public QObject
{
    Q_OBJECT

public:
    /// Works as long as `owner` lives.
    explicit PlaceKeyFilter(QObject *owner);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool keyPressed(const QKeyEvent &event);
    void showHints();

    QTimer held_;
    QPointer<QWidget> hints_;
};

} // namespace ui
