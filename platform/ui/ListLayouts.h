#pragma once
#include <QMap>
#include <QStringList>

/// What the users of the program changed in the layout of their lists, remembered for each of them.
namespace ui {

/// What differs from a list's own layout. Columns are named by their fields.
struct ListLayout
{
    QMap<QString, int> widths = {}; ///< pixels
    QStringList order = {};         ///< from left to right; as declared while empty
    QString sortedBy = {};          ///< the column by which the rows are ordered; in the query's order while empty
    Qt::SortOrder sortOrder = Qt::AscendingOrder;

    bool operator==(const ListLayout &) const = default;
};

/// The kept layout of a list; widths that make no sense are left out.
ListLayout keptLayout(const QString &list);
/// Keeps `layout` in the place of the one kept before. Throws core::Error when the file cannot be written.
void keepLayout(const QString &list, const ListLayout &layout);

} // namespace ui
