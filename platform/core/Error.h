#pragma once
#include <QString>
#include <exception>

namespace core {

/// An error whose text is meant for the user. Thrown below the slots, shown by the form that catches it.
class Error : public std::exception
{
public:
    /// `text` is shown; `context` goes to the log.
    explicit Error(QString text, QString context = {})
        : text_(std::move(text))
        , context_(std::move(context))
        , utf8_(text_.toUtf8())
    {
    }

    /// The text as shown to the user.
    const QString &text() const { return text_; }
    /// What was being done, for the log only ("INSERT INTO MOVI_MAGA"); never a value that the user typed.
    const QString &context() const { return context_; }
    const char *what() const noexcept override { return utf8_.constData(); }

private:
    QString text_;
    QString context_;
    QByteArray utf8_;
};

/// The text of any caught exception: that of a core::Error, else what() read as UTF-8.
QString errorText(const std::exception &error);
/// Its context, empty for errors that carry none.
QString errorContext(const std::exception &error);

/// Runs `body`; any error comes out as a core::Error whose text is "[routine]", a line feed, a carriage return and
/// the caught error's text.
template <typename Body>
auto namingErrors(QStringView routine, Body &&body)
{
    try {
        return body();
    } catch (const std::exception &error) {
        throw Error(QLatin1Char('[') + routine.toString() + QStringLiteral("]\n\r") + errorText(error),
                    errorContext(error));
    }
}

} // namespace core
