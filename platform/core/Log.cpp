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

QString &logPath()
{
    static QString path;
    return path;
}

void rotate(const QString &path)
{
    if (QFileInfo(path).size() < maxLogBytes)
        return;
    std::rename(QFile::encodeName(path).constData(), QFile::encodeName(path + u".1"_s).constData());
}

QtMessageHandler &handlerBefore()
{
    static QtMessageHandler handler = nullptr;
    return handler;
}

void logQtMessage(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    // Writing the line may itself make Qt warn.
    static thread_local bool writing = false;
    if (!writing && (type == QtWarningMsg || type == QtCriticalMsg || type == QtFatalMsg)) {
        const QScopedValueRollback busy(writing, true);
        logLine(u"Qt"_s, text);
    }
    handlerBefore()(type, context, text);
}

} // namespace

void setLogFile(const QString &path)
{
    logPath() = path;
    if (!path.isEmpty())
        QDir().mkpath(QFileInfo(path).absolutePath());
}

QString withoutUserValues(const QString &text)
{
    // Firebird repeats values as 'text', as string "text" and as ("COLUMN" = value); object names stay readable.
    static const QRegularExpression singleQuoted(u"'(?:[^']|'')*'"_s);
    static const QRegularExpression afterString(u"(string|value) \"[^\"]*\""_s);
    // A key value may hold brackets itself: everything up to the last one goes.
    static const QRegularExpression keyValues(u"Problematic key value is \\(.*\\)"_s,
                                              QRegularExpression::DotMatchesEverythingOption);
    QString masked = text;
    masked.replace(keyValues, u"Problematic key value is (…)"_s);
    masked.replace(afterString, u"\\1 \"…\""_s);
    masked.replace(singleQuoted, u"'…'"_s);
    return masked;
}

void logLine(const QString &where, const QString &text)
{
    if (logPath().isEmpty())
        return;
    rotate(logPath());
    const QString line = withoutUserValues(text).simplified();
    // A log that cannot be written must never disturb the work it reports on.
    appendLine(
        logPath(),
        (QDateTime::currentDateTime().toString(Qt::ISODate) + u"  ["_s + where + u"]  "_s + line + u'\n').toUtf8());
}

void logQtWarnings()
{
    const QtMessageHandler before = qInstallMessageHandler(logQtMessage);
    if (before != logQtMessage)
        handlerBefore() = before;
}

void logError(const QString &where, const std::exception &error)
{
    const QString context = errorContext(error);
    logLine(where, (context.isEmpty() ? QString() : context + u": "_s) + errorText(error));
}

} // namespace core
