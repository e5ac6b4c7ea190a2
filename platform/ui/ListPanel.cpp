#include "platform/ui/ListPanel.h"

#include "platform/core/Messages.h"
#include "platform/ui/ColumnLayout.h"
#include "platform/ui/Dialogs.h"
#include "platform/ui/LetterBar.h"
#include "platform/ui/ListKeys.h"
#include "platform/ui/TypedEdit.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>

using namespace Qt::StringLiterals;

namespace ui {

ListPanel::ListPanel(const ListSpec &spec, data::Connection &connection, const ButtonMaker &buttons, QWidget *window)
    : QWidget(window)
    , spec_(spec)
    , connection_(connection)
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->setSpacing(window->layout()->spacing());
    createFilterBar(buttons, layout);
    grid_ = new ResultGrid(spec.keyField, spec.columns, this);
    grid_->setObjectName(spec.gridName);
    if (spec.longTexts)
        grid_->showLongTexts();
    layout->addWidget(grid_, 1);
    createLetterBar(layout);
    keys_ = new ListKeys(*this, *window);
    window->layout()->addWidget(this);
}

void ListPanel::createFilterBar(const ButtonMaker &buttons, QVBoxLayout *layout)
{
    auto *line = new QHBoxLayout;
    for (const ListFilter &make : std::as_const(spec_.filters))
        addFilter(make(this), line);
    if (std::none_of(filters_.begin(), filters_.end(), [](const Filter *filter) { return filter->stretches(); }))
        line->addStretch();
    const QList<QPushButton *> made = buttons(this);
    for (QPushButton *button : made)
        line->addWidget(button);
    if (filters_.isEmpty() && made.isEmpty())
        delete line;
    else
        layout->addLayout(line);
}

void ListPanel::addFilter(Filter *filter, QHBoxLayout *line)
{
    auto *label = new QLabel(filter->label(), this);
    label->setBuddy(filter->widget());
    line->addWidget(label);
    line->addWidget(filter->widget(), filter->stretches() ? 1 : 0);
    filters_.append(filter);
}

void ListPanel::createLetterBar(QVBoxLayout *layout)
{
    if (spec_.letterColumn.isEmpty())
        return;
    letters_ = new LetterBar(this);
    connect(letters_, &LetterBar::pressed, this,
            [this](const QString &letter) { core::guarded(this, [this, &letter] { searchLetter(letter); }); });
    layout->addWidget(letters_);
}

QList<QWidget *> ListPanel::filterInputs() const
{
    QList<QWidget *> inputs;
    for (const Filter *filter : filters_)
        inputs.append(filter->widget());
    return inputs;
}

QVariantList ListPanel::asked() const
{
    QVariantList values;
    for (const Filter *filter : filters_)
        values.append(filter->value());
    return values;
}

bool ListPanel::search()
{
    if (!everythingReadable(this))
        return false;
    data::Values values(spec_.way);
    QStringList conditions;
    for (const bool leading : {true, false}) {
        for (const Filter *filter : std::as_const(filters_)) {
            if (filter->leads() == leading && filter->value().isValid())
                conditions.append(filter->condition(values));
        }
    }
    fill(conditions.isEmpty() ? QString() : u"WHERE "_s + conditions.join(u" AND "_s), values.bound());
    return true;
}

void ListPanel::searchLetter(const QString &letter)
{
    data::Values values(spec_.way);
    const QString clause = LetterBar::condition(letter, spec_.letterColumn, spec_.letterLike, values);
    fill(clause, values.bound());
}

void ListPanel::fill(const QString &clause, const QVariantList &values)
{
    const WaitCursor wait;
    const int key = grid_->selectedKey();
    const int position = grid_->verticalScrollBar()->value();
    grid_->fill(connection_, spec_.selectText + clause + spec_.orderText, values, spec_.complete);
    if (spec_.keepsSelection && key > 0 && grid_->selectKey(key))
        grid_->verticalScrollBar()->setValue(position);
}

void ListPanel::reset()
{
    for (Filter *filter : std::as_const(filters_))
        filter->reset();
}

void ListPanel::forgetSearch()
{
    keys_->forget();
}

// By now the window has its name.
void ListPanel::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (spec_.keepsLayout && !std::exchange(shown_, true))
        grid_->columnLayout().keep(parentWidget()->objectName());
}

int ListPanel::widthFor(int width) const
{
    const QMargins margins = parentWidget()->layout()->contentsMargins();
    return width + 2 * grid_->frameWidth() + grid_->verticalScrollBar()->sizeHint().width() + margins.left() +
           margins.right();
}

} // namespace ui
