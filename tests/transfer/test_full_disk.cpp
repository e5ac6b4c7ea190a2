#include "host/transfer/ImportPlan.h"
#include "host/ui/MainWindow.h"
#include "platform/core/CsvWriter.h"
#include "platform/core/XlsxWriter.h"
#include "platform/report/Document.h"
#include "platform/report/Output.h"
#include "platform/report/Report.h"
#include "tests/support/FullDisk.h"
#include "tests/support/Kit.h"

namespace {

constexpr qint64 kilobyte = 1024;

// Backup and restore are programs that take a moment each; EVERY_KILOBYTE=1 lets the disk be full at each kilobyte.
qint64 stepOf(int kilobytes)
{
    return qEnvironmentVariableIsSet("EVERY_KILOBYTE") ? kilobyte : kilobytes * kilobyte;
}

core::Table table()
{
    core::Table list{u"Articoli"_s, {{.header = u"Codice"_s}, {.header = u"Prezzo"_s}}, {}};
    // Texts that do not compress well.
    for (int i = 0; i < 900; ++i)
        list.rows.append({u"A%1"_s.arg(qHash(i, 1), 0, 36), i * 1.25});
    return list;
}

std::shared_ptr<const report::Document> document(const QString &projectFile)
{
    core::saveFile(projectFile, "<project version='1'><font name='f' family='Liberation Sans' size='9'/>"
                                "<report name='prova' title=\"'Prova'\" width='100' height='100'>"
                                "<detail height='5' connection='righe'>"
                                "<field x='0' y='0' width='40' height='5' value='NOME'/></detail></report></project>");
    report::ReportProject project;
    project.setProjectFile(projectFile);
    project.open();
    QList<QVariantList> rows;
    for (int i = 0; i < 60; ++i)
        rows.append({u"riga %1"_s.arg(i)});
    const data::Rows all({{u"NOME"_s, 0, true}}, std::move(rows));
    project.setDataSource([&all](const QString &) { return all; });
    return project.layOut(u"prova"_s);
}

// The error that a command tells or that `body` throws while the disk takes `limit` bytes; empty without one.
QString toldBy(qint64 limit, const std::function<void()> &body)
{
    const test::FullDisk full(limit);
    QString told;
    const core::MessageHandler before = core::setMessageHandler([&told](const core::Message &message) {
        told = message.text;
        return message.answers.last();
    });
    core::guarded(nullptr, body);
    core::setMessageHandler(before);
    return told;
}

} // namespace

using Write = std::function<void(const QString &)>;
Q_DECLARE_METATYPE(Write)

class TestFullDisk : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fileIsWhollyNewOrTheOldOne_data()
    {
        test::columns<QString, Write>();
        const auto row = [](const QString &name, const Write &write) {
            QTest::addRow("%s", qPrintable(name)) << name << write;
        };
        row(u"elenco.csv"_s, [](const QString &path) { core::saveFile(path, core::csvText(table())); });
        row(u"elenco.xlsx"_s, [](const QString &path) { core::saveFile(path, core::xlsxFile(table())); });
        const auto print = document(path(u"prova.rav"_s));
        row(u"stampa.pdf"_s, [print](const QString &path) { report::writePdf(*print, path, report::PdfRenderer()); });
        row(u"stampante.pdf"_s, [print](const QString &path) {
            QPrinter printer;
            printer.setOutputFileName(path);
            report::printDocument(*print, printer);
        });
        const auto address = [](int number) {
            const QString name(1200, QChar(u'a' + number));
            data::DatabaseAddress server = data::DatabaseAddress::parse(u"server:/srv/%1.fdb"_s.arg(name));
            server.password = QString(2500, u'x');
            return server;
        };
        core::saveFile(path(u"origine.fdb"_s), QByteArray(40 * kilobyte, 'x'));
        row(u"copia.fdb"_s, [this](const QString &path) { core::copyFile(this->path(u"origine.fdb"_s), path); });
        row(u"corvane.ini"_s, [address](const QString &path) {
            host::DatabaseMemory(QFileInfo(path).path()).remember(address(QFileInfo::exists(path) ? 1 : 0), false);
        });
        row(u"accessi.ini"_s, [address](const QString &path) {
            host::DatabaseMemory(QFileInfo(path).path()).remember(address(QFileInfo::exists(path) ? 3 : 2), true);
        });
        row(u"finestra.ini"_s, [](const QString &path) {
            host::MainWindow window(path);
            window.resize(900 + static_cast<int>(test::contentOf(path).size() % 64), 600);
            window.close();
        });
    }

    void fileIsWhollyNewOrTheOldOne()
    {
        const auto [name, write] = test::row<QString, Write>();
        const QString file = path(name);
        write(file);
        const QByteArray old = test::contentOf(file);
        QVERIFY(!old.isEmpty());
        const QStringList before = files();
        bool fits = false;
        for (qint64 limit = 0; !fits; limit += kilobyte) {
            const QString told = toldBy(limit, [&, write = write] { write(file); });
            fits = told.isEmpty();
            if (fits)
                QVERIFY(test::contentOf(file).size() > old.size() / 2);
            else
                QVERIFY2(test::contentOf(file) == old && told.contains(u"il disco è pieno"_s), qPrintable(told));
            QCOMPARE(files(), before);
            QVERIFY(limit < kilobyte * kilobyte);
        }
    }

    void logHasWholeLines()
    {
        core::setLogFile(path(u"corvane.log"_s));
        core::logLine(u"prova"_s, u"prima"_s);
        const QByteArray old = test::contentOf(path(u"corvane.log"_s));
        for (const qint64 limit : {0, 1, 1000, 1024, 3000, 4096}) {
            const test::FullDisk full(limit);
            core::logLine(u"prova"_s, QString(3000, u'x'));
            const QByteArray now = test::contentOf(path(u"corvane.log"_s));
            QVERIFY(now == old || limit > 3000);
        }
        core::setLogFile({});
        const QByteArray now = test::contentOf(path(u"corvane.log"_s));
        QVERIFY(now.startsWith(old) && now.count('\n') == 2 && now.endsWith("x\n"));
    }

    void backupIsWhollyNewOrTheOldOne()
    {
        const test::TestDatabase database(test::Content::HostSchema);
        const auto save = [&] {
            core::Progress progress;
            host::backupDatabase(database.address(), path(u"copia.fbk"_s), progress);
        };
        save();
        const qint64 size = test::contentOf(path(u"copia.fbk"_s)).size();
        QVERIFY(size > 10 * kilobyte);
        core::saveFile(path(u"copia.fbk"_s), "an older one");
        const QStringList before = files();
        // Beyond the copy's own size it is the check that does not fit, which writes a whole database.
        QString told = u"-"_s;
        for (qint64 limit = 0; !told.isEmpty(); limit += stepOf(limit < size ? 8 : 200)) {
            told = toldBy(limit, save);
            QVERIFY2(told == u"Il disco è pieno."_s || told.isEmpty(), qPrintable(told));
            QCOMPARE(test::contentOf(path(u"copia.fbk"_s)) == "an older one", !told.isEmpty());
            QCOMPARE(files(), before);
        }
    }

    void restoreLeavesTheDatabase()
    {
        const test::TestDatabase source(test::Content::HostSchema);
        core::Progress progress;
        host::backupDatabase(source.address(), path(u"origine.fbk"_s), progress);
        data::DatabaseAddress target = test::fileAddress(path(u"ditta.fdb"_s));
        core::saveFile(target.file, "not even a database");
        const QStringList before = files();
        QString told = u"-"_s;
        for (qint64 limit = 0; !told.isEmpty(); limit += stepOf(200)) {
            told = toldBy(limit, [&] { host::restoreDatabase(path(u"origine.fbk"_s), target, progress); });
            QVERIFY2(told == u"Il disco è pieno."_s || told.isEmpty(), qPrintable(told));
            QCOMPARE(test::contentOf(target.file) == "not even a database", !told.isEmpty());
            QCOMPARE(files().size(), before.size() + (told.isEmpty() ? 1 : 0));
        }
    }

    void importAndCreationLeaveNothing()
    {
        data::DatabaseAddress fresh = test::fileAddress(path(u"nuova.fdb"_s));
        const QStringList before = files();
        for (const qint64 limit : {0, 100, 1500, 2500}) {
            QCOMPARE(toldBy(limit * kilobyte, [&] { host::createHostDatabase(fresh, true); }), u"Il disco è pieno."_s);
            QCOMPARE(files(), before);
        }
        test::ModuleDatabase database(test::Content::ModuleSchema);
        QList<core::CsvRecord> records;
        for (int i = 0; i < 20'000; ++i)
            records.append({i + 1, {u"X%1"_s.arg(i), QString(90, u'x')}});
        const host::ImportTarget &articles = host::importTargets().first();
        QList<int> columns(articles.fields.size(), -1);
        columns[0] = 0;
        columns[1] = 1;
        const host::ImportLookups lookups(database.connection(), articles);
        const host::ImportJob job = {
            articles,
            lookups,
            [&records](const auto &use) { std::for_each(records.begin(), records.end(), use); },
            {.columns = columns}};
        const host::ImportPlan plan = host::planImport(job);
        core::Progress progress;
        for (const qint64 limit : {0, 100, 1500}) {
            const QString told =
                toldBy(limit * kilobyte, [&] { host::writeImport(database.connection(), job, plan, progress); });
            QVERIFY2(told.startsWith(u"Il disco è pieno"_s), qPrintable(told));
            QCOMPARE(database.lines(u"SELECT COUNT(*) FROM ANA_MAGA"_s), QStringList(u"0"_s));
        }
        host::writeImport(database.connection(), job, plan, progress);
        QCOMPARE(database.lines(u"SELECT COUNT(*) FROM ANA_MAGA"_s), QStringList(u"20000"_s));
    }

    // Host and module make their tables, each until the disk is full; a later start goes on.
    void firstStartEndsWithItsReason()
    {
        const QTemporaryDir home;
        const QStringList arguments = {u"--database"_s, home.filePath(u"ditta.fdb"_s), u"--empty"_s, u"--upgrade"_s};
        for (const qint64 limit : {0, 1000, 2500, 3000, 4000}) {
            const test::FullDisk full(limit * kilobyte);
            test::Program program(home.path(), arguments);
            QCOMPARE(program.exitCode(), 1);
            const QByteArray told = program.told();
            QVERIFY2(told.contains("disco è pieno"), told.constData());
        }
        test::Program program(home.path(), arguments);
        QVERIFY2(program.exitCode() == 0, program.told().constData());
    }

private:
    QStringList files() const { return test::filesIn(folder_.path()); }
    QString path(const QString &name) const { return folder_.filePath(name); }

    const QTemporaryDir folder_;
};

static const test::Registered<TestFullDisk> registered;
#include "test_full_disk.moc"
