#pragma once
#include "platform/core/CodeText.h"

#include <QList>

/// The codes of the Italian electronic invoice that the registers keep, and what can be said of one by looking at it.
namespace host {

/// The codes that may be stored, with their meaning in Italian, in their official order. Codes that exist but are
/// refused in new invoices (plain N2, N3 and N6) are none of them.
///@{
const QList<core::CodeText> &taxRegimes();
const QList<core::CodeText> &liquidationStates();
const QList<core::CodeText> &vatNatures();
const QList<core::CodeText> &paymentMethods();
const QList<core::CodeText> &paymentTerms();
///@}

/// True when `codes` has `code`, in these very letters.
bool hasCode(const QList<core::CodeText> &codes, const QString &code);

/// True for the seven capitals or digits by which the exchange system finds a recipient.
bool isRecipientCode(const QString &text);
/// True for the two capitals that stand for a country.
bool isCountryCode(const QString &text);
/// True for two capitals.
bool isProvinceCode(const QString &text);
/// True for an account number with the right check digits; blanks between its groups do not count.
bool isIban(const QString &text);
/// True for a name, the sign @ and a place with a point in it.
bool isMailAddress(const QString &text);

} // namespace host
