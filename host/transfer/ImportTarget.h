#pragma once
#include "host/FirmFields.h"
#include "platform/data/SqlText.h"

#include <QStringList>

/// What can be imported from CSV files, as data.
namespace host {

/// The table in which a field's text is looked up; what is stored is the key of the row found.
struct ImportLookup
{
    QString table;
    QString key;
    QString column;      ///< compared without case
    QString number = {}; ///< a number that finds the row where the text does not, unless two rows have it
    QString parent = {}; ///< of a tree: a row is found by its path "A/B" or by a name that is there only once
    int maxLength = 0;   ///< of the names in a tree, to which an import may add
};

struct ImportField
{
    enum class Kind
    {
        Text,
        UpperText,
        Memo,   ///< keeps its line breaks
        Amount, ///< 0 to 99.999.999.999,99 with two decimals
        Lookup
    };

    QString column;
    QString caption;
    QStringList otherNames; ///< headers that files use for it
    Kind kind = Kind::Text;
    int maxLength = 0;     ///< characters; 0 for no limit
    bool required = false; ///< of a new record
    ImportLookup lookup = {};
    double whenEmpty = 0; ///< Amount: of a new record
    /// Text that fails is imported, and told of.
    bool (*isRight)(const QString &) = nullptr;
    QString doubt = {}; ///< what is told then, a sentence
};

/// A table that can be filled. The first field is the code, by which records are told apart, without case where nothing
/// else is said.
struct ImportTarget
{
    QString caption; ///< plural
    QString table;
    QString key;
    QList<ImportField> fields;
    /// The one text for all spellings of a code.
    QString (*identity)(const QString &) = data::capitalsOf;
};

/// Articles, their barcodes, customers and what modules added. A module's table may be missing in a database.
const QList<ImportTarget> &importTargets();

/// Adds the table of a module's that `make` describes for the rest of the program's life; called by the module's
/// library while it loads. `make` is called later, since a loading library may not look up its texts yet.
void registerImportTarget(ImportTarget (*make)());

/// The fields of a register of firms that have a payment type; `called` is what files may call one, "cliente".
QList<ImportField> firmImportFields(FirmKind firm, const QString &called);

/// The CSV column (from 0) for each field of `target`, -1 where no header names it: by caption, another
/// usual name or column name, without case, accents, blanks and signs. No column is used twice.
QList<int> mapColumns(const ImportTarget &target, const QStringList &headers);

} // namespace host
