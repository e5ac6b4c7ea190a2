#include "host/registers/RegisterEntry.h"

#include "host/Corvane3Impl.h"
#include "host/registers/RegisterDeletion.h"
#include "platform/core/Messages.h"
#include "platform/data/DataSet.h"
#include "platform/data/RecordUses.h"
#include "platform/data/SqlText.h"
#include "platform/ui/CategoryField.h"
#include "platform/ui/ChoiceFields.h"
#include "platform/ui/Fields.h"

#include <QGroupBox>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace host {

namespace {

const QStringList singleCommands = {u"actSalva"_s, {}, u"actChiudi"_s};

// Lives as long as the connection, which outlives the form.
data::DataSet *recordOf(const RegisterSpec &spec, data::Connection &connection)
{
    auto *record = new data::DataSet(&connection);
    record->setCommandText(u"SELECT * FROM %1 WHERE %2 = :%2"_s.arg(spec.table, spec.key));
    record->setUpdateTarget({spec.table, spec.key});
    return record;
}

ui::EntryFormSpec formOf(const RegisterSpec &spec)
{
    return {.caption = spec.isSingle() ? spec.caption : u"Inserimento / Modifica "_s + spec.lowerCaption(),
            .menuCaption = u">%1<"_s.arg(spec.caption),
            .key = spec.key,
            .generator = spec.generator(),
            .closing = ui::ClosingQuestion::SaveFirst};
}

} // namespace

RegisterEntry::RegisterEntry(const RegisterSpec &spec, data::Connection &connection, QWidget *owner)
    : EntryForm(formOf(spec), recordOf(spec, connection), owner)
    , spec_(spec)
{
    record().setParent(this);
    setObjectName(u"Inserimento"_s + spec.name);
    setOpeningSize(spec.openingSize);
    // Codes, postcodes and telephone numbers stay readable.
    setMinimumSize(spec.openingSize.width() * 5 / 6, 0);
    mainLayout()->addWidget(pages(), 1);
    for (const RegisterGroup &group : spec.groups)
        createGroup(group);
    declareChecks();
}

void RegisterEntry::finish()
{
    for (QWidget *page : std::as_const(pagesByTitle_)) {
        if (!page->findChild<QPlainTextEdit *>() && !page->findChild<QAbstractItemView *>(u"list"_s))
            qobject_cast<QVBoxLayout *>(page->layout())->addStretch();
    }
    start(spec_.isSingle() ? singleCommands : ui::standardCommands);
}

void RegisterEntry::createGroup(const RegisterGroup &group)
{
    QWidget *&page = pagesByTitle_[group.page];
    if (!page) {
        page = addPage(u' ' + group.page + u' ');
        new QVBoxLayout(page);
    }
    QWidget *box = group.title.isEmpty() ? new QWidget(page) : new QGroupBox(u' ' + group.title + u' ', page);
    page->layout()->addWidget(box);
    auto *grid = new QGridLayout(box);
    if (group.title.isEmpty())
        grid->setContentsMargins(0, 0, 0, 0);
    bool anyWide = false;
    for (const RegisterField &spec : group.fields) {
        ui::Field *field = createField(spec, box);
        place(grid, field, spec.row, spec.position, spec.span);
        // A control with a limited width stays beside its label, the others share what is left.
        const bool wide = field->widget()->maximumWidth() == QWIDGETSIZE_MAX;
        if (wide)
            grid->setColumnStretch(spec.position * 2 + 1, 1);
        else
            grid->setAlignment(field->widget(), Qt::AlignLeft | Qt::AlignVCenter);
        anyWide = anyWide || wide;
        if (spec.kind == RegisterField::Kind::Memo)
            grid->setRowStretch(spec.row, 1);
        if (!focusProxy())
            setFocusProxy(field->widget());
    }
    // Where nothing takes what is left, it goes behind the controls instead of between them and their labels.
    if (!anyWide)
        grid->setColumnStretch(grid->columnCount(), 1);
}

ui::Field *RegisterEntry::createField(const RegisterField &field, QWidget *parent)
{
    using Kind = RegisterField::Kind;
    switch (field.kind) {
    case Kind::Text: {
        auto *text = declare(new ui::TextField({.name = field.name,
                                                .label = field.label,
                                                .column = field.column,
                                                .maxLength = field.maxLength,
                                                .upperCase = field.upperCase},
                                               parent));
        texts_.insert(field.column, text);
        return text;
    }
    case Kind::Memo:
        return declare(new ui::MemoField({field.name, field.label, field.column}, parent));
    case Kind::Amount:
    case Kind::Quantity:
        return declare(new ui::DecimalField({.name = field.name,
                                             .label = field.label,
                                             .column = field.column,
                                             .prefix = field.kind == Kind::Amount ? GetCurrencyPrefix() : QString()},
                                            parent));
    case Kind::Lookup: {
        auto *lookup = declare(new ui::DropDownField(
            {.name = field.name, .label = field.label, .keyColumn = field.column, .sql = field.lookupSql}, field.column,
            u"TESTO"_s, parent));
        lookups_.insert(field.column, lookup);
        return lookup;
    }
    case Kind::Flag:
        return declare(new ui::FlagField({field.name, field.flagCaption, field.column}, parent));
    case Kind::Category:
        break;
    }
    return declare(new ui::CategoryField(
        {.name = field.name, .label = field.label, .column = field.column, .categories = field.categories},
        connection(), parent));
}

QString RegisterEntry::textOf(const QString &column) const
{
    return texts_.value(column)->text().trimmed();
}

void RegisterEntry::declareChecks()
{
    for (const auto &required : std::as_const(spec_.required))
        refuseIf([this, column = required.first] { return textOf(column).isEmpty(); }, required.second);
    if (!spec_.uniqueColumn.isEmpty())
        refuseIf([this] { return isDuplicate(); }, spec_.duplicateText);
    if (spec_.namedByText)
        refuseIf([this] { return renamesUsedRecord(); },
                 u"Il codice non si può cambiare: documenti o movimenti di magazzino\n\rlo riportano già."_s);
    declareDoubts();
}

void RegisterEntry::declareDoubts()
{
    if (!spec_.expected.isEmpty())
        askIf(
            [this] {
                return std::any_of(spec_.expected.cbegin(), spec_.expected.cend(),
                                   [this](const QString &column) { return lookups_.value(column)->key() < 1; });
            },
            spec_.missingQuestion);
    for (const RegisterGroup &group : std::as_const(spec_.groups)) {
        for (const RegisterField &field : group.fields) {
            if (!field.isRight)
                continue;
            askIf(
                [this, column = field.column, isRight = field.isRight] {
                    const QString text = textOf(column);
                    return !text.isEmpty() && !isRight(text);
                },
                u"%1: il carattere di controllo non corrisponde.\n\rSalvare comunque?"_s.arg(field.label));
        }
    }
}

bool RegisterEntry::isDuplicate() const
{
    return !connection()
                .run(u"SELECT FIRST 1 1 AS NUM FROM %1 WHERE UPPER(%2) = %3 AND %4 <> ?"_s.arg(
                         spec_.table, spec_.uniqueColumn, data::inCapitals(), spec_.key),
                     {data::searchedText(textOf(spec_.uniqueColumn)), storedKey()})
                .isEmpty();
}

bool RegisterEntry::renamesUsedRecord() const
{
    return storedKey() > 0 && textOf(spec_.uniqueColumn) != loadedText_ &&
           !data::usesOf(spec_.table, storedKey(), connection()).isEmpty();
}

void RegisterEntry::resetDetails()
{
    loadedText_.clear();
    if (!spec_.codePrefix.isEmpty())
        texts_.value(spec_.uniqueColumn)
            ->setText(GetCustomCodice(connection().lastGeneratorValue(spec_.generator()) + 1, spec_.codePrefix));
}

// The other registers may have changed since the form was opened.
void RegisterEntry::clearDetails()
{
    withoutTracking([this] {
        for (ui::DropDownField *lookup : std::as_const(lookups_))
            lookup->fill(connection());
    });
}

void RegisterEntry::loadDetails()
{
    if (!spec_.uniqueColumn.isEmpty())
        loadedText_ = texts_.value(spec_.uniqueColumn)->text();
}

void RegisterEntry::recordSaved()
{
    if (!spec_.uniqueColumn.isEmpty())
        loadedText_ = textOf(spec_.uniqueColumn);
}

// Blanks around a code cannot be seen, and others look for it without them.
void RegisterEntry::writeComputed(data::DataSet &record) const
{
    if (!spec_.uniqueColumn.isEmpty())
        record.setValue(spec_.uniqueColumn, textOf(spec_.uniqueColumn));
}

void RegisterEntry::recordMissing()
{
    core::warn(this, u"Il record non esiste più: un'altra postazione l'ha eliminato."_s);
}

bool RegisterEntry::deleteStored(int id)
{
    return deleteRegisterRecord(spec_, id, connection(), this);
}

} // namespace host
