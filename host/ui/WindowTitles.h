#pragma once
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QObject>

namespace host {

/// Names the record beside the caption of each child window, with a star while it is not saved: in its title and so in
/// the list of windows, and in place of the caption in its tab. The form's own caption stays as it is.
class WindowTitles : public QObject
{
    Q_OBJECT

public:
    /// Serves the windows of `area`, and belongs to it.
    explicit WindowTitles(QMdiArea &area);

    /// From now on `window`, which has its form, is named after what that shows.
    void follow(QMdiSubWindow &window);

private:
    void nameTabs();

    QMdiArea &area_;
};

} // namespace host
