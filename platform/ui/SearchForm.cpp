#include "platform/ui/SearchForm.h"

#include "platform/core/Clock.h"
#include "platform/core/LineText.h"
#include "platform/core/Messages.h"
#include "platform/data/SqlText.h"
#include "platform/ui/DateEdit.h"
#include "platform/ui/Dialogs.h"
#include "platform/ui/LetterBar.h"
#include "platform/ui/ListExport.h"
#include "platform/ui/ListKeys.h"
#include "platform/ui/NumberEdits.h"

#include <QHBoxLayout>
#include <QScrollBar>
#include <QToolButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace ui {

namespace {

QString valueOf(const QWidget *input)
{
    if (const auto *year = qobject_cast<const YearEdit *>(input))
        return QString::number(year->value());
    if (const auto *date = qobject_cast<const DateEdit *>(input))
        return date->date().toString(Qt::ISODate);
    return core::lineOf(qobject_cast<const QLineEdit *>(input)->text());
}

} // namespace

std::function<QString(const QString &)> containing(const QString &column)
{
    return [column](const QString &value) { return column + u" CONTAINING "_s + data::quoted(value); };
}

SearchForm::SearchForm(const SearchSpec &spec, data::Connection &connection, QWidget *parent)
    : ChildForm(spec.caption, spec.menuCaption, parent)
    , spec_(spec)
    , connection_(connection)
    , bar_(newToolBar(u"tBarStandard"_s))
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 4, 6, 6);
    layout->setSpacing(4);
    layout->addWidget(bar_);
    declareCommands();
    createFilterBar(layout);
    grid_ = new ResultGrid(spec.keyField, spec.columns, this);
    grid_->setObjectName(u"GridRisultati"_s);
    grid_->allowSorting();
    connect(grid_, &ResultGrid::chosen, command(u"actModifica"_s), &QAction::trigger);
    layout->addWidget(grid_, 1);
    new ListKeys({.window = this,
                  .grid = grid_,
                  .letters = createLetterBar(layout),
                  .filters = inputs_,
                  .asked = [this] { return filterText(); },
                  .search =
                      [this] {
                          bool searched = false;
                          core::guarded(this, [this, &searched] { searched = search(); });
                          return searched;
                      }});
    setMinimumSize(700, 360);
    setOpeningSize(openingSize());
}

// Where every column has a width, the list opens so that they get just those.
QSize SearchForm::openingSize() const
{
    constexpr int usualWidth = 900;
    int columns = 0;
    for (const ListColumn &column : spec_.columns) {
        if (column.width == 0 || column.widthKind == ListColumn::Width::Percent)
            return spec_.openingSize.expandedTo({usualWidth, 0});
        columns += column.width;
    }
    const QMargins margins = layout()->contentsMargins();
    const int around =
        2 * grid_->frameWidth() + grid_->verticalScrollBar()->sizeHint().width() + margins.left() + margins.right();
    return spec_.openingSize.expandedTo({columns + around, 0});
}

void SearchForm::declareCommands()
{
    addCommand({.name = u"actNuovo"_s,
                .caption = u"Nuovo"_s,
                .run = [this] { newRecord(); },
                .icon = Icon::New,
                .shortcut = QKeySequence(u"Ctrl+N"_s),
                .hint = spec_.newHint});
    addCommand({.name = u"actModifica"_s,
                .caption = u"Modifica"_s,
                .run = [this] { withSelected([this](int id) { openRecord(id); }); },
                .icon = Icon::Open,
                .shortcut = QKeySequence(u"Ctrl+O"_s),
                .hint = spec_.editHint});
    addCommand({.name = u"actChiudi"_s,
                .caption = u"Chiudi"_s,
                .run = [this] { closeForm(); },
                .icon = Icon::Close,
                .hint = spec_.closeHint});
    addCommand({.name = u"actCerca"_s,
                .caption = u"Cerca"_s,
                .run = [this] { search(); },
                .icon = Icon::Search,
                .shortcut = QKeySequence(u"F5"_s)});
    addCommand(
        {.name = u"actRipristina"_s, .caption = u"Ripristina"_s, .run = [this] { reset(); }, .icon = Icon::Reset});
}

void SearchForm::declareDelete()
{
    const auto run = [this] {
        withSelected([this](int id) {
            if (deleteRecord(id))
                grid_->rows().removeKey(id);
        });
    };
    addCommand({.name = u"actElimina"_s,
                .caption = u"Elimina"_s,
                .run = run,
                .icon = Icon::Delete,
                .shortcut = QKeySequence(u"Ctrl+D"_s)});
}

void SearchForm::createFilterBar(QVBoxLayout *layout)
{
    auto *line = new QHBoxLayout;
    for (const ListFilter &filter : std::as_const(spec_.filters))
        addFilter(filter, line);
    if (std::none_of(spec_.filters.begin(), spec_.filters.end(),
                     [](const ListFilter &filter) { return filter.kind == ListFilter::Kind::Text; }))
        line->addStretch();
    line->addWidget(commandButton(command(u"actCerca"_s), u"cmdCerca"_s, this));
    line->addWidget(commandButton(command(u"actRipristina"_s), u"cmdRipristina"_s, this));
    layout->addLayout(line);
}

void SearchForm::addFilter(const ListFilter &filter, QHBoxLayout *line)
{
    QWidget *input = nullptr;
    int stretch = 0;
    switch (filter.kind) {
    case ListFilter::Kind::Text: {
        auto *edit = new LineEdit(this);
        edit->setMaxLength(100);
        input = edit;
        stretch = 1;
        break;
    }
    case ListFilter::Kind::Year:
        input = new YearEdit(this);
        break;
    case ListFilter::Kind::Date:
        input = new DateEdit(this);
        break;
    }
    input->setObjectName(filter.name);
    auto *label = new QLabel(filter.label, this);
    label->setBuddy(input);
    line->addWidget(label);
    line->addWidget(input, stretch);
    inputs_.append(input);
}

LetterBar *SearchForm::createLetterBar(QVBoxLayout *layout)
{
    if (spec_.letterColumn.isEmpty())
        return nullptr;
    auto *letters = new LetterBar(this);
    connect(letters, &LetterBar::pressed, this, [this](const QString &caption) {
        core::guarded(this, [this, &caption] {
            // No blank before LIKE and two behind it: the clause as it has always been sent.
            refill(LetterBar::condition(caption, spec_.letterColumn, u"LIKE  "_s));
        });
    });
    layout->addWidget(letters);
    return letters;
}

void SearchForm::placeExport()
{
    auto *menu = new QMenu(u"Esporta"_s, this);
    menu->addActions(grid_->listExport().commands());
    QAction *action = menu->menuAction();
    action->setObjectName(u"actEsporta"_s);
    action->setIcon(icon(Icon::Export));
    action->setToolTip(u"Salva l'elenco in un file o lo copia"_s);
    placeCommands(bar_, QStringList{QString()});
    formMenu()->addAction(action);
    bar_->addAction(action);
    qobject_cast<QToolButton *>(bar_->widgetForAction(action))->setPopupMode(QToolButton::InstantPopup);
}

void SearchForm::start(const QStringList &commands, const QStringList &menuCommands)
{
    if (commands.contains(u"actElimina"_s))
        declareDelete();
    placeCommands(bar_, commands, menuCommands);
    placeExport();
    if (!inputs_.isEmpty())
        setFocusProxy(inputs_.first());
    reset();
}

void SearchForm::reset()
{
    for (QWidget *input : std::as_const(inputs_)) {
        if (auto *year = qobject_cast<YearEdit *>(input))
            year->setValue(core::today().year());
        else if (!qobject_cast<DateEdit *>(input))
            qobject_cast<QLineEdit *>(input)->clear();
    }
    resetFilters();
}

QString SearchForm::filterText() const
{
    QStringList conditions;
    for (int i = 0; i < inputs_.size(); ++i) {
        const QString value = valueOf(inputs_[i]);
        if (value.isEmpty())
            continue;
        // The year, which is always there, leads the clause wherever its input stands.
        const bool leads = spec_.filters[i].kind == ListFilter::Kind::Year;
        conditions.insert(leads ? 0 : conditions.size(), spec_.filters[i].condition(value));
    }
    return conditions.isEmpty() ? QString() : u"WHERE "_s + conditions.join(u" AND "_s);
}

bool SearchForm::search()
{
    if (!everythingReadable(this))
        return false;
    refill(filterText());
    return true;
}

void SearchForm::refill(const QString &filter)
{
    const WaitCursor wait;
    const int key = grid_->selectedKey();
    const int position = grid_->verticalScrollBar()->value();
    grid_->fill(connection_, spec_.selectText + filter + spec_.orderText);
    if (key > 0 && grid_->selectKey(key))
        grid_->verticalScrollBar()->setValue(position);
}

void SearchForm::withSelected(const std::function<void(int)> &run)
{
    if (const int id = grid_->selectedKey(); id > 0)
        run(id);
}

} // namespace ui
