#pragma once
#include "platform/ui/Field.h"

#include <QVariant>

class CategoryTree;
namespace data {
class Connection;
}

namespace host {

/// Where the categories of a kind of record are: a table that refers to itself through IDPADRE and names each one in
/// CATEGORIA.
struct CategoryTable
{
    QString table;
    QString key;

    bool isEmpty() const { return table.isEmpty(); }
};

inline const CategoryTable articleCategories = {QStringLiteral("CATEGORIE_ANA_MAGA"),
                                                QStringLiteral("IDCATEGORIA_ANA_MAGA")};
inline const CategoryTable serviceCategories = {QStringLiteral("CATEGORIE_SERVIZI"),
                                                QStringLiteral("IDCATEGORIA_SERVIZI")};

struct CategorySpec
{
    QString name; ///< control name
    QString label;
    QString column; ///< takes the key
    CategoryTable categories = articleCategories;
    QVariant none; ///< stored when no category is chosen
};

/// The category of a record, chosen from the tree, which is read anew for every record and when the user turns to it.
class CategoryField : public ui::Field
{
    Q_OBJECT

public:
    CategoryField(const CategorySpec &spec, data::Connection &connection, QWidget *parent);

    /// Key of the chosen category, -1 for none.
    int key() const;
    void selectKey(int key);

    QWidget *widget() const override;
    void clear() override;
    void load(const data::DataSet &record) override;
    void write(data::DataSet &record) const override;
    QVariant state() const override;
    void restore(const QVariant &state) override;

private:
    void fill();
    void refresh();

    CategorySpec spec_;
    data::Connection &connection_;
    CategoryTree *tree_;
};

} // namespace host
