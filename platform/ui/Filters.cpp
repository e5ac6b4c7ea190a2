#include "platform/ui/Filters.h"

#include "platform/core/Clock.h"
#include "platform/core/LineText.h"
#include "platform/data/SqlText.h"
#include "platform/ui/DateEdit.h"
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
    QString other = {}; ///< condition that fits as well, with "?" for the value
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
    const FilterSpec &spec() const { return spec_; }

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
    using TextFilter::TextFilter;

    QVariant value() const override
    {
        const QString text = TextFilter::value().toString().trimmed();
        return text.isEmpty() ? QVariant() : text;
    }
    QString condition(data::Values &values) const override
    {
        const QString main = InputFilter::condition(values);
        return spec().other.isEmpty()
                   ? main
                   : u"(%1 OR %2)"_s.arg(main, QString(spec().other).replace(u'?', values.add(value())));
    }
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

ListFilter containingLoosely(const QString &name, const QString &label, const QString &column, const QString &other)
{
    const FilterSpec spec{name, label, column + u" COLLATE UNICODE_CI_AI CONTAINING "_s, {}, other};
    return [spec](QWidget *parent) { return new LooseFilter(spec, parent); };
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
