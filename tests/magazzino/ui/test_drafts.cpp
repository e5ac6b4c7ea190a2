#include "host/start/DraftOffer.h"
#include "platform/core/WorkFolder.h"
#include "platform/ui/Drafts.h"
#include "tests/support/Fixtures.h"

/// What is typed and not saved is there again after the program was cut off.
class TestDrafts : public test::AtWorkplace
{
    Q_OBJECT

private Q_SLOTS:
    void init() override
    {
        folder_ = std::make_unique<QTemporaryDir>();
        copy_ = std::make_unique<test::TestDatabase>(test::Content::DemoData);
        startAgain();
    }
    void cleanup() override
    {
        AtWorkplace::cleanup();
        copy_.reset();
    }

    void comesBackWhole_data() { test::eachKind(); }

    // Saved after the program was cut off, everything stored is as if it had not been.
    void comesBackWhole()
    {
        QStringList expected;
        {
            const test::Document document(place(), test::kindOfRow());
            document.fillAll();
            document.save();
            expected = document.stored();
        }
        cleanup();
        init();
        {
            const test::Document document(place(), test::kindOfRow());
            document.fillAll();
            QCOMPARE(drafts(), QStringList());
            keep();
        }
        const QStringList files = drafts();
        QCOMPARE(files.size(), 1);
        QCOMPARE(QFile::permissions(files[0]) & ~(QFile::ReadUser | QFile::WriteUser),
                 QFile::ReadOwner | QFile::WriteOwner);
        startAgain();
        resume();
        const test::Document document(place(), test::kindOfRow());
        QCOMPARE(document.flags(), u"new modified"_s);
        QCOMPARE(drafts().size(), 1);
        document.save();
        QCOMPARE(document.stored(), expected);
        QCOMPARE(drafts(), QStringList());
    }

    void killedProgramLosesNothing()
    {
        setPlace({});
        test::Workstation other(copy_->address(), {u"draft"_s, settings()});
        QCOMPARE(other.answer(), u"2"_s);
        other.kill();
        startAgain();
        place().dialogs.expect([](QDialog &dialog) {
            auto *grid = test::control<QTableView>(&dialog, u"gridBozze"_s);
            QCOMPARE(test::cellText(grid, 0, u"Documento"_s), u"D.d.T. di scarico"_s);
            QCOMPARE(test::cellText(grid, 0, u"N."_s), u"nuovo, n. 1"_s);
            QCOMPARE(test::cellText(grid, 0, u"Data"_s), u"28/02/2025"_s);
            QCOMPARE(test::cellText(grid, 0, u"Cliente o fornitore"_s), u"Acciaierie Brentane S.p.A."_s);
            if (const QString path = qEnvironmentVariable("MAGAZZINO_PICTURES"); !path.isEmpty())
                dialog.grab().save(path + u"/bozze.png"_s);
            test::press(&dialog, u"cmdPiuTardi"_s);
        });
        host::offerDrafts(&place().window(), database());
        // Put off, it is offered again.
        resume();
        test::Document(place(), test::deliveryNote()).save();
        QCOMPARE(lines(u"SELECT CODICE, QUANTITA FROM DDT_SCARICO_DETT ORDER BY 1"_s),
                 QStringList({u"SMA-0750|1.5"_s, u"TRA-0018|3"_s}));
    }

    void freeMovementComesBack()
    {
        const QWidget *form = open(u"actInserimentoMovimentiMagazzino"_s);
        test::retype(form, u"txtPrezzo"_s, u"abc"_s);
        test::type(test::control<QPlainTextEdit>(form, u"txtNote"_s), u"Rotto"_s);
        keep();
        startAgain();
        resume();
        form = open(u"actInserimentoMovimentiMagazzino"_s);
        QCOMPARE(test::shown(form, u"txtPrezzo"_s), u"abc"_s);
        QCOMPARE(test::control<QPlainTextEdit>(form, u"txtNote"_s)->toPlainText(), u"Rotto"_s);
    }

    void goesWithWhatItKept_data()
    {
        test::columns<QString>("way");
        for (const char *way : {"actSalva", "actNuovo", "actChiudi"})
            QTest::newRow(way) << QString::fromLatin1(way);
    }

    void goesWithWhatItKept()
    {
        const auto [way] = test::row<QString>();
        const test::Document document(place(), test::receipt());
        document.fillAll();
        keep();
        const QByteArray written = test::contentOf(drafts().value(0));
        test::type(document.control<QPlainTextEdit>(u"txtNote"_s), u" e pesante"_s);
        // Keys write nothing.
        QCOMPARE(test::contentOf(drafts().value(0)), written);
        keep();
        QVERIFY(test::contentOf(drafts().value(0)) != written);
        if (way != u"actSalva"_s)
            place().messages.expectQuestion(test::unsaved, core::Answer::Yes);
        document.trigger(way);
        QCOMPARE(drafts(), QStringList());
        keep();
        QCOMPARE(drafts(), QStringList());
    }

    void storedDocumentIsLookedAtBeforeItIsOverwritten_data()
    {
        test::columns<QString, QString>("change", "question");
        QTest::newRow("changed") << u"UPDATE BOLLE_CARICO SET COLLI = 9"_s
                                 << u"Il documento è stato modificato da un'altra postazione dopo l'apertura.\n\r"
                                    "Sovrascrivere?"_s;
        QTest::newRow("deleted") << u"DELETE FROM BOLLE_CARICO"_s
                                 << u"Il documento è stato eliminato nel frattempo.\n\rRegistrarlo di nuovo?"_s;
        QTest::newRow("untouched") << QString() << QString();
    }

    void storedDocumentIsLookedAtBeforeItIsOverwritten()
    {
        const auto [change, question] = test::row<QString, QString>();
        {
            const test::Document document(place(), test::receipt());
            document.fillAll();
            document.save();
            test::type(document.control<QPlainTextEdit>(u"txtNote"_s), u" e pesante"_s);
            keep();
        }
        startAgain();
        if (!change.isEmpty())
            database().execute(change);
        resume();
        const test::Document document(place(), test::receipt());
        QCOMPARE(document.control<QPlainTextEdit>(u"txtNote"_s)->toPlainText(), u"Fragile e pesante"_s);
        QCOMPARE(document.grid()->model()->rowCount(), 2);
        if (!question.isEmpty())
            place().messages.expectQuestion(question, core::Answer::Yes);
        document.save();
        QCOMPARE(lines(u"SELECT COUNT(*), MAX(CAST(NOTE AS VARCHAR(100))) FROM BOLLE_CARICO"_s),
                 QStringList(u"1|Fragile e pesante"_s));
        QCOMPARE(lines(u"SELECT COUNT(*) FROM MOVI_MAGA"_s), QStringList(u"2"_s));
    }

    void offeredToWhomItBelongs_data()
    {
        test::columns<QString, QString, QString, int>("user", "database", "right", "offered");
        const QString administrator = host::administrator;
        QTest::newRow("own") << administrator << QString() << QString() << 1;
        QTest::newRow("another user's") << u"UFFICIO"_s << QString() << QString() << 0;
        QTest::newRow("another firm's") << administrator << u"/altra.fdb"_s << QString() << 0;
        QTest::newRow("with the right") << administrator << QString() << u"Fatture acc. (visualizzazione)"_s << 1;
        QTest::newRow("right taken away") << u"MAGAZZINIERE"_s << QString() << u"Fatture acc. (modifica)"_s << 0;
    }

    void offeredToWhomItBelongs()
    {
        const auto [user, address, right, offered] = test::row<QString, QString, QString, int>();
        ui::Draft draft{.database = address.isEmpty() ? copy_->address().toString() : address,
                        .user = user,
                        .time = test::workplaceTime(),
                        .action = test::accompanyingInvoice().action};
        draft.title.rights = QStringList(right);
        const QString session = folder_->filePath(u"bozze/sessione-altra1"_s);
        QVERIFY(QDir().mkpath(session));
        core::saveFile(session + u"/1.bozza"_s, ui::packed(draft));
        if (user == u"MAGAZZINIERE"_s) {
            // As if that user were logged in.
            delete ui::Drafts::current();
            SetKxCurrentUserName(user);
            new ui::Drafts(folder_->filePath(u"bozze"_s), copy_->address().toString(), user, &place().window());
        }
        QCOMPARE(host::waitingDrafts(nullptr, database()).size(), offered);
        // What a program that still runs keeps is its own.
        const int lock = core::lockFolder(session);
        QVERIFY(lock >= 0);
        QCOMPARE(host::waitingDrafts(nullptr, database()).size(), 0);
        ::close(lock);
    }

    void damagedFileIsPutAside()
    {
        const test::Document document(place(), test::receipt());
        document.fillAll();
        keep();
        const QByteArray whole = test::contentOf(drafts().value(0));
        const QString session = folder_->filePath(u"bozze/sessione-altra1"_s);
        QList<QByteArray> damaged = {{}, "x", whole + 'x'};
        for (qsizetype part = 1; part < 8; ++part) {
            damaged.append(whole.left(whole.size() * part / 8));
            damaged.append(whole);
            damaged.last()[whole.size() * part / 8] ^= 1;
        }
        for (const QByteArray &content : std::as_const(damaged)) {
            QVERIFY(QDir().mkpath(session));
            core::saveFile(session + u"/1.bozza"_s, content);
            place().messages.expectPart(u"Attenzione"_s, u"È stato messo da parte"_s, core::Answer::Ok);
            host::offerDrafts(&place().window(), database());
            QCOMPARE(test::contentOf(folder_->filePath(u"bozze/sessione-altra1-1.bozza.illeggibile"_s)), content);
            host::offerDrafts(&place().window(), database());
            QVERIFY(!QDir(session).exists());
            QFile::remove(folder_->filePath(u"bozze/sessione-altra1-1.bozza.illeggibile"_s));
        }
    }

private:
    QString settings() const { return folder_->filePath(u"corvane.ini"_s); }
    // The session before ends without a question, as a program that is cut off does.
    void startAgain()
    {
        setPlace({});
        setPlace(std::make_unique<test::Workplace>(copy_->address(), settings()));
    }
    static void keep() { QVERIFY(ui::Drafts::current()->flush()); }
    void resume() const
    {
        place().dialogs.expect([](QDialog &dialog) { test::press(&dialog, u"cmdRiprendi"_s); });
        host::offerDrafts(&place().window(), database());
        QCOMPARE(place().dialogs.verify(), QStringList());
    }
    QStringList drafts() const
    {
        QStringList files;
        QDirIterator all(folder_->filePath(u"bozze"_s), {u"*.bozza"_s}, QDir::Files, QDirIterator::Subdirectories);
        while (all.hasNext())
            files.append(all.next());
        return files;
    }

    std::unique_ptr<QTemporaryDir> folder_;
    std::unique_ptr<test::TestDatabase> copy_;
};

static const test::Registered<TestDrafts> registered;

#include "test_drafts.moc"
