#pragma once
#include "tests/support/QtWarnings.h"

#include <QApplication>
#include <QTest>

#include <cstdio>
#include <functional>
#include <memory>
#include <optional>
#include <tuple>
#include <vector>

/// Several test classes in one program: each is announced by a Registered object in its own source file, and the
/// program's main() is one line.
namespace test {

using Factory = std::function<std::unique_ptr<QObject>()>;

inline std::vector<Factory> &registeredTests()
{
    static std::vector<Factory> factories;
    return factories;
}

/// Column names of the running test's data.
inline std::vector<const char *> &columnNames()
{
    static std::vector<const char *> names;
    return names;
}

template <typename Value>
using ColumnName = const char *;

/// Says in a data function what its rows consist of.
template <typename... Values>
void columns(ColumnName<Values>... names)
{
    columnNames() = {names...};
    (QTest::addColumn<Values>(names), ...);
}

/// The first values of the test's row, of which columns() has told the types.
template <typename... Values>
std::tuple<Values...> row()
{
    auto name = columnNames().cbegin();
    return {*static_cast<const Values *>(QTest::qData(*name++, qMetaTypeId<Values>()))...};
}

template <typename Test>
struct Registered
{
    Registered()
    {
        registeredTests().push_back([] { return std::make_unique<Test>(); });
    }
};

/// Runs one class; what Qt warns of fails the test function in which it does. Returns the number of failures.
inline int runOne(QObject &test, const QStringList &arguments)
{
    std::vector<QByteArray> texts;
    texts.reserve(static_cast<size_t>(arguments.size()));
    std::vector<char *> argv;
    argv.reserve(static_cast<size_t>(arguments.size()));
    for (const QString &argument : arguments)
        texts.push_back(argument.toLocal8Bit());
    for (QByteArray &text : texts)
        argv.push_back(text.data());
    QTest::qInit(&test, static_cast<int>(argv.size()), argv.data());
    std::optional<QtWarnings> warnings(std::in_place, [](QtMsgType type, const QString &text) {
        // A test may expect a warning by QTest::ignoreMessage(), which goes before.
        if (type == QtWarningMsg)
            QTest::failOnWarning(qUtf8Printable(text));
        else
            QTest::qFail(qUtf8Printable(text), __FILE__, __LINE__);
    });
    const int failures = QTest::qRun();
    warnings.reset();
    // After an exception the framework has cleaned up by itself.
    QTest::qCleanup();
    return failures;
}

/// Runs all registered classes; a class name as the first argument runs that class only, with the arguments behind it.
/// Returns the program's exit code: 0 when every test passed and at least one class ran.
inline int runAll(int argc, char **argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QStringList arguments = QCoreApplication::arguments();
    int run = 0;
    int failures = 0;
    const QtWarnings warnings([&failures](QtMsgType, const QString &text) {
        std::fprintf(stderr, "FAIL!  : outside of every test: %s\n", qUtf8Printable(text));
        ++failures;
    });
    const QString wanted = arguments.value(1);
    const bool oneClass = !wanted.isEmpty() && !wanted.startsWith(QLatin1Char('-'));
    if (oneClass)
        arguments.removeAt(1);
    for (const Factory &factory : registeredTests()) {
        const std::unique_ptr<QObject> test = factory();
        if (oneClass && wanted != QLatin1String(test->metaObject()->className()))
            continue;
        try {
            failures += runOne(*test, arguments);
        } catch (const std::exception &error) {
            // The test framework has counted it without its text and given up the class.
            std::fprintf(stderr, "%s\n", error.what());
            ++failures;
        }
        ++run;
    }
    return run > 0 && failures == 0 ? 0 : 1;
}

} // namespace test
