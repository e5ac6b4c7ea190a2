// The workloads whose waits a network decides.
#include "benchmark/Bench.h"

#include "host/users/Users.h"
#include "magazzino/MMGUtils.h"
#include "magazzino/schema/ModuleSteps.h"
#include "platform/core/Error.h"
#include "platform/data/Connection.h"

using namespace Qt::StringLiterals;

namespace bench {

// The module's start asks for the recorded versions before each of its steps.
void Bench::measureVersionReadings()
{
    add({.program = [this] { schema::runModuleSteps(ModuleConnection(), schema::moduleSteps()); }},
        {.workload = u"start of the module: its readings of versions"_s});
}

// From the names offered to the main window.
void Bench::measureLogin()
{
    add({.program =
             [this] {
                 auto connection = std::make_unique<data::Connection>();
                 connection->setConnectionString(data::nativeConnectionString(address_));
                 connection->open();
                 const QString name = host::activeUsers(*connection).value(0);
                 host::usersWithoutPassword(*connection);
                 if (host::authenticate(name, {}, *connection).isEmpty())
                     throw core::Error(u"Not let in: "_s + name);
                 program_ = std::make_unique<Program>(address_, std::move(connection));
             },
         .prepare = [this] { program_.reset(); }},
        {.workload = u"login, up to the main window"_s});
}

QString Bench::runOverNetwork()
{
    network_ = std::make_unique<Network>();
    address_ = network_->address();
    createDatabase();
    fill(1, size.documents);
    if (isWanted(u"saves"_s))
        measureSaves(*this);
    if (isWanted(u"opening"_s))
        measureOpening(*this);
    if (isWanted(u"row"_s))
        measureArticleRow(*this);
    if (isWanted(u"keys"_s))
        measureKeySearches(*this);
    if (isWanted(u"lists"_s))
        measureLists(*this);
    if (isWanted(u"start"_s)) {
        measureStart();
        measureVersionReadings();
    }
    if (isWanted(u"login"_s))
        measureLogin();
    program_.reset();
    return network_->table();
}

} // namespace bench
