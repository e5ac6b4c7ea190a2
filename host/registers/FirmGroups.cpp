#include "host/registers/FirmGroups.h"

#include "platform/core/Translation.h"
#include "platform/ui/RegisterParts.h"

using namespace Qt::StringLiterals;

namespace host {

QList<ui::RegisterGroup> firmGroups(FirmKind kind)
{
    QList<ui::RegisterGroup> groups = {{ui::parts::general, core::tr("Anagrafica"), {}},
                                       {ui::parts::general, core::tr("Dati fiscali"), {}},
                                       {ui::parts::general, core::tr("Contatti"), {}}};
    for (const FirmField &field : firmFieldsOf(kind)) {
        if (field.box == FirmBox::ElectronicInvoice && groups.size() == 3)
            groups.append({core::tr("Fattura elettronica"), {}, {}});
        groups[static_cast<int>(field.box)].fields.append({.name = field.control(),
                                                           .label = field.label,
                                                           .column = field.column,
                                                           .row = field.place.row,
                                                           .position = field.place.position,
                                                           .span = field.place.span,
                                                           .maxLength = field.length,
                                                           .upperCase = field.letters == FirmField::Letters::Capitals,
                                                           .isRight = field.isRight,
                                                           .doubt = field.doubt,
                                                           .help = field.help,
                                                           .codes = field.codes});
        if (!field.codes.isEmpty())
            groups[static_cast<int>(field.box)].fields.last().kind = ui::RegisterField::Kind::Code;
    }
    return groups;
}

} // namespace host
