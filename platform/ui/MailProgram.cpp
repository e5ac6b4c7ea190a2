#include "platform/ui/MailProgram.h"

#include "platform/core/Messages.h"
#include "platform/core/Translation.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>
#include <QUrlQuery>

using namespace Qt::StringLiterals;

namespace ui {

namespace {

MailOpener mailOpener;

// The desktop's own script, which knows how each mail program takes a file.
bool openedByDesktop(const Mail &mail)
{
    const QString program = QStandardPaths::findExecutable(u"xdg-email"_s);
    if (program.isEmpty())
        return false;
    // It ends when the mail program has the message, with some of them only when the message was sent.
    constexpr int patience = 3'000; // milliseconds
    auto *process = new QProcess(QCoreApplication::instance());
    QObject::connect(process, &QProcess::finished, process, &QObject::deleteLater);
    process->start(program, {u"--utf8"_s, u"--subject"_s, mail.subject, u"--body"_s, mail.text, u"--attach"_s,
                             mail.attachment, mail.to});
    if (!process->waitForStarted(patience)) {
        process->deleteLater();
        return false;
    }
    return !process->waitForFinished(patience) ||
           (process->exitStatus() == QProcess::NormalExit && process->exitCode() == 0);
}

} // namespace

MailOpener setMailOpener(MailOpener opener)
{
    return std::exchange(mailOpener, std::move(opener));
}

namespace {

MailOpened opened(const Mail &mail)
{
    if (mailOpener)
        return mailOpener(mail);
    if (openedByDesktop(mail))
        return MailOpened::WithAttachment;
    QUrlQuery query;
    query.addQueryItem(u"subject"_s, mail.subject);
    query.addQueryItem(u"body"_s, mail.text);
    QUrl address;
    address.setScheme(u"mailto"_s);
    address.setPath(mail.to);
    address.setQuery(query);
    return QDesktopServices::openUrl(address) ? MailOpened::WithoutAttachment : MailOpened::NotAtAll;
}

} // namespace

void openMail(QWidget *owner, const Mail &mail)
{
    const MailOpened result = opened(mail);
    if (result == MailOpened::WithoutAttachment)
        core::inform(
            owner,
            core::tr("Il programma di posta non prende allegati da qui:\n\raggiungere al messaggio il file\n\r") +
                mail.attachment);
    else if (result == MailOpened::NotAtAll)
        core::showError(owner,
                        core::tr("Non c'è un programma di posta che si apra da qui.\n\rIl file da inviare è\n\r") +
                            mail.attachment);
}

} // namespace ui
