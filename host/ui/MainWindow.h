#pragma once
#include "host/Corvane3Impl.h"

#include "host/start/Opening.h"

#include <QMainWindow>

#include <QLabel>
#include <QMdiSubWindow>
#include <QToolButton>
#include <optional>

namespace host {

class ChildArea;

/// The host's main form: its menus and common tool bars, into which the modules merge theirs, and the area of their
/// child windows. The database connection is a child of this window; modules find it there.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    /// `settingsFile` keeps the window's geometry; without one the window has its usual size on any screen.
    explicit MainWindow(const QString &settingsFile);
    ~MainWindow() override;

    /// The one main window; null before it was made and after it went.
    static MainWindow *instance();

    /// One of the tool bars into which modules merge their buttons; never null.
    QToolBar *commonToolBar(TKxCommonToolBars kind) const;
    /// Shows `form` in a child window, or brings its window to the front.
    void showChild(QWidget *form);
    /// Where the child windows lie.
    QMdiArea &area() const;
    /// Who is logged in and which database is open, for title and status bar.
    void showSession(const QString &user, const QString &database);

    /// Closes all child windows, which ask what becomes of unsaved changes. False when one stays open.
    bool closeChildren();
    /// Ends the session so that another database is opened; the user may keep the window, and the session, because of
    /// unsaved changes.
    void switchTo(const Opening &database);
    /// The database to open once the window is closed; nothing when the program ends with it.
    const std::optional<Opening> &nextDatabase() const { return next_; }

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void createMenus();
    void createToolBars();
    void childActivated(QMdiSubWindow *window);
    QToolButton *createArrangement();
    void keepArrangement();
    void restoreArrangement();
    void listWindows();
    void fitScreen();
    void restoreLayout();
    void saveLayout();
    void showKeys();
    void about();

    ChildArea *area_;
    QAction *free_ = nullptr; // windows lie freely instead of being tabs
    QMenu *windowMenu_ = nullptr;
    QMenu *childMenu_ = nullptr; // of the active child window, shown in the menu bar
    QList<QToolBar *> commonToolBars_;
    QLabel *userLabel_;
    QLabel *databaseLabel_;
    QString user_;
    QString database_; // as the user sees it
    QString settingsFile_;
    std::optional<Opening> next_;
};

} // namespace host
