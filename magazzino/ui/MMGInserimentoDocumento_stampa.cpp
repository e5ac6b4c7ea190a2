#include "magazzino/ui/MMGInserimentoDocumento.h"

#include "magazzino/uMMGModMagazzino.h"
#include "platform/core/Format.h"
#include "platform/core/Log.h"
#include "platform/core/Messages.h"
#include "platform/core/Translation.h"

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
    return core::confirm(this, core::tr("Per stampare il documento è necessario salvarlo.\n\rSalvarlo ora?")) &&
           SalvaRecord();
}

// Beside the number: is what was given away still what is stored?
QLabel *TMMGInserimentoDocumento::createPrintedHint()
{
    printedLabel_ = ui::named(u"lblStampato"_s, new ui::ElidedLabel(this));
    connect(&Modulo(), &TMMGModMagazzino::stampato, this, &TMMGInserimentoDocumento::printedElsewhere);
    return printedLabel_;
}

// `stored` stands for the document's data as they are stored now.
void TMMGInserimentoDocumento::showPrinted(const ImprontaDocumento &stored)
{
    if (!printed_) {
        printedLabel_->clear();
        return;
    }
    const bool changed = !stored.vale(printed_->impronta);
    printedLabel_->setText(core::tr("Stampato il %1 alle %2%3")
                               .arg(core::formatDate(printed_->il.date()), printed_->il.toString(u"HH:mm"_s),
                                    changed ? core::tr(", modificato dopo") : QString()));
    QFont font = printedLabel_->font();
    font.setBold(changed);
    printedLabel_->setFont(font);
}

void TMMGInserimentoDocumento::forgetPrinted()
{
    printed_.reset();
    showPrinted({});
}

// By this form, by a list or by a preview.
void TMMGInserimentoDocumento::printedElsewhere(const QString &table, int id)
{
    if (!kind_.print.report.isEmpty() && table == kind_.table && id == storedKey())
        readPrinted();
}

// It is a hint: who has the document open does not need it to go on, and a save that was committed has not failed.
void TMMGInserimentoDocumento::readPrinted()
{
    try {
        printed_ = ultimaStampa(kind_, storedKey());
        showPrinted(printed_ ? improntaAttuale(kind_, storedKey()) : ImprontaDocumento());
    } catch (const std::exception &error) {
        forgetPrinted();
        core::logError(u"ultima stampa del documento"_s, error);
    }
}
