#pragma once
#include "platform/ui/EntryForm.h"
#include "platform/ui/SearchForm.h"
#include "tests/support/Controls.h"
#include "tests/support/Workplace.h"

class QTableView;

namespace test {

/// One text input of a register.
struct RegisterField
{
    QString control;
    QString column;
    int limit = 0;  ///< characters that can be typed
    int stored = 0; ///< characters that the column takes; as many as can be typed when 0
    bool upper = false;
};

/// The names of one register and what it says.
struct Register
{
    QString entryAction;
    QString listAction;
    QString table;
    QString key;
    QString prefix;              ///< of a proposed code
    QList<RegisterField> fields; ///< the one that identifies the record comes first
    QString duplicate;
    QString entryRefusal;
    QString listRefusal;
    QString referrer; ///< table whose `reference` refers to the record
    QString reference;
    bool referenceIsKey = false; ///< else the first field's text
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
