// What stands in the form unsaved: kept as a draft, brought back after it was given up.
#include "platform/ui/EntryForm.h"

#include "platform/core/Lists.h"
#include "platform/ui/Drafts.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace ui {

void EntryForm::setUnsaved(bool unsaved)
{
    unsaved_ = unsaved;
    Drafts *drafts = Drafts::current();
    if (!drafts)
        return;
    if (unsaved)
        drafts->note(*this);
    else
        drafts->drop(*this);
}

FormContents EntryForm::contents() const
{
    return {.record = session_.state(), .fields = core::mapped(fields_, &Field::state), .details = detailState()};
}

void EntryForm::show(const FormContents &contents)
{
    withoutTracking([this, &contents] {
        for (qsizetype i = 0; i < fields_.size(); ++i)
            fields_[i]->restore(contents.fields.value(i));
        restoreDetails(contents.details);
    });
    session_.state() = contents.record;
    SetModified(true);
}

// Fields are known by their control: a draft may be older than the program.
QStringList EntryForm::fieldNames() const
{
    QStringList names;
    QHash<QString, int> counts;
    static const QRegularExpression parts(u"^(txt|lbl|chk)"_s);
    for (const Field *field : fields_) {
        const QWidget *control = field->widget();
        if (control && control->objectName().isEmpty())
            control = control->findChildren<QWidget *>(parts).value(0);
        const QString name = control ? control->objectName() : QString();
        names.append(u"%1.%2"_s.arg(name).arg(counts[name]++));
    }
    return names;
}

std::optional<Draft> EntryForm::draft() const
{
    const auto title = draftTitle();
    if (!title)
        return {};
    const FormContents all = contents();
    const QStringList names = fieldNames();
    Draft draft{.action = commandName_, .title = *title, .record = all.record, .fields = {}, .details = all.details};
    for (qsizetype i = 0; i < names.size(); ++i)
        draft.fields.insert(names[i], all.fields[i]);
    return draft;
}

void EntryForm::resume(const Draft &draft)
{
    if (draft.record.storedKey() >= 0)
        openRecord(draft.record.storedKey());
    else
        startNew();
    FormContents all = contents();
    const QStringList names = fieldNames();
    for (qsizetype i = 0; i < names.size(); ++i)
        all.fields[i] = draft.fields.value(names[i], all.fields[i]);
    all.record = draft.record;
    all.details = draft.details;
    show(all);
}

void EntryForm::keepGivenUp()
{
    if (unsaved_)
        Recovery::of(connection()).keep(objectName(), contents());
}

// What stands in the form unsaved takes the place of what is brought back, so that nothing is lost.
void EntryForm::bringBack()
{
    Recovery &recovery = Recovery::of(connection());
    if (!finishEditing() || !recovery.holds(objectName()))
        return;
    const FormContents current = contents();
    const bool exchange = unsaved_;
    show(recovery.contents(objectName()));
    if (exchange)
        recovery.keep(objectName(), current);
    else
        recovery.forget(objectName());
}

} // namespace ui
