#include "host/backup/Contents.h"

#include "platform/data/ReadApart.h"

using namespace Qt::StringLiterals;

namespace host {

namespace {

// The columns of all tables that hold rows, each table's in their order.
const QString columnsQuery =
    u"SELECT TRIM(R.RDB$RELATION_NAME) AS TABELLA, TRIM(C.RDB$FIELD_NAME) AS COLONNA FROM RDB$RELATIONS R "
    "JOIN RDB$RELATION_FIELDS C ON C.RDB$RELATION_NAME = R.RDB$RELATION_NAME "
    "JOIN RDB$FIELDS F ON F.RDB$FIELD_NAME = C.RDB$FIELD_SOURCE "
    "WHERE COALESCE(R.RDB$SYSTEM_FLAG, 0) = 0 AND R.RDB$VIEW_BLR IS NULL AND COALESCE(R.RDB$RELATION_TYPE, 0) = 0 "
    "AND F.RDB$COMPUTED_BLR IS NULL ORDER BY R.RDB$RELATION_NAME, C.RDB$FIELD_POSITION"_s;
const QString generatorsQuery =
    u"SELECT TRIM(RDB$GENERATOR_NAME) AS NOME FROM RDB$GENERATORS WHERE COALESCE(RDB$SYSTEM_FLAG, 0) = 0 ORDER BY 1"_s;

QString hashOf(const QString &column)
{
    return u"COALESCE(MOD(HASH(\"%1\"), 2147483647), -1)"_s.arg(column);
}

// The place of a column weighs its values, and the row's key, the first column, weighs the row: values that two columns
// or two rows have exchanged make another sum. Every product fits 64 bits.
QString sumOf(const QStringList &columns)
{
    QStringList terms;
    for (const QString &column : columns)
        terms.append(u"%1 * %2"_s.arg(hashOf(column)).arg(terms.size() + 1));
    return u"SUM(MOD(%1 * MOD(%2, 2147483647), 2147483629))"_s.arg(hashOf(columns.first()), terms.join(u" + "_s));
}

QString contentsQuery(const QMap<QString, QStringList> &tables, const QStringList &generators)
{
    QStringList queries;
    for (auto table = tables.begin(); table != tables.end(); ++table)
        queries.append(u"SELECT CAST('%1' AS VARCHAR(63)) AS NOME, COUNT(*) AS RIGHE, %2 AS SOMMA FROM \"%1\""_s.arg(
            table.key(), sumOf(*table)));
    for (const QString &generator : generators)
        queries.append(u"SELECT '%1', CAST(NULL AS BIGINT), GEN_ID(\"%1\", 0) FROM RDB$DATABASE"_s.arg(generator));
    return queries.join(u" UNION ALL "_s);
}

} // namespace

QMap<QString, QString> tableContents(const data::DatabaseAddress &database, core::Progress &progress)
{
    const QString connection = data::nativeConnectionString(database);
    const data::Rows columns = data::readApart(connection, columnsQuery, progress);
    QMap<QString, QStringList> tables;
    for (qsizetype row = 0; row < columns.size(); ++row)
        tables[columns.text(row, u"TABELLA")].append(columns.text(row, u"COLONNA"));
    const data::Rows names = data::readApart(connection, generatorsQuery, progress);
    QStringList generators;
    for (qsizetype row = 0; row < names.size(); ++row)
        generators.append(names.text(row, u"NOME"));

    const data::Rows found = data::readApart(connection, contentsQuery(tables, generators), progress);
    QMap<QString, QString> contents;
    for (qsizetype row = 0; row < found.size(); ++row) {
        const QString name = found.text(row, u"NOME").trimmed();
        const QString sum = found.text(row, u"SOMMA");
        if (tables.contains(name))
            contents[name] = found.text(row, u"RIGHE") + u' ' + sum;
        else
            contents[u"numeratori"_s] += u"%1 %2 "_s.arg(name, sum);
    }
    return contents;
}

} // namespace host
