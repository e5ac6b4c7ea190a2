#pragma once
#include "platform/ui/LineEdit.h"
#include "platform/ui/ResultGrid.h"

#include <QMdiArea>
#include <QWidget>

namespace host {

/// The page of the keys: those that work everywhere and those of the child window that is the active one, read from
/// what serves them whenever the page is looked at. Its rows can be searched, copied and exported.
class KeysWindow : public QWidget
{
    Q_OBJECT

public:
    /// Tells the keys of `main` and of the active window of `area`.
    KeysWindow(QWidget &main, const QMdiArea &area);

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void refresh();

    QWidget &main_;
    const QMdiArea &area_;
    ui::LineEdit *wanted_;
    ui::ResultGrid *keys_;
};

} // namespace host
