#include "platform/data/firebird/FirebirdDriver.h"

#include "platform/data/DatabaseError.h"
#include "platform/data/SqlText.h"
#include "platform/data/firebird/Blobs.h"

#include <exception>

using namespace Qt::StringLiterals;

namespace data::firebird {

namespace {

constexpr ISC_STATUS behindLastRow = 100;

// Each text blob takes a server three turns to read. These come together; longer ones are rare.
constexpr int blobsTogether = 20;
constexpr int longestTogether = 2000; // characters

// Gives the text of each of its parameters, NULL for those that are too long.
const QString textsOfBlobs = [] {
    QStringList parameters;
    QString body;
    for (int i = 0; i < blobsTogether; ++i) {
        parameters.append(u"B%1 BLOB SUB_TYPE TEXT CHARACTER SET UTF8 = ?"_s.arg(i));
        body += u"T = NULL; IF (CHAR_LENGTH(B%1) <= %2) THEN T = B%1; SUSPEND; "_s.arg(i).arg(longestTogether);
    }
    return u"EXECUTE BLOCK (%1) RETURNS (T VARCHAR(%2) CHARACTER SET UTF8) AS BEGIN %3END"_s.arg(
        parameters.join(u", "_s), QString::number(longestTogether), body);
}();

bool changesRows(const QString &sql)
{
    const QString kind = statementKind(sql);
    return kind.startsWith(u"INSERT") || kind.startsWith(u"UPDATE") || kind.startsWith(u"DELETE");
}

/// A prepared statement in the transaction that runs it.
class FirebirdStatement : public Statement
{
public:
    FirebirdStatement(Attachment &attachment, PreparedStore &store, std::shared_ptr<NativeTransaction> transaction,
                      const QString &sql)
        : attachment_(attachment)
        , store_(store)
        , transaction_(std::move(transaction))
        , prepared_(store.take(sql))
    {
        if (!prepared_)
            prepared_ = std::make_unique<Prepared>(attachment, *transaction_, sql);
    }

    ~FirebirdStatement() override
    {
        close();
        // What has failed may belong to tables that are no longer as they were: next time it is prepared anew.
        if (!hasFailed_)
            store_.keep(std::move(prepared_));
    }

    const QList<Column> &columns() const override { return prepared_->columns(); }
    void execute(const QVariantList &values) override;
    bool next(QVariantList &row) override;
    int affectedRows() override { return prepared_->affectedRows(); }

private:
    void close();
    bool fetch(QVariantList &row);
    void fetchAhead();
    void readTexts();

    // Names the statement in errors of what does not know it.
    template <typename Function>
    auto noting(Function &&function)
    {
        try {
            return function();
        } catch (const DatabaseError &error) {
            hasFailed_ = true;
            if (!error.context().isEmpty())
                throw;
            throw DatabaseError(error.text(), prepared_->kindOfStatement(), error.refusal());
        }
    }

    Attachment &attachment_;
    PreparedStore &store_;
    std::shared_ptr<NativeTransaction> transaction_;
    std::unique_ptr<Prepared> prepared_;
    bool isOpen_ = false; // has a cursor
    bool hasRow_ = false; // the single row of a RETURNING clause waits
    bool hasFailed_ = false;
    QList<QVariantList> ahead_;  // fetched already, where texts are read for several rows at once
    std::exception_ptr failure_; // behind them
};

void FirebirdStatement::close()
{
    if (isOpen_)
        prepared_->close();
    isOpen_ = false;
    hasRow_ = false;
    ahead_.clear();
    failure_ = nullptr;
}

void FirebirdStatement::execute(const QVariantList &values)
{
    close();
    noting([&] {
        Descriptor &bound = prepared_->parameters();
        bound.bind(values, attachment_, *transaction_);
        XSQLDA *parameters = bound.size() > 0 ? bound.get() : nullptr;
        prepared_->call([&](Status &status) {
            if (prepared_->givesOneRow())
                isc_dsql_execute2(status, transaction_->handle(), prepared_->handle(), SQLDA_VERSION1, parameters,
                                  prepared_->result().get());
            else
                isc_dsql_execute(status, transaction_->handle(), prepared_->handle(), SQLDA_VERSION1, parameters);
        });
    });
    hasRow_ = prepared_->givesOneRow();
    isOpen_ = prepared_->hasCursor();
}

bool FirebirdStatement::next(QVariantList &row)
{
    if (!prepared_->result().hasTextBlobs())
        return fetch(row);
    if (ahead_.isEmpty() && !failure_)
        fetchAhead();
    if (!ahead_.isEmpty()) {
        row = ahead_.takeFirst();
        return true;
    }
    if (failure_)
        std::rethrow_exception(std::exchange(failure_, nullptr));
    return false;
}

// The rows before one that fails are still handed over.
void FirebirdStatement::fetchAhead()
{
    try {
        for (QVariantList row; ahead_.size() < blobsTogether && fetch(row);)
            ahead_.append(row);
    } catch (const DatabaseError &) {
        failure_ = std::current_exception();
    }
    readTexts();
}

void FirebirdStatement::readTexts()
{
    QList<QVariant *> blobs;
    for (QVariantList &row : ahead_) {
        for (QVariant &value : row) {
            if (value.metaType() == QMetaType::fromType<ISC_QUAD>())
                blobs.append(&value);
        }
    }
    for (qsizetype first = 0; first < blobs.size(); first += blobsTogether) {
        const QList<QVariant *> group = blobs.mid(first, blobsTogether);
        QVariantList ids;
        for (const QVariant *blob : group)
            ids.append(*blob);
        ids.resize(blobsTogether);
        FirebirdStatement texts(attachment_, store_, transaction_, textsOfBlobs);
        texts.execute(ids);
        QVariantList answer;
        for (QVariant *blob : group) {
            texts.fetch(answer);
            *blob = answer[0].isValid()
                        ? answer[0]
                        : QString::fromUtf8(readBlob(blob->value<ISC_QUAD>(), attachment_, *transaction_));
        }
    }
}

bool FirebirdStatement::fetch(QVariantList &row)
{
    if (!isOpen_ && !hasRow_)
        return false;
    hasRow_ = false;
    const Descriptor &result = prepared_->result();
    if (isOpen_) {
        ISC_STATUS answer = 0;
        noting([&] {
            prepared_->call([&](Status &status) {
                answer = isc_dsql_fetch(status, prepared_->handle(), SQLDA_VERSION1, prepared_->result().get());
            });
        });
        if (answer == behindLastRow) {
            prepared_->close();
            isOpen_ = false;
            return false;
        }
    }
    row.clear();
    row.reserve(result.size());
    for (int i = 0; i < result.size(); ++i)
        row.append(noting([&] { return result.valueUnread(i, attachment_, *transaction_); }));
    return true;
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

std::shared_ptr<NativeTransaction> FirebirdDriver::transactionFor(View view)
{
    if (transaction_)
        return transaction_;
    if (view == View::OneMoment)
        return std::make_shared<NativeTransaction>(attachment_, Access::Read);
    if (!standing_)
        standing_ = std::make_shared<NativeTransaction>(attachment_, Access::ReadLatest);
    return standing_;
}

std::unique_ptr<Statement> FirebirdDriver::prepare(const QString &sql, View view)
{
    return std::make_unique<FirebirdStatement>(attachment_, store_, transactionFor(view), sql);
}

void FirebirdDriver::executeOnce(const QString &sql)
{
    if (!changesRows(sql)) {
        // Both hold on to the tables that they read.
        store_.clear();
        standing_.reset();
    }
    if (const Status status = transaction_->execute(sql); status.failed())
        status.require(statementKind(sql));
}

} // namespace data::firebird
