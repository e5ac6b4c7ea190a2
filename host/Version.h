#pragma once
#include <QList>
#include <QString>

namespace host {

/// The program's version, "1.2.0", as the build names it.
QString programVersion();

/// A line of what is asked for when something does not work.
struct Fact
{
    QString label;
    QString value;
};

/// Versions of program, modules and libraries, the operating system and the folder of the log; `database` as the user
/// sees it, left out when empty. Holds no password.
QList<Fact> programFacts(const QString &database);

/// The facts as lines "label: value" for the clipboard.
QString factsAsText(const QList<Fact> &facts);

} // namespace host
