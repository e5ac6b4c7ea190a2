#include "magazzino/ui/RecordChoice.h"

#include "host/FirmFields.h"
#include "magazzino/uMMGModMagazzino.h"
#include "magazzino/ui/MMGModSelezionaBase.h"

using namespace Qt::StringLiterals;

std::optional<ui::Choice> chooseRecord(const QString &action)
{
    TMMGModSelezionaBase &dialog = Modulo().selectionDialog(action);
    if (ui::runModal(dialog) != QDialog::Accepted)
        return {};
    const TCodiceTesto chosen = dialog.ApriSelezionato();
    if (chosen.id <= 0)
        return {};
    return ui::Choice{chosen.id, chosen.testo};
}

QStringList anagraficaValues(const TAnagrafica &anagrafica)
{
    QStringList values;
    for (const host::FirmField &field : host::firmFields()) {
        if (field.copy.line >= 0)
            values.append(anagrafica.*field.member);
    }
    return values;
}

QList<ui::RecordLabel> anagraficaLabels(const QString &namePrefix, const QString &columnPrefix, bool withTaxCodes)
{
    QList<ui::RecordLabel> labels;
    for (const host::FirmField &field : host::firmFields()) {
        if (field.copy.line < 0 || (field.box == host::FirmBox::TaxData && !withTaxCodes))
            continue;
        // Somebody is always addressed; a document without a carrier has none of its columns.
        labels.append({namePrefix + field.name, field.label + u':', columnPrefix + field.column, field.copy.line,
                       field.copy.characters, withTaxCodes && field.required});
    }
    return labels;
}
