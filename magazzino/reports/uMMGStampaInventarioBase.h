#pragma once
#include "platform/ui/CategoryTree.h"
#include "platform/ui/ChildForm.h"
#include "platform/ui/DateEdit.h"

#include <QDate>

#include <QButtonGroup>
#include <QGroupBox>
#include <optional>

/// Which articles an inventory lists.
struct InventarioFilter
{
    QDate dal; ///< the article has a movement dated in this range
    QDate al;
    int esistenza = -1;   ///< 0 above zero, 1 zero or none, 2 below zero, 3 zero or above; -1 for any
    QList<int> categorie; ///< keys; empty for articles of any category or none
};

/// The statement behind an inventory: code, description, stock on hand (ESISTENZA) and, when `valued`, stock value
/// (VALORE), both over movements of every date, in the order of the upper-case code.
QString InventarioSQL(const InventarioFilter &filter, bool valued);

/// In which ways the two inventory reports differ.
struct InventarioSpec
{
    QString caption;
    QString objectName;
    QString query;  ///< of the print data module
    QString report; ///< of the report project
    bool valued = false;
    bool categoryFirst = false; ///< the category is reached by Tab before the stock on hand
};

/// Parameters of an inventory report: the period in which the articles moved, stock on hand, category.
class TMMGStampaInventarioBase : public ui::ChildForm
{
    Q_OBJECT

public:
    /// The parameters of the report that `spec` names, at their first values.
    TMMGStampaInventarioBase(const InventarioSpec &spec, QWidget *owner);

    /// Puts the parameters back: this year, above zero, all categories.
    void Ripristina();
    /// Reads the tree of categories anew.
    void AggiornaComboCategorie();

private:
    QGroupBox *createDates();
    QGroupBox *createStock();
    QGroupBox *createCategory();
    InventarioFilter filter() const;
    void stampa();

    InventarioSpec spec_;
    ui::DateEdit *from_ = nullptr;
    ui::DateEdit *to_ = nullptr;
    QButtonGroup *stock_ = nullptr;
    ui::CategoryTree *category_ = nullptr;
};
