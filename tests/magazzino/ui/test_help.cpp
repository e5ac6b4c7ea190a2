#include "host/HostCommands.h"
#include "host/help/HostChapters.h"
#include "host/help/ManualWindow.h"
#include "host/ui/MainWindow.h"
#include "magazzino/uMMGModMagazzino.h"
#include "platform/ui/Help.h"
#include "tests/support/Controls.h"
#include "tests/support/TestMain.h"
#include "tests/support/Workplace.h"

#include <QClipboard>
#include <QDialog>
#include <QListWidget>
#include <QPointer>
#include <QTextBlock>

using namespace Qt::StringLiterals;

/// F1 and what stands under "?".
class TestHelp : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { host::addHostChapters(); }
    void everyChapterIsInTheManual();
    void f1OpensTheChapterOfTheWindow();
    void f1WorksInDialogs();
    void informationIsCopied();
};

namespace {

QPointer<host::ManualWindow> shownManual()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        auto *manual = qobject_cast<host::ManualWindow *>(window);
        if (manual && manual->isVisible())
            return manual;
    }
    return {};
}

QString chapterShown(const host::ManualWindow &manual)
{
    return test::control<QListWidget>(&manual, u"lstCapitoli"_s)->currentItem()->text().trimmed();
}

} // namespace

void TestHelp::everyChapterIsInTheManual()
{
    const host::ManualWindow manual(nullptr);
    const QStringList titles = manual.chapters();
    for (auto [window, chapter] : ui::helpChapters().asKeyValueRange())
        QVERIFY2(titles.contains(chapter), qPrintable(window + u": "_s + chapter));
}

void TestHelp::f1OpensTheChapterOfTheWindow()
{
    const test::Workplace workplace;
    workplace.window().show();
    QWidget *form = workplace.module().openForm(u"actInserimentoDdTScarico"_s);
    form->activateWindow();
    test::settle();
    QTest::keyClick(workplace.window().windowHandle(), Qt::Key_F1);
    test::settle();
    const QPointer<host::ManualWindow> manual = shownManual();
    QVERIFY(manual);
    QCOMPARE(chapterShown(*manual), u"Merce in uscita: il D.d.T. di scarico"_s);
    // The heading stands at the top of what is seen, and its pictures are there and fit.
    auto *text = test::control<host::ManualText>(manual, u"txtManuale"_s);
    QCOMPARE(text->cursorForPosition({10, 10}).block().text(), chapterShown(*manual));
    const auto picture =
        text->document()->resource(QTextDocument::ImageResource, QUrl(u"images/ddt-righe.png"_s)).value<QImage>();
    QVERIFY(!picture.isNull() && picture.width() < text->viewport()->width());
    manual->close();
}

// A dialog keeps the main window from taking keys, and would keep the manual from it, too.
void TestHelp::f1WorksInDialogs()
{
    test::Workplace workplace;
    host::installHelpKey(&workplace.window());
    workplace.dialogs.expect([](QDialog &dialog) {
        QTest::keyClick(&dialog, Qt::Key_F1);
        test::settle();
        const QPointer<host::ManualWindow> manual = shownManual();
        QVERIFY(manual && manual->parentWidget() == &dialog);
        QCOMPARE(chapterShown(*manual), u"Importare da CSV"_s);
        dialog.reject();
    });
    test::trigger(&workplace.commands(), u"actImporta"_s);
    QCOMPARE(workplace.dialogs.verify(), QStringList());
}

void TestHelp::informationIsCopied()
{
    test::Workplace workplace;
    workplace.dialogs.expect([](QDialog &dialog) {
        test::press(&dialog, u"cmdCopia"_s);
        dialog.reject();
    });
    test::trigger(&workplace.window(), u"actInformazioni"_s);
    QCOMPARE(workplace.dialogs.verify(), QStringList());
    const QString copied = QApplication::clipboard()->text();
    for (const QString &part : {u"Versione: 1."_s, u"Moduli caricati: Modulo Magazzino"_s, u"Firebird: "_s})
        QVERIFY2(copied.contains(part), qPrintable(copied));
}

static const test::Registered<TestHelp> registered;

#include "test_help.moc"
