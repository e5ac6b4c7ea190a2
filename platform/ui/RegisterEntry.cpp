#include "platform/ui/RegisterEntry.h"

#include "platform/core/Format.h"
#include "platform/core/Messages.h"
#include "platform/core/Translation.h"
#include "platform/data/DataSet.h"
#include "platform/data/RecordUses.h"
#include "platform/data/SqlText.h"
#include "platform/ui/CategoryField.h"
#include "platform/ui/ChoiceFields.h"
#include "platform/ui/Fields.h"
#include "platform/ui/FigureField.h"
#include "platform/ui/PageArea.h"
#include "platform/ui/PictureField.h"
#include "platform/ui/RegisterDeletion.h"

#include <QGroupBox>
#include <QSet>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace ui {

namespace {

QString usualDoubt()
{
    return core::tr("il carattere di controllo non corrisponde.");
}

const QStringList singleCommands = {u"actSalva"_s, {}, u"actChiudi"_s};

// Lives as long as the connection, which outlives the form.
data::DataSet *recordOf(const RegisterSpec &spec, data::Connection &connection)
{
    auto *record = new data::DataSet(&connection);
    record->setCommandText(u"SELECT * FROM %1 WHERE %2 = :%2"_s.arg(spec.table, spec.key));
    record->setUpdateTarget({spec.table, spec.key});
    return record;
}

EntryFormSpec formOf(const RegisterSpec &spec)
{
    return {.caption = spec.entryTitle(),
            .menuCaption = spec.entryMenu.isEmpty() ? spec.menuCaption() : spec.entryMenu,
            .closing = spec.habits.closing};
}

void placeBelowLabel(QGridLayout *grid, Field *field)
{
    if (!field->label().isEmpty()) {
        auto *label = new QLabel(field->label(), field->widget()->parentWidget());
        label->setBuddy(field->widget());
        grid->addWidget(label, 0, 0, 1, 2);
    }
    grid->addWidget(field->widget(), 1, 0, 1, 2);
    grid->setRowStretch(1, 1);
}

bool hasLimitedWidth(const Field *field)
{
    return field->widget()->maximumWidth() < QWIDGETSIZE_MAX;
}

ChoiceSpec choiceOf(const RegisterField &field)
{
    ChoiceSpec choice = field.choice;
    choice.name = field.name;
    choice.label = field.label;
    choice.keyColumn = field.column;
    return choice;
}

} // namespace

RegisterEntry::RegisterEntry(const RegisterSpec &spec, data::Connection &connection, QWidget *owner)
    : RegisterEntry(spec, *recordOf(spec, connection), owner)
{
    record().setParent(this);
}

RegisterEntry::RegisterEntry(const RegisterSpec &spec, data::DataSet &record, QWidget *owner)
    : EntryForm(formOf(spec), &record, owner)
    , spec_(spec)
{
    setOnClose(spec.habits.onClose);
    setObjectName(spec.owner + u"Inserimento"_s + spec.name);
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
    start(spec_.isSingle() ? singleCommands : standardCommands);
}

void RegisterEntry::createGroup(const RegisterGroup &group)
{
    QWidget *&page = pagesByTitle_[group.page];
    if (!page) {
        page = narrowColumn(addPage(u' ' + group.page + u' '));
        new QVBoxLayout(page);
    }
    QWidget *box = group.title.isEmpty() ? new QWidget(page) : new QGroupBox(u' ' + group.title + u' ', page);
    page->layout()->addWidget(box);
    auto *grid = new QGridLayout(box);
    if (group.title.isEmpty())
        grid->setContentsMargins(0, 0, 0, 0);
    QSet<int> growing;       // columns of controls that take any width,
    QSet<int> growingBehind; // and the last ones of such that reach over several
    for (const RegisterField &spec : group.fields) {
        if (spec.kind == RegisterField::Kind::Figure && !spec.figures->isKnown())
            continue;
        Field *field = createField(spec, box);
        placeInGroup(group, spec, field, grid);
        if (!hasLimitedWidth(field))
            (spec.span > 1 ? growingBehind : growing).insert((spec.position + spec.span) * 2 - 1);
        if (!focusProxy())
            setFocusProxy(field->widget());
    }
    // What is left must not come between controls of a limited width and their labels.
    if (growing.isEmpty())
        growing = growingBehind.isEmpty() ? QSet<int>{grid->columnCount()} : growingBehind;
    for (const int column : std::as_const(growing))
        grid->setColumnStretch(column, 1);
}

void RegisterEntry::placeInGroup(const RegisterGroup &group, const RegisterField &spec, Field *field, QGridLayout *grid)
{
    const bool isMemo = spec.kind == RegisterField::Kind::Memo;
    if (!spec.help.isEmpty())
        field->widget()->setToolTip(spec.help);
    // A note alone on its page stands below its caption.
    if (isMemo && group.fields.size() == 1)
        placeBelowLabel(grid, field);
    else
        place(grid, field, spec.row, spec.position, spec.span);
    if (hasLimitedWidth(field))
        grid->setAlignment(field->widget(), Qt::AlignLeft | Qt::AlignVCenter);
    if (isMemo)
        grid->setRowStretch(spec.row, 1);
}

Field *RegisterEntry::createField(const RegisterField &field, QWidget *parent)
{
    using Kind = RegisterField::Kind;
    switch (field.kind) {
    case Kind::Text: {
        auto *text = declare(new TextField({.name = field.name,
                                            .label = field.label,
                                            .column = field.column,
                                            .maxLength = field.maxLength,
                                            .upperCase = field.upperCase},
                                           parent));
        // A code is read as a whole.
        if (field.upperCase && hasLimitedWidth(text))
            text->widget()->setMinimumWidth(text->widget()->maximumWidth());
        texts_.insert(field.column, text);
        return text;
    }
    case Kind::Memo:
        return declare(new MemoField({field.name, field.label, field.column}, parent));
    case Kind::Amount:
    case Kind::Quantity:
        return declare(new DecimalField({.name = field.name,
                                         .label = field.label,
                                         .column = field.column,
                                         .prefix = field.kind == Kind::Amount ? core::currencyPrefix : QString()},
                                        parent));
    case Kind::Integer:
        return declare(new IntegerField(
            {.name = field.name, .label = field.label, .column = field.column, .maximum = 999}, parent));
    case Kind::Lookup: {
        auto *lookup = declare(new DropDownField(
            {.name = field.name, .label = field.label, .keyColumn = field.column, .sql = field.lookupSql}, field.column,
            u"TESTO"_s, parent));
        lookups_.insert(field.column, lookup);
        return lookup;
    }
    case Kind::Code:
        return declare(new CodeField({field.name, field.label, field.column, field.codes}, parent));
    case Kind::Choice:
        return declare(new ChoiceField(choiceOf(field), parent));
    case Kind::Flag:
        return declare(new FlagField({field.name, field.flagCaption, field.column}, parent));
    case Kind::Picture:
        return declare(new PictureField({field.name, field.label, field.column}, parent));
    case Kind::Figure:
        return declare(new FigureField({field.name, field.label, field.column, field.figures}, parent));
    case Kind::Category:
        break;
    }
    return declare(new CategoryField(
        {.name = field.name, .label = field.label, .column = field.column, .categories = field.categories},
        connection(), parent));
}

QString RegisterEntry::textOf(const QString &column) const
{
    const QString text = texts_.value(column)->text();
    return spec_.habits.blanksCount ? text : text.trimmed();
}

QString RegisterEntry::recordName() const
{
    QStringList parts;
    for (const auto &required : spec_.required) {
        const TextField *field = texts_.value(required.first);
        if (field && !field->text().trimmed().isEmpty())
            parts.append(field->text().trimmed());
    }
    return spec_.isSingle() ? QString() : parts.join(u" · "_s);
}

void RegisterEntry::declareChecks()
{
    for (const auto &required : std::as_const(spec_.required))
        refuseIf([this, column = required.first] { return textOf(column).isEmpty(); }, required.second);
    if (!spec_.uniqueColumn.isEmpty())
        refuseIf([this] { return isDuplicate(); }, spec_.duplicateText);
    if (spec_.namedByText)
        refuseIf([this] { return renamesUsedRecord(); },
                 core::tr("Il codice non si può cambiare: documenti o movimenti di magazzino\n\rlo riportano già."));
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
                core::tr("%1: %2\n\rSalvare comunque?")
                    .arg(field.label, field.doubt.isEmpty() ? usualDoubt() : field.doubt));
        }
    }
}

bool RegisterEntry::isDuplicate() const
{
    if (spec_.isTaken)
        return spec_.isTaken(textOf(spec_.uniqueColumn), storedKey());
    return connection().finds(u"SELECT FIRST 1 1 AS NUM FROM %1 WHERE UPPER(%2) = %3 AND %4 <> ?"_s.arg(
                                  spec_.table, spec_.uniqueColumn, data::inCapitals(), spec_.key),
                              {data::searchedText(textOf(spec_.uniqueColumn)), storedKey()});
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
            ->setText(core::recordCode(connection().lastGeneratorValue(spec_.generator()) + 1, spec_.codePrefix));
}

// The other registers may have changed since the form was opened.
void RegisterEntry::clearDetails()
{
    withoutTracking([this] {
        for (DropDownField *lookup : std::as_const(lookups_))
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
    if (spec_.habits.tellsMissing)
        core::warn(this, core::tr("Il record non esiste più: un'altra postazione l'ha eliminato."));
}

bool RegisterEntry::deleteStored(int id)
{
    return spec_.deleteFromEntry ? spec_.deleteFromEntry(id, *this)
                                 : deleteRegisterRecord(spec_, id, connection(), this);
}

} // namespace ui
