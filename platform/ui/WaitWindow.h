#pragma once
#include <QWidget>

namespace ui {

/// A small window that tells what the program is doing before there is any other one. It is on the screen when the
/// constructor returns, so that whatever follows may take its time; with it comes the hourglass.
class WaitWindow : public QWidget
{
    Q_OBJECT

public:
    /// Shows `text` in the middle of the screen and returns once it is painted, after half a second at most.
    explicit WaitWindow(const QString &text);
    ~WaitWindow() override;
};

} // namespace ui
