#include "platform/ui/Filters.h"

#include "platform/core/Clock.h"
#include "platform/core/LineText.h"
#include "platform/data/SqlText.h"
#include "platform/data/TextSearch.h"
#include "platform/ui/DateEdit.h"
#include "platform/ui/LooseFilter.h"
#include "platform/ui/NumberEdits.h"

using namespace Qt::StringLiterals;

namespace ui {

namespace {

/// What the simple kinds declare.
struct FilterSpec
{
    QString name; ///< control name
    QString label;
    QString before;
    QString after = {};
};

/// An input whose value is compared as it is.
template <typename Input>
class InputFilter : public Filter
{
public:
    InputFilter(const FilterSpec &spec, QWidget *parent)
        : Filter(spec.label, parent)
        , input_(new Input(parent))
        , spec_(spec)
    {
        input_->setObjectName(spec.name);
    }

    QWidget *widget() const override { return input_; }
    QString condition(data::Values &values) const override { return spec_.before + values.add(value()) + spec_.after; }

protected:
    Input *input() const { return input_; }

private:
    Input *input_;
    FilterSpec spec_;
};

class TextFilter : public InputFilter<LineEdit>
{
public:
    TextFilter(const FilterSpec &spec, QWidget *parent)
        : InputFilter(spec, parent)
    {
        input()->setMaxLength(100);
        connect(input(), &QLineEdit::textEdited, this, &Filter::edited);
    }

    void reset() override { input()->clear(); }
    QVariant value() const override
    {
        const QString text = core::lineOf(input()->text());
        return text.isEmpty() ? QVariant() : text;
    }
    bool stretches() const override { return true; }
    QString typed() const override { return input()->text(); }
    void typeAgain(const QString &text) override { input()->setText(text); }
};

class LooseFilter : public TextFilter
{
public:
    LooseFilter(const FilterSpec &spec, QString column, TextCondition other, QWidget *parent)
        : TextFilter(spec, parent)
        , column_(std::move(column))
        , other_(std::move(other))
    {
    }

    QVariant value() const override
    {
        const QString text = TextFilter::value().toString().trimmed();
        return text.isEmpty() ? QVariant() : text;
    }
    QString condition(data::Values &values) const override
    {
        const QString text = value().toString();
        const QString main = data::containing(column_, text, values);
        return other_ ? u"(%1 OR %2)"_s.arg(main, other_(text, values)) : main;
    }

private:
    QString column_;
    TextCondition other_;
};

class YearFilter : public InputFilter<YearEdit>
{
public:
    using InputFilter::InputFilter;

    void reset() override { input()->setValue(core::today().year()); }
    QVariant value() const override { return input()->value(); }
    bool leads() const override { return true; }
};

class DateFilter : public InputFilter<DateEdit>
{
public:
    DateFilter(const FilterSpec &spec, std::function<QDate()> first, QWidget *parent)
        : InputFilter(spec, parent)
        , first_(std::move(first))
    {
    }

    void reset() override { input()->setDate(first_()); }
    QVariant value() const override { return input()->date(); }

private:
    std::function<QDate()> first_;
};

} // namespace

ListFilter textFilter(const QString &name, const QString &label, const QString &before, const QString &after)
{
    return [spec = FilterSpec{name, label, before, after}](QWidget *parent) { return new TextFilter(spec, parent); };
}

ListFilter containing(const QString &name, const QString &label, const QString &column)
{
    return textFilter(name, label, column + u" CONTAINING "_s);
}

ListFilter containingLooselyOr(const QString &name, const QString &label, const QString &column,
                               const TextCondition &other)
{
    return [=](QWidget *parent) { return new LooseFilter({name, label, {}}, column, other, parent); };
}

ListFilter containingLoosely(const QString &name, const QString &label, const QString &column)
{
    return containingLooselyOr(name, label, column, {});
}

ListFilter yearFilter(const QString &name, const QString &label, const QString &before)
{
    return [spec = FilterSpec{name, label, before}](QWidget *parent) { return new YearFilter(spec, parent); };
}

ListFilter dateFilter(const QString &name, const QString &label, const QString &before, const QString &after,
                      const std::function<QDate()> &first)
{
    return [spec = FilterSpec{name, label, before, after}, first](QWidget *parent) {
        return new DateFilter(spec, first, parent);
    };
}

} // namespace ui
