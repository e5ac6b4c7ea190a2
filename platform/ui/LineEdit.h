#pragma once
#include <QLineEdit>

namespace ui {

/// A one-line input. What is pasted, dropped or typed into it becomes a clean line (core::pastedLine), and its length
/// limit cuts between characters. What the program sets stays as it is.
class LineEdit : public QLineEdit
{
    Q_OBJECT

public:
    explicit LineEdit(QWidget *parent = nullptr);
    /// A line that holds `text`.
    LineEdit(const QString &text, QWidget *parent);

    /// A point that is typed becomes a comma, for numbers; a pasted one stays.
    void setPointTypesComma(bool on) { pointTypesComma_ = on; }

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void inputMethodEvent(QInputMethodEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    void pasteClean();
    void insertWhole(const QString &text);
    void cleanUp();

    bool pointTypesComma_ = false;
};

} // namespace ui
