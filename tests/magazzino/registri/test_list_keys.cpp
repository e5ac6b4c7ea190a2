#include "host/HostCommands.h"
#include "magazzino/uMMGModMagazzino.h"
#include "magazzino/ui/MMGModSelezionaBase.h"
#include "tests/magazzino/registri/Registri.h"
#include "tests/support/TestMain.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QTableView>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace {

QWidget *focused()
{
    return QApplication::focusWidget();
}

void pressKey(Qt::Key key)
{
    QTest::keyClick(focused(), key);
    test::settle();
}

QStringList menuTexts(const QMenu *menu)
{
    QStringList texts;
    const QList<QAction *> actions = menu->actions();
    for (const QAction *action : actions)
        texts.append(action->isSeparator() ? u"-"_s : action->text());
    return texts;
}

} // namespace

/// Lists and selection dialogs worked by the keyboard alone.
class TestListKeys : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { workplace_ = std::make_unique<test::Workplace>(); }
    void cleanup() { workplace_.reset(); }

    void enterTwiceTakesTheOnlyRow_data();
    void enterTwiceTakesTheOnlyRow();
    void downBeginsAtTheFirstRow();
    void typedLetterPressesItsButton();
    void lettersAreOneTabStop();
    void enterTwiceInAListEdits();
    void yearOfTwoDigitsIsSearched();
    void failedSearchShowsNoOldRows();
    void registerTakesAnyText_data();
    void registerTakesAnyText();
    void movementListHasNoDelete();
    void columnsOpenAtTheirWidths_data();
    void columnsOpenAtTheirWidths();

private:
    /// A selection dialog as its caller shows it.
    TMMGModSelezionaBase &shown(const QString &name) const
    {
        TMMGModSelezionaBase &dialog = workplace_->module().selectionDialog(u"actModSeleziona"_s + name);
        dialog.setResult(QDialog::Rejected);
        dialog.show();
        QApplication::setActiveWindow(&dialog);
        test::settle();
        return dialog;
    }
    static QTableView *gridOf(const QWidget &window) { return window.findChild<QTableView *>(); }
    static QStringList names(const QWidget &window) { return test::columnTexts(gridOf(window), u"Ragione sociale"_s); }

    std::unique_ptr<test::Workplace> workplace_;
};

void TestListKeys::enterTwiceTakesTheOnlyRow_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("typedBetween");
    QTest::addColumn<bool>("taken");
    QTest::newRow("one row") << u"TRA-0018"_s << QString() << true;
    QTest::newRow("two rows") << u"TRA-00"_s << QString() << false;
    QTest::newRow("another text") << u"TRA-001"_s << u"8"_s << false;
    QTest::newRow("no row") << u"none"_s << QString() << false;
}

void TestListKeys::enterTwiceTakesTheOnlyRow()
{
    QFETCH(QString, code);
    QFETCH(QString, typedBetween);
    QFETCH(bool, taken);
    TMMGModSelezionaBase &dialog = shown(u"Articolo"_s);
    test::type(focused(), code);
    pressKey(Qt::Key_Return);
    QVERIFY(dialog.isVisible());
    QCOMPARE(dialog.ApriSelezionato().id, -1);
    test::type(focused(), typedBetween);
    pressKey(Qt::Key_Return);
    QCOMPARE(dialog.isVisible(), !taken);
    QCOMPARE(dialog.result() == QDialog::Accepted, taken);
    QCOMPARE(dialog.ApriSelezionato().id > 0, taken);
    // Used again, the same text stands in the filter, and Enter only searches.
    dialog.hide();
    shown(u"Articolo"_s);
    pressKey(Qt::Key_Return);
    QVERIFY(dialog.isVisible());
    dialog.hide();
}

void TestListKeys::downBeginsAtTheFirstRow()
{
    TMMGModSelezionaBase &dialog = shown(u"Articolo"_s);
    QTableView *grid = gridOf(dialog);
    for (const bool fromFilter : {true, false}) {
        test::control<QLineEdit>(&dialog, u"txtCodice"_s)->setFocus();
        QTest::keyClick(focused(), Qt::Key_A, Qt::ControlModifier);
        test::type(focused(), u"T"_s);
        pressKey(Qt::Key_Return);
        QVERIFY(grid->model()->rowCount() > 1);
        while (!fromFilter && focused() != grid)
            pressKey(Qt::Key_Tab);
        pressKey(Qt::Key_Down);
        QCOMPARE(focused(), grid);
        QCOMPARE(grid->selectionModel()->selectedRows().value(0).row(), 0);
    }
    pressKey(Qt::Key_Down);
    pressKey(Qt::Key_Return);
    QVERIFY(!dialog.isVisible());
    QCOMPARE(grid->selectionModel()->selectedRows().value(0).row(), 1);
}

void TestListKeys::typedLetterPressesItsButton()
{
    TMMGModSelezionaBase &dialog = shown(u"Cliente"_s);
    const QStringList withA = names(dialog);
    QVERIFY(withA.first().startsWith(u'A'));
    QTest::keyClick(focused(), Qt::Key_B);
    QCOMPARE(test::control<QLineEdit>(&dialog, u"txtRagioneSociale"_s)->text(), u"b"_s);
    QCOMPARE(names(dialog), withA);
    gridOf(dialog)->setFocus();
    for (const Qt::Key key : {Qt::Key_B, Qt::Key_Down}) // the second one so that a row is selected
        pressKey(key);
    QVERIFY(names(dialog).first().startsWith(u'B'));
    QTest::keyClick(focused(), '*');
    QVERIFY(names(dialog).size() > withA.size());
    dialog.hide();
}

void TestListKeys::lettersAreOneTabStop()
{
    const TMMGModSelezionaBase &dialog = shown(u"Vettore"_s);
    const auto *letters = test::control<QWidget>(&dialog, u"BarraRicerca"_s);
    const auto tabTo = [letters] {
        while (focused()->parentWidget() != letters)
            pressKey(Qt::Key_Tab);
        return qobject_cast<QToolButton *>(focused())->text();
    };
    QCOMPARE(tabTo(), u"A"_s);
    pressKey(Qt::Key_Right);
    pressKey(Qt::Key_Tab);
    QVERIFY(focused()->parentWidget() != letters);
    QCOMPARE(tabTo(), u"B"_s);
    pressKey(Qt::Key_End);
    QCOMPARE(gridOf(dialog)->model()->rowCount(), 0);
    pressKey(Qt::Key_Return);
    QVERIFY(gridOf(dialog)->model()->rowCount() > 0);
    pressKey(Qt::Key_Down);
    QVERIFY(dialog.ApriSelezionato().id > 0);
}

void TestListKeys::enterTwiceInAListEdits()
{
    const QString code = workplace_->lines(u"SELECT FIRST 1 CODICE FROM FORNITORI"_s).value(0);
    const ui::SearchForm *list = test::openList(*workplace_, u"actRicercaFornitori"_s);
    test::type(focused(), code);
    pressKey(Qt::Key_Return);
    QCOMPARE(list->selectedKey(), -1);
    QVERIFY(list->isAncestorOf(focused()));
    pressKey(Qt::Key_Return);
    const ui::EntryForm *entry = test::openEntry(*workplace_, u"actInserimentoFornitori"_s);
    QCOMPARE(test::shown(entry, u"txtCodice"_s), code);
}

void TestListKeys::yearOfTwoDigitsIsSearched()
{
    test::insertInto(workplace_->database(), u"DDT_SCARICO"_s, {{u"ANNO"_s, 2020}, {u"CLI_RAGIONESOCIALE"_s, u"X"_s}});
    const ui::SearchForm *list = test::openList(*workplace_, u"actRicercaDdTScarico"_s);
    auto *year = test::control<QLineEdit>(list, u"txtAnno"_s);
    year->setFocus();
    year->selectAll();
    test::type(year, u"20"_s);
    pressKey(Qt::Key_Return);
    QCOMPARE(names(*list), QStringList(u"X"_s));
    QCOMPARE(year->text(), u"2020"_s);
}

void TestListKeys::failedSearchShowsNoOldRows()
{
    const ui::SearchForm *list = test::openList(*workplace_, u"actRicercaFornitori"_s);
    TMMGModSelezionaBase &dialog = shown(u"Fornitore"_s);
    QVERIFY(!names(*list).isEmpty());
    QVERIFY(!names(dialog).isEmpty());
    workplace_->module().ModADOConn->setStatementHook([](const QString &) { throw core::Error(u"rete interrotta"_s); });
    workplace_->messages.expectError(u"rete interrotta"_s);
    gridOf(dialog)->setFocus();
    pressKey(Qt::Key_B);
    QCOMPARE(names(dialog), QStringList());
    dialog.hide();
    workplace_->messages.expectError(u"rete interrotta"_s);
    test::press(list, u"cmdCerca"_s);
    QCOMPARE(names(*list), QStringList());
}

void TestListKeys::registerTakesAnyText_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("found");
    QTest::newRow("apostrophe, other case") << u"zz'"_s << u"ZZ'1"_s;
    QTest::newRow("question mark and colon") << u"?:"_s << u"ZZ?:2"_s;
    QTest::newRow("longer than the column") << QString(90, u'z') << QString();
    QTest::newRow("nothing like a pattern") << u"z_"_s << QString();
}

void TestListKeys::registerTakesAnyText()
{
    QFETCH(QString, typed);
    for (const QString &code : {u"ZZ'1"_s, u"ZZ?:2"_s})
        test::insertInto(workplace_->database(), u"ANA_MAGA"_s, {{u"CODICE"_s, code}, {u"DESCRIZIONE"_s, u"esca"_s}});
    const QWidget *list = workplace_->commands().openForm(u"actRicercaArticoli"_s);
    const QTableView *grid = gridOf(*list);
    test::type(test::control<QLineEdit>(list, u"txtCodice"_s), typed);
    pressKey(Qt::Key_Return);
    QTEST(test::columnTexts(grid, u"Codice"_s).join(u'|'), "found");
    test::press(list, u"cmdRipristina"_s);
    test::control<QTableView>(list, u"GridRisultati"_s)->setFocus();
    for (const auto &[letter, some] : {std::pair(Qt::Key_B, false), {Qt::Key_E, true}, {Qt::Key_Asterisk, true}}) {
        pressKey(letter);
        QCOMPARE(test::columnTexts(grid, u"Codice"_s).contains(u"ZZ'1"_s), some);
    }
}

void TestListKeys::movementListHasNoDelete()
{
    const ui::SearchForm *list = test::openList(*workplace_, u"actRicercaMovimentiMagazzino"_s);
    QVERIFY(!list->command(u"actElimina"_s));
    QCOMPARE(menuTexts(list->formMenu()).mid(0, 4), QStringList({u"Nuovo"_s, u"Modifica"_s, u"-"_s, u"Chiudi"_s}));
}

void TestListKeys::columnsOpenAtTheirWidths_data()
{
    QTest::addColumn<QString>("action");
    QTest::addColumn<QList<int>>("widths");
    QTest::newRow("receipts") << u"actRicercaBolleCarico"_s << QList<int>({50, 80, 120, 350, 110});
    QTest::newRow("notes") << u"actRicercaDdTScarico"_s << QList<int>({50, 80, 120, 350});
    QTest::newRow("invoices") << u"actRicercaFattureAccompagnatorie"_s << QList<int>({50, 80, 120, 350, 110, 60});
    QTest::newRow("suppliers") << u"actRicercaFornitori"_s << QList<int>({100, 490, 90, 90});
    QTest::newRow("carriers") << u"actRicercaVettori"_s << QList<int>({100, 490, 90, 90});
}

void TestListKeys::columnsOpenAtTheirWidths()
{
    QFETCH(QString, action);
    QFETCH(QList<int>, widths);
    const ui::SearchForm *list = test::openList(*workplace_, action);
    QVERIFY(list->parentWidget()->rect().contains(list->geometry()));
    const QTableView *grid = test::gridOf(list);
    QList<int> found;
    for (int column = 0; column < grid->model()->columnCount(); ++column)
        found.append(grid->columnWidth(column));
    QCOMPARE(found, widths);
}

static const test::Registered<TestListKeys> registered;

#include "test_list_keys.moc"
