#include "benchmark/Bare.h"

#include "platform/core/Error.h"

#include <QSqlError>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

const QString name = u"bare"_s;

template <typename Source>
void require(bool done, const Source &source)
{
    if (!done)
        throw core::Error(source.lastError().text());
}

} // namespace

Bare::Bare(const data::DatabaseAddress &address)
    : database_(QSqlDatabase::addDatabase(u"QIBASE"_s, name))
{
    database_.setDatabaseName(address.file);
    database_.setUserName(address.user);
    database_.setConnectOptions(u"ISC_DPB_LC_CTYPE=UTF8"_s);
    require(database_.open(), database_);
    database_.setNumericalPrecisionPolicy(QSql::LowPrecisionDouble);
}

Bare::~Bare()
{
    database_.close();
    database_ = {};
    QSqlDatabase::removeDatabase(name);
}

qint64 Bare::fetch(const QString &sql) const
{
    qint64 rows = 0;
    fetch(sql, [&rows](const QSqlQuery &) { ++rows; });
    return rows;
}

void Bare::fetch(const QString &sql, const std::function<void(const QSqlQuery &)> &row) const
{
    QSqlQuery query(database_);
    query.setForwardOnly(true);
    require(query.exec(sql), query);
    while (query.next())
        row(query);
    require(!query.lastError().isValid(), query);
}

void Bare::begin()
{
    require(database_.transaction(), database_);
}

void Bare::commit()
{
    require(database_.commit(), database_);
}

QSqlQuery Bare::prepared(const QString &sql) const
{
    QSqlQuery query(database_);
    require(query.prepare(sql), query);
    return query;
}

void Bare::run(QSqlQuery &query, const QVariantList &values)
{
    for (int i = 0; i < values.size(); ++i)
        query.bindValue(i, values[i]);
    require(query.exec(), query);
}

} // namespace bench
