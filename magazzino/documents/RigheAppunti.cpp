#include "magazzino/documents/RigheAppunti.h"

#include "magazzino/MMGUtils.h"
#include "platform/core/CsvReader.h"
#include "platform/core/CsvWriter.h"
#include "platform/core/Lists.h"
#include "platform/core/NumberReader.h"
#include "platform/core/Translation.h"

#include <QBuffer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype numbersOfARow = 3; // quantity, price, discount

template <typename Voce>
std::optional<DocumentRow> rowOfVoce(const QString &tipo, const Voce &voce)
{
    if (voce.id <= 0)
        return {};
    return DocumentRow{.tipo = tipo,
                       .codice = voce.codice,
                       .descrizione = voce.descrizione,
                       .idCategoria = voce.idCategoria,
                       .costo = voce.costo,
                       .prezzo = voce.prezzo,
                       .quantita = 1,
                       .importo = voce.prezzo,
                       .idAliquotaIVA = voce.idAliquotaIVA,
                       .codiceIVA = GetAliquotaIVA(voce.idAliquotaIVA).codice,
                       .idUM = voce.idUM,
                       .um = GetUM(voce.idUM).testo};
}

void insertNumber(QJsonObject &object, const QString &name, const std::optional<double> &number)
{
    if (number)
        object.insert(name, *number);
}

std::optional<double> numberOf(const QJsonObject &object, const QString &name)
{
    const QJsonValue value = object.value(name);
    return value.isDouble() ? std::optional(value.toDouble()) : std::nullopt;
}

QVariant cellOf(const std::optional<double> &number)
{
    return number ? QVariant(*number) : QVariant();
}

// At least half of what stands in the column must be numbers: one that is misspelt is told, and not taken for words.
bool holdsNumbers(const QList<core::CsvRecord> &records, qsizetype column)
{
    qsizetype numbers = 0;
    qsizetype words = 0;
    for (const core::CsvRecord &record : records) {
        const QString cell = record.cells.value(column).trimmed();
        if (!cell.isEmpty())
            ++(core::readNumber(cell) ? numbers : words);
    }
    return numbers > 0 && numbers >= words;
}

/// A column of numbers that was pasted.
struct NumberColumn
{
    qsizetype position = 0;
    core::NumberReader reader = {};
};

// Behind the code, from left to right.
QList<NumberColumn> numberColumns(const QList<core::CsvRecord> &records)
{
    qsizetype width = 0;
    for (const core::CsvRecord &record : records)
        width = std::max(width, record.cells.size());
    QList<NumberColumn> columns;
    for (qsizetype position = 1; position < width && columns.size() < numbersOfARow; ++position) {
        if (!holdsNumbers(records, position))
            continue;
        NumberColumn column{position};
        for (const core::CsvRecord &record : records)
            column.reader.learn(record.cells.value(position));
        columns.append(column);
    }
    return columns;
}

bool isTitle(const core::CsvRecord &record, const QList<NumberColumn> &columns)
{
    return !columns.isEmpty() && std::all_of(columns.begin(), columns.end(), [&record](const NumberColumn &column) {
        const QString cell = record.cells.value(column.position).trimmed();
        return !cell.isEmpty() && !core::readNumber(cell);
    });
}

RigaLetta rowOf(const core::CsvRecord &record, const QList<NumberColumn> &columns)
{
    RigaLetta row{.linea = record.line, .codice = core::withoutFormulaGuard(record.cells.value(0).trimmed())};
    std::optional<double> *const members[numbersOfARow] = {&row.quantita, &row.prezzo, &row.sconto};
    for (qsizetype i = 0; i < std::min(columns.size(), numbersOfARow); ++i) {
        const QString cell = record.cells.value(columns[i].position).trimmed();
        if (cell.isEmpty())
            continue;
        *members[i] = columns[i].reader.read(cell);
        if (!*members[i])
            row.problema = core::tr("\"%1\" non è un numero valido.").arg(cell);
    }
    return row;
}

QList<core::CsvRecord> recordsOf(const QString &text)
{
    QByteArray bytes = text.toUtf8();
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    core::CsvReader reader(buffer, {.separator = u'\t'});
    QList<core::CsvRecord> records;
    for (core::CsvRecord record; reader.read(record);) {
        if (!record.cells.value(0).trimmed().isEmpty())
            records.append(record);
    }
    return records;
}

} // namespace

QByteArray righeInAppunti(const QList<DocumentRow> &rows)
{
    QJsonArray all;
    for (const DocumentRow &row : rows) {
        QJsonObject object = {{u"tipo"_s, row.tipo}, {u"codice"_s, row.codice}, {u"descrizione"_s, row.descrizione}};
        insertNumber(object, u"quantita"_s, row.quantita);
        insertNumber(object, u"prezzo"_s, row.prezzo);
        insertNumber(object, u"costo"_s, row.costo);
        insertNumber(object, u"sconto"_s, row.sconto);
        all.append(object);
    }
    return QJsonDocument(all).toJson(QJsonDocument::Compact);
}

QList<RigaLetta> righeDaAppunti(const QByteArray &appunti)
{
    QList<RigaLetta> rows;
    const QJsonArray all = QJsonDocument::fromJson(appunti).array();
    for (const auto &value : all) {
        const QJsonObject object = value.toObject();
        rows.append({.linea = static_cast<int>(rows.size()) + 1,
                     .tipo = object.value(u"tipo").toString(),
                     .codice = object.value(u"codice").toString(),
                     .descrizione = object.value(u"descrizione").toString(),
                     .quantita = numberOf(object, u"quantita"_s),
                     .prezzo = numberOf(object, u"prezzo"_s),
                     .costo = numberOf(object, u"costo"_s),
                     .sconto = numberOf(object, u"sconto"_s)});
    }
    return rows;
}

QString testoDiRighe(const QList<DocumentRow> &rows, const DocumentKind &kind)
{
    core::Table table{.title = {}, .columns = QList<core::TableColumn>(2 + numbersOfARow), .rows = {}};
    for (const DocumentRow &row : rows)
        table.rows.append(
            {row.codice, row.descrizione, cellOf(row.quantita), cellOf(row.*kind.unitPrice), cellOf(row.sconto)});
    return core::clipboardText(table, false).chopped(1);
}

QList<RigaLetta> righeDaTesto(const QString &testo)
{
    QList<core::CsvRecord> records = recordsOf(testo);
    const QList<NumberColumn> columns = numberColumns(records);
    if (!records.isEmpty() && isTitle(records.first(), columns))
        records.removeFirst();
    return core::mapped(records, [&columns](const core::CsvRecord &record) { return rowOf(record, columns); });
}

std::optional<DocumentRow> rigaDi(const QString &tipo, int id)
{
    return tipo == tipoRiga::servizio ? rowOfVoce(tipo, GetServizio(id)) : rowOfVoce(tipo, GetArticolo(id));
}
