#pragma once
#include "platform/ui/RegisterSpec.h"

/// What the declarations of the registers are made of.
namespace ui::parts {

inline const QString general = QStringLiteral("Generale");
inline const QString codeIsMissing = QStringLiteral("Non è stato indicato il codice!");
inline const QString descriptionIsMissing = QStringLiteral("Non è stata indicata la descrizione!");
inline const QString nameIsMissing = QStringLiteral("Non è stata indicata la ragione sociale!");
inline const QString codeIsTaken = QStringLiteral("Codice già utilizzato!");

RegisterField text(const QString &name, const QString &label, const QString &column, int maxLength, int row,
                   int position = 0, int span = 1);
RegisterField upperText(const QString &name, const QString &label, const QString &column, int maxLength, int row,
                        int position = 0);
RegisterField number(RegisterField::Kind kind, const QString &name, const QString &label, const QString &column,
                     int row, int position = 0);
/// `field` with what it is for.
RegisterField withHelp(RegisterField field, const QString &help);

} // namespace ui::parts
