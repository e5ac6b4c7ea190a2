#pragma once
#include "platform/ui/Field.h"

class CategoryTree;

/// The article category of a record, chosen from the tree; clearing reloads the tree.
class CategoriaField : public ui::Field
{
    Q_OBJECT

public:
    /// `name` of the control; `column` takes the key.
    CategoriaField(const QString &name, const QString &label, QString column, QWidget *parent);

    /// Key of the chosen category, -1 for none.
    int key() const;
    void selectKey(int key);

    QWidget *widget() const override;
    void clear() override;
    void load(const data::DataSet &record) override;
    void write(data::DataSet &record) const override;

private:
    CategoryTree *tree_;
    QString column_;
};
