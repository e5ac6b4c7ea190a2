#include "platform/data/StoredValues.h"

#include "platform/data/DataSet.h"

namespace data {

namespace {

// Written and fetched values have different types (int and qint64), and beyond 15 digits a decimal does not come back
// as the same double.
QString comparable(const QVariant &value)
{
    constexpr int digits = 15;
    return value.metaType().id() == QMetaType::Double ? QString::number(value.toDouble(), 'g', digits)
                                                      : value.toString();
}

QStringList comparable(const QVariantList &values, int leftOut)
{
    QStringList texts;
    texts.reserve(values.size());
    for (int column = 0; column < values.size(); ++column) {
        if (column != leftOut)
            texts.append(comparable(values[column]));
    }
    return texts;
}

} // namespace

StoredValues::StoredValues(const DataSet &record, const DataSet *details)
{
    if (record.atEnd())
        return;
    rows_.append(comparable(record.currentValues(), -1));
    if (!details)
        return;
    const int key = details->rows().indexOf(details->updateTarget().key);
    for (qsizetype row = 0; row < details->rows().size(); ++row)
        rows_.append(comparable(details->rows().values(row), key));
}

StoredValues StoredValues::ofState(const QVariant &state)
{
    StoredValues values;
    for (const QVariant &row : state.toList())
        values.rows_.append(row.toStringList());
    return values;
}

QVariant StoredValues::state() const
{
    return QVariantList(rows_.cbegin(), rows_.cend());
}

} // namespace data
