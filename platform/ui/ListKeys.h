#pragma once
#include <QObject>
#include <QVariant>

#include <QKeyEvent>
#include <optional>

namespace ui {

class ListPanel;

/// The keyboard of a list of records: how its filters, grid and letter bar work together, whatever window they are in.
///
/// Enter in a filter searches and selects nothing by itself; pressed once more over the same filters it searches again
/// and takes the row when it is the only one. Down leads from a text filter or the letter bar into the grid, onto the
/// first row when none is selected. A letter typed where nothing is entered presses that letter's button.
class ListKeys : public QObject
{
    Q_OBJECT

public:
    /// Serves `list`, which stands in `window`, and belongs to it.
    ListKeys(ListPanel &list, QWidget &window);

    /// The next Enter in a filter only searches: the window is used anew.
    void forget() { searched_.reset(); }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool filterKey(const QWidget *filter, const QKeyEvent &event);
    bool windowKey(const QKeyEvent &event);
    bool pressLetter(const QKeyEvent &event);
    void enterInFilter();
    void enterGrid();

    ListPanel &list_;
    QWidget &window_;
    std::optional<QVariantList> searched_; // what Enter last searched for, while its rows stand in the grid
    bool searching_ = false;
};

} // namespace ui
