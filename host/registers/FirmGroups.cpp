#include "host/registers/FirmGroups.h"

#include "host/registers/RegisterParts.h"

using namespace Qt::StringLiterals;

namespace host {

QList<RegisterGroup> firmGroups(FirmKind kind)
{
    QList<RegisterGroup> groups = {{parts::general, u"Anagrafica"_s, {}},
                                   {parts::general, u"Dati fiscali"_s, {}},
                                   {parts::general, u"Contatti"_s, {}}};
    for (const FirmField &field : firmFieldsOf(kind))
        groups[static_cast<int>(field.box)].fields.append({.name = field.control(),
                                                           .label = field.label,
                                                           .column = field.column,
                                                           .row = field.place.row,
                                                           .position = field.place.position,
                                                           .span = field.place.span,
                                                           .maxLength = field.length,
                                                           .upperCase = field.letters == FirmField::Letters::Capitals,
                                                           .isRight = field.isRight});
    return groups;
}

} // namespace host
