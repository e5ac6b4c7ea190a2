#include "platform/core/FileAccess.h"
#include "platform/core/WorkFolder.h"
#include "tests/support/Kit.h"

#include <sys/stat.h>

class TestFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void abandonedWorkFoldersGo()
    {
        const QTemporaryDir parent;
        const auto count = [&parent] {
            return QDir(parent.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).size();
        };
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

static const test::Registered<TestFiles> registered;
#include "test_files.moc"
