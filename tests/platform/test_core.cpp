#include "platform/core/Barcode.h"
#include "platform/core/DateReader.h"
#include "platform/core/Decimal.h"
#include "platform/core/FileAccess.h"
#include "platform/core/Format.h"
#include "platform/core/LineText.h"
#include "platform/core/WorkFolder.h"
#include "tests/support/Kit.h"

#include <cmath>
#include <sys/stat.h>

class TestCore : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void barcodesAreRead_data()
    {
        // What is read: "GTIN lot count"; empty for no GS1 code.
        const QChar gs = core::groupSeparator;
        test::table<QString, bool, QString>(
            {{"EAN-13", u"8001120000019"_s, true, {}},
             {"EAN-13, wrong", u"8001120000018"_s, false, {}},
             {"EAN-8, wrong", u"12345671"_s, false, {}},
             {"UPC", u"012345678905"_s, true, {}},
             {"free", u"1234567"_s, true, {}},
             {"number alone", u"]C10108001120000019"_s, true, u"08001120000019  1"_s},
             {"lot and count", u"]C1010800112000001910L-7"_s + gs + u"3712"_s, true, u"08001120000019 L-7 12"_s},
             {"date, count first, sign on screen",
              u"3024"_s + core::shownSeparator + u"17261231"_s + u"0108001120000019"_s, true, u"08001120000019  24"_s},
             {"brackets", u"(01)08001120000019(10)A(37)2"_s, true, u"08001120000019 A 2"_s},
             {"wrong digit in it", u"0108001120000018"_s, true, {}},
             {"count of nothing", u"0108001120000019"_s + u"370"_s, true, {}},
             {"cut off", u"0108001120"_s, true, {}}});
    }

    void barcodesAreRead()
    {
        const auto [code, digitFits, read] = test::row<QString, bool, QString>();
        QCOMPARE(core::checkDigitFits(code), digitFits);
        const auto gs1 = core::readGs1(code);
        QCOMPARE(gs1 ? u"%1 %2 %3"_s.arg(gs1->gtin, gs1->lot).arg(gs1->count) : QString(), read);
        QCOMPARE(core::sameNumbers(u"00012345678905"_s),
                 QStringList({u"00012345678905"_s, u"0012345678905"_s, u"012345678905"_s}));
    }

    // Exactly the same double, not one near it; also with the noise of sums and where no decimals are left.
    void roundsHalvesAwayFromZeroOnTheDecimalValue()
    {
        for (const auto &[value, places, rounded] : {std::tuple(1.005, 2, 1.01),
                                                     {-1.005, 2, -1.01},
                                                     {0.00499, 2, 0.0},
                                                     {1e12 + 0.005, 2, 1e12 + 0.01},
                                                     {0.1 + 0.2, 2, 0.3},
                                                     {1.0005, 3, 1.001},
                                                     {1.5e15, 2, 1.5e15}})
            QVERIFY2(core::roundDecimal(value, places) == rounded, qPrintable(QString::number(value, 'g', 17)));
    }

    void zeroIsNeverNegative()
    {
        QVERIFY(!std::signbit(core::roundDecimal(-0.001, 2)));
        QCOMPARE(core::formatNumber(-0.001), u"0,00"_s);
        QCOMPARE(core::toHundredths(-0.005), qint64(-1));
    }

    void everyLineEndIsOne()
    {
        QCOMPARE(core::withLineFeeds(u"a\r\nb\n\rc\rd\n\ne\r\n\r\nf\n\r\n\rg"_s), u"a\nb\nc\nd\n\ne\n\nf\n\ng"_s);
    }

    // "-" for a text that is refused, else the value with the decimals that were written.
    void readsOneNumber()
    {
        const QString rows = u"1.234,50 = 1234.5/2|1234,5 = 1234.5/1|12.5 = 12.5/1|25.50 = 25.5/2|1.234 = "
                             "1234/0|1.234.567 = 1234567/0|1,234 = 1.234/3|1,250 = 1.25/3|0.125 = 0.125/3|1234.567 "
                             "= 1234.567/3|1,234.50 = 1234.5/2|12 500,4 = 12500.4/1|\u20ac 1.234,50 = "
                             "1234.5/2|-\u20ac 3,10 = -3.1/2|\u20ac -3,10 = -3.1/2| 3,10\u00a0\u20ac = 3.1/2|-7 = "
                             "-7/0|+7 = 7/0|-0 = 0/0|12, = 12/0|,5 = 0.5/1|.5 = 0.5/1| = -|- = -|\u20ac -, = -|12. "
                             "= -|1,2,3 = -|1,234,567 = -|1.2.3 = -|12.34,5 = -|1234 567 = -|1 2 = -|-\u20ac -1 = "
                             "-|12a = -|1e3 = -"_s;
        for (const QString &row : rows.split(u'|')) {
            const QString text = row.section(u" = "_s, 0, 0);
            const std::optional<core::WrittenNumber> number = core::readNumber(text);
            const QString found =
                number ? QString::number(number->value, 'g', 15) + u'/' + QString::number(number->places) : u"-"_s;
            QCOMPARE(text + u" = "_s + found, row);
            QVERIFY(!number || number->value != 0 || !std::signbit(number->value));
        }
    }

    void readsDatesAndTimes()
    {
        // Texts separated by blanks, what they are read as ("-" when refused), and whether they are times.
        for (const auto &[texts, read, isTime] :
             {std::tuple(u"20/02/2026 20/2/26 20-2-2026 20.02.2026 20022026 200226 20/2"_s, u"20/02/2026"_s, false),
              {u"31/12/99 311299"_s, u"31/12/2099"_s, false},
              {u"29/2/24 29022024"_s, u"29/02/2024"_s, false},
              {u"1/1/1850"_s, u"01/01/1850"_s, false},
              {u"31/02/2026 29/2 0/1/26 1/0/26 1/13/26 32/1/26 310226"_s, u"-"_s, false},
              {u"2 20 20/ 20/2/ 20/2/2 20/2/202 2026 20226"_s, u"-"_s, false},
              {u"20/2-26 20//2 2026-02-20 20/2/20260 a 20/02/2026x "_s, u"-"_s, false},
              {u"9:30 09:30 9.30 9,30 0930 930"_s, u"09:30"_s, true},
              {u"24:00 12:60 9 9:3 : 123456 "_s, u"-"_s, true}}) {
            for (const QString &text : texts.split(u' ')) {
                const QString date = core::formatDate(core::readDate(text, QDate(2026, 3, 16)).value_or(QDate()));
                const QString time = core::readTime(text).value_or(QTime()).toString(u"HH:mm"_s);
                const QString found = isTime ? time : date;
                QVERIFY2((found.isEmpty() ? u"-"_s : found) == read, qPrintable(text));
            }
        }
    }

    void logMasksWhatTheUserTyped()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"deep/corvane.log"_s);
        const QString conversion = u"conversion error from string "_s;
        const QString key = u"Problematic key value is "_s;
        for (const auto &[text, logged] : {
                 std::pair(conversion + u"\"Rossi\""_s, conversion + u"\"…\""_s),
                 {conversion + u"\"Ros\" \nsi"_s, conversion + u"\"…\""_s}, // quotes inside, cut short
                 {key + u"(\"CODICE\" = 'A (1) Segreto')"_s, key + u"(…)"_s},
                 {key + u"(\"CODICE\" = 'A) Segr"_s, key + u"(…)"_s},
                 {u"Token unknown - line 1, column 33 - Rossi Mario"_s, u"Token unknown - line 1, column 33 - …"_s},
                 {u"near 'D''Amico' in line 1"_s, u"near '…' in line 1"_s},
                 {u"near 'D'Amico' in line 1"_s, u"near '…' in line 1"_s},
                 {u"L'archivio dell'anno: il codice \"Ros\"si\" esiste nella tabella"_s,
                  u"L'archivio dell'anno: il codice \"…\" esiste nella tabella"_s},
                 // Names stay.
                 {u"I/O error during \"open\" of table \"T\".\"C\", value \"x\""_s,
                  u"I/O error during \"open\" of table \"T\".\"C\", value \"…\""_s},
             }) {
            core::setLogFile(path);
            core::logError(u"salvataggio"_s, core::Error(text, u"INSERT INTO CLIENTI"_s));
            core::setLogFile({});
            const QString lines = QString::fromUtf8(test::contentOf(path));
            QVERIFY2(lines.endsWith(u"  [salvataggio]  INSERT INTO CLIENTI: "_s + logged + u'\n'), qPrintable(lines));
        }
    }

    void logHoldsWhatQtWarnsOf()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"corvane.log"_s);
        core::setLogFile(path);
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
        const QString lines = QString::fromUtf8(test::contentOf(path));
        QCOMPARE(lines.count(u'\n'), 1);
        QVERIFY2(lines.endsWith(u"  [Qt]  QObject::connect: No such slot '…'\n"_s), qPrintable(lines));
    }

    void logKeepsOneOlderGeneration()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"corvane.log"_s);
        core::setLogFile(path);
        for (const char *generation : {"first", "second"}) {
            core::saveFile(path, generation + QByteArray(qsizetype{1024} * 1024, 'x'));
            core::logLine(u"prova"_s, u"una riga"_s);
            QVERIFY(QFileInfo(path).size() < 200);
        }
        core::setLogFile({});
        QVERIFY(test::contentOf(path + u".1"_s).startsWith("second"));
    }

    void logThatCannotBeWrittenDisturbsNothing()
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
        const QByteArray written = test::contentOf(good);
        QVERIFY(written.contains("una riga") && !written.contains("persa"));
    }

    void readsFlagsInAnyCaseAndAsNumbers()
    {
        for (const QString &text : {u"True"_s, u" tRUE"_s, u"1"_s, u"-1"_s})
            QCOMPARE(core::parseFlag(text), std::optional(true));
        for (const QString &text : {core::flagText(false), u"FALSE "_s, u"0"_s})
            QCOMPARE(core::parseFlag(text), std::optional(false));
        for (const QString &text : {u""_s, u"vero"_s, u"1,5"_s, u"None"_s})
            QVERIFY2(!core::parseFlag(text), qPrintable(text));
    }

    void abandonedWorkFoldersGo()
    {
        const QTemporaryDir parent;
        const auto count = [&parent] { return test::filesIn(parent.path()).size(); };
        const core::WorkFolder inUse(parent.path());
        core::saveFile(inUse.file(u"copia.fdb"_s), "in use");
        for (const QString &name : {u".corvane-a1B2c3/dentro"_s, u"altra"_s})
            QVERIFY(QDir(parent.path()).mkpath(name));
        core::saveFile(parent.filePath(u".corvane-a1B2c3/copia.fdb"_s), "left by a program that was killed");
        QCOMPARE(count(), 3);
        core::saveFile(parent.filePath(u"a.txt"_s), "x");
        QCOMPARE(count(), 3);
        QVERIFY(QFile::exists(inUse.file(u"copia.fdb"_s)) && QFile::exists(parent.filePath(u"altra"_s)));
    }

    void ownFilesArePrivateAndExportsAreNot()
    {
        const QTemporaryDir folder;
        const auto name = [&folder](const QString &file) { return folder.filePath(file); };
        const auto mode = [&name](const QString &file) {
            struct stat found = {};
            ::lstat(QFile::encodeName(name(file)).constData(), &found);
            return QString::number(found.st_mode & ACCESSPERMS, 8);
        };
        const mode_t before = ::umask(022);
        core::keepNewFilesPrivate();
        QVERIFY(core::appendLine(name(u"registro"_s), "x"));
        core::saveFile(name(u"accessi.ini"_s), "x", core::Readers::OwnerOnly);
        core::saveFile(name(u"elenco.csv"_s), "x");
        QCOMPARE(mode(u"registro"_s), u"600"_s);
        QCOMPARE(mode(u"accessi.ini"_s), u"600"_s);
        QCOMPARE(mode(u"elenco.csv"_s), QString::number(core::usualFileMode(), 8));
        // What the user lets others write stays theirs.
        ::chmod(QFile::encodeName(name(u"elenco.csv"_s)).constData(), 0664);
        core::saveFile(name(u"elenco.csv"_s), "y");
        QCOMPARE(mode(u"elenco.csv"_s), u"664"_s);
        ::umask(before);
    }
};

static const test::Registered<TestCore> registered;
#include "test_core.moc"
