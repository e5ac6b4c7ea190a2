#include "tests/support/ScriptedMessages.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace test {

namespace {

QString shown(const QString &title, const QString &text, core::MessageIcon icon)
{
    return u"[%1/%2] %3"_s.arg(title, QString::number(static_cast<int>(icon)), text);
}

} // namespace

ScriptedMessages::ScriptedMessages()
    : previous_(core::setMessageHandler([this](const core::Message &message) { return answer(message); }))
{
}

ScriptedMessages::~ScriptedMessages()
{
    core::setMessageHandler(previous_);
    const QStringList left = verify();
    if (!left.isEmpty())
        QTest::qFail(qPrintable(left.join(u"; "_s)), __FILE__, __LINE__);
}

void ScriptedMessages::expect(const QString &title, const QString &text, core::MessageIcon icon, core::Answer answer)
{
    script_.append({title, text, icon, answer, {}});
}

void ScriptedMessages::expectPart(const QString &title, const QString &part, core::Answer answer)
{
    script_.append({.title = title, .text = part, .icon = {}, .answer = answer, .look = {}, .isPart = true});
}

core::Answer ScriptedMessages::answer(const core::Message &message)
{
    if (watched_ && watched_->inTransaction())
        problems_.append(u"shown inside a transaction: "_s + message.text);
    const QString found = shown(message.title, message.text, message.icon);
    if (script_.isEmpty()) {
        problems_.append(u"unexpected: "_s + found);
        return message.answers.last();
    }
    const Expected expected = script_.takeFirst();
    const bool fits = expected.isPart && expected.title == message.title && message.text.contains(expected.text);
    if (const QString wanted = shown(expected.title, expected.text, expected.icon); !fits && found != wanted)
        problems_.append(u"expected: %1 shown: %2"_s.arg(wanted, found));
    if (!message.answers.contains(expected.answer))
        problems_.append(u"the scripted answer has no button: "_s + found);
    if (expected.look)
        expected.look();
    return expected.answer;
}

QStringList ScriptedMessages::verify()
{
    QStringList all = std::exchange(problems_, {});
    for (const Expected &missing : std::exchange(script_, {}))
        all.append(u"missing: "_s + shown(missing.title, missing.text, missing.icon));
    return all;
}

} // namespace test
