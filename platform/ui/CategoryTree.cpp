#include "platform/ui/CategoryTree.h"

#include <QAbstractItemView>
#include <QFocusEvent>
#include <QMultiMap>
#include <QSet>
#include <QStyledItemDelegate>

using namespace Qt::StringLiterals;

namespace ui {

namespace {

enum Role
{
    KeyRole = Qt::UserRole,
    DepthRole,
    HasChildrenRole
};

// Indents the entries in the list only, so the closed box shows the plain caption.
class TreeDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        QStyleOptionViewItem indented = option;
        indented.rect.setLeft(option.rect.left() + indent(index));
        QStyledItemDelegate::paint(painter, indented, index);
    }

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        return QStyledItemDelegate::sizeHint(option, index) + QSize(indent(index), 2);
    }

private:
    static int indent(const QModelIndex &index) { return 18 * index.data(DepthRole).toInt(); }
};

} // namespace

CategoryTree::CategoryTree(QWidget *parent)
    : ComboBox(parent)
{
    setItemDelegate(new TreeDelegate(this));
    setMaxVisibleItems(20);
    // A long caption must not widen the form; the list below may be wider than the box.
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(18);
    clearTree();
}

void CategoryTree::clearTree()
{
    clear();
    addItem(u"Tutte le categorie"_s, -1);
}

void CategoryTree::fill(const QList<Node> &nodes)
{
    QSet<int> keys;
    for (const Node &node : nodes)
        keys.insert(node.key);
    QMultiMap<int, int> children; // parent key to positions in `nodes`
    for (qsizetype i = nodes.size() - 1; i >= 0; --i) {
        const int parent =
            keys.contains(nodes[i].parentKey) && nodes[i].parentKey != nodes[i].key ? nodes[i].parentKey : 0;
        children.insert(parent, static_cast<int>(i));
    }
    addChildren(children, nodes, 0, 1);
    view()->setMinimumWidth(view()->sizeHintForColumn(0) + 30);
}

void CategoryTree::fill(const CategoryTable &categories, const QString &orderClause, data::Connection &connection)
{
    const data::Rows rows = connection.select(u"SELECT %1, %2, %3 FROM %4 %5"_s.arg(
        categories.key, categories.caption, categories.parent, categories.table, orderClause));
    QList<Node> nodes;
    nodes.reserve(rows.size());
    for (qsizetype row = 0; row < rows.size(); ++row)
        nodes.append({rows.integer(row, categories.key), rows.integer(row, categories.parent),
                      rows.text(row, categories.caption)});
    fill(nodes);
}

void CategoryTree::addChildren(const QMultiMap<int, int> &children, const QList<Node> &nodes, int parentKey, int depth)
{
    for (const int position : children.values(parentKey)) {
        const Node &node = nodes[position];
        addItem(node.caption, node.key);
        setItemData(count() - 1, depth, DepthRole);
        setItemData(count() - 1, children.contains(node.key), HasChildrenRole);
        addChildren(children, nodes, node.key, depth + 1);
    }
}

void CategoryTree::setNodeImages(const QIcon &withChildren, const QIcon &leaf)
{
    for (int i = 1; i < count(); ++i)
        setItemIcon(i, itemData(i, HasChildrenRole).toBool() ? withChildren : leaf);
}

int CategoryTree::selectedKey() const
{
    return currentIndex() > 0 ? currentData(KeyRole).toInt() : -1;
}

bool CategoryTree::contains(int key) const
{
    return findData(key, KeyRole) >= 0;
}

void CategoryTree::selectKey(int key)
{
    setCurrentIndex(std::max(0, findData(key, KeyRole)));
}

void CategoryTree::showPopup()
{
    Q_EMIT turnedTo();
    ComboBox::showPopup();
}

void CategoryTree::focusInEvent(QFocusEvent *event)
{
    // The list that closes gives the focus back.
    if (event->reason() != Qt::PopupFocusReason)
        Q_EMIT turnedTo();
    ComboBox::focusInEvent(event);
}

} // namespace ui
