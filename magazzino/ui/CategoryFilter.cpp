#include "magazzino/ui/CategoryFilter.h"

#include "host/Corvane3Impl.h"
#include "magazzino/MMGUtils.h"
#include "platform/data/SqlText.h"
#include "platform/ui/CategoryTree.h"

using namespace Qt::StringLiterals;

namespace {

// Places of the category nodes' images in the suite's shared image list.
constexpr int closedCategoryImage = 77;
constexpr int openCategoryImage = 76;

class CategoryFilter : public ui::Filter
{
public:
    CategoryFilter(const ui::CategoryTable &categories, const QString &column, QWidget *parent)
        : Filter(u"Categoria"_s, parent)
        , categories_(categories)
        , column_(column)
        , tree_(new ui::CategoryTree(parent))
    {
        tree_->setObjectName(u"txtCategoria"_s);
    }

    QWidget *widget() const override { return tree_; }
    bool stretches() const override { return true; }
    QVariant value() const override { return tree_->selectedKey() > 0 ? tree_->selectedKey() : QVariant(); }

    void reset() override
    {
        tree_->clearTree();
        FillTreeView(*tree_, categories_.key, categories_.caption, categories_.parent, categories_.table,
                     u"ORDER BY CATEGORIA"_s, ModuleConnection());
        UpdateTreeNodeImages(*tree_, closedCategoryImage, openCategoryImage);
        tree_->selectKey(-1);
    }

    QString condition(data::Values &values) const override
    {
        QStringList texts;
        const QList<int> keys =
            GetElencoIdFiglio(categories_.key, tree_->selectedKey(), categories_.table, ModuleConnection());
        for (const int key : keys)
            texts.append(values.add(key));
        return u' ' + column_ + u" IN ("_s + texts.join(u", "_s) + u')';
    }

private:
    ui::CategoryTable categories_;
    QString column_;
    ui::CategoryTree *tree_;
};

} // namespace

ui::ListFilter categoryFilter(const ui::CategoryTable &categories, const QString &column)
{
    return [categories, column](QWidget *parent) { return new CategoryFilter(categories, column, parent); };
}
