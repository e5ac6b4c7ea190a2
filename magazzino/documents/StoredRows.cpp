#include "magazzino/documents/StoredRows.h"

#include "magazzino/MMGUtils.h"
#include "magazzino/documents/Movements.h"
#include "platform/data/DataSet.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

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

DocumentRow readRow(const DocumentKind &kind, const data::DataSet &stored)
{
    DocumentRow row{.idRiga = stored.integer(kind.rowKey()), .tipo = stored.text(u"TIPO_RIGA"_s)};
    const RowType type = row.type();
    for (const RowColumn &column : kind.storedColumns) {
        if (column.types.testFlag(type))
            readValue(column, stored.value(column.column), row);
    }
    return row;
}

void writeRow(const DocumentKind &kind, const DocumentHead &document, const DocumentRow &shown, data::DataSet &stored)
{
    stored.append();
    stored.setValue(kind.rowKey(), stored.connection()->lastGeneratorValue(kind.rowGenerator()) + 1);
    stored.setValue(kind.key, document.id);
    const DocumentRow row = completed(shown);
    const RowType type = row.type();
    for (const RowColumn &column : kind.storedColumns)
        stored.setValue(column.column, column.types.testFlag(type) ? storedValue(column, row) : QVariant());
    stored.updateBatch();
    // The movement points at the key that the row was really given.
    if (type == RowType::Articolo)
        writeMovement(kind, document, row, stored.integer(kind.rowKey()));
}

bool storesCosts(const DocumentKind &kind)
{
    return std::any_of(kind.storedColumns.begin(), kind.storedColumns.end(),
                       [](const RowColumn &column) { return column.member == RowMember(&DocumentRow::costo); });
}

void takeCosts(QList<DocumentRow> &rows, const QHash<int, double> &costs)
{
    for (DocumentRow &row : rows) {
        if (rowsWithAmounts.testFlag(row.type()))
            row.costo = costs.value(row.idRiga, 0);
    }
}

} // namespace

QList<DocumentRow> readRows(const DocumentKind &kind, int id, data::DataSet &stored)
{
    QList<DocumentRow> rows;
    for (; !stored.atEnd(); stored.next())
        rows.append(readRow(kind, stored));
    if (!storesCosts(kind))
        takeCosts(rows, movementCosts(kind, id));
    return rows;
}

void rewriteRows(const DocumentKind &kind, const DocumentHead &document, const QList<DocumentRow> &rows,
                 data::DataSet &stored)
{
    deleteMovements(kind, document.id);
    stored.connection()->execute(u"DELETE FROM %1 WHERE %2=%3"_s.arg(kind.rowTable(), kind.key).arg(document.id));
    if (!stored.isOpen()) {
        stored.setParameter(kind.key, document.id);
        stored.open();
    }
    stored.forgetRows();
    for (const DocumentRow &row : rows)
        writeRow(kind, document, row, stored);
}
