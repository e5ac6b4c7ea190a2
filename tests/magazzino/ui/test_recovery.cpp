#include "tests/support/Fixtures.h"

/// "Recupera": what was given up unsaved comes back.
class TestRecovery : public test::AtWorkplace
{
    Q_OBJECT

private Q_SLOTS:
    void documentComesBackWhole_data()
    {
        test::columns<QString, QString>("kind", "way");
        QTest::newRow("receipt, new") << u"receipt"_s << u"actNuovo"_s;
        QTest::newRow("receipt, closed") << u"receipt"_s << u"actChiudi"_s;
        QTest::newRow("note, deleted") << u"note"_s << u"actElimina"_s;
        QTest::newRow("invoice, closed") << u"invoice"_s << u"actChiudi"_s;
    }

    // Saved after it came back, everything stored is as if it had never been given up.
    void documentComesBackWhole()
    {
        const auto [kind, way] = test::row<QString, QString>();
        QStringList expected;
        {
            const test::Document document(place(), test::documentNames(kind));
            document.fillAll();
            document.save();
            expected = document.stored();
            QVERIFY(!expected.isEmpty());
        }
        cleanup();
        init();
        {
            const test::Document document(place(), test::documentNames(kind));
            document.fillAll();
            giveUp(document, way, kind);
        }
        const test::Document document(place(), test::documentNames(kind));
        QCOMPARE(document.flags(), u"new"_s);
        document.trigger(u"actRecupera"_s);
        QCOMPARE(document.flags(), u"new modified"_s);
        document.save();
        QCOMPARE(document.stored(), expected);
        QVERIFY(!document.form().command(u"actRecupera"_s)->isEnabled());
    }

    void refusedSaveOfAClosingNoteComesBack_data()
    {
        QTest::addColumn<bool>("byTheDatabase");
        QTest::newRow("by a check") << false;
        QTest::newRow("by the database") << true;
    }

    void refusedSaveOfAClosingNoteComesBack()
    {
        QFETCH(bool, byTheDatabase);
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
    void giveUp(const test::Document &document, const QString &way, const QString &kind)
    {
        if (way == u"actChiudi"_s && kind != u"receipt"_s)
            place().messages.expectQuestion(test::saveFirst, core::Answer::No);
        else if (way != u"actElimina"_s)
            place().messages.expectQuestion(test::unsaved, core::Answer::Yes);
        document.trigger(way);
    }

    ui::EntryForm *supplier() const { return openEntry(u"actInserimentoFornitori"_s); }
    static QLineEdit *nameOf(const QWidget *form) { return test::control<QLineEdit>(form, u"txtRagioneSociale"_s); }
};

static const test::Registered<TestRecovery> registered;

#include "test_recovery.moc"
