#include "benchmark/Bare.h"

#include "platform/core/Error.h"

#include <QSqlError>
#include <QSqlQuery>

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
    QSqlQuery query(database_);
    query.setForwardOnly(true);
    require(query.exec(sql), query);
    qint64 rows = 0;
    while (query.next())
        ++rows;
    require(!query.lastError().isValid(), query);
    return rows;
}

void Bare::begin()
{
    require(database_.transaction(), database_);
}

void Bare::commit()
{
    require(database_.commit(), database_);
}

} // namespace bench
