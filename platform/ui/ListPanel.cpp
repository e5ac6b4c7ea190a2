#include "platform/ui/ListPanel.h"

#include "platform/core/Lists.h"
#include "platform/core/Messages.h"
#include "platform/data/Changes.h"
#include "platform/ui/CallAfter.h"
#include "platform/ui/ColumnLayout.h"
#include "platform/ui/Dialogs.h"
#include "platform/ui/LetterBar.h"
#include "platform/ui/ListFooter.h"
#include "platform/ui/ListKeys.h"
#include "platform/ui/TypedEdit.h"
#include "platform/ui/UserSettings.h"

#include <QLabel>
#include <QScrollBar>

using namespace Qt::StringLiterals;

namespace ui {

namespace {

const QString filtersKind = u"filtri"_s;

} // namespace

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
    footer_ = new ListFooter(grid_->rows(), this);
    footer_->setVisible(spec.hasFooter);
    layout->addWidget(footer_);
    createLetterBar(layout);
    follow();
    keys_ = new ListKeys(*this, *window);
    window->layout()->addWidget(this);
}

void ListPanel::follow()
{
    constexpr int pause = 150; // ms behind the last key
    tables_ = data::readTables(spec_.selectText);
    connect(&data::Changes::instance(), &data::Changes::changed, this, &ListPanel::tablesChanged);
    callAfter(typing_, pause, this, [this] { core::guarded(this, [this] { search(); }); });
    callAfter(refreshing_, 0, this, [this] { core::guarded(this, [this] { refresh(); }); });
    if (!spec_.isLive)
        return;
    for (const Filter *filter : std::as_const(filters_))
        connect(filter, &Filter::edited, &typing_, qOverload<>(&QTimer::start));
}

// Inside the save, which must not wait for the list.
void ListPanel::tablesChanged(const QStringList &tables)
{
    const auto isShown = [this](const QString &table) { return tables_.contains(table); };
    if (!footer_->hasSearched() || std::none_of(tables.begin(), tables.end(), isShown))
        return;
    footer_->setOutdated(true);
    if (spec_.isLive)
        refreshing_.start();
}

// The rows of the last search as they are now. The current one stays where it is on the screen.
void ListPanel::refresh()
{
    if (!footer_->isOutdated() || !isVisible())
        return;
    const auto selectedRow = [this] { return grid_->selectedKey() < 0 ? -1 : grid_->currentIndex().row(); };
    QScrollBar *bar = grid_->verticalScrollBar();
    const int position = bar->value();
    const int before = selectedRow();
    fill(last_.first, last_.second);
    const int now = selectedRow();
    bar->setValue(position + (before < 0 || now < 0 ? 0 : now - before));
}

void ListPanel::takingOver(const std::function<void()> &body)
{
    const bool wasOutdated = footer_->isOutdated();
    body();
    footer_->setOutdated(wasOutdated);
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
    return core::mapped(filters_, &Filter::widget);
}

QVariantList ListPanel::asked() const
{
    return core::mapped(filters_, &Filter::value);
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
    if (letters_)
        letters_->showCurrent({});
    return true;
}

void ListPanel::searchLetter(const QString &letter)
{
    data::Values values(spec_.way);
    const QString clause = LetterBar::condition(letter, spec_.letterColumn, spec_.letterLike, values);
    fill(clause, values.bound());
    letters_->showCurrent(letter);
}

void ListPanel::fill(const QString &clause, const QVariantList &values)
{
    const WaitCursor wait;
    typing_.stop();
    last_ = {clause, values};
    const int key = grid_->selectedKey();
    const int position = grid_->verticalScrollBar()->value();
    footer_->searched();
    try {
        grid_->fill(connection_, spec_.selectText + clause + spec_.orderText, values, spec_.complete);
    } catch (...) {
        footer_->failed();
        throw;
    }
    if (spec_.keepsSelection && key > 0 && grid_->selectKey(key))
        grid_->verticalScrollBar()->setValue(position);
}

void ListPanel::reset()
{
    typing_.stop();
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
    if (spec_.isLive)
        refreshing_.start();
}

void ListPanel::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    if (spec_.isLive && !event->spontaneous())
        core::guarded(this, [this] { keepTyped(); });
}

QVariantMap ListPanel::typed() const
{
    QVariantMap texts;
    for (const Filter *filter : filters_) {
        if (!filter->typed().isEmpty())
            texts.insert(filter->widget()->objectName(), filter->typed());
    }
    return texts;
}

void ListPanel::keepTyped()
{
    const QVariantMap texts = typed();
    if (std::exchange(kept_, texts) != texts)
        remember(filtersKind, parentWidget()->objectName(), texts);
}

bool ListPanel::searchAgain()
{
    kept_ = remembered(filtersKind, parentWidget()->objectName());
    for (Filter *filter : std::as_const(filters_))
        filter->typeAgain(kept_.value(filter->widget()->objectName()).toString());
    return !typed().isEmpty() && search();
}

int ListPanel::widthFor(int width) const
{
    const QMargins margins = parentWidget()->layout()->contentsMargins();
    return width + 2 * grid_->frameWidth() + grid_->verticalScrollBar()->sizeHint().width() + margins.left() +
           margins.right();
}

} // namespace ui
