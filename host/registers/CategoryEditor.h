#pragma once
#include "platform/ui/CategoryTree.h"
#include "platform/ui/ChildForm.h"

#include <QTreeWidget>

class QTreeWidgetItem;

namespace host {

/// One kind of categories.
struct CategoryEditorSpec
{
    QString name; ///< object name of the form
    QString caption;
    ui::CategoryTable categories;
};

/// Those of the articles, and those of the services.
const CategoryEditorSpec &articleCategoryEditor();
const CategoryEditorSpec &serviceCategoryEditor();

/// The categories as a tree: add, rename, move, delete. Every command is written at once.
class CategoryEditor : public ui::ChildForm
{
    Q_OBJECT

public:
    CategoryEditor(const CategoryEditorSpec &spec, data::Connection &connection, QWidget *owner);

private:
    void declareCommands();
    void reload(int selected);
    void add(int parent);
    void rename();
    void move();
    void remove();
    int selectedKey() const;
    QString selectedName() const;
    /// Tells the user when it is.
    bool isTaken(const QString &name, int parent, int except);
    int parentOf(int key) const;

    CategoryEditorSpec spec_;
    data::Connection &connection_;
    QTreeWidget *tree_;
};

} // namespace host
