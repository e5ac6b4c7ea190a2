#pragma once
#include <QApplication>
#include <QTest>

#include <cstdio>
#include <functional>
#include <memory>
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

template <typename Test>
struct Registered
{
    Registered()
    {
        registeredTests().push_back([] { return std::make_unique<Test>(); });
    }
};

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
    const QString wanted = arguments.value(1);
    const bool oneClass = !wanted.isEmpty() && !wanted.startsWith(QLatin1Char('-'));
    if (oneClass)
        arguments.removeAt(1);
    for (const Factory &factory : registeredTests()) {
        const std::unique_ptr<QObject> test = factory();
        if (oneClass && wanted != QLatin1String(test->metaObject()->className()))
            continue;
        try {
            failures += QTest::qExec(test.get(), arguments);
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
