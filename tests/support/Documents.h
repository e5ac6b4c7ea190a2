#pragma once
#include "magazzino/ui/MMGInserimentoDocumento.h"
#include "platform/ui/DateEdit.h"
#include "platform/ui/NumberEdits.h"
#include "tests/support/Controls.h"
#include "tests/support/Workplace.h"

namespace test {

/// The names of one kind of stock document.
struct DocumentNames
{
    QString action;
    QString table;
    QString rowTable;
    QString key;
    QString counterpartAction;
    QString counterpart; ///< of the demonstration data: with tax data, under the letter A
    QString priceHeader;
};

/// The kind called "receipt", "note" or "invoice".
///@{
const DocumentNames &documentNames(const QString &kind);
inline const DocumentNames &receipt()
{
    return documentNames(QStringLiteral("receipt"));
}
inline const DocumentNames &deliveryNote()
{
    return documentNames(QStringLiteral("note"));
}
inline const DocumentNames &accompanyingInvoice()
{
    return documentNames(QStringLiteral("invoice"));
}
///@}

/// Deletes every document and movement.
void emptyDocuments(data::Connection &connection);

/// Data rows of a test: for each kind one named after it or, with `cases`, "KIND, CASE" for each of them.
void eachKind(const QStringList &cases = {});
/// Kind and case of the test's row.
///@{
const DocumentNames &kindOfRow();
QString caseOfRow();
///@}

/// A document's form in a running program, worked through its controls.
class Document
{
public:
    /// Opens the form.
    Document(Workplace &workplace, const DocumentNames &names);

    TMMGInserimentoDocumento &form() const { return *form_; }
    DocumentGrid *grid() const { return &form_->grid(); }
    QString shown(const QString &name) const { return test::shown(form_, name); }
    template <typename Control>
    Control *control(const QString &name) const
    {
        return test::control<Control>(form_, name);
    }

    void showPage(int page) const;
    /// Chooses the counterpart, the transport type and reason and, where there is one, the payment type.
    void fillHeader() const;
    void choose(const QString &commandOrButton, const ScriptedDialogs::Use &use) const;
    /// Types something of every kind into header, rows and notes, so that the document can be saved.
    void fillAll() const;
    void addArticle(const QString &code, const QString &price, const QString &quantity) const;
    void trigger(const QString &action) const { test::trigger(form_, action); }
    /// Fills the header and adds the article TRA-0018.
    void enter(const QString &price, const QString &quantity) const;
    void save() const { trigger(QStringLiteral("actSalva")); }
    /// As if something had been typed.
    void saveAgain() const;
    /// Enters the same and saves.
    void store(const QString &price, const QString &quantity) const;

    /// "new modified", "stored" and so on.
    QString flags() const;
    /// Everything that any document of any kind left in the database.
    QStringList stored() const;

private:
    Workplace &workplace_;
    const DocumentNames &names_;
    QPointer<TMMGInserimentoDocumento> form_;
};

} // namespace test
