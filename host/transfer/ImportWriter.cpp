#include "host/transfer/RecordReader.h"
#include "platform/core/Log.h"
#include "platform/core/Progress.h"
#include "platform/core/Translation.h"
#include "platform/data/Connection.h"
#include "platform/data/DatabaseError.h"
#include "platform/data/SqlText.h"

using namespace Qt::StringLiterals;

namespace host {

namespace {

using Kind = ImportField::Kind;

QVariant whenEmpty(const ImportField &field)
{
    switch (field.kind) {
    case Kind::Amount:
        return field.whenEmpty;
    case Kind::Lookup:
        return QVariant(QMetaType::fromType<int>());
    case Kind::Text:
    case Kind::UpperText:
    case Kind::Memo:
        break;
    }
    return u""_s;
}

/// Statements of the same text stay prepared in the transaction, so records are written with as few texts as possible.
class RecordWriter
{
public:
    RecordWriter(data::Connection &connection, const ImportTarget &target, const ImportPlan &plan)
        : connection_(connection)
        , target_(target)
        , plan_(plan)
    {
        QStringList columns;
        for (const qsizetype field : plan.fields)
            columns.append(target.fields[field].column);
        insert_ = u"INSERT INTO %1(%2) VALUES(%3)"_s.arg(target.table, columns.join(u", "_s),
                                                         QStringList(columns.size(), u"?"_s).join(u", "_s));
    }

    void write(PlannedRecord record)
    {
        for (qsizetype i = 0; i < record.values.size(); ++i) {
            if (record.values[i].canConvert<MissingCategory>())
                record.values[i] = make(record.values[i].value<MissingCategory>(), field(i).lookup);
        }
        if (record.key < 0)
            insert(record);
        else
            update(record);
    }

private:
    const ImportField &field(qsizetype index) const { return target_.fields[plan_.fields[index]]; }

    // The key of the last of the category's names, which are made where they are not there yet.
    int make(const MissingCategory &category, const ImportLookup &lookup)
    {
        int key = category.parent;
        for (const QString &name : category.names) {
            int &made = made_[{key, data::capitalsOf(name)}];
            if (made == 0)
                made = makeUnder(key, name, lookup);
            key = made;
        }
        return key;
    }

    // Another workstation may have made it meanwhile.
    int makeUnder(int parent, const QString &name, const ImportLookup &lookup)
    {
        data::Rows rows =
            connection_.run(u"SELECT FIRST 1 %1 AS CHIAVE FROM %2 WHERE UPPER(%3) = %4 AND COALESCE(%5, 0) = ?"_s.arg(
                                lookup.key, lookup.table, lookup.column, data::inCapitals(), lookup.parent),
                            {data::searchedText(name), parent});
        if (rows.isEmpty())
            rows = connection_.run(u"INSERT INTO %1(%2, %3) VALUES(?, ?) RETURNING %4 AS CHIAVE"_s.arg(
                                       lookup.table, lookup.parent, lookup.column, lookup.key),
                                   {parent > 0 ? QVariant(parent) : QVariant(), name});
        return rows.values(0).constFirst().toInt();
    }

    void insert(const PlannedRecord &record)
    {
        QVariantList values = record.values;
        for (qsizetype i = 0; i < values.size(); ++i) {
            if (!values[i].isValid())
                values[i] = whenEmpty(field(i));
        }
        connection_.run(insert_, values);
    }

    // The code stays as it is written in the database.
    void update(const PlannedRecord &record)
    {
        QStringList columns;
        QVariantList values;
        for (qsizetype i = 0; i < record.values.size(); ++i) {
            if (plan_.fields[i] == 0 || !record.values[i].isValid())
                continue;
            columns.append(field(i).column + u" = ?"_s);
            values.append(record.values[i]);
        }
        if (columns.isEmpty())
            return;
        values.append(record.key);
        connection_.run(u"UPDATE %1 SET %2 WHERE %3 = ?"_s.arg(target_.table, columns.join(u", "_s), target_.key),
                        values);
        if (connection_.affectedRows() != 1)
            throw data::DatabaseError(core::tr("record not found"), u"UPDATE "_s + target_.table);
    }

    data::Connection &connection_;
    const ImportTarget &target_;
    const ImportPlan &plan_;
    QString insert_;
    QHash<std::pair<int, QString>, int> made_; // keys of categories, by parent and name in capitals
};

// Why `error` ended the import, for the user: it must not blame the file for a full disk.
core::Error refusal(const data::DatabaseError &error, int line)
{
    if (error.isDiskFull())
        return core::Error(core::tr("Il disco è pieno: nulla è stato importato."));
    return core::Error(
        core::tr("Il database non ha accettato il record della riga %1.\n\rNulla è stato importato: se il database "
                 "risponde ancora, controllare il file e riprovare.\n\rIl motivo si trova nel registro del programma.")
            .arg(line));
}

} // namespace

void writeImport(data::Connection &connection, const ImportJob &job, const ImportPlan &plan, core::Progress &progress)
{
    progress.setText(core::tr("Scrittura dei record…"));
    progress.setTotal(plan.records);
    data::Transaction transaction(connection);
    RecordWriter writer(connection, job.target, plan);
    const RecordReader reader(job, plan);
    int done = 0;
    job.records([&](const core::CsvRecord &record) {
        // What was checked is what is read here, unless somebody has written to the file.
        const PlannedRecord planned = reader.read(record, [](const ImportProblem &problem) {
            throw core::Error(core::tr("Riga %1: %2").arg(problem.line).arg(problem.message));
        });
        try {
            writer.write(planned);
        } catch (const data::DatabaseError &error) {
            core::logError(u"importazione"_s, error);
            throw refusal(error, record.line);
        }
        progress.step(++done);
    });
    transaction.commit();
}

} // namespace host
