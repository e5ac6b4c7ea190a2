#pragma once
#include <QObject>
#include <QTableView>
#include <QTimer>

namespace ui {

class RowsModel;

/// Fills the columns of a list whose figures somebody else knows: for the rows in view only, once they stand still.
class ListFigures : public QObject
{
    Q_OBJECT

public:
    /// Of `view`, which shows `model`; lives as long as it.
    ListFigures(QTableView *view, RowsModel *model);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void load();
    void dropSorting(int column);

    QTableView *view_;
    RowsModel *model_;
    QTimer later_;
    bool stale_ = false;
};

} // namespace ui
