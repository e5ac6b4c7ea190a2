#include "host/StartOffers.h"
#include "host/registers/ArticleEntry.h"
#include "tests/support/Fixtures.h"

// The register of articles in the host, with what the warehouse knows of them.
class TestArticles : public test::AtWorkplace
{
    Q_OBJECT

private Q_SLOTS:
    void init() override
    {
        AtWorkplace::init();
        for (const auto &[code, pieces] :
             {std::pair(u"TRA-0018"_s, 1234.5), {u"TRA-0018"_s, -0.5}, {u"SMA-0750"_s, -7}})
            test::insertInto(database(), u"MOVI_MAGA"_s, {{u"CODICE"_s, code}, {u"QUANTITA"_s, pieces}});
    }

    void stockStandsInListAndForm()
    {
        for (int i = 0; i < 300; ++i)
            test::insertInto(database(), u"ANA_MAGA"_s, {{u"CODICE"_s, u"AAA-%1"_s.arg(i)}});
        int asked = 0;
        connection().setStatementHook([&asked](const QString &sql) { asked += sql.contains(u"MOVI_MAGA"_s) ? 1 : 0; });
        QWidget *list = place().commands().openForm(u"actRicercaArticoli"_s);
        QTableView *grid = gridOf(*list);
        QTRY_COMPARE(test::cellText(grid, 0, u"Giacenza"_s), u"0,00"_s);
        QCOMPARE(asked, 1);
        // Rows that fly past are not asked for.
        grid->setFocus();
        for (int i = 0; i < 5; ++i)
            QTest::keyClick(grid, Qt::Key_PageDown);
        QTest::keyClick(grid, Qt::Key_End, Qt::ControlModifier);
        const int last = grid->model()->rowCount() - 1;
        QTRY_COMPARE(test::cellText(grid, last, u"Giacenza"_s), u"0,00"_s);
        QCOMPARE(asked, 2);
        QCOMPARE(test::cellText(grid, 60, u"Giacenza"_s), QString());
        for (const auto &[code, stock] : {std::pair(u"tra-0018"_s, u"1.234,00"_s), {u"SMA-0750"_s, u"-7,00"_s}}) {
            test::retype(list, u"txtCodice"_s, code);
            test::pressKey(Qt::Key_Return);
            QTRY_COMPARE(test::cellText(grid, 0, u"Giacenza"_s), stock);
        }
        const int column = test::columnOf(grid, u"Giacenza"_s);
        QCOMPARE(grid->model()->index(0, column).data(Qt::ForegroundRole).value<QColor>(),
                 ui::negativeText(QApplication::palette()));
        // An export has the rows out of view, too.
        test::press(list, u"cmdRipristina"_s);
        test::press(list, u"cmdCerca"_s);
        test::trigger(grid, u"actCopiaElenco"_s);
        QVERIFY(QGuiApplication::clipboard()->text().contains(u"\t1234,00\n"_s) ||
                QGuiApplication::clipboard()->text().contains(u"\t1234\n"_s));
        connection().setStatementHook({});

        const ui::EntryForm *form = article(u"SMA-0750"_s);
        QCOMPARE(test::shown(form, u"txtGiacenza"_s), u"-7,00"_s);
        // What changes behind another page is there with the field.
        test::pressKey(Qt::Key_2, Qt::AltModifier);
        database().execute(u"DELETE FROM MOVI_MAGA WHERE UPPER(CODICE) = 'SMA-0750'"_s);
        test::pressKey(Qt::Key_1, Qt::AltModifier);
        QCOMPARE(test::shown(form, u"txtGiacenza"_s), u"0,00"_s);
        test::trigger(form, u"actNuovo"_s);
        QCOMPARE(test::shown(form, u"txtGiacenza"_s), QString());
    }

    void barcodesAreEnteredByKeys()
    {
        ui::EntryForm *form = article(u"TRA-0018"_s);
        auto *grid = test::control<host::BarcodeGrid>(form, u"gridCodiciBarre"_s);
        turnTo(form, grid);
        grid->setFocus();
        // A reader's Enter leads to the next row; then the pieces of the second one.
        test::strike(u"8001120000019\nconf-6\n"_s);
        test::pressKey(Qt::Key_Up);
        test::pressKey(Qt::Key_Right);
        test::strike(u"6\n"_s);
        QVERIFY(form->saveRecord());
        const QString stored = u"SELECT CODICE, PEZZI FROM BARCODE_ARTICOLI ORDER BY IDBARCODE_ARTICOLI"_s;
        QCOMPARE(lines(stored), QStringList({u"8001120000019|1"_s, u"conf-6|6"_s}));

        // What is still being typed is saved, too; a wrong digit is asked about once.
        test::strike(u"8001120000018"_s);
        place().messages.expectQuestion(
            u"Codici a barre: il carattere di controllo non corrisponde.\n\rSalvare comunque?"_s, core::Answer::Yes);
        QVERIFY(form->saveRecord());
        article(u"TRA-0018"_s);
        QCOMPARE(grid->rowCount(), 4);
        turnTo(form, grid);
        grid->setFocus();
        test::pressKey(Qt::Key_Delete);
        QVERIFY(form->saveRecord());
        QCOMPARE(lines(stored), QStringList({u"conf-6|6"_s, u"8001120000018|1"_s}));

        // A code is one article's, and so is a number, with zeros before it and without.
        const auto areRefused = [&](const QString &code, const QString &typed) {
            article(code);
            turnTo(form, grid);
            grid->setFocus();
            test::strike(typed);
            place().messages.expectWarning(u"Un codice a barre è scritto due volte\n\ro è già di un altro articolo!"_s);
            return !form->saveRecord();
        };
        QVERIFY(areRefused(u"SMA-0750"_s, u"CONF-6\n"_s));
        form->startNew();
        QVERIFY(areRefused(u"SMA-0750"_s, u"12345670\n00000012345670\n"_s));
        test::pressKey(Qt::Key_Up);
        test::pressKey(Qt::Key_Delete);
        QVERIFY(form->saveRecord());
        QVERIFY(areRefused(u"TRA-0018"_s, u"0000012345670\n"_s));
        form->startNew();
    }

    // Readers send Enter or Tab, and their keys wait for nothing. Tab leaves the grid when nothing is being typed.
    void scansFillTheNextRows_data() { test::table<Qt::Key>({{"enter", Qt::Key_Return}, {"tab", Qt::Key_Tab}}); }

    void scansFillTheNextRows()
    {
        const auto [end] = test::row<Qt::Key>();
        ui::EntryForm *form = article(u"TRA-0018"_s);
        auto *grid = test::control<host::BarcodeGrid>(form, u"gridCodiciBarre"_s);
        turnTo(form, grid);
        grid->setFocus();
        QStringList scanned;
        for (int i = 0; i < 40; ++i)
            scanned.append(QString::number(8'001'120'000'010 + i));
        for (const QString &code : std::as_const(scanned)) {
            for (const QChar key : code)
                test::type(QApplication::focusWidget(), key);
            QTest::keyClick(QApplication::focusWidget(), end);
        }
        QStringList taken;
        const QList<host::Barcode> all = grid->barcodes();
        for (const host::Barcode &barcode : all)
            taken.append(barcode.pieces == 1 ? barcode.code : u"pieces of "_s + barcode.code);
        QCOMPARE(taken, scanned);
        QCOMPARE(QApplication::focusWidget(), grid);
        test::pressKey(Qt::Key_Tab);
        QVERIFY(QApplication::focusWidget() != grid && !grid->isAncestorOf(QApplication::focusWidget()));
        form->SetModified(false);
    }

    // In the list and in the search over everything: by what a code begins with, or however a reader gives the whole.
    void barcodeFindsItsArticle_data()
    {
        const QString upc = u"TRA-0018 · 012345678905"_s;
        test::table<QString, QString>({{"whole", u"012345678905"_s, upc},
                                       {"beginning", u"01234"_s, upc},
                                       {"more zeros", u"00012345678905"_s, upc},
                                       {"gs1", u"(01)00012345678905(37)3"_s, upc},
                                       {"case and blanks", u" Qz-"_s, u"SMA-0750 · qz-6"_s},
                                       {"its end", u"345678905"_s, {}},
                                       {"no pattern", u"%"_s, {}}});
    }

    void barcodeFindsItsArticle()
    {
        const auto [typed, told] = test::row<QString, QString>();
        for (const auto &[code, barcode] : {std::pair(u"TRA-0018"_s, u"012345678905"_s), {u"SMA-0750"_s, u"qz-6"_s}})
            test::insertInto(database(), u"BARCODE_ARTICOLI"_s,
                             u"CODICE=%1|IDANA_MAGA=%2"_s.arg(barcode).arg(keyOf(code)));
        QWidget *list = place().commands().openForm(u"actRicercaArticoli"_s);
        test::retype(list, u"txtCodice"_s, typed);
        test::pressKey(Qt::Key_Return);
        QCOMPARE(test::columnTexts(gridOf(*list), u"Codice"_s).join(u' '), told.section(u" · "_s, 0, 0));
        const QList<host::SearchSource> sources = host::startOffers().searches;
        QStringList found;
        for (const host::SearchSource &source : sources) {
            if (source.caption != u"Articoli"_s)
                continue;
            const QList<host::SearchHit> hits = source.find(typed.trimmed(), {}).hits;
            for (const host::SearchHit &hit : hits)
                found.append(hit.detail);
        }
        QCOMPARE(found.join(u' '), told);
    }

private:
    int keyOf(const QString &code) const
    {
        return lines(u"SELECT IDANA_MAGA FROM ANA_MAGA WHERE CODICE = '%1'"_s.arg(code)).value(0).toInt();
    }
    ui::EntryForm *article(const QString &code)
    {
        ui::EntryForm *form = openHostEntry(u"actInserimentoArticoli"_s);
        form->openRecord(keyOf(code));
        test::settle();
        return form;
    }
    static void turnTo(const QWidget *form, const QWidget *control)
    {
        auto *pages = form->findChild<QTabWidget *>(u"pages"_s);
        for (int i = 0; i < pages->count(); ++i) {
            if (pages->widget(i)->isAncestorOf(control))
                pages->setCurrentIndex(i);
        }
        test::settle();
    }
    static QTableView *gridOf(const QWidget &list) { return list.findChild<QTableView *>(); }
};

static const test::Registered<TestArticles> registered;
#include "test_articles.moc"
