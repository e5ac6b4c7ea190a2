#pragma once
#include "platform/data/Connection.h"

#include <QHash>
#include <QVariant>

/// How demonstration data are written, by the host and by modules.
namespace host::demo {

struct Column
{
    QString name;
    QVariant value;
};

/// Keys of the rows of a table, by their text.
using Keys = QHash<QString, QVariant>;

/// Role of the demonstration user UFFICIO.
inline const QString officeRole = QStringLiteral("Ufficio");

/// Inserts a row and returns its key; an empty `key` stands for a table whose key needs no reading.
QVariant insertRow(data::Connection &connection, const QString &table, const QString &key,
                   const QList<Column> &columns);
/// Inserts a row for each text.
Keys insertTexts(data::Connection &connection, const QString &table, const QString &key, const QString &column,
                 const QStringList &texts);
/// What customers, suppliers and carriers have in common; `number` is unique over all of them.
QList<Column> firmColumns(const QString &name, const QString &code, int number);
/// Eleven digits: seven from `number`, three of the tax office and the check digit.
QString vatNumber(int number, const QString &office);
/// "C0001" for the first one.
QString code(const QString &prefix, qsizetype index);

} // namespace host::demo
