#include "platform/core/Log.h"

#include "platform/core/Error.h"
#include "platform/core/SaveFile.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QScopedValueRollback>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace core {

namespace {

constexpr qint64 maxLogBytes = qint64{1024} * 1024;

QString logPath;

void rotate(const QString &path)
{
    if (QFileInfo(path).size() < maxLogBytes)
        return;
    std::rename(QFile::encodeName(path).constData(), QFile::encodeName(path + u".1"_s).constData());
}

QtMessageHandler handlerBefore = nullptr;

void logQtMessage(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    // Writing the line may itself make Qt warn.
    static thread_local bool writing = false;
    if (!writing && (type == QtWarningMsg || type == QtCriticalMsg || type == QtFatalMsg)) {
        const QScopedValueRollback busy(writing, true);
        logLine(u"Qt"_s, text);
    }
    handlerBefore(type, context, text);
}

// Between double quotes stand names, of which the word before says so, and values.
QString withoutDoubleQuoted(const QString &text)
{
    static const QRegularExpression quote(
        u"\\b(?:constraint|table|index|column|generator|procedure|trigger|view|object|relation|during|file|cartella|"
        "database|server) \"[^\"]*\"(?:\\.\"[^\"]*\")*|(\")"_s,
        QRegularExpression::CaseInsensitiveOption);
    for (auto it = quote.globalMatch(text); it.hasNext();) {
        const auto match = it.next();
        if (!match.hasCaptured(1))
            continue;
        const qsizetype first = match.capturedStart(1);
        const qsizetype last = text.lastIndexOf(u'"');
        return text.left(first) + u"\"…\""_s + (last > first ? text.mid(last + 1) : QString());
    }
    return text;
}

} // namespace

void setLogFile(const QString &path)
{
    logPath = path;
    if (!path.isEmpty())
        QDir().mkpath(QFileInfo(path).absolutePath());
}

QString logFile()
{
    return logPath;
}

QString withoutUserValues(const QString &text)
{
    // A value may hold quotes and brackets itself, and a long one may have lost its end; where the database repeats
    // one, nothing worth keeping follows. An unknown token has no quotes at all.
    constexpr auto toTheEnd = QRegularExpression::DotMatchesEverythingOption;
    static const QRegularExpression key(u"(Problematic key value is )\\(.*"_s, toTheEnd);
    static const QRegularExpression string(u"(conversion error from string|, value) \".*"_s, toTheEnd);
    static const QRegularExpression token(u"(Token unknown - line \\d+, column \\d+ - ).*"_s, toTheEnd);
    // Not the apostrophe of "l'archivio".
    static const QRegularExpression singleQuoted(u"(?<!\\w)'(?:.*'(?!\\w)|.*)"_s, toTheEnd);
    QString masked = text;
    masked.replace(key, u"\\1(…)"_s);
    masked.replace(string, u"\\1 \"…\""_s);
    masked.replace(token, u"\\1…"_s);
    masked.replace(singleQuoted, u"'…'"_s);
    return withoutDoubleQuoted(masked);
}

void logLine(const QString &where, const QString &text)
{
    if (logPath.isEmpty())
        return;
    rotate(logPath);
    const QString line = withoutUserValues(text).simplified();
    // A log that cannot be written must never disturb the work it reports on.
    appendLine(
        logPath,
        (QDateTime::currentDateTime().toString(Qt::ISODate) + u"  ["_s + where + u"]  "_s + line + u'\n').toUtf8());
}

void logQtWarnings()
{
    const QtMessageHandler before = qInstallMessageHandler(logQtMessage);
    if (before != logQtMessage)
        handlerBefore = before;
}

void logError(const QString &where, const std::exception &error)
{
    const QString context = errorContext(error);
    logLine(where, (context.isEmpty() ? QString() : context + u": "_s) + errorText(error));
}

} // namespace core
