#include "host/Corvane3Impl.h"
#include "host/ui/MainWindow.h"
#include "magazzino/uMMGModMagazzino.h"
#include "tests/support/Controls.h"
#include "tests/support/TestMain.h"
#include "tests/support/Workplace.h"

#include <QAction>
#include <QLineEdit>
#include <QSpinBox>
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
    void cells();
    void opensTheSelectedInvoice();
    void rights();
    void listNeedsItsRight();
    void deletingRemovesTheRow();

private:
    int insertInvoice(int number, int year, const QString &customer, const QString &row, bool paid = false) const;
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
    insertInvoice(9, 2026, u"Bottega D'Amico"_s, u"Vite 4x40"_s, true);
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

int TestInvoiceList::insertInvoice(int number, int year, const QString &customer, const QString &row, bool paid) const
{
    const int id = test::insertInto(workplace_->database(), u"FATT_ACC"_s,
                                    {{u"NUMERO"_s, number},
                                     {u"ANNO"_s, year},
                                     {u"DATA"_s, QDate(year, 3, 2)},
                                     {u"CLI_CODICE"_s, u"C%1"_s.arg(number)},
                                     {u"CLI_RAGIONESOCIALE"_s, customer},
                                     {u"TOTALE_DOCUMENTO"_s, 1234.5},
                                     {u"PAGATO"_s, paid ? u"True"_s : u"False"_s}});
    test::insertInto(workplace_->database(), u"FATT_ACC_DETT"_s,
                     {{u"IDFATT_ACC"_s, id}, {u"DESCRIZIONE"_s, row}, {u"TIPO_RIGA"_s, u"Testo"_s}});
    return id;
}

void TestInvoiceList::filters_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("row");
    QTest::addColumn<int>("year");
    QTest::addColumn<QStringList>("found");
    const QString none;
    const auto found = [](const QStringList &numbers) { return numbers; };
    QTest::newRow("year only") << none << none << none << 2026 << found({u"10"_s, u"9"_s, u"2"_s});
    QTest::newRow("other year") << none << none << none << 2025 << found({u"30"_s});
    QTest::newRow("code, without case") << u"c9"_s << none << none << 2026 << found({u"9"_s});
    QTest::newRow("name, quote") << none << u"D'AMICO"_s << none << 2026 << found({u"9"_s});
    QTest::newRow("name, per cent") << none << u"0%"_s << none << 2026 << found({u"10"_s});
    QTest::newRow("name, wildcard alone") << none << u"_"_s << none << 2026 << found({});
    QTest::newRow("name, not the row") << none << u"vite"_s << none << 2026 << found({u"2"_s});
    QTest::newRow("row, not the name") << none << none << u"vite"_s << 2026 << found({u"9"_s});
    QTest::newRow("row, quote") << none << none << u"d'acc"_s << 2026 << found({u"10"_s});
    QTest::newRow("row, per cent") << none << none << u"50%"_s << 2026 << found({u"2"_s});
    QTest::newRow("row, other year") << none << none << u"vite"_s << 2025 << found({u"30"_s});
    QTest::newRow("all of them") << u"C9"_s << u"bottega"_s << u"dado"_s << 2026 << found({});
}

void TestInvoiceList::filters()
{
    QFETCH(QString, code);
    QFETCH(QString, name);
    QFETCH(QString, row);
    QFETCH(int, year);
    QFETCH(QStringList, found);
    test::control<QLineEdit>(list_, u"txtCodice"_s)->setText(code);
    test::control<QLineEdit>(list_, u"txtRagioneSociale"_s)->setText(name);
    test::control<QSpinBox>(list_, u"txtAnno"_s)->setValue(year);
    auto *description = test::control<QLineEdit>(list_, u"txtDescrizioneRiga"_s);
    description->setText(row);
    QTest::keyClick(description, Qt::Key_Return);
    QCOMPARE(numbers(), found);
}

void TestInvoiceList::cells()
{
    test::trigger(list_, u"actCerca"_s);
    QStringList first;
    for (const QString &header : {u"N."_s, u"Data"_s, u"Codice"_s, u"Ragione sociale"_s, u"Totale"_s, u"Pagato"_s})
        first.append(test::cellText(grid(), 0, header));
    QCOMPARE(first.join(u'|'), u"10|02/03/2026|C10|Rossi 100%|€ 1.234,50|No"_s);
    QCOMPARE(test::columnTexts(grid(), u"Pagato"_s), QStringList({u"No"_s, u"Sì"_s, u"No"_s}));
}

void TestInvoiceList::opensTheSelectedInvoice()
{
    test::trigger(list_, u"actCerca"_s);
    test::selectRow(grid(), u"C2"_s);
    test::trigger(list_, u"actModifica"_s);
    QVERIFY(entryForm());
    QCOMPARE(test::shown(entryForm(), u"txtNumero"_s) + test::shown(entryForm(), u"lblRagioneSociale"_s),
             u"2Vite & Figli"_s);
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
    QVERIFY(!workplace_->window().findChild<QWidget *>(u"MMGRicercaFattureAccompagnatorie"_s));
    SetKxCurrentUserName(u"ufficio"_s);
    test::trigger(&workplace_->module(), u"actRicercaFattureAccompagnatorie"_s);
    QVERIFY(workplace_->window().findChild<QWidget *>(u"MMGRicercaFattureAccompagnatorie"_s));
}

void TestInvoiceList::deletingRemovesTheRow()
{
    test::trigger(list_, u"actCerca"_s);
    test::selectRow(grid(), u"C9"_s);
    workplace_->messages.expectQuestion(u"Confermare l'eliminazione?"_s, core::Answer::No);
    test::trigger(list_, u"actElimina"_s);
    QCOMPARE(numbers(), QStringList({u"10"_s, u"9"_s, u"2"_s}));
    workplace_->messages.expectQuestion(u"Confermare l'eliminazione?"_s, core::Answer::Yes);
    test::trigger(list_, u"actElimina"_s);
    QCOMPARE(numbers(), QStringList({u"10"_s, u"2"_s}));
    QCOMPARE(workplace_->lines(u"SELECT NUMERO FROM FATT_ACC ORDER BY 1"_s), QStringList({u"2"_s, u"10"_s, u"30"_s}));
    QCOMPARE(workplace_->lines(u"SELECT COUNT(*) FROM FATT_ACC_DETT"_s), QStringList({u"3"_s}));
}

static const test::Registered<TestInvoiceList> registered;

#include "test_invoice_list.moc"
