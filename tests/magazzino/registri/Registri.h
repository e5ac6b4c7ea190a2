#pragma once
#include "platform/ui/EntryForm.h"
#include "platform/ui/SearchForm.h"
#include "tests/support/Controls.h"
#include "tests/support/Workplace.h"

class QTableView;

namespace test {

/// The names of one register and what it says.
struct Register
{
    QString name; ///< in the names of its actions
    QString table;
    QString key;
    QString prefix;   ///< of a proposed code
    QString controls; ///< text inputs; the one that identifies the record comes first
    QString columns;  ///< those of the inputs, in their order
    QString duplicate;
    QString entryRefusal;
    QString listRefusal;
    QString referrer;  ///< table whose `reference` refers to the record
    QString reference; ///< holds the key if it is named like it, else the main text
};

/// Suppliers, carriers, transport types, transport reasons.
const QList<Register> &registers();
const Register &registerOf(const QString &table);

/// Opens a form by the module's action.
ui::EntryForm *openEntry(const Workplace &workplace, const QString &action);
ui::SearchForm *openList(const Workplace &workplace, const QString &action);
QTableView *gridOf(const ui::SearchForm *list);
/// Types over what stands in a text input.
void retype(const QWidget *form, const QString &control, const QString &text);
/// "new modified", "stored" and so on.
QString flagsOf(const ui::EntryForm *form);
/// Puts the record with this key into a document.
void refer(const Workplace &workplace, const Register &names, int id);

} // namespace test
