#pragma once
#include "magazzino/ui/MMGInserimento.h"
#include "platform/ui/EntryForm.h"
#include "platform/ui/Fields.h"

/// Entry form of a register with one text.
class TMMGInserimentoVoce : public TMMGInserimento<ui::EntryForm>
{
    Q_OBJECT

public:
    /// `dataSet` of the module; `field` is the one text.
    TMMGInserimentoVoce(const ui::EntryFormSpec &spec, const QString &dataSet, const ui::TextSpec &field,
                        QWidget *owner);

protected:
    ui::TextField *testo() const { return text_; }

private:
    ui::TextField *text_;
};
