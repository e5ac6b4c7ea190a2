#include "host/IntfPack.h"
#include "host/PackageLoader.h"
#include "host/help/HostChapters.h"
#include "magazzino/Azioni.h"
#include "magazzino/ui/RecordChoice.h"
#include "platform/report/Report.h"
#include "platform/ui/Help.h"
#include "tests/support/Fixtures.h"

/// A module whose start can fail.
class TestUnreliableModule : public QObject
{
    Q_OBJECT

public:
    explicit TestUnreliableModule(QObject *owner)
        : QObject(owner)
    {
    }
    bool fails = false;

    Q_INVOKABLE void Initialize()
    {
        if (!fails)
            return;
        menu_.addAction(u"Comando"_s);
        for (const QString &target : {u"mnStrumenti"_s, u"mnGuasto"_s})
            MergeAdvMenuItems(qApp, target, &menu_, true);
        throw core::Error(u"motivo del guasto"_s);
    }
    Q_INVOKABLE void Finalize() {}

private:
    QMenu menu_{u"Guasto"_s};
};

namespace {

QMenu *hostMenu(const test::Workplace &workplace, const QString &name)
{
    return workplace.window().menuBar()->findChild<QMenu *>(name);
}

QStringList shownMenus(const test::Workplace &workplace)
{
    QStringList titles;
    const QList<QAction *> topLevel = workplace.window().menuBar()->actions();
    for (const QAction *action : topLevel) {
        if (action->isVisible())
            titles.append(action->text());
    }
    return titles;
}

int openWindows(const test::Workplace &workplace)
{
    int shown = 0;
    const QList<QMdiSubWindow *> windows = workplace.window().findChild<QMdiArea *>()->subWindowList();
    for (const QMdiSubWindow *window : windows)
        shown += window->isVisible() ? 1 : 0;
    return shown;
}

// What takes the focus and has nothing that a screen reader could say.
QString nameless(const QWidget &window)
{
    QString found;
    for (QWidget *control : window.findChildren<QWidget *>()) {
        if ((control->focusPolicy() & Qt::TabFocus) != 0 && control->isVisibleTo(&window) && !control->isWindow() &&
            QAccessible::queryAccessibleInterface(control)->text(QAccessible::Name).trimmed().isEmpty())
            found += u' ' + QLatin1String(control->metaObject()->className()) + u' ' + control->objectName();
    }
    return found;
}

} // namespace

class TestModuleFrame : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void missingHostMenus()
    {
        // Only the menus that the module cannot do without are made anew.
        for (const auto &[menu, created] : {std::pair(u"mnDocumenti"_s, u"Documenti"_s), {u"mnTabelle"_s, QString()}}) {
            test::Workplace workplace(test::Workplace::Start::WindowOnly);
            delete hostMenu(workplace, menu);
            workplace.startModule();
            QString title;
            const QList<QAction *> topLevel = workplace.window().menuBar()->actions();
            for (const QAction *action : topLevel) {
                if (action->menu() && action->menu()->objectName() == menu)
                    title += action->menu()->title();
            }
            QCOMPARE(title, created);
        }
    }

    void connectionComesFromTheFirstOfTheMainForm()
    {
        test::Workplace workplace(test::Workplace::Start::WindowOnly);
        auto *second = new data::Connection(&workplace.window());
        second->setConnectionString(u"Database=/none;"_s);
        workplace.startModule();
        QCOMPARE(workplace.module().ModADOConn->connectionString(), workplace.database().connectionString());
        QVERIFY(workplace.module().ModADOConn->isOpen());
    }

    void startWithoutHostConnectionIsReported()
    {
        test::Workplace workplace(test::Workplace::Start::WindowOnly);
        delete &workplace.database();
        workplace.messages.expectError(u"[AggiornaDatabase]\n\rLa connessione al database non è aperta."_s);
        workplace.startModule();
        QVERIFY(!workplace.module().ModADOConn->isOpen());
        QCOMPARE(workplace.module().ModADOConn->connectionString(),
                 u"Provider=MSDASQL.1;Persist Security Info=False;Data Source=CORVANE3_LOCAL;"_s);
        QVERIFY(!hostMenu(workplace, u"mnMagazzino"_s)->isEmpty());
    }

    void startWithoutReportFileGoesOn()
    {
        const QString path = QCoreApplication::applicationDirPath() + u"/Magazzino.rav"_s;
        const QString away = path + u".via"_s;
        QVERIFY(QFile::rename(path, away));
        const auto back = qScopeGuard([&] { QFile::rename(away, path); });
        test::Workplace workplace(test::Workplace::Start::WindowOnly);
        workplace.messages.expectError(u"Impossibile trovare il file delle stampe del modulo Magazzino!"_s);
        workplace.startModule();
        QVERIFY(!workplace.module().rProject->isOpen());
        QVERIFY(workplace.module().dmStampe);
        QVERIFY(workplace.module().openForm(u"actInserimentoBolleCarico"_s));
    }

    // The module's and the host's: a window with a title, a chapter of the manual and names for all its controls, once
    // however often it is asked for, or a modal dialog.
    void everyActionOpens()
    {
        test::Workplace workplace;
        host::addHostChapters();
        const auto opensWindow = [&](const QString &action, const std::function<QWidget *()> &open) {
            const QPointer<QWidget> form = open();
            QVERIFY2(form && form->isVisible() && !form->windowTitle().isEmpty(), qPrintable(action));
            QVERIFY2(!ui::helpChapter(form).isEmpty(), qPrintable(action));
            QCOMPARE(action + nameless(*form), action);
            QVERIFY2(open() == form && openWindows(workplace) == 1, qPrintable(action));
            test::trigger(form, u"actChiudi"_s);
            QVERIFY2((!form || !form->isVisible()) && openWindows(workplace) == 0, qPrintable(action));
            QVERIFY2(open()->isVisible(), qPrintable(action));
            workplace.window().findChild<QMdiArea *>()->closeAllSubWindows();
        };
        const auto opensDialog = [&](const QString &action, const std::function<void()> &open) {
            workplace.dialogs.expect([&action](QDialog &dialog) {
                QVERIFY2(dialog.isVisible() && !dialog.windowTitle().isEmpty(), qPrintable(action));
                QVERIFY2(!ui::helpChapter(&dialog).isEmpty(), qPrintable(action));
                QCOMPARE(action + nameless(dialog), action);
                dialog.reject();
            });
            open();
            QVERIFY2(workplace.dialogs.verify().isEmpty(), qPrintable(action));
        };
        // Closing hides the others, which come back as they were.
        const QStringList freed = {
            u"actInserimentoBolleCarico"_s, u"actInserimentoDdTScarico"_s, u"actInserimentoFattureAccompagnatorie"_s,
            u"actRicercaBolleCarico"_s,     u"actStampaInventario"_s,      u"actStampaInventarioValorizzato"_s};
        for (const ui::ActionSpec &action : moduleActions()) {
            if (action.kind == ui::ActionKind::Form) {
                const QPointer<QWidget> form = workplace.module().openForm(action.name);
                opensWindow(action.name, [&] { return workplace.module().openForm(action.name); });
                QVERIFY2(form.isNull() == freed.contains(action.name), qPrintable(action.name));
            }
            if (action.kind == ui::ActionKind::Selection)
                opensDialog(action.name, [&] { QVERIFY(!chooseRecord(action.name)); });
            if (action.kind == ui::ActionKind::Report)
                opensDialog(action.name, [&] { test::trigger(&workplace.module(), action.name); });
        }
        const QStringList dialogs = {u"actOpzioni"_s, u"actOpzioniDocumenti"_s, u"actImporta"_s, u"actCercaOvunque"_s,
                                     u"actCambiaPassword"_s};
        const QList<QAction *> ofHost =
            workplace.commands().findChildren<QAction *>(QString(), Qt::FindDirectChildrenOnly);
        QVERIFY(ofHost.size() > dialogs.size());
        for (QAction *action : ofHost) {
            if (dialogs.contains(action->objectName()))
                opensDialog(action->objectName(), [action] { action->trigger(); });
            else
                opensWindow(action->objectName(), [&] { return workplace.commands().openForm(action->objectName()); });
        }
    }

    // With the forms opened meanwhile the list of forms grows and moves.
    void dialogOfAnActionMayOpenOthers()
    {
        test::Workplace workplace;
        workplace.dialogs.expect([&workplace](QDialog &dialog) {
            const QList<QAction *> actions = workplace.module().findChildren<QAction *>(Qt::FindDirectChildrenOnly);
            for (QAction *action : actions) {
                if (action->property("category") != u"Stampe"_s)
                    action->trigger();
            }
            dialog.accept();
        });
        const QWidget *dialog = workplace.module().openForm(u"actStampaSottoscortaRiordino"_s);
        QCOMPARE(dialog->windowTitle(), u"Stampa articoli sottoscorta / riordino"_s);
    }

    void brokenLibraryIsReportedOnce()
    {
        const QTemporaryDir folder;
        core::saveFile(folder.filePath(u"rotto.bpl"_s), "questa non è una libreria");
        test::ScriptedMessages messages;
        messages.expectError(u"Impossibile caricare il modulo \"rotto.bpl\"."_s);
        host::loadPackages(folder.path());
    }

    void failingModuleIsRemovedAndTheOthersGoOn()
    {
        RegisterPackage(u"Guasto.bpl"_s, u"Modulo guasto"_s, packageClass<TestUnreliableModule>());
        RegisterPackage(u"Ultimo.bpl"_s, u"Ultimo modulo"_s, packageClass<TestUnreliableModule>());
        PackageEntry &broken = GetPackage(GetPackageIndex(u"Guasto.bpl"_s));
        const PackageEntry &last = GetPackage(GetPackageIndex(u"Ultimo.bpl"_s));
        broken.moduleClass.create = [](QObject *owner) {
            auto *module = new TestUnreliableModule(owner);
            module->fails = true;
            return module;
        };
        // The registration lasts as long as the program, and the tests after this one start all modules.
        const auto repaired = qScopeGuard([&] { broken.moduleClass = last.moduleClass; });
        {
            test::Workplace workplace(test::Workplace::Start::WindowOnly);
            workplace.messages.expectError(u"Impossibile avviare il modulo \"Modulo guasto\".\n\rmotivo del guasto"_s);
            workplace.startModule();
            QVERIFY(broken.instance.isNull());
            QVERIFY(!shownMenus(workplace).contains(u"Guasto"_s));
            QVERIFY(shownMenus(workplace).contains(u"&Strumenti"_s));
            QVERIFY(last.instance);
            QVERIFY(workplace.module().ModADOConn->isOpen());
        }
        QVERIFY(last.instance.isNull());
    }
};

static const test::Registered<TestModuleFrame> registered;

#include "test_module_frame.moc"
