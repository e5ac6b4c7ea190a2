#pragma once
#include <QTableWidget>

namespace ui {

/// A column of what drops down under a field in which something is looked for.
struct OfferColumn
{
    QString header;
    int width = 0; ///< pixels; 0 takes the rest
    bool number = false;
};

/// The list that drops down from a field in which something is looked for. It never takes the focus: the field keeps it
/// and hands over the keys that lead through the list.
class OfferList : public QTableWidget
{
    Q_OBJECT

public:
    /// As wide as `width` pixels, with a header unless there is just one column.
    OfferList(const QList<OfferColumn> &columns, int width, QWidget *parent);

    /// Shows `lines`, the texts of each from left to right, at `field`, below it or, where there is no room, above;
    /// hides when there are none. The first one is the current one, unless `unchosen`.
    void offerLines(const QList<QStringList> &lines, const QWidget &field, bool unchosen = false);
    /// Position of the current line; -1 while hidden or when none is current.
    int currentLine() const { return isVisible() ? currentRow() : -1; }
    /// Takes a key that leads through the list; false for any other, and while hidden.
    bool handle(int key);

Q_SIGNALS:
    /// A line was clicked; it is the current one.
    void picked();

private:
    void showAt(const QWidget &field);

    QList<OfferColumn> columns_;
    int listWidth_;
};

} // namespace ui
