#pragma once
#include "host/Application.h"
#include "tests/support/ScriptedDialogs.h"
#include "tests/support/ScriptedMessages.h"
#include "tests/support/TestDatabase.h"

#include <QDateTime>

class TMMGModMagazzino;

namespace test {

/// "Now" of every workplace.
QDateTime workplaceTime();

/// What the program says in many places.
///@{
inline const QString saveError = QStringLiteral("Si è verificato un errore durante il salvataggio dei dati!");
inline const QString unsaved = QStringLiteral("Ci sono delle modifiche non salvate.\n\rContinuare comunque?");
inline const QString saveFirst = QStringLiteral("Salvare le modifiche al record corrente\n\rprima di continuare?");
inline const QString deleting = QStringLiteral("Confermare l'eliminazione?");
inline const QString numberTaken = QStringLiteral("Esiste già un documento con questo numero!");
inline const QString noRights = QStringLiteral("Non si dispone di diritti sufficienti per eseguire questa operazione.");
///@}

/// Searches the code by Enter in its filter, then chooses it.
ScriptedDialogs::Use choosingArticle(const QString &code);

/// Types the password of the user who is proposed at the login; `work` runs once the session's window is there.
ScriptedDialogs::Use loggingIn(const QString &password, const std::function<void(host::MainWindow &)> &work);

/// The program as a user has it: main window, warehouse module started, message boxes and dialogs scripted, clock
/// stopped.
class Workplace
{
public:
    enum class Start
    {
        WithModule,
        WindowOnly ///< until startModule()
    };

    /// On a copy of the demonstration database; `settingsFile` keeps what the program remembers, nothing does without.
    explicit Workplace(Start start = Start::WithModule, const QString &settingsFile = {});
    /// On a database that is already there, with the module.
    explicit Workplace(const data::DatabaseAddress &address, const QString &settingsFile = {});
    ~Workplace();

    void startModule();

    TMMGModMagazzino &module() const;
    host::MainWindow &window() const { return session_->window(); }
    host::HostCommands &commands() const { return session_->commands(); }
    /// A connection other than the module's.
    data::Connection &database() const { return session_->connection(); }
    QStringList lines(const QString &sql) const { return linesOf(database(), sql); }

    ScriptedMessages messages;
    ScriptedDialogs dialogs;

private:
    void open(const data::DatabaseAddress &address, const QString &settingsFile = {});

    std::unique_ptr<TestDatabase> copy_;
    std::unique_ptr<host::Session> session_;
};

} // namespace test
