#include "platform/core/Messages.h"

#include "platform/core/Error.h"
#include "platform/core/Log.h"
#include "platform/core/Progress.h"

#include <cstdio>

using namespace Qt::StringLiterals;

namespace core {

namespace {
MessageHandler handler;
} // namespace

MessageHandler setMessageHandler(MessageHandler newHandler)
{
    return std::exchange(handler, std::move(newHandler));
}

Answer showMessage(const Message &message)
{
    if (handler)
        return handler(message);
    std::fprintf(stderr, "%s: %s\n", qUtf8Printable(message.title), qUtf8Printable(message.text));
    return message.answers.last();
}

void warn(QObject *owner, const QString &text)
{
    showMessage({u"Attenzione"_s, text, MessageIcon::Warning, {Answer::Ok}, owner});
}

void showError(QObject *owner, const QString &text)
{
    showMessage({u"Errore"_s, text, MessageIcon::Error, {Answer::Ok}, owner});
}

void inform(QObject *owner, const QString &text)
{
    showMessage({u"Informazioni"_s, text, MessageIcon::Information, {Answer::Ok}, owner});
}

bool confirm(QObject *owner, const QString &text)
{
    return showMessage({u"Conferma"_s, text, MessageIcon::Question, {Answer::Yes, Answer::No}, owner}) == Answer::Yes;
}

bool confirmLoss(QObject *owner, const QString &text)
{
    return showMessage({u"Conferma"_s, text, MessageIcon::Question, {Answer::Yes, Answer::No}, owner, Answer::No}) ==
           Answer::Yes;
}

bool confirmDeletion(QObject *owner)
{
    return confirmLoss(owner, u"Confermare l'eliminazione?"_s);
}

bool guarded(QObject *owner, const std::function<void()> &body)
{
    try {
        body();
        return true;
    } catch (const Cancelled &) {
        return false;
    } catch (const std::exception &error) {
        logError(u"comando"_s, error);
        showError(owner, errorText(error));
        return false;
    }
}

} // namespace core
