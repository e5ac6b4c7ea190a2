#include "host/transfer/ImportPlan.h"

#include "platform/core/CsvWriter.h"
#include "platform/core/Decimal.h"
#include "platform/core/NumberReader.h"
#include "platform/data/SqlText.h"

#include <QHash>
#include <QSet>

using namespace Qt::StringLiterals;

namespace host {

namespace {

using Kind = ImportField::Kind;

/// One pass over a file.
class Planner
{
public:
    Planner(const ImportTarget &target, const ImportLookups &lookups, const QList<CsvRecord> &records,
            const ImportOptions &options)
        : target_(target)
        , lookups_(lookups)
        , records_(records)
        , options_(options)
    {
    }

    ImportPlan plan()
    {
        if (options_.columns.value(0, -1) < 0) {
            plan_.problems.append(
                {1, {}, u"Il campo \"%1\" deve essere abbinato a una colonna."_s.arg(code().caption)});
            return plan_;
        }
        for (qsizetype i = 0; i < target_.fields.size(); ++i) {
            if (options_.columns[i] < 0)
                continue;
            plan_.fields.append(i);
            readers_.append(core::NumberReader(target_.fields[i].kind == Kind::Amount ? cellsOf(i) : QStringList()));
        }
        for (const CsvRecord &record : records_)
            planRecord(record);
        return std::move(plan_);
    }

private:
    const ImportField &code() const { return target_.fields.constFirst(); }

    QString header(qsizetype field) const
    {
        return options_.headers.value(options_.columns[field], target_.fields[field].caption);
    }

    void complain(int line, qsizetype field, const QString &message)
    {
        plan_.problems.append({line, header(field), message});
    }

    QStringList cellsOf(qsizetype field) const
    {
        QStringList cells;
        for (const CsvRecord &record : records_)
            cells.append(record.cells.value(options_.columns[field]));
        return cells;
    }

    QString textOf(const CsvRecord &record, qsizetype field) const
    {
        const ImportField &spec = target_.fields[field];
        QString text = core::withoutFormulaGuard(record.cells.value(options_.columns[field])).trimmed();
        if (spec.kind != Kind::Memo)
            text.replace(u'\n', u' ');
        if (spec.kind == Kind::UpperText)
            text = text.toUpper();
        return text;
    }

    void planRecord(const CsvRecord &record)
    {
        if (record.cells.size() > options_.headers.size() && !options_.headers.isEmpty())
            plan_.problems.append(
                {record.line,
                 {},
                 u"La riga ha %1 colonne invece di %2."_s.arg(record.cells.size()).arg(options_.headers.size())});
        PlannedRecord planned{.line = record.line};
        planned.key = keyFor(record, textOf(record, 0));
        for (qsizetype i = 0; i < plan_.fields.size(); ++i)
            planned.values.append(valueOf(record, plan_.fields[i], readers_[i]));
        if (planned.key < 0)
            requireAll(record);
        else
            ++plan_.updates;
        plan_.records.append(std::move(planned));
    }

    // The record that a code means; complains about one that must not be there.
    int keyFor(const CsvRecord &record, const QString &text)
    {
        if (text.isEmpty())
            return -1; // told with the other required values
        const QString capitals = data::capitalsOf(text);
        const auto first = firstLines_.constFind(capitals);
        if (first != firstLines_.constEnd())
            complain(record.line, 0, u"Il codice \"%1\" si trova già alla riga %2."_s.arg(text).arg(*first));
        else
            firstLines_.insert(capitals, record.line);
        const std::optional<int> existing = lookups_.record(text);
        if (existing && !options_.updateExisting)
            complain(record.line, 0, u"Il codice \"%1\" esiste già."_s.arg(text));
        return existing.value_or(-1);
    }

    void requireAll(const CsvRecord &record)
    {
        for (qsizetype i = 0; i < target_.fields.size(); ++i) {
            if (!target_.fields[i].required)
                continue;
            if (options_.columns[i] >= 0 && textOf(record, i).isEmpty()) {
                complain(record.line, i, u"Manca il valore."_s);
            } else if (options_.columns[i] < 0 && !toldUnmapped_.contains(i)) {
                // Once is enough: every new record lacks it.
                toldUnmapped_.insert(i);
                plan_.problems.append(
                    {record.line,
                     {},
                     u"Il campo \"%1\" serve per i record nuovi: abbinarlo."_s.arg(target_.fields[i].caption)});
            }
        }
    }

    QVariant valueOf(const CsvRecord &record, qsizetype field, const core::NumberReader &reader)
    {
        const ImportField &spec = target_.fields[field];
        const QString text = textOf(record, field);
        if (text.isEmpty())
            return {};
        if (spec.kind == Kind::Amount)
            return amount(record.line, field, text, reader);
        if (spec.kind == Kind::Lookup) {
            const std::optional<int> key = lookups_.find(field, text);
            if (!key)
                complain(record.line, field, u"\"%1\" non si trova, o non è unico."_s.arg(text));
            return key.value_or(0);
        }
        if (spec.maxLength > 0 && text.size() > spec.maxLength)
            complain(
                record.line, field,
                u"Il testo ha %1 caratteri, al massimo ne sono ammessi %2."_s.arg(text.size()).arg(spec.maxLength));
        return text;
    }

    QVariant amount(int line, qsizetype field, const QString &text, const core::NumberReader &reader)
    {
        constexpr double largest = 99'999'999'999.99;
        const std::optional<double> number = reader.read(text);
        if (!number)
            complain(line, field, u"\"%1\" non è un numero valido."_s.arg(text));
        else if (*number < 0 || *number > largest)
            complain(line, field, u"\"%1\" non è compreso tra 0 e 99.999.999.999,99."_s.arg(text));
        else if (core::roundDecimal(*number, 2) != core::roundDecimal(*number, 6))
            complain(line, field, u"\"%1\" ha più di due decimali."_s.arg(text));
        return core::roundDecimal(number.value_or(0), 2);
    }

    const ImportTarget &target_;
    const ImportLookups &lookups_;
    const QList<CsvRecord> &records_;
    const ImportOptions &options_;
    ImportPlan plan_;
    QList<core::NumberReader> readers_; // one per mapped field
    QHash<QString, int> firstLines_;    // of each code
    QSet<qsizetype> toldUnmapped_;
};

} // namespace

ImportPlan planImport(const ImportTarget &target, const ImportLookups &lookups, const QList<CsvRecord> &records,
                      const ImportOptions &options)
{
    return Planner(target, lookups, records, options).plan();
}

} // namespace host
