#pragma once
#include "platform/ui/ChoiceFields.h"
#include "platform/ui/Fields.h"

/// The inputs of a document's transport that are the same on every kind of document; the form that declares them owns
/// them through `box`.
///@{
/// `choose` is what the button does; nothing for a choice that it made itself.
ui::ChoiceField *transportTypeField(const std::function<std::optional<ui::Choice>()> &choose, QWidget *box);
/// `label` is the one thing that differs.
ui::TextField *appearanceField(const QString &label, QWidget *box);
/// How many packages.
ui::IntegerField *packagesField(QWidget *box);
/// The weight, in the unit beside it.
ui::DecimalField *weightField(QWidget *box);
///@}
