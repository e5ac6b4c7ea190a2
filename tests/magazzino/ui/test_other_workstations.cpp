#include "magazzino/uMMGModMagazzino.h"
#include "platform/data/Connection.h"
#include "tests/support/Documents.h"
#include "tests/support/TestMain.h"

#include <QLineEdit>

using namespace Qt::StringLiterals;

/// What a save does when somebody else deleted or changed the record after the form had loaded or saved it.
class TestOtherWorkstations : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { workplace_ = std::make_unique<test::Workplace>(); }
    void cleanup() { workplace_.reset(); }

    void deletedDocument_data();
    void deletedDocument();
    void changedDocument_data();
    void changedDocument();
    void changeDuringTheSaveIsTheSaveError_data();
    void changeDuringTheSaveIsTheSaveError();
    void deletedRecord_data();
    void deletedRecord();

private:
    static void kinds(std::initializer_list<const char *> cases);
    const test::DocumentNames &names() const;
    /// What stands behind the comma of the data tag.
    static QString wanted();
    void elsewhere(const QString &sql) const { workplace_->database().execute(sql); }
    QStringList lines(const QString &sql) const { return workplace_->lines(sql); }
    QStringList movements() const
    {
        return lines(u"SELECT CODICE, ABS(QUANTITA), RIF_DOC_ID FROM MOVI_MAGA ORDER BY 1"_s);
    }
    /// A stored document of 7 pieces, opened again, in which 4 were typed.
    test::Document changedDocumentOfSeven() const;
    /// As lists delete one: its movements stay.
    void deleteElsewhere(const test::Document &document) const;
    void expectQuestion(const QString &text, core::Answer answer) const
    {
        workplace_->messages.expectQuestion(text, answer);
    }

    std::unique_ptr<test::Workplace> workplace_;
};

namespace {
const QString deleted = u"Il documento è stato eliminato nel frattempo.\n\rRegistrarlo di nuovo?"_s;
const QString changed = u"Il documento è stato modificato da un'altra postazione dopo l'apertura.\n\rSovrascrivere?"_s;
const QString saveError = u"Si è verificato un errore durante il salvataggio dei dati!"_s;
} // namespace

void TestOtherWorkstations::kinds(std::initializer_list<const char *> cases)
{
    QTest::addColumn<int>("kind");
    int kind = 0;
    for (const char *name : {"receipt", "note", "invoice"}) {
        for (const char *some : cases)
            QTest::addRow("%s, %s", name, some) << kind;
        ++kind;
    }
}

const test::DocumentNames &TestOtherWorkstations::names() const
{
    QFETCH(int, kind);
    return kind == 0 ? test::receipt() : kind == 1 ? test::deliveryNote() : test::accompanyingInvoice();
}

QString TestOtherWorkstations::wanted()
{
    return QString::fromLatin1(QTest::currentDataTag()).section(u", "_s, 1);
}

test::Document TestOtherWorkstations::changedDocumentOfSeven() const
{
    test::Document document(*workplace_, names());
    document.fillHeader();
    document.addArticle(u"TRA-0018"_s, u"2"_s, u"7"_s);
    document.save();
    document.form().ApriRecord(document.form().IdRecord());
    document.showPage(1);
    test::typeIntoCell(document.grid(), 0, u"Q.tà"_s, u"4"_s);
    return document;
}

void TestOtherWorkstations::deleteElsewhere(const test::Document &document) const
{
    for (const QString &table : {names().rowTable, names().table})
        elsewhere(u"DELETE FROM %1 WHERE %2 = %3"_s.arg(table, names().key).arg(document.form().IdRecord()));
}

void TestOtherWorkstations::deletedDocument_data()
{
    kinds({"Yes", "No", "Yes and the save fails"});
}

void TestOtherWorkstations::deletedDocument()
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
        workplace_->module().ModADOConn->setStatementHook([](const QString &sql) {
            if (sql == u"COMMIT"_s)
                throw core::Error(u"rifiutato"_s);
        });
        expectQuestion(deleted, core::Answer::Yes);
        workplace_->messages.expectError(saveError);
        document.save();
        workplace_->module().ModADOConn->setStatementHook({});
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

void TestOtherWorkstations::changedDocument_data()
{
    kinds({"header, Yes", "header, No", "row, Yes", "row, No", "row added, Yes", "saved as it was"});
}

void TestOtherWorkstations::changedDocument()
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

void TestOtherWorkstations::changeDuringTheSaveIsTheSaveError_data()
{
    kinds({"changed behind the question", "deleted behind the question", "changed in the transaction",
           "deleted in the transaction"});
}

void TestOtherWorkstations::changeDuringTheSaveIsTheSaveError()
{
    const test::Document document = changedDocumentOfSeven();
    const auto disturb = [&](const QString &aspect) {
        if (wanted().startsWith(u"deleted"_s) && aspect != u"Prima"_s)
            deleteElsewhere(document);
        else
            elsewhere(u"UPDATE %1 SET ASPETTO_BENI = '%2'"_s.arg(names().table, aspect));
    };
    data::Connection &connection = *workplace_->module().ModADOConn;
    QStringList left;
    if (wanted().endsWith(u"question"_s)) {
        disturb(u"Prima"_s);
        expectQuestion(changed, core::Answer::Yes);
        workplace_->messages.whileShown([&] {
            disturb(u"Durante"_s);
            left = document.stored();
        });
    } else {
        connection.setStatementHook([&](const QString &) {
            if (connection.inTransaction() && left.isEmpty()) {
                disturb(u"Durante"_s);
                left = document.stored();
            }
        });
    }
    workplace_->messages.expectError(saveError);
    document.save();
    connection.setStatementHook({});
    QCOMPARE(workplace_->messages.verify(), QStringList());
    QCOMPARE(document.stored(), left);
    QCOMPARE(test::cellText(document.grid(), 0, u"Q.tà"_s), u"4,00"_s);
}

void TestOtherWorkstations::deletedRecord_data()
{
    QTest::addColumn<QString>("action");
    QTest::addColumn<QString>("table");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("field");
    QTest::newRow("supplier") << u"actInserimentoFornitori"_s << u"FORNITORI"_s << u"IDFORNITORE"_s << u"txtCitta"_s;
    QTest::newRow("movement") << u"actInserimentoMovimentiMagazzino"_s << u"MOVI_MAGA"_s << u"IDMOVI_MAGA"_s
                              << u"txtNote"_s;
}

void TestOtherWorkstations::deletedRecord()
{
    QFETCH(QString, action);
    QFETCH(QString, table);
    QFETCH(QString, key);
    QFETCH(QString, field);
    if (table == u"MOVI_MAGA"_s)
        test::insertInto(workplace_->database(), table,
                         {{u"CODICE"_s, u"TRA-0018"_s}, {u"IDCAUSALE_MAGA"_s, 1}, {u"IDCATEGORIA_ANA_MAGA"_s, 1}});
    const int newest = lines(u"SELECT MAX(%1) FROM %2"_s.arg(key, table)).first().toInt();
    auto *form = qobject_cast<ui::EntryForm *>(workplace_->module().openForm(action));
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

static const test::Registered<TestOtherWorkstations> registered;

#include "test_other_workstations.moc"
