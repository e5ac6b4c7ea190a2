#pragma once
#include "platform/ui/LineEdit.h"
#include "platform/ui/OfferList.h"

#include <QTimer>

#include <functional>

namespace ui {

/// A record that is offered to somebody who types a part of what it is called.
struct PickOffer
{
    int key = -1;
    QStringList texts; ///< in the order of the list's columns
};

/// Where the records come from.
struct PickSource
{
    QList<OfferColumn> columns;
    /// Reads what find() looks through, when that was not done a moment ago; may throw.
    std::function<void()> refresh;
    /// Those that fit `text`, the best first; for an empty text those that there are. Asks nobody but memory.
    std::function<QList<PickOffer>(const QString &text)> find;
};

struct PickSpec
{
    QString name;
    QString hint; ///< what may be typed
    PickSource source;
    std::function<void(const PickOffer &offer)> take;
    std::function<void()> choose; ///< opens the dialog that the chooser's button opens
};

/// The small input beside a chooser's button: one types a part of the name, a code or a number, a list drops down,
/// Enter or Tab takes its current line, F4 opens the chooser's dialog. What was taken stands in the chooser's labels;
/// the input is empty again.
class PickInput : public LineEdit
{
    Q_OBJECT

public:
    /// An empty input.
    PickInput(const PickSpec &spec, QWidget *parent);

Q_SIGNALS:
    /// Enter took something, or was pressed in the empty input.
    void finished();

protected:
    bool event(QEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    bool takeKey(const QKeyEvent &key);
    OfferList &list();
    void hideList();
    void showOffers();
    int currentLine() const { return list_ ? list_->currentLine() : -1; }
    bool takeCurrent();
    void showRefusal();

    PickSpec spec_;
    OfferList *list_ = nullptr; ///< once something was offered: a form has many inputs, and lists take long to make
    QList<PickOffer> offers_;
    QTimer refreshLater_;
};

} // namespace ui
