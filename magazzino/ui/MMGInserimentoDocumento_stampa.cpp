#include "magazzino/ui/MMGInserimentoDocumento.h"

#include "platform/core/Messages.h"

using namespace Qt::StringLiterals;

void TMMGInserimentoDocumento::addPrintCommands()
{
    const auto document = [this]() -> std::optional<DocumentHead> {
        return savedForPrinting() ? std::optional(head()) : std::nullopt;
    };
    for (const ui::Command &command : printCommands(kind_, this, document))
        addCommand(command);
}

// Only what is stored can be printed: a document with changes is saved first, when the user agrees.
bool TMMGInserimentoDocumento::savedForPrinting()
{
    if (!finishEditing())
        return false;
    if (!NewRecord() && !Modified())
        return true;
    return core::confirm(this, u"Per stampare il documento è necessario salvarlo.\n\rSalvarlo ora?"_s) && SalvaRecord();
}
