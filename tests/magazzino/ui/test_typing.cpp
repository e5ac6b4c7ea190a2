#include "platform/ui/FormDialog.h"
#include "tests/support/Fixtures.h"

/// What happens to a text that is typed, one key at a time, into each kind of input.
class TestTyping : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        workplace_ = std::make_unique<test::Workplace>();
        test::control<QCheckBox>(invoice(), u"chkInizioTrasporto"_s)->setChecked(true);
        test::control<QCheckBox>(invoice(), u"chkFattureCicliche"_s)->setChecked(true);
        dialog_ = std::make_unique<ui::FormDialog>(u"Prova"_s, nullptr);
        dialog_->addRow(u"Giorno"_s, new ui::DateEdit(dialog_.get()));
        dialog_->addRow(u"Porta"_s, new ui::IntegerEdit(dialog_.get()));
        dialog_->addRow(u"Importo"_s, new ui::DecimalEdit(dialog_.get()));
        dialog_->show();
    }

    void cleanup() { QCOMPARE(workplace_->messages.verify(), QStringList()); }

    void cleanupTestCase() { workplace_.reset(); }

    void everyInputReadsTheSame_data()
    {
        test::columns<QString, QString, QString, QString>();
        // problem: empty for a text that is read
        const auto good = [](const QString &kind, const QStringList &all, const QString &shown) {
            for (const QString &typed : all)
                QTest::newRow(qPrintable(kind + u' ' + typed)) << kind << typed << shown << QString();
        };
        const auto bad = [](const QString &kind, const QStringList &all, const QString &problem) {
            for (const QString &typed : all)
                QTest::newRow(qPrintable(kind + u" \""_s + typed + u'"')) << kind << typed << typed << problem;
        };
        good(u"date"_s, {u"20/02/2026"_s, u"20-2-2026"_s, u"200226"_s, u"20/2"_s}, u"20/02/2026"_s);
        good(u"date"_s, {u"5/2/2025"_s}, u"05/02/2025"_s);
        bad(u"date"_s, {u"31/02/2025"_s, u"20/2/"_s, u"2026"_s, u"x"_s}, u"\"%1\" non è una data valida."_s);
        bad(u"date"_s, {u"1/1/1850"_s}, u"la data deve essere compresa tra il 01/01/1900 e il 31/12/3000."_s);
        bad(u"date"_s, {QString()}, u"manca la data."_s);
        good(u"time"_s, {u"8:05"_s, u"8.05"_s, u"805"_s, u"0805"_s}, u"08:05"_s);
        bad(u"time"_s, {u"24:00"_s, u"8:5"_s}, u"\"%1\" non è un'ora valida."_s);
        good(u"decimal"_s, {u"12.5"_s, u"12,5"_s, u"12,50"_s}, u"12,50"_s);
        good(u"decimal"_s, {u"1234.5"_s}, u"1.234,50"_s);
        bad(u"decimal"_s, {u"1,234"_s}, u"\"%1\" ha più di due decimali."_s);
        bad(u"decimal"_s, {u"1,2,3"_s, u"-"_s, u"12a"_s}, u"\"%1\" non è un numero valido."_s);
        bad(u"decimal"_s, {QString()}, u"manca il numero."_s);
        good(u"money"_s, {u"25.50"_s}, u"€ 25,50"_s);
        good(u"money"_s, {u"-1234.5"_s}, u"-€ 1.234,50"_s);
        bad(u"money"_s, {u"-"_s}, u"\"%1\" non è un numero valido."_s);
        good(u"integer"_s, {u"12"_s}, u"12"_s);
        bad(u"integer"_s, {u"1,5"_s}, u"\"%1\" non è un numero intero."_s);
        bad(u"integer"_s, {u"-"_s}, u"\"%1\" non è un numero valido."_s);
        good(u"year"_s, {u"2025"_s, u"25"_s}, u"2025"_s);
        bad(u"year"_s, {u"202"_s}, u"\"%1\" non è compreso tra 1.900 e 3.000."_s);
    }

    void everyInputReadsTheSame()
    {
        const auto [kind, typed, shown, problem] = test::row<QString, QString, QString, QString>();
        const QList<ui::TypedEdit *> all = inputs(kind);
        for (ui::TypedEdit *edit : all) {
            test::typeOver(edit, typed);
            QVERIFY2(edit->text() == shown, qPrintable(edit->objectName() + u": "_s + edit->text()));
            QCOMPARE(edit->isRed(), !problem.isEmpty());
            const QString told = problem.contains(u"%1"_s) ? problem.arg(typed) : problem;
            QVERIFY2(edit->problem().endsWith(told) && edit->problem().isEmpty() == told.isEmpty(),
                     qPrintable(edit->problem()));
        }
    }

    void cellsReadTheSame()
    {
        const test::Document note = receiptOfThree();
        for (const auto &[typed, shown, error] :
             {std::tuple(u"12.5"_s, u"12,50"_s, u""_s),
              {u"12,5"_s, u"12,50"_s, u""_s},
              {u"12,50"_s, u"12,50"_s, u""_s},
              {u".5"_s, u"0,50"_s, u""_s},
              {u"1.234"_s, u"3,00"_s, u"\"1,234\" ha più di due decimali."_s},
              {u"1.234.5"_s, u"3,00"_s, u"\"1,234,5\" non è un numero valido."_s}}) {
            test::typeIntoCell(note.grid(), 0, u"Q.tà"_s, u"3"_s);
            note.grid()->select(0, &DocumentRow::quantita);
            // The first key opens the cell.
            test::type(note.grid(), typed.left(1));
            auto *editor = test::control<QLineEdit>(note.grid(), u"editorRiga"_s);
            test::type(editor, typed.mid(1));
            if (!error.isEmpty())
                workplace_->messages.expectError(error);
            QTest::keyClick(editor, Qt::Key_Return);
            test::settle();
            QCOMPARE(workplace_->messages.verify(), QStringList());
            QCOMPARE(test::cellText(note.grid(), 0, u"Q.tà"_s), shown);
        }
    }

    void pastedNumbersAreRead()
    {
        const test::Document note = receiptOfThree();
        const auto pasteInto = [](QWidget *edit, Qt::Key last) {
            QTest::keyClick(edit, Qt::Key_A, Qt::ControlModifier);
            QTest::keyClick(edit, Qt::Key_V, Qt::ControlModifier);
            QTest::keyClick(edit, last);
            test::settle();
        };
        for (const auto &[pasted, shown] : {std::pair(u"1.234,50\r\n"_s, u"1.234,50"_s),
                                            {u"1234,5"_s, u"1.234,50"_s},
                                            {u"12.5"_s, u"12,50"_s},
                                            {u"1.234"_s, u"1.234,00"_s},
                                            {u"\u20ac\u00a03,10"_s, u"3,10"_s}}) {
            QGuiApplication::clipboard()->setText(pasted);
            note.showPage(0);
            auto *weight = note.control<ui::TypedEdit>(u"txtPeso"_s);
            weight->setFocus();
            pasteInto(weight, Qt::Key_Tab);
            QCOMPARE(weight->text(), shown);
            note.showPage(1);
            note.grid()->setFocus();
            note.grid()->select(0, &DocumentRow::quantita);
            QTest::keyClick(note.grid(), Qt::Key_F2);
            pasteInto(test::control<QWidget>(note.grid(), u"editorRiga"_s), Qt::Key_Return);
            QCOMPARE(test::cellText(note.grid(), 0, u"Q.tà"_s), shown);
        }
    }

    void keysMoveAValueOnlyWhereTheyAreMeantTo()
    {
        const test::Document note(*workplace_, test::receipt());
        auto *date = note.control<ui::DateEdit>(u"txtData"_s);
        date->setFocus();
        const auto press = [date](Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
            QTest::keyClick(date, key, modifiers);
            return date->text();
        };
        date->setDate({2026, 1, 31});
        QStringList reached;
        for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Down, Qt::Key_PageUp, Qt::Key_PageDown})
            reached.append(press(key));
        QCOMPARE(reached, QStringList({u"01/02/2026"_s, u"31/01/2026"_s, u"28/02/2026"_s, u"28/01/2026"_s}));
        for (const Qt::Key key : {Qt::Key_PageDown, Qt::Key_PageUp})
            QCOMPARE(press(key, Qt::ControlModifier), u"28/01/2026"_s);

        const auto turnWheel = [](QWidget *over) {
            QWheelEvent turn(over->rect().center(), over->mapToGlobal(over->rect().center()), {}, {0, -120},
                             Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
            QApplication::sendEvent(over, &turn);
        };
        auto *reason = note.control<QComboBox>(u"txtCausaleTrasporto"_s);
        const int chosen = reason->currentIndex();
        auto *packages = note.control<ui::IntegerEdit>(u"txtColli"_s);
        for (QWidget *over : std::initializer_list<QWidget *>{reason, packages, date})
            turnWheel(over);
        QTest::keyClick(reason, Qt::Key_PageDown, Qt::ControlModifier);
        QCOMPARE(reason->currentIndex(), chosen);
        QCOMPARE(packages->value(), 0);
        QCOMPARE(date->text(), u"28/01/2026"_s);
        QTest::keyClick(reason, Qt::Key_Down);
        QVERIFY(reason->currentIndex() != chosen);
    }

    void calendarPicksADay()
    {
        auto *date = test::control<ui::DateEdit>(invoice(), u"txtData"_s);
        test::typeOver(date, u"20/2"_s);
        QTest::keyClick(date, Qt::Key_F4);
        const QString days = u"qt_calendar_calendarview"_s;
        for (const Qt::Key key : {Qt::Key_Right, Qt::Key_Return})
            QTest::keyClick(test::control<QTableView>(date, days), key);
        test::settle();
        QCOMPARE(date->text(), u"21/02/2026"_s);
        QVERIFY(!date->findChild<QTableView *>(days));
        QTest::keyClick(date, Qt::Key_Down, Qt::AltModifier);
        for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Escape})
            QTest::keyClick(test::control<QTableView>(date, days), key);
        test::settle();
        QVERIFY(!date->findChild<QTableView *>(days));
        QCOMPARE(date->text(), u"21/02/2026"_s);
    }

private:
    /// A new receipt with three pieces of an article.
    test::Document receiptOfThree() const
    {
        test::Document note(*workplace_, test::receipt());
        note.form().SetModified(false);
        note.form().NuovoRecord();
        note.addArticle(u"TRA-0018"_s, u"2"_s, u"3"_s);
        return note;
    }

    QWidget *form(const QString &action) const { return workplace_->module().openForm(action); }

    QWidget *invoice() const { return form(u"actInserimentoFattureAccompagnatorie"_s); }
    /// The inputs of one kind: in an entry form, a moment, a group that is switched on, a list, a print, a dialog.
    QList<ui::TypedEdit *> inputs(const QString &kind) const
    {
        QWidget *movement = form(u"actInserimentoMovimentiMagazzino"_s);
        const auto named = [](QWidget *window, const QStringList &names) {
            QList<ui::TypedEdit *> edits;
            for (const QString &name : names)
                edits.append(test::control<ui::TypedEdit>(window, name));
            return edits;
        };
        if (kind == u"date")
            return named(invoice(), {u"txtData"_s, u"txtDataInizioTrasporto"_s, u"txtScadenzaPagamento"_s,
                                     u"txtDataFineCiclica"_s}) +
                   named(movement, {u"txtDataMovimento"_s}) +
                   named(form(u"actRicercaMovimentiMagazzino"_s), {u"txtDataDal"_s}) +
                   named(form(u"actStampaInventario"_s), {u"txtDataAl"_s}) +
                   QList<ui::TypedEdit *>{dialog_->findChild<ui::DateEdit *>()};
        if (kind == u"time")
            return named(invoice(), {u"txtOraInizioTrasporto"_s});
        if (kind == u"decimal")
            return named(invoice(), {u"txtPeso"_s}) + named(movement, {u"txtQuantita"_s}) +
                   QList<ui::TypedEdit *>{dialog_->findChild<ui::DecimalEdit *>()};
        if (kind == u"money")
            return named(movement, {u"txtPrezzo"_s, u"txtCosto"_s, u"txtValore"_s});
        if (kind == u"year")
            return named(form(u"actRicercaFattureAccompagnatorie"_s), {u"txtAnno"_s});
        return named(invoice(), {u"txtNumero"_s, u"txtColli"_s, u"txtGeneraOgni"_s}) +
               QList<ui::TypedEdit *>{dialog_->findChild<ui::IntegerEdit *>()};
    }

    std::unique_ptr<test::Workplace> workplace_;
    std::unique_ptr<ui::FormDialog> dialog_;
};

static const test::Registered<TestTyping> registered;

#include "test_typing.moc"
