#pragma once
#include "host/Corvane3Impl.h"
#include "platform/core/CodeText.h"

namespace host {

/// The registers that keep firms.
enum class FirmKind
{
    Customer = 1,
    Supplier = 2,
    Carrier = 4,
    Company = 8
};
Q_DECLARE_FLAGS(FirmKinds, FirmKind)
Q_DECLARE_OPERATORS_FOR_FLAGS(FirmKinds)

/// Everybody the company has to do with.
inline constexpr FirmKinds partners = FirmKinds(FirmKind::Customer) | FirmKind::Supplier | FirmKind::Carrier;
inline constexpr FirmKinds everyFirm = partners | FirmKind::Company;

/// The box of the entry form in which a field stands.
enum class FirmBox
{
    Firm,
    TaxData,
    Contacts,
    ElectronicInvoice ///< on a page of its own
};

/// One text that is kept of a firm, as it is today. Registers, import, readers and the copies in documents are made
/// from it; its column is made by an upgrade step, since steps tell what once was.
struct FirmField
{
    enum class Letters
    {
        AsTyped,
        Capitals
    };
    struct Place
    {
        int row = 0;
        int position = 0; ///< counts label-and-control pairs
        int span = 1;
    };
    /// The label that shows the copy in a document; line -1 where documents do not copy the field.
    struct Copy
    {
        int line = -1;
        int characters = 0; ///< that must stay readable
    };

    QString name; ///< of its controls behind their prefix "txt" or "lbl"; in capitals its column
    QString label;
    int length; ///< characters
    Letters letters;
    FirmBox box;
    Place place;
    QString TAnagrafica::*member = nullptr; ///< where readers put it; null: nowhere
    /// In CSV files, the usual name first; %1 stands for what the firm is called, "cliente".
    QStringList headers = {};
    Copy copy = {};
    FirmKinds firms = everyFirm;
    bool required = false;
    bool (*isRight)(const QString &) = nullptr; ///< text that fails it is doubtful
    QString column = name.toUpper();
    QString doubt = {};               ///< what is said of such text, ends with a full stop; the usual words while empty
    QString help = {};                ///< shown while the pointer rests on the control
    QList<core::CodeText> codes = {}; ///< from which one is chosen; any text may stand there while empty

    /// Object name of its input.
    QString control() const { return QStringLiteral("txt") + name; }
};

/// All fields, in the order of the screen, the Tab key and the statements.
const QList<FirmField> &firmFields();

/// Those that a kind of firm has.
QList<FirmField> firmFieldsOf(FirmKind kind);

} // namespace host
