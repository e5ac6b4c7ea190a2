#pragma once
#include "platform/ui/Controls.h"

#include <QAction>
#include <QMenu>
#include <QPushButton>
#include <QToolBar>
#include <QWidget>

namespace ui {

/// A command of a form: its name, caption, what it runs and how it is reached.
struct Command
{
    QString name; ///< object name of the action, "actSalva"
    QString caption;
    std::function<void()> run;
    Icon icon = Icon::Open;
    QKeySequence shortcut;
    QString hint; ///< tool tip; the caption when empty
};

/// What becomes of a form when it closes.
enum class OnClose
{
    Free, ///< it goes, and is made anew when it is opened again
    Hide  ///< it comes back as it was left, with filters, rows and place
};

/// A child window of the host's main window. It brings a menu of its own, which the host shows while the window is the
/// active one. Unless told otherwise it is freed when it closes.
class ChildForm : public QWidget
{
    Q_OBJECT

public:
    /// `caption` in the title bar, `menuCaption` over the menu that stands in the host's menu bar.
    ChildForm(const QString &caption, const QString &menuCaption, QWidget *parent);

    /// The menu of the window; never null.
    QMenu *formMenu() const { return menu_; }
    /// A command of the form by its name; null when it has none of that name.
    QAction *command(const QString &name) const;
    /// Closes the window as its close button does.
    void closeForm();

    /// The record that the window shows, "D.d.T. 24/2026 · Rossi S.r.l.", to be told from others of its kind; empty
    /// when it shows none.
    virtual QString recordName() const { return {}; }
    /// Is there something that was typed and not saved?
    virtual bool isUnsaved() const { return false; }

    /// The size at which the form opens, unless the main window is smaller.
    QSize sizeHint() const override { return openingSize_; }

Q_SIGNALS:
    /// What recordName() or isUnsaved() return may have changed.
    void recordNameChanged();

protected:
    void setOpeningSize(QSize size) { openingSize_ = size; }
    void setOnClose(OnClose onClose) { setAttribute(Qt::WA_DeleteOnClose, onClose == OnClose::Free); }
    OnClose onClose() const { return testAttribute(Qt::WA_DeleteOnClose) ? OnClose::Free : OnClose::Hide; }
    /// Makes an action of `command` that is reached by its shortcut inside this form; errors it throws are shown.
    QAction *addCommand(const Command &command);
    /// Puts commands on `bar` and into the form's menu, there in the order of `menuNames` when it differs; an empty
    /// name makes a separator.
    void placeCommands(QToolBar *bar, const QStringList &names, const QStringList &menuNames = {});
    /// A push button that runs a command from inside the form.
    static QPushButton *commandButton(QAction *action, const QString &name, QWidget *parent);
    QToolBar *newToolBar(const QString &name);

    /// May the window close? Asks the user where something would be lost.
    virtual bool mayClose() { return true; }
    void closeEvent(QCloseEvent *event) override;

private:
    QMenu *menu_;
    QSize openingSize_ = {900, 560};
};

} // namespace ui
