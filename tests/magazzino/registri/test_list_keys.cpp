#include "tests/support/Fixtures.h"

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
class TestListKeys : public test::AtWorkplace
{
    Q_OBJECT

private Q_SLOTS:
    void enterTwiceTakesTheOnlyRow_data()
    {
        test::columns<QString, QString, bool>("code", "typedBetween", "taken");
        QTest::newRow("one row") << u"TRA-0018"_s << QString() << true;
        QTest::newRow("two rows") << u"TRA-00"_s << QString() << false;
        QTest::newRow("another text") << u"TRA-001"_s << u"8"_s << false;
        QTest::newRow("no row") << u"none"_s << QString() << false;
    }

    void enterTwiceTakesTheOnlyRow()
    {
        const auto [code, typedBetween, taken] = test::row<QString, QString, bool>();
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

    void downBeginsAtTheFirstRow()
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

    void typedLetterPressesItsButton()
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

    void lettersAreOneTabStop()
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

    void enterTwiceInAListEdits()
    {
        const QString code = lines(u"SELECT FIRST 1 CODICE FROM FORNITORI"_s).value(0);
        const ui::SearchForm *list = openList(u"actRicercaFornitori"_s);
        test::type(focused(), code);
        pressKey(Qt::Key_Return);
        QCOMPARE(list->selectedKey(), -1);
        QVERIFY(list->isAncestorOf(focused()));
        pressKey(Qt::Key_Return);
        const ui::EntryForm *entry = openEntry(u"actInserimentoFornitori"_s);
        QCOMPARE(test::shown(entry, u"txtCodice"_s), code);
    }

    void failedSearchShowsNoOldRows()
    {
        const ui::SearchForm *list = openList(u"actRicercaFornitori"_s);
        TMMGModSelezionaBase &dialog = shown(u"Fornitore"_s);
        QVERIFY(!names(*list).isEmpty());
        QVERIFY(!names(dialog).isEmpty());
        connection().setStatementHook([](const QString &) { throw core::Error(u"rete interrotta"_s); });
        place().messages.expectError(u"rete interrotta"_s);
        gridOf(dialog)->setFocus();
        pressKey(Qt::Key_B);
        QCOMPARE(names(dialog), QStringList());
        QVERIFY(!QGuiApplication::overrideCursor() && dialog.isVisible());
        dialog.hide();
        place().messages.expectError(u"rete interrotta"_s);
        test::press(list, u"cmdCerca"_s);
        QCOMPARE(names(*list), QStringList());
    }

    void registerTakesAnyText()
    {
        for (const QString &code : {u"ZZ'1"_s, u"ZZ?:2"_s})
            test::insertInto(database(), u"ANA_MAGA"_s, {{u"CODICE"_s, code}, {u"DESCRIZIONE"_s, u"esca"_s}});
        const QWidget *list = place().commands().openForm(u"actRicercaArticoli"_s);
        const QTableView *grid = gridOf(*list);
        // One text is longer than the column, the last one nothing like a pattern.
        for (const auto &[typed, found] :
             {std::pair(u"zz'"_s, u"ZZ'1"_s), {u"?:"_s, u"ZZ?:2"_s}, {QString(90, u'z'), u""_s}, {u"z_"_s, u""_s}}) {
            test::retype(list, u"txtCodice"_s, typed);
            pressKey(Qt::Key_Return);
            QCOMPARE(test::columnTexts(grid, u"Codice"_s).join(u'|'), found);
        }
        test::press(list, u"cmdRipristina"_s);
        gridOf(*list)->setFocus();
        for (const auto &[letter, some] : {std::pair(Qt::Key_B, false), {Qt::Key_E, true}, {Qt::Key_Asterisk, true}}) {
            pressKey(letter);
            QCOMPARE(test::columnTexts(grid, u"Codice"_s).contains(u"ZZ'1"_s), some);
        }
    }

    void movementListHasNoDelete()
    {
        const ui::SearchForm *list = openList(u"actRicercaMovimentiMagazzino"_s);
        QVERIFY(!list->command(u"actElimina"_s));
        QCOMPARE(menuTexts(list->formMenu()).mid(0, 4), QStringList({u"Nuovo"_s, u"Modifica"_s, u"-"_s, u"Chiudi"_s}));
    }

private:
    /// A selection dialog as its caller shows it.
    TMMGModSelezionaBase &shown(const QString &name) const
    {
        TMMGModSelezionaBase &dialog = place().module().selectionDialog(u"actModSeleziona"_s + name);
        dialog.setResult(QDialog::Rejected);
        dialog.show();
        QApplication::setActiveWindow(&dialog);
        test::settle();
        return dialog;
    }
    static QTableView *gridOf(const QWidget &window) { return window.findChild<QTableView *>(); }
    static QStringList names(const QWidget &window) { return test::columnTexts(gridOf(window), u"Ragione sociale"_s); }
};

static const test::Registered<TestListKeys> registered;

#include "test_list_keys.moc"
