#pragma once
#include "tests/support/QtWarnings.h"

#include <QApplication>
#include <QTest>

#include <cstdio>
#include <functional>
#include <memory>
#include <optional>
#include <tuple>
#include <type_traits>
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

constexpr const char *columnNames[] = {"1", "2", "3", "4", "5", "6"};

/// Says in a data function what its rows consist of.
template <typename... Values>
void columns()
{
    static_assert(sizeof...(Values) <= std::size(columnNames));
    auto next = [column = 0]() mutable { return columnNames[column++]; };
    (QTest::addColumn<Values>(next()), ...);
}

/// The same with the rows, each a name and its values.
template <typename... Values>
void table(std::initializer_list<std::tuple<const char *, std::type_identity_t<Values>...>> rows)
{
    columns<Values...>();
    for (const auto &one : rows)
        std::apply([](const char *name, const auto &...values) { (QTest::newRow(name) << ... << values); }, one);
}

/// The values of the test's row.
template <typename... Values>
std::tuple<Values...> row()
{
    auto next = [column = 0]() mutable { return columnNames[column++]; };
    return {*static_cast<const Values *>(QTest::qData(next(), qMetaTypeId<Values>()))...};
}

/// Data rows that are nothing but their names; currentCase() tells which one runs.
inline void cases(const QStringList &names)
{
    columns<int>();
    for (const QString &name : names)
        QTest::newRow(qUtf8Printable(name)) << 0;
}
inline QString currentCase()
{
    return QString::fromUtf8(QTest::currentDataTag());
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
