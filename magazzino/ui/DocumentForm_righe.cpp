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

QVariant orNull(const std::optional<int> &value)
{
    return value ? QVariant(*value) : QVariant();
}

std::optional<double> numberOf(const data::DataSet &rows, const QString &column)
{
    return rows.isNull(column) ? std::nullopt : std::optional(rows.number(column));
}

std::optional<int> keyOf(const data::DataSet &rows, const QString &column)
{
    return rows.isNull(column) ? std::nullopt : std::optional(rows.integer(column));
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
    return &Modulo().dataSet(spec_.rowsDataSet);
}

void TMMGInserimentoDocumento::loadDetails()
{
    showRight();
    data::DataSet &rows = *details();
    const QHash<int, double> costs = storedCosts();
    QList<DocumentRow> loaded;
    for (; !rows.atEnd(); rows.next())
        loaded.append(readRow(rows, costs));
    grid_->rowsModel().setRows(loaded);
    grid_->fitRowHeights();
    showTotals(record().number(u"TOTALE_IMPONIBILE"_s), record().number(u"TOTALE_IMPOSTA"_s),
               record().number(u"TOTALE_DOCUMENTO"_s));
}

// The shown totals are not always those of the rows: an opened document shows the stored ones.
QVariant TMMGInserimentoDocumento::detailState() const
{
    QStringList totals;
    for (const QLabel *label : totalLabels_)
        totals.append(label->text());
    return QVariantList{QVariant::fromValue(grid_->rowsModel().rows()), totals};
}

void TMMGInserimentoDocumento::restoreDetails(const QVariant &state)
{
    grid_->rowsModel().setRows(state.toList().value(0).value<QList<DocumentRow>>());
    grid_->fitRowHeights();
    const QStringList totals = state.toList().value(1).toStringList();
    for (qsizetype i = 0; i < totals.size(); ++i)
        totalLabels_[i]->setText(totals[i]);
}

DocumentRow TMMGInserimentoDocumento::readRow(const data::DataSet &rows, const QHash<int, double> &costs) const
{
    DocumentRow row;
    row.idRiga = rows.integer(spec_.rowKey);
    row.tipo = rows.text(u"TIPO_RIGA"_s);
    row.descrizione = rows.text(u"DESCRIZIONE"_s);
    if (row.tipo == tipoRiga::testo)
        return row;
    row.costo = spec_.storesCost ? numberOf(rows, u"COSTO"_s) : costs.value(row.idRiga, 0);
    row.prezzo = numberOf(rows, u"PREZZO"_s);
    if (spec_.hasDiscount)
        row.sconto = numberOf(rows, u"SCONTO"_s);
    row.quantita = numberOf(rows, u"QUANTITA"_s);
    row.importo = numberOf(rows, u"IMPORTO"_s);
    if (row.tipo == tipoRiga::nonImponibile)
        return row;
    row.codice = rows.text(u"CODICE"_s);
    row.idCategoria = keyOf(rows, u"IDCATEGORIA"_s);
    row.idAliquotaIVA = keyOf(rows, u"IVA_IDALIQUOTA_IVA"_s);
    row.codiceIVA = rows.text(u"IVA_CODICE"_s);
    row.idUM = keyOf(rows, u"IDUM"_s);
    row.um = rows.text(u"UM"_s);
    return row;
}

void TMMGInserimentoDocumento::prepareSave()
{
    AggiornaTotaliDocumento();
}

void TMMGInserimentoDocumento::writeComputed(data::DataSet &record) const
{
    const DocumentTotals stored = spec_.showsTotals ? totals_ : DocumentTotals();
    record.setValue(u"TOTALE_IMPONIBILE"_s, stored.imponibile);
    record.setValue(u"TOTALE_IMPOSTA"_s, stored.imposta);
    record.setValue(u"TOTALE_DOCUMENTO"_s, stored.documento());
}

// Rows and movements are always rewritten whole: what an earlier save wrote goes first.
void TMMGInserimentoDocumento::writeDetails()
{
    // A document that was deleted leaves its movements behind. Written anew under another key, it takes them along.
    for (const int key : {replacedKey(), IdRecord()}) {
        if (key >= 0)
            connection().execute(u"DELETE FROM MOVI_MAGA WHERE RIF_DOC_TIPO="_s + data::quoted(spec_.documentKind) +
                                 u" AND RIF_DOC_ID="_s + QString::number(key));
    }
    connection().execute(u"DELETE FROM %1 WHERE %2=%3"_s.arg(spec_.rowTable, spec_.form.key).arg(IdRecord()));
    data::DataSet &rows = *details();
    if (!rows.isOpen()) {
        rows.setParameter(spec_.form.key, IdRecord());
        rows.open();
    }
    rows.forgetRows();
    for (const DocumentRow &row : grid_->rowsModel().rows())
        writeRow(rows, row);
}

void TMMGInserimentoDocumento::writeRow(data::DataSet &rows, const DocumentRow &row)
{
    static const QStringList optionalColumns = {u"CODICE"_s,
                                                u"IDCATEGORIA"_s,
                                                u"CATEGORIA"_s,
                                                u"PREZZO"_s,
                                                u"QUANTITA"_s,
                                                u"IMPORTO"_s,
                                                u"IVA_IDALIQUOTA_IVA"_s,
                                                u"IVA_CODICE"_s,
                                                u"IVA_DESCRIZIONE"_s,
                                                u"IVA_ALIQUOTA"_s,
                                                u"IDUM"_s,
                                                u"UM"_s};
    rows.append();
    rows.setValue(spec_.rowKey, connection().lastGeneratorValue(spec_.rowGenerator) + 1);
    rows.setValue(spec_.form.key, IdRecord());
    rows.setValue(u"DESCRIZIONE"_s, row.descrizione);
    rows.setValue(u"TIPO_RIGA"_s, row.tipo);
    for (const QString &column : optionalColumns)
        rows.setValue(column, {});
    if (row.tipo != tipoRiga::testo) {
        if (spec_.storesCost)
            rows.setValue(u"COSTO"_s, row.costo.value_or(0));
        rows.setValue(u"PREZZO"_s, spec_.storesPrice ? row.prezzo.value_or(0) : 0);
        if (spec_.hasDiscount)
            rows.setValue(u"SCONTO"_s, row.sconto.value_or(0));
        rows.setValue(u"QUANTITA"_s, row.quantita.value_or(0));
        rows.setValue(u"IMPORTO"_s, row.importo.value_or(0));
    }
    if (row.tipo != tipoRiga::testo && row.tipo != tipoRiga::nonImponibile)
        writeArticleOrService(rows, row);
    rows.updateBatch();
    // The movement points at the key that the row was really given.
    if (row.tipo == tipoRiga::articolo)
        writeMovement(row, rows.integer(spec_.rowKey));
}

void TMMGInserimentoDocumento::writeArticleOrService(data::DataSet &rows, const DocumentRow &row) const
{
    rows.setValue(u"CODICE"_s, row.codice);
    const int categoryKey = row.idCategoria.value_or(0);
    const TCodiceTesto category =
        row.tipo == tipoRiga::articolo ? GetCategoriaAnaMaga(categoryKey) : GetCategoriaServizio(categoryKey);
    if (category.id > 0) {
        rows.setValue(u"IDCATEGORIA"_s, category.id);
        rows.setValue(u"CATEGORIA"_s, category.testo);
    }
    // The rate is copied, so that the document keeps the one that applied when it was written.
    const TAliquotaIVA rate = GetAliquotaIVA(row.idAliquotaIVA.value_or(0));
    if (rate.id > 0) {
        rows.setValue(u"IVA_IDALIQUOTA_IVA"_s, rate.id);
        rows.setValue(u"IVA_CODICE"_s, rate.codice);
        rows.setValue(u"IVA_DESCRIZIONE"_s, rate.descrizione);
        rows.setValue(u"IVA_ALIQUOTA"_s, rate.aliquota);
    }
    rows.setValue(u"IDUM"_s, orNull(row.idUM));
    rows.setValue(u"UM"_s, row.um);
}

void TMMGInserimentoDocumento::writeMovement(const DocumentRow &row, int rowKey)
{
    TMoviMaga movement;
    movement.dataMovimento = documentDate();
    movement.codice = row.codice;
    movement.descrizione = row.descrizione;
    movement.idCategoria = GetCategoriaAnaMaga(row.idCategoria.value_or(0)).id;
    movement.tipoMovimento = spec_.movementKind;
    movement.prezzo = spec_.storesPrice ? row.prezzo.value_or(0) : 0;
    movement.costo = row.costo.value_or(0);
    movement.quantita = row.quantita.value_or(0) * spec_.quantitySign;
    movement.valore = movementValue(row);
    movement.valoreImporto = movement.valore * movement.quantita;
    movement.idCausaleMaga = documentReason;
    movement.rifDocTipo = spec_.documentKind;
    movement.rifDocId = IdRecord();
    movement.rifDocIdRiga = rowKey;
    movement.note = spec_.movementNote + QString::number(numero()) + u" del "_s + core::formatDate(documentDate());
    AggiornaMoviMaga(movement, true);
}
