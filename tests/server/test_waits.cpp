#include "platform/data/ReadApart.h"
#include "platform/data/WaitLimits.h"
#include "tests/server/AtServer.h"

const QString lost = u"Il server non risponde oppure il collegamento è caduto."_s;
const QString typed = u"Scatole di cartone"_s;

/// Nothing that another session or a server does can hold a form for longer than the limits.
class TestWaits : public AtServer
{
    Q_OBJECT

private Q_SLOTS:
    void init() override
    {
        // A server that a busy machine lets wait for a second is not one that hangs.
        data::waitLimits() = {.lock = 2, .silence = 1, .answer = 2};
        AtServer::init();
    }

    void cleanup() override
    {
        server().goOn();
        AtServer::cleanup();
    }

    void cleanupTestCase() { data::waitLimits() = {}; }

    // Before its first row, for which the engine has to look at all of them.
    void cancelledQueryEndsAtOnce()
    {
        const test::TestDatabase file(test::Content::Empty);
        for (const data::DatabaseAddress &address : {server().address(), file.address()}) {
            core::Progress progress;
            QString told;
            const std::unique_ptr<QThread> reading(QThread::create([&] {
                told = test::errorOf([&] {
                    data::readApart(data::nativeConnectionString(address),
                                    u"SELECT COUNT(*) FROM RDB$FIELDS A, RDB$FIELDS B, RDB$FIELDS C, RDB$FIELDS D"_s,
                                    progress);
                });
            }));
            reading->start();
            const auto ended = qScopeGuard([&] {
                progress.cancel();
                reading->wait();
            });
            QTest::qWait(500);
            QVERIFY(reading->isRunning());
            progress.cancel();
            QVERIFY(reading->wait(5000));
            QCOMPARE(told, u"cancelled"_s);
        }
    }

    void rowHeldByAnotherSession_data() { kinds(); }

    void rowHeldByAnotherSession()
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

    void serverThatStopsAnsweringInASave_data() { kinds(); }

    void serverThatStopsAnsweringInASave()
    {
        QFETCH(QString, flags);
        const test::Document document = changedDocument();
        connection().setStatementHook([&](const QString &) {
            if (connection().inTransaction())
                server().hang();
        });
        saveFails(document, 9, flags);
        connection().setStatementHook({});
        // The next try asks for a new connection; nothing of the save was begun then.
        document.form().DataChanged();
        saveFails(document, 9, u"stored modified"_s, lost);
        server().goOn();
        saveSucceeds(document);
    }

    void serverThatWorksForLongIsWaitedFor()
    {
        const std::unique_ptr<data::Connection> connection = connect();
        QElapsedTimer time;
        time.start();
        // Counts pairs until well behind the limits.
        connection->run(u"EXECUTE BLOCK RETURNS (N INTEGER) AS DECLARE T TIMESTAMP; BEGIN N = 0; T = DATEADD(4 "
                        "SECOND TO CAST('NOW' AS TIMESTAMP)); WHILE (CAST('NOW' AS TIMESTAMP) < T) DO N = N + 1; "
                        "SUSPEND; END"_s);
        QVERIFY(time.elapsed() > 3500);
        QCOMPARE(connection->select(u"SELECT COUNT(*) AS N FROM UTENTI"_s).size(), qsizetype(1));
    }

    void definitionOfATableInUse()
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

private:
    static void kinds()
    {
        QTest::addColumn<QString>("flags");
        QTest::newRow("receipt") << u"stored modified"_s;
        // After a failed save a delivery note counts as saved; this is intended.
        QTest::newRow("note") << u"stored"_s;
    }

    static const test::DocumentNames &names() { return test::kindOfRow(); }

    /// A stored document with one more text typed into it.
    test::Document changedDocument() const
    {
        test::Document document(place(), names());
        document.trigger(u"actNuovo"_s);
        document.store(u"2"_s, u"10"_s);
        document.showPage(0);
        test::typeOver(document.control<QLineEdit>(u"txtAspettoBeni"_s), typed);
        return document;
    }

    /// Saves in vain; answers within `seconds`.
    void saveFails(const test::Document &document, qint64 seconds, const QString &flags,
                   const QString &message = test::saveError) const
    {
        place().messages.expectPart(u"Errore"_s, message);
        QElapsedTimer time;
        time.start();
        document.save();
        QVERIFY2(time.elapsed() < seconds * 1000, qPrintable(QString::number(time.elapsed())));
        QCOMPARE(place().messages.verify().join(u"; "_s), QString());
        QCOMPARE(document.flags(), flags);
        QCOMPARE(document.shown(u"txtAspettoBeni"_s), typed);
        QCOMPARE(document.grid()->model()->rowCount(), 1);
    }

    void saveSucceeds(const test::Document &document) const
    {
        document.saveAgain();
        QCOMPARE(document.flags(), u"stored"_s);
        const QString stored =
            u"SELECT COUNT(*), MAX(H.ASPETTO_BENI) FROM %1 H JOIN %2 R ON R.%3 = H.%3 WHERE H.%3 = %4"_s
                .arg(names().table, names().rowTable, names().key)
                .arg(document.form().IdRecord());
        QCOMPARE(test::linesOf(*connect(), stored), QStringList({u"1|"_s + typed}));
    }
};

static const test::Registered<TestWaits> registered;
#include "test_waits.moc"
