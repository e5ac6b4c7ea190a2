#pragma once
#include "platform/data/Connection.h"
#include "platform/ui/Controls.h"

namespace ui {

/// A table of categories that refers to itself, and the names of its columns.
struct CategoryTable
{
    QString table;
    QString key;
    QString caption;
    QString parent; ///< the key of the category above; NULL on the first level

    /// Is no table named?
    bool isEmpty() const { return table.isEmpty(); }
};

/// A drop-down that shows a tree of categories, each level indented below its parent. Entry 0 is the root that stands
/// for all of them.
class CategoryTree : public ComboBox
{
    Q_OBJECT

public:
    struct Node
    {
        int key = 0;
        int parentKey = 0; ///< 0, or a key that is not in the tree, hangs the node under the root
        QString caption;
    };

    explicit CategoryTree(QWidget *parent = nullptr);

    /// Leaves the root "Tutte le categorie" only, and selects it.
    void clearTree();
    /// Adds `nodes`; brothers stay in the order given.
    void fill(const QList<Node> &nodes);
    /// Adds what stands in `categories`, in the order of `orderClause` ("ORDER BY CATEGORIA"). Throws
    /// data::DatabaseError.
    void fill(const CategoryTable &categories, const QString &orderClause, data::Connection &connection);
    /// Folder images of the nodes below the root: one for nodes with children, one for leaves.
    void setNodeImages(const QIcon &withChildren, const QIcon &leaf);

    /// Key of the selected category, or -1 for the root.
    int selectedKey() const;
    /// Is a category with `key` in the tree? The root does not count.
    bool contains(int key) const;
    /// Selects the category with `key`; the root when there is none.
    void selectKey(int key);

    void showPopup() override;

Q_SIGNALS:
    /// The user turns to the tree: it got the focus, or its list is about to drop.
    void turnedTo();

protected:
    void focusInEvent(QFocusEvent *event) override;

private:
    void addChildren(const QMultiMap<int, int> &children, const QList<Node> &nodes, int parentKey, int depth);
};

} // namespace ui
