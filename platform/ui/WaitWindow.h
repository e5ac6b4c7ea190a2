#pragma once
#include <QWidget>

namespace ui {

/// A small window that tells what the program is doing before there is any other one. It is on the screen when the
/// constructor returns, so that whatever follows may take its time; with it comes the hourglass.
class WaitWindow : public QWidget
{
    Q_OBJECT

public:
    explicit WaitWindow(const QString &text);
    ~WaitWindow() override;
};

} // namespace ui
