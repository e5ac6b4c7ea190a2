#include "platform/data/Connection.h"

#include "platform/core/Decimal.h"
#include "platform/core/Log.h"
#include "platform/data/ConnectionString.h"
#include "platform/data/DatabaseError.h"
#include "platform/data/SqlText.h"

#include <QRegularExpression>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlField>
#include <QSqlRecord>

#include <atomic>

using namespace Qt::StringLiterals;

namespace data {

namespace {

bool isConnectionLoss(const QSqlError &error)
{
    static const QStringList signs = {u"connection lost"_s,
                                      u"Error writing data to the connection"_s,
                                      u"Error reading data from the connection"_s,
                                      u"Unable to complete network request"_s,
                                      u"connection shutdown"_s,
                                      u"invalid database handle"_s};
    const QString text = error.text();
    return std::any_of(signs.begin(), signs.end(),
                       [&text](const QString &sign) { return text.contains(sign, Qt::CaseInsensitive); });
}

// The database's own text; the driver puts its own words behind it.
QString databaseText(const QSqlError &error)
{
    const QString text = error.databaseText().isEmpty() ? error.driverText() : error.databaseText();
    return text.trimmed();
}

QList<Column> describe(const QSqlRecord &record)
{
    QList<Column> columns;
    columns.reserve(record.count());
    for (int i = 0; i < record.count(); ++i) {
        const QSqlField field = record.field(i);
        const int type = field.metaType().id();
        columns.append(
            {.name = field.name().toUpper(),
             .places = type == QMetaType::Double ? std::max(field.precision(), 0) : 0,
             .isText = type == QMetaType::QString || type == QMetaType::QByteArray,
             .isNumber = type == QMetaType::Double || type == QMetaType::Int || type == QMetaType::LongLong});
    }
    return columns;
}

bool isQuery(const QString &sql)
{
    static const QRegularExpression query(u"^\\s*(SELECT|WITH)\\b"_s, QRegularExpression::CaseInsensitiveOption);
    return query.match(sql).hasMatch();
}

bool isChange(const QString &sql)
{
    static const QRegularExpression change(u"^\\s*(INSERT|UPDATE|DELETE)\\b"_s,
                                           QRegularExpression::CaseInsensitiveOption);
    return change.match(sql).hasMatch();
}

// The driver counts for plain changes only and warns on its standard error stream about anything else.
int countOf(const QSqlQuery &query, const QString &sql)
{
    return !query.isSelect() && isChange(sql) ? query.numRowsAffected() : 0;
}

QVariant normalised(const QVariant &value, const Column &column)
{
    if (value.isNull())
        return {};
    // The driver multiplies by 0.01, which can miss the number nearest to the decimal: 3.5500000000000003.
    if (column.places > 0 && column.places <= 6)
        return core::roundDecimal(value.toDouble(), column.places);
    // Text blobs arrive as UTF-8 bytes.
    if (value.metaType().id() == QMetaType::QByteArray)
        return QString::fromUtf8(value.toByteArray());
    return value;
}

} // namespace

Connection::Connection(QObject *parent)
    : QObject(parent)
{
    // Works in the background make connections in threads of their own.
    static std::atomic<int> counter = 0;
    name_ = u"connection%1"_s.arg(++counter);
}

Connection::~Connection()
{
    close();
}

void Connection::open()
{
    if (isOpen())
        return;
    const DriverSettings settings = driverSettings(connectionString_);
    database_ = QSqlDatabase::addDatabase(settings.driver, name_);
    database_.setUserName(settings.address.user);
    database_.setPassword(settings.address.password);
    if (settings.driver == u"QODBC"_s) {
        database_.setDatabaseName(settings.dataSourceName);
    } else {
        database_.setHostName(settings.address.host);
        if (settings.address.port > 0)
            database_.setPort(settings.address.port);
        database_.setDatabaseName(settings.address.file);
        database_.setConnectOptions(u"ISC_DPB_LC_CTYPE=UTF8"_s);
    }
    if (!database_.open()) {
        const QSqlError error = database_.lastError();
        close();
        throw DatabaseError(databaseText(error), u"CONNECT"_s);
    }
    database_.setNumericalPrecisionPolicy(QSql::LowPrecisionDouble);
    lost_ = false;
}

void Connection::close()
{
    statements_.clear();
    columns_.clear();
    inTransaction_ = false;
    if (!database_.isValid())
        return;
    database_.close();
    database_ = QSqlDatabase();
    QSqlDatabase::removeDatabase(name_);
}

void Connection::ensureOpen()
{
    if (lost_ && !inTransaction_) {
        close();
        open();
    }
    if (!isOpen())
        throw DatabaseError(u"La connessione al database non è aperta."_s, u"CONNECT"_s);
}

void Connection::prepareFor(const QString &sql)
{
    ensureOpen();
    if (hook_)
        hook_(sql);
}

void Connection::fail(const QSqlError &error, const QString &sql)
{
    if (isConnectionLoss(error))
        lost_ = true;
    throw DatabaseError(databaseText(error), statementKind(sql));
}

void Connection::begin()
{
    ensureOpen();
    if (inTransaction_)
        throw DatabaseError(u"Una transazione è già in corso."_s, u"BEGIN"_s);
    statements_.clear();
    if (!database_.transaction())
        fail(database_.lastError(), u"BEGIN"_s);
    inTransaction_ = true;
}

void Connection::commit()
{
    if (hook_)
        hook_(u"COMMIT"_s);
    statements_.clear();
    if (!database_.commit())
        fail(database_.lastError(), u"COMMIT"_s);
    inTransaction_ = false;
}

void Connection::rollback()
{
    statements_.clear();
    inTransaction_ = false;
    // A rollback fails only when the connection is gone, and then the server has rolled back by itself.
    if (!database_.rollback()) {
        lost_ = true;
        core::logLine(u"rollback"_s, databaseText(database_.lastError()));
    }
}

QSqlQuery &Connection::statement(const QString &sql, QSqlQuery &shortLived)
{
    if (inTransaction_) {
        if (const auto it = statements_.find(sql); it != statements_.end())
            return it->second;
    }
    // The single row of a RETURNING clause would come again and again from a forward-only query of this driver.
    shortLived.setForwardOnly(isQuery(sql));
    if (!shortLived.prepare(sql))
        fail(shortLived.lastError(), sql);
    if (inTransaction_)
        return statements_.emplace(sql, std::move(shortLived)).first->second;
    return shortLived;
}

// The driver asks the catalogue about every DECIMAL column each time that it describes a result, which takes longer
// than most queries. Columns that another workstation adds meanwhile come last, so the known ones keep their places.
const QList<Column> &Connection::columnsOf(const QSqlQuery &query, const QString &sql)
{
    constexpr qsizetype mostKept = 500;
    if (const auto known = columns_.constFind(sql); known != columns_.constEnd())
        return *known;
    if (columns_.size() >= mostKept)
        columns_.clear();
    return *columns_.insert(sql, describe(query.record()));
}

void Connection::each(QSqlQuery &query, const QString &sql, const std::function<void(QVariantList &&)> &row)
{
    const QList<Column> columns = columnsOf(query, sql);
    while (query.next()) {
        QVariantList values;
        values.reserve(columns.size());
        for (int i = 0; i < columns.size(); ++i)
            values.append(normalised(query.value(i), columns[i]));
        row(std::move(values));
    }
    // A query can fail at its first fetch only: next() then just answers false.
    if (query.lastError().isValid())
        fail(query.lastError(), sql);
    query.finish();
}

Rows Connection::fetch(QSqlQuery &query, const QString &sql)
{
    affectedRows_ = countOf(query, sql);
    if (!query.isSelect()) {
        query.finish();
        return {};
    }
    QList<QVariantList> values;
    each(query, sql, [&values](QVariantList &&row) { values.append(std::move(row)); });
    return {columnsOf(query, sql), std::move(values)};
}

void Connection::execute(const QString &sql)
{
    // The driver would commit by itself and keep a failing commit to itself, and definitions fail there.
    if (!inTransaction_) {
        Transaction transaction(*this);
        execute(sql);
        transaction.commit();
        return;
    }
    prepareFor(sql);
    QSqlQuery query(database_);
    if (!query.exec(sql))
        fail(query.lastError(), sql);
    affectedRows_ = countOf(query, sql);
    // A definition changes what tables look like.
    if (!isChange(sql))
        columns_.clear();
}

Rows Connection::run(const QString &sql, const QVariantList &values)
{
    if (!inTransaction_ && !isQuery(sql)) {
        Transaction transaction(*this);
        Rows rows = run(sql, values);
        transaction.commit();
        return rows;
    }
    prepareFor(sql);
    QVariantList bound = values;
    QSqlQuery shortLived(database_);
    QSqlQuery &query = statement(withNullsWritten(sql, bound), shortLived);
    for (int i = 0; i < bound.size(); ++i) {
        if (bound[i].metaType().id() == QMetaType::Double && !core::fitsDecimal(bound[i].toDouble(), 2))
            throw DatabaseError(u"Il numero è troppo grande."_s, statementKind(sql));
        query.bindValue(i, bound[i]);
    }
    if (!query.exec())
        fail(query.lastError(), sql);
    return fetch(query, sql);
}

Rows Connection::select(const QString &sql, const Parameters &parameters)
{
    prepareFor(sql);
    Parameters bound = parameters;
    QSqlQuery shortLived(database_);
    QSqlQuery &query = statement(withNullsWritten(sql, bound), shortLived);
    for (auto it = bound.cbegin(); it != bound.cend(); ++it)
        query.bindValue(u':' + it.key(), it.value());
    if (!query.exec())
        fail(query.lastError(), sql);
    return fetch(query, sql);
}

void Connection::selectInto(Rows &rows, const QString &sql)
{
    prepareFor(sql);
    QSqlQuery shortLived(database_);
    QSqlQuery &query = statement(sql, shortLived);
    if (!query.exec())
        fail(query.lastError(), sql);
    rows = Rows(columnsOf(query, sql), {});
    each(query, sql, [&rows](QVariantList &&row) { rows.mutableValues().append(std::move(row)); });
}

void Connection::forEach(const QString &sql, const std::function<void(QVariantList &&)> &row)
{
    prepareFor(sql);
    QSqlQuery query(database_);
    query.setForwardOnly(true);
    if (!query.exec(sql))
        fail(query.lastError(), sql);
    each(query, sql, row);
}

int Connection::lastGeneratorValue(const QString &generator)
{
    return select(u"SELECT GEN_ID(%1, 0) AS VALORE FROM RDB$DATABASE"_s.arg(generator)).integer(0, u"VALORE");
}

Transaction::~Transaction()
{
    if (open_)
        connection_.rollback();
}

void Transaction::commit()
{
    connection_.commit();
    open_ = false;
}

} // namespace data
