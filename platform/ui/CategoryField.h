#pragma once
#include "platform/ui/CategoryTree.h"
#include "platform/ui/Field.h"

namespace ui {

struct CategorySpec
{
    QString name; ///< control name
    QString label;
    QString column; ///< takes the key
    CategoryTable categories;
    QVariant none; ///< stored when no category is chosen
};

/// The category of a record, chosen from the tree, which is read anew for every record and when the user turns to it.
class CategoryField : public ColumnField
{
public:
    /// A drop-down over the tree in `connection`, none chosen.
    CategoryField(const CategorySpec &spec, data::Connection &connection, QWidget *parent);

    /// Key of the chosen category, -1 for none.
    int key() const { return tree_->selectedKey(); }
    /// Chooses a category; none when the table does not have it.
    void selectKey(int key) { tree_->selectKey(key); }

    QWidget *widget() const override { return tree_; }
    void clear() override;
    QVariant state() const override;
    void restore(const QVariant &state) override;

protected:
    void show(const QVariant &stored) override;
    QVariant toStore() const override { return key() > 0 ? QVariant(key()) : spec_.none; }

private:
    void fill();
    void refresh();

    CategorySpec spec_;
    data::Connection &connection_;
    CategoryTree *tree_;
};

} // namespace ui
