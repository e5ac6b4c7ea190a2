#include "host/registers/CategoryEditor.h"

#include "host/Categories.h"
#include "host/Corvane3Impl.h"
#include "platform/core/Messages.h"
#include "platform/core/Translation.h"
#include "platform/data/Connection.h"
#include "platform/data/SqlText.h"
#include "platform/ui/Dialogs.h"
#include "platform/ui/FormDialog.h"
#include "platform/ui/RegisterDeletion.h"
#include "platform/ui/TextPrompt.h"

#include <QApplication>
#include <QHash>
#include <QStyle>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace host {

namespace {

constexpr int nameLength = 50;

// NULL for the top level.
QVariant parentValue(int parent)
{
    return parent > 0 ? QVariant(parent) : QVariant(QMetaType(QMetaType::Int));
}

} // namespace

const CategoryEditorSpec &articleCategoryEditor()
{
    static const CategoryEditorSpec spec = {u"CategorieArticoli"_s, core::tr("Categorie degli articoli"),
                                            articleCategories};
    return spec;
}

const CategoryEditorSpec &serviceCategoryEditor()
{
    static const CategoryEditorSpec spec = {u"CategorieServizi"_s, core::tr("Categorie dei servizi"),
                                            serviceCategories};
    return spec;
}

CategoryEditor::CategoryEditor(const CategoryEditorSpec &spec, data::Connection &connection, QWidget *owner)
    : ChildForm(spec.caption, u">%1<"_s.arg(spec.caption), owner)
    , spec_(spec)
    , connection_(connection)
    , tree_(ui::named(u"treeCategorie"_s, new QTreeWidget(this)))
{
    setObjectName(spec.name);
    setOpeningSize({560, 480});
    setMinimumSize(520, 240);
    auto *layout = new QVBoxLayout(this);
    QToolBar *bar = newToolBar(u"tBarStandard"_s);
    layout->addWidget(bar);
    tree_->setHeaderHidden(true);
    tree_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    layout->addWidget(tree_);
    setFocusProxy(tree_);
    declareCommands();
    placeCommands(bar, {u"actNuovo"_s,
                        u"actNuovaSottocategoria"_s,
                        u"actRinomina"_s,
                        u"actSposta"_s,
                        u"actElimina"_s,
                        {},
                        u"actChiudi"_s});
    reload(-1);
}

void CategoryEditor::declareCommands()
{
    using ui::Icon;
    const auto addBelow = [this] {
        if (selectedKey() > 0)
            add(selectedKey());
    };
    const QList<ui::Command> commands = {
        {u"actNuovo"_s, core::tr("Nuova"), [this] { add(parentOf(selectedKey())); }, Icon::New,
         QKeySequence(u"Ctrl+N"_s), core::tr("Aggiunge una categoria accanto a quella selezionata.")},
        {u"actNuovaSottocategoria"_s, core::tr("Sottocategoria"), addBelow, Icon::Add, QKeySequence(Qt::Key_Insert),
         core::tr("Aggiunge una categoria sotto quella selezionata.")},
        {u"actRinomina"_s, core::tr("Rinomina"), [this] { rename(); }, Icon::Rename, QKeySequence(Qt::Key_F2)},
        {u"actSposta"_s, core::tr("Sposta"), [this] { move(); }, Icon::Choose, QKeySequence(u"Ctrl+M"_s),
         core::tr("Sposta la categoria, con tutto ciò che contiene, sotto un'altra.")},
        {u"actElimina"_s, u"Elimina"_s, [this] { remove(); }, Icon::Delete, QKeySequence(u"Ctrl+D"_s)},
        {u"actChiudi"_s, u"Chiudi"_s, [this] { closeForm(); }, Icon::Close}};
    for (const ui::Command &command : commands)
        addCommand(command);
    connect(tree_, &QTreeWidget::itemDoubleClicked, command(u"actRinomina"_s), &QAction::trigger);
}

int CategoryEditor::selectedKey() const
{
    const QTreeWidgetItem *item = tree_->currentItem();
    return item ? item->data(0, Qt::UserRole).toInt() : -1;
}

QString CategoryEditor::selectedName() const
{
    return tree_->currentItem()->text(0);
}

int CategoryEditor::parentOf(int key) const
{
    const data::Rows rows = connection_.select(
        u"SELECT IDPADRE FROM %1 WHERE %2 = :ID"_s.arg(spec_.categories.table, spec_.categories.key), {{u"ID"_s, key}});
    return rows.isEmpty() ? 0 : rows.integer(0, u"IDPADRE");
}

bool CategoryEditor::isTaken(const QString &name, int parent, int except)
{
    const data::Rows rows = connection_.run(
        u"SELECT 1 AS NUM FROM %1 WHERE UPPER(CATEGORIA) = %2 AND COALESCE(IDPADRE, 0) = ? AND %3 <> ?"_s.arg(
            spec_.categories.table, data::inCapitals(), spec_.categories.key),
        {data::searchedText(name), std::max(parent, 0), except});
    if (!rows.isEmpty())
        core::warn(this, core::tr("Esiste già una categoria con questo nome!"));
    return !rows.isEmpty();
}

// The same order and the same treatment of orphans as in every list of categories.
void CategoryEditor::reload(int selected)
{
    const ui::WaitCursor wait;
    tree_->clear();
    const data::Rows rows = connection_.select(u"SELECT %1, CATEGORIA, IDPADRE FROM %2 ORDER BY CATEGORIA"_s.arg(
        spec_.categories.key, spec_.categories.table));
    QHash<int, QTreeWidgetItem *> items;
    for (qsizetype row = 0; row < rows.size(); ++row) {
        auto *item = new QTreeWidgetItem({rows.text(row, u"CATEGORIA")});
        item->setIcon(0, QApplication::style()->standardIcon(QStyle::SP_DirClosedIcon));
        item->setData(0, Qt::UserRole, rows.integer(row, spec_.categories.key));
        items.insert(rows.integer(row, spec_.categories.key), item);
    }
    for (qsizetype row = 0; row < rows.size(); ++row) {
        QTreeWidgetItem *item = items.value(rows.integer(row, spec_.categories.key));
        QTreeWidgetItem *parent = items.value(rows.integer(row, u"IDPADRE"));
        if (parent && parent != item)
            parent->addChild(item);
        else
            tree_->addTopLevelItem(item);
    }
    tree_->expandAll();
    tree_->setCurrentItem(items.value(selected, tree_->topLevelItem(0)));
}

void CategoryEditor::add(int parent)
{
    const QString insert = u"INSERT INTO %1(IDPADRE, CATEGORIA) VALUES(?, ?) RETURNING %2"_s.arg(spec_.categories.table,
                                                                                                 spec_.categories.key);
    int key = -1;
    const auto store = [&](const QString &name) {
        if (isTaken(name, parent, -1))
            return false;
        key = connection_.run(insert, {parentValue(parent), name}).integer(0, spec_.categories.key);
        return true;
    };
    if (ui::askText(this, {.title = core::tr("Nuova categoria"),
                           .label = core::tr("Nome della categoria"),
                           .maxLength = nameLength,
                           .accept = store}))
        reload(key);
}

void CategoryEditor::rename()
{
    const int key = selectedKey();
    if (key < 1)
        return;
    const QString update =
        u"UPDATE %1 SET CATEGORIA = ? WHERE %2 = ?"_s.arg(spec_.categories.table, spec_.categories.key);
    const auto store = [&](const QString &name) {
        if (isTaken(name, parentOf(key), key))
            return false;
        connection_.run(update, {name, key});
        return true;
    };
    if (ui::askText(this, {.title = core::tr("Rinomina categoria"),
                           .label = core::tr("Nome della categoria"),
                           .initial = selectedName(),
                           .maxLength = nameLength,
                           .accept = store}))
        reload(key);
}

void CategoryEditor::move()
{
    const int key = selectedKey();
    if (key < 1)
        return;
    ui::FormDialog dialog(core::tr("Sposta categoria"), this);
    auto *target = ui::named(u"txtDestinazione"_s, new ui::CategoryTree(&dialog));
    target->fill(spec_.categories, u"ORDER BY CATEGORIA"_s, connection_);
    target->setItemText(0, core::tr("(primo livello)"));
    target->selectKey(parentOf(key));
    dialog.addRow(core::tr("Sposta \"%1\" sotto").arg(selectedName()), target);
    // A category inside itself would fall out of the tree.
    dialog.setCheck([&] {
        const QList<int> inside = GetElencoIdFiglio(spec_.categories.key, key, spec_.categories.table, connection_);
        if (inside.contains(target->selectedKey())) {
            core::warn(&dialog, core::tr("Una categoria non può stare sotto sé stessa."));
            return false;
        }
        return !isTaken(selectedName(), target->selectedKey(), key);
    });
    if (ui::runModal(dialog) != QDialog::Accepted)
        return;
    connection_.run(u"UPDATE %1 SET IDPADRE = ? WHERE %2 = ?"_s.arg(spec_.categories.table, spec_.categories.key),
                    {parentValue(target->selectedKey()), key});
    reload(key);
}

void CategoryEditor::remove()
{
    const int key = selectedKey();
    if (key < 1)
        return;
    const ui::RegisterSpec category{
        .oneRecord = core::tr("questa categoria"), .table = spec_.categories.table, .key = spec_.categories.key};
    const int parent = parentOf(key);
    if (ui::deleteRegisterRecord(category, key, connection_, this))
        reload(parent);
}

} // namespace host
