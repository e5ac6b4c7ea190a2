#pragma once
#include <QAbstractItemModel>
#include <QLabel>
#include <QWidget>

namespace ui {

/// The line under a list: how many rows a search has found, and whether something of them was changed since.
class ListFooter : public QWidget
{
    Q_OBJECT

public:
    /// Counts `rows` from the first search on.
    ListFooter(QAbstractItemModel &rows, QWidget *parent);

    /// A search has filled the rows, which are true as of now.
    void searched();
    /// The rows are not what was asked for: nothing is said of them, but that they wait for another search.
    void failed();
    bool hasSearched() const { return searched_; }
    /// Says quietly, or no longer, that the rows are older than what is stored.
    void setOutdated(bool outdated);
    bool isOutdated() const { return outdated_; }

private:
    void count();

    QAbstractItemModel &rows_;
    QLabel *count_;
    QLabel *hint_;
    bool searched_ = false;
    bool outdated_ = false;
};

} // namespace ui
