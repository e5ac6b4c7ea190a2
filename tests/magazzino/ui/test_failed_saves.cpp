#include "tests/support/Fixtures.h"

/// What a document does when a check or the database refuses a save, for all kinds of documents.
class TestFailedSaves : public test::AtWorkplace
{
    Q_OBJECT

private Q_SLOTS:
    // Those of the invoice are shown with its form.
    void checksRunInOrder_data()
    {
        QTest::addColumn<bool>("isReceipt");
        QTest::newRow("receipt") << true;
        QTest::newRow("note") << false;
    }

    void checksRunInOrder()
    {
        QFETCH(bool, isReceipt);
        insertOther(names(), 1);
        const test::Document note(place(), names());
        const QStringList before = note.stored();
        const auto refused = [&](const QString &text) {
            place().messages.expectWarning(text);
            note.save();
            QCOMPARE(place().messages.verify().join(u"; "_s), QString());
            QCOMPARE(note.stored(), before);
            QCOMPARE(note.flags(), u"new modified"_s);
        };
        note.control<QLineEdit>(u"txtAspettoBeni"_s)->setText(u"Sfuso"_s);
        note.control<ui::IntegerEdit>(u"txtNumero"_s)->setValue(1);
        refused(test::numberTaken);
        note.control<ui::IntegerEdit>(u"txtNumero"_s)->setValue(2);
        refused(isReceipt ? u"Non è stato selezionato un fornitore!"_s : u"Non è stato selezionato un cliente!"_s);
        note.choose(u"actSelezionaFornitore"_s, test::choosing(u"Inox Casa S.r.l."_s, u"I"_s));
        refused(u"Non è stato selezionato un tipo di trasporto!"_s);
        note.choose(u"cmdSelezionaTipoTrasporto"_s, test::choosing(u"Vettore"_s));
        refused(isReceipt ? u"Non è stata indicata la causale del trasporto!"_s
                          : u"Non è stato selezionata una causale di trasporto!"_s);
        if (isReceipt)
            note.control<QComboBox>(u"txtCausaleTrasporto"_s)->setCurrentText(u"Reso"_s);
        else
            note.choose(u"cmdSelezionaCausaleTrasporto"_s, test::choosing(u"Reso"_s));
        note.save();
        QCOMPARE(note.flags(), u"stored"_s);
    }

    void everyStatementMayFail_data()
    {
        test::columns<bool, QString>("stored", "flags");
        QTest::newRow("receipt, new") << false << u"new modified"_s;
        QTest::newRow("receipt, stored") << true << u"stored modified"_s;
        // After a failed save a delivery note counts as saved; this is intended.
        QTest::newRow("note, new") << false << u"stored"_s;
        QTest::newRow("note, stored") << true << u"stored"_s;
        QTest::newRow("invoice, new") << false << u"stored"_s;
        QTest::newRow("invoice, stored") << true << u"stored"_s;
    }

    void everyStatementMayFail()
    {
        const auto [stored, flags] = test::row<bool, QString>();
        const test::Document note(place(), names());
        int failures = 0;
        for (int index = 0;; ++index) {
            if (index == 0 || !stored) {
                note.form().NuovoRecord();
                note.fillHeader();
                note.addArticle(u"TRA-0018"_s, u"2"_s, u"10"_s);
            }
            if (index == 0 && stored) {
                note.addArticle(u"TRA-0018"_s, u"3"_s, u"4"_s);
                note.save();
            }
            note.control<QLineEdit>(u"txtAspettoBeni"_s)->setText(u"Prova %1"_s.arg(index));
            const QStringList before = note.stored();
            const QString aspect = note.shown(u"txtAspettoBeni"_s);
            if (!saveFailsAt(note, index))
                break;
            ++failures;
            QCOMPARE(note.stored(), before);
            QCOMPARE(note.flags(), flags);
            QVERIFY(!connection().inTransaction());
            QVERIFY(!QGuiApplication::overrideCursor());
            QCOMPARE(note.shown(u"txtAspettoBeni"_s), aspect);
            QCOMPARE(test::columnTexts(note.grid(), u"Q.tà"_s).join(u'|'), stored ? u"10,00|4,00"_s : u"10,00"_s);
            // The first statement of a new document's save is the one that predicts its key.
            QCOMPARE(note.form().IdRecord() > 0, stored || index > 0);
            // The next save succeeds and writes the whole document once.
            note.form().DataChanged();
            note.save();
            QCOMPARE(note.flags(), u"stored"_s);
            const QString count = QString::number(stored ? 1 : index + 1);
            QCOMPARE(lines(u"SELECT COUNT(*) FROM "_s + names().table), QStringList({count}));
            const QString mine = u" WHERE %1 = %2"_s.arg(names().key).arg(note.form().IdRecord());
            QCOMPARE(lines(u"SELECT ASPETTO_BENI FROM "_s + names().table + mine), QStringList({aspect}));
            const QString rows = QString::number(stored ? 2 : index + 1);
            QCOMPARE(lines(u"SELECT COUNT(*) FROM "_s + names().rowTable), QStringList({rows}));
            QCOMPARE(lines(u"SELECT COUNT(*) FROM MOVI_MAGA M JOIN %1 D ON D.%2 = M.RIF_DOC_ID AND D.%2_DETT = "
                           "M.RIF_DOC_IDRIGA"_s.arg(names().rowTable, names().key)),
                     QStringList({rows}));
            QCOMPARE(lines(u"SELECT COUNT(*) FROM MOVI_MAGA"_s), QStringList({rows}));
        }
        // Header, two deletions, a row with its movement and the commit at the least.
        QVERIFY(failures >= 6);
    }

    void keyTakenMeanwhileIsLeftAlone_data() { test::eachKind(); }

    void keyTakenMeanwhileIsLeftAlone()
    {
        const test::Document note(place(), names());
        note.fillHeader();
        note.addArticle(u"TRA-0018"_s, u"2"_s, u"10"_s);
        failFirstSave(note);
        const int taken = insertOther(names(), 50);
        QCOMPARE(taken, note.form().IdRecord());
        const QString other = u"SELECT * FROM %1 WHERE %2 = %3"_s.arg(names().table, names().key).arg(taken);
        const QStringList before = lines(other);
        note.form().DataChanged();
        note.save();
        QCOMPARE(lines(other), before);
        QCOMPARE(note.form().IdRecord(), taken + 1);
        QCOMPARE(lines(u"SELECT %1, NUMERO FROM %2 ORDER BY 1"_s.arg(names().key, names().table)),
                 QStringList({u"%1|50"_s.arg(taken), u"%1|1"_s.arg(taken + 1)}));
        QCOMPARE(lines(u"SELECT %1 FROM %2"_s.arg(names().key, names().rowTable)),
                 QStringList({QString::number(taken + 1)}));
        QCOMPARE(lines(u"SELECT RIF_DOC_ID FROM MOVI_MAGA"_s), QStringList({QString::number(taken + 1)}));
    }

    void numberTakenMeanwhileIsNoticed_data() { test::eachKind(); }

    void numberTakenMeanwhileIsNoticed()
    {
        const test::Document note(place(), names());
        note.fillHeader();
        failFirstSave(note);
        // The other document stands under the predicted key, which must not hide it from the check.
        QCOMPARE(insertOther(names(), 1), note.form().IdRecord());
        note.form().DataChanged();
        place().messages.expectWarning(test::numberTaken);
        note.save();
        QCOMPARE(lines(u"SELECT NUMERO FROM "_s + names().table), QStringList(u"1"_s));
    }

    void deletingAfterAFailedFirstSaveDeletesNothing_data() { test::eachKind(); }

    void deletingAfterAFailedFirstSaveDeletesNothing()
    {
        const test::Document note(place(), names());
        note.fillHeader();
        failFirstSave(note);
        insertOther(names(), 50);
        const QStringList before = note.stored();
        note.trigger(u"actElimina"_s);
        QCOMPARE(note.stored(), before);
        QCOMPARE(note.flags(), u"new"_s);
        QCOMPARE(note.form().IdRecord(), -1);
    }

    void loadedNoteForgetsTheFailedSave()
    {
        const test::Document note(place(), test::deliveryNote());
        const int stored = insertOther(test::deliveryNote(), 50);
        note.fillHeader();
        failFirstSave(note);
        note.form().ApriRecord(stored);
        QCOMPARE(note.shown(u"lblCodice"_s), u"ALTRO"_s);
        place().messages.expectQuestion(test::deleting, core::Answer::Yes);
        note.trigger(u"actElimina"_s);
        QCOMPARE(lines(u"SELECT COUNT(*) FROM DDT_SCARICO"_s), QStringList(u"0"_s));
    }

    void failedLoadLeavesNothingToSave_data() { test::eachKind(); }

    void failedLoadLeavesNothingToSave()
    {
        const test::Document note(place(), names());
        note.fillHeader();
        note.addArticle(u"TRA-0018"_s, u"2"_s, u"10"_s);
        note.save();
        const int first = note.form().IdRecord();
        note.trigger(u"actNuovo"_s);
        note.fillHeader();
        note.addArticle(u"TRA-0018"_s, u"3"_s, u"5"_s);
        note.save();
        const int second = note.form().IdRecord();
        const QStringList before = note.stored();
        for (int index = 0;; ++index) {
            note.form().ApriRecord(second);
            int left = index;
            QString error;
            test::refusing(
                connection(), [&left](const QString &) { return left-- == 0; },
                [&] { error = test::errorOf([&] { note.form().ApriRecord(first); }); });
            if (error == u"no error"_s)
                break;
            QCOMPARE(note.flags() + QString::number(note.form().IdRecord()), u"new-1"_s);
            QCOMPARE(note.grid()->model()->rowCount(), 0);
            QVERIFY(!QGuiApplication::overrideCursor());
        }
        QCOMPARE(note.form().IdRecord(), first);
        QCOMPARE(note.grid()->model()->rowCount(), 1);
        QCOMPARE(note.stored(), before);
    }

private:
    static const test::DocumentNames &names() { return test::kindOfRow(); }

    /// The save fails at the statement with number `index` of its transaction; false when it had no such statement.
    bool saveFailsAt(const test::Document &note, int index)
    {
        int left = index;
        place().messages.expectError(test::saveError);
        test::refusing(
            connection(), [&](const QString &) { return connection().inTransaction() && left-- == 0; },
            [&note] { note.form().SalvaRecord(); });
        return place().messages.verify().isEmpty() && left < 0;
    }

    void failFirstSave(const test::Document &note) { QVERIFY(saveFailsAt(note, 1)); }
    /// Another workstation's document, stored under the key that the trigger gives next.
    int insertOther(const test::DocumentNames &names, int number) const
    {
        const QString prefix = names.table == u"BOLLE_CARICO"_s ? u"FOR_"_s : u"CLI_"_s;
        return test::insertInto(
            database(), names.table,
            {{u"NUMERO"_s, number}, {u"ANNO"_s, 2026}, {prefix + u"CODICE"_s, u"ALTRO"_s}, {u"IDTIPO_TRASPORTO"_s, 1}});
    }
};

static const test::Registered<TestFailedSaves> registered;

#include "test_failed_saves.moc"
