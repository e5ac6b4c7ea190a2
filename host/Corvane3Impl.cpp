#include "host/Corvane3Impl.h"

#include "platform/core/Format.h"

#include <QHash>

using namespace Qt::StringLiterals;

namespace {
QString currentUser;
} // namespace

QString GetKxCurrentUserName()
{
    return currentUser;
}

void SetKxCurrentUserName(const QString &userName)
{
    currentUser = userName;
}

int GetLastGeneratorValue(const QString &generator, data::Connection &connection)
{
    return connection.lastGeneratorValue(generator);
}

void OpenADODsIfClosed(data::DataSet &dataSet)
{
    if (!dataSet.isOpen())
        dataSet.open();
}

QString DateToString_YYYYMMDD(QDate date)
{
    return date.toString(u"yyyy-MM-dd"_s);
}

QString GetCustomCodice(int number, const QString &prefix)
{
    return core::recordCode(number, prefix);
}

QList<int> GetElencoIdFiglio(const QString &keyColumn, int id, const QString &table, data::Connection &connection)
{
    const data::Rows rows = connection.select(u"SELECT %1, IDPADRE FROM %2"_s.arg(keyColumn, table));
    QMultiHash<int, int> children;
    for (qsizetype row = 0; row < rows.size(); ++row)
        children.insert(rows.integer(row, u"IDPADRE"), rows.integer(row, keyColumn));
    QList<int> keys = {id};
    // A key that is already listed is passed over, so a circle in the data cannot loop.
    for (qsizetype next = 0; next < keys.size(); ++next) {
        QList<int> found = children.values(keys[next]);
        std::sort(found.begin(), found.end());
        for (const int child : std::as_const(found)) {
            if (!keys.contains(child))
                keys.append(child);
        }
    }
    return keys;
}

QString GetCurrencyPrefix()
{
    return core::currencyPrefix;
}

QString BoolToStrIta(bool value)
{
    return value ? u"Sì"_s : u"No"_s;
}
