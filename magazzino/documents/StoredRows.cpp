#include "magazzino/documents/StoredRows.h"

#include "magazzino/MMGUtils_insiemi.h"
#include "magazzino/documents/Movements.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// Categories and rates of a document's rows as they are in the registers now.
struct Registers
{
    Registers(const QList<DocumentRow> &rows, const QHash<int, TAliquotaIVA> &vatRates)
        : rates(vatRates)
    {
        QSet<int> articles;
        QSet<int> services;
        for (const DocumentRow &row : rows) {
            if (rowsOfGoods.testFlag(row.type()))
                (row.tipo == tipoRiga::articolo ? articles : services).insert(row.idCategoria.value_or(0));
        }
        articleCategories = GetCategorieAnaMaga(articles);
        serviceCategories = GetCategorieServizi(services);
    }

    QHash<int, TCodiceTesto> articleCategories;
    QHash<int, TCodiceTesto> serviceCategories;
    QHash<int, TAliquotaIVA> rates;
};

// What stands in category and rate is copied, so that the document keeps what applied when it was written.
void takeFromRegisters(const Registers &registers, DocumentRow &row)
{
    const auto &categories = row.tipo == tipoRiga::articolo ? registers.articleCategories : registers.serviceCategories;
    const TCodiceTesto category = categories.value(row.idCategoria.value_or(0));
    const bool hasCategory = category.id > 0;
    row.idCategoria = hasCategory ? std::optional(category.id) : std::nullopt;
    row.categoria = hasCategory ? std::optional(category.testo) : std::nullopt;
    const TAliquotaIVA rate = registers.rates.value(row.idAliquotaIVA.value_or(0));
    const bool hasRate = rate.id > 0;
    row.idAliquotaIVA = hasRate ? std::optional(rate.id) : std::nullopt;
    row.codiceIVA = hasRate ? std::optional(rate.codice) : std::nullopt;
    row.descrizioneIVA = hasRate ? std::optional(rate.descrizione) : std::nullopt;
    row.aliquotaIVA = hasRate ? std::optional(rate.aliquota) : std::nullopt;
}

/// The rows as they are stored: without gaps in their amounts, with category and rate as they are in the registers now.
QList<DocumentRow> completed(QList<DocumentRow> rows, const QHash<int, TAliquotaIVA> &rates)
{
    const Registers registers(rows, rates);
    for (DocumentRow &row : rows) {
        for (const auto amount : {&DocumentRow::costo, &DocumentRow::prezzo, &DocumentRow::sconto,
                                  &DocumentRow::quantita, &DocumentRow::importo})
            row.*amount = (row.*amount).value_or(0);
        if (rowsOfGoods.testFlag(row.type()))
            takeFromRegisters(registers, row);
    }
    return rows;
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

void setColumns(const DocumentKind &kind, const DocumentHead &document, const DocumentRow &row, data::DataSet &stored)
{
    stored.setValue(kind.rowKey(), row.idRiga);
    stored.setValue(kind.key, document.id);
    const RowType type = row.type();
    for (const RowColumn &column : kind.storedColumns)
        stored.setValue(column.column, column.types.testFlag(type) ? storedValue(column, row) : QVariant());
}

// Keys are predicted; the movements point at those that the rows were really given.
void writeRows(const DocumentKind &kind, const DocumentHead &document, QList<DocumentRow> rows, data::DataSet &stored)
{
    int key = stored.connection()->lastGeneratorValue(kind.rowGenerator());
    for (DocumentRow &row : rows) {
        stored.append();
        row.idRiga = ++key;
        setColumns(kind, document, row, stored);
    }
    stored.updateBatch();
    for (qsizetype i = 0; i < rows.size(); ++i)
        rows[i].idRiga = stored.rows().integer(i, kind.rowKey());
    rows.removeIf([](const DocumentRow &row) { return row.type() != RowType::Articolo; });
    writeMovements(kind, document, rows);
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

// Parts of one query with the same columns: a row that has a state is a file, one that has a moment a print.
///@{
const QString costsOfMovements =
    u"SELECT RIF_DOC_IDRIGA AS CHIAVE, COSTO, CAST(NULL AS TIMESTAMP) AS MOMENTO, CAST(NULL AS VARCHAR(64)) AS TESTO, "
    "CAST(NULL AS VARCHAR(20)) AS STATO FROM MOVI_MAGA WHERE RIF_DOC_TIPO = ? AND RIF_DOC_ID = ?"_s;
const QString lastPrint =
    u"SELECT CAST(NULL AS INTEGER) AS CHIAVE, CAST(NULL AS DECIMAL(13, 2)) AS COSTO, STAMPATO_IL AS MOMENTO, "
    "IMPRONTA_DATI AS TESTO, CAST(NULL AS VARCHAR(20)) AS STATO FROM (SELECT FIRST 1 STAMPATO_IL, IMPRONTA_DATI FROM "
    "STAMPE_DOCUMENTI WHERE IDDOCUMENTO = ? AND DOCUMENTO = ? ORDER BY IDSTAMPA_DOCUMENTO DESC)"_s;
const QString newestFile =
    u"SELECT CAST(NULL AS INTEGER) AS CHIAVE, CAST(NULL AS DECIMAL(13, 2)) AS COSTO, MODIFICATA_IL AS MOMENTO, NOME AS "
    "TESTO, STATO FROM (SELECT FIRST 1 NOME, STATO, MODIFICATA_IL FROM FATTURE_ELETTRONICHE WHERE IDDOCUMENTO = ? AND "
    "DOCUMENTO = ? ORDER BY IDFATTURA_ELETTRONICA DESC)"_s;
///@}

} // namespace

BesideRows readBesideRows(const DocumentKind &kind, int id)
{
    QStringList queries;
    QVariantList values;
    if (!storesCosts(kind)) {
        queries.append(costsOfMovements);
        values << kind.name << id;
    }
    if (!kind.print.report.isEmpty()) {
        queries << lastPrint << newestFile;
        values << id << kind.table << id << kind.table;
    }
    BesideRows result;
    const data::Rows rows =
        queries.isEmpty() ? data::Rows() : ModuleConnection().run(queries.join(u" UNION ALL "_s), values);
    for (qsizetype i = 0; i < rows.size(); ++i) {
        const QString text = rows.text(i, u"TESTO");
        const QString state = rows.text(i, u"STATO");
        const QDateTime moment = rows.at(i, u"MOMENTO").toDateTime();
        if (!state.isEmpty())
            result.file = FileScritto{text, state, moment.isValid()};
        else if (moment.isValid())
            result.printed = StampaFatta{moment, text, {}, {}};
        else
            result.costs.insert(rows.integer(i, u"CHIAVE"), rows.number(i, u"COSTO"));
    }
    return result;
}

QList<DocumentRow> readRows(const DocumentKind &kind, const QHash<int, double> &costs, data::DataSet &stored)
{
    QList<DocumentRow> rows;
    for (; !stored.atEnd(); stored.next())
        rows.append(readRow(kind, stored));
    if (!storesCosts(kind))
        takeCosts(rows, costs);
    return rows;
}

QHash<int, TAliquotaIVA> vatRatesOf(const QList<DocumentRow> &rows)
{
    QSet<int> keys;
    for (const DocumentRow &row : rows)
        keys.insert(row.idAliquotaIVA.value_or(0));
    return GetAliquoteIVA(keys);
}

void rewriteRows(const DocumentKind &kind, const DocumentHead &document, const QList<DocumentRow> &rows,
                 const QHash<int, TAliquotaIVA> &rates, data::DataSet &stored)
{
    deleteMovements(kind, document.id);
    stored.connection()->execute(u"DELETE FROM %1 WHERE %2=%3"_s.arg(kind.rowTable(), kind.key).arg(document.id));
    if (!stored.isOpen()) {
        stored.setParameter(kind.key, document.id);
        stored.open();
    }
    stored.forgetRows();
    if (!rows.isEmpty())
        writeRows(kind, document, completed(rows, rates), stored);
}
