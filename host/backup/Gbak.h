#pragma once
#include "platform/core/Progress.h"
#include "platform/data/ConnectionString.h"

#include <QStringList>

#include <functional>

namespace host {

/// Runs Firebird's backup program with `arguments`, waits for its end, and hands each line that it prints to `line`. It
/// writes to `folders`: on a full disk it may fail with words of something else, so they are looked at then.
///
/// User and password travel in its environment, never in its arguments, which other accounts can read.
///
/// Throws core::Error with an Italian text (program missing, not a backup, database in use, disk full, server out of
/// reach or refusing, ...; the program's own words are the error's context), and core::Cancelled when `progress` was
/// cancelled, which ends the program, but not before `mayStop` says so.
void runGbak(
    const data::DatabaseAddress &login, const QStringList &arguments, const QStringList &folders,
    core::Progress &progress, const std::function<void(const QString &)> &line,
    const std::function<bool()> &mayStop = [] { return true; });

/// Has Firebird's own program look through all pages and rows of `database`, which nobody else may have open. Throws
/// core::Error when it finds a fault (its words are the error's context) or cannot look, and core::Cancelled.
void validateDatabase(const data::DatabaseAddress &database, core::Progress &progress);

} // namespace host
