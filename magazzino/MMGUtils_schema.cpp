#include "magazzino/MMGUtils.h"
#include "magazzino/schema/Indexes.h"
#include "magazzino/schema/ModuleSteps.h"
#include "platform/core/Error.h"
#include "platform/core/Log.h"
#include "platform/core/Messages.h"

using namespace Qt::StringLiterals;

void AggiornaDatabase()
{
    try {
        core::namingErrors(u"AggiornaDatabase", [] {
            schema::runModuleSteps(ModuleConnection(), schema::moduleSteps());
            schema::createMissingIndexes(ModuleConnection());
        });
    } catch (const std::exception &error) {
        core::logError(u"AggiornaDatabase"_s, error);
        core::showError(nullptr, core::errorText(error));
    }
}
