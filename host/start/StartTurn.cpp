#include "host/start/StartTurn.h"

#include "host/DatabaseSetup.h"
#include "platform/core/Error.h"
#include "platform/core/Log.h"
#include "platform/core/Messages.h"
#include "platform/core/Translation.h"
#include "platform/data/DatabaseError.h"
#include "platform/data/WaitLimits.h"
#include "platform/ui/ProgressDialog.h"

#include <QDeadlineTimer>
#include <QThread>

using namespace Qt::StringLiterals;

namespace host {

namespace {

using Row = std::unique_ptr<data::HeldRow>;

// Nothing ever redefines TABLE_VERSION, which holding a row of it would delay.
Row tryTurn(const data::DatabaseAddress &database)
{
    return data::HeldRow::tryToHold(database, u"INSERT INTO TABLE_VERSION(TABELLA, VERSIONE) VALUES('AVVIO', '-')"_s);
}

[[noreturn]] void giveUp(const data::DatabaseAddress &database)
{
    throw core::Error(
        core::tr("L'archivio \"%1\" non è stato aperto: un'altra postazione lo sta avviando o aggiornando.")
            .arg(database.toString()));
}

// Null when the limit is over. "Annulla" gives up.
Row waitForTurn(const data::DatabaseAddress &database)
{
    Row row;
    const auto wait = [&](core::Progress &progress) {
        progress.setText(core::tr("Un'altra postazione sta avviando o aggiornando l'archivio: attendere…"));
        const QDeadlineTimer limit(std::chrono::seconds(data::waitLimits().turn));
        constexpr unsigned long pause = 200; // milliseconds
        while (!(row = tryTurn(database)) && !limit.hasExpired()) {
            progress.check();
            QThread::msleep(pause);
        }
    };
    if (!ui::runWithProgress(nullptr, core::tr("Apertura dell'archivio"), wait))
        giveUp(database);
    return row;
}

core::Answer askWhatToDo()
{
    return core::showMessage(
        {.title = u"Conferma"_s,
         .text = core::tr("Un'altra postazione sta ancora avviando o aggiornando l'archivio.\n\rAspettare ancora? "
                          "(«No» apre l'archivio senza aspettare.)"),
         .icon = core::MessageIcon::Question,
         .answers = {core::Answer::Yes, core::Answer::No, core::Answer::Cancel}});
}

Row takeTurn(const data::DatabaseAddress &database)
{
    Row row = tryTurn(database);
    if (row)
        return row;
    while (!(row = waitForTurn(database))) {
        const core::Answer answer = askWhatToDo();
        if (answer == core::Answer::Cancel)
            giveUp(database);
        if (answer == core::Answer::No)
            break;
    }
    requireDatabase(database);
    return row;
}

} // namespace

StartTurn::StartTurn(const data::DatabaseAddress &database)
{
    if (database.isEmbedded())
        return;
    try {
        row_ = takeTurn(database);
    } catch (const data::DatabaseError &error) {
        if (error.refusal() == data::Refusal::ConnectionLost)
            throw;
        // An account that may not write there has nothing to upgrade either.
        core::logError(u"turno di avvio"_s, error);
    }
}

} // namespace host
