#pragma once
#include <QMdiArea>
#include <QTabBar>
#include <QTimer>

namespace host {

class WindowTitles;

/// The area of the main window's child windows. They are tabs that fill it, or lie in it freely. A window that goes
/// leaves the place to the one that was used before it.
class ChildArea : public QMdiArea
{
    Q_OBJECT

public:
    explicit ChildArea(QWidget *parent);

    /// Shows `form` in a child window, or brings its window to the front.
    void showChild(QWidget *form);
    /// Do the windows lie freely?
    bool isFree() const { return viewMode() == SubWindowView; }
    /// Lets the windows lie freely, or makes them tabs.
    void setFree(bool free);

protected:
    void changeEvent(QEvent *event) override;
    bool viewportEvent(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QMdiSubWindow *addChild(QWidget *form);
    QTabBar *tabBar() const;
    void fillWith(QMdiSubWindow *window) const;
    void showTabs();
    void followHidden();
    QMdiSubWindow *lastUsed(const QObject *except = nullptr) const;

    WindowTitles *titles_;
    QTimer hidden_; // a window has hidden
};

} // namespace host
