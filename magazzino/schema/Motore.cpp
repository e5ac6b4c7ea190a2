#include "magazzino/schema/Motore.h"

#include "platform/core/Log.h"
#include "platform/core/Messages.h"
#include "platform/schema/Engine.h"

using namespace Qt::StringLiterals;

namespace schema {

void eseguiPassi(data::Connection &connection, const QList<Step> &elenco)
{
    runSteps(connection, elenco, [](const Step &passo, const std::exception &error) {
        core::logError(u"AggiornaDatabase "_s + passo.object, error);
        core::showMessage({u"Errore"_s, u"Errore durante l'aggiornamento del database!"_s});
    });
}

} // namespace schema
