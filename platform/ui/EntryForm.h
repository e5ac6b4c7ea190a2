#pragma once
#include "platform/core/Error.h"
#include "platform/core/Translation.h"
#include "platform/data/Connection.h"
#include "platform/data/DataSet.h"
#include "platform/ui/ChildForm.h"
#include "platform/ui/Draft.h"
#include "platform/ui/Field.h"
#include "platform/ui/Recovery.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QTabWidget>

namespace ui {

/// Thrown inside a save that something the user should know has ended; its text is shown.
class SaveRefused : public core::Error
{
public:
    using Error::Error;
};

/// What closing a form with unsaved changes asks.
enum class ClosingQuestion
{
    ContinueAnyway, ///< Yes/No: lose the changes?
    SaveFirst       ///< Yes/No/Cancel: save them?
};

/// What the flags say after a save that the database refused.
enum class AfterFailedSave
{
    KeepFlags,  ///< the record stays new and modified
    AsAfterSave ///< neither new nor modified: the next save takes the edit path
};

struct EntryFormSpec
{
    QString caption;
    QString menuCaption;
    ClosingQuestion closing = ClosingQuestion::ContinueAnyway;
    AfterFailedSave afterFailedSave = AfterFailedSave::KeepFlags;
    QString subject = core::tr("Il record"); ///< what questions about the record call it
};

/// The commands of a form on one record, in their usual order.
inline const QStringList standardCommands = {QStringLiteral("actNuovo"),
                                             QStringLiteral("actElimina"),
                                             QStringLiteral("actSalva"),
                                             {},
                                             QStringLiteral("actChiudi")};

/// The form in which one record is entered or changed: fields are declared once, the base clears, loads, validates,
/// saves and tracks changes. Declaration order is screen, tab and write order.
///
/// A save is one transaction. It looks first whether what is stored is still what the form loaded or wrote last; when
/// somebody else deleted or changed it, nothing is written before the user was asked. Loading by program never marks
/// the form modified.
///
/// Contents that are given up unsaved, by "Nuovo", "Elimina" on a new record, opening another one or closing, are kept
/// until the form's next save: "Recupera" brings them back.
class EntryForm : public ChildForm
{
    Q_OBJECT

public:
    /// The form on the current row of `record`, a data set of whoever opens the form.
    EntryForm(const EntryFormSpec &spec, data::DataSet *record, QWidget *parent);
    ~EntryForm() override;

    /// Key of the record shown; -1 for a new one that was never given a key.
    int IdRecord() const { return session_.state().id; }
    /// Takes `id` for the key of what is shown; loads nothing.
    void SetIdRecord(int id) { session_.state().id = id; }
    /// True while the record has never been saved.
    bool NewRecord() const { return session_.state().isNew; }
    /// Takes what is shown for a record that was never saved, or for one that was.
    void SetNewRecord(bool value) { session_.state().isNew = value; }
    /// True while there are unsaved changes; "Salva" is enabled exactly then.
    bool Modified() const { return modified_; }
    /// Sets the flag, and with it the command "Salva".
    void SetModified(bool value);
    /// Something is being typed that is no change yet, in a cell of a grid: "Salva" takes it over and saves.
    void SetTyping(bool typing);
    bool isUnsaved() const override { return Modified(); }

    /// Empties the form for a new record; asks nothing.
    void startNew();
    /// Loads a record after the question about unsaved changes; without such a record the form stays as it was. When
    /// the database fails the form is left empty, for a new record, and the error is thrown.
    void openRecord(int id);
    /// Shows another record in the place of this one, after the question that closing asks. What could not be saved
    /// then stays.
    void goToRecord(int id);
    /// Validates and saves; true when it was saved. Errors are shown, never thrown.
    bool saveRecord();
    /// The command "Nuovo": asks about unsaved changes first.
    void startNewAsking();

    /// The command that opens the form.
    void setCommandName(const QString &name) { commandName_ = name; }
    /// Does it hold anything typed that no save has stored?
    bool holdsUnsaved() const { return unsaved_; }
    /// What stands in the form, to be gone on with in another session; nothing for a form without draftTitle().
    std::optional<Draft> draft() const;
    /// Goes on with a draft of this kind of form, which must hold nothing unsaved. A stored record is opened, and what
    /// was typed laid over it; whether it is still the one that was typed into is looked at by the save.
    void resume(const Draft &draft);

public Q_SLOTS:
    /// Every field's change ends here.
    void DataChanged();

Q_SIGNALS:
    /// A record was saved to or deleted from `table`; the form is done with it.
    void stored(const QString &table);

protected:
    // Declaration

    template <typename SomeField>
    SomeField *declare(SomeField *field)
    {
        addField(field);
        return field;
    }
    void addField(Field *field);
    /// Refuses a save with "Attenzione" and `text` while `fails()` is true. Checks run in the order of their
    /// declaration.
    void refuseIf(std::function<bool()> fails, const QString &text);
    /// The same before anything else, even before dates and numbers that cannot be read are refused: for rights.
    void refuseFirstIf(std::function<bool()> fails, const QString &text);
    /// Asks "Conferma" with `text` while `doubtful()` is true; No ends the save.
    void askIf(std::function<bool()> doubtful, const QString &text);

    /// A page of the form; it scrolls where the window is too small for it.
    QWidget *addPage(const QString &title);
    QTabWidget *pages() const { return pages_; }
    QToolBar *standardBar() const { return bar_; }
    /// Ends the declaration: puts `commands` on tool bar and menu (an empty name is a separator) and starts a new
    /// record.
    void start(const QStringList &commands);
    QVBoxLayout *mainLayout() const { return layout_; }
    /// Puts label and control of `field` into `grid`; `position` and `span` count label-and-control pairs.
    static void place(QGridLayout *grid, Field *field, int row, int position, int span = 1);
    /// `widget` behind the mark of what a save requires.
    static QHBoxLayout *marked(QWidget *widget);

    // What a form adds

    /// After the fields were cleared for a new record: proposals, rows.
    virtual void resetDetails() {}
    /// Before the form is emptied, and before a record is looked for, so also when it turns out to be missing.
    virtual void clearDetails() {}
    /// The record looked for does not exist.
    virtual void recordMissing() {}
    /// While the record and its details() are read for being loaded, in their transaction: what loadDetails() needs
    /// besides. Not called for a record that is missing.
    virtual void readFurther() {}
    /// After the fields were loaded from the record's row; details() stands on its first row.
    virtual void loadDetails() {}
    /// Ends what is still being typed in a grid. False stops the save.
    virtual bool finishEditing() { return true; }
    /// Before the transaction begins: totals.
    virtual void prepareSave() {}
    /// The data set of the rows that belong to the record; null where there are none. See data::RecordSession.
    virtual data::DataSet *details() const { return nullptr; }
    /// What the form holds besides its fields, for restoreDetails().
    virtual QVariant detailState() const { return {}; }
    virtual void restoreDetails(const QVariant &) {}
    /// What a draft is called among others; nothing for forms that keep none. What goes into a draft lies in a file of
    /// the account as it was typed.
    virtual std::optional<DraftTitle> draftTitle() const { return {}; }
    /// Columns of the record that no field stands for.
    virtual void writeComputed(data::DataSet &) const {}
    /// Inside the transaction, with IdRecord() already the key really given.
    virtual void writeDetails() {}
    /// After the commit.
    virtual void recordSaved() {}
    /// May "Nuovo" start a new record? Tells the user when not.
    virtual bool mayStartNew() { return true; }
    /// Deletes the stored record, with its questions; true when it is gone.
    virtual bool deleteStored(int id) = 0;

    /// Key of the record's row in the database, -1 while it has none. After a failed first save IdRecord() is only a
    /// prediction, and another workstation's record may stand under it by now.
    int storedKey() const { return session_.state().storedKey(); }
    /// While a deleted record is written anew: the key it had before; otherwise -1.
    int replacedKey() const { return session_.replacedKey(); }
    data::DataSet &record() const { return session_.record(); }
    data::Connection &connection() const;
    /// Makes a new record of what is shown, after the question about unsaved changes. False when the user stays.
    bool startCopy();
    /// Runs `body` without its changes marking the form modified.
    void withoutTracking(const std::function<void()> &body);
    bool mayClose() override;

private:
    struct Check
    {
        std::function<bool()> applies;
        QString text;
        bool question = false;
    };

    void declareCommands();
    void setUnsaved(bool unsaved);
    QStringList fieldNames() const;
    void startEmpty();
    void load(int id);
    void showInstead(int id);
    void deleteShown();
    bool continueWithoutSaving();
    FormContents contents() const;
    void show(const FormContents &contents);
    void keepGivenUp();
    void bringBack();
    enum class IfNotSaved
    {
        LeaveAllTheSame,
        Stay
    };
    bool saveFirst(IfNotSaved ifNotSaved);
    bool mayLeave(IfNotSaved ifNotSaved);
    bool passes(const QList<Check> &checks);
    bool passesChecks();
    bool save();
    bool attempt(data::RecordSession::Expected expected);
    bool write();
    void tellFailure(const std::exception &error);
    bool confirmsOverwriting();

    EntryFormSpec spec_;
    data::RecordSession session_;
    QList<Field *> fields_;
    QList<Check> firstChecks_;
    QList<Check> checks_;
    QVBoxLayout *layout_;
    QTabWidget *pages_;
    QToolBar *bar_ = nullptr;
    bool modified_ = false;
    // Something is typed that no save has stored; after a failed save that may be so without modified_.
    bool unsaved_ = false;
    QString commandName_;
    int untracked_ = 0;
};

} // namespace ui
