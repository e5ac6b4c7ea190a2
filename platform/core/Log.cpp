#include "platform/core/Log.h"

#include "platform/core/Error.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QScopedValueRollback>

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
    QFile::remove(path + u".1"_s);
    QFile::rename(path, path + u".1"_s);
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
    QFile file(logPath());
    // A log that cannot be written must never disturb the work it reports on.
    if (!file.open(QIODevice::Append | QIODevice::Text))
        return;
    QString line = withoutUserValues(text).simplified();
    file.write(
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
