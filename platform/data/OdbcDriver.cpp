#include "platform/data/OdbcDriver.h"

#include "platform/core/Decimal.h"
#include "platform/data/ConnectionString.h"
#include "platform/data/DatabaseError.h"
#include "platform/data/SqlText.h"

#include <QSqlError>
#include <QSqlField>
#include <QSqlQuery>
#include <QSqlRecord>

#include <algorithm>
#include <atomic>

using namespace Qt::StringLiterals;

namespace data {

namespace {

// Drivers tell it in words only.
Refusal refusalOf(const QString &text)
{
    static const QStringList losses = {u"connection lost"_s, u"communication link"_s, u"Unable to complete network"_s,
                                       u"connection shutdown"_s};
    const bool lost = std::any_of(losses.begin(), losses.end(),
                                  [&text](const QString &sign) { return text.contains(sign, Qt::CaseInsensitive); });
    return lost ? Refusal::ConnectionLost : Refusal::Other;
}

void require(bool done, const QSqlError &error, const QString &context)
{
    if (done)
        return;
    const QString text = error.databaseText().isEmpty() ? error.driverText() : error.databaseText();
    throw DatabaseError(text.trimmed(), context, refusalOf(text));
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

QVariant normalised(const QVariant &value, const Column &column)
{
    if (value.isNull())
        return {};
    constexpr int mostPlaces = 6;
    if (column.places > 0 && column.places <= mostPlaces)
        return core::roundDecimal(value.toDouble(), column.places);
    // Text blobs arrive as UTF-8 bytes.
    if (value.metaType().id() == QMetaType::QByteArray)
        return QString::fromUtf8(value.toByteArray());
    return value;
}

class OdbcStatement : public Statement
{
public:
    OdbcStatement(const QSqlDatabase &database, const QString &sql)
        : query_(database)
        , context_(statementKind(sql))
    {
        query_.setForwardOnly(true);
        require(query_.prepare(sql), query_.lastError(), context_);
    }

    const QList<Column> &columns() const override { return columns_; }

    void execute(const QVariantList &values) override
    {
        for (int i = 0; i < values.size(); ++i)
            query_.bindValue(i, values[i]);
        require(query_.exec(), query_.lastError(), context_);
        columns_ = query_.isSelect() ? describe(query_.record()) : QList<Column>();
    }

    bool next(QVariantList &row) override
    {
        if (columns_.isEmpty())
            return false;
        if (!query_.next()) {
            // A query can fail at its first fetch only: next() then just answers false.
            require(!query_.lastError().isValid(), query_.lastError(), context_);
            query_.finish();
            return false;
        }
        row.clear();
        for (int i = 0; i < columns_.size(); ++i)
            row.append(normalised(query_.value(i), columns_[i]));
        return true;
    }

    int affectedRows() override { return query_.numRowsAffected(); }

private:
    QSqlQuery query_;
    QString context_;
    QList<Column> columns_;
};

} // namespace

OdbcDriver::OdbcDriver(const DriverSettings &settings)
{
    // Works in the background make connections in threads of their own.
    static std::atomic<int> counter = 0;
    name_ = u"odbc%1"_s.arg(++counter);
    database_ = QSqlDatabase::addDatabase(u"QODBC"_s, name_);
    database_.setUserName(settings.address.user);
    database_.setPassword(settings.address.password);
    database_.setDatabaseName(settings.dataSourceName);
    if (!database_.open()) {
        const QSqlError error = database_.lastError();
        database_ = QSqlDatabase();
        QSqlDatabase::removeDatabase(name_);
        require(false, error, u"CONNECT"_s);
    }
    database_.setNumericalPrecisionPolicy(QSql::LowPrecisionDouble);
}

OdbcDriver::~OdbcDriver()
{
    database_.close();
    database_ = QSqlDatabase();
    QSqlDatabase::removeDatabase(name_);
}

void OdbcDriver::begin()
{
    require(database_.transaction(), database_.lastError(), u"BEGIN"_s);
}

void OdbcDriver::commit()
{
    require(database_.commit(), database_.lastError(), u"COMMIT"_s);
}

void OdbcDriver::rollback()
{
    require(database_.rollback(), database_.lastError(), u"ROLLBACK"_s);
}

std::unique_ptr<Statement> OdbcDriver::prepare(const QString &sql, View)
{
    return std::make_unique<OdbcStatement>(database_, sql);
}

void OdbcDriver::executeOnce(const QString &sql)
{
    OdbcStatement(database_, sql).execute({});
}

} // namespace data
