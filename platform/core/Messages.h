#pragma once
#include <QList>
#include <QString>
#include <functional>
#include <optional>

class QObject;

/// The one front of every message box. It knows no widgets, so data services may ask questions through it; the product
/// installs a handler that draws real boxes, the tests one that answers from a script.
namespace core {

enum class MessageIcon
{
    None,
    Information,
    Question,
    Warning,
    Error
};
enum class Answer
{
    Ok,
    Yes,
    No,
    Cancel
};

struct Message
{
    QString title;
    QString text; ///< lines are joined by "\n\r"; the box shows one line break for it
    MessageIcon icon = MessageIcon::None;
    QList<Answer> answers = {Answer::Ok}; ///< buttons from left to right
    QObject *owner = nullptr;             ///< the window the box belongs to; null for the main window
    std::optional<Answer> preset = {};    ///< what Enter alone answers; the first button when empty
};

using MessageHandler = std::function<Answer(const Message &)>;

/// Installs the handler that draws (or scripts) message boxes and returns the one before it.
MessageHandler setMessageHandler(MessageHandler handler);

/// Shows `message` and returns the button pressed; closing the box counts as Cancel, or else as No. Without a handler
/// the text goes to standard error and the last answer of the list, the most careful one, is returned.
Answer showMessage(const Message &message);

/// "Attenzione" with the warning icon: a validation or a missing right.
void warn(QObject *owner, const QString &text);
/// "Errore" with the error icon: a failed operation.
void showError(QObject *owner, const QString &text);
/// "Informazioni" with the information icon.
void inform(QObject *owner, const QString &text);
/// "Conferma" with the question icon and Yes/No; true for Yes.
bool confirm(QObject *owner, const QString &text);
/// The same before something is lost or overwritten: Enter alone answers No.
bool confirmLoss(QObject *owner, const QString &text);
/// "Confermare l'eliminazione?", the question before every deletion of what is stored; Enter alone answers No.
bool confirmDeletion(QObject *owner);

/// Runs `body` and shows the text of any error it throws in an "Errore" box: the outermost layer of every slot.
/// Returns false when an error was shown, or when the user has cancelled what `body` did (core::Cancelled).
bool guarded(QObject *owner, const std::function<void()> &body);

} // namespace core
