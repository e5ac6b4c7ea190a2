#pragma once
#include "platform/data/ConnectionString.h"

#include <QSqlDatabase>

/// The database without the program: a second attachment, driven through the driver alone.
namespace bench {

class Bare
{
public:
    explicit Bare(const data::DatabaseAddress &address);
    ~Bare();
    Bare(const Bare &) = delete;
    Bare &operator=(const Bare &) = delete;

    /// Fetches all rows and drops them; how many there were. Throws core::Error.
    qint64 fetch(const QString &sql) const;
    void begin();
    void commit();

private:
    QSqlDatabase database_;
};

} // namespace bench
