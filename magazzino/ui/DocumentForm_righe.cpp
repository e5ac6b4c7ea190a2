// How a document's rows and movements are read from and written to the database.
#include "magazzino/ui/DocumentForm.h"

#include "magazzino/MMGUtils.h"
#include "magazzino/uMMGModMagazzino.h"
#include "platform/core/Format.h"
#include "platform/data/DataSet.h"
#include "platform/data/SqlText.h"

using namespace Qt::StringLiterals;

namespace {

// Every issue and every receipt is booked under this reason.
constexpr int documentReason = 2;

// What stands in category and rate is copied, so that the document keeps what applied when it was written.
void takeFromRegisters(DocumentRow &row)
{
    const int categoryKey = row.idCategoria.value_or(0);
    const TCodiceTesto category =
        row.tipo == tipoRiga::articolo ? GetCategoriaAnaMaga(categoryKey) : GetCategoriaServizio(categoryKey);
    const bool hasCategory = category.id > 0;
    row.idCategoria = hasCategory ? std::optional(category.id) : std::nullopt;
    row.categoria = hasCategory ? std::optional(category.testo) : std::nullopt;
    const TAliquotaIVA rate = GetAliquotaIVA(row.idAliquotaIVA.value_or(0));
    const bool hasRate = rate.id > 0;
    row.idAliquotaIVA = hasRate ? std::optional(rate.id) : std::nullopt;
    row.codiceIVA = hasRate ? std::optional(rate.codice) : std::nullopt;
    row.descrizioneIVA = hasRate ? std::optional(rate.descrizione) : std::nullopt;
    row.aliquotaIVA = hasRate ? std::optional(rate.aliquota) : std::nullopt;
}

/// The row as it is stored: without gaps in its amounts, with category and rate as they are in the registers now.
DocumentRow completed(DocumentRow row)
{
    for (const auto amount : {&DocumentRow::costo, &DocumentRow::prezzo, &DocumentRow::sconto, &DocumentRow::quantita,
                              &DocumentRow::importo})
        row.*amount = (row.*amount).value_or(0);
    if (rowsOfGoods.testFlag(row.type()))
        takeFromRegisters(row);
    return row;
}

} // namespace

void TMMGInserimentoDocumento::clearDetails()
{
    // The rows go before the header is looked for, also when there is no such document; this is intended.
    grid_->finishEditing();
    grid_->rowsModel().setRows({});
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

void TMMGInserimentoDocumento::loadDetails()
{
    showRight();
    data::DataSet &rows = *details();
    QList<DocumentRow> loaded;
    for (; !rows.atEnd(); rows.next())
        loaded.append(readRow(rows));
    completeLoaded(loaded);
    grid_->rowsModel().setRows(loaded);
    grid_->fitRowHeights();
    showTotals([this](const DocumentTotal &total) { return record().number(total.column); });
}

// The shown totals are not always those of the rows: an opened document shows the stored ones.
QVariant TMMGInserimentoDocumento::detailState() const
{
    QStringList totals;
    for (const auto &[total, label] : totalLabels_)
        totals.append(label->text());
    return QVariantList{QVariant::fromValue(grid_->rowsModel().rows()), totals};
}

void TMMGInserimentoDocumento::restoreDetails(const QVariant &state)
{
    grid_->rowsModel().setRows(state.toList().value(0).value<QList<DocumentRow>>());
    grid_->fitRowHeights();
    const QStringList totals = state.toList().value(1).toStringList();
    for (qsizetype i = 0; i < totals.size(); ++i)
        totalLabels_[i].second->setText(totals[i]);
}

DocumentRow TMMGInserimentoDocumento::readRow(const data::DataSet &rows) const
{
    DocumentRow row{.idRiga = rows.integer(kind_.rowKey()), .tipo = rows.text(u"TIPO_RIGA"_s)};
    const RowType type = row.type();
    for (const RowColumn &column : kind_.storedColumns) {
        if (column.types.testFlag(type))
            readValue(column, rows.value(column.column), row);
    }
    return row;
}

void TMMGInserimentoDocumento::prepareSave()
{
    AggiornaTotaliDocumento();
}

void TMMGInserimentoDocumento::writeComputed(data::DataSet &record) const
{
    for (const DocumentTotal &total : kind_.totals)
        record.setValue(total.column, total.value(totals_));
}

// Rows and movements are always rewritten whole: what an earlier save wrote goes first.
void TMMGInserimentoDocumento::writeDetails()
{
    // A document that was deleted leaves its movements behind. Written anew under another key, it takes them along.
    for (const int key : {replacedKey(), IdRecord()}) {
        if (key >= 0)
            connection().execute(u"DELETE FROM MOVI_MAGA WHERE RIF_DOC_TIPO="_s + data::quoted(kind_.name) +
                                 u" AND RIF_DOC_ID="_s + QString::number(key));
    }
    connection().execute(u"DELETE FROM %1 WHERE %2=%3"_s.arg(kind_.rowTable(), kind_.key).arg(IdRecord()));
    data::DataSet &rows = *details();
    if (!rows.isOpen()) {
        rows.setParameter(kind_.key, IdRecord());
        rows.open();
    }
    rows.forgetRows();
    for (const DocumentRow &row : grid_->rowsModel().rows())
        writeRow(rows, row);
}

void TMMGInserimentoDocumento::writeRow(data::DataSet &rows, const DocumentRow &shown)
{
    rows.append();
    rows.setValue(kind_.rowKey(), connection().lastGeneratorValue(kind_.rowGenerator()) + 1);
    rows.setValue(kind_.key, IdRecord());
    const DocumentRow row = completed(shown);
    const RowType type = row.type();
    for (const RowColumn &column : kind_.storedColumns)
        rows.setValue(column.column, column.types.testFlag(type) ? storedValue(column, row) : QVariant());
    rows.updateBatch();
    // The movement points at the key that the row was really given.
    if (type == RowType::Articolo)
        writeMovement(row, rows.integer(kind_.rowKey()));
}

void TMMGInserimentoDocumento::writeMovement(const DocumentRow &row, int rowKey)
{
    TMoviMaga movement;
    movement.dataMovimento = documentDate();
    movement.codice = row.codice;
    movement.descrizione = row.descrizione;
    movement.idCategoria = row.idCategoria.value_or(-1);
    movement.tipoMovimento = kind_.movement.type;
    movement.prezzo = kind_.movement.price ? (row.*kind_.movement.price).value_or(0) : 0;
    movement.costo = row.costo.value_or(0);
    movement.quantita = row.quantita.value_or(0) * kind_.movement.sign;
    movement.valore =
        kind_.movement.atAverageCost ? GetValoreScaricoCostoMedio(row.codice, documentDate()) : row.costo.value_or(0);
    movement.valoreImporto = movement.valore * movement.quantita;
    movement.idCausaleMaga = documentReason;
    movement.rifDocTipo = kind_.name;
    movement.rifDocId = IdRecord();
    movement.rifDocIdRiga = rowKey;
    movement.note = kind_.movement.note + QString::number(numero()) + u" del "_s + core::formatDate(documentDate());
    AggiornaMoviMaga(movement, true);
}
