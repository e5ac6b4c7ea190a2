#include "platform/ui/EntryForm.h"

#include "platform/core/Clock.h"
#include "platform/core/Log.h"
#include "platform/core/Messages.h"
#include "platform/core/Translation.h"
#include "platform/ui/Caption.h"
#include "platform/ui/Dialogs.h"
#include "platform/ui/Drafts.h"
#include "platform/ui/Look.h"
#include "platform/ui/PageArea.h"
#include "platform/ui/TypedEdit.h"

#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace ui {

namespace {

const QString savedLine = u"lblSalvato"_s;

void tellSaved(const EntryForm &form, const QString &text)
{
    form.findChild<QLabel *>(savedLine, Qt::FindDirectChildrenOnly)->setText(text);
}

} // namespace

EntryForm::EntryForm(const EntryFormSpec &spec, data::DataSet *record, QWidget *parent)
    : ChildForm(spec.caption, spec.menuCaption, parent)
    , spec_(spec)
    , session_(record)
    , layout_(new QVBoxLayout(this))
    , pages_(named(u"pages"_s, new QTabWidget(this)))
{
    pages_->setTabBarAutoHide(true);
    pages_->setDocumentMode(true);
    bar_ = newToolBar(u"tBarStandard"_s);
    auto *savedAt = named(savedLine, new QLabel(this));
    auto *line = new QHBoxLayout;
    line->addWidget(bar_, 1);
    line->addWidget(savedAt);
    layout_->addLayout(line);
    declareCommands();
}

EntryForm::~EntryForm()
{
    if (Drafts *drafts = Drafts::current())
        drafts->leave(*this);
}

void EntryForm::declareCommands()
{
    const QList<Command> commands = {
        {u"actNuovo"_s, u"Nuovo"_s, [this] { startNewAsking(); }, Icon::New, QKeySequence(u"Ctrl+N"_s)},
        {u"actElimina"_s, u"Elimina"_s, [this] { deleteShown(); }, Icon::Delete, QKeySequence(u"Ctrl+D"_s)},
        {u"actSalva"_s, u"Salva"_s, [this] { saveRecord(); }, Icon::Save, QKeySequence(u"Ctrl+S"_s)},
        {u"actChiudi"_s, u"Chiudi"_s, [this] { closeForm(); }, Icon::Close, QKeySequence(u"Ctrl+W"_s)},
        {u"actRecupera"_s, core::tr("Recupera"), [this] { bringBack(); }, Icon::Recover, QKeySequence(u"Ctrl+R"_s),
         core::tr("Riporta nella maschera i dati non salvati che sono stati abbandonati per ultimi")}};
    for (const Command &command : commands)
        addCommand(command);
}

void EntryForm::start(const QStringList &commands)
{
    session_.setDetails(details());
    for (int i = 0; i < pages_->count(); ++i)
        alignCaptionsOf(qobject_cast<PageArea *>(pages_->widget(i))->widget());
    placeCommands(bar_, commands + QStringList{QString(), u"actRecupera"_s});
    Recovery *recovery = &Recovery::of(connection());
    const auto follow = [this, recovery] { command(u"actRecupera"_s)->setEnabled(recovery->holds(objectName())); };
    connect(recovery, &Recovery::changed, this, follow);
    follow();
    // The pages are as large as their contents where the main window has room for that.
    setOpeningSize(sizeHint().expandedTo(layout_->totalSizeHint()));
    setMinimumSize(minimumSize().expandedTo(minimumSizeHint()));
    startNew();
}

data::Connection &EntryForm::connection() const
{
    return *record().connection();
}

void EntryForm::SetModified(bool value)
{
    modified_ = value;
    if (value)
        setUnsaved(true);
    tellSaved(*this, {});
    command(u"actSalva"_s)->setEnabled(value);
    Q_EMIT recordNameChanged();
}

void EntryForm::SetTyping(bool typing)
{
    command(u"actSalva"_s)->setEnabled(modified_ || typing);
}

void EntryForm::addField(Field *field)
{
    fields_.append(field);
    connect(field, &Field::edited, this, &EntryForm::DataChanged);
}

void EntryForm::refuseIf(std::function<bool()> fails, const QString &text)
{
    checks_.append({std::move(fails), text, false});
}

void EntryForm::refuseFirstIf(std::function<bool()> fails, const QString &text)
{
    firstChecks_.append({std::move(fails), text, false});
}

void EntryForm::askIf(std::function<bool()> doubtful, const QString &text)
{
    checks_.append({std::move(doubtful), text, true});
}

QWidget *EntryForm::addPage(const QString &title)
{
    auto *area = new PageArea(pages_);
    pages_->addTab(area, title);
    return area->widget();
}

void EntryForm::place(QGridLayout *grid, Field *field, int row, int position, int span)
{
    placeField(grid, field, row, position, span);
}

QHBoxLayout *EntryForm::marked(QWidget *widget)
{
    auto *line = new QHBoxLayout;
    line->setSpacing(Look::lines);
    line->addWidget(requiredMark(widget->parentWidget()));
    line->addWidget(widget, 1);
    return line;
}

void EntryForm::withoutTracking(const std::function<void()> &body)
{
    ++untracked_;
    // The counter must come down even when `body` throws, or no later change would be noticed.
    const auto restore = qScopeGuard([this] { --untracked_; });
    body();
}

void EntryForm::DataChanged()
{
    if (untracked_ == 0)
        SetModified(true);
}

bool EntryForm::continueWithoutSaving()
{
    return !Modified() || core::confirmLoss(this, u"Ci sono delle modifiche non salvate.\n\rContinuare comunque?"_s);
}

void EntryForm::startEmpty()
{
    withoutTracking([this] {
        pages_->setCurrentIndex(0);
        for (Field *field : std::as_const(fields_))
            field->clear();
        clearDetails();
    });
    session_.state() = {};
    SetModified(false);
    setUnsaved(false);
}

void EntryForm::startNew()
{
    const WaitCursor wait;
    startEmpty();
    withoutTracking([this] { resetDetails(); });
    Q_EMIT recordNameChanged();
}

void EntryForm::startNewAsking()
{
    if (!finishEditing() || !mayStartNew() || !continueWithoutSaving())
        return;
    keepGivenUp();
    startNew();
}

bool EntryForm::startCopy()
{
    if (!continueWithoutSaving())
        return false;
    keepGivenUp();
    session_.state() = {};
    SetModified(true);
    return true;
}

void EntryForm::openRecord(int id)
{
    if (finishEditing() && continueWithoutSaving())
        showInstead(id);
}

void EntryForm::goToRecord(int id)
{
    if (finishEditing() && mayLeave(IfNotSaved::Stay))
        showInstead(id);
}

void EntryForm::showInstead(int id)
{
    keepGivenUp();
    const WaitCursor wait;
    try {
        load(id);
    } catch (...) {
        // Half of a record must not stay: saving it would take the other half from the database.
        startEmpty();
        throw;
    }
}

void EntryForm::load(int id)
{
    clearDetails();
    if (!session_.read(id, [this] { readFurther(); })) {
        recordMissing();
        return;
    }
    withoutTracking([this] {
        pages_->setCurrentIndex(0);
        for (Field *field : std::as_const(fields_))
            field->load(record());
        loadDetails();
    });
    SetModified(false);
    setUnsaved(false);
}

void EntryForm::deleteShown()
{
    if (!finishEditing())
        return;
    // A key without a row of ours must never be deleted: it may have become another workstation's record.
    const bool wasStored = storedKey() >= 0;
    if (!wasStored)
        keepGivenUp();
    else if (!deleteStored(storedKey()))
        return;
    startNew();
    if (wasStored)
        Q_EMIT stored(record().updateTarget().table);
}

bool EntryForm::passes(const QList<Check> &checks)
{
    for (const Check &check : checks) {
        if (!check.applies())
            continue;
        if (check.question) {
            if (!core::confirm(this, check.text))
                return false;
            continue;
        }
        core::warn(this, check.text);
        return false;
    }
    return true;
}

bool EntryForm::passesChecks()
{
    return passes(firstChecks_) && everythingReadable(this) && passes(checks_);
}

bool EntryForm::saveRecord()
{
    bool saved = false;
    core::guarded(this, [this, &saved] { saved = finishEditing() && passesChecks() && save(); });
    return saved;
}

bool EntryForm::confirmsOverwriting()
{
    const QString question =
        session_.foundNone()
            ? core::tr("%1 è stato eliminato nel frattempo.\n\rRegistrarlo di nuovo?")
            : core::tr("%1 è stato modificato da un'altra postazione dopo l'apertura.\n\rSovrascrivere?");
    return core::confirmLoss(this, question.arg(spec_.subject));
}

bool EntryForm::attempt(data::RecordSession::Expected expected)
{
    const WaitCursor wait;
    prepareSave();
    const auto fill = [this](data::DataSet &row) {
        for (const Field *field : std::as_const(fields_))
            field->write(row);
        writeComputed(row);
    };
    return session_.write(expected, fill, [this] { writeDetails(); });
}

// Somebody else's change is asked about between two attempts, outside of both transactions. False when the user does
// not want to overwrite it.
bool EntryForm::write()
{
    using Expected = data::RecordSession::Expected;
    if (attempt(Expected::Known))
        return true;
    if (!confirmsOverwriting())
        return false;
    if (!attempt(Expected::Found))
        throw core::Error(core::tr("Il record è cambiato di nuovo prima del salvataggio."));
    return true;
}

// The transaction is rolled back by now.
void EntryForm::tellFailure(const std::exception &error)
{
    core::logError(u"salvataggio "_s + QString::fromLatin1(metaObject()->className()), error);
    session_.writeFailed();
    const auto *refused = dynamic_cast<const SaveRefused *>(&error);
    core::showError(this, refused ? refused->text() : u"Si è verificato un errore durante il salvataggio dei dati!"_s);
}

bool EntryForm::save()
{
    try {
        if (!write())
            return false;
    } catch (const std::exception &error) {
        tellFailure(error);
        if (spec_.afterFailedSave == AfterFailedSave::AsAfterSave) {
            SetModified(false);
            SetNewRecord(false);
        }
        return false;
    }
    setUnsaved(false);
    Recovery::of(connection()).forget(objectName());
    for (Field *field : std::as_const(fields_))
        field->written();
    recordSaved();
    SetModified(false);
    SetNewRecord(false);
    tellSaved(*this, core::tr("Salvato alle %1").arg(core::now().toString(u"HH:mm"_s)));
    Q_EMIT stored(record().updateTarget().table);
    return true;
}

bool EntryForm::saveFirst(IfNotSaved ifNotSaved)
{
    if (!Modified())
        return true;
    const core::Answer answer = core::showMessage({u"Conferma"_s,
                                                   u"Salvare le modifiche al record corrente\n\rprima di continuare?"_s,
                                                   core::MessageIcon::Question,
                                                   {core::Answer::Yes, core::Answer::No, core::Answer::Cancel},
                                                   this});
    // Yes closes whether or not the save succeeded; this is intended.
    if (answer == core::Answer::Yes)
        return saveRecord() || ifNotSaved == IfNotSaved::LeaveAllTheSame;
    return answer != core::Answer::Cancel;
}

bool EntryForm::mayLeave(IfNotSaved ifNotSaved)
{
    return spec_.closing == ClosingQuestion::SaveFirst ? saveFirst(ifNotSaved) : continueWithoutSaving();
}

bool EntryForm::mayClose()
{
    if (!finishEditing())
        return false;
    if (!mayLeave(IfNotSaved::LeaveAllTheSame))
        return false;
    keepGivenUp();
    // A form that only hides must not come back with what was given up.
    if (Modified() && onClose() == OnClose::Hide)
        startNew();
    setUnsaved(false);
    return true;
}

} // namespace ui
