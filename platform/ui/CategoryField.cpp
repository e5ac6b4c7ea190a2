#include "platform/ui/CategoryField.h"

#include "platform/core/Messages.h"

#include <QApplication>
#include <QStyle>

using namespace Qt::StringLiterals;

namespace ui {

CategoryField::CategoryField(const CategorySpec &spec, data::Connection &connection, QWidget *parent)
    : ColumnField(spec.label, spec.column, parent)
    , spec_(spec)
    , connection_(connection)
    , tree_(named(spec.name, new CategoryTree(parent)))
{
    connect(tree_, &QComboBox::currentIndexChanged, this, &Field::edited);
    connect(tree_, &CategoryTree::turnedTo, this, &CategoryField::refresh);
}

void CategoryField::fill()
{
    tree_->clearTree();
    // Here the first entry stands for no choice, not for all of them.
    tree_->setItemText(0, {});
    tree_->fill(spec_.categories, u"ORDER BY "_s + spec_.categories.caption, connection_);
    const QStyle *style = QApplication::style();
    tree_->setNodeImages(style->standardIcon(QStyle::SP_DirOpenIcon), style->standardIcon(QStyle::SP_DirClosedIcon));
}

// A category may have been made since the record was opened. Reading the tree anew is no change of the record.
void CategoryField::refresh()
{
    const CategoryTree::Node chosen{.key = key(), .parentKey = 0, .caption = tree_->currentText()};
    const QSignalBlocker quiet(tree_);
    if (!core::guarded(tree_, [this] { fill(); }) && chosen.key > 0) {
        tree_->clearTree();
        tree_->fill({chosen});
    }
    tree_->selectKey(chosen.key);
}

QVariant CategoryField::state() const
{
    return QVariantList{key(), tree_->currentText()};
}

void CategoryField::restore(const QVariant &state)
{
    const CategoryTree::Node chosen{
        .key = state.toList().value(0).toInt(), .parentKey = 0, .caption = state.toList().value(1).toString()};
    if (chosen.key > 0 && !tree_->contains(chosen.key))
        tree_->fill({chosen});
    tree_->selectKey(chosen.key);
}

void CategoryField::clear()
{
    fill();
    tree_->selectKey(-1);
}

void CategoryField::show(const QVariant &stored)
{
    // A category made since the form was opened must be found: what is not found would be stored as none.
    fill();
    tree_->selectKey(stored.isNull() ? -1 : stored.toInt());
}

} // namespace ui
