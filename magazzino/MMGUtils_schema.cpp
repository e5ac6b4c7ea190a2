#include "magazzino/MMGUtils.h"
#include "magazzino/schema/Indici.h"
#include "magazzino/schema/Motore.h"
#include "magazzino/schema/Passi.h"
#include "platform/core/Error.h"
#include "platform/core/Log.h"
#include "platform/core/Messages.h"

using namespace Qt::StringLiterals;

void AggiornaDatabase()
{
    try {
        core::namingErrors(u"AggiornaDatabase", [] {
            schema::eseguiPassi(ModuleConnection(), schema::passi());
            schema::creaIndiciMancanti(ModuleConnection());
        });
    } catch (const std::exception &error) {
        core::logError(u"AggiornaDatabase"_s, error);
        core::showError(nullptr, core::errorText(error));
    }
}
