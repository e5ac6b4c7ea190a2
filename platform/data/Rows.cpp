#include "platform/data/Rows.h"

#include "platform/core/Error.h"
#include "platform/core/Translation.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace data {

int Rows::indexOf(QStringView column) const
{
    for (int i = 0; i < columns_.size(); ++i) {
        if (column.compare(columns_[i].name, Qt::CaseInsensitive) == 0)
            return i;
    }
    return -1;
}

int Rows::require(QStringView column) const
{
    const int index = indexOf(column);
    if (index < 0)
        throw core::Error(core::tr("Il campo \"%1\" non esiste nel risultato.").arg(column));
    return index;
}

const QVariant &Rows::at(qsizetype row, QStringView column) const
{
    return values_.at(row).at(require(column));
}

void Rows::sortByInteger(QStringView column)
{
    const int index = require(column);
    std::stable_sort(values_.begin(), values_.end(), [index](const QVariantList &left, const QVariantList &right) {
        return left[index].toLongLong() < right[index].toLongLong();
    });
}

} // namespace data
