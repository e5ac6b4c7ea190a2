#pragma once
#include "platform/ui/ChoiceFields.h"

struct TAnagrafica;

/// Shows the module's selection dialog behind `action` modally; nothing when the user cancels. The text is empty unless
/// the dialog returns one.
std::optional<ui::Choice> chooseRecord(const QString &action);

/// The same for dialogs that return a key only; `read` looks up the text, nothing when it finds no record.
template <typename Reader>
std::optional<ui::Choice> chooseRecordReading(const QString &action, Reader read)
{
    const auto choice = chooseRecord(action);
    if (!choice)
        return {};
    const auto found = read(choice->key);
    if (found.id <= 0)
        return {};
    return ui::Choice{found.id, found.testo};
}

/// The nine texts of a counterpart as documents copy them: code, name, address, town, postcode, province, country, tax
/// code, VAT number. Carriers take the first seven.
QStringList anagraficaValues(const TAnagrafica &anagrafica);

/// The labels that show those texts: control names begin with `namePrefix`, columns with `columnPrefix`.
QList<ui::RecordLabel> anagraficaLabels(const QString &namePrefix, const QString &columnPrefix,
                                        bool withTaxCodes = true);

/// What is offered to somebody who types beside a chooser's button. The records stay in memory with whoever holds the
/// source.
///@{
/// Customers, suppliers or carriers, by name, code or, `withTaxCodes`, VAT number.
ui::PickSource anagraficaSource(const QString &table, const QString &key, bool withTaxCodes = true);
/// The rows of a table with one text.
ui::PickSource textSource(const QString &table, const QString &key, const QString &column);
///@}
