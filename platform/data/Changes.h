#pragma once
#include <QObject>
#include <QStringList>

namespace data {

/// Tells what this program has changed in the database, whichever of its connections and threads did it: saves,
/// deletions and imports alike. Connection announces it; no form needs to.
class Changes : public QObject
{
    Q_OBJECT

public:
    /// The one of the program.
    static Changes &instance();

Q_SIGNALS:
    /// A transaction that wrote to `tables`, in capitals, was committed just now, inside the call that did it: connect
    /// queued whatever asks the database itself.
    void changed(const QStringList &tables);

private:
    using QObject::QObject;
};

} // namespace data
