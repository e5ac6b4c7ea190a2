#pragma once
#include "platform/ui/ListLayouts.h"

#include <QObject>
#include <QTableView>

namespace ui {

class RowsModel;

/// How the columns of a list stand: as declared until the user drags the border of a header, or the header itself. One
/// that takes the rest follows the list's own width.
class ColumnLayout : public QObject
{
    Q_OBJECT

public:
    /// Of `grid`, which shows `model`; lives as long as it.
    ColumnLayout(QTableView *grid, RowsModel *model);

    /// Fits the columns into the width of the list.
    void fit();
    /// Brings back widths, order and sorting that the user gave the list of this name, and keeps those of later on.
    void keep(const QString &list);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void addCommand(const QString &name, const QString &caption, void (ColumnLayout::*run)());
    void dropWidths();
    void dropOrder();
    QList<int> wantedWidths(int available) const;
    void columnResized(int column, int from, int to);
    int columnOf(const QString &field) const;
    QStringList declaredFields() const;
    QStringList fieldsFromLeft() const;
    void show(const QStringList &fieldsFromLeft);
    void save();

    QTableView *grid_;
    RowsModel *model_;
    QString list_;             // under this name the layout is kept; nowhere while empty
    ListLayout kept_;          // what stands there
    QMap<QString, int> given_; // widths that the user gave, by field
    bool fitting_ = false;
};

} // namespace ui
