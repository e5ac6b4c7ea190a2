// What a document's form reads from the database and writes to it.
#include "magazzino/documents/Movements.h"
#include "magazzino/uMMGModMagazzino.h"
#include "magazzino/ui/EntryLine.h"
#include "magazzino/ui/MMGInserimentoDocumento.h"
#include "platform/core/Translation.h"
#include "platform/data/DataSet.h"

using namespace Qt::StringLiterals;

void TMMGInserimentoDocumento::clearDetails()
{
    // The rows go before the header is looked for, also when there is no such document; this is intended.
    grid_->finishEditing();
    entry_->clear();
    CreaGrigliaVuotaRigheDocumento();
    forgetPrinted();
}

// The header stays as it is, over no rows: it must not be saved over the document that it belonged to.
void TMMGInserimentoDocumento::recordMissing()
{
    SetNewRecord(true);
    SetIdRecord(-1);
}

data::DataSet *TMMGInserimentoDocumento::details() const
{
    return &Modulo().dataSet(kind_.rowsDataSet());
}

void TMMGInserimentoDocumento::readFurther()
{
    beside_ = readBesideRows(kind_, record().integer(kind_.key));
    mayEdit_ = mayEdit(kind_);
}

void TMMGInserimentoDocumento::loadDetails()
{
    showRight(mayEdit_);
    grid_->rowsModel().setRows(readRows(kind_, beside_.costs, *details()));
    grid_->fitRowHeights();
    showTotals([this](const DocumentTotal &total) { return record().number(total.column); });
    printed_ = beside_.printed;
    showPrinted(printed_ ? improntaDocumento(kind_, record().rows(), details()->rows()) : ImprontaDocumento());
    counterpartChosen({});
}

// The shown totals are not always those of the rows: an opened document shows the stored ones.
QVariant TMMGInserimentoDocumento::detailState() const
{
    QStringList totals;
    for (const auto &[total, label] : totalLabels_)
        totals.append(label->text());
    return QVariantList{valuesOf(grid_->rowsModel().rows()), totals};
}

void TMMGInserimentoDocumento::restoreDetails(const QVariant &state)
{
    grid_->rowsModel().setRows(rowsOf(state.toList().value(0).toList()));
    grid_->fitRowHeights();
    const QStringList totals = state.toList().value(1).toStringList();
    for (qsizetype i = 0; i < totals.size(); ++i)
        totalLabels_[i].second->setText(totals[i]);
    forgetPrinted();
}

std::optional<ui::DraftTitle> TMMGInserimentoDocumento::draftTitle() const
{
    return ui::DraftTitle{.kind = kind_.name,
                          .record = (storedKey() < 0 ? core::tr("nuovo, n. %1") : u"n. %1"_s).arg(numero()),
                          .date = documentDate(),
                          .counterpart = counterpartName(),
                          .rights = {kind_.viewRight, kind_.editRight}};
}

void TMMGInserimentoDocumento::prepareSave()
{
    // Totals and rows are stored with the same rates.
    rates_ = vatRatesOf(grid_->rowsModel().rows());
    computeTotals();
}

void TMMGInserimentoDocumento::writeComputed(data::DataSet &record) const
{
    for (const DocumentTotal &total : kind_.totals)
        record.setValue(total.column, total.value(totals_));
}

void TMMGInserimentoDocumento::writeDetails()
{
    // A document that was deleted leaves its movements behind. Written anew under another key, it takes them along.
    if (replacedKey() >= 0)
        deleteMovements(kind_, replacedKey());
    rewriteRows(kind_, head(), grid_->rowsModel().rows(), rates_, *details());
}

// Only a document that was printed is worth being read again, with the print: others may have printed it meanwhile, and
// one that was written anew under another key never was.
void TMMGInserimentoDocumento::recordSaved()
{
    if (printed_)
        readPrinted();
}
