#include "platform/data/DataSet.h"

#include "platform/core/Decimal.h"
#include "platform/core/Lists.h"
#include "platform/core/Translation.h"
#include "platform/data/DatabaseError.h"

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace data {

namespace {

// In one statement. Each number of rows is another text to prepare, and all parameters must fit into one message (64
// kB).
constexpr qsizetype rowsPerBlock = 5;

QStringList namesOf(const Rows &rows, const QList<int> &columns)
{
    return core::mapped(columns, [&rows](int column) { return rows.columns()[column].name; });
}

template <typename Change>
QVariantList valuesOf(const Rows &rows, const Change &change)
{
    QVariantList values;
    for (const int column : change.columns) {
        const QVariant &value = rows.values(change.row)[column];
        // A typed null lets the driver bind NULL; an empty but not null text stays empty text.
        values.append(
            value.isValid()
                ? (value.metaType().id() == QMetaType::QString && value.toString().isNull() ? QVariant(u""_s) : value)
                : QVariant(QMetaType(QMetaType::QString)));
    }
    return values;
}

// What the database tells of a new row: the key first, then what was not set.
template <typename Change>
QList<int> givenBack(const Rows &rows, int key, const Change &change)
{
    QList<int> given = {key};
    for (int column = 0; column < rows.columns().size(); ++column) {
        if (column != key && !change.columns.contains(column))
            given.append(column);
    }
    return given;
}

template <typename Change>
void takeBack(Rows &rows, const Change &change, const QList<int> &given, const QVariantList &answer)
{
    for (int i = 0; i < given.size(); ++i)
        rows.mutableValues()[change.row][given[i]] = answer[i];
}

// How many changes from `first` on are new rows in which the same columns were set.
template <typename Change>
qsizetype alike(const QList<Change> &changes, qsizetype first)
{
    qsizetype next = first + 1;
    while (next < changes.size() && next - first < rowsPerBlock && changes[first].insert && changes[next].insert &&
           changes[next].columns == changes[first].columns)
        ++next;
    return next - first;
}

// A block that inserts rows and gives back for each what RETURNING gives for one.
QString makeInsertBlock(const QString &table, const QStringList &names, const QStringList &given, qsizetype rows)
{
    const auto typed = [&table](const QString &variable, const QString &column) {
        return u"%1 TYPE OF COLUMN %2.%3"_s.arg(variable, table, column);
    };
    const QStringList results =
        core::mapped(given, [&typed](const QString &column) { return typed(u"R_"_s + column, column); });
    QStringList parameters;
    QString body;
    for (qsizetype row = 0; row < rows; ++row) {
        QStringList variables;
        for (const QString &column : names) {
            const QString variable = u"P%1"_s.arg(parameters.size());
            parameters.append(typed(variable, column) + u" = ?"_s);
            variables.append(u':' + variable);
        }
        body += u"INSERT INTO %1 (%2) VALUES (%3) RETURNING %4 INTO :R_%5; SUSPEND; "_s.arg(
            table, names.join(u", "_s), variables.join(u", "_s), given.join(u", "_s), given.join(u", :R_"_s));
    }
    return u"EXECUTE BLOCK (%1) RETURNS (%2) AS BEGIN %3END"_s.arg(parameters.join(u", "_s), results.join(u", "_s),
                                                                   body);
}

// The forms have a few of them; making the text takes as long as the database takes for a row.
QString insertBlock(const QString &table, const QStringList &names, const QStringList &given, qsizetype rows)
{
    static thread_local QHash<QString, QString> made;
    const QString key = u"%1(%2) %3 %4"_s.arg(table, names.join(u','), given.join(u','), QString::number(rows));
    if (!made.contains(key))
        made.insert(key, makeInsertBlock(table, names, given, rows));
    return made.value(key);
}

template <typename Change>
void insertTogether(Connection &connection, const UpdateTarget &target, Rows &rows, const QList<Change> &changes)
{
    const Change &first = changes.constFirst();
    const QList<int> given = givenBack(rows, rows.indexOf(target.key), first);
    QVariantList values;
    for (const Change &change : changes)
        values += valuesOf(rows, change);
    const QString sql = insertBlock(target.table, namesOf(rows, first.columns), namesOf(rows, given), changes.size());
    const Rows answer = connection.run(sql, values);
    for (qsizetype row = 0; row < changes.size(); ++row)
        takeBack(rows, changes[row], given, answer.values(row));
}

} // namespace

DataSet::DataSet(Connection *connection, QObject *parent)
    : QObject(parent)
    , connection_(connection)
{
}

void DataSet::setCommandText(const QString &sql)
{
    close();
    commandText_ = sql;
    parameters_.clear();
}

void DataSet::open()
{
    close();
    if (!connection_)
        throw core::Error(core::tr("Il data set non ha una connessione."));
    rows_ = connection_->select(commandText_, parameters_);
    open_ = true;
}

void DataSet::openWith(Rows rows)
{
    close();
    rows_ = std::move(rows);
    open_ = true;
}

void DataSet::close()
{
    rows_ = {};
    current_ = 0;
    open_ = false;
    editing_.reset();
    pending_.clear();
}

void DataSet::requery()
{
    open();
}

void DataSet::forgetRows()
{
    requireOpen();
    rows_.mutableValues().clear();
    current_ = 0;
    editing_.reset();
    pending_.clear();
}

void DataSet::requireOpen() const
{
    if (!open_)
        throw core::Error(core::tr("Il data set non è aperto."));
}

void DataSet::first()
{
    requireOpen();
    if (cursorType_ == CursorType::ForwardOnly && current_ > 0)
        throw core::Error(core::tr("Il data set si legge solo in avanti."));
    current_ = 0;
}

void DataSet::next()
{
    requireOpen();
    if (current_ < rows_.size())
        ++current_;
}

bool DataSet::locate(const QString &column, const QVariant &value)
{
    requireOpen();
    const int index = columnIndex(column);
    for (qsizetype row = 0; row < rows_.size(); ++row) {
        const QVariant &found = rows_.values(row)[index];
        if (found.isValid() == value.isValid() && found.toString() == value.toString()) {
            current_ = row;
            return true;
        }
    }
    return false;
}

void DataSet::sortByInteger(const QString &column)
{
    requireOpen();
    rows_.sortByInteger(column);
    current_ = 0;
}

int DataSet::columnIndex(const QString &column) const
{
    const int index = rows_.indexOf(column);
    if (index < 0)
        throw core::Error(core::tr("Il campo \"%1\" non esiste nel data set.").arg(column));
    return index;
}

QVariant DataSet::value(const QString &column) const
{
    requireOpen();
    const int index = columnIndex(column);
    return atEnd() ? QVariant() : rows_.values(current_)[index];
}

int DataSet::integer(const QString &column, int nullValue) const
{
    const QVariant found = value(column);
    return found.isValid() ? found.toInt() : nullValue;
}

void DataSet::append()
{
    requireOpen();
    post();
    rows_.mutableValues().append(QVariantList(rows_.columns().size()));
    current_ = rows_.size() - 1;
    editing_ = Change{.row = current_, .insert = true};
}

void DataSet::edit()
{
    requireOpen();
    if (rows_.isEmpty()) {
        append();
        return;
    }
    if (atEnd())
        throw core::Error(core::tr("Il data set non ha una riga corrente."));
    post();
    editing_ = Change{.row = current_, .oldKey = value(target_.key)};
}

void DataSet::setValue(const QString &column, const QVariant &value)
{
    if (!editing_)
        throw core::Error(core::tr("Il data set non è in modifica."));
    const int index = columnIndex(column);
    rows_.mutableValues()[editing_->row][index] = forWriting(index, value);
    if (!editing_->columns.contains(index))
        editing_->columns.append(index);
}

// What is bound is what the row shows afterwards: decimals already rounded as the column will hold them.
QVariant DataSet::forWriting(int column, const QVariant &value) const
{
    const Column &target = rows_.columns()[column];
    if (value.isNull() && value.metaType().id() != QMetaType::QString)
        return {};
    if (target.isText)
        return value.toString();
    if (target.isNumber && target.places > 0) {
        const double number = value.toDouble();
        if (!std::isfinite(number))
            throw core::Error(core::tr("Il valore di \"%1\" non è un numero.").arg(target.name));
        if (!core::fitsDecimal(number, target.places))
            throw core::Error(core::tr("Il valore di \"%1\" è troppo grande.").arg(target.name));
        return core::roundDecimal(number, target.places);
    }
    return value;
}

void DataSet::post()
{
    if (!editing_)
        return;
    pending_.append(*std::exchange(editing_, std::nullopt));
}

void DataSet::updateBatch()
{
    requireOpen();
    post();
    const QList<Change> changes = std::exchange(pending_, {});
    for (qsizetype first = 0, count = 1; first < changes.size(); first += count) {
        count = alike(changes, first);
        if (count > 1 && !target_.key.isEmpty())
            insertTogether(*connection_, target_, rows_, changes.mid(first, count));
        else
            std::for_each_n(changes.begin() + first, count, [this](const Change &change) { write(change); });
    }
}

void DataSet::write(const Change &change)
{
    if (target_.table.isEmpty() || target_.key.isEmpty())
        throw core::Error(core::tr("Il data set è di sola lettura."));
    const QStringList names = namesOf(rows_, change.columns);
    QVariantList values = valuesOf(rows_, change);
    if (change.insert) {
        insert(change, names, values);
        return;
    }
    if (names.isEmpty())
        return;
    values.append(change.oldKey);
    connection_->run(u"UPDATE %1 SET %2 = ? WHERE %3 = ?"_s.arg(target_.table, names.join(u" = ?, "_s), target_.key),
                     values);
    if (connection_->affectedRows() != 1)
        throw DatabaseError(core::tr("La riga da modificare non esiste più."), u"UPDATE "_s + target_.table);
}

void DataSet::insert(const Change &change, const QStringList &names, const QVariantList &values)
{
    const QList<int> given = givenBack(rows_, columnIndex(target_.key), change);
    const QString marks = QStringList(names.size(), u"?"_s).join(u", "_s);
    const Rows answer =
        connection_->run(u"INSERT INTO %1 (%2) VALUES (%3) RETURNING %4"_s.arg(
                             target_.table, names.join(u", "_s), marks, namesOf(rows_, given).join(u", "_s)),
                         values);
    takeBack(rows_, change, given, answer.values(0));
}

} // namespace data
