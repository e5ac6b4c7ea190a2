#include "platform/data/firebird/FirebirdDriver.h"

#include "platform/data/DatabaseError.h"
#include "platform/data/SqlText.h"
#include "platform/data/firebird/Descriptor.h"

namespace data::firebird {

namespace {

constexpr ISC_STATUS behindLastRow = 100;

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

class FirebirdStatement : public Statement
{
public:
    FirebirdStatement(Attachment &attachment, std::shared_ptr<NativeTransaction> transaction, const QString &sql)
        : attachment_(attachment)
        , transaction_(std::move(transaction))
        , sql_(sql)
    {
        try {
            prepare();
        } catch (const std::exception &) {
            release(DSQL_drop);
            throw;
        }
    }

    ~FirebirdStatement() override { release(DSQL_drop); }

    const QList<Column> &columns() const override { return columns_; }
    void execute(const QVariantList &values) override;
    bool next(QVariantList &row) override;
    int affectedRows() override;

private:
    void prepare();
    void ask(char item, Info *answer, short size);
    int kind();
    void release(unsigned short how);

    template <typename Function>
    void call(Function &&function)
    {
        Status status;
        attachment_.call([&] { function(status); });
        if (status.failed())
            status.require(statementKind(sql_));
    }

    // Names the statement in errors of what does not know it.
    template <typename Function>
    auto named(Function &&function)
    {
        try {
            return function();
        } catch (const DatabaseError &error) {
            if (!error.context().isEmpty())
                throw;
            throw DatabaseError(error.text(), statementKind(sql_), error.refusal());
        }
    }

    Attachment &attachment_;
    std::shared_ptr<NativeTransaction> transaction_;
    QString sql_;
    isc_stmt_handle handle_ = 0;
    Descriptor parameters_;
    Descriptor result_;
    QList<Column> columns_;
    int kind_ = 0;
    bool isOpen_ = false; // has a cursor
    bool hasRow_ = false; // the single row of a RETURNING clause waits
};

void FirebirdStatement::prepare()
{
    const QByteArray text = sql_.toUtf8();
    call([&](Status &status) { isc_dsql_allocate_statement(status, attachment_.handle(), &handle_); });
    call([&](Status &status) {
        isc_dsql_prepare(status, transaction_->handle(), &handle_, 0, text.constData(), SQL_DIALECT_V6, result_.get());
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
    kind_ = kind();
}

void FirebirdStatement::ask(char item, Info *answer, short size)
{
    call(
        [&](Status &status) { isc_dsql_sql_info(status, &handle_, 1, &item, size, reinterpret_cast<char *>(answer)); });
}

int FirebirdStatement::kind()
{
    Info answer[16] = {};
    ask(isc_info_sql_stmt_type, answer, sizeof answer);
    return infoNumber(answer, isc_info_sql_stmt_type);
}

void FirebirdStatement::release(unsigned short how)
{
    if (!handle_)
        return;
    // Closing a cursor that the engine has closed by itself, or dropping behind a lost connection, changes nothing.
    Status ignored;
    attachment_.call([&] { isc_dsql_free_statement(ignored, &handle_, how); });
    isOpen_ = false;
    hasRow_ = false;
}

void FirebirdStatement::execute(const QVariantList &values)
{
    if (isOpen_)
        release(DSQL_close);
    named([&] { parameters_.bind(values, attachment_, *transaction_); });
    XSQLDA *parameters = parameters_.size() > 0 ? parameters_.get() : nullptr;
    const bool givesOneRow = kind_ == isc_info_sql_stmt_exec_procedure && result_.size() > 0;
    call([&](Status &status) {
        if (givesOneRow)
            isc_dsql_execute2(status, transaction_->handle(), &handle_, SQLDA_VERSION1, parameters, result_.get());
        else
            isc_dsql_execute(status, transaction_->handle(), &handle_, SQLDA_VERSION1, parameters);
    });
    hasRow_ = givesOneRow;
    isOpen_ = kind_ == isc_info_sql_stmt_select || kind_ == isc_info_sql_stmt_select_for_upd;
}

bool FirebirdStatement::next(QVariantList &row)
{
    if (!isOpen_ && !hasRow_)
        return false;
    hasRow_ = false;
    if (isOpen_) {
        ISC_STATUS answer = 0;
        call([&](Status &status) { answer = isc_dsql_fetch(status, &handle_, SQLDA_VERSION1, result_.get()); });
        if (answer == behindLastRow) {
            release(DSQL_close);
            return false;
        }
    }
    row.clear();
    row.reserve(result_.size());
    for (int i = 0; i < result_.size(); ++i)
        row.append(named([&] { return result_.value(i, attachment_, *transaction_); }));
    return true;
}

int FirebirdStatement::affectedRows()
{
    Info answer[64] = {};
    ask(isc_info_sql_records, answer, sizeof answer);
    if (answer[0] != isc_info_sql_records)
        return 0;
    const Info *counts = answer + 3;
    return infoNumber(counts, isc_info_req_insert_count) + infoNumber(counts, isc_info_req_update_count) +
           infoNumber(counts, isc_info_req_delete_count);
}

} // namespace

FirebirdDriver::FirebirdDriver(const DatabaseAddress &address)
    : attachment_(address)
{
}

void FirebirdDriver::begin()
{
    transaction_ = std::make_shared<NativeTransaction>(attachment_, Access::Write);
}

void FirebirdDriver::commit()
{
    transaction_->commit();
    transaction_.reset();
}

void FirebirdDriver::rollback()
{
    const std::shared_ptr<NativeTransaction> ending = std::move(transaction_);
    ending->rollback();
}

std::unique_ptr<Statement> FirebirdDriver::prepare(const QString &sql)
{
    auto transaction = transaction_ ? transaction_ : std::make_shared<NativeTransaction>(attachment_, Access::Read);
    return std::make_unique<FirebirdStatement>(attachment_, std::move(transaction), sql);
}

} // namespace data::firebird
