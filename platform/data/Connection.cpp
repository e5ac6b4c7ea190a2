#include "platform/data/Connection.h"

#include "platform/core/Lists.h"
#include "platform/core/Log.h"
#include "platform/core/Translation.h"
#include "platform/data/Changes.h"
#include "platform/data/ConnectionString.h"
#include "platform/data/DatabaseError.h"
#include "platform/data/Driver.h"
#include "platform/data/Latest.h"
#include "platform/data/SqlText.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace data {

namespace {

bool isQuery(const QString &sql)
{
    static const QRegularExpression query(u"^\\s*(SELECT|WITH)\\b"_s, QRegularExpression::CaseInsensitiveOption);
    return query.match(sql).hasMatch();
}

// Of the statement that runs. Background work has connections in threads of its own.
thread_local View view = View::OneMoment;

bool isChange(const QString &sql)
{
    static const QRegularExpression change(u"^\\s*(INSERT|UPDATE|DELETE)\\b"_s,
                                           QRegularExpression::CaseInsensitiveOption);
    return change.match(sql).hasMatch();
}

} // namespace

Connection::Connection(QObject *parent)
    : QObject(parent)
{
}

Connection::Connection(const QString &connectionString)
    : connectionString_(connectionString)
{
    open();
}

Connection::~Connection()
{
    close();
}

void Connection::open()
{
    if (isOpen())
        return;
    driver_ = openDriver(driverSettings(connectionString_));
    lost_ = false;
}

void Connection::close()
{
    statements_.clear();
    inTransaction_ = false;
    driver_.reset();
}

void Connection::ensureOpen()
{
    if (lost_ && !inTransaction_) {
        close();
        open();
    }
    if (!isOpen())
        throw DatabaseError(core::tr("La connessione al database non è aperta."), u"CONNECT"_s);
}

void Connection::prepareFor(const QString &sql)
{
    ensureOpen();
    if (hook_)
        hook_(sql);
}

template <typename Body>
auto Connection::noting(Body &&body)
{
    try {
        return body();
    } catch (const DatabaseError &error) {
        lost_ = lost_ || error.refusal() == Refusal::ConnectionLost;
        throw;
    }
}

void Connection::begin()
{
    ensureOpen();
    if (inTransaction_)
        throw DatabaseError(core::tr("Una transazione è già in corso."), u"BEGIN"_s);
    noting([this] { driver_->begin(); });
    inTransaction_ = true;
    written_.clear();
}

void Connection::commit()
{
    if (hook_)
        hook_(u"COMMIT"_s);
    statements_.clear();
    noting([this] { driver_->commit(); });
    inTransaction_ = false;
    written_.removeDuplicates();
    if (!written_.isEmpty())
        Q_EMIT Changes::instance().changed(std::exchange(written_, {}));
}

void Connection::rollback()
{
    statements_.clear();
    inTransaction_ = false;
    try {
        driver_->rollback();
    } catch (const std::exception &error) {
        // Only a connection that is gone refuses it, and then the engine has rolled back by itself.
        lost_ = true;
        core::logError(u"rollback"_s, error);
    }
}

void Connection::noteWriting(const QString &sql)
{
    if (!isQuery(sql))
        written_ += writtenTables(sql);
}

Statement &Connection::statement(const QString &sql, std::unique_ptr<Statement> &shortLived)
{
    if (inTransaction_) {
        if (const auto it = statements_.find(sql); it != statements_.end())
            return *it->second;
    }
    std::unique_ptr<Statement> prepared = driver_->prepare(sql, view);
    if (inTransaction_) {
        noteWriting(sql);
        return *statements_.emplace(sql, std::move(prepared)).first->second;
    }
    shortLived = std::move(prepared);
    return *shortLived;
}

void Connection::fetch(Rows &rows, const QString &sql, const QVariantList &values)
{
    std::unique_ptr<Statement> shortLived;
    Statement &prepared = statement(sql, shortLived);
    prepared.execute(values);
    affectedRows_ = isChange(sql) && prepared.columns().isEmpty() ? prepared.affectedRows() : 0;
    rows = Rows(prepared.columns(), {});
    for (QVariantList row; prepared.next(row);)
        rows.mutableValues().append(row);
}

Rows Connection::fetch(const QString &sql, const QVariantList &values)
{
    Rows rows;
    noting([&] { fetch(rows, sql, values); });
    return rows;
}

void Connection::execute(const QString &sql)
{
    // Definitions fail at the commit only.
    if (!inTransaction_) {
        Transaction transaction(*this);
        execute(sql);
        transaction.commit();
        return;
    }
    prepareFor(sql);
    noteWriting(sql);
    noting([&] {
        affectedRows_ = 0;
        driver_->executeOnce(sql);
    });
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
    return fetch(sql, values);
}

Rows Connection::select(const QString &sql, const Parameters &parameters)
{
    prepareFor(sql);
    QStringList names;
    const QString text = positional(sql, names);
    return fetch(text, core::mapped(names, [&parameters](const QString &name) { return parameters.value(name); }));
}

void Connection::selectInto(Rows &rows, const QString &sql, const QVariantList &values)
{
    prepareFor(sql);
    noting([&] { fetch(rows, sql, values); });
}

void Connection::forEach(const QString &sql, const std::function<void(QVariantList &&)> &row)
{
    prepareFor(sql);
    noting([&] {
        const std::unique_ptr<Statement> once = driver_->prepare(sql, View::OneMoment);
        once->execute({});
        for (QVariantList values; once->next(values);)
            row(std::move(values));
    });
}

int Connection::lastGeneratorValue(const QString &generator)
{
    return latest(*this, u"SELECT GEN_ID(%1, 0) AS VALORE FROM RDB$DATABASE"_s.arg(generator)).integer(0, u"VALORE");
}

Rows latest(Connection &connection, const QString &sql, const QVariantList &values)
{
    const LatestRows wanted;
    return connection.run(sql, values);
}

LatestRows::LatestRows()
{
    view = View::Latest;
}

LatestRows::~LatestRows()
{
    view = View::OneMoment;
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
