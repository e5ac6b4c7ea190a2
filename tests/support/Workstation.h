#pragma once
#include "platform/data/ConnectionString.h"

#include <QProcess>

namespace test {

/// What a workstation's documents of a round have: so many rows, of these quantities.
constexpr int enteredRows = 3;
constexpr int enteredQuantity(bool isReceipt, int round, int row)
{
    return (isReceipt ? 10 : 1) + round % 5 + row;
}

/// Another workstation, a process of its own on a server's database; the program in tests/helpers tells there what it
/// does for which arguments.
class Workstation
{
public:
    Workstation(const data::DatabaseAddress &address, const QStringList &arguments);

    void tell(const QString &line);
    /// Its next line; "silence" when none comes within a minute.
    QString answer();
    /// Ends it as a power cut would.
    void kill();
    /// Lets it come to its end. Returns what it complained of, "silence" when it did not end within `seconds`; empty
    /// when all went well.
    QString end(int seconds);

private:
    QProcess process_;
};

} // namespace test
