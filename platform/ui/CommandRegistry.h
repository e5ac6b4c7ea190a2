#pragma once
#include <QHash>
#include <QObject>
#include <QPointer>

#include <QAction>
#include <functional>

class QWidget;

namespace ui {

class EntryForm;

/// What running an action does.
enum class ActionKind
{
    Form,      ///< shows its form as a child window
    Selection, ///< makes its dialog; who asked runs it
    Report,    ///< runs its dialog and, once that was accepted, its routine
    Routine    ///< runs its routine; there is no form
};

/// One command of the program or of a module. Without a factory or a routine it does not exist yet and is disabled.
struct ActionSpec
{
    QString name; ///< of the action object, "actRicercaFornitori"
    QString category;
    QString caption;
    ActionKind kind = ActionKind::Form;
    std::function<QWidget *(QWidget *owner)> create = {};
    QString right = {}; ///< named right that the user needs; empty for none
    /// Report: gets the dialog that was accepted; Routine: the owner of its windows.
    std::function<void(QWidget *)> run = {};
};

/// The actions of the program or of a module, each a QAction, and the forms they open: a form is made at its first
/// use, and an action run twice shows one window. Errors of an action are shown.
class CommandRegistry : public QObject
{
    Q_OBJECT

public:
    struct Surroundings
    {
        QWidget *owner = nullptr;                ///< of forms and message boxes
        std::function<void(QWidget *form)> show; ///< as a child window
        /// Has the current user the right of that name? Tells them when not.
        std::function<bool(const QString &)> grants;
    };

    /// `actionOwner` gets the action objects as children, the registry itself when null.
    CommandRegistry(Surroundings surroundings, QObject *parent, QObject *actionOwner = nullptr);
    /// Takes the forms along: they work on what belongs to the registry's owner.
    ~CommandRegistry() override;

    /// Makes the action of a command and returns it; the spec is kept.
    QAction *add(const ActionSpec &spec);
    /// The one that lives and has an action of that name, of the host or of a module; null for none.
    static CommandRegistry *having(const QString &action);
    /// Null when there is none of the name.
    QAction *action(const QString &name) const;
    /// Runs an action and returns the form it opened; null when it was refused or failed.
    QWidget *openForm(const QString &actionName);
    /// The same for an action that opens an entry form. Throws core::Error when there is none.
    EntryForm &entryForm(const QString &actionName);

Q_SIGNALS:
    /// An action made its form, which is not shown yet.
    void formMade(QWidget *form);

private:
    void execute(const ActionSpec &spec);
    QWidget *formOf(const ActionSpec &spec);

    Surroundings surroundings_;
    QObject *actionOwner_;
    QHash<QString, QPointer<QWidget>> forms_; // by action; a form that was freed clears its pointer by dying
};

} // namespace ui
