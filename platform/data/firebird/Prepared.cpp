#include "platform/data/firebird/Prepared.h"

#include "platform/data/SqlText.h"

#include <algorithm>

namespace data::firebird {

namespace {

// More than the program's forms and lists have; texts with values in them push each other out.
constexpr size_t mostKept = 128;

using Info = unsigned char;

/// What the database tells about a statement or its last run: numbers behind one-byte names and two-byte lengths.
int infoNumber(const Info *info, int item)
{
    while (*info != isc_info_end) {
        const auto length = static_cast<short>(isc_portable_integer(info + 1, 2));
        if (*info == item)
            return static_cast<int>(isc_portable_integer(info + 3, length));
        info += 3 + length;
    }
    return 0;
}

} // namespace

Prepared::Prepared(Attachment &attachment, NativeTransaction &transaction, const QString &sql)
    : attachment_(attachment)
    , sql_(sql)
{
    try {
        prepare(transaction);
    } catch (const std::exception &) {
        release(DSQL_drop);
        throw;
    }
}

Prepared::~Prepared()
{
    release(DSQL_drop);
}

QString Prepared::kindOfStatement() const
{
    return statementKind(sql_);
}

void Prepared::prepare(NativeTransaction &transaction)
{
    const QByteArray text = sql_.toUtf8();
    call([&](Status &status) { isc_dsql_allocate_statement(status, attachment_.handle(), &handle_); });
    call([&](Status &status) {
        isc_dsql_prepare(status, transaction.handle(), &handle_, 0, text.constData(), SQL_DIALECT_V6, result_.get());
    });
    if (result_.size() > result_.get()->sqln) {
        result_.reserve(result_.size());
        call([&](Status &status) { isc_dsql_describe(status, &handle_, SQLDA_VERSION1, result_.get()); });
    }
    result_.makeRoom();
    columns_ = result_.columns();
    const auto describe = [&](Status &status) {
        isc_dsql_describe_bind(status, &handle_, SQLDA_VERSION1, parameters_.get());
    };
    call(describe);
    if (parameters_.size() > parameters_.get()->sqln) {
        parameters_.reserve(parameters_.size());
        call(describe);
    }
    parameters_.makeRoom();
    Info answer[16] = {};
    ask(isc_info_sql_stmt_type, answer, sizeof answer);
    kind_ = infoNumber(answer, isc_info_sql_stmt_type);
}

void Prepared::ask(char item, Info *answer, short size)
{
    call(
        [&](Status &status) { isc_dsql_sql_info(status, &handle_, 1, &item, size, reinterpret_cast<char *>(answer)); });
}

int Prepared::affectedRows()
{
    Info answer[64] = {};
    ask(isc_info_sql_records, answer, sizeof answer);
    if (answer[0] != isc_info_sql_records)
        return 0;
    const Info *counts = answer + 3;
    return infoNumber(counts, isc_info_req_insert_count) + infoNumber(counts, isc_info_req_update_count) +
           infoNumber(counts, isc_info_req_delete_count);
}

void Prepared::release(unsigned short how)
{
    if (!handle_)
        return;
    // Closing a cursor that the engine has closed by itself, or dropping behind a lost connection, changes nothing.
    Status ignored;
    attachment_.call([&] { isc_dsql_free_statement(ignored, &handle_, how); });
}

std::unique_ptr<Prepared> PreparedStore::take(const QString &sql)
{
    const auto found = std::find_if(statements_.begin(), statements_.end(),
                                    [&sql](const auto &statement) { return statement->sql() == sql; });
    if (found == statements_.end())
        return nullptr;
    std::unique_ptr<Prepared> statement = std::move(*found);
    statements_.erase(found);
    return statement;
}

void PreparedStore::keep(std::unique_ptr<Prepared> statement)
{
    statements_.push_front(std::move(statement));
    if (statements_.size() > mostKept)
        statements_.pop_back();
}

} // namespace data::firebird
