#include "host/transfer/RecordReader.h"

#include "platform/core/CsvWriter.h"
#include "platform/core/Decimal.h"
#include "platform/core/Translation.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace host {

namespace {

using Kind = ImportField::Kind;

// No input of the program takes these, and a NUL ends a text for the database and for other programs.
bool isControl(QChar c)
{
    return (c.category() == QChar::Other_Control && c != u'\n' && c != u'\t') || c.unicode() >= 0xFFFE;
}

// 0 is no limit.
void checkLength(const QString &text, int most, const std::function<void(const QString &)> &complain)
{
    if (most > 0 && text.size() > most)
        complain(core::tr("Il testo ha %1 caratteri, al massimo ne sono ammessi %2.").arg(text.size()).arg(most));
}

} // namespace

RecordReader::RecordReader(const ImportJob &job, const ImportPlan &plan)
    : job_(job)
    , plan_(plan)
{
}

PlannedRecord RecordReader::read(const core::CsvRecord &record, const Complain &complain) const
{
    PlannedRecord planned{.line = record.line};
    if (const QString code = text(record, 0); !code.isEmpty())
        planned.key = job_.lookups.record(code).value_or(-1);
    planned.values.reserve(plan_.fields.size());
    for (qsizetype i = 0; i < plan_.fields.size(); ++i)
        planned.values.append(value(record, i, complain));
    return planned;
}

QString RecordReader::text(const core::CsvRecord &record, qsizetype field) const
{
    const Kind kind = job_.target.fields[field].kind;
    QString text = core::withoutFormulaGuard(record.cells.value(job_.options.columns[field])).trimmed();
    if (kind != Kind::Memo)
        text.replace(u'\n', u' ').replace(u'\t', u' ');
    if (kind == Kind::UpperText)
        text = text.toUpper();
    return text;
}

QString RecordReader::header(qsizetype field) const
{
    return job_.options.headers.value(job_.options.columns[field], job_.target.fields[field].caption);
}

QVariant RecordReader::value(const core::CsvRecord &record, qsizetype index, const Complain &complain) const
{
    const qsizetype field = plan_.fields[index];
    const ImportField &spec = job_.target.fields[field];
    const QString text = this->text(record, field);
    const auto tell = [&](const QString &message) { complain({record.line, header(field), message}); };
    if (text.isEmpty())
        return {};
    if (const auto *const odd = std::find_if(text.begin(), text.end(), isControl); odd != text.end()) {
        const QString code = QString::number(odd->unicode(), 16).rightJustified(4, u'0').toUpper();
        tell(core::tr("Il testo contiene un carattere di controllo (U+%1).").arg(code));
        return {};
    }
    if (spec.kind == Kind::Amount)
        return amount(text, plan_.numbers[index], tell);
    if (spec.kind == Kind::Lookup)
        return reference(field, text, tell);
    checkLength(text, spec.maxLength, tell);
    return text;
}

QVariant RecordReader::reference(qsizetype field, const QString &text,
                                 const std::function<void(const QString &)> &complain) const
{
    const ImportLookup &lookup = job_.target.fields[field].lookup;
    if (const std::optional<int> key = job_.lookups.find(field, text))
        return *key;
    if (job_.options.createMissing && !lookup.parent.isEmpty()) {
        if (const std::optional<MissingCategory> missing = job_.lookups.missing(field, text)) {
            for (const QString &name : missing->names)
                checkLength(name, lookup.maxLength, complain);
            return QVariant::fromValue(*missing);
        }
    }
    complain(core::tr("\"%1\" non si trova, o non è unico.").arg(text));
    return 0;
}

QVariant RecordReader::amount(const QString &text, const core::NumberReader &numbers,
                              const std::function<void(const QString &)> &complain)
{
    constexpr double largest = 99'999'999'999.99;
    const std::optional<double> number = numbers.read(text);
    if (!number)
        complain(core::tr("\"%1\" non è un numero valido.").arg(text));
    else if (*number < 0 || *number > largest)
        complain(core::tr("\"%1\" non è compreso tra 0 e 99.999.999.999,99.").arg(text));
    else if (core::roundDecimal(*number, 2) != core::roundDecimal(*number, 6))
        complain(core::tr("\"%1\" ha più di due decimali.").arg(text));
    return core::roundDecimal(number.value_or(0), 2);
}

} // namespace host
