#include "host/DatabaseSetup.h"
#include "host/start/FirstRows.h"
#include "magazzino/uMMGModMagazzino.h"
#include "platform/data/DatabaseError.h"
#include "platform/data/WaitLimits.h"
#include "tests/support/Documents.h"
#include "tests/support/FirebirdServer.h"
#include "tests/support/TestMain.h"

#include <QElapsedTimer>
#include <QLineEdit>

using namespace Qt::StringLiterals;

namespace {

const QString saveError = u"Si è verificato un errore durante il salvataggio dei dati!"_s;
const QString lost = u"Il server non risponde oppure il collegamento è caduto."_s;
const QString typed = u"Scatole di cartone"_s;

} // namespace

/// Nothing that another session or a server does can hold a form for longer than the limits.
class TestWaits : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase() { data::waitLimits() = {}; }

    void usualLimits();
    void rowHeldByAnotherSession_data() { kinds(); }
    void rowHeldByAnotherSession();
    void serverThatStopsAnsweringInASave_data() { kinds(); }
    void serverThatStopsAnsweringInASave();
    void serverThatWorksForLongIsWaitedFor();
    void definitionOfATableInUse();

private:
    static void kinds();
    const test::DocumentNames &names() const;
    /// A stored document with one more text typed into it.
    test::Document changedDocument() const;
    /// Saves in vain; answers within `seconds`.
    void saveFails(const test::Document &document, int seconds, const QString &flags,
                   const QString &message = saveError) const;
    void saveSucceeds(const test::Document &document) const;
    std::unique_ptr<data::Connection> connect() const;

    std::unique_ptr<test::FirebirdServer> server_;
    std::unique_ptr<test::Workplace> workplace_;
};

void TestWaits::initTestCase()
{
    server_ = std::make_unique<test::FirebirdServer>();
    host::createHostDatabase(server_->address(), true);
}

void TestWaits::init()
{
    data::waitLimits() = {.lock = 2, .silence = 1, .answer = 1};
    workplace_ = std::make_unique<test::Workplace>(server_->address());
    host::insertDemoModuleData(workplace_->database());
}

void TestWaits::cleanup()
{
    server_->goOn();
    workplace_.reset();
}

void TestWaits::kinds()
{
    QTest::addColumn<bool>("isReceipt");
    QTest::addColumn<QString>("flags");
    QTest::newRow("receipt") << true << u"stored modified"_s;
    // After a failed save a delivery note counts as saved; this is intended.
    QTest::newRow("delivery note") << false << u"stored"_s;
}

const test::DocumentNames &TestWaits::names() const
{
    QFETCH(bool, isReceipt);
    return isReceipt ? test::receipt() : test::deliveryNote();
}

std::unique_ptr<data::Connection> TestWaits::connect() const
{
    auto connection = std::make_unique<data::Connection>();
    connection->setConnectionString(data::nativeConnectionString(server_->address()));
    connection->open();
    return connection;
}

test::Document TestWaits::changedDocument() const
{
    test::Document document(*workplace_, names());
    document.trigger(u"actNuovo"_s);
    document.fillHeader();
    document.addArticle(u"TRA-0018"_s, u"2"_s, u"10"_s);
    document.save();
    document.showPage(0);
    test::typeOver(document.control<QLineEdit>(u"txtAspettoBeni"_s), typed);
    return document;
}

void TestWaits::saveFails(const test::Document &document, int seconds, const QString &flags,
                          const QString &message) const
{
    workplace_->messages.expectPart(u"Errore"_s, message, core::Answer::Ok);
    QElapsedTimer time;
    time.start();
    document.save();
    QVERIFY2(time.elapsed() < seconds * 1000, qPrintable(QString::number(time.elapsed())));
    QCOMPARE(workplace_->messages.verify().join(u"; "_s), QString());
    QCOMPARE(document.flags(), flags);
    QCOMPARE(document.shown(u"txtAspettoBeni"_s), typed);
    QCOMPARE(document.grid()->model()->rowCount(), 1);
}

void TestWaits::saveSucceeds(const test::Document &document) const
{
    document.form().DataChanged();
    document.save();
    QCOMPARE(document.flags(), u"stored"_s);
    const QString stored = u"SELECT COUNT(*), MAX(H.ASPETTO_BENI) FROM %1 H JOIN %2 R ON R.%3 = H.%3 WHERE H.%3 = %4"_s
                               .arg(names().table, names().rowTable, names().key)
                               .arg(document.form().IdRecord());
    QCOMPARE(test::linesOf(*connect(), stored), QStringList({u"1|"_s + typed}));
}

void TestWaits::usualLimits()
{
    const data::WaitLimits usual;
    QCOMPARE(usual.lock, 10);
    QVERIFY(usual.silence + usual.answer <= usual.lock);
}

void TestWaits::rowHeldByAnotherSession()
{
    QFETCH(QString, flags);
    const test::Document document = changedDocument();
    const std::unique_ptr<data::Connection> other = connect();
    {
        data::Transaction holding(*other);
        other->execute(u"UPDATE %1 SET NUMERO = NUMERO WHERE %2 = %3"_s.arg(names().table, names().key)
                           .arg(document.form().IdRecord()));
        saveFails(document, 5, flags);
    }
    saveSucceeds(document);
}

void TestWaits::serverThatStopsAnsweringInASave()
{
    QFETCH(QString, flags);
    const test::Document document = changedDocument();
    data::Connection &connection = *workplace_->module().ModADOConn;
    connection.setStatementHook([&](const QString &) {
        if (connection.inTransaction())
            server_->hang();
    });
    saveFails(document, 6, flags);
    connection.setStatementHook({});
    // The next try asks for a new connection; nothing of the save was begun then.
    document.form().DataChanged();
    saveFails(document, 6, u"stored modified"_s, lost);
    server_->goOn();
    saveSucceeds(document);
}

void TestWaits::serverThatWorksForLongIsWaitedFor()
{
    const std::unique_ptr<data::Connection> connection = connect();
    QElapsedTimer time;
    time.start();
    // Counts pairs until well behind the limits.
    connection->run(u"EXECUTE BLOCK RETURNS (N INTEGER) AS DECLARE T TIMESTAMP; BEGIN N = 0; "
                    "T = DATEADD(3 SECOND TO CAST('NOW' AS TIMESTAMP)); "
                    "WHILE (CAST('NOW' AS TIMESTAMP) < T) DO N = N + 1; SUSPEND; END"_s);
    QVERIFY(time.elapsed() > 2500);
    QCOMPARE(connection->select(u"SELECT COUNT(*) AS N FROM UTENTI"_s).size(), qsizetype(1));
}

void TestWaits::definitionOfATableInUse()
{
    const std::unique_ptr<data::Connection> other = connect();
    const std::unique_ptr<data::Connection> connection = connect();
    const QString definition = u"CREATE INDEX IX_PROVA ON NOTE_DOCUMENTI(IDNOTA_DOCUMENTI)"_s;
    {
        data::Transaction holding(*other);
        other->execute(u"UPDATE NOTE_DOCUMENTI SET IDNOTA_DOCUMENTI = IDNOTA_DOCUMENTI"_s);
        QElapsedTimer time;
        time.start();
        QVERIFY_EXCEPTION_THROWN(connection->execute(definition), data::DatabaseError);
        QVERIFY(time.elapsed() < 5000);
    }
    connection->execute(definition);
}

static const test::Registered<TestWaits> registered;
#include "test_waits.moc"
