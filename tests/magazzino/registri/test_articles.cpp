#include "host/HostCommands.h"
#include "host/registers/ArticleEntry.h"
#include "platform/ui/Colours.h"
#include "tests/support/Fixtures.h"

using namespace Qt::StringLiterals;

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
            test::pressKey(Qt::Key_PageDown);
        test::pressKey(Qt::Key_End, Qt::ControlModifier);
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

        // A code is one article's.
        article(u"SMA-0750"_s);
        turnTo(form, grid);
        grid->setFocus();
        test::strike(u"CONF-6\n"_s);
        place().messages.expectWarning(u"Un codice a barre è scritto due volte\n\ro è già di un altro articolo!"_s);
        QVERIFY(!form->saveRecord());
        form->startNew();

        QWidget *list = place().commands().openForm(u"actRicercaArticoli"_s);
        test::retype(list, u"txtCodice"_s, u"Conf-6"_s);
        test::pressKey(Qt::Key_Return);
        QCOMPARE(test::columnTexts(gridOf(*list), u"Codice"_s), QStringList(u"TRA-0018"_s));
    }

    void deletedArticleTakesItsBarcodes()
    {
        const int key = test::insertInto(database(), u"ANA_MAGA"_s, {{u"CODICE"_s, u"ZZ"_s}});
        test::insertInto(database(), u"BARCODE_ARTICOLI"_s, {{u"CODICE"_s, u"1"_s}, {u"IDANA_MAGA"_s, key}});
        ui::EntryForm *form = article(u"ZZ"_s);
        place().messages.expectQuestion(test::deleting, core::Answer::Yes);
        test::trigger(form, u"actElimina"_s);
        QCOMPARE(lines(u"SELECT COUNT(*) FROM BARCODE_ARTICOLI"_s), QStringList(u"0"_s));
    }

private:
    ui::EntryForm *article(const QString &code)
    {
        auto *form = qobject_cast<ui::EntryForm *>(place().commands().openForm(u"actInserimentoArticoli"_s));
        form->openRecord(lines(u"SELECT IDANA_MAGA FROM ANA_MAGA WHERE CODICE = '%1'"_s.arg(code)).value(0).toInt());
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
