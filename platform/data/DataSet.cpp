#include "platform/data/DataSet.h"

#include "platform/core/Decimal.h"
#include "platform/data/DatabaseError.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace data {

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
        throw core::Error(u"Il data set non ha una connessione."_s);
    rows_ = connection_->select(commandText_, parameters_);
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
        throw core::Error(u"Il data set non è aperto."_s);
}

void DataSet::first()
{
    requireOpen();
    if (cursorType_ == CursorType::ForwardOnly && current_ > 0)
        throw core::Error(u"Il data set si legge solo in avanti."_s);
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
        throw core::Error(u"Il campo \"%1\" non esiste nel data set."_s.arg(column));
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
        throw core::Error(u"Il data set non ha una riga corrente."_s);
    post();
    editing_ = Change{.row = current_, .oldKey = value(target_.key)};
}

void DataSet::setValue(const QString &column, const QVariant &value)
{
    if (!editing_)
        throw core::Error(u"Il data set non è in modifica."_s);
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
            throw core::Error(u"Il valore di \"%1\" non è un numero."_s.arg(target.name));
        if (!core::fitsDecimal(number, target.places))
            throw core::Error(u"Il valore di \"%1\" è troppo grande."_s.arg(target.name));
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
    for (const Change &change : changes)
        write(change);
}

void DataSet::write(const Change &change)
{
    if (target_.table.isEmpty() || target_.key.isEmpty())
        throw core::Error(u"Il data set è di sola lettura."_s);
    QStringList names;
    QVariantList values;
    for (const int column : change.columns) {
        names.append(rows_.columns()[column].name);
        const QVariant &value = rows_.values(change.row)[column];
        // A typed null lets the driver bind NULL; an empty but not null text stays empty text.
        values.append(
            value.isValid()
                ? (value.metaType().id() == QMetaType::QString && value.toString().isNull() ? QVariant(u""_s) : value)
                : QVariant(QMetaType(QMetaType::QString)));
    }
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
        throw DatabaseError(u"La riga da modificare non esiste più."_s, u"UPDATE "_s + target_.table);
}

void DataSet::insert(const Change &change, const QStringList &names, const QVariantList &values)
{
    QList<int> given = {columnIndex(target_.key)};
    QStringList givenNames = {target_.key};
    for (int column = 0; column < rows_.columns().size(); ++column) {
        if (column != given.constFirst() && !change.columns.contains(column)) {
            given.append(column);
            givenNames.append(rows_.columns()[column].name);
        }
    }
    const QString marks = QStringList(names.size(), u"?"_s).join(u", "_s);
    const Rows answer = connection_->run(u"INSERT INTO %1 (%2) VALUES (%3) RETURNING %4"_s.arg(
                                             target_.table, names.join(u", "_s), marks, givenNames.join(u", "_s)),
                                         values);
    for (int i = 0; i < given.size(); ++i)
        rows_.mutableValues()[change.row][given[i]] = answer.values(0)[i];
}

} // namespace data
