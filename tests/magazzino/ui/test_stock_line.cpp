#include "tests/support/Fixtures.h"

// What a document says of the stock while it is written.
class TestStockLine : public test::AtWorkplace
{
    Q_OBJECT

private Q_SLOTS:
    // 20 pieces of TRA-0018: 10 at 2 on the 1st, 10 at 4 on the 10th of March; today is the 16th.
    void init() override
    {
        AtWorkplace::init();
        // Whoever looks at it finds it moved on: fingers, no barcode reader.
        core::setClock([this] { return test::workplaceTime().addMSecs(time_ += 40); });
        for (const auto &[date, cost] : {std::pair(u"01/03/2026"_s, u"2"_s), std::pair(u"10/03/2026"_s, u"4"_s)}) {
            const test::Document receipt = open(test::receipt());
            receipt.fillHeader();
            test::typeOver(receipt.control<QWidget>(u"txtData"_s), date);
            receipt.addArticle(u"TRA-0018"_s, cost, u"10"_s);
            receipt.save();
            receipt.trigger(u"actChiudi"_s);
        }
    }

    void tellsTheRowOneStandsOn_data()
    {
        QTest::addColumn<const test::DocumentNames *>("names");
        QTest::addColumn<QString>("date");
        QTest::addColumn<QString>("line");
        const QString purchase = u" · ultimo acquisto € 4,00 il 10/03/2026"_s;
        QTest::newRow("note today") << &test::deliveryNote() << QString()
                                    << u"TRA-0018 · giacenza 20,00 · questo documento -5,00 · resta 15,00"
                                       " · costo medio € 3,00"_s +
                                           purchase;
        QTest::newRow("note earlier") << &test::deliveryNote() << u"05/03/2026"_s
                                      << u"TRA-0018 · giacenza 20,00 · questo documento -5,00 · resta 15,00 "
                                         "(al 05/03/2026: 5,00) · costo medio € 2,00"_s +
                                             purchase;
        QTest::newRow("receipt") << &test::receipt() << QString()
                                 << u"TRA-0018 · giacenza 20,00 · questo documento 5,00 · resta 25,00"
                                    " · costo medio € 3,00"_s +
                                        purchase;
    }
    void tellsTheRowOneStandsOn()
    {
        QFETCH(const test::DocumentNames *, names);
        QFETCH(QString, date);
        const test::Document document = open(*names);
        if (!date.isEmpty())
            test::typeOver(document.control<QWidget>(u"txtData"_s), date);
        document.form().setFocus();
        test::pressKey(Qt::Key_I, Qt::ControlModifier);
        // Already while it is typed.
        test::strike(u"5*tra-0018\n"_s);
        QVERIFY(line(document).startsWith(u"TRA-0018 · giacenza 20,00 · questo documento 0,00"_s));
        test::strike(u"\n"_s);
        QTEST(line(document), "line");
        QCOMPARE(warning(document), QString());
    }
    void rowsBelowZeroAreAmber()
    {
        const test::Document note = open(test::deliveryNote());
        note.fillHeader();
        note.form().setFocus();
        test::pressKey(Qt::Key_I, Qt::ControlModifier);
        test::strike(u"15*tra-0018^1*vit-0316^5*tra-0018^"_s);
        QCOMPARE(marked(note), u"1"_s);
        test::strike(u"2*tra-0018^"_s);
        QCOMPARE(marked(note), u"1 3"_s);
        QVERIFY(warning(note).startsWith(u"2 righe portano la giacenza sotto zero: "_s));
        QCOMPARE(note.grid()->model()->index(3, 0).data(Qt::ToolTipRole).toString(),
                 u"La giacenza va sotto zero: -2,00 dopo questa riga"_s);
        // A click on the number leads to the row.
        Q_EMIT note.control<QLabel>(u"lblSottoZero"_s)->linkActivated(u"1"_s);
        QCOMPARE(note.grid()->selectedRow(), 1);
        test::typeIntoCell(note.grid(), 0, u"Q.tà"_s, u"13"_s);
        QCOMPARE(marked(note), u"1"_s);
        QVERIFY(warning(note).startsWith(u"1 riga porta"_s));
        // At an earlier date there is less.
        test::typeOver(note.control<QWidget>(u"txtData"_s), u"05/03/2026"_s);
        note.showPage(1);
        test::settle();
        QCOMPARE(marked(note), u"0 1 2 3"_s);
        note.save();
        QCOMPARE(note.flags(), u"stored"_s);
    }
    // A stored note's own movements are not taken off twice.
    void documentCountsOnce()
    {
        const test::Document note = open(test::deliveryNote());
        note.fillHeader();
        note.addArticle(u"TRA-0018"_s, u"7,9"_s, u"20"_s);
        note.save();
        test::settle();
        QVERIFY(line(note).startsWith(u"TRA-0018 · giacenza 20,00 · questo documento -20,00 · resta 0,00"_s));
        QCOMPARE(marked(note), QString());
        note.trigger(u"actNuovo"_s);
        note.fillHeader();
        note.addArticle(u"TRA-0018"_s, u"7,9"_s, u"1"_s);
        test::settle();
        QVERIFY(line(note).contains(u"giacenza 0,00"_s));
        QVERIFY(line(note).endsWith(u"a questo cliente € 7,90 il 16/03/2026"_s));
        QCOMPARE(marked(note), u"0"_s);
    }
    // Whoever stores or deletes something: a list as well as a form, or no window at all.
    void followsWhatIsStoredElsewhere()
    {
        sell(test::deliveryNote(), u"TRA-0018"_s, u"7,9"_s, u"3"_s);
        const ui::SearchForm *notes = openList(u"actRicercaDdTScarico"_s);
        const QWidget *articles = place().commands().openForm(u"actRicercaArticoli"_s);
        test::retype(articles, u"txtCodice"_s, u"TRA-0018"_s);
        test::pressKey(Qt::Key_Return);
        const test::Document note = open(test::deliveryNote());
        note.fillHeader();
        note.addArticle(u"TRA-0018"_s, u"7"_s, u"1"_s);
        test::settle();
        QVERIFY(line(note).contains(u"giacenza 17,00"_s) && line(note).contains(u"a questo cliente € 7,90"_s));
        test::trigger(notes, u"actCerca"_s);
        gridOf(*notes)->selectRow(0);
        place().messages.expectPart(u"Conferma"_s, test::deleting, core::Answer::Yes);
        test::trigger(notes, u"actElimina"_s);
        test::settle();
        QVERIFY(line(note).contains(u"giacenza 17,00"_s) && !line(note).contains(u"a questo cliente"_s));
        database().execute(u"DELETE FROM MOVI_MAGA WHERE QUANTITA < 0"_s);
        test::settle();
        QVERIFY(line(note).contains(u"giacenza 20,00"_s));
        QTRY_COMPARE(test::cellText(gridOf(*articles), 0, u"Giacenza"_s), u"20,00"_s);
        note.form().SetModified(false);
    }

    void invoicesAreForThoseWhoMaySeeThem()
    {
        sell(test::accompanyingInvoice(), u"TRA-0018"_s, u"9,5"_s, u"1"_s);
        const auto told = [this] {
            const test::Document note = open(test::deliveryNote());
            note.fillHeader();
            note.addArticle(u"TRA-0018"_s, u"7"_s, u"1"_s);
            test::settle();
            const QString text = line(note);
            note.form().SetModified(false);
            note.trigger(u"actChiudi"_s);
            test::settle();
            return text.section(u" · a questo cliente "_s, 1);
        };
        QCOMPARE(told(), u"€ 9,50 il 16/03/2026"_s);
        database().execute(u"DELETE FROM ABILITAZIONI_RUOLI"_s);
        QCOMPARE(told(), QString());
    }

private:
    qint64 time_ = 0; // ms

    test::Document open(const test::DocumentNames &names) { return {place(), names}; }
    void sell(const test::DocumentNames &names, const QString &code, const QString &price, const QString &quantity)
    {
        const test::Document document = open(names);
        document.trigger(u"actNuovo"_s);
        document.fillHeader();
        document.addArticle(code, price, quantity);
        document.save();
        QCOMPARE(document.flags(), u"stored"_s);
        document.trigger(u"actChiudi"_s);
    }
    static QString line(const test::Document &document) { return document.shown(u"lblGiacenzaRiga"_s); }
    static QString warning(const test::Document &document)
    {
        const auto *label = document.control<QLabel>(u"lblSottoZero"_s);
        return label->isHidden() ? QString() : label->text();
    }
    // Positions of the amber rows.
    static QString marked(const test::Document &document)
    {
        QStringList rows;
        const QAbstractItemModel *model = document.grid()->model();
        for (int row = 0; row < model->rowCount(); ++row) {
            const bool amber = model->index(row, 0).data(Qt::BackgroundRole).isValid();
            if (amber == model->index(row, 0).data(Qt::ToolTipRole).toString().isEmpty())
                return u"colour and tip differ"_s;
            if (amber)
                rows.append(QString::number(row));
        }
        return rows.join(u' ');
    }
};

static const test::Registered<TestStockLine> registered;
#include "test_stock_line.moc"
