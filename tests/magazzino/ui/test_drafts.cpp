#include "host/start/DraftOffer.h"
#include "platform/core/WorkFolder.h"
#include "platform/ui/Drafts.h"
#include "tests/support/Fixtures.h"

/// What is typed and not saved is there again after the program was cut off or, by "Recupera", after it was given up.
class TestDrafts : public test::AtKeptWorkplace
{
    Q_OBJECT

private Q_SLOTS:
    void comesBackWhole_data() { test::eachKind(); }

    // Saved after the program was cut off, everything stored is as if it had not been.
    void comesBackWhole()
    {
        const QStringList expected = storedOf(test::kindOfRow());
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
        test::Workstation other(address(), {u"draft"_s, file()});
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

    void goesWithWhatItKept_data() { test::cases({u"actSalva"_s, u"actNuovo"_s, u"actChiudi"_s}); }

    void goesWithWhatItKept()
    {
        const test::Document document(place(), test::receipt());
        document.fillAll();
        keep();
        const QByteArray written = test::contentOf(drafts().value(0));
        test::type(document.control<QPlainTextEdit>(u"txtNote"_s), u" e pesante"_s);
        // Keys write nothing.
        QCOMPARE(test::contentOf(drafts().value(0)), written);
        keep();
        QVERIFY(test::contentOf(drafts().value(0)) != written);
        if (test::currentCase() != u"actSalva"_s)
            place().messages.expectQuestion(test::unsaved, core::Answer::Yes);
        document.trigger(test::currentCase());
        QCOMPARE(drafts(), QStringList());
        keep();
        QCOMPARE(drafts(), QStringList());
    }

    void storedDocumentIsLookedAtBeforeItIsOverwritten_data()
    {
        test::table<QString, QString>({{"changed", u"UPDATE BOLLE_CARICO SET COLLI = 9"_s,
                                        u"Il documento è stato modificato da un'altra postazione dopo l'apertura.\n\r"
                                        "Sovrascrivere?"_s},
                                       {"deleted", u"DELETE FROM BOLLE_CARICO"_s,
                                        u"Il documento è stato eliminato nel frattempo.\n\rRegistrarlo di nuovo?"_s},
                                       {"untouched", {}, {}}});
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
        const QString administrator = host::administrator;
        test::table<QString, QString, QString, int>(
            {{"own", administrator, {}, {}, 1},
             {"another user's", u"UFFICIO"_s, {}, {}, 0},
             {"another firm's", administrator, u"/altra.fdb"_s, {}, 0},
             {"with the right", administrator, {}, u"Fatture acc. (visualizzazione)"_s, 1},
             {"right taken away", u"MAGAZZINIERE"_s, {}, u"Fatture acc. (modifica)"_s, 0}});
    }

    void offeredToWhomItBelongs()
    {
        const auto [user, firm, right, offered] = test::row<QString, QString, QString, int>();
        ui::Draft draft{.database = firm.isEmpty() ? address().toString() : firm,
                        .user = user,
                        .time = test::workplaceTime(),
                        .action = test::accompanyingInvoice().action};
        draft.title.rights = QStringList(right);
        const QString session = file(u"bozze/sessione-altra1"_s);
        QVERIFY(QDir().mkpath(session));
        core::saveFile(session + u"/1.bozza"_s, ui::packed(draft));
        if (user == u"MAGAZZINIERE"_s) {
            // As if that user were logged in.
            delete ui::Drafts::current();
            SetKxCurrentUserName(user);
            new ui::Drafts(file(u"bozze"_s), address().toString(), user, &place().window());
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
        const QString session = file(u"bozze/sessione-altra1"_s);
        QList<QByteArray> damaged = {{}, "x", whole + 'x'};
        for (qsizetype part = 1; part < 8; ++part) {
            damaged.append(whole.left(whole.size() * part / 8));
            damaged.append(whole);
            damaged.last()[whole.size() * part / 8] ^= 1;
        }
        for (const QByteArray &content : std::as_const(damaged)) {
            QVERIFY(QDir().mkpath(session));
            core::saveFile(session + u"/1.bozza"_s, content);
            place().messages.expectPart(u"Attenzione"_s, u"È stato messo da parte"_s);
            host::offerDrafts(&place().window(), database());
            QCOMPARE(test::contentOf(file(u"bozze/sessione-altra1-1.bozza.illeggibile"_s)), content);
            host::offerDrafts(&place().window(), database());
            QVERIFY(!QDir(session).exists());
            QFile::remove(file(u"bozze/sessione-altra1-1.bozza.illeggibile"_s));
        }
    }

    void givenUpComesBackWhole_data()
    {
        test::table<QString, QString>({{"receipt, new", u"receipt"_s, u"actNuovo"_s},
                                       {"receipt, closed", u"receipt"_s, u"actChiudi"_s},
                                       {"note, deleted", u"note"_s, u"actElimina"_s},
                                       {"invoice, closed", u"invoice"_s, u"actChiudi"_s}});
    }

    // Saved after it came back, everything stored is as if it had never been given up.
    void givenUpComesBackWhole()
    {
        const auto [kind, way] = test::row<QString, QString>();
        const QStringList expected = storedOf(test::documentNames(kind));
        {
            const test::Document document(place(), test::documentNames(kind));
            document.fillAll();
            if (way == u"actChiudi"_s && kind != u"receipt"_s)
                place().messages.expectQuestion(test::saveFirst, core::Answer::No);
            else if (way != u"actElimina"_s)
                place().messages.expectQuestion(test::unsaved, core::Answer::Yes);
            document.trigger(way);
        }
        const test::Document document(place(), test::documentNames(kind));
        QCOMPARE(document.flags(), u"new"_s);
        document.trigger(u"actRecupera"_s);
        QCOMPARE(document.flags(), u"new modified"_s);
        document.save();
        QCOMPARE(document.stored(), expected);
        QVERIFY(!document.form().command(u"actRecupera"_s)->isEnabled());
    }

    void refusedSaveOfAClosingNoteComesBack_data() { test::cases({u"by a check"_s, u"by the database"_s}); }

    void refusedSaveOfAClosingNoteComesBack()
    {
        const bool byTheDatabase = test::currentCase() == u"by the database"_s;
        {
            const test::Document note(place(), test::deliveryNote());
            note.addArticle(u"TRA-0018"_s, u"7"_s, u"3"_s);
            if (byTheDatabase) {
                note.fillHeader();
                place().messages.expectError(test::saveError);
                // After this the note counts as saved, so that closing asks nothing.
                test::refusing(
                    connection(), [](const QString &sql) { return sql.startsWith(u"INSERT"); },
                    [&note] { note.save(); });
            } else {
                place().messages.expectQuestion(test::saveFirst, core::Answer::Yes);
                place().messages.expectWarning(u"Non è stato selezionato un cliente!"_s);
            }
            note.trigger(u"actChiudi"_s);
        }
        const test::Document note(place(), test::deliveryNote());
        QCOMPARE(note.grid()->model()->rowCount(), 0);
        note.trigger(u"actRecupera"_s);
        if (!byTheDatabase)
            note.fillHeader();
        note.save();
        QCOMPARE(lines(u"SELECT CODICE, QUANTITA FROM DDT_SCARICO_DETT"_s), QStringList(u"TRA-0018|3"_s));
    }

    void changedRecordKeepsWhatItWasOpenedFrom()
    {
        ui::EntryForm *form = supplier();
        form->openRecord(1);
        const QString code = test::shown(form, u"txtCodice"_s);
        test::typeOver(nameOf(form), u"Mio"_s);
        place().messages.expectQuestion(test::unsaved, core::Answer::Yes);
        test::trigger(form, u"actChiudi"_s);
        database().execute(u"UPDATE FORNITORI SET RAGIONESOCIALE = 'Altrui' WHERE IDFORNITORE = 1"_s);
        form = supplier();
        QCOMPARE(nameOf(form)->text(), QString());
        test::trigger(form, u"actRecupera"_s);
        QCOMPARE(test::shown(form, u"txtCodice"_s), code);
        place().messages.expectQuestion(
            u"Il record è stato modificato da un'altra postazione dopo l'apertura.\n\rSovrascrivere?"_s,
            core::Answer::Yes);
        test::trigger(form, u"actSalva"_s);
        QCOMPARE(lines(u"SELECT RAGIONESOCIALE FROM FORNITORI WHERE IDFORNITORE = 1"_s), QStringList(u"Mio"_s));
    }

    void unreadableTextComesBack()
    {
        QWidget *form = open(u"actInserimentoMovimentiMagazzino"_s);
        auto *date = test::control<QLineEdit>(form, u"txtDataMovimento"_s);
        test::typeOver(date, u"31/02/2025"_s);
        place().messages.expectQuestion(test::unsaved, core::Answer::Yes);
        test::trigger(form, u"actNuovo"_s);
        QCOMPARE(date->text(), u"16/03/2026"_s);
        test::trigger(form, u"actRecupera"_s);
        QCOMPARE(date->text(), u"31/02/2025"_s);
        QVERIFY(date->property("red").toBool());
    }

    void twoAreExchanged()
    {
        const ui::EntryForm *form = supplier();
        QVERIFY(!form->command(u"actRecupera"_s)->isEnabled());
        test::type(nameOf(form), u"Primo"_s);
        place().messages.expectQuestion(test::unsaved, core::Answer::Yes);
        test::trigger(form, u"actNuovo"_s);
        test::type(nameOf(form), u"Secondo"_s);
        for (const QString &name : {u"Primo"_s, u"Secondo"_s, u"Primo"_s}) {
            test::trigger(form, u"actRecupera"_s);
            QCOMPARE(nameOf(form)->text(), name);
        }
    }

private:
    static void keep() { QVERIFY(ui::Drafts::current()->flush()); }
    void resume() const
    {
        place().dialogs.expect(test::pressing(u"cmdRiprendi"_s));
        host::offerDrafts(&place().window(), database());
    }
    QStringList drafts() const
    {
        QStringList files;
        QDirIterator all(file(u"bozze"_s), {u"*.bozza"_s}, QDir::Files, QDirIterator::Subdirectories);
        while (all.hasNext())
            files.append(all.next());
        return files;
    }
    ui::EntryForm *supplier() const { return openEntry(u"actInserimentoFornitori"_s); }
    static QLineEdit *nameOf(const QWidget *form) { return test::control<QLineEdit>(form, u"txtRagioneSociale"_s); }
};

static const test::Registered<TestDrafts> registered;

#include "test_drafts.moc"
