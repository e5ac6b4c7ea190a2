#pragma once
#include <QString>

#include <functional>
#include <optional>

class QWidget;

namespace ui {

struct TextPromptSpec
{
    QString title;
    QString label;
    QString initial = {};
    int maxLength = 100;
    bool password = false; ///< what is typed is not shown
    /// Uses the text; the prompt stays open while it returns false or fails, and errors are shown.
    std::function<bool(const QString &text)> accept = {};
};

/// Asks for one line of text in a modal dialog; nothing when the user cancels. Blanks at both ends are cut, except of a
/// password; "OK" waits for at least one character, except of a password.
std::optional<QString> askText(QWidget *owner, const TextPromptSpec &spec);

} // namespace ui
