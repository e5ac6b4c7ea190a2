#include "host/Corvane3Impl.h"
#include "host/ui/MainWindow.h"
#include "magazzino/uMMGModMagazzino.h"
#include "platform/ui/NumberEdits.h"
#include "tests/support/Controls.h"
#include "tests/support/TestMain.h"
#include "tests/support/Workplace.h"

#include <QAction>
#include <QLineEdit>
#include <QTableView>

using namespace Qt::StringLiterals;

class TestInvoiceList : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void filters_data();
    void filters();
    void rights();
    void listNeedsItsRight();

private:
    void insertInvoice(int number, int year, const QString &customer, const QString &row) const;
    QStringList numbers() const { return test::columnTexts(grid(), u"N."_s); }
    QTableView *grid() const { return test::control<QTableView>(list_, u"GridRisultati"_s); }
    QWidget *entryForm() const
    {
        return workplace_->window().findChild<QWidget *>(u"MMGInserimentoFattureAccompagnatorie"_s);
    }

    std::unique_ptr<test::Workplace> workplace_;
    QWidget *list_ = nullptr;
};

namespace {
const QString noRights = u"Non si dispone di diritti sufficienti per eseguire questa operazione."_s;
}

void TestInvoiceList::init()
{
    workplace_ = std::make_unique<test::Workplace>();
    insertInvoice(9, 2026, u"Bottega D'Amico"_s, u"Vite 4x40"_s);
    insertInvoice(10, 2026, u"Rossi 100%"_s, u"Dado d'acciaio"_s);
    insertInvoice(2, 2026, u"Vite & Figli"_s, u"Sconto 50% sul listino"_s);
    insertInvoice(30, 2025, u"Bottega D'Amico"_s, u"Vite 4x40"_s);
    list_ = workplace_->module().openForm(u"actRicercaFattureAccompagnatorie"_s);
    test::settle();
}

void TestInvoiceList::cleanup()
{
    workplace_.reset();
}

void TestInvoiceList::insertInvoice(int number, int year, const QString &customer, const QString &row) const
{
    const int id = test::insertInto(workplace_->database(), u"FATT_ACC"_s,
                                    {{u"NUMERO"_s, number},
                                     {u"ANNO"_s, year},
                                     {u"DATA"_s, QDate(year, 3, 2)},
                                     {u"CLI_CODICE"_s, u"C%1"_s.arg(number)},
                                     {u"CLI_RAGIONESOCIALE"_s, customer}});
    test::insertInto(workplace_->database(), u"FATT_ACC_DETT"_s,
                     {{u"IDFATT_ACC"_s, id}, {u"DESCRIZIONE"_s, row}, {u"TIPO_RIGA"_s, u"Testo"_s}});
}

void TestInvoiceList::filters_data()
{
    QTest::addColumn<QString>("filter");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("year");
    QTest::addColumn<QString>("found");
    const QString row = u"txtDescrizioneRiga"_s;
    const QString name = u"txtRagioneSociale"_s;
    QTest::newRow("year only") << name << u""_s << 2026 << u"10|9|2"_s;
    QTest::newRow("code, without case") << u"txtCodice"_s << u"c9"_s << 2026 << u"9"_s;
    QTest::newRow("name, quote") << name << u"D'AMICO"_s << 2026 << u"9"_s;
    QTest::newRow("name, not the row") << name << u"vite"_s << 2026 << u"2"_s;
    QTest::newRow("row, not the name") << row << u"vite"_s << 2026 << u"9"_s;
    QTest::newRow("row, per cent") << row << u"50%"_s << 2026 << u"2"_s;
    QTest::newRow("row, other year") << row << u"vite"_s << 2025 << u"30"_s;
}

void TestInvoiceList::filters()
{
    QFETCH(QString, filter);
    QFETCH(QString, text);
    QFETCH(int, year);
    QFETCH(QString, found);
    test::control<ui::IntegerEdit>(list_, u"txtAnno"_s)->setValue(year);
    auto *input = test::control<QLineEdit>(list_, filter);
    input->setText(text);
    QTest::keyClick(input, Qt::Key_Return);
    QCOMPARE(numbers().join(u'|'), found);
}

void TestInvoiceList::rights()
{
    test::trigger(list_, u"actCerca"_s);
    test::selectRow(grid(), u"C2"_s);
    // The office may look at invoices only.
    SetKxCurrentUserName(u"UFFICIO"_s);
    for (const char *command : {"actNuovo", "actElimina"}) {
        workplace_->messages.expectWarning(noRights);
        test::trigger(list_, QString::fromLatin1(command));
        QCOMPARE(workplace_->messages.verify(), QStringList());
    }
    QVERIFY(!entryForm());
    QCOMPARE(numbers().size(), 3);
    QCOMPARE(workplace_->lines(u"SELECT COUNT(*) FROM FATT_ACC"_s), QStringList({u"4"_s}));
    test::trigger(list_, u"actModifica"_s);
    QVERIFY(entryForm());
    SetKxCurrentUserName(host::administrator);
    test::trigger(list_, u"actNuovo"_s);
    QCOMPARE(workplace_->messages.verify(), QStringList());
}

void TestInvoiceList::listNeedsItsRight()
{
    test::trigger(list_, u"actChiudi"_s);
    SetKxCurrentUserName(u"MAGAZZINIERE"_s);
    workplace_->messages.expectWarning(noRights);
    test::trigger(&workplace_->module(), u"actRicercaFattureAccompagnatorie"_s);
    QCOMPARE(workplace_->messages.verify(), QStringList());
    QVERIFY(!list_->isVisible());
    SetKxCurrentUserName(u"ufficio"_s);
    test::trigger(&workplace_->module(), u"actRicercaFattureAccompagnatorie"_s);
    QVERIFY(list_->isVisible());
}

static const test::Registered<TestInvoiceList> registered;

#include "test_invoice_list.moc"
