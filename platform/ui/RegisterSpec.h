#pragma once
#include "platform/ui/CategoryField.h"
#include "platform/ui/ChildForm.h"
#include "platform/ui/ChoiceFields.h"
#include "platform/ui/EntryForm.h"
#include "platform/ui/SearchForm.h"

namespace ui {

/// One input of a register's entry form.
struct RegisterField
{
    enum class Kind
    {
        Text,
        Memo,
        Amount,   ///< EUR
        Quantity, ///< two decimals
        Integer,  ///< up to three digits, 0 for a new record
        Lookup,   ///< drop-down over another table, which stores its key
        Code,     ///< drop-down of fixed codes, of which one is stored
        Choice,   ///< a record picked in a dialog, of which the key is stored
        Category,
        Flag,
        Picture, ///< PNG or SVG, stored as it is
        Figure   ///< what somebody else knows of the record, by the text in `column`; not there while nobody does
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
    ChoiceSpec choice = {};                     ///< Choice: what it has beside name, label and column
    CategoryTable categories = {};              ///< Category
    bool (*isRight)(const QString &) = nullptr; ///< Text that is not empty and fails: asked about before the save
    QString doubt = {};               ///< what is said of such text, ends with a full stop; the usual words while empty
    QString help = {};                ///< shown while the pointer rests on the control
    QList<core::CodeText> codes = {}; ///< Code
    FigureSource *figures = nullptr;  ///< Figure
};

/// Fields that stand together in a box with a title; without one they fill the page.
struct RegisterGroup
{
    QString page;
    QString title;
    QList<RegisterField> fields;
};

/// How the forms of a register behave where registers differ on purpose.
struct RegisterHabits
{
    ClosingQuestion closing = ClosingQuestion::SaveFirst;
    OnClose onClose = OnClose::Free;
    bool blanksCount = false; ///< blanks around a text are stored with it, and one of blanks alone is not empty
    bool tellsMissing = true; ///< tells when the record to open is gone
    bool liveList = true;     ///< see ListSpec::isLive
    data::Values::Way way = data::Values::Way::Bound; ///< of the list's values into its statements,
    QString letterLike = {};                          ///< where the letter bar's text may be fixed
};

/// A register: its entry form, its list and the rules of both, all as data.
struct RegisterSpec
{
    /// Deletes the record with key `id` with the questions that takes; `form` is where it was asked for. True when the
    /// record is gone.
    using Deletion = std::function<bool(int id, QWidget &form)>;

    QString name;           ///< of the forms: "Articoli" gives InserimentoArticoli and RicercaArticoli
    QString caption;        ///< in the menu and over the list
    QString oneRecord = {}; ///< "questo articolo", for what is said about it
    QString table;
    QString key;
    QList<RegisterGroup> groups;
    QList<std::pair<QString, QString>> required = {}; ///< column and what is said while it is empty
    QStringList expected = {}; ///< Lookup columns; the question below is asked while one of them has no choice
    QString missingQuestion = {};
    QString uniqueColumn = {}; ///< text that only one record may have, whatever its case
    QString duplicateText = {};
    /// Has another record than `except` the text? Looked up in the register's table while empty.
    std::function<bool(const QString &text, int except)> isTaken = {};
    QString codePrefix = {}; ///< of the code proposed for a new record; none while empty
    /// Documents and movements repeat the unique text instead of the key, so it cannot change while they do.
    bool namedByText = false;
    /// Says why the record with this key must stay, empty when it may go.
    std::function<QString(int id, data::Connection &connection)> refuseDeletion = {};
    QStringList deletedWith = {};  ///< statements with one parameter, the key, that run before the record goes
    Deletion deleteFromEntry = {}; ///< in place of deleteRegisterRecord()
    Deletion deleteFromList = {};
    QSize openingSize = {700, 420};

    QString listSql = {}; ///< ends with a blank; all columns of the table while empty
    QList<ListColumn> listColumns = {};
    QList<ListFilter> listFilters = {};
    QString orderText = {}; ///< begins with a blank
    QString letterColumn = {};
    QSize listSize = {0, 520};
    /// WHERE clause of what the list shows when it opens, empty for all records; nothing for no record at all.
    std::optional<QString> firstRows = QString();
    QString newHint = {};
    QString editHint = {};
    QString closeHint = {};

    QString owner = {};        ///< before the names of the forms: "MMG"
    QString entryCaption = {}; ///< "Inserimento / Modifica articoli" while empty
    QString entryMenu = {};    ///< ">Articoli<" while empty
    RegisterHabits habits = {};

    /// "aliquote IVA", inside a sentence.
    QString lowerCaption() const { return caption.left(1).toLower() + caption.mid(1); }
    /// In the title bar of the entry form.
    QString entryTitle() const
    {
        if (!entryCaption.isEmpty())
            return entryCaption;
        return isSingle() ? caption : QStringLiteral("Inserimento / Modifica ") + lowerCaption();
    }
    /// What follows from these texts, alike for every register.
    ///@{
    QString menuCaption() const { return QStringLiteral(">%1<").arg(caption); }
    QString generator() const { return QStringLiteral("GN_") + key; }
    QString selectText() const { return listSql.isEmpty() ? QStringLiteral("SELECT * FROM %1 ").arg(table) : listSql; }
    ///@}
    /// A register of one record (the company) has no list.
    bool isSingle() const { return listColumns.isEmpty(); }
};

} // namespace ui
