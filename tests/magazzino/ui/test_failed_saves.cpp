#include "tests/support/Fixtures.h"

namespace {

const QString deleted = u"Il documento è stato eliminato nel frattempo.\n\rRegistrarlo di nuovo?"_s;
const QString changed = u"Il documento è stato modificato da un'altra postazione dopo l'apertura.\n\rSovrascrivere?"_s;

} // namespace

/// What a document does when a check or the database refuses a save, or somebody else changed or deleted it meanwhile.
class TestFailedSaves : public test::AtWorkplace
{
    Q_OBJECT

private Q_SLOTS:
    // Those of the invoice are shown with its form.
    void checksRunInOrder_data() { test::cases({u"receipt"_s, u"note"_s}); }

    void checksRunInOrder()
    {
        const bool isReceipt = test::currentCase() == u"receipt"_s;
        insertOther(names(), 1);
        const test::Document note(place(), names());
        const QStringList before = note.stored();
        const auto refused = [&](const QString &text) {
            place().messages.expectWarning(text);
            note.save();
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
        test::table<bool, QString>({{"receipt, new", false, u"new modified"_s},
                                    {"receipt, stored", true, u"stored modified"_s},
                                    // After a failed save a delivery note counts as saved; this is intended.
                                    {"note, new", false, u"stored"_s},
                                    {"note, stored", true, u"stored"_s},
                                    {"invoice, new", false, u"stored"_s},
                                    {"invoice, stored", true, u"stored"_s}});
    }

    void everyStatementMayFail()
    {
        const auto [stored, flags] = test::row<bool, QString>();
        const test::Document note(place(), names());
        int failures = 0;
        for (int index = 0;; ++index) {
            if (index == 0 || !stored) {
                note.form().NuovoRecord();
                note.enter(u"2"_s, u"10"_s);
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
            note.saveAgain();
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
        note.enter(u"2"_s, u"10"_s);
        failFirstSave(note);
        const int taken = insertOther(names(), 50);
        QCOMPARE(taken, note.form().IdRecord());
        const QString other = u"SELECT * FROM %1 WHERE %2 = %3"_s.arg(names().table, names().key).arg(taken);
        const QStringList before = lines(other);
        note.saveAgain();
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
        note.store(u"2"_s, u"10"_s);
        const int first = note.form().IdRecord();
        note.trigger(u"actNuovo"_s);
        note.store(u"3"_s, u"5"_s);
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

    void deletedDocument_data() { test::eachKind({u"Yes"_s, u"No"_s, u"Yes and the save fails"_s}); }

    void deletedDocument()
    {
        const test::Document document = changedDocumentOfSeven();
        const int former = document.form().IdRecord();
        deleteElsewhere(document);
        const QStringList before = document.stored();
        if (wanted() == u"No"_s) {
            place().messages.expectQuestion(deleted, core::Answer::No);
            document.save();
            QCOMPARE(document.stored(), before);
            QCOMPARE(document.flags(), u"stored modified"_s);
            QCOMPARE(document.form().IdRecord(), former);
            QCOMPARE(test::cellText(document.grid(), 0, u"Q.tà"_s), u"4,00"_s);
            return;
        }
        if (wanted() != u"Yes"_s) {
            place().messages.expectQuestion(deleted, core::Answer::Yes);
            place().messages.expectError(test::saveError);
            test::refusing(
                connection(), [](const QString &sql) { return sql == u"COMMIT"_s; }, [&document] { document.save(); });
            QCOMPARE(document.stored(), before);
            QCOMPARE(document.form().IdRecord(), former);
            document.form().DataChanged();
        }
        place().messages.expectQuestion(deleted, core::Answer::Yes);
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
            place().messages.expectQuestion(changed, yes ? core::Answer::Yes : core::Answer::No);
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
            place().messages.expectQuestion(changed, core::Answer::Yes);
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
        test::table<QString, QString, QString, QString>(
            {{"supplier", u"actInserimentoFornitori"_s, u"FORNITORI"_s, u"IDFORNITORE"_s, u"txtCitta"_s},
             {"movement", u"actInserimentoMovimentiMagazzino"_s, u"MOVI_MAGA"_s, u"IDMOVI_MAGA"_s, u"txtNote"_s}});
    }

    void deletedRecord()
    {
        const auto [action, table, key, field] = test::row<QString, QString, QString, QString>();
        if (table == u"MOVI_MAGA"_s)
            test::insertInto(database(), table, u"CODICE=TRA-0018|IDCAUSALE_MAGA=1|IDCATEGORIA_ANA_MAGA=1"_s);
        const int newest = lines(u"SELECT MAX(%1) FROM %2"_s.arg(key, table)).first().toInt();
        ui::EntryForm *form = openEntry(action);
        form->openRecord(newest);
        test::type(test::control<QWidget>(form, field), u"1"_s);
        QVERIFY(form->Modified());
        const QString count = u"SELECT COUNT(*) FROM "_s + table;
        const QStringList all = lines(count);
        elsewhere(u"DELETE FROM %1 WHERE %2 = %3"_s.arg(table, key).arg(newest));
        const QString question = u"Il record è stato eliminato nel frattempo.\n\rRegistrarlo di nuovo?"_s;
        place().messages.expectQuestion(question, core::Answer::No);
        QVERIFY(!form->saveRecord());
        QVERIFY(form->Modified() && !form->NewRecord());
        place().messages.expectQuestion(question, core::Answer::Yes);
        QVERIFY(form->saveRecord());
        QCOMPARE(form->IdRecord(), newest + 1);
        QCOMPARE(lines(count), all);
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
        return test::insertInto(database(), names.table,
                                u"NUMERO=%1|ANNO=2026|IDTIPO_TRASPORTO=1|%2CODICE=ALTRO"_s.arg(number).arg(prefix));
    }
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
        document.store(u"2"_s, u"7"_s);
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
};

static const test::Registered<TestFailedSaves> registered;

#include "test_failed_saves.moc"
