#include "host/Corvane3Impl.h"
#include "host/IntfPack.h"
#include "host/PackageLoader.h"
#include "host/ui/MainWindow.h"
#include "magazzino/Azioni.h"
#include "magazzino/MMGUtils.h"
#include "magazzino/uMMGModMagazzino.h"
#include "magazzino/ui/SelectionDialog.h"
#include "platform/core/Error.h"
#include "platform/data/DataSet.h"
#include "platform/report/Report.h"
#include "tests/support/Controls.h"
#include "tests/support/TestMain.h"
#include "tests/support/Workplace.h"

#include <QFile>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QScopeGuard>
#include <QToolBar>

using namespace Qt::StringLiterals;

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
        if (fails)
            throw core::Error(u"motivo del guasto"_s);
    }
    Q_INVOKABLE void Finalize() {}
};

class TestModuleFrame : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void packageIsRegisteredOnce();
    void menusAreMerged_data();
    void menusAreMerged();
    void missingHostMenus_data();
    void missingHostMenus();
    void toolBarsAreMerged();
    void connectionComesFromTheFirstOfTheMainForm();
    void startWithoutHostConnectionIsReported();
    void startWithoutReportFileGoesOn();
    void actionsMatchTheirList_data();
    void actionsMatchTheirList();
    void actionTwiceGivesOneWindow();
    void selectionDialogsAreMadeAtFirstUseAndKept();
    void callInByNameDoesNothing();
    void failedFormIsMadeAtTheNextRun();
    void dataSetsReadByKey_data();
    void dataSetsReadByKey();
    void brokenLibraryIsReportedOnce();
    void failingModuleIsRemovedAndTheOthersGoOn();
};

namespace {

QMenu *hostMenu(const test::Workplace &workplace, const QString &name)
{
    return workplace.window().menuBar()->findChild<QMenu *>(name);
}

QStringList captions(const QList<QAction *> &actions)
{
    QStringList texts;
    for (const QAction *action : actions)
        texts.append(action->isSeparator() ? u"-"_s : action->text());
    return texts;
}

int openWindows(const test::Workplace &workplace)
{
    return static_cast<int>(workplace.window().findChild<QMdiArea *>()->subWindowList().size());
}

} // namespace

void TestModuleFrame::packageIsRegisteredOnce()
{
    RegisterPackage(u"MAGAZZINO.BPL"_s, u"Altro"_s, packageClass<TestUnreliableModule>());
    QStringList found;
    for (int i = 0; i < GetPackageCount(); ++i) {
        const PackageEntry &entry = GetPackage(i);
        if (entry.fileName.compare(u"Magazzino.bpl"_s, Qt::CaseInsensitive) == 0)
            found.append(entry.fileName + u'|' + entry.displayName + u'|' + entry.moduleClass.className);
    }
    QCOMPARE(found, QStringList(u"Magazzino.bpl|Modulo Magazzino|TMMGModMagazzino"_s));
}

void TestModuleFrame::menusAreMerged_data()
{
    QTest::addColumn<QString>("menu");
    QTest::addColumn<QString>("items");
    QTest::newRow("documents") << u"mnDocumenti"_s << u"D.d.T. di scarico|-|Fatture Accompagnatorie|-"_s;
    QTest::newRow("tables") << u"mnTabelle"_s << u"Causali di trasporto|Tipi di trasporto"_s;
    QTest::newRow("warehouse") << u"mnMagazzino"_s
                               << u"Bolle di carico|-|Gestione movimenti di magazzino|Stampa inventario|"
                                  "Stampa inventario valorizzato|Stampa sottoscorta / riordino"_s;
    QTest::newRow("master data") << u"mnAnagrafiche"_s << u"Fornitori|Vettori"_s;
}

void TestModuleFrame::menusAreMerged()
{
    QFETCH(QString, menu);
    QFETCH(QString, items);
    const test::Workplace workplace;
    QCOMPARE(captions(hostMenu(workplace, menu)->actions()).join(u'|'), items);
}

void TestModuleFrame::missingHostMenus_data()
{
    QTest::addColumn<QString>("menu");
    QTest::addColumn<QString>("created");
    QTest::newRow("documents") << u"mnDocumenti"_s << u"Documenti"_s;
    QTest::newRow("warehouse") << u"mnMagazzino"_s << u"Magazzino"_s;
    QTest::newRow("tables") << u"mnTabelle"_s << QString();
    QTest::newRow("master data") << u"mnAnagrafiche"_s << QString();
}

void TestModuleFrame::missingHostMenus()
{
    QFETCH(QString, menu);
    QFETCH(QString, created);
    test::Workplace workplace(test::Workplace::Start::WindowOnly);
    delete hostMenu(workplace, menu);
    workplace.startModule();
    QStringList titles;
    const QList<QAction *> topLevel = workplace.window().menuBar()->actions();
    for (const QAction *action : topLevel) {
        if (action->menu() && action->menu()->objectName() == menu)
            titles.append(action->menu()->title());
    }
    QCOMPARE(titles.join(u'|'), created);
}

void TestModuleFrame::toolBarsAreMerged()
{
    const test::Workplace workplace;
    const QToolBar *documents = workplace.window().commonToolBar(TKxCommonToolBars::Documenti);
    const QToolBar *masterData = workplace.window().commonToolBar(TKxCommonToolBars::Anagrafiche);
    QCOMPARE(captions(documents->actions()), QStringList({u"Fatt. Acc."_s, u"Bolle di carico"_s, u"D.d.T."_s}));
    QCOMPARE(captions(masterData->actions()), QStringList({u"Fornitori"_s}));
    QVERIFY(documents->isVisible() && masterData->isVisible());
    QCOMPARE(documents->actions()[0]->toolTip(),
             u"<b>Ricerca Fatture Accompagnatorie</b><br>"
             "Apre la maschera di ricerca delle Fatture Immediate Accompagnatorie."_s);
    QCOMPARE(documents->actions()[2]->toolTip(),
             u"<b>Ricerca D.d.T. di scarico</b><br>Apre la maschera di ricerca dei D.d.T. di scarico."_s);
}

void TestModuleFrame::connectionComesFromTheFirstOfTheMainForm()
{
    test::Workplace workplace(test::Workplace::Start::WindowOnly);
    auto *second = new data::Connection(&workplace.window());
    second->setConnectionString(u"Database=/none;"_s);
    workplace.startModule();
    QCOMPARE(workplace.module().ModADOConn->connectionString(), workplace.database().connectionString());
    QVERIFY(workplace.module().ModADOConn->isOpen());
}

void TestModuleFrame::startWithoutHostConnectionIsReported()
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

void TestModuleFrame::startWithoutReportFileGoesOn()
{
    const QString path = QCoreApplication::applicationDirPath() + u"/Magazzino.rav"_s;
    const QString away = path + u".via"_s;
    QVERIFY(QFile::rename(path, away));
    const auto back = qScopeGuard([&] { QFile::rename(away, path); });
    test::Workplace workplace(test::Workplace::Start::WindowOnly);
    workplace.messages.expectError(u"Impossibile trovare il file delle stampe del modulo Magazzino!"_s);
    workplace.startModule();
    QCOMPARE(workplace.messages.verify(), QStringList());
    QVERIFY(!workplace.module().rProject->isOpen());
    QVERIFY(workplace.module().dmStampe);
    QVERIFY(workplace.module().openForm(u"actInserimentoBolleCarico"_s));
}

void TestModuleFrame::actionsMatchTheirList_data()
{
    QTest::addColumn<QString>("category");
    QTest::addColumn<QString>("caption");
    const auto row = [](const char *name, const QString &category, const QString &caption) {
        QTest::newRow(name) << category << caption;
    };
    const QString entry = u"Inserimento"_s;
    const QString search = u"Ricerca"_s;
    const QString modal = u"Modali"_s;
    const QString print = u"Stampe"_s;
    row("actInserimentoCausaliTrasporto", entry, u"Inserimento causali di trasporto"_s);
    row("actRicercaCausaliTrasporto", search, u"Causali di trasporto"_s);
    row("actModSelezionaCausaleTrasporto", modal, u"Seleziona causale di trasporto"_s);
    row("actInserimentoDdTScarico", entry, u"Inserimento D.d.T. di scarico"_s);
    row("actModSelezionaArticolo", modal, u"Seleziona un articolo"_s);
    row("actModSelezionaServizio", modal, u"Seleziona un servizio"_s);
    row("actModSelezionaCliente", modal, u"Seleziona un cliente"_s);
    row("actInserimentoTipiTrasporto", entry, u"Inserimento tipi di trasporto"_s);
    row("actRicercaTipiTrasporto", search, u"Tipi di trasporto"_s);
    row("actModSelezionaTipoTrasporto", modal, u"Seleziona un tipo di trasporto"_s);
    row("actModSelezionaUM", modal, u"Seleziona un'unità di misura"_s);
    row("actRicercaDdTScarico", search, u"D.d.T."_s);
    row("actModSelezionaTipoPagamento", modal, u"Seleziona tipo di pagamento"_s);
    row("actInserimentoFattureAccompagnatorie", entry, u"Inserimento fatture accompagnatorie"_s);
    row("actRicercaFattureAccompagnatorie", search, u"Fatt. Acc."_s);
    row("actRicercaMovimentiMagazzino", search, u"Gestione movimenti di magazzino"_s);
    row("actStampaInventario", print, u"Stampa inventario"_s);
    row("actInserimentoMovimentiMagazzino", entry, u"Nuovo movimento di magazzino"_s);
    row("actModSelezionaCausaleMagazzino", modal, u"Seleziona una causale di magazzino"_s);
    row("actInserimentoFornitori", entry, u"Inserimento fornitori"_s);
    row("actRicercaFornitori", search, u"Fornitori"_s);
    row("actInserimentoBolleCarico", entry, u"Inserimento bolle di carico"_s);
    row("actModSelezionaFornitore", modal, u"Seleziona un fornitore"_s);
    row("actRicercaBolleCarico", search, u"Bolle di carico"_s);
    row("actStampaSottoscortaRiordino", print, u"Stampa sottoscorta / riordino"_s);
    row("actStampaInventarioValorizzato", print, u"Stampa inventario valorizzato"_s);
    row("actInserimentoVettori", entry, u"Nuovo"_s);
    row("actRicercaVettori", search, u"Vettori"_s);
    row("actModSelezionaVettore", modal, u"Seleziona un vettore"_s);
    row("actModSelezionaNotaDocumenti", modal, u"Seleziona nota"_s);
}

void TestModuleFrame::actionsMatchTheirList()
{
    QFETCH(QString, category);
    QFETCH(QString, caption);
    const QString name = QString::fromLatin1(QTest::currentDataTag());
    const TMMGModMagazzino module(nullptr);
    const QAction *action = module.action(name);
    QVERIFY(action);
    QCOMPARE(action->property("category").toString(), category);
    QCOMPARE(action->text(), caption);
    const auto spec = std::find_if(moduleActions().begin(), moduleActions().end(),
                                   [&name](const ModuleAction &candidate) { return candidate.name == name; });
    QCOMPARE(action->isEnabled(), spec->create != nullptr);
}

void TestModuleFrame::actionTwiceGivesOneWindow()
{
    const test::Workplace workplace;
    const QString action = u"actInserimentoDdTScarico"_s;
    const QPointer<QWidget> form = workplace.module().openForm(action);
    QCOMPARE(workplace.module().openForm(action), form.data());
    QCOMPARE(openWindows(workplace), 1);
    test::trigger(form, u"actChiudi"_s);
    QVERIFY(form.isNull());
    QCOMPARE(openWindows(workplace), 0);
    QVERIFY(workplace.module().openForm(action)->isVisible());
}

void TestModuleFrame::selectionDialogsAreMadeAtFirstUseAndKept()
{
    const test::Workplace workplace;
    QCOMPARE(workplace.module().findChildren<TMMGModSelezionaBase *>().size(), 0);
    int dialogs = 0;
    for (const ModuleAction &spec : moduleActions()) {
        if (spec.kind != ActionKind::Selection)
            continue;
        const TMMGModSelezionaBase *dialog = &workplace.module().selectionDialog(spec.name);
        QCOMPARE(&workplace.module().selectionDialog(spec.name), dialog);
        QVERIFY(!dialog->isVisible());
        ++dialogs;
    }
    QCOMPARE(dialogs, 11);
    QCOMPARE(workplace.module().findChildren<TMMGModSelezionaBase *>().size(), 11);
}

void TestModuleFrame::callInByNameDoesNothing()
{
    const test::Workplace workplace;
    QVERIFY(!workplace.module().ExecutePkgAction(u"actInserimentoDdTScarico"_s, {1}, 1));
    QVERIFY(!workplace.module().ExecutePkgAction({}, {}, 0));
    QCOMPARE(openWindows(workplace), 0);
}

void TestModuleFrame::failedFormIsMadeAtTheNextRun()
{
    test::Workplace workplace;
    const QString action = u"actInserimentoBolleCarico"_s;
    data::Connection &connection = *workplace.module().ModADOConn;
    connection.setStatementHook([](const QString &) { throw core::Error(u"rifiutato"_s); });
    workplace.messages.expectError(u"rifiutato"_s);
    QVERIFY(!workplace.module().openForm(action));
    QCOMPARE(openWindows(workplace), 0);
    connection.setStatementHook({});
    QVERIFY(workplace.module().openForm(action)->isVisible());
}

void TestModuleFrame::dataSetsReadByKey_data()
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<QString>("key");
    QTest::addColumn<bool>("fixed");
    QTest::newRow("adsCausaliTrasporto") << u"CAUSALI_TRASPORTO"_s << u"IDCAUSALE_TRASPORTO"_s << false;
    QTest::newRow("adsDdTScarico") << u"DDT_SCARICO"_s << u"IDDDT_SCARICO"_s << false;
    QTest::newRow("adsDdTScaricoDett") << u"DDT_SCARICO_DETT"_s << u"IDDDT_SCARICO"_s << false;
    QTest::newRow("adsTipiTrasporto") << u"TIPI_TRASPORTO"_s << u"IDTIPO_TRASPORTO"_s << false;
    QTest::newRow("adsFattAcc") << u"FATT_ACC"_s << u"IDFATT_ACC"_s << false;
    QTest::newRow("adsFattAccDett") << u"FATT_ACC_DETT"_s << u"IDFATT_ACC"_s << false;
    QTest::newRow("adsMoviMaga") << u"MOVI_MAGA"_s << u"IDMOVI_MAGA"_s << true;
    QTest::newRow("adsFornitore") << u"FORNITORI"_s << u"IDFORNITORE"_s << false;
    QTest::newRow("adsBollaCarico") << u"BOLLE_CARICO"_s << u"IDBOLLA_CARICO"_s << false;
    QTest::newRow("adsBollaCaricoDett") << u"BOLLE_CARICO_DETT"_s << u"IDBOLLA_CARICO"_s << false;
    QTest::newRow("adsVettore") << u"VETTORI"_s << u"IDVETTORE"_s << true;
}

void TestModuleFrame::dataSetsReadByKey()
{
    QFETCH(QString, table);
    QFETCH(QString, key);
    QFETCH(bool, fixed);
    const test::Workplace workplace;
    data::DataSet &set = workplace.module().dataSet(QString::fromLatin1(QTest::currentDataTag()));
    QCOMPARE(set.commandText(), u"SELECT\r\n*\r\nFROM %1\r\nWHERE %2=:%2"_s.arg(table, key));
    QCOMPARE(set.cursorType() == data::CursorType::Static, fixed);
    QCOMPARE(set.connection(), workplace.module().ModADOConn);
    set.setParameter(key, 1);
    set.open();
    const QString count = workplace.lines(u"SELECT COUNT(*) FROM %1 WHERE %2 = 1"_s.arg(table, key)).value(0);
    QCOMPARE(QString::number(set.recordCount()), count);
}

void TestModuleFrame::brokenLibraryIsReportedOnce()
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"rotto.bpl"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("questa non è una libreria");
    file.close();
    test::ScriptedMessages messages;
    messages.expectError(u"Impossibile caricare il modulo \"rotto.bpl\"."_s);
    host::loadPackages(folder.path());
    QCOMPARE(messages.verify(), QStringList());
}

void TestModuleFrame::failingModuleIsRemovedAndTheOthersGoOn()
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
        QVERIFY(last.instance);
        QVERIFY(workplace.module().ModADOConn->isOpen());
    }
    QVERIFY(last.instance.isNull());
}

static const test::Registered<TestModuleFrame> registered;

#include "test_module_frame.moc"
