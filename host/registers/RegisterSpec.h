#pragma once
#include "host/Categories.h"
#include "platform/ui/SearchForm.h"

#include <QSize>

namespace host {

/// One input of a register's entry form.
struct RegisterField
{
    enum class Kind
    {
        Text,
        Memo,
        Amount,   ///< EUR
        Quantity, ///< two decimals
        Lookup,   ///< drop-down over another table, which stores its key
        Category,
        Flag
    };

    QString name; ///< control name
    QString label;
    QString column;
    Kind kind = Kind::Text;
    int row = 0;
    int position = 0; ///< counts label-and-control pairs
    int span = 1;
    int maxLength = 100;
    bool upperCase = false;
    QString flagCaption = {};                   ///< Flag: beside its box; `label` stays empty
    QString lookupSql = {};                     ///< Lookup: gives `column` and TESTO
    ui::CategoryTable categories = {};          ///< Category
    bool (*isRight)(const QString &) = nullptr; ///< Text that is not empty and fails: asked about before the save
};

/// Fields that stand together in a box with a title; without one they fill the page.
struct RegisterGroup
{
    QString page;
    QString title;
    QList<RegisterField> fields;
};

/// A register: its entry form, its list and the rules of both, all as data.
struct RegisterSpec
{
    QString name;      ///< of the forms: "Articoli" gives InserimentoArticoli and RicercaArticoli
    QString caption;   ///< in the menu and over the list
    QString oneRecord; ///< "questo articolo", for what is said about it
    QString table;
    QString key;
    QList<RegisterGroup> groups;
    QList<std::pair<QString, QString>> required; ///< column and what is said while it is empty
    QStringList expected = {}; ///< Lookup columns; the question below is asked while one of them has no choice
    QString missingQuestion = {};
    QString uniqueColumn = {}; ///< text that only one record may have, whatever its case
    QString duplicateText = {};
    QString codePrefix = {}; ///< of the code proposed for a new record; none while empty
    /// Documents and movements repeat the unique text instead of the key, so it cannot change while they do.
    bool namedByText = false;
    /// Says why the record with this key must stay, empty when it may go.
    std::function<QString(int id, data::Connection &connection)> refuseDeletion = {};
    QStringList deletedWith = {}; ///< statements with one parameter, the key, that run before the record goes
    QSize openingSize = {700, 420};

    QString listSql = {}; ///< ends with a blank; all columns of the table while empty
    QList<ui::ListColumn> listColumns = {};
    QList<ui::ListFilter> listFilters = {};
    QString orderText = {}; ///< begins with a blank
    QString letterColumn = {};

    /// "aliquote IVA", inside a sentence.
    QString lowerCaption() const { return caption.left(1).toLower() + caption.mid(1); }
    QString generator() const { return QStringLiteral("GN_") + key; }
    QString selectText() const { return listSql.isEmpty() ? QStringLiteral("SELECT * FROM %1 ").arg(table) : listSql; }
    /// A register of one record (the company) has no list.
    bool isSingle() const { return listColumns.isEmpty(); }
};

/// Every register of the host, in the order of the menus.
const RegisterSpec &articles();
const RegisterSpec &services();
const RegisterSpec &customers();
const RegisterSpec &vatRates();
const RegisterSpec &units();
const RegisterSpec &paymentTypes();
const RegisterSpec &documentNotes();
const RegisterSpec &company();

} // namespace host
