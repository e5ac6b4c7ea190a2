#include "tests/support/Fixtures.h"

class TestKeyboard : public test::AtWorkplace
{
    Q_OBJECT

private Q_SLOTS:
    void keypadPointTypesAComma()
    {
        const test::Document note(place(), test::receipt());
        auto *weight = note.control<ui::DecimalEdit>(u"txtPeso"_s);
        weight->selectAll();
        test::type(weight, u"7"_s);
        QTest::keyClick(weight, Qt::Key_Period, Qt::KeypadModifier);
        test::type(weight, u"5"_s);
        QCOMPARE(weight->value(), 7.5);

        note.addArticle(u"TRA-0018"_s, u"2"_s, u"1"_s);
        note.grid()->select(0, &DocumentRow::quantita);
        QTest::keyClick(note.grid(), Qt::Key_3); // the first key opens the editor
        auto *editor = test::control<QLineEdit>(note.grid(), u"editorRiga"_s);
        QTest::keyClick(editor, Qt::Key_Period, Qt::KeypadModifier);
        QTest::keyClick(editor, Qt::Key_5);
        QTest::keyClick(editor, Qt::Key_Enter, Qt::KeypadModifier);
        test::settle();
        QCOMPARE(test::cellText(note.grid(), 0, u"Q.tà"_s), u"3,50"_s);
    }

    void tabAndEnterGoThroughTheEditableCells()
    {
        const test::Document receipt = twoArticles();
        const auto digitThen = [&](int digit, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
            press(digit);
            press(key, modifiers);
            return where(receipt);
        };
        QCOMPARE(digitThen(Qt::Key_3, Qt::Key_Tab), u"0 Q.tà"_s);
        QCOMPARE(digitThen(Qt::Key_4, Qt::Key_Return), u"1 Costo"_s);
        QCOMPARE(digitThen(Qt::Key_5, Qt::Key_Backtab, Qt::ShiftModifier), u"0 Q.tà"_s);
        press(Qt::Key_Tab); // nothing typed
        QCOMPARE(where(receipt), u"1 Costo"_s);
        press(Qt::Key_Enter, Qt::KeypadModifier);
        QCOMPARE(digitThen(Qt::Key_6, Qt::Key_Tab), u"1 Q.tà"_s);
        QCOMPARE(digitThen(Qt::Key_7, Qt::Key_Tab), u"1 Q.tà"_s);
        QCOMPARE(digitThen(Qt::Key_0, Qt::Key_Backtab, Qt::ShiftModifier), u"1 Q.tà"_s); // refused
        QCOMPARE(test::columnTexts(receipt.grid(), u"Costo"_s), QStringList({u"€ 3,00"_s, u"€ 5,00"_s}));
        QCOMPARE(test::columnTexts(receipt.grid(), u"Q.tà"_s), QStringList({u"4,00"_s, u"7,00"_s}));
        press(Qt::Key_Escape); // nothing is being typed
        QCOMPARE(where(receipt), u"left"_s);
        for (const Qt::KeyboardModifier back : {Qt::NoModifier, Qt::ShiftModifier}) {
            receipt.grid()->setFocus();
            receipt.grid()->select(0, &DocumentRow::costo);
            QCOMPARE(digitThen(Qt::Key_9, Qt::Key_F6, back), u"left"_s);
            QCOMPARE(test::cellText(receipt.grid(), 0, u"Costo"_s), u"€ 9,00"_s);
        }
        QCOMPARE(receipt.shown(u"txtNumero"_s), u"1"_s);
    }

    void descriptionKeepsEnter()
    {
        const test::Document note(place(), test::deliveryNote());
        note.addArticle(u"TRA-0018"_s, u"2"_s, u"1"_s);
        note.trigger(u"actAggiungiTesto"_s);
        for (const int key : {Qt::Key_A, Qt::Key_Return, Qt::Key_B})
            press(key);
        press(Qt::Key_Backtab, Qt::ShiftModifier);
        QCOMPARE(where(note), u"0 Q.tà"_s);
        QCOMPARE(test::cellText(note.grid(), 1, u"Descrizione"_s), u"a\nb"_s);
        press(Qt::Key_Tab);
        for (const int key : {Qt::Key_C, Qt::Key_Tab})
            press(key);
        QCOMPARE(where(note), u"1 Descrizione"_s);
        QCOMPARE(test::cellText(note.grid(), 1, u"Descrizione"_s), u"c"_s);
    }

    void saveTakesOverTheCellBeingTyped()
    {
        const test::Document receipt = twoArticles();
        receipt.fillHeader();
        receipt.save();
        QCOMPARE(receipt.flags(), u"stored"_s);
        receipt.showPage(1);
        receipt.grid()->setFocus();
        receipt.grid()->select(1, &DocumentRow::quantita);
        press(Qt::Key_6);
        press(Qt::Key_Escape);
        QCOMPARE(receipt.flags(), u"stored"_s);
        press(Qt::Key_6);
        press(Qt::Key_S, Qt::ControlModifier);
        QCOMPARE(receipt.flags(), u"stored"_s);
        QCOMPARE(lines(u"SELECT QUANTITA FROM MOVI_MAGA WHERE CODICE = 'SMA-0750'"_s), QStringList(u"6"_s));
    }

    void unreadableCellStopsCommands_data()
    {
        QTest::addColumn<QString>("command");
        for (const char *command : {"actChiudi", "actNuovo", "actSalva", "actEliminaRiga"})
            QTest::newRow(command) << QString::fromLatin1(command);
    }

    void unreadableCellStopsCommands()
    {
        QFETCH(QString, command);
        const test::Document receipt = twoArticles();
        receipt.fillHeader();
        receipt.showPage(1);
        receipt.grid()->setFocus();
        press(Qt::Key_X);
        place().messages.expectError(u"\"x\" non è un numero valido."_s);
        receipt.trigger(command);
        QVERIFY(receipt.form().isVisible());
        QCOMPARE(test::columnTexts(receipt.grid(), u"Costo"_s), QStringList({u"€ 2,00"_s, u"€ 8,00"_s}));
        QCOMPARE(receipt.stored(), QStringList());
    }

private:
    /// Two articles of a receipt; the cost of the first one is the current cell.
    test::Document twoArticles() const
    {
        test::Document receipt(place(), test::receipt());
        receipt.addArticle(u"TRA-0018"_s, u"2"_s, u"1"_s);
        receipt.addArticle(u"SMA-0750"_s, u"8"_s, u"2"_s);
        receipt.grid()->setFocus();
        receipt.grid()->select(0, &DocumentRow::costo);
        return receipt;
    }

    /// To whatever has the focus, as a keyboard does.
    static void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key), modifiers);
        test::settle();
    }

    // "row header" of the current cell, or what has the focus instead.
    static QString where(const test::Document &document)
    {
        const QWidget *focus = QApplication::focusWidget();
        if (!focus || (focus != document.grid() && !document.grid()->isAncestorOf(focus)))
            return u"left"_s;
        const QModelIndex cell = document.grid()->currentIndex();
        return u"%1 %2"_s.arg(cell.row())
            .arg(document.grid()->model()->headerData(cell.column(), Qt::Horizontal, Qt::DisplayRole).toString());
    }
};

static const test::Registered<TestKeyboard> registered;

#include "test_keyboard.moc"
