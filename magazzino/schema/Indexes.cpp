#include "magazzino/schema/Indexes.h"

#include "magazzino/documents/DocumentKind.h"
#include "platform/core/Log.h"
#include "platform/data/ConnectionString.h"
#include "platform/data/DatabaseFile.h"

#include <QSet>

using namespace Qt::StringLiterals;

namespace schema {

namespace {

struct Index
{
    QString name;
    QString table;
    QString key; ///< what stands behind the table's name
    bool descending = false;
};

// Each one serves a plan that was measured (docs/performance.md). There is none on the movements' date: the reports
// would read all movements through it, seventy times slower than one after the other.
QList<Index> indexes()
{
    QList<Index> list = {{u"IX_MMG_MOVI_MAGA_CODICE"_s, u"MOVI_MAGA"_s, u"COMPUTED BY (UPPER(CODICE))"_s},
                         {u"IX_MMG_MOVI_MAGA_RIF_DOC"_s, u"MOVI_MAGA"_s, u"(RIF_DOC_ID, RIF_DOC_TIPO)"_s}};
    for (const DocumentKind *kind : documentKinds()) {
        list.append({u"IX_MMG_"_s + kind->rowTable(), kind->rowTable(), u'(' + kind->key + u')'});
        list.append({u"IX_MMG_%1_ANNO"_s.arg(kind->table), kind->table, u"(ANNO, NUMERO)"_s, true});
    }
    return list;
}

QString command(const Index &index)
{
    return u"CREATE %1INDEX %2 ON %3 %4"_s.arg(index.descending ? u"DESCENDING "_s : QString(), index.name, index.table,
                                               index.key);
}

QSet<QString> presentIndexes(data::Connection &connection)
{
    const data::Rows rows = connection.select(
        u"SELECT TRIM(RDB$INDEX_NAME) AS NOME FROM RDB$INDICES WHERE RDB$INDEX_NAME STARTING WITH 'IX_MMG_'"_s);
    QSet<QString> names;
    for (qsizetype row = 0; row < rows.size(); ++row)
        names.insert(rows.text(row, u"NOME"));
    return names;
}

void create(const data::DatabaseAddress &address, const Index &index)
{
    try {
        data::executeWithoutWaiting(address, command(index));
    } catch (const std::exception &error) {
        // The program works without it; the next start tries again.
        core::logError(u"creazione dell'indice %1"_s.arg(index.name), error);
    }
}

} // namespace

void createMissingIndexes(data::Connection &connection)
{
    try {
        const data::DriverSettings settings = data::driverSettings(connection.connectionString());
        // The client library needs the file, and a data source name does not tell it.
        if (settings.isOdbc)
            return;
        const QSet<QString> present = presentIndexes(connection);
        for (const Index &index : indexes()) {
            if (!present.contains(index.name))
                create(settings.address, index);
        }
    } catch (const std::exception &error) {
        core::logError(u"createMissingIndexes"_s, error);
    }
}

} // namespace schema
