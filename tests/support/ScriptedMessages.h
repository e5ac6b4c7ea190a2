#pragma once
#include "platform/core/Messages.h"
#include "platform/data/Connection.h"

#include <QPointer>
#include <QStringList>

namespace test {

/// Answers the program's message boxes from a script while it lives. A box that differs from the script, an unscripted
/// one and one shown inside a transaction are problems; so is an expected box that never came.
class ScriptedMessages
{
public:
    ScriptedMessages();
    /// Fails the running test for problems that verify() did not hand out.
    ~ScriptedMessages();
    Q_DISABLE_COPY(ScriptedMessages)

    /// The next box: all three must match, then `answer` is given.
    void expect(const QString &title, const QString &text, core::MessageIcon icon,
                core::Answer answer = core::Answer::Ok);
    /// The next box has this title and holds `part` somewhere in its text.
    void expectPart(const QString &title, const QString &part, core::Answer answer = core::Answer::Ok);
    void expectWarning(const QString &text) { expect(QStringLiteral("Attenzione"), text, core::MessageIcon::Warning); }
    void expectError(const QString &text) { expect(QStringLiteral("Errore"), text, core::MessageIcon::Error); }
    void expectInformation(const QString &text)
    {
        expect(QStringLiteral("Informazioni"), text, core::MessageIcon::Information);
    }
    void expectQuestion(const QString &text, core::Answer answer)
    {
        expect(QStringLiteral("Conferma"), text, core::MessageIcon::Question, answer);
    }
    /// Runs just before the next expected box is answered, for looking at the state behind it.
    void whileShown(std::function<void()> look) { script_.last().look = std::move(look); }

    /// A box shown while `connection` is in a transaction is a problem.
    void watch(data::Connection &connection) { watched_ = &connection; }

    /// What went wrong so far, then forgotten; compare it with QStringList().
    QStringList verify();
    bool hasProblems() const { return !problems_.isEmpty(); }

private:
    struct Expected
    {
        QString title;
        QString text;
        core::MessageIcon icon;
        core::Answer answer;
        std::function<void()> look;
        bool isPart = false; // of the text, with any icon
    };

    core::Answer answer(const core::Message &message);

    QList<Expected> script_;
    QStringList problems_;
    QPointer<data::Connection> watched_;
    core::MessageHandler previous_;
};

} // namespace test
