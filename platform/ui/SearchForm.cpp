#include "platform/ui/SearchForm.h"

#include "platform/core/Translation.h"
#include "platform/ui/EntryForm.h"
#include "platform/ui/Letters.h"
#include "platform/ui/ListExport.h"

#include <QLineEdit>
#include <QToolButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace ui {

SearchForm::SearchForm(const SearchSpec &spec, data::Connection &connection, QWidget *parent)
    : ChildForm(spec.caption, spec.menuCaption, parent)
    , bar_(newToolBar(u"tBarStandard"_s))
{
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(bar_);
    declareCommands(spec);
    const auto buttons = [this](QWidget *line) {
        return QList{commandButton(command(u"actCerca"_s), u"cmdCerca"_s, line),
                     commandButton(command(u"actRipristina"_s), u"cmdRipristina"_s, line)};
    };
    list_ = new ListPanel(spec.list, connection, buttons, this);
    connect(&grid(), &ResultGrid::chosen, command(u"actModifica"_s), &QAction::trigger);
    grid().allowSorting();
    setMinimumSize(700, 360);
    setOpeningSize(forLetters(openingSize(spec), *this));
}

// Where every column has a width, the list opens so that they get just those.
QSize SearchForm::openingSize(const SearchSpec &spec) const
{
    constexpr int usualWidth = 900;
    int columns = 0;
    for (const ListColumn &column : spec.list.columns) {
        if (column.width == 0 || column.widthKind == ListColumn::Width::Percent)
            return spec.openingSize.expandedTo({usualWidth, 0});
        columns += column.width;
    }
    return spec.openingSize.expandedTo({list_->widthFor(columns), 0}).expandedTo(minimumSize());
}

void SearchForm::declareCommands(const SearchSpec &spec)
{
    const auto open = [this](int id) { entryForm().openRecord(id); };
    const QList<Command> commands = {
        {u"actNuovo"_s, u"Nuovo"_s, [this] { newRecord(); }, Icon::New, QKeySequence(u"Ctrl+N"_s), spec.newHint},
        {u"actModifica"_s, u"Modifica"_s, [this, open] { withSelected(open); }, Icon::Open, QKeySequence(u"Ctrl+O"_s),
         spec.editHint},
        {u"actChiudi"_s, u"Chiudi"_s, [this] { closeForm(); }, Icon::Close, QKeySequence(u"Ctrl+W"_s), spec.closeHint},
        {u"actCerca"_s, u"Cerca"_s, [this] { search(); }, Icon::Search, QKeySequence(u"F5"_s), {}},
        {u"actVaiAiFiltri"_s,
         core::tr("Vai ai filtri"),
         [this] { startFinding(); },
         Icon::Search,
         QKeySequence(u"Ctrl+F"_s),
         {}},
        {u"actRipristina"_s, u"Ripristina"_s, [this] { reset(); }, Icon::Reset, QKeySequence(u"Shift+F5"_s), {}}};
    for (const Command &command : commands)
        addCommand(command);
}

void SearchForm::declareDelete()
{
    const auto remove = [this](int id) {
        bool gone = false;
        list_->takingOver([&] { gone = deleteRecord(id); });
        if (gone)
            grid().rows().removeKey(id);
    };
    addCommand({u"actElimina"_s,
                u"Elimina"_s,
                [this, remove] { withSelected(remove); },
                Icon::Delete,
                QKeySequence(u"Ctrl+D"_s),
                {}});
}

void SearchForm::placeExport()
{
    auto *menu = new QMenu(core::tr("Esporta"), this);
    menu->addActions(grid().listExport().commands());
    QAction *action = menu->menuAction();
    action->setObjectName(u"actEsporta"_s);
    action->setIcon(icon(Icon::Export));
    action->setToolTip(core::tr("Salva l'elenco in un file o lo copia"));
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
    formMenu()->addSeparator();
    for (const QString &name : {u"actCerca"_s, u"actRipristina"_s, u"actVaiAiFiltri"_s})
        formMenu()->addAction(command(name));
    if (QWidget *input = filterInput(0))
        setFocusProxy(input);
    reset();
}

std::optional<int> SearchForm::keyBeside(int key, int step) const
{
    const RowsModel &rows = grid().rows();
    for (int row = 0; row < rows.rowCount(); ++row) {
        if (rows.keyAt(row) == key)
            return row + step < 0 || row + step >= rows.rowCount() ? -1 : rows.keyAt(row + step);
    }
    return {};
}

// Where there is no filter, the rows are looked through.
void SearchForm::startFinding()
{
    QWidget *input = filterInput(0);
    (input ? input : &grid())->setFocus(Qt::ShortcutFocusReason);
    if (auto *line = qobject_cast<QLineEdit *>(input))
        line->selectAll();
}

void SearchForm::newRecord()
{
    entryForm().startNewAsking();
}

void SearchForm::withSelected(const std::function<void(int)> &run) const
{
    if (const int id = selectedKey(); id > 0)
        run(id);
}

} // namespace ui
