#pragma once
#include <QString>
#include <exception>

/// What an error box hides from the user, for whoever is asked for help. One rotating file in the user's data folder;
/// values that the user typed are masked before they are written.
namespace core {

/// Sets the log file; the folder is created. At 1 MiB the file becomes "NAME.1" (one generation is kept).
/// An empty path switches logging off (the state before the first call).
void setLogFile(const QString &path);
/// The log file that was set; empty while logging is off.
QString logFile();

/// One line: time, where it happened (a routine or a document without its contents), statement kind and error text.
void logError(const QString &where, const std::exception &error);
/// The same with a text of one's own. Nothing is thrown when the line cannot be written.
void logLine(const QString &where, const QString &text);

/// From now on what Qt itself warns of is logged, too, as a line of "Qt"; it still appears where it did before.
void logQtWarnings();

/// `text` with everything masked that a database repeats from a user's input: quoted texts and key values.
QString withoutUserValues(const QString &text);

} // namespace core
