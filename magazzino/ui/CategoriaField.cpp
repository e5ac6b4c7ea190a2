#include "magazzino/ui/CategoriaField.h"

#include "host/Corvane3Impl.h"
#include "magazzino/MMGUtils.h"
#include "platform/data/DataSet.h"
#include "platform/ui/CategoryTree.h"

using namespace Qt::StringLiterals;

CategoriaField::CategoriaField(const QString &name, const QString &label, QString column, QWidget *parent)
    : Field(label, parent)
    , tree_(new CategoryTree(parent))
    , column_(std::move(column))
{
    tree_->setObjectName(name);
    connect(tree_, &QComboBox::currentIndexChanged, this, &Field::edited);
}

QWidget *CategoriaField::widget() const
{
    return tree_;
}

int CategoriaField::key() const
{
    return tree_->selectedKey();
}

void CategoriaField::selectKey(int key)
{
    tree_->selectKey(key);
}

void CategoriaField::clear()
{
    tree_->clearTree();
    // Here the first entry stands for no choice, not for all of them.
    tree_->setItemText(0, {});
    FillTreeView(*tree_, u"IDCATEGORIA_ANA_MAGA"_s, u"CATEGORIA"_s, u"IDPADRE"_s, u"CATEGORIE_ANA_MAGA"_s,
                 u"ORDER BY CATEGORIA"_s, ModuleConnection());
    UpdateTreeNodeImages(*tree_, 77, 76);
    tree_->selectKey(-1);
}

void CategoriaField::load(const data::DataSet &record)
{
    tree_->selectKey(record.integer(column_, -1));
}

void CategoriaField::write(data::DataSet &record) const
{
    record.setValue(column_, tree_->selectedKey());
}
