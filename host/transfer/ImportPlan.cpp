#include "host/transfer/ImportPlan.h"

#include "host/transfer/RecordReader.h"
#include "platform/core/Translation.h"
#include "platform/data/SqlText.h"

#include <QHash>
#include <QSet>

#include <algorithm>
#include <deque>

using namespace Qt::StringLiterals;

namespace host {

namespace {

constexpr qsizetype mostListed = 1000;

/// Two passes over a file.
class Planner
{
public:
    explicit Planner(const ImportJob &job)
        : job_(job)
        , reader_(job, plan_)
    {
    }

    ImportPlan plan()
    {
        if (job_.options.columns.value(0, -1) < 0) {
            plan_.complain(
                {1, {}, core::tr("Il campo \"%1\" deve essere abbinato a una colonna.").arg(code().caption)});
            return plan_;
        }
        for (qsizetype i = 0; i < job_.target.fields.size(); ++i) {
            if (job_.options.columns[i] >= 0)
                plan_.fields.append(i);
        }
        survey();
        job_.records([this](const core::CsvRecord &record) { planRecord(record); });
        return std::move(plan_);
    }

private:
    const ImportField &code() const { return job_.target.fields.constFirst(); }

    // What shows in the whole file only: how its numbers are written, and which codes come more than once.
    void survey()
    {
        plan_.numbers = QList<core::NumberReader>(plan_.fields.size());
        std::deque<quint64> marks;
        job_.records([&](const core::CsvRecord &record) {
            for (qsizetype i = 0; i < plan_.fields.size(); ++i) {
                const qsizetype field = plan_.fields[i];
                if (job_.target.fields[field].kind == ImportField::Kind::Amount)
                    plan_.numbers[i].learn(record.cells.value(job_.options.columns[field]));
            }
            if (const QString code = reader_.text(record, 0); !code.isEmpty())
                marks.push_back(markOf(code));
        });
        std::sort(marks.begin(), marks.end());
        for (auto it = marks.begin(); (it = std::adjacent_find(it, marks.end())) != marks.end(); ++it)
            repeated_.insert(*it, 0);
    }

    // The codes themselves would take more memory than the file; two different ones with the same 64 bits will not be
    // met.
    quint64 markOf(const QString &code) const
    {
        constexpr size_t seed = 0x9E3779B97F4A7C15ULL;
        return qHash(job_.target.identity(code), seed);
    }

    void planRecord(const core::CsvRecord &record)
    {
        const qsizetype columns = job_.options.headers.size();
        if (record.cells.size() > columns && columns > 0)
            plan_.complain({record.line,
                            {},
                            core::tr("La riga ha %1 colonne invece di %2.").arg(record.cells.size()).arg(columns)});
        lookAtCode(record, reader_.text(record, 0));
        const PlannedRecord planned =
            reader_.read(record, [this](const ImportProblem &problem) { plan_.complain(problem); });
        doubtAt(record);
        for (const QVariant &value : planned.values) {
            if (value.canConvert<MissingCategory>())
                count(value.value<MissingCategory>());
        }
        if (planned.key < 0)
            requireAll(record);
        else
            ++plan_.updates;
        ++plan_.records;
    }

    void doubtAt(const core::CsvRecord &record)
    {
        for (const qsizetype index : std::as_const(plan_.fields)) {
            const ImportField &field = job_.target.fields[index];
            if (field.isRight && !field.isRight(reader_.text(record, index)))
                plan_.doubt({record.line, reader_.header(index), field.doubt});
        }
    }

    void count(const MissingCategory &category)
    {
        for (qsizetype length = 1; length <= category.names.size(); ++length)
            missing_.insert({category.parent, data::capitalsOf(category.names.first(length).join(u'/'))});
        plan_.newCategories = static_cast<int>(missing_.size());
    }

    // Complains about a code that must not be there.
    void lookAtCode(const core::CsvRecord &record, const QString &text)
    {
        if (text.isEmpty())
            return; // told with the other required values
        if (const auto first = repeated_.find(markOf(text)); first != repeated_.end()) {
            if (*first > 0)
                plan_.complain({record.line, reader_.header(0),
                                core::tr("Il codice \"%1\" si trova già alla riga %2.").arg(text).arg(*first)});
            else
                *first = record.line;
        }
        if (job_.lookups.record(text) && !job_.options.updateExisting)
            plan_.complain({record.line, reader_.header(0), core::tr("Il codice \"%1\" esiste già.").arg(text)});
    }

    void requireAll(const core::CsvRecord &record)
    {
        for (qsizetype i = 0; i < job_.target.fields.size(); ++i) {
            const ImportField &field = job_.target.fields[i];
            if (!field.required)
                continue;
            if (job_.options.columns[i] >= 0 && reader_.text(record, i).isEmpty()) {
                plan_.complain({record.line, reader_.header(i), core::tr("Manca il valore.")});
            } else if (job_.options.columns[i] < 0 && !toldUnmapped_.contains(i)) {
                // Once is enough: every new record lacks it.
                toldUnmapped_.insert(i);
                plan_.complain({record.line,
                                {},
                                core::tr("Il campo \"%1\" serve per i record nuovi: abbinarlo.").arg(field.caption)});
            }
        }
    }

    const ImportJob &job_;
    ImportPlan plan_;
    RecordReader reader_;
    QHash<quint64, int> repeated_; // codes that come more than once, by their marks: the first one's line
    QSet<qsizetype> toldUnmapped_;
    QSet<std::pair<int, QString>> missing_; // categories, by what is there and the names under it
};

} // namespace

void ImportPlan::complain(const ImportProblem &problem)
{
    ++problemCount;
    if (problems.size() < mostListed)
        problems.append(problem);
}

void ImportPlan::doubt(const ImportProblem &problem)
{
    ++doubtCount;
    if (doubts.size() < mostListed)
        doubts.append(problem);
}

ImportPlan planImport(const ImportJob &job)
{
    return Planner(job).plan();
}

} // namespace host
