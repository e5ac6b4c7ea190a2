#include "platform/data/Driver.h"

#include "platform/data/ConnectionString.h"
#include "platform/data/OdbcDriver.h"
#include "platform/data/firebird/FirebirdDriver.h"

namespace data {

std::unique_ptr<Driver> openDriver(const DriverSettings &settings)
{
    if (settings.isOdbc)
        return std::make_unique<OdbcDriver>(settings);
    return std::make_unique<firebird::FirebirdDriver>(settings.address);
}

} // namespace data
