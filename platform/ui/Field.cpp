#include "platform/ui/Field.h"

namespace ui {

void ColumnField::load(const data::DataSet &record)
{
    show(record.value(column_));
}

void ColumnField::write(data::DataSet &record) const
{
    record.setValue(column_, toStore());
}

} // namespace ui
