#include "platform/ui/ChoiceFields.h"

#include "platform/core/Lists.h"
#include "platform/core/Messages.h"
#include "platform/core/Translation.h"
#include "platform/data/DataSet.h"
#include "platform/data/Latest.h"
#include "platform/ui/Caption.h"
#include "platform/ui/Look.h"

#include <QAbstractItemView>
#include <QHBoxLayout>
#include <QToolButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace ui {

namespace {

constexpr int closeLines = 3; // pixels between the lines of a copied record
constexpr int allRoom = 1000; // of what there is, until a value is as wide as it gets

// A value in a wide window stays near what belongs to it.
int widestValue(const QWidget &label)
{
    constexpr int characters = 45;
    return label.fontMetrics().horizontalAdvance(QString(characters, u'0'));
}

// Values that the user cannot type are plain text.
ElidedLabel *valueLabel(const QString &name, QWidget *parent)
{
    auto *label = named(name, new ElidedLabel(parent));
    return label;
}

// Both columns NULL for none; without a column for the text the key alone.
void store(data::DataSet &record, const QString &keyColumn, const QString &textColumn, const Choice &choice)
{
    const bool chosen = choice.key > 0;
    record.setValue(keyColumn, chosen ? QVariant(choice.key) : QVariant());
    if (!textColumn.isEmpty())
        record.setValue(textColumn, chosen ? QVariant(choice.text) : QVariant());
}

QVariant stateOf(const Choice &choice)
{
    return QVariantList{choice.key, choice.text};
}

Choice choiceOf(const QVariant &state)
{
    return {state.toList().value(0).toInt(), state.toList().value(1).toString()};
}

} // namespace

ChoiceField::ChoiceField(const ChoiceSpec &spec, QWidget *parent)
    : Field(spec.label, parent)
    , box_(new QWidget(parent))
    , label_(valueLabel(spec.name, box_))
    , spec_(spec)
{
    auto *line = withoutMargins<QHBoxLayout>(box_);
    line->setSpacing(3);
    label_->setMaximumWidth(widestValue(*label_));
    line->addWidget(label_, allRoom);
    if (!spec.source.columns.isEmpty())
        line->addWidget(createInput());
    auto *button = named(spec.buttonName, new QToolButton(box_));
    button->setIcon(icon(Icon::Choose));
    button->setToolTip(core::tr("Scegli dall'elenco"));
    button->setFocusPolicy(Qt::StrongFocus);
    line->addWidget(button);
    connect(button, &QToolButton::clicked, this, [this] { core::guarded(box_, [this] { runDialog(); }); });
    if (spec.clearable) {
        auto *clearButton = named(spec.buttonName + u"Annulla"_s, new QToolButton(box_));
        clearButton->setIcon(icon(Icon::Clear));
        clearButton->setToolTip(core::tr("Annulla la scelta"));
        clearButton->setFocusPolicy(Qt::StrongFocus);
        line->addWidget(clearButton);
        connect(clearButton, &QToolButton::clicked, this, [this] {
            clear();
            Q_EMIT edited();
        });
    }
    line->addStretch(1);
    clear();
}

PickInput *ChoiceField::createInput()
{
    const auto take = [this](const PickOffer &offer) {
        setChoice({offer.key, offer.texts.first()});
        Q_EMIT edited();
    };
    input_ = new PickInput({.name = spec_.name + u"Cerca"_s,
                            .hint = core::tr("Una parte della voce: l'elenco si apre da sé."),
                            .source = spec_.source,
                            .take = take,
                            .choose = [this] { runDialog(); }},
                           box_);
    return input_;
}

void ChoiceField::runDialog()
{
    if (const auto choice = spec_.choose(); choice && choice->key > 0) {
        setChoice(*choice);
        Q_EMIT edited();
    }
}

void ChoiceField::setChoice(const Choice &choice)
{
    choice_ = choice;
    label_->setText(choice.key > 0 && !choice.text.isEmpty() ? choice.text : nothingChosen);
}

void ChoiceField::load(const data::DataSet &record)
{
    const int key = record.integer(spec_.keyColumn, -1);
    setChoice({key, spec_.textColumn.isEmpty() ? spec_.textOf(key) : record.text(spec_.textColumn)});
}

void ChoiceField::write(data::DataSet &record) const
{
    store(record, spec_.keyColumn, spec_.textColumn, choice_);
}

QVariant ChoiceField::state() const
{
    return stateOf(choice_);
}

void ChoiceField::restore(const QVariant &state)
{
    setChoice(choiceOf(state));
}

DropDownField::DropDownField(const DropDownSpec &spec, QString tableKey, QString tableText, QWidget *parent)
    : Field(spec.label, parent)
    , box_(named(spec.name, new ComboBox(parent)))
    , spec_(spec)
    , tableKey_(std::move(tableKey))
    , tableText_(std::move(tableText))
{
    box_->setMaxVisibleItems(20);
    box_->addItem(QString(), -1);
    connect(box_, &QComboBox::currentIndexChanged, this, &Field::edited);
}

int DropDownField::key() const
{
    return box_->currentData().toInt();
}

bool DropDownField::showsStored() const
{
    return stored_.key > 0 && key() == stored_.key && box_->currentText() == stored_.text;
}

void DropDownField::fill(data::Connection &connection)
{
    const data::Rows rows = data::latest(connection, spec_.sql);
    const int chosen = key();
    const bool untouched = showsStored();
    box_->clear();
    addedItem_ = false;
    box_->addItem(QString(), -1);
    for (qsizetype row = 0; row < rows.size(); ++row)
        box_->addItem(rows.text(row, tableText_), rows.integer(row, tableKey_));
    if (untouched)
        showStored();
    else
        box_->setCurrentIndex(std::max(0, box_->findData(chosen)));
}

void DropDownField::clear()
{
    stored_ = {};
    box_->setCurrentIndex(0);
    if (std::exchange(addedItem_, false))
        box_->removeItem(box_->count() - 1);
}

// Documents keep the text that they were written with, whatever the table says by now.
void DropDownField::showStored()
{
    int index = box_->findData(stored_.key);
    if (index < 0 || (!spec_.textColumn.isEmpty() && box_->itemText(index) != stored_.text)) {
        box_->addItem(stored_.text, stored_.key);
        addedItem_ = true;
        index = box_->count() - 1;
    }
    box_->setCurrentIndex(index);
}

void DropDownField::load(const data::DataSet &record)
{
    clear();
    if (record.isNull(spec_.keyColumn))
        return;
    stored_ = {record.integer(spec_.keyColumn), spec_.textColumn.isEmpty() ? QString() : record.text(spec_.textColumn)};
    showStored();
}

QVariant DropDownField::state() const
{
    return stateOf({key(), box_->currentText()});
}

void DropDownField::restore(const QVariant &state)
{
    clear();
    stored_ = choiceOf(state);
    showStored();
}

void DropDownField::write(data::DataSet &record) const
{
    store(record, spec_.keyColumn, spec_.textColumn, {key(), box_->currentText()});
}

void DropDownField::written()
{
    stored_ = {key(), box_->currentText()};
}

CodeField::CodeField(const CodeSpec &spec, QWidget *parent)
    : ColumnField(spec.label, spec.column, parent)
    , box_(named(spec.name, new ComboBox(parent)))
    , known_(static_cast<int>(spec.codes.size()) + 1)
{
    box_->setMaxVisibleItems(24);
    // The longest meanings would make the form wider than the screen; the open list shows them whole.
    box_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    box_->setMinimumContentsLength(16);
    addItem({}, {});
    for (const core::CodeText &code : spec.codes)
        addItem(code.code, code.code + u" - "_s + code.text);
    constexpr int besideText = 40;
    box_->view()->setMinimumWidth(box_->view()->sizeHintForColumn(0) + besideText);
    connect(box_, &QComboBox::currentIndexChanged, this, &Field::edited);
}

void CodeField::addItem(const QString &code, const QString &text)
{
    box_->addItem(text, code);
    box_->setItemData(box_->count() - 1, text, Qt::ToolTipRole);
}

void CodeField::show(const QVariant &stored)
{
    const QString code = stored.toString();
    int index = box_->findData(code);
    if (index < 0) {
        addItem(code, code);
        index = box_->count() - 1;
    }
    box_->setCurrentIndex(index);
    const int further = index < known_ ? 0 : 1; // behind the known ones: the one shown
    if (box_->count() > known_ + further)
        box_->removeItem(known_);
}

RecordLabels::RecordLabels(const QList<RecordLabel> &labels, QWidget *parent)
    : Field({}, parent)
    , box_(new QWidget(parent))
    , specs_(labels)
{
    auto *copied = new QWidget(box_);
    copied->setMaximumWidth(2 * widestValue(*box_));
    auto *whole = withoutMargins<QHBoxLayout>(box_);
    whole->addWidget(copied, allRoom);
    whole->addStretch(1);
    auto *lines = withoutMargins<QVBoxLayout>(copied);
    lines->setSpacing(closeLines);
    QHBoxLayout *line = nullptr;
    for (const RecordLabel &spec : labels) {
        const bool leads = !line || spec.line >= lines->count();
        auto *caption = new Caption(spec.caption, leads ? Caption::Place::Leading : Caption::Place::Following, copied);
        caption->setQuiet();
        if (leads) {
            line = new QHBoxLayout;
            line->setSpacing(Look::between);
            lines->addLayout(line);
        }
        ElidedLabel *label = valueLabel(spec.name, copied);
        label->setMinimumWidth(label->fontMetrics().horizontalAdvance(QString(spec.characters, u'0')) + 10);
        line->addWidget(caption);
        line->addWidget(label, spec.characters);
        labels_.append(label);
    }
    alignCaptions({box_});
    clear();
}

void RecordLabels::setValues(const QStringList &values)
{
    for (int i = 0; i < labels_.size(); ++i) {
        const QString value = values.value(i);
        labels_[i]->setText(value.isEmpty() ? nothingChosen : value);
    }
}

void RecordLabels::load(const data::DataSet &record)
{
    setValues(core::mapped(specs_, [&record](const RecordLabel &spec) { return record.text(spec.column); }));
}

void RecordLabels::write(data::DataSet &record) const
{
    for (int i = 0; i < specs_.size(); ++i) {
        const QVariant none = specs_[i].required ? QVariant(u""_s) : QVariant();
        record.setValue(specs_[i].column, isEmpty(i) ? none : QVariant(text(i)));
    }
}

QVariant RecordLabels::state() const
{
    return core::mapped(labels_, &ElidedLabel::text);
}

void RecordLabels::restore(const QVariant &state)
{
    setValues(state.toStringList());
}

} // namespace ui
