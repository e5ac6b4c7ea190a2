#include "magazzino/MMGUtils.h"
#include "tests/server/AtServer.h"
#include "tests/support/SlowLink.h"

using namespace Qt::StringLiterals;

/// How often the program waits for a server: on a slow network nothing else decides how long it takes.
class TestTurns : public AtServer
{
    Q_OBJECT

private Q_SLOTS:
    void init() override
    {
        link_ = std::make_unique<test::SlowLink>(server().address().port);
        data::DatabaseAddress address = server().address();
        address.port = link_->port();
        setPlace(std::make_unique<test::Workplace>(address));
        host::insertDemoModuleData(database());
    }
    void cleanup() override
    {
        AtServer::cleanup();
        link_.reset();
    }

    void document_data() { test::eachKind(); }
    void document()
    {
        const test::Document document(place(), test::kindOfRow());
        // An invoice's right is asked for besides.
        const int most = &test::kindOfRow() == &test::accompanyingInvoice() ? 26 : 25;
        // The first save prepares the statements.
        for (int time = 0; time < 2; ++time) {
            document.trigger(u"actNuovo"_s);
            document.fillHeader();
            for (int row = 0; row < 10; ++row)
                document.addArticle(u"TRA-0018"_s, u"2"_s, u"10"_s);
            const int turns = turnsOf([&] { document.save(); });
            QCOMPARE(document.flags(), u"stored"_s);
            QVERIFY2(time == 0 || turns <= most, qPrintable(QString::number(turns)));
        }
        document.form().DataChanged();
        document.save();
        document.form().DataChanged();
        const int again = turnsOf([&] { document.save(); });
        QVERIFY2(again <= most, qPrintable(QString::number(again)));
        const int opening = turnsOf([&] { document.form().ApriRecord(document.form().IdRecord()); });
        QVERIFY2(opening <= 10, qPrintable(QString::number(opening)));
        GetUM(1);
        QCOMPARE(turnsOf([] { GetUM(2); }), 1);
    }

private:
    int turnsOf(const std::function<void()> &work) const
    {
        const int before = link_->turns();
        work();
        return link_->turns() - before;
    }

    std::unique_ptr<test::SlowLink> link_;
};

static const test::Registered<TestTurns> registered;

#include "test_turns.moc"
