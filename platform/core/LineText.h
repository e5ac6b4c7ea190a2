#pragma once
#include <QString>

/// What may stand in a text of one line, such as a code or a name, and where the lines of a longer one end.
namespace core {

/// `text` with one line feed for each line end, be it a line feed, a carriage return, or both in either order: in notes
/// the line feed comes first.
QString withLineFeeds(QString text);

/// `text` as it is pasted into a line: line ends around it go, those inside and tabs become a blank each, control
/// characters and halves of surrogate pairs are dropped.
QString pastedLine(QString text);

/// The same for a text that already stands in a line, of which the blanks around it are part.
QString lineOf(QString text);

/// The first characters of `text` that fit into `units` UTF-16 units: no character (with its accents) is cut in two.
QString cutTo(const QString &text, qsizetype units);

/// Does all of `text` fit a regular expression?
bool matches(const QString &text, const QString &pattern);

} // namespace core
