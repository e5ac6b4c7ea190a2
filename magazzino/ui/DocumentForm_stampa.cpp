#include "magazzino/ui/DocumentForm.h"

#include "magazzino/reports/MMGStampe.h"
#include "magazzino/uMMGModMagazzino.h"
#include "platform/core/Messages.h"
#include "platform/ui/Dialogs.h"

using namespace Qt::StringLiterals;

void TMMGInserimentoDocumento::addPrintCommands(const PrintRoutine &print)
{
    addCommand({.name = u"actStampa"_s,
                .caption = u"Stampa"_s,
                .run =
                    [this, print] {
                        if (!savedForPrinting())
                            return;
                        const ui::WaitCursor wait;
                        print(IdRecord(), {}, TKxReportDestination::Anteprima);
                    },
                .icon = ui::Icon::Print,
                .shortcut = QKeySequence(u"Ctrl+P"_s)});
    addCommand({.name = u"actSalvaPDF"_s,
                .caption = u"Salva in PDF"_s,
                .run =
                    [this, print] {
                        if (!savedForPrinting())
                            return;
                        const QString file =
                            Modulo().ScegliFilePDF(this, NomePDF(spec_.documentKind, numero(), documentDate()));
                        if (file.isEmpty())
                            return;
                        const ui::WaitCursor wait;
                        print(IdRecord(), file, TKxReportDestination::FilePDF);
                    },
                .icon = ui::Icon::Pdf});
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
