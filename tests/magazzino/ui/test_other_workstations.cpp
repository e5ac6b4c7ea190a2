#include "tests/support/Fixtures.h"

namespace {
const QString deleted = u"Il documento è stato eliminato nel frattempo.\n\rRegistrarlo di nuovo?"_s;
const QString changed = u"Il documento è stato modificato da un'altra postazione dopo l'apertura.\n\rSovrascrivere?"_s;
} // namespace

/// What a save does when somebody else deleted or changed the record after the form had loaded or saved it.
class TestOtherWorkstations : public test::AtWorkplace
{
    Q_OBJECT

private Q_SLOTS:
    void deletedDocument_data() { test::eachKind({u"Yes"_s, u"No"_s, u"Yes and the save fails"_s}); }

    void deletedDocument()
    {
        const test::Document document = changedDocumentOfSeven();
        const int former = document.form().IdRecord();
        deleteElsewhere(document);
        const QStringList before = document.stored();
        if (wanted() == u"No"_s) {
            expectQuestion(deleted, core::Answer::No);
            document.save();
            QCOMPARE(document.stored(), before);
            QCOMPARE(document.flags(), u"stored modified"_s);
            QCOMPARE(document.form().IdRecord(), former);
            QCOMPARE(test::cellText(document.grid(), 0, u"Q.tà"_s), u"4,00"_s);
            return;
        }
        if (wanted() != u"Yes"_s) {
            expectQuestion(deleted, core::Answer::Yes);
            place().messages.expectError(test::saveError);
            test::refusing(
                connection(), [](const QString &sql) { return sql == u"COMMIT"_s; }, [&document] { document.save(); });
            QCOMPARE(document.stored(), before);
            QCOMPARE(document.form().IdRecord(), former);
            document.form().DataChanged();
        }
        expectQuestion(deleted, core::Answer::Yes);
        document.save();
        QCOMPARE(document.flags(), u"stored"_s);
        const int key = document.form().IdRecord();
        QVERIFY(key != former);
        QCOMPARE(lines(u"SELECT %1 FROM %2"_s.arg(names().key, names().table)), QStringList(QString::number(key)));
        QCOMPARE(movements(), QStringList(u"TRA-0018|4|%1"_s.arg(key)));
    }

    void changedDocument_data()
    {
        test::eachKind({u"header, Yes"_s, u"header, No"_s, u"row, Yes"_s, u"row, No"_s, u"row added, Yes"_s,
                        u"saved as it was"_s});
    }

    void changedDocument()
    {
        const test::Document document = changedDocumentOfSeven();
        const QString change = wanted().section(u", "_s, 0, 0);
        const QString key = QString::number(document.form().IdRecord());
        if (change == u"header"_s)
            elsewhere(u"UPDATE %1 SET ASPETTO_BENI = 'Altrove' WHERE %2 = %3"_s.arg(names().table, names().key, key));
        else if (change == u"row"_s)
            elsewhere(u"UPDATE %1 SET QUANTITA = 6 WHERE %2 = %3"_s.arg(names().rowTable, names().key, key));
        else if (change == u"row added"_s)
            elsewhere(u"INSERT INTO %1 (%2, TIPO_RIGA) VALUES (%3, 'Testo')"_s.arg(names().rowTable, names().key, key));
        else
            elsewhere(u"UPDATE %1 SET %2_DETT = %2_DETT + 100 WHERE %2 = %3"_s.arg(names().rowTable, names().key, key));
        const QStringList before = document.stored();
        const bool yes = wanted().endsWith(u"Yes"_s);
        if (wanted() != u"saved as it was"_s)
            expectQuestion(changed, yes ? core::Answer::Yes : core::Answer::No);
        document.save();
        if (wanted().endsWith(u"No"_s)) {
            QCOMPARE(document.stored(), before);
            QCOMPARE(document.flags(), u"stored modified"_s);
            QCOMPARE(test::cellText(document.grid(), 0, u"Q.tà"_s), u"4,00"_s);
            return;
        }
        QCOMPARE(lines(u"SELECT QUANTITA FROM "_s + names().rowTable), QStringList(u"4"_s));
        QCOMPARE(movements(), QStringList(u"TRA-0018|4|"_s + key));
        // What was written is what the form knows from now on.
        test::typeIntoCell(document.grid(), 0, u"Q.tà"_s, u"3"_s);
        document.save();
        QCOMPARE(movements(), QStringList(u"TRA-0018|3|"_s + key));
    }

    void changeDuringTheSaveIsTheSaveError_data()
    {
        test::eachKind({u"changed behind the question"_s, u"deleted behind the question"_s,
                        u"changed in the transaction"_s, u"deleted in the transaction"_s});
    }

    void changeDuringTheSaveIsTheSaveError()
    {
        const test::Document document = changedDocumentOfSeven();
        const auto disturb = [&](const QString &aspect) {
            if (wanted().startsWith(u"deleted"_s) && aspect != u"Prima"_s)
                deleteElsewhere(document);
            else
                elsewhere(u"UPDATE %1 SET ASPETTO_BENI = '%2'"_s.arg(names().table, aspect));
        };
        QStringList left;
        if (wanted().endsWith(u"question"_s)) {
            disturb(u"Prima"_s);
            expectQuestion(changed, core::Answer::Yes);
            place().messages.whileShown([&] {
                disturb(u"Durante"_s);
                left = document.stored();
            });
        } else {
            connection().setStatementHook([&](const QString &) {
                if (connection().inTransaction() && left.isEmpty()) {
                    disturb(u"Durante"_s);
                    left = document.stored();
                }
            });
        }
        place().messages.expectError(test::saveError);
        document.save();
        connection().setStatementHook({});
        QCOMPARE(document.stored(), left);
        QCOMPARE(test::cellText(document.grid(), 0, u"Q.tà"_s), u"4,00"_s);
    }

    void deletedRecord_data()
    {
        test::columns<QString, QString, QString, QString>("action", "table", "key", "field");
        QTest::newRow("supplier") << u"actInserimentoFornitori"_s << u"FORNITORI"_s << u"IDFORNITORE"_s
                                  << u"txtCitta"_s;
        QTest::newRow("movement") << u"actInserimentoMovimentiMagazzino"_s << u"MOVI_MAGA"_s << u"IDMOVI_MAGA"_s
                                  << u"txtNote"_s;
    }

    void deletedRecord()
    {
        const auto [action, table, key, field] = test::row<QString, QString, QString, QString>();
        if (table == u"MOVI_MAGA"_s)
            test::insertInto(database(), table,
                             {{u"CODICE"_s, u"TRA-0018"_s}, {u"IDCAUSALE_MAGA"_s, 1}, {u"IDCATEGORIA_ANA_MAGA"_s, 1}});
        const int newest = lines(u"SELECT MAX(%1) FROM %2"_s.arg(key, table)).first().toInt();
        ui::EntryForm *form = openEntry(action);
        form->openRecord(newest);
        test::type(test::control<QWidget>(form, field), u"1"_s);
        QVERIFY(form->Modified());
        const QString count = u"SELECT COUNT(*) FROM "_s + table;
        const QStringList all = lines(count);
        elsewhere(u"DELETE FROM %1 WHERE %2 = %3"_s.arg(table, key).arg(newest));
        const QString question = u"Il record è stato eliminato nel frattempo.\n\rRegistrarlo di nuovo?"_s;
        expectQuestion(question, core::Answer::No);
        QVERIFY(!form->saveRecord());
        QVERIFY(form->Modified() && !form->NewRecord());
        expectQuestion(question, core::Answer::Yes);
        QVERIFY(form->saveRecord());
        QCOMPARE(form->IdRecord(), newest + 1);
        QCOMPARE(lines(count), all);
    }

private:
    static const test::DocumentNames &names() { return test::kindOfRow(); }

    static QString wanted() { return test::caseOfRow(); }

    void elsewhere(const QString &sql) const { database().execute(sql); }
    QStringList movements() const
    {
        return lines(u"SELECT CODICE, ABS(QUANTITA), RIF_DOC_ID FROM MOVI_MAGA ORDER BY 1"_s);
    }
    /// A stored document of 7 pieces, opened again, in which 4 were typed.
    test::Document changedDocumentOfSeven() const
    {
        test::Document document(place(), names());
        document.fillHeader();
        document.addArticle(u"TRA-0018"_s, u"2"_s, u"7"_s);
        document.save();
        document.form().ApriRecord(document.form().IdRecord());
        document.showPage(1);
        test::typeIntoCell(document.grid(), 0, u"Q.tà"_s, u"4"_s);
        return document;
    }

    /// As lists delete one: its movements stay.
    void deleteElsewhere(const test::Document &document) const
    {
        for (const QString &table : {names().rowTable, names().table})
            elsewhere(u"DELETE FROM %1 WHERE %2 = %3"_s.arg(table, names().key).arg(document.form().IdRecord()));
    }

    void expectQuestion(const QString &text, core::Answer answer) const
    {
        place().messages.expectQuestion(text, answer);
    }
};

static const test::Registered<TestOtherWorkstations> registered;

#include "test_other_workstations.moc"
