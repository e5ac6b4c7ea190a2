#include "platform/ui/RegisterParts.h"

using namespace Qt::StringLiterals;

namespace ui::parts {

RegisterField text(const QString &name, const QString &label, const QString &column, int maxLength, int row,
                   int position, int span)
{
    return {.name = name,
            .label = label,
            .column = column,
            .row = row,
            .position = position,
            .span = span,
            .maxLength = maxLength};
}

RegisterField upperText(const QString &name, const QString &label, const QString &column, int maxLength, int row,
                        int position)
{
    RegisterField field = text(name, label, column, maxLength, row, position);
    field.upperCase = true;
    return field;
}

RegisterField number(RegisterField::Kind kind, const QString &name, const QString &label, const QString &column,
                     int row, int position)
{
    return {.name = name, .label = label, .column = column, .kind = kind, .row = row, .position = position};
}

RegisterField withHelp(RegisterField field, const QString &help)
{
    field.help = help;
    return field;
}

} // namespace ui::parts
