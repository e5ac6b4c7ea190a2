#pragma once
#include "platform/ui/ChoiceFields.h"
#include "platform/ui/Fields.h"

/// The inputs of a document's transport that are the same on every kind of document; the form that declares them owns
/// them through `box`.
ui::ChoiceField *campoTipoTrasporto(QWidget *box);
/// `label` is the one thing that differs.
ui::TextField *campoAspettoBeni(const QString &label, QWidget *box);
ui::IntegerField *campoColli(QWidget *box);
ui::DecimalField *campoPeso(QWidget *box);
