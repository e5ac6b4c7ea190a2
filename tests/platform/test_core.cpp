#include "platform/core/Decimal.h"
#include "platform/core/Error.h"
#include "platform/core/Format.h"
#include "platform/core/Log.h"
#include "tests/support/TestMain.h"

#include <QFile>
#include <QTemporaryDir>

#include <cmath>

using namespace Qt::StringLiterals;

class TestCore : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void roundsHalvesAwayFromZeroOnTheDecimalValue_data();
    void roundsHalvesAwayFromZeroOnTheDecimalValue();
    void zeroIsNeverNegative();
    void readsNumbersAsAnItalianWritesThem_data();
    void readsNumbersAsAnItalianWritesThem();
    void logMasksWhatTheUserTyped_data();
    void logMasksWhatTheUserTyped();
    void logKeepsOneOlderGeneration();
    void logThatCannotBeWrittenDisturbsNothing();
};

void TestCore::roundsHalvesAwayFromZeroOnTheDecimalValue_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("places");
    QTest::addColumn<double>("rounded");
    QTest::newRow("1.005") << 1.005 << 2 << 1.01;
    QTest::newRow("-1.005") << -1.005 << 2 << -1.01;
    QTest::newRow("below the half") << 0.00499 << 2 << 0.0;
    QTest::newRow("big") << 1e12 + 0.005 << 2 << 1e12 + 0.01;
    QTest::newRow("sum with noise") << 0.1 + 0.2 << 2 << 0.3;
    QTest::newRow("three places") << 1.0005 << 3 << 1.001;
    QTest::newRow("too big to have decimals") << 1.5e15 << 2 << 1.5e15;
}

void TestCore::roundsHalvesAwayFromZeroOnTheDecimalValue()
{
    QFETCH(double, value);
    QFETCH(int, places);
    QFETCH(double, rounded);
    // Exactly the same double, not one near it.
    QVERIFY2(core::roundDecimal(value, places) == rounded, qPrintable(QString::number(value, 'g', 17)));
}

void TestCore::zeroIsNeverNegative()
{
    QVERIFY(!std::signbit(core::roundDecimal(-0.001, 2)));
    QCOMPARE(core::formatNumber(-0.001), u"0,00"_s);
    QCOMPARE(core::toHundredths(-0.005), qint64(-1));
}

void TestCore::readsNumbersAsAnItalianWritesThem_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("valid");
    QTest::addColumn<double>("number");
    const auto good = [](const char *text, double number) {
        QTest::newRow(text) << QString::fromUtf8(text) << true << number;
    };
    const auto bad = [](const char *name, const char *text) {
        QTest::newRow(name) << QString::fromUtf8(text) << false << 0.0;
    };
    good("1.234,50", 1234.5);
    good("€ 1.234,50", 1234.5);
    good("-€ 3,10", -3.1);
    good("-7", -7);
    good(",5", 0.5);
    good(" 12 ", 12);
    bad("decimal point", "1.5");
    bad("misplaced thousands", "12.34,5");
    bad("empty", "");
    bad("two signs", "-€ -1");
    bad("two commas", "1,2,3");
}

void TestCore::readsNumbersAsAnItalianWritesThem()
{
    QFETCH(QString, text);
    QFETCH(bool, valid);
    QFETCH(double, number);
    const std::optional<double> parsed = core::parseNumber(text);
    QCOMPARE(parsed.has_value(), valid);
    QCOMPARE(parsed.value_or(0), number);
}

void TestCore::logMasksWhatTheUserTyped_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("logged");
    QTest::newRow("conversion") << u"conversion error from string \"Rossi\""_s
                                << u"conversion error from string \"…\""_s;
    QTest::newRow("literal") << u"near 'D''Amico' in line 1"_s << u"near '…' in line 1"_s;
    QTest::newRow("key with brackets") << u"Problematic key value is (\"CODICE\" = 'A (1) Segreto')"_s
                                       << u"Problematic key value is (…)"_s;
}

void TestCore::logMasksWhatTheUserTyped()
{
    QFETCH(QString, text);
    QFETCH(QString, logged);
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"deep/corvane.log"_s);
    core::setLogFile(path);
    core::logError(u"salvataggio"_s, core::Error(text, u"INSERT INTO CLIENTI"_s));
    core::setLogFile({});
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QString line = QString::fromUtf8(file.readAll());
    QVERIFY2(line.endsWith(u"  [salvataggio]  INSERT INTO CLIENTI: "_s + logged + u'\n'), qPrintable(line));
}

void TestCore::logKeepsOneOlderGeneration()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"corvane.log"_s);
    core::setLogFile(path);
    for (const char *generation : {"first", "second"}) {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(generation + QByteArray(qsizetype{1024} * 1024, 'x'));
        file.close();
        core::logLine(u"prova"_s, u"una riga"_s);
        QVERIFY(file.size() < 200);
    }
    core::setLogFile({});
    QFile older(path + u".1"_s);
    QVERIFY(older.open(QIODevice::ReadOnly));
    QVERIFY(older.readAll().startsWith("second"));
}

void TestCore::logThatCannotBeWrittenDisturbsNothing()
{
    const QTemporaryDir folder;
    core::setLogFile(folder.path()); // a folder is no file to write to
    core::logLine(u"prova"_s, u"una riga"_s);
    core::setLogFile({});
}

static const test::Registered<TestCore> registered;
#include "test_core.moc"
