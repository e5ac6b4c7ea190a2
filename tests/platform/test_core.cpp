#include "platform/core/DateReader.h"
#include "platform/core/Decimal.h"
#include "platform/core/Error.h"
#include "platform/core/Format.h"
#include "platform/core/LineText.h"
#include "platform/core/Log.h"
#include "platform/core/Messages.h"
#include "platform/core/NumberReader.h"
#include "tests/support/ScriptedMessages.h"
#include "tests/support/TestMain.h"

#include <QDir>
#include <QFile>
#include <QScopeGuard>
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
    void everyLineEndIsOne();
    void readsOneNumber_data();
    void readsOneNumber();
    void readsDatesAndTimes_data();
    void readsDatesAndTimes();
    void logMasksWhatTheUserTyped_data();
    void logMasksWhatTheUserTyped();
    void logHoldsWhatQtWarnsOf();
    void logKeepsOneOlderGeneration();
    void logThatCannotBeWrittenDisturbsNothing();
    void readsFlagsInAnyCaseAndAsNumbers();
};

void TestCore::everyLineEndIsOne()
{
    QCOMPARE(core::withLineFeeds(u"a\r\nb\n\rc\rd\n\ne\r\n\r\nf\n\r\n\rg"_s), u"a\nb\nc\nd\n\ne\n\nf\n\ng"_s);
}

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

// "-" for a text that is refused, else the value with the decimals that were written.
void TestCore::readsOneNumber_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("read");
    const QList<std::pair<const char *, const char *>> rows = {
        {"1.234,50", "1234.5/2"},
        {"1234,5", "1234.5/1"},
        {"12.5", "12.5/1"},
        {"25.50", "25.5/2"},
        {"1.234", "1234/0"},
        {"1.234.567", "1234567/0"},
        {"1,234", "1.234/3"},
        {"1,250", "1.25/3"},
        {"0.125", "0.125/3"},
        {"1234.567", "1234.567/3"},
        {"1,234.50", "1234.5/2"},
        {"12 500,4", "12500.4/1"},
        {"\u20ac 1.234,50", "1234.5/2"},
        {"-\u20ac 3,10", "-3.1/2"},
        {"\u20ac -3,10", "-3.1/2"},
        {" 3,10\u00a0\u20ac", "3.1/2"},
        {"-7", "-7/0"},
        {"+7", "7/0"},
        {"-0", "0/0"},
        {"12,", "12/0"},
        {",5", "0.5/1"},
        {".5", "0.5/1"},
        {"", "-"},
        {"-", "-"},
        {"\u20ac -,", "-"},
        {"12.", "-"},
        {"1,2,3", "-"},
        {"1,234,567", "-"},
        {"1.2.3", "-"},
        {"12.34,5", "-"},
        {"1234 567", "-"},
        {"1 2", "-"},
        {"-\u20ac -1", "-"},
        {"12a", "-"},
        {"1e3", "-"},
    };
    for (const auto &[text, read] : rows)
        QTest::newRow(text) << QString::fromUtf8(text) << QString::fromUtf8(read);
}

void TestCore::readsOneNumber()
{
    QFETCH(QString, text);
    const std::optional<core::WrittenNumber> number = core::readNumber(text);
    QTEST(number ? QString::number(number->value, 'g', 15) + u'/' + QString::number(number->places) : u"-"_s, "read");
    QVERIFY(!number || number->value != 0 || !std::signbit(number->value));
}

void TestCore::readsDatesAndTimes_data()
{
    QTest::addColumn<QString>("texts"); // separated by blanks
    QTest::addColumn<bool>("isTime");
    QTest::addColumn<QString>("read"); // "-" when refused
    QTest::newRow("every way to write a day")
        << u"20/02/2026 20/2/26 20-2-2026 20.02.2026 20022026 200226 20/2"_s << false << u"20/02/2026"_s;
    QTest::newRow("two digits") << u"31/12/99 311299"_s << false << u"31/12/2099"_s;
    QTest::newRow("leap day") << u"29/2/24 29022024"_s << false << u"29/02/2024"_s;
    QTest::newRow("any year") << u"1/1/1850"_s << false << u"01/01/1850"_s;
    QTest::newRow("impossible") << u"31/02/2026 29/2 0/1/26 1/0/26 1/13/26 32/1/26 310226"_s << false << u"-"_s;
    QTest::newRow("unfinished") << u"2 20 20/ 20/2/ 20/2/2 20/2/202 2026 20226"_s << false << u"-"_s;
    QTest::newRow("no day") << u"20/2-26 20//2 2026-02-20 20/2/20260 a 20/02/2026x "_s << false << u"-"_s;
    QTest::newRow("every way to write a time") << u"9:30 09:30 9.30 9,30 0930 930"_s << true << u"09:30"_s;
    QTest::newRow("no time") << u"24:00 12:60 9 9:3 : 123456 "_s << true << u"-"_s;
}

void TestCore::readsDatesAndTimes()
{
    QFETCH(QString, texts);
    QFETCH(bool, isTime);
    const QStringList all = texts.split(u' ');
    for (const QString &text : all) {
        const QString date = core::formatDate(core::readDate(text, QDate(2026, 3, 16)).value_or(QDate()));
        const QString time = core::readTime(text).value_or(QTime()).toString(u"HH:mm"_s);
        const QString read = isTime ? time : date;
        QTEST(read.isEmpty() ? u"-"_s : read, "read");
    }
}

void TestCore::logMasksWhatTheUserTyped_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("logged");
    const QString conversion = u"conversion error from string "_s;
    const QString key = u"Problematic key value is "_s;
    QTest::newRow("conversion") << conversion + u"\"Rossi\""_s << conversion + u"\"…\""_s;
    QTest::newRow("quotes inside, cut short") << conversion + u"\"Ros\" \nsi"_s << conversion + u"\"…\""_s;
    QTest::newRow("key with brackets") << key + u"(\"CODICE\" = 'A (1) Segreto')"_s << key + u"(…)"_s;
    QTest::newRow("key cut short") << key + u"(\"CODICE\" = 'A) Segr"_s << key + u"(…)"_s;
    QTest::newRow("unquoted") << u"Token unknown - line 1, column 33 - Rossi Mario"_s
                              << u"Token unknown - line 1, column 33 - …"_s;
    QTest::newRow("literal") << u"near 'D''Amico' in line 1"_s << u"near '…' in line 1"_s;
    QTest::newRow("apostrophe inside") << u"near 'D'Amico' in line 1"_s << u"near '…' in line 1"_s;
    QTest::newRow("own message") << u"L'archivio dell'anno: il codice \"Ros\"si\" esiste nella tabella"_s
                                 << u"L'archivio dell'anno: il codice \"…\" esiste nella tabella"_s;
    QTest::newRow("names stay") << u"I/O error during \"open\" of table \"T\".\"C\", value \"x\""_s
                                << u"I/O error during \"open\" of table \"T\".\"C\", value \"…\""_s;
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

void TestCore::logHoldsWhatQtWarnsOf()
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"corvane.log"_s));
    core::setLogFile(file.fileName());
    const QtMessageHandler before = qInstallMessageHandler(nullptr);
    qInstallMessageHandler(before);
    core::logQtWarnings();
    core::logQtWarnings(); // a second time it must not wait for itself
    const auto restore = qScopeGuard([before] {
        qInstallMessageHandler(before);
        core::setLogFile({});
    });
    QTest::ignoreMessage(QtWarningMsg, "QObject::connect: No such slot 'D''Amico'");
    qWarning("QObject::connect: No such slot 'D''Amico'");
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QString lines = QString::fromUtf8(file.readAll());
    QCOMPARE(lines.count(u'\n'), 1);
    QVERIFY2(lines.endsWith(u"  [Qt]  QObject::connect: No such slot '…'\n"_s), qPrintable(lines));
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
    const QString good = folder.filePath(u"corvane.log"_s);
    // A folder is no file to write to, and on a full disk nothing can be written.
    for (const QString &path : {folder.path(), u"/dev/full"_s}) {
        core::setLogFile(path);
        test::ScriptedMessages messages;
        messages.expectError(u"motivo"_s);
        QVERIFY(!core::guarded(nullptr, [] {
            core::logLine(u"prova"_s, u"persa"_s);
            throw core::Error(u"motivo"_s);
        }));
        QCOMPARE(messages.verify(), QStringList());
        QVERIFY(QDir(folder.path()).isEmpty());
    }
    core::setLogFile(good);
    core::logLine(u"prova"_s, u"una riga"_s);
    core::setLogFile({});
    QFile file(good);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray written = file.readAll();
    QVERIFY(written.contains("una riga") && !written.contains("persa"));
}

void TestCore::readsFlagsInAnyCaseAndAsNumbers()
{
    for (const QString &text : {u"True"_s, u" tRUE"_s, u"1"_s, u"-1"_s})
        QCOMPARE(core::parseFlag(text), std::optional(true));
    for (const QString &text : {core::flagText(false), u"FALSE "_s, u"0"_s})
        QCOMPARE(core::parseFlag(text), std::optional(false));
    for (const QString &text : {u""_s, u"vero"_s, u"1,5"_s, u"None"_s})
        QVERIFY2(!core::parseFlag(text), qPrintable(text));
}

static const test::Registered<TestCore> registered;
#include "test_core.moc"
