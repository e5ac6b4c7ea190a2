#include "host/DatabaseSetup.h"
#include "host/start/FirstRows.h"
#include "magazzino/MMGUtils.h"
#include "tests/support/Documents.h"
#include "tests/support/FirebirdServer.h"
#include "tests/support/SlowLink.h"
#include "tests/support/TestMain.h"

using namespace Qt::StringLiterals;

/// How often the program waits for a server: on a slow network nothing else decides how long it takes.
class TestTurns : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void document_data();
    void document();

private:
    int turnsOf(const std::function<void()> &work) const
    {
        const int before = link_->turns();
        work();
        return link_->turns() - before;
    }

    std::unique_ptr<test::FirebirdServer> server_;
    std::unique_ptr<test::SlowLink> link_;
    std::unique_ptr<test::Workplace> workplace_;
};

void TestTurns::initTestCase()
{
    server_ = std::make_unique<test::FirebirdServer>();
    host::createHostDatabase(server_->address(), true);
    link_ = std::make_unique<test::SlowLink>(server_->address().port);
    data::DatabaseAddress address = server_->address();
    address.port = link_->port();
    workplace_ = std::make_unique<test::Workplace>(address);
    host::insertDemoModuleData(workplace_->database());
}

void TestTurns::cleanupTestCase()
{
    workplace_.reset();
    link_.reset();
}

void TestTurns::document_data()
{
    QTest::addColumn<bool>("isReceipt");
    QTest::newRow("receipt") << true;
    QTest::newRow("delivery note") << false;
}

void TestTurns::document()
{
    QFETCH(bool, isReceipt);
    const test::Document document(*workplace_, isReceipt ? test::receipt() : test::deliveryNote());
    // The first save prepares the statements.
    for (int time = 0; time < 2; ++time) {
        document.trigger(u"actNuovo"_s);
        document.fillHeader();
        for (int row = 0; row < 10; ++row)
            document.addArticle(u"TRA-0018"_s, u"2"_s, u"10"_s);
        const int turns = turnsOf([&] { document.save(); });
        QCOMPARE(document.flags(), u"stored"_s);
        QVERIFY2(time == 0 || turns <= 25, qPrintable(QString::number(turns)));
    }
    document.form().DataChanged();
    document.save();
    document.form().DataChanged();
    const int again = turnsOf([&] { document.save(); });
    QVERIFY2(again <= 25, qPrintable(QString::number(again)));
    const int opening = turnsOf([&] { document.form().ApriRecord(document.form().IdRecord()); });
    QVERIFY2(opening <= 10, qPrintable(QString::number(opening)));
    GetUM(1);
    QCOMPARE(turnsOf([] { GetUM(2); }), 1);
}

static const test::Registered<TestTurns> registered;

#include "test_turns.moc"
